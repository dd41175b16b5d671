// Files that a COBOL program wrote, against what the same program printed.

#include "Command.h"
#include "RecordsFixture.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace
{

/// Writes each record to a sequential and a relative file and prints its fields, then lines and records of varying
/// length.
const char* const source = R"(
IDENTIFICATION DIVISION.
PROGRAM-ID. WRITER.
ENVIRONMENT DIVISION.
INPUT-OUTPUT SECTION.
FILE-CONTROL.
    SELECT SEQ-FILE ASSIGN TO "seq.dat" ORGANIZATION SEQUENTIAL.
    SELECT REL-FILE ASSIGN TO "rel.dat" ORGANIZATION RELATIVE ACCESS DYNAMIC RELATIVE KEY REL-KEY.
    SELECT LIN-FILE ASSIGN TO "lin.dat" ORGANIZATION LINE SEQUENTIAL.
    SELECT VAR-FILE ASSIGN TO "var.dat" ORGANIZATION SEQUENTIAL.
DATA DIVISION.
FILE SECTION.
FD SEQ-FILE.
01 SEQ-REC.
   05 ID-NO        PIC 9(4).
   05 ZONE-SIGNED  PIC S9(5)V99.
   05 LEAD-SEP     PIC S9(5) SIGN LEADING SEPARATE.
   05 TRAIL-SEP    PIC S9(5) SIGN TRAILING SEPARATE.
   05 LEAD-OVER    PIC S9(5) SIGN LEADING.
   05 BIN-2        PIC S9(4) COMP.
   05 BIN-4        PIC S9(7)V99 COMP.
   05 BIN-8        PIC S9(18) COMP.
   05 BIN-U4       PIC 9(9) COMP.
   05 NATIVE-2     PIC 9(4) COMP-5.
   05 NATIVE-4     PIC S9(9) COMP-5.
   05 NATIVE-8     PIC S9(18) COMP-5.
   05 PACK-SIGNED  PIC S9(7)V99 COMP-3.
   05 PACK-PLAIN   PIC 9(5) COMP-3.
   05 PACK-WIDE    PIC S9(16)V99 COMP-3.
   05 REAL-4  COMP-1.
   05 REAL-8   COMP-2.
   05 PHRASE       PIC X(12).
   05 THE-DAY      PIC 9(8).
FD REL-FILE.
01 REL-REC.
   05 REL-NO       PIC 9(4).
   05 REL-WORDS    PIC X(6).
FD LIN-FILE.
01 LIN-REC.
   05 LIN-NO       PIC S9(4) SIGN TRAILING SEPARATE.
   05 LIN-WORDS    PIC X(20).
FD VAR-FILE RECORD IS VARYING IN SIZE FROM 4 TO 24 CHARACTERS DEPENDING ON VAR-SIZE.
01 VAR-REC.
   05 VAR-NO       PIC 9(4).
   05 VAR-WORDS    PIC X(20).
WORKING-STORAGE SECTION.
01 REL-KEY   PIC 9(4).
01 VAR-SIZE  PIC 9(4).
01 I         PIC S9(4).
01 EDGE      PIC S9(4).
PROCEDURE DIVISION.
MAIN-PART.
    OPEN OUTPUT SEQ-FILE REL-FILE LIN-FILE VAR-FILE.
    PERFORM WRITE-ONE VARYING I FROM 0 BY 1 UNTIL I > 9.
    CLOSE SEQ-FILE REL-FILE LIN-FILE VAR-FILE.
    OPEN I-O REL-FILE.
    MOVE 9 TO REL-KEY.
    DELETE REL-FILE RECORD.
    CLOSE REL-FILE.
    STOP RUN.
WRITE-ONE.
    COMPUTE EDGE = I - 5.
    MOVE I TO ID-NO.
    COMPUTE ZONE-SIGNED = EDGE * 1234.56.
    COMPUTE LEAD-SEP = EDGE * 1999.
    COMPUTE TRAIL-SEP = 0 - EDGE * 777.
    COMPUTE LEAD-OVER = EDGE * 12345.
    COMPUTE BIN-2 = EDGE * 1999.
    COMPUTE BIN-4 = EDGE * 1234567.89.
    COMPUTE BIN-8 = EDGE * 123456789012345678.
    COMPUTE BIN-U4 = I * 111111111.
    COMPUTE NATIVE-2 = I * 1111.
    COMPUTE NATIVE-4 = EDGE * 198765432.
    COMPUTE NATIVE-8 = EDGE * 199999999999999999.
    COMPUTE PACK-SIGNED = EDGE * 1999999.99.
    COMPUTE PACK-PLAIN = I * 11111.
    COMPUTE PACK-WIDE = EDGE * 1999999999999999.87.
    COMPUTE REAL-4 = EDGE * 0.3.
    COMPUTE REAL-8 = EDGE * 0.1.
    MOVE "Harry   Ivy" TO PHRASE.
    COMPUTE THE-DAY = 20000220 + I.
    WRITE SEQ-REC.
    DISPLAY "SEQ " ID-NO "|" ZONE-SIGNED "|" LEAD-SEP "|" TRAIL-SEP "|" LEAD-OVER "|" BIN-2 "|" BIN-4 "|" BIN-8
        "|" BIN-U4 "|" NATIVE-2 "|" NATIVE-4 "|" NATIVE-8 "|" PACK-SIGNED "|" PACK-PLAIN "|" PACK-WIDE
        "|" REAL-4 "|" REAL-8 "|" PHRASE "|" THE-DAY.
    COMPUTE REL-KEY = 2 * I + 1.
    MOVE REL-KEY TO REL-NO.
    MOVE "slot" TO REL-WORDS.
    WRITE REL-REC.
    MOVE EDGE TO LIN-NO.
    MOVE "a line" TO LIN-WORDS.
    IF I = 3 MOVE SPACES TO LIN-WORDS.
    WRITE LIN-REC.
    DISPLAY "LIN " LIN-NO "|" LIN-WORDS.
    MOVE I TO VAR-NO.
    MOVE "abcdefghijklmnopqrst" TO VAR-WORDS.
    COMPUTE VAR-SIZE = 4 + I * 2.
    WRITE VAR-REC.
)";

