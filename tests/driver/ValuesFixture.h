#pragma once

#include "RecordsFixture.h"

#include <sqlucode.h>

#include <cstring>
#include <limits>

/// One statement of a client that reads cells as numbers, dates and times.
class Values : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        statement = client.NewStatement();
    }
    void TearDown() override { SQLFreeHandle(SQL_HANDLE_STMT, statement); }

    void Open(const std::string& text)
    {
        SQLFreeStmt(statement, SQL_CLOSE);
        std::vector<SQLWCHAR> wide = Wide(text);
        ASSERT_EQ(SQLExecDirectW(statement, wide.data(), SQL_NTS), SQL_SUCCESS) << text;
    }

    std::string State() const { return OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state; }

    /// What the only cell of a query becomes in a place of a C type, behind "01S07 " if that was warned of; or the
    /// SQLSTATE of the refusal, which must leave the place alone.
    template <typename Place>
    std::string Get(const std::string& query, SQLSMALLINT type)
    {
        Open(query);
        EXPECT_EQ(SQLFetch(statement), SQL_SUCCESS) << query;
        Place place;
        std::memset(&place, 0x5A, sizeof place);
        const Place before = place;
        SQLLEN bytes = -77;
        const SQLRETURN answer = SQLGetData(statement, 1, type, &place, sizeof place, &bytes);
        if (answer == SQL_ERROR) {
            EXPECT_EQ(std::memcmp(&place, &before, sizeof place), 0) << query;
            EXPECT_EQ(bytes, -77) << query;
            return State();
        }
        if (bytes == SQL_NULL_DATA)
            return "null";
        EXPECT_EQ(bytes, static_cast<SQLLEN>(sizeof place)) << query;
        return (answer == SQL_SUCCESS_WITH_INFO ? State() + " " : "") + Shown(place);
    }

    template <typename Integer>
    static std::string Shown(Integer value)
    {
        return std::to_string(value);
    }
    static std::string Shown(const SQL_NUMERIC_STRUCT& value)
    {
        __extension__ typedef unsigned __int128 Number;
        Number number = 0;
        for (std::size_t i = SQL_MAX_NUMERIC_LEN; i-- > 0;)
            number = number * 256 + value.val[i];
        std::string digits;
        for (; number > 0 || digits.empty(); number /= 10)
            digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(number % 10)));
        return (value.sign == 1 ? "+" : "-") + digits + " precision " + std::to_string(value.precision) + " scale " +
               std::to_string(value.scale);
    }
    static std::string Shown(const SQL_DATE_STRUCT& value)
    {
        return std::to_string(value.year) + "/" + std::to_string(value.month) + "/" + std::to_string(value.day);
    }
    static std::string Shown(const SQL_TIME_STRUCT& value)
    {
        return std::to_string(value.hour) + ":" + std::to_string(value.minute) + ":" + std::to_string(value.second);
    }
    static std::string Shown(const SQL_TIMESTAMP_STRUCT& value)
    {
        return Shown(SQL_DATE_STRUCT{value.year, value.month, value.day}) + " " +
               Shown(SQL_TIME_STRUCT{value.hour, value.minute, value.second}) + "." + std::to_string(value.fraction);
    }

    /// Each type takes its least and its most number, and refuses the next ones.
    template <typename Integer>
    void ExpectLimits(SQLSMALLINT type, const std::string& below, const std::string& above)
    {
        const std::string least = std::to_string(std::numeric_limits<Integer>::min());
        const std::string most = std::to_string(std::numeric_limits<Integer>::max());
        // Numbers that SQLite would make floating point numbers of stand in quotes.
        EXPECT_EQ(Get<Integer>("SELECT '" + least + "'", type), least) << type;
        EXPECT_EQ(Get<Integer>("SELECT '" + most + "'", type), most) << type;
        EXPECT_EQ(Get<Integer>("SELECT '" + below + "'", type), "22003") << type;
        EXPECT_EQ(Get<Integer>("SELECT '" + above + "'", type), "22003") << type;
        EXPECT_EQ(Get<Integer>("SELECT '" + most + ".99'", type), "01S07 " + most) << type;
        EXPECT_EQ(Get<Integer>("SELECT 'Juergen'", type), "22018") << type;
        EXPECT_EQ(Get<Integer>("SELECT 1e300", type), "22003") << type;
        EXPECT_EQ(Get<Integer>("SELECT NULL", type), "null") << type;
    }

    SQLHSTMT statement = nullptr;
};
