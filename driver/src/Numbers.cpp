#include "Numbers.h"

#include "Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

namespace tarnwick::numbers
{
namespace
{

constexpr long mostDigits = 38;

/// More than any number that fits has, and few enough to be counted through.
constexpr long mostExponent = 10000;

/// A number as its text gives it: digits, and a point among, before or behind them.
class Decimal
{
public:
    static std::optional<Decimal> Read(std::string_view text);

    bool IsNegative() const { return m_isNegative; }

    /// The digits in front of the point; negative if that many zeros follow it before the first digit.
    long Point() const { return m_point; }

    long Digits() const { return static_cast<long>(m_whole.size() + m_fraction.size()); }

    /// The digits behind the point.
    long Scale() const { return std::max(Digits() - m_point, 0L); }

    /// A digit's value, counted from 0; zeros follow the last one.
    unsigned At(long index) const
    {
        const auto place = static_cast<std::size_t>(index);
        const char digit = place < m_whole.size()                       ? m_whole[place]
                           : place - m_whole.size() < m_fraction.size() ? m_fraction[place - m_whole.size()]
                                                                        : '0';
        return static_cast<unsigned>(digit - '0');
    }

    /// Whether a digit other than zero stands at this place or behind it.
    bool HasFrom(long index) const
    {
        for (long i = std::max(index, 0L); i < Digits(); ++i)
            if (At(i) != 0)
                return true;
        return false;
    }

