#include "FieldEncoder.h"

#include "Resources.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <cmath>
#include <map>

using namespace tarnwick::records;
using namespace tarnwick::samples;
using namespace std::string_literals;

namespace
{

struct LocalType {
    std::string sqlType;
    std::string attributes;
};

/// TW_LOCDT of a new catalog by LOCAL_TYPE_NAME.
const std::map<std::string, LocalType>& LocalTypes()
{
    static const std::map<std::string, LocalType> types = [] {
        std::map<std::string, LocalType> read;
        sqlite3* engine = nullptr;
        sqlite3_open(":memory:", &engine);
        sqlite3_exec(engine, tarnwick::resources::tables, nullptr, nullptr, nullptr);
        sqlite3_exec(engine, tarnwick::resources::localTypes, nullptr, nullptr, nullptr);
        const auto add = [](void* target, int, char** cells, char**) {
            (*static_cast<std::map<std::string, LocalType>*>(target))[cells[0]] = {cells[1], cells[2]};
            return 0;
        };
        sqlite3_exec(engine, "SELECT LOCAL_TYPE_NAME, SQL_TYPE_NAME, ATTRIBUTES FROM TW_LOCDT", add, &read, nullptr);
        sqlite3_close(engine);
        return read;
    }();
    return types;
}

Field MakeField(const std::string& type, std::size_t length, int scale = 0, const std::string& format = "")
{
    const LocalType& row = LocalTypes().at(type);
    Field field;
    field.name = "F";
    field.typeName = type;
    field.type = StorageType::Read(type, row.sqlType, row.attributes);
    field.length = length;
    field.scale = scale;
    field.format = format;
    return field;
}

std::string Encode(const Field& field, const SourceValue& value, const char* page = "UTF-8")
{
    return FieldEncoder(field, CodePage::Find(page)).Encode(value);
}

/// Why a value is refused; empty if it is not.
std::string Refusal(const Field& field, const SourceValue& value, const char* page = "UTF-8")
{
    try {
        Encode(field, value, page);
        return {};
    } catch (const EncodingError& error) {
        return error.what();
    }
}

Shown ShownAs(const std::string& type)
{
    const std::string& sql = LocalTypes().at(type).sqlType;
    if (sql == "DATE")
        return Shown::Date;
    if (sql == "TIME")
        return Shown::Time;
    if (sql == "TIMESTAMP")
        return Shown::Timestamp;
    if (sql == "BINARY")
        return Shown::Bytes;
    return sql == "CHAR" || sql == "VARCHAR" ? Shown::Text : Shown::Decimal;
}

/// What the decoder makes of bytes.
SourceValue Decode(const Field& field, const std::string& bytes, const char* page)
{
    const FieldDecoder decoder(field, ShownAs(field.typeName), CodePage::Find(page));
    Value value;
    std::string room;
    const char* const reason = decoder.Decode(bytes, value, room);
    EXPECT_EQ(reason, nullptr) << field.typeName << ": " << reason;
    if (value.kind == Value::Kind::Null)
        return std::nullopt;
    if (value.kind == Value::Kind::Integer)
        return std::to_string(value.integer);
    return std::string(value.text);
}

struct Trip {
    std::size_t length;
    int scale;
    std::string format;
    std::vector<SourceValue> values;
};

/// Values at the edges of every storage type.
std::map<std::string, Trip> Trips()
{
    const SourceValue null;
    std::map<std::string, Trip> trips = {
        {"STRING", {6, 0, "", {"", "abcdef", "a b"}}},
        {"STRING-COUNTED", {6, 0, "", {"", "abcd", " a  "}}},
        {"STRING-ZERO", {6, 0, "", {"", "abcde", " a "}}},
        {"STRING-EBCDIC", {6, 0, "", {"", "abcdef", "A 1-z"}}},
        {"STRING-UTF16", {8, 0, "", {"", "aöя山", "𝄞x"}}},
        {"NUMERIC", {5, 2, "", {null, "0.00", "999.99", "-99.99", "0.01"}}},
        {"ZONED", {5, 2, "", {null, "0.00", "999.99", "-999.99", "-0.10"}}},
        {"ZONED-NUM", {5, 2, "", {null, "0.00", "999.99", "-999.99", "-0.10"}}},
        {"ZONED-S", {5, 2, "", {null, "0.00", "99.99", "-99.99"}}},
        {"ZONED-U", {5, 2, "", {null, "0.00", "999.99"}}},
        {"ZONED-LS", {5, 2, "", {null, "0.00", "99.99", "-99.99"}}},
        {"ZONED-LO", {5, 2, "", {null, "0.00", "999.99", "-999.99", "-0.10"}}},
        {"ZONED-RO", {5, 2, "", {null, "0.00", "999.99", "-999.99", "-0.10"}}},
        {"PACKED", {3, 2, "", {"0.00", "999.99", "-999.99", "-0.01"}}},
        {"PACKED-U", {3, 2, "", {"0.00", "999.99"}}},
        {"PACKED-NS", {3, 2, "", {"0.00", "9999.99"}}},
        {"FLOAT-4", {4, 0, "", {"0", "0.1", "-2.5", "1e+20"}}},
        {"FLOAT-8", {8, 0, "", {"0", "0.1", "-2.5", "1e+200"}}},
        {"FLOAT-4-BE", {4, 0, "", {"0", "0.1", "-2.5"}}},
        {"FLOAT-8-BE", {8, 0, "", {"0", "0.1", "-2.5"}}},
        {"F-FLOAT", {4, 0, "", {"0", "0.1", "-2.5", "1.7e+38"}}},
        {"D-FLOAT", {8, 0, "", {"0", "0.1", "-2.5", "1.7e+38"}}},
        {"G-FLOAT", {8, 0, "", {"0", "0.1", "-2.5", "8.9e+307"}}},
        {"HEX-FLOAT-4", {4, 0, "", {"0", "0.0625", "-118.625", "1", "0.5"}}},
        {"HEX-FLOAT-8", {8, 0, "", {"0", "0.0625", "-118.625", "1e+70"}}},
        {"BOOLEAN", {1, 0, "", {"0", "1"}}},
        {"BINARY-STRING", {3, 0, "", {"\0\xFF\n"s}}},
        {"HEXADECIMAL", {3, 0, "", {"00FF0A"}}},
        {"DATE", {11, 0, "DD-MMM-YYYY", {null, "1998-12-31", "2000-02-29"}}},
        {"TIME", {5, 0, "hh:mm", {null, "00:00:00", "23:59:00"}}},
        {"DATE-YYYYMMDD", {8, 0, "", {null, "1998-12-31", "0001-01-01"}}},
        {"DATE-YYMMDD", {6, 0, "", {null, "1950-01-01", "2049-12-31"}}},
        {"TIME-HHMMSS", {6, 0, "", {null, "23:59:59"}}},
        {"TIMESTAMP", {19, 0, "", {null, "1998-12-31 23:59:59"}}},
        {"TIMESTAMP-8", {8, 0, "", {"1858-11-17 00:00:00", "1998-12-31 23:59:59", "9999-12-31 23:59:59"}}},
        {"SECONDS-4", {4, 0, "", {"1901-12-13 20:45:52", "1970-01-01 00:00:00", "2038-01-19 03:14:07"}}},
    };
    for (int bytes = 1; bytes <= 8; ++bytes)
        for (const char* order : {"", "-BE"}) {
            const std::string suffix = std::to_string(bytes) + order;
            const auto highest = static_cast<std::uint64_t>(-1) >> (64 - 8 * bytes);
            const auto lowest = -static_cast<std::int64_t>(highest / 2) - 1;
            if (LocalTypes().contains("INTEGER-" + suffix))
                trips["INTEGER-" + suffix] = {static_cast<std::size_t>(bytes),
                                              0,
                                              "",
                                              {"0", "-1", std::to_string(highest / 2), std::to_string(lowest)}};
            if (LocalTypes().contains("UNSIGNED-" + suffix))
                trips["UNSIGNED-" + suffix] = {static_cast<std::size_t>(bytes), 0, "", {"0", std::to_string(highest)}};
        }
    return trips;
}

} // namespace

