#include "Describe.h"

#include "Diagnostics.h"
#include "Lower.h"
#include "RecordTables.h"
#include "Registry.h"
#include "Text.h"

#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

using namespace tarnwick;

namespace
{

/// The library below cuts names to the buffer without a word, so the buffer is the largest: a column without a name
/// bears its whole expression.
constexpr SQLSMALLINT nameCapacity = std::numeric_limits<SQLSMALLINT>::max();

using NameBuffer = std::array<SQLCHAR, nameCapacity>;

/// The most bytes that one character takes in UTF-8.
constexpr SQLLEN bytesPerCharacter = 4;

/// What the text of a decimal number takes besides its digits.
constexpr SQLLEN signAndPoint = 2;

/// The characters of a moment to the hundredth of a second, the finest that is shown, and the digits behind its point.
constexpr SQLULEN timestampCharacters = 22;
constexpr SQLSMALLINT timestampDigits = 2;

/// A result column as it is reported. The library below calls declared text beyond 255 characters long text, and gives
/// the numeric types other sizes than ODBC defines for them ("Column Size" in its appendix of data types).
struct Column {
    std::string name;
    SQLSMALLINT type = SQL_UNKNOWN_TYPE;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = SQL_NULLABLE_UNKNOWN;
    bool isUnsigned = false; ///< a whole number that cannot be negative
};

std::string TextAttribute(SQLHSTMT statement, SQLUSMALLINT number, SQLUSMALLINT field, SQLRETURN* answer)
{
    NameBuffer text;
    text[0] = 0;
    SQLSMALLINT length = 0;
    *answer = lower.SQLColAttribute(statement, number, field, text.data(), nameCapacity, &length, nullptr);
    return reinterpret_cast<const char*>(text.data());
}

bool IsDeclaredAs(SQLHSTMT statement, SQLUSMALLINT number, std::string_view type)
{
    SQLRETURN answer = SQL_ERROR;
    const std::string declared = TextAttribute(statement, number, SQL_DESC_TYPE_NAME, &answer);
    return SQL_SUCCEEDED(answer) && EqualIgnoringCase(declared, type);
}

/// What the library below does not know of the numbers of tables over records: it calls decimal ones text, whose digits
/// are those of the field, and takes every whole one for signed.
void TakeRecordNumber(SQLHSTMT statement, SQLUSMALLINT number, Column* column)
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

/// Clients of ODBC 2 have types of their own for dates and times.
bool IsMoment(SQLSMALLINT type)
{
    return (type >= SQL_TYPE_DATE && type <= SQL_TYPE_TIMESTAMP) || (type >= SQL_DATE && type <= SQL_TIMESTAMP);
}

bool IsTimestamp(SQLSMALLINT type)
{
    return type == SQL_TYPE_TIMESTAMP || type == SQL_TIMESTAMP;
}

/// The size that ODBC gives an integer type: its decimal digits.
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

/// A floating point type as ODBC describes it: its decimal digits, the characters of its longest text, its bytes.
struct Float {
    SQLULEN digits;
    SQLLEN characters;
    SQLLEN bytes;
};

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

SQLRETURN Describe(SQLHSTMT statement, SQLUSMALLINT number, Column* column)
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

bool IsBinary(SQLSMALLINT type)
{
    return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY;
}

/// The numeric fields of dates and times; nothing for a field that the library below answers.
std::optional<SQLLEN> MomentField(const Column& column, SQLUSMALLINT field)
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
std::optional<SQLLEN> BytesField(const Column& column, SQLUSMALLINT field)
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
std::optional<SQLLEN> NumericField(const Column& column, SQLUSMALLINT field)
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

/// Whether a column of another table is declared as unsigned, of which the library below tells.
bool IsUnsignedBelow(SQLHSTMT statement, SQLUSMALLINT number)
{
    SQLLEN isUnsigned = SQL_FALSE;
    const SQLRETURN answer =
        lower.SQLColAttribute(statement, number, SQL_DESC_UNSIGNED, nullptr, 0, nullptr, &isUnsigned);
    return SQL_SUCCEEDED(answer) && isUnsigned == SQL_TRUE;
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
        Column column;
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
    Column column;
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
        Column column;
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

bool tarnwick::IsBinaryColumn(SQLHSTMT statement, SQLUSMALLINT number)
{
    SQLLEN type = SQL_UNKNOWN_TYPE;
    const SQLRETURN answer = lower.SQLColAttribute(statement, number, SQL_DESC_TYPE, nullptr, 0, nullptr, &type);
    return SQL_SUCCEEDED(answer) && IsBinary(static_cast<SQLSMALLINT>(type));
}

SQLSMALLINT tarnwick::DefaultType(SQLHSTMT statement, SQLUSMALLINT number)
{
    Column column;
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
