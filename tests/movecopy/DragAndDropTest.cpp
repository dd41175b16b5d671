#include "MoveCopyFixture.h"

#include "CConnections.h"
#include "CellGrid.h"
#include "FilesRoom.h"
#include "PaneRegistry.h"
#include "frmTWErr.h"
#include "modDragAndDrop.h"

#include <QApplication>

#include <tuple>

using namespace Qt::StringLiterals;
using modDragAndDrop::DoDragDrop;
using modDragAndDrop::DoDragOver;
using modDragAndDrop::dropAllowed;

namespace
{

const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s};
const QStringList salesTables{u"DB"_s, u"db=SALES"_s, u"TA"_s};
const QStringList orders = salesTables + QStringList{u"ta=ORDERS"_s};
const QStringList depot{u"DB"_s, u"db=DEPOT"_s};
const QStringList depotTables = depot + QStringList{u"TA"_s};
const QStringList parts = depotTables + QStringList{u"ta=PARTS"_s};

class DragAndDrop : public MoveCopyTest
{
protected:
    /// What the target has: a database with a table and a column, and a file with a field.
    void furnish() const
    {
        for (const QString& statement : {
                 u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s,
                 u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('LEDGER')"_s,
                 u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('LEDGER', 'TOTAL')"_s,
                 u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', 'PAYROLL')"_s,
                 u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
                 "VALUES ('DEPOT', 'PARTS', 77, 'WEIGHT', 'SALARY')"_s,
                 u"INSERT INTO TW_USER (USER_NAME) VALUES ('GUARD')"_s,
                 u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('GUARD', 'DEPOT')"_s,
                 u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('DEPOT', 'PARTS', 'GUARD')"_s,
             })
            changeOther(statement);
    }

    /// Opens the tree down to a node that is to be pressed or dropped upon.
    void show(const QString& nodeKey)
    {
        const qsizetype last = nodeKey.lastIndexOf(u':', -2);
        expandTo(nodeKey.left(last + 1));
        ASSERT_NE(find(nodeKey), nullptr) << nodeKey.toStdString();
    }
    /// Takes hold of a node and moves the pointer until it drags.
    void grab(const QString& nodeKey)
    {
        press(nodeKey);
        const QPoint place = textPosition(nodeKey);
        move(place + QPoint(QApplication::startDragDistance() + 1, 0), Qt::LeftButton);
        EXPECT_TRUE(tree().IsDragging());
    }
    void moveOver(const QString& nodeKey) { move(textPosition(nodeKey), Qt::LeftButton); }
    void dragTo(const QString& from, const QString& to)
    {
        grab(from);
        moveOver(to);
        release(textPosition(to));
    }
    TreeView& tree() const { return window->tvwExplorer(); }
    QString there(const QStringList& steps = {}) const { return keyBelow(other, steps); }
};

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

class DragOfKind : public DragAndDrop, public testing::WithParamInterface<Kind>
{
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
    // What every catalog has would be refused.
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'TW'"_s);
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'ADMIN'"_s);
    furnish();
    if (kind.knowsFile) {
        changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
        changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) "
                    "VALUES ('PAYROLL', 'SALARY'), ('PAYROLL', 'EMPLOYEE'), ('PAYROLL', 'RFA')"_s);
    }
    if (kind.knowsUser)
        changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
    const QString from = key(kind.source);
    const QString to = there(kind.target);
    show(from);
    show(to);
    const QStringList before = bothCatalogs();

    grab(from);
    EXPECT_EQ(statusText(), u"BeginDrag"_s);
    EXPECT_EQ(tree().DragIcon(), QLatin1String(kind.icon));
    moveOver(to);
    EXPECT_EQ(statusText(), u"DragOver"_s);
    EXPECT_TRUE(dropAllowed());
    EXPECT_EQ(tree().DropHighlight(), find(to));
    EXPECT_EQ(tree().DragIcon(), QLatin1String(kind.icon));
    statements.clear();
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCopy"_s); });
    release(textPosition(to));
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

