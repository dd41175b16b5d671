#include "ColumnPaneFixture.h"

#include "CellGrid.h"
#include "Settings.h"
#include "UpDown.h"

#include <QLabel>
#include <QPushButton>

#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace columnpane;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(ColumnPane, AClickOpensAColumnForChange)
{
    open(column(u"ARTICLE"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readColumn(u"ARTICLE"_s), readFile, readFields}));
    EXPECT_EQ(paneTitle(), u"ITEMS.ARTICLE - Edit Column Properties"_s);
    EXPECT_EQ(texts(allColumns), (QStringList{u"SALES"_s,   u"ITEMS"_s, u"CODE"_s, u"ARTICLE"_s, u"Article"_s, u"2"_s,
                                              u"VARCHAR"_s, u"12"_s,    u"10"_s,   u"0"_s,       u"3"_s,       u"1"_s,
                                              u"1"_s,       u"1"_s,     u"1"_s,    u"0"_s,       u"0"_s,       u"1"_s,
                                              u"0"_s,       u"1"_s,     u"none"_s, u"it's"_s,    u"0"_s}));
    EXPECT_EQ(list(u"FIELD_NAME"_s).currentText(), u"CODE"_s);
    EXPECT_EQ(list(u"SQL_TYPE_NAME"_s).currentText(), u"VARCHAR"_s);
    EXPECT_EQ(list(u"SEARCHABLE"_s).currentText(), u"Searchable"_s);
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), openEntries);
    EXPECT_EQ(openFlags(), flags);
    EXPECT_EQ(focus(), u"FIELD_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
    EXPECT_TRUE(control(u"cmdNextColumnNumber"_s).isEnabled());
}

TEST_F(ColumnPane, WithTheOptionOffAClickOnlyShows)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(column(u"PRICE"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readColumn(u"PRICE"_s)}));
    EXPECT_EQ(paneTitle(), u"ITEMS.PRICE - Column Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(openFlags(), QStringList());
    for (const char* button : {"cmdNextColumnNumber", "cmdAction", "cmdCancel"})
        EXPECT_FALSE(control(QLatin1String(button)).isEnabled()) << button;
    for (int index = 0; index < 4; ++index)
        EXPECT_FALSE(arrows(index).isEnabled()) << index;
    // Its own type and field stand in the lists, whatever the type says of the rest.
    EXPECT_EQ(list(u"SQL_TYPE_NAME"_s).count(), 1);
    EXPECT_EQ(list(u"FIELD_NAME"_s).count(), 1);
    EXPECT_EQ(texts(typeColumns),
              (QStringList{u"7"_s, u"5"_s, u"0"_s, u"0"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"2"_s}));
    click(key(column(u"ARTICLE"_s)));
    EXPECT_EQ(statements.statements().sliced(2), QStringList{readColumn(u"ARTICLE"_s)});
    EXPECT_EQ(list(u"FIELD_NAME"_s).currentText(), u"CODE"_s);
    EXPECT_EQ(list(u"SQL_TYPE_NAME"_s).currentText(), u"VARCHAR"_s);
    press(u"Column Edit"_s);
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(list(u"SQL_TYPE_NAME"_s).count(), 19);
    EXPECT_EQ(list(u"FIELD_NAME"_s).count(), 5);
}

