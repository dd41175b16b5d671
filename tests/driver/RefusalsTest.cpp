// Statements that are refused, in which words, and what clients are told of rights.

#include "RightsFixture.h"

#include <sqlucode.h>

namespace
{

/// What a statement with a value bound to its first parameter answers.
Diagnostic RunWith(OdbcClient& client, std::string text, std::string value)
{
    SQLHSTMT statement = client.NewStatement();
    SQLLEN length = SQL_NTS;
    SQLBindParameter(statement, 1, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, value.size(), 0, value.data(), 0, &length);
    const SQLRETURN answer = SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
    const Diagnostic diagnostic =
        SQL_SUCCEEDED(answer) ? Diagnostic() : OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    return diagnostic;
}

} // namespace

TEST_F(Rights, AreToldInTheirWordsWhenAPreparedStatementRuns)
{
    for (const char* statement : {"DELETE FROM TW_FILE", "INSERT INTO TW_FILE (FILE_NAME) VALUES ('X')",
                                  "SELECT NO FROM BANK_OWNER", "DROP TABLE TW_FILE"}) {
        const Result result = As("CLERK").Prepared(statement);
        EXPECT_FALSE(result.Succeeded()) << statement;
        EXPECT_NE(result.diagnostic.message.find("privileges"), std::string::npos)
            << statement << ": " << result.diagnostic.message;
        EXPECT_EQ(result.diagnostic.state, "42000") << statement;
    }
}

TEST_F(Rights, AreToldInTheirWordsWhenARowOfAResultIsChanged)
{
    OdbcClient& clerk = As("CLERK");
    SQLHSTMT statement = clerk.NewStatement();
    SQLSetStmtAttr(statement, SQL_ATTR_CONCURRENCY, reinterpret_cast<SQLPOINTER>(SQL_CONCUR_LOCK), 0);
    std::string text = "SELECT FILE_NAME, REMARKS FROM TW_FILE";
    ASSERT_EQ(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    char name[64] = "";
    SQLLEN length = 0;
    SQLBindCol(statement, 1, SQL_C_CHAR, name, sizeof name, &length);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(SQLSetPos(statement, 1, SQL_DELETE, SQL_LOCK_NO_CHANGE), SQL_ERROR);
    const Diagnostic refused = OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement);
    EXPECT_NE(refused.message.find("does not have the privileges to delete from the table TW_FILE"), std::string::npos)
        << refused.message;
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Rights, ToDeleteAreNeededToPutARowInPlaceOfAnother)
{
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
        "ALLOW_DELETE) VALUES ('MAKER', 'TW', 'DATABASE', 1, 1, 0, 0), ('CHANGER', 'TW', 'DATABASE', 1, 0, 1, 0), "
        "('KEEPER', 'TW', 'DATABASE', 1, 1, 1, 1)");
    const std::string before = Rows("SELECT * FROM TW_FILE ORDER BY 1");
    const std::string place = "TW_FILE (FILE_NAME, REMARKS) VALUES ('ACCOUNT', 'replaced')";
    const std::string statements[] = {"REPLACE INTO " + place,
                                      "replace /* x */ into main . [tw_file] (FILE_NAME) VALUES ('ACCOUNT')",
                                      "INSERT OR REPLACE INTO " + place,
                                      "\xEF\xBB\xBFREPLACE INTO " + place,
                                      "REPLACE \vINTO " + place,
                                      "INSERT OR REPLACE\t\v\vINTO " + place,
                                      "WITH x AS (SELECT 1) REPLACE INTO " + place,
                                      "EXPLAIN REPLACE INTO " + place,
                                      "REPLACE INTO 'TW_FILE' (FILE_NAME) SELECT replace('ACCOUNT', 'X', 'Y')"};
    for (const std::string& statement : statements) {
        ExpectRefused(As("MAKER"), statement, "delete from the table ");
        const Result prepared = As("MAKER").Prepared(statement);
        EXPECT_EQ(prepared.diagnostic.state, "42000") << statement;
        EXPECT_NE(prepared.diagnostic.message.find("privileges to delete from the table "), std::string::npos);
    }
    for (const char* statement :
         {"UPDATE OR REPLACE TW_FILE SET FILE_NAME = 'OWNER' WHERE FILE_NAME = 'ACCOUNT'",
          "UPDATE \vOR\n\vREPLACE TW_FILE SET FILE_NAME = 'OWNER' WHERE FILE_NAME = 'ACCOUNT'",
          "WITH x AS (SELECT 1) UPDATE OR REPLACE main.TW_FILE SET FILE_NAME = 'OWNER' WHERE FILE_NAME = 'ACCOUNT'"})
        ExpectRefused(As("CHANGER"), statement, "delete from the table TW_FILE");
    EXPECT_EQ(Rows("SELECT * FROM TW_FILE ORDER BY 1"), before);

    Run(As("MAKER"), "INSERT INTO TW_FILE (FILE_NAME) SELECT replace('NxW', 'x', 'E') WHERE 0 OR replace('a', 'a', 1)");
    Run(As("CHANGER"), "UPDATE TW_FILE SET REMARKS = 'REPLACE INTO' WHERE FILE_NAME = 'NEW' OR replace('', 'a', 'b')");
    Run(As("KEEPER"), "REPLACE INTO TW_FILE (FILE_NAME, REMARKS) VALUES ('NEW', 'kept')");
    Run("UPDATE OR REPLACE TW_FILE SET FILE_NAME = 'NEWER' WHERE FILE_NAME = 'NEW'");
    EXPECT_EQ(Rows("SELECT REMARKS FROM TW_FILE WHERE FILE_NAME = 'NEWER'"), "kept\n");
}

