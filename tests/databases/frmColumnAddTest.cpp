#include "ColumnPaneFixture.h"

#include <QPushButton>

#include <ostream>
#include <utility>

using namespace Qt::StringLiterals;
using namespace columnpane;

TEST_F(ColumnPane, ANewColumnBeginsUpdatableAndVisible)
{
    beginToAdd();
    // The lists are read once.
    EXPECT_EQ(statements.statements(), (QStringList{describe, readFile, readFields}));
    EXPECT_EQ(paneTitle(), u"Add New Column to ITEMS"_s);
    EXPECT_EQ(texts(allColumns).join('|'_L1), u"SALES|ITEMS||||||||||||1|1||||||||0"_s);
    EXPECT_EQ(ticked(), (QStringList{u"UPDATABLE"_s, u"VISIBLE"_s}));
    for (const char* column : {"FIELD_NAME", "SQL_TYPE_NAME", "SEARCHABLE"})
        EXPECT_EQ(list(QLatin1String(column)).currentIndex(), -1) << column;
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), openEntries);
    EXPECT_EQ(openFlags(), flags);
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
    EXPECT_TRUE(control(u"cmdNextColumnNumber"_s).isEnabled());
}

TEST_F(ColumnPane, ThreeColumnsAreAddedOneBehindTheOther)
{
    beginToAdd();
    pick(u"FIELD_NAME"_s, u"SOLD"_s);
    write(u"COLUMN_NAME"_s, u"sold on"_s);
    write(u"DISPLAY_NAME"_s, u"Sold On"_s);
    write(u"COLUMN_NUMBER"_s, u"9"_s);
    chooseType(u"VARCHAR"_s);
    write(u"LENGTH"_s, u"8"_s);
    write(u"SCALE"_s, u"-2"_s);
    pick(u"SEARCHABLE"_s, u"LIKE only"_s);
    tick(u"NULLABLE"_s);
    tick(u"VISIBLE"_s);
    tick(u"SETFILEPARAMETER"_s);
    paste(u"DEFAULT_VALUE"_s, u"🚀'"_s);
    write(u"REMARKS"_s, u"Don't; \"100%\""_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent(),
              (QStringList{nameIsTaken(u"SOLD_ON"_s), numberIsTaken(u"9"_s), isMapped(u"SOLD"_s),
                           numberIsAssigned(u"9"_s, u"SOLD_ON"_s), nameIsUsed(u"SOLD_ON"_s),
                           insertColumn(u"'SOLD_ON', 'Sold_On', 09, 08, 0, 0-2, '🚀''', 'Don''t; \"100%\"', 'SOLD', "
                                        "01, 00, 01, 01, 0, 01, 00, 0, 0, 0, 0, 'VARCHAR'"_s),
                           readFile, readFields}));
    EXPECT_EQ(storedColumn(u"SOLD_ON"_s),
              QStringList{u"SALES|ITEMS|9|SOLD_ON|SOLD|VARCHAR|8|0|-2|1|0|1|0|0|0|0|1|0|🚀'|Don't; \"100%\"|1|0|"
                          "Sold_On"_s});
    EXPECT_EQ(texts(allColumns).join('|'_L1), u"SALES|ITEMS||||||||||||1|1||||||||0"_s);
    EXPECT_EQ(ticked(), (QStringList{u"UPDATABLE"_s, u"VISIBLE"_s}));
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
    EXPECT_EQ(paneTitle(), u"Add New Column to ITEMS"_s);
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);

    fillIn(u"b"_s, u"FLAGS"_s, u"CHAR"_s);
    write(u"COLUMN_NUMBER"_s, u"5"_s);
    clickButton(u"cmdAction"_s);
    addField(u"STOCK"_s, u"LATE"_s, 6, 20, 2);
    press(u"Cancel"_s);
    choose(key(items()), u"mnu_ColumnAddNew"_s);
    fillIn(u"c"_s, u"LATE"_s, u"DATE"_s);
    entry(u"COLUMN_NAME"_s).setFocus();
    hit(Qt::Key_Return);

    EXPECT_EQ(storedColumn(u"B"_s), QStringList{u"SALES|ITEMS|5|B|FLAGS|CHAR|0|0|0|0|0|1|1|0|0|0|0|0|||0|0|"_s});
    EXPECT_EQ(storedColumn(u"C"_s), QStringList{u"SALES|ITEMS|10|C|LATE|DATE|6|10|0|1|0|1|1|0|0|0|2|0|||0|0|"_s});
    // By their numbers.
    EXPECT_EQ(children(key(items())),
              (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"PIECES"_s, u"B"_s, u"SOLD_ON"_s, u"C"_s}));
    EXPECT_EQ(line(node(key(column(u"C"_s)))), u"co \"C\" Column"_s);
}

