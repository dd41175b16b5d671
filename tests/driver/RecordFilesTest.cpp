// What clients see of files that are not as they should be, and of the organisations of files.

#include "RecordsFixture.h"

#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace std::string_literals;

const std::vector<FieldRow> worded = {{"NO", "ZONED-U", 2}, {"WORDS", "STRING", 6}};

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class RecordFiles : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        Connect(lenient, "BadFields=Null");
    }

    void AddSpecial(const std::string& table, int type, const std::string& name, const std::string& sqlType)
    {
        Run("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_TYPE, COLUMN_NAME, SQL_TYPE_NAME, "
            "PRECISION, FIELD_NAME, VISIBLE) VALUES ('BANK', '" +
            table + "', 1, " + std::to_string(type) + ", '" + name + "', '" + sqlType + "', 14, '', 1)");
    }

    OdbcClient lenient;
};

} // namespace

TEST_F(RecordFiles, WhatIsThereOfACutLastRecordIsReadWithoutItsHead)
{
    Make("COUNTED", worded, "\x08\x00"s + "01abcdef" + "\x08\x00"s + "02x", "SEQUENTIAL", "VARIABLE", "COUNTED-2");
    Make("WORD", worded, "\x00\x0C\x00\x00"s + "01abcdef" + "\x00\x0C\x00\x00"s + "02x", "SEQUENTIAL", "VARIABLE",
         "RDW");
    Make("SLOTS", worded, "\x08\x00\x00\x00"s + "01abcdef" + "\x08\x00\x00\x00"s + "02x", "RELATIVE", "FIXED",
         "SLOT-4");
    for (const char* table : {"BANK_COUNTED", "BANK_WORD", "BANK_SLOTS"}) {
        EXPECT_EQ(Rows(lenient, std::string("SELECT * FROM ") + table), "1|abcdef\n2|x\n") << table;
        EXPECT_TRUE(Holds(Failure(std::string("SELECT * FROM ") + table), "record 2: the file ends inside the record"))
            << table;
    }
}

TEST_F(RecordFiles, WhatIsThereOfANumberOrADateIsNoneWhereTheFileIsCut)
{
    const std::vector<FieldRow> fields = {{"NO", "ZONED-U", 2}, {"N", "NUMERIC", 4}};
    Make("PLAIN", fields,
         "01123402"
         "56");
    Make("COUNTED", fields, "\x06\x00"s + "011234" + "\x06\x00"s + "0256", "SEQUENTIAL", "VARIABLE", "COUNTED-2");
    for (const std::string table : {"BANK_PLAIN", "BANK_COUNTED"}) {
        EXPECT_EQ(Rows(lenient, "SELECT * FROM " + table), "1|1234\n2|~\n") << table;
        EXPECT_EQ(Rows(lenient, "SELECT NO FROM " + table + " WHERE N = 56"), "") << table;
        EXPECT_EQ(Rows(lenient, "SELECT a.NO, b.N FROM " + table + " a LEFT JOIN " + table + " b ON a.NO = b.NO"),
                  "1|1234\n2|~\n")
            << table;
        EXPECT_EQ(Rows(lenient, "SELECT a.NO FROM " + table + " a JOIN " + table + " b ON b.N = a.NO + 54"), "")
            << table;
    }
    DefineTable("SOME", "PLAIN", "PLAIN.dat", "BANK_SOME.NO = 2");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_SOME"), "2|~\n");
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'VARCHAR' WHERE TABLE_NAME = 'PLAIN' AND FIELD_NAME = 'N'");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_PLAIN"), "1|1234\n2|~\n");
    Make("WORDS", {{"NO", "ZONED-U", 2}, {"N", "STRING", 4}},
         "01123402"
         "56");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_WORDS"), "1|1234\n2|56\n");
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'INTEGER' WHERE TABLE_NAME = 'WORDS' AND FIELD_NAME = 'N'");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_WORDS"), "1|1234\n2|~\n");
    Make("LINES", fields, "011234\n0256", "SEQUENTIAL", "VARIABLE");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_LINES"), "1|1234\n2|56\n") << "the last line needs no newline";
}

