#include "RecordTables.h"

#include "CatalogTables.h"
#include "DecimalText.h"
#include "GivenNames.h"
#include "Query.h"
#include "Text.h"
#include "Tokenizer.h"

#include <sqlite3.h>

#include <algorithm>

namespace tarnwick::records
{
namespace
{

constexpr const char* viewQuestion =
    "SELECT sql FROM sqlite_master WHERE type = 'view' AND name = ?1 COLLATE NOCASE UNION ALL "
    "SELECT sql FROM sqlite_temp_master WHERE type = 'view' AND name = ?1 COLLATE NOCASE";

constexpr std::size_t unfilteredLength = std::string_view(RecordTable::unfilteredBeginning).size();

bool HasViews(sqlite3* engine)
{
    return Query(engine, "SELECT 1 FROM sqlite_master WHERE type = 'view' UNION ALL "
                         "SELECT 1 FROM sqlite_temp_master WHERE type = 'view' LIMIT 1")
        .Next();
}

/// Has SQLite forget what it knows of the tables and views of its files, and so read it again. It does so while it
/// prepares the statement, and leaves what is being read. After the end of a transaction it must be done once more:
/// with all else SQLite forgets that there is something to forget if the transaction is taken back.
void ReadSchemaAnew(sqlite3* engine)
{
    int isWritable = 0;
    sqlite3_db_config(engine, SQLITE_DBCONFIG_WRITABLE_SCHEMA, -1, &isWritable);
    const Query reset(engine, "PRAGMA writable_schema = RESET");
    if (isWritable != 0)
        sqlite3_db_config(engine, SQLITE_DBCONFIG_WRITABLE_SCHEMA, 1, nullptr);
}

bool IsTableWord(const Token& token)
{
    for (const char* word : {"FROM", "JOIN", "INTO", "UPDATE", "TABLE", "IN"})
        if (IsWord(token, word))
            return true;
    return false;
}

/// Reads a statement and tells where a table can be named in it.
class TablePlaces
{
public:
    enum class Place {
        None,
        Name,
        NameOrString, ///< SQLite takes a string for a name where only a name can stand; elsewhere it is a value
    };

    explicit TablePlaces(const std::vector<Token>& tokens) : m_tokens(tokens) {}

    /// What the token behind the one there may name a table by; to be asked of one after the other.
    Place Behind(std::size_t i)
    {
        const Token& token = m_tokens[i];
        if (token.kind == Token::Kind::Punctuation)
            return BehindMark(i);
        if (IsWord(token, "PRAGMA"))
            m_inPragma = i == 0 || m_tokens[i - 1].text == ";";
        if (EndsTables(token))
            m_betweenTables.back() = false;
        if (IsWord(token, "FROM"))
            m_behindFrom = m_betweenTables.back() = true;
        const bool opensOuterJoin = i > 0 && m_tokens[i - 1].text == "{" && IsWord(token, "OJ");
        return opensOuterJoin || IsTableWord(token) ? Place::NameOrString : Place::None;
    }

private:
    static bool EndsTables(const Token& token)
    {
        for (const char* word : {"SELECT", "VALUES", "SET", "WHERE", "GROUP", "HAVING", "WINDOW", "ORDER", "LIMIT",
                                 "RETURNING", "UNION", "EXCEPT", "INTERSECT"})
            if (IsWord(token, word))
                return true;
        return false;
    }

    Place BehindMark(std::size_t i)
    {
        const std::string_view mark = m_tokens[i].text;
        bool takesString = m_inPragma && (mark == "(" || mark == "=");
        if (mark == "(") {
            m_betweenTables.push_back(m_betweenTables.back() && i > 0 && IsBeforeTable(m_tokens[i - 1]));
            takesString = takesString || m_betweenTables.back() ||
                          (i > 0 && StartsWithIgnoringCase(BareName(m_tokens[i - 1]), "pragma_"));
        } else if (mark == ")" && m_betweenTables.size() > 1) {
            m_betweenTables.pop_back();
        } else if (mark == ";") {
            m_betweenTables = {false};
            m_inPragma = false;
        }
        takesString = takesString || (mark == "," && m_betweenTables.back()) || (mark == "." && m_behindFrom);
        const bool takesName = m_behindFrom && (mark == "," || mark == "(" || mark == ".");
        return takesString ? Place::NameOrString : takesName ? Place::Name : Place::None;
    }

    static bool IsBeforeTable(const Token& token)
    {
        return token.text == "(" || token.text == "," || IsWord(token, "FROM") || IsWord(token, "JOIN");
    }

