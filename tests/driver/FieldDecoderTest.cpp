#include "FieldDecoder.h"
#include "KnownBytes.h"
#include "OdbcClient.h"
#include "Resources.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <cstdio>
#include <random>
#include <set>

using namespace knownbytes;
using namespace tarnwick::records;
using namespace std::string_literals;

namespace
{

/// The rows of TW_LOCDT in a new catalog.
class LocalTypes
{
public:
    struct Row {
        std::string name;
        std::string sqlType;
        std::string attributes;
    };

    static const std::vector<Row>& All()
    {
        static const std::vector<Row> rows = Read();
        return rows;
    }

    static const Row& Named(const std::string& name)
    {
        for (const Row& row : All())
            if (row.name == name)
                return row;
        throw std::runtime_error("no storage type " + name);
    }

private:
    static std::vector<Row> Read()
    {
        std::vector<Row> rows;
        sqlite3* engine = nullptr;
        sqlite3_open(":memory:", &engine);
        sqlite3_exec(engine, tarnwick::resources::tables, nullptr, nullptr, nullptr);
        sqlite3_exec(engine, tarnwick::resources::localTypes, nullptr, nullptr, nullptr);
        const auto add = [](void* target, int, char** cells, char**) {
            static_cast<std::vector<Row>*>(target)->push_back({cells[0], cells[1], cells[2]});
            return 0;
        };
        sqlite3_exec(engine, "SELECT LOCAL_TYPE_NAME, SQL_TYPE_NAME, ATTRIBUTES FROM TW_LOCDT", add, &rows, nullptr);
        sqlite3_close(engine);
        return rows;
    }
};

Field MakeField(const std::string& typeName, std::size_t length, int scale = 0, const std::string& format = "")
{
    const LocalTypes::Row& row = LocalTypes::Named(typeName);
    Field field;
    field.name = "F";
    field.typeName = typeName;
    field.type = StorageType::Read(row.name, row.sqlType, row.attributes);
    field.length = length;
    field.scale = scale;
    field.format = format;
    return field;
}

/// A value as text: `~` for null, `!` and the reason for bytes that are no value.
std::string Shows(const Field& field, Shown shown, const std::string& bytes, const char* page = "ISO-8859-1")
{
    const FieldDecoder decoder(field, shown, CodePage::Find(page));
    Value value;
    std::string room;
    if (const char* reason = decoder.Decode(bytes, value, room))
        return std::string("!") + reason;
    char text[64];
    switch (value.kind) {
    case Value::Kind::Null:
        return "~";
    case Value::Kind::Integer:
        return std::to_string(value.integer);
    case Value::Kind::Real:
        std::snprintf(text, sizeof text, "%.17g", value.real);
        return text;
    case Value::Kind::Text:
    case Value::Kind::Bytes:
        return std::string(value.text);
    }
    return "?";
}

bool LiesIn(const std::string& whole, std::string_view part)
{
    const std::less_equal<const char*> isUpTo;
    return part.empty() ||
           (isUpTo(whole.data(), part.data()) && isUpTo(part.data() + part.size(), whole.data() + whole.size()));
}

} // namespace

TEST(FieldDecoder, NumbersOfEveryTypeComeWithTheirSignAndScale)
{
    for (const NumberCase& number : Numbers()) {
        const Field field = MakeField(number.type, number.bytes.size(), number.scale);
        EXPECT_EQ(Shows(field, Shown::Decimal, number.bytes, number.page), number.decimal)
            << number.type << " " << number.decimal;
    }
}

TEST(FieldDecoder, AFormThatCannotHoldANumberRefusesIt)
{
    const Field large = MakeField("UNSIGNED-8", 8);
    EXPECT_EQ(Shows(large, Shown::Integer, std::string(8, '\xFF')), "!the number is too large for its column");
    const Field least = MakeField("INTEGER-8-BE", 8);
    EXPECT_EQ(Shows(least, Shown::Integer, "\x80\0\0\0\0\0\0\0"s), "-9223372036854775808");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 4, 2), Shown::Integer, "1200"), "12");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 4, 2), Shown::Integer, "1250"),
              "!it has digits behind the point, and its column has none");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 18, -3), Shown::Integer, "999999999999999999"),
              "!the number is too large for its column");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 4, -3), Shown::Integer, "0012"), "12000");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 38, -1), Shown::Integer, "68056473384187692692674921486353642292"),
              "!the number is too large for its column")
        << "ten times this is 0 in 128 bits, and a little more";
    EXPECT_EQ(Shows(MakeField("ZONED-U", 8, 2, "YYYYMMDD"), Shown::Date, "19990101"),
              "!it has a scale, and no date has");
}

