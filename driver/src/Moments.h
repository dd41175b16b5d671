#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string_view>

/// Dates and times on their way into the structures of clients.
namespace tarnwick::moments
{

enum class Outcome {
    Whole,
    Cut,     ///< a time of day, or fractions of a second, are left out (01S07)
    NoMoment ///< the text has not what the structure holds (22018)
};

/// The bytes that a structure of a C type takes; 0 for a type that is none of these.
SQLLEN SizeOf(SQLSMALLINT type);

/// Puts the moment that a text names into a structure: `YYYY-MM-DD`, `hh:mm[:ss[.fraction]]` or both with a blank or
/// a `T` between them. The date may have slashes, and both may come without anything between their numbers. A time in
/// an SQL_TIMESTAMP_STRUCT is one of today, as ODBC wants it. What cannot be put leaves the place as it was; a null
/// place is left alone.
Outcome Put(std::string_view text, SQLSMALLINT type, void* place);

} // namespace tarnwick::moments
