#include "ValuesFixture.h"

#include <algorithm>
#include <array>

using namespace std::string_literals;

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

class BoundValues : public Values
{
protected:
    /// The diagnostic records with their rows and columns.
    std::string RecordsLeft() const
    {
        std::string left;
        std::array<SQLWCHAR, 6> state{};
        SQLLEN row = 0;
        SQLINTEGER column = 0;
        for (SQLSMALLINT record = 1; SQL_SUCCEEDED(SQLGetDiagFieldW(
                 SQL_HANDLE_STMT, statement, record, SQL_DIAG_SQLSTATE, state.data(), sizeof state, nullptr));
             ++record) {
            SQLGetDiagFieldW(SQL_HANDLE_STMT, statement, record, SQL_DIAG_ROW_NUMBER, &row, 0, nullptr);
            SQLGetDiagFieldW(SQL_HANDLE_STMT, statement, record, SQL_DIAG_COLUMN_NUMBER, &column, 0, nullptr);
            left += Narrow(state.data(), 5) + " in " + std::to_string(row) + ", " + std::to_string(column) + "; ";
        }
        return left;
    }
};

} // namespace

TEST_F(BoundValues, AFailingCellOfABlockLeavesTheOthersAlone)
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

    EXPECT_EQ(RecordsLeft(), "22003 in 2, 2; 22018 in 4, 2; 01S07 in 1, 2; ");
}

TEST_F(BoundValues, ColumnsOfNumbersFillTheirArrays)
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

TEST_F(BoundValues, AFailingCellOfASingleRowIsAnErrorAndTheRestIsThere)
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

TEST_F(BoundValues, EachCellOfABlockHasItsRecordWhetherItFailsOrIsCut)
{
    std::array<char[4], 3> names{};
    std::array<SQLSMALLINT, 3> numbers{};
    ASSERT_EQ(SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(SQLULEN{3}), 0),
              SQL_SUCCESS);
    SQLBindCol(statement, 1, SQL_C_CHAR, names.data(), sizeof names[0], nullptr);
    SQLBindCol(statement, 2, SQL_C_SSHORT, numbers.data(), 0, nullptr);
    Open("SELECT 'Overdrawn', '1.5' UNION ALL SELECT 'B', '70000' UNION ALL SELECT 'Settled', '3'");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(RecordsLeft(), "22003 in 2, 2; 01004 in 1, 1; 01S07 in 1, 2; 01004 in 3, 1; ");
}

TEST_F(BoundValues, OfManyFailingCellsTheFirstHundredAreTold)
{
    std::array<SQLSMALLINT, 200> numbers{};
    std::array<SQLUSMALLINT, 200> status{};
    SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(numbers.size()), 0);
    SQLSetStmtAttrW(statement, SQL_ATTR_ROW_STATUS_PTR, status.data(), 0);
    SQLBindCol(statement, 1, SQL_C_SSHORT, numbers.data(), 0, nullptr);
    const auto rows = [](const std::string& value) {
        return "WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE I < 200) SELECT " + value +
               " FROM N";
    };
    const auto records = [&] {
        SQLINTEGER count = 0;
        SQLGetDiagFieldW(SQL_HANDLE_STMT, statement, 0, SQL_DIAG_NUMBER, &count, 0, nullptr);
        return count;
    };
    Open(rows("70000"));
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(records(), 100);
    EXPECT_EQ(std::count(status.begin(), status.end(), SQL_ROW_ERROR), 200) << "all are marked";
    Open(rows("CASE WHEN I = 200 THEN '70000' ELSE '1.5' END"));
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(records(), 21) << "warnings do not keep an error out";
    EXPECT_EQ(status[199], SQL_ROW_ERROR);
}

TEST_F(BoundValues, RowsAreNotChangedThroughATypeThatCannotBeRead)
{
    Run("CREATE TABLE PRICES (NO INTEGER PRIMARY KEY, PRICE DOUBLE)");
    Run("INSERT INTO PRICES VALUES (1, 1.5)");
    SQL_NUMERIC_STRUCT price{};
    SQLLEN bytes = 0;
    SQLBindCol(statement, 2, SQL_C_NUMERIC, &price, 0, &bytes);
    Open("SELECT NO, PRICE FROM PRICES");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(SQLSetPos(statement, 1, SQL_UPDATE, SQL_LOCK_NO_CHANGE), SQL_ERROR);
    EXPECT_EQ(State(), "HYC00");
    EXPECT_EQ(SQLBulkOperations(statement, SQL_ADD), SQL_ERROR);
    EXPECT_EQ(State(), "HYC00");
    EXPECT_EQ(Rows("SELECT NO, PRICE FROM PRICES"), "1|1.5\n");
}
