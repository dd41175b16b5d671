// What each user may do with the tables of a catalog.

#include "RightsFixture.h"

#include <sqlucode.h>

TEST_F(Rights, OfADatabaseHoldForAllItsTables)
{
    OdbcClient& auditor = As("auditor");
    EXPECT_EQ(Rows(auditor, "SELECT NO FROM BANK_ACCOUNT"), "1\n2\n");
    EXPECT_EQ(Rows(auditor, "SELECT COUNT(*) FROM BANK_OWNER"), "1\n");
    EXPECT_NE(Failure(auditor, "UPDATE BANK_ACCOUNT SET NO = 1").find("may not be modified"), std::string::npos);
    ExpectRefused(auditor, "SELECT * FROM TW_FILE", "read the table TW_FILE");
}

TEST_F(Rights, OfATableHoldWhereTheLevelSaysSo)
{
    OdbcClient& teller = As("TELLER");
    EXPECT_EQ(Rows(teller, "SELECT NO FROM BANK_ACCOUNT"), "1\n2\n");
    ExpectRefused(teller, "SELECT NO FROM BANK_OWNER", "read the table BANK_OWNER");
    ExpectRefused(teller, "SELECT COUNT(*) FROM BANK_OWNER", "read the table BANK_OWNER");
    ExpectRefused(teller, "SELECT a.NO FROM BANK_ACCOUNT a WHERE NO IN (SELECT NO FROM BANK_OWNER)",
                  "read the table BANK_OWNER");
    OdbcClient& reader = As("READER");
    EXPECT_EQ(Rows(reader, "SELECT COUNT(*) FROM TW_FILE WHERE FILE_NAME = 'ACCOUNT'"), "1\n");
    ExpectRefused(reader, "SELECT * FROM TW_FIELD", "read the table TW_FIELD");
}

TEST_F(Rights, OfTheCatalogAreThoseOfItsDatabase)
{
    OdbcClient& clerk = As("CLERK");
    Run(clerk, "UPDATE TW_FILE SET REMARKS = 'seen' WHERE FILE_NAME = 'ACCOUNT'");
    EXPECT_EQ(Rows(clerk, "SELECT REMARKS FROM TW_FILE WHERE FILE_NAME = 'ACCOUNT'"), "seen\n");
    ExpectRefused(clerk, "DELETE FROM TW_FILE", "delete from the table TW_FILE");
    ExpectRefused(clerk, "INSERT INTO TW_FILE (FILE_NAME) VALUES ('X')", "add to the table TW_FILE");
    ExpectRefused(clerk, "SELECT NO FROM BANK_ACCOUNT", "read the table BANK_ACCOUNT");
    for (const char* statement : {"CREATE TABLE X (Y)", "DROP TABLE TW_FILE", "PRAGMA journal_mode = DELETE",
                                  "ATTACH '/tmp/x' AS X", "CREATE VIEW V AS SELECT 1"})
        EXPECT_NE(Failure(clerk, statement).find("privileges"), std::string::npos) << statement;
}

TEST_F(Rights, AreNoneForAnUnknownUser)
{
    OdbcClient& nobody = As("NOBODY");
    ExpectRefused(nobody, "SELECT * FROM TW_USER", "read the table TW_USER");
    ExpectRefused(nobody, "SELECT NO FROM BANK_ACCOUNT", "read the table BANK_ACCOUNT");
    EXPECT_EQ(Rows(nobody, "WITH x AS (SELECT 7 AS n) SELECT n FROM x"), "7\n");
}

TEST_F(Rights, HoldInsideCommonTableExpressionsToo)
{
    OdbcClient& nobody = As("NOBODY");
    ExpectRefused(nobody, "WITH x AS (SELECT USER_PASSWORD FROM TW_USER) SELECT * FROM x", "read the table TW_USER");
    ExpectRefused(nobody, "WITH x AS (SELECT * FROM TW_USER) SELECT COUNT(*) FROM x", "read the table TW_USER");
    ExpectRefused(nobody, "SELECT COUNT(*) FROM (SELECT 1 FROM BANK_OWNER)", "read the table BANK_OWNER");
    ExpectRefused(nobody, "SELECT 1 WHERE 3 IN BANK_OWNER", "read the table BANK_OWNER");
    ExpectRefused(As("TELLER"), "WITH TW_X AS (SELECT NO FROM BANK_OWNER) SELECT NO FROM TW_X",
                  "read the table BANK_OWNER");
}

