#include "FloatEncoder.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace tarnwick::samples
{
namespace
{

using Kind = records::StorageType::Kind;

std::string Bytes(std::uint64_t bits, std::size_t count, bool highByteFirst)
{
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i, bits >>= 8)
        bytes[highByteFirst ? count - 1 - i : i] = static_cast<char>(bits & 0xFF);
    return bytes;
}

std::optional<std::string> EncodeIeee(double number, bool highByteFirst, std::size_t length)
{
    if (length == 8)
        return Bytes(std::bit_cast<std::uint64_t>(number), length, highByteFirst);
    const auto single = static_cast<float>(number);
    if (!std::isfinite(single))
        return std::nullopt;
    return Bytes(std::bit_cast<std::uint32_t>(single), length, highByteFirst);
}

/// A fraction between a half and one, whose highest bit is not written, and a power of two. The words of 16 bits stand
/// most significant first, each with its low byte first.
std::optional<std::string> EncodeVax(double number, std::size_t length, int exponentBits)
{
    const int size = static_cast<int>(length) * 8;
    const int fractionBits = size - 1 - exponentBits;
    int exponent = 0;
    const double half = std::frexp(std::fabs(number), &exponent);
    auto fraction = static_cast<std::uint64_t>(std::nearbyint(std::ldexp(half, fractionBits + 1)));
    const std::uint64_t hidden = std::uint64_t{1} << fractionBits;
    if (fraction == hidden << 1) {
        fraction = hidden;
        ++exponent;
    }
    exponent += 1 << (exponentBits - 1);
    if (exponent >= 1 << exponentBits)
        return std::nullopt;
    std::uint64_t bits = 0;
    if (fraction != 0 && exponent > 0)
        bits = std::uint64_t{std::signbit(number)} << (size - 1) |
               static_cast<std::uint64_t>(exponent) << fractionBits | (fraction & (hidden - 1));
    std::string bytes = Bytes(bits, length, true);
    for (std::size_t i = 0; i < length; i += 2)
        std::swap(bytes[i], bytes[i + 1]);
    return bytes;
}

/// A fraction between a sixteenth and one, and a power of sixteen.
std::optional<std::string> EncodeBase16(double number, std::size_t length)
{
    const int fractionBits = static_cast<int>(length) * 8 - 8;
    int exponent = 0;
    const double half = std::frexp(std::fabs(number), &exponent);
    int power = exponent > 0 ? (exponent + 3) / 4 : exponent / 4;
    auto fraction = static_cast<std::uint64_t>(std::nearbyint(std::ldexp(half, exponent - 4 * power + fractionBits)));
    if (fraction == std::uint64_t{1} << fractionBits) {
        fraction >>= 4;
        ++power;
    }
    power += 64;
    if (power > 0x7F)
        return std::nullopt;
    if (fraction == 0 || power < 0)
        return std::string(length, '\0');
    return Bytes(std::uint64_t{std::signbit(number)} << (fractionBits + 7) |
                     static_cast<std::uint64_t>(power) << fractionBits | fraction,
                 length, true);
}

} // namespace

std::optional<std::string> EncodeFloat(Kind kind, bool highByteFirst, std::size_t length, double number)
{
    if ((length != 4 && length != 8) || !std::isfinite(number))
        return std::nullopt;
    switch (kind) {
    case Kind::IeeeFloat:
        return EncodeIeee(number, highByteFirst, length);
    case Kind::VaxF:
    case Kind::VaxD:
        return EncodeVax(number, length, 8);
    case Kind::VaxG:
        return EncodeVax(number, length, 11);
    case Kind::Base16Float:
        return EncodeBase16(number, length);
    default:
        return std::nullopt;
    }
}

} // namespace tarnwick::samples
