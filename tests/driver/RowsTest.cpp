#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <sqlucode.h>

#include <array>

namespace
{

constexpr int rowCount = 10;

/// Ten users, U1 to U10 with remarks R1 to R10, in a statement of the test's own.
class Rows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"))) << client.Failure().message;
        ASSERT_TRUE(client.Execute("DELETE FROM TW_USER").Succeeded());
        for (int i = 1; i <= rowCount; ++i)
            ASSERT_TRUE(client
                            .Execute("INSERT INTO TW_USER (USER_NAME, REMARKS) VALUES ('U" + std::to_string(i) +
                                     "', 'R" + std::to_string(i) + "')")
                            .Succeeded());
        statement = client.NewStatement();
    }
    void TearDown() override { SQLFreeHandle(SQL_HANDLE_STMT, statement); }

    void Open(const std::string& text = "SELECT USER_NAME, REMARKS, rowid FROM TW_USER ORDER BY rowid")
    {
        std::vector<SQLWCHAR> wide = Wide(text);
        ASSERT_EQ(SQLExecDirectW(statement, wide.data(), SQL_NTS), SQL_SUCCESS);
    }

    void Set(SQLINTEGER attribute, SQLULEN value)
    {
        ASSERT_EQ(SQLSetStmtAttrW(statement, attribute, reinterpret_cast<SQLPOINTER>(value), 0), SQL_SUCCESS);
    }
    void Point(SQLINTEGER attribute, void* value)
    {
        ASSERT_EQ(SQLSetStmtAttrW(statement, attribute, value, 0), SQL_SUCCESS);
    }

    std::string Get(SQLUSMALLINT column)
    {
        std::array<SQLWCHAR, 100> text{};
        SQLLEN bytes = 0;
        const SQLRETURN answer = SQLGetData(statement, column, SQL_C_WCHAR, text.data(), sizeof text, &bytes);
        if (!SQL_SUCCEEDED(answer))
            return answer == SQL_NO_DATA ? "<no data>" : "<error>";
        return Narrow(text.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
    }

    OdbcSetup setup;
    OdbcClient client;
    SQLHSTMT statement = nullptr;
};

struct Record {
    SQLWCHAR name[8];
    SQLLEN nameBytes;
    SQLINTEGER number;
    SQLLEN numberBytes;
    char remarks[8];
    SQLLEN remarksBytes;
};

std::string NameOf(const Record& record)
{
    return Narrow(record.name, static_cast<std::size_t>(record.nameBytes) / sizeof(SQLWCHAR));
}

} // namespace

TEST_F(Rows, BlocksBoundByRowHoldEveryColumn)
{
    std::array<Record, 4> block{};
    std::array<SQLUSMALLINT, 4> status{};
    SQLULEN fetched = 0;
    Set(SQL_ATTR_ROW_ARRAY_SIZE, block.size());
    Set(SQL_ATTR_ROW_BIND_TYPE, sizeof(Record));
    Point(SQL_ATTR_ROW_STATUS_PTR, status.data());
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_WCHAR, block[0].name, sizeof block[0].name, &block[0].nameBytes);
    SQLBindCol(statement, 2, SQL_C_CHAR, block[0].remarks, sizeof block[0].remarks, &block[0].remarksBytes);
    SQLBindCol(statement, 3, SQL_C_SLONG, &block[0].number, 0, &block[0].numberBytes);
    Open();
    std::string found;
    SQLRETURN answer = SQL_SUCCESS;
    while ((answer = SQLFetch(statement)) == SQL_SUCCESS) {
        for (SQLULEN i = 0; i < fetched; ++i) {
            EXPECT_EQ(status[i], SQL_ROW_SUCCESS);
            found += NameOf(block[i]) + block[i].remarks + " ";
            EXPECT_GT(block[i].number, 0);
        }
        for (SQLULEN i = fetched; i < block.size(); ++i)
            EXPECT_EQ(status[i], SQL_ROW_NOROW);
    }
    EXPECT_EQ(answer, SQL_NO_DATA);
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(found, "U1R1 U2R2 U3R3 U4R4 U5R5 U6R6 U7R7 U8R8 U9R9 U10R10 ");
}

