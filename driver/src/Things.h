#pragma once

#include <sql.h>

#include <string>
#include <string_view>

/// What statements can read, for the catalog functions: the tables and views of the catalog's file and the tables over
/// records. A table or view of the file goes before a table over records of the same name.
namespace tarnwick::things
{

/// A text as SQL writes it.
std::string Literal(std::string_view text);

/// " AND <column> LIKE '<pattern>'"; nothing for a pattern that was not given.
std::string Matching(const char* column, const SQLCHAR* pattern, SQLSMALLINT length);

/// The beginning of a statement, with the common table THING (name, type, remarks) of all that matches a pattern of
/// names, and NOTE (owner, name, remarks) of the columns' remarks. Throws RecordError if the catalog cannot be read.
std::string Listed(SQLHSTMT statement, const SQLCHAR* pattern, SQLSMALLINT length);

/// The same without what has no columns to tell of: tables that cannot be read, and views of what is not there.
std::string Described(SQLHSTMT statement, const SQLCHAR* pattern, SQLSMALLINT length);

/// The beginning of a statement, with the common table GRANTED (name, privilege, user) of the rights that the
/// connection's user has to what matches a pattern of names. Tables over records and views are only read, and a view
/// only by who may read all that it reads. Throws RecordError if the catalog cannot be read.
std::string Granted(SQLHSTMT statement, const SQLCHAR* pattern, SQLSMALLINT length);

} // namespace tarnwick::things
