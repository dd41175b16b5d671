#pragma once

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

/// Splits a statement into its tokens. Blanks and comments (`--` to the end of the line, `/* */`) are left out.
/// A `#` opens a literal only where a value can begin: not right behind a letter, digit or underscore. The literal
/// ends at the next `#` of the same line.
std::vector<Token> Tokenize(std::string_view statement);

} // namespace tarnwick
