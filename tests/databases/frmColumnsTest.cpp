#include "frmColumns.h"

#include "CellGrid.h"
#include "ColumnGridFixture.h"
#include "Settings.h"
#include "ToolBar.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QTest>
#include <QToolButton>

using namespace columngrid;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(ColumnGrid, ShowsTheOrdinaryColumnsByTheirNumbersAndABlankRow)
{
    addSpecialColumn();
    start();
    expandTo(key(level.first(4)));
    statements.clear();
    click(key(level));
    EXPECT_EQ(statements.statements(), (QStringList{readFile, readFields, describe, readColumns}));
    EXPECT_EQ(paneTitle(), u"SALES.ITEMS - Columns"_s);
    QStringList headings;
    for (int column = 0; column < grid().Cols(); ++column)
        headings.append(grid().Heading(column));
    EXPECT_EQ(headings.join('|'_L1), u"Column Number|Column Name|Display Name|Field Name|Sql Type Name|Length|"
                                     "Precision|Scale|Nullable|Unsigned Attribute|Updatable|Visible|Money|"
                                     "Auto Increment|Case Sensitive|Searchable|Radix|Setfileparameter|Default Value|"
                                     "Remarks"_s);
    EXPECT_EQ(rows(), (QStringList{article, price, blank}));
    EXPECT_EQ(current(), u"0 Column Number"_s);
    EXPECT_EQ(editor(), nullptr);

    // The table is described only once.
    statements.clear();
    click(key(level));
    EXPECT_EQ(statements.statements(), (QStringList{readFile, readFields, readColumns}));
}

TEST_F(ColumnGrid, ASearchShowsAsAFlagThatOnlyAllExceptLikeSets)
{
    openColumns();
    for (const auto& [search, shown] : {std::pair("0", "No"), std::pair("1", "No"), std::pair("2", "Yes"),
                                        std::pair("3", "No"), std::pair("4", "No"), std::pair("NULL", "No")}) {
        SCOPED_TRACE(search);
        change(u"UPDATE TW_COLUMN SET SEARCHABLE = %1 WHERE COLUMN_NAME = 'PRICE'"_s.arg(QLatin1String(search)));
        reopen(level);
        EXPECT_EQ(cell(u"2"_s, u"Searchable"_s), QLatin1String(shown));
    }
}

TEST_F(ColumnGrid, OnlyAOneIsAFlagThatIsSet)
{
    change(u"UPDATE TW_COLUMN SET NULLABLE = 2, UNSIGNED_ATTRIBUTE = -1, UPDATABLE = 1, VISIBLE = 0 "
           "WHERE COLUMN_NAME = 'PRICE'"_s);
    openColumns();
    EXPECT_EQ(cell(1, u"Nullable"_s), u"No"_s);
    EXPECT_EQ(cell(1, u"Unsigned Attribute"_s), u"No"_s);
    EXPECT_EQ(cell(1, u"Updatable"_s), u"Yes"_s);
    EXPECT_EQ(cell(1, u"Visible"_s), u"No"_s);
}

TEST_F(ColumnGrid, NullsShowAsEmptyTextsAndAsFlagsThatAreNotSet)
{
    addColumn(u"NULL, 'NOTHING', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
              "NULL, NULL, NULL, 0, NULL"_s);
    openColumns();
    EXPECT_EQ(rows(), (QStringList{u"|NOTHING|||||||No|No|No|No|No|No|No|No||||"_s, article, price, blank}));
}

