#include "RecordCursor.h"

#include <gtest/gtest.h>

#include <random>

using namespace tarnwick::records;
using namespace std::string_literals;

namespace
{

struct FormatCase {
    const char* organisation;
    const char* recordType;
    const char* openString;
    std::size_t size;
    std::string content;
    /// number:bytes, with blanks between them; `~` and the bytes where the last record is short, `!` where the walk
    /// ends in a length that cannot be; both with the reason
    const char* records;
};

std::string Walk(const RecordFormat& format, const std::string& content)
{
    RecordCursor cursor(format, content);
    std::string text;
    for (;;) {
        const RecordCursor::Step step = cursor.Next();
        if (step == RecordCursor::Step::End)
            return text;
        if (step == RecordCursor::Step::Corrupt)
            return text + "! " + cursor.Reason();
        if (step == RecordCursor::Step::Short)
            return text + "~" + std::string(cursor.Bytes()) + " " + cursor.Reason();
        text += std::to_string(cursor.Number()) + ":" + std::string(cursor.Bytes()) + " ";
    }
}

const FormatCase formats[] = {
    {"SEQUENTIAL", "FIXED", "", 3, "abcdef", "1:abc 2:def "},
    {"SEQUENTIAL", "FIXED", "", 3, "", ""},
    {"SEQUENTIAL", "FIXED", "", 3, "abcde", "1:abc ~de the file ends inside the record: 2 bytes of 3 are there"},
    {"SEQUENTIAL", "FIXED", "SKIP-2", 3, "..abc", "1:abc "},
    {"SEQUENTIAL", "FIXED", "SKIP-9", 3, "..abc", "~ the file ends inside the 9 bytes before it: 5 are there"},
    {"SEQUENTIAL", "FIXED", "SKIP-9", 3, "", ""},
    {"SEQUENTIAL", "FIXED", "SKIP-5", 3, "..abc", ""},
    {"SEQUENTIAL", "VARIABLE", "SKIP-2", 3, ".", "~ the file ends inside the 2 bytes before it: 1 are there"},
    {"SEQUENTIAL", "FIXED", "LINE", 3, "abc\ndef\n", "1:abc 2:def "},
    {"SEQUENTIAL", "FIXED", "line_ISO-8859-1", 3, "abc\r\ndef", "1:abc 2:def "},
    {"SEQUENTIAL", "FIXED", "SHR=GET", 3, "abc", "1:abc "},
    {"SEQUENTIAL", "VARIABLE", "", 9, "a\n\nlong line\n", "1:a 2: 3:long line "},
    {"SEQUENTIAL", "VARIABLE", "EBCDIC-037", 9, "\x81\x15\x82\x83", "1:\x81 2:\x82\x83 "},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-2", 9,
     "\x01\x00"
     "a\x02\x00"
     "bc"s,
     "1:a 2:bc "},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-2-BE", 9,
     "\x00\x01"
     "a\x00\x02"
     "bc"s,
     "1:a 2:bc "},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-4", 9,
     "\x01\x00\x00\x00"
     "a"s,
     "1:a "},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-4-BE", 9,
     "\x00\x00\x00\x01"
     "a"s,
     "1:a "},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-COBOL", 9,
     "\x00\x01\x00\x00"
     "a\x00\x02\x00\x00"
     "bc"s,
     "1:a 2:bc "},
    {"SEQUENTIAL", "VARIABLE", "RDW", 9,
     "\x00\x05\x00\x00"
     "a\x00\x06\x00\x00"
     "bc"s,
     "1:a 2:bc "},
    {"SEQUENTIAL", "VARIABLE", "RDW", 9,
     "\x00\x03\x00\x00"
     "a"s,
     "! its length is 3, which is less than the length's own bytes"},
    {"SEQUENTIAL", "VARIABLE", "RDW", 9,
     "\x00\x05\x00\x00"
     "a\x00\x06\x01\x00"
     "bc"s,
     "1:a ! it is a piece of a spanned record"},
    {"SEQUENTIAL", "VARIABLE", "RDW", 9,
     "\x00\x06\x02\x00"
     "bc"s,
     "! it is a piece of a spanned record"},
    {"SEQUENTIAL", "VARIABLE", "RDW", 9,
     "\x00\x06\x03\x00"
     "bc"s,
     "! it is a piece of a spanned record"},
    {"SEQUENTIAL", "VARIABLE", "RDW", 9,
     "\x00\x05\xFC\xFF"
     "a"s,
     "1:a "},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-COBOL", 9,
     "\x00\x01\x03\x03"
     "a"s,
     "1:a "},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-2", 9,
     "\x01\x00"
     "a\x09\x00"
     "bc"s,
     "1:a ~bc the file ends inside the record: 4 bytes of 11 are there"},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-2", 9,
     "\x01\x00"
     "a\x0A\x00"
     "bc"s,
     "1:a ! its length is 10, which is more than the 9 bytes of a record and than the rest of the file"},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-2", 0,
     "\x0A\x00"
     "bc"s,
     "~bc the file ends inside the record: 4 bytes of 12 are there"},
    {"SEQUENTIAL", "VARIABLE", "RDW", 9,
     "\x00\x09\x00\x00"
     "bc"s,
     "~bc the file ends inside the record: 6 bytes of 9 are there"},
    {"SEQUENTIAL", "VARIABLE", "COUNTED-4", 9, "\x01\x00"s,
     "~ the file ends inside the record: 2 bytes of 4 are there"},
    {"RELATIVE", "FIXED", "", 2, "ab\0\0cd"s, "1:ab 3:cd "},
    {"RELATIVE", "FIXED", "SLOT-4", 2, "\x02\0\0\0ab\0\0\0\0xx\x01\0\0\0c."s, "1:ab 3:c "},
    {"RELATIVE", "VARIABLE", "SLOT-8", 2, "\x02\0\0\0\0\0\0\0ab"s, "1:ab "},
    {"RELATIVE", "FIXED", "SLOT-4", 2, "\x09\0\0\0ab"s, "! its length is 9, and its slot has room for 2"},
    {"RELATIVE", "FIXED", "SLOT-4", 9, "\x05\0\0\0ab"s, "~ab the file ends inside the record: 6 bytes of 13 are there"},
    {"RELATIVE", "FIXED", "SLOT-4", 2, "\x02\0\0\0ab\0\0\0\0x"s, "1:ab "},
    {"RELATIVE", "FIXED", "SLOT-4", 2, "\x02\0\0\0ab\0\0\0\0"s, "1:ab "},
    {"RELATIVE", "FIXED", "SLOT-4", 9, "\x03\0\0\0abcde"s,
     "~abc the file ends inside the record: 9 bytes of 13 are there"},
    {"RELATIVE", "FIXED", "SLOT-4", 9, "\x0A\0\0\0abcde"s, "! its length is 10, and its slot has room for 9"},
    {"RELATIVE", "FIXED", "SLOT-4", 2, "\x02\0\0"s, "~ the file ends inside the record: 3 bytes of 6 are there"},
    {"INDEXED", "FIXED", "", 2, "ab\ncd\0ef\n"s, "1:ab 3:ef "},
    {"INDEXED", "FIXED", "", 2, "ab\ncd"s, "1:ab ~cd the file ends inside the record: 2 bytes of 3 are there"},
    {"INDEXED", "FIXED", "SKIP-1", 2, ".ab\n"s, "1:ab "},
    {"INDEXED", "VARIABLE", "", 9,
     "\x00\x01\x00\x00"
     "a\x00\x01\x00\x01"
     "b\x00\x01\x00\x00"
     "c"s,
     "1:a 3:c "},
    {"INDEXED", "VARIABLE", "", 9,
     "\x00\x01\x00\x00"
     "a\x00\x05\x00\x01"
     "bc"s,
     "1:a "},
    {"INDEXED", "VARIABLE", "", 9,
     "\x00\x01\x00\x00"
     "a\x00\x05\x00\x00"
     "bc"s,
     "1:a ~bc the file ends inside the record: 6 bytes of 9 are there"},
};

} // namespace

