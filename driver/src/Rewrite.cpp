#include "Rewrite.h"

#include "EmptyNumbers.h"
#include "Text.h"
#include "Tokenizer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

namespace tarnwick
{
namespace
{

/// Whether a keyword stands anywhere in the text, read as bytes; a cheap test before any real reading.
std::size_t FindIgnoringCase(std::string_view text, std::string_view upperWord, std::size_t from)
{
    const char first[] = {upperWord[0], static_cast<char>(upperWord[0] - 'A' + 'a'), '\0'};
    for (std::size_t at = text.find_first_of(first, from); at != std::string_view::npos;
         at = text.find_first_of(first, at + 1))
        if (EqualIgnoringCase(text.substr(at, upperWord.size()), upperWord))
            return at;
    return std::string_view::npos;
}

bool MayHoldMisplacedWhere(std::string_view statement)
{
    const std::size_t order = FindIgnoringCase(statement, "ORDER", 0);
    return order != std::string_view::npos && FindIgnoringCase(statement, "WHERE", order) != std::string_view::npos;
}

bool HasUnterminated(const std::vector<Token>& tokens)
{
    return !tokens.empty() && tokens.back().kind == Token::Kind::Unterminated;
}

/// What the library below, which knows no comments and no quotes but `'` and `"`, takes for the beginning or the end of
/// something.
constexpr std::string_view misreadBelow = "'\"?;{}";

/// The part of a statement that SQLite stores with its comments: from a CREATE to the end or to the last semicolon,
/// since it may hold others, as a trigger does.
std::string_view StoredText(std::string_view statement, const std::vector<Token>& tokens)
{
    const Token* first = nullptr;
    const Token* last = nullptr;
    for (const Token& token : tokens) {
        if (token.kind == Token::Kind::Comment)
            continue;
        const bool begins = !last || last->text == ";";
        if (!first && begins && IsWord(token, "CREATE"))
            first = &token;
        last = &token;
    }
    if (!first)
        return {};
    const char* const end =
        last->text == ";" ? last->text.data() + last->text.size() : statement.data() + statement.size();
    return {first->text.data(), static_cast<std::size_t>(end - first->text.data())};
}

std::string BlankComments(std::string statement)
{
    const std::vector<Token> tokens = Tokenize(statement, Comments::Keep);
    if (HasUnterminated(tokens))
        return statement;
    const std::string_view stored = StoredText(statement, tokens);
    for (const Token& token : tokens) {
        if (token.kind != Token::Kind::Comment)
            continue;
        const char* const comment = token.text.data();
        const bool isStored = comment >= stored.data() && comment < stored.data() + stored.size();
        const auto isBlanked = [&](char c) {
            return isStored ? misreadBelow.find(c) != std::string_view::npos : c != '\n' && c != '\r';
        };
        const auto begin = statement.begin() + (comment - statement.data());
        std::replace_if(begin, begin + static_cast<std::ptrdiff_t>(token.text.size()), isBlanked, ' ');
    }
    return statement;
}

/// To SQLite a byte order mark is a blank; the library below does not see which statement stands behind one.
std::string BlankMarksInFront(std::string statement)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    for (std::size_t at = 0; (at = statement.find_first_not_of(" \t\n\f\r", at)) != std::string::npos;) {
        if (statement.compare(at, mark.size(), mark) != 0)
            break;
        statement.replace(at, mark.size(), mark.size(), ' ');
    }
    return statement;
}

/// Whether such a name may stand anywhere in the text, read as bytes.
bool MayHoldMisreadName(std::string_view statement, char opening, char closing)
{
    std::size_t end = 0;
    for (std::size_t at = statement.find(opening); at != std::string_view::npos; at = statement.find(opening, end)) {
        end = statement.find(closing, at + 1);
        if (end == std::string_view::npos)
            return false;
        if (statement.substr(at, end - at).find_first_of(misreadBelow) != std::string_view::npos)
            return true;
    }
    return false;
}

/// Puts something else in place of some tokens: what `replacement` gives of one, if it does.
template <typename Replacement>
std::string ReplaceTokens(std::string statement, Replacement replacement)
{
    const std::vector<Token> tokens = Tokenize(statement);
    if (HasUnterminated(tokens))
        return statement;
    std::string result;
    const char* copied = statement.data();
    for (const Token& token : tokens) {
        const std::optional<std::string> text = replacement(token);
        if (!text)
            continue;
        result.append(copied, token.text.data()).append(*text);
        copied = token.text.data() + token.text.size();
    }
    const char* const end = statement.data() + statement.size();
    return result.append(copied, end);
}

std::string QuoteMisreadNames(std::string statement)
{
    return ReplaceTokens(std::move(statement), [](const Token& token) {
        const bool isUnknown = token.kind == Token::Kind::Name && token.text.front() != '"';
        const bool isMisread = isUnknown && token.text.find_first_of(misreadBelow) != std::string_view::npos;
        return isMisread ? std::optional(QuotedName(BareName(token))) : std::nullopt;
    });
}

/// Reads three numbers with a slash between them.
std::optional<std::array<int, 3>> ReadSlashedDate(std::string_view& text)
{
    std::array<int, 3> parts{};
    std::string_view rest = text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), parts[i]);
        if (error != std::errc() || parts[i] < 0)
            return std::nullopt;
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        if (i < 2) {
            if (rest.empty() || rest.front() != '/')
                return std::nullopt;
            rest.remove_prefix(1);
        }
    }
    text = rest;
    return parts;
}

