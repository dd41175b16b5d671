#include "RecordTables.h"
#include "Command.h"
#include "RecordsFixture.h"

#include <sqlite3.h>

#include <memory>
#include <thread>

namespace
{

using namespace std::string_literals;

const std::vector<FieldRow> account = {{"NO", "ZONED-U", 4}, {"NAME", "STRING", 6}, {"BALANCE", "PACKED", 3, 2}};

/// Three accounts: one in credit, one in debit, one of nobody.
const std::string accounts = "0001Harry \x12\x34\x5C"
                             "0002Ivy   \x00\x75\x0D"
                             "0003      \x00\x00\x0C"s;

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(Records, ATableIsThereAsSoonAsItIsDefined)
{
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_ACCOUNT"), "no such table: BANK_ACCOUNT"));
    Make("ACCOUNT", account, accounts);
    EXPECT_EQ(Rows("SELECT * FROM [BANK_ACCOUNT]"), "1|Harry|123.45\n2|Ivy|-7.5\n3||0.0\n");
    OdbcClient another;
    Connect(another);
    EXPECT_EQ(Rows(another, "SELECT name FROM bank_account WHERE balance < 0"), "Ivy\n");
}

TEST_F(Records, TheWholeSelectLanguageWorks)
{
    Make("ACCOUNT", account, accounts);
    Make("OWNER", {{"NAME", "STRING", 6}, {"TOWN", "STRING", 5}}, "Harry York Ivy   Leeds");
    EXPECT_EQ(Rows("SELECT COUNT(*), SUM(BALANCE), MIN(NAME), MAX(NAME) FROM BANK_ACCOUNT"), "3|115.95||Ivy\n");
    EXPECT_EQ(Rows("SELECT a.NO, o.TOWN FROM BANK_ACCOUNT a LEFT JOIN BANK_OWNER o ON o.NAME = a.NAME ORDER BY 1 DESC"),
              "3|~\n2|Leeds\n1|York\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT WHERE NO IN (SELECT NO - 1 FROM BANK_ACCOUNT) AND NAME LIKE 'h%'"),
              "Harry\n");
    EXPECT_EQ(Rows("SELECT (SELECT MAX(TOWN) FROM BANK_OWNER o WHERE o.NAME = a.NAME) FROM BANK_ACCOUNT a"),
              "York\nLeeds\n~\n");
    EXPECT_EQ(Rows("SELECT x.NO FROM BANK_OWNER o, BANK_ACCOUNT x WHERE x.NAME = o.NAME GROUP BY x.NO HAVING x.NO > 1"),
              "2\n");
}

TEST_F(Records, ADefaultDatabaseNamesItsTablesAlone)
{
    Make("ACCOUNT", account, accounts);
    Run("INSERT INTO TW_DB (DATABASE_NAME) VALUES ('OTHER')");
    Run("INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION) VALUES "
        "('OTHER', 'THING', 'ACCOUNT', 'ACCOUNT.dat')");
    OdbcClient bound;
    Connect(bound, "DefaultDatabase=BANK");
    EXPECT_EQ(Rows(bound, "SELECT NO FROM [ACCOUNT] WHERE [BALANCE] > 5"), "1\n");
    EXPECT_TRUE(Holds(Failure(bound, "SELECT * FROM BANK_ACCOUNT"), "no such table"));
    EXPECT_TRUE(Holds(Failure(bound, "SELECT * FROM THING"), "no such table"));
    EXPECT_EQ(Rows(bound, "SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'OTHER'"), "THING\n");
}

TEST_F(Records, CriteriaFilter)
{
    Make("ACCOUNT", account, accounts);
    DefineTable("DEBIT", "ACCOUNT", "ACCOUNT.dat", "BANK_DEBIT.BALANCE < 0 ");
    DefineTable("NAMED", "ACCOUNT", "ACCOUNT.dat",
                "BANK_NAMED.NAME <> '' AND BANK_NAMED.NO IN (SELECT NO FROM "
                "BANK_DEBIT)");
    EXPECT_EQ(Rows("SELECT * FROM BANK_DEBIT"), "2|Ivy|-7.5\n");
    EXPECT_EQ(Rows("SELECT rowid, NAME FROM BANK_NAMED"), "2|Ivy\n");
    EXPECT_EQ(
        Rows("SELECT d.NO, a.NO FROM BANK_DEBIT d, BANK_ACCOUNT a, BANK_DEBIT e WHERE a.NO > d.NO AND e.NO = d.NO"),
        "2|3\n");
    OdbcClient bound;
    Connect(bound, "DefaultDatabase=BANK");
    EXPECT_EQ(Rows(bound, "SELECT NAME FROM DEBIT"), "Ivy\n");
    EXPECT_EQ(Rows(bound, "SELECT NAME FROM [NAMED]"), "Ivy\n");
}