TEST_F(Rights, HoldForWhatAViewReads)
{
    Run("CREATE VIEW BOTH_KINDS AS SELECT NO FROM BANK_ACCOUNT UNION ALL SELECT NO FROM BANK_OWNER");
    EXPECT_EQ(Rows(As("AUDITOR"), "SELECT COUNT(*) FROM BOTH_KINDS"), "3\n");
    ExpectRefused(As("TELLER"), "SELECT NO FROM BOTH_KINDS", "read the table BANK_OWNER");
}

TEST_F(Rights, HoldForTheRecordsBehindACriteria)
{
    Run("UPDATE TW_TABLE SET CRITERIA = 'BANK_OWNER.NO > 5' WHERE TABLE_NAME = 'OWNER'");
    for (const char* user : {"NOBODY", "TELLER", "AUDITOR"}) {
        OdbcClient& client = As(user);
        client.Execute("SELECT * FROM BANK_OWNER");
        ExpectRefused(client, "SELECT * FROM [all records of BANK_OWNER]", "read the table all records of BANK_OWNER");
        ExpectRefused(client, "SELECT COUNT(*) FROM [ALL RECORDS OF bank_owner]", "read the table ALL RECORDS OF");
    }
    EXPECT_EQ(Rows("SELECT * FROM BANK_OWNER"), "");
    EXPECT_NE(Failure("SELECT * FROM [all records of BANK_OWNER]").find("no such table"), std::string::npos);
}

TEST_F(Rights, ToInsertAndToDeleteAreGrantedOneByOne)
{
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT, ALLOW_DELETE) "
        "VALUES ('MAKER', 'TW', 'DATABASE', 1, 1, 0), ('BREAKER', 'TW', 'DATABASE', 1, 0, 1), "
        "('KEEPER', 'TW', 'TABLE', 1, 1, 1)");
    Run("INSERT INTO TW_TBLPRV (USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
        "ALLOW_DELETE) VALUES ('KEEPER', 'TW', 'FILE', 1, 1, 1, 1), ('KEEPER', 'TW', 'FIELD', 1, 0, 0, 0)");
    const std::string insert = "INSERT INTO TW_FILE (FILE_NAME) VALUES ('X')";
    const std::string remove = "DELETE FROM TW_FILE WHERE FILE_NAME = 'X'";
    Run(As("MAKER"), insert);
    ExpectRefused(As("MAKER"), remove, "delete from the table TW_FILE");
    Run(As("BREAKER"), remove);
    ExpectRefused(As("BREAKER"), insert, "add to the table TW_FILE");
    OdbcClient& keeper = As("KEEPER");
    Run(keeper, insert);
    Run(keeper, "UPDATE TW_FILE SET REMARKS = 'kept' WHERE FILE_NAME = 'X'");
    Run(keeper, remove);
    ExpectRefused(keeper, "DELETE FROM TW_FIELD", "delete from the table TW_FIELD");
    ExpectRefused(keeper, "SELECT * FROM TW_DB", "read the table TW_DB");
}

TEST_F(Rights, HoldForWhatAViewAndACriteriaBecomeAfterConnecting)
{
    Run("CREATE VIEW SEEN AS SELECT NO FROM BANK_ACCOUNT");
    OdbcClient& auditor = As("AUDITOR");
    EXPECT_EQ(Rows(auditor, "SELECT * FROM SEEN"), "1\n2\n");
    Run("DROP VIEW SEEN");
    Run("CREATE VIEW SEEN AS SELECT USER_PASSWORD FROM TW_USER");
    ExpectRefused(auditor, "SELECT * FROM SEEN", "read the table TW_USER");
    EXPECT_EQ(Rows(auditor, "SELECT NO FROM BANK_OWNER"), "3\n");
    Run("UPDATE TW_TABLE SET CRITERIA = 'NO < (SELECT COUNT(*) FROM TW_USER)' WHERE TABLE_NAME = 'OWNER'");
    EXPECT_EQ(Rows(auditor, "SELECT NO FROM BANK_OWNER"), "");
    ExpectRefused(auditor, "SELECT * FROM TW_USER", "read the table TW_USER");
}

