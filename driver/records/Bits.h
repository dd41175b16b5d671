#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
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

/// The eight bytes at a place at once, the first of them lowest.
inline std::uint64_t EightBytesAt(const char* place)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, place, sizeof bits);
    return std::endian::native == std::endian::little ? bits : __builtin_bswap64(bits);
}

} // namespace tarnwick::records
