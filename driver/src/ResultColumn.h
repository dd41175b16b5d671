#pragma once

#include <sql.h>
#include <sqlext.h>

#include <optional>
#include <string>

/// The columns of results: what they are, and what follows from their types.
namespace tarnwick
{

/// A result column as it is reported. The library below calls declared text beyond 255 characters long text, and gives
/// the numeric types other sizes than ODBC defines for them ("Column Size" in its appendix of data types).
struct ResultColumn {
    std::string name;
    SQLSMALLINT type = SQL_UNKNOWN_TYPE;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = SQL_NULLABLE_UNKNOWN;
    bool isUnsigned = false; ///< a whole number that cannot be negative
};

/// A floating point type as ODBC describes it: its decimal digits, the characters of its longest text, its bytes.
struct Float {
    SQLULEN digits;
    SQLLEN characters;
    SQLLEN bytes;
};

/// Describes a column as ODBC and its table want it.
SQLRETURN Describe(SQLHSTMT statement, SQLUSMALLINT number, ResultColumn* column);

/// A text that the library below tells of a column.
std::string TextAttribute(SQLHSTMT statement, SQLUSMALLINT number, SQLUSMALLINT field, SQLRETURN* answer);

/// Whether a column is declared to hold bytes.
bool IsBinaryColumn(SQLHSTMT statement, SQLUSMALLINT number);

/// The C type that SQL_C_DEFAULT means for a column, by its SQL type.
SQLSMALLINT DefaultType(SQLHSTMT statement, SQLUSMALLINT number);

bool IsBinary(SQLSMALLINT type);

/// Whether it is a type of dates or times, of which clients of ODBC 2 have their own.
bool IsMoment(SQLSMALLINT type);
bool IsTimestamp(SQLSMALLINT type);

/// The size that ODBC gives an integer type: its decimal digits.
std::optional<SQLULEN> IntegerSize(SQLSMALLINT type);

std::optional<Float> FloatOf(SQLSMALLINT type);

} // namespace tarnwick
