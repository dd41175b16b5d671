#include "ColumnPaneFixture.h"

#include "Settings.h"
#include "UpDown.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace columnpane;

namespace
{

/// Length, precision, search, nullable, unsigned, money, auto increment, case, radix.
const QStringList ofInteger{u"4"_s, u"10"_s, u"2"_s, u"1"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"10"_s};
const QStringList ofDecimal{u"33"_s, u"31"_s, u"2"_s, u"1"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"10"_s};

} // namespace

TEST_F(ColumnPane, ATypeOfNoCharactersGivesItsPropertiesAndLocksThem)
{
    beginToAdd();
    EXPECT_EQ(open(), openEntries);
    write(u"SCALE"_s, u"5"_s);
    write(u"LENGTH"_s, u"99"_s);
    statements.clear();
    chooseType(u"INTEGER"_s);
    EXPECT_EQ(texts(typeColumns), ofInteger);
    EXPECT_EQ(list(u"SEARCHABLE"_s).currentText(), u"All except LIKE"_s);
    EXPECT_EQ(ticked(), (QStringList{u"NULLABLE"_s, u"UPDATABLE"_s, u"VISIBLE"_s}));
    EXPECT_EQ(open(), openEntriesOfFixedType);
    EXPECT_EQ(openFlags(), openFlagsOfFixedType);
    EXPECT_TRUE(arrows(0).isEnabled());
    EXPECT_FALSE(arrows(1).isEnabled());
    EXPECT_FALSE(arrows(2).isEnabled());
    EXPECT_TRUE(arrows(3).isEnabled());
    EXPECT_EQ(text(u"SCALE"_s), u"5"_s);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(ColumnPane, ACharacterTypeBehindAnotherKeepsItsPropertiesAndOpensThem)
{
    beginToAdd();
    chooseType(u"INTEGER"_s);
    chooseType(u"VARCHAR"_s);
    EXPECT_EQ(texts(typeColumns), ofInteger);
    EXPECT_EQ(open(), openEntries);
    EXPECT_EQ(openFlags(), flags);
    EXPECT_TRUE(arrows(1).isEnabled());
    EXPECT_TRUE(arrows(2).isEnabled());
    pick(u"FIELD_NAME"_s, u"SOLD"_s);
    write(u"COLUMN_NAME"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedColumn(u"X"_s), QStringList{u"SALES|ITEMS|5|X|SOLD|VARCHAR|4|10|0|1|0|1|1|0|0|0|2|10|||0|0|"_s});
}

TEST_F(ColumnPane, ACharacterTypeOfANewColumnSetsNothing)
{
    beginToAdd();
    for (const char* type : {"CHAR", "VARCHAR", "LONGVARCHAR"}) {
        chooseType(QLatin1String(type));
        EXPECT_EQ(texts(typeColumns).join(QString()), QString());
        EXPECT_EQ(open(), openEntries);
    }
}

TEST_F(ColumnPane, KeysGoThroughTheTypesOneByOne)
{
    // Each type on the way is chosen as it comes by.
    beginToAdd();
    pick(u"SQL_TYPE_NAME"_s, u"INTEGER"_s);
    pick(u"SQL_TYPE_NAME"_s, u"VARCHAR"_s);
    EXPECT_EQ(texts(typeColumns), ofDecimal);
}

TEST_F(ColumnPane, OpeningAColumnOfAFixedTypeTakesWhatTheTypeSays)
{
    open(column(u"PRICE"_s));
    EXPECT_EQ(texts(typeColumns), ofDecimal);
    EXPECT_EQ(text(u"SCALE"_s), u"2"_s);
    EXPECT_EQ(open(), openEntriesOfFixedType);
    EXPECT_EQ(openFlags(), openFlagsOfFixedType);
    EXPECT_EQ(ticked(), (QStringList{u"NULLABLE"_s, u"UPDATABLE"_s, u"VISIBLE"_s}));
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(
        sent(),
        (QStringList{numberIsAssigned(u"3"_s, u"PRICE"_s),
                     updateColumn(u"PRICE"_s, u"SQL_TYPE_NAME = 'DECIMAL', LENGTH = 033, PRECISION = 031, SCALE = 02, "
                                              "NULLABLE = 01, UNSIGNED_ATTRIBUTE = 00, UPDATABLE = 01, VISIBLE = 01, "
                                              "MONEY = 00, AUTO_INCREMENT = 00, CASE_SENSITIVE = 00, SEARCHABLE = 02, "
                                              "RADIX = 010, DEFAULT_VALUE = '', REMARKS = '', SETFILEPARAMETER = 00, "
                                              "DISPLAY_NAME = ''"_s),
                     readColumn(u"PRICE"_s)}));
    EXPECT_EQ(storedColumn(u"PRICE"_s),
              QStringList{u"SALES|ITEMS|3|PRICE|PRICE|DECIMAL|33|31|2|1|0|1|1|0|0|0|2|10|||0|0|"_s});
}

TEST_F(ColumnPane, LookingAtAColumnOfAFixedTypeAndCancellingChangesNothing)
{
    open(column(u"PRICE"_s));
    press(u"Cancel"_s);
    EXPECT_EQ(texts(typeColumns),
              (QStringList{u"7"_s, u"5"_s, u"0"_s, u"0"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"2"_s}));
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ColumnPane, ABoxThatLosesItsTickDoesNotTakeTheTypesRadixAlong)
{
    open(column(u"ARTICLE"_s));
    tick(u"RADIX"_s);
    EXPECT_EQ(text(u"RADIX"_s), u"1"_s);
    chooseType(u"INTEGER"_s);
    EXPECT_EQ(texts(typeColumns), ofInteger);
    EXPECT_FALSE(box(u"RADIX"_s).isChecked());
}

TEST_F(ColumnPane, AnUnsignedTypeDoesNotTickTheBoxOfItsText)
{
    open(column(u"PIECES"_s));
    chooseType(u"BIT"_s);
    EXPECT_EQ(text(u"UNSIGNED_ATTRIBUTE"_s), u"1"_s);
    EXPECT_FALSE(box(u"UNSIGNED_ATTRIBUTE"_s).isChecked());
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"PIECES"_s, u"UNSIGNED_ATTRIBUTE"_s), u"1"_s);
}

