// Joins, and what decimal numbers of many digits are compared with.

#include "RecordsFixture.h"

#include <fstream>

namespace
{

using namespace std::string_literals;

const std::vector<FieldRow> sums = {{"NAME", "STRING", 4}, {"WIDE", "PACKED", 10, 2}};

/// 12345678901234567.88, .89 and .90, and the second as a negative number: as floating point numbers the first three
/// are one.
const std::string wideSums = "one "
                             "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x8C"
                             "two "
                             "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x9C"
                             "tri "
                             "\x12\x34\x56\x78\x90\x12\x34\x56\x79\x0C"
                             "less"
                             "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x9D"s;

class RecordComparisons : public Records
{
};

std::string Numbered(int count, int step, const std::string& word)
{
    std::string content;
    for (int i = 0; i < count; ++i) {
        std::string digits = std::to_string(i * step);
        content += std::string(6 - digits.size(), '0') + digits + word;
    }
    return content;
}

} // namespace

TEST_F(RecordComparisons, WideDecimalsAreEqualInEveryDigit)
{
    Make("SUMS", sums, wideSums);
    for (const char* literal : {"12345678901234567.89", "'12345678901234567.89'", "'012345678901234567.890'"})
        EXPECT_EQ(Rows(std::string("SELECT NAME FROM BANK_SUMS WHERE [WIDE] = ") + literal), "two\n") << literal;
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE > 12345678901234567.89"), "tri\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE <= -12345678901234567.89"), "less\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE BETWEEN 12345678901234567.89 AND 12345678901234567.90"),
              "two\ntri\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE IN (1, 12345678901234567.88, -12345678901234567.89)"),
              "one\nless\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE < 0"), "less\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE > 5.5 ORDER BY WIDE DESC"), "tri\ntwo\none\n");
    EXPECT_EQ(Rows("SELECT COUNT(DISTINCT WIDE), MIN(WIDE), MAX(WIDE) FROM BANK_SUMS"),
              "4|-12345678901234567.89|12345678901234567.90\n");
    EXPECT_EQ(Rows("SELECT a.NAME, b.NAME FROM BANK_SUMS a JOIN BANK_SUMS b ON a.WIDE = b.WIDE"),
              "one|one\ntwo|two\ntri|tri\nless|less\n");
}

TEST_F(RecordComparisons, WhatIsCalculatedFromWideDecimalsIsANumber)
{
    Make("SUMS", sums, wideSums);
    const std::string select = "SELECT NAME FROM BANK_SUMS WHERE ";
    EXPECT_EQ(Rows(select + "1 * WIDE < 22345678901234567.89 AND WIDE > 0"), "one\ntwo\ntri\n");
    EXPECT_EQ(Rows(select + "1 * BANK_SUMS.WIDE > 22345678901234567.89"), "");
    EXPECT_EQ(Rows(select + "-WIDE > 11345678901234567.89"), "less\n");
    EXPECT_EQ(Rows(select + "5 + WIDE BETWEEN 1 AND 22345678901234567.89"), "one\ntwo\ntri\n");
    DefineTable("SOME", "SUMS", "SUMS.dat", "-BANK_SOME.WIDE > 11345678901234567.89");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SOME"), "less\n");
}

