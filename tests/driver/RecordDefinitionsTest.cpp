// What the catalog's rows make of a table: its name, its columns, and the reasons why it cannot be read.

#include "RecordsFixture.h"

namespace
{

using namespace std::string_literals;

const std::vector<FieldRow> account = {{"NO", "ZONED-U", 4}, {"NAME", "STRING", 6}, {"BALANCE", "PACKED", 3, 2}};

const std::string accounts = "0001Harry \x12\x34\x5C"
                             "0002Ivy   \x00\x75\x0D"s;

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class RecordDefinitions : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        Make("ACCOUNT", account, accounts);
    }

    /// A column of the rows of SQLTables or SQLColumns for a pattern of table names.
    template <typename Function>
    std::string Listed(Function function, const std::string& pattern, std::size_t column)
    {
        std::vector<SQLWCHAR> wide = Wide(pattern);
        const Result result = client.Read([&](SQLHSTMT statement) {
            return function(statement, nullptr, 0, nullptr, 0, wide.data(), SQL_NTS, nullptr, 0);
        });
        EXPECT_TRUE(result.Succeeded()) << result.diagnostic.message;
        std::string text;
        for (const Row& row : result.rows)
            text += row[column].value_or("~") + "\n";
        return text;
    }
};

} // namespace

TEST_F(RecordDefinitions, DisplayNamesChangeTheCaseOfATable)
{
    Run("UPDATE TW_DB SET DISPLAY_NAME = 'Bank' WHERE DATABASE_NAME = 'BANK'");
    Run("UPDATE TW_TABLE SET DISPLAY_NAME = 'Account' WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(Listed(SQLTablesW, "BANK\\_%", 2), "Bank_Account\n");
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_ACCOUNT", 2), "Bank_Account\nBank_Account\nBank_Account\n");
    EXPECT_EQ(Rows("SELECT NAME FROM bank_account WHERE [BANK_ACCOUNT].NO = 1"), "Harry\n");
    Run("UPDATE TW_TABLE SET DISPLAY_NAME = 'Konto', CRITERIA = 'BANK_ACCOUNT.NO = 2' WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(Listed(SQLTablesW, "BANK\\_%", 2), "Bank_ACCOUNT\n") << "another name is no display name";
    EXPECT_EQ(Rows("SELECT NAME FROM Bank_Account"), "Ivy\n");
    EXPECT_EQ(Listed(SQLTablesW, "all%", 2), "");
}

TEST_F(RecordDefinitions, RemarksOfColumnsAreListed)
{
    Run("UPDATE TW_COLUMN SET REMARKS = 'Whose it is' WHERE COLUMN_NAME = 'NAME'");
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_ACCOUNT", 11), "\nWhose it is\n\n");
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_ACCOUNT", 10), "1\n1\n1\n") << "any field may read as null";
}

TEST_F(RecordDefinitions, ATableIsThereHoweverAStatementNamesIt)
{
    for (const char* statement :
         {"SELECT COUNT(*) FROM 'BANK_ACCOUNT'", "SELECT COUNT(*) FROM main.BANK_ACCOUNT",
          "SELECT 2 WHERE (1, 'Harry', 123.45) IN BANK_ACCOUNT", "SELECT COUNT(*) FROM (BANK_ACCOUNT)",
          "SELECT COUNT(*) FROM (VALUES (1)) x, `BANK_ACCOUNT` y",
          "SELECT COUNT(*) FROM {oj BANK_ACCOUNT a LEFT OUTER JOIN TW_DB d ON d.DATABASE_NAME = a.NAME}"}) {
        OdbcClient fresh;
        Connect(fresh);
        EXPECT_EQ(Rows(fresh, statement), "2\n") << statement;
    }
}

TEST_F(RecordDefinitions, AViewMayReadThem)
{
    Run("CREATE VIEW RICH AS SELECT NAME FROM BANK_ACCOUNT WHERE BALANCE > 100");
    Run("CREATE VIEW RICHER AS SELECT * FROM RICH");
    OdbcClient fresh;
    Connect(fresh);
    EXPECT_EQ(Rows(fresh, "SELECT * FROM RICHER"), "Harry\n");
    OdbcClient another;
    Connect(another);
    DefineTable("AGAIN", "ACCOUNT", "ACCOUNT.dat");
    Run(another, "CREATE TEMP VIEW POOR AS SELECT NAME FROM BANK_AGAIN WHERE BALANCE < 0");
    EXPECT_EQ(Rows(another, "SELECT * FROM poor"), "Ivy\n");
}

TEST_F(RecordDefinitions, ADirectoryLeadsWhereTheSystemFollowsIt)
{
    std::filesystem::create_directory(DataFile("inner"));
    std::filesystem::create_directory_symlink(DataFile("inner"), setup.File("link"));
    Run("UPDATE TW_DB SET DEFAULT_DIRECTORY = 'link/..' WHERE DATABASE_NAME = 'BANK'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT"), "Harry\nIvy\n");
    Run("UPDATE TW_TABLE SET FILE_SPECIFICATION = '" + DataFile("ACCOUNT.dat") + "' WHERE TABLE_NAME = 'ACCOUNT'");
    for (const char* directory : {"nowhere", "NOKEY:"}) {
        Run(std::string("UPDATE TW_DB SET DEFAULT_DIRECTORY = '") + directory + "' WHERE DATABASE_NAME = 'BANK'");
        EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT"), "Harry\nIvy\n") << "a whole path needs no directory";
    }
}

TEST_F(RecordDefinitions, WhatCannotBeDescribedIsLeftOutOfTheColumnsAlone)
{
    Run("CREATE VIEW BANK_RICH AS SELECT NAME, BALANCE FROM BANK_ACCOUNT WHERE BALANCE > 100");
    Run("CREATE VIEW BANK_LOST AS SELECT * FROM GONE");
    DefineTable("TWICE", "ACCOUNT", "ACCOUNT.dat");
    Run("UPDATE TW_COLUMN SET COLUMN_NAME = 'no' WHERE TABLE_NAME = 'TWICE' AND COLUMN_NAME = 'NAME'");
    client.Disconnect();
    Connect(client);
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_%", 3), "NO\nNAME\nBALANCE\nNAME\nBALANCE\n");
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_LOST", 3), "");
    EXPECT_NE(Listed(SQLColumnsW, "TW\\_DRIVER", 2), "");
    EXPECT_EQ(Listed(SQLTablesW, "BANK\\_%", 2), "BANK_ACCOUNT\nBANK_TWICE\nBANK_LOST\nBANK_RICH\n");
}

TEST_F(RecordDefinitions, OfTwoTablesOfOneJoinedNameTheFirstIsThere)
{
    const std::pair<std::string, std::string> tables[] = {{"A_B", "C"}, {"A", "B_C"}};
    for (const auto& [database, table] : tables) {
        const std::string both = "'" + database + "', '" + table + "', ";
        Run("INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY) VALUES ('" + database + "', 'data')");
        Run("INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION) VALUES (" + both +
            "'ACCOUNT', 'ACCOUNT.dat')");
        Run("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
            "PRECISION, VISIBLE) VALUES (" +
            both + "1, 'OF_" + database + "', 'NAME', 'VARCHAR', 6, 1)");
    }
    EXPECT_EQ(Listed(SQLTablesW, "A\\_%", 2), "A_B_C\n");
    EXPECT_EQ(Listed(SQLColumnsW, "A\\_%", 3), "OF_A\n");
    EXPECT_EQ(Rows("SELECT OF_A FROM A_B_C"), "Harry\nIvy\n");
}

TEST_F(RecordDefinitions, NamesMayBeginLikeThoseOfTheEngine)
{
    for (const char* database : {"TW_OLD", "SQLITE", "PRAGMA"}) {
        Run(std::string("UPDATE TW_DB SET DATABASE_NAME = '") + database + "' WHERE DATABASE_NAME <> 'TW'");
        for (const char* table : {"TW_TABLE", "TW_COLUMN"})
            Run(std::string("UPDATE ") + table + " SET DATABASE_NAME = '" + database + "' WHERE DATABASE_NAME <> 'TW'");
        EXPECT_EQ(Rows(std::string("SELECT COUNT(*) FROM ") + database + "_ACCOUNT"), "2\n") << database;
    }
    EXPECT_EQ(Rows("SELECT COUNT(*) > 10 FROM sqlite_master"), "1\n");
    EXPECT_EQ(Rows("SELECT name FROM pragma_table_info('TW_KEY') LIMIT 0"), "");
}

TEST_F(RecordDefinitions, AChangedStorageTypeCountsAtOnce)
{
    EXPECT_EQ(Rows("SELECT BALANCE FROM BANK_ACCOUNT WHERE NO = 1"), "123.45\n");
    Run("UPDATE TW_LOCDT SET ATTRIBUTES = replace(ATTRIBUTES, 'SIGN', 'FULL') WHERE LOCAL_TYPE_NAME = 'PACKED'");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"), "a half byte is no digit"));
}

TEST_F(RecordDefinitions, AFieldMustEndInsideAFixedRecord)
{
    Run("UPDATE TW_FIELD SET LENGTH = 4 WHERE FIELD_NAME = 'BALANCE'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT"), "Harry\nIvy\n");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"),
                      "The column BALANCE of the table BANK_ACCOUNT cannot be read: its field BALANCE ends behind the "
                      "record's 13 bytes."));
    Run("UPDATE TW_FIELD SET LENGTH = 3, OFFSET = 13 WHERE FIELD_NAME = 'BALANCE'");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"), "ends behind the record's 13 bytes"));
}

