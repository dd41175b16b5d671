#include "GridPane.h"

#include "CellGrid.h"
#include "GridTest.h"
#include "MousePointer.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// What all grids have in common, seen in the grid of files.
class GridOfFiles : public GridTest
{
protected:
    void openFiles() { open({u"FI"_s}); }

    QString remarksOf(const QString& file) const
    {
        return world.value(datasource, u"SELECT REMARKS FROM TW_FILE WHERE FILE_NAME = '"_s + file + u"'"_s);
    }
};

} // namespace

// Entering -----------------------------------------------------------------------------------------------------------

TEST_F(GridOfFiles, TheEditorLiesOverItsCellAndTwoPixelsMore)
{
    openFiles();
    for (const char* heading : {"Open String", "Record Size", "File Organisation"}) {
        SCOPED_TRACE(heading);
        click(u"PAYROLL"_s, QLatin1String(heading));
        hit(Qt::Key_Return);
        ASSERT_NE(editor(), nullptr);
        EXPECT_EQ(editor()->geometry(), grid().visualRect(grid().currentIndex()).adjusted(0, 0, 2, 0));
        EXPECT_TRUE(editor()->hasFocus());
        EXPECT_EQ(editor()->accessibleName(), QLatin1String(heading));
        window->resize(window->width() - 60, window->height());
        EXPECT_EQ(editor()->geometry(), grid().visualRect(grid().currentIndex()).adjusted(0, 0, 2, 0));
    }
}

TEST_F(GridOfFiles, AClickMovesTheCurrentCellAndADoubleClickEntersIt)
{
    openFiles();
    click(1, u"Remarks"_s);
    EXPECT_EQ(current(), u"1 Remarks"_s);
    EXPECT_EQ(editor(), nullptr);
    doubleClick(0, u"Remarks"_s);
    EXPECT_EQ(current(), u"0 Remarks"_s);
    EXPECT_NE(editor(), nullptr);
}

TEST_F(GridOfFiles, EnterOpensTheCellWithItsTextAndTheCaretAtTheEnd)
{
    change(u"UPDATE TW_FILE SET REMARKS = 'wages' WHERE FILE_NAME = 'PAYROLL'"_s);
    openFiles();
    for (const Qt::Key opens : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
        click(u"PAYROLL"_s, u"Remarks"_s);
        hit(opens);
        EXPECT_EQ(editorText(), u"wages"_s);
        auto* text = qobject_cast<QLineEdit*>(editor());
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text->cursorPosition(), 5);
        EXPECT_FALSE(text->hasSelectedText());
        hit(Qt::Key_Escape);
    }
}

TEST_F(GridOfFiles, BackspaceAndDeleteOpenTheCellEmpty)
{
    openFiles();
    for (const Qt::Key clears : {Qt::Key_Backspace, Qt::Key_Delete}) {
        click(u"PAYROLL"_s, u"Record Size"_s);
        hit(clears);
        ASSERT_NE(editor(), nullptr);
        EXPECT_EQ(editorText(), QString());
        hit(Qt::Key_Escape);
        EXPECT_EQ(cell(0, u"Record Size"_s), u"12"_s);
    }
}

TEST_F(GridOfFiles, TypingOpensTheCellAndGoesOnBehindItsText)
{
    openFiles();
    click(u"PAYROLL"_s, u"Record Size"_s);
    write(u"3"_s);
    EXPECT_EQ(editorText(), u"123"_s);
    write(u"4"_s);
    EXPECT_EQ(editorText(), u"1234"_s);
}

TEST_F(GridOfFiles, KeysPassTheFilterOfTheColumn)
{
    openFiles();
    click(u"PAYROLL"_s, u"Record Size"_s);
    write(u"x"_s);
    EXPECT_EQ(editorText(), u"12"_s);
    hit(Qt::Key_Escape);
    click(u"PAYROLL"_s, u"File Name"_s);
    write(u" ab-c.%1"_s);
    EXPECT_EQ(editorText(), u"PAYROLL_AB-C1"_s);
    hit(Qt::Key_Escape);
    click(u"PAYROLL"_s, u"Remarks"_s);
    write(u"a 'b' %1 c."_s);
    EXPECT_EQ(editorText(), u"a 'b' %1 c."_s);
}