TEST_F(RecordFiles, WhatIsThereOfBytesAndCharactersIsShownWhereTheFileIsCut)
{
    Make("RAW", {{"NO", "ZONED-U", 2}, {"RAW", "BINARY-STRING", 4}}, "01abcd02\x01\x02"s);
    Make("HEX", {{"NO", "ZONED-U", 2}, {"RAW", "HEXADECIMAL", 4}}, "01abcd02\x01\x02"s);
    EXPECT_EQ(Rows(lenient, "SELECT NO, hex(RAW) FROM BANK_RAW"), "1|61626364\n2|0102\n");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_HEX"), "1|61626364\n2|0102\n");
    Make("TORN", worded, "01abcdef02J\xC3");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_TORN"), "1|abcdef\n2|J\n");
    Make("TALLY", {{"NO", "ZONED-U", 2}, {"WORDS", "STRING-COUNTED", 8}}, "01\x06\0abcdef02\x06\0abc"s);
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_TALLY"), "1|abcdef\n2|abc\n");
}

TEST_F(RecordFiles, BytesAtTheEndOfARecordAreAsManyAsAreThere)
{
    const std::vector<FieldRow> fields = {{"NO", "ZONED-U", 1}, {"RAW", "BINARY-STRING", 6}};
    const std::string records = "\x00\x07"s + "1abcdef" + "\x00\x03"s + "2\x00\xFF"s + "\x00\x01"s + "3";
    Make("BYTES", fields, records, "SEQUENTIAL", "VARIABLE", "COUNTED-2-BE");
    EXPECT_EQ(Rows("SELECT NO, hex(RAW) FROM BANK_BYTES WHERE RAW IS NOT NULL"), "1|616263646566\n2|00FF\n");
    EXPECT_EQ(Rows("SELECT NO FROM BANK_BYTES WHERE RAW IS NULL"), "3\n");
    Make("HEX", {{"NO", "ZONED-U", 1}, {"RAW", "HEXADECIMAL", 6}}, records, "SEQUENTIAL", "VARIABLE", "COUNTED-2-BE");
    EXPECT_EQ(Rows("SELECT * FROM BANK_HEX"), "1|616263646566\n2|00FF\n3|~\n");
    Make("PACKED", {{"NO", "ZONED-U", 1}, {"RAW", "PACKED", 6}}, records, "SEQUENTIAL", "VARIABLE", "COUNTED-2-BE");
    EXPECT_TRUE(Holds(Failure("SELECT RAW FROM BANK_PACKED WHERE NO = 2"), "the record ends inside the field"));
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'VARBINARY' WHERE TABLE_NAME = 'PACKED' AND FIELD_NAME = 'RAW'");
    EXPECT_EQ(Rows("SELECT hex(RAW) FROM BANK_PACKED WHERE NO = 2"), "00FF\n") << "bytes are no number";
    Make("SLOTS", fields, "\x07\0\0\0"s + "1abcdef" + "\x03\0\0\0"s + "2\x00\xFF...."s, "RELATIVE", "FIXED", "SLOT-4");
    EXPECT_EQ(Rows("SELECT NO, hex(RAW) FROM BANK_SLOTS"), "1|616263646566\n2|00FF\n");
}

TEST_F(RecordFiles, ARestThatHoldsNotEvenALengthIsARecordWithoutBytes)
{
    Make("COUNTED", worded, "\x08\x00"s + "01abcdef" + "\x08", "SEQUENTIAL", "VARIABLE", "COUNTED-2");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_COUNTED"), "1|abcdef\n~|~\n");
    EXPECT_TRUE(
        Holds(Failure("SELECT * FROM BANK_COUNTED"), "record 2: the file ends inside the record: 1 bytes of 2"));
}

TEST_F(RecordFiles, ACutFileIsReadAsFarAsAStatementGoes)
{
    Make("CUT", worded, "01abcdef02ghijkl03mn");
    EXPECT_EQ(Rows("SELECT NO FROM BANK_CUT LIMIT 2"), "1\n2\n");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_CUT LIMIT 3"), "record 3: the file ends inside the record"));
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_CUT LIMIT 1 OFFSET 2"), "3|mn\n");
}

TEST_F(RecordFiles, AFileThatEndsBeforeItsFirstRecordIsTold)
{
    Make("SKIPPED", worded, "HEAD", "SEQUENTIAL", "FIXED", "SKIP-9");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_SKIPPED"), "The data file '" + DataFile("SKIPPED.dat") +
                                                                 "', record 1: the file ends inside the 9 bytes before "
                                                                 "it: 4 are there."));
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_SKIPPED"), "");
    WriteData("SKIPPED.dat", "HEAD.....");
    EXPECT_EQ(Rows("SELECT * FROM BANK_SKIPPED"), "");
    WriteData("SKIPPED.dat", "");
    EXPECT_EQ(Rows("SELECT * FROM BANK_SKIPPED"), "");
}