TEST_F(ColumnPane, ATypeIsTakenAsItWasWhenTheDatasourceWasConnected)
{
    open(column(u"ARTICLE"_s));
    change(u"UPDATE TW_SQLDT SET LENGTH = 5 WHERE SQL_TYPE_NAME = 'INTEGER'"_s);
    chooseType(u"INTEGER"_s);
    EXPECT_EQ(texts(typeColumns), ofInteger);
}

TEST_F(ColumnPane, NullsOfATypeCountAsNothing)
{
    change(u"INSERT INTO TW_SQLDT (SQL_TYPE_NAME, LENGTH, PRECISION, SEARCHABLE, NULLABLE, UNSIGNED_ATTRIBUTE, MONEY, "
           "AUTO_INCREMENT, CASE_SENSITIVE, RADIX) "
           "VALUES ('GUID', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)"_s);
    open(column(u"ARTICLE"_s));
    chooseType(u"GUID"_s);
    EXPECT_EQ(texts(typeColumns).join(QString()), u"000000000"_s);
    EXPECT_EQ(list(u"SEARCHABLE"_s).currentText(), u"Unsearchable"_s);
    EXPECT_EQ(open(), openEntriesOfFixedType);
}

TEST_F(ColumnPane, WhatATypeLocksIsOpenAgainForTheNextNewColumn)
{
    beginToAdd();
    fillIn(u"x"_s, u"SOLD"_s, u"DATE"_s);
    EXPECT_EQ(open(), openEntriesOfFixedType);
    press(u"OK"_s);
    EXPECT_EQ(open(), openEntries);
    EXPECT_EQ(openFlags(), flags);
    EXPECT_EQ(texts(typeColumns).join(QString()), QString());
    EXPECT_EQ(list(u"SQL_TYPE_NAME"_s).currentIndex(), -1);
}

TEST_F(ColumnPane, ShowingAColumnOfAFixedTypeDoesNotUnlockIt)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(column(u"PIECES"_s));
    click(key(column(u"ARTICLE"_s)));
    click(key(column(u"PRICE"_s)));
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(openFlags(), QStringList());
    EXPECT_EQ(text(u"LENGTH"_s), u"7"_s);
}
