// Fuzzes the walk through a file's records and every decoder (libFuzzer, with AddressSanitizer and
// UndefinedBehaviorSanitizer). The first bytes of an input choose format, type, form and scale; the rest is the file,
// and for what reads texts of the catalog and of clients each record is one.

#include "DecimalText.h"
#include "FieldDecoder.h"
#include "KeyIndex.h"
#include "LongNumbers.h"
#include "RecordCursor.h"
#include "Tokenizer.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

using namespace tarnwick;
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
    {"SEQUENTIAL", "FIXED", "UTF-16LE"},
    {"SEQUENTIAL", "VARIABLE", "GB18030"},
};

constexpr const char* formats[] = {"", "YYYY-MM-DD", "DD-MMM-YY hh:mm:ss.cc", "YYMMDD"};

using Kind = StorageType::Kind;
using Sign = StorageType::Sign;

Field MakeField(const std::uint8_t* choice)
{
    Field field;
    field.offset = choice[4] / 16u;
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

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The number that stands in a place of a rewritten statement; `i` goes behind the place.
std::string ReplacedNumber(const std::vector<Token>& tokens, std::size_t& i)
{
    std::size_t digits = i;
    std::size_t end = i + 1;
    if (IsWord(tokens[i], "CAST")) { // CAST('1' AS TEXT) COLLATE TARNWICK_LITERAL
        digits = i + 2;
        end = i + 8;
    } else if (IsWord(tokens[i], "CASE")) { // CASE typeof(A) WHEN 'text' THEN '1' ELSE 1 END
        const auto isEnd = [](const Token& token) { return token.text == ")"; };
        digits =
            static_cast<std::size_t>(
                std::find_if(tokens.begin() + static_cast<std::ptrdiff_t>(i), tokens.end(), isEnd) - tokens.begin()) +
            4;
        for (end = digits; end < tokens.size() && !IsWord(tokens[end], "END");)
            ++end;
        ++end;
    }
    Require(end <= tokens.size() && digits < end && tokens[digits].kind == Token::Kind::String);
    i = end;
    return BareName(tokens[digits]);
}

/// Outside of the places of its long numbers a statement stays as it is.
void CompareStatements(std::string_view text, std::string_view quoted)
{
    const std::vector<Token> before = Tokenize(text);
    const std::vector<Token> after = Tokenize(quoted);
    std::size_t i = 0;
    for (std::size_t place = 0; place < after.size();) {
        Require(i < before.size());
        if (before[i].text == after[place].text) {
            ++i;
            ++place;
            continue;
        }
        const std::string number = ReplacedNumber(after, place);
        std::string read;
        while (i < before.size() && read.size() < number.size())
            read += before[i++].text;
        Require(!number.empty() && read == number);
    }
    Require(i == before.size());
}

/// A value as SQLite gives it to a table, of which the records with it are asked for.
class Asked
{
public:
    Asked()
    {
        Require(sqlite3_open(":memory:", &m_engine) == SQLITE_OK);
        Require(sqlite3_prepare_v2(m_engine, "SELECT ?1", -1, &m_statement, nullptr) == SQLITE_OK);
    }
    ~Asked()
    {
        sqlite3_finalize(m_statement);
        sqlite3_close(m_engine);
    }
    Asked(const Asked&) = delete;
    Asked& operator=(const Asked&) = delete;

    /// Whether the index finds a record with the value; so it must, if the value can be asked for in its way.
    bool Finds(const KeyIndex& index, KeyIndex::By by, Shown shown, const Value& value, std::uint64_t number)
    {
        Bind(value);
        Require(sqlite3_step(m_statement) == SQLITE_ROW);
        sqlite3_value* asked = sqlite3_value_dup(sqlite3_column_value(m_statement, 0));
        if (by == KeyIndex::By::Number)
            sqlite3_value_numeric_type(asked);
        const KeyIndex::Wanted wanted = KeyIndex::WantedBy(shown, asked);
        const bool isNull = sqlite3_value_type(asked) == SQLITE_NULL;
        sqlite3_value_free(asked);
        sqlite3_reset(m_statement);
        const auto places = index.Find(wanted);
        const auto isIt = [&](const KeyIndex::Place& place) { return place.number == number; };
        return isNull || wanted.by != by || std::any_of(places.begin(), places.end(), isIt);
    }

private:
    void Bind(const Value& value)
    {
        const auto size = value.text.size();
        switch (value.kind) {
        case Value::Kind::Null:
            sqlite3_bind_null(m_statement, 1);
            break;
        case Value::Kind::Integer:
            sqlite3_bind_int64(m_statement, 1, value.integer);
            break;
        case Value::Kind::Real:
            sqlite3_bind_double(m_statement, 1, value.real);
            break;
        case Value::Kind::Text:
            sqlite3_bind_text64(m_statement, 1, value.text.data(), size, SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        case Value::Kind::Bytes:
            sqlite3_bind_blob64(m_statement, 1, value.text.data(), size, SQLITE_TRANSIENT);
            break;
        }
    }

    sqlite3* m_engine = nullptr;
    sqlite3_stmt* m_statement = nullptr;
};

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
    CompareStatements(text, QuoteLongNumbers(std::string(text), isDecimal, {{}, {"W"}}));
}

/// Decodes the field of a record that may end inside it, by the file's end or its own.
const char* Decode(const FieldDecoder& decoder, std::string_view record, Value& value, std::string& room)
{
    const std::string_view bytes = decoder.In(record);
    if (!decoder.IsWhole(bytes) && decoder.MayBeCut()) {
        Value beginning;
        if (decoder.DecodeBeginning(bytes, beginning, room) == nullptr)
            Touch(beginning.text);
    }
    return decoder.Decode(bytes, value, room);
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
    const bool isNumber = shown == Shown::Integer || shown == Shown::Real || shown == Shown::Bit;
    const KeyIndex::By by = (data[2] & 64) != 0 && !isNumber ? KeyIndex::By::Number : KeyIndex::By::Value;
    KeyIndex index(shown, by);
    struct Added {
        std::string text;
        Value value;
        std::uint64_t number;
    };
    constexpr std::size_t mostAsked = 64;
    std::vector<Added> added;
    RecordCursor cursor(format, {reinterpret_cast<const char*>(data) + choices, size - choices});
    std::string room;
    bool isRecord = true;
    while (isRecord) {
        isRecord = cursor.Next() == RecordCursor::Step::Record;
        Touch(cursor.Bytes());
        CompareForms(cursor.Bytes());
        ReadTexts(cursor.Bytes());
        Value value;
        if (Decode(decoder, cursor.Bytes(), value, room) != nullptr)
            continue;
        Touch(value.text);
        Require(value.kind != Value::Kind::Text || value.text.find('\0') == std::string_view::npos);
        index.Add(value, {cursor.Position(), cursor.Number()});
        if (added.size() < mostAsked)
            added.push_back({std::string(value.text), value, cursor.Number()});
        if (shown == Shown::Integer && value.kind == Value::Kind::Integer &&
            (value.integer < limits.least || value.integer > limits.most))
            std::abort();
    }
    index.Sort();
    static Asked asked;
    for (Added& one : added) {
        one.value.text = one.text;
        Require(asked.Finds(index, by, shown, one.value, one.number));
    }
    cursor.Seek(data[6] * 3u, 1u + data[7]);
    Touch(cursor.Bytes());
    return 0;
}