TEST_F(ColumnPane, TellsWhatEachPropertyIs)
{
    open(column(u"ARTICLE"_s));
    const std::vector<std::tuple<const char*, const char*, const char*>> rows{
        {"DATABASE_NAME", "Database Name:", "Database this column is bound to"},
        {"TABLE_NAME", "Table Name:", "Table this column is bound to"},
        {"FIELD_NAME", "F&ield Name:", "Field that this column maps to."},
        {"COLUMN_NAME", "&Column Name:", "Each Column must have a unique name within a Table."},
        {"DISPLAY_NAME", "&Display Name:", "How the column name appears to other applications."},
        {"COLUMN_NUMBER", "C&olumn Number:", "Location in the table of this column."},
        {"SQL_TYPE_NAME", "&SQL Data Type:", "The SQL data type that the column definition maps onto."},
        {"LENGTH", "&Length:", "'Size of the Column in bytes and fixed for certain Data Types"},
        {"PRECISION", "&Precision:",
         "Refers to the maximum number of digits used by the datatype.  The precision of a non-numeric field refers to "
         "the maximum length of the column."},
        {"SCALE",
         "Scal&e:", "Refers to the maximum number of digits to the right of the decimal point (numeric fields only)."},
        {"SEARCHABLE", "Sea&rchable:", "Limits (if required) the search that can be performed on this column."},
        {"NULLABLE", "&1. Nullable", "The column can be Null."},
        {"UNSIGNED_ATTRIBUTE", "&2. Unsigned Attribute:", "Signed or Unsigned."},
        {"UPDATABLE", "&3. Updatable:", "Is the Column data read only?"},
        {"VISIBLE", "&4. Visible:", "Is the Column visible to other applications?"},
        {"MONEY", "&5. Money:", "Is this a monetary value"},
        {"AUTO_INCREMENT", "&6. Auto Increment:", "Does this column supply its own incremental value?"},
        {"CASE_SENSITIVE", "&7. Case Sensitive:", "Does this Column differentiate between upper and lower case?"},
        {"RADIX", "&8. Radix:", ""},
        {"SETFILEPARAMETER", "&9. Set File Parameter:", ""},
        {"DEFAULT_VALUE", "Defaul&t Value:", "Initial value of column."},
        {"REMARKS", "Re&marks", "Any notes you wish to make about this Column"},
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
    EXPECT_EQ(control(u"cmdNextColumnNumber"_s).toolTip(), u"Calculate the next free Column number."_s);
    QStringList limits;
    for (const QLabel* label : window->currentPane()->findChildren<QLabel*>()) {
        if (label->text().startsWith('('_L1))
            limits.append(label->text());
    }
    EXPECT_EQ(limits, (QStringList{u"(1 to 32767)"_s, u"(0 to 65535)"_s, u"(0 to 65535)"_s, u"(-32 to 32)"_s}));
    const std::vector<std::pair<int, int>> ranges{{1, 32767}, {0, 65535}, {0, 65535}, {-32, 32}};
    for (int index = 0; index < 4; ++index)
        EXPECT_EQ(std::pair(arrows(index).Min(), arrows(index).Max()), std::pair(ranges[index])) << index;
}

TEST_F(ColumnPane, WhatStandsBehindListsAndFlagsDoesNotShow)
{
    open(column(u"ARTICLE"_s));
    for (const QString& column :
         flags + QStringList{u"FIELD_NAME"_s, u"SQL_TYPE_NAME"_s, u"SEARCHABLE"_s, u"COLUMN_TYPE"_s})
        EXPECT_FALSE(control("txtProperty_"_L1 + column).isVisible()) << column.toStdString();
}

TEST_F(ColumnPane, EveryFieldOfTheTablesFileIsOffered)
{
    open(column(u"ARTICLE"_s));
    QStringList offered;
    const DropDown& fields = list(u"FIELD_NAME"_s);
    for (int item = 0; item < fields.count(); ++item)
        offered.append(fields.itemText(item));
    offered.sort();
    EXPECT_EQ(offered, (QStringList{u"CODE"_s, u"FLAGS"_s, u"PIECES"_s, u"PRICE"_s, u"SOLD"_s}));

    QStringList types;
    for (int item = 0; item < list(u"SQL_TYPE_NAME"_s).count(); ++item)
        types.append(list(u"SQL_TYPE_NAME"_s).itemText(item));
    EXPECT_EQ(types, stored(u"SELECT SQL_TYPE_NAME FROM TW_SQLDT"_s));
}

TEST_F(ColumnPane, ATableThatMapsAnotherFileOffersThatOnesFields)
{
    change(u"UPDATE TW_TABLE SET FILE_NAME = 'PAYROLL' WHERE TABLE_NAME = 'ITEMS'"_s);
    open(column(u"ARTICLE"_s));
    // The field that it is mapped to is none of them.
    EXPECT_EQ(list(u"FIELD_NAME"_s).count(), 3);
    EXPECT_EQ(list(u"FIELD_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(text(u"FIELD_NAME"_s), u""_s);
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel"_s);
    const QStringList before = wholeCatalog();
    expectRefused(noField, u"FIELD_NAME"_s);
    EXPECT_EQ(wholeCatalog(), before);
    pick(u"FIELD_NAME"_s, u"SALARY"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"ARTICLE"_s, u"FIELD_NAME"_s), u"SALARY"_s);
}

TEST_F(ColumnPane, ATypeThatTheCatalogNoLongerKnowsIsAskedFor)
{
    change(u"UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'CURRENCY' WHERE COLUMN_NAME = 'PRICE'"_s);
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(column(u"PRICE"_s));
    EXPECT_EQ(text(u"SQL_TYPE_NAME"_s), u"CURRENCY"_s);
    EXPECT_EQ(list(u"SQL_TYPE_NAME"_s).currentText(), u"CURRENCY"_s);
    press(u"Column Edit"_s);
    EXPECT_EQ(list(u"SQL_TYPE_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(open(), openEntries);
    EXPECT_EQ(texts({u"LENGTH"_s, u"PRECISION"_s, u"SCALE"_s}), (QStringList{u"7"_s, u"5"_s, u"2"_s}));
    expectRefused(noType, u"SQL_TYPE_NAME"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(text(u"SQL_TYPE_NAME"_s), u"CURRENCY"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(ColumnPane, AColumnThatIsGoneShowsNoValues)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(column(u"ARTICLE"_s));
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'PIECES'"_s);
    click(key(column(u"PIECES"_s)));
    EXPECT_EQ(paneTitle(), u"ITEMS.PIECES - Column Properties"_s);
    EXPECT_EQ(texts(allColumns).join(QString()), QString());
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(state(), displayState);
    press(u"Column Edit"_s);
    expectRefused(noField, u"FIELD_NAME"_s);
}

TEST_F(ColumnPane, SearchesAreStoredByNumberAndShownByName)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    const QStringList names{u"Unsearchable"_s, u"LIKE only"_s, u"All except LIKE"_s, u"Searchable"_s};
    open(column(u"ARTICLE"_s));
    for (int number = 0; number < 4; ++number) {
        change(u"UPDATE TW_COLUMN SET SEARCHABLE = %1 WHERE COLUMN_NAME = 'ARTICLE'"_s.arg(number));
        click(key(column(u"ARTICLE"_s)));
        EXPECT_EQ(list(u"SEARCHABLE"_s).currentText(), names[number]);
        EXPECT_EQ(text(u"SEARCHABLE"_s), QString::number(number));
        EXPECT_EQ(list(u"SEARCHABLE"_s).itemText(number), names[number]);
    }
    press(u"Column Edit"_s);
    for (int number = 0; number < 4; ++number) {
        pick(u"SEARCHABLE"_s, names[number]);
        EXPECT_EQ(text(u"SEARCHABLE"_s), QString::number(number));
    }
    pick(u"SEARCHABLE"_s, u"LIKE only"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"ARTICLE"_s, u"SEARCHABLE"_s), u"1"_s);
}

TEST_F(ColumnPane, ASearchThatHasNoNameStaysAsItIs)
{
    for (const char* number : {"7", "-1"}) {
        change(u"UPDATE TW_COLUMN SET SEARCHABLE = %1 WHERE COLUMN_NAME = 'ARTICLE'"_s.arg(QLatin1String(number)));
        open(column(u"ARTICLE"_s));
        EXPECT_EQ(list(u"SEARCHABLE"_s).currentIndex(), -1);
        press(u"OK"_s);
        EXPECT_EQ(stored1(u"ARTICLE"_s, u"SEARCHABLE"_s), QLatin1String(number));
    }
}

TEST_F(ColumnPane, BoxesFollowTheirTextsButForTwo)
{
    change(u"UPDATE TW_COLUMN SET NULLABLE = 1, UPDATABLE = 1, VISIBLE = 1, MONEY = 1, AUTO_INCREMENT = 1, "
           "CASE_SENSITIVE = 1, RADIX = 1 WHERE COLUMN_NAME = 'ARTICLE'"_s);
    open(column(u"ARTICLE"_s));
    QStringList followers = flags;
    followers.removeAll(u"UNSIGNED_ATTRIBUTE"_s);
    followers.removeAll(u"SETFILEPARAMETER"_s);
    EXPECT_EQ(ticked(), followers);
    EXPECT_EQ(texts({u"UNSIGNED_ATTRIBUTE"_s, u"SETFILEPARAMETER"_s}), (QStringList{u"1"_s, u"1"_s}));
    press(u"OK"_s);
    EXPECT_EQ(ticked(), followers);
    EXPECT_EQ(stored1(u"ARTICLE"_s, u"UNSIGNED_ATTRIBUTE"_s), u"1"_s);
    EXPECT_EQ(stored1(u"ARTICLE"_s, u"SETFILEPARAMETER"_s), u"1"_s);
}

TEST_F(ColumnPane, AClickOnABoxThatDoesNotFollowWritesWhatItShows)
{
    open(column(u"ARTICLE"_s));
    tick(u"UNSIGNED_ATTRIBUTE"_s);
    EXPECT_EQ(text(u"UNSIGNED_ATTRIBUTE"_s), u"1"_s);
    tick(u"UNSIGNED_ATTRIBUTE"_s);
    tick(u"SETFILEPARAMETER"_s);
    tick(u"SETFILEPARAMETER"_s);
    tick(u"NULLABLE"_s);
    tick(u"MONEY"_s);
    EXPECT_EQ(texts({u"UNSIGNED_ATTRIBUTE"_s, u"SETFILEPARAMETER"_s, u"NULLABLE"_s, u"MONEY"_s}),
              (QStringList{u"0"_s, u"0"_s, u"0"_s, u"1"_s}));
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT UNSIGNED_ATTRIBUTE, SETFILEPARAMETER, NULLABLE, MONEY FROM TW_COLUMN WHERE "
                     "COLUMN_NAME = 'ARTICLE'"_s),
              QStringList{u"0|0|0|1"_s});
    // A box that was left ticked does not show so on the next column.
    press(u"Column Edit"_s);
    tick(u"SETFILEPARAMETER"_s);
    click(key(column(u"PIECES"_s)));
    EXPECT_EQ(ticked(), (QStringList{u"NULLABLE"_s, u"UPDATABLE"_s, u"VISIBLE"_s}));
    EXPECT_EQ(text(u"SETFILEPARAMETER"_s), u"0"_s);
}

TEST_F(ColumnPane, FlagsThatAreNeitherYesNorNoStayAsTheyAre)
{
    change(u"UPDATE TW_COLUMN SET NULLABLE = 2, MONEY = 10, RADIX = 16, SETFILEPARAMETER = 5 "
           "WHERE COLUMN_NAME = 'ARTICLE'"_s);
    open(column(u"ARTICLE"_s));
    EXPECT_EQ(ticked(), (QStringList{u"UPDATABLE"_s, u"VISIBLE"_s, u"CASE_SENSITIVE"_s}));
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT NULLABLE, MONEY, RADIX, SETFILEPARAMETER FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s),
              QStringList{u"2|10|16|5"_s});
}

