#pragma once

#include <sql.h>

#include <string>
#include <string_view>

/// The statements that clients have prepared and may run again. The definitions of the tables over records that they
/// name count each time anew, as for any other statement.
namespace tarnwick::prepared
{

/// The text that a statement handle prepares goes by the definitions of this moment.
void Keep(SQLHSTMT statement, std::string_view text);
void Forget(SQLHSTMT statement);

/// Sees that the tables of a prepared statement are there as they are defined now. Gives the text that has to be
/// prepared, and kept, anew, since SQLite still goes by older definitions in what it made of it before; null if there
/// is none. Throws RecordError if the catalog cannot be read.
const std::string* MakeReady(SQLHSTMT statement);

} // namespace tarnwick::prepared
