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
        Comment,      ///< `--` to the end of the line, or `/* */`
        Unterminated, ///< a string, name or hash literal that the text ends in
    };
    Kind kind;
    std::string_view text; ///< points into the statement
};

enum class Comments { LeaveOut, Keep };

/// Splits a statement into its tokens. Blanks and byte order marks are left out, and comments if they are not asked
/// for. A comment that nothing closes goes to the end of the text. A `#` opens a literal only where a value can begin:
/// not right behind a letter, digit or underscore. The literal ends at the next `#` of the same line.
std::vector<Token> Tokenize(std::string_view statement, Comments comments = Comments::LeaveOut);

/// Whether the token is a keyword, in any case.
bool IsWord(const Token& token, std::string_view word);

/// Whether a byte goes on with a keyword, a bare name or a number that ends in front of it.
bool IsWordCharacter(char c);

/// The name that a token gives, without its quotes: a doubled quote inside stands for one, brackets have none. A string
/// is a name where only a name can stand.
std::string BareName(const Token& token);

/// The same in upper case.
std::string NameIn(const Token& token);

/// Whether a token can be the name of a column, a table or a database: neither a number nor a parameter (`$x`) is one.
bool IsName(const Token& token);

} // namespace tarnwick
