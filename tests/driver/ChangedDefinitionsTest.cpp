// Definitions that change while a connection, a statement or a result is open.

#include "RecordTables.h"
#include "RecordsFixture.h"

#include <sqlite3.h>
#include <sqlucode.h>

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

TEST_F(ChangedDefinitions, CountForTheViewsOverThem)
{
    Run("CREATE VIEW SEEN AS SELECT * FROM BANK_ACCOUNT");
    OdbcClient another;
    Connect(another);
    EXPECT_EQ(Rows(another, "SELECT NAME, BALANCE FROM SEEN WHERE NO = 2"), "Ivy|-7.5\n");
    std::string text = "SELECT * FROM SEEN WHERE NAME = 'Ivy'";
    SQLHSTMT statement = another.NewStatement();
    ASSERT_EQ(SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), SQL_SUCCESS);
    const auto columns = [&] {
        std::vector<SQLWCHAR> name = Wide("SEEN");
        std::string names;
        for (const Row& row : another
                                  .Read([&](SQLHSTMT handle) {
                                      return SQLColumnsW(handle, nullptr, 0, nullptr, 0, name.data(), SQL_NTS, nullptr,
                                                         0);
                                  })
                                  .rows)
            names += row[3].value_or("~") + " ";
        return names;
    };
    EXPECT_EQ(columns(), "NO NAME BALANCE ");

    Run("UPDATE TW_COLUMN SET COLUMN_NUMBER = 9 WHERE COLUMN_NAME = 'NAME'");
    EXPECT_EQ(Rows(another, "SELECT NAME, BALANCE FROM SEEN WHERE NO = 2"), "Ivy|-7.5\n");
    EXPECT_EQ(columns(), "NO BALANCE NAME ");
    Run("UPDATE TW_COLUMN SET COLUMN_NAME = 'OWNER' WHERE COLUMN_NAME = 'NAME'");
    EXPECT_EQ(Rows(another, "SELECT OWNER FROM SEEN WHERE NO = 2"), "Ivy\n");
    EXPECT_TRUE(Holds(Failure(another, "SELECT NAME FROM SEEN"), "no such column"));
    Run("UPDATE TW_COLUMN SET COLUMN_NAME = 'NAME' WHERE COLUMN_NAME = 'OWNER'");
    Run("UPDATE TW_COLUMN SET VISIBLE = 0 WHERE COLUMN_NAME = 'NO'");
    ASSERT_TRUE(SQL_SUCCEEDED(SQLExecute(statement))) << OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).message;
    SQLSMALLINT count = 0;
    SQLNumResultCols(statement, &count);
    EXPECT_EQ(count, 2);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    EXPECT_EQ(columns(), "BALANCE NAME ");
    EXPECT_EQ(Rows(another, "SELECT * FROM SEEN WHERE NAME = 'Ivy'"), "-7.5|Ivy\n");
    Run("DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ACCOUNT'");
    EXPECT_TRUE(Holds(Failure(another, "SELECT * FROM SEEN"), "no such table"));
    EXPECT_EQ(columns(), "");
    Run("INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION) VALUES "
        "('BANK', 'ACCOUNT', 'ACCOUNT', 'ACCOUNT.dat')");
    Run("UPDATE TW_COLUMN SET VISIBLE = 1");
    EXPECT_EQ(Rows(another, "SELECT * FROM SEEN WHERE NO = 2"), "2|-7.5|Ivy\n");
}

TEST_F(ChangedDefinitions, CountForTheViewsThatOneConnectionMakesItself)
{
    Run("CREATE TEMP VIEW SEEN AS SELECT * FROM BANK_ACCOUNT");
    Run("CREATE TEMP VIEW SEEN_AGAIN AS SELECT * FROM SEEN");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN_AGAIN WHERE NO = 2"), "Ivy\n");
    Run("PRAGMA writable_schema = ON");
    Run("UPDATE TW_COLUMN SET COLUMN_NUMBER = 9 WHERE COLUMN_NAME = 'NAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN_AGAIN WHERE NO = 2"), "Ivy\n");
    EXPECT_EQ(Rows("PRAGMA writable_schema"), "1\n") << "what a client has set stays";
    Run("PRAGMA writable_schema = OFF");
    Run("UPDATE TW_COLUMN SET COLUMN_NUMBER = 2 WHERE COLUMN_NAME = 'NAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN_AGAIN WHERE NO = 2"), "Ivy\n");
    EXPECT_EQ(Rows("PRAGMA writable_schema"), "0\n");
}

