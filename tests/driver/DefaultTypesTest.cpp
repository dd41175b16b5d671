#include "ValuesFixture.h"

#include <array>

using namespace std::string_literals;

namespace
{

/// What columns become for a client that leaves the C type to the driver.
class DefaultTypes : public Values
{
protected:
    void SetUp() override
    {
        Values::SetUp();
        Make("DIARY", {{"DAY", "DATE", 10, 0, "DD.MM.YYYY"}, {"AT", "TIME-HHMMSS", 6}, {"SEEN", "TIMESTAMP-8", 8}},
             "31.12.1998235958\x80\x8F\xFD\x4B\x67\x95\x7C\x00"s);
    }

    /// A table whose columns are declared as unsigned numbers of one, two and four bytes.
    void MakeCounters()
    {
        Make("COUNTER", {{"TINY", "UNSIGNED-1", 1}, {"SMALL", "UNSIGNED-2", 2}, {"LARGE", "UNSIGNED-4", 4}},
             "\xC8\x40\x9C\xFF\xFF\xFF\xFF"s);
        const auto declare = [&](const std::string& column, const std::string& type) {
            Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = '" + type +
                "', UNSIGNED_ATTRIBUTE = 1 WHERE TABLE_NAME = 'COUNTER' AND COLUMN_NAME = '" + column + "'");
        };
        declare("TINY", "TINYINT");
        declare("SMALL", "SMALLINT");
        declare("LARGE", "INTEGER");
    }

    SQLLEN Field(SQLUSMALLINT column, SQLUSMALLINT field) const
    {
        SQLLEN value = -1;
        EXPECT_EQ(SQLColAttributeW(statement, column, field, nullptr, 0, nullptr, &value), SQL_SUCCESS);
        return value;
    }
};

/// A connection of a client that was written for ODBC 2.
class OlderClient
{
public:
    explicit OlderClient(const std::string& catalog)
    {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC2), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        std::vector<SQLWCHAR> text = Wide("Driver=Tarnwick ODBC;Catalog=" + catalog);
        EXPECT_TRUE(SQL_SUCCEEDED(
            SQLDriverConnectW(m_connection, nullptr, text.data(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)));
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &statement);
    }
    ~OlderClient()
    {
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        SQLDisconnect(m_connection);
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    OlderClient(const OlderClient&) = delete;
    OlderClient& operator=(const OlderClient&) = delete;

    void Open(const std::string& query) const
    {
        SQLFreeStmt(statement, SQL_CLOSE);
        std::vector<SQLWCHAR> text = Wide(query);
        ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    }

    SQLHSTMT statement = nullptr;

private:
    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
};

} // namespace

TEST_F(DefaultTypes, OfDatesAndTimesAreTheirStructures)
{
    EXPECT_EQ(Get<SQL_DATE_STRUCT>("SELECT DAY FROM BANK_DIARY", SQL_C_DEFAULT), "1998/12/31");
    EXPECT_EQ(Get<SQL_TIME_STRUCT>("SELECT AT FROM BANK_DIARY", SQL_C_DEFAULT), "23:59:58");
    EXPECT_EQ(Get<SQL_TIMESTAMP_STRUCT>("SELECT SEEN FROM BANK_DIARY", SQL_C_DEFAULT), "1970/1/1 0:0:0.120000000");
}

TEST_F(DefaultTypes, OfAnOlderClientAreTheSame)
{
    const OlderClient older(setup.File("c.cat"));
    SQL_DATE_STRUCT day{};
    SQL_TIME_STRUCT at{};
    SQL_TIMESTAMP_STRUCT seen{};
    std::array<SQLLEN, 3> bytes{};
    const auto expectRow = [&] {
        EXPECT_EQ(Shown(day), "1998/12/31");
        EXPECT_EQ(Shown(at), "23:59:58");
        EXPECT_EQ(Shown(seen), "1970/1/1 0:0:0.120000000");
        EXPECT_EQ(bytes, (std::array<SQLLEN, 3>{sizeof day, sizeof at, sizeof seen}));
    };
    older.Open("SELECT * FROM BANK_DIARY");
    ASSERT_EQ(SQLFetch(older.statement), SQL_SUCCESS);
    EXPECT_EQ(SQLGetData(older.statement, 1, SQL_C_DEFAULT, &day, sizeof day, &bytes[0]), SQL_SUCCESS);
    EXPECT_EQ(SQLGetData(older.statement, 2, SQL_C_DEFAULT, &at, sizeof at, &bytes[1]), SQL_SUCCESS);
    EXPECT_EQ(SQLGetData(older.statement, 3, SQL_C_DEFAULT, &seen, sizeof seen, &bytes[2]), SQL_SUCCESS);
    expectRow();

    day = {};
    at = {};
    seen = {};
    bytes = {};
    older.Open("SELECT * FROM BANK_DIARY");
    SQLBindCol(older.statement, 1, SQL_C_DEFAULT, &day, 0, &bytes[0]);
    SQLBindCol(older.statement, 2, SQL_C_DEFAULT, &at, 0, &bytes[1]);
    SQLBindCol(older.statement, 3, SQL_C_DEFAULT, &seen, 0, &bytes[2]);
    ASSERT_EQ(SQLFetch(older.statement), SQL_SUCCESS);
    expectRow();
}