TEST(FieldDecoder, AColumnsLimitsHoldForItsNumbers)
{
    const auto shows = [](const char* type, const std::string& bytes, IntegerLimits limits) {
        const FieldDecoder decoder(MakeField(type, bytes.size()), Shown::Integer, CodePage::Utf8(), limits);
        Value value;
        std::string room;
        const char* const reason = decoder.Decode(bytes, value, room);
        return reason ? std::string(reason) : std::to_string(value.integer);
    };
    EXPECT_EQ(shows("NUMERIC", "  -128", {-128, 127}), "-128");
    EXPECT_EQ(shows("NUMERIC", "  -129", {-128, 127}), "the number is too large for its column");
    EXPECT_EQ(shows("NUMERIC", "   128", {-128, 127}), "the number is too large for its column");
    EXPECT_EQ(shows("FLOAT-4-BE", "\x43\x00\x00\x00"s, {-128, 127}), "the number is too large for its column");
    EXPECT_EQ(shows("FLOAT-4-BE", "\x42\xFE\x00\x00"s, {-128, 127}), "127");
}

TEST(FieldDecoder, AFloatingPointNumberIsTheNearestToTheDecimal)
{
    EXPECT_EQ(Shows(MakeField("PACKED", 8, 2), Shown::Real, "\x01\x23\x45\x67\x89\x01\x23\x4D"), "-123456789012.34");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 1, 1), Shown::Real, "1"), "0.10000000000000001");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 31, 30), Shown::Real, "1000000000000000000000000000001"), "1");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 3, -30), Shown::Real, "001"), "1e+30");
}

TEST(FieldDecoder, FloatingPointNumbersOfEveryMachineAreRead)
{
    for (const RealCase& number : Reals())
        EXPECT_EQ(Shows(MakeField(number.type, number.bytes.size()), Shown::Real, number.bytes), number.real)
            << number.type;
}

TEST(FieldDecoder, TextsDatesAndBytesComeAsTheirColumnsShowThem)
{
    for (const TextCase& text : Texts()) {
        const Field field = MakeField(text.type, text.bytes.size(), 0, text.format);
        EXPECT_EQ(Shows(field, text.shown, text.bytes, text.page), text.text) << text.type << " " << text.text;
    }
}

TEST(FieldDecoder, PlainTextIsNotCopied)
{
    const std::string bytes = "Harry     ";
    const FieldDecoder decoder(MakeField("STRING", bytes.size()), Shown::Text, CodePage::Utf8());
    Value value;
    std::string room;
    ASSERT_EQ(decoder.Decode(bytes, value, room), nullptr);
    EXPECT_EQ(value.text.data(), bytes.data());
}

TEST(FieldDecoder, ASignInAPlaceOfItsOwnIsNoDigit)
{
    const std::pair<const char*, std::size_t> digits[] = {{"ZONED", 16},    {"ZONED-U", 16}, {"NUMERIC", 16},
                                                          {"ZONED-LO", 16}, {"ZONED-S", 15}, {"ZONED-LS", 15}};
    for (const auto& [type, count] : digits)
        EXPECT_EQ(DigitsOf(MakeField(type, 16)), count) << type;
}

TEST(FieldDecoder, WhatNoBytesCanBeIsKnownBeforeAnyAreRead)
{
    const auto problem = [](const Field& field, Shown shown) {
        const char* const text = FieldDecoder(field, shown, CodePage::Utf8()).Problem();
        return std::string(text ? text : "none");
    };
    EXPECT_EQ(problem(MakeField("TIME", 8), Shown::Date), "the field's format has no year");
    EXPECT_EQ(problem(MakeField("STRING", 8), Shown::Date), "the field has no format");
    EXPECT_EQ(problem(MakeField("TIME", 8), Shown::Time), "none");
    EXPECT_EQ(problem(MakeField("FLOAT-4", 4), Shown::Bytes), "none");
    EXPECT_EQ(problem(MakeField("ZONED", 4), Shown::Text), "none");
    Field unknown = MakeField("ZONED", 4);
    unknown.type.kind = StorageType::Kind::Unknown;
    for (const Shown shown : {Shown::Text, Shown::Bytes})
        EXPECT_EQ(problem(unknown, shown), "the storage type is not known");
}

