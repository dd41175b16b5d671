#include "CodePage.h"

#include "Bits.h"
#include "Text.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

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
/// too little room, EINVAL for a last character that is not whole, another for one that is unknown. `unread` takes the
/// bytes that were not converted.
std::optional<std::size_t> Run(void* converter, std::string_view bytes, char* target, std::size_t room,
                               std::size_t* unread = nullptr)
{
    auto* const state = static_cast<iconv_t>(converter);
    ::iconv(state, nullptr, nullptr, nullptr, nullptr);
    char* from = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    char* to = target;
    std::size_t free = room;
    const bool isWhole = ::iconv(state, &from, &left, &to, &free) != failed;
    if (unread)
        *unread = left;
    if (!isWhole)
        return std::nullopt;
    // Where a character can be composed with the next one, the last is held back until it is asked for.
    if (::iconv(state, nullptr, nullptr, &to, &free) == failed)
        return std::nullopt;
    return room - free;
}

/// What stands in the names of pages. To iconv a slash is the end of a name, other characters are not there at all, and
/// no name is that of the process's own page.
bool IsInNames(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '_' ||
           c == '.' || c == ':';
}

/// The name under which iconv knows a page.
std::string NameForIconv(std::string_view asGiven)
{
    std::string name(asGiven);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '_' || c == ' '; }, '-');
    if (EqualIgnoringCase(name, "UTF-8") || EqualIgnoringCase(name, "UTF8"))
        return "UTF-8";
    if (EqualIgnoringCase(name, "EBCDIC") || EqualIgnoringCase(name, "EBCDIC-037"))
        return "IBM037";
    if (EqualIgnoringCase(name, "EBCDIC-1047"))
        return "IBM1047";
    if (EqualIgnoringCase(name, "LATIN-1"))
        return "ISO-8859-1";
    return std::string(asGiven);
}

/// The bits of eight bytes that no character of ASCII has.
constexpr std::uint64_t beyondAscii = 0x8080808080808080;

/// How many bytes at the end of UTF-8 begin a character that they do not end.
std::size_t TornUtf8(std::string_view bytes)
{
    constexpr std::size_t mostTorn = 3;
    for (std::size_t torn = 1; torn <= std::min(mostTorn, bytes.size()); ++torn) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - torn]);
        const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        if (byte < 0x80 || length > 1)
            return length > torn ? torn : 0;
    }
    return 0;
}

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
    : m_way(way), m_converter(converter), m_isEbcdic(isEbcdic), m_hasByteNewline(way == Way::Utf8),
      m_holdsAscii(way == Way::Utf8)
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
    const std::string known = NameForIconv(name);
    if (known == "UTF-8")
        return Utf8();
    const bool mayBeName = !known.empty() && std::all_of(known.begin(), known.end(), IsInNames);
    void* const converter = mayBeName ? Open(known) : nullptr;
    if (!converter)
        return nullptr;
    // A page of single bytes has a character of its own for the digit 1, and none of them needs a second byte.
    char character[8];
    const bool ebcdic = Run(converter, "\xF1", character, sizeof character) == 1u && character[0] == '1';
    const std::shared_ptr<CodePage> page(new CodePage(Way::Table, converter, ebcdic));
    page->FillTable();
    const char newline = page->Newline();
    page->m_hasByteNewline = Run(converter, {&newline, 1}, character, sizeof character).has_value();
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

std::string_view CodePage::WithoutTornEnd(std::string_view bytes) const
{
    if (m_way == Way::Utf8)
        return bytes.substr(0, bytes.size() - TornUtf8(bytes));
    if (m_way == Way::Table)
        return bytes;
    std::string room;
    std::size_t unread = 0;
    do {
        room.resize(2 * room.size() + 4 * bytes.size() + 8);
        errno = 0;
        if (Run(m_converter, bytes, room.data(), room.size(), &unread))
            return bytes;
    } while (errno == E2BIG);
    return errno == EINVAL ? bytes.substr(0, bytes.size() - unread) : bytes;
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
