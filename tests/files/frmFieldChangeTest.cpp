#include "FieldPaneFixture.h"

#include <QTest>

#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace fieldpane;

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(FieldPane, RefusesWhatIsMissingOneAfterTheOther)
{
    beginToAdd();
    const QStringList tree = wholeTree();
    statements.clear();
    expectRefused(noName, u"FIELD_NAME"_s);
    write(u"FIELD_NAME"_s, u"x"_s);
    clear(u"FIELD_NUMBER"_s);
    expectRefused(u"Invalid Field Number, must be an integer between 1 and 32767."_s, u"FIELD_NUMBER"_s);
    write(u"FIELD_NUMBER"_s, u"9"_s);
    expectRefused(noType, u"LOCAL_TYPE_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel Undo"_s);
}

TEST_F(FieldPane, RefusesNumbersOutOfTheirRange)
{
    open(field(u"PRICE"_s));
    const std::vector<std::tuple<const char*, QStringList, QString>> rows{
        {"FIELD_NUMBER",
         {u"0"_s, u"32768"_s, u"-"_s, u"1e5"_s, u"٣"_s, u"-33"_s},
         u"Invalid Field Number, must be an integer between 1 and 32767."_s},
        {"OFFSET", {u"65536"_s, u"-1"_s, u"1e5"_s}, u"Invalid Offset, must be an integer between 0 and 65535."_s},
        {"LENGTH",
         {u"0"_s, u"17"_s, u"-"_s, u"٣"_s, u"-33"_s},
         u"Invalid length, must be an integer between 1 and 16."_s},
        {"PRECISION", {u"7"_s, u"10"_s, u"65536"_s, {}}, u"Invalid Length, must be an integer between 8 and 9."_s},
        {"SCALE", {u"-33"_s, u"32"_s, u"1e5"_s}, u"Invalid Scale, must be an integer between -32 and 31."_s},
    };
    for (const auto& [column, values, message] : rows) {
        for (const QString& value : values) {
            SCOPED_TRACE(column + (' ' + value.toStdString()));
            click(key(field(u"PRICE"_s)));
            paste(QLatin1String(column), value);
            expectRefused(message, QLatin1String(column));
        }
    }
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(FieldPane, RefusesANameAndANumberThatAreTaken)
{
    beginToAdd();
    fillIn(u"price"_s, u"STRING"_s);
    statements.clear();
    expectRefused(u"This File already contains a Field called 'PRICE'"_s, u"FIELD_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{nameIsTaken(u"PRICE"_s)});
    write(u"FIELD_NAME"_s, u"y"_s);
    write(u"FIELD_NUMBER"_s, u"2"_s);
    statements.clear();
    expectRefused(u"Field Number '2' is already used in this File."_s, u"FIELD_NAME"_s);
    EXPECT_EQ(statements.statements(), (QStringList{nameIsTaken(u"Y"_s), numberIsTaken(u"2"_s)}));
}

TEST_F(FieldPane, ANegativeScaleGoesOutAsASubtraction)
{
    open(field(u"PRICE"_s));
    statements.clear();
    write(u"SCALE"_s, u"-5"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{updateField(u"PRICE"_s, u"FIELD_NUMBER = 02, LOCAL_TYPE_NAME = 'PACKED', LENGTH = 04, "
                                                   "PRECISION = 08, SCALE = 0-5, ENCRYPTED = 00, FORMAT = '', "
                                                   "DEFAULT_VALUE = '', REMARKS = ''"_s),
                           readField(u"PRICE"_s)}));
    EXPECT_EQ(storedField(u"PRICE"_s), QStringList{u"STOCK|2|PRICE|PACKED|10|4|8|-5|0|||"_s});
    EXPECT_EQ(text(u"SCALE"_s), u"-5"_s);
}

TEST_F(FieldPane, WhatIsNoNumberIsTheDriversToRefuse)
{
    open(field(u"PRICE"_s));
    const QStringList before = wholeCatalog();
    for (const QString& value : {u"-"_s, u"٣"_s}) {
        click(key(field(u"PRICE"_s)));
        paste(u"SCALE"_s, value);
        errors.expect(Press::Ignore);
        press(u"OK"_s);
        errors.verify();
        EXPECT_EQ(errors.shown().back().trappedIn, u"frmField.tbr_ButtonClick"_s);
        EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
    }
    EXPECT_EQ(wholeCatalog(), before);
}

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(FieldPane, AChangeIsOneStatement)
{
    open(field(u"CODE"_s));
    statements.clear();
    write(u"REMARKS"_s, u"Don't; \"100%\""_s);
    paste(u"DEFAULT_VALUE"_s, u"🚀'"_s);
    pick(u"ENCRYPTED"_s, u"Yes - Read/Write"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{updateField(u"CODE"_s, u"FIELD_NUMBER = 01, LOCAL_TYPE_NAME = 'STRING', LENGTH = 010, "
                                                  "PRECISION = 010, SCALE = 00, ENCRYPTED = 01, FORMAT = '', "
                                                  "DEFAULT_VALUE = '🚀''', REMARKS = 'Don''t; \"100%\"'"_s),
                           readField(u"CODE"_s)}));
    EXPECT_EQ(storedField(u"CODE"_s), QStringList{u"STOCK|1|CODE|STRING|0|10|10|0|1||🚀'|Don't; \"100%\""_s});
    EXPECT_EQ(paneTitle(), u"STOCK.CODE - Field Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
}

TEST_F(FieldPane, AChangedNumberIsLookedFor)
{
    open(field(u"CODE"_s));
    statements.clear();
    write(u"FIELD_NUMBER"_s, u"9"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{numberIsTaken(u"9"_s),
                           updateField(u"CODE"_s, QString(unchangedCode).replace("NUMBER = 01"_L1, "NUMBER = 09"_L1)),
                           readField(u"CODE"_s)}));
}

