#include "DragAndDropFixture.h"

#include "CConnections.h"
#include "frmTWErr.h"
#include "modDragAndDrop.h"

#include <QCursor>
#include <QTest>

#include <tuple>

using namespace Qt::StringLiterals;
using modDragAndDrop::DoDragDrop;
using modDragAndDrop::DoDragOver;
using modDragAndDrop::dropAllowed;

namespace
{

const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s};
const QStringList depot{u"DB"_s, u"db=DEPOT"_s};

/// Writes down which routines run when an event of a kind reaches a widget.
class StacksAt final : public QObject
{
public:
    StacksAt(QWidget& widget, QEvent::Type type) : m_type(type) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == m_type)
            stacks.push_back(frmTWErr::CallStack());
        return false;
    }

    std::vector<QStringList> stacks;

private:
    QEvent::Type m_type;
};

} // namespace

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
    EXPECT_EQ(statusText(), u"Ready"_s);
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
    // With the button still down it is over for good, and its release turns to no other pane.
    const QString pane = currentPane();
    moveOver(key(payroll));
    moveOver(there({u"FI"_s}));
    EXPECT_FALSE(window->isDragging());
    release(textPosition(there({u"FI"_s})));
    EXPECT_EQ(currentPane(), pane);
    // The next drag begins as the first one did.
    grab(key(payroll));
    EXPECT_TRUE(window->isDragging());
    type(Qt::Key_Escape);
}

TEST_F(DragAndDrop, ANodeOpenedMeanwhileLetsNoRefusedDropThrough)
{
    const QString field = key(payroll + QStringList{u"FD"_s, u"fd=SALARY"_s});
    show(field);
    show(key({u"FI"_s, u"fi=EMPTY"_s}));
    grab(field);
    type(Qt::Key_Plus);
    moveOver(key());
    EXPECT_FALSE(dropAllowed());
    // Assistive tools open nodes without the keyboard.
    node(key({u"FI"_s, u"fi=EMPTY"_s})).setExpanded(true);
    EXPECT_FALSE(tree().IsDragging());
    statements.clear();
    release(textPosition(key()));
    EXPECT_EQ(said(), QStringList());

    allowDrop();
    EXPECT_FALSE(DoDragDrop(&tree(), item(u"fd"_s, {datasource, u"PAYROLL"_s, u"SALARY"_s}), item(u"DSN"_s, {other})));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragAndDrop, AFileHasNoPlaceAmongDatabasesWhateverWasJudged)
{
    const DragItem file = item(u"fi"_s, {datasource, u"PAYROLL"_s});
    const QStringList column{other, u"DEPOT"_s, u"PARTS"_s, u"WEIGHT"_s};
    const std::vector<std::pair<QString, int>> types{
        {u"db"_s, 2}, {u"TA"_s, 2}, {u"ta"_s, 3}, {u"CO"_s, 3}, {u"co"_s, 4}};
    for (const auto& [type, names] : types) {
        allowDrop();
        window->setDragging(true);
        EXPECT_FALSE(DoDragDrop(&tree(), file, item(type, column.first(names)))) << type.toStdString();
        EXPECT_EQ(said(), QStringList());
        EXPECT_FALSE(window->isDragging());
    }
}

TEST_F(DragAndDrop, WhatWasRefusedStaysSoOverItself)
{
    furnish();
    show(key(payroll));
    show(there(depot));
    grab(key(payroll));
    moveOver(there(depot));
    moveOver(key(payroll));
    EXPECT_FALSE(dropAllowed());
    EXPECT_EQ(tree().DragIcon(), u"No Drop"_s);
    type(Qt::Key_Escape);
}

TEST_F(DragAndDrop, SpecialColumnsAreRefusedEverywhere)
{
    furnish();
    const QString special = key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"SCO"_s});
    show(special);
    show(there(depot));
    statements.clear();
    dragTo(special, there({u"FI"_s}));
    EXPECT_FALSE(dropAllowed());
    dragTo(special, there(depot));
    EXPECT_FALSE(dropAllowed());
    EXPECT_EQ(said(), QStringList());
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