TEST_F(DefaultTypes, OfAnOlderClientAreDescribedByItsNumbers)
{
    const OlderClient older(setup.File("c.cat"));
    older.Open("SELECT * FROM BANK_DIARY");
    struct Expected {
        SQLSMALLINT type;
        SQLULEN size;
        SQLSMALLINT digits;
        SQLLEN bytes;
    };
    const Expected expected[] = {{SQL_DATE, 10, 0, 6}, {SQL_TIME, 8, 0, 6}, {SQL_TIMESTAMP, 22, 2, 16}};
    for (SQLUSMALLINT column = 1; column <= 3; ++column) {
        const Expected& as = expected[column - 1];
        std::array<SQLWCHAR, 50> name{};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
        SQLSMALLINT digits = -1;
        SQLSMALLINT nullable = 0;
        ASSERT_EQ(SQLDescribeColW(older.statement, column, name.data(), static_cast<SQLSMALLINT>(name.size()), &length,
                                  &type, &size, &digits, &nullable),
                  SQL_SUCCESS);
        EXPECT_EQ(type, as.type);
        EXPECT_EQ(size, as.size);
        EXPECT_EQ(digits, as.digits);
        const auto field = [&](SQLUSMALLINT number) {
            SQLLEN value = -1;
            EXPECT_EQ(SQLColAttributesW(older.statement, column, number, nullptr, 0, nullptr, &value), SQL_SUCCESS);
            return value;
        };
        EXPECT_EQ(field(SQL_COLUMN_TYPE), as.type);
        EXPECT_EQ(field(SQL_COLUMN_PRECISION), static_cast<SQLLEN>(as.size));
        EXPECT_EQ(field(SQL_COLUMN_DISPLAY_SIZE), static_cast<SQLLEN>(as.size));
        EXPECT_EQ(field(SQL_COLUMN_SCALE), as.digits);
        EXPECT_EQ(field(SQL_COLUMN_LENGTH), as.bytes);
    }
}

TEST_F(DefaultTypes, OfUnsignedColumnsHoldTheirLargestNumbers)
{
    MakeCounters();
    const auto query = [](const char* column) { return "SELECT "s + column + " FROM BANK_COUNTER"; };
    EXPECT_EQ(Get<SQLCHAR>(query("TINY"), SQL_C_DEFAULT), "200");
    EXPECT_EQ(Get<SQLUSMALLINT>(query("SMALL"), SQL_C_DEFAULT), "40000");
    EXPECT_EQ(Get<SQLUINTEGER>(query("LARGE"), SQL_C_DEFAULT), "4294967295");
    EXPECT_EQ(Get<SQLINTEGER>(query("LARGE"), SQL_C_SLONG), "22003");
    Run("CREATE TABLE PLAIN (A INTEGER UNSIGNED, B INTEGER)");
    Run("INSERT INTO PLAIN VALUES (4294967295, -1)");
    EXPECT_EQ(Get<SQLUINTEGER>("SELECT A FROM PLAIN", SQL_C_DEFAULT), "4294967295");
    EXPECT_EQ(Get<SQLINTEGER>("SELECT B FROM PLAIN", SQL_C_DEFAULT), "-1");
}

TEST_F(DefaultTypes, OfNumbersAreWithoutASignWhereTheirColumnsAre)
{
    MakeCounters();
    Make("ACCOUNT", {{"NO", "INTEGER-2", 2}, {"AMOUNT", "PACKED", 10, 2}, {"RATE", "PACKED", 2, 2}},
         "\1\0\x12\x34\x56\x78\x90\x12\x34\x56\x78\x8D\x12\x3C"s);
    Open("SELECT TINY, SMALL, LARGE, NO, AMOUNT, RATE FROM BANK_COUNTER, BANK_ACCOUNT");
    for (SQLUSMALLINT column = 1; column <= 6; ++column)
        EXPECT_EQ(Field(column, SQL_DESC_UNSIGNED), column <= 3 ? SQL_TRUE : SQL_FALSE) << column;
}