TEST_F(ColumnPane, AColumnWithoutANumberIsGivenTheNextOne)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = NULL WHERE COLUMN_NAME = 'ARTICLE'"_s);
    open(column(u"ARTICLE"_s));
    EXPECT_EQ(text(u"COLUMN_NUMBER"_s), u""_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NUMBER, FIELD_NAME, SQL_TYPE_NAME FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s),
              QStringList{u"5|CODE|VARCHAR"_s});
}

TEST_F(ColumnPane, NullsShowAsNothingAndAreWrittenAsNothing)
{
    change(u"UPDATE TW_COLUMN SET LENGTH = NULL, PRECISION = NULL, SCALE = NULL, NULLABLE = NULL, "
           "UNSIGNED_ATTRIBUTE = NULL, UPDATABLE = NULL, VISIBLE = NULL, MONEY = NULL, AUTO_INCREMENT = NULL, "
           "CASE_SENSITIVE = NULL, SEARCHABLE = NULL, RADIX = NULL, DEFAULT_VALUE = NULL, REMARKS = NULL, "
           "SETFILEPARAMETER = NULL, DISPLAY_NAME = NULL WHERE COLUMN_NAME = 'ARTICLE'"_s);
    open(column(u"ARTICLE"_s));
    EXPECT_EQ(texts(allColumns).join('|'_L1), u"SALES|ITEMS|CODE|ARTICLE||2|VARCHAR||||||||||||||||0"_s);
    EXPECT_EQ(list(u"SEARCHABLE"_s).currentIndex(), -1);
    EXPECT_EQ(ticked(), QStringList());
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent(),
              (QStringList{numberIsAssigned(u"2"_s, u"ARTICLE"_s),
                           updateColumn(u"ARTICLE"_s,
                                        u"SQL_TYPE_NAME = 'VARCHAR', LENGTH = 0, PRECISION = 0, SCALE = 0, NULLABLE = "
                                        "0, UNSIGNED_ATTRIBUTE = 0, UPDATABLE = 0, VISIBLE = 0, MONEY = 0, "
                                        "AUTO_INCREMENT = 0, CASE_SENSITIVE = 0, SEARCHABLE = 0, RADIX = 0, "
                                        "DEFAULT_VALUE = '', REMARKS = '', SETFILEPARAMETER = 0, DISPLAY_NAME = ''"_s),
                           readColumn(u"ARTICLE"_s)}));
    EXPECT_EQ(storedColumn(u"ARTICLE"_s),
              QStringList{u"SALES|ITEMS|2|ARTICLE|CODE|VARCHAR|0|0|0|0|0|0|0|0|0|0|0|0|||0|0|"_s});
}

TEST_F(ColumnPane, UpShowsTheCollectionSelectsItsNodeAndGoesToTheGrid)
{
    open(column(u"ARTICLE"_s));
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmColumns"_s);
    EXPECT_EQ(selectedKey(), key(items()));
    EXPECT_TRUE(window->focusWidget() && control(u"grd"_s).isAncestorOf(window->focusWidget()));
}

TEST_F(ColumnPane, TheCatalogsOwnColumnsAreForReadingOnly)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    const QStringList ofFile{u"DB"_s, u"db=TW"_s, u"TA"_s, u"ta=FILE"_s, u"CO"_s};
    open(ofFile + QStringList{u"co=RECORD_SIZE"_s});
    EXPECT_EQ(paneTitle(), u"FILE.RECORD_SIZE - Column Properties"_s);
    EXPECT_EQ(text(u"SQL_TYPE_NAME"_s), u"INTEGER"_s);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(openFlags(), QStringList());
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    EXPECT_FALSE(control(u"cmdNextColumnNumber"_s).isEnabled());
    EXPECT_EQ(menuOf(key(ofFile)), QStringList());
    EXPECT_EQ(menuOf(key(ofFile + QStringList{u"co=RECORD_SIZE"_s})), QStringList());
    press(u"OK"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}
