#include "LongNumbers.h"

#include "FieldDecoder.h"
#include "Text.h"
#include "Tokenizer.h"

#include <algorithm>
#include <map>
#include <vector>

namespace tarnwick::records
{
namespace
{

using Names = std::set<std::string>;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsDigits(const Token& token)
{
    return token.kind == Token::Kind::Word && std::all_of(token.text.begin(), token.text.end(), IsDigit);
}

/// Whether something is calculated or compared here; each token of punctuation is one byte of an operator.
bool IsOperator(const Token& token)
{
    return token.kind == Token::Kind::Punctuation && token.text.find_first_of("+-*/%|&~<>=!") == 0;
}

bool IsName(const Token& token)
{
    return token.kind == Token::Kind::Name || token.kind == Token::Kind::String ||
           (token.kind == Token::Kind::Word && !IsDigit(token.text.front()));
}

/// A name without its quotes, in upper case.
std::string NameIn(const Token& token)
{
    return InUpperCase(BareName(token));
}

/// Reads the names that a statement gives to columns of its own.
class GivenNames
{
public:
    GivenNames(std::string_view statement, Names& names) : m_tokens(Tokenize(statement)), m_names(names)
    {
        for (std::size_t i = 1; i < m_tokens.size(); ++i) {
            const Token& before = m_tokens[i - 1];
            const bool isGiven = before.text == ")" || (IsWord(before, "AS") && !IsType(i) && !IsItsOwn(i));
            if (isGiven && IsName(m_tokens[i]))
                m_names.insert(NameIn(m_tokens[i]));
            if (before.text == "(")
                ReadList(i);
        }
    }

private:
    /// Whether a CAST has its type there.
    bool IsType(std::size_t i) const
    {
        for (std::size_t open = 0, place = i; place-- > 1;) {
            if (m_tokens[place].text == ")")
                ++open;
            else if (m_tokens[place].text == "(" && open-- == 0)
                return IsWord(m_tokens[place - 1], "CAST");
        }
        return false;
    }

    /// Whether a column that is selected as it stands keeps its name: `x.WIDE AS WIDE`.
    bool IsItsOwn(std::size_t i) const
    {
        if (i < 3 || !IsName(m_tokens[i - 2]) || !IsName(m_tokens[i]) || NameIn(m_tokens[i - 2]) != NameIn(m_tokens[i]))
            return false;
        std::size_t first = i - 2;
        while (first >= 2 && m_tokens[first - 1].text == ".")
            first -= 2;
        return first >= 1 && (m_tokens[first - 1].text == "," || IsWord(m_tokens[first - 1], "SELECT"));
    }

    /// The columns of a view or of a WITH: names in parentheses before AS and a SELECT.
    void ReadList(std::size_t i)
    {
        Names list;
        for (; i + 2 < m_tokens.size() && IsName(m_tokens[i]); i += 2) {
            list.insert(NameIn(m_tokens[i]));
            if (m_tokens[i + 1].text == ")" && IsWord(m_tokens[i + 2], "AS") && BeginsSelect(i + 3))
                return m_names.merge(list);
            if (m_tokens[i + 1].text != ",")
                return;
        }
    }

    bool BeginsSelect(std::size_t i) const
    {
        if (i >= m_tokens.size() || m_tokens[i].text == "(")
            return i < m_tokens.size();
        for (const char* word : {"SELECT", "WITH", "VALUES", "NOT", "MATERIALIZED"})
            if (IsWord(m_tokens[i], word))
                return true;
        return false;
    }

    std::vector<Token> m_tokens;
    Names& m_names;
};

/// What takes the place of a number.
enum class Literal {
    Text,    ///< its digits: the column says how they are compared
    Decimal, ///< its digits with what makes even a floating point number compare with them as a number
    Either,  ///< its digits where the column's value is a text, and else the number
};

/// Reads the comparisons of a statement.
class Comparisons
{
public:
    using Test = std::function<bool(const std::string&)>;

    Comparisons(std::string_view statement, const Test& isDecimal, const Namesakes& namesakes)
        : m_tokens(Tokenize(statement)), m_isDecimal(isDecimal), m_namesakes(namesakes)
    {
        for (std::size_t i = 0; i < m_tokens.size(); ++i)
            if (IsWordThere(i, "json_each") || IsWordThere(i, "json_tree"))
                ReadJson(i);
        FindAssigned();
        for (std::size_t i = 0; i < m_tokens.size(); ++i)
            if (IsDecimalColumn(i) && m_assigned.count(i) == 0) {
                m_column = Between(BeginOfName(i), i + 1);
                if (IsOperand(i))
                    ReadReversed(i);
                else
                    ReadComparison(i);
            }
    }

    struct Number {
        std::string_view text;
        Literal literal;
        std::string_view column; ///< with which it is compared, as it stands there
    };

    /// The numbers to be replaced, by where they stand in the statement.
    const std::map<const char*, Number>& Numbers() const { return m_numbers; }

private:
    bool IsThere(std::size_t i, std::string_view text) const { return i < m_tokens.size() && m_tokens[i].text == text; }
    bool IsWordThere(std::size_t i, std::string_view word) const
    {
        return i < m_tokens.size() && IsWord(m_tokens[i], word);
    }

