#include "Things.h"

#include "OwnStatement.h"
#include "Query.h"
#include "RecordTables.h"
#include "Registry.h"
#include "Text.h"

#include <sqlite3.h>

#include <optional>
#include <vector>

namespace tarnwick::things
{
namespace
{

/// Rows of a VALUES clause.
void AddRow(std::string& rows, const std::vector<std::string>& cells)
{
    const char* separator = rows.empty() ? "(" : ", (";
    for (const std::string& cell : cells) {
        rows += separator + Literal(cell);
        separator = ", ";
    }
    rows += ")";
}

std::string ReadingAll(std::string_view name)
{
    std::string quoted;
    for (const char c : name)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return "SELECT * FROM \"" + quoted + "\"";
}

bool CanBeRead(sqlite3* engine, const std::string& name)
{
    const records::OwnStatement own;
    sqlite3_stmt* prepared = nullptr;
    const int answer = sqlite3_prepare_v2(engine, ReadingAll(name).c_str(), -1, &prepared, nullptr);
    sqlite3_finalize(prepared);
    return answer == SQLITE_OK;
}

std::optional<std::string> PatternOf(const SQLCHAR* pattern, SQLSMALLINT length)
{
    return pattern ? std::optional(std::string(NarrowArgument(pattern, length))) : std::nullopt;
}

/// The tables and views of the catalog's file that match a pattern; what views read is ready.
std::vector<std::string> InFile(const Connection& connection, const std::optional<std::string>& pattern)
{
    std::vector<std::string> names;
    std::vector<std::string> views;
    for (records::Query row(connection.engine,
                            "SELECT name, type FROM sqlite_master WHERE type IN ('table', 'view')"
                            "   AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' AND name LIKE ?1 ESCAPE '\\'",
                            {pattern.value_or("%")});
         row.Next();) {
        names.push_back(row.Text(0));
        if (row.Text(1) == "view")
            views.push_back(row.Text(0));
    }
    for (const std::string& view : views)
        connection.tables->MakeReady(ReadingAll(view));
    return names;
}

/// The common tables: the things of the catalog's file that meet a condition, and the rows of VALUES clauses.
std::string CommonTables(const std::string& condition, const std::string& records, const std::string& notes)
{
    std::string text = "WITH THING (name, type, remarks) AS (SELECT name, type, '' FROM sqlite_master "
                       "WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'" +
                       condition;
    if (!records.empty())
        text += " UNION ALL SELECT column1, 'table', column2 FROM (VALUES " + records +
                ") WHERE column1 COLLATE NOCASE NOT IN (SELECT name FROM sqlite_master)";
    return text + "), NOTE (owner, name, remarks) AS (" +
           (notes.empty() ? "SELECT '', '', '' WHERE 0" : "VALUES " + notes) + ") ";
}

std::string Select(SQLHSTMT statement, const std::optional<std::string>& pattern, bool withUnreadable)
{
    std::string condition = pattern ? " AND name LIKE " + Literal(*pattern) + " ESCAPE '\\'" : std::string();
    const auto connection = registry::ConnectionOf(statement);
    if (!connection)
        return CommonTables(condition, {}, {});
    std::string records;
    std::string notes;
    std::string left;
    const auto isLeft = [&](const std::string& name) { return !withUnreadable && !CanBeRead(connection->engine, name); };
    for (const std::string& name : connection->tables->MakeReadyLike(pattern ? &*pattern : nullptr)) {
        const auto found = connection->tables->Find(name);
        if (!found || isLeft(name))
            continue;
        const records::TableDefinition& definition = found->Definition();
        AddRow(records, {definition.sqlName, definition.remarks});
        for (const records::Column& column : definition.columns)
            if (!column.remarks.empty() && column.special == records::Special::None)
                AddRow(notes, {definition.sqlName, column.name, column.remarks});
    }
    if (!withUnreadable)
        for (const std::string& name : InFile(*connection, pattern))
            if (isLeft(name))
                left += (left.empty() ? "" : ", ") + Literal(name);
    if (!left.empty())
        condition += " AND name NOT IN (" + left + ")";
    return CommonTables(condition, records, notes);
}

} // namespace

std::string Literal(std::string_view text)
{
    std::string literal = "'";
    for (const char c : text) {
        literal += c;
        if (c == '\'')
            literal += c;
    }
    return literal + "'";
}

std::string Matching(const char* column, const SQLCHAR* pattern, SQLSMALLINT length)
{
    if (!pattern)
        return {};
    return std::string(" AND ") + column + " LIKE " + Literal(NarrowArgument(pattern, length)) + " ESCAPE '\\'";
}

std::string Listed(SQLHSTMT statement, const SQLCHAR* pattern, SQLSMALLINT length)
{
    return Select(statement, PatternOf(pattern, length), true);
}

std::string Described(SQLHSTMT statement, const SQLCHAR* pattern, SQLSMALLINT length)
{
    return Select(statement, PatternOf(pattern, length), false);
}

} // namespace tarnwick::things
