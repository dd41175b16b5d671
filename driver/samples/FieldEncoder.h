#pragma once

#include "CharacterEncoder.h"
#include "FieldDecoder.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarnwick::samples
{

/// Why a value cannot be written into its place in a record.
class EncodingError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// A value as an SQL client sees it: text, the digits of a number with its sign and point, `YYYY-MM-DD` and `hh:mm:ss`,
/// or bytes. Nothing is a null.
using SourceValue = std::optional<std::string>;

/// Puts values into one field: the counterpart of `records::FieldDecoder`, which gives them back as they were.
///
/// The bytes of an encrypted field are taken as they are, since only who holds the key can make them.
class FieldEncoder
{
public:
    /// `page` is that of the file.
    FieldEncoder(const records::Field& field, const std::shared_ptr<const records::CodePage>& page);

    const records::Field& Target() const { return m_field; }

    /// The field's bytes, exactly as many as it is long. Throws EncodingError for a value that does not fit, and for a
    /// null where the storage type has none.
    std::string Encode(const SourceValue& value) const;

private:
    struct Decimal;

    std::string EncodeNull() const;
    std::string EncodeText(std::string_view text) const;
    std::string EncodeCountedText(std::string_view text) const;
    std::string EncodeZeroText(std::string_view text) const;
    std::string EncodeDigits(const Decimal& decimal) const;
    std::string EncodePacked(const Decimal& decimal) const;
    std::string EncodeInteger(const Decimal& decimal) const;
    std::string EncodeFloat(std::string_view text) const;
    std::string EncodeBoolean(const Decimal& decimal) const;
    std::string EncodeBytes(std::string_view bytes) const;
    std::string EncodeHexadecimal(std::string_view text) const;
    std::string EncodeMoment(std::string_view text) const;
    std::string EncodeVmsTime(std::string_view text) const;
    std::string EncodeUnixTime(std::string_view text) const;

    Decimal ReadDecimal(std::string_view text) const;
    char SignedDigit(char digit, bool negative) const;
    std::string Padded(std::string bytes, char filler) const;

    records::Field m_field;
    bool m_ebcdicDigits;
    CharacterEncoder m_characters;
};

} // namespace tarnwick::samples
