#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// SQLite reads a number of more digits than a floating point number holds as the nearest one of those, so no
/// comparison with it would be exact. Where such a number is compared with a decimal column, whose digits are text, it
/// becomes text that compares as a decimal number, on either side: `[WIDE] >= 12345678901234567.89` turns into
/// `[WIDE] >= CAST('12345678901234567.89' AS TEXT) COLLATE TARNWICK_LITERAL`. A sum or another number that only bears
/// the column's name is compared by its value with that too. In the list of an IN it becomes a mere text literal, which
/// such a number never equals; so there it stays what it is if the name is one of `given`, or one that the statement
/// gives itself. Every other statement stays as it is. `isDecimal` tells of a name in upper case whether it is that of
/// such a column.
std::string QuoteLongNumbers(std::string statement, const std::function<bool(const std::string&)>& isDecimal,
                             std::set<std::string> given = {});

/// Adds the names, in upper case, that a statement, such as a view's, gives to columns of its own: behind AS or a
/// parenthesis, or in the list of a view or a WITH.
void CollectGivenNames(std::string_view statement, std::set<std::string>& names);

/// Whether a statement has a number of that length at all; cheap.
bool MayHoldLongNumber(std::string_view statement);

} // namespace tarnwick::records
