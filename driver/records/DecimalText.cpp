#include "DecimalText.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace tarnwick::records
{
namespace
{

/// A number as 0.d1d2d3... times a power of ten. The digits lie in up to two runs of the text that it was read from,
/// with no zero at either end; zero has none.
struct Number {
    bool negative = false;
    long power = 0;
    std::string_view first;
    std::string_view second;

    std::size_t Digits() const { return first.size() + second.size(); }
    char Digit(std::size_t i) const { return i < first.size() ? first[i] : second[i - first.size()]; }
};

std::string_view TakeDigits(std::string_view& text)
{
    const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
    text.remove_prefix(digits.size());
    return digits;
}

/// Exponents beyond what a floating point number has are refused: SQLite writes none.
std::optional<long> TakeExponent(std::string_view& text)
{
    if (text.empty())
        return 0;
    if (text.front() != 'e' && text.front() != 'E')
        return std::nullopt;
    text.remove_prefix(1);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    int exponent = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (error != std::errc() || end != text.data() + text.size() || exponent < -400 || exponent > 400)
        return std::nullopt;
    return exponent;
}

std::optional<Number> Read(std::string_view text)
{
    Number number;
    number.negative = text.starts_with('-');
    if (number.negative || text.starts_with('+'))
        text.remove_prefix(1);
    number.first = TakeDigits(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        number.second = TakeDigits(text);
    }
    if (number.Digits() == 0)
        return std::nullopt;
    const auto exponent = TakeExponent(text);
    if (!exponent)
        return std::nullopt;
    number.power = static_cast<long>(number.first.size()) + *exponent;
    for (; number.Digits() > 0 && number.Digit(0) == '0'; --number.power)
        (number.first.empty() ? number.second : number.first).remove_prefix(1);
    while (number.Digits() > 0 && number.Digit(number.Digits() - 1) == '0')
        (number.second.empty() ? number.first : number.second).remove_suffix(1);
    if (number.Digits() == 0)
        return Number();
    return number;
}

int CompareMagnitudes(const Number& a, const Number& b)
{
    if (a.Digits() == 0 || b.Digits() == 0)
        return a.Digits() == b.Digits() ? 0 : a.Digits() == 0 ? -1 : 1;
    if (a.power != b.power)
        return a.power < b.power ? -1 : 1;
    const std::size_t common = std::min(a.Digits(), b.Digits());
    for (std::size_t i = 0; i < common; ++i)
        if (a.Digit(i) != b.Digit(i))
            return a.Digit(i) < b.Digit(i) ? -1 : 1;
    return a.Digits() == b.Digits() ? 0 : a.Digits() < b.Digits() ? -1 : 1;
}

int Collate(void*, int leftSize, const void* left, int rightSize, const void* right)
{
    return CompareDecimals({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                           {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

} // namespace

int CompareDecimals(std::string_view left, std::string_view right)
{
    const auto a = Read(left);
    const auto b = Read(right);
    if (!a || !b) {
        const int order = left.compare(right);
        return a ? -1 : b ? 1 : order < 0 ? -1 : order > 0 ? 1 : 0;
    }
    if (a->negative != b->negative)
        return a->negative ? -1 : 1;
    return a->negative ? CompareMagnitudes(*b, *a) : CompareMagnitudes(*a, *b);
}

std::string PlainDecimal(std::string_view text)
{
    const auto number = Read(text);
    if (!number)
        return std::string(text);
    if (number->Digits() == 0)
        return "0";
    std::string plain = number->negative ? "-." : ".";
    plain.append(number->first).append(number->second);
    return plain + "e" + std::to_string(number->power);
}

void RegisterDecimalCollations(sqlite3* engine)
{
    for (const char* name : {"TARNWICK_DECIMAL", "TARNWICK_LITERAL"})
        sqlite3_create_collation(engine, name, SQLITE_UTF8, nullptr, Collate);
}

} // namespace tarnwick::records
