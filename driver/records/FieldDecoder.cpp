#include "FieldDecoder.h"

#include "Decimal.h"
#include "Floats.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace tarnwick::records
{

using Kind = StorageType::Kind;
using Sign = StorageType::Sign;

/// A decimal number as a field holds it: `magnitude` / 10^`scale`.
struct FieldDecoder::Decimal {
    bool negative = false;
    Magnitude magnitude = 0;
    int scale = 0;
};

namespace
{

constexpr const char* doesNotFit = "the number is too large for its column";
constexpr const char* noDigit = "a character is no digit";
constexpr const char* noCharacters = "they are no characters of the file's code page";

/// The most digits that always fit 64 bits.
constexpr std::size_t shortDigits = 18;

unsigned ByteAt(std::string_view bytes, std::size_t position)
{
    return static_cast<unsigned char>(bytes[position]);
}

/// What a byte says as a digit of a zoned number.
struct ZonedDigit {
    enum class Zone : unsigned char { NoDigit, Plain, Positive, Negative };
    Zone zone = Zone::NoDigit;
    unsigned char digit = 0;
};

using ZonedDigits = std::array<ZonedDigit, 256>;
using Zone = ZonedDigit::Zone;

constexpr void SetRun(ZonedDigits& table, unsigned first, unsigned char digit, unsigned count, Zone zone)
{
    for (unsigned i = 0; i < count; ++i)
        table[first + i] = {zone, static_cast<unsigned char>(digit + i)};
}

/// In ASCII a sign is an overpunched digit, as its punched card would print ({ and A to I, } and J to R, and other
/// characters that stand for the two zeros), or a negative digit with bit 6 set (p to y).
constexpr ZonedDigits MakeAsciiDigits()
{
    ZonedDigits table{};
    SetRun(table, '0', 0, 10, Zone::Plain);
    SetRun(table, 'A', 1, 9, Zone::Positive);
    SetRun(table, 'J', 1, 9, Zone::Negative);
    SetRun(table, 'p', 0, 10, Zone::Negative);
    for (const char zero : {'{', '[', '?'})
        SetRun(table, static_cast<unsigned char>(zero), 0, 1, Zone::Positive);
    for (const char zero : {'}', ']', '!', ':'})
        SetRun(table, static_cast<unsigned char>(zero), 0, 1, Zone::Negative);
    return table;
}

/// In EBCDIC the zone is a half byte like the sign of a packed number.
constexpr ZonedDigits MakeEbcdicDigits()
{
    ZonedDigits table{};
    SetRun(table, 0xF0, 0, 10, Zone::Plain);
    SetRun(table, 0xA0, 0, 10, Zone::Positive);
    SetRun(table, 0xC0, 0, 10, Zone::Positive);
    SetRun(table, 0xE0, 0, 10, Zone::Positive);
    SetRun(table, 0xB0, 0, 10, Zone::Negative);
    SetRun(table, 0xD0, 0, 10, Zone::Negative);
    return table;
}

constexpr ZonedDigits asciiDigits = MakeAsciiDigits();
constexpr ZonedDigits ebcdicDigits = MakeEbcdicDigits();

std::string_view TrimmedEnd(std::string_view text)
{
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0'))
        text.remove_suffix(1);
    return text;
}

bool IsOnly(std::string_view bytes, char c)
{
    return bytes.find_first_not_of(c) == std::string_view::npos;
}

std::optional<bool> IsNegativeNibble(unsigned nibble)
{
    if (nibble < 0xA)
        return std::nullopt;
    return nibble == 0xB || nibble == 0xD;
}

std::shared_ptr<const CodePage> PageOf(const StorageType& type, const std::shared_ptr<const CodePage>& filePage)
{
    if (type.utf16)
        return CodePage::Utf16();
    return type.ebcdic && !filePage->IsEbcdic() ? CodePage::Find("EBCDIC-037") : filePage;
}

} // namespace

bool Field::operator==(const Field& other) const
{
    return name == other.name && typeName == other.typeName && offset == other.offset && length == other.length &&
           scale == other.scale && format == other.format && isEncrypted == other.isEncrypted;
}

std::size_t DigitsOf(const Field& field)
{
    constexpr std::array<std::size_t, 9> binaryDigits = {0, 3, 5, 8, 10, 13, 15, 17, 20};
    switch (field.type.kind) {
    case Kind::Digits:
        return field.length;
    case Kind::Packed:
        return 2 * field.length - (field.type.lastNibbleFree ? 1 : 0);
    case Kind::Integer:
        return field.type.isUnsigned || field.length != 8 ? binaryDigits[std::min<std::size_t>(field.length, 8)] : 19;
    default:
        return 0;
    }
}

FieldDecoder::FieldDecoder(const Field& field, Shown shown, const std::shared_ptr<const CodePage>& page)
    : m_type(field.type), m_scale(field.scale), m_shown(shown), m_page(PageOf(field.type, page)),
      m_ebcdicDigits(page->IsEbcdic()), m_formatWidth(0), m_read(ReaderOf(field))
{
    const std::string& format = field.format.empty() ? field.type.format : field.format;
    if (format.empty())
        return;
    m_format.emplace(format);
    m_formatWidth = format.size();
}

FieldDecoder::Read FieldDecoder::ReaderOf(const Field& field)
{
    if (field.isEncrypted)
        return &FieldDecoder::RefuseEncrypted;
    switch (field.type.kind) {
    case Kind::Text:
    case Kind::Moment:
        return &FieldDecoder::ReadText;
    case Kind::CountedText:
        return &FieldDecoder::ReadCountedText;
    case Kind::ZeroText:
        return &FieldDecoder::ReadZeroText;
    case Kind::Digits:
        return &FieldDecoder::ReadDigits;
    case Kind::Packed:
        return &FieldDecoder::ReadPacked;
    case Kind::Integer:
        return &FieldDecoder::ReadInteger;
    case Kind::IeeeFloat:
    case Kind::VaxF:
    case Kind::VaxD:
    case Kind::VaxG:
    case Kind::Base16Float:
        return &FieldDecoder::ReadFloat;
    case Kind::Boolean:
        return &FieldDecoder::ReadBoolean;
    case Kind::Bytes:
    case Kind::Hexadecimal:
        return &FieldDecoder::ReadBytes;
    case Kind::VmsTime:
        return &FieldDecoder::ReadVmsTime;
    case Kind::UnixTime:
        return &FieldDecoder::ReadUnixTime;
    case Kind::Unknown:
        break;
    }
    return &FieldDecoder::RefuseType;
}

bool FieldDecoder::MayEndEarly() const
{
    return m_type.kind == Kind::Text || m_type.kind == Kind::ZeroText || m_type.kind == Kind::Moment;
}

MomentPart FieldDecoder::Part() const
{
    if (m_shown == Shown::Date)
        return MomentPart::Date;
    return m_shown == Shown::Time ? MomentPart::Time : MomentPart::Timestamp;
}

const char* FieldDecoder::RefuseEncrypted(std::string_view, Value&, std::string&) const
{
    return "the field is encrypted, and there is no key to read it";
}

const char* FieldDecoder::RefuseType(std::string_view, Value&, std::string&) const
{
    return "the storage type is not known";
}

const char* FieldDecoder::ReadText(std::string_view bytes, Value& value, std::string& room) const
{
    std::string_view text;
    if (!m_page->Convert(bytes, room, text))
        return noCharacters;
    return ShowText(TrimmedEnd(text), text.data() == bytes.data(), value, room);
}

const char* FieldDecoder::ReadCountedText(std::string_view bytes, Value& value, std::string& room) const
{
    if (bytes.size() < 2)
        return "the field has no place for a count of 2 bytes";
    const std::size_t count = ByteAt(bytes, 0) + 256 * ByteAt(bytes, 1);
    if (count > bytes.size() - 2)
        return "the count is beyond the field's end";
    std::string_view text;
    if (!m_page->Convert(bytes.substr(2, count), room, text))
        return noCharacters;
    return ShowText(text, text.data() == bytes.data() + 2, value, room);
}

const char* FieldDecoder::ReadZeroText(std::string_view bytes, Value& value, std::string& room) const
{
    std::string_view text;
    if (!m_page->Convert(bytes.substr(0, bytes.find('\0')), room, text))
        return noCharacters;
    return ShowText(text, text.data() == bytes.data(), value, room);
}

const char* FieldDecoder::ReadDigits(std::string_view bytes, Value& value, std::string& room) const
{
    const char blank = m_ebcdicDigits ? '\x40' : ' ';
    if (IsOnly(bytes, blank)) {
        value = Value::Null();
        return nullptr;
    }
    const char plus = m_ebcdicDigits ? '\x4E' : '+';
    const char minus = m_ebcdicDigits ? '\x60' : '-';
    const char point = m_ebcdicDigits ? '\x4B' : '.';
    const ZonedDigits& table = m_ebcdicDigits ? ebcdicDigits : asciiDigits;
    Decimal decimal{false, 0, m_scale};
    const auto takeSign = [&](char c) {
        decimal.negative = c == minus;
        return c == plus || c == minus || c == blank;
    };
    if (m_type.sign == Sign::InFront) {
        while (bytes.front() == blank)
            bytes.remove_prefix(1);
        while (bytes.back() == blank)
            bytes.remove_suffix(1);
        if (takeSign(bytes.front()))
            bytes.remove_prefix(1);
    } else if (m_type.sign == Sign::LeadingSeparate) {
        if (!takeSign(bytes.front()))
            return "it does not begin with a sign";
        bytes.remove_prefix(1);
    } else if (m_type.sign == Sign::TrailingSeparate) {
        if (!takeSign(bytes.back()))
            return "it does not end in a sign";
        bytes.remove_suffix(1);
    }
    if (bytes.empty())
        return "it has no digits";
    if (bytes.size() > mostDigits)
        return doesNotFit;
    const std::size_t signedDigit = m_type.sign == Sign::LeadingZone    ? 0
                                    : m_type.sign == Sign::TrailingZone ? bytes.size() - 1
                                                                        : bytes.size();
    bool hasPoint = false;
    std::uint64_t low = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == point && m_type.sign == Sign::InFront && !hasPoint && bytes.size() > 1) {
            hasPoint = true;
            decimal.scale = static_cast<int>(bytes.size() - i) - 1;
            continue;
        }
        const ZonedDigit digit = table[ByteAt(bytes, i)];
        if (digit.zone != Zone::Plain) {
            if (i != signedDigit || digit.zone == Zone::NoDigit)
                return noDigit;
            decimal.negative = digit.zone == Zone::Negative;
        }
        if (i < shortDigits)
            low = low * 10 + digit.digit;
        else
            decimal.magnitude = (i == shortDigits ? Magnitude{low} : decimal.magnitude) * 10 + digit.digit;
    }
    if (bytes.size() <= shortDigits)
        decimal.magnitude = low;
    return ShowDecimal(decimal, value, room);
}