TEST_F(RecordComparisons, WhatOnlyBearsAWideDecimalsNameIsComparedByItsValue)
{
    Make("SUMS", sums, wideSums);
    Run("CREATE VIEW TOTALS AS SELECT NAME, SUM(WIDE) AS WIDE FROM BANK_SUMS GROUP BY NAME");
    Run("CREATE VIEW LISTED(NAME, WIDE) AS SELECT NAME, SUM(WIDE) FROM BANK_SUMS GROUP BY NAME");
    for (const std::string table : {"(SELECT NAME, SUM(WIDE) AS WIDE FROM BANK_SUMS GROUP BY NAME)", "TOTALS", "LISTED",
                                    "(SELECT NAME, SUM(WIDE) WIDE FROM BANK_SUMS GROUP BY NAME)",
                                    "(SELECT NAME, 1 * WIDE AS WIDE FROM BANK_SUMS)"}) {
        const std::string select = "SELECT COUNT(*) FROM " + table + " WHERE ";
        EXPECT_EQ(Rows(select + "WIDE > 11345678901234567.8"), "3\n") << table;
        EXPECT_EQ(Rows(select + "WIDE > 22345678901234567.8"), "0\n") << table;
        EXPECT_EQ(Rows(select + "22345678901234567.8 > WIDE"), "4\n") << table;
        EXPECT_EQ(Rows(select + "WIDE BETWEEN -22345678901234567.8 AND 11345678901234567.8"), "1\n") << table;
        EXPECT_EQ(Rows(select + "WIDE IN (12345678901234567.8)"), "3\n") << table;
    }
}

TEST_F(RecordComparisons, ListsAreExactWhereAStatementGivesAWideDecimalsNameToAnother)
{
    Make("SUMS", sums, wideSums);
    Run("CREATE VIEW TOTALS AS SELECT NAME, SUM(WIDE) AS WIDE FROM BANK_SUMS GROUP BY NAME");
    EXPECT_EQ(Rows("SELECT COUNT(*), SUM(WIDE) < 12345678901234569 AS WIDE FROM BANK_SUMS WHERE WIDE IN (1, "
                   "12345678901234567.89)"),
              "1|1\n");
    EXPECT_EQ(Rows("SELECT NAME, 1 AS WIDE FROM BANK_SUMS s WHERE s.WIDE NOT IN (12345678901234567.89)"),
              "one|1\ntri|1\nless|1\n");
    EXPECT_EQ(Rows("SELECT s.NAME FROM BANK_SUMS s JOIN TOTALS t ON s.NAME = t.NAME WHERE s.WIDE IN "
                   "(12345678901234567.89) AND t.WIDE IN (12345678901234567.8)"),
              "two\n");
}

TEST_F(RecordComparisons, TextsThatBearAWideDecimalsNameStayTexts)
{
    Make("SUMS", sums, wideSums);
    Make("NOTES", {{"NAME", "STRING", 4}, {"WIDE", "STRING", 20}},
         "one 1234567890123456    two 01234567890123456   tri 12345678901234567.89");
    const std::string select = "SELECT s.NAME, n.NAME FROM BANK_SUMS s, BANK_NOTES n WHERE ";
    EXPECT_EQ(Rows(select + "s.NAME = n.NAME AND n.WIDE = 1234567890123456"), "one|one\n");
    EXPECT_EQ(Rows(select + "s.NAME = n.NAME AND n.WIDE IN (1, 1234567890123456)"), "one|one\n");
    EXPECT_EQ(Rows(select + "s.WIDE = 12345678901234567.89 AND n.WIDE >= 12345678901234567"), "two|tri\n");
    EXPECT_EQ(Rows(select + "12345678901234567.89 < s.WIDE AND 1234567890123456 > n.WIDE"), "tri|two\n");
    DefineTable("SOME", "SUMS", "SUMS.dat",
                "BANK_SOME.NAME IN (SELECT n.NAME FROM BANK_NOTES n WHERE n.WIDE = 1234567890123456) OR BANK_SOME.WIDE "
                "= 12345678901234567.90");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SOME"), "one\ntri\n") << "in a criteria too";
}

TEST_F(RecordComparisons, ValuesOfJsonThatBearAWideDecimalsNameAreNumbers)
{
    Make("VALS", {{"VALUE", "PACKED", 10, 2}}, "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x8C");
    const std::string json = "json_each('[3, 12345678901234567, 12345678901234569]')";
    const std::string wide = " AND v.VALUE > 12345678901234567.5 AND v.VALUE < 12345678901234567.9";
    for (const std::string& condition :
         {json + " WHERE json_each.value < 12345678901234568", json + " j WHERE j.value <= 12345678901234568",
          json + " AS j WHERE 12345678901234568 > j.value",
          "(SELECT value AS N FROM " + json + " WHERE value < 12345678901234568) WHERE 1 = 1"})
        EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_VALS v, " + condition + wide), "2\n") << condition;
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_VALS, (SELECT atom AS VALUE FROM " + json +
                   ") j WHERE j.value < 12345678901234568"),
              "2\n");
}

