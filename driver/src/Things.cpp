#include "Things.h"

#include "OwnStatement.h"
#include "Privileges.h"
#include "Query.h"
#include "RecordTables.h"
#include "Registry.h"
#include "Text.h"

#include <sqlite3.h>

#include <optional>
#include <set>
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
    return "SELECT * FROM " + QuotedName(name);
}

bool CanBePrepared(sqlite3* engine, const std::string& name)
{
    sqlite3_stmt* prepared = nullptr;
    const int answer = sqlite3_prepare_v2(engine, ReadingAll(name).c_str(), -1, &prepared, nullptr);
    sqlite3_finalize(prepared);
    return answer == SQLITE_OK;
}

/// The columns of what a user may not read are told too, but not of what nobody except the administrator can read.
bool CanBeRead(const Connection& connection, const std::string& name)
{
    if (connection.privileges->MayDoEverything())
        return CanBePrepared(connection.engine, name);
    const records::OwnStatement own;
    return CanBePrepared(connection.engine, name);
}

/// Whether the connection's user may read a view, and all that it reads.
bool MayReadView(sqlite3* engine, const std::string& name)
{
    const bool may = CanBePrepared(engine, name);
    records::Privileges::TakeRefusal();
    return may;
}

std::optional<std::string> PatternOf(const SQLCHAR* pattern, SQLSMALLINT length)
{
    return pattern ? std::optional(std::string(NarrowArgument(pattern, length))) : std::nullopt;
}

struct Thing {
    std::string name;
    bool isView;
};

/// The tables and views of the catalog's file that match a pattern; what views read is ready.
std::vector<Thing> InFile(const Connection& connection, const std::optional<std::string>& pattern)
{
    std::vector<Thing> things;
    for (records::Query row(connection.engine,
                            "SELECT name, type FROM sqlite_master WHERE type IN ('table', 'view')"
                            "   AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' AND name LIKE ?1 ESCAPE '\\'",
                            {pattern.value_or("%")});
         row.Next();)
        things.push_back({row.Text(0), row.Text(1) == "view"});
    for (const Thing& thing : things)
        if (thing.isView)
            connection.tables->MakeReady(ReadingAll(thing.name));
    return things;
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
    const auto isLeft = [&](const std::string& name) { return !withUnreadable && !CanBeRead(*connection, name); };
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
        for (const Thing& thing : InFile(*connection, pattern))
            if (isLeft(thing.name))
                left += (left.empty() ? "" : ", ") + Literal(thing.name);
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

std::string Granted(SQLHSTMT statement, const SQLCHAR* pattern, SQLSMALLINT length)
{
    std::string rows;
    if (const auto connection = registry::ConnectionOf(statement)) {
        const auto name = PatternOf(pattern, length);
        const auto add = [&](const std::string& thing, const char* right) {
            AddRow(rows, {thing, right, connection->privileges->User()});
        };
        std::set<std::string> inFile;
        for (const Thing& thing : InFile(*connection, name)) {
            inFile.insert(InUpperCase(thing.name));
            if (!thing.isView)
                for (const char* right : connection->privileges->RightsTo(thing.name))
                    add(thing.name, right);
            else if (MayReadView(connection->engine, thing.name))
                add(thing.name, "SELECT");
        }
        for (const std::string& table : connection->tables->MakeReadyLike(name ? &*name : nullptr)) {
            const auto found = connection->tables->Find(table);
            if (!found || inFile.count(InUpperCase(table)) > 0)
                continue;
            const auto rights = connection->privileges->RightsTo(table);
            if (!rights.empty() && std::string_view(rights.front()) == "SELECT")
                add(found->Definition().sqlName, "SELECT");
        }
    }
    return "WITH GRANTED (name, privilege, user) AS (" +
           (rows.empty() ? "SELECT '', '', '' WHERE 0" : "VALUES " + rows) + ") ";
}

} // namespace tarnwick::things
