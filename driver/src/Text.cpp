#include "Text.h"

#include <algorithm>
#include <cstring>

namespace tarnwick
{
namespace
{

constexpr char32_t replacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

void AppendUtf8(std::string& text, char32_t character)
{
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | (character >> 6));
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | (character >> 12));
        put(0x80 | ((character >> 6) & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | (character >> 18));
        put(0x80 | ((character >> 12) & 0x3F));
        put(0x80 | ((character >> 6) & 0x3F));
        put(0x80 | (character & 0x3F));
    }
}

struct Decoded {
    char32_t character;
    std::size_t bytes; ///< 0 for a malformed sequence
};

/// Reads the character at `position`. Overlong forms, surrogates and values above U+10FFFF are malformed (RFC 3629).
Decoded Decode(std::string_view text, std::size_t position)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(position);
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t bytes = lead >= 0xF0 && lead < 0xF5   ? 4
                              : lead >= 0xE0 && lead < 0xF0 ? 3
                              : lead >= 0xC2 && lead < 0xE0 ? 2
                                                            : 0;
    if (bytes == 0 || position + bytes > text.size())
        return {replacement, 0};
    char32_t character = lead & (0x7F >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        const unsigned char next = byte(position + i);
        if ((next & 0xC0) != 0x80)
            return {replacement, 0};
        character = (character << 6) | (next & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < smallest[bytes] || surrogate || character > 0x10FFFF)
        return {replacement, 0};
    return {character, bytes};
}

} // namespace

std::string_view NarrowArgument(const SQLCHAR* text, SQLINTEGER length)
{
    if (!text)
        return {};
    const auto* characters = reinterpret_cast<const char*>(text);
    return length < 0 ? std::string_view(characters) : std::string_view(characters, static_cast<std::size_t>(length));
}

std::optional<std::string> WideArgument(const SQLWCHAR* text, SQLINTEGER length)
{
    std::string utf8;
    if (!text)
        return utf8;
    std::size_t units = 0;
    if (length >= 0)
        units = static_cast<std::size_t>(length);
    else
        while (text[units] != 0)
            ++units;
    utf8.reserve(units + units / 2);
    for (std::size_t i = 0; i < units; ++i) {
        char32_t character = text[i];
        if (IsHighSurrogate(character)) {
            if (i + 1 == units || !IsLowSurrogate(text[i + 1]))
                return std::nullopt;
            character = 0x10000 + ((character - 0xD800) << 10) + (text[++i] - 0xDC00);
        } else if (IsLowSurrogate(character)) {
            return std::nullopt;
        }
        AppendUtf8(utf8, character);
    }
    return utf8;
}

std::u16string ToUtf16(std::string_view utf8)
{
    std::u16string wide;
    wide.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const Decoded next = Decode(utf8, i);
        i += std::max<std::size_t>(next.bytes, 1);
        if (next.character < 0x10000) {
            wide.push_back(static_cast<char16_t>(next.character));
        } else {
            wide.push_back(static_cast<char16_t>(0xD800 + ((next.character - 0x10000) >> 10)));
            wide.push_back(static_cast<char16_t>(0xDC00 + ((next.character - 0x10000) & 0x3FF)));
        }
    }
    return wide;
}

std::size_t FillUtf16(std::string_view utf8, SQLWCHAR* buffer, std::size_t room)
{
    std::size_t units = 0;
    const auto put = [&](char32_t unit) {
        if (units < room)
            buffer[units] = static_cast<SQLWCHAR>(unit);
        ++units;
    };
    for (std::size_t i = 0; i < utf8.size();) {
        if (static_cast<unsigned char>(utf8[i]) < 0x80) {
            put(static_cast<unsigned char>(utf8[i++]));
            continue;
        }
        const Decoded next = Decode(utf8, i);
        i += std::max<std::size_t>(next.bytes, 1);
        if (next.character < 0x10000) {
            put(next.character);
        } else {
            put(0xD800 + ((next.character - 0x10000) >> 10));
            put(0xDC00 + ((next.character - 0x10000) & 0x3FF));
        }
    }
    return units;
}

bool IsUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const Decoded next = Decode(text, i);
        if (next.bytes == 0)
            return false;
        i += next.bytes;
    }
    return true;
}

Fit PutNarrow(std::string_view text, void* buffer, SQLINTEGER capacity, SQLINTEGER* length)
{
    if (length)
        *length = static_cast<SQLINTEGER>(text.size());
    if (!buffer)
        return Fit::Whole;
    if (capacity <= 0)
        return Fit::Cut;
    std::size_t copied = std::min(text.size(), static_cast<std::size_t>(capacity) - 1);
    while (copied > 0 && copied < text.size() && (static_cast<unsigned char>(text[copied]) & 0xC0) == 0x80)
        --copied;
    auto* target = static_cast<char*>(buffer);
    std::memcpy(target, text.data(), copied);
    target[copied] = 0;
    return copied == text.size() ? Fit::Whole : Fit::Cut;
}

Fit PutWide(std::string_view text, void* buffer, SQLINTEGER capacity, SQLINTEGER* length)
{
    const std::u16string wide = ToUtf16(text);
    if (length)
        *length = static_cast<SQLINTEGER>(wide.size());
    if (!buffer)
        return Fit::Whole;
    if (capacity <= 0)
        return Fit::Cut;
    std::size_t copied = std::min(wide.size(), static_cast<std::size_t>(capacity) - 1);
    if (copied > 0 && copied < wide.size() && IsLowSurrogate(wide[copied]))
        --copied;
    auto* target = static_cast<SQLWCHAR*>(buffer);
    std::memcpy(target, wide.data(), copied * sizeof(SQLWCHAR));
    target[copied] = 0;
    return copied == wide.size() ? Fit::Whole : Fit::Cut;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return Upper(a) == Upper(b); });
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view beginning)
{
    return EqualIgnoringCase(text.substr(0, beginning.size()), beginning);
}

std::string InUpperCase(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

std::string QuotedName(std::string_view name)
{
    std::string quoted = "\"";
    for (const char c : name) {
        quoted += c;
        if (c == '"')
            quoted += c;
    }
    return quoted + '"';
}

void AppendHexadecimal(char byte, std::string& text)
{
    constexpr char digits[] = "0123456789ABCDEF";
    text += digits[static_cast<unsigned char>(byte) >> 4];
    text += digits[static_cast<unsigned char>(byte) & 0xF];
}

} // namespace tarnwick