TEST_F(Rights, ToDeleteAreNotGotRoundByWhatIsReadOtherwiseBelow)
{
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
        "ALLOW_DELETE) VALUES ('MAKER', 'TW', 'DATABASE', 1, 1, 1, 0)");
    const std::string before = Rows("SELECT * FROM TW_FILE ORDER BY 1");
    const std::string into = "INTO TW_FILE (FILE_NAME, REMARKS) ";
    const std::string row = "VALUES ('ACCOUNT', 'replaced')";
    const std::string statements[] = {
        "INSERT OR {oj REPLACE} " + into + row,
        "{oj REPL}ACE " + into + row,
        "{oj SELECT} /* ' */ 1",
        "UPDATE {oj OR REPLACE} TW_FILE SET FILE_NAME = 'OWNER' WHERE FILE_NAME = 'ACCOUNT'",
        "SELECT 1 /* ' */; /* ' */ INSERT OR {oj REPLACE} " + into + row,
        "SELECT 1 AS {`x a} /* ' */ ; REPLACE " + into + row + " /* ' */ --`",
        "WITH x AS (SELECT #a) REPLACE " + into + "VALUES ('ACCOUNT', ?2)",
        "WITH x AS (SELECT x#a) REPLACE " + into + "VALUES ('ACCOUNT', #b)",
        "WITH x AS (SELECT $a(')) REPLACE " + into + "SELECT 'ACCOUNT', $b(')",
        "WITH x AS (SELECT @a::b(\")) REPLACE " + into + "SELECT 'ACCOUNT', :b(\")"};
    for (const std::string& statement : statements) {
        OdbcClient& maker = As("MAKER");
        for (const Result& result : {maker.Execute(statement), maker.Prepared(statement)}) {
            EXPECT_EQ(result.diagnostic.state, "42000") << statement;
            EXPECT_NE(result.diagnostic.message.find("The user MAKER does not have the privileges to "),
                      std::string::npos)
                << statement << ": " << result.diagnostic.message;
        }
    }
    for (const std::string& statement :
         {"/* {a*/ ` } */ REPLACE " + into + row + " --`", "/* {a*/ SELECT ` } */ REPLACE " + into + row + " --`"})
        EXPECT_NE(Failure(As("MAKER"), statement).find(" } */ REPLACE INTO TW_FILE"), std::string::npos) << statement;
    EXPECT_EQ(Rows("SELECT * FROM TW_FILE ORDER BY 1"), before);

    SQLHSTMT statement = As("MAKER").NewStatement();
    std::string text = "WITH x AS (SELECT #a) REPLACE INTO TW_FILE (FILE_NAME, REMARKS) VALUES (?2, ?2)";
    EXPECT_EQ(SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_ERROR);
    EXPECT_NE(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).message.find("privileges"), std::string::npos);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Rights, LeaveEscapesThatChangeNoStatement)
{
    Run("UPDATE TW_DBPRV SET ALLOW_INSERT = 1 WHERE USER_NAME = 'CLERK'");
    OdbcClient& clerk = As("CLERK");
    EXPECT_EQ(Rows(clerk, "SELECT a.FILE_NAME FROM {oj TW_FILE a LEFT OUTER JOIN TW_DB d ON a.FILE_NAME = "
                          "d.DATABASE_NAME} WHERE a.FILE_NAME LIKE 'ACC%';"),
              "ACCOUNT\n");
    Run(clerk, "INSERT INTO TW_FILE (FILE_NAME, REMARKS) VALUES ({d '2020-01-02'}, '{oj REPLACE} #(')");
    Run(clerk, "UPDATE TW_FILE SET REMARKS = REMARKS || { TS '2020-01-02 03:04:05' } WHERE FILE_NAME LIKE '2020%'");
    EXPECT_EQ(Rows("SELECT FILE_NAME, REMARKS FROM TW_FILE WHERE FILE_NAME LIKE '2020%'"),
              "2020-01-02|{oj REPLACE} #(2020-01-02 03:04:05\n");
}