TEST_F(Rights, HoldUnderADefaultDatabaseToo)
{
    OdbcClient teller;
    Connect(teller, "UID=TELLER;DefaultDatabase=BANK");
    EXPECT_EQ(Rows(teller, "SELECT NO FROM ACCOUNT"), "1\n2\n");
    ExpectRefused(teller, "SELECT NO FROM OWNER", "read the table OWNER");
    ExpectRefused(teller, "SELECT * FROM TW_FILE", "read the table TW_FILE");
}

TEST_F(Rights, AreNeededForAllThatAnInsertDoes)
{
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT) VALUES "
        "('MAKER', 'TW', 'DATABASE', 1, 1), ('WRITER', 'TW', 'DATABASE', 0, 1)");
    ExpectRefused(As("MAKER"),
                  "INSERT INTO TW_FILE (FILE_NAME) VALUES ('ACCOUNT') ON CONFLICT DO UPDATE SET REMARKS = 'changed'",
                  "change the table TW_FILE");
    Run(As("MAKER"), "INSERT INTO TW_FILE (FILE_NAME) VALUES ('ACCOUNT') ON CONFLICT DO NOTHING");
    ExpectRefused(As("WRITER"), "INSERT INTO TW_FILE (FILE_NAME) VALUES ('NEW') RETURNING REMARKS",
                  "read the table TW_FILE");
    Run(As("WRITER"), "INSERT INTO TW_FILE (FILE_NAME) VALUES ('NEW')");
    EXPECT_EQ(Rows("SELECT FILE_NAME, REMARKS FROM TW_FILE WHERE FILE_NAME IN ('ACCOUNT', 'NEW') ORDER BY 1"),
              "ACCOUNT|\nNEW|\n");
}

TEST_F(Rights, OfUsersThatDifferInCaseAreTheirOwn)
{
    Run("INSERT INTO TW_USER (USER_NAME) VALUES ('BOSS'), ('Boss'), ('boss')");
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT) VALUES "
        "('BOSS', 'BANK', 'DATABASE', 1), ('Boss', 'TW', 'TABLE', 1), ('Boss', 'BANK', 'DATABASE', 0)");
    Run("INSERT INTO TW_TBLPRV (USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT) VALUES "
        "('Boss', 'TW', 'FILE', 1), ('BOSS', 'TW', 'DB', 1)");
    EXPECT_EQ(Rows(As("BOSS"), "SELECT NO FROM BANK_OWNER"), "3\n");
    ExpectRefused(As("BOSS"), "SELECT * FROM TW_FILE", "read the table TW_FILE");
    EXPECT_EQ(Rows(As("Boss"), "SELECT COUNT(*) FROM TW_FILE WHERE FILE_NAME = 'OWNER'"), "1\n");
    for (const char* statement : {"SELECT NO FROM BANK_OWNER", "SELECT * FROM TW_DB"})
        ExpectRefused(As("Boss"), statement, "read the table");
    for (const char* statement : {"SELECT NO FROM BANK_OWNER", "SELECT * FROM TW_FILE"})
        ExpectRefused(As("boss"), statement, "read the table");
    EXPECT_EQ(Rows(As("bOSS"), "SELECT NO FROM BANK_OWNER"), "3\n") << "the first of those that differ in case alone";
}

TEST_F(Rights, OfTheAdministratorAreNotThoseOfAUserOfAlmostItsName)
{
    EXPECT_EQ(Rows(As("Admin"), "SELECT NO FROM BANK_OWNER"), "3\n") << "there is no other user of that name";
    Run("INSERT INTO TW_USER (USER_NAME) VALUES ('Admin')");
    ExpectRefused(As("Admin"), "SELECT NO FROM BANK_OWNER", "read the table BANK_OWNER");
    EXPECT_EQ(Rows(As("ADMIN"), "SELECT NO FROM BANK_OWNER"), "3\n");
    EXPECT_EQ(Rows(As("aDMIN"), "SELECT NO FROM BANK_OWNER"), "3\n");
}