TEST_F(GridOfFiles, EscapeOnTheGridDoesNothing)
{
    openFiles();
    click(u"PAYROLL"_s, u"Remarks"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(current(), u"0 Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(GridOfFiles, TabMovesToTheNextCellAndBack)
{
    openFiles();
    click(u"PAYROLL"_s, u"File Name"_s);
    hit(Qt::Key_Tab);
    EXPECT_EQ(current(), u"0 Open String"_s);
    hit(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(current(), u"0 File Name"_s);
    EXPECT_EQ(editor(), nullptr);
}

// The editor's keys --------------------------------------------------------------------------------------------------

TEST_F(GridOfFiles, EnterEndsTheEditAndStaysInTheCell)
{
    openFiles();
    change(u"PAYROLL"_s, u"Remarks"_s, u"wages"_s);
    EXPECT_EQ(cell(0, u"Remarks"_s), QString());
    hit(Qt::Key_Return);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(cell(0, u"Remarks"_s), u"wages"_s);
    EXPECT_EQ(current(), u"0 Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(GridOfFiles, EscapeInACellLeavesItAsItWas)
{
    openFiles();
    change(u"PAYROLL"_s, u"Remarks"_s, u"wages"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(cell(0, u"Remarks"_s), QString());
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(GridOfFiles, EscapeDropsTheChangeOfItsCellAlone)
{
    openFiles();
    change(u"PAYROLL"_s, u"Remarks"_s, u"wages"_s);
    hit(Qt::Key_Return);
    change(u"PAYROLL"_s, u"File Name"_s, u"x"_s);
    hit(Qt::Key_Escape);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(remarksOf(u"PAYROLL"_s), u"wages"_s);
}

TEST_F(GridOfFiles, TabAndArrowsEndTheEditAndMoveOn)
{
    openFiles();
    change(u"PAYROLL"_s, u"Open String"_s, u"a"_s);
    hit(Qt::Key_Tab);
    EXPECT_EQ(current(), u"0 Record Size"_s);
    EXPECT_EQ(cell(0, u"Open String"_s), u"A"_s);
    write(u"3"_s);
    hit(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(current(), u"0 Open String"_s);
    EXPECT_EQ(cell(0, u"Record Size"_s), u"123"_s);
    write(u"b"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(current(), u"1 Open String"_s);
    EXPECT_EQ(world.value(datasource, u"SELECT OPEN_STRING FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s), u"AB"_s);
}

TEST_F(GridOfFiles, AListTakesTheFirstItemThatBeginsWithWhatIsTyped)
{
    openFiles();
    click(u"PAYROLL"_s, u"File Organisation"_s);
    write(u"s"_s);
    auto* list = qobject_cast<QComboBox*>(editor());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->currentText(), u"SEQUENTIAL"_s);
    EXPECT_EQ(list->currentIndex(), 2);
    EXPECT_EQ(list->lineEdit()->selectedText(), u"EQUENTIAL"_s);
    EXPECT_EQ(list->lineEdit()->cursorPosition(), 1);
    write(u"e"_s);
    EXPECT_EQ(list->lineEdit()->selectedText(), u"QUENTIAL"_s);
    write(u"x"_s);
    EXPECT_EQ(list->currentText(), u"SEQUENTIAL"_s);
    EXPECT_EQ(list->lineEdit()->selectedText(), u"QUENTIAL"_s);
}

TEST_F(GridOfFiles, WithoutASelectionAKeyGoesBehindTheWholeTextOfAList)
{
    openFiles();
    click(u"PAYROLL"_s, u"File Organisation"_s);
    hit(Qt::Key_Return);
    hit(Qt::Key_End);
    auto* list = qobject_cast<QComboBox*>(editor());
    ASSERT_NE(list, nullptr);
    ASSERT_FALSE(list->lineEdit()->hasSelectedText());
    // No item begins with the text and the key, although one begins with the key.
    for (const char* key : {"s", "d", " "}) {
        write(QLatin1String(key));
        EXPECT_EQ(editorText(), u"INDEXED"_s);
        EXPECT_FALSE(list->lineEdit()->hasSelectedText());
    }
    for (int i = 0; i < 6; ++i)
        hit(Qt::Key_Backspace);
    EXPECT_EQ(editorText(), u"I"_s);
    write(u"n"_s);
    EXPECT_EQ(editorText(), u"INDEXED"_s);
    EXPECT_EQ(list->lineEdit()->selectedText(), u"DEXED"_s);
}

TEST_F(GridOfFiles, AListKeepsTheCellForATextThatItLacks)
{
    openFiles();
    click(u"PAYROLL"_s, u"File Organisation"_s);
    hit(Qt::Key_Return);
    paste(u"something else"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(cell(0, u"File Organisation"_s), u"INDEXED"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

// Texts --------------------------------------------------------------------------------------------------------------

TEST_F(GridOfFiles, FreeTextArrivesInTheCatalogAsItWasGiven)
{
    openFiles();
    const QString text = u"It's 100% %1 😀 \"x\"\nsecond line; --"_s;
    click(u"PAYROLL"_s, u"Remarks"_s);
    hit(Qt::Key_Return);
    paste(text);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(remarksOf(u"PAYROLL"_s), text);

    // A row that is read back and written for another column keeps it.
    reopen({u"FI"_s});
    change(u"PAYROLL"_s, u"Open String"_s, u"x"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(remarksOf(u"PAYROLL"_s), text);
    // As does a cell that was only entered.
    click(u"PAYROLL"_s, u"Remarks"_s);
    hit(Qt::Key_Return);
    statements.clear();
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(GridOfFiles, ATextThatNoEntryHoldsWholeIsUnchangedByEnteringItsCell)
{
    change(u"UPDATE TW_FILE SET REMARKS = printf('%.40000c', 'x') || 'end' WHERE FILE_NAME = 'PAYROLL'"_s);
    openFiles();
    ASSERT_EQ(cell(0, u"Remarks"_s).size(), 40003);
    for (const Qt::Key leaves : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape}) {
        click(u"PAYROLL"_s, u"Remarks"_s);
        hit(Qt::Key_Return);
        ASSERT_NE(editor(), nullptr);
        EXPECT_LT(editorText().size(), 40003);
        hit(leaves);
        EXPECT_EQ(editor(), nullptr);
        EXPECT_EQ(cell(0, u"Remarks"_s).size(), 40003);
    }
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
    // A change of another cell writes it whole.
    change(u"PAYROLL"_s, u"Open String"_s, u"a"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(remarksOf(u"PAYROLL"_s), QString(40000, u'x') + u"end"_s);
}

TEST_F(GridOfFiles, APastedTextIsCutToItsColumn)
{
    openFiles();
    click(u"PAYROLL"_s, u"Remarks"_s);
    hit(Qt::Key_Return);
    paste(QString(300, u'x'));
    EXPECT_EQ(editorText().size(), 254);
    hit(Qt::Key_Escape);
    click(u"PAYROLL"_s, u"Remarks"_s);
    paste(u"straight into the grid"_s);
    EXPECT_EQ(editorText(), u"straight into the grid"_s);
}

TEST_F(GridOfFiles, APastedTextThatIsNoNumberIsOutOfRange)
{
    openFiles();
    click(u"PAYROLL"_s, u"Record Size"_s);
    hit(Qt::Key_Delete);
    paste(u"5, REMARKS = 'x'"_s);
    boxes.expectInform(u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(GridOfFiles, ANullShowsAsAnEmptyText)
{
    change(u"UPDATE TW_FILE SET REMARKS = NULL, OPEN_STRING = NULL WHERE FILE_NAME = 'PAYROLL'"_s);
    openFiles();
    EXPECT_EQ(rows().first(), u"PAYROLL||12|INDEXED|FIXED|"_s);
}

// Leaving the row ----------------------------------------------------------------------------------------------------

TEST_F(GridOfFiles, AClickBesideTheCellsWritesTheRow)
{
    openFiles();
    change(u"PAYROLL"_s, u"Remarks"_s, u"wages"_s);
    clickBeside();
    EXPECT_EQ(remarksOf(u"PAYROLL"_s), u"wages"_s);
    EXPECT_EQ(current(), u"0 Remarks"_s);
    statements.clear();
    clickBeside();
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(GridOfFiles, AClickOnAnotherNodeDropsTheEdit)
{
    openFiles();
    change(u"PAYROLL"_s, u"Remarks"_s, u"wages"_s);
    hit(Qt::Key_Return);
    change(u"PAYROLL"_s, u"Open String"_s, u"x"_s);
    click(key());
    EXPECT_EQ(remarksOf(u"PAYROLL"_s), QString());
    click(key({u"FI"_s}));
    EXPECT_EQ(rows().first(), u"PAYROLL||12|INDEXED|FIXED|"_s);
    EXPECT_EQ(editor(), nullptr);
    statements.clear();
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(GridOfFiles, ANewRowThatIsEmptiedAgainIsNotAdded)
{
    openFiles();
    change(blankRow(), u"File Name"_s, u"a"_s);
    hit(Qt::Key_Return);
    change(blankRow(), u"File Name"_s, {});
    click(0, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(current(), u"0 Remarks"_s);
}

TEST_F(GridOfFiles, DownInTheLastRowAddsItOnce)
{
    openFiles();
    click(blankRow(), u"File Name"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(grid().Rows(), 3);
    write(u"a"_s);
    hit(Qt::Key_Tab);
    hit(Qt::Key_Tab);
    write(u"1"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(grid().Rows(), 4);
    EXPECT_EQ(current(), u"3 Record Size"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(grid().Rows(), 4);
}

TEST_F(GridOfFiles, TabInTheLastCellGoesOnInTheNextNewRow)
{
    openFiles();
    change(blankRow(), u"File Name"_s, u"a"_s);
    change(blankRow(), u"Record Size"_s, u"1"_s);
    change(blankRow(), u"Remarks"_s, u"first"_s);
    hit(Qt::Key_Tab);
    EXPECT_EQ(current(), u"3 File Name"_s);
    EXPECT_EQ(remarksOf(u"A"_s), u"first"_s);
}

TEST_F(GridOfFiles, TabInTheLastCellOfARowThatCannotBeAddedReportsItOnce)
{
    const QStringList add{
        u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'A'"_s,
        u"INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
        "VALUES ('A', '', 1, 'INDEXED', 'FIXED', 'first')"_s};
    openFiles();
    const int row = blankRow();
    change(row, u"File Name"_s, u"a"_s);
    change(row, u"Record Size"_s, u"1"_s);
    change(row, u"Remarks"_s, u"first"_s);
    statements.failAt(2);
    errors.expect(Press::Ignore);
    hit(Qt::Key_Tab);
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmFiles.LeaveCell"_s);
    EXPECT_EQ(statements.statements(), add);
    EXPECT_EQ(grid().Rows(), row + 1);
    EXPECT_EQ(rows().last(), u"A||1|INDEXED|FIXED|first"_s);
    EXPECT_EQ(current(), QString::number(row) + u" Remarks"_s);

    statements.clear();
    hit(Qt::Key_Tab);
    EXPECT_EQ(sent(), add);
    EXPECT_EQ(remarksOf(u"A"_s), u"first"_s);
    EXPECT_EQ(current(), QString::number(row + 1) + u" File Name"_s);
}

TEST_F(GridOfFiles, TabInTheLastCellOfARefusedRowLeavesTheFailingCellOpen)
{
    openFiles();
    const int row = blankRow();
    change(row, u"File Name"_s, u"a"_s);
    change(row, u"Remarks"_s, u"first"_s);
    boxes.expectInform(u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s);
    hit(Qt::Key_Tab);
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(current(), QString::number(row) + u" Record Size"_s);
    ASSERT_NE(editor(), nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(current(), QString::number(row) + u" Record Size"_s);
    ASSERT_NE(editor(), nullptr);
    EXPECT_TRUE(editor()->isAncestorOf(focus()) || editor() == focus());
    EXPECT_EQ(sent(), QStringList());
    write(u"5"_s);
    EXPECT_EQ(editorText(), u"5"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(remarksOf(u"A"_s), u"first"_s);
}

TEST_F(GridOfFiles, ARefusedRowKeepsTheCellWhateverTheWayOut)
{
    openFiles();
    change(blankRow(), u"File Name"_s, u"a"_s);
    const auto refused = [&] {
        boxes.expectInform(u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s);
    };
    const QString there = QString::number(blankRow()) + u" Record Size"_s;
    refused();
    clickBeside();
    EXPECT_EQ(current(), there);
    EXPECT_NE(editor(), nullptr);
    refused();
    hit(Qt::Key_Down);
    EXPECT_EQ(current(), there);
    EXPECT_NE(editor(), nullptr);
    refused();
    hit(Qt::Key_Up);
    EXPECT_EQ(current(), there);
    refused();
    doubleClick(0, u"Remarks"_s);
    EXPECT_EQ(current(), there);
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
    write(u"5"_s);
    click(0, u"Remarks"_s);
    EXPECT_EQ(current(), u"0 Remarks"_s);
    EXPECT_EQ(world.value(datasource, u"SELECT RECORD_SIZE FROM TW_FILE WHERE FILE_NAME = 'A'"_s), u"5"_s);
}

TEST_F(GridOfFiles, AFailureNamesTheRoutineAndTheRowCanBeTriedAgain)
{
    openFiles();
    change(u"PAYROLL"_s, u"Remarks"_s, u"wages"_s);
    statements.failAt(1);
    errors.expect(Press::Ignore);
    click(u"EMPTY"_s, u"Remarks"_s);
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmFiles.LeaveCell"_s);
    EXPECT_EQ(errors.shown()[0].callStack, QStringList{u"frmFiles.LeaveCell"_s});
    EXPECT_EQ(current(), u"0 Remarks"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(remarksOf(u"PAYROLL"_s), u"wages"_s);
    EXPECT_EQ(current(), u"1 Remarks"_s);
}

TEST_F(GridOfFiles, AFailedReadingLeavesAnEmptyGridThatTakesNothing)
{
    open({u"FI"_s});
    statements.failAt(1);
    errors.expect(Press::Ignore);
    click(key({u"FI"_s}));
    EXPECT_EQ(errors.shown()[0].trappedIn, u"modGrid.PopulateGrid"_s);
    EXPECT_EQ(errors.shown()[0].callStack.mid(0, 3),
              (QStringList{u"modGrid.PopulateGrid"_s, u"frmFiles.Display"_s, u"mdiMain.PaneDisplay"_s}));
    EXPECT_EQ(grid().Rows(), 0);
    grid().setFocus();
    write(u"x"_s);
    EXPECT_EQ(editor(), nullptr);
    click(key({u"FI"_s}));
    EXPECT_EQ(grid().Rows(), 3);
}

// Conversions --------------------------------------------------------------------------------------------------------

TEST(GridPane, FlagsAreReadFromTheirWords)
{
    for (const char* set : {"Yes", "YES", "true", "On"})
        EXPECT_TRUE(GridPane::ToBoolean(QLatin1String(set))) << set;
    for (const char* clear : {"No", "", "1", "Yes ", "False"})
        EXPECT_FALSE(GridPane::ToBoolean(QLatin1String(clear))) << clear;
}

TEST(GridPane, KindsOfSearchAreReadFromTheirNames)
{
    EXPECT_EQ(GridPane::ToSearchable(u"Unsearchable"_s), 0);
    EXPECT_EQ(GridPane::ToSearchable(u"LIKE only"_s), 1);
    EXPECT_EQ(GridPane::ToSearchable(u"All except LIKE"_s), 2);
    EXPECT_EQ(GridPane::ToSearchable(u"Searchable"_s), 3);
    EXPECT_EQ(GridPane::ToSearchable(u"Yes"_s), 0);
}