const char* FieldDecoder::ReadPacked(std::string_view bytes, Value& value, std::string& room) const
{
    Decimal decimal{false, 0, m_scale};
    const std::size_t whole = bytes.size() - (m_type.lastNibbleFree ? 1 : 0);
    if (2 * whole + 1 > mostDigits)
        return doesNotFit;
    constexpr const char* noHalfByte = "a half byte is no digit";
    std::uint64_t low = 0;
    for (std::size_t i = 0; i < whole; ++i) {
        const unsigned byte = ByteAt(bytes, i);
        const unsigned two = byte - 6 * (byte >> 4);
        if ((byte >> 4) > 9 || (byte & 0xF) > 9)
            return noHalfByte;
        if (i == shortDigits / 2) {
            decimal.magnitude = low;
            low = 0;
        }
        if (i < shortDigits / 2)
            low = low * 100 + two;
        else
            decimal.magnitude = decimal.magnitude * 100 + two;
    }
    if (whole <= shortDigits / 2)
        decimal.magnitude = low;
    if (m_type.lastNibbleFree) {
        const unsigned byte = ByteAt(bytes, whole);
        if ((byte >> 4) > 9)
            return noHalfByte;
        const auto negative = IsNegativeNibble(byte & 0xF);
        if (!negative)
            return "the last half byte is no sign";
        if (*negative && m_type.sign == Sign::None)
            return "it is negative, and its type has no sign";
        decimal.magnitude = decimal.magnitude * 10 + (byte >> 4);
        decimal.negative = *negative;
    }
    return ShowDecimal(decimal, value, room);
}

