#include "DragAndDropFixture.h"
#include "RealPanes.h"

#include "frmTWErr.h"
#include "modDragAndDrop.h"

#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s};
const QStringList salesTables{u"DB"_s, u"db=SALES"_s, u"TA"_s};
const QStringList orders = salesTables + QStringList{u"ta=ORDERS"_s};
const QStringList depot{u"DB"_s, u"db=DEPOT"_s};
const QStringList depotTables = depot + QStringList{u"TA"_s};
const QStringList parts = depotTables + QStringList{u"ta=PARTS"_s};

struct Kind {
    const char* name;
    QStringList source;
    QStringList target;
    /// The nodes that are read anew.
    QStringList sourceNode;
    QStringList targetNode;
    const char* table;
    const char* where;
    int rows;
    /// Whether the target knows the file and the user that the item speaks of.
    bool knowsFile;
    bool knowsUser;
    const char* icon;
};

void PrintTo(const Kind& kind, std::ostream* out)
{
    *out << kind.name;
}

class DragOfKind : public WithRealPanes<DragAndDrop>, public testing::WithParamInterface<Kind>
{
protected:
    void SetUp() override
    {
        WithRealPanes::SetUp();
        // What every catalog has would be refused.
        change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
        change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'TW'"_s);
        change(u"DELETE FROM TW_USER WHERE USER_NAME = 'ADMIN'"_s);
        furnish();
        if (GetParam().knowsFile) {
            changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
            changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) "
                        "VALUES ('PAYROLL', 'SALARY'), ('PAYROLL', 'EMPLOYEE'), ('PAYROLL', 'RFA')"_s);
        }
        if (GetParam().knowsUser)
            changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
        show(from());
        show(to());
    }
    QString from() const { return key(GetParam().source); }
    QString to() const { return there(GetParam().target); }
    void drag(const QString& answer)
    {
        dialogs.expect(u"frmMoveCopy"_s, [=](DialogForm& dialog) { DialogScript::click(dialog, answer); });
        dragTo(from(), to());
        verify();
    }

    /// The node whose pane is the grid of the kind, given the node that is read anew.
    static QStringList collection(QStringList node)
    {
        const QString kind = QLatin1String(GetParam().name);
        if (kind == "Fields"_L1)
            node.append(u"FD"_s);
        else if (kind == "TablePrivileges"_L1)
            node.append(u"TBLPRV"_s);
        return node;
    }
    /// What the grid of a node shows when it is displayed anew.
    QStringList displayed(const QString& node)
    {
        const QString pane = currentPane();
        EXPECT_NE(dynamic_cast<const GridPane*>(window->currentPane()), nullptr) << node.toStdString();
        window->PaneDisplay(pane, paneKeys());
        return gridRows();
    }
};

std::vector<Kind> kinds()
{
    const QStringList files{u"FI"_s};
    const QStringList databases{u"DB"_s};
    const QStringList users{u"US"_s};
    const QStringList ledger{u"FI"_s, u"fi=LEDGER"_s};
    const auto below = [](const QStringList& node, const QStringList& steps) { return node + steps; };
    const QStringList sales{u"DB"_s, u"db=SALES"_s};
    return {
        {"Files", files, databases, files, files, "TW_FILE", "FILE_NAME IN ('PAYROLL', 'EMPTY')", 2, false, false,
         "Drag File"},
        {"File", payroll, files, files, files, "TW_FIELD", "FILE_NAME = 'PAYROLL'", 3, false, false, "Drag File"},
        {"Fields", below(payroll, {u"FD"_s}), ledger, payroll, ledger, "TW_FIELD", "FILE_NAME = 'LEDGER'", 4, false,
         false, "Drag Field"},
        {"Field", below(payroll, {u"FD"_s, u"fd=SALARY"_s}), below(ledger, {u"FD"_s, u"fd=TOTAL"_s}),
         below(payroll, {u"FD"_s}), below(ledger, {u"FD"_s}), "TW_FIELD", "FILE_NAME = 'LEDGER'", 2, false, false,
         "Drag Field"},
        {"Databases", databases, files, databases, databases, "TW_DB", "DATABASE_NAME = 'SALES'", 1, true, true,
         "Drag Database"},
        {"Database", sales, users, databases, databases, "TW_COLUMN", "DATABASE_NAME = 'SALES'", 3, true, true,
         "Drag Database"},
        {"Tables", salesTables, depot, salesTables, depotTables, "TW_TABLE",
         "DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'ORDERS'", 1, true, true, "Drag Table"},
        {"Table", orders, below(parts, {u"CO"_s}), salesTables, depotTables, "TW_COLUMN",
         "DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'ORDERS'", 3, true, true, "Drag Table"},
        {"Columns", below(orders, {u"CO"_s}), parts, below(orders, {u"CO"_s}), below(parts, {u"CO"_s}), "TW_COLUMN",
         "TABLE_NAME = 'PARTS'", 4, true, false, "Drag Column"},
        {"Column", below(orders, {u"CO"_s, u"co=BUYER"_s}), below(parts, {u"CO"_s, u"co=WEIGHT"_s}),
         below(orders, {u"CO"_s}), below(parts, {u"CO"_s}), "TW_COLUMN", "TABLE_NAME = 'PARTS'", 2, true, false,
         "Drag Column"},
        {"Users", users, files, users, users, "TW_USER", "USER_NAME = 'CLERK'", 1, false, false, "Drag User"},
        {"User", below(users, {u"us=CLERK"_s}), below(users, {u"us=GUARD"_s}), users, users, "TW_USER",
         "USER_NAME = 'CLERK'", 1, false, false, "Drag User"},
        {"DatabasePrivileges", below(sales, {u"DBPRV"_s}), depot, below(sales, {u"DBPRV"_s}),
         below(depot, {u"DBPRV"_s}), "TW_DBPRV", "USER_NAME = 'CLERK'", 1, false, true, "Drag User"},
        {"DatabasePrivilege", below(sales, {u"DBPRV"_s, u"dbprv=CLERK"_s}),
         below(depot, {u"DBPRV"_s, u"dbprv=GUARD"_s}), below(sales, {u"DBPRV"_s}), below(depot, {u"DBPRV"_s}),
         "TW_DBPRV", "USER_NAME = 'CLERK'", 1, false, true, "Drag User"},
        {"TablePrivileges", below(orders, {u"TBLPRV"_s}), parts, orders, parts, "TW_TBLPRV", "USER_NAME = 'CLERK'", 1,
         false, true, "Drag User"},
        {"TablePrivilege", below(orders, {u"TBLPRV"_s, u"tblprv=CLERK"_s}),
         below(parts, {u"TBLPRV"_s, u"tblprv=GUARD"_s}), below(orders, {u"TBLPRV"_s}), below(parts, {u"TBLPRV"_s}),
         "TW_TBLPRV", "USER_NAME = 'CLERK'", 1, false, true, "Drag User"},
    };
}

} // namespace

