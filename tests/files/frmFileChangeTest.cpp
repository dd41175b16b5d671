#include "FilePaneFixture.h"

#include <QPlainTextEdit>
#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace filepane;

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(FilePane, AChangeIsOneStatement)
{
    open(file(u"PAYROLL"_s));
    statements.clear();
    write(u"OPEN_STRING"_s, u"fast-1"_s);
    write(u"RECORD_SIZE"_s, u"90"_s);
    pick(u"FILE_ORGANISATION"_s, u"RELATIVE"_s);
    pick(u"RECORD_TYPE"_s, u"VARIABLE"_s);
    write(u"REMARKS"_s, u"Don't; \"100%\""_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), (QStringList{updateFile(u"PAYROLL"_s, u"FAST-1"_s, u"90"_s, u"RELATIVE"_s,
                                                               u"VARIABLE"_s, u"Don''t; \"100%\""_s),
                                                    readFile(u"PAYROLL"_s)}));
    EXPECT_EQ(paneTitle(), u"PAYROLL - File Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(selectedKey(), key(file(u"PAYROLL"_s)));
    EXPECT_EQ(texts(fileColumns),
              (QStringList{u"PAYROLL"_s, u"FAST-1"_s, u"90"_s, u"RELATIVE"_s, u"VARIABLE"_s, u"Don't; \"100%\""_s}));
    EXPECT_EQ(files().filter(u"PAYROLL"_s), QStringList{u"PAYROLL|FAST-1|90|RELATIVE|VARIABLE|Don't; \"100%\""_s});
}

