#include "FilePaneFixture.h"

#include "DropDown.h"
#include "Settings.h"

#include <QLabel>
#include <QPushButton>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace filepane;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(FilePane, AClickOpensAFileForChange)
{
    open(file(u"PAYROLL"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readFile(u"PAYROLL"_s)}));
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_EQ(paneTitle(), u"PAYROLL - Edit File Definition"_s);
    EXPECT_EQ(texts(fileColumns), (QStringList{u"PAYROLL"_s, u""_s, u"12"_s, u"INDEXED"_s, u"FIXED"_s, u""_s}));
    EXPECT_EQ(list(u"FILE_ORGANISATION"_s).currentText(), u"INDEXED"_s);
    EXPECT_EQ(list(u"RECORD_TYPE"_s).currentText(), u"FIXED"_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), fileColumns);
    EXPECT_EQ(focus(), u"FILE_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
    EXPECT_TRUE(control(u"cmdAction"_s).isEnabled());
    EXPECT_TRUE(control(u"cmdCalcRecordSize"_s).isEnabled());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(FilePane, TheColumnsAreAskedForOnce)
{
    open(file(u"PAYROLL"_s));
    open(file(u"EMPTY"_s));
    EXPECT_EQ(statements.statements(), QStringList{readFile(u"EMPTY"_s)});
}

TEST_F(FilePane, WithTheOptionOffAClickOnlyShows)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(file(u"PAYROLL"_s));
    EXPECT_EQ(paneTitle(), u"PAYROLL - File Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_FALSE(control(u"cmdCalcRecordSize"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdAction"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdCancel"_s).isEnabled());
    press(u"File Edit"_s);
    EXPECT_EQ(paneTitle(), u"PAYROLL - Edit File Definition"_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(paneTitle(), u"PAYROLL - File Properties"_s);
}

TEST_F(FilePane, TellsWhatEachPropertyIs)
{
    open(file(u"PAYROLL"_s));
    const std::vector<std::tuple<const char*, const char*, const char*>> rows{
        {"FILE_NAME", "File &Name:",
         "A unique name by which the selected file definition can be accessed from within the table definition."},
        {"OPEN_STRING", "Open &String:", ""},
        {"RECORD_SIZE", "&Record Size:", "The total length of all the fields in the file."},
        {"FILE_ORGANISATION", "File &Organisation:",
         "Used to specify the type of file being defined.  Supported types are Indexed, Relative and Sequential.  The "
         "file organisation can be selected from the drop-down list."},
        {"RECORD_TYPE", "Record &Type:",
         "Defines the type of records stored in the file.  Supported types are Fixed and Variable.  The record type "
         "can "
         "be selected from the dropdown list."},
        {"REMARKS", "Re&marks", "Any notes you wish to make about this File"},
    };
    for (const auto& [column, prompt, toolTip] : rows) {
        SCOPED_TRACE(column);
        QWidget& found = entry(QLatin1String(column));
        EXPECT_EQ(found.toolTip(), QLatin1String(toolTip));
        QString buddyText;
        for (const QLabel* label : window->currentPane()->findChildren<QLabel*>()) {
            if (label->buddy() == &found)
                buddyText = label->text();
        }
        EXPECT_EQ(buddyText, QLatin1String(prompt));
        EXPECT_EQ(found.accessibleName(), QString(QLatin1String(prompt)).remove('&'_L1).remove(':'_L1));
    }
    EXPECT_EQ(control(u"cmdCalcRecordSize"_s).toolTip(), u"Calculate record size"_s);
    EXPECT_EQ(limits(0), u"(0 to 65535)"_s);
}

TEST_F(FilePane, TheTabKeyWalksFromTopToBottom)
{
    open(file(u"PAYROLL"_s));
    QStringList walked{focus()};
    for (int i = 0; i < 8; ++i) {
        hit(Qt::Key_Tab);
        walked.append(focus());
    }
    EXPECT_EQ(walked,
              (QStringList{u"FILE_NAME"_s, u"OPEN_STRING"_s, u"RECORD_SIZE"_s, u"cmdCalcRecordSize"_s,
                           u"FILE_ORGANISATION"_s, u"RECORD_TYPE"_s, u"REMARKS"_s, u"cmdAction"_s, u"cmdCancel"_s}));
}

TEST_F(FilePane, TheDebugWordShowsTheTextsBehindTheLists)
{
    start({u"DEBUG"_s});
    open(file(u"PAYROLL"_s));
    EXPECT_TRUE(control(u"txtProperty_FILE_ORGANISATION"_s).isVisible());
    EXPECT_TRUE(control(u"txtProperty_RECORD_TYPE"_s).isVisible());
}

TEST_F(FilePane, WithoutTheDebugWordTheTextsBehindTheListsAreHidden)
{
    open(file(u"PAYROLL"_s));
    EXPECT_FALSE(control(u"txtProperty_FILE_ORGANISATION"_s).isVisible());
    EXPECT_FALSE(control(u"txtProperty_RECORD_TYPE"_s).isVisible());
}

TEST_F(FilePane, NullsShowAsEmptyTexts)
{
    change(u"UPDATE TW_FILE SET OPEN_STRING = NULL, RECORD_SIZE = NULL, FILE_ORGANISATION = NULL, RECORD_TYPE = NULL, "
           "REMARKS = NULL WHERE FILE_NAME = 'EMPTY'"_s);
    open(file(u"PAYROLL"_s));
    open(file(u"EMPTY"_s));
    EXPECT_EQ(texts(fileColumns), (QStringList{u"EMPTY"_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(list(u"FILE_ORGANISATION"_s).currentIndex(), -1);
    EXPECT_EQ(list(u"RECORD_TYPE"_s).currentIndex(), -1);
}

TEST_F(FilePane, AnOrganisationThatTheListLacksStays)
{
    change(u"UPDATE TW_FILE SET FILE_ORGANISATION = 'Indexed' WHERE FILE_NAME = 'EMPTY'"_s);
    open(file(u"EMPTY"_s));
    EXPECT_EQ(list(u"FILE_ORGANISATION"_s).currentIndex(), -1);
    EXPECT_EQ(text(u"FILE_ORGANISATION"_s), u"Indexed"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"EMPTY"_s, u"FILE_ORGANISATION"_s), u"Indexed"_s);
}

TEST_F(FilePane, AFileThatIsGoneShowsNoValues)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(file(u"PAYROLL"_s));
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'EMPTY'"_s);
    click(key(file(u"EMPTY"_s)));
    EXPECT_EQ(paneTitle(), u"EMPTY - File Properties"_s);
    EXPECT_EQ(texts(fileColumns), (QStringList{u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(state(), displayState);
}

TEST_F(FilePane, AnotherClickDropsWhatWasEntered)
{
    open(file(u"PAYROLL"_s));
    write(u"OPEN_STRING"_s, u"abc"_s);
    EXPECT_EQ(text(u"OPEN_STRING"_s), u"ABC"_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
    click(key(file(u"PAYROLL"_s)));
    EXPECT_EQ(text(u"OPEN_STRING"_s), u""_s);
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel"_s);
    write(u"OPEN_STRING"_s, u"abc"_s);
    click(key(file(u"EMPTY"_s)));
    EXPECT_EQ(text(u"FILE_NAME"_s), u"EMPTY"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FilePane, UpShowsTheCollectionAndSelectsItsNode)
{
    open(file(u"PAYROLL"_s));
    statements.clear();
    press(u"Up1"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmFiles "_L1 + datasource});
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
    EXPECT_EQ(statements.statements(), QStringList());
}

// Reserved files -----------------------------------------------------------------------------------------------------

TEST_F(FilePane, KeyOpensForReadingOnly)
{
    open(file(u"KEY"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readFile(u"KEY"_s)}));
    EXPECT_EQ(paneTitle(), u"KEY - File Properties"_s);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    EXPECT_FALSE(control(u"cmdAction"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdCancel"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdCalcRecordSize"_s).isEnabled());
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    press(u"Cancel"_s);
    EXPECT_EQ(statements.statements(), QStringList{readFile(u"KEY"_s)});
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    choose(key(file(u"KEY"_s)), u"mnu_FileEdit"_s);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(paneTitle(), u"KEY - File Properties"_s);
}

TEST_F(FilePane, EverySystemFileOpensForReadingOnly)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    begin({u"FI"_s, u"fi=DB"_s});
    for (const char* name : {"CNTRL", "COLUMN", "DB", "DBPRV", "DRIVER", "FIELD", "FILE", "KEY", "LOCDT", "SQLDT",
                             "TABLE", "TBLPRV", "USER"}) {
        SCOPED_TRACE(name);
        click(key(file(QLatin1String(name))));
        EXPECT_EQ(text(u"FILE_NAME"_s), QLatin1String(name));
        EXPECT_EQ(open(), QStringList());
        EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    }
    click(key(file(u"PAYROLL"_s)));
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel"_s);
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(FilePane, AddBeginsWithAnEmptyForm)
{
    open(file(u"PAYROLL"_s));
    command({u"FI"_s}, u"mnu_FileAdd"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(paneTitle(), "Add New File Definition to "_L1 + datasource);
    EXPECT_EQ(texts(fileColumns), (QStringList{u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(list(u"FILE_ORGANISATION"_s).currentIndex(), -1);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), fileColumns);
    EXPECT_EQ(focus(), u"FILE_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
    EXPECT_FALSE(control(u"cmdCalcRecordSize"_s).isEnabled());
}

TEST_F(FilePane, ThreeFilesAreAddedOneBehindTheOther)
{
    beginToAdd();
    const QStringList before = files();
    statements.clear();

    fillIn(u"a"_s);
    write(u"RECORD_SIZE"_s, u"80"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{readFile(u"A"_s), insertFile(u"A"_s, u"'', 080, 'SEQUENTIAL', 'VARIABLE', ''"_s)}));
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel"_s);
    EXPECT_EQ(text(u"FILE_NAME"_s), u""_s);
    EXPECT_EQ(focus(), u"FILE_NAME"_s);
    EXPECT_EQ(selectedKey(), key(file(u"A"_s)));

    fillIn(u"b c"_s);
    write(u"REMARKS"_s, u"it's 100%; \"fine\""_s);
    clickButton(u"cmdAction"_s);
    fillIn(u"d"_s);
    write(u"OPEN_STRING"_s, u"x"_s);
    hit(Qt::Key_Return);

    EXPECT_EQ(files(),
              QStringList({u"A||80|SEQUENTIAL|VARIABLE|"_s, u"B_C||0|SEQUENTIAL|VARIABLE|it's 100%; \"fine\""_s,
                           u"D|X|0|SEQUENTIAL|VARIABLE|"_s}) +
                  before);
    EXPECT_EQ(statements.writes(),
              (QStringList{insertFile(u"A"_s, u"'', 080, 'SEQUENTIAL', 'VARIABLE', ''"_s),
                           insertFile(u"B_C"_s, u"'', 0, 'SEQUENTIAL', 'VARIABLE', 'it''s 100%; \"fine\"'"_s),
                           insertFile(u"D"_s, u"'X', 0, 'SEQUENTIAL', 'VARIABLE', ''"_s)}));
    EXPECT_EQ(children(key({u"FI"_s})),
              (QStringList{u"EMPTY"_s, u"KEY"_s, u"PAYROLL"_s, u"STOCK"_s, u"A"_s, u"B_C"_s, u"D"_s}));
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmFiles "_L1 + datasource});
}

TEST_F(FilePane, CancelOfAnAddShowsTheCollection)
{
    open(file(u"PAYROLL"_s));
    press(u"Cancel"_s);
    press(u"File Add"_s);
    EXPECT_EQ(takeShown(), QStringList());
    write(u"FILE_NAME"_s, u"x"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmFiles "_L1 + datasource});
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FilePane, UndoOfAnAddEmptiesTheForm)
{
    beginToAdd();
    fillIn(u"x"_s);
    write(u"REMARKS"_s, u"y"_s);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel Undo"_s);
    press(u"Undo"_s);
    EXPECT_EQ(texts(fileColumns), (QStringList{u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(list(u"RECORD_TYPE"_s).currentIndex(), -1);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel"_s);
}

TEST_F(FilePane, AddingBelowAClosedCollectionOpensIt)
{
    begin({u"FI"_s});
    choose(key({u"FI"_s}), u"mnu_FileAdd"_s);
    fillIn(u"new"_s);
    press(u"OK"_s);
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"EMPTY"_s, u"KEY"_s, u"NEW"_s, u"PAYROLL"_s, u"STOCK"_s}));
    EXPECT_EQ(selectedKey(), key(file(u"NEW"_s)));
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(FilePane, RefusesWhatIsMissingOneAfterTheOther)
{
    beginToAdd();
    const QStringList tree = wholeTree();
    statements.clear();
    expectRefused(noName, u"FILE_NAME"_s);
    paste(u"FILE_NAME"_s, u"   "_s);
    expectRefused(noName, u"FILE_NAME"_s);
    write(u"FILE_NAME"_s, u"x"_s);
    expectRefused(u"Please specify a File Organisation"_s, u"FILE_ORGANISATION"_s);
    pick(u"FILE_ORGANISATION"_s, u"RELATIVE"_s);
    expectRefused(u"Please specify a Record Type"_s, u"RECORD_TYPE"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel Undo"_s);
}

TEST_F(FilePane, RefusesANameThatIsTaken)
{
    beginToAdd();
    fillIn(u"empty"_s);
    statements.clear();
    expectRefused(u"The Datasource '%1' already contains a File definition called 'EMPTY'"_s.arg(datasource),
                  u"FILE_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{readFile(u"EMPTY"_s)});
}

TEST_F(FilePane, RefusesARecordSizeOutOfRange)
{
    const QString outOfRange = u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s;
    open(file(u"PAYROLL"_s));
    for (const char* size : {"65536", "-33", "1e5", "999999999", "65535.5"}) {
        SCOPED_TRACE(size);
        paste(u"RECORD_SIZE"_s, QLatin1String(size));
        expectRefused(outOfRange, u"RECORD_SIZE"_s);
    }
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
    write(u"RECORD_SIZE"_s, u"65535"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"PAYROLL"_s, u"RECORD_SIZE"_s), u"65535"_s);
}

TEST_F(FilePane, TheKeysOfANumberAreDigitsASignInFrontAndOnePoint)
{
    open(file(u"PAYROLL"_s));
    write(u"RECORD_SIZE"_s, u"-1.2.-3e5xx"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"-1.235"_s);
    write(u"RECORD_SIZE"_s, u"1234567890"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"123456789"_s);
}

TEST_F(FilePane, ABlankRecordSizeIsZero)
{
    open(file(u"PAYROLL"_s));
    clear(u"RECORD_SIZE"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateFile(u"PAYROLL"_s, {}, {}, u"INDEXED"_s, u"FIXED"_s, {})});
    EXPECT_EQ(stored1(u"PAYROLL"_s, u"RECORD_SIZE"_s), u"0"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"0"_s);
}

TEST_F(FilePane, WhatIsNoNumberIsTheDriversToRefuse)
{
    open(file(u"PAYROLL"_s));
    const QStringList before = wholeCatalog();
    for (const char16_t* size : {u"-", u"٣", u"ten"}) {
        paste(u"RECORD_SIZE"_s, QString::fromUtf16(size));
        errors.expect(Press::Ignore);
        press(u"OK"_s);
        errors.verify();
        EXPECT_EQ(errors.shown().back().trappedIn, u"frmFile.tbr_ButtonClick"_s);
        EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
        EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
    }
    EXPECT_EQ(wholeCatalog(), before);
    press(u"Cancel"_s);
    EXPECT_EQ(text(u"RECORD_SIZE"_s), u"12"_s);
}

TEST_F(FilePane, ANumberBeyondAllNumbersIsReported)
{
    open(file(u"PAYROLL"_s));
    paste(u"RECORD_SIZE"_s, u"1e999"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmFile.ValidateFields"_s);
    EXPECT_EQ(errors.shown().back().number, u"6"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}