TEST(RecordCursor, EachFormatFindsItsRecords)
{
    for (const FormatCase& format : formats)
        EXPECT_EQ(Walk(RecordFormat::Read(format.organisation, format.recordType, format.openString, format.size),
                       format.content),
                  format.records)
            << format.organisation << " " << format.recordType << " " << format.openString;
}

TEST(RecordCursor, AFileThatEndsBeforeItsFirstRecordIsWalkedToItsEnd)
{
    const RecordFormat format = RecordFormat::Read("SEQUENTIAL", "FIXED", "SKIP-9", 3);
    RecordCursor cursor(format, "..abc");
    EXPECT_EQ(cursor.Next(), RecordCursor::Step::Short);
    EXPECT_EQ(cursor.Next(), RecordCursor::Step::End);
}

TEST(RecordCursor, ARecordIsFoundAgainAtItsPlace)
{
    for (const FormatCase& format : formats) {
        const RecordFormat read =
            RecordFormat::Read(format.organisation, format.recordType, format.openString, format.size);
        RecordCursor cursor(read, format.content);
        while (cursor.Next() == RecordCursor::Step::Record) {
            RecordCursor seeker(read, format.content);
            seeker.Seek(cursor.Position(), cursor.Number());
            EXPECT_EQ(seeker.Bytes(), cursor.Bytes());
            EXPECT_EQ(seeker.Number(), cursor.Number());
        }
    }
}

