#include "frmColumns.h"

#include "CellGrid.h"
#include "ColumnGridFixture.h"

using namespace columngrid;

// Writing ------------------------------------------------------------------------------------------------------------

TEST_F(ColumnGrid, AChangedRowIsUpdatedByItsNumber)
{
    openColumns();
    change(u"1"_s, u"Default Value"_s, u"it's"_s);
    change(u"1"_s, u"Display Name"_s, u"aRTICLE"_s);
    change(u"1"_s, u"Length"_s, u"11"_s);
    change(u"1"_s, u"Scale"_s, u"40"_s);
    change(u"1"_s, u"Updatable"_s, u"n"_s);
    change(u"1"_s, u"Searchable"_s, u"searchable"_s);
    click(u"2"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList{update(u"DISPLAY_NAME = 'aRTICLE', SQL_TYPE_NAME = 'VARCHAR', LENGTH = 11, "
                                         "PRECISION = 12, SCALE = 40, NULLABLE = 1, UNSIGNED_ATTRIBUTE = 0, "
                                         "UPDATABLE = 0, VISIBLE = 1, MONEY = 0, AUTO_INCREMENT = 0, "
                                         "CASE_SENSITIVE = 1, SEARCHABLE = 3, RADIX = 0, SETFILEPARAMETER = 0, "
                                         "DEFAULT_VALUE = 'it''s', REMARKS = 'what is sold'"_s,
                                         1)});
    EXPECT_EQ(storedColumns(),
              (QStringList{u"1|ARTICLE|aRTICLE|ARTICLE|VARCHAR|11|12|40|1|0|0|1|0|0|1|3|0|0|it's|what is sold|0"_s,
                           priceStored}));
    EXPECT_EQ(selectedKey(), key(level));
    EXPECT_TRUE(grid().hasFocus() || focus() == &grid());
}

