#include "GridTest.h"

#include "CellGrid.h"
#include "FaultSweep.h"
#include "Settings.h"
#include "ToolBar.h"
#include "mdiMain.h"

#include <QComboBox>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

class FilesGrid : public GridTest
{
protected:
    void openFiles() { open({u"FI"_s}); }

    /// The files that the tests know, as the catalog has them.
    QStringList storedFiles() const
    {
        return stored(u"SELECT FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS "
                      "FROM TW_FILE WHERE FILE_NAME IN ('PAYROLL', 'EMPTY', 'BILLS', 'A', 'B', 'C') "
                      "ORDER BY FILE_NAME"_s);
    }
};

const QString empty = u"EMPTY||0|RELATIVE|FIXED|"_s;
const QString payroll = u"PAYROLL||12|INDEXED|FIXED|"_s;

const QString duplicateOfBills = u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'BILLS'"_s;
const QString deletePayroll = u"DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s;
const QString insertBills =
    u"INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
    "VALUES ('BILLS', '', 12, 'INDEXED', 'FIXED', '')"_s;

} // namespace

TEST_F(FilesGrid, ShowsTheFilesAndABlankRow)
{
    openFiles();
    EXPECT_EQ(paneTitle(), datasource + u" - Files"_s);
    QStringList headings;
    for (int column = 0; column < grid().Cols(); ++column)
        headings.append(grid().Heading(column));
    EXPECT_EQ(headings, (QStringList{u"File Name"_s, u"Open String"_s, u"Record Size"_s, u"File Organisation"_s,
                                     u"Record Type"_s, u"Remarks"_s}));
    EXPECT_EQ(rows(), (QStringList{payroll, empty, u"|||INDEXED|FIXED|"_s}));
    EXPECT_EQ(current(), u"0 File Name"_s);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(FilesGrid, HiddenSystemFilesAreLeftOutByTheStatement)
{
    openFiles();
    statements.clear();
    click(key({u"FI"_s}));
    EXPECT_EQ(statements.statements(),
              (QStringList{u"SELECT FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS "
                           "FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD',"
                           "'FILE','KEY','LOCDT','SQLDT','TABLE','TBLPRV','USER')"_s}));
}

TEST_F(FilesGrid, ShownSystemFilesComeInOrderAndTakeNoEditor)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    openFiles();
    statements.clear();
    click(key({u"FI"_s}));
    EXPECT_EQ(statements.statements(),
              (QStringList{u"SELECT FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS "
                           "FROM TW_FILE ORDER BY FILE_NAME ASC"_s}));
    for (const char* reserved : {"CNTRL", "COLUMN", "DB", "DBPRV", "DRIVER", "FIELD", "FILE", "KEY", "LOCDT", "SQLDT",
                                 "TABLE", "TBLPRV", "USER"}) {
        SCOPED_TRACE(reserved);
        click(QLatin1String(reserved), u"Remarks"_s);
        hit(Qt::Key_Return);
        EXPECT_EQ(editor(), nullptr);
        write(u"x"_s);
        EXPECT_EQ(editor(), nullptr);
    }
    click(u"PAYROLL"_s, u"Remarks"_s);
    hit(Qt::Key_Return);
    EXPECT_NE(editor(), nullptr);
}

