#include "RecordWriter.h"

#include "FieldEncoder.h"
#include "RecordCursor.h"

#include <gtest/gtest.h>

using namespace tarnwick::records;
using namespace tarnwick::samples;

namespace
{

struct Case {
    const char* name;
    const char* organisation;
    const char* recordType;
    const char* openString;
    bool hasGaps;
    std::string content; ///< of the records "first", an empty place where there can be one, and "third"
};

using namespace std::string_literals;

const Case cases[] = {
    {"Fixed", "SEQUENTIAL", "FIXED", "", false, "firstthird"s},
    {"Skipped", "SEQUENTIAL", "FIXED", "SKIP-2", false, "\0\0firstthird"s},
    {"Lines", "SEQUENTIAL", "VARIABLE", "", false, "first\nthird\n"s},
    {"EbcdicLines", "SEQUENTIAL", "FIXED", "LINE EBCDIC-037", false, "first\x15third\x15"s},
    {"Counted2", "SEQUENTIAL", "VARIABLE", "COUNTED-2", false, "\5\0first\5\0third"s},
    {"Counted4", "SEQUENTIAL", "VARIABLE", "COUNTED-4-BE", false, "\0\0\0\5first\0\0\0\5third"s},
    {"CountedCobol", "SEQUENTIAL", "VARIABLE", "COUNTED-COBOL", false, "\0\5\0\0first\0\5\0\0third"s},
    {"Rdw", "SEQUENTIAL", "VARIABLE", "RDW", false, "\0\x09\0\0first\0\x09\0\0third"s},
    {"Relative", "RELATIVE", "FIXED", "", true, "first\0\0\0\0\0third"s},
    {"Slot4", "RELATIVE", "FIXED", "SLOT-4", true, "\5\0\0\0first\0\0\0\0\0\0\0\0\0\5\0\0\0third"s},
    {"Indexed", "INDEXED", "FIXED", "", true, "first\n\0\0\0\0\0\0third\n"s},
    {"IndexedVariable", "INDEXED", "VARIABLE", "", true, "\0\5\0\0first\0\5\1\1\0\0\0\0\0\0\5\0\0third"s},
};

class RecordWriterFormats : public ::testing::TestWithParam<Case>
{
};

RecordFormat Format(const Case& one, std::size_t size = 5)
{
    return RecordFormat::Read(one.organisation, one.recordType, one.openString, size);
}

RecordFormat Lines()
{
    return RecordFormat::Read("SEQUENTIAL", "VARIABLE", "", 5);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Layouts, RecordWriterFormats, ::testing::ValuesIn(cases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(RecordWriterFormats, GiveTheBytesOfTheirLayoutAndTheRecordsBack)
{
    const Case& one = GetParam();
    const RecordFormat format = Format(one);
    RecordWriter writer(format);
    writer.Add("first");
    if (one.hasGaps)
        writer.AddEmpty();
    else
        EXPECT_THROW(writer.AddEmpty(), EncodingError);
    writer.Add("third");
    EXPECT_EQ(writer.Content(), one.content);

    RecordCursor cursor(format, writer.Content());
    ASSERT_EQ(cursor.Next(), RecordCursor::Step::Record);
    EXPECT_EQ(cursor.Bytes(), "first");
    ASSERT_EQ(cursor.Next(), RecordCursor::Step::Record);
    EXPECT_EQ(cursor.Bytes(), "third");
    EXPECT_EQ(cursor.Number(), one.hasGaps ? 3u : 2u);
    EXPECT_EQ(cursor.Next(), RecordCursor::Step::End);
}

TEST(RecordWriter, RefusesRecordsThatWouldReadAsSomethingElse)
{
    EXPECT_THROW(RecordWriter(Lines()).Add("a\nb"), EncodingError);
    EXPECT_THROW(RecordWriter(Lines()).Add("a\r"), EncodingError);
    EXPECT_THROW(RecordWriter(Lines()).Add("longer"), EncodingError);
    EXPECT_THROW(RecordWriter(Format(cases[8])).Add("\0\0\0\0\0"s), EncodingError);
    EXPECT_THROW(RecordWriter(Format(cases[9])).Add(""), EncodingError);
    EXPECT_THROW(RecordWriter(Format(cases[7], 65535)).Add(std::string(65535, 'x')), EncodingError);
}