TEST_F(ColumnGrid, TheListsAreTheTypesOfTheConnectionAndTheFieldsOfTheFile)
{
    openColumns();
    const auto offered = [&](const QString& heading) {
        click(0, heading);
        hit(Qt::Key_Return);
        auto* list = qobject_cast<QComboBox*>(editor());
        QStringList items;
        for (int i = 0; list && i < list->count(); ++i)
            items.append(list->itemText(i));
        hit(Qt::Key_Escape);
        return items;
    };
    EXPECT_EQ(offered(u"Sql Type Name"_s), stored(u"SELECT SQL_TYPE_NAME FROM TW_SQLDT"_s));
    EXPECT_EQ(offered(u"Field Name"_s), stored(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s));
    EXPECT_EQ(offered(u"Searchable"_s),
              (QStringList{u"Unsearchable"_s, u"LIKE only"_s, u"All except LIKE"_s, u"Searchable"_s}));
    for (const char* flag :
         {"Nullable", "Unsigned Attribute", "Updatable", "Visible", "Money", "Auto Increment", "Case Sensitive"})
        EXPECT_EQ(offered(QLatin1String(flag)), (QStringList{u"No"_s, u"Yes"_s})) << flag;
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(ColumnGrid, ATableWithoutAFileOffersNoField)
{
    change(u"UPDATE TW_TABLE SET FILE_NAME = NULL WHERE TABLE_NAME = 'ITEMS'"_s);
    openColumns();
    click(key(level));
    EXPECT_EQ(sent(), (QStringList{readFile, u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = ''"_s, readColumns}));
    click(1, u"Field Name"_s);
    hit(Qt::Key_Return);
    auto* list = qobject_cast<QComboBox*>(editor());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count(), 0);
    EXPECT_EQ(editorText(), u"PRICE"_s);
}

TEST_F(ColumnGrid, UpShowsTheTable)
{
    openColumns();
    ToolButton& up = window->toolBar(u"tbrColumns"_s).Button(u"Up1"_s);
    EXPECT_EQ(up.ToolTipText(), u"Up to Table 'ITEMS'"_s);
    ASSERT_TRUE(up.widget()->isVisible());
    QTest::mouseClick(up.widget(), Qt::LeftButton);
    EXPECT_EQ(currentPane(), u"frmTable"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Edit Table Properties"_s);
    EXPECT_EQ(selectedKey(), key(level.first(4)));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());

    expandTo(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s}));
    click(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s}));
    EXPECT_EQ(up.ToolTipText(), u"Up to Table 'ORDERS'"_s);
}

TEST_F(ColumnGrid, TheColumnsOfTheCatalogAreOnlyShown)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    open({u"DB"_s, u"db=TW"_s, u"TA"_s, u"ta=KEY"_s, u"CO"_s});
    EXPECT_EQ(paneTitle(), u"TW.KEY - Columns"_s);
    const QStringList asShown = rows();
    ASSERT_EQ(asShown.size(), 5);
    for (const char* heading : {"Column Number", "Column Name", "Sql Type Name", "Remarks"}) {
        SCOPED_TRACE(heading);
        click(4, QLatin1String(heading));
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete, Qt::Key_A, Qt::Key_F2, Qt::Key_Down}) {
            hit(key);
            EXPECT_EQ(editor(), nullptr);
        }
        doubleClick(4, QLatin1String(heading));
        EXPECT_EQ(editor(), nullptr);
    }
    leave();
    EXPECT_EQ(rows(), asShown);
    EXPECT_EQ(sent(), QStringList());
}

// The type -----------------------------------------------------------------------------------------------------------