TEST_F(RecordDefinitions, ARecordMustHaveASizeThatCanBe)
{
    for (const char* size : {"65536", "-1", "4294967309"}) {
        Run(std::string("UPDATE TW_FILE SET RECORD_SIZE = ") + size + " WHERE FILE_NAME = 'ACCOUNT'");
        EXPECT_TRUE(
            Holds(Failure("SELECT NAME FROM BANK_ACCOUNT"),
                  std::string("The table BANK_ACCOUNT cannot be read: its file definition has the record size ") +
                      size + "."))
            << size;
    }
    WriteData("ACCOUNT.dat", accounts + std::string(65535 - accounts.size(), 'x') + accounts +
                                 std::string(65535 - accounts.size(), 'x'));
    Run("UPDATE TW_FILE SET RECORD_SIZE = 65535 WHERE FILE_NAME = 'ACCOUNT'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT"), "Harry\nHarry\n");
}

TEST_F(RecordDefinitions, WhatAColumnIsSaidToHoldIsWhatAFieldCanHold)
{
    Make("WIDE", {{"WORDS", "STRING", 30000}, {"SUM", "STRING", 30000}},
         std::string(30000, 'w') + "7" + std::string(29999, ' '));
    Run("UPDATE TW_COLUMN SET PRECISION = 2000000000 WHERE COLUMN_NAME = 'WORDS'");
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'DECIMAL' WHERE COLUMN_NAME = 'SUM'");
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_WIDE", 6), "65535\n38\n");
    const Result result = client.Execute("SELECT * FROM BANK_WIDE");
    ASSERT_EQ(result.columns.size(), 2u) << result.diagnostic.message;
    EXPECT_EQ(result.columns[0].size, 65535u);
    EXPECT_EQ(result.columns[1].type, SQL_DECIMAL);
    EXPECT_EQ(result.columns[1].size, 38u);
    EXPECT_EQ(Rows("SELECT length(WORDS), SUM FROM BANK_WIDE"), "30000|7\n");
}