TEST_F(Rights, ToDeleteAreNotGotRoundByAStatementBehindAnother)
{
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
        "ALLOW_DELETE) VALUES ('MAKER', 'TW', 'DATABASE', 1, 1, 1, 0)");
    const std::string before = Rows("SELECT * FROM TW_FILE ORDER BY 1");
    const std::string opened = "INSERT INTO TW_FILE (FILE_NAME) SELECT #a WHERE 0 /*'*/; ";
    for (const std::string& statement :
         {opened + "REPLACE INTO TW_FILE (FILE_NAME, REMARKS) VALUES (/*'*/'ACCOUNT', #b) /*?*/ /*'*/; [ /*'*/",
          opened + "UPDATE OR REPLACE TW_FILE SET FILE_NAME = #b WHERE FILE_NAME = /*'*/'OWNER' /*?*/ /*'*/; [ /*'*/",
          opened + "REPLACE INTO TW_FILE (FILE_NAME, REMARKS) VALUES (/*'*/'ACCOUNT', #b) /*?*/ /*'*/; ` /*'*/",
          opened + "REPLACE INTO TW_FILE (FILE_NAME, REMARKS) VALUES (/*'*/'ACCOUNT', #b) /*?*/ /*'*/; ## [ /*'*/"}) {
        const Diagnostic diagnostic = RunWith(As("MAKER"), statement, "ACCOUNT");
        EXPECT_EQ(diagnostic.state, "42000") << statement;
        EXPECT_NE(diagnostic.message.find("The user MAKER does not have the privileges to "), std::string::npos)
            << statement << ": " << diagnostic.message;
        EXPECT_EQ(Rows("SELECT * FROM TW_FILE ORDER BY 1"), before) << statement;
    }
}

TEST_F(Rights, OfAllButTheAdministratorAreToOneStatementAtATime)
{
    const std::string insert = "INSERT INTO TW_FILE (FILE_NAME) VALUES ";
    Run("UPDATE TW_DBPRV SET ALLOW_INSERT = 1 WHERE USER_NAME = 'CLERK'");
    for (const std::string& statement :
         {"BEGIN; " + insert + "('X')", "SAVEPOINT X; " + insert + "('X')", "BEGIN;; " + insert + "('X')",
          insert + "('X') /*'*/; " + insert + "(/*'*/'Y') /*''*/", insert + "('X') --'\n; " + insert + "('Y') --'",
          "; " + insert + "('X')", insert + "('X') /*'*/; 'closed' /*'*/"}) {
        ExpectRefused(As("CLERK"), statement, "run one statement behind another");
        EXPECT_EQ(As("CLERK").Prepared(statement).diagnostic.state, "42000") << statement;
    }
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM TW_FILE WHERE FILE_NAME IN ('X', 'Y')"), "0\n");
    OdbcClient& clerk = As("CLERK");
    Run(clerk, "BEGIN; -- ; " + insert);
    Run(clerk, insert + "('X;Y'); ");
    Run(clerk, "SAVEPOINT X ;; /* ; */");
    Run(clerk, "COMMIT");
    EXPECT_EQ(
        Rows(clerk, "SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME LIKE 'X;%' OR FILE_NAME = \"FILE_NAME\" || ';';"),
        "X;Y\n");
    Run("SAVEPOINT X; " + insert + "('Z'); RELEASE X");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM TW_FILE WHERE FILE_NAME = 'Z'"), "1\n");
}

