#pragma once

#include "RoomFixture.h"

/// What the grid of a table's columns shows and sends.
namespace columngrid
{

using namespace Qt::StringLiterals;

inline const QStringList level{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ITEMS"_s, u"CO"_s};
inline const QString ofItems = u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ITEMS'"_s;

inline const QString article =
    u"1|ARTICLE|Article|ARTICLE|VARCHAR|10|12|0|Yes|No|Yes|Yes|No|No|Yes|No|0|0|none|what is sold"_s;
inline const QString price = u"2|PRICE||PRICE|INTEGER|4|10|2|No|Yes|No|Yes|Yes|Yes|No|Yes|10|1|0|"_s;
inline const QString blank = u"|||||||0|No|No|Yes|Yes|No|No|No|All except LIKE|0|0||"_s;

inline const QString articleStored =
    u"1|ARTICLE|Article|ARTICLE|VARCHAR|10|12|0|1|0|1|1|0|0|1|3|0|0|none|what is sold|0"_s;
inline const QString priceStored = u"2|PRICE||PRICE|INTEGER|4|10|2|0|1|0|1|1|1|0|2|10|1|0||0"_s;
inline const QString rfaStored = u"1|RFA||RFA|VARCHAR|14|14|0|0|0|0|1|0|0|0|0|0|0|||1"_s;

inline const QString readFile = u"SELECT FILE_NAME FROM TW_TABLE WHERE "_s + ofItems;
inline const QString readFields = u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s;
inline const QString describe = u"SELECT * FROM TW_COLUMN "_s;
inline const QString readColumns =
    u"SELECT COLUMN_NUMBER, COLUMN_NAME, DISPLAY_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, NULLABLE, "
    "UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, RADIX, "
    "SETFILEPARAMETER, DEFAULT_VALUE, REMARKS FROM TW_COLUMN WHERE "_s +
    ofItems + u" AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s;
inline const QString highestNumber =
    u"SELECT COLUMN_NUMBER FROM TW_COLUMN WHERE "_s + ofItems + u" ORDER BY COLUMN_NUMBER DESC"_s;
inline const QString insertion =
    u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, "
    "PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, "
    "SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) VALUES ('SALES', "
    "'ITEMS', "_s;

inline QString numberIsTaken(const QString& number)
{
    return u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofItems + u" AND COLUMN_TYPE = 0 AND COLUMN_NUMBER = "_s +
           number;
}

inline QString nameIsTaken(const QString& name)
{
    return u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofItems + u" AND COLUMN_NAME = '%1'"_s.arg(name);
}

inline QString fieldIsTaken(const QString& field)
{
    return u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofItems + u" AND FIELD_NAME = '%1'"_s.arg(field);
}

inline QString deletion(int number)
{
    return u"DELETE FROM TW_COLUMN WHERE "_s + ofItems + u" AND COLUMN_NUMBER = %1"_s.arg(number);
}

inline QString update(const QString& assignments, int number)
{
    return u"UPDATE TW_COLUMN SET "_s + assignments + u" WHERE "_s + ofItems + u" AND COLUMN_NUMBER = %1"_s.arg(number);
}

/// The columns of the table ITEMS, with a user in front of their grid. Rows go by the number of their column.
class ColumnGrid : public GridTest
{
protected:
    void SetUp() override
    {
        GridTest::SetUp();
        addFile(u"STOCK"_s, 30);
        for (const char* field : {"ARTICLE", "PRICE", "SOLD", "LEFT"})
            addField(u"STOCK"_s, QLatin1String(field), 1, 0, 4);
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME) "
               "VALUES ('SALES', 'ITEMS', 'TABLE', 'STOCK')"_s);
        addColumn(u"1, 'ARTICLE', 'ARTICLE', 'VARCHAR', 10, 12, 0, 1, 0, 1, 1, 0, 0, 1, 3, 0, 'none', 'what is sold', "
                  "0, 0, 'Article'"_s);
        addColumn(u"2, 'PRICE', 'PRICE', 'INTEGER', 4, 10, 2, 0, 1, 0, 1, 1, 1, 0, 2, 10, '0', '', 1, 0, ''"_s);
    }

    /// Adds a column to ITEMS behind the program's back; the values stand in the order of the table.
    void addColumn(const QString& values) const
    {
        change(u"INSERT INTO TW_COLUMN VALUES ('SALES', 'ITEMS', %1)"_s.arg(values));
    }
    void addSpecialColumn() const
    {
        addColumn(u"1, 'RFA', 'RFA', 'VARCHAR', 14, 14, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, '', '', 0, 1, ''"_s);
    }

    void openColumns() { open(level); }
    void leave() { clickBeside(); }

    QStringList storedColumns(const QString& table = u"ITEMS"_s) const
    {
        return stored(
            u"SELECT COLUMN_NUMBER, COLUMN_NAME, DISPLAY_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, PRECISION, "
            "SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, "
            "CASE_SENSITIVE, SEARCHABLE, RADIX, SETFILEPARAMETER, DEFAULT_VALUE, REMARKS, COLUMN_TYPE "
            "FROM TW_COLUMN WHERE TABLE_NAME = '%1' ORDER BY COLUMN_NUMBER, COLUMN_TYPE, COLUMN_NAME"_s.arg(table));
    }

    /// Types what a column must have into the blank row, without leaving the row.
    void fillIn(const QString& number, const QString& name, const QString& field, const QString& type)
    {
        change(blankRow(), u"Column Number"_s, number);
        change(blankRow(), u"Column Name"_s, name);
        change(blankRow(), u"Field Name"_s, field);
        change(blankRow(), u"Sql Type Name"_s, type);
        hit(Qt::Key_Return);
    }
};

} // namespace columngrid
