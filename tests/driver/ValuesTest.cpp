#include "RecordsFixture.h"

#include <sqlucode.h>

#include <array>
#include <cstring>
#include <limits>

using namespace std::string_literals;

namespace
{

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

} // namespace

TEST_F(Values, ANumberThatItsPlaceCannotHoldIsRefused)
{
    ExpectLimits<SQLSCHAR>(SQL_C_STINYINT, "-129", "128");
    ExpectLimits<SQLSCHAR>(SQL_C_TINYINT, "-129", "128");
    ExpectLimits<SQLCHAR>(SQL_C_UTINYINT, "-1", "256");
    ExpectLimits<SQLSMALLINT>(SQL_C_SSHORT, "-32769", "32768");
    ExpectLimits<SQLSMALLINT>(SQL_C_SHORT, "-32769", "32768");
    ExpectLimits<SQLUSMALLINT>(SQL_C_USHORT, "-1", "65536");
    ExpectLimits<SQLINTEGER>(SQL_C_SLONG, "-2147483649", "2147483648");
    ExpectLimits<SQLINTEGER>(SQL_C_LONG, "-2147483649", "2147483648");
    ExpectLimits<SQLUINTEGER>(SQL_C_ULONG, "-1", "4294967296");
    ExpectLimits<SQLBIGINT>(SQL_C_SBIGINT, "-9223372036854775809", "9223372036854775808");
    ExpectLimits<SQLUBIGINT>(SQL_C_UBIGINT, "-1", "18446744073709551616");
}

TEST_F(Values, ABitHoldsZeroAndOneOnly)
{
    const auto bit = [&](const std::string& value) { return Get<SQLCHAR>("SELECT " + value, SQL_C_BIT); };
    EXPECT_EQ(bit("0"), "0");
    EXPECT_EQ(bit("1"), "1");
    EXPECT_EQ(bit("'01.00'"), "1");
    EXPECT_EQ(bit("1.5"), "01S07 1");
    EXPECT_EQ(bit("0.5"), "01S07 0");
    EXPECT_EQ(bit("2"), "22003");
    EXPECT_EQ(bit("-123.45"), "22003");
    EXPECT_EQ(bit("-0.5"), "22003");
    EXPECT_EQ(bit("'true'"), "1");
    EXPECT_EQ(bit("'No'"), "0");
    EXPECT_EQ(bit("'maybe'"), "22018");
}

TEST_F(Values, AFractionThatIsLeftOutIsWarnedOf)
{
    const auto number = [&](const std::string& value) { return Get<SQLINTEGER>("SELECT " + value, SQL_C_SLONG); };
    EXPECT_EQ(number("-123.45"), "01S07 -123");
    EXPECT_EQ(number("'0.001'"), "01S07 0");
    EXPECT_EQ(number("123.0"), "123");
    EXPECT_EQ(number("'-.5'"), "01S07 0");
    EXPECT_EQ(number("'12.'"), "12");
    EXPECT_EQ(number("1e5"), "100000");
    EXPECT_EQ(number("'12345e-2'"), "01S07 123");
    EXPECT_EQ(number("'12300E-2'"), "123");
    EXPECT_EQ(number("'0.00123e+5'"), "123");
    EXPECT_EQ(Get<SQLUBIGINT>("SELECT '-0.5'", SQL_C_UBIGINT), "01S07 0");
}

TEST_F(Values, ATextThatIsNoNumberIsRefused)
{
    for (const char* text : {"Juergen", "12 Mark", "1,5", "--1", ".", "e5", "1e", "0x10", "1998-12-31", "+", "1.2.3"}) {
        const std::string query = "SELECT '"s + text + "'";
        EXPECT_EQ(Get<SQLINTEGER>(query, SQL_C_SLONG), "22018") << text;
        EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(query, SQL_C_NUMERIC), "22018") << text;
    }
    EXPECT_EQ(Get<SQLINTEGER>("SELECT '  +0042  '", SQL_C_SLONG), "42");
    EXPECT_EQ(Get<SQLINTEGER>("SELECT x'3132'", SQL_C_SLONG), "22018");
    Open("SELECT 'Juergen'");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    double place = 7;
    SQLLEN bytes = -77;
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DOUBLE, &place, 0, &bytes), SQL_ERROR);
    EXPECT_EQ(State(), "22018");
    EXPECT_EQ(bytes, -77);
}

