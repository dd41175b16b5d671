#include "LongNumbers.h"

#include "FieldDecoder.h"
#include "Text.h"
#include "Tokenizer.h"

#include <algorithm>
#include <vector>

namespace tarnwick::records
{
namespace
{

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

bool IsWord(const Token& token, std::string_view word)
{
    return token.kind == Token::Kind::Word && EqualIgnoringCase(token.text, word);
}

/// Reads the comparisons of a statement.
class Comparisons
{
public:
    Comparisons(std::string_view statement, const std::function<bool(const std::string&)>& isDecimal)
        : m_tokens(Tokenize(statement)), m_isDecimal(isDecimal)
    {
        for (std::size_t i = 0; i < m_tokens.size(); ++i)
            if (IsDecimalColumn(i)) {
                if (IsOperand(i))
                    ReadReversed(i);
                else
                    ReadComparison(i + 1);
            }
    }

    /// The numbers to be quoted, in their order.
    const std::vector<std::string_view>& Numbers() const { return m_numbers; }

private:
    bool IsThere(std::size_t i, std::string_view text) const { return i < m_tokens.size() && m_tokens[i].text == text; }
    bool IsWordThere(std::size_t i, std::string_view word) const
    {
        return i < m_tokens.size() && IsWord(m_tokens[i], word);
    }

    bool IsDecimalColumn(std::size_t i) const
    {
        const Token& token = m_tokens[i];
        if (token.kind == Token::Kind::Name)
            return m_isDecimal(InUpperCase(token.text.substr(1, token.text.size() - 2)));
        return token.kind == Token::Kind::Word && m_isDecimal(InUpperCase(token.text));
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
        while (i >= 2 && IsThere(i - 1, "."))
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
        const bool isKnown = !m_numbers.empty() && m_tokens[begin].text.data() <= m_numbers.back().data();
        if (end < name && begin < end && begin > 0 && OpensExpression(begin - 1) && !isKnown)
            TakeNumber(begin);
    }

    void ReadComparison(std::size_t i)
    {
        if (IsWordThere(i, "IS"))
            return ReadIdentity(i + 1);
        if (IsWordThere(i, "NOT"))
            ++i;
        if (IsWordThere(i, "BETWEEN")) {
            i = TakeNumber(i + 1);
            if (IsWordThere(i, "AND"))
                TakeNumber(i + 1);
            return;
        }
        if (IsWordThere(i, "IN") && IsThere(i + 1, "(")) {
            i = TakeNumber(i + 2);
            while (IsThere(i, ","))
                i = TakeNumber(i + 1);
            return;
        }
        const std::size_t first = i;
        while (IsComparison(i))
            ++i;
        if (i > first)
            TakeNumber(i);
    }

    void ReadIdentity(std::size_t i)
    {
        if (IsWordThere(i, "NOT"))
            ++i;
        if (IsWordThere(i, "DISTINCT") && IsWordThere(i + 1, "FROM"))
            i += 2;
        TakeNumber(i);
    }

    /// Gives the place behind the number that begins there.
    std::size_t TakeNumber(std::size_t i)
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
        const bool isOneNumber = begin == first || (begin < i && Touches(begin));
        const bool isCalculated = IsThere(i, "+") || IsThere(i, "-") || IsThere(i, "*") || IsThere(i, "/");
        if (digits > exactRealDigits && isOneNumber && !isCalculated) {
            const char* const from = m_tokens[first].text.data();
            m_numbers.emplace_back(
                from, static_cast<std::size_t>(m_tokens[i - 1].text.data() + m_tokens[i - 1].text.size() - from));
        }
        return i;
    }

    bool Touches(std::size_t i) const
    {
        return m_tokens[i - 1].text.data() + m_tokens[i - 1].text.size() == m_tokens[i].text.data();
    }

    std::vector<Token> m_tokens;
    const std::function<bool(const std::string&)>& m_isDecimal;
    std::vector<std::string_view> m_numbers;
};

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

std::string QuoteLongNumbers(std::string statement, const std::function<bool(const std::string&)>& isDecimal)
{
    if (!MayHoldLongNumber(statement))
        return statement;
    const Comparisons comparisons(statement, isDecimal);
    std::string quoted;
    const char* copied = statement.data();
    for (const std::string_view number : comparisons.Numbers()) {
        quoted.append(copied, number.data()).append("'").append(number).append("'");
        copied = number.data() + number.size();
    }
    const char* const end = statement.data() + statement.size();
    return quoted.append(copied, end);
}

} // namespace tarnwick::records