TEST_F(Rights, OfDatabasesThatDifferInCaseAreThoseOfEach)
{
    Run("INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY) SELECT 'Bank', DEFAULT_DIRECTORY FROM TW_DB "
        "WHERE DATABASE_NAME = 'BANK'");
    for (const char* table : {"TW_TABLE", "TW_COLUMN"})
        Run(std::string("UPDATE ") + table + " SET DATABASE_NAME = 'Bank' WHERE TABLE_NAME = 'OWNER'");
    ExpectRefused(As("AUDITOR"), "SELECT NO FROM BANK_OWNER", "read the table");
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, ALLOW_SELECT) VALUES ('OTHER', 'Bank', 1)");
    EXPECT_EQ(Rows(As("OTHER"), "SELECT NO FROM BANK_OWNER"), "3\n");
    ExpectRefused(As("OTHER"), "SELECT NO FROM BANK_ACCOUNT", "read the table");
}

TEST_F(Rights, OfADatabaseWhoseNameBeginsLikeTheCatalogsAreItsOwn)
{
    Run("INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY) SELECT 'TW_OLD', DEFAULT_DIRECTORY FROM TW_DB "
        "WHERE DATABASE_NAME = 'BANK'");
    for (const char* table : {"TW_TABLE", "TW_COLUMN"}) {
        const std::string rows = std::string("SELECT * FROM ") + table + " WHERE TABLE_NAME = 'OWNER'";
        Run("CREATE TABLE MOVED AS " + rows);
        Run("UPDATE MOVED SET DATABASE_NAME = 'TW_OLD'");
        Run(std::string("INSERT INTO ") + table + " SELECT * FROM MOVED");
        Run("DROP TABLE MOVED");
    }
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, ALLOW_SELECT) VALUES ('OLDIE', 'TW_OLD', 1)");
    EXPECT_EQ(Rows("SELECT NO FROM TW_OLD_OWNER"), "3\n");
    EXPECT_EQ(Rows(As("OLDIE"), "SELECT NO FROM TW_OLD_OWNER"), "3\n");
    ExpectRefused(As("CLERK"), "SELECT NO FROM TW_OLD_OWNER", "read the table TW_OLD_OWNER");
}

TEST_F(Rights, DoNotReachBeyondTheCatalog)
{
    OdbcClient& clerk = As("CLERK");
    ExpectRefused(clerk, "SELECT blob_export(x'00', '" + setup.File("out") + "')", "call the function blob_export");
    EXPECT_FALSE(std::filesystem::exists(setup.File("out")));
    EXPECT_EQ(Rows(clerk, "SELECT upper('x')"), "X\n");
    ExpectRefused(clerk, "SELECT blob_import('" + setup.File("c.cat") + "')", "call the function blob_import");
    ExpectRefused(clerk, "SELECT load_extension('" + setup.File("c.cat") + "')", "call the function load_extension");
    ExpectRefused(clerk, "VACUUM INTO '" + setup.File("copy") + "'", "change the catalog's file");
    EXPECT_FALSE(std::filesystem::exists(setup.File("copy")));
}

