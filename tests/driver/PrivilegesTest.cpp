#include "RecordsFixture.h"

namespace
{

/// A catalog with the tables BANK_ACCOUNT and BANK_OWNER, and users with rights of every kind.
class Rights : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        Make("ACCOUNT", {{"NO", "ZONED-U", 2}}, "0102");
        Make("OWNER", {{"NO", "ZONED-U", 2}}, "03");
        Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_UPDATE) VALUES "
            "('AUDITOR', 'BANK', 'DATABASE', 1, 0), ('TELLER', 'BANK', 'TABLE', 1, 1), "
            "('CLERK', 'TW', 'DATABASE', 1, 1), ('READER', 'TW', 'TABLE', 0, 0)");
        Run("INSERT INTO TW_TBLPRV (USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT) VALUES "
            "('TELLER', 'BANK', 'ACCOUNT', 1), ('READER', 'TW', 'FILE', 1)");
    }

    /// A client that is connected as a user.
    OdbcClient& As(const std::string& user)
    {
        m_client.emplace();
        Connect(*m_client, "UID=" + user);
        return *m_client;
    }

    static void ExpectRefused(OdbcClient& on, const std::string& statement, const std::string& action)
    {
        const Result result = on.Execute(statement);
        EXPECT_FALSE(result.Succeeded()) << statement;
        EXPECT_NE(result.diagnostic.message.find("does not have the privileges to " + action), std::string::npos)
            << statement << ": " << result.diagnostic.message;
        EXPECT_EQ(result.diagnostic.state, "42000");
    }

private:
    std::optional<OdbcClient> m_client;
};

} // namespace

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
