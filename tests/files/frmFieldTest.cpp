#include "FieldPaneFixture.h"

#include "DropDown.h"
#include "Settings.h"
#include "UpDown.h"

#include <QLabel>
#include <QPushButton>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace fieldpane;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(FieldPane, AClickOpensAFieldForChange)
{
    open(field(u"CODE"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readField(u"CODE"_s)}));
    EXPECT_EQ(paneTitle(), u"STOCK.CODE - Edit Field Properties"_s);
    EXPECT_EQ(texts(fieldColumns), (QStringList{u"STOCK"_s, u"1"_s, u"CODE"_s, u"STRING"_s, u"0"_s, u"10"_s, u"10"_s,
                                                u"0"_s, u"0"_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(list(u"ENCRYPTED"_s).currentText(), u"No"_s);
    EXPECT_EQ(list(u"LOCAL_TYPE_NAME"_s).currentText(), u"STRING"_s);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), fieldColumns.sliced(1));
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
    EXPECT_TRUE(control(u"cmdNextFieldNumber"_s).isEnabled());
    EXPECT_TRUE(control(u"cmdCalcOffset"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdFormat"_s).isEnabled());
    EXPECT_EQ(allLimits(), (QStringList{u"(1 to 65535)"_s, u"(1 to 65535)"_s, u"(0 - Fixed)"_s}));
}

TEST_F(FieldPane, WithTheOptionOffAClickOnlyShows)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(field(u"SOLD"_s));
    EXPECT_EQ(paneTitle(), u"STOCK.SOLD - Field Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    for (const char* button : {"cmdNextFieldNumber", "cmdCalcOffset", "cmdFormat", "cmdAction", "cmdCancel"})
        EXPECT_FALSE(control(QLatin1String(button)).isEnabled()) << button;
    EXPECT_EQ(list(u"LOCAL_TYPE_NAME"_s).count(), 1);
    press(u"Field Edit"_s);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel"_s);
    EXPECT_GT(list(u"LOCAL_TYPE_NAME"_s).count(), 50);
    EXPECT_EQ(list(u"LOCAL_TYPE_NAME"_s).currentText(), u"DATE"_s);
    EXPECT_TRUE(control(u"cmdFormat"_s).isEnabled());
}

TEST_F(FieldPane, TellsWhatEachPropertyIs)
{
    open(field(u"CODE"_s));
    const std::vector<std::tuple<const char*, const char*, const char*>> rows{
        {"FILE_NAME", "File Name:", "File which this Field is registered with."},
        {"FIELD_NUMBER", "Field Num&ber:", "Determines the Field Order within the File Definition."},
        {"FIELD_NAME", "Field &Name:",
         "Unique identifier for a Field within the File Definition. Valid characters are: [a..z], [A..Z], _ "
         "(underscore) and - (hyphen)."},
        {"LOCAL_TYPE_NAME", "Data &Type:", "The storage format of the Field in the File on the Server."},
        {"OFFSET", "Off&set:",
         "The position of the Field within the File.  Fields can be placed at the same offset if multiple record types "
         "are present in the same File on the Server."},
        {"LENGTH", "&Length:", "Size of the Field in bytes and fixed for certain Data Types."},
        {"PRECISION", "&Precision:",
         "Refers to the maximum number of digits used by the datatype.  The precision of a non-numeric field refers to "
         "the maximum length of the field."},
        {"SCALE",
         "S&cale:", "Refers to the maximum number of digits to the right of the decimal point (numeric fields only)."},
        {"ENCRYPTED", "&Encrypted:",
         "This is used to enable encryption on specific fields.  This encryption is a facility of the Tarnwick SQL "
         "engine and therefore other applications are not capable of reading fields written with encryption."},
        {"FORMAT", "F&ormat:",
         "The Format field allows users to specify the format of a date or a time field stored in a string on the "
         "Server.  Entry to this field is performed using the Date/Time Format dialog box."},
        {"DEFAULT_VALUE", "&Default Value:", "The default value is overwritten when data is inserted into the field."},
        {"REMARKS", "Re&marks:", "Any notes you wish to make about this Field."},
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
    }
    EXPECT_EQ(control(u"cmdNextFieldNumber"_s).toolTip(), u"Find next free Field Number"_s);
    EXPECT_EQ(control(u"cmdCalcOffset"_s).toolTip(), u"Calculate next Offset"_s);
    EXPECT_EQ(control(u"cmdFormat"_s).toolTip(), u"Launch Format Builder"_s);
    EXPECT_EQ(arrows(0).Min(), 1);
    EXPECT_EQ(arrows(0).Max(), 32767);
    EXPECT_EQ(arrows(1).Min(), 0);
    EXPECT_EQ(arrows(1).Max(), 65535);
}

TEST_F(FieldPane, OpeningAFieldKeepsWhatIsStored)
{
    // Neither the type's length and format nor the length of the format in force are 12.
    open(field(u"SOLD"_s));
    EXPECT_EQ(texts({u"LENGTH"_s, u"PRECISION"_s, u"FORMAT"_s}), (QStringList{u"12"_s, u"11"_s, u"DD.MM.YY"_s}));
    EXPECT_EQ(allLimits(), (QStringList{u"(1 to 254)"_s, u"(1 to 254)"_s, u"(0 - Fixed)"_s}));
    press(u"OK"_s);
    EXPECT_EQ(storedField(u"SOLD"_s), QStringList{u"STOCK|3|SOLD|DATE|14|12|11|0|0|DD.MM.YY||"_s});

    change(u"UPDATE TW_FIELD SET LENGTH = 7, PRECISION = 3 WHERE FIELD_NAME = 'FLAGS'"_s);
    click(key(field(u"FLAGS"_s)));
    EXPECT_EQ(sizes(), (QStringList{u"7"_s, u"3"_s, u"0"_s}));
    press(u"OK"_s);
    EXPECT_EQ(storedField(u"FLAGS"_s), QStringList{u"STOCK|4|FLAGS|HEXADECIMAL|26|7|3|0|0|||"_s});
}

TEST_F(FieldPane, APackedFieldShowsTwiceItsLengthWhateverIsStored)
{
    change(u"UPDATE TW_FIELD SET LENGTH = 5, PRECISION = 3 WHERE FIELD_NAME = 'PRICE'"_s);
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(field(u"PRICE"_s));
    EXPECT_EQ(sizes(), (QStringList{u"5"_s, u"10"_s, u"2"_s}));
    EXPECT_EQ(allLimits(), (QStringList{u"(1 to 16)"_s, u"(10 to 11)"_s, u"(-32 to 31)"_s}));
    EXPECT_EQ(arrows(3).Min(), 10);
    EXPECT_EQ(arrows(3).Max(), 11);
    EXPECT_EQ(state(), displayState);
    EXPECT_FALSE(control(u"cmdAction"_s).isEnabled());
    EXPECT_EQ(open(), QStringList());
}

TEST_F(FieldPane, HexadecimalDigitsGoByTheLengthAndAreNotEntered)
{
    beginToAdd();
    fillIn(u"x"_s, u"HEXADECIMAL"_s);
    EXPECT_EQ(sizes(), (QStringList{u"4"_s, u"8"_s, u"0"_s}));
    EXPECT_EQ(allLimits(), (QStringList{u"(1 to 65535)"_s, u"(1 to 65535)"_s, u"(0 - Fixed)"_s}));
    EXPECT_FALSE(entry(u"PRECISION"_s).isEnabled());
    write(u"LENGTH"_s, u"3"_s);
    EXPECT_EQ(text(u"PRECISION"_s), u"6"_s);
}

TEST_F(FieldPane, AFieldThatIsGoneShowsNoValues)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(field(u"CODE"_s));
    change(u"DELETE FROM TW_FIELD WHERE FIELD_NAME = 'FLAGS'"_s);
    click(key(field(u"FLAGS"_s)));
    EXPECT_EQ(paneTitle(), u"STOCK.FLAGS - Field Properties"_s);
    EXPECT_EQ(texts(fieldColumns).join(QString()), QString());
    EXPECT_EQ(state(), displayState);
}

TEST_F(FieldPane, ATypeThatTheCatalogNoLongerKnowsIsReportedAndAskedFor)
{
    errors.expect(Press::Ignore);
    open({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=SALARY"_s});
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"5"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmField.ApplyLocalType"_s);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(texts({u"FIELD_NAME"_s, u"OFFSET"_s, u"LENGTH"_s}), (QStringList{u"SALARY"_s, u"8"_s, u"4"_s}));
    const QStringList before = wholeCatalog();
    expectRefused(noType, u"LOCAL_TYPE_NAME"_s);
    EXPECT_EQ(wholeCatalog(), before);
    pick(u"LOCAL_TYPE_NAME"_s, u"STRING"_s);
    boxes.expectAsk(columnsToo, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT LOCAL_TYPE_NAME, LENGTH FROM TW_FIELD WHERE FIELD_NAME = 'SALARY'"_s),
              QStringList{u"STRING|10"_s});
}

TEST_F(FieldPane, ATypeThatTheCatalogNoLongerKnowsIsStillShown)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    errors.expect(Press::Ignore);
    open({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=SALARY"_s});
    EXPECT_EQ(text(u"LOCAL_TYPE_NAME"_s), u"CHARACTER"_s);
    EXPECT_EQ(list(u"LOCAL_TYPE_NAME"_s).currentText(), u"CHARACTER"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
}

TEST_F(FieldPane, UpShowsTheCollectionAndSelectsItsNode)
{
    open(field(u"CODE"_s));
    press(u"Up1"_s);
    EXPECT_EQ(takeShown(), QStringList{shown()});
    EXPECT_EQ(selectedKey(), key(stock()));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
}

TEST_F(FieldPane, EveryFieldOfAReservedFileIsForReadingOnly)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    for (const char* file : {"KEY", "TABLE", "CNTRL"}) {
        SCOPED_TRACE(file);
        const QString name = QLatin1String(file);
        begin({u"FI"_s, "fi="_L1 + name, u"FD"_s, u"fd"_s});
        const QString first = children(key({u"FI"_s, "fi="_L1 + name, u"FD"_s})).front();
        click(key({u"FI"_s, "fi="_L1 + name, u"FD"_s, "fd="_L1 + first}));
        EXPECT_EQ(paneTitle(), name + '.'_L1 + first + " - Field Properties"_L1);
        EXPECT_EQ(open(), QStringList());
        EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
        EXPECT_FALSE(control(u"cmdNextFieldNumber"_s).isEnabled());
        press(u"OK"_s);
        press(u"Cancel"_s);
        EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    }
    EXPECT_EQ(statements.writes(), QStringList());
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(FieldPane, ANewFieldBeginsWithTheNextNumberAndOffset)
{
    beginToAdd();
    EXPECT_EQ(statements.statements(), (QStringList{describe, nextNumber, nextOffset(u"6"_s)}));
    EXPECT_EQ(paneTitle(), u"Add New Field to STOCK"_s);
    EXPECT_EQ(texts(fieldColumns), (QStringList{u"STOCK"_s, u"6"_s, u""_s, u""_s, u"34"_s, u""_s, u""_s, u""_s, u""_s,
                                                u""_s, u""_s, u""_s}));
    EXPECT_EQ(limits(0), u"(Set the Local Type)"_s);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), fieldColumns.sliced(1));
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
    EXPECT_TRUE(control(u"cmdNextFieldNumber"_s).isEnabled());
    EXPECT_TRUE(control(u"cmdCalcOffset"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdFormat"_s).isEnabled());
}

TEST_F(FieldPane, TheFirstFieldOfAFileHasTheNumberOneAndNoOffset)
{
    command({u"FI"_s, u"fi=EMPTY"_s, u"FD"_s}, u"mnu_FieldAddNew"_s);
    EXPECT_EQ(texts({u"FILE_NAME"_s, u"FIELD_NUMBER"_s, u"OFFSET"_s}), (QStringList{u"EMPTY"_s, u"1"_s, u"0"_s}));
}

TEST_F(FieldPane, ThreeFieldsAreAddedOneBehindTheOther)
{
    beginToAdd();
    const QStringList before = fieldsOf(u"STOCK"_s);
    statements.clear();

    fillIn(u"a"_s, u"STRING"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{nameIsTaken(u"A"_s), numberIsTaken(u"6"_s),
                           insertField(u"06, 'A', 'STRING', 034, 010, 010, 00, 0, '', '', ''"_s), nextNumber,
                           nextOffset(u"7"_s)}));
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
    EXPECT_EQ(selectedKey(), key(field(u"A"_s)));
    EXPECT_EQ(texts({u"FIELD_NUMBER"_s, u"FIELD_NAME"_s, u"OFFSET"_s, u"LENGTH"_s}),
              (QStringList{u"7"_s, u""_s, u"44"_s, u""_s}));

    fillIn(u"b c"_s, u"PACKED"_s);
    pick(u"ENCRYPTED"_s, u"Yes - Read Only"_s);
    write(u"DEFAULT_VALUE"_s, u"it's; 5%"_s);
    clickButton(u"cmdAction"_s);
    fillIn(u"d"_s, u"DATE"_s);
    write(u"REMARKS"_s, u"\"q\""_s);
    entry(u"OFFSET"_s).setFocus();
    hit(Qt::Key_Return);

    EXPECT_EQ(fieldsOf(u"STOCK"_s), before + QStringList({u"A 6 34"_s, u"B_C 7 44"_s, u"D 8 48"_s}));
    EXPECT_EQ(storedField(u"B_C"_s), QStringList{u"STOCK|7|B_C|PACKED|44|4|8|0|2||it's; 5%|"_s});
    EXPECT_EQ(storedField(u"D"_s), QStringList{u"STOCK|8|D|DATE|48|10|10|0|0|YYYY-MM-DD||\"q\""_s});
    EXPECT_EQ(children(key(stock())),
              (QStringList{u"CODE"_s, u"FLAGS"_s, u"PIECES"_s, u"PRICE"_s, u"SOLD"_s, u"A"_s, u"B_C"_s, u"D"_s}));
    EXPECT_EQ(line(node(key(field(u"D"_s)))), u"fd \"D\" Field"_s);
    EXPECT_EQ(takeShown(), QStringList());
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(takeShown(), QStringList{shown()});
}

TEST_F(FieldPane, UndoOfAnAddEmptiesTheForm)
{
    beginToAdd();
    fillIn(u"x"_s, u"STRING"_s);
    press(u"Undo"_s);
    EXPECT_EQ(texts(fieldColumns).join(QString()), QString());
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(takeShown(), QStringList{shown()});
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FieldPane, WhatIsFilledInBehindAnUndoStillBelongsToTheFile)
{
    beginToAdd();
    fillIn(u"x"_s, u"STRING"_s);
    press(u"Undo"_s);
    fillIn(u"big"_s, u"STRING"_s);
    write(u"FIELD_NUMBER"_s, u"6"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedField(u"BIG"_s).size(), 1);
}

TEST_F(FieldPane, AddingToAFileWhoseFieldsDoNotShowReadsThem)
{
    command({u"FI"_s, u"fi=STOCK"_s, u"FD"_s}, u"mnu_FieldAddNew"_s);
    fillIn(u"big"_s, u"STRING"_s);
    press(u"OK"_s);
    EXPECT_EQ(selectedKey(), key(field(u"BIG"_s)));
    EXPECT_EQ(children(key(stock())).size(), 6);
}

TEST_F(FieldPane, TheNumberAndTheOffsetAreCalculatedOnDemand)
{
    open(field(u"PRICE"_s));
    statements.clear();
    clickButton(u"cmdNextFieldNumber"_s);
    EXPECT_EQ(text(u"FIELD_NUMBER"_s), u"6"_s);
    write(u"FIELD_NUMBER"_s, u"3"_s);
    clickButton(u"cmdCalcOffset"_s);
    EXPECT_EQ(text(u"OFFSET"_s), u"14"_s);
    clear(u"FIELD_NUMBER"_s);
    clickButton(u"cmdCalcOffset"_s);
    EXPECT_EQ(texts({u"FIELD_NUMBER"_s, u"OFFSET"_s}), (QStringList{u"6"_s, u"34"_s}));
    EXPECT_EQ(statements.statements(), (QStringList{nextNumber, nextOffset(u"3"_s), nextNumber, nextOffset(u"6"_s)}));
}

TEST_F(FieldPane, AFaultOfOneCalculationLeavesTheRestOfANewFieldInForce)
{
    begin(stock());
    statements.failAt(2);
    errors.expect(Press::Ignore);
    choose(key(stock()), u"mnu_FieldAddNew"_s);
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmField.cmdNextFieldNumber_Click"_s);
    // The offset needs a number and asks for it again.
    EXPECT_EQ(statements.statements(), (QStringList{describe, nextNumber, nextNumber, nextOffset(u"6"_s)}));
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);
}

// Types --------------------------------------------------------------------------------------------------------------

TEST_F(FieldPane, ChoosingATypeSetsItsDefaultsAndLimits)
{
    beginToAdd();
    write(u"FIELD_NAME"_s, u"x"_s);
    pick(u"LOCAL_TYPE_NAME"_s, u"PACKED"_s);
    EXPECT_EQ(sizes(), (QStringList{u"4"_s, u"8"_s, u"0"_s}));
    EXPECT_EQ(allLimits(), (QStringList{u"(1 to 16)"_s, u"(8 to 9)"_s, u"(-32 to 31)"_s}));
    pick(u"LOCAL_TYPE_NAME"_s, u"INTEGER-4"_s);
    EXPECT_EQ(sizes(), (QStringList{u"4"_s, u"10"_s, u"0"_s}));
    EXPECT_EQ(allLimits(), (QStringList{u"(4 - Fixed)"_s, u"(10 - Fixed)"_s, u"(-32 to 10)"_s}));
    EXPECT_FALSE(entry(u"LENGTH"_s).isEnabled());
    EXPECT_FALSE(entry(u"PRECISION"_s).isEnabled());
    EXPECT_TRUE(entry(u"SCALE"_s).isEnabled());
    EXPECT_FALSE(entry(u"FORMAT"_s).isEnabled());
    EXPECT_FALSE(arrows(2).isEnabled());
    press(u"OK"_s);
    EXPECT_EQ(storedField(u"X"_s), QStringList{u"STOCK|6|X|INTEGER-4|34|4|10|0|0|||"_s});
    // The next one may be of any type.
    EXPECT_TRUE(entry(u"LENGTH"_s).isEnabled());
    pick(u"LOCAL_TYPE_NAME"_s, u"DATE"_s);
    EXPECT_EQ(text(u"FORMAT"_s), u"YYYY-MM-DD"_s);
    EXPECT_TRUE(entry(u"FORMAT"_s).isEnabled());
    EXPECT_TRUE(control(u"cmdFormat"_s).isEnabled());
    pick(u"LOCAL_TYPE_NAME"_s, u"DATE-YYMMDD"_s);
    EXPECT_EQ(text(u"FORMAT"_s), u"YYMMDD"_s);
    EXPECT_FALSE(entry(u"FORMAT"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdFormat"_s).isEnabled());
}

TEST_F(FieldPane, APackedLengthLimitsThePrecision)
{
    beginToAdd();
    fillIn(u"x"_s, u"PACKED"_s);
    write(u"LENGTH"_s, u"12"_s);
    EXPECT_EQ(text(u"PRECISION"_s), u"24"_s);
    EXPECT_EQ(limits(1), u"(24 to 25)"_s);
    write(u"LENGTH"_s, u"4"_s);
    EXPECT_EQ(text(u"PRECISION"_s), u"8"_s);
    EXPECT_EQ(limits(1), u"(8 to 9)"_s);
    write(u"PRECISION"_s, u"10"_s);
    expectRefused(u"Invalid Length, must be an integer between 8 and 9."_s, u"PRECISION"_s);
    write(u"PRECISION"_s, u"9"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedField(u"X"_s), QStringList{u"STOCK|6|X|PACKED|34|4|9|0|0|||"_s});
}

TEST_F(FieldPane, ALengthBeyondAllNumbersIsReported)
{
    beginToAdd();
    fillIn(u"x"_s, u"PACKED"_s);
    clear(u"LENGTH"_s);
    errors.expect(Press::Ignore);
    paste(u"LENGTH"_s, u"2000000000"_s);
    EXPECT_EQ(errors.shown().back().number, u"6"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmField.txtProperty_Change"_s);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel Undo"_s);
}

TEST_F(FieldPane, TheFormatSetsLengthAndPrecision)
{
    open(field(u"SOLD"_s));
    paste(u"FORMAT"_s, u"YYYY/MM/DD"_s);
    EXPECT_EQ(texts({u"LENGTH"_s, u"PRECISION"_s}), (QStringList{u"10"_s, u"10"_s}));
    clear(u"FORMAT"_s);
    EXPECT_EQ(texts({u"LENGTH"_s, u"PRECISION"_s}), (QStringList{u"10"_s, u"10"_s}));
}

TEST_F(FieldPane, ATypeWhoseNameHoldsDateOrTimeHasThatBuilder)
{
    for (const char* name : {"DATE-TEXT", "TIME-TEXT", "DATE-TIME"})
        change(u"INSERT INTO TW_LOCDT (LOCAL_TYPE_NAME, ATTRIBUTES) VALUES ('%1', "
               "'CHARACTER;DEFAULT_FORMAT=DD;DEFAULT_LENGTH=2;DEFAULT_PRECISION=2')"_s.arg(QLatin1String(name)));
    command(stock(), u"mnu_FieldAddNew"_s);
    const auto leave = [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCancel"_s); };
    for (const auto& [type, builder] :
         {std::pair(u"DATE-TEXT"_s, u"frmDateFormat"_s), std::pair(u"TIME-TEXT"_s, u"frmTimeFormat"_s),
          std::pair(u"DATE-TIME"_s, u"frmDateFormat"_s)}) {
        pick(u"LOCAL_TYPE_NAME"_s, type);
        dialogs.expect(builder, leave);
        clickButton(u"cmdFormat"_s);
        dialogs.verify();
    }
}

TEST_F(FieldPane, TheBuilderOfTheTypeWritesTheFormat)
{
    open(field(u"SOLD"_s));
    dialogs.expect(u"frmDateFormat"_s, [](DialogForm& dialog) {
        DialogScript::click(dialog, u"cmdDelete"_s);
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    clickButton(u"cmdFormat"_s);
    dialogs.verify();
    EXPECT_EQ(texts({u"FORMAT"_s, u"LENGTH"_s, u"PRECISION"_s}), (QStringList{u"DD.MM."_s, u"6"_s, u"6"_s}));

    press(u"Cancel"_s);
    press(u"Field Add"_s);
    pick(u"LOCAL_TYPE_NAME"_s, u"TIME"_s);
    dialogs.expect(u"frmTimeFormat"_s, [](DialogForm& dialog) {
        DialogScript::click(dialog, u"cmdDelete"_s);
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    clickButton(u"cmdFormat"_s);
    EXPECT_EQ(text(u"FORMAT"_s), u"hh:mm:"_s);
}