TEST(FieldDecoder, OfATextThatIsCutItsWholeCharactersAreShown)
{
    const auto beginning = [](const char* type, const std::string& bytes, const char* page, Shown shown = Shown::Text) {
        const FieldDecoder decoder(MakeField(type, 40), shown, CodePage::Find(page));
        EXPECT_TRUE(decoder.MayBeCut()) << type;
        Value value;
        std::string room;
        if (const char* const reason = decoder.DecodeBeginning(bytes, value, room))
            return std::string("!") + reason;
        return value.kind == Value::Kind::Null ? "~" : std::string(value.text);
    };
    const std::string noCharacters = "!they are no characters of the file's code page";
    EXPECT_EQ(beginning("STRING", "ab  ", "UTF-8"), "ab");
    EXPECT_EQ(beginning("STRING", "J\xC3", "UTF-8"), "J");
    EXPECT_EQ(beginning("STRING", "J\xE6\x97", "UTF-8"), "J");
    EXPECT_EQ(beginning("STRING", "J\xF0\x9F\x98", "UTF-8"), "J");
    EXPECT_EQ(beginning("STRING", "J\xC3\xBC", "UTF-8"), "Jü");
    EXPECT_EQ(beginning("STRING", "\xC3", "UTF-8"), "~") << "nothing of it is there";
    EXPECT_EQ(beginning("STRING", "J\xFCr\xC3", "UTF-8"), noCharacters) << "that is no matter of the cut";
    EXPECT_EQ(beginning("STRING", "J\x9F", "UTF-8"), noCharacters);
    EXPECT_EQ(beginning("STRING", "a\x93\xFA\x96", "SHIFT_JIS"), "a日");
    EXPECT_EQ(beginning("STRING", "a\xFF\x96", "SHIFT_JIS"), noCharacters);
    EXPECT_EQ(beginning("STRING", "\xFC\xC3", "ISO-8859-1"), "üÃ");
    EXPECT_EQ(beginning("STRING-UTF16", "a\0\x3D\xD8\x00"s, "UTF-8"), "a");
    EXPECT_EQ(beginning("STRING-COUNTED", "\x08\0abc\xC3"s, "UTF-8"), "abc");
    EXPECT_EQ(beginning("STRING-COUNTED", "\x02\0abc"s, "UTF-8"), "ab");
    EXPECT_EQ(beginning("STRING-COUNTED", "\0\0"s, "UTF-8"), "");
    EXPECT_EQ(beginning("STRING-COUNTED", "\x27\0abc"s, "UTF-8"), "!the count is beyond the field's end");
    EXPECT_EQ(beginning("STRING-COUNTED", "\x02", "UTF-8"), "!the field has no place for a count of 2 bytes");
    EXPECT_EQ(beginning("STRING-COUNTED", "\x08\0abc\xC3"s, "UTF-8", Shown::Bytes), "abc\xC3");
    EXPECT_EQ(beginning("STRING-ZERO", "ab\0\xC3"s, "UTF-8"), "ab");
    EXPECT_EQ(beginning("STRING-ZERO", "ab\0\xC3"s, "UTF-8", Shown::Bytes), "ab");
    EXPECT_EQ(beginning("HEXADECIMAL", "\x0A\xC3", "UTF-8"), "0AC3");
    EXPECT_EQ(beginning("PACKED", "\x12\xA4", "UTF-8", Shown::Bytes), "\x12\xA4");
}

TEST(FieldDecoder, NoTextIsLongerThanItIsSaidToBe)
{
    std::mt19937 random(19991231);
    std::string room;
    for (const LocalTypes::Row& row : LocalTypes::All())
        for (const std::size_t length : {2u, 4u, 8u, 12u})
            for (const int scale : {-5, 0, 3, 30}) {
                const Field field = MakeField(row.name, length, scale);
                const FieldDecoder decoder(field, Shown::Text, CodePage::Find("ISO-8859-1"));
                for (int i = 0; i < 200; ++i) {
                    std::string bytes(length, '\0');
                    for (char& byte : bytes)
                        byte = static_cast<char>(i % 2 == 0 ? '0' + random() % 10 : random());
                    Value value;
                    if (decoder.Decode(bytes, value, room))
                        continue;
                    EXPECT_LE(Wide(std::string(value.text)).size() - 1, CharactersOf(field))
                        << row.name << " " << length << " " << scale << " " << value.text;
                }
            }
}