TEST_F(Records, CriteriaKnowTablesByTheirJoinedNamesWhateverClientsCallThem)
{
    Make("ACCOUNT", account, accounts);
    DefineTable("DEBIT", "ACCOUNT", "ACCOUNT.dat", "BANK_DEBIT.BALANCE < 0 ");
    DefineTable("CHOSEN", "ACCOUNT", "ACCOUNT.dat", "BANK_CHOSEN.NO IN (SELECT NO FROM BANK_DEBIT)");
    DefineTable("SELF", "ACCOUNT", "ACCOUNT.dat", "NO IN (SELECT NO FROM BANK_SELF)");
    OdbcClient bound;
    Connect(bound, "DefaultDatabase=BANK");
    EXPECT_EQ(Rows(bound, "SELECT NAME FROM CHOSEN"), "Ivy\n");
    EXPECT_TRUE(Holds(Failure(bound, "SELECT NAME FROM BANK_DEBIT"), "no such table: BANK_DEBIT"));
    EXPECT_EQ(Rows(bound, "SELECT NAME FROM CHOSEN"), "Ivy\n");
    EXPECT_TRUE(Holds(Failure(bound, "SELECT NAME FROM SELF"), "asks for the table itself"));
    Run("UPDATE TW_TABLE SET CRITERIA = 'BALANCE > 0' WHERE TABLE_NAME = 'DEBIT'");
    EXPECT_EQ(Rows(bound, "SELECT NAME FROM CHOSEN"), "Harry\n");
    Run("DELETE FROM TW_TABLE WHERE TABLE_NAME = 'DEBIT'");
    EXPECT_TRUE(Holds(Failure(bound, "SELECT NAME FROM CHOSEN"), "no such table: BANK_DEBIT"));
}

TEST_F(Records, CriteriaMayAskForWhatClientsDoNotSee)
{
    Make("ACCOUNT", account, accounts);
    DefineTable("DEBIT", "ACCOUNT", "ACCOUNT.dat", "BANK_DEBIT.BALANCE < 0");
    Run("UPDATE TW_COLUMN SET VISIBLE = 0 WHERE TABLE_NAME = 'DEBIT' AND COLUMN_NAME = 'BALANCE'");
    EXPECT_EQ(Rows("SELECT * FROM BANK_DEBIT"), "2|Ivy\n");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_DEBIT"), "no such column: BALANCE"));
}

TEST_F(Records, NamesMayHoldHyphensAndQuotes)
{
    Make("CHEQUE-BOOK", account, accounts);
    EXPECT_EQ(Rows("SELECT NAME FROM [BANK_CHEQUE-BOOK] WHERE NO = 2"), "Ivy\n");
    DefineTable("ODD\"NAME", "CHEQUE-BOOK", "CHEQUE-BOOK.dat", "NO = 1 AND NAME < #1/1/2000# OR NAME = 'Harry'");
    EXPECT_EQ(Rows("SELECT NAME FROM \"BANK_ODD\"\"NAME\""), "Harry\n");
}

TEST_F(Records, BadCriteriaAreTheTablesError)
{
    Make("ACCOUNT", account, accounts);
    DefineTable("WRONG", "ACCOUNT", "ACCOUNT.dat", "BANK_WRONG.LOST = 1");
    DefineTable("SELF", "ACCOUNT", "ACCOUNT.dat", "NO IN (SELECT NO FROM BANK_SELF)");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_WRONG"),
                      "The criteria of the table BANK_WRONG cannot be applied: no such column: BANK_WRONG.LOST"));
    EXPECT_TRUE(Holds(Failure("SELECT * FROM BANK_SELF"), "asks for the table itself"));
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_ACCOUNT"), "3\n");
}