TEST_F(Rights, AreToStatementsWithAnythingInTheirComments)
{
    Run("UPDATE TW_DBPRV SET ALLOW_INSERT = 1 WHERE USER_NAME = 'CLERK'");
    const std::string select = "-- {oj first}; it's ?\nSELECT /* a;b ` */ FILE_NAME FROM TW_FILE -- the bank's [\n"
                               "WHERE FILE_NAME = 'ACCOUNT' /* or what? */; -- don't; stop";
    for (const std::string user : {"CLERK", "ADMIN"}) {
        OdbcClient& on = As(user);
        EXPECT_EQ(Rows(on, select), "ACCOUNT\n");
        const Result prepared = on.Prepared(select);
        EXPECT_TRUE(prepared.Succeeded()) << prepared.diagnostic.message;
        EXPECT_EQ(Rows(on, "SELECT FILE_NAME FROM TW_FILE WHERE 0; -- don't; stop"), "");
        EXPECT_EQ(Rows(on, "SELECT 1 /* until the end; it's {"), "1\n");
        Run(on, "INSERT INTO TW_FILE (FILE_NAME) VALUES ('" + user + "-- ;'); -- it's done; is it?");
        const Diagnostic bound = RunWith(on,
                                         "UPDATE TW_FILE SET REMARKS = 'bound' -- it's a ?\n"
                                         "WHERE FILE_NAME = /* ' ? ; */ ? -- isn't it?",
                                         user + "-- ;");
        EXPECT_EQ(bound.message, "");
        EXPECT_EQ(Rows("SELECT FILE_NAME FROM TW_FILE WHERE REMARKS = 'bound'"), user + "-- ;\n");
        Run("DELETE FROM TW_FILE WHERE REMARKS = 'bound'");
        for (const char* empty : {" \n", "-- nothing", "/* nothing */\n-- at all; it's", "/* nothing"}) {
            EXPECT_EQ(on.Execute(empty).diagnostic.state, "42000") << empty;
            EXPECT_NE(Failure(on, empty).find("The statement is empty."), std::string::npos) << empty;
        }
    }
    Run("-- it's a view; of what?\nCREATE VIEW SEEN AS SELECT FILE_NAME -- the file\n FROM TW_FILE /* all */; -- "
        "don't");
    EXPECT_EQ(Rows("SELECT sql FROM sqlite_master WHERE name = 'SEEN'"),
              "CREATE VIEW SEEN AS SELECT FILE_NAME -- the file\n FROM TW_FILE /* all */\n");
    EXPECT_EQ(Rows(As("CLERK"), "SELECT * FROM SEEN WHERE FILE_NAME = 'OWNER' -- it's there"), "OWNER\n");
}

TEST_F(Rights, AreToThingsWithAnythingInTheirNames)
{
    Run("CREATE TABLE `it's; {here}` ([what?] VARCHAR(9), [a\"b] VARCHAR(9))");
    Run("INSERT INTO [it's; {here}] ([a\"b], `what?`) VALUES ('[;]', 'yes')");
    const std::string select = "SELECT [what?], [a\"b] FROM `it's; {here}` WHERE [what?] LIKE 'y%'";
    EXPECT_EQ(Rows(select), "yes|[;]\n");
    EXPECT_EQ(Rows(As("NOBODY"), select), "yes|[;]\n");
    EXPECT_EQ(RunWith(client, "UPDATE [it's; {here}] SET [a\"b] = '?' WHERE [what?] = ?", "yes").message, "");
    EXPECT_EQ(Rows(select), "yes|?\n");
}

TEST_F(Rights, OfAllButTheAdministratorAreToStatementsThatAreClosed)
{
    Run("UPDATE TW_DBPRV SET ALLOW_INSERT = 1 WHERE USER_NAME = 'CLERK'");
    for (const char* statement : {"INSERT INTO TW_FILE (FILE_NAME) VALUES ('x", "SELECT [a FROM TW_FILE",
                                  "SELECT \"a FROM TW_FILE", "SELECT `a FROM TW_FILE", "SELECT #a", "SELECT ##"}) {
        ExpectRefused(As("CLERK"), statement, "run it so.");
        const std::string reason = "The statement has a quote or # that is not closed. The user CLERK does not have";
        EXPECT_NE(Failure(As("CLERK"), statement).find(reason), std::string::npos) << statement;
    }
    EXPECT_NE(Failure("SELECT 'x").find("unrecognized token"), std::string::npos);
}

