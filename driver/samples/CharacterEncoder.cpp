#include "CharacterEncoder.h"

#include "FieldEncoder.h"
#include "Text.h"

namespace tarnwick::samples
{
namespace
{

/// The bytes of the UTF-8 character that begins with `first`.
std::size_t LengthOf(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

} // namespace

CharacterEncoder::CharacterEncoder(const std::shared_ptr<const records::CodePage>& page)
    : m_way(!page                               ? Way::Utf16
            : page == records::CodePage::Utf8() ? Way::Utf8
                                                : Way::Table)
{
    if (m_way != Way::Table)
        return;
    // Of bytes that mean the same character the lowest stands for it.
    for (int byte = 0xFF; byte >= 0; --byte) {
        const char source = static_cast<char>(byte);
        std::string room;
        std::string_view character;
        if (page->Convert({&source, 1}, room, character))
            m_table[std::string(character)] = source;
    }
}

std::string CharacterEncoder::Encode(std::string_view utf8) const
{
    if (!IsUtf8(utf8))
        throw EncodingError("its bytes are no UTF-8");
    std::string bytes;
    switch (m_way) {
    case Way::Utf8:
        return std::string(utf8);
    case Way::Utf16:
        for (const char16_t unit : ToUtf16(utf8))
            bytes.append({static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)});
        return bytes;
    case Way::Table:
        break;
    }
    while (!utf8.empty()) {
        const std::string_view character = utf8.substr(0, LengthOf(utf8.front()));
        const auto found = m_table.find(character);
        if (found == m_table.end())
            throw EncodingError("the file's code page has no character " + std::string(character));
        bytes += found->second;
        utf8.remove_prefix(character.size());
    }
    return bytes;
}

} // namespace tarnwick::samples
