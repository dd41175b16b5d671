#pragma once

#include "DropDown.h"
#include "RoomFixture.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QTest>

/// What the pane of a column sends and says.
namespace columnpane
{

using namespace Qt::StringLiterals;

/// In the order of the form.
inline const QStringList allColumns{
    u"DATABASE_NAME"_s,      u"TABLE_NAME"_s,     u"FIELD_NAME"_s,    u"COLUMN_NAME"_s,
    u"DISPLAY_NAME"_s,       u"COLUMN_NUMBER"_s,  u"SQL_TYPE_NAME"_s, u"LENGTH"_s,
    u"PRECISION"_s,          u"SCALE"_s,          u"SEARCHABLE"_s,    u"NULLABLE"_s,
    u"UNSIGNED_ATTRIBUTE"_s, u"UPDATABLE"_s,      u"VISIBLE"_s,       u"MONEY"_s,
    u"AUTO_INCREMENT"_s,     u"CASE_SENSITIVE"_s, u"RADIX"_s,         u"SETFILEPARAMETER"_s,
    u"DEFAULT_VALUE"_s,      u"REMARKS"_s,        u"COLUMN_TYPE"_s};
inline const QStringList flags{u"NULLABLE"_s,        u"UNSIGNED_ATTRIBUTE"_s, u"UPDATABLE"_s,      u"VISIBLE"_s,
                               u"MONEY"_s,           u"AUTO_INCREMENT"_s,     u"CASE_SENSITIVE"_s, u"RADIX"_s,
                               u"SETFILEPARAMETER"_s};
/// What is open to entry besides the flags.
inline const QStringList openEntries{u"FIELD_NAME"_s,    u"COLUMN_NAME"_s,   u"DISPLAY_NAME"_s, u"COLUMN_NUMBER"_s,
                                     u"SQL_TYPE_NAME"_s, u"LENGTH"_s,        u"PRECISION"_s,    u"SCALE"_s,
                                     u"SEARCHABLE"_s,    u"DEFAULT_VALUE"_s, u"REMARKS"_s};
/// The same where the type has a length, a precision and attributes of its own.
inline const QStringList openEntriesOfFixedType{u"FIELD_NAME"_s,    u"COLUMN_NAME"_s,   u"DISPLAY_NAME"_s,
                                                u"COLUMN_NUMBER"_s, u"SQL_TYPE_NAME"_s, u"SCALE"_s,
                                                u"DEFAULT_VALUE"_s, u"REMARKS"_s};
inline const QStringList openFlagsOfFixedType{u"UPDATABLE"_s, u"VISIBLE"_s, u"SETFILEPARAMETER"_s};
/// What a type decides upon.
inline const QStringList typeColumns{u"LENGTH"_s,         u"PRECISION"_s,          u"SEARCHABLE"_s,
                                     u"NULLABLE"_s,       u"UNSIGNED_ATTRIBUTE"_s, u"MONEY"_s,
                                     u"AUTO_INCREMENT"_s, u"CASE_SENSITIVE"_s,     u"RADIX"_s};

inline const QString describe = u"SELECT * FROM TW_COLUMN "_s;
inline const QString displayState = u": Up1 Column Add Column Edit Column Delete"_s;
inline const QString noField = u"Please select a Field Name to map this column to."_s;
inline const QString noName = u"Please enter a Column Name to uniquely identify this column."_s;
inline const QString noType = u"Please select an SQL Data Type for this column."_s;
inline const QString isReserved = u"That is a reserved Column Name"_s;
inline const QString noSuchDisplayName =
    u"The Display Name (if used) MUST exactly match the Column Name (exclusive of case)."_s;
inline const QString mayDelete = u"Are you sure you want to delete this column?"_s;
inline const QString isInCriteria =
    u"This coulm is used as part of the Table criteria for this table.  Removing it will invalidate your criteria.\n"
    "Are you sure you want to delete this Column?"_s;

inline const QString ofItems = u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ITEMS'"_s;
inline const QString readFile = u"SELECT FILE_NAME FROM TW_TABLE WHERE "_s + ofItems;
inline const QString readFields = u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s;
inline const QString nextNumber =
    u"SELECT COLUMN_NUMBER FROM TW_COLUMN WHERE "_s + ofItems + u" ORDER BY COLUMN_NUMBER DESC"_s;

inline QString readColumn(const QString& name)
{
    return "SELECT * FROM TW_COLUMN WHERE "_L1 + ofItems + " AND COLUMN_NAME = '"_L1 + name + '\''_L1;
}

/// The checks of a new column.
inline QString nameIsTaken(const QString& name)
{
    return readColumn(name) + ' '_L1;
}

inline QString numberIsTaken(const QString& number)
{
    return "SELECT * FROM TW_COLUMN WHERE "_L1 + ofItems + " AND COLUMN_NUMBER = 0"_L1 + number;
}

/// The checks of every column.
inline QString isMapped(const QString& field)
{
    return "SELECT * FROM TW_COLUMN WHERE "_L1 + ofItems + " AND FIELD_NAME = '"_L1 + field + '\''_L1;
}

inline QString numberIsAssigned(const QString& number, const QString& name)
{
    return "SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + ofItems + " AND COLUMN_NUMBER = "_L1 + number +
           " AND COLUMN_NAME <> '"_L1 + name + '\''_L1;
}

inline QString nameIsUsed(const QString& name)
{
    return "SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + ofItems + " AND COLUMN_NAME = '"_L1 + name + '\''_L1;
}

inline QString insertColumn(const QString& values)
{
    return "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, DISPLAY_NAME, COLUMN_NUMBER, LENGTH, "
           "PRECISION, SCALE, DEFAULT_VALUE, REMARKS, FIELD_NAME, SETFILEPARAMETER, COLUMN_TYPE, SEARCHABLE, NULLABLE, "
           "UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, RADIX, SQL_TYPE_NAME) "
           "VALUES ('SALES', 'ITEMS', "_L1 +
           values + ')'_L1;
}

inline QString updateColumn(const QString& name, const QString& assignments)
{
    return "UPDATE TW_COLUMN SET "_L1 + assignments + " WHERE "_L1 + ofItems + " AND COLUMN_NAME = '"_L1 + name +
           '\''_L1;
}

inline QString deleteColumn(const QString& name)
{
    return "DELETE FROM TW_COLUMN WHERE "_L1 + ofItems + " AND COLUMN_NAME = '"_L1 + name + '\''_L1;
}

/// How a changed key is written.
inline QString insertAnew(const QString& values)
{
    return "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
           "LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, "
           "CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) "
           "VALUES ('SALES', 'ITEMS', "_L1 +
           values + ')'_L1;
}

inline QString criteriaName(const QString& name)
{
    return "SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME ='SALES' AND TABLE_NAME = 'ITEMS' AND CRITERIA LIKE "
           "'%SALES_ITEMS."_L1 +
           name + "%'"_L1;
}

inline const QString unchangedArticle =
    u"SQL_TYPE_NAME = 'VARCHAR', LENGTH = 012, PRECISION = 010, SCALE = 00, NULLABLE = 01, UNSIGNED_ATTRIBUTE = 01, "
    "UPDATABLE = 01, VISIBLE = 01, MONEY = 00, AUTO_INCREMENT = 00, CASE_SENSITIVE = 01, SEARCHABLE = 03, RADIX = 00, "
    "DEFAULT_VALUE = 'none', REMARKS = 'it''s', SETFILEPARAMETER = 01, DISPLAY_NAME = 'Article'"_s;

inline QString outOfRange(const QString& what, int minimum, int maximum)
{
    return u"%1 is out of range.\nPlease enter a value between %2 and %3."_s.arg(what).arg(minimum).arg(maximum);
}

inline QString isAssigned(const QString& number, const QString& name)
{
    return u"Column Number %1 has already been assigned to Column '%2'."_s.arg(number, name);
}

/// The pane of a column, with a user in front of it.
///
/// Besides the usual catalog there is a table ITEMS in the database SALES over a file STOCK with the fields CODE,
/// PRICE, PIECES, SOLD and FLAGS. Its columns: ARTICLE (number 2, a VARCHAR, maps CODE), PRICE (3, a DECIMAL that
/// differs from its type), PIECES (4, an INTEGER like its type), and the special column ROWID (1).
class ColumnPane : public ItemTest
{
protected:
    void SetUp() override
    {
        ItemTest::SetUp();
        addFile(u"STOCK"_s, 40);
        int number = 0;
        for (const char* field : {"CODE", "PRICE", "PIECES", "SOLD", "FLAGS"}) {
            addField(u"STOCK"_s, QLatin1String(field), number + 1, 4 * number, 4);
            ++number;
        }
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('SALES', 'ITEMS', 'STOCK')"_s);
        for (const char* row : {"2, 'ARTICLE', 'CODE', 'VARCHAR', 12, 10, 0, 1, 1, 1, 1, 0, 0, 1, 3, 0, 'none', "
                                "'it''s', 1, 0, 'Article'",
                                "3, 'PRICE', 'PRICE', 'DECIMAL', 7, 5, 2, 0, 1, 1, 1, 1, 1, 1, 0, 2, '', '', 0, 0, ''",
                                "4, 'PIECES', 'PIECES', 'INTEGER', 4, 10, 0, 1, 0, 1, 1, 0, 0, 0, 2, 10, '', '', 0, 0, "
                                "''",
                                "1, 'ROWID', 'ROWID', 'INTEGER', 4, 10, 0, 0, 0, 0, 1, 0, 0, 0, 2, 10, '', '', 0, 6, "
                                "''"})
            change(insertAnew(QLatin1String(row)));
        statements.clear();
    }