TEST_F(Rows, BlocksBoundByColumnHoldEveryRow)
{
    std::array<std::array<SQLWCHAR, 6>, 3> names{};
    std::array<SQLLEN, 3> bytes{};
    std::array<SQLSMALLINT, 3> numbers{};
    SQLULEN fetched = 0;
    Set(SQL_ATTR_ROW_ARRAY_SIZE, names.size());
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_WCHAR, names.data(), sizeof names[0], bytes.data());
    SQLBindCol(statement, 2, SQL_C_SSHORT, numbers.data(), 0, nullptr);
    Open("SELECT USER_NAME, CAST(substr(USER_NAME, 2) AS INTEGER) FROM TW_USER ORDER BY rowid");
    int next = 0;
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        for (SQLULEN i = 0; i < fetched; ++i) {
            ++next;
            EXPECT_EQ(Narrow(names[i].data(), static_cast<std::size_t>(bytes[i]) / 2), "U" + std::to_string(next));
            EXPECT_EQ(numbers[i], next);
        }
    }
    EXPECT_EQ(next, rowCount);
}

TEST_F(Rows, ABindOffsetMovesEveryPlace)
{
    std::array<Record, 5> records{};
    SQLULEN offset = 0;
    Set(SQL_ATTR_ROW_BIND_TYPE, sizeof(Record));
    Point(SQL_ATTR_ROW_BIND_OFFSET_PTR, &offset);
    SQLBindCol(statement, 1, SQL_C_WCHAR, records[0].name, sizeof records[0].name, &records[0].nameBytes);
    Open();
    for (std::size_t i = 0; i < records.size(); ++i) {
        offset = i * sizeof(Record);
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    }
    for (std::size_t i = 0; i < records.size(); ++i)
        EXPECT_EQ(NameOf(records[i]), "U" + std::to_string(i + 1));
}

TEST_F(Rows, ScrollingLeadsToTheRowsThatOdbcDefines)
{
    std::array<std::array<SQLWCHAR, 6>, 3> names{};
    std::array<SQLLEN, 3> bytes{};
    SQLULEN fetched = 0;
    Set(SQL_ATTR_CURSOR_TYPE, SQL_CURSOR_STATIC);
    Set(SQL_ATTR_ROW_ARRAY_SIZE, names.size());
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_WCHAR, names.data(), sizeof names[0], bytes.data());
    Open();
    const auto scroll = [&](SQLSMALLINT orientation, SQLLEN offset = 0) {
        const SQLRETURN answer = SQLFetchScroll(statement, orientation, offset);
        if (answer == SQL_NO_DATA)
            return std::string("none");
        std::string found;
        for (SQLULEN i = 0; i < fetched; ++i)
            found += Narrow(names[i].data(), static_cast<std::size_t>(bytes[i]) / 2) + " ";
        return found;
    };
    EXPECT_EQ(scroll(SQL_FETCH_NEXT), "U1 U2 U3 ");
    EXPECT_EQ(scroll(SQL_FETCH_NEXT), "U4 U5 U6 ");
    EXPECT_EQ(scroll(SQL_FETCH_PRIOR), "U1 U2 U3 ");
    EXPECT_EQ(scroll(SQL_FETCH_PRIOR), "none");
    EXPECT_EQ(scroll(SQL_FETCH_NEXT), "U1 U2 U3 ");
    EXPECT_EQ(scroll(SQL_FETCH_LAST), "U8 U9 U10 ");
    EXPECT_EQ(scroll(SQL_FETCH_NEXT), "none");
    EXPECT_EQ(scroll(SQL_FETCH_PRIOR), "U8 U9 U10 ");
    EXPECT_EQ(scroll(SQL_FETCH_FIRST), "U1 U2 U3 ");
    EXPECT_EQ(scroll(SQL_FETCH_ABSOLUTE, 9), "U9 U10 ");
    EXPECT_EQ(scroll(SQL_FETCH_ABSOLUTE, -2), "U9 U10 ");
    EXPECT_EQ(scroll(SQL_FETCH_RELATIVE, -4), "U5 U6 U7 ");
    EXPECT_EQ(scroll(SQL_FETCH_RELATIVE, 0), "U5 U6 U7 ");
    EXPECT_EQ(scroll(SQL_FETCH_ABSOLUTE, 11), "none");
    EXPECT_EQ(scroll(SQL_FETCH_ABSOLUTE, 0), "none");
    EXPECT_EQ(scroll(SQL_FETCH_NEXT), "U1 U2 U3 ");
}

