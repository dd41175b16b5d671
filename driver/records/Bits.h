#pragma once

#include <cstdint>
#include <string_view>

namespace tarnwick::records
{

/// The bits of a binary number of up to 8 bytes, in either order of them.
inline std::uint64_t BitsOf(std::string_view bytes, bool highByteFirst)
{
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bits = bits << 8 | static_cast<unsigned char>(bytes[highByteFirst ? i : bytes.size() - 1 - i]);
    return bits;
}

} // namespace tarnwick::records