TEST_F(ColumnGrid, ASearchThatIsNotChosenAnewIsStoredAsNone)
{
    for (const char* search : {"1", "2", "3"}) {
        SCOPED_TRACE(search);
        change(u"UPDATE TW_COLUMN SET SEARCHABLE = %1, REMARKS = ''"_s.arg(QLatin1String(search)));
        openColumns();
        change(u"1"_s, u"Remarks"_s, u"x"_s);
        leave();
        EXPECT_EQ(sent(), QStringList{update(u"DISPLAY_NAME = 'Article', SQL_TYPE_NAME = 'VARCHAR', LENGTH = 10, "
                                             "PRECISION = 12, SCALE = 0, NULLABLE = 1, UNSIGNED_ATTRIBUTE = 0, "
                                             "UPDATABLE = 1, VISIBLE = 1, MONEY = 0, AUTO_INCREMENT = 0, "
                                             "CASE_SENSITIVE = 1, SEARCHABLE = 0, RADIX = 0, SETFILEPARAMETER = 0, "
                                             "DEFAULT_VALUE = 'none', REMARKS = 'x'"_s,
                                             1)});
        EXPECT_EQ(world.value(datasource, u"SELECT SEARCHABLE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s), u"0"_s);
    }
}

TEST_F(ColumnGrid, EachNameOfASearchIsANumberInTheCatalog)
{
    openColumns();
    const QStringList names{u"Unsearchable"_s, u"LIKE only"_s, u"All except LIKE"_s, u"Searchable"_s};
    for (qsizetype number = 0; number < names.size(); ++number) {
        SCOPED_TRACE(number);
        change(u"1"_s, u"Searchable"_s, names.at(number));
        leave();
        EXPECT_EQ(cell(u"1"_s, u"Searchable"_s), names.at(number));
        EXPECT_EQ(world.value(datasource, u"SELECT SEARCHABLE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s),
                  QString::number(number));
        EXPECT_EQ(frmColumns::ToSearchable(names.at(number)), number);
    }
    for (const char* other : {"", "Yes", "No", "searchable", "LIKE ONLY"})
        EXPECT_EQ(frmColumns::ToSearchable(QLatin1String(other)), 0) << other;
}

TEST_F(ColumnGrid, AFlagIsSetByYesTrueOrOnInAnyCase)
{
    for (const char* text : {"Yes", "YES", "true", "On"})
        EXPECT_TRUE(frmColumns::ToBoolean(QLatin1String(text))) << text;
    for (const char* text : {"", "No", "1", "Y", "oui"})
        EXPECT_FALSE(frmColumns::ToBoolean(QLatin1String(text))) << text;
}

TEST_F(ColumnGrid, ANewColumnIsInsertedWithTheAttributesOfItsType)
{
    openColumns();
    fillIn(u"7"_s, u"sold on"_s, u"sold"_s, u"smalli"_s);
    EXPECT_EQ(rows().last(), u"7|SOLD_ON||SOLD|SMALLINT|2|5|0|Yes|No|Yes|Yes|No|No|No|All except LIKE|10|0||"_s);
    statements.clear();
    leave();
    EXPECT_EQ(sent(),
              (QStringList{numberIsTaken(u"7"_s), nameIsTaken(u"SOLD_ON"_s), fieldIsTaken(u"SOLD"_s),
                           insertion + u"7, 'SOLD_ON', 'SOLD', 'SMALLINT', 2, 5, 0, 1, 0, 1, 1, 0, 0, 0, 2, 10, '', "
                                       "'', 0, 0, '')"_s}));
    EXPECT_EQ(storedColumns(),
              (QStringList{articleStored, priceStored, u"7|SOLD_ON||SOLD|SMALLINT|2|5|0|1|0|1|1|0|0|0|2|10|0|||0"_s}));
    EXPECT_EQ(children(key(level)), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"SOLD_ON"_s}));
    EXPECT_EQ(rows().size(), 4);
    EXPECT_EQ(rows().last(), blank);
    EXPECT_EQ(selectedKey(), key(level));
}

TEST_F(ColumnGrid, ColumnsAreAddedOneBelowTheOther)
{
    openColumns();
    fillIn(u"3"_s, u"A"_s, u"SOLD"_s, u"INTEGER"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(current(), u"3 Sql Type Name"_s);
    fillIn(u"4"_s, u"B"_s, u"LEFT"_s, u"DATE"_s);
    leave();
    EXPECT_EQ(storedColumns().mid(2), (QStringList{u"3|A||SOLD|INTEGER|4|10|0|1|0|1|1|0|0|0|2|10|0|||0"_s,
                                                   u"4|B||LEFT|DATE|6|10|0|1|0|1|1|0|0|0|2|0|0|||0"_s}));
    EXPECT_EQ(children(key(level)), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"A"_s, u"B"_s}));
}

TEST_F(ColumnGrid, ABlankRowThatIsAsItWasIsNotWritten)
{
    openColumns();
    change(blankRow(), u"Column Name"_s, u"X"_s);
    change(blankRow(), u"Column Name"_s, {});
    leave();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(rows(), (QStringList{article, price, blank}));
}

