#include "RecordsFixture.h"

#include <sqlucode.h>

#include <array>

using namespace std::string_literals;

/// What is told of result columns and of the columns of tables.
using Describe = Records;

TEST_F(Describe, DatesAndTimesAreTheSameWhereverOneAsks)
{
    Make("DIARY", {{"DAY", "DATE", 10, 0, "DD.MM.YYYY"}, {"AT", "TIME-HHMMSS", 6}, {"SEEN", "TIMESTAMP-8", 8}},
         "31.12.1998235958\x80\x8F\xFD\x4B\x67\x95\x7C\x00"s);
    EXPECT_EQ(Rows("SELECT SEEN FROM BANK_DIARY"), "1970-01-01 00:00:00.12\n");
    struct Expected {
        SQLSMALLINT type;
        SQLLEN size;
        SQLSMALLINT digits;
        SQLLEN bytes;
    };
    const Expected expected[] = {{SQL_TYPE_DATE, 10, 0, 6}, {SQL_TYPE_TIME, 8, 0, 6}, {SQL_TYPE_TIMESTAMP, 22, 2, 16}};
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> query = Wide("SELECT * FROM BANK_DIARY");
    ASSERT_EQ(SQLExecDirectW(statement, query.data(), SQL_NTS), SQL_SUCCESS);
    for (SQLUSMALLINT column = 1; column <= 3; ++column) {
        const Expected& as = expected[column - 1];
        std::array<SQLWCHAR, 50> name{};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLSMALLINT digits = -1;
        SQLSMALLINT nullable = 0;
        SQLULEN size = 0;
        ASSERT_EQ(SQLDescribeColW(statement, column, name.data(), static_cast<SQLSMALLINT>(name.size()), &length, &type,
                                  &size, &digits, &nullable),
                  SQL_SUCCESS);
        EXPECT_EQ(type, as.type);
        EXPECT_EQ(static_cast<SQLLEN>(size), as.size);
        EXPECT_EQ(digits, as.digits);
        const auto field = [&](SQLUSMALLINT number) {
            SQLLEN value = -1;
            EXPECT_EQ(SQLColAttributeW(statement, column, number, nullptr, 0, nullptr, &value), SQL_SUCCESS);
            return value;
        };
        EXPECT_EQ(field(SQL_DESC_CONCISE_TYPE), as.type);
        EXPECT_EQ(field(SQL_DESC_TYPE), SQL_DATETIME);
        EXPECT_EQ(field(SQL_DESC_DATETIME_INTERVAL_CODE), column);
        EXPECT_EQ(field(SQL_DESC_DISPLAY_SIZE), as.size);
        EXPECT_EQ(field(SQL_DESC_LENGTH), as.size);
        EXPECT_EQ(field(SQL_DESC_PRECISION), as.digits);
        EXPECT_EQ(field(SQL_DESC_OCTET_LENGTH), as.bytes);
    }
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    std::vector<SQLWCHAR> table = Wide("BANK_DIARY");
    const Result columns = client.Read([&](SQLHSTMT handle) {
        return SQLColumnsW(handle, nullptr, 0, nullptr, 0, table.data(), SQL_NTS, nullptr, 0);
    });
    ASSERT_EQ(columns.rows.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(columns.rows[i][4], std::to_string(expected[i].type));
        EXPECT_EQ(columns.rows[i][6], std::to_string(expected[i].size));
        EXPECT_EQ(columns.rows[i][8], std::to_string(expected[i].digits));
        EXPECT_EQ(columns.rows[i][13], "9");
        EXPECT_EQ(columns.rows[i][14], std::to_string(i + 1));
    }
}