TEST_F(Records, ABadFieldNamesFileRecordFieldAndBytes)
{
    std::string broken = accounts;
    broken[13 + 11] = '\xA5';
    Make("ACCOUNT", account, broken);
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"),
                      "The data file '" + DataFile("ACCOUNT.dat") +
                          "', record 2, field BALANCE: the bytes 00 A5 0D cannot be read as PACKED: a half byte is no "
                          "digit."));
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT"), "Harry\nIvy\n\n") << "only the fields that are named are decoded";
    OdbcClient lenient;
    Connect(lenient, "BadFields=Null");
    EXPECT_EQ(Rows(lenient, "SELECT BALANCE FROM BANK_ACCOUNT"), "123.45\n~\n0.0\n");
}

TEST_F(Records, TroubleWithTheFileIsTold)
{
    Make("ACCOUNT", account, accounts + "0004Ja");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_ACCOUNT"),
                      "', record 4: the file ends inside the record: 6 bytes of 13 are there."));
    OdbcClient lenient;
    Connect(lenient, "BadFields=Null");
    EXPECT_EQ(Rows(lenient, "SELECT * FROM BANK_ACCOUNT WHERE NO > 3"), "4|Ja|~\n");
    std::filesystem::remove(DataFile("ACCOUNT.dat"));
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_ACCOUNT"),
                      "The data file '" + DataFile("ACCOUNT.dat") + "' does not exist."));
    std::filesystem::create_directory(DataFile("ACCOUNT.dat"));
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_ACCOUNT"), "a folder"));
    std::filesystem::remove(DataFile("ACCOUNT.dat"));
    WriteData("ACCOUNT.dat", "");
    EXPECT_EQ(Rows("SELECT NO FROM BANK_ACCOUNT"), "");
}

TEST_F(Records, TroubleWithTheDefinitionIsTold)
{
    Make("ACCOUNT", account, accounts);
    Run("UPDATE TW_FIELD SET LOCAL_TYPE_NAME = 'NONSENSE' WHERE FIELD_NAME = 'BALANCE'");
    EXPECT_EQ(Rows("SELECT NO FROM BANK_ACCOUNT LIMIT 1"), "1\n");
    EXPECT_TRUE(Holds(Failure("SELECT BALANCE FROM BANK_ACCOUNT"), "the storage type 'NONSENSE'"));
    Run("DELETE FROM TW_FIELD WHERE FIELD_NAME = 'NAME'");
    EXPECT_TRUE(Holds(Failure("SELECT NAME FROM BANK_ACCOUNT"), "its field 'NAME' is not in the file's definition"));
    Run("UPDATE TW_FILE SET OPEN_STRING = 'EBDCIC' WHERE FILE_NAME = 'ACCOUNT'");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_ACCOUNT"), "The table BANK_ACCOUNT cannot be read: the open string "
                                                              "has the word 'EBDCIC'"));
    Run("DELETE FROM TW_FILE WHERE FILE_NAME = 'ACCOUNT'");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_ACCOUNT"), "its file definition 'ACCOUNT' does not exist"));
}

TEST_F(Records, ALogicalDirectoryIsAKeyOfTheDatasource)
{
    Make("ACCOUNT", account, accounts);
    Run("UPDATE TW_DB SET DEFAULT_DIRECTORY = 'LEDGER_DATA:' WHERE DATABASE_NAME = 'BANK'");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_ACCOUNT"),
                      "the data source has no key LEDGER_DATA for the directory 'LEDGER_DATA:'"));
    OdbcClient knowing;
    Connect(knowing, "Ledger_Data=" + setup.File("data"));
    EXPECT_EQ(Rows(knowing, "SELECT COUNT(*) FROM BANK_ACCOUNT"), "3\n");
    OdbcClient named;
    ASSERT_TRUE(named.Connect(
        "DSN=" + setup.AddDataSource({"Catalog = " + setup.File("c.cat"), "LEDGER_DATA = " + setup.File("data")})));
    EXPECT_EQ(Rows(named, "SELECT COUNT(*) FROM BANK_ACCOUNT"), "3\n");
    Run("UPDATE TW_DB SET DEFAULT_DIRECTORY = 'data' WHERE DATABASE_NAME = 'BANK'");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_ACCOUNT"), "3\n") << "relative to the catalog's folder";
}

