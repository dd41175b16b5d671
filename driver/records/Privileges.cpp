#include "Privileges.h"

#include "CatalogTables.h"
#include "OwnStatement.h"
#include "Query.h"
#include "RecordModule.h"
#include "Text.h"
#include "Tokenizer.h"

#include <sqlite3.h>

#include <algorithm>

namespace tarnwick::records
{
namespace
{

thread_local std::string refusal;

constexpr const char* administrator = "ADMIN";

/// Pragmas that tell and change nothing.
constexpr const char* harmlessPragmas[] = {"table_info",     "table_xinfo", "table_list",       "index_list",
                                           "index_info",     "index_xinfo", "foreign_key_list", "database_list",
                                           "collation_list", "data_version"};

bool IsHarmlessPragma(std::string_view name)
{
    for (const char* known : harmlessPragmas)
        if (EqualIgnoringCase(name, known))
            return true;
    return false;
}

/// Functions of the library below and of SQLite that reach beyond the catalog.
bool IsHarmlessFunction(std::string_view name)
{
    for (const char* known : {"blob_import", "blob_export", "load_extension", "fts3_tokenizer"})
        if (EqualIgnoringCase(name, known))
            return false;
    return true;
}

/// Whether one of the driver's own statements may do what SQLite asks. They go beyond any user's rights, and a criteria
/// that somebody wrote into the catalog is part of them: reading a table must not do more than read.
int AuthorizeOwn(int action, const char* first, const char* second)
{
    if (action == SQLITE_FUNCTION)
        return !second || IsHarmlessFunction(second) ? SQLITE_OK : SQLITE_DENY;
    if (action != SQLITE_PRAGMA || !first || IsHarmlessPragma(first))
        return SQLITE_OK;
    const bool readsSchema =
        EqualIgnoringCase(first, "writable_schema") && second && EqualIgnoringCase(second, "RESET");
    return readsSchema ? SQLITE_OK : SQLITE_DENY;
}

/// The catalog's spelling of a user's name: the given one if there is a user of just that name, else the first that
/// differs from it in case alone; nothing for an unknown user.
std::optional<std::string> Spelled(sqlite3* engine, const std::string& user)
{
    Query name(engine,
               "SELECT USER_NAME FROM (SELECT USER_NAME FROM TW_USER UNION SELECT USER_NAME FROM TW_DBPRV"
               "                       UNION SELECT USER_NAME FROM TW_TBLPRV)"
               " WHERE USER_NAME = ?1 COLLATE NOCASE ORDER BY USER_NAME <> ?1, USER_NAME LIMIT 1",
               {user});
    return name.Next() ? std::optional(name.Text(0)) : std::nullopt;
}

/// How long the escape at the beginning of a text is if it is a date, a time or both; else 0.
std::size_t LengthOfMoment(std::string_view text)
{
    std::size_t place = 1;
    const auto skip = [&](const char* characters) {
        place = std::min(text.find_first_not_of(characters, place), text.size());
    };
    const auto take = [&](char c) { return place < text.size() && text[place++] == c; };
    skip(" ");
    const std::size_t word = place;
    skip("dDtTsS");
    const std::string_view kind = text.substr(word, place - word);
    if (!EqualIgnoringCase(kind, "d") && !EqualIgnoringCase(kind, "t") && !EqualIgnoringCase(kind, "ts"))
        return 0;
    skip(" ");
    if (!take('\''))
        return 0;
    skip("-0123456789:. ");
    if (!take('\''))
        return 0;
    skip(" ");
    return take('}') ? place : 0;
}

/// Whether the library below takes anything out of a statement: braces, with the word behind the first. It knows no
/// comments, and of the quotes only `'` and `"`. From an escape that is a date, a time or both it leaves just that.
bool HoldsEscape(std::string_view statement)
{
    char quote = '\0';
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const char c = statement[i];
        if (quote != '\0') {
            quote = c == quote ? '\0' : quote;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (c == '{') {
            const std::size_t length = LengthOfMoment(statement.substr(i));
            if (length == 0)
                return true;
            i += length - 1;
        }
    }
    return false;
}

/// Whether a statement only reads, whatever is taken out of it: it begins as a query, and nothing can follow that.
bool StaysQuery(std::string_view statement)
{
    constexpr const char* blanks = " \t\r\n";
    const std::size_t begin = statement.find_first_not_of(blanks);
    const std::size_t semicolon = statement.find(';');
    return begin != std::string_view::npos && StartsWithIgnoringCase(statement.substr(begin), "SELECT") &&
           (semicolon == std::string_view::npos ||
            statement.find_first_not_of("; \t\r\n", semicolon) == std::string_view::npos);
}

/// Whether a quote or a `#` has no other that closes it: what SQLite makes of the rest is not what is read here. Where
/// all are closed, the `#` have become quotes.
bool HoldsUnclosed(const std::vector<Token>& tokens)
{
    return std::any_of(tokens.begin(), tokens.end(), [](const Token& token) {
        return token.kind == Token::Kind::Unterminated || token.kind == Token::Kind::Hash;
    });
}

/// Whether SQLite reads the text on from a parameter: one with a parenthesis right behind its name goes on to the next
/// one, over any quote.
bool HoldsHiddenParameter(std::string_view statement, const std::vector<Token>& tokens)
{
    return std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) {
        if (token.text != "(")
            return false;
        const auto place = static_cast<std::size_t>(token.text.data() - statement.data());
        for (std::size_t i = place; i > 0; --i) {
            const char c = statement[i - 1];
            if (c == '$' || c == '@' || c == ':' || c == '#')
                return true;
            if (!IsWordCharacter(c))
                break;
        }
        return false;
    });
}