TEST_F(Rights, AreToldToClientsAsTheyAre)
{
    Run("CREATE VIEW OWNERS AS SELECT NO FROM BANK_OWNER");
    const auto told = [](OdbcClient& on, const char* pattern) {
        std::vector<SQLWCHAR> name = Wide(pattern);
        const Result result = on.Read([&](SQLHSTMT statement) {
            return SQLTablePrivilegesW(statement, nullptr, 0, nullptr, 0, name.data(), SQL_NTS);
        });
        EXPECT_TRUE(result.Succeeded()) << result.diagnostic.message;
        std::string text;
        for (const Row& row : result.rows)
            text += row[2].value_or("~") + " " + row[4].value_or("~") + " " + row[5].value_or("~") + "\n";
        return text;
    };
    EXPECT_EQ(told(As("ADMIN"), "TW\\_FILE"),
              "TW_FILE ADMIN DELETE\nTW_FILE ADMIN INSERT\nTW_FILE ADMIN SELECT\nTW_FILE ADMIN UPDATE\n");
    EXPECT_EQ(told(As(""), "%OWNER%"), "BANK_OWNER ADMIN SELECT\nOWNERS ADMIN SELECT\n");
    EXPECT_EQ(told(As("CLERK"), "TW\\_FILE"), "TW_FILE CLERK SELECT\nTW_FILE CLERK UPDATE\n");
    EXPECT_EQ(told(As("CLERK"), "%OWNER%"), "");
    EXPECT_EQ(told(As("TELLER"), "%"), "BANK_ACCOUNT TELLER SELECT\n");
    EXPECT_EQ(told(As("AUDITOR"), "%"),
              "BANK_ACCOUNT AUDITOR SELECT\nBANK_OWNER AUDITOR SELECT\nOWNERS AUDITOR SELECT\n");
    EXPECT_EQ(told(As("auditor"), "%OWNER"), "BANK_OWNER AUDITOR SELECT\n") << "the user whose rights they are";
    EXPECT_EQ(told(As("NOBODY"), "%"), "");
    EXPECT_EQ(As("ADMIN").Info(SQL_ACCESSIBLE_TABLES), "Y");
    EXPECT_EQ(As("CLERK").Info(SQL_ACCESSIBLE_TABLES), "N");

    OdbcClient& clerk = As("CLERK");
    std::vector<SQLWCHAR> table = Wide("TW_DRIVER"), column = Wide("%NAME");
    const Result columns = clerk.Read([&](SQLHSTMT statement) {
        return SQLColumnPrivilegesW(statement, nullptr, 0, nullptr, 0, table.data(), SQL_NTS, column.data(), SQL_NTS);
    });
    ASSERT_EQ(columns.rows.size(), 2u) << columns.diagnostic.message;
    EXPECT_EQ(columns.rows[0][3], "DRIVER_NAME");
    EXPECT_EQ(columns.rows[0][6], "SELECT");
    EXPECT_EQ(columns.rows[1][6], "UPDATE");
    table = Wide("BANK_OWNER");
    EXPECT_TRUE(clerk
                    .Read([&](SQLHSTMT statement) {
                        return SQLColumnPrivilegesW(statement, nullptr, 0, nullptr, 0, table.data(), SQL_NTS,
                                                    column.data(), SQL_NTS);
                    })
                    .rows.empty());
}

TEST_F(Rights, OfTheColumnsOfNoTableAreNotTold)
{
    SQLHSTMT statement = client.NewStatement();
    EXPECT_EQ(SQLColumnPrivilegesW(statement, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0), SQL_ERROR);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "HY009");
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Rights, ToldOfColumnsAreOfTheViewsThatCanBeRead)
{
    Run("CREATE VIEW IMPORTED AS SELECT blob_import('" + DataFile("OWNER.dat") + "') AS CONTENT");
    EXPECT_EQ(Rows("SELECT length(CONTENT) FROM IMPORTED"), "2\n");
    const auto columns = [](OdbcClient& on) {
        std::vector<SQLWCHAR> name = Wide("IMPORTED");
        return on.Read([&](SQLHSTMT statement) {
            return SQLColumnsW(statement, nullptr, 0, nullptr, 0, name.data(), SQL_NTS, nullptr, 0);
        });
    };
    const Result told = columns(client);
    ASSERT_EQ(told.rows.size(), 1u) << told.diagnostic.message;
    EXPECT_EQ(told.rows[0][3], "CONTENT");
    EXPECT_TRUE(columns(As("CLERK")).rows.empty()) << "nobody else can read it";
}