TEST_F(RecordFiles, AnEmptyFileOfAnyFormatHasNoRecords)
{
    const char* const formats[][3] = {{"SEQUENTIAL", "FIXED", ""},       {"SEQUENTIAL", "VARIABLE", ""},
                                      {"SEQUENTIAL", "FIXED", "LINE"},   {"SEQUENTIAL", "VARIABLE", "COUNTED-2"},
                                      {"SEQUENTIAL", "VARIABLE", "RDW"}, {"SEQUENTIAL", "VARIABLE", "COUNTED-COBOL"},
                                      {"RELATIVE", "FIXED", ""},         {"RELATIVE", "VARIABLE", ""},
                                      {"RELATIVE", "FIXED", "SLOT-4"},   {"RELATIVE", "FIXED", "SLOT-8"},
                                      {"INDEXED", "FIXED", ""},          {"INDEXED", "VARIABLE", ""}};
    Make("EMPTY", worded, "");
    for (const auto& [organisation, type, open] : formats) {
        Run(std::string("UPDATE TW_FILE SET FILE_ORGANISATION = '") + organisation + "', RECORD_TYPE = '" + type +
            "', OPEN_STRING = '" + open + "' WHERE FILE_NAME = 'EMPTY'");
        for (OdbcClient* on : {&client, &lenient}) {
            EXPECT_EQ(Rows(*on, "SELECT * FROM BANK_EMPTY"), "") << organisation << type << open;
            EXPECT_EQ(Rows(*on, "SELECT COUNT(*) FROM BANK_EMPTY a JOIN BANK_EMPTY b ON a.NO = b.NO"), "0\n");
        }
    }
}

TEST_F(RecordFiles, PiecesOfSpannedRecordsAreTold)
{
    Make("SPANNED", worded, "\x00\x0C\x00\x00"s + "01abcdef" + "\x00\x08\x01\x00"s + "02ab", "SEQUENTIAL", "VARIABLE",
         "RDW");
    for (OdbcClient* on : {&client, &lenient})
        EXPECT_TRUE(
            Holds(Failure(*on, "SELECT COUNT(*) FROM BANK_SPANNED"), "record 2: it is a piece of a spanned record."));
}

TEST_F(RecordFiles, WhatIsKnownToBeNoRecordIsNoneWhereTheFileIsCut)
{
    Make("LONGER", worded, "\x08\0\0\0"s + "01abcdef" + "\0\0\0\0"s + "..", "RELATIVE", "FIXED", "SLOT-4");
    Make("PLAIN", worded, "01abcdef\0\0\0"s, "RELATIVE");
    Make("VARIED", worded, "\x00\x04\x00\x00"s + "01ab" + "\x00\x08\x00\x01"s + "02c", "INDEXED", "VARIABLE");
    for (const std::string table : {"BANK_LONGER", "BANK_PLAIN", "BANK_VARIED"}) {
        EXPECT_EQ(Rows(lenient, "SELECT NO FROM " + table), "1\n") << table;
        EXPECT_EQ(Rows(lenient, "SELECT NO FROM " + table + " WHERE NO IN (SELECT NO FROM " + table + ")"), "1\n");
    }
    EXPECT_EQ(Rows("SELECT NO FROM BANK_LONGER"), "1\n");
    EXPECT_EQ(Rows("SELECT NO FROM BANK_VARIED"), "1\n");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_PLAIN"), "record 2: the file ends inside the record: 3 bytes of 8"))
        << "what is gone may have been a record";
    Make("WHOLE", worded, "\x04\0\0\0"s + "01abcd", "RELATIVE", "FIXED", "SLOT-4");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_WHOLE"), "1|ab\n")
        << "what follows a record in its slot is not its own";
}

TEST_F(RecordFiles, AnOrganisationThatIsNotKnownIsTold)
{
    Make("ODD", worded, "01abcdef");
    Run("UPDATE TW_FILE SET FILE_ORGANISATION = 'VSAM'");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_ODD"),
                      "The table BANK_ODD cannot be read: the file organisation 'VSAM' is not known."));
    Run("UPDATE TW_FILE SET FILE_ORGANISATION = 'SEQUENTIAL', RECORD_TYPE = 'UNDEFINED'");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_ODD"), "the record type 'UNDEFINED' is not known."));
    Run("UPDATE TW_FILE SET RECORD_TYPE = ''");
    EXPECT_EQ(Rows("SELECT * FROM BANK_ODD"), "1|abcdef\n");
}