TEST(FieldEncoder, EveryStorageTypeGivesItsValuesBack)
{
    const std::map<std::string, Trip> trips = Trips();
    for (const auto& [type, row] : LocalTypes()) {
        ASSERT_TRUE(trips.contains(type)) << type;
        const Trip& trip = trips.at(type);
        const Field field = MakeField(type, trip.length, trip.scale, trip.format);
        for (const char* page : {"UTF-8", "LATIN-1", "EBCDIC-037"})
            for (const SourceValue& value : trip.values) {
                SCOPED_TRACE(type + " in " + page + ": " + value.value_or("null"));
                const std::string bytes = Encode(field, value, page);
                EXPECT_EQ(bytes.size(), trip.length);
                EXPECT_EQ(Decode(field, bytes, page), value);
            }
    }
}

TEST(FieldEncoder, SignsStandWhereTheStorageTypeHasThem)
{
    EXPECT_EQ(Encode(MakeField("NUMERIC", 4), "-12"), "-012");
    EXPECT_EQ(Encode(MakeField("ZONED", 4), "-12"), "001r");
    EXPECT_EQ(Encode(MakeField("ZONED-RO", 4), "-12"), "001K");
    EXPECT_EQ(Encode(MakeField("ZONED-RO", 4), "10"), "001{");
    EXPECT_EQ(Encode(MakeField("ZONED-LO", 4), "-1200"), "J200");
    EXPECT_EQ(Encode(MakeField("ZONED-S", 4), "12"), "012+");
    EXPECT_EQ(Encode(MakeField("ZONED-LS", 4), "-12"), "-012");
    EXPECT_EQ(Encode(MakeField("ZONED", 3), "-12", "EBCDIC-037"), "\xF0\xF1\xD2");
    EXPECT_EQ(Encode(MakeField("ZONED-RO", 3), "12", "EBCDIC-037"), "\xF0\xF1\xC2");
    EXPECT_EQ(Encode(MakeField("ZONED-LS", 3), "-12", "EBCDIC-037"), "\x60\xF1\xF2");
    EXPECT_EQ(Encode(MakeField("PACKED", 3, 2), "-12.3"), "\x01\x23\x0D");
    EXPECT_EQ(Encode(MakeField("PACKED", 2), "12"), "\x01\x2C");
    EXPECT_EQ(Encode(MakeField("PACKED-U", 2), "12"), "\x01\x2F");
    EXPECT_EQ(Encode(MakeField("PACKED-NS", 2), "12"), "\x00\x12"s);
    EXPECT_EQ(Encode(MakeField("PACKED", 2, -2), "1200"), "\x01\x2C");
}