TEST_F(RecordDefinitions, ATextOrBytesAreSaidToBeAsLongAsTheirFieldCanMakeThem)
{
    Make(
        "LONG",
        {{"MAINFRAME", "STRING-EBCDIC", 300},
         {"HEX", "HEXADECIMAL", 200},
         {"WIDE", "STRING-UTF16", 600},
         {"COUNTED", "STRING-COUNTED", 302},
         {"RAW", "BINARY-STRING", 300},
         {"SUM", "PACKED", 4, 2},
         {"SOME", "STRING", 10}},
        std::string(300, '\xC1') + std::string(200, '\x5A') +
            [] {
                std::string wide;
                for (int i = 0; i < 300; ++i)
                    wide += "w\0"s;
                return wide;
            }() +
            "\x2C\x01"s + std::string(300, 'c') + std::string(300, '\x07') + "\x12\x34\x56\x7D" + "some      ");
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'CHAR', LENGTH = 254, PRECISION = 254 WHERE TABLE_NAME = 'LONG' AND "
        "FIELD_NAME <> 'RAW'");
    Run("UPDATE TW_COLUMN SET PRECISION = 2 WHERE TABLE_NAME = 'LONG' AND FIELD_NAME IN ('RAW', 'SUM')");
    const char* const sizes[] = {"300", "400", "300", "300", "300", "9", "254"};
    const Result result = client.Execute("SELECT * FROM BANK_LONG");
    ASSERT_EQ(result.columns.size(), std::size(sizes)) << result.diagnostic.message;
    std::string listed;
    for (std::size_t i = 0; i < std::size(sizes); ++i) {
        EXPECT_EQ(std::to_string(result.columns[i].size), sizes[i]) << result.columns[i].name;
        EXPECT_EQ(result.columns[i].type, result.columns[i].name == "RAW" ? SQL_BINARY : SQL_VARCHAR);
        listed += std::string(sizes[i]) + "\n";
    }
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_LONG", 6), listed);
    EXPECT_EQ(Rows("SELECT length(MAINFRAME), length(HEX), length(WIDE), length(COUNTED), length(RAW), SUM, SOME FROM "
                   "BANK_LONG"),
              "300|400|300|300|300|-12345.67|some\n");
    EXPECT_EQ(Listed(SQLColumnsW, "BANK\\_LONG", 7), "1200\n1600\n1200\n1200\n300\n36\n1016\n") << "bytes";
}