TEST_F(RecordComparisons, WhatIsChosenFromWideDecimalsComparesAsItIsTold)
{
    Make("SUMS", sums, wideSums);
    const std::string having = "SELECT NAME FROM BANK_SUMS GROUP BY NAME HAVING ";
    EXPECT_EQ(Rows(having + "MAX(WIDE) + 0 > 100 ORDER BY 1"), "one\ntri\ntwo\n");
    EXPECT_EQ(Rows(having + "CAST(COALESCE(MAX(WIDE), 0) AS TEXT) COLLATE TARNWICK_DECIMAL > 100 ORDER BY 1"),
              "one\ntri\ntwo\n");
    EXPECT_EQ(Rows(having + "CAST(MAX(WIDE) AS TEXT) COLLATE TARNWICK_DECIMAL > '12345678901234567.88' ORDER BY 1"),
              "tri\ntwo\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS GROUP BY NAME ORDER BY MAX(WIDE) COLLATE TARNWICK_DECIMAL"),
              "less\none\ntwo\ntri\n");
}

TEST_F(RecordComparisons, WideDecimalsAreExactOnBothSidesAndThroughViews)
{
    Make("SUMS", sums, wideSums);
    Run("CREATE VIEW INNER_SUMS AS SELECT NAME, WIDE FROM BANK_SUMS");
    Run("CREATE VIEW OUTER_SUMS AS SELECT * FROM INNER_SUMS");
    for (const std::string table : {"BANK_SUMS", "OUTER_SUMS", "(SELECT * FROM BANK_SUMS)"}) {
        const std::string select = "SELECT NAME FROM " + table + " WHERE ";
        EXPECT_EQ(Rows(select + "WIDE = 12345678901234567.89"), "two\n") << table;
        EXPECT_EQ(Rows(select + "12345678901234567.89 = WIDE"), "two\n") << table;
        EXPECT_EQ(Rows(select + "12345678901234567.89 < WIDE"), "tri\n") << table;
        EXPECT_EQ(Rows(select + "WIDE IS 12345678901234567.89"), "two\n") << table;
        EXPECT_EQ(Rows(select + "WIDE IS NOT 12345678901234567.89 AND WIDE > 0"), "one\ntri\n") << table;
    }
}

TEST_F(RecordComparisons, WideDecimalsAreExactWhereverTheyAreNamed)
{
    Make("SUMS", sums, wideSums);
    Make("WHOLE", {{"NAME", "STRING", 1}, {"WIDE", "ZONED-U", 16}}, "a1234567890123456b1234567890123457");
    EXPECT_EQ(
        Rows("SELECT NAME, CASE WIDE WHEN 12345678901234567.88 THEN 'a' WHEN 12345678901234567.89 THEN 'b' ELSE 'c' "
             "END FROM BANK_SUMS"),
        "one|a\ntwo|b\ntri|c\nless|c\n");
    const std::string select = "SELECT NAME FROM BANK_SUMS WHERE ";
    EXPECT_EQ(Rows(select + "12345678901234567.89 BETWEEN WIDE AND 12345678901234570"), "one\ntwo\nless\n");
    EXPECT_EQ(Rows(select + "12345678901234567.89 BETWEEN WIDE AND WIDE"), "two\n");
    EXPECT_EQ(Rows(select + "12345678901234567.89 BETWEEN 0 AND WIDE"), "two\ntri\n");
    EXPECT_EQ(Rows(select + "12345678901234567.89 BETWEEN rowid AND WIDE"), "two\ntri\n");
    EXPECT_EQ(Rows(select + "12345678901234567.89 IN (WIDE)"), "two\n");
    EXPECT_EQ(Rows(select + "12345678901234567.89 NOT IN (5, rowid, WIDE)"), "one\ntri\nless\n");
    EXPECT_EQ(Rows(select + "WIDE IN (VALUES (12345678901234567.89), (7))"), "two\n");
    EXPECT_EQ(
        Rows("SELECT w.NAME FROM BANK_WHOLE w WHERE 1234567890123456 IN (w.WIDE) AND EXISTS (SELECT 1 FROM BANK_SUMS "
             "WHERE WIDE > 1)"),
        "a\n");
    EXPECT_EQ(Rows("SELECT w.NAME, CASE w.WIDE WHEN 1234567890123456 THEN 1 ELSE 2 END FROM BANK_WHOLE w WHERE "
                   "1234567890123456 BETWEEN w.WIDE AND w.WIDE AND (SELECT COUNT(WIDE) FROM BANK_SUMS) = 4"),
              "a|1\n");
    EXPECT_TRUE(Failure(select + "WIDE < 12345678901234567.89.01").find("syntax error") != std::string::npos);
}

