#pragma once

#include <string>
#include <string_view>

struct sqlite3;

namespace tarnwick::records
{

/// -1, 0 or 1 as the number in `left` is less than, equal to or greater than that in `right`, whatever their digits.
/// Texts are those of columns over records and what SQLite makes of the numbers that they are compared with, so they
/// may bear exponents; a text that is no number comes behind all numbers, in the order of its bytes.
int CompareDecimals(std::string_view left, std::string_view right);

/// The one text that all texts of a number have in common; another text as it is.
std::string PlainDecimal(std::string_view text);

/// Makes the comparison a collation of the connection, under the name TARNWICK_DECIMAL, which is that of columns, and
/// under TARNWICK_LITERAL, by which a comparison with a number of the statement can be told from one with a column.
void RegisterDecimalCollations(sqlite3* engine);

} // namespace tarnwick::records