TEST(FieldEncoder, BinaryNumbersHaveTheBytesOfTheirMachine)
{
    EXPECT_EQ(Encode(MakeField("INTEGER-3", 3), "-2"), "\xFE\xFF\xFF");
    EXPECT_EQ(Encode(MakeField("INTEGER-4-BE", 4, 2), "2.58"), "\0\0\1\2"s);
    EXPECT_EQ(Encode(MakeField("F-FLOAT", 4), "1"), "\x80\x40\0\0"s);
    EXPECT_EQ(Encode(MakeField("D-FLOAT", 8), "-1"), "\x80\xC0\0\0\0\0\0\0"s);
    EXPECT_EQ(Encode(MakeField("G-FLOAT", 8), "1"), "\x10\x40\0\0\0\0\0\0"s);
    EXPECT_EQ(Encode(MakeField("HEX-FLOAT-4", 4), "-118.625"), "\xC2\x76\xA0\0"s);
    EXPECT_EQ(Encode(MakeField("FLOAT-4", 4), "1"), "\0\0\x80\x3F"s);
    EXPECT_EQ(Encode(MakeField("TIMESTAMP-8", 8), "1858-11-17 00:00:01"), "\x80\x96\x98\0\0\0\0\0"s);
}

TEST(FieldEncoder, TextIsOfTheFilesCodePage)
{
    EXPECT_EQ(Encode(MakeField("STRING", 5), "Lübe", "LATIN-1"), "L\xFC"
                                                                 "be ");
    EXPECT_EQ(Encode(MakeField("STRING", 3), "A1", "EBCDIC-037"), "\xC1\xF1\x40");
    EXPECT_EQ(Encode(MakeField("STRING-EBCDIC", 3), "A1"), "\xC1\xF1\x40");
    EXPECT_EQ(Encode(MakeField("STRING-COUNTED", 5), "ab"), "\2\0ab\0"s);
    EXPECT_EQ(Encode(MakeField("DATE-YYMMDD", 6), "1998-12-31", "EBCDIC-037"), "\xF9\xF8\xF1\xF2\xF3\xF1");
}

