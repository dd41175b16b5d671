#include "ColumnPaneFixture.h"

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace columnpane;

TEST_F(ColumnPane, RefusesANewColumnForOneReasonAfterTheOther)
{
    beginToAdd();
    const QStringList before = wholeCatalog();
    const QStringList tree = wholeTree();
    write(u"DISPLAY_NAME"_s, u"y"_s);
    write(u"LENGTH"_s, u"65536"_s);
    write(u"PRECISION"_s, u"65536"_s);
    write(u"SCALE"_s, u"33"_s);
    statements.clear();
    expectRefused(noField, u"FIELD_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{nextNumber});
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"5"_s);

    pick(u"FIELD_NAME"_s, u"CODE"_s);
    statements.clear();
    boxes.expect({.prompt = noName, .icon = boxes::Icon::Information, .title = u"Missing COLUMN_NAME"_s},
                 boxes::Answer::Ok);
    press(u"OK"_s);
    boxes.verify();
    EXPECT_EQ(focus(), u"COLUMN_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());

    write(u"COLUMN_NAME"_s, u"article"_s);
    expectRefused(u"The Column Name 'ARTICLE' is already used in Table 'ITEMS'.\nPlease use another name."_s,
                  u"COLUMN_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{nameIsTaken(u"ARTICLE"_s)});

    write(u"COLUMN_NAME"_s, u"rfa"_s);
    write(u"COLUMN_NUMBER"_s, u"3"_s);
    statements.clear();
    // It asks for a name, though the number is at fault.
    expectRefused(u"The Column Number '3' is already used in Table 'ITEMS'.\nPlease use another name."_s,
                  u"COLUMN_NUMBER"_s);
    EXPECT_EQ(statements.statements(), (QStringList{nameIsTaken(u"RFA"_s), numberIsTaken(u"3"_s)}));

    write(u"COLUMN_NUMBER"_s, u"0"_s);
    statements.clear();
    expectRefused(isReserved, u"COLUMN_NAME"_s);
    EXPECT_EQ(statements.statements(), (QStringList{nameIsTaken(u"RFA"_s), numberIsTaken(u"0"_s)}));

    write(u"COLUMN_NAME"_s, u"x"_s);
    statements.clear();
    expectRefused(u"The Field 'CODE' has already been mapped to Column 'ARTICLE'"_s, u"FIELD_NAME"_s);
    EXPECT_EQ(statements.statements(), (QStringList{nameIsTaken(u"X"_s), numberIsTaken(u"0"_s), isMapped(u"CODE"_s)}));

    pick(u"FIELD_NAME"_s, u"SOLD"_s);
    expectRefused(noSuchDisplayName, u"DISPLAY_NAME"_s);
    write(u"DISPLAY_NAME"_s, u"x"_s);
    expectRefused(noType, u"SQL_TYPE_NAME"_s);
    chooseType(u"VARCHAR"_s);
    expectRefused(outOfRange(u"Column Number"_s, 1, 32767), u"COLUMN_NUMBER"_s);
    write(u"COLUMN_NUMBER"_s, u"9"_s);
    statements.clear();
    expectRefused(outOfRange(u"Length"_s, 0, 65535), u"LENGTH"_s);
    EXPECT_EQ(statements.statements(), (QStringList{nameIsTaken(u"X"_s), numberIsTaken(u"9"_s), isMapped(u"SOLD"_s),
                                                    numberIsAssigned(u"9"_s, u"X"_s), nameIsUsed(u"X"_s)}));
    write(u"LENGTH"_s, u"65535"_s);
    expectRefused(outOfRange(u"Precision"_s, 0, 65535), u"PRECISION"_s);
    write(u"PRECISION"_s, u"65535"_s);
    expectRefused(outOfRange(u"Scale"_s, -32, 32), u"SCALE"_s);
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel Undo"_s);

    write(u"SCALE"_s, u"32"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedColumn(u"X"_s),
              QStringList{u"SALES|ITEMS|9|X|SOLD|VARCHAR|65535|65535|32|0|0|1|1|0|0|0|0|0|||0|0|x"_s});
}

TEST_F(ColumnPane, RefusesNumbersOutOfTheirRange)
{
    open(column(u"ARTICLE"_s));
    const std::vector<std::tuple<const char*, QStringList, QString>> rows{
        {"COLUMN_NUMBER",
         {u"0"_s, u"32768"_s, u"-"_s, u"-1"_s, u"1e5"_s, u" "_s, u"٣"_s, u"5--"_s, u"5/*"_s},
         outOfRange(u"Column Number"_s, 1, 32767)},
        {"LENGTH", {u"65536"_s, u"-1"_s, u"1e5"_s, u"5--"_s, u"5/*"_s}, outOfRange(u"Length"_s, 0, 65535)},
        {"PRECISION", {u"65536"_s, u"-1"_s, u"1e5"_s, u"5--"_s, u"5/*"_s}, outOfRange(u"Precision"_s, 0, 65535)},
        {"SCALE", {u"33"_s, u"-33"_s, u"32.5"_s, u"--5"_s, u"5/*"_s}, outOfRange(u"Scale"_s, -32, 32)},
    };
    for (const auto& [name, values, message] : rows) {
        for (const QString& value : values) {
            SCOPED_TRACE(name + (' ' + value.toStdString()));
            click(key(column(u"ARTICLE"_s)));
            paste(QLatin1String(name), value);
            ASSERT_EQ(text(QLatin1String(name)), value);
            expectRefused(message, QLatin1String(name));
        }
    }
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(ColumnPane, TakesNumbersUpToTheirLimits)
{
    for (const auto& [number, length, precision, scale] :
         std::vector<std::tuple<int, int, int, int>>{{32767, 65535, 65535, 32}, {2, 0, 0, -32}, {5, 1, 1, 0}}) {
        open(column(u"ARTICLE"_s));
        write(u"COLUMN_NUMBER"_s, QString::number(number));
        write(u"LENGTH"_s, QString::number(length));
        write(u"PRECISION"_s, QString::number(precision));
        write(u"SCALE"_s, QString::number(scale));
        press(u"OK"_s);
        EXPECT_EQ(stored(u"SELECT COLUMN_NUMBER, LENGTH, PRECISION, SCALE FROM TW_COLUMN "
                         "WHERE COLUMN_NAME = 'ARTICLE'"_s),
                  QStringList{u"%1|%2|%3|%4"_s.arg(number).arg(length).arg(precision).arg(scale)});
        EXPECT_EQ(text(u"SCALE"_s), QString::number(scale));
    }
}

TEST_F(ColumnPane, ANumberBeyondAllNumbersIsReported)
{
    open(column(u"ARTICLE"_s));
    paste(u"LENGTH"_s, u"1e999"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"6"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmColumn.ValidateFields"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(ColumnPane, EmptiedNumbersAreWrittenAsNothing)
{
    open(column(u"ARTICLE"_s));
    for (const char* name : {"LENGTH", "PRECISION", "SCALE"})
        clear(QLatin1String(name));
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT LENGTH, PRECISION, SCALE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s),
              QStringList{u"0|0|0"_s});
}

TEST_F(ColumnPane, NamesOfSpecialColumnsAreReserved)
{
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_TYPE > 0"_s);
    open(column(u"ARTICLE"_s));
    for (const char* name : {"RFA", "INDEX_NUMBER", "INDEX_NAME", "INDEX_COLUMNS", "TABLE_ORDER", "ROWID",
                             "RELATIVE_NUMBER", "RELATIVE_INDEX"}) {
        write(u"COLUMN_NAME"_s, QLatin1String(name));
        expectRefused(isReserved, u"COLUMN_NAME"_s);
    }
    EXPECT_EQ(statements.writes(), QStringList());
    clear(u"DISPLAY_NAME"_s);
    for (const char* name : {"Rfa", "rfa", "RF", "INDEX", "ROWIDS"}) {
        paste(u"COLUMN_NAME"_s, QLatin1String(name));
        clickButton(u"cmdNextColumnNumber"_s);
        press(u"OK"_s);
        EXPECT_EQ(storedColumn(QLatin1String(name)).size(), 1) << name;
        press(u"Column Edit"_s);
    }
}

TEST_F(ColumnPane, ANumberOfASpecialColumnIsRefusedByItsName)
{
    open(column(u"ARTICLE"_s));
    statements.clear();
    write(u"COLUMN_NUMBER"_s, u"1"_s);
    boxes.expectInform(isAssigned(u"1"_s, u"ROWID"_s));
    press(u"OK"_s);
    boxes.verify();
    EXPECT_EQ(statements.statements(), QStringList{numberIsAssigned(u"1"_s, u"ARTICLE"_s)});
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel Undo"_s);
    write(u"COLUMN_NUMBER"_s, u"3"_s);
    boxes.expectInform(isAssigned(u"3"_s, u"PRICE"_s));
    press(u"OK"_s);
    boxes.verify();
    // A new column's number is looked for before its name is.
    press(u"Cancel"_s);
    press(u"Column Add"_s);
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    write(u"COLUMN_NUMBER"_s, u"1"_s);
    expectRefused(u"The Column Number '1' is already used in Table 'ITEMS'.\nPlease use another name."_s,
                  u"COLUMN_NUMBER"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ColumnPane, AColumnThatSharesItsNumberWithASpecialOneIsNotSavedUntilItHasAnother)
{
    open({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s, u"co=BUYER"_s});
    chooseType(u"VARCHAR"_s);
    boxes.expectInform(isAssigned(u"1"_s, u"RFA"_s));
    press(u"OK"_s);
    boxes.verify();
    clickButton(u"cmdNextColumnNumber"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NUMBER, SQL_TYPE_NAME FROM TW_COLUMN WHERE COLUMN_NAME = 'BUYER'"_s),
              QStringList{u"3|VARCHAR"_s});
}

TEST_F(ColumnPane, AnotherNameKeepsTheNumber)
{
    open(column(u"ARTICLE"_s));
    clear(u"DISPLAY_NAME"_s);
    write(u"COLUMN_NAME"_s, u"x"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent().mid(0, 2), (QStringList{numberIsAssigned(u"2"_s, u"ARTICLE"_s), nameIsUsed(u"X"_s)}));
    EXPECT_EQ(stored1(u"X"_s, u"COLUMN_NUMBER"_s), u"2"_s);
    EXPECT_EQ(storedColumn(u"ARTICLE"_s), QStringList());
}

TEST_F(ColumnPane, AnotherColumnsNameIsRefused)
{
    open(column(u"ARTICLE"_s));
    clear(u"DISPLAY_NAME"_s);
    write(u"COLUMN_NAME"_s, u"price"_s);
    write(u"COLUMN_NUMBER"_s, u"5"_s);
    statements.clear();
    expectRefused(u"Column Name 'PRICE' has already been used in this Table."_s, u"COLUMN_NAME"_s);
    EXPECT_EQ(statements.statements(), (QStringList{numberIsAssigned(u"5"_s, u"ARTICLE"_s), nameIsUsed(u"PRICE"_s)}));
    EXPECT_EQ(selectedKey(), key(column(u"ARTICLE"_s)));
    // A column of another table is none of its concern.
    write(u"COLUMN_NAME"_s, u"amount"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedColumn(u"AMOUNT"_s).size(), 1);
}

TEST_F(ColumnPane, ANameThatDiffersByCaseAloneIsLookedFor)
{
    open(column(u"ARTICLE"_s));
    paste(u"COLUMN_NAME"_s, u"article"_s);
    write(u"COLUMN_NUMBER"_s, u"5"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent().mid(0, 2), (QStringList{numberIsAssigned(u"5"_s, u"ARTICLE"_s), nameIsUsed(u"article"_s)}));
    EXPECT_EQ(selectedKey(), key(column(u"article"_s)));
}

TEST_F(ColumnPane, AFieldMapsToOneColumnOfATable)
{
    open(column(u"ARTICLE"_s));
    statements.clear();
    pick(u"FIELD_NAME"_s, u"PIECES"_s);
    expectRefused(u"The Field 'PIECES' has already been mapped to Column 'PIECES'"_s, u"FIELD_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{isMapped(u"PIECES"_s)});
    // Its own field is not looked for, nor is one that only another table uses.
    pick(u"FIELD_NAME"_s, u"CODE"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent().front(), numberIsAssigned(u"2"_s, u"ARTICLE"_s));
    change(u"UPDATE TW_COLUMN SET FIELD_NAME = 'SOLD' WHERE COLUMN_NAME = 'AMOUNT'"_s);
    press(u"Column Edit"_s);
    pick(u"FIELD_NAME"_s, u"SOLD"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"ARTICLE"_s, u"FIELD_NAME"_s), u"SOLD"_s);
}

TEST_F(ColumnPane, ADisplayNameIsTheNameInAnyCase)
{
    open(column(u"ARTICLE"_s));
    for (const char* name : {"ARTICLES", "Art", "_"}) {
        write(u"DISPLAY_NAME"_s, QLatin1String(name));
        expectRefused(noSuchDisplayName, u"DISPLAY_NAME"_s);
    }
    for (const char* name : {"aRTicle", "ARTICLE", ""}) {
        write(u"DISPLAY_NAME"_s, QLatin1String(name));
        press(u"OK"_s);
        EXPECT_EQ(stored1(u"ARTICLE"_s, u"DISPLAY_NAME"_s), QLatin1String(name));
        press(u"Column Edit"_s);
    }
}

TEST_F(ColumnPane, AnEmptiedNumberOfAnOldColumnIsFilledInToo)
{
    open(column(u"ARTICLE"_s));
    clear(u"COLUMN_NUMBER"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent().mid(0, 2), (QStringList{nextNumber, numberIsAssigned(u"5"_s, u"ARTICLE"_s)}));
    EXPECT_EQ(stored1(u"ARTICLE"_s, u"COLUMN_NUMBER"_s), u"5"_s);
}

TEST_F(ColumnPane, ANumberThatCouldNotBeProposedIsAskedForAgain)
{
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmColumn.cmdNextColumnNumber_Click"_s);
    EXPECT_EQ(sent().mid(0, 6), (QStringList{nextNumber, nameIsTaken(u"X"_s), numberIsTaken(u""_s), isMapped(u"SOLD"_s),
                                             nextNumber, numberIsAssigned(u"5"_s, u"X"_s)}));
    EXPECT_EQ(stored1(u"X"_s, u"COLUMN_NUMBER"_s), u"5"_s);
}

TEST_F(ColumnPane, AFailureWithinTheChecksIsReportedByTheirName)
{
    open(column(u"ARTICLE"_s));
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmColumn.ValidateFields"_s);
    EXPECT_TRUE(errors.shown().back().callStack.contains(u"frmColumn,ValidateFields"_s))
        << errors.shown().back().callStack.join('\n'_L1).toStdString();
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel"_s);
}

TEST_F(ColumnPane, WhatSomeoneHasTakenBetweenTheChecksIsSeenByTheLaterOnes)
{
    const auto take = [&](int number, const char* name) {
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME) "
               "VALUES ('SALES', 'ITEMS', %1, '%2')"_s.arg(number)
                   .arg(QLatin1String(name)));
    };
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    meanwhile(isMapped(u"SOLD"_s), [&] { take(5, "LATE"); });
    boxes.expectInform(isAssigned(u"5"_s, u"LATE"_s));
    press(u"OK"_s);
    boxes.verify();
    clickButton(u"cmdNextColumnNumber"_s);
    meanwhile(isMapped(u"SOLD"_s), [&] { take(70, "X"); });
    expectRefused(u"Column Name 'X' has already been used in this Table."_s, u"COLUMN_NAME"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}
