// Texts of every length, at the borders of what there is to read.

#include "FieldDecoder.h"
#include "RecordsFixture.h"

#include <cstring>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

using namespace tarnwick::records;

namespace
{

/// A page of memory between two that nobody can read.
class LonelyPage
{
public:
    LonelyPage() : m_size(static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)))
    {
        m_first = ::mmap(nullptr, 3 * m_size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m_first == MAP_FAILED || ::mprotect(Begin(), m_size, PROT_READ | PROT_WRITE) != 0)
            throw std::runtime_error("no memory for a page");
    }
    ~LonelyPage() { ::munmap(m_first, 3 * m_size); }
    LonelyPage(const LonelyPage&) = delete;
    LonelyPage& operator=(const LonelyPage&) = delete;

    std::string_view AtBegin(const std::string& bytes) const { return Put(bytes, Begin()); }
    std::string_view AtEnd(const std::string& bytes) const { return Put(bytes, Begin() + m_size - bytes.size()); }

private:
    char* Begin() const { return static_cast<char*>(m_first) + m_size; }
    static std::string_view Put(const std::string& bytes, char* place)
    {
        std::memcpy(place, bytes.data(), bytes.size());
        return {place, bytes.size()};
    }

    std::size_t m_size;
    void* m_first;
};

/// A field of characters as long as it takes.
FieldDecoder MakeDecoder(std::size_t length, const char* page)
{
    Field field;
    field.type.kind = StorageType::Kind::Text;
    field.length = length;
    return FieldDecoder(field, Shown::Text, CodePage::Find(page));
}

std::string Shows(const FieldDecoder& decoder, std::string_view bytes)
{
    Value value;
    std::string room;
    const char* const reason = decoder.Decode(bytes, value, room);
    return reason ? std::string("!") + reason : std::string(value.text);
}

class TextsOfFields : public Records
{
};

} // namespace

TEST(TextsOfAnyLength, LoseTheBlanksAndZerosAtTheirEndOnly)
{
    const LonelyPage page;
    for (const char last : {'a', '!', '\x01', '\x7F', '@', '\x60', '\xFC'})
        for (const char end : {' ', '\0'})
            for (std::size_t kept = 1; kept <= 20; ++kept)
                for (std::size_t length = kept; length <= 24; ++length) {
                    const std::string text = std::string(kept - 1, 'x') + last;
                    const std::string bytes = text + std::string(length - kept, end);
                    const std::string shown = last == '\xFC' ? std::string(kept - 1, 'x') + "ü" : text;
                    const FieldDecoder decoder = MakeDecoder(length, "ISO-8859-1");
                    EXPECT_EQ(Shows(decoder, page.AtBegin(bytes)), shown) << kept << " of " << length;
                    EXPECT_EQ(Shows(decoder, page.AtEnd(bytes)), shown) << kept << " of " << length;
                }
}

TEST(TextsOfAnyLength, KeepTheirBlanksInFrontAndInside)
{
    const LonelyPage page;
    for (std::size_t length = 2; length <= 24; ++length)
        for (std::size_t place = 0; place + 1 < length; ++place) {
            std::string bytes(length, 'x');
            bytes[place] = ' ';
            EXPECT_EQ(Shows(MakeDecoder(length, "UTF-8"), page.AtEnd(bytes)), bytes);
        }
}

TEST(TextsOfAnyLength, AreHeldToTheirCodePageInEveryPlace)
{
    const LonelyPage page;
    for (std::size_t length = 1; length <= 24; ++length)
        for (std::size_t place = 0; place < length; ++place) {
            std::string bytes(length, 'x');
            bytes[place] = '\xFC';
            const std::string shown = std::string(place, 'x') + "ü" + std::string(length - place - 1, 'x');
            EXPECT_EQ(Shows(MakeDecoder(length, "ISO-8859-1"), page.AtBegin(bytes)), shown);
            EXPECT_EQ(Shows(MakeDecoder(length, "UTF-8"), page.AtEnd(bytes)),
                      "!they are no characters of the file's code page")
                << place << " of " << length;
        }
}

TEST_F(TextsOfFields, ComeWholeWhateverTheirLength)
{
    for (int length = 61; length <= 68; ++length) {
        const std::string name = "T" + std::to_string(length);
        const std::string text = std::string(static_cast<std::size_t>(length) - 1, 'x') + "!";
        Make(name, {{"A", "STRING", length}}, text);
        EXPECT_EQ(Rows("SELECT A, length(A) FROM BANK_" + name), text + "|" + std::to_string(length) + "\n");
    }
}