    bool IsDecimalColumn(std::size_t i) const
    {
        const Token::Kind kind = m_tokens[i].kind;
        if ((kind != Token::Kind::Name && kind != Token::Kind::Word) || !m_isDecimal(NameIn(m_tokens[i])))
            return false;
        return m_jsonTables.empty() || !MayBeJson(i);
    }

    /// Values of JSON are of no type, and to SQLite a number among them is less than any text.
    bool MayBeJson(std::size_t i) const
    {
        const std::string name = NameIn(m_tokens[i]);
        if (m_namesakes.given.count(name) > 0)
            return true;
        if (i >= 2 && IsThere(i - 1, "."))
            return m_jsonTables.count(NameIn(m_tokens[i - 2])) > 0;
        for (const char* column : {"KEY", "VALUE", "ATOM", "ID", "PARENT"})
            if (name == column)
                return true;
        return false;
    }

    /// The name of a table of JSON, and the one that a statement gives to it.
    void ReadJson(std::size_t i)
    {
        m_jsonTables.insert(NameIn(m_tokens[i]));
        if (!IsThere(++i, "("))
            return;
        for (int depth = 0; i < m_tokens.size(); ++i) {
            depth += IsThere(i, "(") ? 1 : IsThere(i, ")") ? -1 : 0;
            if (depth == 0)
                break;
        }
        i += IsWordThere(i + 1, "AS") ? 2 : 1;
        if (i < m_tokens.size() && IsName(m_tokens[i]))
            m_jsonTables.insert(NameIn(m_tokens[i]));
    }

    /// Notes the columns to which SET gives values: their `=` compares nothing.
    void FindAssigned()
    {
        for (std::size_t i = 0; i < m_tokens.size(); ++i)
            if (IsWordThere(i, "SET"))
                ReadAssignments(i + 1);
    }

    void ReadAssignments(std::size_t i)
    {
        m_assigned.insert(i);
        for (int depth = 0; i < m_tokens.size() && depth >= 0; ++i) {
            depth += IsThere(i, "(") ? 1 : IsThere(i, ")") ? -1 : 0;
            if (depth != 0)
                continue;
            if (IsWordThere(i, "WHERE") || IsWordThere(i, "FROM") || IsWordThere(i, "RETURNING") || IsThere(i, ";"))
                return;
            if (IsThere(i, ","))
                m_assigned.insert(i + 1);
        }
    }

    /// Whether the column, qualified or not, is what an operator in front of it takes. The comparison behind it is not
    /// the column's own then, and its other side no text: texts are greater than all numbers.
    bool IsOperand(std::size_t i) const
    {
        const std::size_t first = BeginOfName(i);
        return first >= 1 && IsOperator(m_tokens[first - 1]);
    }

    /// Where the name of a column begins, with the names that qualify it.
    std::size_t BeginOfName(std::size_t i) const
    {
        while (i >= 2 && IsThere(i - 1, ".") && IsName(m_tokens[i - 2]))
            i -= 2;
        return i;
    }

    bool IsComparison(std::size_t i) const
    {
        return IsThere(i, "=") || IsThere(i, "<") || IsThere(i, ">") || IsThere(i, "!");
    }

    /// Whether an expression begins behind the token, and cannot be the rest of one.
    bool OpensExpression(std::size_t i) const
    {
        if (IsThere(i, "(") || IsThere(i, ","))
            return true;
        for (const char* word : {"WHERE", "ON", "AND", "OR", "NOT", "HAVING", "SELECT", "WHEN"})
            if (IsWordThere(i, word))
                return true;
        return false;
    }

    /// A number that stands alone in front of a comparison with the column.
    void ReadReversed(std::size_t column)
    {
        if (column + 1 < m_tokens.size() && IsOperator(m_tokens[column + 1]))
            return;
        std::size_t end = BeginOfName(column);
        const std::size_t name = end;
        while (end > 0 && IsComparison(end - 1))
            --end;
        std::size_t begin = end;
        while (begin > 0 && (IsDigits(m_tokens[begin - 1]) || IsThere(begin - 1, ".")) &&
               (begin == end || Touches(begin)))
            --begin;
        if (begin > 0 && (IsThere(begin - 1, "-") || IsThere(begin - 1, "+")))
            --begin;
        if (end < name && begin < end && begin > 0 && OpensExpression(begin - 1))
            TakeNumber(begin, LiteralFor(column));
    }

    Literal LiteralFor(std::size_t column) const
    {
        return m_namesakes.texts.count(NameIn(m_tokens[column])) > 0 ? ListedFor(column) : Literal::Decimal;
    }

    Literal ListedFor(std::size_t column) const
    {
        return m_namesakes.given.count(NameIn(m_tokens[column])) > 0 ? Literal::Either : Literal::Text;
    }

