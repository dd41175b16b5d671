#include "ResultColumn.h"

#include "Diagnostics.h"
#include "Lower.h"
#include "Text.h"

#include <sqlucode.h>

#include <algorithm>
#include <optional>
#include <string>

using namespace tarnwick;

namespace
{

/// The most bytes that one character takes in UTF-8.
constexpr SQLLEN bytesPerCharacter = 4;

/// What the text of a decimal number takes besides its digits.
constexpr SQLLEN signAndPoint = 2;

SQLLEN IntegerBytes(SQLSMALLINT type)
{
    switch (type) {
    case SQL_SMALLINT:
        return 2;
    case SQL_INTEGER:
        return 4;
    case SQL_BIGINT:
        return 8;
    default:
        return 1;
    }
}

const char* TypeName(SQLSMALLINT type)
{
    switch (type) {
    case SQL_BIT:
        return "BIT";
    case SQL_TINYINT:
        return "TINYINT";
    case SQL_SMALLINT:
        return "SMALLINT";
    case SQL_INTEGER:
        return "INTEGER";
    case SQL_BIGINT:
        return "BIGINT";
    case SQL_DOUBLE:
        return "DOUBLE";
    case SQL_VARCHAR:
        return "VARCHAR";
    case SQL_DECIMAL:
        return "DECIMAL";
    default:
        return nullptr;
    }
}

/// The numeric fields of dates and times; nothing for a field that the library below answers.
std::optional<SQLLEN> MomentField(const ResultColumn& column, SQLUSMALLINT field)
{
    const bool isOlder = column.type <= SQL_TIMESTAMP;
    switch (field) {
    case SQL_DESC_TYPE:
        return isOlder ? column.type : SQLLEN{SQL_DATETIME};
    case SQL_DESC_CONCISE_TYPE:
        return column.type;
    case SQL_DESC_DATETIME_INTERVAL_CODE:
        return column.type - (isOlder ? SQL_DATE : SQL_TYPE_DATE) + SQL_CODE_DATE;
    case SQL_DESC_LENGTH:
    case SQL_DESC_DISPLAY_SIZE:
    case SQL_COLUMN_PRECISION:
        return static_cast<SQLLEN>(column.size);
    case SQL_DESC_PRECISION:
    case SQL_COLUMN_SCALE:
        return column.digits;
    case SQL_DESC_OCTET_LENGTH:
    case SQL_COLUMN_LENGTH:
        return IsTimestamp(column.type) ? SQLLEN{sizeof(SQL_TIMESTAMP_STRUCT)} : SQLLEN{sizeof(SQL_DATE_STRUCT)};
    default:
        return std::nullopt;
    }
}

/// The numeric fields of columns of bytes, which are shown as two digits each.
std::optional<SQLLEN> BytesField(const ResultColumn& column, SQLUSMALLINT field)
{
    const auto size = static_cast<SQLLEN>(column.size);
    switch (field) {
    case SQL_DESC_TYPE:
    case SQL_DESC_CONCISE_TYPE:
        return column.type;
    case SQL_DESC_DISPLAY_SIZE:
        return 2 * size;
    case SQL_DESC_LENGTH:
    case SQL_DESC_PRECISION:
    case SQL_COLUMN_PRECISION:
    case SQL_DESC_OCTET_LENGTH:
    case SQL_COLUMN_LENGTH:
        return size;
    default:
        return std::nullopt;
    }
}

/// The numeric fields that follow from type and size; nothing for a field that the library below answers.
std::optional<SQLLEN> NumericField(const ResultColumn& column, SQLUSMALLINT field)
{
    if (IsMoment(column.type))
        return MomentField(column, field);
    if (IsBinary(column.type))
        return BytesField(column, field);
    const bool integer = IntegerSize(column.type).has_value();
    const auto floating = FloatOf(column.type);
    const bool decimal = column.type == SQL_DECIMAL;
    if (!integer && !floating && !decimal && column.type != SQL_VARCHAR)
        return std::nullopt;
    const auto size = static_cast<SQLLEN>(column.size);
    switch (field) {
    case SQL_DESC_TYPE:
    case SQL_DESC_CONCISE_TYPE:
        return column.type;
    case SQL_DESC_LENGTH:
    case SQL_DESC_PRECISION:
    case SQL_COLUMN_PRECISION:
        return size;
    case SQL_DESC_DISPLAY_SIZE:
        if (floating)
            return floating->characters;
        if (decimal)
            return size + signAndPoint;
        return integer && column.type != SQL_BIT ? size + 1 : size;
    case SQL_DESC_OCTET_LENGTH:
    case SQL_COLUMN_LENGTH:
        if (floating)
            return floating->bytes;
        if (decimal)
            return size + signAndPoint;
        return integer ? IntegerBytes(column.type) : size * bytesPerCharacter;
    case SQL_DESC_NUM_PREC_RADIX:
        return floating || decimal || (integer && column.type != SQL_BIT) ? 10 : 0;
    case SQL_DESC_SCALE:
    case SQL_COLUMN_SCALE:
        return decimal ? std::optional<SQLLEN>(column.digits) : std::nullopt;
    case SQL_DESC_UNSIGNED:
        if (floating || decimal)
            return SQL_FALSE;
        return column.isUnsigned ? std::optional<SQLLEN>(SQL_TRUE) : std::nullopt;
    default:
        return std::nullopt;
    }
}

bool IsTextField(SQLUSMALLINT field)
{
    switch (field) {
    case SQL_COLUMN_NAME:
    case SQL_DESC_NAME:
    case SQL_DESC_LABEL:
    case SQL_DESC_TYPE_NAME:
    case SQL_DESC_TABLE_NAME:
    case SQL_DESC_SCHEMA_NAME:
    case SQL_DESC_CATALOG_NAME:
    case SQL_DESC_BASE_COLUMN_NAME:
    case SQL_DESC_BASE_TABLE_NAME:
    case SQL_DESC_LITERAL_PREFIX:
    case SQL_DESC_LITERAL_SUFFIX:
    case SQL_DESC_LOCAL_TYPE_NAME:
        return true;
    default:
        return false;
    }
}

std::string TextField(SQLHSTMT statement, SQLUSMALLINT number, SQLUSMALLINT field, SQLRETURN* answer)
{
    if (field == SQL_DESC_TYPE_NAME) {
        ResultColumn column;
        *answer = Describe(statement, number, &column);
        if (!SQL_SUCCEEDED(*answer))
            return {};
        if (const char* name = TypeName(column.type))
            return name;
    }
    return TextAttribute(statement, number, field, answer);
}

SQLRETURN ReportFit(SQLHSTMT statement, Fit fit)
{
    return fit == Fit::Whole ? SQL_SUCCESS : diagnostics::WarnOfCutText(SQL_HANDLE_STMT, statement);
}

SQLRETURN DescribeInto(SQLHSTMT statement, SQLUSMALLINT number, void* name, SQLSMALLINT capacity, SQLSMALLINT* length,
                       SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits, SQLSMALLINT* nullable, PutText put)
{
    ResultColumn column;
    const SQLRETURN answer = Describe(statement, number, &column);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    SQLINTEGER whole = 0;
    const Fit fit = put(column.name, name, capacity, &whole);
    const auto give = [](auto* target, auto value) {
        if (target)
            *target = static_cast<std::remove_pointer_t<decltype(target)>>(value);
    };
    give(length, whole);
    give(type, column.type);
    give(size, column.size);
    give(digits, column.digits);
    give(nullable, column.nullable);
    return ReportFit(statement, fit);
}

/// `unit` is the size of a character of the caller's text; `capacity` and `length` count bytes.
SQLRETURN AttributeInto(SQLHSTMT statement, SQLUSMALLINT number, SQLUSMALLINT field, SQLPOINTER text,
                        SQLSMALLINT capacity, SQLSMALLINT* length, SQLLEN* value, PutText put, SQLSMALLINT unit)
{
    SQLRETURN answer = SQL_SUCCESS;
    if (IsTextField(field)) {
        const std::string found = TextField(statement, number, field, &answer);
        if (!SQL_SUCCEEDED(answer))
            return answer;
        SQLINTEGER whole = 0;
        const Fit fit = put(found, text, capacity / unit, &whole);
        if (length)
            *length = static_cast<SQLSMALLINT>(whole * unit);
        return ReportFit(statement, fit);
    }
    if (field != SQL_DESC_COUNT) {
        ResultColumn column;
        answer = Describe(statement, number, &column);
        if (!SQL_SUCCEEDED(answer))
            return answer;
        if (const auto known = NumericField(column, field)) {
            if (value)
                *value = *known;
            return SQL_SUCCESS;
        }
    }
    return lower.SQLColAttribute(statement, number, field, text, capacity, length, value);
}

} // namespace

SQLRETURN SQL_API SQLDescribeCol(SQLHSTMT statement, SQLUSMALLINT number, SQLCHAR* name, SQLSMALLINT capacity,
                                 SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                 SQLSMALLINT* nullable)
{
    return DescribeInto(statement, number, name, capacity, length, type, size, digits, nullable, PutNarrow);
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT statement, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT capacity,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                  SQLSMALLINT* nullable)
{
    return DescribeInto(statement, number, name, capacity, length, type, size, digits, nullable, PutWide);
}

SQLRETURN SQL_API SQLColAttribute(SQLHSTMT statement, SQLUSMALLINT number, SQLUSMALLINT field, SQLPOINTER text,
                                  SQLSMALLINT capacity, SQLSMALLINT* length, SQLLEN* value)
{
    return AttributeInto(statement, number, field, text, capacity, length, value, PutNarrow, 1);
}

SQLRETURN SQL_API SQLColAttributeW(SQLHSTMT statement, SQLUSMALLINT number, SQLUSMALLINT field, SQLPOINTER text,
                                   SQLSMALLINT capacity, SQLSMALLINT* length, SQLLEN* value)
{
    return AttributeInto(statement, number, field, text, capacity, length, value, PutWide, sizeof(SQLWCHAR));
}