TEST_F(FieldPane, ARenameIsCarriedToTheColumnsOfTheTablesNames)
{
    open(field(u"CODE"_s));
    statements.clear();
    write(u"FIELD_NAME"_s, u"article"_s);
    press(u"OK"_s);
    EXPECT_EQ(
        statements.statements(),
        (QStringList{
            nameIsTaken(u"ARTICLE"_s), u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = 'CODE'"_s,
            deleteField(u"CODE"_s), insertField(u"01, 'ARTICLE', 'STRING', 00, 010, 010, 00, 00, '', '', ''"_s),
            u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME='STOCK'"_s,
            u"UPDATE TW_COLUMN SET FIELD_NAME = 'ARTICLE' WHERE FIELD_NAME = 'CODE' AND TABLE_NAME = 'ITEMS'"_s,
            updateField(u"ARTICLE"_s, unchangedCode), readField(u"ARTICLE"_s)}));
    EXPECT_EQ(selectedKey(), key(field(u"ARTICLE"_s)));
    EXPECT_EQ(children(key(stock())), (QStringList{u"ARTICLE"_s, u"FLAGS"_s, u"PIECES"_s, u"PRICE"_s, u"SOLD"_s}));
    EXPECT_EQ(stored(u"SELECT FIELD_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS'"_s),
              (QStringList{u"ARTICLE"_s, u"ARTICLE"_s}));
    EXPECT_EQ(paneTitle(), u"STOCK.ARTICLE - Field Properties"_s);
}

TEST_F(FieldPane, AnApostropheIsDoubledInStatementsAndSingleInTheKey)
{
    open(field(u"FLAGS"_s));
    paste(u"FIELD_NAME"_s, u"it's"_s);
    press(u"OK"_s);
    EXPECT_EQ(selectedKey(), key(field(u"it's"_s)));
    EXPECT_EQ(storedField(u"it's"_s), QStringList{u"STOCK|4|it's|HEXADECIMAL|26|4|8|0|0|||"_s});
}

TEST_F(FieldPane, AChangedOffsetCountsAsAKey)
{
    open(field(u"CODE"_s));
    statements.clear();
    write(u"OFFSET"_s, u"50"_s);
    press(u"OK"_s);
    EXPECT_EQ(
        statements.writes(),
        (QStringList{deleteField(u"CODE"_s), insertField(u"01, 'CODE', 'STRING', 050, 010, 010, 00, 00, '', '', ''"_s),
                     u"UPDATE TW_COLUMN SET FIELD_NAME = 'CODE' WHERE FIELD_NAME = 'CODE' AND TABLE_NAME = "
                     "'ITEMS'"_s,
                     updateField(u"CODE"_s, unchangedCode)}));
    EXPECT_EQ(text(u"OFFSET"_s), u"50"_s);
}

