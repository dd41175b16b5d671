// The pane on view when its object, or something that it hangs under, has moved away.
#include "DragAndDropFixture.h"
#include "RealPanes.h"

#include "ToolBar.h"
#include "modGUI.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

const QStringList files{u"FI"_s};
const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s};
const QStringList empty{u"FI"_s, u"fi=EMPTY"_s};
const QStringList fields = payroll + QStringList{u"FD"_s};
const QStringList ledger{u"FI"_s, u"fi=LEDGER"_s};
const QStringList databases{u"DB"_s};
const QStringList sales{u"DB"_s, u"db=SALES"_s};
const QStringList tables = sales + QStringList{u"TA"_s};
const QStringList orders = tables + QStringList{u"ta=ORDERS"_s};
const QStringList depot{u"DB"_s, u"db=DEPOT"_s};
const QStringList parts = depot + QStringList{u"TA"_s, u"ta=PARTS"_s};
const QStringList users{u"US"_s};

/// The target has DEPOT with PARTS and all that the source speaks of but what is carried to it.
class FullTarget : public WithRealPanes<DragAndDrop>
{
protected:
    void SetUp() override
    {
        WithRealPanes::SetUp();
        furnish();
        // What every catalog has would be refused.
        change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
        change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'TW'"_s);
        change(u"DELETE FROM TW_USER WHERE USER_NAME = 'ADMIN'"_s);
        change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = (SELECT MIN(LOCAL_TYPE_NAME) FROM TW_LOCDT)"_s);
    }
    void know(const QStringList& dragged) const
    {
        if (dragged.back() != "FI"_L1 && dragged.back() != "fi=PAYROLL"_L1) {
            changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
            changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) "
                        "VALUES ('PAYROLL', 'SALARY'), ('PAYROLL', 'EMPLOYEE'), ('PAYROLL', 'RFA')"_s);
        }
        if (dragged.front() != "US"_L1)
            changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
    }

    /// Opens the tree to both ends of a drag; what opens a level by the mouse shows another pane.
    void open(const QStringList& from, const QStringList& to)
    {
        show(key(from));
        show(there(to));
    }
    void drag(const QStringList& from, const QStringList& to, const QString& answer)
    {
        dialogs.expect(u"frmMoveCopy"_s, [answer](DialogForm& dialog) { DialogScript::click(dialog, answer); });
        dragTo(key(from), there(to));
        verify();
    }
    void move(const QStringList& from, const QStringList& to) { drag(from, to, u"cmdMove"_s); }
    void copy(const QStringList& from, const QStringList& to) { drag(from, to, u"cmdCopy"_s); }

    /// Shows the pane of a node by a click.
    void view(const QString& nodeKey, const QString& pane)
    {
        show(nodeKey);
        click(nodeKey);
        ASSERT_EQ(currentPane(), pane);
    }
    void press(const QString& toolBar, const QString& button) const
    {
        QTest::mouseClick(window->toolBar(toolBar).Button(button).widget(), Qt::LeftButton);
    }
    void expectTaken(const ScriptedBoxes::Meanwhile& meanwhile = {})
    {
        boxes.expectAsk(u"A column already exists is in Datasource '%1', Database 'DEPOT', Table 'PARTS' "
                        "with a Column Type of 0 and a column number of 2\nDo you want to overwrite it?"_s.arg(other),
                        boxes::Answer::Yes, meanwhile);
    }
};

struct View {
    const char* name;
    QStringList dragged;
    QStringList shown;
    QStringList target;
    const char* pane;
    /// What comes up in its place, and the names of its keys behind the datasource.
    const char* collection;
    QStringList names;
};

void PrintTo(const View& view, std::ostream* out)
{
    *out << view.name;
}

class DepartedPanes : public FullTarget, public testing::WithParamInterface<View>
{
protected:
    void SetUp() override
    {
        FullTarget::SetUp();
        know(GetParam().dragged);
    }
};

