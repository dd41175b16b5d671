#include "FieldDecoder.h"

#include "Bits.h"
#include "FieldNumber.h"
#include "Floats.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tarnwick::records
{

using Kind = StorageType::Kind;
using Sign = StorageType::Sign;

namespace
{

/// The first second of the year 1 and the last of the year 9999, in the count from 1970.
constexpr std::int64_t firstSecond = -62'135'596'800;
constexpr std::int64_t lastSecond = 253'402'300'799;

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

bool IsFloat(Kind kind)
{
    return kind == Kind::IeeeFloat || kind == Kind::VaxF || kind == Kind::VaxD || kind == Kind::VaxG ||
           kind == Kind::Base16Float;
}

} // namespace

std::size_t DigitsOf(const Field& field)
{
    constexpr std::array<std::size_t, 9> binaryDigits = {0, 3, 5, 8, 10, 13, 15, 17, 20};
    const Sign sign = field.type.sign;
    switch (field.type.kind) {
    case Kind::Digits:
        return sign == Sign::LeadingSeparate || sign == Sign::TrailingSeparate
                   ? std::max<std::size_t>(field.length, 1) - 1
                   : field.length;
    case Kind::Text:
    case Kind::ZeroText:
        return field.length / (field.type.utf16 ? 2 : 1);
    case Kind::CountedText:
        return field.length < 2 ? 0 : (field.length - 2) / (field.type.utf16 ? 2 : 1);
    case Kind::Packed:
        return field.length == 0 ? 0 : 2 * field.length - (field.type.lastNibbleFree ? 1 : 0);
    case Kind::Integer:
        return field.type.isUnsigned || field.length != 8 ? binaryDigits[std::min<std::size_t>(field.length, 8)] : 19;
    default:
        return 0;
    }
}

std::size_t CharactersOf(const Field& field)
{
    constexpr std::size_t longestReal = 24;
    constexpr std::size_t longestMoment = 22;
    const std::size_t digits = DigitsOf(field);
    const auto scale = static_cast<std::size_t>(std::abs(field.scale));
    switch (field.type.kind) {
    case Kind::Text:
    case Kind::ZeroText:
    case Kind::CountedText:
        return digits;
    case Kind::Digits:
    case Kind::Packed:
    case Kind::Integer:
        // A sign and a point, behind which a number may be shorter than its scale and before which there is a digit.
        return 2 + (field.scale < 0 ? digits + scale : std::max(digits, scale + 1));
    case Kind::IeeeFloat:
    case Kind::VaxF:
    case Kind::VaxD:
    case Kind::VaxG:
    case Kind::Base16Float:
        return longestReal;
    case Kind::Bytes:
    case Kind::Hexadecimal:
        return 2 * field.length;
    case Kind::VmsTime:
    case Kind::UnixTime:
        return longestMoment;
    default:
        return field.length;
    }
}

FieldDecoder::FieldDecoder(const Field& field, Shown shown, const std::shared_ptr<const CodePage>& page,
                           IntegerLimits limits)
    : m_offset(field.offset), m_length(field.length), m_type(field.type), m_scale(field.scale), m_shown(shown),
      m_limits(limits), m_page(PageOf(field.type, page)), m_ebcdicDigits(page->IsEbcdic())
{
    const std::string& format = field.format.empty() ? field.type.format : field.format;
    if (!format.empty())
        m_format.emplace(format);
    m_formatWidth = format.size();
    m_problem = ProblemOf(field);
    m_read = m_problem ? &FieldDecoder::Refuse : ReaderOf(field.type.kind);
}

const char* FieldDecoder::ProblemOf(const Field& field) const
{
    const Kind kind = field.type.kind;
    if (field.isEncrypted)
        return "the field is encrypted, and there is no key to read it";
    if (kind == Kind::Unknown)
        return "the storage type is not known";
    if (m_shown == Shown::Bytes)
        return nullptr;
    if (m_type.IsCharacters() && !m_page)
        return "this system cannot convert its code page";
    if (kind == Kind::Bytes || kind == Kind::Hexadecimal)
        return m_shown == Shown::Text ? nullptr : "bytes are no number and no date";
    if (kind == Kind::VmsTime || kind == Kind::UnixTime)
        return m_shown == Shown::Text || IsMoment() ? nullptr : "a date is no number";
    if (IsFloat(kind) && (IsMoment() || m_shown == Shown::Bit))
        return "a floating point number is no date and no bit";
    if (!IsMoment())
        return nullptr;
    if (!m_format)
        return "the field has no format";
    if (m_shown == Shown::Time)
        return m_format->HasTime() ? nullptr : "the field's format has no time";
    return m_format->HasYear() ? nullptr : "the field's format has no year";
}

FieldDecoder::Read FieldDecoder::ReaderOf(Kind kind) const
{
    if (m_shown == Shown::Bytes)
        return &FieldDecoder::ReadRaw;
    switch (kind) {
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
    return &FieldDecoder::Refuse;
}

bool FieldDecoder::MayEndEarly() const
{
    return m_type.IsCharacters() || IsByteRun() || (m_type.kind == Kind::Digits && m_type.sign == Sign::InFront);
}

bool FieldDecoder::MayBeCut() const
{
    return IsByteRun() || (m_type.IsCharacters() && m_shown == Shown::Text);
}

bool FieldDecoder::IsByteRun() const
{
    return m_shown == Shown::Bytes || m_type.kind == Kind::Bytes || m_type.kind == Kind::Hexadecimal;
}

MomentPart FieldDecoder::Part() const
{
    if (m_shown == Shown::Date)
        return MomentPart::Date;
    return m_shown == Shown::Time ? MomentPart::Time : MomentPart::Timestamp;
}

const char* FieldDecoder::Refuse(std::string_view, Value&, std::string&) const
{
    return m_problem;
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
        return reasons::doesNotFit;
    const std::size_t signedDigit = m_type.sign == Sign::LeadingZone    ? 0
                                    : m_type.sign == Sign::TrailingZone ? bytes.size() - 1
                                                                        : bytes.size();
    bool hasPoint = false;
    std::uint64_t low = 0;
    std::size_t digits = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == point && m_type.sign == Sign::InFront && !hasPoint && bytes.size() > 1) {
            hasPoint = true;
            decimal.scale = static_cast<int>(bytes.size() - i) - 1;
            continue;
        }
        const ZonedDigit digit = table[ByteAt(bytes, i)];
        if (digit.zone != Zone::Plain) {
            if (i != signedDigit || digit.zone == Zone::NoDigit)
                return reasons::noDigit;
            decimal.negative = digit.zone == Zone::Negative;
        }
        if (digits < shortDigits)
            low = low * 10 + digit.digit;
        else
            decimal.magnitude = (digits == shortDigits ? Magnitude{low} : decimal.magnitude) * 10 + digit.digit;
        ++digits;
    }
    if (digits <= shortDigits)
        decimal.magnitude = low;
    return ShowDecimal(decimal, value, room);
}