TEST_F(Records, AFileThatGrowsIsReadToItsEnd)
{
    Make("ACCOUNT", account, accounts);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_ACCOUNT"), "3\n");
    WriteData("ACCOUNT.dat", accounts + accounts);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_ACCOUNT"), "6\n");
    WriteData("ACCOUNT.dat", accounts.substr(0, 13));
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_ACCOUNT"), "1\n");
}

TEST_F(Records, RecordsAreNeverWritten)
{
    Make("ACCOUNT", account, accounts);
    for (const char* statement :
         {"DELETE FROM BANK_ACCOUNT", "UPDATE BANK_ACCOUNT SET NO = 1", "INSERT INTO BANK_ACCOUNT (NO) VALUES (1)"})
        EXPECT_TRUE(Holds(Failure(statement), "may not be modified")) << statement;
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_ACCOUNT"), "3\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM sqlite_master WHERE name LIKE 'BANK%'"), "0\n");
}

TEST_F(Records, SpecialColumnsTellTheTruthOfAPlainFile)
{
    Make("ACCOUNT", account, accounts);
    const char* const rows[] = {"1, 'RFA', 'VARCHAR', 14", "2, 'INDEX_NUMBER', 'SMALLINT', 5",
                                "6, 'ROWID', 'INTEGER', 10"};
    for (const char* row : rows)
        Run("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_TYPE, COLUMN_NAME, SQL_TYPE_NAME, "
            "PRECISION, FIELD_NAME, VISIBLE) VALUES ('BANK', 'ACCOUNT', 1, " +
            std::string(row) + ", '', 1)");
    EXPECT_EQ(Rows("SELECT NO, RFA, INDEX_NUMBER, ROWID FROM BANK_ACCOUNT"),
              "1|00000000000000|~|1\n2|00000000000013|~|2\n3|00000000000026|~|3\n");
}

TEST_F(Records, ColumnsAppearAsTheirDisplayNamesSay)
{
    Make("ACCOUNT", account, accounts);
    Run("UPDATE TW_COLUMN SET DISPLAY_NAME = 'Balance' WHERE COLUMN_NAME = 'BALANCE'");
    const Result result = client.Execute("SELECT * FROM BANK_ACCOUNT");
    ASSERT_EQ(result.columns.size(), 3u);
    EXPECT_EQ(result.columns[2].name, "Balance");
    EXPECT_EQ(result.columns[0].type, SQL_BIGINT);
    EXPECT_EQ(result.columns[1].type, SQL_VARCHAR);
    EXPECT_EQ(result.columns[1].size, 6u);
    EXPECT_EQ(result.columns[2].type, SQL_DOUBLE);
}

TEST_F(Records, WideDecimalNumbersAreDescribedWithTheirDigits)
{
    Make("SUMS", {{"WIDE", "PACKED", 10, 2}, {"LARGE", "UNSIGNED-8", 8}},
         "\x00\x12\x34\x56\x78\x90\x12\x34\x56\x7D"s + std::string(8, '\xFF'));
    const Result result = client.Execute("SELECT WIDE, LARGE, WIDE + 1 AS MORE FROM BANK_SUMS");
    ASSERT_EQ(result.columns.size(), 3u) << result.diagnostic.message;
    EXPECT_EQ(result.columns[0].type, SQL_DECIMAL);
    EXPECT_EQ(result.columns[0].size, 19u);
    EXPECT_EQ(result.columns[1].type, SQL_DECIMAL);
    EXPECT_EQ(result.columns[1].size, 20u);
    ASSERT_EQ(result.rows.size(), 1u);
    EXPECT_EQ(result.rows[0][0], "-123456789012345.67");
    EXPECT_EQ(result.rows[0][1], "18446744073709551615");
}

