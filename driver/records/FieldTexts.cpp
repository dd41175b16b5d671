// What a FieldDecoder reads of characters, and of bytes that are shown as they are.

#include "Bits.h"
#include "FieldNumber.h"

#include <bit>

namespace tarnwick::records
{

using Kind = StorageType::Kind;

namespace
{

constexpr const char* noCharacters = "they are no characters of the file's code page";

constexpr std::size_t bytesOfCount = 2;

std::string_view TrimmedEnd(std::string_view text)
{
    // A blank and a zero byte differ in this bit, and in all others from any character.
    constexpr std::uint64_t allButBlank = ~0x2020202020202020U;
    while (text.size() >= 8) {
        const std::uint64_t kept = EightBytesAt(text.data() + text.size() - 8) & allButBlank;
        text.remove_suffix(static_cast<std::size_t>(std::countl_zero(kept)) / 8);
        if (kept != 0)
            return text;
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0'))
        text.remove_suffix(1);
    return text;
}

/// Leaves of a counted text what its count says, or of the beginning of one what is there of that; `length` is that of
/// the whole field. Null, or why it cannot.
const char* TakeCounted(std::string_view& bytes, std::size_t length)
{
    if (bytes.size() < bytesOfCount)
        return "the field has no place for a count of 2 bytes";
    const std::size_t count = BitsOf(bytes.substr(0, bytesOfCount), false);
    if (count > length - bytesOfCount)
        return "the count is beyond the field's end";
    bytes = bytes.substr(bytesOfCount, count);
    return nullptr;
}

std::string_view UpToZero(std::string_view bytes)
{
    return bytes.substr(0, bytes.find('\0'));
}

} // namespace

/// To most who read a text, a zero byte is its end: what stands behind it would be there and never be seen. Only this
/// file shows texts.
inline const char* FieldDecoder::ShowText(std::string_view text, Value& value, std::string& room) const
{
    if (m_shown != Shown::Text)
        return IsMoment() ? ShowTextAsMoment(text, value, room) : ShowTextAsNumber(text, value, room);
    if (text.find('\0') != std::string_view::npos)
        return m_type.kind == Kind::Text ? "a zero byte stands inside the text, where a STRING-ZERO would end"
                                         : "a zero byte stands inside the text";
    value = Value::Text(text);
    return nullptr;
}

const char* FieldDecoder::ReadText(std::string_view bytes, Value& value, std::string& room) const
{
    std::string_view text;
    if (!m_page->Convert(bytes, room, text))
        return noCharacters;
    return ShowText(TrimmedEnd(text), value, room);
}

const char* FieldDecoder::ReadCountedText(std::string_view bytes, Value& value, std::string& room) const
{
    const char* const reason = TakeCounted(bytes, bytes.size());
    return reason ? reason : ReadCharacters(bytes, value, room);
}

const char* FieldDecoder::ReadZeroText(std::string_view bytes, Value& value, std::string& room) const
{
    return ReadCharacters(UpToZero(bytes), value, room);
}

const char* FieldDecoder::ReadCharacters(std::string_view bytes, Value& value, std::string& room) const
{
    std::string_view text;
    if (!m_page->Convert(bytes, room, text))
        return noCharacters;
    return ShowText(text, value, room);
}

/// The bytes of a field whose column takes bytes, without a count and what follows the end of a text.
const char* FieldDecoder::ReadRaw(std::string_view bytes, Value& value, std::string&) const
{
    if (m_type.kind == Kind::CountedText) {
        if (const char* const reason = TakeCounted(bytes, bytes.size()))
            return reason;
    } else if (m_type.kind == Kind::ZeroText) {
        bytes = UpToZero(bytes);
    }
    value = Value::Bytes(bytes);
    return nullptr;
}

const char* FieldDecoder::DecodeBeginning(std::string_view bytes, Value& value, std::string& room) const
{
    const bool isCounted = m_type.kind == Kind::CountedText;
    if (isCounted)
        if (const char* const reason = TakeCounted(bytes, m_length))
            return reason;
    if (m_shown == Shown::Bytes) {
        value = Value::Bytes(m_type.kind == Kind::ZeroText ? UpToZero(bytes) : bytes);
        return nullptr;
    }
    if (IsByteRun())
        return ReadBytes(bytes, value, room);
    const std::string_view whole = m_page->WithoutTornEnd(bytes);
    if (whole.empty() && !bytes.empty()) {
        value = Value::Null();
        return nullptr;
    }
    if (m_type.kind == Kind::ZeroText)
        return ReadZeroText(whole, value, room);
    return isCounted ? ReadCharacters(whole, value, room) : ReadText(whole, value, room);
}

} // namespace tarnwick::records