TEST_F(Rows, ScrollingRowByRowWorksToo)
{
    Set(SQL_ATTR_CURSOR_TYPE, SQL_CURSOR_STATIC);
    Open();
    ASSERT_EQ(SQLFetchScroll(statement, SQL_FETCH_LAST, 0), SQL_SUCCESS);
    EXPECT_EQ(Get(1), "U10");
    ASSERT_EQ(SQLFetchScroll(statement, SQL_FETCH_FIRST, 0), SQL_SUCCESS);
    EXPECT_EQ(Get(1), "U1");
    ASSERT_EQ(SQLFetchScroll(statement, SQL_FETCH_ABSOLUTE, 7), SQL_SUCCESS);
    EXPECT_EQ(Get(2), "R7");
    ASSERT_EQ(SQLFetchScroll(statement, SQL_FETCH_PRIOR, 0), SQL_SUCCESS);
    EXPECT_EQ(Get(2), "R6");
}

TEST_F(Rows, AnyRowOfABlockCanBeAskedForItsCells)
{
    std::array<std::array<SQLWCHAR, 6>, 4> names{};
    std::array<SQLLEN, 4> bytes{};
    SQLULEN fetched = 0;
    Set(SQL_ATTR_ROW_ARRAY_SIZE, names.size());
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_WCHAR, names.data(), sizeof names[0], bytes.data());
    Open();
    int block = 0;
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        for (const SQLSETPOSIROW row : {SQLSETPOSIROW{2}, SQLSETPOSIROW{1}}) {
            ASSERT_EQ(SQLSetPos(statement, row, SQL_POSITION, SQL_LOCK_NO_CHANGE), SQL_SUCCESS);
            const std::string number = std::to_string(block * 4 + static_cast<int>(row));
            EXPECT_EQ(Get(2), "R" + number);
            EXPECT_EQ(Get(1), "U" + number);
            EXPECT_EQ(Get(1), "<no data>");
        }
        ++block;
    }
    EXPECT_EQ(block, 3);
}

TEST_F(Rows, ARowOutsideOfTheBlockIsRefused)
{
    SQLULEN fetched = 0;
    Set(SQL_ATTR_ROW_ARRAY_SIZE, 8);
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    Open();
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(SQLSetPos(statement, 3, SQL_POSITION, SQL_LOCK_NO_CHANGE), SQL_ERROR);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "HY107");
    ASSERT_EQ(SQLSetPos(statement, 2, SQL_POSITION, SQL_LOCK_NO_CHANGE), SQL_SUCCESS);
    EXPECT_EQ(Get(1), "U10");
}

TEST_F(Rows, ABoundTextThatIsTooLongIsCutAndItsLengthTold)
{
    ASSERT_TRUE(client
                    .Execute("UPDATE TW_USER SET REMARKS = 'abc\xF0\x9F\x98\x80"
                             "defghi' WHERE USER_NAME = 'U2'")
                    .Succeeded());
    std::array<SQLWCHAR, 5> text{};
    SQLLEN bytes = 0;
    SQLUSMALLINT status = 99;
    SQLBindCol(statement, 2, SQL_C_WCHAR, text.data(), sizeof text, &bytes);
    Point(SQL_ATTR_ROW_STATUS_PTR, &status);
    Open();
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(status, SQL_ROW_SUCCESS);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(status, SQL_ROW_SUCCESS_WITH_INFO);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "01004");
    EXPECT_EQ(bytes, 22);
    EXPECT_EQ(Narrow(text.data(), 3), "abc");
    EXPECT_EQ(text[3], 0) << "half of a character is none";
    EXPECT_EQ(Get(2), "abc\xF0\x9F\x98\x80"
                      "defghi");
}

