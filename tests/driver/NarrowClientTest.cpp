#include "RecordsFixture.h"

#include <sqlucode.h>

#include <array>
#include <bitset>
#include <dlfcn.h>
#include <utility>

namespace
{

/// Functions take texts that they only read without saying so.
SQLCHAR* Argument(const std::string& text)
{
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
}

/// A connection made by the narrow functions, for which the driver manager uses the driver's narrow ones. Calls give
/// the SQLSTATE and the message of what went wrong.
class NarrowConnection
{
public:
    NarrowConnection()
    {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &connection);
    }
    ~NarrowConnection()
    {
        if (statement)
            SQLFreeHandle(SQL_HANDLE_STMT, statement);
        SQLDisconnect(connection);
        SQLFreeHandle(SQL_HANDLE_DBC, connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    NarrowConnection(const NarrowConnection&) = delete;
    NarrowConnection& operator=(const NarrowConnection&) = delete;

    SQLRETURN ConnectByString(const std::string& text)
    {
        return WithStatement(
            SQLDriverConnect(connection, nullptr, Argument(text), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
    }

    SQLRETURN ConnectByName(const std::string& name)
    {
        return WithStatement(SQLConnect(connection, Argument(name), SQL_NTS, nullptr, 0, nullptr, 0));
    }

    SQLRETURN Run(const std::string& text) const
    {
        SQLFreeStmt(statement, SQL_CLOSE);
        return SQLExecDirect(statement, Argument(text), SQL_NTS);
    }

    std::string Complaint() const { return Complaint(SQL_HANDLE_STMT, statement); }

    static std::string Complaint(SQLSMALLINT type, SQLHANDLE handle)
    {
        std::array<SQLCHAR, 6> state{};
        std::array<SQLCHAR, 1000> text{};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        const SQLRETURN answer = SQLGetDiagRec(type, handle, 1, state.data(), &native, text.data(),
                                               static_cast<SQLSMALLINT>(text.size()), &length);
        if (!SQL_SUCCEEDED(answer))
            return "(none)";
        return std::string(reinterpret_cast<const char*>(state.data())) + " " +
               reinterpret_cast<const char*>(text.data());
    }

    SQLHDBC connection = nullptr;
    SQLHSTMT statement = nullptr;

private:
    SQLRETURN WithStatement(SQLRETURN connected)
    {
        if (SQL_SUCCEEDED(connected))
            SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
        return connected;
    }

    SQLHENV m_environment = nullptr;
};

/// The fixture's catalog and one narrow connection to it.
class NarrowClient : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        ASSERT_EQ(narrow.ConnectByString("Driver=Tarnwick ODBC;Catalog=" + setup.File("c.cat")), SQL_SUCCESS)
            << NarrowConnection::Complaint(SQL_HANDLE_DBC, narrow.connection);
    }

    NarrowConnection narrow;
};

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(NarrowClient, IsToldOfErrors)
{
    ASSERT_EQ(narrow.Run("SELECT X FROM NOPE"), SQL_ERROR);
    const std::string complaint = narrow.Complaint();
    EXPECT_TRUE(complaint.starts_with("42S02 ")) << complaint;
    EXPECT_TRUE(Holds(complaint, "NOPE")) << complaint;

    SQLINTEGER records = 0;
    EXPECT_EQ(SQLGetDiagField(SQL_HANDLE_STMT, narrow.statement, 0, SQL_DIAG_NUMBER, &records, 0, nullptr),
              SQL_SUCCESS);
    EXPECT_EQ(records, 1);
    std::array<SQLCHAR, 6> state{};
    SQLSMALLINT length = 0;
    EXPECT_EQ(
        SQLGetDiagField(SQL_HANDLE_STMT, narrow.statement, 1, SQL_DIAG_SQLSTATE, state.data(), sizeof state, &length),
        SQL_SUCCESS);
    EXPECT_STREQ(reinterpret_cast<const char*>(state.data()), "42S02");
}

TEST_F(NarrowClient, IsToldWhichBytesOfARecordAreWrong)
{
    Make("ACCOUNT", {{"NUMBER", "STRING", 2}, {"BALANCE", "PACKED", 2}}, "01\x12\x3C" + std::string("02\xA5\x0D"));
    SQLRETURN answer = narrow.Run("SELECT BALANCE FROM BANK_ACCOUNT");
    for (int row = 0; row < 2 && SQL_SUCCEEDED(answer); ++row)
        answer = SQLFetch(narrow.statement);
    EXPECT_EQ(answer, SQL_ERROR);
    const std::string complaint = narrow.Complaint();
    EXPECT_TRUE(Holds(complaint, "record 2, field BALANCE: the bytes A5 0D cannot be read as PACKED")) << complaint;
}

TEST_F(NarrowClient, IsToldOfACutText)
{
    ASSERT_EQ(narrow.Run("SELECT 'Overdrawn'"), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(narrow.statement), SQL_SUCCESS);
    std::array<SQLWCHAR, 5> text{};
    SQLLEN bytes = 0;
    EXPECT_EQ(SQLGetData(narrow.statement, 1, SQL_C_WCHAR, text.data(), sizeof text, &bytes), SQL_SUCCESS_WITH_INFO);
    EXPECT_TRUE(narrow.Complaint().starts_with("01004 ")) << narrow.Complaint();
}

TEST_F(NarrowClient, IsToldOfRightsThatAreMissing)
{
    Run("INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')");
    NarrowConnection clerk;
    ASSERT_EQ(clerk.ConnectByString("Driver=Tarnwick ODBC;UID=CLERK;Catalog=" + setup.File("c.cat")), SQL_SUCCESS);
    ASSERT_EQ(clerk.Run("SELECT * FROM TW_FILE"), SQL_ERROR);
    EXPECT_TRUE(clerk.Complaint().starts_with("42000 ")) << clerk.Complaint();
    EXPECT_TRUE(Holds(clerk.Complaint(), "privileges")) << clerk.Complaint();
}

TEST_F(NarrowClient, ConnectsByTheNameOfItsDataSourceToo)
{
    const std::string name = setup.AddCatalog("c.cat");
    NarrowConnection named;
    ASSERT_EQ(named.ConnectByName(name), SQL_SUCCESS) << NarrowConnection::Complaint(SQL_HANDLE_DBC, named.connection);
    ASSERT_EQ(named.Run("SELECT X FROM NOPE"), SQL_ERROR);
    EXPECT_TRUE(named.Complaint().starts_with("42S02 ")) << named.Complaint();
}

TEST_F(NarrowClient, IsToldWhyItCannotConnect)
{
    NarrowConnection none;
    ASSERT_EQ(none.ConnectByString("Driver=Tarnwick ODBC;Catalog=" + setup.File("missing/c.cat")), SQL_ERROR);
    const std::string complaint = NarrowConnection::Complaint(SQL_HANDLE_DBC, none.connection);
    EXPECT_TRUE(complaint.starts_with("08001 ")) << complaint;
    EXPECT_TRUE(Holds(complaint, "missing/c.cat")) << complaint;
}

TEST_F(NarrowClient, AsksForTheRightsToColumns)
{
    const std::string table = "TW_USER";
    const std::string all = "%";
    ASSERT_EQ(
        SQLColumnPrivileges(narrow.statement, nullptr, 0, nullptr, 0, Argument(table), SQL_NTS, Argument(all), SQL_NTS),
        SQL_SUCCESS)
        << narrow.Complaint();
    EXPECT_EQ(SQLFetch(narrow.statement), SQL_SUCCESS);
}

TEST_F(NarrowClient, NamesItsCursor)
{
    const std::string name = "LEDGER";
    ASSERT_EQ(SQLSetCursorName(narrow.statement, Argument(name), SQL_NTS), SQL_SUCCESS) << narrow.Complaint();
    std::array<SQLCHAR, 20> found{};
    SQLSMALLINT length = 0;
    ASSERT_EQ(SQLGetCursorName(narrow.statement, found.data(), sizeof found, &length), SQL_SUCCESS);
    EXPECT_STREQ(reinterpret_cast<const char*>(found.data()), "LEDGER");
}

TEST_F(NarrowClient, GetsWholeCharactersInItsColumns)
{
    struct Cut {
        const char* text;
        SQLLEN capacity;
        const char* shown;
    };
    for (const auto& [text, capacity, shown] :
         {Cut{"h\xC3\xA4tte", 3, "h"}, Cut{"h\xC3\xA4tte", 4, "h\xC3\xA4"}, Cut{"\xE2\x82\xAC", 3, ""},
          Cut{"1\xE2\x82\xAC", 4, "1"}, Cut{"\xF0\x9F\x98\x80x", 4, ""},
          Cut{"\xF0\x9F\x98\x80x", 5, "\xF0\x9F\x98\x80"}, Cut{"\xC3\xA4", 2, ""}, Cut{"plain", 4, "pla"}}) {
        char place[10] = "#########";
        SQLLEN bytes = 0;
        SQLBindCol(narrow.statement, 1, SQL_C_CHAR, place, capacity, &bytes);
        ASSERT_EQ(narrow.Run("SELECT '" + std::string(text) + "'"), SQL_SUCCESS);
        EXPECT_EQ(SQLFetch(narrow.statement), SQL_SUCCESS_WITH_INFO);
        EXPECT_TRUE(narrow.Complaint().starts_with("01004 ")) << narrow.Complaint();
        EXPECT_STREQ(place, shown) << text;
        EXPECT_EQ(bytes, static_cast<SQLLEN>(std::string(text).size()));
    }
}

TEST_F(NarrowClient, GetsEveryByteOfATextThatComesInPieces)
{
    ASSERT_EQ(narrow.Run("SELECT 'h\xC3\xA4tte'"), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(narrow.statement), SQL_SUCCESS);
    std::string whole;
    SQLRETURN answer = SQL_SUCCESS_WITH_INFO;
    while (answer == SQL_SUCCESS_WITH_INFO) {
        char piece[3] = "";
        answer = SQLGetData(narrow.statement, 1, SQL_C_CHAR, piece, sizeof piece, nullptr);
        whole += piece;
    }
    EXPECT_EQ(answer, SQL_SUCCESS);
    EXPECT_EQ(whole, "h\xC3\xA4tte");
}

TEST_F(NarrowClient, CanAskForTheLengthOfATextFirst)
{
    ASSERT_EQ(narrow.Run("SELECT 'Overdrawn'"), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(narrow.statement), SQL_SUCCESS);
    SQLLEN bytes = 0;
    char text[10] = "#";
    EXPECT_EQ(SQLGetData(narrow.statement, 1, SQL_C_CHAR, text, 0, &bytes), SQL_SUCCESS_WITH_INFO);
    EXPECT_TRUE(narrow.Complaint().starts_with("01004 ")) << narrow.Complaint();
    EXPECT_EQ(bytes, 9);
    EXPECT_EQ(text[0], '#');
    EXPECT_EQ(SQLGetData(narrow.statement, 1, SQL_C_CHAR, text, sizeof text, &bytes), SQL_SUCCESS);
    EXPECT_STREQ(text, "Overdrawn");
}

namespace
{

/// Every function that a driver can have, but for those that only the driver manager has.
const std::pair<SQLUSMALLINT, const char*> functionNames[] = {
    {SQL_API_SQLALLOCCONNECT, "SQLAllocConnect"},
    {SQL_API_SQLALLOCENV, "SQLAllocEnv"},
    {SQL_API_SQLALLOCHANDLE, "SQLAllocHandle"},
    {SQL_API_SQLALLOCSTMT, "SQLAllocStmt"},
    {SQL_API_SQLBINDCOL, "SQLBindCol"},
    {SQL_API_SQLBINDPARAM, "SQLBindParam"},
    {SQL_API_SQLBINDPARAMETER, "SQLBindParameter"},
    {SQL_API_SQLBROWSECONNECT, "SQLBrowseConnect"},
    {SQL_API_SQLBULKOPERATIONS, "SQLBulkOperations"},
    {SQL_API_SQLCANCEL, "SQLCancel"},
    {SQL_API_SQLCLOSECURSOR, "SQLCloseCursor"},
    {SQL_API_SQLCOLATTRIBUTE, "SQLColAttribute"},
    {SQL_API_SQLCOLUMNPRIVILEGES, "SQLColumnPrivileges"},
    {SQL_API_SQLCOLUMNS, "SQLColumns"},
    {SQL_API_SQLCONNECT, "SQLConnect"},
    {SQL_API_SQLCOPYDESC, "SQLCopyDesc"},
    {SQL_API_SQLDESCRIBECOL, "SQLDescribeCol"},
    {SQL_API_SQLDESCRIBEPARAM, "SQLDescribeParam"},
    {SQL_API_SQLDISCONNECT, "SQLDisconnect"},
    {SQL_API_SQLDRIVERCONNECT, "SQLDriverConnect"},
    {SQL_API_SQLENDTRAN, "SQLEndTran"},
    {SQL_API_SQLERROR, "SQLError"},
    {SQL_API_SQLEXECDIRECT, "SQLExecDirect"},
    {SQL_API_SQLEXECUTE, "SQLExecute"},
    {SQL_API_SQLEXTENDEDFETCH, "SQLExtendedFetch"},
    {SQL_API_SQLFETCH, "SQLFetch"},
    {SQL_API_SQLFETCHSCROLL, "SQLFetchScroll"},
    {SQL_API_SQLFOREIGNKEYS, "SQLForeignKeys"},
    {SQL_API_SQLFREECONNECT, "SQLFreeConnect"},
    {SQL_API_SQLFREEENV, "SQLFreeEnv"},
    {SQL_API_SQLFREEHANDLE, "SQLFreeHandle"},
    {SQL_API_SQLFREESTMT, "SQLFreeStmt"},
    {SQL_API_SQLGETCONNECTATTR, "SQLGetConnectAttr"},
    {SQL_API_SQLGETCONNECTOPTION, "SQLGetConnectOption"},
    {SQL_API_SQLGETCURSORNAME, "SQLGetCursorName"},
    {SQL_API_SQLGETDATA, "SQLGetData"},
    {SQL_API_SQLGETDESCFIELD, "SQLGetDescField"},
    {SQL_API_SQLGETDESCREC, "SQLGetDescRec"},
    {SQL_API_SQLGETDIAGFIELD, "SQLGetDiagField"},
    {SQL_API_SQLGETDIAGREC, "SQLGetDiagRec"},
    {SQL_API_SQLGETENVATTR, "SQLGetEnvAttr"},
    {SQL_API_SQLGETFUNCTIONS, "SQLGetFunctions"},
    {SQL_API_SQLGETINFO, "SQLGetInfo"},
    {SQL_API_SQLGETSTMTATTR, "SQLGetStmtAttr"},
    {SQL_API_SQLGETSTMTOPTION, "SQLGetStmtOption"},
    {SQL_API_SQLGETTYPEINFO, "SQLGetTypeInfo"},
    {SQL_API_SQLMORERESULTS, "SQLMoreResults"},
    {SQL_API_SQLNATIVESQL, "SQLNativeSql"},
    {SQL_API_SQLNUMPARAMS, "SQLNumParams"},
    {SQL_API_SQLNUMRESULTCOLS, "SQLNumResultCols"},
    {SQL_API_SQLPARAMDATA, "SQLParamData"},
    {SQL_API_SQLPARAMOPTIONS, "SQLParamOptions"},
    {SQL_API_SQLPREPARE, "SQLPrepare"},
    {SQL_API_SQLPRIMARYKEYS, "SQLPrimaryKeys"},
    {SQL_API_SQLPROCEDURECOLUMNS, "SQLProcedureColumns"},
    {SQL_API_SQLPROCEDURES, "SQLProcedures"},
    {SQL_API_SQLPUTDATA, "SQLPutData"},
    {SQL_API_SQLROWCOUNT, "SQLRowCount"},
    {SQL_API_SQLSETCONNECTATTR, "SQLSetConnectAttr"},
    {SQL_API_SQLSETCONNECTOPTION, "SQLSetConnectOption"},
    {SQL_API_SQLSETCURSORNAME, "SQLSetCursorName"},
    {SQL_API_SQLSETDESCFIELD, "SQLSetDescField"},
    {SQL_API_SQLSETDESCREC, "SQLSetDescRec"},
    {SQL_API_SQLSETENVATTR, "SQLSetEnvAttr"},
    {SQL_API_SQLSETPARAM, "SQLSetParam"},
    {SQL_API_SQLSETPOS, "SQLSetPos"},
    {SQL_API_SQLSETSCROLLOPTIONS, "SQLSetScrollOptions"},
    {SQL_API_SQLSETSTMTATTR, "SQLSetStmtAttr"},
    {SQL_API_SQLSETSTMTOPTION, "SQLSetStmtOption"},
    {SQL_API_SQLSPECIALCOLUMNS, "SQLSpecialColumns"},
    {SQL_API_SQLSTATISTICS, "SQLStatistics"},
    {SQL_API_SQLTABLEPRIVILEGES, "SQLTablePrivileges"},
    {SQL_API_SQLTABLES, "SQLTables"},
    {SQL_API_SQLTRANSACT, "SQLTransact"},
};

constexpr std::size_t allFunctions = SQL_API_ODBC3_ALL_FUNCTIONS_SIZE * 16;

} // namespace

TEST(Functions, JustWhatTheDriverExportsIsThere)
{
    void* const driver = ::dlopen(TARNWICK_DRIVER_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_TRUE(driver) << ::dlerror();
    const auto ask = reinterpret_cast<decltype(&SQLGetFunctions)>(::dlsym(driver, "SQLGetFunctions"));
    ASSERT_TRUE(ask);
    std::bitset<allFunctions> exported;
    for (const auto& [number, name] : functionNames)
        exported[number] = ::dlsym(driver, name) != nullptr;

    std::array<SQLUSMALLINT, SQL_API_ODBC3_ALL_FUNCTIONS_SIZE> bits;
    bits.fill(0xFFFF);
    ASSERT_EQ(ask(nullptr, SQL_API_ODBC3_ALL_FUNCTIONS, bits.data()), SQL_SUCCESS);
    std::array<SQLUSMALLINT, 100> marks;
    marks.fill(7);
    ASSERT_EQ(ask(nullptr, SQL_API_ALL_FUNCTIONS, marks.data()), SQL_SUCCESS);
    for (SQLUSMALLINT number = 1; number < allFunctions; ++number) {
        EXPECT_EQ(SQL_FUNC_EXISTS(bits.data(), number) == SQL_TRUE, exported[number]) << number;
        if (number < marks.size()) {
            EXPECT_EQ(marks[number], exported[number] ? SQL_TRUE : SQL_FALSE) << number;
        }
        SQLUSMALLINT single = 7;
        if (number == SQL_API_ODBC3_ALL_FUNCTIONS)
            continue;
        EXPECT_EQ(ask(nullptr, number, &single), SQL_SUCCESS);
        EXPECT_EQ(single, exported[number] ? SQL_TRUE : SQL_FALSE) << number;
    }
    ::dlclose(driver);
}

TEST_F(NarrowClient, SeesThatWhatItNeedsIsThere)
{
    const auto isThere = [&](SQLUSMALLINT function) {
        SQLUSMALLINT supported = 7;
        EXPECT_EQ(SQLGetFunctions(narrow.connection, function, &supported), SQL_SUCCESS);
        return supported == SQL_TRUE;
    };
    for (const SQLUSMALLINT function : {SQL_API_SQLGETDIAGREC, SQL_API_SQLGETDIAGFIELD, SQL_API_SQLCOLUMNPRIVILEGES,
                                        SQL_API_SQLSETCURSORNAME, SQL_API_SQLFETCHSCROLL, SQL_API_SQLMORERESULTS})
        EXPECT_TRUE(isThere(function)) << function;
    for (const SQLUSMALLINT function : {SQL_API_SQLBROWSECONNECT, SQL_API_SQLGETDESCFIELD, SQL_API_SQLCOPYDESC})
        EXPECT_FALSE(isThere(function)) << function;
}