TEST(RecordCursor, SeekBehindTheEndSaysSo)
{
    using Step = RecordCursor::Step;
    const RecordFormat format = RecordFormat::Read("SEQUENTIAL", "FIXED", "", 3);
    RecordCursor cursor(format, "abcdefgh");
    EXPECT_EQ(cursor.Seek(3, 2), Step::Record);
    EXPECT_EQ(cursor.Seek(6, 3), Step::Short);
    EXPECT_EQ(cursor.Seek(8, 4), Step::End);
    EXPECT_EQ(cursor.Seek(9000, 3001), Step::End);
}

TEST(RecordCursor, SeekPassesOverWhatIsNoRecordAnyMore)
{
    const RecordFormat format = RecordFormat::Read("RELATIVE", "FIXED", "", 2);
    RecordCursor cursor(format, std::string_view("ab\0\0ef", 6));
    EXPECT_EQ(cursor.Seek(2, 2), RecordCursor::Step::Record);
    EXPECT_EQ(cursor.Position(), 4u);
    EXPECT_EQ(cursor.Number(), 3u);
}

TEST(RecordCursor, ACutSlotOfOnlyZerosMayBeAnEmptyOne)
{
    using Step = RecordCursor::Step;
    const RecordFormat format = RecordFormat::Read("RELATIVE", "FIXED", "", 3);
    for (const auto& [content, mayBeEmpty] : {std::pair("abc\0\0"s, true), std::pair("abc\0d"s, false)}) {
        RecordCursor cursor(format, content);
        EXPECT_EQ(cursor.Next(), Step::Record);
        EXPECT_FALSE(cursor.MayBeEmpty());
        EXPECT_EQ(cursor.Next(), Step::Short);
        EXPECT_EQ(cursor.MayBeEmpty(), mayBeEmpty);
        EXPECT_EQ(cursor.Bytes(), content.substr(3));
        EXPECT_EQ(cursor.Next(), Step::End);
    }
}

TEST(RecordCursor, RandomContentIsWalkedToItsEnd)
{
    std::mt19937 random(7);
    for (int i = 0; i < 4000; ++i) {
        std::string content(random() % 60, '\0');
        for (char& byte : content)
            byte = static_cast<char>(random() % 2 == 0 ? random() % 8 : random());
        const FormatCase& format = formats[random() % std::size(formats)];
        const RecordFormat read =
            RecordFormat::Read(format.organisation, format.recordType, format.openString, format.size);
        RecordCursor cursor(read, content);
        std::size_t steps = 0;
        while (cursor.Next() == RecordCursor::Step::Record)
            ++steps;
        EXPECT_LE(steps, content.size());
        cursor.Seek(random() % 100, 1 + random() % 100);
        EXPECT_LE(cursor.Bytes().size(), content.size());
    }
}

