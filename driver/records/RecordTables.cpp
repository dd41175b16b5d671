#include "RecordTables.h"

#include "Query.h"
#include "Text.h"
#include "Tokenizer.h"

#include <sqlite3.h>

#include <algorithm>

namespace tarnwick::records
{
namespace
{

/// How deep criteria may name tables whose criteria name tables.
constexpr int deepest = 16;

bool IsWord(const Token& token, std::string_view word)
{
    return token.kind == Token::Kind::Word && EqualIgnoringCase(token.text, word);
}

bool OpensTablePlace(const Token& token, bool behindFrom)
{
    for (const char* word : {"FROM", "JOIN", "INTO", "UPDATE", "TABLE"})
        if (IsWord(token, word))
            return true;
    return behindFrom && (token.text == "," || token.text == "(" || token.text == ".");
}

bool IsName(const Token& token)
{
    if (token.kind == Token::Kind::Name)
        return true;
    const auto first = static_cast<unsigned char>(token.text.empty() ? '0' : token.text.front());
    return token.kind == Token::Kind::Word && first > '9';
}

/// The name in a token. A doubled quote inside stands for one; brackets have none.
std::string NameIn(const Token& token)
{
    if (token.kind != Token::Kind::Name)
        return std::string(token.text);
    const char quote = token.text.front();
    const std::string_view inner = token.text.substr(1, token.text.size() - 2);
    if (quote == '[')
        return std::string(inner);
    std::string name;
    for (std::size_t i = 0; i < inner.size(); ++i) {
        name += inner[i];
        if (inner[i] == quote)
            ++i;
    }
    return name;
}

bool StartsWith(std::string_view text, std::string_view beginning)
{
    return EqualIgnoringCase(text.substr(0, beginning.size()), beginning);
}

std::string Upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

} // namespace

std::vector<std::string> TablesNamedIn(std::string_view statement)
{
    std::vector<std::string> names;
    const std::vector<Token> tokens = Tokenize(statement);
    bool behindFrom = false;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        behindFrom = behindFrom || IsWord(tokens[i], "FROM");
        if (!OpensTablePlace(tokens[i], behindFrom) || !IsName(tokens[i + 1]))
            continue;
        std::string name = NameIn(tokens[i + 1]);
        const bool isOther = StartsWith(name, "TW_") || StartsWith(name, "sqlite_") || StartsWith(name, "pragma_") ||
                             IsWord(tokens[i + 1], "SELECT");
        if (!isOther && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(std::move(name));
    }
    return names;
}

RecordTables::RecordTables(sqlite3* engine, Surroundings surroundings, BadFields badFields)
    : m_engine(engine), m_surroundings(std::move(surroundings)), m_badFields(badFields)
{
    RegisterCollation(engine);
}

void RecordTables::MakeReady(std::string_view statement)
{
    MakeNamesReady(statement, 0);
}

void RecordTables::MakeNamesReady(std::string_view statement, int depth)
{
    for (const std::string& name : TablesNamedIn(statement))
        MakeTableReady(name, depth);
}

void RecordTables::MakeTableReady(const std::string& name, int depth)
{
    const std::shared_ptr<const RecordTable> known = Find(name);
    auto definition = ReadDefinition(m_engine, m_surroundings, name);
    if (!definition) {
        if (known)
            WithdrawTable(*known);
        return;
    }
    const std::string criteria = definition->criteria;
    if (!known || known->Definition() != *definition) {
        const auto table = std::make_shared<const RecordTable>(std::move(*definition), m_badFields);
        if (Publish(m_engine, table) != SQLITE_OK)
            throw RecordError(sqlite3_errmsg(m_engine));
        const std::lock_guard lock(m_mutex);
        m_tables[Upper(name)] = table;
    }
    if (!criteria.empty() && depth < deepest)
        MakeNamesReady(criteria, depth + 1);
}

void RecordTables::WithdrawTable(const RecordTable& table)
{
    const std::string name = table.Definition().sqlName;
    Withdraw(m_engine, name);
    Withdraw(m_engine, table.UnfilteredName());
    const std::lock_guard lock(m_mutex);
    m_tables.erase(Upper(name));
}

std::shared_ptr<const RecordTable> RecordTables::Find(std::string_view name) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_tables.find(Upper(std::string(name)));
    return found == m_tables.end() ? nullptr : found->second;
}

std::vector<std::string> RecordTables::MakeReadyLike(const std::string* pattern)
{
    const bool isBound = !m_surroundings.defaultDatabase.empty();
    const std::string name = isBound ? "TABLE_NAME" : "DATABASE_NAME || '_' || TABLE_NAME";
    std::string text = "SELECT " + name + " FROM TW_TABLE WHERE DATABASE_NAME <> 'TW'";
    std::vector<std::string> parameters{pattern ? *pattern : "%"};
    text += " AND " + name + " LIKE ?1 ESCAPE '\\'";
    if (isBound) {
        text += " AND DATABASE_NAME = ?2 COLLATE NOCASE";
        parameters.push_back(m_surroundings.defaultDatabase);
    }
    std::vector<std::string> names;
    for (Query row(m_engine, text + " ORDER BY 1", parameters); row.Next();)
        names.push_back(row.Text(0));
    for (const std::string& table : names)
        MakeTableReady(table, 0);
    return names;
}

} // namespace tarnwick::records