TEST_F(FilePane, ARenameIsCarriedToFieldsAndTables)
{
    open(file(u"EMPTY"_s));
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH) "
           "VALUES ('EMPTY', 1, 'ONLY', 'STRING', 3, 7)"_s);
    statements.clear();
    write(u"FILE_NAME"_s, u"full"_s);
    press(u"OK"_s);
    EXPECT_EQ(
        statements.statements(),
        (QStringList{
            readFile(u"FULL"_s), readFile(u"EMPTY"_s), deleteFrom(u"TW_FILE"_s, u"EMPTY"_s),
            insertFile(u"FULL"_s, u"'', 00, 'RELATIVE', 'FIXED', ''"_s),
            u"UPDATE TW_TABLE SET FILE_NAME = 'FULL' WHERE FILE_NAME = 'EMPTY'"_s,
            u"SELECT FIELD_NAME, OFFSET FROM TW_FIELD WHERE FILE_NAME = 'EMPTY'"_s,
            u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' AND FIELD_NAME = 'ONLY'"_s,
            u"DELETE FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' AND FIELD_NAME = 'ONLY'"_s,
            u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
            "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) VALUES ('FULL', 01, 'ONLY', 'STRING', 03, 07, 00, 00, "
            "00, '', '', '')"_s,
            u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME='FULL'"_s,
            u"UPDATE TW_COLUMN SET FIELD_NAME = 'ONLY' WHERE FIELD_NAME = 'ONLY' AND TABLE_NAME = 'ITEMS'"_s,
            updateFile(u"FULL"_s, {}, u"0"_s, u"RELATIVE"_s, u"FIXED"_s, {}), readFile(u"FULL"_s)}));
    EXPECT_EQ(paneTitle(), u"FULL - File Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(selectedKey(), key(file(u"FULL"_s)));
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"FULL"_s, u"KEY"_s, u"PAYROLL"_s, u"STOCK"_s}));
    EXPECT_EQ(line(node(key(file(u"FULL"_s)))), u"fi \"FULL\" File"_s);
    EXPECT_EQ(fieldsOf(u"FULL"_s), QStringList{u"ONLY 1 3"_s});
    EXPECT_EQ(stored(u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = 'FULL'"_s), QStringList{u"ITEMS"_s});
    // The level below speaks of the new name.
    clickExpander(key(file(u"FULL"_s) + QStringList{u"FD"_s}));
    EXPECT_EQ(children(key(file(u"FULL"_s) + QStringList{u"FD"_s})), QStringList{u"ONLY"_s});
}

TEST_F(FilePane, ANameInAnotherCaseIsAnotherName)
{
    open(file(u"EMPTY"_s));
    statements.clear();
    paste(u"FILE_NAME"_s, u"Empty"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().front(), readFile(u"Empty"_s));
    EXPECT_EQ(stored1(u"Empty"_s, u"FILE_NAME"_s), u"Empty"_s);
    EXPECT_EQ(selectedKey(), key(file(u"Empty"_s)));
}

TEST_F(FilePane, ANameTypedAsItWasIsNotLookedForButCarried)
{
    open(file(u"EMPTY"_s));
    statements.clear();
    write(u"FILE_NAME"_s, u"empty"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(),
              (QStringList{readFile(u"EMPTY"_s), deleteFrom(u"TW_FILE"_s, u"EMPTY"_s),
                           insertFile(u"EMPTY"_s, u"'', 00, 'RELATIVE', 'FIXED', ''"_s),
                           u"UPDATE TW_TABLE SET FILE_NAME = 'EMPTY' WHERE FILE_NAME = 'EMPTY'"_s,
                           u"SELECT FIELD_NAME, OFFSET FROM TW_FIELD WHERE FILE_NAME = 'EMPTY'"_s,
                           updateFile(u"EMPTY"_s, {}, u"0"_s, u"RELATIVE"_s, u"FIXED"_s, {}), readFile(u"EMPTY"_s)}));
    EXPECT_EQ(files().filter(u"EMPTY"_s), QStringList{u"EMPTY||0|RELATIVE|FIXED|"_s});
}

TEST_F(FilePane, AnApostropheIsDoubledInStatementsAndSingleInTheKey)
{
    open(file(u"EMPTY"_s));
    statements.clear();
    paste(u"FILE_NAME"_s, u"O'HARA"_s);
    paste(u"OPEN_STRING"_s, u"a;b'c%d\"e🚀"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().back(),
              updateFile(u"O''HARA"_s, u"a;b''c%d\"e🚀"_s, u"0"_s, u"RELATIVE"_s, u"FIXED"_s, {}));
    EXPECT_EQ(selectedKey(), key(file(u"O'HARA"_s)));
    EXPECT_EQ(paneTitle(), u"O'HARA - File Properties"_s);
    EXPECT_EQ(files().filter(u"HARA"_s), QStringList{u"O'HARA|a;b'c%d\"e🚀|0|RELATIVE|FIXED|"_s});
}

TEST_F(FilePane, RemarksKeepTheirLineEndsUnlessTheyAreEdited)
{
    change(u"UPDATE TW_FILE SET REMARKS = 'one' || char(13) || char(10) || 'two' || char(160) || 'three' "
           "WHERE FILE_NAME = 'EMPTY'"_s);
    open(file(u"EMPTY"_s));
    write(u"RECORD_SIZE"_s, u"5"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"EMPTY"_s, u"REMARKS"_s), u"one\r\ntwo\u00a0three"_s);
    click(key(file(u"EMPTY"_s)));
    static_cast<QPlainTextEdit&>(entry(u"REMARKS"_s)).setFocus();
    hit(Qt::Key_End, Qt::ControlModifier);
    hit(Qt::Key_Return);
    QTest::keyClicks(&entry(u"REMARKS"_s), u"four"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"EMPTY"_s, u"REMARKS"_s), u"one\ntwo\u00a0three\nfour"_s);
}