TEST_F(Rows, ATextComesInPiecesOfAnySize)
{
    std::string whole;
    for (int i = 0; i < 1500; ++i)
        whole += i % 5 == 0 ? "\xF0\x9F\x98\x80" : i % 3 == 0 ? "\xE2\x82\xAC" : "x";
    ASSERT_TRUE(client.Execute("UPDATE TW_USER SET REMARKS = '" + whole + "' WHERE USER_NAME = 'U1'").Succeeded());
    const std::vector<SQLWCHAR> expected = Wide(whole);
    for (const std::size_t size : {2u, 3u, 10u, 400u, 1700u, 1801u, 1802u, 4000u}) {
        Open("SELECT USER_NAME, REMARKS FROM TW_USER WHERE USER_NAME = 'U1'");
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        std::vector<SQLWCHAR> got;
        SQLRETURN answer = SQL_SUCCESS_WITH_INFO;
        while (answer == SQL_SUCCESS_WITH_INFO) {
            std::vector<SQLWCHAR> piece(size, 0xAAAA);
            SQLLEN bytes = 0;
            answer = SQLGetData(statement, 2, SQL_C_WCHAR, piece.data(), static_cast<SQLLEN>(size * sizeof(SQLWCHAR)),
                                &bytes);
            ASSERT_EQ(static_cast<std::size_t>(bytes), (expected.size() - 1 - got.size()) * sizeof(SQLWCHAR));
            const std::size_t units = answer == SQL_SUCCESS ? static_cast<std::size_t>(bytes) / 2 : size - 1;
            got.insert(got.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(units));
            EXPECT_EQ(piece[units], 0);
        }
        EXPECT_EQ(answer, SQL_SUCCESS);
        got.push_back(0);
        EXPECT_EQ(got, expected) << size;
        EXPECT_EQ(Get(2), "<no data>");
        SQLFreeStmt(statement, SQL_CLOSE);
    }
}

TEST_F(Rows, APieceLeftBehindIsForgottenWithItsRow)
{
    Open();
    for (const char* expected : {"U1", "U2", "U3"}) {
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        std::array<SQLWCHAR, 2> piece{};
        SQLLEN bytes = 0;
        ASSERT_EQ(SQLGetData(statement, 1, SQL_C_WCHAR, piece.data(), sizeof piece, &bytes), SQL_SUCCESS_WITH_INFO);
        EXPECT_EQ(piece[0], 'U');
        EXPECT_EQ(Get(2), "R" + std::string(expected + 1));
        EXPECT_EQ(Get(1), expected);
    }
}

TEST_F(Rows, CellsCanBeReadInAnyOrderAndMoreThanOnce)
{
    Open();
    for (int row = 1; row <= 3; ++row) {
        const std::string number = std::to_string(row);
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(Get(2), "R" + number);
            EXPECT_EQ(Get(1), "U" + number);
            EXPECT_EQ(Get(1), "<no data>");
            char narrow[10] = "";
            SQLLEN bytes = 0;
            EXPECT_EQ(SQLGetData(statement, 2, SQL_C_CHAR, narrow, sizeof narrow, &bytes), SQL_SUCCESS);
            EXPECT_EQ("R" + number, narrow);
            EXPECT_EQ(SQLGetData(statement, 2, SQL_C_CHAR, narrow, sizeof narrow, &bytes), SQL_NO_DATA);
        }
    }
}

TEST_F(Rows, TheLengthCanBeAskedForFirst)
{
    Open();
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQLLEN bytes = 0;
    SQLWCHAR nothing = 0;
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_WCHAR, &nothing, 0, &bytes), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(bytes, 4);
    EXPECT_EQ(Get(1), "U1");
}

TEST_F(Rows, NullsAreMarked)
{
    ASSERT_TRUE(client.Execute("UPDATE TW_USER SET REMARKS = NULL").Succeeded());
    std::array<SQLWCHAR, 10> text{};
    SQLLEN bytes = 0;
    SQLBindCol(statement, 2, SQL_C_WCHAR, text.data(), sizeof text, &bytes);
    Open();
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(bytes, SQL_NULL_DATA);
    SQLFreeStmt(statement, SQL_UNBIND);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_WCHAR, text.data(), sizeof text, nullptr), SQL_ERROR);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "22002");
}