    static QStringList items() { return {u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ITEMS"_s, u"CO"_s}; }
    static QStringList column(const QString& name) { return items() + QStringList{"co="_L1 + name}; }

    QStringList storedColumn(const QString& name) const
    {
        return stored(readColumn(QString(name).replace('\''_L1, "''"_L1)));
    }
    QString stored1(const QString& name, const QString& column) const
    {
        return world.value(datasource, u"SELECT %1 FROM TW_COLUMN WHERE %2 AND COLUMN_NAME = '%3'"_s.arg(
                                           column, ofItems, QString(name).replace('\''_L1, "''"_L1)));
    }

    /// Begins to add a column while those of the table show.
    void beginToAdd()
    {
        begin(column(u"ARTICLE"_s));
        choose(key(items()), u"mnu_ColumnAddNew"_s);
    }

    /// Fills a new column in as far as it must be.
    void fillIn(const QString& name, const QString& field, const QString& type)
    {
        pick(u"FIELD_NAME"_s, field);
        write(u"COLUMN_NAME"_s, name);
        chooseType(type);
    }

    /// Opens the list of types by its key and chooses there, without coming by the types between.
    void chooseType(const QString& type)
    {
        DropDown& types = list(u"SQL_TYPE_NAME"_s);
        ASSERT_TRUE(types.isVisible() && types.isEnabled());
        const int wanted = types.findText(type);
        ASSERT_GE(wanted, 0) << type.toStdString();
        types.setFocus();
        QTest::keyClick(&types, Qt::Key_F4);
        ASSERT_TRUE(types.view()->isVisible());
        QTest::keyClick(types.view(), Qt::Key_Home);
        for (int row = 0; row < wanted; ++row)
            QTest::keyClick(types.view(), Qt::Key_Down);
        QTest::keyClick(types.view(), Qt::Key_Return);
        ASSERT_EQ(types.currentText(), type);
    }

    QCheckBox& box(const QString& column) const { return dynamic_cast<QCheckBox&>(entry(column)); }
    /// Clicks a check box.
    void tick(const QString& column)
    {
        QCheckBox& found = box(column);
        ASSERT_TRUE(found.isVisible() && found.isEnabled()) << column.toStdString();
        const bool was = found.isChecked();
        QTest::mouseClick(&found, Qt::LeftButton, {}, {6, found.height() / 2});
        ASSERT_NE(found.isChecked(), was) << column.toStdString();
    }
    QStringList ticked() const
    {
        QStringList columns = flags;
        columns.removeIf([this](const QString& column) { return !box(column).isChecked(); });
        return columns;
    }
    QStringList openFlags() const
    {
        QStringList columns = flags;
        columns.removeIf([this](const QString& column) { return !box(column).isEnabled(); });
        return columns;
    }

    /// Presses "OK" and expects a message of validation.
    void expectRefused(const QString& message, const QString& column)
    {
        boxes.expectInform(message);
        press(u"OK"_s);
        boxes.verify();
        EXPECT_EQ(focus(), column) << message.toStdString();
    }

    QString shown() const { return "frmColumns "_L1 + datasource + "/SALES/ITEMS"_L1; }
    void recordCollection() { record({{u"frmColumns"_s, 3}}); }
};

} // namespace columnpane