TEST_F(ColumnPane, AnEmptyNumberIsFilledInSilently)
{
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().mid(0, 3), (QStringList{nextNumber, nameIsTaken(u"X"_s), numberIsTaken(u"5"_s)}));
    EXPECT_EQ(stored1(u"X"_s, u"COLUMN_NUMBER"_s), u"5"_s);
}

TEST_F(ColumnPane, TheFirstColumnOfATableHasTheNumberOneAndShowsInTheTree)
{
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('SALES', 'BARE', 'STOCK')"_s);
    const QStringList bare{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=BARE"_s, u"CO"_s};
    begin(bare + QStringList{u"co"_s});
    choose(key(bare), u"mnu_ColumnAddNew"_s);
    EXPECT_EQ(children(key(bare)), QStringList());
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NUMBER, COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'BARE'"_s),
              QStringList{u"1|X"_s});
    EXPECT_EQ(children(key(bare)), QStringList{u"X"_s});
    EXPECT_TRUE(node(key(bare)).Expanded());
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
    fillIn(u"y"_s, u"CODE"_s, u"DATE"_s);
    press(u"OK"_s);
    EXPECT_EQ(children(key(bare)), (QStringList{u"X"_s, u"Y"_s}));
}

TEST_F(ColumnPane, AddingToATableWhoseColumnsDoNotShowReadsThem)
{
    command(items(), u"mnu_ColumnAddNew"_s);
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    press(u"OK"_s);
    EXPECT_EQ(children(key(items())), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"PIECES"_s, u"X"_s}));
}

TEST_F(ColumnPane, TheNextNumberIsOneAboveTheHighest)
{
    open(column(u"ARTICLE"_s));
    statements.clear();
    clickButton(u"cmdNextColumnNumber"_s);
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"5"_s);
    EXPECT_EQ(statements.statements(), QStringList{nextNumber});
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel Undo"_s);
    // Gaps stay.
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = 40 WHERE COLUMN_NAME = 'PIECES'"_s);
    clickButton(u"cmdNextColumnNumber"_s);
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"41"_s);
    // Special columns count.
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS' AND COLUMN_TYPE = 0"_s);
    clickButton(u"cmdNextColumnNumber"_s);
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"2"_s);
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = NULL WHERE TABLE_NAME = 'ITEMS'"_s);
    clickButton(u"cmdNextColumnNumber"_s);
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"1"_s);
    write(u"COLUMN_NUMBER"_s, u"7"_s);
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS'"_s);
    clickButton(u"cmdNextColumnNumber"_s);
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"1"_s);
}

TEST_F(ColumnPane, BehindTheHighestNumberOfAllThereIsNone)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = 32767 WHERE COLUMN_NAME = 'PIECES'"_s);
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    expectRefused(outOfRange(u"Column Number"_s, 1, 32767), u"COLUMN_NUMBER"_s);
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"32768"_s);
}