TEST_F(Rights, DoNotReachBeyondTheCatalogThroughACriteriaEither)
{
    Run("UPDATE TW_TABLE SET CRITERIA = 'blob_export(x''00'', ''" + setup.File("out") +
        "'') IS NOT NULL' WHERE TABLE_NAME = 'OWNER'");
    Run("UPDATE TW_TABLE SET CRITERIA = 'EXISTS (SELECT 1 FROM pragma_optimize)' WHERE TABLE_NAME = 'ACCOUNT'");
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT) VALUES "
        "('CLERK', 'BANK', 'DATABASE', 1)");
    for (const char* user : {"", "ADMIN", "CLERK"}) {
        OdbcClient& reader = As(user);
        EXPECT_NE(Failure(reader, "SELECT * FROM BANK_OWNER")
                      .find("The criteria of the table BANK_OWNER cannot be applied: not authorized to use function: "
                            "blob_export"),
                  std::string::npos)
            << user;
        EXPECT_FALSE(std::filesystem::exists(setup.File("out"))) << user;
        EXPECT_NE(Failure(reader, "SELECT * FROM BANK_ACCOUNT").find("not authorized"), std::string::npos) << user;
    }
    Run("UPDATE TW_TABLE SET CRITERIA = 'EXISTS (SELECT 1 FROM pragma_table_info(''TW_FILE'')) AND upper(''x'') = "
        "''X''' WHERE TABLE_NAME = 'OWNER'");
    EXPECT_EQ(Rows(As("CLERK"), "SELECT NO FROM BANK_OWNER"), "3\n");
    EXPECT_EQ(Rows("SELECT blob_export(x'00', '" + setup.File("out") + "')"), "1\n")
        << "what the administrator writes itself is run";
    EXPECT_TRUE(std::filesystem::exists(setup.File("out")));
}

TEST_F(Rights, OfTheCatalogDoNotReachHowItsFileIsMadeUp)
{
    Run("UPDATE TW_DBPRV SET ALLOW_INSERT = 1, ALLOW_DELETE = 1 WHERE USER_NAME = 'CLERK'");
    const std::string structure = Rows("SELECT name, sql FROM sqlite_master ORDER BY 1");
    OdbcClient& clerk = As("CLERK");
    for (const char* statement :
         {"CREATE TEMP TABLE X (Y)", "CREATE TEMP VIEW X AS SELECT 1", "PRAGMA writable_schema = ON", "VACUUM",
          "CREATE TEMP TRIGGER X DELETE ON TW_FILE BEGIN SELECT 1; END"})
        EXPECT_NE(Failure(clerk, statement).find("privileges"), std::string::npos) << statement;
    for (const char* statement : {"UPDATE sqlite_master SET sql = ''", "DELETE FROM sqlite_master"})
        EXPECT_NE(Failure(clerk, statement).find("table sqlite_master may not be modified"), std::string::npos);
    EXPECT_EQ(Rows("SELECT name, sql FROM sqlite_master ORDER BY 1"), structure);
}

TEST_F(Rights, FunctionsThatGiveRowsAreOpenToAll)
{
    OdbcClient& nobody = As("NOBODY");
    EXPECT_EQ(Rows(nobody, "SELECT value FROM json_each('[7, 8]')"), "7\n8\n");
    EXPECT_EQ(Rows(nobody, "SELECT COUNT(*) FROM json_tree('{\"a\": [1]}')"), "3\n");
    EXPECT_EQ(Rows(nobody, "SELECT name FROM pragma_table_info('TW_FILE') WHERE cid = 0"), "FILE_NAME\n");
    EXPECT_EQ(Rows(nobody, "SELECT name FROM pragma_database_list WHERE seq = 0"), "main\n");
    ExpectRefused(nobody, "SELECT value FROM json_each((SELECT USER_NAME FROM TW_USER))", "read the table TW_USER");
    EXPECT_NE(Failure(nobody, "SELECT * FROM pragma_journal_mode").find("privileges"), std::string::npos);
}

TEST_F(Rights, AreNotNeededForNamesNorForWhatIsNoTableOfTheCatalog)
{
    Run("CREATE TABLE SHOPPING (WHAT VARCHAR(10))");
    Run("INSERT INTO SHOPPING VALUES ('milk')");
    Run("CREATE VIEW WANTED AS SELECT WHAT FROM SHOPPING");
    OdbcClient& nobody = As("NOBODY");
    EXPECT_EQ(Rows(nobody, "SELECT * FROM WANTED"), "milk\n");
    ExpectRefused(nobody, "DELETE FROM SHOPPING", "delete from the table SHOPPING");
    ExpectRefused(nobody, "REPLACE INTO SHOPPING VALUES ('tea')", "delete from the table SHOPPING");
    std::vector<SQLWCHAR> name = Wide("BANK\\_OWNER");
    const Result columns = nobody.Read([&](SQLHSTMT statement) {
        return SQLColumnsW(statement, nullptr, 0, nullptr, 0, name.data(), SQL_NTS, nullptr, 0);
    });
    ASSERT_EQ(columns.rows.size(), 1u) << columns.diagnostic.message;
    EXPECT_EQ(columns.rows[0][3], "NO");
}