std::vector<View> views()
{
    const auto below = [](const QStringList& node, const QStringList& steps) { return node + steps; };
    const QStringList field = below(fields, {u"fd=SALARY"_s});
    const QStringList column = below(orders, {u"CO"_s, u"co=AMOUNT"_s});
    const QStringList special = below(orders, {u"SCO"_s});
    const QStringList ofDatabase = below(sales, {u"DBPRV"_s});
    const QStringList clerkOfDatabase = below(ofDatabase, {u"dbprv=CLERK"_s});
    const QStringList ofTable = below(orders, {u"TBLPRV"_s});
    const QStringList clerkOfTable = below(ofTable, {u"tblprv=CLERK"_s});
    const QStringList clerk = below(users, {u"us=CLERK"_s});
    const QStringList inLedger{u"LEDGER"_s};
    const QStringList inDepot{u"DEPOT"_s};
    const QStringList inParts{u"DEPOT"_s, u"PARTS"_s};
    return {
        {"FileOfFiles", files, payroll, files, "frmFile", "frmFiles", {}},
        {"FileOfFile", payroll, payroll, files, "frmFile", "frmFiles", {}},
        {"FieldsOfFile", payroll, fields, files, "frmFields", "frmFiles", {}},
        {"FieldOfFile", payroll, field, files, "frmField", "frmFiles", {}},
        {"FieldOfFields", fields, field, ledger, "frmField", "frmFields", inLedger},
        {"FieldOfField", field, field, ledger, "frmField", "frmFields", inLedger},
        {"DatabaseOfDatabases", databases, sales, databases, "frmDatabase", "frmDatabases", {}},
        {"DatabaseOfDatabase", sales, sales, databases, "frmDatabase", "frmDatabases", {}},
        {"TablesOfDatabase", sales, tables, databases, "frmTables", "frmDatabases", {}},
        {"TableOfDatabase", sales, orders, databases, "frmTable", "frmDatabases", {}},
        {"ColumnOfDatabase", sales, column, databases, "frmColumn", "frmDatabases", {}},
        {"SpecialColumnsOfDatabase", sales, special, databases, "frmSpecialCols", "frmDatabases", {}},
        {"PrivilegesOfDatabase", sales, ofDatabase, databases, "frmDBPRVs", "frmDatabases", {}},
        {"PrivilegeOfDatabase", sales, clerkOfDatabase, databases, "frmDBPRV", "frmDatabases", {}},
        {"TableOfTables", tables, orders, depot, "frmTable", "frmTables", inDepot},
        {"TableOfTable", orders, orders, depot, "frmTable", "frmTables", inDepot},
        {"ColumnsOfTable", orders, below(orders, {u"CO"_s}), depot, "frmColumns", "frmTables", inDepot},
        {"SpecialColumnsOfTable", orders, special, depot, "frmSpecialCols", "frmTables", inDepot},
        {"PrivilegeOfTable", orders, clerkOfTable, depot, "frmTBLPRV", "frmTables", inDepot},
        {"ColumnOfColumns", below(orders, {u"CO"_s}), column, parts, "frmColumn", "frmColumns", inParts},
        {"ColumnOfColumn", column, column, parts, "frmColumn", "frmColumns", inParts},
        {"UserOfUsers", users, clerk, users, "frmUser", "frmUsers", {}},
        {"UserOfUser", clerk, clerk, users, "frmUser", "frmUsers", {}},
        {"DatabasePrivilegeOfAll", ofDatabase, clerkOfDatabase, depot, "frmDBPRV", "frmDBPRVs", inDepot},
        {"DatabasePrivilegeOfOne", clerkOfDatabase, clerkOfDatabase, depot, "frmDBPRV", "frmDBPRVs", inDepot},
        {"TablePrivilegeOfAll", ofTable, clerkOfTable, parts, "frmTBLPRV", "frmTBLPRVs", inParts},
        {"TablePrivilegeOfOne", clerkOfTable, clerkOfTable, parts, "frmTBLPRV", "frmTBLPRVs", inParts},
    };
}

