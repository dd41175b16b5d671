// Definitions that change while a connection, a statement or a result is open.

#include "RecordTables.h"
#include "RecordsFixture.h"

#include <sqlite3.h>

#include <atomic>
#include <fstream>
#include <future>
#include <thread>
#include <unistd.h>

namespace
{

using namespace std::string_literals;

/// Three accounts: one in credit, one in debit, one of nobody.
class ChangedDefinitions : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        Make("ACCOUNT", {{"NO", "ZONED-U", 4}, {"NAME", "STRING", 6}, {"BALANCE", "PACKED", 3, 2}},
             "0001Harry \x12\x34\x5C"
             "0002Ivy   \x00\x75\x0D"
             "0003      \x00\x00\x0C"s);
    }
};

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// Whether a thread of this process waits for something.
bool IsAsleep(pid_t thread)
{
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return Holds(text, ") S ");
}

} // namespace

TEST_F(ChangedDefinitions, CountAtOnce)
{
    OdbcClient another;
    Connect(another);
    EXPECT_EQ(Rows(another, "SELECT NAME FROM BANK_ACCOUNT LIMIT 1"), "Harry\n");
    Run("UPDATE TW_FIELD SET LENGTH = 3 WHERE FIELD_NAME = 'NAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT LIMIT 1"), "Har\n");
    EXPECT_EQ(Rows(another, "SELECT NAME FROM BANK_ACCOUNT LIMIT 1"), "Har\n");
    Run("DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_TRUE(Holds(Failure("SELECT NAME FROM BANK_ACCOUNT"), "no such table"));
    EXPECT_TRUE(Holds(Failure(another, "SELECT NAME FROM BANK_ACCOUNT"), "no such table"));
}

