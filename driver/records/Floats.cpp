#include "Floats.h"

#include "Bits.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace tarnwick::records
{
namespace
{

using Kind = StorageType::Kind;

/// VAX numbers are words of 16 bits, the most significant first, each with its low byte first.
std::uint64_t WordBits(std::string_view bytes)
{
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        bits = bits << 16 | static_cast<unsigned>(static_cast<unsigned char>(bytes[i + 1]) << 8) |
               static_cast<unsigned char>(bytes[i]);
    return bits;
}

double Shortest(double number)
{
    const auto single = static_cast<float>(number);
    if (static_cast<double>(single) != number)
        return number;
    std::array<char, 64> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), single);
    double shortest = number;
    std::from_chars(text.data(), written.ptr, shortest);
    return shortest;
}

/// A number with a hidden highest bit and the fraction 0.1..., of `size` bits in all.
std::optional<double> DecodeVax(std::string_view bytes, int size, int exponentBits)
{
    const std::uint64_t bits = WordBits(bytes);
    const int fractionBits = size - 1 - exponentBits;
    const auto exponent = static_cast<int>(bits >> fractionBits & ((std::uint64_t{1} << exponentBits) - 1));
    const bool negative = (bits >> (size - 1) & 1) != 0;
    if (exponent == 0)
        return negative ? std::nullopt : std::optional(0.0);
    const std::uint64_t hidden = std::uint64_t{1} << fractionBits;
    const auto fraction = static_cast<double>(hidden | (bits & (hidden - 1)));
    const double number = std::ldexp(fraction, exponent - (1 << (exponentBits - 1)) - fractionBits - 1);
    return negative ? -number : number;
}

double DecodeBase16(std::string_view bytes)
{
    const int size = static_cast<int>(bytes.size()) * 8;
    const std::uint64_t bits = BitsOf(bytes, true);
    const auto exponent = static_cast<int>(bits >> (size - 8) & 0x7F);
    const std::uint64_t fraction = bits & ((std::uint64_t{1} << (size - 8)) - 1);
    const double number = std::ldexp(static_cast<double>(fraction), 4 * (exponent - 64) - (size - 8));
    return (bits >> (size - 1) & 1) != 0 ? -number : number;
}

std::optional<double> DecodeIeee(std::string_view bytes, bool highByteFirst)
{
    const std::uint64_t bits = BitsOf(bytes, highByteFirst);
    const double number = bytes.size() == 4
                              ? static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)))
                              : std::bit_cast<double>(bits);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> Decode(Kind kind, bool highByteFirst, std::string_view bytes)
{
    switch (kind) {
    case Kind::IeeeFloat:
        return DecodeIeee(bytes, highByteFirst);
    case Kind::VaxF:
        return bytes.size() == 4 ? DecodeVax(bytes, 32, 8) : std::nullopt;
    case Kind::VaxD:
        return bytes.size() == 8 ? DecodeVax(bytes, 64, 8) : std::nullopt;
    case Kind::VaxG:
        return bytes.size() == 8 ? DecodeVax(bytes, 64, 11) : std::nullopt;
    case Kind::Base16Float:
        return DecodeBase16(bytes);
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<double> DecodeFloat(Kind kind, bool highByteFirst, std::string_view bytes)
{
    if (bytes.size() != 4 && bytes.size() != 8)
        return std::nullopt;
    const auto number = Decode(kind, highByteFirst, bytes);
    if (!number)
        return std::nullopt;
    // Behind the addition, zero has no sign.
    return (bytes.size() == 4 ? Shortest(*number) : *number) + 0.0;
}

} // namespace tarnwick::records
