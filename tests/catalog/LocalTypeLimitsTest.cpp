#include "LocalTypeLimits.h"

#include "RuntimeError.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace
{

LocalTypeLimits inPane(const QString& wrapped)
{
    return LocalTypeLimits::of(wrapped, LocalTypeLimits::PaneStringPosition);
}

LocalTypeLimits inGrid(const QString& wrapped)
{
    return LocalTypeLimits::of(wrapped, LocalTypeLimits::GridStringPosition);
}

void expectRange(const LocalTypeLimits::Range& range, int preset, int minimum, int maximum, bool editable)
{
    EXPECT_EQ(range.preset, preset);
    EXPECT_EQ(range.minimum, minimum);
    EXPECT_EQ(range.maximum, maximum);
    EXPECT_EQ(range.editable, editable);
}

TEST(DecimalDigits, AreThoseOfTheLargestIntegerOfSoManyBytes)
{
    const int unsignedDigits[] = {0, 3, 5, 8, 10, 13, 15, 17, 20, 0};
    const int signedDigits[] = {0, 3, 5, 7, 10, 12, 15, 17, 19, 0};
    for (int bytes = 0; bytes < 10; ++bytes) {
        EXPECT_EQ(decimalDigits(bytes, true), unsignedDigits[bytes]) << bytes;
        EXPECT_EQ(decimalDigits(bytes, false), signedDigits[bytes]) << bytes;
    }
    EXPECT_EQ(decimalDigits(-1, true), 0);
}

TEST(NumberAttr, ReadsAnAbsentOrEmptyKeyAsZero)
{
    EXPECT_EQ(NumberAttr(";SCALE=", ";LENGTH=8;"), 0);
    EXPECT_EQ(NumberAttr(";SCALE=", ";SCALE=;"), 0);
    EXPECT_EQ(NumberAttr(";SCALE=", ";SCALE=12;"), 12);
}

TEST(NumberAttr, ReadsATextThatIsNoNumberAsZero)
{
    EXPECT_EQ(NumberAttr(";LENGTH=", ";LENGTH=long;"), 0);
    EXPECT_EQ(NumberAttr(";LENGTH=", ";LENGTH=8 bytes;"), 8);
}

TEST(LocalTypeLimits, ALengthIsFixedWithoutADefault)
{
    expectRange(inPane(";LENGTH=8;").Length, 8, 8, 8, false);
}

TEST(LocalTypeLimits, ATypeWithoutAnyLengthIsFixedAtZero)
{
    expectRange(inPane(";CHARACTER;").Length, 0, 0, 0, false);
}

TEST(LocalTypeLimits, AVariableLengthTakesItsBoundsOrTheWidest)
{
    expectRange(inPane(";DEFAULT_LENGTH=10;").Length, 10, 1, 65535, true);
    expectRange(inPane(";DEFAULT_LENGTH=10;MIN_LENGTH=2;MAX_LENGTH=20;").Length, 10, 2, 20, true);
    expectRange(inPane(";DEFAULT_LENGTH=10;MIN_LENGTH=0;MAX_LENGTH=0;").Length, 10, 1, 65535, true);
    expectRange(inPane(";DEFAULT_LENGTH=10;LENGTH=4;").Length, 10, 1, 65535, true);
    expectRange(inPane(";DEFAULT_LENGTH=0;LENGTH=4;").Length, 4, 4, 4, false);
}

TEST(LocalTypeLimits, ABinaryIntegerHasTheDigitsOfItsLength)
{
    const LocalTypeLimits unsignedThree = inPane(";BINARY;INTEGER;UNSIGNED;DEFAULT_PRECISION=1;LENGTH=3;");
    expectRange(unsignedThree.Length, 3, 3, 3, false);
    expectRange(unsignedThree.Precision, 8, 3, 3, true);
    expectRange(inPane(";BINARY;INTEGER;DEFAULT_PRECISION=1;LENGTH=3;").Precision, 7, 3, 3, true);
    expectRange(inPane(";BINARY;INTEGER;DEFAULT_PRECISION=5;LENGTH=9;").Precision, 5, 9, 9, true);
}

TEST(LocalTypeLimits, APackedTypeHasTwoDigitsAByteAndRoomForOneMore)
{
    expectRange(inPane(";PACKED;DEFAULT_PRECISION=1;DEFAULT_LENGTH=4;").Precision, 8, 8, 9, true);
}

TEST(LocalTypeLimits, AnyOtherVariablePrecisionFollowsTheLength)
{
    expectRange(inPane(";DEFAULT_PRECISION=1;DEFAULT_LENGTH=12;MAX_LENGTH=30;").Precision, 12, 1, 30, true);
    // PACKED counts at the very start only.
    expectRange(inPane(";ZONED;PACKED;DEFAULT_PRECISION=1;LENGTH=5;").Precision, 5, 5, 5, true);
}

TEST(LocalTypeLimits, AFixedPrecisionIsItsNumberOrTheDefaultLength)
{
    expectRange(inPane(";PRECISION=6;LENGTH=4;").Precision, 6, 6, 6, false);
    expectRange(inPane(";DEFAULT_LENGTH=4;").Precision, 4, 4, 4, false);
}

TEST(LocalTypeLimits, ABinaryStringIsFixedInThePaneAndEditableInTheGrid)
{
    const QString wrapped = ";BINARY;STRING;DEFAULT_PRECISION=7;DEFAULT_LENGTH=4;MAX_LENGTH=100;";
    expectRange(inPane(wrapped).Precision, 8, 1, 100, false);
    expectRange(inGrid(wrapped).Precision, 7, 1, 100, true);
}

TEST(LocalTypeLimits, ABinaryTypeThatIsNoStringKeepsItsNumberInBoth)
{
    const QString wrapped = ";BINARY;FLOAT;DEFAULT_PRECISION=7;LENGTH=4;";
    expectRange(inPane(wrapped).Precision, 7, 4, 4, true);
    expectRange(inGrid(wrapped).Precision, 7, 4, 4, true);
}

TEST(LocalTypeLimits, AnAbsentDefaultScaleMeansFixed)
{
    expectRange(inPane(";SCALE=2;").Scale, 2, 2, 2, false);
    expectRange(inPane(";LENGTH=2;").Scale, 0, 0, 0, false);
    expectRange(inPane(";MIN_SCALE=1;MAX_SCALE=3;").Scale, 0, 0, 0, false);
}

TEST(LocalTypeLimits, AVariableScaleMayBeZeroByDefaultButNotAtItsBounds)
{
    expectRange(inPane(";DEFAULT_SCALE=0;MIN_SCALE=0;MAX_SCALE=0;").Scale, 0, -32, 32, true);
    expectRange(inPane(";DEFAULT_SCALE=2;MIN_SCALE=1;MAX_SCALE=9;").Scale, 2, 1, 9, true);
}

TEST(LocalTypeLimits, ANegativeNumberReadsAsNone)
{
    expectRange(inPane(";DEFAULT_SCALE=0;MIN_SCALE=-31;MAX_SCALE=-1;").Scale, 0, -32, 32, true);
    EXPECT_EQ(NumberAttr(";SCALE=", ";SCALE=-2;"), 0);
    EXPECT_EQ(NumberAttr(";SCALE=", ";SCALE=007;"), 7);
    EXPECT_EQ(NumberAttr(";SCALE=", ";SCALE=x;"), 0);
}

TEST(LocalTypeLimits, ADefaultFormatIsEditableUnlessTheLengthIsFixed)
{
    EXPECT_EQ(inPane(";DEFAULT_FORMAT=YYYYMMDD;").Format, "YYYYMMDD");
    EXPECT_TRUE(inPane(";DEFAULT_FORMAT=YYYYMMDD;").FormatEditable);
    EXPECT_EQ(inPane(";DEFAULT_FORMAT=YYYYMMDD;LENGTH=8;").Format, "YYYYMMDD");
    EXPECT_FALSE(inPane(";DEFAULT_FORMAT=YYYYMMDD;LENGTH=8;").FormatEditable);
    EXPECT_TRUE(inPane(";DEFAULT_FORMAT=YYYYMMDD;DEFAULT_LENGTH=8;").FormatEditable);
}

TEST(LocalTypeLimits, AFixedFormatIsNotEditable)
{
    EXPECT_EQ(inPane(";FORMAT=HHMMSS;").Format, "HHMMSS");
    EXPECT_FALSE(inPane(";FORMAT=HHMMSS;").FormatEditable);
    EXPECT_EQ(inPane(";LENGTH=1;").Format, "");
    EXPECT_FALSE(inPane(";LENGTH=1;").FormatEditable);
}

/// A second reading of the limits: a table of items by key, built once from the text, and the rules over it.
struct SecondReader {
    std::string text;

    std::string item(const std::string& key) const
    {
        const std::string searched = ';' + key + '=';
        const auto found = text.find(searched);
        if (found == std::string::npos)
            return {};
        const auto begin = found + searched.size();
        return text.substr(begin, text.find(';', begin) - begin);
    }
    int number(const std::string& key) const { return std::atoi(("0" + item(key)).c_str()); }
    bool has(const std::string& word) const { return text.find(word) != std::string::npos; }
    int numberOr(const std::string& key, int otherwise) const { return number(key) ? number(key) : otherwise; }

    static int digits(int bytes, bool isUnsigned)
    {
        // The decimal digits of 256^bytes - 1, or of half of it, as the storage documents count them.
        static const std::string table = "3,5,8,10,13,15,17,20|3,5,7,10,12,15,17,19";
        if (bytes < 1 || bytes > 8)
            return -1;
        std::string row = isUnsigned ? table.substr(0, table.find('|')) : table.substr(table.find('|') + 1);
        for (int i = 1; i < bytes; ++i)
            row.erase(0, row.find(',') + 1);
        return std::atoi(row.c_str());
    }

    LocalTypeLimits read(std::size_t position) const
    {
        LocalTypeLimits limits;
        auto& [length, precision, scale, format, formatEditable] = limits;
        length.editable = number("DEFAULT_LENGTH") != 0;
        length.preset = length.editable ? number("DEFAULT_LENGTH") : number("LENGTH");
        length.minimum = length.editable ? numberOr("MIN_LENGTH", 1) : length.preset;
        length.maximum = length.editable ? numberOr("MAX_LENGTH", 65535) : length.preset;

        const bool binary = text.compare(0, 7, ";BINARY") == 0;
        const bool packed = text.compare(0, 7, ";PACKED") == 0;
        const bool string = binary && text.size() >= position && text.compare(position - 1, 7, "STRING;") == 0;
        precision.preset = number("DEFAULT_PRECISION");
        if (precision.preset != 0) {
            precision.editable = !string;
            precision.minimum = length.minimum;
            precision.maximum = length.maximum;
            const int table = digits(length.preset, has(";UNSIGNED;"));
            if (binary && has(";INTEGER;") && table > 0)
                precision.preset = table;
            else if (binary && !has(";INTEGER;") && string)
                precision.preset = length.preset * 2;
            else if (!binary)
                precision.preset = length.preset * (packed ? 2 : 1);
            if (packed) {
                precision.minimum = length.preset * 2;
                precision.maximum = length.preset * 2 + 1;
            }
        } else {
            precision.preset = numberOr("PRECISION", length.preset);
            precision.minimum = precision.maximum = precision.preset;
        }

        scale.editable = !item("DEFAULT_SCALE").empty();
        scale.preset = scale.editable ? number("DEFAULT_SCALE") : number("SCALE");
        scale.minimum = scale.editable ? numberOr("MIN_SCALE", -32) : scale.preset;
        scale.maximum = scale.editable ? numberOr("MAX_SCALE", 32) : scale.preset;

        const std::string variable = item("DEFAULT_FORMAT");
        format = QString::fromStdString(variable.empty() ? item("FORMAT") : variable);
        formatEditable = !variable.empty() && !has(";LENGTH=");
        return limits;
    }
};

bool operator==(const LocalTypeLimits::Range& a, const LocalTypeLimits::Range& b)
{
    return a.preset == b.preset && a.minimum == b.minimum && a.maximum == b.maximum && a.editable == b.editable;
}

TEST(LocalTypeLimits, AgreeWithASecondReaderOnRandomAttributes)
{
    std::mt19937 random(42);
    const std::vector<std::string> words{"BINARY", "PACKED", "INTEGER", "UNSIGNED", "STRING", "FLOAT", "ZONED", ""};
    const std::vector<std::string> keys{"LENGTH",    "DEFAULT_LENGTH", "MIN_LENGTH",    "MAX_LENGTH",
                                        "PRECISION", "SCALE",          "DEFAULT_SCALE", "DEFAULT_PRECISION",
                                        "MIN_SCALE", "MAX_SCALE",      "FORMAT",        "DEFAULT_FORMAT"};
    for (int round = 0; round < 4'000; ++round) {
        std::string wrapped = ";";
        for (auto count = random() % 4; count > 0; --count)
            wrapped += words[random() % words.size()] + ';';
        for (auto count = random() % 8; count > 0; --count) {
            const std::string& key = keys[random() % keys.size()];
            const bool isFormat = key.find("FORMAT") != std::string::npos;
            wrapped += key + '=' + (isFormat ? "YYMMDD" : std::to_string(static_cast<int>(random() % 14) - 2)) + ';';
        }
        for (const int position : {LocalTypeLimits::PaneStringPosition, LocalTypeLimits::GridStringPosition}) {
            const LocalTypeLimits limits = LocalTypeLimits::of(QString::fromStdString(wrapped), position);
            const LocalTypeLimits expected = SecondReader{wrapped}.read(static_cast<std::size_t>(position));
            ASSERT_TRUE(limits.Length == expected.Length) << wrapped;
            ASSERT_TRUE(limits.Precision == expected.Precision) << wrapped << " at " << position;
            ASSERT_TRUE(limits.Scale == expected.Scale) << wrapped;
            ASSERT_EQ(limits.Format, expected.Format) << wrapped;
            ASSERT_EQ(limits.FormatEditable, expected.FormatEditable) << wrapped;
        }
    }
}

} // namespace