/// Whether something follows the end of a statement. The library below runs that too if it takes the end for quoted,
/// as behind an apostrophe in a comment of a CREATE, or the first statement for one that may be followed, such as
/// BEGIN.
bool HoldsSeveral(const std::vector<Token>& tokens)
{
    const auto isEnd = [](const Token& token) { return token.text == ";"; };
    const auto end = std::find_if(tokens.begin(), tokens.end(), isEnd);
    return std::find_if_not(end, tokens.end(), isEnd) != tokens.end();
}

/// What in a statement may be read in another way by the library below or by SQLite than it is here; null if nothing.
const char* Unclear(std::string_view statement, const std::vector<Token>& tokens)
{
    if (HoldsEscape(statement) && !StaysQuery(statement))
        return "use an escape in braces in a statement that is no plain SELECT";
    if (HoldsUnclosed(tokens))
        return "run it so";
    if (HoldsHiddenParameter(statement, tokens))
        return "run a statement with a parameter that a parenthesis follows";
    return HoldsSeveral(tokens) ? "run one statement behind another" : nullptr;
}

/// Makes SQLite acquainted with a function that gives rows. It declares the function's columns at its first use on a
/// connection, which to an authorizer looks like the making of a table.
void Introduce(sqlite3* engine, const std::string& function)
{
    sqlite3_stmt* statement = nullptr;
    const std::string text = "SELECT 1 FROM " + function;
    sqlite3_prepare_v2(engine, text.c_str(), -1, &statement, nullptr);
    sqlite3_finalize(statement);
}

} // namespace

Privileges::Privileges(sqlite3* engine, std::string user, Locate locate)
    : m_engine(engine), m_user(std::move(user)), m_locate(std::move(locate)),
      m_mayDoEverything(m_user.empty() || m_user == administrator)
{
    if (m_mayDoEverything)
        return;
    const auto name = Spelled(engine, m_user);
    m_mayDoEverything = EqualIgnoringCase(m_user, administrator) && name != m_user;
    if (!name || m_mayDoEverything)
        return;
    m_user = *name;
    ReadRights();
}

void Privileges::ReadRights()
{
    const auto read = [](const Query& row) {
        return Rights{{row.Number(2) != 0, row.Number(3) != 0, row.Number(4) != 0, row.Number(5) != 0}};
    };
    for (Query row(m_engine,
                   "SELECT DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE"
                   "  FROM TW_DBPRV WHERE USER_NAME = ?1",
                   {m_user});
         row.Next();) {
        m_databases[row.Text(0)] = read(row);
        m_byTable[row.Text(0)] = EqualIgnoringCase(row.Text(1), "TABLE");
    }
    for (Query row(m_engine,
                   "SELECT DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE"
                   "  FROM TW_TBLPRV WHERE USER_NAME = ?1",
                   {m_user});
         row.Next();)
        m_tables[{row.Text(0), row.Text(1)}] = read(row);
}

