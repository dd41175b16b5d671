#include "Prepared.h"

#include "RecordTables.h"
#include "Registry.h"
#include "StatementTable.h"

namespace tarnwick::prepared
{
namespace
{

StatementTable<Text>& Texts()
{
    static StatementTable<Text> texts;
    return texts;
}

} // namespace

void Keep(SQLHSTMT statement, Text text)
{
    // The catalog's own tables are always there, and statements about them are the many.
    if (records::TablesNamedIn(text.text).empty())
        Texts().Erase(statement);
    else
        Texts().Ensure(statement) = std::move(text);
}

void Forget(SQLHSTMT statement)
{
    Texts().Erase(statement);
}

std::optional<Text> MakeReady(SQLHSTMT statement)
{
    const Text* const kept = Texts().Find(statement);
    const auto connection = kept ? registry::ConnectionOf(statement) : nullptr;
    if (!connection)
        return std::nullopt;
    connection->tables->MakeReady(kept->text);
    const std::uint64_t changes = connection->tables->Changes();
    return kept->changes == changes ? std::nullopt : std::optional(Text{kept->text, changes});
}

} // namespace tarnwick::prepared