TEST_F(Values, AnEmptyTextInPlaceOfANumberReadsAsNull)
{
    for (const char* text : {"''", "'  '"}) {
        const std::string query = "SELECT "s + text;
        EXPECT_EQ(Get<SQLINTEGER>(query, SQL_C_SLONG), "null");
        EXPECT_EQ(Get<SQLBIGINT>(query, SQL_C_SBIGINT), "null");
        EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(query, SQL_C_NUMERIC), "null");
        EXPECT_EQ(Get<double>(query, SQL_C_DOUBLE), "null");
        EXPECT_EQ(Get<SQL_DATE_STRUCT>(query, SQL_C_TYPE_DATE), "null");
        EXPECT_EQ(Get<SQLCHAR>(query, SQL_C_BIT), "0");
    }
}

TEST_F(Values, AFloatOfFourBytesHoldsNoLargerOne)
{
    EXPECT_EQ(Get<float>("SELECT 1.5", SQL_C_FLOAT), std::to_string(1.5));
    EXPECT_EQ(Get<float>("SELECT 1e300", SQL_C_FLOAT), "22003");
    EXPECT_EQ(Get<float>("SELECT 'Juergen'", SQL_C_FLOAT), "22018");
    EXPECT_EQ(Get<float>("SELECT NULL", SQL_C_FLOAT), "null");
    EXPECT_EQ(Get<double>("SELECT 1e300", SQL_C_DOUBLE), std::to_string(1e300));
}

TEST_F(Values, ADecimalComesAsANumericStruct)
{
    const auto numeric = [&](const std::string& value) {
        return Get<SQL_NUMERIC_STRUCT>("SELECT " + value, SQL_C_NUMERIC);
    };
    EXPECT_EQ(numeric("'-12345678901234567.88'"), "-1234567890123456788 precision 19 scale 2");
    EXPECT_EQ(numeric("'18446744073709551615'"), "+18446744073709551615 precision 20 scale 0");
    EXPECT_EQ(numeric("'0.00'"), "+0 precision 2 scale 2");
    EXPECT_EQ(numeric("'-0.05'"), "-5 precision 2 scale 2");
    EXPECT_EQ(numeric("0"), "+0 precision 1 scale 0");
    EXPECT_EQ(numeric("'-0'"), "+0 precision 1 scale 0");
    EXPECT_EQ(numeric("-70000"), "-70000 precision 5 scale 0");
    EXPECT_EQ(numeric("12.5"), "+125 precision 3 scale 1");
    EXPECT_EQ(numeric("'1.5e3'"), "+1500 precision 4 scale 0");
    EXPECT_EQ(numeric("'15e-3'"), "+15 precision 3 scale 3");
    EXPECT_EQ(numeric("NULL"), "null");
    const std::string most(38, '9');
    EXPECT_EQ(numeric("'" + most + "'"), "+" + most + " precision 38 scale 0");
    EXPECT_EQ(numeric("'-" + most + ".5'"), "01S07 -" + most + " precision 38 scale 0");
    EXPECT_EQ(numeric("'1" + std::string(38, '0') + "'"), "22003");
    EXPECT_EQ(numeric("'0." + std::string(38, '0') + "1'"), "01S07 +0 precision 38 scale 38");
}

TEST_F(Values, NumbersOfRecordsAreExactInEveryType)
{
    Make("WIDE", {{"AMOUNT", "PACKED", 10, 2}, {"COUNTER", "UNSIGNED-8", 8}, {"PLACE", "INTEGER-8", 8}},
         "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x8D"s + std::string(8, '\xFF') + std::string(7, '\0') + "\x80");
    const auto column = [](const char* name) { return "SELECT "s + name + " FROM BANK_WIDE"; };
    EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(column("AMOUNT"), SQL_C_NUMERIC), "-1234567890123456788 precision 19 scale 2");
    EXPECT_EQ(Get<SQLBIGINT>(column("AMOUNT"), SQL_C_SBIGINT), "01S07 -12345678901234567");
    EXPECT_EQ(Get<SQLINTEGER>(column("AMOUNT"), SQL_C_SLONG), "22003");
    EXPECT_EQ(Get<SQLUBIGINT>(column("COUNTER"), SQL_C_UBIGINT), "18446744073709551615");
    EXPECT_EQ(Get<SQLBIGINT>(column("COUNTER"), SQL_C_SBIGINT), "22003");
    EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(column("COUNTER"), SQL_C_NUMERIC), "+18446744073709551615 precision 20 scale 0");
    EXPECT_EQ(Get<SQLBIGINT>(column("PLACE"), SQL_C_SBIGINT), "-9223372036854775808");
    EXPECT_EQ(Get<SQLBIGINT>(column("PLACE"), SQL_C_DEFAULT), "-9223372036854775808");
}

