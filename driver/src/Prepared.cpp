#include "Prepared.h"

#include "RecordTables.h"
#include "Registry.h"
#include "StatementTable.h"

#include <cstdint>
#include <string>

namespace tarnwick::prepared
{
namespace
{

struct Text {
    std::string text;
    std::uint64_t changes = 0; ///< of the connection's tables when it was prepared
};

StatementTable<Text>& Texts()
{
    static StatementTable<Text> texts;
    return texts;
}

} // namespace

void Keep(SQLHSTMT statement, std::string_view text)
{
    // The catalog's own tables are always there, and statements about them are the many.
    const auto connection = records::TablesNamedIn(text).empty() ? nullptr : registry::ConnectionOf(statement);
    if (!connection)
        Texts().Erase(statement);
    else
        Texts().Ensure(statement) = {std::string(text), connection->tables->Changes()};
}

void Forget(SQLHSTMT statement)
{
    Texts().Erase(statement);
}

const std::string* MakeReady(SQLHSTMT statement)
{
    const Text* const kept = Texts().Find(statement);
    const auto connection = kept ? registry::ConnectionOf(statement) : nullptr;
    if (!connection)
        return nullptr;
    connection->tables->MakeReady(kept->text);
    return kept->changes == connection->tables->Changes() ? nullptr : &kept->text;
}

} // namespace tarnwick::prepared