TEST(FieldDecoder, AnEncryptedFieldIsRefused)
{
    Field field = MakeField("STRING", 4);
    field.isEncrypted = true;
    EXPECT_EQ(Shows(field, Shown::Text, "abcd"), "!the field is encrypted, and there is no key to read it");
}

TEST(FieldDecoder, EveryTypeOfTheCatalogIsHeldToKnownBytes)
{
    std::set<std::string> held;
    for (const NumberCase& number : Numbers())
        held.insert(number.type);
    for (const RealCase& number : Reals())
        held.insert(number.type);
    for (const TextCase& text : Texts())
        held.insert(text.type);
    for (const LocalTypes::Row& row : LocalTypes::All())
        EXPECT_EQ(held.count(row.name), 1u) << row.name;
}

TEST(FieldDecoder, EveryTypeOfTheCatalogIsKnown)
{
    EXPECT_GE(LocalTypes::All().size(), 60u);
    for (const LocalTypes::Row& row : LocalTypes::All())
        EXPECT_NE(StorageType::Read(row.name, row.sqlType, row.attributes).kind, StorageType::Kind::Unknown)
            << row.name;
    const StorageType unknown = StorageType::Read("X", "VARCHAR", "SOMETHING;LENGTH=4");
    EXPECT_EQ(unknown.kind, StorageType::Kind::Unknown);
}

TEST(FieldDecoder, RandomBytesAreAValueOrARefusalInEveryForm)
{
    std::mt19937 random(20181031);
    std::string room;
    for (const LocalTypes::Row& row : LocalTypes::All())
        for (const Shown shown : {Shown::Integer, Shown::Real, Shown::Decimal, Shown::Text, Shown::Bytes, Shown::Bit,
                                  Shown::Date, Shown::Time, Shown::Timestamp})
            for (const char* page : {"UTF-8", "EBCDIC-1047", "SHIFT-JIS"}) {
                const int scale = static_cast<int>(random() % 70) - 32;
                const FieldDecoder decoder(MakeField(row.name, 1, scale, random() % 2 == 0 ? "YYYYMMDD" : ""), shown,
                                           CodePage::Find(page));
                for (int i = 0; i < 60; ++i) {
                    std::string bytes(random() % 45, '\0');
                    for (char& byte : bytes)
                        byte = static_cast<char>(random() % 3 == 0 ? '0' + random() % 10 : random());
                    Value value;
                    const char* const reason = decoder.Decode(bytes, value, room);
                    EXPECT_TRUE(reason || LiesIn(bytes, value.text) || LiesIn(room, value.text));
                    EXPECT_TRUE(reason || value.kind != Value::Kind::Text ||
                                value.text.find('\0') == std::string_view::npos);
                }
            }
}

TEST(FieldDecoder, TheBeginningOfRandomBytesIsAValueOrARefusalInEveryForm)
{
    std::mt19937 random(20191215);
    std::string room;
    for (const LocalTypes::Row& row : LocalTypes::All())
        for (const Shown shown : {Shown::Text, Shown::Bytes})
            for (const char* page : {"UTF-8", "ISO-8859-1", "SHIFT-JIS", "GB18030", "CP1258", "ISO-2022-JP"}) {
                const FieldDecoder decoder(MakeField(row.name, 45), shown, CodePage::Find(page));
                for (int i = 0; decoder.MayBeCut() && i < 60; ++i) {
                    std::string bytes(1 + random() % 44, '\0');
                    for (char& byte : bytes)
                        byte = static_cast<char>(random() % 3 == 0 ? 'a' + random() % 26 : random());
                    Value value;
                    const char* const reason = decoder.DecodeBeginning(bytes, value, room);
                    EXPECT_TRUE(reason || LiesIn(bytes, value.text) || LiesIn(room, value.text));
                    EXPECT_TRUE(reason || value.kind != Value::Kind::Text ||
                                value.text.find('\0') == std::string_view::npos);
                }
            }
}
