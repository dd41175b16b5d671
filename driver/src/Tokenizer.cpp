#include "Tokenizer.h"

#include "Text.h"

#include <algorithm>

namespace tarnwick
{

bool IsWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}

namespace
{

/// SQLite reads a byte order mark at the beginning of a token as a blank.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// A vertical tab is one to SQLite only behind another blank; where it begins something, the statement is refused.
bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

/// Reads one statement from left to right.
class Scanner
{
public:
    Scanner(std::string_view statement, Comments comments) : m_text(statement), m_comments(comments)
    {
        m_tokens.reserve(m_text.size() / 5);
    }

    std::vector<Token> Run()
    {
        while (m_position < m_text.size())
            Step();
        return std::move(m_tokens);
    }

private:
    char At(std::size_t position) const { return position < m_text.size() ? m_text[position] : '\0'; }

    void Step()
    {
        const char c = m_text[m_position];
        const char next = At(m_position + 1);
        if (IsBlank(c))
            ++m_position;
        else if (m_text.substr(m_position, byteOrderMark.size()) == byteOrderMark)
            m_position += byteOrderMark.size();
        else if (c == '-' && next == '-')
            Comment(std::min(m_text.find('\n', m_position), m_text.size()));
        else if (c == '/' && next == '*' && m_position + 2 < m_text.size())
            BlockComment();
        else if (c == '\'')
            Quoted(Token::Kind::String, c);
        else if (c == '"' || c == '`')
            Quoted(Token::Kind::Name, c);
        else if (c == '[')
            Until(Token::Kind::Name, m_text.find(']', m_position));
        else if (c == '#' && !(m_position > 0 && IsWordCharacter(m_text[m_position - 1])))
            HashLiteral();
        else if (IsWordCharacter(c))
            Word();
        else
            Add(Token::Kind::Punctuation, m_position + 1);
    }

    void BlockComment()
    {
        const std::size_t end = m_text.find("*/", m_position + 2);
        Comment(end == std::string_view::npos ? m_text.size() : end + 2);
    }

    void Comment(std::size_t end)
    {
        if (m_comments == Comments::Keep)
            Add(Token::Kind::Comment, end);
        else
            m_position = end;
    }

    void Quoted(Token::Kind kind, char quote)
    {
        std::size_t end = m_position + 1;
        for (;; end += 2) {
            end = m_text.find(quote, end);
            if (end == std::string_view::npos || At(end + 1) != quote)
                break;
        }
        Until(kind, end);
    }

    void HashLiteral()
    {
        const std::size_t end = m_text.find_first_of("#\n", m_position + 1);
        Until(Token::Kind::Hash, At(end) == '#' ? end : std::string_view::npos);
    }

    void Word()
    {
        std::size_t end = m_position;
        while (end < m_text.size() && IsWordCharacter(m_text[end]))
            ++end;
        Add(Token::Kind::Word, end);
    }

    /// Adds the token whose last byte stands at `last`.
    void Until(Token::Kind kind, std::size_t last)
    {
        if (last == std::string_view::npos)
            Add(Token::Kind::Unterminated, m_text.size());
        else
            Add(kind, last + 1);
    }

    void Add(Token::Kind kind, std::size_t end)
    {
        m_tokens.push_back({kind, m_text.substr(m_position, end - m_position)});
        m_position = end;
    }

    std::string_view m_text;
    Comments m_comments;
    std::size_t m_position = 0;
    std::vector<Token> m_tokens;
};

} // namespace

std::vector<Token> Tokenize(std::string_view statement, Comments comments)
{
    return Scanner(statement, comments).Run();
}

bool IsWord(const Token& token, std::string_view word)
{
    return token.kind == Token::Kind::Word && EqualIgnoringCase(token.text, word);
}

std::string BareName(const Token& token)
{
    if (token.kind != Token::Kind::Name && token.kind != Token::Kind::String)
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

std::string NameIn(const Token& token)
{
    return InUpperCase(BareName(token));
}

bool IsName(const Token& token)
{
    const bool isQuoted = token.kind == Token::Kind::Name || token.kind == Token::Kind::String;
    const unsigned char first = static_cast<unsigned char>(token.text.front());
    return isQuoted || (token.kind == Token::Kind::Word && first != '$' && (first < '0' || first > '9'));
}

} // namespace tarnwick