    /// The place of the first digit that is not zero.
    long First() const
    {
        long index = 0;
        while (index < Digits() && At(index) == 0)
            ++index;
        return index;
    }

private:
    bool m_isNegative = false;
    std::string_view m_whole;
    std::string_view m_fraction;
    long m_point = 0;
};

bool IsBlankCharacter(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string_view Trimmed(std::string_view text)
{
    while (!text.empty() && IsBlankCharacter(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlankCharacter(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Takes the digits in front of a text.
std::string_view TakeDigits(std::string_view& text)
{
    const auto end = std::find_if(text.begin(), text.end(), [](char c) { return c < '0' || c > '9'; });
    const auto count = static_cast<std::size_t>(end - text.begin());
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

/// Takes the sign in front of a text; whether it is a minus.
bool TakeSign(std::string_view& text)
{
    const bool isMinus = text.starts_with('-');
    if (isMinus || text.starts_with('+'))
        text.remove_prefix(1);
    return isMinus;
}

std::optional<Decimal> Decimal::Read(std::string_view text)
{
    text = Trimmed(text);
    Decimal number;
    number.m_isNegative = TakeSign(text);
    number.m_whole = TakeDigits(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        number.m_fraction = TakeDigits(text);
    }
    if (number.Digits() == 0)
        return std::nullopt;
    const std::size_t zeros = std::min(number.m_whole.find_first_not_of('0'), number.m_whole.size());
    number.m_whole.remove_prefix(zeros);
    number.m_point = static_cast<long>(number.m_whole.size());
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        const bool isMinus = TakeSign(text);
        const std::string_view digits = TakeDigits(text);
        if (digits.empty())
            return std::nullopt;
        long exponent = 0;
        for (const char digit : digits)
            exponent = std::min(exponent * 10 + (digit - '0'), mostExponent);
        number.m_point += isMinus ? -exponent : exponent;
    }
    return text.empty() ? std::optional(number) : std::nullopt;
}

/// The number without its sign and its fraction, if it is not above the limit.
std::optional<std::uint64_t> Magnitude(const Decimal& number, std::uint64_t limit)
{
    std::uint64_t value = 0;
    for (long i = 0; i < number.Point(); ++i) {
        const unsigned digit = number.At(i);
        if (digit > limit || value > (limit - digit) / 10)
            return std::nullopt;
        value = value * 10 + digit;
    }
    return value;
}

template <typename Integer>
Outcome PutInteger(const Decimal& number, void* place)
{
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());
    const std::uint64_t limit = !number.IsNegative() ? most : std::is_signed_v<Integer> ? most + 1 : 0;
    const std::optional<std::uint64_t> magnitude = Magnitude(number, limit);
    if (!magnitude)
        return Outcome::TooLarge;
    const auto value = static_cast<Integer>(number.IsNegative() ? 0 - *magnitude : *magnitude);
    if (place)
        std::memcpy(place, &value, sizeof value);
    return number.HasFrom(number.Point()) ? Outcome::Cut : Outcome::Whole;
}

template <typename Integer>
Outcome PutInteger(std::int64_t number, void* place)
{
    if (!std::in_range<Integer>(number))
        return Outcome::TooLarge;
    const auto value = static_cast<Integer>(number);
    if (place)
        std::memcpy(place, &value, sizeof value);
    return Outcome::Whole;
}

Outcome PutBit(std::int64_t number, void* place)
{
    return number == 0 || number == 1 ? PutInteger<SQLCHAR>(number, place) : Outcome::TooLarge;
}

Outcome PutBit(const Decimal& number, void* place)
{
    if (number.IsNegative() && number.HasFrom(0))
        return Outcome::TooLarge;
    const std::optional<std::uint64_t> magnitude = Magnitude(number, 1);
    if (!magnitude)
        return Outcome::TooLarge;
    if (place)
        *static_cast<SQLCHAR*>(place) = static_cast<SQLCHAR>(*magnitude);
    return number.HasFrom(number.Point()) ? Outcome::Cut : Outcome::Whole;
}

/// Columns of truth values hold words, too.
std::optional<SQLCHAR> TruthOf(std::string_view word)
{
    const auto isOneOf = [&](auto... words) { return (EqualIgnoringCase(word, words) || ...); };
    if (isOneOf("T", "TRUE", "Y", "YES"))
        return SQLCHAR{1};
    if (isOneOf("F", "FALSE", "N", "NO"))
        return SQLCHAR{0};
    return std::nullopt;
}

/// Ten times the value and a digit: `value` is a number of 128 bits, its lowest byte first.
void Append(unsigned digit, SQLCHAR (&value)[SQL_MAX_NUMERIC_LEN])
{
    unsigned carry = digit;
    for (SQLCHAR& byte : value) {
        const unsigned sum = byte * 10u + carry;
        byte = static_cast<SQLCHAR>(sum & 0xFF);
        carry = sum >> 8;
    }
}

Outcome PutNumeric(const Decimal& number, void* place)
{
    const long first = number.First();
    const bool isZero = first == number.Digits();
    const long wholeDigits = isZero ? 0 : std::max(number.Point() - first, 0L);
    if (wholeDigits > mostDigits)
        return Outcome::TooLarge;
    const long scale = std::min(number.Scale(), mostDigits - wholeDigits);
    const long end = number.Point() + scale;
    SQL_NUMERIC_STRUCT value{};
    for (long i = 0; !isZero && i < end; ++i)
        Append(number.At(i), value.val);
    value.precision = static_cast<SQLCHAR>(std::max(wholeDigits + scale, 1L));
    value.scale = static_cast<SQLSCHAR>(scale);
    value.sign = number.IsNegative() && !isZero ? 0 : 1;
    if (place)
        std::memcpy(place, &value, sizeof value);
    return number.HasFrom(end) ? Outcome::Cut : Outcome::Whole;
}

template <typename Float>
Outcome GiveFloat(Float value, bool isNegative, void* place)
{
    if (isNegative)
        value = -value;
    if (place)
        std::memcpy(place, &value, sizeof value);
    return Outcome::Whole;
}

template <typename Float>
Outcome PutFloat(std::string_view text, void* place)
{
    text = Trimmed(text);
    const bool isNegative = TakeSign(text);
    if (text == "Inf")
        return GiveFloat(std::numeric_limits<Float>::infinity(), isNegative, place);
    // A second sign, and words such as `nan`, begin numbers to others.
    if (!text.starts_with('.') && (text.empty() || text.front() < '0' || text.front() > '9'))
        return Outcome::NoNumber;
    Float value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec == std::errc::invalid_argument || read.ptr != end)
        return Outcome::NoNumber;
    if (read.ec == std::errc::result_out_of_range) {
        const std::optional<Decimal> number = Decimal::Read(text);
        if (!number || number->Point() > number->First())
            return Outcome::TooLarge;
        value = 0;
    }
    return GiveFloat(value, isNegative, place);
}

/// Puts a number, in one of its forms, into a place of a type of whole numbers.
template <typename Number>
Outcome PutAs(SQLSMALLINT type, const Number& number, void* place)
{
    switch (type) {
    case SQL_C_BIT:
        return PutBit(number, place);
    case SQL_C_TINYINT:
    case SQL_C_STINYINT:
        return PutInteger<SQLSCHAR>(number, place);
    case SQL_C_UTINYINT:
        return PutInteger<SQLCHAR>(number, place);
    case SQL_C_SHORT:
    case SQL_C_SSHORT:
        return PutInteger<SQLSMALLINT>(number, place);
    case SQL_C_USHORT:
        return PutInteger<SQLUSMALLINT>(number, place);
    case SQL_C_LONG:
    case SQL_C_SLONG:
        return PutInteger<SQLINTEGER>(number, place);
    case SQL_C_ULONG:
        return PutInteger<SQLUINTEGER>(number, place);
    case SQL_C_SBIGINT:
        return PutInteger<SQLBIGINT>(number, place);
    default:
        return PutInteger<SQLUBIGINT>(number, place);
    }
}

} // namespace

SQLLEN SizeOf(SQLSMALLINT type)
{
    switch (type) {
    case SQL_C_BIT:
    case SQL_C_TINYINT:
    case SQL_C_STINYINT:
    case SQL_C_UTINYINT:
        return sizeof(SQLCHAR);
    case SQL_C_SHORT:
    case SQL_C_SSHORT:
    case SQL_C_USHORT:
        return sizeof(SQLSMALLINT);
    case SQL_C_LONG:
    case SQL_C_SLONG:
    case SQL_C_ULONG:
        return sizeof(SQLINTEGER);
    case SQL_C_SBIGINT:
    case SQL_C_UBIGINT:
        return sizeof(SQLBIGINT);
    case SQL_C_NUMERIC:
        return sizeof(SQL_NUMERIC_STRUCT);
    case SQL_C_FLOAT:
        return sizeof(SQLREAL);
    case SQL_C_DOUBLE:
        return sizeof(SQLDOUBLE);
    default:
        return 0;
    }
}

bool IsBlank(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), IsBlankCharacter);
}

Outcome Put(std::string_view text, SQLSMALLINT type, void* place)
{
    if (type == SQL_C_DOUBLE)
        return PutFloat<SQLDOUBLE>(text, place);
    if (type == SQL_C_FLOAT)
        return PutFloat<SQLREAL>(text, place);
    // Most whole numbers have no great length.
    std::int64_t whole = 0;
    const char* const end = text.data() + text.size();
    if (const auto read = std::from_chars(text.data(), end, whole);
        read.ptr == end && read.ec == std::errc() && type != SQL_C_NUMERIC)
        return PutAs(type, whole, place);
    const std::optional<Decimal> number = Decimal::Read(text);
    if (!number) {
        const auto truth = type == SQL_C_BIT ? TruthOf(Trimmed(text)) : std::nullopt;
        if (!truth)
            return Outcome::NoNumber;
        if (place)
            *static_cast<SQLCHAR*>(place) = *truth;
        return Outcome::Whole;
    }
    return type == SQL_C_NUMERIC ? PutNumeric(*number, place) : PutAs(type, *number, place);
}

} // namespace tarnwick::numbers