TEST_F(ChangedDefinitions, CountForAPreparedStatementWhenItRuns)
{
    std::string text = "SELECT NAME FROM BANK_ACCOUNT";
    SQLHSTMT statement = client.NewStatement();
    ASSERT_EQ(SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    const auto names = [&] {
        EXPECT_TRUE(SQL_SUCCEEDED(SQLExecute(statement)))
            << OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).message;
        std::string all;
        char name[16] = "";
        while (SQL_SUCCEEDED(SQLFetch(statement)) &&
               SQL_SUCCEEDED(SQLGetData(statement, 1, SQL_C_CHAR, name, sizeof name, nullptr)))
            all += std::string(name) + "\n";
        SQLFreeStmt(statement, SQL_CLOSE);
        return all;
    };
    EXPECT_EQ(names(), "Harry\nIvy\n\n");
    OdbcClient another;
    Connect(another);
    Run(another, "UPDATE TW_TABLE SET CRITERIA = 'BALANCE < 0' WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(names(), "Ivy\n");
    Run(another, "UPDATE TW_FIELD SET LENGTH = 2 WHERE FIELD_NAME = 'NAME'");
    EXPECT_EQ(names(), "Iv\n");
    Run(another, "DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_EQ(SQLExecute(statement), SQL_ERROR);
    EXPECT_TRUE(Holds(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).message, "no such table"));
    EXPECT_EQ(SQLExecute(statement), SQL_ERROR);
    Run(another, "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION) VALUES "
                 "('BANK', 'ACCOUNT', 'ACCOUNT', 'ACCOUNT.dat')");
    EXPECT_EQ(names(), "Ha\nIv\n\n") << "it is there again";
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(ChangedDefinitions, CountForTheNumbersOfAPreparedStatement)
{
    DefineFile("SUM", {{"AMOUNT", "ZONED-U", 9}}, "SEQUENTIAL", "FIXED", "", 20);
    DefineTable("SUM", "SUM", "sum.dat");
    WriteData("sum.dat", "1234567890123456788812345678901234567889");
    std::string text = "SELECT COUNT(*) FROM BANK_SUM WHERE AMOUNT = 12345678901234567889";
    SQLHSTMT statement = client.NewStatement();
    ASSERT_EQ(SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    const auto found = [&] {
        EXPECT_TRUE(SQL_SUCCEEDED(SQLExecute(statement)))
            << OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).message;
        SQLINTEGER count = -1;
        SQLFetch(statement);
        SQLGetData(statement, 1, SQL_C_SLONG, &count, 0, nullptr);
        SQLFreeStmt(statement, SQL_CLOSE);
        return count;
    };
    EXPECT_EQ(found(), 0);
    Run("UPDATE TW_FIELD SET LENGTH = 20 WHERE FIELD_NAME = 'AMOUNT'");
    EXPECT_EQ(Rows(text), "1\n");
    EXPECT_EQ(found(), 1);
    Run("UPDATE TW_FIELD SET LENGTH = 9 WHERE FIELD_NAME = 'AMOUNT'");
    EXPECT_EQ(found(), 0);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(ChangedDefinitions, LeaveAnOpenResultAsItWasRead)
{
    SQLHSTMT statement = client.NewStatement();
    char names[2][16] = {};
    SQLLEN lengths[2] = {};
    SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(SQLULEN{2}), 0);
    SQLBindCol(statement, 1, SQL_C_CHAR, names, sizeof names[0], lengths);
    std::string text = "SELECT NAME FROM BANK_ACCOUNT WHERE NAME <> '' ORDER BY NO DESC";
    ASSERT_EQ(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_STREQ(names[0], "Ivy");
    OdbcClient another;
    Connect(another);
    Run(another, "UPDATE TW_FIELD SET LENGTH = 2 WHERE FIELD_NAME = 'NAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM BANK_ACCOUNT WHERE NO = 1"), "Ha\n");
    ASSERT_EQ(SQLFetchScroll(statement, SQL_FETCH_FIRST, 0), SQL_SUCCESS);
    EXPECT_STREQ(names[1], "Harry");
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(ChangedDefinitions, DoNotComeBackByAnotherThread)
{
    Run("UPDATE TW_DB SET DEFAULT_DIRECTORY = 'DATA:' WHERE DATABASE_NAME = 'BANK'");
    sqlite3* engine = nullptr;
    ASSERT_EQ(sqlite3_open(setup.File("c.cat").c_str(), &engine), SQLITE_OK);
    std::promise<void> hasReadOld;
    std::atomic<pid_t> newerThread = 0;
    std::atomic<bool> hasMadeNewReady = false;
    std::atomic<bool> isFirst = true;
    // The first thread to read the definition asks for its directory amid that, and waits there for the second one, as
    // long as that does not wait in its turn.
    const auto directoryOf = [&](const std::string&) {
        if (isFirst.exchange(false)) {
            hasReadOld.set_value();
            while (!hasMadeNewReady && (newerThread == 0 || !IsAsleep(newerThread)))
                std::this_thread::yield();
        }
        return setup.File("data");
    };
    const char* const query = "SELECT COUNT(*) FROM BANK_ACCOUNT";
    {
        tarnwick::records::RecordTables tables(engine, {"", setup.File(""), directoryOf},
                                               tarnwick::records::BadFields::Error);
        std::thread older([&] { tables.MakeReady(query); });
        hasReadOld.get_future().wait();
        EXPECT_EQ(sqlite3_exec(engine, "UPDATE TW_TABLE SET CRITERIA = 'NO = 2' WHERE TABLE_NAME = 'ACCOUNT'", nullptr,
                               nullptr, nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(engine);
        std::thread newer([&] {
            newerThread = ::gettid();
            tables.MakeReady(query);
            hasMadeNewReady = true;
        });
        older.join();
        newer.join();
        std::string count;
        const auto take = [](void* text, int, char** cells, char**) {
            *static_cast<std::string*>(text) = cells[0];
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(engine, query, take, &count, nullptr), SQLITE_OK) << sqlite3_errmsg(engine);
        EXPECT_EQ(count, "1");
        sqlite3_close(engine);
    }
}