TEST_F(Values, WhatWasRefusedCanBeAskedForInAnotherType)
{
    Open("SELECT 'first', '70000', 'last'");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQLSMALLINT small = 0;
    SQLINTEGER large = 0;
    char text[10] = "";
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_SSHORT, &small, 0, nullptr), SQL_ERROR);
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_SLONG, &large, 0, nullptr), SQL_SUCCESS);
    EXPECT_EQ(large, 70000);
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_CHAR, text, sizeof text, nullptr), SQL_SUCCESS);
    EXPECT_STREQ(text, "70000");
    EXPECT_EQ(SQLGetData(statement, 3, SQL_C_CHAR, text, sizeof text, nullptr), SQL_SUCCESS);
    EXPECT_STREQ(text, "last");
}

TEST_F(Values, ATypeThatCannotBeReadIsRefusedWithItsReason)
{
    Open("SELECT 1");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQLGUID place{};
    SQLLEN bytes = 0;
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_GUID, &place, sizeof place, &bytes), SQL_ERROR);
    EXPECT_EQ(State(), "07006");
}

TEST_F(Values, DatesAndTimesAreWhatTheirTextsSay)
{
    const auto date = [&](const std::string& text) {
        return Get<SQL_DATE_STRUCT>("SELECT '" + text + "'", SQL_C_TYPE_DATE);
    };
    const auto time = [&](const std::string& text) {
        return Get<SQL_TIME_STRUCT>("SELECT '" + text + "'", SQL_C_TYPE_TIME);
    };
    const auto moment = [&](const std::string& text) {
        return Get<SQL_TIMESTAMP_STRUCT>("SELECT '" + text + "'", SQL_C_TYPE_TIMESTAMP);
    };
    EXPECT_EQ(date("1998-12-31"), "1998/12/31");
    EXPECT_EQ(date("1998/12/31"), "1998/12/31");
    EXPECT_EQ(date("19981231"), "1998/12/31");
    EXPECT_EQ(date("1998-12-31 00:00:00"), "1998/12/31");
    EXPECT_EQ(date("1998-12-31 23:59:58"), "01S07 1998/12/31");
    EXPECT_EQ(time("23:59:58"), "23:59:58");
    EXPECT_EQ(time("23:59"), "23:59:0");
    EXPECT_EQ(time("1998-12-31 23:59:58"), "23:59:58");
    EXPECT_EQ(time("23:59:58.07"), "01S07 23:59:58");
    EXPECT_EQ(moment("1998-12-31 23:59:58.07"), "1998/12/31 23:59:58.70000000");
    EXPECT_EQ(moment("1998-12-31T23:59:58.123456789"), "1998/12/31 23:59:58.123456789");
    EXPECT_EQ(moment("1998-12-31 23:59:58.1234567891"), "01S07 1998/12/31 23:59:58.123456789");
    EXPECT_EQ(moment("19981231235958"), "1998/12/31 23:59:58.0");
    EXPECT_EQ(moment("1998-12-31"), "1998/12/31 0:0:0.0");
    EXPECT_TRUE(moment("08:15:00").ends_with(" 8:15:0.0")) << "a time of today";
    EXPECT_EQ(date("2000-02-29"), "2000/2/29");
    for (const char* text : {"23:59:58", "1900-02-29", "1998-13-01", "1998-00-10", "1998-12/31", "Juergen", "12.7",
                             "1998-12-31 x", "1998-12-31 24:00:00"})
        EXPECT_EQ(date(text), "22018") << text;
    for (const char* text : {"1998-12-31", "24:00:00", "23:60:00", "235958", "100000.0", "23", "23:59:58 Uhr"})
        EXPECT_EQ(time(text), "22018") << text;
    for (const char* text : {"Juergen", "1998", "-70000", "1998-12-31 23:59:58 24"})
        EXPECT_EQ(moment(text), "22018") << text;
}

namespace
{

/// A row of a block that is bound row by row.
struct Bound {
    char name[8];
    SQLLEN nameBytes;
    SQLSMALLINT number;
    SQLLEN numberBytes;
    SQL_NUMERIC_STRUCT exact;
    SQLLEN exactBytes;
};

constexpr const char* bankRows = "SELECT 'A' AS NAME, '1.5' AS NUMBER, 1 AS SIGN UNION ALL SELECT 'B', '70000', 2 "
                                 "UNION ALL SELECT 'C', '3', 3 UNION ALL SELECT 'D', 'vier', 4";

} // namespace