TEST_F(ColumnPane, UndoOfAnAddBeginsAnew)
{
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    tick(u"UPDATABLE"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), (QStringList{readFile, readFields}));
    EXPECT_EQ(texts(allColumns).join('|'_L1), u"SALES|ITEMS||||||||||||1|1||||||||0"_s);
    EXPECT_EQ(open(), openEntries);
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
    write(u"COLUMN_NAME"_s, u"y"_s);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel Undo"_s);
}

TEST_F(ColumnPane, CancelOfAnAddShowsTheCollection)
{
    open(column(u"ARTICLE"_s));
    press(u"Cancel"_s);
    press(u"Column Add"_s);
    EXPECT_EQ(paneTitle(), u"Add New Column to ITEMS"_s);
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(currentPane(), u"frmColumns"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ColumnPane, ANewColumnBehindAnotherTakesNothingFromIt)
{
    open(column(u"ARTICLE"_s));
    tick(u"SETFILEPARAMETER"_s);
    press(u"Cancel"_s);
    press(u"Column Add"_s);
    EXPECT_EQ(texts(allColumns).join('|'_L1), u"SALES|ITEMS||||||||||||1|1||||||||0"_s);
    EXPECT_EQ(ticked(), (QStringList{u"UPDATABLE"_s, u"VISIBLE"_s}));
    // The field that was shown is taken, as it is for any other column.
    fillIn(u"x"_s, u"CODE"_s, u"DATE"_s);
    expectRefused(u"The Field 'CODE' has already been mapped to Column 'ARTICLE'"_s, u"FIELD_NAME"_s);
}

TEST_F(ColumnPane, ListsAreThoseOfTheTable)
{
    beginToAdd();
    EXPECT_EQ(list(u"FIELD_NAME"_s).count(), 5);
    const QStringList orders{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s};
    expandTo(key(orders));
    choose(key(orders), u"mnu_ColumnAddNew"_s);
    EXPECT_EQ(paneTitle(), u"Add New Column to ORDERS"_s);
    EXPECT_EQ(list(u"FIELD_NAME"_s).count(), 3);
    EXPECT_GE(list(u"FIELD_NAME"_s).findText(u"BONUS"_s), 0);
    EXPECT_EQ(text(u"TABLE_NAME"_s), u"ORDERS"_s);
}

TEST_F(ColumnPane, ATableThatIsGoneHasNoFieldsToOffer)
{
    begin(column(u"ARTICLE"_s));
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    choose(key(items()), u"mnu_ColumnAddNew"_s);
    EXPECT_EQ(statements.statements().back(), u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = ''"_s);
    EXPECT_EQ(list(u"FIELD_NAME"_s).count(), 0);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
}

TEST_F(ColumnPane, NamesEndAtTheWidthOfTheirColumn)
{
    open(column(u"ARTICLE"_s));
    write(u"COLUMN_NAME"_s, QString(33, 'n'_L1));
    EXPECT_EQ(text(u"COLUMN_NAME"_s), QString(32, 'N'_L1));
    paste(u"COLUMN_NAME"_s, QString(40, 'n'_L1));
    EXPECT_EQ(text(u"COLUMN_NAME"_s), QString(32, 'n'_L1));
    paste(u"DISPLAY_NAME"_s, QString(40, 'n'_L1));
    EXPECT_EQ(text(u"DISPLAY_NAME"_s), QString(32, 'n'_L1));
    paste(u"DEFAULT_VALUE"_s, QString(253, 'd'_L1) + u"🚀"_s);
    EXPECT_EQ(text(u"DEFAULT_VALUE"_s), QString(253, 'd'_L1));
    paste(u"REMARKS"_s, QString(300, 'r'_L1));
    EXPECT_EQ(text(u"REMARKS"_s), QString(254, 'r'_L1));
}

TEST_F(ColumnPane, NumbersTakeDigitsAndASignInFront)
{
    open(column(u"ARTICLE"_s));
    write(u"SCALE"_s, u"-1x-2"_s);
    write(u"COLUMN_NUMBER"_s, u"1a.2"_s);
    EXPECT_EQ(texts({u"SCALE"_s, u"COLUMN_NUMBER"_s}), (QStringList{u"-12"_s, u"12"_s}));
    hit(Qt::Key_Up);
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u"13"_s);
}

TEST_F(ColumnPane, AColumnIsAddedBehindTwoThousandOthers)
{
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('SALES', 'WIDE', 'STOCK')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME) "
           "WITH RECURSIVE ROWS(N) AS (SELECT 1 UNION ALL SELECT N + 1 FROM ROWS WHERE N < 2000) "
           "SELECT 'SALES', 'WIDE', N, 'C' || N, 'F' || N, 'VARCHAR' FROM ROWS"_s);
    const QStringList wide{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=WIDE"_s, u"CO"_s};
    begin(wide + QStringList{u"co"_s});
    ASSERT_EQ(children(key(wide)).size(), 2000);
    choose(key(wide), u"mnu_ColumnAddNew"_s);
    fillIn(u"last"_s, u"SOLD"_s, u"INTEGER"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NUMBER FROM TW_COLUMN WHERE COLUMN_NAME = 'LAST'"_s), QStringList{u"2001"_s});
    EXPECT_EQ(children(key(wide)).size(), 2001);
    EXPECT_EQ(children(key(wide)).back(), u"LAST"_s);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);
    // And the first one moves behind that.
    click(key(wide + QStringList{u"co=C1"_s}));
    EXPECT_EQ(paneTitle(), u"WIDE.C1 - Edit Column Properties"_s);
    pick(u"FIELD_NAME"_s, u"CODE"_s);
    write(u"COLUMN_NAME"_s, u"moved"_s);
    clickButton(u"cmdNextColumnNumber"_s);
    press(u"OK"_s);
    EXPECT_EQ(children(key(wide)).size(), 2001);
    EXPECT_EQ(children(key(wide)).front(), u"C2"_s);
    EXPECT_EQ(children(key(wide)).back(), u"MOVED"_s);
    EXPECT_EQ(selectedKey(), key(wide + QStringList{u"co=MOVED"_s}));
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(ColumnPane, ANameThatSomeoneHasTakenMeanwhileIsTheDriversToRefuse)
{
    beginToAdd();
    fillIn(u"late"_s, u"SOLD"_s, u"DATE"_s);
    write(u"REMARKS"_s, u"mine"_s);
    meanwhile(u"INSERT INTO TW_COLUMN"_s, [&] {
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME) "
               "VALUES ('SALES', 'ITEMS', 77, 'LATE')"_s);
    });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmColumn.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"mine"_s);
    EXPECT_EQ(stored1(u"LATE"_s, u"COLUMN_NUMBER"_s), u"77"_s);
    // The next attempt says so itself.
    expectRefused(u"The Column Name 'LATE' is already used in Table 'ITEMS'.\nPlease use another name."_s,
                  u"COLUMN_NAME"_s);
}

TEST_F(ColumnPane, ANumberThatSomeoneHasTakenBehindTheChecksIsThereTwice)
{
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    meanwhile(u"INSERT INTO TW_COLUMN"_s, [&] {
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME) "
               "VALUES ('SALES', 'ITEMS', 5, 'LATE')"_s);
    });
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS' AND COLUMN_NUMBER = 5 "
                     "ORDER BY COLUMN_NAME"_s),
              (QStringList{u"LATE"_s, u"X"_s}));
    EXPECT_EQ(children(key(items())).size(), 5);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
}

TEST_F(ColumnPane, ASecondClickOnOkAddsNothingTwice)
{
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    statements.clear();
    // It comes while the tree reads its level, and counts for nothing.
    EXPECT_TRUE(pressOkTwice().contains(u"frmColumn.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes().size(), 1);
    EXPECT_EQ(state(), u"Column Add: Up1 OK Cancel"_s);
}
