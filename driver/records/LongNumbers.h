#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// SQLite reads a number of more digits than a floating point number holds as the nearest one of those, so no
/// comparison with it would be exact. Where such a number is compared with a decimal column, whose digits are text, it
/// becomes a text literal: `[WIDE] >= 12345678901234567.89` turns into `[WIDE] >= '12345678901234567.89'`, on either
/// side. Every other statement stays as it is. `isDecimal` tells of a name in upper case whether it is that of such a
/// column.
std::string QuoteLongNumbers(std::string statement, const std::function<bool(const std::string&)>& isDecimal);

/// Whether a statement has a number of that length at all; cheap.
bool MayHoldLongNumber(std::string_view statement);

} // namespace tarnwick::records
