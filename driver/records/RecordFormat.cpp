#include "RecordFormat.h"

#include "Text.h"

#include <charconv>

namespace tarnwick::records
{
namespace
{

using Kind = RecordFormat::Kind;

bool StartsWith(std::string_view text, std::string_view beginning)
{
    return EqualIgnoringCase(text.substr(0, beginning.size()), beginning);
}

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

bool TakeWord(RecordFormat& format, std::string_view word)
{
    if (EqualIgnoringCase(word, "LINE")) {
        format.kind = Kind::Lines;
        return true;
    }
    if (TakeCountWord(format, word))
        return true;
    if (EqualIgnoringCase(word, "SLOT-4") || EqualIgnoringCase(word, "SLOT-8")) {
        format.kind = Kind::Slots;
        format.countBytes = word.back() == '4' ? 4 : 8;
        return true;
    }
    if (StartsWith(word, "SKIP-")) {
        const auto [end, error] = std::from_chars(word.data() + 5, word.data() + word.size(), format.skip);
        return error == std::errc() && end == word.data() + word.size();
    }
    if (auto page = CodePage::Find(word)) {
        format.page = std::move(page);
        return true;
    }
    return false;
}

void TakeOpenString(RecordFormat& format, std::string_view openString)
{
    while (!openString.empty()) {
        const std::string_view word = openString.substr(0, openString.find_first_of("_ ,;"));
        openString.remove_prefix(std::min(openString.size(), word.size() + 1));
        if (word.empty() || word.find('=') != std::string_view::npos)
            continue;
        if (!TakeWord(format, word))
            throw RecordError("the open string has the word '" + std::string(word) +
                              "', which is no record format and no code page");
    }
}

Kind PlainKind(std::string_view organisation, bool isVariable)
{
    if (EqualIgnoringCase(organisation, "RELATIVE"))
        return Kind::Slots;
    if (EqualIgnoringCase(organisation, "INDEXED"))
        return isVariable ? Kind::Counted : Kind::Fixed;
    return isVariable ? Kind::Lines : Kind::Fixed;
}

} // namespace

RecordFormat RecordFormat::Read(std::string_view organisation, std::string_view recordType, std::string_view openString,
                                std::size_t recordSize)
{
    const bool isVariable = EqualIgnoringCase(recordType, "VARIABLE");
    const bool isIndexed = EqualIgnoringCase(organisation, "INDEXED");
    RecordFormat format;
    format.recordSize = recordSize;
    format.kind = PlainKind(organisation, isVariable);
    if (isIndexed && isVariable)
        Count(format, 2, true, 2);
    const Kind plain = format.kind;
    TakeOpenString(format, openString);
    if (EqualIgnoringCase(organisation, "RELATIVE") ? format.kind != Kind::Slots
                                                    : format.kind == Kind::Slots && plain != Kind::Slots)
        throw RecordError("the open string does not suit a file of the organisation " + std::string(organisation));
    if (isIndexed && format.kind != plain)
        throw RecordError("the open string does not suit an indexed file of " + std::string(recordType) + " records");
    if (recordSize == 0 && (format.kind == Kind::Fixed || format.kind == Kind::Slots))
        throw RecordError("the record size is 0");
    format.hasDeletionByte = isIndexed && !isVariable;
    format.fillerMarksDeleted = isIndexed && isVariable;
    return format;
}

} // namespace tarnwick::records