TEST_F(ColumnGrid, AChosenTypeFillsTheRow)
{
    change(u"UPDATE TW_SQLDT SET NULLABLE = 0, UNSIGNED_ATTRIBUTE = 1, MONEY = 1, AUTO_INCREMENT = 1, "
           "CASE_SENSITIVE = 1, SEARCHABLE = 1, RADIX = 2 WHERE SQL_TYPE_NAME = 'BIGINT'"_s);
    openColumns();
    change(u"1"_s, u"Sql Type Name"_s, u"bigint"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(rows().first(),
              u"1|ARTICLE|Article|ARTICLE|BIGINT|8|19|0|No|Yes|Yes|Yes|Yes|Yes|Yes|LIKE only|2|0|none|what is sold"_s);
    change(u"1"_s, u"Sql Type Name"_s, u"longvarb"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(rows().first(), u"1|ARTICLE|Article|ARTICLE|LONGVARBINARY|32767|32767|0|Yes|No|Yes|Yes|No|No|No|"
                              "Unsearchable|0|0|none|what is sold"_s);
    leave();
    EXPECT_EQ(storedColumns().first(), u"1|ARTICLE|Article|ARTICLE|LONGVARBINARY|32767|32767|0|1|0|1|1|0|0|0|0|0|0|"
                                       "none|what is sold|0"_s);
}

TEST_F(ColumnGrid, ATypeThatIsChosenAgainFillsTheRowAgain)
{
    openColumns();
    EXPECT_EQ(cell(1, u"Searchable"_s), u"Yes"_s);
    click(1, u"Sql Type Name"_s);
    hit(Qt::Key_Return);
    auto* list = qobject_cast<QComboBox*>(editor());
    ASSERT_NE(list, nullptr);
    list->showPopup();
    QAbstractItemView* items = list->view();
    const QRect chosen = items->visualRect(items->currentIndex());
    QTest::mouseMove(items->viewport(), chosen.center());
    QTest::mouseClick(items->viewport(), Qt::LeftButton, {}, chosen.center());
    hit(Qt::Key_Return);
    EXPECT_EQ(cell(1, u"Sql Type Name"_s), u"INTEGER"_s);
    EXPECT_EQ(cell(1, u"Searchable"_s), u"All except LIKE"_s);
}

TEST_F(ColumnGrid, ACharacterTypeLeavesTheRowAsItIs)
{
    openColumns();
    for (const char* type : {"CHAR", "LONGVARCHAR", "VARCHAR"}) {
        SCOPED_TRACE(type);
        change(u"2"_s, u"Sql Type Name"_s, QLatin1String(type));
        hit(Qt::Key_Return);
        EXPECT_EQ(rows().at(1), QString(price).replace(u"INTEGER"_s, QLatin1String(type)));
        for (const char* open : {"Length", "Precision", "Nullable", "Searchable", "Radix"}) {
            click(1, QLatin1String(open));
            hit(Qt::Key_Return);
            EXPECT_NE(editor(), nullptr) << open;
            hit(Qt::Key_Escape);
        }
    }
    leave();
    EXPECT_EQ(storedColumns().last(), u"2|PRICE||PRICE|VARCHAR|4|10|2|0|1|0|1|1|1|0|0|10|1|0||0"_s);
}

TEST_F(ColumnGrid, ATypeDecidesUponNineCells)
{
    openColumns();
    const QStringList decided{u"Length"_s, u"Precision"_s,      u"Nullable"_s,       u"Unsigned Attribute"_s,
                              u"Money"_s,  u"Auto Increment"_s, u"Case Sensitive"_s, u"Searchable"_s,
                              u"Radix"_s};
    for (int column = 0; column < grid().Cols(); ++column) {
        const QString heading = grid().Heading(column);
        SCOPED_TRACE(heading.toStdString());
        click(u"2"_s, heading);
        hit(Qt::Key_Return);
        EXPECT_EQ(editor() == nullptr, decided.contains(heading));
        hit(Qt::Key_Escape);
        if (decided.contains(heading)) {
            write(u"1"_s);
            hit(Qt::Key_Delete);
            hit(Qt::Key_F2);
            doubleClick(1, heading);
            EXPECT_EQ(editor(), nullptr);
        }
        // A character type, or none, decides upon nothing.
        for (const int row : {0, blankRow()}) {
            click(row, heading);
            hit(Qt::Key_Return);
            EXPECT_NE(editor(), nullptr) << row;
            hit(Qt::Key_Escape);
        }
    }
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(rows(), (QStringList{article, price, blank}));
}

// Looking up ---------------------------------------------------------------------------------------------------------

TEST_F(ColumnGrid, TheNextColumnNumberIsLookedUp)
{
    const auto lookUp = [&] {
        click(blankRow(), u"Column Number"_s);
        hit(Qt::Key_Return);
        statements.clear();
        pressLookUp();
        return editorText();
    };
    openColumns();
    EXPECT_EQ(lookUp(), u"3"_s);
    EXPECT_EQ(sent(), QStringList{highestNumber});
    // Gaps are not used.
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = 40 WHERE COLUMN_NAME = 'PRICE'"_s);
    openColumns();
    EXPECT_EQ(lookUp(), u"41"_s);
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = NULL WHERE TABLE_NAME = 'ITEMS'"_s);
    openColumns();
    EXPECT_EQ(lookUp(), u"1"_s);
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS'"_s);
    openColumns();
    EXPECT_EQ(lookUp(), u"1"_s);
    // Special columns count.
    addSpecialColumn();
    openColumns();
    EXPECT_EQ(lookUp(), u"2"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(cell(blankRow(), u"Column Number"_s), u"2"_s);
}

// Names and texts ----------------------------------------------------------------------------------------------------

TEST_F(ColumnGrid, ApostrophesAreDoubled)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('O''B')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('O''B', 'O''T', 'O''F')"_s);
    addFile(u"O'F"_s, 4);
    addField(u"O'F"_s, u"IT'S"_s, 1, 0, 4);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME) "
           "VALUES ('O''B', 'O''T', 1, 'O''C', 'IT''S', 'VARCHAR')"_s);
    open({u"DB"_s, u"db=O'B"_s, u"TA"_s, u"ta=O'T"_s, u"CO"_s});
    EXPECT_EQ(paneTitle(), u"O'B.O'T - Columns"_s);
    EXPECT_EQ(cell(0, u"Field Name"_s), u"IT'S"_s);
    change(0, u"Column Number"_s, u"2"_s);
    change(0, u"Remarks"_s, u"don't"_s);
    leave();
    const QString ofTable = u"DATABASE_NAME = 'O''B' AND TABLE_NAME = 'O''T'"_s;
    EXPECT_EQ(sent(),
              (QStringList{u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofTable +
                               u" AND COLUMN_TYPE = 0 AND COLUMN_NUMBER = 2"_s,
                           u"DELETE FROM TW_COLUMN WHERE "_s + ofTable + u" AND COLUMN_NUMBER = 1"_s,
                           QString(insertion).replace(u"'SALES', 'ITEMS'"_s, u"'O''B', 'O''T'"_s) +
                               u"2, 'O''C', 'IT''S', 'VARCHAR', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '', 'don''t', 0, "
                               "0, '')"_s}));
    EXPECT_EQ(storedColumns(u"O''T"_s), QStringList{u"2|O'C||IT'S|VARCHAR|0|0|0|0|0|0|0|0|0|0|0|0|0||don't|0"_s});
}

