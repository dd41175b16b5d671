#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>

// The limits that a client reads out of a storage type's attributes, read here once more and apart from any client.

namespace
{

struct Range {
    long initial = 0;
    long lowest = 0;
    long highest = 0;
    bool editable = false;
};

struct Limits {
    Range length;
    Range precision;
    Range scale;
    std::string format;
    bool formatIsEditable = false;
};

/// The text behind a key, up to the next semicolon.
std::string Behind(const std::string& key, const std::string& text)
{
    const std::size_t at = text.find(key);
    if (at == std::string::npos)
        return {};
    const std::size_t begin = at + key.size();
    return text.substr(begin, text.find(';', begin) - begin);
}

long NumberBehind(const std::string& key, const std::string& text)
{
    return std::atol(("0" + Behind(key, text)).c_str());
}

/// A bound: an absent one, 0 and a negative one read alike.
long Bound(const std::string& key, const std::string& text, long otherwise)
{
    const long bound = NumberBehind(key, text);
    return bound == 0 ? otherwise : bound;
}

long Digits(bool isUnsigned, long bytes, long otherwise)
{
    const long withSign[] = {3, 5, 7, 10, 12, 15, 17, 19};
    const long without[] = {3, 5, 8, 10, 13, 15, 17, 20};
    if (bytes < 1 || bytes > 8)
        return otherwise;
    return (isUnsigned ? without : withSign)[bytes - 1];
}

bool Has(const std::string& text, const std::string& item)
{
    return text.find(item) != std::string::npos;
}

Range LengthOf(const std::string& text)
{
    const long initial = NumberBehind(";DEFAULT_LENGTH=", text);
    if (initial != 0)
        return {initial, Bound(";MIN_LENGTH=", text, 1), Bound(";MAX_LENGTH=", text, 65535), true};
    const long fixed = NumberBehind(";LENGTH=", text);
    return {fixed, fixed, fixed, false};
}

Range PrecisionOf(const std::string& text, const Range& length)
{
    long initial = NumberBehind(";DEFAULT_PRECISION=", text);
    if (initial == 0) {
        const long stated = NumberBehind(";PRECISION=", text);
        const long fixed = stated == 0 ? length.initial : stated;
        return {fixed, fixed, fixed, false};
    }
    const bool binary = text.starts_with(";BINARY");
    const bool packed = text.starts_with(";PACKED");
    const bool binaryString = text.compare(8, 7, "STRING;") == 0;
    if (binary && Has(text, ";INTEGER;"))
        initial = Digits(Has(text, ";UNSIGNED;"), length.initial, initial);
    else if (binary)
        initial = binaryString ? 2 * length.initial : initial;
    else
        initial = packed ? 2 * length.initial : length.initial;
    if (packed)
        return {initial, 2 * length.initial, 2 * length.initial + 1, true};
    return {initial, length.lowest, length.highest, !(binary && binaryString)};
}

Range ScaleOf(const std::string& text)
{
    const std::string initial = Behind(";DEFAULT_SCALE=", text);
    if (initial.empty()) {
        const long fixed = NumberBehind(";SCALE=", text);
        return {fixed, fixed, fixed, false};
    }
    return {std::atol(("0" + initial).c_str()), Bound(";MIN_SCALE=", text, -32), Bound(";MAX_SCALE=", text, 32), true};
}

Limits LimitsOf(const std::string& attributes)
{
    const std::string text = ";" + attributes + ";";
    Limits limits;
    limits.length = LengthOf(text);
    limits.precision = PrecisionOf(text, limits.length);
    limits.scale = ScaleOf(text);
    limits.format = Behind(";DEFAULT_FORMAT=", text);
    limits.formatIsEditable = !limits.format.empty() && !Has(text, ";LENGTH=");
    if (limits.format.empty())
        limits.format = Behind(";FORMAT=", text);
    return limits;
}

/// The default precision as it is read from the text as stored, without semicolons added.
long StoredPrecision(const std::string& text)
{
    long length = NumberBehind(";DEFAULT_LENGTH=", text);
    if (length == 0)
        length = NumberBehind(";LENGTH=", text);
    const long marker = NumberBehind(";DEFAULT_PRECISION=", text);
    if (marker == 0) {
        const long stated = NumberBehind(";PRECISION=", text);
        return stated == 0 ? length : stated;
    }
    if (text.starts_with(";BINARY"))
        return Has(text, ";INTEGER;") ? Digits(Has(text, ";UNSIGNED;"), length, marker) : marker;
    return text.starts_with(";PACKED") ? 2 * length : length;
}

class TypeCatalog : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"))) << client.Failure().message;
        for (const Row& row : client.Execute("SELECT LOCAL_TYPE_NAME, ATTRIBUTES FROM TW_LOCDT").rows)
            types[*row[0]] = *row[1];
    }

    Limits Of(const std::string& type) const
    {
        EXPECT_TRUE(types.contains(type)) << type;
        return LimitsOf(types.at(type));
    }

    OdbcSetup setup;
    OdbcClient client;
    std::map<std::string, std::string> types;
};

