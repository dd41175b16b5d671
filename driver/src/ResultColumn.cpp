#include "ResultColumn.h"

#include "Lower.h"
#include "RecordTables.h"
#include "Registry.h"
#include "Text.h"

#include <array>
#include <limits>

namespace tarnwick
{
namespace
{

/// The library below cuts names to the buffer without a word, so the buffer is the largest: a column without a name
/// bears its whole expression.
constexpr SQLSMALLINT nameCapacity = std::numeric_limits<SQLSMALLINT>::max();

using NameBuffer = std::array<SQLCHAR, nameCapacity>;

/// The characters of a moment to the hundredth of a second, the finest that is shown, and the digits behind its point.
constexpr SQLULEN timestampCharacters = 22;
constexpr SQLSMALLINT timestampDigits = 2;

bool IsDeclaredAs(SQLHSTMT statement, SQLUSMALLINT number, std::string_view type)
{
    SQLRETURN answer = SQL_ERROR;
    const std::string declared = TextAttribute(statement, number, SQL_DESC_TYPE_NAME, &answer);
    return SQL_SUCCEEDED(answer) && EqualIgnoringCase(declared, type);
}

/// What the library below does not know of the numbers of tables over records: it calls decimal ones text, whose digits
/// are those of the field, and takes every whole one for signed.
void TakeRecordNumber(SQLHSTMT statement, SQLUSMALLINT number, ResultColumn* column)
{
    SQLRETURN answer = SQL_ERROR;
    const auto connection = registry::ConnectionOf(statement);
    const std::string table = TextAttribute(statement, number, SQL_DESC_BASE_TABLE_NAME, &answer);
    const std::string name = TextAttribute(statement, number, SQL_DESC_BASE_COLUMN_NAME, &answer);
    const auto records = connection && !table.empty() ? connection->tables->Find(table) : nullptr;
    if (!records)
        return;
    for (const records::Column& known : records->Definition().columns) {
        if (!EqualIgnoringCase(known.name, name))
            continue;
        column->isUnsigned = known.shown == records::Shown::Integer && known.limits.least == 0;
        if (known.shown == records::Shown::Decimal) {
            column->type = SQL_DECIMAL;
            column->digits = static_cast<SQLSMALLINT>(known.scale);
            column->size = known.digits;
        }
    }
}

/// Whether a column of another table is declared as unsigned, of which the library below tells.
bool IsUnsignedBelow(SQLHSTMT statement, SQLUSMALLINT number)
{
    SQLLEN isUnsigned = SQL_FALSE;
    const SQLRETURN answer =
        lower.SQLColAttribute(statement, number, SQL_DESC_UNSIGNED, nullptr, 0, nullptr, &isUnsigned);
    return SQL_SUCCEEDED(answer) && isUnsigned == SQL_TRUE;
}

} // namespace

std::string TextAttribute(SQLHSTMT statement, SQLUSMALLINT number, SQLUSMALLINT field, SQLRETURN* answer)
{
    NameBuffer text;
    text[0] = 0;
    SQLSMALLINT length = 0;
    *answer = lower.SQLColAttribute(statement, number, field, text.data(), nameCapacity, &length, nullptr);
    return reinterpret_cast<const char*>(text.data());
}

SQLRETURN Describe(SQLHSTMT statement, SQLUSMALLINT number, ResultColumn* column)
{
    NameBuffer name;
    name[0] = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN answer = lower.SQLDescribeCol(statement, number, name.data(), nameCapacity, &length, &column->type,
                                                  &column->size, &column->digits, &column->nullable);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    column->name = reinterpret_cast<const char*>(name.data());
    if (column->type == SQL_LONGVARCHAR && IsDeclaredAs(statement, number, "varchar"))
        column->type = SQL_VARCHAR;
    else if ((column->type == SQL_VARCHAR || column->type == SQL_LONGVARCHAR) &&
             IsDeclaredAs(statement, number, records::decimalText))
        TakeRecordNumber(statement, number, column);
    else if (column->type == SQL_TINYINT || column->type == SQL_SMALLINT || column->type == SQL_INTEGER)
        TakeRecordNumber(statement, number, column);
    column->size = IntegerSize(column->type).value_or(column->size);
    if (const auto floating = FloatOf(column->type))
        column->size = floating->digits;
    if (IsTimestamp(column->type)) {
        column->size = timestampCharacters;
        column->digits = timestampDigits;
    }
    return SQL_SUCCESS;
}

bool IsBinaryColumn(SQLHSTMT statement, SQLUSMALLINT number)
{
    SQLLEN type = SQL_UNKNOWN_TYPE;
    const SQLRETURN answer = lower.SQLColAttribute(statement, number, SQL_DESC_TYPE, nullptr, 0, nullptr, &type);
    return SQL_SUCCEEDED(answer) && IsBinary(static_cast<SQLSMALLINT>(type));
}

SQLSMALLINT DefaultType(SQLHSTMT statement, SQLUSMALLINT number)
{
    ResultColumn column;
    if (!SQL_SUCCEEDED(Describe(statement, number, &column)))
        return SQL_C_CHAR;
    const auto ofSign = [&](SQLSMALLINT withSign, SQLSMALLINT without) {
        return column.isUnsigned || IsUnsignedBelow(statement, number) ? without : withSign;
    };
    switch (column.type) {
    case SQL_BIT:
        return SQL_C_BIT;
    case SQL_TINYINT:
        return ofSign(SQL_C_STINYINT, SQL_C_UTINYINT);
    case SQL_SMALLINT:
        return ofSign(SQL_C_SSHORT, SQL_C_USHORT);
    case SQL_INTEGER:
        return ofSign(SQL_C_SLONG, SQL_C_ULONG);
    case SQL_BIGINT:
        return ofSign(SQL_C_SBIGINT, SQL_C_UBIGINT);
    case SQL_REAL:
        return SQL_C_FLOAT;
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return SQL_C_DOUBLE;
    case SQL_DATE:
    case SQL_TYPE_DATE:
        return SQL_C_TYPE_DATE;
    case SQL_TIME:
    case SQL_TYPE_TIME:
        return SQL_C_TYPE_TIME;
    case SQL_TIMESTAMP:
    case SQL_TYPE_TIMESTAMP:
        return SQL_C_TYPE_TIMESTAMP;
    default:
        return IsBinary(column.type) ? SQL_C_BINARY : SQL_C_CHAR;
    }
}

bool IsBinary(SQLSMALLINT type)
{
    return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY;
}

bool IsMoment(SQLSMALLINT type)
{
    return (type >= SQL_TYPE_DATE && type <= SQL_TYPE_TIMESTAMP) || (type >= SQL_DATE && type <= SQL_TIMESTAMP);
}

bool IsTimestamp(SQLSMALLINT type)
{
    return type == SQL_TYPE_TIMESTAMP || type == SQL_TIMESTAMP;
}

std::optional<SQLULEN> IntegerSize(SQLSMALLINT type)
{
    switch (type) {
    case SQL_BIT:
        return 1;
    case SQL_TINYINT:
        return 3;
    case SQL_SMALLINT:
        return 5;
    case SQL_INTEGER:
        return 10;
    case SQL_BIGINT:
        return 19;
    default:
        return std::nullopt;
    }
}

std::optional<Float> FloatOf(SQLSMALLINT type)
{
    switch (type) {
    case SQL_REAL:
        return Float{7, 14, 4};
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return Float{15, 24, 8};
    default:
        return std::nullopt;
    }
}

} // namespace tarnwick