TEST_F(DragAndDrop, AMovedFileIsGoneFromTheTreeOfItsSourceAndInThatOfItsTarget)
{
    show(key(payroll));
    show(there({u"FI"_s}));
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdMove"_s); });
    dragTo(key(payroll), there({u"FI"_s}));
    EXPECT_EQ(find(key(payroll)), nullptr);
    EXPECT_NE(find(there(payroll)), nullptr);
}

TEST_F(DragAndDrop, AFileLandsOnTheDatabasesOfAnotherDatasource)
{
    show(key(payroll));
    show(there({u"DB"_s}));
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCopy"_s); });
    dragTo(key(payroll), there({u"DB"_s}));
    EXPECT_EQ(rowsOf(other, u"TW_FILE"_s, u"FILE_NAME = 'PAYROLL'"_s).size(), 1);
    EXPECT_EQ(selectedKey(), there({u"FI"_s}));
}

TEST_F(DragAndDrop, ANodeOnItselfKeepsItsPictureAndIsNotDropped)
{
    show(key(payroll));
    grab(key(payroll));
    moveOver(key(payroll));
    EXPECT_FALSE(dropAllowed());
    EXPECT_EQ(tree().DragIcon(), u"Drag File"_s);
    statements.clear();
    release(textPosition(key(payroll)));
    EXPECT_EQ(said(), QStringList());
    EXPECT_FALSE(window->isDragging());
}

TEST_F(DragAndDrop, WhatIsRefusedShowsAnotherPictureUntilItIsAllowedAgain)
{
    furnish();
    show(key(payroll));
    show(there(depot));
    const QStringList before = bothCatalogs();
    grab(key(payroll));
    moveOver(there(depot));
    EXPECT_FALSE(dropAllowed());
    EXPECT_EQ(tree().DragIcon(), u"No Drop"_s);
    EXPECT_EQ(tree().DropHighlight(), find(there(depot)));
    moveOver(there({u"FI"_s}));
    EXPECT_TRUE(dropAllowed());
    EXPECT_EQ(tree().DragIcon(), u"Drag File"_s);
    moveOver(there(depot));
    statements.clear();
    release(textPosition(there(depot)));
    EXPECT_EQ(said(), QStringList());
    EXPECT_EQ(bothCatalogs(), before);
    EXPECT_EQ(tree().DropHighlight(), nullptr);
    EXPECT_EQ(tree().DragIcon(), QString());
}

TEST_F(DragAndDrop, AFieldIsRefusedByTheFilesOfTheCatalog)
{
    changeOther(u"INSERT OR IGNORE INTO TW_FILE (FILE_NAME) VALUES ('KEY')"_s);
    const QString field = key(payroll + QStringList{u"FD"_s, u"fd=SALARY"_s});
    show(field);
    show(there({u"FI"_s, u"fi=KEY"_s}));
    statements.clear();
    dragTo(field, there({u"FI"_s, u"fi=KEY"_s}));
    EXPECT_FALSE(dropAllowed());
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DragAndDrop, EscapeEndsADrag)
{
    show(key(payroll));
    show(there({u"FI"_s}));
    grab(key(payroll));
    moveOver(there({u"FI"_s}));
    statements.clear();
    type(Qt::Key_Escape);
    EXPECT_FALSE(window->isDragging());
    EXPECT_FALSE(tree().IsDragging());
    EXPECT_EQ(tree().DropHighlight(), nullptr);
    EXPECT_EQ(tree().DragIcon(), QString());
    EXPECT_EQ(said(), QStringList());
    // The next drag begins as the first one did.
    release(textPosition(there({u"FI"_s})));
    grab(key(payroll));
    EXPECT_TRUE(window->isDragging());
    type(Qt::Key_Escape);
}

TEST_F(DragAndDrop, ANodeThatTheDragHoversOverIsNotOpened)
{
    show(key(payroll));
    show(there({u"FI"_s}));
    statements.clear();
    grab(key(payroll));
    moveOver(there({u"FI"_s}));
    moveOver(there({u"DB"_s}));
    moveOver(there({u"FI"_s}));
    EXPECT_FALSE(node(there({u"FI"_s})).Expanded());
    EXPECT_FALSE(node(there({u"DB"_s})).Expanded());
    EXPECT_EQ(said(), QStringList());
    type(Qt::Key_Escape);
}