    void ReadComparison(std::size_t column)
    {
        std::size_t i = column + 1;
        const Literal literal = LiteralFor(column);
        if (IsWordThere(i, "IS"))
            return ReadIdentity(i + 1, literal);
        if (IsWordThere(i, "NOT"))
            ++i;
        if (IsWordThere(i, "BETWEEN")) {
            i = TakeNumber(i + 1, literal);
            if (IsWordThere(i, "AND"))
                TakeNumber(i + 1, literal);
            return;
        }
        if (IsWordThere(i, "IN") && IsThere(i + 1, "("))
            return ReadList(i + 2, ListedFor(column));
        const std::size_t first = i;
        while (IsComparison(i))
            ++i;
        if (i > first)
            TakeNumber(i, literal);
    }

    /// All numbers of a list, whatever stands between them.
    void ReadList(std::size_t i, Literal literal)
    {
        TakeNumber(i, literal);
        for (int depth = 0; i < m_tokens.size() && depth >= 0; ++i) {
            depth += IsThere(i, "(") ? 1 : IsThere(i, ")") ? -1 : 0;
            if (depth == 0 && IsThere(i, ","))
                TakeNumber(i + 1, literal);
        }
    }

    void ReadIdentity(std::size_t i, Literal literal)
    {
        if (IsWordThere(i, "NOT"))
            ++i;
        if (IsWordThere(i, "DISTINCT") && IsWordThere(i + 1, "FROM"))
            i += 2;
        TakeNumber(i, literal);
    }

    /// Gives the place behind the number that begins there.
    std::size_t TakeNumber(std::size_t i, Literal literal)
    {
        const std::size_t first = i;
        if (IsThere(i, "-") || IsThere(i, "+"))
            ++i;
        std::size_t digits = 0;
        const std::size_t begin = i;
        while (i < m_tokens.size() && (IsDigits(m_tokens[i]) || IsThere(i, ".")) && (i == begin || Touches(i))) {
            digits += IsThere(i, ".") ? 0 : m_tokens[i].text.size();
            ++i;
        }
        const bool isOneNumber = !GoesOn(i) && (begin == first || (begin < i && Touches(begin)));
        const bool isCalculated = i < m_tokens.size() && IsOperator(m_tokens[i]) && !IsComparison(i);
        if (digits > exactRealDigits && isOneNumber && !isCalculated) {
            const std::string_view text = Between(first, i);
            m_numbers.emplace(text.data(), Number{text, literal, m_column});
        }
        return i;
    }

    /// Whether what the token touches in front of it does not end there: an exponent, or a quote that would be one
    /// inside the text that a number becomes.
    bool GoesOn(std::size_t i) const
    {
        return i > 0 && i < m_tokens.size() && Touches(i) &&
               (m_tokens[i].kind != Token::Kind::Punctuation || IsThere(i, "#"));
    }

    /// The statement's text from a token to the one in front of another.
    std::string_view Between(std::size_t first, std::size_t end) const
    {
        const char* const from = m_tokens[first].text.data();
        const std::string_view last = m_tokens[end - 1].text;
        return {from, static_cast<std::size_t>(last.data() + last.size() - from)};
    }

    bool Touches(std::size_t i) const
    {
        return m_tokens[i - 1].text.data() + m_tokens[i - 1].text.size() == m_tokens[i].text.data();
    }

    std::vector<Token> m_tokens;
    const Test& m_isDecimal;
    const Namesakes& m_namesakes;
    std::string_view m_column; ///< whose comparison is read
    Names m_jsonTables;
    std::set<std::size_t> m_assigned;
    std::map<const char*, Number> m_numbers;
};

std::string Replacement(const Comparisons::Number& number)
{
    const std::string digits = "'" + std::string(number.text) + "'";
    switch (number.literal) {
    case Literal::Text:
        break;
    case Literal::Decimal:
        return "CAST(" + digits + " AS TEXT) COLLATE TARNWICK_LITERAL";
    case Literal::Either:
        return "CASE typeof(" + std::string(number.column) + ") WHEN 'text' THEN " + digits + " ELSE " +
               std::string(number.text) + " END";
    }
    return digits;
}

} // namespace

bool MayHoldLongNumber(std::string_view statement)
{
    std::size_t digits = 0;
    for (const char c : statement) {
        if (IsDigit(c))
            ++digits;
        else if (c != '.')
            digits = 0;
        if (digits > exactRealDigits)
            return true;
    }
    return false;
}

void CollectGivenNames(std::string_view statement, Names& names)
{
    GivenNames(statement, names);
}

std::string QuoteLongNumbers(std::string statement, const std::function<bool(const std::string&)>& isDecimal,
                             Namesakes namesakes)
{
    if (!MayHoldLongNumber(statement))
        return statement;
    CollectGivenNames(statement, namesakes.given);
    const Comparisons comparisons(statement, isDecimal, namesakes);
    std::string quoted;
    const char* copied = statement.data();
    for (const auto& [place, number] : comparisons.Numbers()) {
        quoted.append(copied, place);
        if (!quoted.empty() && IsWordCharacter(quoted.back()))
            quoted += ' ';
        quoted += Replacement(number);
        copied = place + number.text.size();
    }
    const char* const end = statement.data() + statement.size();
    return quoted.append(copied, end);
}

} // namespace tarnwick::records