TEST_F(Rows, AStatementThatIsUsedAgainStartsAfresh)
{
    std::array<std::array<SQLWCHAR, 6>, 4> names{};
    std::array<SQLLEN, 4> bytes{};
    SQLULEN fetched = 0;
    Set(SQL_ATTR_ROW_ARRAY_SIZE, names.size());
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_WCHAR, names.data(), sizeof names[0], bytes.data());
    for (int round = 0; round < 3; ++round) {
        Open();
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        EXPECT_EQ(Narrow(names[0].data(), 2), "U1");
        EXPECT_EQ(fetched, 4u);
        SQLCloseCursor(statement);
    }
    SQLFreeStmt(statement, SQL_UNBIND);
    Set(SQL_ATTR_ROW_ARRAY_SIZE, 1);
    Open();
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(Get(1), "U1");
}

TEST_F(Rows, AResultMayFollowOneReadToItsEndWithoutAClose)
{
    std::array<SQLINTEGER, 4> numbers{};
    SQLULEN fetched = 0;
    Set(SQL_ATTR_ROW_ARRAY_SIZE, numbers.size());
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_SLONG, numbers.data(), 0, nullptr);
    const auto readAll = [&] {
        std::string blocks;
        while (SQL_SUCCEEDED(SQLFetch(statement)))
            blocks += std::to_string(fetched) + " from " + std::to_string(numbers[0]) + "; ";
        return blocks;
    };
    for (int round = 0; round < 3; ++round) {
        Open("SELECT rowid FROM TW_USER ORDER BY rowid");
        EXPECT_EQ(readAll(), "4 from 1; 4 from 5; 2 from 9; ");
    }
    std::vector<SQLWCHAR> text = Wide("SELECT rowid FROM TW_USER WHERE rowid > 7 ORDER BY rowid");
    ASSERT_EQ(SQLPrepareW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(SQLExecute(statement), SQL_SUCCESS);
        EXPECT_EQ(readAll(), "3 from 8; ");
    }
}

TEST_F(Rows, TheAttributesAreReadBackAsTheyWereSet)
{
    SQLULEN number = 0;
    SQLULEN fetched = 0;
    void* pointer = nullptr;
    Set(SQL_ATTR_ROW_ARRAY_SIZE, 7);
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    EXPECT_EQ(SQLGetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, &number, 0, nullptr), SQL_SUCCESS);
    EXPECT_EQ(number, 7u);
    EXPECT_EQ(SQLGetStmtAttrW(statement, SQL_ATTR_ROWS_FETCHED_PTR, &pointer, 0, nullptr), SQL_SUCCESS);
    EXPECT_EQ(pointer, &fetched);
    EXPECT_EQ(SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, nullptr, 0), SQL_ERROR);
}

TEST_F(Rows, ForwardOnlyCursorsReadInBlocks)
{
    std::array<SQLLEN, 4> bytes{};
    std::array<std::array<SQLWCHAR, 6>, 4> names{};
    SQLULEN fetched = 0;
    Set(SQL_ATTR_CURSOR_TYPE, SQL_CURSOR_FORWARD_ONLY);
    Set(SQL_ATTR_ROW_ARRAY_SIZE, names.size());
    Point(SQL_ATTR_ROWS_FETCHED_PTR, &fetched);
    SQLBindCol(statement, 1, SQL_C_WCHAR, names.data(), sizeof names[0], bytes.data());
    Open();
    SQLULEN all = 0;
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        EXPECT_EQ(Get(1), "U" + std::to_string(all + 1));
        EXPECT_EQ(Get(2), "R" + std::to_string(all + 1));
        EXPECT_EQ(SQLFetchScroll(statement, SQL_FETCH_PRIOR, 0), SQL_ERROR);
        all += fetched;
    }
    EXPECT_EQ(all, static_cast<SQLULEN>(rowCount));
}
