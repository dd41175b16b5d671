#include "ColumnOfField.h"

#include "Conversions.h"
#include "Definitions.h"
#include "Recordset.h"

using namespace Qt::StringLiterals;
using definitions::quotedText;

namespace
{

QString valueOf(const dao::Recordset& row, const QString& column)
{
    return row.Fields().Item(column).Value().Text();
}

/// A number of the catalog as it stands in a statement; a null is 0.
QString number(const dao::Recordset& row, const QString& column)
{
    const QString text = valueOf(row, column);
    return text.isEmpty() ? u"0"_s : text;
}

} // namespace

/// A scaled number becomes a DOUBLE, and keeps the properties of the type that it would have had.
QString columnoffield::insertion(const QString& database, const QString& table, const dao::Recordset& field,
                                 const QString& sqlType, const dao::Recordset& type)
{
    static const QStringList ownLength{u"STRING"_s,    u"NUMERIC"_s, u"ZONED"_s,
                                       u"ZONED-NUM"_s, u"ZONED-S"_s, u"ZONED-U"_s};
    const QString localType = valueOf(field, u"LOCAL_TYPE_NAME"_s);
    const QString fieldName = valueOf(field, u"FIELD_NAME"_s);
    const QString columnName = QString(fieldName).replace('-'_L1, '_'_L1);
    const QString scale = number(field, u"SCALE"_s);
    const bool isScaled = conversions::Val(scale) != 0;

    const QStringList values{
        quotedText(database),
        quotedText(table),
        number(field, u"FIELD_NUMBER"_s),
        quotedText(columnName),
        quotedText(fieldName),
        quotedText(isScaled ? u"DOUBLE"_s : sqlType),
        number(ownLength.contains(localType) ? field : type, u"LENGTH"_s),
        number(localType == "STRING"_L1 ? field : type, u"PRECISION"_s),
        scale,
        quotedText(valueOf(field, u"DEFAULT_VALUE"_s)),
        quotedText(valueOf(field, u"REMARKS"_s)),
        quotedText(columnName),
        u"1"_s,
        number(type, u"NULLABLE"_s),
        number(type, u"UNSIGNED_ATTRIBUTE"_s),
        number(type, u"MONEY"_s),
        number(type, u"AUTO_INCREMENT"_s),
        number(type, u"CASE_SENSITIVE"_s),
        number(type, u"SEARCHABLE"_s),
        u"1"_s,
        number(type, u"RADIX"_s),
    };
    return "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
           "SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, DEFAULT_VALUE, REMARKS, DISPLAY_NAME, VISIBLE, NULLABLE, "
           "UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, UPDATABLE, RADIX) VALUES ("_L1 +
           values.join(", "_L1) + " )"_L1;
}
