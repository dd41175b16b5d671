#include "OdbcFloor.h"

#include <sql.h>
#include <sqlext.h>

#include <stdexcept>

namespace
{

constexpr SQLSMALLINT columnCharacters = 256;

void check(SQLRETURN result, const char* what)
{
    if (!SQL_SUCCEEDED(result))
        throw std::runtime_error(what);
}

SQLWCHAR* wide(const QString& text)
{
    return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(reinterpret_cast<const char16_t*>(text.utf16())));
}

} // namespace

struct OdbcFloor::Handles {
    SQLHENV environment = SQL_NULL_HENV;
    SQLHDBC connection = SQL_NULL_HDBC;
    SQLHSTMT statement = SQL_NULL_HSTMT;
};

OdbcFloor::OdbcFloor(const QString& datasource) : m_handles(std::make_unique<Handles>())
{
    Handles& h = *m_handles;
    check(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &h.environment), "environment");
    check(SQLSetEnvAttr(h.environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0),
          "version");
    check(SQLAllocHandle(SQL_HANDLE_DBC, h.environment, &h.connection), "connection");
    const QString connect = QStringLiteral("DSN=%1;DATABASE=PUBS").arg(datasource);
    check(SQLDriverConnectW(h.connection, nullptr, wide(connect), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
          "connect");
    check(SQLAllocHandle(SQL_HANDLE_STMT, h.connection, &h.statement), "statement");
}

OdbcFloor::~OdbcFloor()
{
    SQLFreeHandle(SQL_HANDLE_STMT, m_handles->statement);
    SQLDisconnect(m_handles->connection);
    SQLFreeHandle(SQL_HANDLE_DBC, m_handles->connection);
    SQLFreeHandle(SQL_HANDLE_ENV, m_handles->environment);
}

OdbcFloor::Rows OdbcFloor::read(const QString& statement)
{
    SQLHSTMT handle = m_handles->statement;
    const SQLRETURN executed = SQLExecDirectW(handle, wide(statement), SQL_NTS);
    // An UPDATE or DELETE that finds no row.
    if (executed == SQL_NO_DATA)
        return {};
    check(executed, "execute");
    SQLSMALLINT columns = 0;
    check(SQLNumResultCols(handle, &columns), "columns");
    if (columns == 0)
        return {};

    std::vector<std::vector<SQLWCHAR>> buffers(columns, std::vector<SQLWCHAR>(columnCharacters));
    std::vector<SQLLEN> lengths(columns);
    for (SQLSMALLINT column = 0; column < columns; ++column)
        check(SQLBindCol(handle, static_cast<SQLUSMALLINT>(column + 1), SQL_C_WCHAR, buffers[column].data(),
                         columnCharacters * sizeof(SQLWCHAR), &lengths[column]),
              "bind");

    Rows rows;
    while (SQL_SUCCEEDED(SQLFetch(handle))) {
        std::vector<std::u16string>& row = rows.emplace_back();
        row.reserve(static_cast<std::size_t>(columns));
        for (SQLSMALLINT column = 0; column < columns; ++column) {
            const SQLLEN bytes = lengths[column];
            row.emplace_back(reinterpret_cast<const char16_t*>(buffers[column].data()),
                             bytes > 0 ? static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR) : 0);
        }
    }
    SQLFreeStmt(handle, SQL_CLOSE);
    SQLFreeStmt(handle, SQL_UNBIND);
    return rows;
}