TEST_F(FilesGrid, ARowIsWrittenWhenTheCurrentCellMovesToAnotherRow)
{
    openFiles();
    change(u"PAYROLL"_s, u"Open String"_s, u"shared"_s);
    change(u"PAYROLL"_s, u"Remarks"_s, u"It's 100% O'Hara"_s);
    EXPECT_EQ(sent(), QStringList());
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), (QStringList{u"UPDATE TW_FILE SET OPEN_STRING = 'SHARED',RECORD_SIZE = 12,"
                                   "FILE_ORGANISATION = 'INDEXED',RECORD_TYPE = 'FIXED',"
                                   "REMARKS = 'It''s 100% O''Hara' WHERE FILE_NAME = 'PAYROLL'"_s}));
    EXPECT_EQ(storedFiles(), (QStringList{empty, u"PAYROLL|SHARED|12|INDEXED|FIXED|It's 100% O'Hara"_s}));
    EXPECT_EQ(current(), u"1 Remarks"_s);
    EXPECT_TRUE(grid().hasFocus());

    statements.clear();
    click(u"PAYROLL"_s, u"Remarks"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(FilesGrid, ThreeRowsAreAddedOneBelowTheOther)
{
    openFiles();
    click(blankRow(), u"File Name"_s);
    for (const char* name : {"a", "b", "c"}) {
        write(QLatin1String(name));
        hit(Qt::Key_Tab);
        hit(Qt::Key_Tab);
        write(u"80"_s);
        hit(Qt::Key_Down);
        EXPECT_EQ(current(), QString::number(blankRow()) + u" Record Size"_s);
        EXPECT_EQ(rows().last(), u"|||INDEXED|FIXED|"_s);
        click(blankRow(), u"File Name"_s);
    }
    EXPECT_EQ(storedFiles(), (QStringList{u"A||80|INDEXED|FIXED|"_s, u"B||80|INDEXED|FIXED|"_s,
                                          u"C||80|INDEXED|FIXED|"_s, empty, payroll}));
    EXPECT_EQ(children(key({u"FI"_s})).first(3), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
}

TEST_F(FilesGrid, AnAddedRowHasNoOldRowToDelete)
{
    openFiles();
    change(blankRow(), u"File Name"_s, u"bills"_s);
    change(blankRow(), u"Record Size"_s, u"12"_s);
    click(0, u"File Name"_s);
    EXPECT_EQ(sent(), (QStringList{duplicateOfBills, insertBills}));
    EXPECT_EQ(rows(), (QStringList{payroll, empty, u"BILLS||12|INDEXED|FIXED|"_s, u"|||INDEXED|FIXED|"_s}));

    statements.clear();
    change(u"BILLS"_s, u"Remarks"_s, u"paid"_s);
    click(0, u"File Name"_s);
    EXPECT_EQ(sent(), (QStringList{u"UPDATE TW_FILE SET OPEN_STRING = '',RECORD_SIZE = 12,FILE_ORGANISATION = "
                                   "'INDEXED',RECORD_TYPE = 'FIXED',REMARKS = 'paid' WHERE FILE_NAME = 'BILLS'"_s}));
}

TEST_F(FilesGrid, ARenamedFileLeavesItsFieldsAndTablesUnderTheOldName)
{
    openFiles();
    change(u"PAYROLL"_s, u"File Name"_s, u"bills"_s);
    click(u"EMPTY"_s, u"File Name"_s);
    EXPECT_EQ(sent(), (QStringList{duplicateOfBills, deletePayroll, insertBills}));
    EXPECT_EQ(storedFiles(), (QStringList{u"BILLS||12|INDEXED|FIXED|"_s, empty}));
    EXPECT_EQ(stored(u"SELECT FILE_NAME, COUNT(*) FROM TW_FIELD WHERE FILE_NAME IN ('PAYROLL', 'BILLS') "
                     "GROUP BY FILE_NAME"_s),
              (QStringList{u"PAYROLL|3"_s}));
    EXPECT_EQ(stored(u"SELECT FILE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES'"_s), QStringList{u"PAYROLL"_s});
    EXPECT_TRUE(children(key({u"FI"_s})).contains(u"BILLS"_s));
    EXPECT_FALSE(children(key({u"FI"_s})).contains(u"PAYROLL"_s));

    // From now on the row goes by its new name.
    statements.clear();
    change(u"BILLS"_s, u"Remarks"_s, u"x"_s);
    click(u"EMPTY"_s, u"File Name"_s);
    EXPECT_TRUE(sent().constFirst().endsWith(u"WHERE FILE_NAME = 'BILLS'"_s));
}

TEST_F(FilesGrid, ANameThatIsPutBackIsNoOtherName)
{
    openFiles();
    change(u"PAYROLL"_s, u"File Name"_s, u"bills"_s);
    hit(Qt::Key_Return);
    change(0, u"File Name"_s, u"payroll"_s);
    click(u"EMPTY"_s, u"File Name"_s);
    EXPECT_EQ(sent(), (QStringList{u"UPDATE TW_FILE SET OPEN_STRING = '',RECORD_SIZE = 12,FILE_ORGANISATION = "
                                   "'INDEXED',RECORD_TYPE = 'FIXED',REMARKS = '' WHERE FILE_NAME = 'PAYROLL'"_s}));
}

TEST_F(FilesGrid, ARowThatAFailureLeftDeletedIsAddedUnderAnyName)
{
    openFiles();
    change(u"PAYROLL"_s, u"File Name"_s, u"bills"_s);
    statements.failAt(3);
    errors.expect(Press::Ignore);
    click(u"EMPTY"_s, u"File Name"_s);
    EXPECT_EQ(storedFiles(), QStringList{empty});
    change(0, u"File Name"_s, u"payroll"_s);
    click(u"EMPTY"_s, u"File Name"_s);
    EXPECT_EQ(storedFiles(), (QStringList{empty, payroll}));
}

TEST_F(FilesGrid, ARecordSizeOutOfRangeIsRefused)
{
    openFiles();
    for (const char* size : {"65536", "-1", "", "1000000"}) {
        SCOPED_TRACE(size);
        change(u"PAYROLL"_s, u"Record Size"_s, QLatin1String(size));
        boxes.expectInform(u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s);
        click(u"EMPTY"_s, u"Remarks"_s);
        EXPECT_TRUE(boxes.done());
        EXPECT_EQ(current(), u"0 Record Size"_s);
        EXPECT_EQ(editorText(), QLatin1String(size));
    }
    EXPECT_EQ(sent(), QStringList());
    change(u"PAYROLL"_s, u"Record Size"_s, u"65535"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(storedFiles(), (QStringList{empty, u"PAYROLL||65535|INDEXED|FIXED|"_s}));
}

TEST_F(FilesGrid, ANumberThatNothingCanHoldIsOutOfRangeAndCanBeMended)
{
    openFiles();
    click(u"PAYROLL"_s, u"Record Size"_s);
    hit(Qt::Key_Delete);
    paste(u"1e400"_s);
    boxes.expectInform(u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(current(), u"0 Record Size"_s);
    EXPECT_EQ(editorText(), u"1e400"_s);
    EXPECT_EQ(sent(), QStringList());
    for (int i = 0; i < 4; ++i)
        hit(Qt::Key_Backspace);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(storedFiles(), (QStringList{empty, u"PAYROLL||1|INDEXED|FIXED|"_s}));
}

TEST_F(FilesGrid, ARowWithEveryFaultIsRefusedForOneAfterTheOther)
{
    openFiles();
    const auto expectRefused = [&](const QString& message, const QString& heading) {
        boxes.expectInform(message);
        click(u"EMPTY"_s, u"Remarks"_s);
        boxes.verify();
        EXPECT_EQ(current(), u"0 "_s + heading);
        EXPECT_NE(editor(), nullptr);
    };
    change(u"PAYROLL"_s, u"File Name"_s, {});
    change(0, u"Record Size"_s, u"65536"_s);
    expectRefused(u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s, u"Record Size"_s);
    hit(Qt::Key_Backspace);
    expectRefused(u"Filename cannot be blank"_s, u"File Name"_s);
    EXPECT_EQ(sent(), QStringList());
    write(u"empty"_s);
    boxes.expectInform(u"This Datasource already contains a File called 'EMPTY'"_s);
    click(1, u"Remarks"_s);
    boxes.verify();
    EXPECT_EQ(current(), u"0 File Name"_s);
    write(u"s"_s);
    click(1, u"Remarks"_s);
    EXPECT_EQ(current(), u"1 Remarks"_s);
    EXPECT_TRUE(stored(u"SELECT FILE_NAME, RECORD_SIZE FROM TW_FILE"_s).contains(u"EMPTYS|6553"_s));
}

TEST_F(FilesGrid, ABlankNameIsRefused)
{
    openFiles();
    change(u"PAYROLL"_s, u"File Name"_s, {});
    boxes.expectInform(u"Filename cannot be blank"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(current(), u"0 File Name"_s);
    EXPECT_NE(editor(), nullptr);
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(storedFiles(), (QStringList{empty, payroll}));
}

TEST_F(FilesGrid, ANameThatIsTakenIsRefused)
{
    openFiles();
    change(u"PAYROLL"_s, u"File Name"_s, u"empty"_s);
    boxes.expectInform(u"This Datasource already contains a File called 'EMPTY'"_s);
    click(blankRow(), u"Remarks"_s);
    EXPECT_EQ(current(), u"0 File Name"_s);
    EXPECT_EQ(sent(), (QStringList{u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'EMPTY'"_s}));

    // A new row with the name of a system file that is not shown can be corrected.
    write(u"x"_s);
    click(blankRow(), u"File Name"_s);
    EXPECT_TRUE(children(key({u"FI"_s})).contains(u"EMPTYX"_s));
    write(u"user"_s);
    hit(Qt::Key_Tab);
    hit(Qt::Key_Tab);
    write(u"1"_s);
    boxes.expectInform(u"This Datasource already contains a File called 'USER'"_s);
    click(0, u"File Name"_s);
    EXPECT_EQ(current(), QString::number(blankRow()) + u" File Name"_s);
    EXPECT_EQ(editorText(), u"USER"_s);
}

TEST_F(FilesGrid, TheRecordSizeIsSummedFromTheFields)
{
    openFiles();
    click(u"PAYROLL"_s, u"Record Size"_s);
    hit(Qt::Key_Delete);
    pressLookUp();
    EXPECT_EQ(editorText(), u"12"_s);
    EXPECT_EQ(sent(), (QStringList{u"SELECT SUM(LENGTH) As RecordLength FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s}));
    statements.clear();
    hit(Qt::Key_F4);
    EXPECT_EQ(sent().size(), 1);
}

TEST_F(FilesGrid, TheRecordSizeOfANewRowIsThatOfTheNameTypedSoFar)
{
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LENGTH) VALUES ('BILLS', 1, 'X', 30)"_s);
    openFiles();
    change(blankRow(), u"File Name"_s, u"bills"_s);
    click(blankRow(), u"Record Size"_s);
    hit(Qt::Key_Return);
    pressLookUp();
    EXPECT_EQ(editorText(), u"30"_s);
    EXPECT_EQ(sent(), QStringList{u"SELECT SUM(LENGTH) As RecordLength FROM TW_FIELD WHERE FILE_NAME = 'BILLS'"_s});
}

TEST_F(FilesGrid, TheRecordSizeOfARenamedRowIsThatOfTheStoredName)
{
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LENGTH) VALUES ('BILLS', 1, 'X', 30)"_s);
    openFiles();
    change(u"PAYROLL"_s, u"File Name"_s, u"bills"_s);
    click(0, u"Record Size"_s);
    hit(Qt::Key_Delete);
    pressLookUp();
    EXPECT_EQ(cell(0, u"File Name"_s), u"BILLS"_s);
    EXPECT_EQ(editorText(), u"12"_s);
    EXPECT_EQ(sent(), QStringList{u"SELECT SUM(LENGTH) As RecordLength FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s});
}

TEST_F(FilesGrid, WithoutFieldsThereIsNoRecordSize)
{
    openFiles();
    click(u"EMPTY"_s, u"Record Size"_s);
    hit(Qt::Key_Return);
    boxes.expectInform(u"You need to add some Fields to this File before I can calculate the Record Size.."_s);
    pressLookUp();
    EXPECT_EQ(editorText(), u"0"_s);
}

TEST_F(FilesGrid, FilesWithControlBytesGetEightMore)
{
    openFiles();
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LENGTH) VALUES ('ta', 1, 'X', 30)"_s);
    change(u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('ta', 1)"_s);
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LENGTH) VALUES ('us', 1, 'X', 32768)"_s);
    change(u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('us', 1)"_s);
    reopen({u"FI"_s});
    click(u"ta"_s, u"Record Size"_s);
    hit(Qt::Key_Return);
    pressLookUp();
    EXPECT_EQ(editorText(), u"38"_s);
    hit(Qt::Key_Escape);
    click(u"us"_s, u"Record Size"_s);
    hit(Qt::Key_Return);
    errors.expect(Press::Ignore);
    pressLookUp();
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"6"_s);
    EXPECT_EQ(editorText(), u"1"_s);
}

TEST_F(FilesGrid, TheListsOfferWhatAFileCanBe)
{
    openFiles();
    click(u"PAYROLL"_s, u"File Organisation"_s);
    hit(Qt::Key_Return);
    auto* list = qobject_cast<QComboBox*>(editor());
    ASSERT_NE(list, nullptr);
    QStringList items;
    for (int i = 0; i < list->count(); ++i)
        items.append(list->itemText(i));
    EXPECT_EQ(items, (QStringList{u"INDEXED"_s, u"RELATIVE"_s, u"SEQUENTIAL"_s}));
    hit(Qt::Key_Down);
    hit(Qt::Key_Tab);
    EXPECT_EQ(cell(0, u"File Organisation"_s), u"RELATIVE"_s);
    write(u"v"_s);
    EXPECT_EQ(editorText(), u"VARIABLE"_s);
    click(u"EMPTY"_s, u"Remarks"_s);
    EXPECT_EQ(storedFiles(), (QStringList{empty, u"PAYROLL||12|RELATIVE|VARIABLE|"_s}));
}

TEST_F(FilesGrid, UpLeadsNowhere)
{
    openFiles();
    window->toolBar(u"tbrFiles"_s).Button(u"Up1"_s).press();
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(window->toolBar(u"tbrFiles"_s).Button(u"Up1"_s).ToolTipText(), u"No where to go!"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(FilesGrid, AFailingStatementLeavesTheRowToBeTriedAgain)
{
    ASSERT_TRUE(QFile::copy(world.catalogFile(datasource), world.folder() + u"/asItWas"_s));
    FaultSweep sweep(statements, errors);
    const auto leave = [&] { click(u"EMPTY"_s, u"File Name"_s); };
    sweep.run({.prepare =
                   [&] {
                       if (window)
                           window->FetchTreeviewRoot();
                       const QString file = world.catalogFile(datasource);
                       for (const char* suffix : {"", "-wal", "-shm"})
                           QFile::remove(file + QLatin1String(suffix));
                       ASSERT_TRUE(QFile::copy(world.folder() + u"/asItWas"_s, file));
                       openFiles();
                       change(u"PAYROLL"_s, u"File Name"_s, u"bills"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return storedFiles() + children(key({u"FI"_s})); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // The tree reads its level anew although it could not do so the first time.
                       return statement == 4 ? withoutFault.sliced(4) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (storedFiles().contains(u"BILLS||12|INDEXED|FIXED|"_s)) {
                           // Only the tree could not read.
                           clickExpander(key());
                           expandTo(key({u"FI"_s}));
                           return;
                       }
                       EXPECT_EQ(current(), u"0 File Name"_s);
                       EXPECT_EQ(cell(0, u"File Name"_s), u"BILLS"_s);
                       leave();
                   }});
}
