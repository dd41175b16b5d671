#include "CodePage.h"

#include "Bits.h"
#include "Text.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace tarnwick::records
{
namespace
{

constexpr auto failed = static_cast<std::size_t>(-1);

void* Open(const std::string& name)
{
    const iconv_t converter = ::iconv_open("UTF-8", name.c_str());
    return converter == reinterpret_cast<iconv_t>(-1) ? nullptr : converter;
}

/// Converts all of `bytes` into `target`; gives the bytes written, or nothing, with the reason in `errno`: E2BIG for
/// too little room, another for a character that is not whole or unknown.
std::optional<std::size_t> Run(void* converter, std::string_view bytes, char* target, std::size_t room)
{
    auto* const state = static_cast<iconv_t>(converter);
    ::iconv(state, nullptr, nullptr, nullptr, nullptr);
    char* from = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    char* to = target;
    std::size_t free = room;
    if (::iconv(state, &from, &left, &to, &free) == failed)
        return std::nullopt;
    // Where a character can be composed with the next one, the last is held back until it is asked for.
    if (::iconv(state, nullptr, nullptr, &to, &free) == failed)
        return std::nullopt;
    return room - free;
}

/// The name under which iconv knows a page.
std::string NameForIconv(std::string_view name)
{
    if (EqualIgnoringCase(name, "EBCDIC") || EqualIgnoringCase(name, "EBCDIC-037"))
        return "IBM037";
    if (EqualIgnoringCase(name, "EBCDIC-1047"))
        return "IBM1047";
    if (EqualIgnoringCase(name, "LATIN-1"))
        return "ISO-8859-1";
    return std::string(name);
}

/// The bits of eight bytes that no character of ASCII has.
constexpr std::uint64_t beyondAscii = 0x8080808080808080;

bool IsAscii(std::string_view bytes)
{
    if (bytes.size() < 8)
        return (BitsOf(bytes, false) & beyondAscii) == 0;
    std::uint64_t seen = EightBytesAt(bytes.data() + bytes.size() - 8);
    for (; bytes.size() > 8; bytes.remove_prefix(8))
        seen |= EightBytesAt(bytes.data());
    return (seen & beyondAscii) == 0;
}

} // namespace

CodePage::CodePage(Way way, void* converter, bool isEbcdic)
    : m_way(way), m_converter(converter), m_isEbcdic(isEbcdic), m_holdsAscii(way == Way::Utf8)
{
}

CodePage::~CodePage()
{
    if (m_converter)
        ::iconv_close(static_cast<iconv_t>(m_converter));
}

std::shared_ptr<const CodePage> CodePage::Utf8()
{
    static const std::shared_ptr<const CodePage> page(new CodePage(Way::Utf8, nullptr, false));
    return page;
}

std::shared_ptr<const CodePage> CodePage::Utf16()
{
    return std::shared_ptr<const CodePage>(new CodePage(Way::Stream, Open("UTF-16LE"), false));
}

std::shared_ptr<const CodePage> CodePage::Find(std::string_view name)
{
    if (EqualIgnoringCase(name, "UTF-8") || EqualIgnoringCase(name, "UTF8"))
        return Utf8();
    void* const converter = Open(NameForIconv(name));
    if (!converter)
        return nullptr;
    // A page of single bytes has a character of its own for the digit 1, and none of them needs a second byte.
    char character[8];
    const bool ebcdic = Run(converter, "\xF1", character, sizeof character) == 1u && character[0] == '1';
    const std::shared_ptr<CodePage> page(new CodePage(Way::Table, converter, ebcdic));
    page->FillTable();
    return page;
}

/// Pages in which some byte only begins a character or may be composed with the next one, or stands for several
/// characters, or that keep a state, are converted as streams.
void CodePage::FillTable()
{
    for (std::size_t i = 0; i < m_table.size(); ++i) {
        const char byte = static_cast<char>(i);
        auto* const state = static_cast<iconv_t>(m_converter);
        ::iconv(state, nullptr, nullptr, nullptr, nullptr);
        char source = byte;
        char* from = &source;
        std::size_t left = 1;
        char* to = m_table[i].bytes.data();
        std::size_t free = m_table[i].bytes.size();
        const bool converted = ::iconv(state, &from, &left, &to, &free) != failed;
        if (!converted && (errno == EINVAL || errno == E2BIG))
            m_way = Way::Stream;
        if (converted && free == m_table[i].bytes.size()) {
            m_way = Way::Stream;
            ::iconv(state, nullptr, nullptr, &to, &free);
        }
        m_table[i].length = converted ? static_cast<unsigned char>(m_table[i].bytes.size() - free) : 0;
    }
    m_holdsAscii = true;
    for (std::size_t i = 0; i < 0x80; ++i)
        m_holdsAscii = m_holdsAscii && m_table[i].length == 1 && m_table[i].bytes[0] == static_cast<char>(i);
}

bool CodePage::Convert(std::string_view bytes, std::string& room, std::string_view& text) const
{
    if (m_holdsAscii && IsAscii(bytes)) {
        text = bytes;
        return true;
    }
    if (m_way == Way::Utf8) {
        text = bytes;
        return IsUtf8(bytes);
    }
    const bool converted = m_way == Way::Table ? ConvertByTable(bytes, room) : ConvertByStream(bytes, room);
    text = room;
    return converted;
}

bool CodePage::ConvertByTable(std::string_view bytes, std::string& room) const
{
    room.clear();
    for (const char byte : bytes) {
        const Character& character = m_table[static_cast<unsigned char>(byte)];
        if (character.length == 0)
            return false;
        room.append(character.bytes.data(), character.length);
    }
    return true;
}

bool CodePage::ConvertByStream(std::string_view bytes, std::string& room) const
{
    // Hardly a character of a page takes more than four bytes of UTF-8 for each of its own; but a syllable of Tamil
    // does.
    room.resize(4 * bytes.size());
    auto length = Run(m_converter, bytes, room.data(), room.size());
    while (!length && errno == E2BIG) {
        room.resize(2 * room.size() + 8);
        length = Run(m_converter, bytes, room.data(), room.size());
    }
    room.resize(length.value_or(0));
    return length.has_value();
}

} // namespace tarnwick::records