void ExpectFixed(const Range& range, long value)
{
    EXPECT_FALSE(range.editable);
    EXPECT_EQ(range.initial, value);
    EXPECT_EQ(range.lowest, value);
    EXPECT_EQ(range.highest, value);
}

void ExpectRange(const Range& range, long initial, long lowest, long highest)
{
    EXPECT_TRUE(range.editable);
    EXPECT_EQ(range.initial, initial);
    EXPECT_EQ(range.lowest, lowest);
    EXPECT_EQ(range.highest, highest);
}

} // namespace

TEST_F(TypeCatalog, EveryDefaultLiesWithinItsLimits)
{
    ASSERT_GT(types.size(), 50u);
    for (const auto& [name, attributes] : types) {
        SCOPED_TRACE(name + ": " + attributes);
        const Limits limits = LimitsOf(attributes);
        EXPECT_GT(limits.length.initial, 0);
        EXPECT_LE(limits.length.highest, 65535);
        for (const Range& range : {limits.length, limits.precision, limits.scale}) {
            EXPECT_LE(range.lowest, range.initial);
            EXPECT_LE(range.initial, range.highest);
        }
        EXPECT_LE(limits.precision.highest, 65535);
        EXPECT_GT(limits.precision.initial, 0);
        EXPECT_GE(limits.scale.lowest, -32);
        EXPECT_LE(limits.scale.highest, 32);
        if (!limits.format.empty()) {
            EXPECT_EQ(static_cast<long>(limits.format.size()), limits.length.initial);
        }
    }
}

TEST_F(TypeCatalog, AttributesAreStoredSoThatBothWaysOfReadingFindEveryKey)
{
    for (const auto& [name, attributes] : types) {
        SCOPED_TRACE(name + ": " + attributes);
        EXPECT_NE(attributes.front(), ';');
        EXPECT_NE(attributes.back(), ';');
        EXPECT_EQ(attributes.substr(0, attributes.find(';')).find('='), std::string::npos);
        const Limits limits = LimitsOf(attributes);
        long storedLength = NumberBehind(";DEFAULT_LENGTH=", attributes);
        if (storedLength == 0)
            storedLength = NumberBehind(";LENGTH=", attributes);
        EXPECT_EQ(storedLength, limits.length.initial);
        const bool readsLength = attributes.starts_with("PACKED") || attributes.starts_with("BINARY;STRING");
        EXPECT_EQ(StoredPrecision(attributes), readsLength ? limits.length.initial : limits.precision.initial);
    }
}

TEST_F(TypeCatalog, NoTypeCarriesANegativeNumberWhichWouldReadAsZero)
{
    for (const auto& [name, attributes] : types)
        EXPECT_EQ(attributes.find("=-"), std::string::npos) << name << ": " << attributes;
}

TEST_F(TypeCatalog, BinaryIntegersHaveTheDigitsOfTheirBytes)
{
    for (long bytes = 1; bytes <= 8; ++bytes) {
        for (const bool isUnsigned : {false, true}) {
            for (const bool bigEndian : {false, true}) {
                if (bytes == 1 && bigEndian)
                    continue;
                const std::string name =
                    (isUnsigned ? "UNSIGNED-" : "INTEGER-") + std::to_string(bytes) + (bigEndian ? "-BE" : "");
                SCOPED_TRACE(name);
                const Limits limits = Of(name);
                ExpectFixed(limits.length, bytes);
                ExpectFixed(limits.precision, Digits(isUnsigned, bytes, 0));
                ExpectRange(limits.scale, 0, -32, Digits(isUnsigned, bytes, 0));
                EXPECT_EQ(Has(types[name], "UNSIGNED"), isUnsigned);
                EXPECT_EQ(Has(types[name], "BIG_ENDIAN"), bigEndian);
            }
        }
    }
}

