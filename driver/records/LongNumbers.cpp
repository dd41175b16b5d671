#include "LongNumbers.h"

#include "FieldDecoder.h"
#include "GivenNames.h"
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
            if (NamesJson(i))
                ReadJson(i);
        FindAssigned();
        for (std::size_t i = 0; i < m_tokens.size(); ++i)
            if (IsDecimalColumn(i) && m_assigned.count(i) == 0) {
                m_column = Between(BeginOfName(i), i + 1);
                if (IsOperand(i)) {
                    ReadReversed(i);
                } else {
                    ReadReversedWords(i);
                    ReadComparison(i);
                }
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

    bool NamesJson(std::size_t i) const
    {
        const std::string name = m_tokens[i].kind == Token::Kind::String ? std::string() : NameIn(m_tokens[i]);
        return name == "JSON_EACH" || name == "JSON_TREE";
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
        for (const char* word : {"WHERE", "ON", "AND", "OR", "NOT", "HAVING", "SELECT", "DISTINCT", "ALL", "BY", "CASE",
                                 "WHEN", "THEN", "ELSE", "RETURNING"})
            if (IsWordThere(i, word))
                return true;
        return false;
    }

    /// A number that stands alone in front of a comparison with the column.
    void ReadReversed(std::size_t column)
    {
        if (GoesOnBehind(column))
            return;
        std::size_t end = BeginOfName(column);
        const std::size_t name = end;
        while (end > 0 && IsComparison(end - 1))
            --end;
        if (end < name)
            TakeNumberBefore(end, LiteralFor(column));
    }

    /// A number in front of an IS, of a BETWEEN with the column for a bound, or of an IN with the column in its list.
    /// The number of the last says itself how all of the list is compared, which a mere text could not.
    void ReadReversedWords(std::size_t column)
    {
        const std::size_t first = BeginOfName(column);
        if (first < 2 || GoesOnBehind(column))
            return;
        if (const std::size_t is = BeginOfIs(first); is > 0 || IsWordThere(first - 1, "BETWEEN"))
            return TakeNumberBefore(is > 0 ? is : first - 1, LiteralFor(column));
        if (IsWordThere(first - 1, "AND")) {
            const std::size_t bound = BeginOfBound(first - 2);
            if (bound > 0 && IsWordThere(bound - 1, "BETWEEN"))
                TakeNumberBefore(bound - 1, LiteralFor(column));
        } else if ((IsThere(column + 1, ",") || IsThere(column + 1, ")")) && ListedFor(column) == Literal::Text &&
                   LiteralFor(column) == Literal::Decimal) {
            const std::size_t list = BeginOfList(first);
            if (list > 0 && IsWordThere(list - 1, "IN"))
                TakeNumberBefore(list - 1, Literal::Decimal);
        }
    }

    /// The IS of an IS, IS NOT or IS [NOT] DISTINCT FROM in front of a token; 0 if there is none.
    std::size_t BeginOfIs(std::size_t i) const
    {
        if (i >= 2 && IsWordThere(i - 1, "FROM") && IsWordThere(i - 2, "DISTINCT"))
            i -= 2;
        if (i >= 1 && IsWordThere(i - 1, "NOT"))
            --i;
        return i >= 1 && IsWordThere(i - 1, "IS") ? i - 1 : 0;
    }

    /// Whether something is made of the column before anything is compared.
    bool GoesOnBehind(std::size_t column) const
    {
        return (column + 1 < m_tokens.size() && IsOperator(m_tokens[column + 1])) || IsThere(column + 1, ".") ||
               IsThere(column + 1, "(") || IsWordThere(column + 1, "COLLATE");
    }

    /// Where a bound that is a name or a number begins, by its last token.
    std::size_t BeginOfBound(std::size_t last) const
    {
        return IsName(m_tokens[last]) ? BeginOfName(last) : BeginOfNumber(last + 1);
    }

    /// The open parenthesis of the list in which something stands that begins there; 0 if it stands in none.
    std::size_t BeginOfList(std::size_t i) const
    {
        if (!IsThere(i - 1, "(") && !IsThere(i - 1, ","))
            return 0;
        for (int depth = 0; i-- > 1;) {
            depth += IsThere(i, ")") ? 1 : IsThere(i, "(") ? -1 : 0;
            if (depth < 0)
                return IsWordThere(i + 1, "SELECT") || IsWordThere(i + 1, "WITH") ? 0 : i;
        }
        return 0;
    }

    /// Where the number begins, with its sign, that ends in front of a token; there if none does.
    std::size_t BeginOfNumber(std::size_t end) const
    {
        std::size_t begin = end;
        while (begin > 0 && (IsDigits(m_tokens[begin - 1]) || IsThere(begin - 1, ".")) &&
               (begin == end || Touches(begin)))
            --begin;
        return begin > 0 && begin < end && (IsThere(begin - 1, "-") || IsThere(begin - 1, "+")) ? begin - 1 : begin;
    }

    /// A number that begins an expression and ends in front of a token, or of the NOT before that.
    void TakeNumberBefore(std::size_t end, Literal literal)
    {
        if (end > 0 && IsWordThere(end - 1, "NOT"))
            --end;
        const std::size_t begin = BeginOfNumber(end);
        if (begin < end && begin > 0 && OpensExpression(begin - 1))
            TakeNumber(begin, literal);
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
        if (IsWordThere(i, "WHEN") && BeginOfName(column) > 0 && IsWordThere(BeginOfName(column) - 1, "CASE"))
            return ReadCases(i, literal);
        const std::size_t first = i;
        while (IsComparison(i))
            ++i;
        if (i > first)
            TakeNumber(i, literal);
    }

    /// All numbers of a list, whatever stands between them, and of the rows of a VALUES.
    void ReadList(std::size_t i, Literal literal)
    {
        const bool isOfRows = IsWordThere(i, "VALUES");
        if (!isOfRows)
            TakeNumber(i, literal);
        for (int depth = 0; i < m_tokens.size() && depth >= 0; ++i) {
            const bool opensValue = isOfRows ? IsThere(i, "(") : IsThere(i, ",");
            if (depth == 0 && opensValue)
                TakeNumber(i + 1, literal);
            depth += IsThere(i, "(") ? 1 : IsThere(i, ")") ? -1 : 0;
        }
    }

    /// The numbers behind each WHEN of a CASE of the column.
    void ReadCases(std::size_t i, Literal literal)
    {
        for (int depth = 0; i < m_tokens.size() && depth >= 0; ++i) {
            depth += IsWordThere(i, "CASE") ? 1 : IsWordThere(i, "END") ? -1 : 0;
            if (depth == 0 && IsWordThere(i, "WHEN") && IsWordThere(EndOfNumber(i + 1), "THEN"))
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

    /// The place behind the sign, the digits and the points there.
    std::size_t EndOfNumber(std::size_t i) const
    {
        if (IsThere(i, "-") || IsThere(i, "+"))
            ++i;
        const std::size_t begin = i;
        while (i < m_tokens.size() && (IsDigits(m_tokens[i]) || IsThere(i, ".")) && (i == begin || Touches(i)))
            ++i;
        return i;
    }

    /// Gives the place behind the number that begins there.
    std::size_t TakeNumber(std::size_t first, Literal literal)
    {
        const std::size_t end = EndOfNumber(first);
        const std::size_t begin = IsThere(first, "-") || IsThere(first, "+") ? first + 1 : first;
        std::size_t digits = 0;
        std::size_t points = 0;
        for (std::size_t i = begin; i < end; ++i) {
            points += IsThere(i, ".") ? 1 : 0;
            digits += IsThere(i, ".") ? 0 : m_tokens[i].text.size();
        }
        const bool isOneNumber = points <= 1 && !GoesOn(end) && (begin == first || (begin < end && Touches(begin)));
        const bool isCalculated = end < m_tokens.size() && IsOperator(m_tokens[end]) && !IsComparison(end);
        if (digits > exactRealDigits && isOneNumber && !isCalculated) {
            const std::string_view text = Between(first, end);
            m_numbers.emplace(text.data(), Number{text, literal, m_column});
        }
        return end;
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