TEST_F(FilePane, NamesEndAtTheWidthOfTheirColumn)
{
    open(file(u"EMPTY"_s));
    write(u"FILE_NAME"_s, QString(40, 'n'_L1));
    EXPECT_EQ(text(u"FILE_NAME"_s), QString(32, 'N'_L1));
    paste(u"FILE_NAME"_s, QString(32, 'p'_L1));
    EXPECT_EQ(text(u"FILE_NAME"_s), QString(32, 'p'_L1));
    paste(u"FILE_NAME"_s, QString(33, 'p'_L1));
    EXPECT_EQ(text(u"FILE_NAME"_s), QString(32, 'p'_L1));
    paste(u"FILE_NAME"_s, QString(31, 'p'_L1) + u"🚀"_s);
    EXPECT_EQ(text(u"FILE_NAME"_s), QString(31, 'p'_L1));
    paste(u"REMARKS"_s, QString(255, 'r'_L1));
    EXPECT_EQ(text(u"REMARKS"_s), QString(254, 'r'_L1));
    hit(Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClicks(&entry(u"REMARKS"_s), u"x"_s);
    EXPECT_EQ(text(u"REMARKS"_s), QString(254, 'r'_L1));
    hit(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClicks(&entry(u"REMARKS"_s), u"x"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"x"_s);
}

TEST_F(FilePane, UndoReadsTheFileAnew)
{
    open(file(u"PAYROLL"_s));
    change(u"UPDATE TW_FILE SET RECORD_SIZE = 77 WHERE FILE_NAME = 'PAYROLL'"_s);
    write(u"FILE_NAME"_s, u"x"_s);
    pick(u"RECORD_TYPE"_s, u"VARIABLE"_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), QStringList{readFile(u"PAYROLL"_s)});
    EXPECT_EQ(texts(fileColumns), (QStringList{u"PAYROLL"_s, u""_s, u"77"_s, u"INDEXED"_s, u"FIXED"_s, u""_s}));
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(paneTitle(), u"PAYROLL - Edit File Definition"_s);
    // What was undone is no change of the name.
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), (QStringList{updateFile(u"PAYROLL"_s, {}, u"77"_s, u"INDEXED"_s, u"FIXED"_s, {}),
                                                    readFile(u"PAYROLL"_s)}));
}

TEST_F(FilePane, CancelShowsTheFileAsItIs)
{
    open(file(u"PAYROLL"_s));
    write(u"FILE_NAME"_s, u"x"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(paneTitle(), u"PAYROLL - File Properties"_s);
    EXPECT_EQ(text(u"FILE_NAME"_s), u"PAYROLL"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FilePane, EnterOnAButtonIsThatButton)
{
    open(file(u"PAYROLL"_s));
    write(u"FILE_NAME"_s, u"x"_s);
    control(u"cmdCancel"_s).setFocus();
    hit(Qt::Key_Return);
    EXPECT_EQ(text(u"FILE_NAME"_s), u"PAYROLL"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FilePane, EnterInAnEntryIsUpdate)
{
    open(file(u"PAYROLL"_s));
    write(u"RECORD_SIZE"_s, u"44"_s);
    hit(Qt::Key_Enter);
    EXPECT_EQ(stored1(u"PAYROLL"_s, u"RECORD_SIZE"_s), u"44"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(FilePane, TheArrowsStayWithinTheLimits)
{
    open(file(u"PAYROLL"_s));
    auto* up = control(u"spnUpDn_0"_s).findChild<QWidget*>(u"up"_s);
    auto* down = control(u"spnUpDn_0"_s).findChild<QWidget*>(u"down"_s);
    QTest::mouseClick(up, Qt::LeftButton);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"13"_s);
    clear(u"RECORD_SIZE"_s);
    QTest::mouseClick(down, Qt::LeftButton);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"0"_s);
    write(u"RECORD_SIZE"_s, u"65535"_s);
    hit(Qt::Key_Up);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"65535"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"65534"_s);
    press(u"Cancel"_s);
    QTest::mouseClick(up, Qt::LeftButton);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"12"_s);
}

// The size of a record -----------------------------------------------------------------------------------------------

TEST_F(FilePane, TheRecordSizeIsTheSumOfTheLengths)
{
    open(file(u"PAYROLL"_s));
    statements.clear();
    write(u"RECORD_SIZE"_s, u"1"_s);
    clickButton(u"cmdCalcRecordSize"_s);
    EXPECT_EQ(statements.statements(), QStringList{sum(u"PAYROLL"_s)});
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"12"_s);
    click(key(file(u"EMPTY"_s)));
    write(u"RECORD_SIZE"_s, u"1"_s);
    clickButton(u"cmdCalcRecordSize"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"0"_s);
}

TEST_F(FilePane, EightBytesAreAddedForSomeNamesExactly)
{
    for (const char* name : {"co", "fd", "fi", "ta", "us", "TA", "tables"}) {
        addFile(QLatin1String(name), 0);
        addField(QLatin1String(name), u"F"_s, 1, 0, 5);
    }
    begin(file(u"co"_s));
    for (const char* name : {"co", "fd", "fi", "ta", "us", "TA", "tables"}) {
        SCOPED_TRACE(name);
        click(key(file(QLatin1String(name))));
        clickButton(u"cmdCalcRecordSize"_s);
        EXPECT_EQ(text(u"RECORD_SIZE"_s), QByteArray(name).size() == 2 && QByteArray(name) != "TA" ? u"13"_s : u"5"_s);
    }
}