TEST_F(DefaultTypes, AreFoundAnewForEachResult)
{
    std::array<char, 20> place{};
    SQLLEN bytes = 0;
    SQLINTEGER number = 0;
    for (int round = 0; round < 2; ++round) {
        Open("SELECT 7");
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DEFAULT, &number, 0, &bytes), SQL_SUCCESS);
        EXPECT_EQ(number, 7);
        Open("SELECT 'seven'");
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DEFAULT, place.data(), sizeof place, &bytes), SQL_SUCCESS);
        EXPECT_STREQ(place.data(), "seven");
    }
    SQLBindCol(statement, 1, SQL_C_DEFAULT, place.data(), sizeof place, &bytes);
    Open("SELECT 7");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(bytes, static_cast<SQLLEN>(sizeof number));
    Open("SELECT 'eight'");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_STREQ(place.data(), "eight");
}

TEST_F(DefaultTypes, AreThoseOfAResultThatFollowsOneReadToItsEnd)
{
    std::vector<SQLWCHAR> counters = Wide("SELECT SMALL FROM BANK_COUNTER");
    MakeCounters();
    const auto expectSmall = [&](bool isBound) {
        std::array<SQLUSMALLINT, 8> place;
        place.fill(0x5A5A);
        SQLLEN bytes = 0;
        if (isBound)
            SQLBindCol(statement, 1, SQL_C_DEFAULT, place.data(), sizeof place, &bytes);
        ASSERT_EQ(SQLExecDirectW(statement, counters.data(), SQL_NTS), SQL_SUCCESS);
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        const SQLRETURN answer = isBound ? SQLRETURN{SQL_SUCCESS}
                                         : SQLGetData(statement, 1, SQL_C_DEFAULT, place.data(), sizeof place, &bytes);
        EXPECT_EQ(answer, SQL_SUCCESS);
        EXPECT_EQ(bytes, static_cast<SQLLEN>(sizeof place[0]));
        EXPECT_EQ(place[0], 40000);
        EXPECT_EQ(place[1], 0x5A5A) << "bytes behind the number";
        SQLFreeStmt(statement, SQL_UNBIND);
    };
    std::array<char, 40> before{};
    SQLLEN bytes = 0;
    for (const bool isBound : {false, true}) {
        for (const char* text : {"SELECT CAST(1 AS BIGINT)", "SELECT 'one'", "SELECT SEEN FROM BANK_DIARY"}) {
            Open(text);
            ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
            EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DEFAULT, before.data(), sizeof before, &bytes), SQL_SUCCESS);
            EXPECT_EQ(SQLFetch(statement), SQL_NO_DATA);
            expectSmall(isBound);
        }
        Open("SELECT 'one'");
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DEFAULT, before.data(), sizeof before, &bytes), SQL_SUCCESS);
        SQLCancel(statement);
        expectSmall(isBound);
    }
    Open("SELECT 'one'");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DEFAULT, before.data(), sizeof before, &bytes), SQL_SUCCESS);
    EXPECT_EQ(SQLFetch(statement), SQL_NO_DATA);
    ASSERT_EQ(SQLGetTypeInfoW(statement, SQL_SMALLINT), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQLUSMALLINT type = 0;
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_DEFAULT, &type, sizeof type, &bytes), SQL_SUCCESS);
    EXPECT_EQ(type, SQL_SMALLINT);
}

TEST_F(DefaultTypes, OfAPreparedStatementFollowTheDefinition)
{
    MakeCounters();
    std::vector<SQLWCHAR> text = Wide("SELECT SMALL FROM BANK_COUNTER");
    ASSERT_EQ(SQLPrepareW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    std::array<char, 20> place{};
    SQLLEN bytes = 0;
    const auto read = [&] {
        EXPECT_EQ(SQLExecute(statement), SQL_SUCCESS);
        EXPECT_EQ(SQLFetch(statement), SQL_SUCCESS);
        EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DEFAULT, place.data(), sizeof place, &bytes), SQL_SUCCESS);
        SQLFreeStmt(statement, SQL_CLOSE);
        return bytes;
    };
    EXPECT_EQ(read(), static_cast<SQLLEN>(sizeof(SQLUSMALLINT)));
    Run("UPDATE TW_COLUMN SET SQL_TYPE_NAME = 'VARCHAR' WHERE TABLE_NAME = 'COUNTER'");
    EXPECT_EQ(read(), 5);
    EXPECT_STREQ(place.data(), "40000");
}
