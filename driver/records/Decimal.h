#pragma once

#include <cstdint>
#include <string>

namespace tarnwick::records
{

/// Holds the 38 digits that the widest decimal field can have.
__extension__ using Magnitude = unsigned __int128;

constexpr int mostDigits = 38;

/// 10 to the power of `exponent`, which is from 0 to 38.
Magnitude PowerOfTen(int exponent);

/// The number `magnitude` / 10^`scale` in decimal digits, with exactly `scale` of them behind the point. A scale below
/// zero appends zeros.
void WriteDecimal(bool negative, Magnitude magnitude, int scale, std::string& text);

/// The nearest floating point number to the same.
double ToReal(bool negative, Magnitude magnitude, int scale);

} // namespace tarnwick::records