const char* FieldDecoder::ReadInteger(std::string_view bytes, Value& value, std::string& room) const
{
    if (bytes.size() > 8)
        return doesNotFit;
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bits = bits << 8 | ByteAt(bytes, m_type.highByteFirst ? i : bytes.size() - 1 - i);
    const std::uint64_t signBit = std::uint64_t{1} << (8 * bytes.size() - 1);
    Decimal decimal{false, bits, m_scale};
    if (!m_type.isUnsigned && (bits & signBit) != 0) {
        decimal.negative = true;
        decimal.magnitude = (signBit - 1 - (bits & (signBit - 1))) + 1;
    }
    return ShowDecimal(decimal, value, room);
}

const char* FieldDecoder::ReadFloat(std::string_view bytes, Value& value, std::string& room) const
{
    const auto real = DecodeFloat(m_type.kind, m_type.highByteFirst, bytes);
    return real ? ShowReal(*real, value, room) : "they are no floating point number";
}

const char* FieldDecoder::ReadBoolean(std::string_view bytes, Value& value, std::string& room) const
{
    return ShowDecimal({false, ByteAt(bytes, 0) == 0 ? 0u : 1u, 0}, value, room);
}

const char* FieldDecoder::ReadBytes(std::string_view bytes, Value& value, std::string& room) const
{
    if (m_shown == Shown::Bytes) {
        value = Value::Bytes(bytes);
        return nullptr;
    }
    if (m_shown != Shown::Text)
        return "bytes are no number and no date";
    constexpr char digits[] = "0123456789ABCDEF";
    room.clear();
    for (const char byte : bytes) {
        room += digits[static_cast<unsigned char>(byte) >> 4];
        room += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    value = Value::Text(room, false);
    return nullptr;
}

const char* FieldDecoder::ReadVmsTime(std::string_view bytes, Value& value, std::string& room) const
{
    constexpr std::int64_t unitsInSecond = 10'000'000;
    constexpr std::int64_t secondsTo1970 = 3'506'716'800;
    std::uint64_t units = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        units = units << 8 | ByteAt(bytes, i);
    const auto time = static_cast<std::int64_t>(units);
    if (bytes.size() != 8 || time < 0)
        return "it is a span of time and no moment";
    Moment moment = Moment::FromUnixSeconds(time / unitsInSecond - secondsTo1970);
    moment.hundredths = static_cast<int>(time % unitsInSecond / (unitsInSecond / 100));
    return ShowMoment(moment, value, room);
}

const char* FieldDecoder::ReadUnixTime(std::string_view bytes, Value& value, std::string& room) const
{
    std::uint32_t bits = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        bits = bits << 8 | ByteAt(bytes, i);
    return ShowMoment(Moment::FromUnixSeconds(static_cast<std::int32_t>(bits)), value, room);
}

const char* FieldDecoder::ShowText(std::string_view text, bool inRecord, Value& value, std::string& room) const
{
    if (m_shown == Shown::Text) {
        value = Value::Text(text, inRecord);
        return nullptr;
    }
    if (m_shown == Shown::Bytes) {
        value = Value::Bytes(text);
        value.inRecord = inRecord;
        return nullptr;
    }
    return IsMoment() ? ShowTextAsMoment(text, value, room) : ShowTextAsNumber(text, value, room);
}

const char* FieldDecoder::ShowTextAsMoment(std::string_view text, Value& value, std::string& room) const
{
    if (!m_format)
        return "the field has no format";
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
    text.remove_prefix(first);
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
            return noDigit;
        if (decimal.magnitude >= PowerOfTen(mostDigits - 1) || decimal.scale >= mostDigits)
            return doesNotFit;
        decimal.magnitude = decimal.magnitude * 10 + static_cast<unsigned>(c - '0');
        decimal.scale += hasPoint ? 1 : 0;
        hasDigit = true;
    }
    return hasDigit ? ShowDecimal(decimal, value, room) : "it has no digits";
}