TEST_F(ColumnGrid, PastedTextsAreCutToTheirColumns)
{
    openColumns();
    for (const auto& [heading, length] : {std::pair("Column Name", 32), std::pair("Display Name", 32),
                                          std::pair("Default Value", 254), std::pair("Remarks", 254)}) {
        SCOPED_TRACE(heading);
        click(u"1"_s, QLatin1String(heading));
        hit(Qt::Key_Delete);
        paste(QString(300, u'X'));
        EXPECT_EQ(editorText().size(), length);
    }
    leave();
    EXPECT_EQ(world.value(datasource, u"SELECT LENGTH(COLUMN_NAME) FROM TW_COLUMN WHERE COLUMN_NUMBER = 1 "
                                      "AND TABLE_NAME = 'ITEMS'"_s),
              u"32"_s);
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(ColumnGrid, KeysAreFilteredByTheColumnUnderTheHeading)
{
    openColumns();
    const struct {
        const char* heading;
        const char* typed;
        const char* taken;
    } cases[] = {
        {"Column Number", "-1a2.", "-12"},
        {"Column Name", "a b.c", "A_BC"},
        {"Display Name", "a b.c", "a_bc"},
        {"Length", "1x2-", "12"},
        {"Scale", "-1x", "-1"},
        {"Radix", "1o", "1"},
        {"Setfileparameter", "x7", "7"},
        {"Default Value", "a b.", "a b."},
        {"Remarks", "a 'b'", "a 'b'"},
    };
    for (const auto& [heading, typed, taken] : cases) {
        SCOPED_TRACE(heading);
        change(0, QLatin1String(heading), QLatin1String(typed));
        EXPECT_EQ(editorText(), QLatin1String(taken));
        hit(Qt::Key_Escape);
    }
    EXPECT_EQ(rows().first(), article);
}