TEST_F(DragAndDrop, ThePictureChangesWithinTheRoutineThatJudges)
{
    show(key(payroll));
    grab(key(payroll));
    const StacksAt seen(*tree().viewport(), QEvent::CursorChange);
    moveOver(key());
    EXPECT_FALSE(dropAllowed());
    EXPECT_EQ(seen.stacks,
              (std::vector{QStringList{u"modDragAndDrop.DoDragOver"_s, u"mdiMain.tvwExplorer_DragOver"_s}}));
    type(Qt::Key_Escape);
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
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DragAndDrop, TheHighlightStandsUntilTheDropHasEnded)
{
    show(key(payroll));
    TreeNode& highlit = node(there({u"FI"_s}));
    const auto answer = [&](const QString& button) {
        dialogs.expect(u"frmMoveCopy"_s, [&, button](DialogForm& dialog) {
            EXPECT_EQ(tree().DropHighlight(), &highlit);
            DialogScript::click(dialog, button);
        });
    };
    answer(u"cmdCancel"_s);
    dragTo(key(payroll), there({u"FI"_s}));
    EXPECT_EQ(tree().DropHighlight(), nullptr);

    const auto drop = [&](const DragItem& target) {
        tree().setDropHighlight(&highlit);
        window->setDragging(true);
        const DragItem file = item(u"fi"_s, {datasource, u"PAYROLL"_s});
        DoDragOver(&tree(), file, target);
        EXPECT_FALSE(DoDragDrop(&tree(), file, target));
        EXPECT_EQ(tree().DropHighlight(), nullptr);
        EXPECT_FALSE(window->isDragging());
    };
    drop(item(u"db"_s, {other, u"DEPOT"_s}));
    EXPECT_FALSE(dropAllowed());
    answer(u"cmdCancel"_s);
    drop(item(u"FI"_s, {other}));
    EXPECT_TRUE(dropAllowed());
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

TEST_F(DragAndDrop, AFailureIsReportedWithTheWayFromTheDrop)
{
    show(key(payroll));
    show(there({u"FI"_s}));
    grab(key(payroll));
    moveOver(there({u"FI"_s}));
    dialogs.expect(u"frmMoveCopy"_s, [&](DialogForm& dialog) {
        statements.clear();
        statements.failAt(1);
        DialogScript::click(dialog, u"cmdMove"_s);
    });
    errors.expect(Press::Ignore);
    release(textPosition(there({u"FI"_s})));
    verify();
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragFileToDSN"_s);
    const QStringList& stack = errors.shown().front().callStack;
    for (const QString& routine :
         {u"modDragAndDrop.DragFileToDSN"_s, u"modDragAndDrop.DoDragDrop"_s, u"mdiMain.tvwExplorer_DragDrop"_s})
        EXPECT_TRUE(stack.contains(routine)) << routine.toStdString() << " in " << stack.join(' ').toStdString();
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(DragAndDrop, WhatTheUserDoesMeanwhileWaitsForTheEndOfTheDrop)
{
    furnish();
    changeOther(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = 2, COLUMN_TYPE = 0 WHERE COLUMN_NAME = 'WEIGHT'"_s);
    const QStringList column{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s, u"co=AMOUNT"_s};
    const QStringList columns{u"DB"_s, u"db=DEPOT"_s, u"TA"_s, u"ta=PARTS"_s, u"CO"_s};
    show(key(column));
    show(there(columns));
    StacksAt seen(*tree().viewport(), QEvent::MouseMove);
    grab(key(column));
    moveOver(there(columns));
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCopy"_s); });
    boxes.expectAsk(u"A column already exists is in Datasource '%1', Database 'DEPOT', Table 'PARTS' "
                    "with a Column Type of 0 and a column number of 2\nDo you want to overwrite it?"_s.arg(other),
                    boxes::Answer::Yes, [&] {
                        seen.stacks.clear();
                        // Into the queue of the window system, as any input of the user comes.
                        QCursor::setPos(tree().viewport()->mapToGlobal(textPosition(key())));
                    });
    boxes.expectInform(u"WARNING - The Column 'AMOUNT' refers Field 'SALARY' which does not exists in \n"
                       "File 'PAYROLL' (refered to by Table 'PARTS')."_s);
    release(textPosition(there(columns)));
    verify();
    EXPECT_EQ(seen.stacks.size(), 0u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !seen.stacks.empty(); }));
    for (const QStringList& stack : seen.stacks)
        EXPECT_EQ(stack, QStringList());
    EXPECT_EQ(selectedKey(), there(columns));
}

TEST_F(DragAndDrop, ACollectionThatCannotBeListedEndsItsRoutineAlone)
{
    using namespace modDragAndDrop;
    using Collection = bool (*)(const DragItem&, const DragItem&, DragMode);
    const QString d = datasource;
    const DragItem database = item(u"db"_s, {other, u"B"_s});
    const DragItem table = item(u"ta"_s, {other, u"B"_s, u"T"_s});
    const std::vector<std::tuple<Collection, DragItem, DragItem, QString>> all{
        {DragFilesToDSN, item(u"FI"_s, {d}), item(u"FI"_s, {other}), u"DragFilesToDSN"_s},
        {DragFieldsToFile, item(u"FD"_s, {d, u"PAYROLL"_s}), item(u"fi"_s, {other, u"F"_s}), u"DragFieldsToFile"_s},
        {DragDBsToDSN, item(u"DB"_s, {d}), item(u"DB"_s, {other}), u"DragDBsToDSN"_s},
        {DragTablesToDB, item(u"TA"_s, {d, u"SALES"_s}), database, u"DragTablesToDB"_s},
        {DragColumnsToTable, item(u"CO"_s, {d, u"SALES"_s, u"ORDERS"_s}), table, u"DragColumnsToTable"_s},
        {DragUsersToDSN, item(u"US"_s, {d}), item(u"US"_s, {other}), u"DragUsersToDSN"_s},
        {DragDBPRVsToDB, item(u"DBPRV"_s, {d, u"SALES"_s}), database, u"DragDBPRVsToDB"_s},
        {DragTBLPRVsToTable, item(u"TBLPRV"_s, {d, u"SALES"_s, u"ORDERS"_s}), table, u"DragTBLPRVsToTable"_s},
    };
    for (const auto& [routine, source, target, name] : all) {
        statements.clear();
        statements.failAt(1);
        errors.expect(Press::Ignore);
        EXPECT_FALSE(routine(source, target, DragMode::Move));
        verify();
        EXPECT_EQ(errors.shown().back().trappedIn, u"modDragAndDrop."_s + name);
        EXPECT_EQ(said().size(), 1);
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }
}