TEST_F(FilePane, ASumBeyondSixteenBitsIsReportedForThoseNames)
{
    addFile(u"ta"_s, 0);
    addField(u"ta"_s, u"F"_s, 1, 0, 32768);
    addFile(u"wide"_s, 0);
    addField(u"wide"_s, u"F"_s, 1, 0, 40000);
    open(file(u"ta"_s));
    errors.expect(Press::Ignore);
    clickButton(u"cmdCalcRecordSize"_s);
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"6"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmFile.cmdCalcRecordSize_Click"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"32768"_s);
    change(u"UPDATE TW_FIELD SET LENGTH = 32759 WHERE FILE_NAME = 'ta'"_s);
    clickButton(u"cmdCalcRecordSize"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"32767"_s);
    click(key(file(u"wide"_s)));
    clickButton(u"cmdCalcRecordSize"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"40000"_s);
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(FilePane, DeletingAFileWithoutFieldsCountsNone)
{
    begin(file(u"EMPTY"_s));
    change(u"DELETE FROM TW_TABLE WHERE FILE_NAME = 'EMPTY'"_s);
    boxes.expectAsk(mayDelete(), boxes::Answer::Yes, [&] {
        EXPECT_EQ(paneTitle(), u"EMPTY - Delete File Definition"_s);
        EXPECT_EQ(state(), u"File Delete: Up1 OK Cancel"_s);
        EXPECT_EQ(open(), QStringList());
    });
    boxes.expectAsk(takesAlong(u"EMPTY"_s, u"0 Fields"_s), boxes::Answer::Yes);
    choose(key(file(u"EMPTY"_s)), u"mnu_FileDelete"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{describe, readFile(u"EMPTY"_s), countFields(u"EMPTY"_s), readTables(u"EMPTY"_s),
                           deleteFrom(u"TW_FILE"_s, u"EMPTY"_s), deleteFrom(u"TW_FIELD"_s, u"EMPTY"_s)}));
    EXPECT_EQ(takeShown(), QStringList{"frmFiles "_L1 + datasource});
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"KEY"_s, u"PAYROLL"_s, u"STOCK"_s}));
    EXPECT_EQ(files().filter(u"EMPTY"_s), QStringList());
}

TEST_F(FilePane, OneFieldIsNamedInTheSingular)
{
    addField(u"EMPTY"_s, u"ONLY"_s, 1, 0, 3);
    begin(file(u"EMPTY"_s));
    boxes.expectAsk(mayDelete(), boxes::Answer::Yes);
    boxes.expectAsk(takesAlong(u"EMPTY"_s, u"1 Field"_s), boxes::Answer::No);
    choose(key(file(u"EMPTY"_s)), u"mnu_FileDelete"_s);
    EXPECT_EQ(statements.statements().back(), countFields(u"EMPTY"_s));
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"File Delete: Up1 OK Cancel"_s);
}

TEST_F(FilePane, DeletingAFileInUseAsksTwice)
{
    const QStringList before = wholeCatalog();
    begin(file(u"PAYROLL"_s));
    const auto remove = [&](boxes::Answer last) {
        boxes.expectAsk(mayDelete(), boxes::Answer::Yes);
        boxes.expectAsk(takesAlong(u"PAYROLL"_s, u"3 Fields"_s), boxes::Answer::Yes);
        boxes.expectAsk(isReferenced(u"ORDERS"_s), last);
        choose(key(file(u"PAYROLL"_s)), u"mnu_FileDelete"_s);
    };
    remove(boxes::Answer::No);
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(takeShown(), QStringList());
    EXPECT_TRUE(find(key(file(u"PAYROLL"_s))));
    EXPECT_EQ(state(), u"File Delete: Up1 OK Cancel"_s);

    remove(boxes::Answer::Yes);
    EXPECT_EQ(statements.writes(),
              (QStringList{deleteFrom(u"TW_FILE"_s, u"PAYROLL"_s), deleteFrom(u"TW_FIELD"_s, u"PAYROLL"_s)}));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), QStringList());
    // Tables and columns stay.
    EXPECT_EQ(wholeCatalog().filter(u"TW_TABLE"_s), before.filter(u"TW_TABLE"_s));
    EXPECT_EQ(wholeCatalog().filter(u"TW_COLUMN"_s), before.filter(u"TW_COLUMN"_s));
    EXPECT_FALSE(find(key(file(u"PAYROLL"_s))));
}

