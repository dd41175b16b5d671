#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string_view>

/// Numbers on their way into the places of clients, by the rules of ODBC ("Converting Data from SQL to C Data Types").
/// All cells are decimal text below; here that text becomes a number of the client's type. Only where that is a
/// floating point number does it pass through one.
namespace tarnwick::numbers
{

enum class Outcome {
    Whole,    ///< the place holds the number
    Cut,      ///< it holds the number without digits behind the point (01S07)
    TooLarge, ///< it cannot hold the number (22003)
    NoNumber  ///< the text is none (22018)
};

/// The bytes that a place of a C type takes; 0 for a type that is not served here.
SQLLEN SizeOf(SQLSMALLINT type);

/// Whether a text holds nothing but blanks.
bool IsBlank(std::string_view text);

/// Puts the number that a text names into a place. Blanks around it do not count; an exponent may follow it, and for
/// SQL_C_BIT a truth value in words may stand in its place. A number that does not fit, and a text that is none, leave
/// the place as it was. A null place is left alone.
///
/// An SQL_NUMERIC_STRUCT has the scale of the text, `1.50` the scale 2, in up to 38 digits. A floating point number is
/// the one nearest to the text, and infinite where the text is `Inf`, as SQLite writes its own.
Outcome Put(std::string_view text, SQLSMALLINT type, void* place);

} // namespace tarnwick::numbers