TEST_F(Records, CatalogFunctionsKnowTablesOverRecords)
{
    Make("ACCOUNT", account, accounts);
    Run("UPDATE TW_TABLE SET REMARKS = 'All accounts' WHERE TABLE_NAME = 'ACCOUNT'");
    DefineTable("BROKEN", "NOTHING", "x.dat");
    std::vector<SQLWCHAR> pattern = Wide("BANK_%");
    const Result tables = client.Read([&](SQLHSTMT statement) {
        return SQLTablesW(statement, nullptr, 0, nullptr, 0, pattern.data(), SQL_NTS, nullptr, 0);
    });
    ASSERT_EQ(tables.rows.size(), 2u) << tables.diagnostic.message;
    EXPECT_EQ(tables.rows[0][2], "BANK_ACCOUNT");
    EXPECT_EQ(tables.rows[0][3], "TABLE");
    EXPECT_EQ(tables.rows[0][4], "All accounts");
    EXPECT_EQ(tables.rows[1][2], "BANK_BROKEN");
    const Result columns = client.Read([&](SQLHSTMT statement) {
        return SQLColumnsW(statement, nullptr, 0, nullptr, 0, pattern.data(), SQL_NTS, nullptr, 0);
    });
    ASSERT_EQ(columns.rows.size(), 3u) << columns.diagnostic.message;
    EXPECT_EQ(columns.rows[1][3], "NAME");
    EXPECT_EQ(columns.rows[1][4], std::to_string(SQL_VARCHAR));
    EXPECT_EQ(columns.rows[1][6], "6");
    EXPECT_EQ(columns.rows[2][4], std::to_string(SQL_DOUBLE));
    std::vector<SQLWCHAR> views = Wide("'VIEW'");
    const Result none = client.Read([&](SQLHSTMT statement) {
        return SQLTablesW(statement, nullptr, 0, nullptr, 0, nullptr, 0, views.data(), SQL_NTS);
    });
    EXPECT_TRUE(none.Succeeded()) << none.diagnostic.message;
    EXPECT_TRUE(none.rows.empty());
}

