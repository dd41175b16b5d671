#include "modString.h"

#include "frmTWErr.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace
{

TEST(ModString, PluraliseLeavesTheWordAtACountOfOne)
{
    EXPECT_EQ(modString::Pluralise("Field", 1), "Field");
    EXPECT_EQ(modString::Pluralise("y", 1), "y");
}

TEST(ModString, PluraliseAddsAnSAtAnyOtherCount)
{
    for (const long count : {0L, 2L, 17L, -1L})
        EXPECT_EQ(modString::Pluralise("Field", count), "Fields") << count;
}

TEST(ModString, PluraliseTestsTheFirstLetterAndReplacesTheLast)
{
    EXPECT_EQ(modString::Pluralise("year", 2), "yeaies");
    EXPECT_EQ(modString::Pluralise("entry", 2), "entrys");
    EXPECT_EQ(modString::Pluralise("Year", 2), "Years");
}

TEST(ModString, StripNullEndsTheTextAtTheFirstNul)
{
    EXPECT_EQ(modString::StripNull(QString(u'a') + QChar(0) + 'b' + QChar(0)), "a");
    EXPECT_EQ(modString::StripNull(QString(QChar(0)) + 'b'), "");
    EXPECT_EQ(modString::StripNull("abc"), "abc");
    EXPECT_EQ(modString::StripNull({}), "");
}

TEST(ModString, TrimAllStripsBlanksControlsAndHighCharactersAtBothEnds)
{
    EXPECT_EQ(modString::TrimAll(QStringLiteral(" \t\r\n\u00a0 a b\u00e9c \u0081 \n")), QStringLiteral("a b\u00e9c"));
    EXPECT_EQ(modString::TrimAll(QString(QChar(127)) + 'x' + QChar(128)), QString(QChar(127)) + 'x' + QChar(128));
    EXPECT_EQ(modString::TrimAll(" \t "), "");
}

TEST(ModString, ExtractAttrReadsUpToTheNextSemicolon)
{
    EXPECT_EQ(modString::ExtractAttr(";LENGTH=", ";BINARY;LENGTH=4;SCALE=2;"), "4");
}

TEST(ModString, ExtractAttrAtTheEndWithoutASemicolonReturnsTheRest)
{
    EXPECT_EQ(modString::ExtractAttr(";FORMAT=", ";LENGTH=8;FORMAT=YYYYMMDD"), "YYYYMMDD");
}

TEST(ModString, ExtractAttrOfAnAbsentKeyIsEmpty)
{
    EXPECT_EQ(modString::ExtractAttr(";SCALE=", ";LENGTH=8;"), "");
    EXPECT_EQ(modString::ExtractAttr(";length=", ";LENGTH=8;"), "");
    EXPECT_EQ(modString::ExtractAttr(";SCALE=", ""), "");
}

TEST(ModString, ExtractAttrDropsTheEqualsSignOfAKeyGivenWithoutIt)
{
    EXPECT_EQ(modString::ExtractAttr(";LENGTH", ";LENGTH=8;"), "8");
    EXPECT_EQ(modString::ExtractAttr(";LENGTH=", ";LENGTH==8;"), "8");
    EXPECT_EQ(modString::ExtractAttr(";LENGTH", ";LENGTH==8;"), "=8");
    EXPECT_EQ(modString::ExtractAttr(";LENGTH=", ";LENGTH=;SCALE=1;"), "");
}

TEST(ModString, ExtractAttrFindsTheFirstOccurrenceOnly)
{
    EXPECT_EQ(modString::ExtractAttr(";LENGTH=", ";LENGTH=1;LENGTH=2;"), "1");
    // The semicolon belongs to the key: without it the end of a longer key would be found.
    EXPECT_EQ(modString::ExtractAttr(";LENGTH=", ";DEFAULT_LENGTH=1;LENGTH=2;"), "2");
    EXPECT_EQ(modString::ExtractAttr("LENGTH=", ";DEFAULT_LENGTH=1;LENGTH=2;"), "1");
}

TEST(ModString, ExtractAttrLeavesTheCallStackAsItWas)
{
    const QStringList before = frmTWErr::CallStack();
    modString::ExtractAttr(";A=", ";A=1;");
    EXPECT_EQ(frmTWErr::CallStack(), before);
}

/// A second reading of the attribute language, character by character.
std::string readAttribute(const std::string& key, const std::string& text)
{
    for (std::size_t start = 0; start + key.size() <= text.size(); ++start) {
        bool found = true;
        for (std::size_t i = 0; i < key.size(); ++i)
            found = found && text[start + i] == key[i];
        if (!found)
            continue;
        std::string value;
        for (std::size_t i = start + key.size(); i < text.size() && text[i] != ';'; ++i)
            value.push_back(text[i]);
        if (!value.empty() && value.front() == '=')
            value.erase(0, 1);
        return value;
    }
    return {};
}

TEST(ModString, ExtractAttrAgreesWithASecondReaderOnRandomTexts)
{
    std::mt19937 random(20030314);
    const std::vector<std::string> pieces{";",   "=",      "LENGTH", "DEFAULT_", "SCALE", "8",
                                          "-32", "BINARY", " ",      "x",        ";;"};
    const std::vector<std::string> keys{";LENGTH=", ";LENGTH", ";DEFAULT_LENGTH=", "SCALE=", ";", ";BINARY;", "=="};
    std::size_t found = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (auto count = random() % 16; count > 0; --count)
            text += pieces[random() % pieces.size()];
        const std::string& key = keys[random() % keys.size()];
        const std::string expected = readAttribute(key, text);
        found += expected.empty() ? 0 : 1;
        ASSERT_EQ(modString::ExtractAttr(QString::fromStdString(key), QString::fromStdString(text)).toStdString(),
                  expected)
            << key << " in " << text;
    }
    EXPECT_GT(found, 500U) << "the texts hold too few keys to say anything";
}

} // namespace