TEST_F(TypeCatalog, TheWellKnownTypesHaveTheirLimits)
{
    ExpectRange(Of("STRING").length, 10, 1, 65535);
    ExpectRange(Of("STRING").precision, 10, 1, 65535);
    ExpectFixed(Of("STRING").scale, 0);
    for (const char* zoned :
         {"NUMERIC", "ZONED", "ZONED-NUM", "ZONED-S", "ZONED-U", "ZONED-LS", "ZONED-LO", "ZONED-RO"}) {
        SCOPED_TRACE(zoned);
        ExpectRange(Of(zoned).length, 9, 1, 31);
        ExpectRange(Of(zoned).precision, 9, 1, 31);
        ExpectRange(Of(zoned).scale, 0, -32, 31);
    }
    for (const char* packed : {"PACKED", "PACKED-U", "PACKED-NS"}) {
        SCOPED_TRACE(packed);
        ExpectRange(Of(packed).length, 4, 1, 16);
        ExpectRange(Of(packed).precision, 8, 8, 9);
        ExpectRange(Of(packed).scale, 0, -32, 31);
    }
    ExpectFixed(Of("FLOAT-4").length, 4);
    ExpectFixed(Of("FLOAT-4").precision, 7);
    ExpectFixed(Of("FLOAT-8-BE").length, 8);
    ExpectFixed(Of("FLOAT-8-BE").precision, 15);
}

TEST_F(TypeCatalog, HexadecimalHasTwoDigitsToTheByte)
{
    const Limits limits = Of("HEXADECIMAL");
    ExpectRange(limits.length, 4, 1, 65535);
    EXPECT_EQ(limits.precision.initial, 8);
    EXPECT_FALSE(limits.precision.editable);
    EXPECT_GE(limits.precision.highest, 2 * 32767);
}

TEST_F(TypeCatalog, DatesAndTimesAsTextHaveAFormat)
{
    EXPECT_EQ(Of("DATE").format, "YYYY-MM-DD");
    EXPECT_TRUE(Of("DATE").formatIsEditable);
    ExpectRange(Of("DATE").length, 10, 1, 254);
    EXPECT_EQ(Of("TIME").format, "hh:mm:ss");
    EXPECT_TRUE(Of("TIME").formatIsEditable);
    ExpectRange(Of("TIME").length, 8, 1, 254);
    EXPECT_EQ(Of("DATE-YYYYMMDD").format, "YYYYMMDD");
    EXPECT_FALSE(Of("DATE-YYYYMMDD").formatIsEditable);
    ExpectFixed(Of("DATE-YYYYMMDD").length, 8);
}

TEST_F(TypeCatalog, TheTwoTypeCatalogsReferToEachOther)
{
    EXPECT_EQ(
        client.Execute("SELECT COUNT(*) FROM TW_LOCDT WHERE SQL_TYPE_NAME NOT IN (SELECT SQL_TYPE_NAME FROM TW_SQLDT)")
            .Single(),
        "0");
    EXPECT_EQ(
        client
            .Execute(
                "SELECT COUNT(*) FROM TW_SQLDT WHERE LOCAL_TYPE_NAME NOT IN (SELECT LOCAL_TYPE_NAME FROM TW_LOCDT)")
            .Single(),
        "0");
    EXPECT_EQ(client.Execute("SELECT COUNT(*) - COUNT(DISTINCT LOCAL_TYPE_NAME) FROM TW_LOCDT").Single(), "0");
    EXPECT_EQ(client.Execute("SELECT COUNT(*) - COUNT(DISTINCT SQL_TYPE_NAME) FROM TW_SQLDT").Single(), "0");
    EXPECT_EQ(client
                  .Execute("SELECT COUNT(*) FROM TW_LOCDT WHERE length(ATTRIBUTES) > 254 OR length(LOCAL_TYPE_NAME) > "
                           "32 OR REMARKS = ''")
                  .Single(),
              "0");
}

TEST_F(TypeCatalog, NoSqlTypePassesWhatAColumnCanHold)
{
    for (const Row& row : client.Execute("SELECT SQL_TYPE_NAME, LENGTH, PRECISION, SEARCHABLE FROM TW_SQLDT").rows) {
        SCOPED_TRACE(*row[0]);
        for (std::size_t i : {1u, 2u}) {
            EXPECT_GT(std::stol(*row[i]), 0);
            EXPECT_LE(std::stol(*row[i]), 32767);
        }
        EXPECT_LE(std::stol(*row[3]), 3);
    }
    for (const Row& row : client.Execute("SELECT * FROM TW_SQLDT").rows)
        for (const Cell& cell : row)
            EXPECT_TRUE(cell.has_value());
    for (const char* type :
         {"CHAR", "VARCHAR", "LONGVARCHAR", "SMALLINT", "INTEGER", "BIGINT", "TINYINT", "BIT", "DECIMAL", "NUMERIC",
          "REAL", "FLOAT", "DOUBLE", "DATE", "TIME", "TIMESTAMP", "BINARY", "VARBINARY", "LONGVARBINARY"})
        EXPECT_EQ(
            client.Execute("SELECT COUNT(*) FROM TW_SQLDT WHERE SQL_TYPE_NAME = '" + std::string(type) + "'").Single(),
            "1")
            << type;
}
