#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnwick
{

/// One lexical piece of a statement, as SQLite reads it.
struct Token {
    enum class Kind {
        Word,         ///< keyword or bare name; numbers count as words too
        String,       ///< '...' with doubled apostrophes
        Name,         ///< "...", `...` or [...]
        Hash,         ///< #...#
        Punctuation,  ///< one byte
        Unterminated, ///< a string, name or hash literal that the text ends in
    };
    Kind kind;
    std::string_view text; ///< points into the statement
};

/// Splits a statement into its tokens. Blanks, byte order marks and comments (`--` to the end of the line, `/* */`) are
/// left out.
/// A `#` opens a literal only where a value can begin: not right behind a letter, digit or underscore. The literal
/// ends at the next `#` of the same line.
std::vector<Token> Tokenize(std::string_view statement);

/// Whether the token is a keyword, in any case.
bool IsWord(const Token& token, std::string_view word);

/// Whether a byte goes on with a keyword, a bare name or a number that ends in front of it.
bool IsWordCharacter(char c);

/// The name that a token gives, without its quotes: a doubled quote inside stands for one, brackets have none. A string
/// is a name where only a name can stand.
std::string BareName(const Token& token);

} // namespace tarnwick