TEST_F(RecordComparisons, WideDecimalsAreExactElsewhereWithTextsThatAreNumbers)
{
    Make("SUMS", sums, wideSums);
    for (const std::string condition : {"WIDE IN (SELECT #)", "CASE # WHEN WIDE THEN 1 END = 1", "# IN (SELECT s.WIDE)",
                                        "NULLIF(WIDE, #) IS NULL", "('two', WIDE) = (NAME, #)", "WIDE = (SELECT #)"}) {
        std::string text = "SELECT NAME FROM BANK_SUMS s WHERE " + condition;
        text.replace(text.find('#'), 1, "'12345678901234567.89'");
        EXPECT_EQ(Rows(text), "two\n") << condition;
    }
}

TEST_F(RecordComparisons, WideDecimalsInCriteriaAreExactToo)
{
    Make("SUMS", sums, wideSums);
    DefineTable("SOME", "SUMS", "SUMS.dat", "BANK_SOME.WIDE >= 12345678901234567.89 ");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SOME"), "two\ntri\n");
}

TEST_F(RecordComparisons, WideDecimalsOfTextKeepTheirDigits)
{
    Make("TEXTS", {{"WIDE", "STRING", 20}}, "12345678901234567.89       7.5          ");
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'DECIMAL', SCALE = 2");
    EXPECT_EQ(Rows("SELECT WIDE FROM BANK_TEXTS ORDER BY WIDE"), "7.5\n12345678901234567.89\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_TEXTS WHERE WIDE = 12345678901234567.89"), "1\n");
    const Result result = client.Execute("SELECT WIDE FROM BANK_TEXTS");
    ASSERT_EQ(result.columns.size(), 1u);
    EXPECT_EQ(result.columns[0].type, SQL_DECIMAL);
    EXPECT_EQ(result.columns[0].size, 20u);
}

TEST_F(RecordComparisons, JoinedRecordsAreLookedUp)
{
    const std::vector<FieldRow> fields = {{"NO", "ZONED-U", 6}, {"WORD", "STRING", 1}};
    Make("MANY", fields, Numbered(20000, 3, "m"));
    Make("MORE", fields, Numbered(20000, 2, "n"));
    // Read over and over, these would be 400 million records.
    EXPECT_EQ(Rows("SELECT COUNT(*), SUM(a.NO), MIN(b.WORD) FROM BANK_MANY a JOIN BANK_MORE b ON a.NO = b.NO"),
              "6667|133326666|n\n");
    EXPECT_EQ(Rows("SELECT COUNT(b.NO), COUNT(*) FROM BANK_MANY a LEFT JOIN BANK_MORE b ON b.NO = a.NO"),
              "6667|20000\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_MANY a WHERE EXISTS (SELECT 1 FROM BANK_MORE b WHERE b.NO = a.NO)"),
              "6667\n");
    EXPECT_EQ(Rows("SELECT SUM((SELECT COUNT(*) FROM BANK_MORE b WHERE b.NO = a.NO)) FROM BANK_MANY a"), "6667\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_MANY a WHERE a.NO IN (SELECT NO FROM BANK_MORE)"), "6667\n");
}