TEST_F(ColumnGrid, ARenamedColumnIsRemovedAndAddedAlone)
{
    change(u"UPDATE TW_TABLE SET CRITERIA = 'SALES_ITEMS.PRICE > 0' WHERE TABLE_NAME = 'ITEMS'"_s);
    openColumns();
    expandTo(key(level));
    statements.clear();
    change(u"2"_s, u"Column Name"_s, u"cost"_s);
    click(0, u"Column Name"_s);
    EXPECT_EQ(sent(),
              (QStringList{nameIsTaken(u"COST"_s), deletion(2),
                           insertion + u"2, 'COST', 'PRICE', 'INTEGER', 4, 10, 2, 0, 1, 0, 1, 1, 1, 0, 0, 10, '0', "
                                       "'', 1, 0, '')"_s}));
    EXPECT_EQ(storedColumns(),
              (QStringList{articleStored, u"2|COST||PRICE|INTEGER|4|10|2|0|1|0|1|1|1|0|0|10|1|0||0"_s}));
    EXPECT_EQ(stored(u"SELECT CRITERIA FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s),
              QStringList{u"SALES_ITEMS.PRICE > 0"_s});
    EXPECT_EQ(children(key(level)), (QStringList{u"ARTICLE"_s, u"COST"_s}));
}

TEST_F(ColumnGrid, AnotherNumberMovesTheColumnInTheTree)
{
    openColumns();
    expandTo(key(level));
    statements.clear();
    change(u"1"_s, u"Column Number"_s, u"30"_s);
    leave();
    EXPECT_EQ(sent(),
              (QStringList{numberIsTaken(u"30"_s), deletion(1),
                           insertion + u"30, 'ARTICLE', 'ARTICLE', 'VARCHAR', 10, 12, 0, 1, 0, 1, 1, 0, 0, 1, 0, 0, "
                                       "'none', 'what is sold', 0, 0, 'Article')"_s}));
    EXPECT_EQ(children(key(level)), (QStringList{u"PRICE"_s, u"ARTICLE"_s}));
    // The grid keeps its order until it is read anew; the row is known by its new number.
    statements.clear();
    change(u"30"_s, u"Remarks"_s, u"x"_s);
    leave();
    ASSERT_EQ(sent().size(), 1);
    EXPECT_TRUE(sent().first().endsWith(u"REMARKS = 'x' WHERE "_s + ofItems + u" AND COLUMN_NUMBER = 30"_s));
    reopen(level);
    EXPECT_EQ(cell(0, u"Column Name"_s), u"PRICE"_s);
}

TEST_F(ColumnGrid, AnotherFieldIsAnotherKeyToo)
{
    openColumns();
    change(u"2"_s, u"Field Name"_s, u"left"_s);
    leave();
    EXPECT_EQ(sent(),
              (QStringList{fieldIsTaken(u"LEFT"_s), deletion(2),
                           insertion + u"2, 'PRICE', 'LEFT', 'INTEGER', 4, 10, 2, 0, 1, 0, 1, 1, 1, 0, 0, 10, '0', "
                                       "'', 1, 0, '')"_s}));
}

TEST_F(ColumnGrid, AKeyThatIsTypedBackIsAnUpdate)
{
    openColumns();
    change(u"2"_s, u"Field Name"_s, u"LEFT"_s);
    change(u"2"_s, u"Field Name"_s, u"PRICE"_s);
    change(u"2"_s, u"Column Number"_s, u"9"_s);
    change(1, u"Column Number"_s, u"2"_s);
    leave();
    ASSERT_EQ(sent().size(), 1);
    EXPECT_TRUE(sent().first().startsWith(u"UPDATE TW_COLUMN SET "_s));
}

// Beside special columns ---------------------------------------------------------------------------------------------

TEST_F(ColumnGrid, ReplacingTheColumnNumberOneRemovesTheSpecialColumns)
{
    addSpecialColumn();
    openColumns();
    change(u"1"_s, u"Display Name"_s, {});
    change(u"1"_s, u"Column Name"_s, u"item"_s);
    leave();
    EXPECT_EQ(storedColumns(),
              (QStringList{u"1|ITEM||ARTICLE|VARCHAR|10|12|0|1|0|1|1|0|0|1|0|0|0|none|what is sold|0"_s, priceStored}));
}

TEST_F(ColumnGrid, UpdatingTheColumnNumberOneOverwritesTheSpecialColumns)
{
    addSpecialColumn();
    openColumns();
    change(u"1"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(storedColumns(),
              (QStringList{u"1|ARTICLE|Article|ARTICLE|VARCHAR|10|12|0|1|0|1|1|0|0|1|0|0|0|none|x|0"_s,
                           u"1|RFA|Article|RFA|VARCHAR|10|12|0|1|0|1|1|0|0|1|0|0|0|none|x|1"_s, priceStored}));
}

TEST_F(ColumnGrid, TheNumberOneIsFreeBesideSpecialColumns)
{
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s);
    addSpecialColumn();
    openColumns();
    fillIn(u"1"_s, u"NEW"_s, u"SOLD"_s, u"TIME"_s);
    leave();
    EXPECT_EQ(storedColumns(),
              (QStringList{u"1|NEW||SOLD|TIME|6|8|0|1|0|1|1|0|0|0|2|0|0|||0"_s, rfaStored, priceStored}));
}
