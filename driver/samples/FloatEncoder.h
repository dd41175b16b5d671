#pragma once

#include "StorageType.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tarnwick::samples
{

/// The bytes of a floating point number of 4 or 8 bytes, rounded to the nearest that the format has. Nothing if it is
/// beyond the format's numbers; one that is too near to zero becomes zero.
std::optional<std::string> EncodeFloat(records::StorageType::Kind kind, bool highByteFirst, std::size_t length,
                                       double number);

} // namespace tarnwick::samples
