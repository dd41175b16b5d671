#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// The characters of a data file, turned into UTF-8. Pages are those of the C library's `iconv`. One object serves one
/// thread at a time.
class CodePage
{
public:
    /// A page by the name that an open string gives it: one that `iconv` knows, or `EBCDIC-037`, `EBCDIC-1047`,
    /// `LATIN-1`, `UTF-8`, of which the hyphen may be an underscore or a blank. Null if there is none of that name.
    static std::shared_ptr<const CodePage> Find(std::string_view name);

    static std::shared_ptr<const CodePage> Utf8();
    static std::shared_ptr<const CodePage> Utf16();

    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    /// Digits, signs and blanks are where EBCDIC has them.
    bool IsEbcdic() const { return m_isEbcdic; }

    /// What ends a line: EBCDIC has a newline character of its own.
    char Newline() const { return m_isEbcdic ? '\x15' : '\n'; }

    /// Whether that is a whole character. In a page where it is not, it may be any part of another one.
    bool HasByteNewline() const { return m_hasByteNewline; }

    /// The bytes without the beginning of a character that they end in.
    std::string_view WithoutTornEnd(std::string_view bytes) const;

    /// The text of `bytes`: they themselves where they are UTF-8 already, else made in `room`. False if a byte belongs
    /// to no character of the page.
    bool Convert(std::string_view bytes, std::string& room, std::string_view& text) const;

private:
    enum class Way { Utf8, Table, Stream };

    CodePage(Way way, void* converter, bool isEbcdic);
    void FillTable();
    bool ConvertByTable(std::string_view bytes, std::string& room) const;
    bool ConvertByStream(std::string_view bytes, std::string& room) const;

    /// One character of UTF-8, by its byte; without any for a byte that is no character.
    struct Character {
        std::array<char, 4> bytes{};
        unsigned char length = 0;
    };

    Way m_way;
    void* m_converter; ///< iconv_t; null for UTF-8
    bool m_isEbcdic;
    bool m_hasByteNewline = false;
    bool m_holdsAscii; ///< the bytes below 128 are ASCII
    std::array<Character, 256> m_table{};
};

} // namespace tarnwick::records