const std::vector<FieldRow> sequentialFields = {
    {"ID-NO", "ZONED-U", 4},         {"ZONE-SIGNED", "ZONED", 7, 2}, {"LEAD-SEP", "ZONED-LS", 6},
    {"TRAIL-SEP", "ZONED-S", 6},     {"LEAD-OVER", "ZONED-LO", 5},   {"BIN-2", "INTEGER-2-BE", 2},
    {"BIN-4", "INTEGER-4-BE", 4, 2}, {"BIN-8", "INTEGER-8-BE", 8},   {"BIN-U4", "UNSIGNED-4-BE", 4},
    {"NATIVE-2", "UNSIGNED-2", 2},   {"NATIVE-4", "INTEGER-4", 4},   {"NATIVE-8", "INTEGER-8", 8},
    {"PACK-SIGNED", "PACKED", 5, 2}, {"PACK-PLAIN", "PACKED-U", 3},  {"PACK-WIDE", "PACKED", 10, 2},
    {"REAL-4", "FLOAT-4", 4},        {"REAL-8", "FLOAT-8", 8},       {"PHRASE", "STRING", 12},
    {"THE-DAY", "DATE-YYYYMMDD", 8},
};

/// Writes each record with the usages that other compilers have too, and prints its fields.
const char* const otherSource = R"(
IDENTIFICATION DIVISION.
PROGRAM-ID. OTHER.
ENVIRONMENT DIVISION.
INPUT-OUTPUT SECTION.
FILE-CONTROL.
    SELECT OTH-FILE ASSIGN TO "oth.dat" ORGANIZATION SEQUENTIAL.
DATA DIVISION.
FILE SECTION.
FD OTH-FILE.
01 OTH-REC.
   05 PLAIN-PACK  PIC 9(7) COMP-6.
   05 B1  PIC S9(2) COMP.
   05 B2  PIC S9(4) COMP.
   05 B3  PIC S9(6) COMP.
   05 B4  PIC S9(9) COMP.
   05 B5  PIC S9(11) COMP.
   05 B6  PIC S9(14) COMP.
   05 B7  PIC S9(16) COMP.
   05 B8  PIC S9(18) COMP.
   05 U1  PIC 9(2) COMP.
   05 U2  PIC 9(4) COMP.
   05 U3  PIC 9(7) COMP.
   05 U4  PIC 9(9) COMP.
   05 U5  PIC 9(12) COMP.
   05 U6  PIC 9(14) COMP.
   05 U7  PIC 9(16) COMP.
   05 U8  PIC 9(18) COMP.
   05 N1  PIC S9(2) COMP-5.
   05 N3  PIC S9(6) COMP-5.
   05 N5  PIC S9(11) COMP-5.
   05 N6  PIC S9(14) COMP-5.
   05 N7  PIC 9(16) COMP-5.
   05 C-CHAR   USAGE BINARY-CHAR.
   05 C-SHORT  USAGE BINARY-SHORT UNSIGNED.
   05 C-LONG   USAGE BINARY-LONG.
   05 C-DOUBLE USAGE BINARY-DOUBLE.
   05 OVER-TRAIL  PIC S9(4)V9.
   05 OVER-LEAD   PIC S9(5) SIGN LEADING.
   05 EDITED      PIC -(5)9.99.
   05 ENDED       PIC X(8).