TEST_F(RecordDefinitions, AZeroByteInsideATextIsRefused)
{
    Make("ZEROS", {{"NO", "ZONED-U", 1}, {"A", "STRING", 5}}, "1a\0b  2ab\0 \0"s);
    EXPECT_TRUE(Holds(Failure("SELECT A FROM BANK_ZEROS"),
                      "record 1, field A: the bytes 61 00 62 20 20 cannot be read "
                      "as STRING: a zero byte stands inside the text, where a STRING-ZERO "
                      "would end."));
    OdbcClient lenient;
    Connect(lenient, "BadFields=Null");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_ZEROS"), "1|~\n2|ab\n");
    EXPECT_EQ(Rows(lenient, "SELECT NO FROM BANK_ZEROS WHERE A = 'ab'"), "2\n");
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'BINARY' WHERE TABLE_NAME = 'ZEROS' AND FIELD_NAME = 'A'");
    EXPECT_EQ(Rows("SELECT hex(A) FROM BANK_ZEROS"), "6100622020\n6162002000\n");
}

TEST_F(RecordDefinitions, AFieldMustHaveAPlaceAndAScaleThatCanBe)
{
    Run("UPDATE TW_FIELD SET LENGTH = 0 WHERE FIELD_NAME = 'BALANCE'");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"),
                      "its field BALANCE has no place in the record: offset 10, length 0."));
    Run("UPDATE TW_FIELD SET LENGTH = 3, OFFSET = -1 WHERE FIELD_NAME = 'BALANCE'");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"), "no place in the record: offset -1, length 3."));
    Run("UPDATE TW_FIELD SET OFFSET = 10, SCALE = 38 WHERE FIELD_NAME = 'BALANCE'");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"), "its field BALANCE has the scale 38."));
    EXPECT_EQ(Rows("SELECT NO FROM BANK_ACCOUNT"), "1\n2\n");
}

