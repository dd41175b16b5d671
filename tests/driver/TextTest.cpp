#include "Text.h"

#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

using namespace tarnwick;

namespace
{

std::string RandomText(std::mt19937& random)
{
    static const std::vector<std::string> characters = {"a",    "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "'",
                                                        "\x7F", "\xDF\xBF", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"};
    std::string text;
    for (unsigned length = random() % 20; length > 0; --length)
        text += characters[random() % characters.size()];
    return text;
}

} // namespace

TEST(Text, EveryCharacterSurvivesTheWayThroughWideText)
{
    std::mt19937 random(1);
    for (int round = 0; round < 5000; ++round) {
        const std::string text = RandomText(random);
        const std::vector<SQLWCHAR> wide = Wide(text);
        ASSERT_EQ(WideArgument(wide.data(), SQL_NTS), text);
        ASSERT_EQ(WideArgument(wide.data(), static_cast<SQLINTEGER>(wide.size() - 1)), text);
        const std::u16string own = ToUtf16(text);
        ASSERT_EQ(own.size(), wide.size() - 1);
        ASSERT_TRUE(std::equal(own.begin(), own.end(), wide.begin()));
        ASSERT_TRUE(IsUtf8(text));
    }
}

TEST(Text, HalvesOfCharactersAreRefused)
{
    const std::array<SQLWCHAR, 3> lonelyHigh = {0xD83D, 'a', 0};
    const std::array<SQLWCHAR, 3> lonelyLow = {'a', 0xDE00, 0};
    const std::array<SQLWCHAR, 2> lastHigh = {0xD83D, 0};
    EXPECT_FALSE(WideArgument(lonelyHigh.data(), SQL_NTS));
    EXPECT_FALSE(WideArgument(lonelyLow.data(), SQL_NTS));
    EXPECT_FALSE(WideArgument(lastHigh.data(), SQL_NTS));
    EXPECT_FALSE(IsUtf8("a\xF0\x9F"));
    EXPECT_FALSE(IsUtf8("\xC0\xAF"));
    EXPECT_FALSE(IsUtf8("\xED\xA0\x80"));
    EXPECT_FALSE(IsUtf8("\xF5\x80\x80\x80"));
    EXPECT_FALSE(IsUtf8("\x80"));
}

TEST(Text, ABufferNeverGetsHalfACharacter)
{
    std::mt19937 random(2);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = RandomText(random);
        for (SQLINTEGER capacity = 1; capacity < 12; ++capacity) {
            std::array<char, 16> narrow{};
            std::array<SQLWCHAR, 16> wide{};
            SQLINTEGER length = 0;
            narrow.fill('#');
            const Fit narrowFit = PutNarrow(text, narrow.data(), capacity, &length);
            ASSERT_EQ(length, static_cast<SQLINTEGER>(text.size()));
            ASSERT_TRUE(IsUtf8(narrow.data()));
            ASSERT_EQ(text.compare(0, std::string(narrow.data()).size(), narrow.data()), 0);
            ASSERT_EQ(narrowFit == Fit::Whole, text == narrow.data());
            PutWide(text, wide.data(), capacity, &length);
            ASSERT_EQ(length, static_cast<SQLINTEGER>(ToUtf16(text).size()));
            ASSERT_TRUE(WideArgument(wide.data(), SQL_NTS));
        }
    }
}

TEST(Text, BytesThatAreNoTextBecomeReplacements)
{
    EXPECT_EQ(ToUtf16("a\xFF"
                      "b"),
              u"a\xFFFD"
              u"b");
    EXPECT_EQ(ToUtf16("\xF0\x9F\x98"), u"\xFFFD\xFFFD\xFFFD");
}