TEST_F(RecordComparisons, TextsAndNumbersThatAreJoinedAreLookedUpToo)
{
    Make("MANY", {{"NO", "STRING", 6}, {"WORD", "STRING", 1}}, Numbered(20000, 3, "m"));
    Make("MORE", {{"NO", "ZONED-U", 6}, {"WORD", "STRING", 1}}, Numbered(20000, 2, "n"));
    for (const std::string tables : {"BANK_MANY a LEFT JOIN BANK_MORE b", "BANK_MORE a LEFT JOIN BANK_MANY b"}) {
        EXPECT_EQ(Rows("SELECT COUNT(b.NO), COUNT(*) FROM " + tables + " ON a.NO = b.NO"), "6667|20000\n") << tables;
        EXPECT_EQ(Rows("SELECT COUNT(b.NO), COUNT(*) FROM " + tables + " ON a.WORD = b.NO"), "0|20000\n") << tables;
    }
}

TEST_F(RecordComparisons, LookingUpNumbersInTextsFindsWhatReadingFinds)
{
    Make("TEXTS", {{"T", "STRING", 12}, {"W", "PACKED", 10, 2}}, [] {
        std::string content;
        for (const char* text : {"7", "007", "7.0", " 7", "7x", "x7", "1e3", "0.3", "", "-0", "1e999", "+7", "0x7",
                                 ".3", "1000.", "inf", "123456789012"})
            content += (text + std::string(12, ' ')).substr(0, 12) + "\x00\x00\x00\x00\x00\x00\x00\x00\x70\x0C"s;
        return content;
    }());
    // 7, 1000, 0.1 + 0.2, 0.3, minus zero and an infinity's neighbour.
    Make("NUMS", {{"N", "ZONED-U", 12}, {"R", "FLOAT-8-BE", 8}},
         "000000000007\x40\x1C\x00\x00\x00\x00\x00\x00"
         "000000001000\x40\x8F\x40\x00\x00\x00\x00\x00"
         "000000000000\x3F\xD3\x33\x33\x33\x33\x33\x34"
         "            \x3F\xD3\x33\x33\x33\x33\x33\x33"
         "123456789012\x80\x00\x00\x00\x00\x00\x00\x00"
         "123456789013\x7F\xEF\xFF\xFF\xFF\xFF\xFF\xFF"s);
    Run("CREATE TABLE T (T VARCHAR(12), W DECIMAL_TEXT(20, 2) COLLATE TARNWICK_DECIMAL)");
    Run("CREATE TABLE N (N BIGINT, R DOUBLE)");
    Run("INSERT INTO T SELECT T, W FROM BANK_TEXTS");
    Run("INSERT INTO N SELECT N, R FROM BANK_NUMS");
    // SQLite's own indexes miss a decimal that a number equals in other digits.
    Run("PRAGMA automatic_index = OFF");
    for (const std::string condition :
         {"t.T = n.N", "t.T = n.R", "t.T = n.N + 0", "t.T = n.R * 1", "n.N = t.T", "n.R = t.T || ''", "t.W = n.N",
          "t.W = n.R + 0", "n.N = t.W", "t.T = CAST(n.N AS BLOB)", "n.N = CAST(t.T AS BLOB)"})
        for (const std::string kind : {"NUMS n LEFT JOIN #TEXTS t", "TEXTS t LEFT JOIN #NUMS n"}) {
            const auto rows = [&](const std::string& before, bool isCopy) {
                std::string tables = before + kind;
                for (std::size_t at; (at = tables.find('#')) != std::string::npos;)
                    tables.replace(at, 1, before);
                if (isCopy)
                    for (const std::string name : {"TEXTS", "NUMS"})
                        tables.replace(tables.find(name), name.size(), name.substr(0, 1));
                return Rows("SELECT t.T, n.N, n.R FROM " + tables + " ON " + condition + " ORDER BY 1, 2, 3");
            };
            EXPECT_EQ(rows("BANK_", false), rows("", true)) << kind << " ON " << condition;
        }
}

