#include "Diagnostics.h"
#include "Lower.h"
#include "Privileges.h"
#include "Registry.h"
#include "Text.h"

#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <cstring>

using namespace tarnwick;

namespace
{

/// The information types whose value is text (SQLGetInfo); all others are numbers, the same in both widths.
constexpr SQLUSMALLINT textTypes[] = {SQL_ACCESSIBLE_PROCEDURES,
                                      SQL_ACCESSIBLE_TABLES,
                                      SQL_CATALOG_NAME,
                                      SQL_CATALOG_NAME_SEPARATOR,
                                      SQL_CATALOG_TERM,
                                      SQL_COLLATION_SEQ,
                                      SQL_COLUMN_ALIAS,
                                      SQL_DATA_SOURCE_NAME,
                                      SQL_DATA_SOURCE_READ_ONLY,
                                      SQL_DATABASE_NAME,
                                      SQL_DBMS_NAME,
                                      SQL_DBMS_VER,
                                      SQL_DESCRIBE_PARAMETER,
                                      SQL_DRIVER_NAME,
                                      SQL_DRIVER_ODBC_VER,
                                      SQL_DRIVER_VER,
                                      SQL_EXPRESSIONS_IN_ORDERBY,
                                      SQL_IDENTIFIER_QUOTE_CHAR,
                                      SQL_INTEGRITY,
                                      SQL_KEYWORDS,
                                      SQL_LIKE_ESCAPE_CLAUSE,
                                      SQL_MAX_ROW_SIZE_INCLUDES_LONG,
                                      SQL_MULT_RESULT_SETS,
                                      SQL_MULTIPLE_ACTIVE_TXN,
                                      SQL_NEED_LONG_DATA_LEN,
                                      SQL_ORDER_BY_COLUMNS_IN_SELECT,
                                      SQL_OUTER_JOINS,
                                      SQL_PROCEDURE_TERM,
                                      SQL_PROCEDURES,
                                      SQL_ROW_UPDATES,
                                      SQL_SCHEMA_TERM,
                                      SQL_SEARCH_PATTERN_ESCAPE,
                                      SQL_SERVER_NAME,
                                      SQL_SPECIAL_CHARACTERS,
                                      SQL_TABLE_TERM,
                                      SQL_USER_NAME,
                                      SQL_XOPEN_CLI_YEAR};

bool IsText(SQLUSMALLINT type)
{
    return std::find(std::begin(textTypes), std::end(textTypes), type) != std::end(textTypes);
}

/// What this driver says of itself; nothing for what is the library's below.
std::optional<std::string> OwnInfo(SQLHDBC handle, SQLUSMALLINT type)
{
    const auto connection = registry::FindConnection(handle);
    switch (type) {
    case SQL_DRIVER_NAME:
        return "libtarnwickodbc.so";
    case SQL_DRIVER_VER:
        return TARNWICK_DRIVER_VERSION;
    case SQL_DBMS_NAME:
        return "Tarnwick ODBC";
    case SQL_DATA_SOURCE_NAME:
        return connection ? connection->datasource : std::string();
    case SQL_DATABASE_NAME:
    case SQL_SERVER_NAME:
        return connection ? connection->catalogPath : std::string();
    case SQL_ACCESSIBLE_TABLES:
        return connection && !connection->privileges->MayDoEverything() ? "N" : "Y";
    case SQL_IDENTIFIER_QUOTE_CHAR:
        return "\"";
    case SQL_SEARCH_PATTERN_ESCAPE:
        return "\\";
    default:
        return std::nullopt;
    }
}

SQLRETURN GetInfo(SQLHDBC handle, SQLUSMALLINT type, SQLPOINTER value, SQLSMALLINT capacity, SQLSMALLINT* length,
                  PutText put, SQLSMALLINT unit)
{
    if (!IsText(type))
        return lower.SQLGetInfo(handle, type, value, capacity, length);
    auto text = OwnInfo(handle, type);
    if (!text) {
        std::array<char, 4096> found{};
        SQLSMALLINT foundLength = 0;
        const SQLRETURN answer =
            lower.SQLGetInfo(handle, type, found.data(), static_cast<SQLSMALLINT>(found.size()), &foundLength);
        if (!SQL_SUCCEEDED(answer))
            return answer;
        text = found.data();
    }
    SQLINTEGER whole = 0;
    const Fit fit = put(*text, value, capacity / unit, &whole);
    if (length)
        *length = static_cast<SQLSMALLINT>(whole * unit);
    return fit == Fit::Whole ? SQL_SUCCESS : diagnostics::WarnOfCutText(SQL_HANDLE_DBC, handle);
}

bool IsTextAttribute(SQLINTEGER attribute)
{
    return attribute == SQL_ATTR_CURRENT_CATALOG || attribute == SQL_ATTR_TRACEFILE ||
           attribute == SQL_ATTR_TRANSLATE_LIB;
}

} // namespace