/// A date written with slashes in the form `yyyy-mm-dd`, whatever follows it kept; any other text unchanged.
std::string DateText(std::string_view content)
{
    std::string_view rest = content;
    const auto parts = ReadSlashedDate(rest);
    if (!parts || (!rest.empty() && rest.front() != ' '))
        return std::string(content);
    const auto [a, b, c] = *parts;
    const bool yearFirst = a >= 1000 && a <= 9999;
    const bool yearLast = c >= 1000 && c <= 9999;
    const int year = yearFirst ? a : c;
    const int month = yearFirst ? b : a;
    const int day = yearFirst ? c : b;
    if (yearFirst == yearLast || month < 1 || month > 12 || day < 1 || day > 31)
        return std::string(content);
    std::array<char, 16> date{};
    std::snprintf(date.data(), date.size(), "%04d-%02d-%02d", year, month, day);
    return date.data() + std::string(rest);
}

std::string DateLiteral(std::string_view token)
{
    std::string literal = "'";
    for (const char c : DateText(token.substr(1, token.size() - 2))) {
        literal += c;
        if (c == '\'')
            literal += c;
    }
    return literal + "'";
}

std::string ReplaceHashLiterals(std::string statement)
{
    return ReplaceTokens(std::move(statement), [](const Token& token) {
        const bool isDate = token.kind == Token::Kind::Hash && token.text.size() > 2;
        return isDate ? std::optional(DateLiteral(token.text)) : std::nullopt;
    });
}

/// What has been seen of the SELECT that is open at one depth of parentheses.
struct OpenSelect {
    bool open = false;
    bool hasWhere = false;              ///< a WHERE in its place
    const Token* firstClause = nullptr; ///< GROUP, HAVING or ORDER: a WHERE belongs in front of it
    bool ordered = false;               ///< ORDER BY seen
    const Token* lateWhere = nullptr;   ///< WHERE behind ORDER BY
    const Token* lastOfWhere = nullptr; ///< last token of that WHERE clause, once a LIMIT has ended it
};

/// Finds the WHERE clauses that stand behind their ORDER BY.
class MisplacedWhere
{
public:
    struct Move {
        const char* target; ///< where the clause belongs
        const char* begin;
        const char* end;
    };

    explicit MisplacedWhere(const std::vector<Token>& tokens) : m_tokens(tokens) {}