TEST_F(RecordComparisons, EachReadingOfATableKeepsToOneFileWhileItGrows)
{
    Make("ROWS", {{"NO", "ZONED-U", 2}}, "010203");
    SQLHSTMT statement = client.NewStatement();
    std::string text = "SELECT (SELECT COUNT(*) FROM BANK_ROWS b WHERE b.NO = a.NO OR b.NO > 3) FROM BANK_ROWS a";
    ASSERT_EQ(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    std::ofstream(DataFile("ROWS.dat"), std::ios::binary | std::ios::app) << "0405";
    int rows = 1;
    for (; SQLFetch(statement) == SQL_SUCCESS; ++rows) {
        SQLINTEGER found = 0;
        ASSERT_EQ(SQLGetData(statement, 1, SQL_C_SLONG, &found, sizeof found, nullptr), SQL_SUCCESS);
        EXPECT_TRUE(found == 1 || found == 3) << found;
    }
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    EXPECT_EQ(rows, 3);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_ROWS a JOIN BANK_ROWS b ON a.NO = b.NO"), "5\n");
}

TEST_F(RecordComparisons, ListsOfWideDecimalsAreExact)
{
    Make("SUMS", sums, wideSums);
    EXPECT_EQ(
        Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE IN (SELECT WIDE FROM BANK_SUMS WHERE NAME IN ('one', 'less'))"),
        "one\nless\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE NOT IN (SELECT WIDE FROM BANK_SUMS WHERE NAME = 'two')"),
              "one\ntri\nless\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE IN (SELECT MAX(WIDE) FROM BANK_SUMS)"), "tri\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_SUMS WHERE WIDE IN ((SELECT 1), 12345678901234567.89, 5 + 1)"), "two\n");
}

TEST_F(RecordComparisons, LongNumbersKeepJoinsFromReadingOverAndOver)
{
    const std::vector<FieldRow> fields = {{"NO", "ZONED-U", 6}, {"WIDE", "PACKED", 10, 2}};
    Make("MANY", fields, Numbered(20000, 1, "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x9C"));
    for (const std::string comparison : {"=", ">="})
        for (const std::string kind : {"JOIN", "LEFT JOIN"})
            EXPECT_EQ(Rows("SELECT COUNT(b.NO) FROM BANK_MANY a " + kind + " BANK_MANY b ON b.WIDE " + comparison +
                           " 12345678901234567.89 AND a.NO = b.NO"),
                      "20000\n")
                << comparison << kind;
}

TEST_F(RecordComparisons, LongNumbersKeepJoinsFromReadingNumbersOverAndOver)
{
    Make("MANY", {{"NO", "ZONED-U", 6}, {"WIDE", "PACKED", 10, 2}},
         Numbered(20000, 1, "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x9C"));
    Make("MORE", {{"NO", "ZONED-U", 6}, {"WIDE", "ZONED-U", 16}}, Numbered(20000, 1, "1234567890123456"));
    for (const std::string kind : {"JOIN", "LEFT JOIN"})
        EXPECT_EQ(Rows("SELECT COUNT(b.NO) FROM BANK_MANY a " + kind +
                       " BANK_MORE b ON b.WIDE = 1234567890123456 AND a.NO = b.NO"),
                  "20000\n")
            << kind;
}