void Privileges::Guard()
{
    if (!m_mayDoEverything) {
        Introduce(m_engine, "json_each");
        Introduce(m_engine, "json_tree");
        for (const char* pragma : harmlessPragmas)
            Introduce(m_engine, std::string("pragma_") + pragma);
    }
    sqlite3_set_authorizer(m_engine, Authorize, this);
}

std::string Privileges::User() const
{
    return m_mayDoEverything ? administrator : m_user;
}

std::vector<const char*> Privileges::RightsTo(std::string_view name) const
{
    constexpr const char* words[] = {"SELECT", "INSERT", "UPDATE", "DELETE"};
    std::vector<const char*> held;
    for (const Right right : {Select, Insert, Update, Delete})
        if (m_mayDoEverything || MayUse(right, name))
            held.push_back(words[right]);
    return held;
}

std::string Privileges::Refusal(std::string_view statement) const
{
    if (m_mayDoEverything)
        return {};
    const std::vector<Token> tokens = Tokenize(statement);
    if (const char* const unclear = Unclear(statement, tokens)) {
        Refuse(unclear);
        return (HoldsUnclosed(tokens) ? "The statement has a quote or # that is not closed. " : "") + TakeRefusal();
    }
    const auto isAt = [&](std::size_t i, const char* word) {
        return i < tokens.size() && EqualIgnoringCase(tokens[i].text, word);
    };
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const bool isInsert = isAt(i, "REPLACE") && isAt(i + 1, "INTO");
        const bool isUpdate = isAt(i, "UPDATE") && isAt(i + 1, "OR") && isAt(i + 2, "REPLACE");
        if (!isInsert && !isUpdate)
            continue;
        std::size_t name = i + (isInsert ? 2 : 3);
        if (isAt(name + 1, "."))
            name += 2;
        if (name < tokens.size() && Check(Delete, BareName(tokens[name]).c_str()) != SQLITE_OK)
            return TakeRefusal();
    }
    return {};
}

std::string Privileges::TakeRefusal()
{
    return std::exchange(refusal, std::string());
}

bool Privileges::MayUse(Right right, std::string_view name) const
{
    if (StartsWithIgnoringCase(name, RecordTable::unfilteredBeginning))
        return false;
    std::optional<Place> place;
    if (!ColumnsOfCatalogTable(name))
        place = m_locate(name);
    if (!place && StartsWithIgnoringCase(name, "TW_"))
        place = {"TW", InUpperCase(name.substr(3))};
    if (!place)
        return right == Select;
    const auto database = m_databases.find(place->first);
    if (database == m_databases.end())
        return false;
    if (!m_byTable.at(place->first))
        return database->second.allowed[right];
    const auto table = m_tables.find(*place);
    return table != m_tables.end() && table->second.allowed[right];
}

int Privileges::Refuse(const std::string& what) const
{
    refusal = "The user " + m_user + " does not have the privileges to " + what + ".";
    return SQLITE_DENY;
}

int Privileges::Check(Right right, const char* name) const
{
    constexpr const char* actions[] = {"read the table ", "add to the table ", "change the table ",
                                       "delete from the table "};
    const std::string table = name ? name : "";
    return MayUse(right, table) ? SQLITE_OK : Refuse(actions[right] + table);
}

int Privileges::Authorize(void* self, int action, const char* first, const char* second, const char*, const char*)
{
    const auto& privileges = *static_cast<const Privileges*>(self);
    if (OwnStatement::IsRunning())
        return AuthorizeOwn(action, first, second);
    if (privileges.m_mayDoEverything)
        return SQLITE_OK;
    switch (action) {
    case SQLITE_SELECT:
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
    case SQLITE_RECURSIVE:
        return SQLITE_OK;
    case SQLITE_READ:
        // Also inside a view: what SQLite tells of it is the same for a common table expression, which anyone can
        // write.
        return privileges.Check(Select, first);
    case SQLITE_INSERT:
        return privileges.Check(Insert, first);
    case SQLITE_UPDATE:
        return privileges.Check(Update, first);
    case SQLITE_DELETE:
        return privileges.Check(Delete, first);
    case SQLITE_FUNCTION:
        if (!second || IsHarmlessFunction(second))
            return SQLITE_OK;
        return privileges.Refuse(std::string("call the function ") + second);
    case SQLITE_PRAGMA:
        if (first && IsHarmlessPragma(first))
            return SQLITE_OK;
        break;
    default:
        break;
    }
    return privileges.Refuse("change the catalog's file");
}

} // namespace tarnwick::records
