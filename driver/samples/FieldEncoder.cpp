#include "FieldEncoder.h"

#include "FloatEncoder.h"
#include "MomentText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace tarnwick::samples
{

using Kind = records::StorageType::Kind;
using Sign = records::StorageType::Sign;

/// The digits of a number moved to the field's scale, without zeros in front.
struct FieldEncoder::Decimal {
    bool negative = false;
    std::string digits;
};

namespace
{

std::string Bytes(std::uint64_t bits, std::size_t count, bool highByteFirst)
{
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i, bits >>= 8)
        bytes[highByteFirst ? count - 1 - i : i] = static_cast<char>(bits & 0xFF);
    return bytes;
}

[[noreturn]] void RefuseLength(std::size_t needed, std::size_t length)
{
    throw EncodingError("it needs " + std::to_string(needed) + " bytes, and the field has " + std::to_string(length));
}

records::Moment ReadMoment(std::string_view text)
{
    const auto moment = ParseMoment(text);
    if (!moment)
        throw EncodingError("it is no date and no time");
    return *moment;
}

std::shared_ptr<const records::CodePage> PageOf(const records::StorageType& type,
                                                const std::shared_ptr<const records::CodePage>& filePage)
{
    if (type.utf16)
        return nullptr;
    return type.ebcdic && !filePage->IsEbcdic() ? records::CodePage::Find("EBCDIC-037") : filePage;
}

unsigned HexadecimalDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return static_cast<unsigned>(digit - '0');
    if (digit >= 'A' && digit <= 'F')
        return static_cast<unsigned>(digit - 'A') + 10;
    throw EncodingError("a character is no hexadecimal digit");
}

} // namespace

FieldEncoder::FieldEncoder(const records::Field& field, const std::shared_ptr<const records::CodePage>& page)
    : m_field(field), m_ebcdicDigits(page->IsEbcdic()), m_characters(PageOf(field.type, page))
{
}

std::string FieldEncoder::Encode(const SourceValue& value) const
{
    if (!value)
        return EncodeNull();
    if (m_field.isEncrypted)
        return EncodeBytes(*value);
    switch (m_field.type.kind) {
    case Kind::Text:
        return EncodeText(*value);
    case Kind::CountedText:
        return EncodeCountedText(*value);
    case Kind::ZeroText:
        return EncodeZeroText(*value);
    case Kind::Moment:
        return EncodeMoment(*value);
    case Kind::Digits:
        return EncodeDigits(ReadDecimal(*value));
    case Kind::Packed:
        return EncodePacked(ReadDecimal(*value));
    case Kind::Integer:
        return EncodeInteger(ReadDecimal(*value));
    case Kind::IeeeFloat:
    case Kind::VaxF:
    case Kind::VaxD:
    case Kind::VaxG:
    case Kind::Base16Float:
        return EncodeFloat(*value);
    case Kind::Boolean:
        return EncodeBoolean(ReadDecimal(*value));
    case Kind::Bytes:
        return EncodeBytes(*value);
    case Kind::Hexadecimal:
        return EncodeHexadecimal(*value);
    case Kind::VmsTime:
        return EncodeVmsTime(*value);
    case Kind::UnixTime:
        return EncodeUnixTime(*value);
    case Kind::Unknown:
        break;
    }
    throw EncodingError("the storage type is not known");
}

/// Only blanks say that a number of digits or a date is not there; any bytes of the other types are a value.
std::string FieldEncoder::EncodeNull() const
{
    const bool hasNull = m_field.type.kind == Kind::Moment || m_field.type.kind == Kind::Digits;
    if (!hasNull || m_field.isEncrypted)
        throw EncodingError("it is null, for which the storage type has no bytes");
    return std::string(m_field.length, m_ebcdicDigits ? '\x40' : ' ');
}

std::string FieldEncoder::Padded(std::string bytes, char filler) const
{
    if (bytes.size() > m_field.length)
        RefuseLength(bytes.size(), m_field.length);
    bytes.resize(m_field.length, filler);
    return bytes;
}

std::string FieldEncoder::EncodeText(std::string_view text) const
{
    std::string bytes = m_characters.Encode(text);
    if (bytes.size() > m_field.length)
        RefuseLength(bytes.size(), m_field.length);
    const std::string blank = m_characters.Encode(" ");
    while (bytes.size() + blank.size() <= m_field.length)
        bytes += blank;
    return Padded(std::move(bytes), '\0');
}

