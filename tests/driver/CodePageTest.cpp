#include "CodePage.h"

#include <gtest/gtest.h>

#include <random>

using namespace tarnwick::records;

namespace
{

/// The text of bytes; `!` if they are none.
std::string Converted(const char* page, const std::string& bytes)
{
    std::string room;
    std::string_view text;
    const auto found = CodePage::Find(page);
    if (!found)
        return "no page";
    return found->Convert(bytes, room, text) ? std::string(text) : "!";
}

} // namespace

TEST(CodePage, ALastCharacterThatCouldBeComposedIsThere)
{
    EXPECT_EQ(Converted("CP1258", "H\xE0 N\xF4i"), "Hà Nôi");
    EXPECT_EQ(Converted("CP1258", "Ph\xF4"), "Phô");
    EXPECT_EQ(Converted("CP1258", "a"), "a");
    EXPECT_EQ(Converted("CP1258", "\xE2\xEC"), "ấ") << "a with circumflex and acute are one character";
    EXPECT_EQ(Converted("TCVN", "Ha"), "Ha");
    EXPECT_EQ(Converted("CP1255", "\xF9\xEC\xE5\xED"), "שלום");
    EXPECT_EQ(Converted("BIG5-HKSCS", "\x88\x66"), "Ê");
    EXPECT_EQ(Converted("BIG5-HKSCS", "\x88\x62"), "Ê̄");
}

TEST(CodePage, NothingStaysBehindForTheNextText)
{
    const auto page = CodePage::Find("CP1258");
    std::string room;
    std::string_view text;
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(page->Convert("\xE2", room, text));
        EXPECT_EQ(text, "â");
        ASSERT_TRUE(page->Convert("\xEC", room, text));
        EXPECT_EQ(text, "\u0301");
    }
}

TEST(CodePage, AByteMayStandForSeveralCharacters)
{
    const std::string syllable = "ஸ்ரீ";
    EXPECT_EQ(Converted("TSCII", "\x82"), syllable);
    EXPECT_EQ(Converted("TSCII", std::string(20, '\x82') + "a"), [&] {
        std::string twenty;
        for (int i = 0; i < 20; ++i)
            twenty += syllable;
        return twenty + "a";
    }());
}

TEST(CodePage, PagesOfSeveralBytesAreReadWithTheirShifts)
{
    EXPECT_EQ(Converted("EUC-JP", "\xC6\xFC\xCB\xDC\x41"), "日本A");
    EXPECT_EQ(Converted("EUC-JP", "\x8E\xB1\x8F\xB0\xA1"), "ｱ丂");
    EXPECT_EQ(Converted("EUC-JP", "\xC6"), "!");
    EXPECT_EQ(Converted("EUC-JP", "\xC6\x41"), "!");
    EXPECT_EQ(Converted("IBM939", "\xC8\x0E\x45\x62\x45\x66\x0F\xF1"), "H日本1");
    EXPECT_TRUE(CodePage::Find("IBM939")->IsEbcdic());
    const auto page = CodePage::Find("IBM939");
    std::string room;
    std::string_view text;
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(page->Convert("\x0E\x45\x62", room, text)) << "a field may end in shifted characters";
        EXPECT_EQ(text, "日");
        ASSERT_TRUE(page->Convert("\xF1\xF2", room, text)) << "and the next one begins without a shift";
        EXPECT_EQ(text, "12");
        EXPECT_FALSE(page->Convert("\x0E\x45", room, text));
    }
}

TEST(CodePage, AsciiIsTakenAsItStandsWhereAPageHoldsIt)
{
    const std::string bytes = "Harry";
    for (const char* name : {"UTF-8", "ISO-8859-15", "CP1258", "SHIFT_JIS"}) {
        std::string room;
        std::string_view text;
        ASSERT_TRUE(CodePage::Find(name)->Convert(bytes, room, text)) << name;
        EXPECT_EQ(text, bytes) << name;
    }
    EXPECT_EQ(Converted("EBCDIC-037", "\xC8\x81\x99\x99\xA8"), "Harry");
    EXPECT_EQ(Converted("ISO-2022-JP", "\x1B$B\x46\x7C\x1B(B"), "日");
    EXPECT_EQ(Converted("NO-SUCH-PAGE", "x"), "no page");
}

TEST(CodePage, TheNamesOfItsOwnMayBeWrittenWithUnderscoresAndBlanks)
{
    for (const char* name : {"EBCDIC", "EBCDIC-037", "ebcdic_037", "EBCDIC 037"})
        EXPECT_EQ(Converted(name, "\xBA\xBB"), "[]") << name;
    for (const char* name : {"EBCDIC-1047", "EBCDIC_1047", "Ebcdic 1047"})
        EXPECT_EQ(Converted(name, "\xAD\xBD"), "[]") << name;
    for (const char* name : {"LATIN-1", "LATIN_1", "Latin 1"})
        EXPECT_EQ(Converted(name, "\xFC"), "ü") << name;
    for (const char* name : {"UTF-8", "UTF_8", "utf 8", "UTF8"})
        EXPECT_EQ(Converted(name, "\xC3\xBC"), "ü") << name;
}

TEST(CodePage, WhatIconvTakesForThePageOfTheProcessIsNone)
{
    for (const char* name : {"", " ", "/", "//", "///", "!", "(", "ASCII//TRANSLIT", "ASCII/", "ASCII!", "SHIFT JIS"})
        EXPECT_EQ(CodePage::Find(name), nullptr) << name;
}

TEST(CodePage, ANewlineIsAByteOrNone)
{
    for (const char* name : {"UTF-8", "ASCII", "ISO-8859-1", "CP1258", "SHIFT_JIS", "EUC-JP", "GB18030", "ISO-2022-JP",
                             "EBCDIC-037", "EBCDIC-1047", "IBM939"})
        EXPECT_TRUE(CodePage::Find(name)->HasByteNewline()) << name;
    for (const char* name : {"UTF-16", "UTF-16LE", "UTF-16BE", "UCS-2", "UCS-4", "UTF-32LE"})
        EXPECT_FALSE(CodePage::Find(name)->HasByteNewline()) << name;
}