TEST_F(FilePane, ADeleteThatIsNotWantedWaitsForCancel)
{
    open(file(u"EMPTY"_s));
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete(), boxes::Answer::No);
    press(u"File Delete"_s);
    EXPECT_EQ(state(), u"File Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), QStringList());
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(paneTitle(), u"EMPTY - File Properties"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FilePane, AnApostropheBreaksTheSearchForTables)
{
    addFile(u"O'HARA"_s, 0);
    begin(file(u"O'HARA"_s));
    boxes.expectAsk(mayDelete(), boxes::Answer::Yes);
    boxes.expectAsk(takesAlong(u"O'HARA"_s, u"0 Fields"_s), boxes::Answer::Yes);
    errors.expect(Press::Ignore);
    choose(key(file(u"O'HARA"_s)), u"mnu_FileDelete"_s);
    EXPECT_EQ(statements.statements().back(), readTables(u"O'HARA"_s));
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmFile.tbr_ButtonClick"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FilePane, EscapeLeavesTheDeleteState)
{
    begin(file(u"EMPTY"_s));
    boxes.expectAsk(mayDelete(), boxes::Answer::No);
    choose(key(file(u"EMPTY"_s)), u"mnu_FileDelete"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(state(), displayState);
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(FilePane, AFileThatSomeoneHasDeletedIsNotMadeAnew)
{
    open(file(u"EMPTY"_s));
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'EMPTY'"_s);
    write(u"RECORD_SIZE"_s, u"9"_s);
    press(u"OK"_s);
    EXPECT_EQ(texts(fileColumns), (QStringList{u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(files().filter(u"EMPTY"_s), QStringList());
}

TEST_F(FilePane, ARenameOfAFileThatSomeoneHasDeletedIsReported)
{
    open(file(u"EMPTY"_s));
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'EMPTY'"_s);
    write(u"FILE_NAME"_s, u"x"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"3021"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateFile"_s);
    EXPECT_EQ(files().size(), 2);
}

TEST_F(FilePane, ANameThatSomeoneHasTakenMeanwhileIsTheDriversToRefuse)
{
    beginToAdd();
    fillIn(u"late"_s);
    meanwhile(u"INSERT INTO TW_FILE"_s, [&] { addFile(u"LATE"_s, 7); });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmFile.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"FILE_NAME"_s), u"LATE"_s);
    EXPECT_EQ(files().filter(u"LATE"_s), QStringList{u"LATE||7|||"_s});
    expectRefused(u"The Datasource '%1' already contains a File definition called 'LATE'"_s.arg(datasource),
                  u"FILE_NAME"_s);
}

TEST_F(FilePane, ACatalogThatTakesNoChangeStaysAndSoDoesThePane)
{
    for (const char* event : {"INSERT", "UPDATE", "DELETE"})
        change(u"CREATE TRIGGER NO_%1 BEFORE %1 ON TW_FILE BEGIN SELECT RAISE(ABORT, 'readonly'); END"_s.arg(
            QLatin1String(event)));
    const QStringList before = wholeCatalog();
    open(file(u"PAYROLL"_s));
    write(u"RECORD_SIZE"_s, u"9"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"9"_s);
    command({u"FI"_s}, u"mnu_FileAdd"_s);
    fillIn(u"x"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(FilePane, ALostConnectionLeavesThePaneInItsState)
{
    open(file(u"PAYROLL"_s));
    const QStringList before = wholeCatalog();
    write(u"FILE_NAME"_s, u"x"_s);
    statements.clear();
    for (int k = 1; k <= 2; ++k)
        statements.failAt(k, {{10054, "[Test] 08S01 Communication link failure"}});
    errors.expect(Press::Ignore).expect(Press::Ignore);
    press(u"OK"_s);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"FILE_NAME"_s), u"X"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(FilePane, MissingPrivilegesAreOneBoxAndLeaveThePaneInItsState)
{
    open(file(u"PAYROLL"_s));
    write(u"RECORD_SIZE"_s, u"9"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
}