TEST_F(Records, APreparedStatementTakesParameters)
{
    Make("ACCOUNT", account, accounts);
    std::string text = "SELECT NAME FROM BANK_ACCOUNT WHERE BALANCE > ?";
    SQLHSTMT statement = client.NewStatement();
    ASSERT_EQ(SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    double limit = 100;
    SQLBindParameter(statement, 1, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 15, 0, &limit, 0, nullptr);
    const auto count = [&] {
        EXPECT_TRUE(SQL_SUCCEEDED(SQLExecute(statement)));
        int rows = 0;
        while (SQL_SUCCEEDED(SQLFetch(statement)))
            ++rows;
        SQLFreeStmt(statement, SQL_CLOSE);
        return rows;
    };
    EXPECT_EQ(count(), 1);
    limit = -100;
    EXPECT_EQ(count(), 3);
    Run("UPDATE TW_TABLE SET CRITERIA = 'NO > 1' WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(count(), 2) << "a changed definition leaves the parameters";
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Records, LongNumbersInACriteriaAreExactForTheColumnsOfOtherTablesToo)
{
    Make("SUMS", {{"NO", "ZONED-U", 1}, {"WIDE", "PACKED", 10, 2}},
         "1\x12\x34\x56\x78\x90\x12\x34\x56\x78\x8C"
         "2\x12\x34\x56\x78\x90\x12\x34\x56\x78\x9C"s);
    Make("ACCOUNT", account, accounts);
    DefineTable("CHOSEN", "ACCOUNT", "ACCOUNT.dat",
                "BANK_CHOSEN.NO IN (SELECT NO FROM BANK_SUMS WHERE WIDE >= 12345678901234567.89)");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_CHOSEN"), "Ivy\n");
    OdbcClient bound;
    Connect(bound, "DefaultDatabase=BANK");
    EXPECT_EQ(Rows(bound, "SELECT NAME FROM CHOSEN"), "Ivy\n");
}

TEST_F(Records, ATableTakesNoPlaceOfAFunctionOfTheEngine)
{
    Make("JSON_EACH", account, accounts);
    OdbcClient bound;
    Connect(bound, "DefaultDatabase=BANK");
    bound.Execute("SELECT NAME FROM JSON_EACH");
    EXPECT_EQ(Rows(bound, "SELECT value FROM json_each('[7, 8]')"), "7\n8\n");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_JSON_EACH WHERE NO = 2"), "Ivy\n");
}

TEST_F(Records, IsqlShowsThem)
{
    Make("ACCOUNT", account, accounts);
    const std::string name =
        setup.AddDataSource({"Catalog = " + setup.File("c.cat"), "DefaultDatabase = BANK", "BadFields = Error"});
    const CommandOutput output =
        RunCommand({"isql", name, "-b", "-x0x7C"}, "SELECT NAME, BALANCE FROM ACCOUNT WHERE BALANCE <> 0\n");
    EXPECT_EQ(output.exitCode, 0) << output.text;
    EXPECT_NE(output.text.find("Harry|123.45"), std::string::npos) << output.text;
    EXPECT_NE(output.text.find("Ivy|-7.5"), std::string::npos) << output.text;
}

TEST_F(Records, ManyThreadsReadOnOneConnection)
{
    Make("ACCOUNT", account, accounts);
    DefineTable("DEBIT", "ACCOUNT", "ACCOUNT.dat", "BANK_DEBIT.BALANCE < 0");
    OdbcClient limited;
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, ALLOW_SELECT) VALUES ('TELLER', 'BANK', 1)");
    Connect(limited, "UID=TELLER");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int k = 0; k < 50; ++k)
                EXPECT_EQ(Rows(limited, "SELECT d.NAME FROM BANK_DEBIT d JOIN BANK_ACCOUNT a ON a.NO = d.NO"), "Ivy\n");
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST_F(Records, TheOpenStringNamesTheCodePage)
{
    Make("MAINFRAME", {{"NAME", "STRING", 5}, {"AMOUNT", "ZONED", 3, 1}, {"DAY", "DATE-YYYYMMDD", 8}},
         "\xD1\xDC\x99\x87\x40\xF1\xF2\xD3\xF1\xF9\xF9\xF8\xF1\xF2\xF3\xF1", "SEQUENTIAL", "FIXED", "EBCDIC-037");
    EXPECT_EQ(Rows("SELECT * FROM BANK_MAINFRAME WHERE NAME = 'Jürg'"), "Jürg|-12.3|1998-12-31\n");
    Run("UPDATE TW_FILE SET OPEN_STRING = 'EBCDIC-1047' WHERE FILE_NAME = 'MAINFRAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_MAINFRAME"), "Jürg\n");
    Run("UPDATE TW_FILE SET OPEN_STRING = 'LATIN-1' WHERE FILE_NAME = 'MAINFRAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_MAINFRAME"), "ÑÜ\u0099\u0087@\n");
    Run("UPDATE TW_FILE SET OPEN_STRING = '' WHERE FILE_NAME = 'MAINFRAME'");
    EXPECT_TRUE(Holds(Failure("SELECT NAME FROM BANK_MAINFRAME"), "no characters of the file's code page"));
}