TEST_F(RecordFiles, ANumberMayLackTheBlanksThatWereLeftOutAtItsLinesEnd)
{
    Make("LINES", {{"KIND", "STRING", 1}, {"N", "NUMERIC", 5}}, "A42\nB  7\nC\nD -\nE ", "SEQUENTIAL", "VARIABLE");
    EXPECT_EQ(Rows("SELECT N FROM BANK_LINES WHERE KIND <> 'D'"), "42\n7\n~\n~\n");
    EXPECT_TRUE(Holds(Failure("SELECT N FROM BANK_LINES"), "record 4, field N: the bytes 20 2D cannot be read as "
                                                           "NUMERIC: it has no digits."));
}

TEST_F(RecordFiles, ALengthThatCannotBeIsToldWhateverBadFieldsSays)
{
    Make("COUNTED", worded, "\x08\x00"s + "01abcdef" + "\x70\x00"s + "02abcdef" + "\x08\x00"s + "03abcdef",
         "SEQUENTIAL", "VARIABLE", "COUNTED-2");
    Make("WORD", worded, "\x00\x0C\x00\x00"s + "01abcdef" + "\x00\x02\x00\x00"s + "02abcdef", "SEQUENTIAL", "VARIABLE",
         "RDW");
    Make("SLOTS", worded, "\x08\x00\x00\x00"s + "01abcdef" + "\x09\x00\x00\x00"s + "02abcdef", "RELATIVE", "FIXED",
         "SLOT-4");
    const char* const failures[][2] = {
        {"BANK_COUNTED", "record 2: its length is 112, which is more than the 8 bytes of a record"},
        {"BANK_WORD", "record 2: its length is 2, which is less than the length's own bytes"},
        {"BANK_SLOTS", "record 2: its length is 9, and its slot has room for 8"}};
    for (const auto& failure : failures)
        for (OdbcClient* on : {&client, &lenient})
            EXPECT_TRUE(Holds(Failure(*on, std::string("SELECT COUNT(*) FROM ") + failure[0]), failure[1]))
                << failure[0];
}

TEST_F(RecordFiles, DeletedRecordsOfIndexedFilesAreNotThereButCount)
{
    Make("FIXED", worded, "01abcdef\n02ghijkl\0"s + "03mnopqr\n", "INDEXED");
    Make("VARIED", worded,
         "\x00\x04\x00\x00"s + "01ab" + "\x00\x03\x00\x01"s + "02c" + "\x00\x08\x00\x00"s + "03mnopqr", "INDEXED",
         "VARIABLE");
    for (const char* table : {"FIXED", "VARIED"}) {
        AddSpecial(table, 6, "ROWID", "INTEGER");
        AddSpecial(table, 1, "RFA", "VARCHAR");
    }
    EXPECT_EQ(Rows("SELECT * FROM BANK_FIXED"), "1|abcdef|00000000000000|1\n3|mnopqr|00000000000018|3\n");
    EXPECT_EQ(Rows("SELECT * FROM BANK_VARIED"), "1|ab|00000000000000|1\n3|mnopqr|00000000000015|3\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_FIXED WHERE NO = 2"), "0\n");
    WriteData("FIXED.dat", "01abcdef\n02gh");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_FIXED"), "record 2: the file ends inside the record: 4 bytes of 9"));
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_FIXED"), "1|abcdef|00000000000000|1\n2|gh|00000000000009|2\n");
}

TEST_F(RecordFiles, TheDataPartOfAnIndexedFileMayBeNamedWithoutItsSuffix)
{
    Make("PART", worded, "01abcdef\n0Xghijkl\n", "INDEXED");
    Run("UPDATE TW_TABLE SET FILE_SPECIFICATION = 'PART'");
    EXPECT_EQ(Rows("SELECT WORDS FROM BANK_PART"), "abcdef\nghijkl\n");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_PART"), "The data file '" + DataFile("PART.dat") + "', record 2"));
    Run("UPDATE TW_FILE SET FILE_ORGANISATION = 'SEQUENTIAL'");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_PART"), "The data file '" + DataFile("PART") + "' does not exist."));
}

