#pragma once

#include "Decimal.h"
#include "FieldDecoder.h"

namespace tarnwick::records
{

/// A decimal number as a field holds it: `magnitude` / 10^`scale`.
struct FieldDecoder::Decimal {
    bool negative = false;
    Magnitude magnitude = 0;
    int scale = 0;
};

/// Why bytes are no value, where several readers find it.
namespace reasons
{

constexpr const char* doesNotFit = "the number is too large for its column";
constexpr const char* hasFraction = "it has digits behind the point, and its column has none";
constexpr const char* noDigit = "a character is no digit";
constexpr const char* beyondYears = "it is beyond the years that a date can show";

} // namespace reasons

} // namespace tarnwick::records
