#pragma once

#include <string>
#include <string_view>

namespace tarnwick::records
{

/// How the bytes of a field hold its value: a row of `TW_LOCDT` read for its bytes rather than for its limits.
struct StorageType {
    enum class Kind {
        Unknown,
        Text,        ///< padded characters
        CountedText, ///< characters behind a count of 2 bytes, low byte first
        ZeroText,    ///< characters ended by a zero byte
        Digits,      ///< zoned: a digit to the byte
        Packed,      ///< a digit to the half byte
        Integer,     ///< binary, two's complement where it has a sign
        IeeeFloat,   ///< IEEE 754
        VaxF,        ///< F_floating
        VaxD,        ///< D_floating
        VaxG,        ///< G_floating
        Base16Float, ///< mainframe floating point
        Boolean,     ///< one byte
        Bytes,       ///< as they are
        Hexadecimal, ///< as they are, shown in hexadecimal digits
        Moment,      ///< text in a date or time format
        VmsTime,     ///< units of 100 nanoseconds since 17 November 1858
        UnixTime,    ///< seconds since 1 January 1970
    };
    /// Where a decimal number keeps its sign.
    enum class Sign {
        None,             ///< it is never negative
        InFront,          ///< a sign before the digits if there is one
        LeadingSeparate,  ///< always a sign before the digits
        TrailingSeparate, ///< always a sign behind the digits
        LeadingZone,      ///< in the first digit
        TrailingZone,     ///< in the last digit
        LastNibble,       ///< packed: the last half byte
    };

    /// Whether a field holds characters of a code page.
    bool IsCharacters() const
    {
        return kind == Kind::Text || kind == Kind::CountedText || kind == Kind::ZeroText || kind == Kind::Moment;
    }

    Kind kind = Kind::Unknown;
    Sign sign = Sign::None;
    bool isUnsigned = false;
    bool highByteFirst = false;
    bool ebcdic = false;         ///< characters are EBCDIC whatever the rest of the file is in
    bool utf16 = false;          ///< characters are UTF-16, low byte first
    bool lastNibbleFree = false; ///< packed: the last half byte holds no digit
    std::string format;          ///< of a date or time, if the type fixes one or proposes it

    bool operator==(const StorageType&) const = default;

    /// From the type's name, the SQL type that shows it, and its `ATTRIBUTES`.
    static StorageType Read(std::string_view name, std::string_view sqlType, std::string_view attributes);
};

} // namespace tarnwick::records