const char* FieldDecoder::ShowDecimal(const Decimal& decimal, Value& value, std::string& room) const
{
    switch (m_shown) {
    case Shown::Integer: {
        Magnitude magnitude = decimal.magnitude;
        if (decimal.scale > 0 && magnitude % PowerOfTen(decimal.scale) != 0)
            return "it has digits behind the point, and its column has none";
        if (decimal.scale > 0)
            magnitude /= PowerOfTen(decimal.scale);
        for (int i = decimal.scale; i < 0 && magnitude != 0; ++i)
            if ((magnitude *= 10) > std::numeric_limits<std::uint64_t>::max())
                return doesNotFit;
        constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        if (magnitude > most + (decimal.negative ? 1u : 0u))
            return doesNotFit;
        const auto bits = static_cast<std::uint64_t>(magnitude);
        value = Value::Integer(static_cast<std::int64_t>(decimal.negative ? 0 - bits : bits));
        return nullptr;
    }
    case Shown::Real:
        value = Value::Real(ToReal(decimal.negative && decimal.magnitude != 0, decimal.magnitude, decimal.scale));
        return nullptr;
    case Shown::Decimal:
    case Shown::Text:
        WriteDecimal(decimal.negative && decimal.magnitude != 0, decimal.magnitude, decimal.scale, room);
        value = Value::Text(room, false);
        return nullptr;
    case Shown::Bit:
        value = Value::Integer(decimal.magnitude != 0 ? 1 : 0);
        return nullptr;
    case Shown::Date:
    case Shown::Time:
    case Shown::Timestamp: {
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
        if (real != std::trunc(real) || real < -limit || real >= limit)
            return doesNotFit;
        value = Value::Integer(static_cast<std::int64_t>(real));
        return nullptr;
    }
    if (m_shown != Shown::Text && m_shown != Shown::Decimal)
        return "a floating point number is no date and no run of bytes";
    std::array<char, 40> text;
    const int length = std::snprintf(text.data(), text.size(), "%.15g", real);
    room.assign(text.data(), static_cast<std::size_t>(length));
    value = Value::Text(room, false);
    return nullptr;
}

const char* FieldDecoder::ShowMoment(const Moment& moment, Value& value, std::string& room) const
{
    if (!IsMoment() && m_shown != Shown::Text)
        return "a date is no number";
    if (!moment.IsReal())
        return "it is beyond the years that a date can show";
    Write(moment, Part(), room);
    value = Value::Text(room, false);
    return nullptr;
}

} // namespace tarnwick::records
