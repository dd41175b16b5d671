#pragma once

#include <sql.h>

#include <cstdint>
#include <optional>
#include <string>

/// The statements that clients have prepared and may run again. The definitions of the tables over records that they
/// name count each time anew, as for any other statement.
namespace tarnwick::prepared
{

struct Text {
    std::string text;          ///< as it was before its numbers were put into the form that the definitions ask for
    std::uint64_t changes = 0; ///< of the connection's tables before it was prepared
};

/// What a statement handle has prepared.
void Keep(SQLHSTMT statement, Text text);
void Forget(SQLHSTMT statement);

/// Sees that the tables of a prepared statement are there as they are defined now. Gives what has to be
/// prepared, and kept, anew, since SQLite still goes by older definitions in what it made of it before; nothing if
/// there is none. Throws RecordError if the catalog cannot be read.
std::optional<Text> MakeReady(SQLHSTMT statement);

} // namespace tarnwick::prepared