TEST_F(Values, AFailingCellOfABlockLeavesTheOthersAlone)
{
    std::array<Bound, 5> block{};
    std::array<SQLUSMALLINT, 5> status{};
    SQLULEN fetched = 0;
    const auto set = [&](SQLINTEGER attribute, auto value) {
        ASSERT_EQ(SQLSetStmtAttrW(statement, attribute, reinterpret_cast<SQLPOINTER>(value), 0), SQL_SUCCESS);
    };
    set(SQL_ATTR_ROW_ARRAY_SIZE, SQLULEN{5});
    set(SQL_ATTR_ROW_BIND_TYPE, SQLULEN{sizeof(Bound)});
    set(SQL_ATTR_ROW_STATUS_PTR, status.data());
    set(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_CHAR, block[0].name, sizeof block[0].name, &block[0].nameBytes);
    SQLBindCol(statement, 2, SQL_C_SSHORT, &block[0].number, 0, &block[0].numberBytes);
    SQLBindCol(statement, 3, SQL_C_NUMERIC, &block[0].exact, 0, &block[0].exactBytes);
    Open(bankRows);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(fetched, 4u);
    const std::array<SQLUSMALLINT, 5> expected = {SQL_ROW_SUCCESS_WITH_INFO, SQL_ROW_ERROR, SQL_ROW_SUCCESS,
                                                  SQL_ROW_ERROR, SQL_ROW_NOROW};
    EXPECT_EQ(status, expected);
    for (std::size_t i = 0; i < fetched; ++i) {
        EXPECT_EQ(block[i].name, std::string(1, static_cast<char>('A' + i)));
        EXPECT_EQ(Shown(block[i].exact), "+" + std::to_string(i + 1) + " precision 1 scale 0") << "behind the failure";
    }
    EXPECT_EQ(block[0].number, 1);
    EXPECT_EQ(block[2].number, 3);

    const char* const states[] = {"22003", "22018"};
    for (SQLSMALLINT record = 1; record <= 2; ++record) {
        std::array<SQLWCHAR, 6> state{};
        SQLLEN row = 0;
        SQLINTEGER column = 0;
        SQLGetDiagFieldW(SQL_HANDLE_STMT, statement, record, SQL_DIAG_SQLSTATE, state.data(), sizeof state, nullptr);
        SQLGetDiagFieldW(SQL_HANDLE_STMT, statement, record, SQL_DIAG_ROW_NUMBER, &row, 0, nullptr);
        SQLGetDiagFieldW(SQL_HANDLE_STMT, statement, record, SQL_DIAG_COLUMN_NUMBER, &column, 0, nullptr);
        EXPECT_EQ(Narrow(state.data(), 5), states[record - 1]);
        EXPECT_EQ(row, 2 * record);
        EXPECT_EQ(column, 2);
    }
}

TEST_F(Values, ColumnsOfNumbersFillTheirArrays)
{
    std::array<SQL_NUMERIC_STRUCT, 4> exact{};
    std::array<SQLBIGINT, 4> whole{};
    std::array<SQLLEN, 4> bytes{};
    ASSERT_EQ(SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(SQLULEN{4}), 0),
              SQL_SUCCESS);
    SQLBindCol(statement, 1, SQL_C_NUMERIC, exact.data(), 0, nullptr);
    SQLBindCol(statement, 2, SQL_C_DEFAULT, whole.data(), 0, bytes.data());
    Make("ITEM", {{"PRICE", "PACKED", 2, 2}, {"PLACE", "INTEGER-8", 8}},
         "\x12\x3C\1\0\0\0\0\0\0\0\x04\x5D\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s);
    Open("SELECT PRICE, PLACE FROM BANK_ITEM");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(Shown(exact[0]), "+123 precision 3 scale 2");
    EXPECT_EQ(Shown(exact[1]), "-45 precision 2 scale 2");
    EXPECT_EQ(whole[0], 1);
    EXPECT_EQ(whole[1], -2);
    EXPECT_EQ(bytes[1], static_cast<SQLLEN>(sizeof(SQLBIGINT)));
}

TEST_F(Values, AFailingCellOfASingleRowIsAnErrorAndTheRestIsThere)
{
    SQLUSMALLINT status = 99;
    SQLSMALLINT number = 0;
    char behind[8] = "";
    SQLSetStmtAttrW(statement, SQL_ATTR_ROW_STATUS_PTR, &status, 0);
    SQLBindCol(statement, 1, SQL_C_SSHORT, &number, 0, nullptr);
    SQLBindCol(statement, 2, SQL_C_CHAR, behind, sizeof behind, nullptr);
    Open("SELECT 70000, 'behind' UNION ALL SELECT 7, 'next'");
    EXPECT_EQ(SQLFetch(statement), SQL_ERROR);
    EXPECT_EQ(State(), "22003");
    EXPECT_EQ(status, SQL_ROW_ERROR);
    EXPECT_STREQ(behind, "behind");
    EXPECT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(number, 7);
    EXPECT_STREQ(behind, "next");
}
