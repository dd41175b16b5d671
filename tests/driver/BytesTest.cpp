#include "ValuesFixture.h"

#include <array>

using namespace std::string_literals;

namespace
{

/// A file with a field of five bytes, read by one statement of a client.
class Bytes : public Values
{
protected:
    void SetUp() override
    {
        Values::SetUp();
        Make("IMAGE", {{"NO", "ZONED-U", 1}, {"RAW", "BINARY-STRING", 5}}, "1\x00\xFF\x10"s + "A\n2" + "X'41'");
    }

    /// The second cell of the first row, piece by piece; the length of what is left is told with each.
    template <typename Unit>
    std::string Pieces(const std::string& query, std::size_t digits, SQLSMALLINT type, std::size_t room)
    {
        Open(query);
        EXPECT_EQ(SQLFetch(statement), SQL_SUCCESS);
        std::string whole;
        for (SQLRETURN answer = SQL_SUCCESS_WITH_INFO; answer == SQL_SUCCESS_WITH_INFO;) {
            std::vector<Unit> piece(room, Unit{'#'});
            const auto capacity = static_cast<SQLLEN>(room * sizeof(Unit));
            SQLLEN bytes = 0;
            answer = SQLGetData(statement, 2, type, piece.data(), capacity, &bytes);
            EXPECT_TRUE(SQL_SUCCEEDED(answer));
            EXPECT_EQ(bytes, static_cast<SQLLEN>((digits - whole.size()) * sizeof(Unit)));
            for (const Unit unit : piece) {
                if (unit == 0)
                    break;
                whole += static_cast<char>(unit);
            }
        }
        std::array<Unit, 20> more{};
        SQLLEN bytes = 0;
        EXPECT_EQ(SQLGetData(statement, 2, type, more.data(), sizeof more, &bytes), SQL_NO_DATA);
        return whole;
    }
};

} // namespace

TEST_F(Bytes, AreTwoDigitsEachAsText)
{
    EXPECT_EQ(Rows("SELECT NO, RAW FROM BANK_IMAGE"), "1|00FF10410A\n2|5827343127\n");
    EXPECT_EQ(Rows("SELECT RAW FROM BANK_IMAGE WHERE RAW = X'5827343127'"), "5827343127\n");
    EXPECT_EQ(Rows("SELECT quote(RAW), hex(RAW) FROM BANK_IMAGE WHERE NO = 1"), "X'00FF10410A'|00FF10410A\n");
}

TEST_F(Bytes, ComeInPiecesOfAnySize)
{
    const auto expect = [&](const std::string& query, const std::string& digits, std::size_t room) {
        EXPECT_EQ(Pieces<SQLCHAR>(query, digits.size(), SQL_C_CHAR, room), digits) << room;
        EXPECT_EQ(Pieces<SQLWCHAR>(query, digits.size(), SQL_C_WCHAR, room), digits) << room;
    };
    for (const std::size_t room : {2u, 3u, 4u, 5u, 8u, 10u, 11u, 100u})
        expect("SELECT NO, RAW FROM BANK_IMAGE", "00FF10410A", room);
    std::string digits;
    for (int i = 0; i < 5000; ++i) {
        digits += "0123456789ABCDEF"[i / 16 % 16];
        digits += "0123456789ABCDEF"[i % 16];
    }
    Run("CREATE TABLE LARGE (NO INTEGER, RAW BLOB)");
    Run("INSERT INTO LARGE VALUES (1, X'" + digits + "')");
    for (const std::size_t room : {3u, 256u, 1024u, 4000u, 10000u, 10001u, 20000u})
        expect("SELECT NO, RAW FROM LARGE", digits, room);
}

TEST_F(Bytes, CanBeAskedForTheirLengthFirst)
{
    Open("SELECT RAW FROM BANK_IMAGE");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQLLEN bytes = 0;
    char nothing = 0;
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_CHAR, &nothing, 0, &bytes), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(bytes, 10);
    char text[11] = "";
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_CHAR, text, sizeof text, &bytes), SQL_SUCCESS);
    EXPECT_STREQ(text, "00FF10410A");
    EXPECT_EQ(bytes, 10);
}

