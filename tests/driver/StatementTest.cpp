#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <sqlucode.h>

#include <array>
#include <fstream>

namespace
{

/// A connection to a fresh catalog.
class Statement : public ::testing::Test
{
protected:
    Statement() : m_connected(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"))) {}
    void SetUp() override { ASSERT_TRUE(m_connected) << client.Failure().message; }

    /// Expects a statement to fail, prepared or not, with exactly one record.
    void ExpectRefused(const std::string& text, const std::string& state, const std::string& part)
    {
        for (const Result& result : {client.Execute(text), client.Prepared(text)}) {
            EXPECT_EQ(result.answer, SQL_ERROR) << text;
            EXPECT_EQ(result.diagnostic.state, state) << text << ": " << result.diagnostic.message;
            EXPECT_NE(result.diagnostic.message.find(part), std::string::npos) << result.diagnostic.message;
        }
    }

    OdbcSetup setup;
    OdbcClient client;

private:
    bool m_connected;
};

std::vector<std::string> FirstCells(const Result& result)
{
    std::vector<std::string> cells;
    for (const Row& row : result.rows)
        cells.push_back(row.front().value_or("<null>"));
    return cells;
}

} // namespace

TEST_F(Statement, TheWorkbenchsSpellingsAreAnswered)
{
    EXPECT_EQ(client.Execute("SELECT COUNT (*) AS COLUMN_COUNT FROM TW_FIELD WHERE FILE_NAME = 'USER'").Single(), "3");
    EXPECT_EQ(
        client.Execute("SELECT SUM(LENGTH) AS NextOffset FROM TW_FIELD WHERE FILE_NAME = 'USER' AND FIELD_NUMBER < 02")
            .Single(),
        "32");
    EXPECT_EQ(
        client.Execute("SELECT SUM(LENGTH) AS NextOffset FROM TW_FIELD WHERE FILE_NAME = 'NONE' AND FIELD_NUMBER < 01")
            .Single(),
        "<null>");
    EXPECT_EQ(client.Execute("SELECT 012").Single(), "12");
    EXPECT_EQ(client.Execute("SELECT [USER_NAME] FROM [TW_USER]").Single(), "ADMIN");
    EXPECT_EQ(client.Execute("SELECT [USER_NAME], [REMARKS] FROM [TW_USER] WHERE [USER_NAME] LIKE 'ADM%'").rows.size(),
              1u);
    EXPECT_EQ(client.Execute("SELECT #12/31/1998#").Single(), "1998-12-31");
    EXPECT_EQ(client.Execute("SELECT #1998-12-31# < #1999-01-01#").Single(), "1");
}

TEST_F(Statement, ANegativeScaleGoesInAsASubtraction)
{
    ASSERT_TRUE(
        client.Execute("INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, SCALE) VALUES ('F', 'A', 0-2)").Succeeded());
    EXPECT_EQ(client.Execute("SELECT SCALE FROM TW_FIELD WHERE FILE_NAME = 'F'").Single(), "-2");
    ASSERT_TRUE(client.Execute("UPDATE TW_FIELD SET FIELD_NUMBER = 0, LENGTH = 012, SCALE = 0-7 WHERE FILE_NAME = 'F'")
                    .Succeeded());
    EXPECT_EQ(client.Execute("SELECT LENGTH || ',' || SCALE FROM TW_FIELD WHERE FILE_NAME = 'F'").Single(), "12,-7");
}

TEST_F(Statement, NumericColumnsTakeQuotedNumbersAndZeroForAnEmptyText)
{
    for (const std::string name :
         {"TW_FILE", "TW_FIELD", "TW_DB", "TW_TABLE", "TW_COLUMN", "TW_USER", "TW_DBPRV", "TW_TBLPRV"}) {
        const std::vector<ResultColumn> columns = client.Execute("SELECT * FROM " + name).columns;
        const std::string ofTheRow = " WHERE " + columns.front().name + " = 'NEW'";
        std::string names = columns.front().name;
        std::string types = "'text'";
        for (std::size_t i = 1; i < columns.size(); ++i) {
            names += ", " + columns[i].name;
            types += ", typeof(" + columns[i].name + ")";
        }
        const auto valueOf = [&](std::size_t i, const std::string& number) {
            return columns[i].type == SQL_VARCHAR ? "''" : "'" + number + "'";
        };
        const auto expectStored = [&](const std::string& number) {
            const Result row = client.Execute("SELECT * FROM " + name + ofTheRow);
            const Result stored = client.Execute("SELECT " + types + " FROM " + name + ofTheRow);
            ASSERT_EQ(row.rows.size(), 1u) << name;
            for (std::size_t i = 1; i < columns.size(); ++i) {
                SCOPED_TRACE(name + "." + columns[i].name);
                const bool isText = columns[i].type == SQL_VARCHAR;
                EXPECT_EQ(row.rows[0][i], isText ? "" : number);
                EXPECT_EQ(stored.rows[0][i], isText ? "text" : "integer");
            }
        };
        for (const std::string number : {"", "7"}) {
            std::string values = "'NEW'";
            std::string assignments;
            for (std::size_t i = 1; i < columns.size(); ++i) {
                values += ", " + valueOf(i, number);
                assignments += (i == 1 ? "" : ", ") + columns[i].name + " = " + valueOf(i, number);
            }
            for (const std::string& list : {" (" + names + ")", std::string()}) {
                for (const bool prepared : {false, true}) {
                    const std::string insert = "INSERT INTO " + name + list + " VALUES (" + values + ")";
                    client.Execute("DELETE FROM " + name + ofTheRow);
                    EXPECT_EQ((prepared ? client.Prepared(insert) : client.Execute(insert)).changed, 1) << insert;
                    expectStored(number.empty() ? "0" : number);
                }
            }
            client.Execute("DELETE FROM " + name + ofTheRow);
            client.Execute("INSERT INTO " + name + " (" + columns.front().name + ") VALUES ('NEW')");
            EXPECT_EQ(client.Execute("UPDATE " + name + " SET " + assignments + ofTheRow).changed, 1) << assignments;
            expectStored(number.empty() ? "0" : number);
        }
    }
}

TEST_F(Statement, ANullInANumericColumnStaysNull)
{
    ASSERT_TRUE(client.Execute("INSERT INTO TW_FIELD (FILE_NAME, LENGTH, OFFSET) VALUES ('F', NULL, '')").Succeeded());
    EXPECT_EQ(client.Execute("SELECT LENGTH, OFFSET FROM TW_FIELD WHERE FILE_NAME = 'F'").rows.at(0),
              (Row{std::nullopt, "0"}));
    ASSERT_TRUE(client.Execute("UPDATE TW_FIELD SET LENGTH = '', OFFSET = NULL WHERE FILE_NAME = 'F'").Succeeded());
    EXPECT_EQ(client.Execute("SELECT LENGTH, OFFSET FROM TW_FIELD WHERE FILE_NAME = 'F'").rows.at(0),
              (Row{"0", std::nullopt}));
}

TEST_F(Statement, AWhereBehindOrderByIsAnsweredAsIfItStoodBefore)
{
    for (const char* name : {"B", "A", "C"})
        ASSERT_TRUE(
            client.Execute("INSERT INTO TW_DB (DATABASE_NAME) VALUES ('" + std::string(name) + "')").Succeeded());
    const Result result =
        client.Execute("SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME WHERE DATABASE_NAME <> 'TW'");
    EXPECT_EQ(FirstCells(result), (std::vector<std::string>{"A", "B", "C"}));
    EXPECT_EQ(FirstCells(client.Prepared(
                  "SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME DESC WHERE DATABASE_NAME <> 'TW'")),
              (std::vector<std::string>{"C", "B", "A"}));
}

TEST_F(Statement, CommentsOfWhatIsStoredChangeNothingElseOfIt)
{
    for (const char* text :
         {"CREATE TABLE T (A TEXT, -- it's the key?\n B TEXT DEFAULT '{b}?')",
          "INSERT INTO T (A) VALUES ('{x}y'), ('z')",
          "CREATE TRIGGER G AFTER INSERT ON T BEGIN -- don't; {never}\n DELETE FROM T WHERE A LIKE '{x}%'; END",
          "ALTER TABLE T ADD COLUMN C INT DEFAULT 7 -- it's new?\n;", "INSERT INTO T (A) VALUES ('w')",
          "CREATE VIEW V AS -- it's\nSELECT A, B, C FROM T WHERE A <> '{x}'"})
        EXPECT_TRUE(client.Execute(text).Succeeded()) << text;
    const Result result = client.Execute("SELECT A || B || C FROM V ORDER BY 1");
    EXPECT_EQ(FirstCells(result), (std::vector<std::string>{"w{b}?7", "z{b}?7"}));
}

TEST_F(Statement, AByteOrderMarkInFrontHidesNoRows)
{
    EXPECT_EQ(FirstCells(client.Execute("\xEF\xBB\xBFSELECT 'a'")), std::vector<std::string>{"a"});
    EXPECT_EQ(FirstCells(client.Prepared(" \xEF\xBB\xBFSELECT 'a'")), std::vector<std::string>{"a"});
}

TEST_F(Statement, NativeSqlTellsWhatIsSentOn)
{
    EXPECT_EQ(client.Native("SELECT A FROM T ORDER BY A WHERE B = #1/2/2003#"),
              "SELECT A FROM T WHERE B = '2003-01-02' ORDER BY A ");
    EXPECT_EQ(client.Native("SELECT '\xF0\x9F\x98\x80'"), "SELECT '\xF0\x9F\x98\x80'");
}

TEST_F(Statement, UnknownColumnsAreRefusedHoweverTheyAreWritten)
{
    ExpectRefused("SELECT * FROM TW_FIELD WHERE FILENAME = 'X' AND FIELD_NAME = 'Y'", "42S22",
                  "no such column: FILENAME");
    ExpectRefused("SELECT NOPE FROM TW_FILE", "42S22", "no such column");
    ExpectRefused("SELECT \"NOPE\" FROM TW_FILE", "42S22", "no such column");
    ExpectRefused("SELECT [NOPE] FROM TW_FILE", "42S22", "no such column");
    ExpectRefused("SELECT * FROM TW_FILE WHERE \"NOPE\" = 'NOPE'", "42S22", "no such column");
    ExpectRefused("INSERT INTO TW_FILE (NOPE) VALUES (1)", "42S22", "NOPE");
    ExpectRefused("INSERT INTO TW_FILE (FILE_NAME) VALUES (\"X\")", "42S22", "no such column");
    ExpectRefused("UPDATE TW_FILE SET NOPE = 1", "42S22", "NOPE");
    ExpectRefused("SELECT * FROM TW_NOPE", "42S02", "no such table");
}

TEST_F(Statement, MalformedTextIsRefused)
{
    ExpectRefused("DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = 'A' AND USER_NAME = B'", "42000", "unrecognized token");
    ExpectRefused("DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'A AND TABLE_NAME = B AND COLUMN_NUMBER = 1", "42000",
                  "unrecognized token");
    ExpectRefused("SELECT FROM TW_FILE", "42000", "syntax error");
    ExpectRefused("SELECT * FROM TW_FILE WHERE FILE_NAME = #1998", "42000", "#1998");
    ExpectRefused("SELECT * FROM TW_FILE WHERE FILE_NAME = ##", "42000", "unrecognized token");
    ExpectRefused("SELECT * FROM TW_FILE WHERE X = 1 ORDER BY FILE_NAME WHERE Y = 2", "42000", "syntax error");
    ExpectRefused("SELECT 1; DELETE FROM TW_FILE", "HY000", "one SQL statement");
    ExpectRefused("", "42000", "empty");
    ExpectRefused(" \r\n\t", "42000", "empty");
    EXPECT_EQ(client.Execute("SELECT COUNT(*) FROM TW_FILE").Single(), "13");
}

TEST_F(Statement, AFailureHasOneRecordThatCanBeReadAgain)
{
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text = Wide("SELECT NOPE FROM TW_FILE");
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_ERROR);
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "42S22");
    std::array<SQLWCHAR, 6> state{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    EXPECT_EQ(SQLGetDiagRecW(SQL_HANDLE_STMT, statement, 2, state.data(), &native, nullptr, 0, &length), SQL_NO_DATA);
    text = Wide("SELECT 1");
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "");
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Statement, AMessageLongerThanItsBufferIsCutAndItsLengthTold)
{
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text = Wide("SELECT NOPE FROM TW_FILE");
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_ERROR);
    std::array<SQLWCHAR, 8> message{};
    SQLSMALLINT length = 0;
    EXPECT_EQ(SQLGetDiagRecW(SQL_HANDLE_STMT, statement, 1, nullptr, nullptr, message.data(), message.size(), &length),
              SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(Narrow(message.data(), 7), "no such");
    EXPECT_EQ(length, static_cast<SQLSMALLINT>(std::string("no such column: NOPE (1)").size()));
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Statement, HalvesOfCharactersAndNullCharactersAreRefused)
{
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text = Wide("SELECT 'x'");
    text[8] = 0xD83D;
    EXPECT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_ERROR);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "22018");
    text[8] = 0;
    EXPECT_EQ(SQLExecDirectW(statement, text.data(), static_cast<SQLINTEGER>(text.size() - 1)), SQL_ERROR);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "42000");
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Statement, OwnMessagesDoNotRepeatTheStatementsData)
{
    std::vector<SQLWCHAR> text = Wide("UPDATE TW_USER SET USER_PASSWORD = 'secret?' ");
    text[42] = 0xD83D;
    SQLHSTMT statement = client.NewStatement();
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_ERROR);
    const Diagnostic diagnostic = OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement);
    EXPECT_EQ(diagnostic.state, "22018");
    EXPECT_EQ(diagnostic.message.find("secret"), std::string::npos);
    EXPECT_NE(diagnostic.message.find("[Tarnwick][ODBC]"), std::string::npos);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Statement, ChangedRowsAreCounted)
{
    for (const char* name : {"A", "B", "C"})
        EXPECT_EQ(client.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('" + std::string(name) + "')").changed, 1);
    EXPECT_EQ(client.Execute("UPDATE TW_USER SET REMARKS = 'x' WHERE USER_NAME < 'C'").changed, 3);
    EXPECT_EQ(client.Execute("DELETE FROM TW_USER WHERE USER_NAME <> 'ADMIN'").changed, 3);
    EXPECT_EQ(client.Execute("DELETE FROM TW_USER WHERE USER_NAME = 'NOBODY'").answer, SQL_NO_DATA);
}

TEST_F(Statement, OpenResultsDoNotDisturbEachOther)
{
    std::vector<SQLWCHAR> text = Wide("SELECT FILE_NAME FROM TW_FILE ORDER BY FILE_NAME");
    SQLHSTMT outer = client.NewStatement();
    ASSERT_EQ(SQLExecDirectW(outer, text.data(), SQL_NTS), SQL_SUCCESS);
    int rows = 0;
    while (SQL_SUCCEEDED(SQLFetch(outer))) {
        ++rows;
        EXPECT_EQ(client.Execute("SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'USER'").rows.size(), 3u);
        EXPECT_TRUE(
            client.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('U" + std::to_string(rows) + "')").Succeeded());
    }
    EXPECT_EQ(rows, 13);
    SQLFreeHandle(SQL_HANDLE_STMT, outer);
}

TEST(StatementLog, ReceivesEachStatementAsItArrives)
{
    OdbcSetup setup;
    const std::string name =
        setup.AddDataSource({"Catalog = " + setup.File("a.cat"), "StatementLog = " + setup.File("log")});
    OdbcClient client;
    ASSERT_TRUE(client.Connect("DSN=" + name)) << client.Failure().message;
    client.Execute("SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME WHERE DATABASE_NAME <> 'TW'");
    client.Prepared("SELECT #1998-12-31#");
    client.Execute("SELECT 'two\r\nlines and a \\'");
    client.Execute("SELECT '\xF0\x9F\x98\x80\xC3\xA9'");
    client.Execute("malformed 'text");
    std::ifstream file(setup.File("log"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME WHERE DATABASE_NAME <> 'TW'",
                         "SELECT #1998-12-31#", "SELECT 'two\\r\\nlines and a \\\\'",
                         "SELECT '\xF0\x9F\x98\x80\xC3\xA9'", "malformed 'text"}));
}

TEST(StatementLog, BelongsToItsOwnConnection)
{
    OdbcSetup setup;
    OdbcClient logged;
    OdbcClient silent;
    ASSERT_TRUE(
        logged.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat") + ";StatementLog=" + setup.File("log")));
    ASSERT_TRUE(silent.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat")));
    silent.Execute("SELECT 1");
    logged.Execute("SELECT 2");
    logged.Disconnect();
    silent.Execute("SELECT 3");
    std::ifstream file(setup.File("log"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "SELECT 2\n");
}

TEST(StatementLog, ThatCannotBeOpenedFailsTheConnection)
{
    OdbcSetup setup;
    OdbcClient client;
    EXPECT_FALSE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat") +
                                ";StatementLog=" + setup.File("no/log")));
    EXPECT_EQ(client.Failure().state, "08001");
    EXPECT_NE(client.Failure().message.find("statement log"), std::string::npos) << client.Failure().message;
}

TEST(StatementLog, ThatCannotBeWrittenStopsTheStatement)
{
    OdbcSetup setup;
    OdbcClient client;
    ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat") + ";StatementLog=/dev/full"));
    const Result result = client.Execute("DELETE FROM TW_FILE");
    EXPECT_EQ(result.answer, SQL_ERROR);
    EXPECT_NE(result.diagnostic.message.find("not run"), std::string::npos) << result.diagnostic.message;
    client.Disconnect();
    ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat")));
    EXPECT_EQ(client.Execute("SELECT COUNT(*) FROM TW_FILE").Single(), "13");
}

TEST(StatementLog, ShowsAStatementAsItWasSentAndNothingElse)
{
    OdbcSetup setup;
    OdbcClient client;
    ASSERT_TRUE(
        client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat") + ";StatementLog=" + setup.File("a.log")));
    const std::string insert = "INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('F', '')";
    EXPECT_EQ(client.Execute(insert).changed, 1);
    std::ifstream file(setup.File("a.log"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), insert + "\n");
}