WORKING-STORAGE SECTION.
01 I     PIC S9(4).
01 EDGE  PIC S9(4).
PROCEDURE DIVISION.
MAIN-PART.
    OPEN OUTPUT OTH-FILE.
    PERFORM WRITE-ONE VARYING I FROM 0 BY 1 UNTIL I > 9.
    CLOSE OTH-FILE.
    STOP RUN.
WRITE-ONE.
    COMPUTE EDGE = I - 5.
    COMPUTE PLAIN-PACK = I * 1111111.
    COMPUTE B1 = EDGE * 19.
    COMPUTE B2 = EDGE * 1999.
    COMPUTE B3 = EDGE * 199999.
    COMPUTE B4 = EDGE * 199999999.
    COMPUTE B5 = EDGE * 19999999999.
    COMPUTE B6 = EDGE * 19999999999999.
    COMPUTE B7 = EDGE * 1999999999999999.
    COMPUTE B8 = EDGE * 199999999999999999.
    COMPUTE U1 = I * 11.
    COMPUTE U2 = I * 1111.
    COMPUTE U3 = I * 1111111.
    COMPUTE U4 = I * 111111111.
    COMPUTE U5 = I * 111111111111.
    COMPUTE U6 = I * 11111111111111.
    COMPUTE U7 = I * 1111111111111111.
    COMPUTE U8 = I * 111111111111111111.
    COMPUTE N1 = EDGE * 13.
    COMPUTE N3 = EDGE * 123456.
    COMPUTE N5 = EDGE * 12345678901.
    COMPUTE N6 = EDGE * 12345678901234.
    COMPUTE N7 = I * 1111111111111111.
    COMPUTE C-CHAR = EDGE * 25.
    COMPUTE C-SHORT = I * 7000.
    COMPUTE C-LONG = EDGE * 400000000.
    COMPUTE C-DOUBLE = EDGE * 1844674407370955161.
    COMPUTE OVER-TRAIL = EDGE * 123.4.
    COMPUTE OVER-LEAD = EDGE * 12341.
    COMPUTE EDITED = EDGE * 12.34.
    MOVE Z"abc" TO ENDED.
    IF I = 4 MOVE ALL "x" TO ENDED.
    WRITE OTH-REC.
    DISPLAY "OTH " PLAIN-PACK "|" B1 "|" B2 "|" B3 "|" B4 "|" B5 "|" B6 "|" B7 "|" B8
        "|" U1 "|" U2 "|" U3 "|" U4 "|" U5 "|" U6 "|" U7 "|" U8 "|" N1 "|" N3 "|" N5 "|" N6 "|" N7
        "|" C-CHAR "|" C-SHORT "|" C-LONG "|" C-DOUBLE WITH NO ADVANCING.
    IF OVER-TRAIL < 0 DISPLAY "|-" WITH NO ADVANCING ELSE DISPLAY "|" WITH NO ADVANCING.
    COMPUTE OVER-TRAIL = FUNCTION ABS (OVER-TRAIL).
    DISPLAY OVER-TRAIL WITH NO ADVANCING.
    IF OVER-LEAD < 0 DISPLAY "|-" WITH NO ADVANCING ELSE DISPLAY "|" WITH NO ADVANCING.
    COMPUTE OVER-LEAD = FUNCTION ABS (OVER-LEAD).
    DISPLAY OVER-LEAD "|" FUNCTION TRIM (EDITED).
)";