TEST_F(DragAndDrop, NothingIsDroppedOnEmptySpace)
{
    show(key({u"FI"_s}));
    grab(key({u"FI"_s}));
    const QPoint empty(20, tree().viewport()->height() - 40);
    ASSERT_EQ(tree().HitTest(empty), nullptr);
    move(empty, Qt::LeftButton);
    EXPECT_EQ(tree().DropHighlight(), nullptr);
    statements.clear();
    release(empty);
    EXPECT_EQ(said(), QStringList());
    EXPECT_FALSE(window->isDragging());
}

TEST_F(DragAndDrop, ADatasourceNeverBeginsADragAndDropsNothing)
{
    press(key());
    move(textPosition(key()) + QPoint(QApplication::startDragDistance() + 1, 0), Qt::LeftButton);
    EXPECT_FALSE(tree().IsDragging());
    release(textPosition(key()));
    statements.clear();
    window->setDragging(true);
    const DragItem source = item(u"DSN"_s, {datasource});
    const DragItem target = item(u"FI"_s, {other});
    DoDragOver(&tree(), source, target);
    EXPECT_TRUE(dropAllowed());
    EXPECT_FALSE(DoDragDrop(&tree(), source, target));
    EXPECT_EQ(said(), QStringList());
    EXPECT_FALSE(window->isDragging());
}

TEST_F(DragAndDrop, WithoutADragOrWithoutItemsNothingIsJudged)
{
    const DragItem file = item(u"fi"_s, {datasource, u"PAYROLL"_s});
    const DragItem database = item(u"db"_s, {other, u"DEPOT"_s});
    tree().setDragIcon(u"Drag File"_s);
    DoDragOver(&tree(), file, database);
    EXPECT_TRUE(dropAllowed());
    EXPECT_EQ(tree().DragIcon(), u"Drag File"_s);
    window->setDragging(true);
    DoDragOver(&tree(), file, {});
    EXPECT_TRUE(dropAllowed());
    DoDragOver(&tree(), {}, database);
    EXPECT_TRUE(dropAllowed());
    DoDragOver(nullptr, file, database);
    EXPECT_TRUE(dropAllowed());
    EXPECT_EQ(tree().DragIcon(), u"Drag File"_s);
    DoDragOver(&tree(), file, database);
    EXPECT_FALSE(dropAllowed());
    EXPECT_EQ(tree().DragIcon(), u"No Drop"_s);
    EXPECT_FALSE(DoDragDrop(&tree(), file, database));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragAndDrop, CancelAtTheQuestionLeavesTheTreeAlone)
{
    show(key(payroll));
    show(there({u"FI"_s}));
    const QStringList before = wholeTree();
    statements.clear();
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCancel"_s); });
    dragTo(key(payroll), there({u"FI"_s}));
    EXPECT_EQ(said(), QStringList());
    EXPECT_EQ(wholeTree(), before);
    EXPECT_EQ(selectedKey(), key(payroll));
}

TEST_F(DragAndDrop, TheGridOfACollectionThatIsOnViewShowsWhatIsThereNow)
{
    registerFilesRoom();
    show(there({u"FI"_s}));
    show(key(payroll));
    click(there({u"FI"_s}));
    ASSERT_EQ(currentPane(), u"frmFiles"_s);
    const auto rows = [&] { return window->currentPane()->findChild<CellGrid*>()->model()->rowCount(); };
    const int before = rows();
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCopy"_s); });
    dragTo(key(payroll), there({u"FI"_s}));
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(rows(), before + 1);
    window.reset();
    for (const char* pane : {"frmFile", "frmField", "frmFiles", "frmFields"})
        panes::remove(QLatin1String(pane));
}