/// A pane that adds a row below something, and what carries that away.
struct Addition {
    const char* pane;
    QStringList names;
    QStringList dragged;
    QStringList target;
    const char* collection;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(EachKind, DepartedPanes, testing::ValuesIn(views()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(DepartedPanes, GiveWayToTheCollectionThatWasDroppedUpon)
{
    const View& shown = GetParam();
    open(shown.dragged, shown.target);
    view(key(shown.shown), QString::fromLatin1(shown.pane));
    move(shown.dragged, shown.target);
    EXPECT_EQ(currentPane(), QString::fromLatin1(shown.collection));
    EXPECT_EQ(paneKeys(), QStringList{other} + shown.names);
    EXPECT_EQ(window->currentItem().Node, selectedKey());
    EXPECT_EQ(window->currentItem().Keys, QStringList{other} + shown.names);
}

TEST_P(DepartedPanes, StayAfterACopy)
{
    const View& shown = GetParam();
    open(shown.dragged, shown.target);
    view(key(shown.shown), QString::fromLatin1(shown.pane));
    const QStringList keys = paneKeys();
    copy(shown.dragged, shown.target);
    EXPECT_EQ(currentPane(), QString::fromLatin1(shown.pane));
    EXPECT_EQ(paneKeys(), keys);
}

TEST_F(FullTarget, SpecialColumnsThatCameOrWentShow)
{
    const auto isTicked = [this] {
        return window->currentPane()->findChild<QCheckBox*>(u"chkActive_1"_s)->isChecked();
    };
    const QStringList columns{u"CO"_s};
    know(orders);
    for (const bool ofTarget : {true, false}) {
        SCOPED_TRACE(ofTarget);
        const QString special =
            (ofTarget ? there(parts) : key(orders)) + "SCO="_L1 + (ofTarget ? u"PARTS"_s : u"ORDERS"_s) + ':'_L1;
        changeOther(u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'DEPOT'"_s);
        change(u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES'"_s);
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
               "COLUMN_TYPE) VALUES ('SALES', 'ORDERS', 1, 'RFA', 'RFA', 1)"_s);
        open(orders + columns, parts);
        view(special, u"frmSpecialCols"_s);
        EXPECT_EQ(isTicked(), !ofTarget);
        move(orders + columns, parts);
        EXPECT_EQ(currentPane(), u"frmSpecialCols"_s);
        EXPECT_EQ(isTicked(), ofTarget);
    }
}

TEST_F(FullTarget, WhatIsBeingAddedToWhatMovedAwayIsLeft)
{
    know(sales);
    keepBoth();
    const std::vector<Addition> all{
        {"frmTable", {u"SALES"_s}, sales, databases, "frmDatabases"},
        {"frmDBPRV", {u"SALES"_s}, sales, databases, "frmDatabases"},
        {"frmColumn", {u"SALES"_s, u"ORDERS"_s}, orders, depot, "frmTables"},
        {"frmTBLPRV", {u"SALES"_s, u"ORDERS"_s}, orders, depot, "frmTables"},
        {"frmColumn", {u"SALES"_s, u"ORDERS"_s}, tables, depot, "frmTables"},
        {"frmField", {u"EMPTY"_s}, empty, files, "frmFiles"},
    };
    for (const Addition& addition : all) {
        SCOPED_TRACE(addition.pane);
        beginAnewBoth();
        open(addition.dragged, addition.target);
        window->PaneAddNew(QLatin1String(addition.pane), QStringList{datasource} + addition.names);
        ASSERT_EQ(paneKeys(), QStringList{datasource} + addition.names + QStringList{QString()});
        move(addition.dragged, addition.target);
        EXPECT_EQ(currentPane(), QString::fromLatin1(addition.collection));
        EXPECT_EQ(paneKeys().front(), other);
    }
}

TEST_F(FullTarget, WhatIsBeingAddedToAFileThatLosesItsFieldsStays)
{
    open(fields, ledger);
    window->PaneAddNew(u"frmField"_s, {datasource, u"PAYROLL"_s});
    move(fields, ledger);
    EXPECT_EQ(currentPane(), u"frmField"_s);
    EXPECT_EQ(paneKeys(), (QStringList{datasource, u"PAYROLL"_s, QString()}));
}

TEST_F(FullTarget, SpecialColumnsOfAMovedTableAreLeftAmidTheirChange)
{
    know(orders);
    open(orders, depot);
    view(key(orders + QStringList{u"SCO"_s}), u"frmSpecialCols"_s);
    press(u"tbrSpecialCols"_s, u"Special Column Edit"_s);
    move(orders, depot);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(paneKeys(), (QStringList{other, u"DEPOT"_s}));
}

TEST_F(FullTarget, TheRecordsOfAMovedTableAreLeft)
{
    know(orders);
    open(empty, files);
    open(orders, depot);
    // The pane then explains itself without a dialog.
    world.removeDatasource(datasource);
    world.addDatasource(datasource, {u"DefaultDatabase=sales"_s});
    choose(key(orders), u"mnu_TableViewData"_s);
    ASSERT_EQ(currentPane(), u"frmTableData"_s);
    copy(empty, files);
    EXPECT_EQ(currentPane(), u"frmTableData"_s);
    move(orders, depot);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
}

TEST_F(FullTarget, ALevelThatCannotBeReadTakesNoPaneAway)
{
    const auto dragUnread = [&](const QString& answer, int written) {
        dialogs.expect(u"frmMoveCopy"_s, [&, written](DialogForm& dialog) {
            statements.clear();
            // Behind those of the routines the files of the source are read anew.
            statements.failAt(written + 1);
            DialogScript::click(dialog, answer);
        });
        errors.expect(Press::Ignore);
        dragTo(key(payroll), there(files));
        verify();
        EXPECT_EQ(errors.shown().back().trappedIn, u"mdiMain.tvwExplorer_Expand"_s);
        EXPECT_EQ(children(key(files)), QStringList());
    };
    open(payroll, files);
    view(key(payroll), u"frmFile"_s);
    dragUnread(u"cmdCopy"_s, 13);
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_EQ(paneKeys(), (QStringList{datasource, u"PAYROLL"_s}));

    changeOther(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s);
    changeOther(u"DELETE FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s);
    modGUI::ExpandToNode(key(files));
    view(key(empty), u"frmFile"_s);
    dragUnread(u"cmdMove"_s, 18);
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_EQ(paneKeys(), (QStringList{datasource, u"EMPTY"_s}));
}

TEST_F(FullTarget, APaneWhoseRenameBrokeOffGoesByTheNodeThatTheTreeHas)
{
    open(payroll, files);
    view(key(payroll), u"frmFile"_s);
    auto* name = window->currentPane()->findChild<QLineEdit*>(u"txtProperty_FILE_NAME"_s);
    ASSERT_NE(name, nullptr);
    name->clear();
    QTest::keyClicks(name, u"WAGES"_s);
    // The row has its new name by then, and the tree not yet.
    change(u"CREATE TRIGGER refusal BEFORE UPDATE ON TW_FILE BEGIN SELECT RAISE(ABORT, 'locked'); END"_s);
    errors.expect(Press::Ignore);
    press(u"tbrFile"_s, u"OK"_s);
    verify();
    ASSERT_EQ(paneKeys(), (QStringList{datasource, u"WAGES"_s}));
    ASSERT_NE(find(key(payroll)), nullptr);
    move(empty, files);
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    move({u"FI"_s, u"fi=WAGES"_s}, files);
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
}

TEST_F(FullTarget, ThePaneOfAColumnThatWasOverwrittenGivesWay)
{
    know(orders);
    changeOther(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = 2, COLUMN_TYPE = 0 WHERE COLUMN_NAME = 'WEIGHT'"_s);
    const QStringList weight = parts + QStringList{u"CO"_s, u"co=WEIGHT"_s};
    const QStringList amount = orders + QStringList{u"CO"_s, u"co=AMOUNT"_s};
    keepBoth();
    open(amount, parts);
    view(there(weight), u"frmColumn"_s);
    expectTaken();
    copy(amount, parts);
    EXPECT_EQ(currentPane(), u"frmColumns"_s);
    EXPECT_EQ(paneKeys(), (QStringList{other, u"DEPOT"_s, u"PARTS"_s}));
    EXPECT_EQ(rowsOf(other, u"TW_COLUMN"_s, u"COLUMN_NAME = 'WEIGHT'"_s), QStringList());

    // It is gone, too, where the name is refused afterwards.
    beginAnewBoth();
    changeOther(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
                "VALUES ('DEPOT', 'PARTS', 9, 'AMOUNT', 0)"_s);
    open(amount, parts);
    view(there(weight), u"frmColumn"_s);
    expectTaken();
    boxes.expectInform(u"Datasource '%1', Table 'PARTS' already contains a Column called 'AMOUNT'."_s.arg(other));
    copy(amount, parts);
    EXPECT_EQ(currentPane(), u"frmColumns"_s);
    EXPECT_EQ(paneKeys(), (QStringList{other, u"DEPOT"_s, u"PARTS"_s}));
    EXPECT_EQ(rowsOf(other, u"TW_COLUMN"_s, u"COLUMN_NAME = 'WEIGHT'"_s), QStringList());
}