const std::vector<FieldRow> otherFields = {
    {"PLAIN-PACK", "PACKED-NS", 4}, {"B1", "INTEGER-1", 1},       {"B2", "INTEGER-2-BE", 2},
    {"B3", "INTEGER-3-BE", 3},      {"B4", "INTEGER-4-BE", 4},    {"B5", "INTEGER-5-BE", 5},
    {"B6", "INTEGER-6-BE", 6},      {"B7", "INTEGER-7-BE", 7},    {"B8", "INTEGER-8-BE", 8},
    {"U1", "UNSIGNED-1", 1},        {"U2", "UNSIGNED-2-BE", 2},   {"U3", "UNSIGNED-3-BE", 3},
    {"U4", "UNSIGNED-4-BE", 4},     {"U5", "UNSIGNED-5-BE", 5},   {"U6", "UNSIGNED-6-BE", 6},
    {"U7", "UNSIGNED-7-BE", 7},     {"U8", "UNSIGNED-8-BE", 8},   {"N1", "INTEGER-1", 1},
    {"N3", "INTEGER-3", 3},         {"N5", "INTEGER-5", 5},       {"N6", "INTEGER-6", 6},
    {"N7", "UNSIGNED-7", 7},        {"C-CHAR", "INTEGER-1", 1},   {"C-SHORT", "UNSIGNED-2", 2},
    {"C-LONG", "INTEGER-4", 4},     {"C-DOUBLE", "INTEGER-8", 8}, {"OVER-TRAIL", "ZONED-RO", 5, 1},
    {"OVER-LEAD", "ZONED-LO", 5},   {"EDITED", "NUMERIC", 9, 2},  {"ENDED", "STRING-ZERO", 8},
};

/// A printed value as a client sees it: a number without its plus, needless zeros and a bare point, text without blanks
/// at its end.
std::string Plain(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    if (text.empty() || text.find_first_not_of("+-.0123456789") != std::string::npos)
        return text;
    const bool negative = text[0] == '-' || text.back() == '-';
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == '+' || c == '-'; }), text.end());
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    text.erase(0, std::min(text.find_first_not_of('0'), text.size()));
    if (text.empty() || text[0] == '.')
        text.insert(0, "0");
    return negative && text != "0" ? "-" + text : text;
}

std::string PlainLine(const std::string& line)
{
    std::istringstream cells(line);
    std::string text;
    for (std::string cell; std::getline(cells, cell, '|');)
        text += Plain(cell) + "|";
    return text;
}

std::string PlainLines(const std::string& lines)
{
    std::istringstream rows(lines);
    std::string text;
    for (std::string row; std::getline(rows, row);)
        text += PlainLine(row) + "\n";
    return text;
}

/// Lines of plain cells with the two floating point numbers in the digits that they hold: the program prints more of
/// them than that.
std::string WithRoundedReals(const std::string& lines)
{
    std::istringstream rows(lines);
    std::string text;
    for (std::string row; std::getline(rows, row); text += "\n") {
        std::istringstream cells(row);
        std::size_t number = 0;
        for (std::string cell; std::getline(cells, cell, '|'); ++number) {
            const std::string& type = sequentialFields[number].type;
            char rounded[40];
            if (type.starts_with("FLOAT")) {
                std::snprintf(rounded, sizeof rounded, type == "FLOAT-4" ? "%.7g" : "%.15g", std::stod(cell));
                cell = rounded;
            }
            text += cell + "|";
        }
    }
    return text;
}

class Cobol : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        RunProgram(source, {});
    }

    /// Compiles a program and runs it in the folder of the data files.
    void RunProgram(const std::string& text, const std::vector<std::string>& options)
    {
        std::ofstream(DataFile("writer.cob")) << text;
        std::vector<std::string> words = {"cobc", "-x", "-free", "-o", DataFile("writer"), DataFile("writer.cob")};
        words.insert(words.end(), options.begin(), options.end());
        const CommandOutput compiled = RunCommand(words, "");
        ASSERT_EQ(compiled.exitCode, 0) << "cobc of the package gnucobol is needed. " << compiled.text;
        const CommandOutput ran = RunCommand({"env", "COB_FILE_PATH=" + setup.File("data"), DataFile("writer")}, "");
        ASSERT_EQ(ran.exitCode, 0) << ran.text;
        printed = ran.text;
    }

    /// The printed lines that begin with a word, without it, as clients see their values.
    std::string Printed(const std::string& word) const
    {
        std::istringstream lines(printed);
        std::string text;
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with(word + " "))
                text += line.substr(word.size() + 1) + "\n";
        return PlainLines(text);
    }

    std::string printed;
};

} // namespace

TEST_F(Cobol, EveryUsageOfASequentialFileIsReadAsItWasPrinted)
{
    DefineFile("SEQ", sequentialFields);
    DefineTable("SEQ", "SEQ", "seq.dat");
    const std::string expected = WithRoundedReals(Printed("SEQ"));
    EXPECT_EQ(std::count(expected.begin(), expected.end(), '\n'), 10);
    std::string columns;
    for (const FieldRow& field : sequentialFields) {
        std::string name = field.name;
        std::replace(name.begin(), name.end(), '-', '_');
        columns += (columns.empty() ? "" : ", ") + (name == "THE_DAY" ? "replace(THE_DAY, '-', '')" : name);
    }
    EXPECT_EQ(WithRoundedReals(PlainLines(Rows("SELECT " + columns + " FROM BANK_SEQ"))), expected);
}