TEST_F(RecordComparisons, LookingUpFindsWhatReadingFinds)
{
    Make("LEFTS", {{"NO", "ZONED-U", 2}, {"WORD", "STRING", 3}, {"RATE", "FLOAT-4", 4}, {"DAY", "DATE-YYYYMMDD", 8}},
         "01one\x00\x00\x80\x3F"s + "19990101" + "02two\x00\x00\x00\x40"s + "        " + "  two\x00\x00\x80\x3F"s +
             "19990101");
    Make("RIGHTS", {{"NO", "NUMERIC", 3}, {"WORD", "STRING-COUNTED", 6}, {"DAY", "DATE", 10}},
         "  1\x03\x00one."s + "1999-01-01" + "  2\x03\x00TWO."s + "1999-01-01" + "   \x03\x00two."s + "2000-01-01");
    const char* const conditions[] = {"a.NO = b.NO",
                                      "a.WORD = b.WORD",
                                      "a.RATE = b.NO",
                                      "a.DAY = b.DAY",
                                      "a.NO = b.RFA",
                                      "a.WORD = b.NO",
                                      "a.NO = b.WORD",
                                      "a.WORD = b.WORD COLLATE NOCASE",
                                      "a.NO IS b.NO",
                                      "a.DAY = b.WORD",
                                      "a.NO = b.NO + 0",
                                      "a.NO = b.NO OR a.WORD = b.WORD",
                                      "a.DAY = b.DAY AND a.NO = b.NO"};
    Run("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_TYPE, COLUMN_NAME, SQL_TYPE_NAME, "
        "PRECISION, FIELD_NAME, VISIBLE) VALUES ('BANK', 'RIGHTS', 1, 1, 'RFA', 'VARCHAR', 14, '', 1)");
    Run("CREATE TABLE L (NO BIGINT, WORD VARCHAR(3), RATE DOUBLE, [DAY] DATE)");
    Run("CREATE TABLE R (NO BIGINT, WORD CHAR(6), [DAY] DATE, RFA VARCHAR(14))");
    Run("INSERT INTO L SELECT NO, WORD, RATE, [DAY] FROM BANK_LEFTS");
    Run("INSERT INTO R SELECT NO, WORD, [DAY], RFA FROM BANK_RIGHTS");
    for (const std::string condition : conditions)
        for (const std::string kind : {" JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN "}) {
            const std::string columns = "SELECT a.NO, a.WORD, b.NO, b.WORD FROM ";
            const std::string order = " ON " + condition + " ORDER BY 1, 2, 3, 4";
            EXPECT_EQ(Rows(columns + "BANK_LEFTS a" + kind + "BANK_RIGHTS b" + order),
                      Rows(columns + "L a" + kind + "R b" + order))
                << kind << condition;
        }
}

TEST_F(RecordComparisons, PassingOverOtherTextsFindsWhatReadingFinds)
{
    Make("WORDS", {{"NO", "ZONED-U", 2}, {"WORD", "STRING", 4}}, "01one 02two 03    04TWO 05two 06\xFCnd ",
         "SEQUENTIAL", "FIXED", "LATIN-1");
    Run("CREATE TABLE W (NO BIGINT, WORD VARCHAR(4))");
    Run("INSERT INTO W SELECT NO, WORD FROM BANK_WORDS");
    for (const std::string condition :
         {"a.WORD = 'two'", "'two' = a.WORD", "a.WORD = 'two ' || ''", "a.WORD = 'TWO' COLLATE NOCASE",
          "a.WORD = 'ünd'", "a.WORD = ''", "a.WORD = NULL", "a.WORD = 2", "a.WORD = x'74776F'", "NOT a.WORD = 'two'",
          "a.WORD IS 'two'", "a.WORD = 'two' OR a.WORD = 'one'", "a.WORD = 'two' OR a.NO = 1",
          "a.WORD = 'two' AND a.WORD = 'one'", "a.WORD = 'two' AND a.NO > 2", "a.WORD IN ('two', 'one')",
          "(a.WORD, a.NO) = ('two', 5)", "a.WORD = 'none'"}) {
        EXPECT_EQ(Rows("SELECT NO FROM BANK_WORDS a WHERE " + condition), Rows("SELECT NO FROM W a WHERE " + condition))
            << condition;
        for (const std::string kind : {" JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN "}) {
            const std::string columns = "SELECT a.NO, b.NO FROM ";
            const std::string order = " ON " + condition + " ORDER BY 1, 2";
            EXPECT_EQ(Rows(columns + "W b" + kind + "BANK_WORDS a" + order),
                      Rows(columns + "W b" + kind + "W a" + order))
                << kind << condition;
        }
    }
}