TEST_F(Bytes, StayBytesForThoseWhoAskForThem)
{
    for (const SQLSMALLINT type : {SQLSMALLINT{SQL_C_BINARY}, SQLSMALLINT{SQL_C_DEFAULT}}) {
        Open("SELECT RAW FROM BANK_IMAGE");
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        std::array<char, 20> raw{};
        SQLLEN bytes = 0;
        EXPECT_EQ(SQLGetData(statement, 1, type, raw.data(), sizeof raw, &bytes), SQL_SUCCESS);
        EXPECT_EQ(std::string(raw.data(), static_cast<std::size_t>(bytes)), "\x00\xFF\x10"s + "A\n");
    }
}

TEST_F(Bytes, AreNeverCutAmidAByteWhereTheyAreBound)
{
    char narrow[8] = "#######";
    std::array<SQLWCHAR, 6> wide{};
    SQLLEN narrowBytes = 0;
    SQLLEN wideBytes = 0;
    SQLBindCol(statement, 1, SQL_C_CHAR, narrow, sizeof narrow, &narrowBytes);
    SQLBindCol(statement, 2, SQL_C_WCHAR, wide.data(), sizeof wide, &wideBytes);
    Open("SELECT RAW, RAW FROM BANK_IMAGE");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(OdbcClient::DiagnosticOf(SQL_HANDLE_STMT, statement).state, "01004");
    EXPECT_STREQ(narrow, "00FF10");
    EXPECT_EQ(narrowBytes, 10);
    EXPECT_EQ(Narrow(wide.data(), 5), "00FF"s + '\0');
    EXPECT_EQ(wideBytes, 20);
}

TEST_F(Bytes, OfAnotherKindOfCellLeaveItsTextAlone)
{
    Run("CREATE TABLE MIXED (A BLOB, B VARCHAR(20))");
    Run("INSERT INTO MIXED VALUES (NULL, 'X''41'''), ('X''4', 'X''41'), (X'', ''), ('plain', X'41')");
    EXPECT_EQ(Rows("SELECT A, B FROM MIXED"), "~|X'41'\nX'4|X'41\n|\nplain|X'41'\n");
    char text[20] = "";
    SQLLEN bytes = 0;
    Open("SELECT A FROM MIXED");
    for (const SQLLEN expected : {SQLLEN{SQL_NULL_DATA}, SQLLEN{3}, SQLLEN{0}, SQLLEN{5}}) {
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        EXPECT_EQ(SQLGetData(statement, 1, SQL_C_CHAR, text, sizeof text, &bytes), SQL_SUCCESS);
        EXPECT_EQ(bytes, expected);
    }
    EXPECT_STREQ(text, "plain");
}

TEST_F(Bytes, AreAnnouncedWithTheRoomThatTheirTextNeeds)
{
    Run("CREATE TABLE KEPT (A BLOB, B BLOB(300), C VARBINARY(20))");
    Open("SELECT A, B, C FROM KEPT");
    const SQLLEN sizes[] = {255, 300, 20};
    const SQLSMALLINT types[] = {SQL_BINARY, SQL_BINARY, SQL_VARBINARY};
    for (SQLUSMALLINT column = 1; column <= 3; ++column) {
        const auto field = [&](SQLUSMALLINT number) {
            SQLLEN value = -1;
            EXPECT_EQ(SQLColAttributeW(statement, column, number, nullptr, 0, nullptr, &value), SQL_SUCCESS);
            return value;
        };
        EXPECT_EQ(field(SQL_DESC_DISPLAY_SIZE), 2 * sizes[column - 1]);
        EXPECT_EQ(field(SQL_DESC_LENGTH), sizes[column - 1]);
        EXPECT_EQ(field(SQL_DESC_OCTET_LENGTH), sizes[column - 1]);
        EXPECT_EQ(field(SQL_DESC_TYPE), types[column - 1]);
        EXPECT_EQ(field(SQL_DESC_CONCISE_TYPE), types[column - 1]);
    }
}