TEST_F(Cobol, UsagesOfOtherCompilersAreReadAsTheyWerePrinted)
{
    RunProgram(otherSource, {"-fbinary-size=1--8", "-fsign=EBCDIC"});
    DefineFile("OTH", otherFields);
    DefineTable("OTH", "OTH", "oth.dat");
    const std::string expected = Printed("OTH");
    EXPECT_EQ(std::count(expected.begin(), expected.end(), '\n'), 10) << printed;
    std::string columns;
    for (const FieldRow& field : otherFields) {
        std::string name = field.name;
        std::replace(name.begin(), name.end(), '-', '_');
        if (name != "ENDED")
            columns += (columns.empty() ? "" : ", ") + name;
    }
    EXPECT_EQ(PlainLines(Rows("SELECT " + columns + " FROM BANK_OTH")), expected);
    EXPECT_EQ(Rows("SELECT DISTINCT ENDED FROM BANK_OTH"), "abc\nxxxxxxxx\n");
}

TEST_F(Cobol, WideDecimalNumbersKeepEveryDigitAndTheirOrder)
{
    DefineFile("SEQ", sequentialFields);
    DefineTable("SEQ", "SEQ", "seq.dat");
    EXPECT_EQ(Rows("SELECT PACK_WIDE FROM BANK_SEQ WHERE PACK_WIDE > 0 ORDER BY PACK_WIDE DESC LIMIT 2"),
              "7999999999999999.48\n5999999999999999.61\n");
    EXPECT_EQ(Rows("SELECT MIN(PACK_WIDE), MAX(PACK_WIDE) FROM BANK_SEQ"),
              "-9999999999999999.35|7999999999999999.48\n");
    EXPECT_EQ(Rows("SELECT ID_NO FROM BANK_SEQ WHERE PACK_WIDE BETWEEN -1 AND 1"), "5\n");
}

TEST_F(Cobol, RelativeFilesShowTheSlotsThatAreFilled)
{
    DefineFile("REL", {{"NO", "ZONED-U", 4}, {"WORDS", "STRING", 6}}, "RELATIVE", "FIXED", "SLOT-8");
    DefineTable("REL", "REL", "rel.dat");
    Run("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_TYPE, COLUMN_NAME, SQL_TYPE_NAME, "
        "PRECISION, FIELD_NAME, VISIBLE) VALUES ('BANK', 'REL', 1, 7, 'RELATIVE_NUMBER', 'INTEGER', 10, '', 1)");
    EXPECT_EQ(Rows("SELECT COUNT(*), MIN(NO), MAX(NO), SUM(NO = RELATIVE_NUMBER), MIN(WORDS) FROM BANK_REL"),
              "9|1|19|9|slot\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_REL WHERE NO = 9"), "0\n") << "it was deleted";
}

TEST_F(Cobol, LinesAreReadWithTheBlanksThatTheyLack)
{
    DefineFile("LIN", {{"NO", "ZONED-S", 5}, {"WORDS", "STRING", 20}}, "SEQUENTIAL", "VARIABLE");
    DefineTable("LIN", "LIN", "lin.dat");
    EXPECT_EQ(PlainLines(Rows("SELECT NO, ifnull(WORDS, '') || '.' FROM BANK_LIN WHERE NO <> -2")).substr(0, 14),
              "-5|a line.|\n-4");
    EXPECT_EQ(PlainLines(Rows("SELECT NO FROM BANK_LIN WHERE WORDS IS NULL")), "-2|\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_LIN"), "10\n");
}

TEST_F(Cobol, RecordsOfVaryingLengthEndWhereTheyEnd)
{
    DefineFile("VAR", {{"NO", "ZONED-U", 4}, {"WORDS", "STRING", 20}}, "SEQUENTIAL", "VARIABLE", "COUNTED-COBOL");
    DefineTable("VAR", "VAR", "var.dat");
    EXPECT_EQ(Rows("SELECT NO, WORDS FROM BANK_VAR WHERE NO < 4"), "0|~\n1|ab\n2|abcd\n3|abcdef\n");
    EXPECT_EQ(Rows("SELECT length(WORDS) FROM BANK_VAR WHERE NO = 9"), "18\n");
}