TEST_F(DragAndDrop, TheStatusLineTellsWhatIsBeingCarried)
{
    using namespace modDragAndDrop;
    using Single = bool (*)(const DragItem&, const DragItem&, DragMode, dao::Database*, dao::Database*);
    const QString d = datasource;
    const std::vector<std::tuple<Single, DragItem, DragItem, QString>> all{
        {DragFileToDSN, item(u"fi"_s, {d, u"PAYROLL"_s}), item(u"FI"_s, {other}), u"Processing File 'PAYROLL'"_s},
        {DragFieldToFile, item(u"fd"_s, {d, u"PAYROLL"_s, u"SALARY"_s}), item(u"fi"_s, {other, u"F"_s}),
         u"Processing Field 'SALARY'"_s},
        {DragDBToDSN, item(u"db"_s, {d, u"SALES"_s}), item(u"DB"_s, {other}), u"Processing Database 'SALES'"_s},
        {DragTableToDB, item(u"ta"_s, {d, u"SALES"_s, u"ORDERS"_s}), item(u"db"_s, {other, u"B"_s}),
         u"Processing Table 'ORDERS'"_s},
        {DragColumnToTable, item(u"co"_s, {d, u"SALES"_s, u"ORDERS"_s, u"BUYER"_s}),
         item(u"ta"_s, {other, u"B"_s, u"T"_s}), u"Processing Column 'BUYER'"_s},
        {DragUserToDSN, item(u"us"_s, {d, u"CLERK"_s}), item(u"US"_s, {other}), u"Processing User 'CLERK'"_s},
        {DragDBPRVToDB, item(u"dbprv"_s, {d, u"SALES"_s, u"ADMIN"_s}), item(u"db"_s, {other, u"B"_s}),
         u"Processing User 'ADMIN'"_s},
        {DragTBLPRVToTable, item(u"tblprv"_s, {d, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}),
         item(u"ta"_s, {other, u"B"_s, u"T"_s}), u"Processing User 'CLERK'"_s},
    };
    for (const auto& [routine, source, target, status] : all) {
        statements.clear();
        statements.failAt(1);
        errors.expect([this, status = status](QWidget& form) {
            EXPECT_EQ(statusText(), status);
            ScriptedErrorForm::press(form, Press::Ignore);
        });
        EXPECT_FALSE(routine(source, target, DragMode::Copy, nullptr, nullptr));
        verify();
    }
}

TEST_F(DragAndDrop, AConnectionThatGoesWhileTheQuestionIsUpEndsIt)
{
    dialogs.expect(u"frmMoveCopy"_s, [&](DialogForm& dialog) {
        CConnections::instance().Remove(other);
        DialogScript::click(dialog, u"cmdMove"_s);
    });
    EXPECT_FALSE(modDragAndDrop::DragFileToDSN(item(u"fi"_s, {datasource, u"PAYROLL"_s}), item(u"FI"_s, {other}),
                                               DragMode::Ask));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragAndDrop, ATargetThatTakesNoRowsKeepsTheSourceOfAField)
{
    changeOther(u"CREATE TRIGGER full BEFORE INSERT ON TW_FIELD "
                "BEGIN SELECT RAISE(ABORT, 'database or disk is full'); END"_s);
    errors.expect(Press::Retry);
    errors.expect(Press::Ignore);
    EXPECT_FALSE(modDragAndDrop::DragFieldToFile(item(u"fd"_s, {datasource, u"PAYROLL"_s, u"SALARY"_s}),
                                                 item(u"fi"_s, {other, u"LEDGER"_s}), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 2u);
    EXPECT_TRUE(errors.shown().back().description.contains(u"database or disk is full"_s));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s).size(), 3);
}

TEST_F(DragAndDrop, AFaultWhileTheTreeIsReadAnewLeavesWhatWasDone)
{
    show(key(payroll));
    show(there({u"FI"_s}));
    dialogs.expect(u"frmMoveCopy"_s, [&](DialogForm& dialog) {
        statements.clear();
        // The first statement behind those of the copy reads the files of the source anew.
        statements.failAt(14);
        DialogScript::click(dialog, u"cmdCopy"_s);
    });
    errors.otherwise(Press::Ignore);
    dragTo(key(payroll), there({u"FI"_s}));
    EXPECT_TRUE(statements.failuresDone());
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"mdiMain.tvwExplorer_Expand"_s);
    EXPECT_EQ(rowsOf(other, u"TW_FIELD"_s, u"FILE_NAME = 'PAYROLL'"_s).size(), 3);
    EXPECT_NE(find(there(payroll)), nullptr);
    EXPECT_FALSE(window->isDragging());
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}
