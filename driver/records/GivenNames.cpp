#include "GivenNames.h"

#include "Tokenizer.h"

#include <vector>

namespace tarnwick::records
{
namespace
{

using Names = std::set<std::string>;

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

} // namespace

void CollectGivenNames(std::string_view statement, Names& names)
{
    GivenNames(statement, names);
}

} // namespace tarnwick::records
