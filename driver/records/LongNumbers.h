#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// Names of decimal columns, in upper case, that others bear too.
struct Namesakes {
    std::set<std::string> given; ///< by statements and views to columns of their own, which may be sums
    std::set<std::string> texts; ///< of columns of text
};

/// SQLite reads a number of more digits than a floating point number holds as the nearest one of those, so no
/// comparison with it would be exact. Where such a number is compared with a decimal column, whose digits are text, it
/// becomes text that compares as a decimal number, on either side: `[WIDE] >= 12345678901234567.89` turns into
/// `[WIDE] >= CAST('12345678901234567.89' AS TEXT) COLLATE TARNWICK_LITERAL`. With that too
///
/// - a column of numbers that bears the name is compared by its value;
/// - what is calculated and only bears the name is compared as SQLite writes it: a whole number in all of its digits, a
///   sum or another floating point number in 15, so that it hardly ever equals the number;
/// - a column of text that bears it would be compared as a decimal. Where there is one, the number becomes a mere text
///   literal, with which either column is compared as its own collation says.
///
/// In the list of an IN the number becomes such a literal for every column, since the column in front says how all of
/// the list is compared. A mere text never equals a sum; so where the name is one of those given, here or by the
/// statement itself, and the number would become a mere text, the column's value chooses between both:
/// `CASE typeof(WIDE) WHEN 'text' THEN '12345678901234567.89' ELSE 12345678901234567.89 END`.
///
/// Every other statement stays as it is. `isDecimal` tells of a name in upper case whether it is that of a decimal
/// column.
std::string QuoteLongNumbers(std::string statement, const std::function<bool(const std::string&)>& isDecimal,
                             Namesakes namesakes = {});

/// Whether a statement has a number of that length at all; cheap.
bool MayHoldLongNumber(std::string_view statement);

} // namespace tarnwick::records
