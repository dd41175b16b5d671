#pragma once

#include <string>
#include <string_view>

namespace tarnwick
{

/// Puts the spellings that SQLite refuses, or takes for something else, into ones that it reads as the family does, and
/// leaves every other statement as it is, byte for byte:
///
/// - each byte of a comment becomes a blank, ends of lines excepted, since the library below does not know comments.
///   Behind CREATE, where SQLite stores them, only the bytes do that would be misread there: `'`, `"`, `?`, `;`, `{`
///   and `}`. A byte order mark in front becomes blanks too.
/// - a name in brackets or backticks that holds a quote, a brace, `?` or `;` is put into double quotes, for the same
///   reason.
/// - a date literal `#...#` becomes a text literal. `m/d/yyyy` and `yyyy/m/d` turn into `yyyy-mm-dd`, the form in
///   which SQLite compares dates; any other content is kept. A literal without content is left, and so refused.
/// - a `WHERE` behind the `ORDER BY` of its own SELECT moves in front of it.
/// - an empty text that a numeric column of the catalog is given becomes 0 (`ZeroEmptyNumbers`).
///
/// Strings and quoted names are never looked into, nor are the comments that stay. Text with an unterminated piece is
/// left to SQLite's error.
std::string Rewrite(std::string statement);

} // namespace tarnwick