INSTANTIATE_TEST_SUITE_P(EachKind, DragOfKind, testing::ValuesIn(kinds()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(DragOfKind, ByTheMouseIsCopiedAfterTheQuestionAndBothCollectionsAreReadAnew)
{
    const Kind& kind = GetParam();
    const QStringList before = bothCatalogs();

    grab(from());
    EXPECT_EQ(statusText(), u"BeginDrag"_s);
    EXPECT_EQ(tree().DragIcon(), QLatin1String(kind.icon));
    moveOver(to());
    EXPECT_EQ(statusText(), u"DragOver"_s);
    EXPECT_TRUE(modDragAndDrop::dropAllowed());
    EXPECT_EQ(tree().DropHighlight(), find(to()));
    EXPECT_EQ(tree().DragIcon(), QLatin1String(kind.icon));
    statements.clear();
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCopy"_s); });
    release(textPosition(to()));
    verify();

    EXPECT_EQ(
        world.rows(other, u"SELECT * FROM %1 WHERE %2"_s.arg(QLatin1String(kind.table), QLatin1String(kind.where)))
            .size(),
        static_cast<std::size_t>(kind.rows));
    EXPECT_NE(bothCatalogs(), before);
    EXPECT_EQ(selectedKey(), there(kind.targetNode));
    EXPECT_TRUE(node(there(kind.targetNode)).Expanded());
    EXPECT_TRUE(node(key(kind.sourceNode)).Expanded());
    EXPECT_EQ(tree().DropHighlight(), nullptr);
    EXPECT_FALSE(window->isDragging());
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_P(DragOfKind, ShowsTheGridOfItsTargetAnewIfItIsOnView)
{
    const QString grid = there(collection(GetParam().targetNode));
    show(grid);
    click(grid);
    const QStringList before = gridRows();
    drag(u"cmdCopy"_s);
    const QStringList after = gridRows();
    EXPECT_NE(after, before);
    EXPECT_EQ(after, displayed(grid));
}

TEST_P(DragOfKind, ShowsTheGridOfItsSourceAnewIfItIsOnView)
{
    const QString grid = key(collection(GetParam().sourceNode));
    show(grid);
    click(grid);
    const QStringList before = gridRows();
    drag(u"cmdMove"_s);
    const QStringList after = gridRows();
    EXPECT_NE(after, before);
    EXPECT_EQ(after, displayed(grid));
}

TEST_P(DragOfKind, LeavesTheGridOfAnotherDatasourceAlone)
{
    const QString third = datasource + u"Third"_s;
    world.addDatasource(third);
    window->FetchTreeviewRoot();
    for (const QString& side : {datasource, other, third})
        expandTo(keyBelow(side));
    show(from());
    show(to());
    click(keyBelow(third, {u"US"_s}));
    ASSERT_EQ(currentPane(), u"frmUsers"_s);
    statements.clear();
    drag(u"cmdCopy"_s);
    EXPECT_EQ(currentPane(), u"frmUsers"_s);
    EXPECT_FALSE(statements.datasources().contains(third));
}