const char* FieldDecoder::ReadPacked(std::string_view bytes, Value& value, std::string& room) const
{
    Decimal decimal{false, 0, m_scale};
    const std::size_t whole = bytes.size() - (m_type.lastNibbleFree ? 1 : 0);
    if (2 * whole + 1 > mostDigits)
        return reasons::doesNotFit;
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
        return reasons::doesNotFit;
    const std::uint64_t bits = BitsOf(bytes, m_type.highByteFirst);
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
    return ShowDecimal({false, IsOnly(bytes, '\0') ? 0u : 1u, 0}, value, room);
}

const char* FieldDecoder::ReadBytes(std::string_view bytes, Value& value, std::string& room) const
{
    room.clear();
    for (const char byte : bytes)
        AppendHexadecimal(byte, room);
    value = Value::Text(room);
    return nullptr;
}

const char* FieldDecoder::ReadVmsTime(std::string_view bytes, Value& value, std::string& room) const
{
    constexpr std::int64_t unitsInSecond = 10'000'000;
    constexpr std::int64_t secondsTo1970 = 3'506'716'800;
    if (bytes.size() != 8)
        return "the field is not of 8 bytes";
    const auto time = static_cast<std::int64_t>(BitsOf(bytes, m_type.highByteFirst));
    if (time < 0)
        return "it is a span of time and no moment";
    Moment moment = Moment::FromUnixSeconds(time / unitsInSecond - secondsTo1970);
    moment.hundredths = static_cast<int>(time % unitsInSecond / (unitsInSecond / 100));
    return ShowMoment(moment, value, room);
}

const char* FieldDecoder::ReadUnixTime(std::string_view bytes, Value& value, std::string& room) const
{
    if (bytes.size() > 8)
        return reasons::doesNotFit;
    const std::uint64_t signBit = std::uint64_t{1} << (8 * bytes.size() - 1);
    const std::uint64_t bits = BitsOf(bytes, m_type.highByteFirst);
    const auto seconds = static_cast<std::int64_t>((bits ^ signBit) - signBit);
    if (seconds < firstSecond || seconds > lastSecond)
        return reasons::beyondYears;
    return ShowMoment(Moment::FromUnixSeconds(seconds), value, room);
}

} // namespace tarnwick::records