TEST(RecordFormat, WhatCannotBeLaidOutIsRefused)
{
    const auto refusal = [](const char* organisation, const char* type, const char* open, std::size_t size) {
        try {
            RecordFormat::Read(organisation, type, open, size);
        } catch (const RecordError& error) {
            return std::string(error.what());
        }
        return std::string("none");
    };
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "", 0), "the record size is 0");
    EXPECT_EQ(refusal("RELATIVE", "FIXED", "", 0), "the record size is 0");
    EXPECT_EQ(refusal("VSAM", "FIXED", "", 4), "the file organisation 'VSAM' is not known");
    EXPECT_EQ(refusal("INDEX", "FIXED", "", 4), "the file organisation 'INDEX' is not known");
    EXPECT_EQ(refusal("SEQUENTIAL", "SPANNED", "", 4), "the record type 'SPANNED' is not known");
    EXPECT_EQ(refusal("Relative", "Variable", "", 4), "none");
    EXPECT_EQ(refusal("", "", "", 4), "none");
    EXPECT_EQ(refusal("SEQUENTIAL", "VARIABLE", "", 0), "none");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "LINE_KLINGON", 4),
              "the open string has the word 'KLINGON', which is no record format and no code page");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "SKIP-X", 4),
              "the open string has the word 'SKIP-X', which is no record format and no code page");
    EXPECT_EQ(refusal("RELATIVE", "FIXED", "LINE", 4),
              "the open string does not suit a file of the organisation RELATIVE");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "SLOT-4", 4),
              "the open string does not suit a file of the organisation SEQUENTIAL");
    EXPECT_EQ(refusal("INDEXED", "FIXED", "LINE", 4), "the open string does not suit an indexed file of FIXED records");
    for (const char* word : {"COUNTED-2", "COUNTED-4", "COUNTED-2-BE", "COUNTED-4-BE", "COUNTED-COBOL", "RDW"})
        EXPECT_EQ(refusal("INDEXED", "VARIABLE", word, 4),
                  "the open string does not suit an indexed file of VARIABLE records");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "LINE_COUNTED-2", 4), "the open string has both 'LINE' and 'COUNTED-2'");
    EXPECT_EQ(refusal("RELATIVE", "FIXED", "SLOT-4 SLOT-8", 4), "the open string has both 'SLOT-4' and 'SLOT-8'");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "ASCII,EBCDIC-037", 4),
              "the open string has both 'ASCII' and 'EBCDIC-037'");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "SKIP-1_SKIP-2", 4), "the open string has both 'SKIP-1' and 'SKIP-2'");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "LINE_line", 4), "none");
    EXPECT_EQ(refusal("", "FIXED", "SLOT-4", 4), "the open string does not suit a file of the organisation SEQUENTIAL");
    EXPECT_EQ(refusal("INDEXED", "", "LINE", 4), "the open string does not suit an indexed file of FIXED records");
    EXPECT_EQ(refusal("SEQUENTIAL", "VARIABLE", "UTF-16LE", 4),
              "the open string's code page has no newline of one byte, and so its files have no lines");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "LINE_UCS-4", 4),
              "the open string's code page has no newline of one byte, and so its files have no lines");
    EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", "UTF-16LE", 4), "none");
    EXPECT_EQ(refusal("SEQUENTIAL", "VARIABLE", "UTF-16LE_COUNTED-2", 4), "none");
    for (const char* word : {"/", "//", "ASCII//IGNORE"})
        EXPECT_EQ(refusal("SEQUENTIAL", "FIXED", word, 4), std::string("the open string has the word '") + word +
                                                               "', which is no record format and no code page");
}

TEST(RecordFormat, NamesOfCodePagesMayHoldUnderscores)
{
    for (const char* open : {"SHIFT_JIS", "LINE_SHIFT_JIS_SKIP-2", "SKIP-2, SHIFT_JIS"}) {
        const RecordFormat format = RecordFormat::Read("SEQUENTIAL", "FIXED", open, 4);
        std::string room;
        std::string_view text;
        ASSERT_TRUE(format.page->Convert("\x93\xFA", room, text)) << open;
        EXPECT_EQ(text, "日") << open;
        EXPECT_EQ(format.skip, std::string(open).find("SKIP") == std::string::npos ? 0u : 2u) << open;
    }
    EXPECT_THROW(RecordFormat::Read("SEQUENTIAL", "FIXED", "SHIFT JIS", 4), RecordError);
    const char* const typed[][3] = {{"EBCDIC_037", "\xBA", "["},  {"LINE_EBCDIC_1047", "\xAD", "["},
                                    {"EBCDIC_LINE", "\xBA", "["}, {"EBCDIC 1047, SKIP-0", "\xAD", "["},
                                    {"LATIN_1", "\xFC", "ü"},     {"SKIP-0_UTF_8_SHR=GET", "\xC3\xBC", "ü"}};
    for (const auto& [open, bytes, shown] : typed) {
        const RecordFormat format = RecordFormat::Read("SEQUENTIAL", "FIXED", open, 4);
        std::string room;
        std::string_view text;
        ASSERT_TRUE(format.page->Convert(bytes, room, text)) << open;
        EXPECT_EQ(text, shown) << open;
        EXPECT_EQ(format.kind == RecordFormat::Kind::Lines, std::string(open).find("LINE") != std::string::npos)
            << open;
    }
}