TEST_F(FieldPane, AChangedLengthIsOfferedToTheColumns)
{
    open(field(u"CODE"_s));
    statements.clear();
    write(u"LENGTH"_s, u"12"_s);
    boxes.expectAsk(columnsToo, boxes::Answer::Yes);
    boxes.expectInform(u"Columns lengths updated"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{updateField(u"CODE"_s, QString(unchangedCode).replace("LENGTH = 010"_L1, "LENGTH = 012"_L1)),
                           tablesOfStock,
                           u"UPDATE TW_COLUMN SET LENGTH = 12 WHERE TABLE_NAME = 'ITEMS' AND FIELD_NAME = 'CODE'"_s,
                           readField(u"CODE"_s)}));
    // A table of the same name is touched in every database.
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME, LENGTH FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS' ORDER BY 1"_s),
              (QStringList{u"OTHER|12"_s, u"SALES|12"_s}));
    // It is asked once for a change.
    press(u"Field Edit"_s);
    press(u"OK"_s);
}

TEST_F(FieldPane, AChangedLengthThatIsNotOfferedStaysWithTheField)
{
    open(field(u"CODE"_s));
    write(u"LENGTH"_s, u"12"_s);
    boxes.expectAsk(columnsToo, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT LENGTH FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS'"_s), (QStringList{u"10"_s, u"10"_s}));
    EXPECT_EQ(text(u"LENGTH"_s), u"12"_s);
}

TEST_F(FieldPane, UndoOfAChangeIsTheDriversToRefuse)
{
    open(field(u"CODE"_s));
    write(u"REMARKS"_s, u"x"_s);
    statements.clear();
    errors.expect(Press::Ignore);
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(),
              QStringList{u"SELECT * FROM TW_FIELD WHERE FILENAME = 'STOCK' AND FIELD_NAME = 'CODE'"_s});
    EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmField.tbr_ButtonClick"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"x"_s);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u""_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(takeShown(), QStringList());
}

TEST_F(FieldPane, NamesEndAtTheWidthOfTheirColumn)
{
    open(field(u"CODE"_s));
    write(u"FIELD_NAME"_s, QString(33, 'n'_L1));
    EXPECT_EQ(text(u"FIELD_NAME"_s), QString(32, 'N'_L1));
    paste(u"DEFAULT_VALUE"_s, QString(253, 'd'_L1) + u"🚀"_s);
    EXPECT_EQ(text(u"DEFAULT_VALUE"_s), QString(253, 'd'_L1));
}

TEST_F(FieldPane, LineBreaksOfRemarksAreStored)
{
    open(field(u"CODE"_s));
    write(u"REMARKS"_s, u"one"_s);
    hit(Qt::Key_Return);
    QTest::keyClicks(&entry(u"REMARKS"_s), u"two"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedField(u"CODE"_s), QStringList{u"STOCK|1|CODE|STRING|0|10|10|0|0|||one\ntwo"_s});
}

