#include "RecordFormat.h"

#include "Text.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <vector>

namespace tarnwick::records
{
namespace
{

using Kind = RecordFormat::Kind;

void Count(RecordFormat& format, std::size_t bytes, bool highByteFirst, std::size_t filler = 0, bool itself = false)
{
    format.kind = Kind::Counted;
    format.countBytes = bytes;
    format.countHighByteFirst = highByteFirst;
    format.fillerBytes = filler;
    format.countsItself = itself;
}

bool TakeCountWord(RecordFormat& format, std::string_view word)
{
    if (EqualIgnoringCase(word, "COUNTED-2"))
        Count(format, 2, false);
    else if (EqualIgnoringCase(word, "COUNTED-4"))
        Count(format, 4, false);
    else if (EqualIgnoringCase(word, "COUNTED-2-BE"))
        Count(format, 2, true);
    else if (EqualIgnoringCase(word, "COUNTED-4-BE"))
        Count(format, 4, true);
    else if (EqualIgnoringCase(word, "COUNTED-COBOL"))
        Count(format, 2, true, 2);
    else if (EqualIgnoringCase(word, "RDW"))
        Count(format, 2, true, 2, true);
    else
        return false;
    return true;
}

bool TakeKindWord(RecordFormat& format, std::string_view word)
{
    if (EqualIgnoringCase(word, "LINE")) {
        format.kind = Kind::Lines;
        return true;
    }
    if (TakeCountWord(format, word))
        return true;
    if (!EqualIgnoringCase(word, "SLOT-4") && !EqualIgnoringCase(word, "SLOT-8"))
        return false;
    format.kind = Kind::Slots;
    format.countBytes = word.back() == '4' ? 4 : 8;
    return true;
}

bool TakeSkipWord(RecordFormat& format, std::string_view word)
{
    if (!StartsWithIgnoringCase(word, "SKIP-"))
        return false;
    std::size_t skip = 0;
    const auto [end, error] = std::from_chars(word.data() + 5, word.data() + word.size(), skip);
    if (error != std::errc() || end != word.data() + word.size())
        return false;
    format.skip = skip;
    return true;
}

bool TakePageWord(RecordFormat& format, std::string_view word)
{
    auto page = CodePage::Find(word);
    if (!page)
        return false;
    format.page = std::move(page);
    return true;
}

/// The words of an open string, each for one matter, which it settles.
class OpenString
{
public:
    explicit OpenString(RecordFormat& format) : m_format(format) {}

    void Read(std::string_view text)
    {
        constexpr const char* separators = "_ ,;";
        while (!text.empty()) {
            std::size_t size = std::min(text.find_first_of(separators), text.size());
            if (size > 0 && text.substr(0, size).find('=') == std::string_view::npos)
                size = TakeLongestWord(text, size, separators);
            text.remove_prefix(std::min(text.size(), size + 1));
        }
    }

    bool NamesAKind() const { return !m_kindWord.empty(); }

private:
    /// The names of some code pages hold separators themselves, and may begin with the name of another one: the longest
    /// run of words that is known counts.
    std::size_t TakeLongestWord(std::string_view text, std::size_t size, const char* separators)
    {
        std::vector<std::size_t> ends{size};
        while (ends.back() < text.size() && (text[ends.back()] == '_' || text[ends.back()] == ' '))
            ends.push_back(std::min(text.find_first_of(separators, ends.back() + 1), text.size()));
        for (auto end = ends.rbegin(); end != ends.rend(); ++end)
            if (Take(text.substr(0, *end)))
                return *end;
        throw RecordError("the open string has the word '" + std::string(text.substr(0, size)) +
                          "', which is no record format and no code page");
    }

    bool Take(std::string_view word)
    {
        if (TakeKindWord(m_format, word))
            Settle(m_kindWord, word);
        else if (TakeSkipWord(m_format, word))
            Settle(m_skipWord, word);
        else if (TakePageWord(m_format, word))
            Settle(m_pageWord, word);
        else
            return false;
        return true;
    }

    static void Settle(std::string_view& settled, std::string_view word)
    {
        if (!settled.empty() && !EqualIgnoringCase(settled, word))
            throw RecordError("the open string has both '" + std::string(settled) + "' and '" + std::string(word) +
                              "'");
        settled = word;
    }

    RecordFormat& m_format;
    std::string_view m_kindWord;
    std::string_view m_skipWord;
    std::string_view m_pageWord;
};

Kind PlainKind(std::string_view organisation, bool isVariable)
{
    if (EqualIgnoringCase(organisation, "RELATIVE"))
        return Kind::Slots;
    if (EqualIgnoringCase(organisation, "INDEXED"))
        return isVariable ? Kind::Counted : Kind::Fixed;
    return isVariable ? Kind::Lines : Kind::Fixed;
}

/// An empty text stands for the first of the words.
void RequireOneOf(const char* what, std::string_view text, std::initializer_list<const char*> words)
{
    const auto is = [&](const char* word) { return EqualIgnoringCase(text, word); };
    if (!text.empty() && std::none_of(words.begin(), words.end(), is))
        throw RecordError("the " + std::string(what) + " '" + std::string(text) + "' is not known");
}

} // namespace

RecordFormat RecordFormat::Read(std::string_view organisation, std::string_view recordType, std::string_view openString,
                                std::size_t recordSize)
{
    RequireOneOf("file organisation", organisation, {"SEQUENTIAL", "RELATIVE", "INDEXED"});
    RequireOneOf("record type", recordType, {"FIXED", "VARIABLE"});
    const bool isVariable = EqualIgnoringCase(recordType, "VARIABLE");
    const bool isIndexed = EqualIgnoringCase(organisation, "INDEXED");
    RecordFormat format;
    format.recordSize = recordSize;
    format.kind = PlainKind(organisation, isVariable);
    if (isIndexed && isVariable)
        Count(format, 2, true, 2);
    const Kind plain = format.kind;
    OpenString words(format);
    words.Read(openString);
    if (EqualIgnoringCase(organisation, "RELATIVE") ? format.kind != Kind::Slots
                                                    : format.kind == Kind::Slots && plain != Kind::Slots)
        throw RecordError("the open string does not suit a file of the organisation " +
                          (organisation.empty() ? "SEQUENTIAL" : std::string(organisation)));
    // Nothing but the plain formats tells which records of an indexed file are deleted.
    if (isIndexed && words.NamesAKind())
        throw RecordError("the open string does not suit an indexed file of " +
                          (recordType.empty() ? "FIXED" : std::string(recordType)) + " records");
    if (format.kind == Kind::Lines && !format.page->HasByteNewline())
        throw RecordError("the open string's code page has no newline of one byte, and so its files have no lines");
    if (recordSize == 0 && format.HasFixedSize())
        throw RecordError("the record size is 0");
    format.hasDeletionByte = isIndexed && !isVariable;
    format.fillerMarksDeleted = isIndexed && isVariable;
    return format;
}

} // namespace tarnwick::records
