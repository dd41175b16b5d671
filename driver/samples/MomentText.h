#pragma once

#include "DateFormat.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick::samples
{

/// `YYYY-MM-DD`, `hh:mm:ss` or both with a blank between them, as `records::Write` writes them without hundredths;
/// nothing if there is no such day or time.
std::optional<records::Moment> ParseMoment(std::string_view text);

/// A moment in a format of `records::DateFormat`; of a year in two digits the century is left out.
std::string FormatMoment(const records::Moment& moment, std::string_view format);

/// The seconds between the midnight that began 1 January 1970 and a moment.
std::int64_t UnixSeconds(const records::Moment& moment);

} // namespace tarnwick::samples