TEST_F(Records, DatesAndTimesAreOfTheirSqlTypes)
{
    Make("DIARY", {{"DAY", "DATE", 10, 0, "DD.MM.YYYY"}, {"AT", "TIME-HHMMSS", 6}, {"SEEN", "SECONDS-4", 4}},
         "31.12.1998235958\x80\x51\x01\x00          000000\x00\x00\x00\x00"s);
    const Result result = client.Execute("SELECT * FROM BANK_DIARY");
    ASSERT_EQ(result.columns.size(), 3u) << result.diagnostic.message;
    EXPECT_EQ(result.columns[0].type, SQL_TYPE_DATE);
    EXPECT_EQ(result.columns[1].type, SQL_TYPE_TIME);
    EXPECT_EQ(result.columns[2].type, SQL_TYPE_TIMESTAMP);
    EXPECT_EQ(Rows("SELECT * FROM BANK_DIARY"),
              "1998-12-31|23:59:58|1970-01-02 00:00:00\n~|00:00:00|1970-01-01 00:00:00\n");
    EXPECT_EQ(Rows("SELECT AT FROM BANK_DIARY WHERE [DAY] >= #12/31/1998#"), "23:59:58\n");
    SQLHSTMT statement = client.NewStatement();
    std::string text = "SELECT [DAY] FROM BANK_DIARY";
    ASSERT_EQ(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQL_DATE_STRUCT day{};
    ASSERT_EQ(SQLGetData(statement, 1, SQL_C_TYPE_DATE, &day, sizeof day, nullptr), SQL_SUCCESS);
    EXPECT_EQ(day.year, 1998);
    EXPECT_EQ(day.month, 12);
    EXPECT_EQ(day.day, 31);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Records, ColumnsThatAreNotVisibleAreNotThere)
{
    Make("ACCOUNT", account, accounts);
    Run("UPDATE TW_COLUMN SET VISIBLE = 0 WHERE COLUMN_NAME = 'NO'");
    EXPECT_EQ(Rows("SELECT * FROM BANK_ACCOUNT WHERE NAME = 'Ivy'"), "Ivy|-7.5\n");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_ACCOUNT"), "no such column"));
    Run("UPDATE TW_COLUMN SET VISIBLE = 0");
    EXPECT_TRUE(Holds(Failure("SELECT 1 FROM BANK_ACCOUNT"), "it has no columns"));
}

TEST_F(Records, ARecordShorterThanItsLayoutHasNullsAtItsEnd)
{
    Make("LINES", {{"KIND", "STRING", 1}, {"NO", "ZONED-U", 3}, {"WORDS", "STRING", 8}}, "A001some\nB002\nC\nD12\n",
         "SEQUENTIAL", "VARIABLE");
    EXPECT_EQ(Rows("SELECT KIND, WORDS FROM BANK_LINES"), "A|some\nB|~\nC|~\nD|~\n");
    EXPECT_EQ(Rows("SELECT NO FROM BANK_LINES LIMIT 3"), "1\n2\n~\n");
    EXPECT_TRUE(Holds(Failure("SELECT NO FROM BANK_LINES"),
                      "record 4, field NO: the bytes 31 32 cannot be read as ZONED-U: the record ends inside the "
                      "field."));
}

TEST_F(Records, FieldsMayLieOverOneAnother)
{
    Make("MIXED", {{"KIND", "STRING", 1}, {"WORDS", "STRING", 4}},
         "Aabcd"
         "B\x00\x00\x00\x07"s);
    Run("INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH) VALUES "
        "('MIXED', 3, 'NUMBER', 'INTEGER-4-BE', 1, 4)");
    Run("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
        "VISIBLE) VALUES ('BANK', 'MIXED', 3, 'NUMBER', 'NUMBER', 'INTEGER', 1)");
    EXPECT_EQ(Rows("SELECT KIND, CASE KIND WHEN 'A' THEN WORDS ELSE NUMBER END FROM BANK_MIXED"), "A|abcd\nB|7\n");
}

TEST_F(Records, AKeyThatCannotBeIsToldAtConnecting)
{
    OdbcClient another;
    EXPECT_FALSE(another.Connect("Driver=Tarnwick ODBC;BadFields=Maybe;Catalog=" + setup.File("c.cat")));
    EXPECT_TRUE(Holds(another.Failure().message, "The key BadFields must be Error or Null."))
        << another.Failure().message;
}

TEST_F(Records, AllTablesAreMadeReadyWithoutASearchForEach)
{
    const auto steps = [&](int tables) {
        Run("DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'BANK'");
        Run("INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
            "WHERE i < " +
            std::to_string(tables) + ") SELECT 'BANK', 'T' || i FROM n");
        sqlite3* opened = nullptr;
        EXPECT_EQ(sqlite3_open(setup.File("c.cat").c_str(), &opened), SQLITE_OK);
        const std::unique_ptr<sqlite3, decltype(&sqlite3_close_v2)> engine(opened, sqlite3_close_v2);
        tarnwick::records::RecordTables ready(opened, {"", setup.File(""), {}}, tarnwick::records::BadFields::Error);
        int count = 0;
        const auto addOne = [](void* to) {
            ++*static_cast<int*>(to);
            return 0;
        };
        sqlite3_progress_handler(opened, 10, addOne, &count);
        EXPECT_EQ(ready.MakeReadyLike(nullptr).size(), static_cast<std::size_t>(tables));
        sqlite3_progress_handler(opened, 0, nullptr, nullptr);
        return count;
    };
    const int few = steps(100);
    EXPECT_GT(few, 100);
    EXPECT_LT(steps(400), 6 * few);
}
