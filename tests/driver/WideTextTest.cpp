#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <sqlucode.h>

#include <array>
#include <random>

namespace
{

const std::vector<std::string> texts = {
    "plain",
    "it's",
    "''",
    "\"quoted\"",
    "Zażółć gęślą jaźń",
    "Ελληνικά",
    "日本語テキスト",
    "עברית",
    "हिन्दी",
    "\xF0\x9F\x98\x80",
    "a\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x92\xBB z",
    "\xF0\x9D\x84\x9E\xF0\x90\x8D\x88",
    "\xF4\x8F\xBF\xBD",
    "tab\tand\nnewline",
    "-- no comment /* at all */ ; ? {d '2020-01-01'} #x#",
};

std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? "''" : std::string(1, c);
    return quoted + "'";
}

class WideText : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"))) << client.Failure().message;
    }

    OdbcSetup setup;
    OdbcClient client;
};

} // namespace

TEST_F(WideText, EveryTextComesBackAsItWasWritten)
{
    for (const std::string& text : texts) {
        ASSERT_TRUE(client
                        .Execute("INSERT INTO TW_USER (USER_NAME, REMARKS) VALUES (" + Quoted(text) + ", " +
                                 Quoted(text + text) + ")")
                        .Succeeded())
            << text;
        const Result result =
            client.Execute("SELECT USER_NAME, REMARKS FROM TW_USER WHERE USER_NAME = " + Quoted(text));
        ASSERT_EQ(result.rows.size(), 1u) << text;
        EXPECT_EQ(result.rows[0], (Row{text, text + text}));
        EXPECT_EQ(client.Prepared("SELECT REMARKS FROM TW_USER WHERE USER_NAME = " + Quoted(text)).Single(),
                  text + text);
    }
    EXPECT_EQ(client.Execute("SELECT length('\xF0\x9F\x98\x80')").Single(), "1");
}