TEST_F(RecordDefinitions, AColumnThatNoBytesCanFillIsToldWhateverBadFieldsSays)
{
    OdbcClient lenient;
    Connect(lenient, "BadFields=Null");
    const char* const changes[][2] = {
        {"UPDATE TW_FIELD SET ENCRYPTED = 1 WHERE FIELD_NAME = 'BALANCE'", "the field is encrypted"},
        {"UPDATE TW_FIELD SET ENCRYPTED = 0 WHERE FIELD_NAME = 'BALANCE'", ""},
        {"UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'DATE' WHERE FIELD_NAME = 'BALANCE'", "the field has no format"},
        {"UPDATE TW_FIELD SET FORMAT = 'MMDD' WHERE FIELD_NAME = 'BALANCE'", "the field's format has no year"},
        {"UPDATE TW_LOCDT SET ATTRIBUTES = 'FLOAT' WHERE LOCAL_TYPE_NAME = 'PACKED'", "the storage type is not known"}};
    for (const auto& change : changes) {
        Run(change[0]);
        if (*change[1] == '\0')
            EXPECT_EQ(Rows(lenient, "SELECT BALANCE FROM BANK_ACCOUNT"), "123.45\n-7.5\n");
        else
            for (OdbcClient* on : {&client, &lenient})
                EXPECT_TRUE(
                    Holds(Failure(*on, "SELECT BALANCE FROM BANK_ACCOUNT"),
                          std::string("The column BALANCE of the table BANK_ACCOUNT cannot be read: ") + change[1]))
                    << change[0];
        EXPECT_EQ(Rows(lenient, "SELECT NAME FROM BANK_ACCOUNT"), "Harry\nIvy\n");
    }
}

TEST_F(RecordDefinitions, ASignInAPlaceOfItsOwnMakesNoColumnWider)
{
    Make("SIGNS", {{"PRICE", "ZONED-S", 16, 2}, {"COUNT", "ZONED-LS", 19}, {"WIDE", "ZONED-S", 20}},
         "000000000012345+-000000000000000007"
         "1234567890123456789-");
    const Result result = client.Execute("SELECT * FROM BANK_SIGNS");
    ASSERT_EQ(result.columns.size(), 3u) << result.diagnostic.message;
    EXPECT_EQ(result.columns[0].type, SQL_DOUBLE);
    EXPECT_EQ(result.columns[1].type, SQL_BIGINT);
    EXPECT_EQ(result.columns[2].type, SQL_DECIMAL);
    EXPECT_EQ(result.columns[2].size, 19u);
    EXPECT_EQ(Rows("SELECT * FROM BANK_SIGNS"), "123.45|-7|-1234567890123456789\n");
}

TEST_F(RecordDefinitions, TwoColumnsOfOneNameMakeNoTable)
{
    Run("UPDATE TW_COLUMN SET COLUMN_NAME = 'no' WHERE COLUMN_NAME = 'NAME'");
    EXPECT_TRUE(Holds(Failure("SELECT 1 FROM BANK_ACCOUNT"),
                      "The columns of the table BANK_ACCOUNT make no table: duplicate column name: no"));
}

TEST_F(RecordDefinitions, CriteriaThatNameOneAnotherEndInAnError)
{
    DefineTable("A", "ACCOUNT", "ACCOUNT.dat", "BANK_A.NO IN (SELECT NO FROM BANK_B) OR EXISTS (SELECT 1 FROM BANK_C)");
    DefineTable("B", "ACCOUNT", "ACCOUNT.dat", "BANK_B.NO IN (SELECT NO FROM BANK_C) OR EXISTS (SELECT 1 FROM BANK_A)");
    DefineTable("C", "ACCOUNT", "ACCOUNT.dat", "BANK_C.NO IN (SELECT NO FROM BANK_A) OR EXISTS (SELECT 1 FROM BANK_B)");
    for (const char* table : {"BANK_A", "BANK_B", "BANK_C"})
        EXPECT_TRUE(Holds(Failure(std::string("SELECT * FROM ") + table), "asks for the table itself")) << table;
    Run("UPDATE TW_TABLE SET CRITERIA = 'BANK_C.NO = 1' WHERE TABLE_NAME = 'C'");
    Run("UPDATE TW_TABLE SET CRITERIA = 'BANK_B.NO IN BANK_X' WHERE TABLE_NAME = 'B'");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_A"), "no such table: BANK_X"));
}