TEST_F(ChangedDefinitions, CountForViewsAmidATransactionThatMakesAndUnmakesTables)
{
    Run("CREATE VIEW SEEN AS SELECT * FROM BANK_ACCOUNT");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN WHERE NO = 2"), "Ivy\n");
    Run("BEGIN");
    Run("CREATE TABLE MADE (X VARCHAR(9))");
    Run("INSERT INTO MADE VALUES ('made')");
    Run("CREATE VIEW SEEN_TOO AS SELECT a.NAME, m.X FROM SEEN a, MADE m");
    Run("UPDATE TW_COLUMN SET COLUMN_NUMBER = 9 WHERE COLUMN_NAME = 'NAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN WHERE NO = 2"), "Ivy\n");
    EXPECT_EQ(Rows("SELECT * FROM SEEN_TOO LIMIT 1"), "Harry|made\n");
    Run("ROLLBACK");
    // As many changes of the file as were taken back: by their number alone nobody sees that they are others.
    OdbcClient another;
    Connect(another);
    Run(another, "CREATE TABLE OTHER (Y VARCHAR(9))");
    Run(another, "INSERT INTO OTHER VALUES ('other')");
    Run(another, "CREATE VIEW SEEN_OTHERWISE AS SELECT * FROM OTHER");
    EXPECT_TRUE(Holds(Failure("SELECT * FROM MADE"), "no such table: MADE"));
    EXPECT_TRUE(Holds(Failure("SELECT * FROM SEEN_TOO"), "no such table: SEEN_TOO"));
    EXPECT_EQ(Rows("SELECT * FROM SEEN_OTHERWISE"), "other\n");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN WHERE NO = 2"), "Ivy\n");

    Run("BEGIN");
    Run("CREATE TABLE MADE (X VARCHAR(9))");
    Run("UPDATE TW_COLUMN SET COLUMN_NUMBER = 9 WHERE COLUMN_NAME = 'NAME'");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN WHERE NO = 2"), "Ivy\n");
    Run("COMMIT");
    EXPECT_EQ(Rows(another, "SELECT COUNT(*) FROM MADE"), "0\n");
    Run(another, "CREATE TABLE YET_ANOTHER (Z VARCHAR(9))");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM MADE"), "0\n");
    EXPECT_EQ(Rows("SELECT NAME FROM SEEN WHERE NO = 2"), "Ivy\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM YET_ANOTHER"), "0\n");
}

TEST_F(ChangedDefinitions, LeaveWhatIsHalfReadWhole)
{
    Run("CREATE VIEW SEEN AS SELECT * FROM BANK_ACCOUNT");
    const auto open = [&] {
        sqlite3* engine = nullptr;
        EXPECT_EQ(sqlite3_open(setup.File("c.cat").c_str(), &engine), SQLITE_OK);
        return engine;
    };
    const std::string late = " a, TW_FILE f WHERE f.FILE_NAME = 'ACCOUNT' UNION ALL SELECT (SELECT MAX(NAME) FROM "
                             "BANK_ACCOUNT b WHERE b.NO <= c.NO), 'late' FROM BANK_ACCOUNT c";
    for (const std::string table : {"BANK_ACCOUNT", "SEEN"}) {
        sqlite3* const engine = open();
        {
            tarnwick::records::RecordTables tables(engine, {"", setup.File(""), {}},
                                                   tarnwick::records::BadFields::Error);
            const std::string query = "SELECT NAME, FILE_NAME FROM " + table + late;
            tables.MakeReady(query);
            sqlite3_stmt* reading = nullptr;
            ASSERT_EQ(sqlite3_prepare_v2(engine, query.c_str(), -1, &reading, nullptr), SQLITE_OK)
                << sqlite3_errmsg(engine);
            ASSERT_EQ(sqlite3_step(reading), SQLITE_ROW);
            const char* const changes[] = {"UPDATE TW_COLUMN SET COLUMN_NUMBER = 9 WHERE COLUMN_NAME = 'NAME'",
                                           "UPDATE TW_COLUMN SET VISIBLE = 0 WHERE COLUMN_NAME = 'BALANCE'"};
            for (const char* change : changes) {
                EXPECT_EQ(sqlite3_exec(engine, change, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(engine);
                const char* const another = "SELECT NAME FROM SEEN";
                tables.MakeReady(another);
                EXPECT_EQ(sqlite3_exec(engine, another, nullptr, nullptr, nullptr), SQLITE_OK)
                    << sqlite3_errmsg(engine);
            }
            std::string rows;
            int answer = SQLITE_ROW;
            for (; answer == SQLITE_ROW; answer = sqlite3_step(reading))
                for (const int column : {0, 1})
                    rows += reinterpret_cast<const char*>(sqlite3_column_text(reading, column)) + " "s;
            EXPECT_EQ(answer, SQLITE_DONE) << sqlite3_errmsg(engine);
            EXPECT_EQ(rows, "Harry ACCOUNT Ivy ACCOUNT  ACCOUNT Harry late Ivy late Ivy late ") << table;
            EXPECT_EQ(sqlite3_reset(reading), SQLITE_OK);
            EXPECT_EQ(sqlite3_step(reading), SQLITE_ROW) << sqlite3_errmsg(engine);
            sqlite3_finalize(reading);
            sqlite3_close(engine);
        }
        Run("UPDATE TW_COLUMN SET COLUMN_NUMBER = 2, VISIBLE = 1 WHERE COLUMN_NAME = 'NAME'");
        Run("UPDATE TW_COLUMN SET VISIBLE = 1");
    }
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