TEST_F(WideText, BoundColumnsReceiveEveryCharacter)
{
    for (const std::string& text : texts)
        ASSERT_TRUE(
            client.Execute("INSERT INTO TW_USER (USER_NAME, REMARKS) VALUES (" + Quoted(text) + ", NULL)").Succeeded());
    SQLHSTMT statement = client.NewStatement();
    std::array<SQLWCHAR, 200> name{};
    std::array<SQLWCHAR, 200> remarks{};
    SQLLEN nameBytes = 0;
    SQLLEN remarksBytes = 0;
    SQLBindCol(statement, 1, SQL_C_WCHAR, name.data(), sizeof name, &nameBytes);
    SQLBindCol(statement, 2, SQL_C_WCHAR, remarks.data(), sizeof remarks, &remarksBytes);
    std::vector<SQLWCHAR> text =
        Wide("SELECT USER_NAME, REMARKS FROM TW_USER WHERE USER_NAME <> 'ADMIN' ORDER BY rowid");
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    std::vector<std::string> found;
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        found.push_back(Narrow(name.data(), static_cast<std::size_t>(nameBytes) / sizeof(SQLWCHAR)));
        EXPECT_EQ(remarksBytes, SQL_NULL_DATA);
    }
    EXPECT_EQ(found, texts);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(WideText, WideParametersArriveWhole)
{
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text = Wide("SELECT ?");
    for (const std::string& value : texts) {
        std::vector<SQLWCHAR> parameter = Wide(value);
        SQLLEN length = SQL_NTS;
        ASSERT_EQ(SQLPrepareW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
        ASSERT_EQ(SQLBindParameter(statement, 1, SQL_PARAM_INPUT, SQL_C_WCHAR, SQL_WVARCHAR, parameter.size(), 0,
                                   parameter.data(), 0, &length),
                  SQL_SUCCESS);
        ASSERT_EQ(SQLExecute(statement), SQL_SUCCESS);
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        std::array<SQLWCHAR, 200> back{};
        SQLLEN bytes = 0;
        ASSERT_EQ(SQLGetData(statement, 1, SQL_C_WCHAR, back.data(), sizeof back, &bytes), SQL_SUCCESS);
        EXPECT_EQ(Narrow(back.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR)), value);
        SQLFreeStmt(statement, SQL_CLOSE);
    }
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(WideText, RandomTextsSurvive)
{
    std::mt19937 random(20240229);
    std::string statement = "SELECT 0";
    Row expected = {"0"};
    for (int round = 0; round < 40; ++round) {
        std::vector<SQLWCHAR> units;
        for (unsigned length = random() % 300; length > 0; --length) {
            char32_t point = 0;
            do
                point = 1 + random() % (random() % 3 == 0 ? 0x10FFFF : 0x2FF);
            while (point >= 0xD800 && point < 0xE000);
            if (point >= 0x10000) {
                units.push_back(static_cast<SQLWCHAR>(0xD800 + (point - 0x10000) / 1024));
                units.push_back(static_cast<SQLWCHAR>(0xDC00 + (point - 0x10000) % 1024));
            } else {
                units.push_back(static_cast<SQLWCHAR>(point));
            }
        }
        const std::string text = Narrow(units.data(), units.size());
        statement += ", " + Quoted(text);
        expected.push_back(text);
    }
    const Result result = client.Execute(statement);
    ASSERT_EQ(result.rows.size(), 1u) << result.diagnostic.message;
    EXPECT_EQ(result.rows[0], expected);
}

TEST_F(WideText, ColumnNamesAndMessagesAreWide)
{
    const Result named = client.Execute("SELECT 1 AS \"\xF0\x9F\x98\x80 \xC3\xA9\"");
    ASSERT_EQ(named.columns.size(), 1u);
    EXPECT_EQ(named.columns[0].name, "\xF0\x9F\x98\x80 \xC3\xA9");
    const Result refused = client.Execute("SELECT \"\xF0\x9F\x98\x80\" FROM TW_FILE");
    EXPECT_NE(refused.diagnostic.message.find("\xF0\x9F\x98\x80"), std::string::npos) << refused.diagnostic.message;
}

TEST_F(WideText, TheNameOfALongExpressionIsTheWholeExpression)
{
    std::string expression = "'";
    for (int i = 0; i < 2000; ++i)
        expression += "\xF0\x9F\x98\x80";
    expression += "'";
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text = Wide("SELECT " + expression);
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    std::vector<SQLWCHAR> name(5000);
    SQLSMALLINT length = 0;
    ASSERT_EQ(SQLDescribeColW(statement, 1, name.data(), static_cast<SQLSMALLINT>(name.size()), &length, nullptr,
                              nullptr, nullptr, nullptr),
              SQL_SUCCESS);
    EXPECT_EQ(length, 4002);
    EXPECT_EQ(Narrow(name.data(), 4002), expression);
    EXPECT_EQ(SQLDescribeColW(statement, 1, name.data(), 10, &length, nullptr, nullptr, nullptr, nullptr),
              SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(length, 4002);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(WideText, CatalogFunctionsTakeWideNames)
{
    ASSERT_TRUE(client.Execute("CREATE TABLE \"\xF0\x9F\x98\x80\" (\"\xC3\xA9\" VARCHAR(7))").Succeeded());
    std::vector<SQLWCHAR> name = Wide("\xF0\x9F\x98\x80");
    const Result tables = client.Read([&](SQLHSTMT statement) {
        return SQLTablesW(statement, nullptr, 0, nullptr, 0, name.data(), SQL_NTS, nullptr, 0);
    });
    ASSERT_EQ(tables.rows.size(), 1u);
    EXPECT_EQ(tables.rows[0][2], "\xF0\x9F\x98\x80");
    const Result columns = client.Read([&](SQLHSTMT statement) {
        return SQLColumnsW(statement, nullptr, 0, nullptr, 0, name.data(), SQL_NTS, nullptr, 0);
    });
    ASSERT_EQ(columns.rows.size(), 1u);
    EXPECT_EQ(columns.rows[0][3], "\xC3\xA9");
}

TEST_F(WideText, LongTextsComeInPieces)
{
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += i % 7 == 0 ? "\xF0\x9F\x98\x80" : "\xC3\xA9";
    ASSERT_TRUE(client.Execute("UPDATE TW_USER SET REMARKS = '" + text + "'").Succeeded());
    EXPECT_EQ(client.Execute("SELECT REMARKS FROM TW_USER").Single(), text);
}