TEST_F(FieldPane, ARenameOfAFieldWhoseStoredRemarksHoldAnApostropheEndsBehindItsDelete)
{
    change(u"UPDATE TW_FIELD SET REMARKS = 'it''s' WHERE FIELD_NAME = 'FLAGS'"_s);
    open(field(u"FLAGS"_s));
    write(u"FIELD_NAME"_s, u"bits"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateField"_s);
    // The update of a row that is not there is no failure, and the pane shows what the catalog holds.
    EXPECT_EQ(storedField(u"FLAGS"_s) + storedField(u"BITS"_s), QStringList());
    EXPECT_EQ(paneTitle(), u"STOCK.BITS - Field Properties"_s);
    EXPECT_EQ(texts(fieldColumns).join(QString()), QString());
    EXPECT_EQ(state(), displayState);
}

TEST_F(FieldPane, OnlyDateAndTimeThemselvesOpenTheirBuilder)
{
    for (const auto& [type, opens] : {std::pair("DATE", true), std::pair("TIME", true), std::pair("DATE-YYMMDD", false),
                                      std::pair("TIMESTAMP", false), std::pair("STRING", false)}) {
        SCOPED_TRACE(type);
        change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = '%1' WHERE FIELD_NAME = 'SOLD'"_s.arg(QLatin1String(type)));
        open(field(u"SOLD"_s));
        EXPECT_EQ(control(u"cmdFormat"_s).isEnabled(), opens);
    }
}

TEST_F(FieldPane, AnEmptiedOffsetIsNotWritten)
{
    open(field(u"PRICE"_s));
    statements.clear();
    clear(u"OFFSET"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().size(), 1);
    EXPECT_EQ(text(u"OFFSET"_s), u"10"_s);
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(FieldPane, DeletingAFieldRemovesItsNodeAndShowsTheCollection)
{
    begin(field(u"FLAGS"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes, [&] {
        EXPECT_EQ(paneTitle(), u"STOCK.FLAGS - Delete Field"_s);
        EXPECT_EQ(state(), u"Field Delete: Up1 OK Cancel"_s);
        EXPECT_EQ(open(), QStringList());
    });
    choose(key(field(u"FLAGS"_s)), u"mnu_FieldDelete"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{describe, readField(u"FLAGS"_s),
                           u"SELECT DISTINCT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = 'STOCK'"_s,
                           u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS' "
                           "AND FIELD_NAME = 'FLAGS'"_s,
                           deleteField(u"FLAGS"_s)}));
    EXPECT_EQ(takeShown(), QStringList{shown()});
    EXPECT_EQ(children(key(stock())), (QStringList{u"CODE"_s, u"PIECES"_s, u"PRICE"_s, u"SOLD"_s}));
}

TEST_F(FieldPane, DeletingAFieldInUseAsksTwiceAndLeavesTheColumn)
{
    begin(field(u"CODE"_s));
    const QStringList before = wholeCatalog();
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    boxes.expectAsk(isUsed, boxes::Answer::No);
    choose(key(field(u"CODE"_s)), u"mnu_FieldDelete"_s);
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(state(), u"Field Delete: Up1 OK Cancel"_s);
    boxes.expectAsk(isUsed, boxes::Answer::Yes);
    clickButton(u"cmdAction"_s);
    EXPECT_EQ(storedField(u"CODE"_s), QStringList());
    EXPECT_EQ(wholeCatalog().filter(u"TW_COLUMN"_s), before.filter(u"TW_COLUMN"_s));
    EXPECT_EQ(takeShown(), QStringList{shown()});
}

TEST_F(FieldPane, ADeleteThatIsNotWantedWaitsForCancel)
{
    open(field(u"FLAGS"_s));
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    press(u"Field Delete"_s);
    EXPECT_EQ(state(), u"Field Delete: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(FieldPane, AFieldThatSomeoneHasDeletedIsNotMadeAnew)
{
    open(field(u"FLAGS"_s));
    change(u"DELETE FROM TW_FIELD WHERE FIELD_NAME = 'FLAGS'"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(texts(fieldColumns).join(QString()), QString());
    EXPECT_EQ(storedField(u"FLAGS"_s), QStringList());
}

TEST_F(FieldPane, ANameThatSomeoneHasTakenMeanwhileIsTheDriversToRefuse)
{
    beginToAdd();
    fillIn(u"late"_s, u"STRING"_s);
    meanwhile(u"INSERT INTO TW_FIELD"_s, [&] { addField(u"STOCK"_s, u"LATE"_s, 6, 1, 2); });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmField.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(stored(u"SELECT OFFSET FROM TW_FIELD WHERE FIELD_NAME = 'LATE'"_s), QStringList{u"1"_s});
}

TEST_F(FieldPane, ALostConnectionLeavesThePaneInItsState)
{
    open(field(u"CODE"_s));
    const QStringList before = wholeCatalog();
    write(u"FIELD_NAME"_s, u"x"_s);
    statements.clear();
    statements.failAt(1, {{10054, "[Test] 08S01 Communication link failure"}});
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"FIELD_NAME"_s), u"X"_s);
    EXPECT_EQ(wholeCatalog(), before);
}
