#include "EmptyNumbers.h"

#include "CatalogTables.h"
#include "Text.h"
#include "Tokenizer.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace tarnwick
{
namespace
{

using Columns = std::vector<CatalogColumn>;

constexpr std::string_view emptyText = "''";

/// Reads one statement and gathers the empty literals that stand for numbers.
class EmptyNumbers
{
public:
    explicit EmptyNumbers(const std::vector<Token>& tokens) : m_tokens(tokens) {}

    /// The literals' places in the statement, in their order.
    std::vector<std::string_view> Find()
    {
        if (SkipWord("UPDATE"))
            ReadUpdate();
        else if (SkipWord("INSERT") || SkipWord("REPLACE"))
            ReadInsert();
        return std::move(m_found);
    }

private:
    std::string_view At(std::size_t position) const
    {
        return position < m_tokens.size() ? m_tokens[position].text : std::string_view();
    }

    bool IsWordAt(std::size_t position, std::string_view word) const
    {
        return position < m_tokens.size() && m_tokens[position].kind == Token::Kind::Word &&
               EqualIgnoringCase(m_tokens[position].text, word);
    }

    bool SkipWord(std::string_view word)
    {
        const bool found = IsWordAt(m_position, word);
        m_position += found ? 1 : 0;
        return found;
    }

    bool Skip(std::string_view text)
    {
        const bool found = At(m_position) == text;
        m_position += found ? 1 : 0;
        return found;
    }

    /// A name without its quotes.
    std::string_view NameAt(std::size_t position) const
    {
        if (position >= m_tokens.size())
            return {};
        const Token& token = m_tokens[position];
        return token.kind == Token::Kind::Name ? token.text.substr(1, token.text.size() - 2) : token.text;
    }

    void SkipConflictClause()
    {
        if (SkipWord("OR"))
            ++m_position;
    }

    /// The columns of the table whose name comes next, with or without its schema and an alias.
    const Columns* ReadTable()
    {
        if (At(m_position + 1) == ".")
            m_position += 2;
        const Columns* columns = ColumnsOfCatalogTable(NameAt(m_position++));
        if (SkipWord("AS"))
            ++m_position;
        return columns;
    }

    static bool IsNumber(const Columns& columns, std::string_view name)
    {
        return std::any_of(columns.begin(), columns.end(), [&](const CatalogColumn& column) {
            return column.isNumber && EqualIgnoringCase(column.name, name);
        });
    }

    void ReadUpdate()
    {
        SkipConflictClause();
        const Columns* columns = ReadTable();
        if (!columns || !SkipWord("SET"))
            return;
        while (m_position < m_tokens.size()) {
            if (At(m_position + 1) == "=" && At(m_position + 2) == emptyText && EndsAssignment(m_position + 3) &&
                IsNumber(*columns, NameAt(m_position)))
                m_found.push_back(At(m_position + 2));
            SkipExpression();
            if (!Skip(","))
                return;
        }
    }

    bool EndsAssignment(std::size_t position) const
    {
        const std::string_view text = At(position);
        return text.empty() || text == "," || text == ";" || IsWordAt(position, "WHERE") ||
               IsWordAt(position, "FROM") || IsWordAt(position, "RETURNING");
    }

    void ReadInsert()
    {
        SkipConflictClause();
        if (!SkipWord("INTO"))
            return;
        const Columns* columns = ReadTable();
        if (!columns)
            return;
        std::vector<std::string_view> names;
        if (Skip("(")) {
            for (; At(m_position) != ")" && m_position < m_tokens.size(); ++m_position)
                if (At(m_position) != ",")
                    names.push_back(NameAt(m_position));
            ++m_position;
        } else {
            for (const CatalogColumn& column : *columns)
                names.push_back(column.name);
        }
        if (!SkipWord("VALUES"))
            return;
        do
            ReadRow(*columns, names);
        while (Skip(","));
    }

    /// `names` are the columns that the row's values go to.
    void ReadRow(const Columns& columns, const std::vector<std::string_view>& names)
    {
        if (!Skip("("))
            return;
        for (std::size_t i = 0; m_position < m_tokens.size(); ++i) {
            const std::string_view behind = At(m_position + 1);
            if (At(m_position) == emptyText && (behind == "," || behind == ")") && i < names.size() &&
                IsNumber(columns, names[i]))
                m_found.push_back(At(m_position));
            SkipExpression();
            if (Skip(")"))
                return;
            if (!Skip(","))
                return;
        }
    }

    /// Goes to the comma or the closing parenthesis behind an expression, or to the end.
    void SkipExpression()
    {
        for (std::size_t depth = 0; m_position < m_tokens.size(); ++m_position) {
            const std::string_view text = At(m_position);
            if (depth == 0 && (text == "," || text == ")" || IsWordAt(m_position, "WHERE")))
                return;
            if (text == "(")
                ++depth;
            else if (text == ")")
                --depth;
        }
    }

    const std::vector<Token>& m_tokens;
    std::size_t m_position = 0;
    std::vector<std::string_view> m_found;
};

} // namespace

std::string ZeroEmptyNumbers(std::string statement)
{
    if (statement.find(emptyText) == std::string::npos)
        return statement;
    const std::vector<Token> tokens = Tokenize(statement);
    if (tokens.empty() || tokens.back().kind == Token::Kind::Unterminated)
        return statement;
    const std::vector<std::string_view> found = EmptyNumbers(tokens).Find();
    if (found.empty())
        return statement;
    std::string result;
    result.reserve(statement.size());
    const char* copied = statement.data();
    for (const std::string_view literal : found) {
        result.append(copied, literal.data()).append("0");
        copied = literal.data() + literal.size();
    }
    return result.append(copied, static_cast<const char*>(statement.data() + statement.size()));
}

} // namespace tarnwick