    const std::vector<Token>& m_tokens;
    std::vector<bool> m_betweenTables{false}; ///< for each open parenthesis, whether its commas separate tables
    bool m_behindFrom = false;
    bool m_inPragma = false;
};

bool NamesTable(const Token& token, TablePlaces::Place place)
{
    if (place == TablePlaces::Place::None || !IsName(token))
        return false;
    if (token.kind == Token::Kind::String)
        return place == TablePlaces::Place::NameOrString;
    for (const char* word : {"SELECT", "VALUES", "WITH", "SET"})
        if (IsWord(token, word))
            return false;
    return true;
}

/// Names that SQLite has in every database.
bool IsEngines(std::string_view name)
{
    for (const char* known : {"sqlite_master", "sqlite_schema", "sqlite_temp_master", "sqlite_temp_schema",
                              "sqlite_sequence", "sqlite_stat1", "pragma_table_info"})
        if (EqualIgnoringCase(name, known))
            return true;
    return false;
}

} // namespace

std::vector<std::string> TablesNamedIn(std::string_view statement)
{
    std::vector<std::string> names;
    const std::vector<Token> tokens = Tokenize(statement);
    TablePlaces places(tokens);
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        if (!NamesTable(tokens[i + 1], places.Behind(i)))
            continue;
        std::string name = BareName(tokens[i + 1]);
        const bool isOther = ColumnsOfCatalogTable(name) || IsEngines(name);
        if (!isOther && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(std::move(name));
    }
    return names;
}

RecordTables::RecordTables(sqlite3* engine, Surroundings surroundings, BadFields badFields)
    : m_engine(engine), m_surroundings(std::move(surroundings)), m_badFields(badFields)
{
    RegisterDecimalCollations(engine);
    for (Query module(engine, "SELECT name FROM pragma_module_list"); module.Next();)
        m_engines.insert(InUpperCase(module.Text(0)));
}

void RecordTables::MakeReady(std::string_view statement)
{
    const std::lock_guard lock(m_makingReady);
    Names done;
    MakeNamesReady(statement, done);
    RenewViews();
}

void RecordTables::MakeNamesReady(std::string_view statement, Names& done)
{
    for (const std::string& name : TablesNamedIn(statement))
        MakeTableReady(name, done);
}

void RecordTables::MakeTableReady(const std::string& name, Names& done, const TableKey* key)
{
    if (!done.insert(InUpperCase(name)).second)
        return;
    for (Query view(m_engine, viewQuestion, {name}); view.Next();)
        MakeNamesReady(view.Text(0), done);
    Renew(name, m_surroundings, m_tables, Readers::All, done, key);
}

void RecordTables::MakeCriteriaReady(std::string_view criteria, Names& done)
{
    Surroundings unbound = m_surroundings;
    unbound.defaultDatabase.clear();
    for (const std::string& name : TablesNamedIn(criteria)) {
        MakeTableReady(name, done);
        if (!m_surroundings.defaultDatabase.empty() && !Find(name) && done.insert("joined " + InUpperCase(name)).second)
            Renew(name, unbound, m_joined, Readers::Criteria, done);
    }
}

void RecordTables::Renew(const std::string& name, const Surroundings& surroundings, Tables& tables, Readers readers,
                         Names& done, const TableKey* key)
{
    if (m_engines.count(InUpperCase(name)) > 0)
        return;
    const std::shared_ptr<const RecordTable> known = FindIn(tables, name);
    auto definition = key ? ReadDefinition(m_engine, surroundings, *key) : ReadDefinition(m_engine, surroundings, name);
    if (!definition) {
        if (known)
            WithdrawTable(*known);
        return;
    }
    const std::string criteria = definition->criteria;
    if (!known || known->Definition() != *definition) {
        const auto table = std::make_shared<const RecordTable>(std::move(*definition), m_badFields, m_recentFiles);
        const auto spelling = [this](std::string text) { return WithExactNumbers(std::move(text)); };
        // Whose rights count is asked by the name: a statement never finds the table at SQLite, but not here.
        Put(tables, name, table);
        if (Publish(m_engine, table, readers, spelling) != SQLITE_OK) {
            const RecordError error(sqlite3_errmsg(m_engine));
            Put(tables, name, known);
            throw error;
        }
        m_viewsAreOld = m_viewsAreOld || known;
        m_changes.fetch_add(1, std::memory_order_release);
    }
    if (!criteria.empty())
        MakeCriteriaReady(criteria, done);
}

void RecordTables::Put(Tables& tables, const std::string& name, const std::shared_ptr<const RecordTable>& table)
{
    const std::lock_guard lock(m_mutex);
    if (table)
        tables[InUpperCase(name)] = table;
    else
        tables.erase(InUpperCase(name));
}

std::string RecordTables::WithExactNumbers(std::string statement) const
{
    if (!MayHoldLongNumber(statement))
        return statement;
    Names done;
    Names columns;
    Namesakes namesakes;
    CollectDecimals(statement, done, columns, namesakes);
    if (columns.empty())
        return statement;
    return QuoteLongNumbers(
        std::move(statement), [&](const std::string& name) { return columns.count(name) > 0; }, std::move(namesakes));
}

void RecordTables::CollectDecimals(std::string_view statement, Names& done, Names& columns, Namesakes& namesakes) const
{
    for (const std::string& name : TablesNamedIn(statement)) {
        if (!done.insert(InUpperCase(name)).second)
            continue;
        for (Query view(m_engine, viewQuestion, {name}); view.Next();) {
            CollectGivenNames(view.Text(0), namesakes.given);
            CollectDecimals(view.Text(0), done, columns, namesakes);
        }
        const bool isUnfiltered = StartsWithIgnoringCase(name, RecordTable::unfilteredBeginning);
        const auto bare = std::string_view(name).substr(isUnfiltered ? unfilteredLength : 0);
        const auto served = Find(bare);
        const auto table = served ? served : FindIn(m_joined, bare);
        if (!table)
            continue;
        for (const Column& column : table->Definition().columns) {
            if (column.shown == Shown::Decimal)
                columns.insert(InUpperCase(column.name));
            else if (column.shown == Shown::Text)
                namesakes.texts.insert(InUpperCase(column.name));
        }
    }
}

void RecordTables::WithdrawTable(const RecordTable& table)
{
    const std::string name = table.Definition().sqlName;
    Withdraw(m_engine, name);
    Withdraw(m_engine, table.UnfilteredName());
    m_viewsAreOld = true;
    m_changes.fetch_add(1, std::memory_order_release);
    const std::lock_guard lock(m_mutex);
    m_tables.erase(InUpperCase(name));
    m_joined.erase(InUpperCase(name));
}

void RecordTables::RenewViews()
{
    const bool isMidway = sqlite3_get_autocommit(m_engine) == 0;
    const bool hasEnded = m_renewedMidway && !isMidway;
    if (!m_viewsAreOld && !hasEnded)
        return;
    if (hasEnded || HasViews(m_engine)) {
        ReadSchemaAnew(m_engine);
        m_renewedMidway = isMidway;
    }
    m_viewsAreOld = false;
}

std::shared_ptr<const RecordTable> RecordTables::Find(std::string_view name) const
{
    return FindIn(m_tables, name);
}

std::shared_ptr<const RecordTable> RecordTables::FindIn(const Tables& tables, std::string_view name) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = tables.find(InUpperCase(name));
    return found == tables.end() ? nullptr : found->second;
}

