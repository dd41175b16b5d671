// The forms in which columns show what the readers of a FieldDecoder found.

#include "FieldNumber.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace tarnwick::records
{

const char* FieldDecoder::ShowTextAsMoment(std::string_view text, Value& value, std::string& room) const
{
    Moment moment;
    switch (m_format->Read(text, moment)) {
    case DateFormat::Reading::Empty:
        value = Value::Null();
        return nullptr;
    case DateFormat::Reading::Wrong:
        return "they do not follow the field's format, or there is no such day or time";
    case DateFormat::Reading::Moment:
        break;
    }
    return ShowMoment(moment, value, room);
}

const char* FieldDecoder::ShowTextAsNumber(std::string_view text, Value& value, std::string& room) const
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        value = Value::Null();
        return nullptr;
    }
    text = text.substr(first, text.find_last_not_of(' ') - first + 1);
    Decimal decimal;
    if (text.front() == '+' || text.front() == '-') {
        decimal.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    bool hasPoint = false;
    bool hasDigit = false;
    for (const char c : text) {
        if (c == '.' && !hasPoint) {
            hasPoint = true;
            continue;
        }
        if (c < '0' || c > '9')
            return reasons::noDigit;
        if (decimal.magnitude >= PowerOfTen(mostDigits - 1) || decimal.scale >= mostDigits)
            return reasons::doesNotFit;
        decimal.magnitude = decimal.magnitude * 10 + static_cast<unsigned>(c - '0');
        decimal.scale += hasPoint ? 1 : 0;
        hasDigit = true;
    }
    return hasDigit ? ShowDecimal(decimal, value, room) : "it has no digits";
}

const char* FieldDecoder::ShowInteger(const Decimal& decimal, Value& value) const
{
    Magnitude magnitude = decimal.magnitude;
    if (decimal.scale > 0 && magnitude % PowerOfTen(decimal.scale) != 0)
        return reasons::hasFraction;
    if (decimal.scale > 0)
        magnitude /= PowerOfTen(decimal.scale);
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    for (int i = decimal.scale; i < 0 && magnitude != 0 && magnitude <= most; ++i)
        magnitude *= 10;
    if (magnitude > most + (decimal.negative ? 1u : 0u))
        return reasons::doesNotFit;
    const auto bits = static_cast<std::uint64_t>(magnitude);
    const auto number = static_cast<std::int64_t>(decimal.negative ? 0 - bits : bits);
    if (number < m_limits.least || number > m_limits.most)
        return reasons::doesNotFit;
    value = Value::Integer(number);
    return nullptr;
}

const char* FieldDecoder::ShowDecimal(const Decimal& decimal, Value& value, std::string& room) const
{
    switch (m_shown) {
    case Shown::Integer:
        return ShowInteger(decimal, value);
    case Shown::Real:
        value = Value::Real(ToReal(decimal.negative && decimal.magnitude != 0, decimal.magnitude, decimal.scale));
        return nullptr;
    case Shown::Decimal:
    case Shown::Text:
        WriteDecimal(decimal.negative && decimal.magnitude != 0, decimal.magnitude, decimal.scale, room);
        value = Value::Text(room);
        return nullptr;
    case Shown::Bit:
        value = Value::Integer(decimal.magnitude != 0 ? 1 : 0);
        return nullptr;
    case Shown::Date:
    case Shown::Time:
    case Shown::Timestamp: {
        if (decimal.negative && decimal.magnitude != 0)
            return "it is negative, and no date is";
        if (decimal.scale != 0)
            return "it has a scale, and no date has";
        WriteDecimal(false, decimal.magnitude, 0, room);
        if (room.size() < m_formatWidth)
            room.insert(0, m_formatWidth - room.size(), '0');
        const std::string text = room;
        return ShowTextAsMoment(text, value, room);
    }
    case Shown::Bytes:
        break;
    }
    return "a number cannot be shown as bytes";
}

const char* FieldDecoder::ShowReal(double real, Value& value, std::string& room) const
{
    if (m_shown == Shown::Real) {
        value = Value::Real(real);
        return nullptr;
    }
    if (m_shown == Shown::Integer) {
        constexpr double limit = 9223372036854775808.0;
        if (real < -limit || real >= limit)
            return reasons::doesNotFit;
        if (real != std::trunc(real))
            return reasons::hasFraction;
        const auto number = static_cast<std::int64_t>(real);
        if (number < m_limits.least || number > m_limits.most)
            return reasons::doesNotFit;
        value = Value::Integer(number);
        return nullptr;
    }
    std::array<char, 40> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), real, std::chars_format::general,
                                       static_cast<int>(exactRealDigits));
    room.assign(text.data(), written.ptr);
    value = Value::Text(room);
    return nullptr;
}

const char* FieldDecoder::ShowMoment(const Moment& moment, Value& value, std::string& room) const
{
    if (!moment.IsReal())
        return reasons::beyondYears;
    Write(moment, Part(), room);
    value = Value::Text(room);
    return nullptr;
}

} // namespace tarnwick::records