TEST_F(RecordDefinitions, ACriteriaThatIsTakenAwayShowsAllRecordsAgain)
{
    Run("UPDATE TW_TABLE SET CRITERIA = 'BANK_ACCOUNT.NO = 2' WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT"), "Ivy\n");
    Run("UPDATE TW_TABLE SET CRITERIA = ' ' WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT"), "Harry\nIvy\n");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM [all records of BANK_ACCOUNT]"), "no such table"));
}

TEST_F(RecordDefinitions, ANumberThatItsIntegerTypeCannotHoldIsRefused)
{
    Make("COUNTS", {{"N", "NUMERIC", 11}}, "        127        128     -32769      65536 4294967296");
    const char* const limits[][3] = {{"TINYINT", "0", "record 2"},
                                     {"TINYINT", "1", "record 3"},
                                     {"SMALLINT", "0", "record 3"},
                                     {"SMALLINT", "1", "record 3"},
                                     {"INTEGER", "0", "record 5"}};
    for (const auto& limit : limits) {
        Run(std::string("UPDATE TW_COLUMN SET SQL_TYPE_NAME = '") + limit[0] + "', UNSIGNED_ATTRIBUTE = " + limit[1] +
            " WHERE TABLE_NAME = 'COUNTS'");
        const std::string message = Failure("SELECT N FROM BANK_COUNTS");
        EXPECT_TRUE(Holds(message, limit[2]) && Holds(message, "the number is too large for its column")) << message;
    }
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'BIGINT' WHERE TABLE_NAME = 'COUNTS'");
    EXPECT_EQ(Rows("SELECT SUM(N) FROM BANK_COUNTS"), "4295000318\n");
}

TEST_F(RecordDefinitions, TextsAndBytesComeInEveryFormOverOdbc)
{
    Make("FORMS",
         {{"RAW", "BINARY-STRING", 2},
          {"HEX", "HEXADECIMAL", 2},
          {"YES", "BOOLEAN", 1},
          {"WIDE", "STRING-UTF16", 4},
          {"COUNTED", "STRING-COUNTED", 5},
          {"ENDED", "STRING-ZERO", 4}},
         "\x01\xFE\x0A\xFF\x01\xFC\x00 \x00\x02\x00xyzab\x00 "
         "\x00\x00\x00\x00\x00\x3D\xD8\x00\xDE\x00\x00...abcd"s);
    const Result result = client.Execute("SELECT * FROM BANK_FORMS");
    ASSERT_EQ(result.columns.size(), 6u) << result.diagnostic.message;
    const SQLSMALLINT types[] = {SQL_BINARY, SQL_VARCHAR, SQL_BIT, SQL_VARCHAR, SQL_VARCHAR, SQL_VARCHAR};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(result.columns[i].type, types[i]) << result.columns[i].name;
    EXPECT_EQ(Rows("SELECT hex(RAW), HEX, YES, WIDE, COUNTED, ENDED FROM BANK_FORMS"),
              "01FE|0AFF|1|ü|xy|ab\n0000|0000|0|\U0001F600||abcd\n");
}

TEST_F(RecordDefinitions, ACountedTextMayEndItsLine)
{
    Make("LINES", {{"KIND", "STRING", 1}, {"WORDS", "STRING-COUNTED", 12}},
         "A\x03\x00"s + "abc\n" + "B\x05\x00"s + "ab\n", "SEQUENTIAL", "VARIABLE");
    EXPECT_EQ(Rows("SELECT WORDS FROM BANK_LINES LIMIT 1"), "abc\n");
    EXPECT_TRUE(Holds(Failure("SELECT WORDS FROM BANK_LINES"), "the count is beyond the field's end"));
}
