#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>

namespace tarnwick
{

/// Stands in for a function of a library that could not be loaded.
template <typename Function>
struct Missing;
template <typename... Arguments>
struct Missing<SQLRETURN (*)(Arguments...)> {
    static SQLRETURN Call(Arguments...) { return SQL_ERROR; }
};

// clang-format off
#define TARNWICK_LOWER_FUNCTIONS(X)                                                                                    \
    X(SQLAllocHandle) X(SQLBindCol) X(SQLBindParam) X(SQLBindParameter) X(SQLBulkOperations) X(SQLCancel)              \
    X(SQLCloseCursor) X(SQLColAttribute) X(SQLDescribeCol) X(SQLDescribeParam) X(SQLDisconnect) X(SQLDriverConnect)    \
    X(SQLEndTran) X(SQLExecDirect) X(SQLExecute) X(SQLExtendedFetch) X(SQLFetch) X(SQLFetchScroll) X(SQLForeignKeys)   \
    X(SQLFreeHandle) X(SQLFreeStmt) X(SQLGetConnectAttr) X(SQLGetCursorName) X(SQLGetData) X(SQLGetDiagField)          \
    X(SQLGetDiagRec) X(SQLGetEnvAttr) X(SQLGetInfo) X(SQLGetStmtAttr) X(SQLMoreResults) X(SQLNumParams)                \
    X(SQLNumResultCols) X(SQLParamData) X(SQLPrepare) X(SQLPrimaryKeys) X(SQLProcedureColumns) X(SQLProcedures)        \
    X(SQLPutData) X(SQLRowCount) X(SQLSetConnectAttr) X(SQLSetCursorName) X(SQLSetEnvAttr) X(SQLSetPos)                \
    X(SQLSetStmtAttr) X(SQLSpecialColumns) X(SQLStatistics) X(SQLTables)
// clang-format on

/// The SQLite ODBC driver of the distribution, on which this driver stands: its narrow functions, which speak UTF-8.
/// It is loaded once, with the library, and its handles are the ones that the driver manager holds.
class Lower
{
public:
    Lower();

#define X(name) decltype(&::name) name = &Missing<decltype(&::name)>::Call;
    TARNWICK_LOWER_FUNCTIONS(X)
#undef X

    bool Loaded() const
    {
        return m_failure.empty();
    }

    /// Why the library could not be loaded; empty if it was.
    const std::string& Failure() const
    {
        return m_failure;
    }

private:
    std::string m_failure;
};

/// Hidden, so that a forwarded call reads it without a detour through the offset table.
extern const Lower lower __attribute__((visibility("hidden")));

} // namespace tarnwick
