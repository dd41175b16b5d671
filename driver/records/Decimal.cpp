#include "Decimal.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tarnwick::records
{
namespace
{

constexpr std::array<Magnitude, mostDigits + 1> MakePowers()
{
    std::array<Magnitude, mostDigits + 1> powers{};
    powers[0] = 1;
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}

constexpr auto powers = MakePowers();

/// The powers of ten that a floating point number holds exactly.
constexpr std::array<double, 23> exactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                                1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr Magnitude firstInexact = Magnitude{1} << 53;

} // namespace

Magnitude PowerOfTen(int exponent)
{
    return powers[static_cast<std::size_t>(exponent)];
}

void WriteDecimal(bool negative, Magnitude magnitude, int scale, std::string& text)
{
    text.clear();
    int written = 0;
    for (; scale < 0 && magnitude > 0; ++scale)
        text += '0';
    do {
        if (written == scale && scale > 0)
            text += '.';
        text += static_cast<char>('0' + static_cast<int>(magnitude % 10));
        magnitude /= 10;
        ++written;
    } while (magnitude > 0 || written <= scale);
    if (negative)
        text += '-';
    std::reverse(text.begin(), text.end());
}

double ToReal(bool negative, Magnitude magnitude, int scale)
{
    // One rounding at most: both operands are exact.
    if (magnitude < firstInexact && scale >= 0 && static_cast<std::size_t>(scale) < exactPowers.size()) {
        const double real =
            static_cast<double>(static_cast<std::uint64_t>(magnitude)) / exactPowers[static_cast<std::size_t>(scale)];
        return negative ? -real : real;
    }
    std::string text;
    WriteDecimal(negative, magnitude, 0, text);
    text += 'e' + std::to_string(-scale);
    return std::strtod(text.c_str(), nullptr);
}

} // namespace tarnwick::records