TEST_F(Rights, ThatCannotBeReadKeepTheConnectionShut)
{
    Run("DROP TABLE TW_DBPRV");
    OdbcClient client;
    EXPECT_FALSE(client.Connect("Driver=Tarnwick ODBC;UID=TELLER;Catalog=" + setup.File("c.cat")));
    EXPECT_EQ(client.Failure().state, "08001");
    EXPECT_NE(client.Failure().message.find("The privileges of the user TELLER cannot be read: no such table"),
              std::string::npos)
        << client.Failure().message;
    Connect(client, "UID=ADMIN");
    EXPECT_EQ(Rows(client, "SELECT NO FROM BANK_OWNER"), "3\n");
}

TEST_F(Rights, OfTheAdministratorSurviveAClearedCatalog)
{
    for (const char* table : {"TW_DBPRV", "TW_TBLPRV", "TW_USER"})
        Run("DELETE FROM " + std::string(table));
    OdbcClient& admin = As("admin");
    EXPECT_EQ(Rows(admin, "SELECT NO FROM BANK_ACCOUNT"), "1\n2\n");
    Run(admin, "INSERT INTO TW_USER (USER_NAME) VALUES ('X')");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM TW_USER"), "1\n");
}

TEST_F(Rights, AreThoseOfTheMomentOfConnecting)
{
    OdbcClient& teller = As("TELLER");
    Run("DELETE FROM TW_DBPRV");
    EXPECT_EQ(Rows(teller, "SELECT NO FROM BANK_ACCOUNT"), "1\n2\n");
    ExpectRefused(As("TELLER"), "SELECT NO FROM BANK_ACCOUNT", "read the table BANK_ACCOUNT");
}

TEST_F(Rights, OfWhoReadsATableReachWhatItsCriteriaReads)
{
    Run("UPDATE TW_TABLE SET CRITERIA = 'BANK_ACCOUNT.NO < (SELECT MAX(NO) FROM BANK_OWNER) AND NO <> 1' "
        "WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(Rows(As("TELLER"), "SELECT NO FROM BANK_ACCOUNT"), "2\n");
}

TEST_F(Rights, LeaveWhatTheDriverItselfAsks)
{
    OdbcClient& nobody = As("NOBODY");
    const Result types = nobody.Read([](SQLHSTMT statement) { return SQLGetTypeInfo(statement, SQL_ALL_TYPES); });
    EXPECT_GT(types.rows.size(), 10u) << types.diagnostic.message;
}

TEST_F(Rights, AreThoseOfTheUserOfTheDatasourceOrOfTheCall)
{
    const std::string named = setup.AddDataSource({"Catalog = " + setup.File("c.cat"), "UID = READER"});
    OdbcClient reader;
    ASSERT_TRUE(reader.Connect("DSN=" + named)) << reader.Failure().message;
    ExpectRefused(reader, "SELECT NO FROM BANK_ACCOUNT", "read the table BANK_ACCOUNT");
    SQLHENV environment = nullptr;
    SQLHDBC connection = nullptr;
    SQLHSTMT statement = nullptr;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment);
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection);
    const auto text = [](const char* literal) { return reinterpret_cast<SQLCHAR*>(const_cast<char*>(literal)); };
    ASSERT_TRUE(SQL_SUCCEEDED(
        SQLConnect(connection, text(named.c_str()), SQL_NTS, text("AUDITOR"), SQL_NTS, text(""), SQL_NTS)));
    SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
    EXPECT_TRUE(SQL_SUCCEEDED(SQLExecDirect(statement, text("SELECT NO FROM BANK_ACCOUNT"), SQL_NTS)));
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    SQLDisconnect(connection);
    SQLFreeHandle(SQL_HANDLE_DBC, connection);
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
}
