#pragma once

#include "StorageType.h"

#include <optional>
#include <string_view>

namespace tarnwick::records
{

/// The number in the bytes of a floating point field of 4 or 8 bytes; nothing if they are none (a NaN, an infinity, a
/// reserved operand of a VAX). One of 4 bytes comes as the shortest decimal number that stands for it, so that 0.1 is
/// 0.1. Zero has no sign. `highByteFirst` is that of IEEE numbers; the others have one order only.
std::optional<double> DecodeFloat(StorageType::Kind kind, bool highByteFirst, std::string_view bytes);

} // namespace tarnwick::records