    std::optional<Move> Find()
    {
        for (std::size_t i = 0; i < m_tokens.size() && !m_found; ++i)
            Read(i);
        if (!m_found && !m_tokens.empty())
            Close(m_levels.back(), m_tokens.back());
        return m_found;
    }

private:
    void Read(std::size_t index)
    {
        const Token& token = m_tokens[index];
        OpenSelect& level = m_levels.back();
        if (token.text == "(") {
            m_levels.emplace_back();
        } else if (token.text == ")") {
            if (index > 0)
                Close(level, m_tokens[index - 1]);
            if (m_levels.size() > 1)
                m_levels.pop_back();
            else
                level = {};
        } else if (token.text == ";") {
            if (index > 0)
                Close(level, m_tokens[index - 1]);
            level = {};
        } else if (token.kind == Token::Kind::Word) {
            ReadWord(index, level);
        }
    }

    void ReadWord(std::size_t index, OpenSelect& level)
    {
        const Token& token = m_tokens[index];
        const bool followed = index + 1 < m_tokens.size();
        if (IsWord(token, "SELECT")) {
            level = {};
            level.open = true;
        } else if (IsWord(token, "UNION") || IsWord(token, "INTERSECT") || IsWord(token, "EXCEPT") ||
                   (IsWord(token, "ON") && followed && IsWord(m_tokens[index + 1], "CONFLICT"))) {
            level = {};
        } else if (!level.open) {
            return;
        } else if (IsWord(token, "GROUP") || IsWord(token, "HAVING")) {
            if (!level.firstClause)
                level.firstClause = &token;
        } else if (IsWord(token, "ORDER") && followed && IsWord(m_tokens[index + 1], "BY")) {
            if (!level.firstClause)
                level.firstClause = &token;
            level.ordered = true;
        } else if (IsWord(token, "WHERE")) {
            if (!level.ordered || level.hasWhere || level.lateWhere)
                level.hasWhere = true;
            else
                level.lateWhere = &token;
        } else if (IsWord(token, "LIMIT") && level.lateWhere && !level.lastOfWhere) {
            level.lastOfWhere = &m_tokens[index - 1];
        }
    }

    void Close(const OpenSelect& level, const Token& last)
    {
        if (!level.open || level.hasWhere || !level.lateWhere)
            return;
        const Token& end = level.lastOfWhere ? *level.lastOfWhere : last;
        if (&end <= level.lateWhere)
            return;
        m_found = Move{level.firstClause->text.data(), level.lateWhere->text.data(), end.text.data() + end.text.size()};
    }

    const std::vector<Token>& m_tokens;
    std::vector<OpenSelect> m_levels{1};
    std::optional<Move> m_found;
};

std::string MoveMisplacedWhere(std::string statement)
{
    for (;;) {
        const std::vector<Token> tokens = Tokenize(statement);
        if (HasUnterminated(tokens))
            return statement;
        const auto move = MisplacedWhere(tokens).Find();
        if (!move)
            return statement;
        const char* const begin = statement.data();
        const char* const end = begin + statement.size();
        std::string moved(begin, move->target);
        moved.append(move->begin, move->end).append(" ");
        moved.append(move->target, move->begin).append(move->end, end);
        statement = std::move(moved);
    }
}

} // namespace

std::string Rewrite(std::string statement)
{
    if (statement.find("--") != std::string::npos || statement.find("/*") != std::string::npos)
        statement = BlankComments(std::move(statement));
    statement = BlankMarksInFront(std::move(statement));
    if (MayHoldMisreadName(statement, '[', ']') || MayHoldMisreadName(statement, '`', '`'))
        statement = QuoteMisreadNames(std::move(statement));
    if (statement.find('#') != std::string::npos)
        statement = ReplaceHashLiterals(std::move(statement));
    if (MayHoldMisplacedWhere(statement))
        statement = MoveMisplacedWhere(std::move(statement));
    return ZeroEmptyNumbers(std::move(statement));
}

} // namespace tarnwick