std::vector<std::string> RecordTables::MakeReadyLike(const std::string* pattern)
{
    const bool isBound = !m_surroundings.defaultDatabase.empty();
    const std::string name = isBound ? "TABLE_NAME" : "DATABASE_NAME || '_' || TABLE_NAME";
    std::string text = "SELECT " + name + ", DATABASE_NAME, TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME <> 'TW'";
    std::vector<std::string> parameters{pattern ? *pattern : "%"};
    text += " AND " + name + " LIKE ?1 ESCAPE '\\'";
    if (isBound) {
        text += " AND DATABASE_NAME = ?2 COLLATE NOCASE";
        parameters.push_back(m_surroundings.defaultDatabase);
    }
    const std::lock_guard lock(m_makingReady);
    // Two databases and their tables may come to one name between them, which then means the first of them.
    Names seen;
    std::vector<std::string> names;
    std::vector<TableKey> keys;
    for (Query row(m_engine, text + " ORDER BY 2, 3", parameters); row.Next();)
        if (seen.insert(InUpperCase(row.Text(0))).second) {
            names.push_back(row.Text(0));
            keys.push_back({row.Text(1), row.Text(2)});
        }
    Names done;
    for (std::size_t i = 0; i < names.size(); ++i)
        MakeTableReady(names[i], done, &keys[i]);
    return names;
}

} // namespace tarnwick::records