TEST(FieldEncoder, ValuesThatDoNotFitAreRefused)
{
    EXPECT_EQ(Refusal(MakeField("STRING", 4), "Längs"), "it needs 6 bytes, and the field has 4");
    EXPECT_EQ(Refusal(MakeField("STRING", 9), "Ключ", "LATIN-1"), "the file's code page has no character К");
    EXPECT_EQ(Refusal(MakeField("STRING", 9), "\xC3"), "its bytes are no UTF-8");
    EXPECT_EQ(Refusal(MakeField("STRING-ZERO", 4), "four"), "it needs 5 bytes, and the field has 4");
    EXPECT_EQ(Refusal(MakeField("STRING-COUNTED", 4), "abc"), "it needs 5 bytes, and the field has 4");
    EXPECT_EQ(Refusal(MakeField("ZONED", 3), "1000"), "it needs 4 bytes, and the field has 3");
    EXPECT_EQ(Refusal(MakeField("ZONED-S", 3), "100"), "it needs 4 bytes, and the field has 3");
    EXPECT_EQ(Refusal(MakeField("ZONED-U", 3), "-1"), "it is negative, and the field has no sign");
    EXPECT_EQ(Refusal(MakeField("ZONED", 5, 2), "1.005"), "it has more digits behind the point than the field");
    EXPECT_EQ(Refusal(MakeField("ZONED", 5), "1e3"), "it is no decimal number");
    EXPECT_EQ(Refusal(MakeField("ZONED", 5), ""), "it is no decimal number");
    EXPECT_EQ(Refusal(MakeField("PACKED", 2), "1000"), "it needs 3 bytes, and the field has 2");
    EXPECT_EQ(Refusal(MakeField("PACKED-U", 2), "-1"), "it is negative, and the field has no sign");
    EXPECT_EQ(Refusal(MakeField("PACKED", 2, -2), "150"), "it ends in a digit that the field leaves out");
    for (const char* beyond : {"128", "-129", "99999999999999999999"})
        EXPECT_EQ(Refusal(MakeField("INTEGER-1", 1), beyond), "the field's integers do not reach so far");
    EXPECT_EQ(Refusal(MakeField("UNSIGNED-1", 1), "-1"), "the field's integers do not reach so far");
    EXPECT_EQ(Refusal(MakeField("F-FLOAT", 4), "2e38"), "the field's floating point numbers do not reach so far");
    EXPECT_EQ(Refusal(MakeField("FLOAT-4", 4), "1e39"), "the field's floating point numbers do not reach so far");
    EXPECT_EQ(Refusal(MakeField("HEX-FLOAT-8", 8), "1e76"), "the field's floating point numbers do not reach so far");
    EXPECT_EQ(Refusal(MakeField("FLOAT-8", 8), "1,5"), "it is no number");
    EXPECT_EQ(Refusal(MakeField("BOOLEAN", 1), "2"), "it is neither 0 nor 1");
    EXPECT_EQ(Refusal(MakeField("BINARY-STRING", 2), "abc"), "it needs 3 bytes, and the field has 2");
    EXPECT_EQ(Refusal(MakeField("HEXADECIMAL", 2), "00FG"), "a character is no hexadecimal digit");
    EXPECT_EQ(Refusal(MakeField("HEXADECIMAL", 2), "00F"), "it needs 2 bytes, and the field has 2");
    EXPECT_EQ(Refusal(MakeField("DATE", 10), "1998-02-29"), "it is no date and no time");
    EXPECT_EQ(Refusal(MakeField("DATE-YYMMDD", 6), "1949-12-31"), "the format YYMMDD cannot show it");
    EXPECT_EQ(Refusal(MakeField("TIME", 5, 0, "hh:mm"), "10:15:30"), "the format hh:mm cannot show it");
    EXPECT_EQ(Refusal(MakeField("TIMESTAMP-8", 8), "1858-11-16 23:59:59"), "it lies before 17 November 1858");
    EXPECT_EQ(Refusal(MakeField("SECONDS-4", 4), "2038-01-19 03:14:08"),
              "it lies beyond the seconds that 4 bytes count");
}

TEST(FieldEncoder, OnlyDatesTimesAndZonedNumbersCanBeNull)
{
    EXPECT_EQ(Encode(MakeField("DATE", 4), std::nullopt), "    ");
    EXPECT_EQ(Encode(MakeField("ZONED", 2), std::nullopt, "EBCDIC-037"), "\x40\x40");
    for (const char* type : {"STRING", "PACKED", "INTEGER-2", "FLOAT-8", "BOOLEAN", "TIMESTAMP-8", "HEXADECIMAL"})
        EXPECT_EQ(Refusal(MakeField(type, 2), std::nullopt), "it is null, for which the storage type has no bytes");
}

TEST(FieldEncoder, EncryptedBytesAreTakenAsTheyAre)
{
    Field field = MakeField("PACKED", 3);
    field.isEncrypted = true;
    EXPECT_EQ(Encode(field, "\xFA\xCE\xBA"), "\xFA\xCE\xBA");
    EXPECT_EQ(Refusal(field, "\xFA"), "it needs 1 bytes, and the field has 3");
    EXPECT_NE(Refusal(field, std::nullopt), "");
}