TEST_F(RecordComparisons, PassingOverOtherTextsKeepsToCriteriaAndReportsBadFields)
{
    std::string content;
    for (int i = 0; i < 25000; ++i)
        content += i % 12000 == 11999 ? "yes 1" : "no  2";
    Make("MANY", {{"WORD", "STRING", 4}, {"NO", "ZONED-U", 1}}, content + "yes ?");
    EXPECT_EQ(Rows("SELECT rowid FROM BANK_MANY WHERE WORD = 'yes'"), "12000\n24000\n25001\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_MANY WHERE WORD = 'no'"), "24998\n");
    EXPECT_NE(Failure("SELECT NO FROM BANK_MANY WHERE WORD = 'yes'")
                  .find("The data file '" + DataFile("MANY.dat") +
                        "', record 25001, field NO: the bytes 3F cannot be read as ZONED-U: a character is no digit."),
              std::string::npos);
    DefineTable("FIRST", "MANY", "MANY.dat", "BANK_FIRST.WORD = 'yes' AND BANK_FIRST.[record number] < 20000");
    EXPECT_EQ(Rows("SELECT rowid FROM BANK_FIRST WHERE WORD = 'yes'"), "12000\n");
    EXPECT_EQ(Rows("SELECT rowid FROM BANK_FIRST WHERE WORD = 'no'"), "");
    Make("ODD", {{"WORD", "STRING", 3}}, "yesn\xFFoyes");
    EXPECT_NE(
        Failure("SELECT rowid FROM BANK_ODD WHERE WORD = 'yes'")
            .find("The data file '" + DataFile("ODD.dat") +
                  "', record 2, field WORD: the bytes 6E FF 6F cannot be read as STRING: they are no characters of "
                  "the file's code page."),
        std::string::npos);
}

TEST_F(RecordComparisons, OfARecordThatIsPassedOverNothingElseIsRead)
{
    Make("MIXED", {{"NO", "ZONED-U", 1}, {"WORD", "STRING", 3}}, "?no 1yes");
    EXPECT_EQ(Rows("SELECT NO FROM BANK_MIXED WHERE NO = 1 AND WORD = 'yes'"), "1\n");
}

TEST_F(RecordComparisons, ABadFieldDisturbsAJoinOnlyWhereItIsAskedFor)
{
    Make("KINDS", {{"KIND", "STRING", 1}, {"NO", "ZONED-U", 2}}, "A01B??A02");
    Make("ONES", {{"NO", "ZONED-U", 2}}, "010203");
    EXPECT_EQ(Rows("SELECT o.NO FROM BANK_ONES o JOIN BANK_KINDS k ON k.KIND = 'A' AND k.NO = o.NO"), "1\n2\n");
    EXPECT_NE(Failure("SELECT o.NO FROM BANK_ONES o JOIN BANK_KINDS k ON k.NO = o.NO")
                  .find("record 2, field NO: the bytes 3F 3F cannot be read as ZONED-U"),
              std::string::npos);
}

TEST_F(RecordComparisons, JoinsKeepToTheCriteria)
{
    const std::vector<FieldRow> fields = {{"NO", "ZONED-U", 1}};
    Make("ALL", fields, "123456789");
    DefineTable("ODD", "ALL", "ALL.dat", "BANK_ODD.NO % 2 = 1");
    EXPECT_EQ(Rows("SELECT a.NO, o.rowid FROM BANK_ALL a JOIN BANK_ODD o ON o.NO = a.NO"), "1|1\n3|3\n5|5\n7|7\n9|9\n");
}
