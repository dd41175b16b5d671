#pragma once

#include "CodePage.h"
#include "DateFormat.h"
#include "StorageType.h"
#include "Value.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// A field as the catalog lays it out in its record.
struct Field {
    std::string name;
    std::string typeName; ///< `LOCAL_TYPE_NAME`
    StorageType type;
    std::size_t offset = 0; ///< in bytes
    std::size_t length = 0; ///< in bytes
    int scale = 0;          ///< digits behind the point of a number without one; below zero, zeros left out at its end
    std::string format;     ///< of a date or time
    bool isEncrypted = false;

    bool operator==(const Field&) const = default;
};

/// The form in which a column shows its field.
enum class Shown {
    Integer, ///< of 64 bits or, in the limits of its column, fewer
    Real,
    Decimal, ///< the number's digits as text, with all that a floating point number would lose
    Text,
    Bytes,
    Bit,
    Date,
    Time,
    Timestamp,
};

/// What an integer column holds.
struct IntegerLimits {
    std::int64_t least = std::numeric_limits<std::int64_t>::min();
    std::int64_t most = std::numeric_limits<std::int64_t>::max();

    bool operator==(const IntegerLimits&) const = default;
};

/// The most decimal digits that a floating point number of 8 bytes gives back as they were.
constexpr std::size_t exactRealDigits = 15;

/// The digits that a number in the field can have, if it is text, its characters; 0 for a field that holds no decimal
/// number.
std::size_t DigitsOf(const Field& field);

/// The most characters that the text of the field's value has, by ODBC's count, in which one beyond the basic plane is
/// two; a page whose bytes stand for several characters each may have more.
std::size_t CharactersOf(const Field& field);

/// Decodes one field for one column.
///
/// Nothing but the bytes given is read. No bytes, blanks where a number or a date would stand, and dates of only zeros
/// in characters or digits, are null; a moment that is counted in binary has a zero like any other.
class FieldDecoder
{
public:
    /// `page` is that of the file.
    FieldDecoder(const Field& field, Shown shown, const std::shared_ptr<const CodePage>& page,
                 IntegerLimits limits = {});

    /// Why no bytes of the field can be a value of the column; null if some can.
    const char* Problem() const { return m_problem; }

    /// The field's bytes in a record: fewer than its length where the record ends inside it, none where it ends before.
    std::string_view In(std::string_view record) const
    {
        return m_offset < record.size() ? record.substr(m_offset, m_length) : std::string_view();
    }

    /// Whether all bytes of the field are there, or none: then it is null.
    bool IsWhole(std::string_view bytes) const { return bytes.size() >= m_length || bytes.empty(); }

    /// Decodes the field's bytes. Null, or why they are no value; the text completes "the bytes ... cannot be read as
    /// INTEGER-4: ". `room` is lent for text and bytes that are not in the record as such.
    const char* Decode(std::string_view bytes, Value& value, std::string& room) const
    {
        if (bytes.empty()) {
            value = Value::Null();
            return nullptr;
        }
        return (this->*m_read)(bytes, value, room);
    }

    /// Whether a record may end inside the field, as lines do whose blanks at the end were left out, and records whose
    /// last bytes are as many as there are.
    bool MayEndEarly() const;

    /// Whether what is there of the field is shown where the file was cut inside it: the beginning of a text or of
    /// bytes is, that of a number or a date may be another one.
    bool MayBeCut() const;

    /// Decodes what is there of a field that may be cut: of a text its whole characters. Else as `Decode`.
    const char* DecodeBeginning(std::string_view bytes, Value& value, std::string& room) const;

private:
    struct Decimal;
    using Read = const char* (FieldDecoder::*)(std::string_view, Value&, std::string&) const;

    const char* ProblemOf(const Field& field) const;
    Read ReaderOf(StorageType::Kind kind) const;

    const char* ReadText(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadCountedText(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadCharacters(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadZeroText(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadDigits(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadPacked(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadInteger(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadFloat(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadBoolean(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadBytes(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadVmsTime(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadUnixTime(std::string_view bytes, Value& value, std::string& room) const;
    const char* ReadRaw(std::string_view bytes, Value& value, std::string& room) const;
    const char* Refuse(std::string_view bytes, Value& value, std::string& room) const;

    const char* ShowInteger(const Decimal& decimal, Value& value) const;
    const char* ShowText(std::string_view text, Value& value, std::string& room) const;
    const char* ShowTextAsNumber(std::string_view text, Value& value, std::string& room) const;
    const char* ShowTextAsMoment(std::string_view text, Value& value, std::string& room) const;
    const char* ShowDecimal(const Decimal& decimal, Value& value, std::string& room) const;
    const char* ShowReal(double real, Value& value, std::string& room) const;
    const char* ShowMoment(const Moment& moment, Value& value, std::string& room) const;

    bool IsMoment() const { return m_shown == Shown::Date || m_shown == Shown::Time || m_shown == Shown::Timestamp; }
    bool IsByteRun() const;
    MomentPart Part() const;

    std::size_t m_offset;
    std::size_t m_length;
    StorageType m_type;
    int m_scale;
    Shown m_shown;
    IntegerLimits m_limits;
    std::shared_ptr<const CodePage> m_page;
    bool m_ebcdicDigits;
    std::optional<DateFormat> m_format;
    std::size_t m_formatWidth = 0;
    const char* m_problem;
    Read m_read;
};

} // namespace tarnwick::records
