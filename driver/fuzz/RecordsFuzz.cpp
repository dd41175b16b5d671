// Fuzzes the walk through a file's records and every decoder (libFuzzer, with AddressSanitizer and
// UndefinedBehaviorSanitizer). The first bytes of an input choose format, type, form and scale; the rest is the file,
// and for what reads texts of the catalog and of clients each record is one.

#include "DecimalText.h"
#include "FieldDecoder.h"
#include "KeyIndex.h"
#include "LongNumbers.h"
#include "RecordCursor.h"

#include <cstdint>
#include <cstdlib>
#include <iterator>

using namespace tarnwick::records;

namespace
{

struct Layout {
    const char* organisation;
    const char* recordType;
    const char* openString;
};

constexpr Layout layouts[] = {
    {"SEQUENTIAL", "FIXED", ""},
    {"SEQUENTIAL", "FIXED", "LINE_EBCDIC-037"},
    {"SEQUENTIAL", "VARIABLE", "SHIFT-JIS"},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-4-BE_ISO-8859-1"},
    {"SEQUENTIAL", "VARIABLE", "RDW_EBCDIC-1047"},
    {"RELATIVE", "FIXED", ""},
    {"RELATIVE", "VARIABLE", "SLOT-8"},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-COBOL_CP1258"},
    {"RELATIVE", "FIXED", "SLOT-4_SKIP-3_ISO-2022-JP"},
    {"INDEXED", "FIXED", "ASCII"},
    {"INDEXED", "VARIABLE", ""},
    {"SEQUENTIAL", "VARIABLE", "TSCII"},
    {"SEQUENTIAL", "FIXED", "IBM939"},
};

constexpr const char* formats[] = {"", "YYYY-MM-DD", "DD-MMM-YY hh:mm:ss.cc", "YYMMDD"};

using Kind = StorageType::Kind;
using Sign = StorageType::Sign;

Field MakeField(const std::uint8_t* choice)
{
    Field field;
    field.length = 1 + choice[1] / 8u;
    field.type.kind = static_cast<Kind>(choice[0] % (static_cast<int>(Kind::UnixTime) + 1));
    field.type.sign = static_cast<Sign>(choice[1] % (static_cast<int>(Sign::LastNibble) + 1));
    field.type.isUnsigned = (choice[2] & 1) != 0;
    field.type.highByteFirst = (choice[2] & 2) != 0;
    field.type.ebcdic = (choice[2] & 4) != 0;
    field.type.utf16 = (choice[2] & 8) != 0;
    field.type.lastNibbleFree = (choice[2] & 16) != 0;
    field.scale = choice[3] % 70 - 32;
    field.format = formats[choice[4] % std::size(formats)];
    return field;
}

/// Every byte that was given out must be there to read.
void Touch(std::string_view bytes)
{
    volatile char last = 0;
    for (const char c : bytes)
        last = c;
    (void)last;
}

/// A number's forms are equal, and so are their plain texts.
void CompareForms(std::string_view text)
{
    const std::string_view half = text.substr(text.size() / 2);
    const int order = CompareDecimals(text, half);
    if (order != -CompareDecimals(half, text) || (order == 0) != (PlainDecimal(text) == PlainDecimal(half)))
        std::abort();
}

/// What a storage type's attributes, a format and a statement may be.
void ReadTexts(std::string_view text)
{
    StorageType::Read("HEXADECIMAL", "TIMESTAMP", text);
    const std::string_view half = text.substr(text.size() / 2);
    Moment moment;
    if (DateFormat(text.substr(0, text.size() / 2)).Read(half, moment) == DateFormat::Reading::Moment &&
        !moment.IsReal())
        std::abort();
    // Every name of an odd length is a wide column's.
    const auto isDecimal = [](const std::string& name) { return name.size() % 2 == 1; };
    const std::string quoted = QuoteLongNumbers(std::string(text), isDecimal);
    if (quoted.size() < text.size() || (!MayHoldLongNumber(text) && quoted != text))
        std::abort();
}

IntegerLimits LimitsFrom(std::uint8_t choice)
{
    return (choice & 32) != 0 ? IntegerLimits{-128, 127} : IntegerLimits();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t choices = 8;
    if (size < choices)
        return 0;
    const Layout& layout = layouts[data[5] % std::size(layouts)];
    const RecordFormat format =
        RecordFormat::Read(layout.organisation, layout.recordType, layout.openString, 1 + data[6] % 48u);
    const auto shown = static_cast<Shown>(data[7] % (static_cast<int>(Shown::Timestamp) + 1));
    const IntegerLimits limits = LimitsFrom(data[2]);
    const FieldDecoder decoder(MakeField(data), shown, format.page, limits);
    KeyIndex index(shown, (data[2] & 64) != 0 ? KeyIndex::By::Number : KeyIndex::By::Value);
    RecordCursor cursor(format, {reinterpret_cast<const char*>(data) + choices, size - choices});
    std::string room;
    bool isRecord = true;
    while (isRecord) {
        isRecord = cursor.Next() == RecordCursor::Step::Record;
        Touch(cursor.Bytes());
        CompareForms(cursor.Bytes());
        ReadTexts(cursor.Bytes());
        Value value;
        if (decoder.Decode(cursor.Bytes(), value, room) != nullptr)
            continue;
        Touch(value.text);
        index.Add(value, {cursor.Position(), cursor.Number()});
        if (shown == Shown::Integer && value.kind == Value::Kind::Integer &&
            (value.integer < limits.least || value.integer > limits.most))
            std::abort();
    }
    index.Sort();
    cursor.Seek(data[6] * 3u, 1u + data[7]);
    Touch(cursor.Bytes());
    return 0;
}