TEST_F(RecordFiles, AFileThatComesBesideTheDataPartTakesItsPlace)
{
    Make("PART", worded, "01abcdef\n", "INDEXED");
    Run("UPDATE TW_TABLE SET FILE_SPECIFICATION = 'PART'");
    EXPECT_EQ(Rows("SELECT WORDS FROM BANK_PART"), "abcdef\n");
    WriteData("PART", "02ghijkl\n");
    EXPECT_EQ(Rows("SELECT WORDS FROM BANK_PART"), "ghijkl\n");
    std::filesystem::remove(DataFile("PART"));
    EXPECT_EQ(Rows("SELECT WORDS FROM BANK_PART"), "abcdef\n");
    std::filesystem::create_directory(DataFile("PART"));
    EXPECT_EQ(Rows("SELECT WORDS FROM BANK_PART"), "abcdef\n") << "a folder is no data part";
}

TEST_F(RecordFiles, PlacesAreThoseOfTheRecordsHeads)
{
    Make("SKIPPED", worded, "HEAD\x08\x00"s + "01abcdef" + "\x04\x00"s + "02xy", "SEQUENTIAL", "VARIABLE",
         "COUNTED-2 SKIP-4");
    const char* const columns[][3] = {{"1", "RFA", "VARCHAR"},
                                      {"3", "INDEX_NAME", "VARCHAR"},
                                      {"4", "INDEX_COLUMNS", "VARCHAR"},
                                      {"5", "TABLE_ORDER", "SMALLINT"},
                                      {"8", "RELATIVE_INDEX", "INTEGER"}};
    for (const auto& column : columns)
        AddSpecial("SKIPPED", std::stoi(column[0]), column[1], column[2]);
    EXPECT_EQ(Rows("SELECT NO, RFA, INDEX_NAME, INDEX_COLUMNS, TABLE_ORDER, RELATIVE_INDEX FROM BANK_SKIPPED"),
              "1|00000000000004|~|~|~|~\n2|00000000000014|~|~|~|~\n");
}

TEST_F(RecordFiles, WhatIsNoFileOfRecordsIsTold)
{
    Make("ODD", worded, "");
    std::filesystem::remove(DataFile("ODD.dat"));
    std::filesystem::create_symlink(DataFile("ODD.dat"), DataFile("ODD.dat"));
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_ODD"), "The data file '" + DataFile("ODD.dat") +
                                                             "' cannot be read: Too many levels of symbolic links."));
    std::filesystem::remove(DataFile("ODD.dat"));
    ASSERT_EQ(::mkfifo(DataFile("ODD.dat").c_str(), 0600), 0);
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_ODD"), "is no file of records but a device or a pipe."));
    Run("UPDATE TW_TABLE SET FILE_SPECIFICATION = ''");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_ODD"), "it has no file specification"));
}

TEST_F(RecordFiles, AFileThatTheUserMayNotReadIsTold)
{
    Make("SECRET", worded, "01abcdef");
    std::filesystem::permissions(DataFile("SECRET.dat"), std::filesystem::perms(0));
    std::filesystem::permissions(setup.Path(), std::filesystem::perms(0777));
    std::filesystem::permissions(setup.File("c.cat"), std::filesystem::perms(0666));
    for (const char* suffix : {"-wal", "-shm"})
        if (std::filesystem::exists(setup.File("c.cat") + suffix))
            std::filesystem::permissions(setup.File("c.cat") + suffix, std::filesystem::perms(0666));
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (::getuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            ::_exit(99);
        OdbcClient ordinary;
        Connect(ordinary);
        const std::string message = Failure(ordinary, "SELECT * FROM BANK_SECRET");
        ::_exit(Holds(message, "The data file '" + DataFile("SECRET.dat") + "' cannot be read: Permission denied.")
                    ? 0
                    : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

TEST_F(RecordFiles, ReadingLeavesEveryFileAsItWas)
{
    const std::string content = "01abcdef02ghijkl";
    Make("KEPT", worded, content);
    std::filesystem::permissions(DataFile("KEPT.dat"), std::filesystem::perms(0444));
    const auto written = std::filesystem::last_write_time(DataFile("KEPT.dat"));
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_KEPT a JOIN BANK_KEPT b ON a.NO = b.NO"), "2\n");
    std::ifstream file(DataFile("KEPT.dat"), std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), content);
    EXPECT_EQ(std::filesystem::last_write_time(DataFile("KEPT.dat")), written);
    const auto files = std::filesystem::directory_iterator(setup.File("data"));
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}