std::string FieldEncoder::EncodeCountedText(std::string_view text) const
{
    const std::string bytes = m_characters.Encode(text);
    return Padded(Bytes(bytes.size(), 2, false) + bytes, '\0');
}

std::string FieldEncoder::EncodeZeroText(std::string_view text) const
{
    if (text.find('\0') != std::string_view::npos)
        throw EncodingError("it holds the zero byte that ends the field's text");
    return Padded(m_characters.Encode(text) + '\0', '\0');
}

FieldEncoder::Decimal FieldEncoder::ReadDecimal(std::string_view text) const
{
    Decimal decimal;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        decimal.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const std::size_t point = std::min(text.find('.'), text.size());
    decimal.digits = std::string(text.substr(0, point));
    std::string behind(text.substr(std::min(point + 1, text.size())));
    if ((decimal.digits + behind).find_first_not_of("0123456789") != std::string::npos || point == 0)
        throw EncodingError("it is no decimal number");
    behind.erase(behind.find_last_not_of('0') + 1);
    const auto scale = static_cast<std::size_t>(std::max(m_field.scale, 0));
    if (behind.size() > scale)
        throw EncodingError("it has more digits behind the point than the field");
    behind.resize(scale, '0');
    decimal.digits += behind;
    for (int i = m_field.scale; i < 0 && decimal.digits != "0"; ++i) {
        if (decimal.digits.back() != '0')
            throw EncodingError("it ends in a digit that the field leaves out");
        decimal.digits.pop_back();
    }
    decimal.digits.erase(0, decimal.digits.find_first_not_of('0'));
    decimal.negative = decimal.negative && !decimal.digits.empty();
    return decimal;
}

/// A digit with the number's sign in its zone. Signs are overpunched as on punched cards, or a plain digit is positive
/// and one with bit 6 set negative; EBCDIC has the zones of the punched card in both.
char FieldEncoder::SignedDigit(char digit, bool negative) const
{
    const bool overpunched = m_field.typeName.ends_with("-LO") || m_field.typeName.ends_with("-RO");
    const int number = digit - '0';
    if (m_ebcdicDigits)
        return static_cast<char>((negative ? 0xD0 : overpunched ? 0xC0 : 0xF0) | number);
    if (!overpunched)
        return static_cast<char>(negative ? 'p' + number : digit);
    return (negative ? "}JKLMNOPQR" : "{ABCDEFGHI")[number];
}

std::string FieldEncoder::EncodeDigits(const Decimal& decimal) const
{
    const Sign sign = m_field.type.sign;
    const bool isSeparate = sign == Sign::LeadingSeparate || sign == Sign::TrailingSeparate;
    const bool needsPlace = isSeparate || (sign == Sign::InFront && decimal.negative);
    if (decimal.negative && sign == Sign::None)
        throw EncodingError("it is negative, and the field has no sign");
    const std::size_t needed = std::max<std::size_t>(decimal.digits.size(), 1) + (needsPlace ? 1 : 0);
    if (needed > m_field.length)
        RefuseLength(needed, m_field.length);
    std::string bytes = decimal.digits;
    bytes.insert(0, m_field.length - (needsPlace ? 1 : 0) - bytes.size(), '0');
    char& signedDigit = sign == Sign::LeadingZone ? bytes.front() : bytes.back();
    const bool inZone = sign == Sign::LeadingZone || sign == Sign::TrailingZone;
    const char zoned = SignedDigit(signedDigit, decimal.negative);
    if (m_ebcdicDigits)
        for (char& digit : bytes)
            digit = static_cast<char>(0xF0 | (digit - '0'));
    if (inZone)
        signedDigit = zoned;
    if (needsPlace) {
        const char plus = m_ebcdicDigits ? '\x4E' : '+';
        const char minus = m_ebcdicDigits ? '\x60' : '-';
        bytes.insert(sign == Sign::TrailingSeparate ? bytes.size() : 0, 1, decimal.negative ? minus : plus);
    }
    return bytes;
}

std::string FieldEncoder::EncodePacked(const Decimal& decimal) const
{
    const std::size_t room = records::DigitsOf(m_field);
    if (decimal.digits.size() > room)
        RefuseLength((decimal.digits.size() + (m_field.type.lastNibbleFree ? 2 : 1)) / 2, m_field.length);
    if (decimal.negative && m_field.type.sign == Sign::None)
        throw EncodingError("it is negative, and the field has no sign");
    std::string nibbles(room - decimal.digits.size(), 0);
    for (const char digit : decimal.digits)
        nibbles += static_cast<char>(digit - '0');
    if (m_field.type.lastNibbleFree)
        nibbles += static_cast<char>(m_field.type.sign == Sign::None ? 0xF : decimal.negative ? 0xD : 0xC);
    std::string bytes;
    for (std::size_t i = 0; i < nibbles.size(); i += 2)
        bytes += static_cast<char>(nibbles[i] << 4 | nibbles[i + 1]);
    return bytes;
}