SQLRETURN SQL_API SQLGetInfo(SQLHDBC handle, SQLUSMALLINT type, SQLPOINTER value, SQLSMALLINT capacity,
                             SQLSMALLINT* length)
{
    return GetInfo(handle, type, value, capacity, length, PutNarrow, 1);
}

SQLRETURN SQL_API SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT type, SQLPOINTER value, SQLSMALLINT capacity,
                              SQLSMALLINT* length)
{
    return GetInfo(handle, type, value, capacity, length, PutWide, sizeof(SQLWCHAR));
}

SQLRETURN SQL_API SQLSetConnectAttr(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length)
{
    return lower.Loaded() ? lower.SQLSetConnectAttr(handle, attribute, value, length) : SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length)
{
    if (!IsTextAttribute(attribute))
        return SQLSetConnectAttr(handle, attribute, value, length);
    const SQLINTEGER units = length < 0 ? length : length / static_cast<SQLINTEGER>(sizeof(SQLWCHAR));
    auto text = WideArgument(static_cast<const SQLWCHAR*>(value), units);
    if (!text)
        return diagnostics::Raise(SQL_HANDLE_DBC, handle, "22018", "The attribute is not well-formed UTF-16.");
    return SQLSetConnectAttr(handle, attribute, text->data(), SQL_NTS);
}

SQLRETURN SQL_API SQLGetConnectAttr(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER capacity,
                                    SQLINTEGER* length)
{
    return lower.SQLGetConnectAttr(handle, attribute, value, capacity, length);
}

SQLRETURN SQL_API SQLGetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER capacity,
                                     SQLINTEGER* length)
{
    if (!IsTextAttribute(attribute))
        return lower.SQLGetConnectAttr(handle, attribute, value, capacity, length);
    std::array<char, 4096> text{};
    const SQLRETURN answer =
        lower.SQLGetConnectAttr(handle, attribute, text.data(), static_cast<SQLINTEGER>(text.size()), nullptr);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    constexpr auto unit = static_cast<SQLINTEGER>(sizeof(SQLWCHAR));
    SQLINTEGER whole = 0;
    const Fit fit = PutWide(text.data(), value, capacity / unit, &whole);
    if (length)
        *length = whole * unit;
    return fit == Fit::Whole ? SQL_SUCCESS : diagnostics::WarnOfCutText(SQL_HANDLE_DBC, handle);
}

SQLRETURN SQL_API SQLGetCursorNameW(SQLHSTMT statement, SQLWCHAR* name, SQLSMALLINT capacity, SQLSMALLINT* length)
{
    std::array<SQLCHAR, 1024> text{};
    const SQLRETURN answer =
        lower.SQLGetCursorName(statement, text.data(), static_cast<SQLSMALLINT>(text.size()), nullptr);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    SQLINTEGER whole = 0;
    const Fit fit = PutWide(reinterpret_cast<const char*>(text.data()), name, capacity, &whole);
    if (length)
        *length = static_cast<SQLSMALLINT>(whole);
    return fit == Fit::Whole ? SQL_SUCCESS : diagnostics::WarnOfCutText(SQL_HANDLE_STMT, statement);
}

SQLRETURN SQL_API SQLSetCursorNameW(SQLHSTMT statement, SQLWCHAR* name, SQLSMALLINT length)
{
    auto text = WideArgument(name, length);
    if (!text)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "22018", "The name is not well-formed UTF-16.");
    return lower.SQLSetCursorName(statement, reinterpret_cast<SQLCHAR*>(text->data()), SQL_NTS);
}