std::string FieldEncoder::EncodeInteger(const Decimal& decimal) const
{
    std::uint64_t number = 0;
    const char* const end = decimal.digits.data() + decimal.digits.size();
    const bool isRead = decimal.digits.empty() || std::from_chars(decimal.digits.data(), end, number).ec == std::errc();
    const std::size_t bits = 8 * m_field.length;
    const std::uint64_t highest = bits >= 64 ? UINT64_MAX : (std::uint64_t{1} << bits) - 1;
    const std::uint64_t most =
        m_field.type.isUnsigned ? (decimal.negative ? 0 : highest) : highest / 2 + (decimal.negative ? 1 : 0);
    if (!isRead || number > most)
        throw EncodingError("the field's integers do not reach so far");
    return Bytes(decimal.negative ? 0 - number : number, m_field.length, m_field.type.highByteFirst);
}

std::string FieldEncoder::EncodeFloat(std::string_view text) const
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw EncodingError("it is no number");
    const auto bytes = samples::EncodeFloat(m_field.type.kind, m_field.type.highByteFirst, m_field.length, number);
    if (!bytes)
        throw EncodingError("the field's floating point numbers do not reach so far");
    return *bytes;
}

std::string FieldEncoder::EncodeBoolean(const Decimal& decimal) const
{
    if (!decimal.digits.empty() && (decimal.negative || decimal.digits != "1"))
        throw EncodingError("it is neither 0 nor 1");
    return std::string(m_field.length, decimal.digits.empty() ? '\0' : '\1');
}

std::string FieldEncoder::EncodeBytes(std::string_view bytes) const
{
    if (bytes.size() != m_field.length)
        RefuseLength(bytes.size(), m_field.length);
    return std::string(bytes);
}

std::string FieldEncoder::EncodeHexadecimal(std::string_view text) const
{
    if (text.size() != 2 * m_field.length)
        RefuseLength((text.size() + 1) / 2, m_field.length);
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes += static_cast<char>(HexadecimalDigit(text[i]) << 4 | HexadecimalDigit(text[i + 1]));
    return bytes;
}

std::string FieldEncoder::EncodeMoment(std::string_view text) const
{
    const std::string& format = m_field.format.empty() ? m_field.type.format : m_field.format;
    const records::Moment moment = ReadMoment(text);
    const std::string formatted = FormatMoment(moment, format);
    // A format may have no place for a part of the moment, or two digits for a year that needs four.
    records::Moment readBack;
    const bool isRead = records::DateFormat(format).Read(formatted, readBack) == records::DateFormat::Reading::Moment;
    std::string again;
    const bool hasDate = text.find('-') != std::string_view::npos;
    const bool hasTime = text.find(':') != std::string_view::npos;
    Write(readBack,
          hasDate && hasTime ? records::MomentPart::Timestamp
          : hasDate          ? records::MomentPart::Date
                             : records::MomentPart::Time,
          again);
    if (!isRead || again != text)
        throw EncodingError("the format " + format + " cannot show it");
    return EncodeText(formatted);
}

std::string FieldEncoder::EncodeVmsTime(std::string_view text) const
{
    constexpr std::int64_t unitsInSecond = 10'000'000;
    constexpr std::int64_t secondsTo1970 = 3'506'716'800;
    const records::Moment moment = ReadMoment(text);
    const std::int64_t seconds = UnixSeconds(moment) + secondsTo1970;
    if (seconds < 0)
        throw EncodingError("it lies before 17 November 1858");
    return Bytes(static_cast<std::uint64_t>(seconds * unitsInSecond + moment.hundredths * (unitsInSecond / 100)),
                 m_field.length, false);
}

std::string FieldEncoder::EncodeUnixTime(std::string_view text) const
{
    const std::int64_t seconds = UnixSeconds(ReadMoment(text));
    if (seconds != static_cast<std::int32_t>(seconds))
        throw EncodingError("it lies beyond the seconds that 4 bytes count");
    return Bytes(static_cast<std::uint64_t>(seconds), m_field.length, false);
}

} // namespace tarnwick::samples
