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

void OdbcFloor::read(const QString& statement, const std::function<void(const Row&)>& take)
{
    SQLHSTMT handle = m_handles->statement;
    const SQLRETURN executed = SQLExecDirectW(handle, wide(statement), SQL_NTS);
    // An UPDATE or DELETE that finds no row.
    if (executed == SQL_NO_DATA)
        return;
    check(executed, "execute");
    SQLSMALLINT columns = 0;
    check(SQLNumResultCols(handle, &columns), "columns");
    if (columns == 0)
        return;

    std::vector<std::vector<SQLWCHAR>> buffers(columns, std::vector<SQLWCHAR>(columnCharacters));
    std::vector<SQLLEN> lengths(columns);
    Row row(columns);
    for (SQLSMALLINT column = 0; column < columns; ++column) {
        const auto number = static_cast<SQLUSMALLINT>(column + 1);
        SQLLEN type = 0;
        check(SQLColAttributeW(handle, number, SQL_DESC_CONCISE_TYPE, nullptr, 0, nullptr, &type), "type");
        row[column].isText = type == SQL_CHAR || type == SQL_VARCHAR || type == SQL_WCHAR || type == SQL_WVARCHAR;
        check(SQLBindCol(handle, number, SQL_C_WCHAR, buffers[column].data(), columnCharacters * sizeof(SQLWCHAR),
                         &lengths[column]),
              "bind");
    }
    while (SQL_SUCCEEDED(SQLFetch(handle))) {
        for (SQLSMALLINT column = 0; column < columns; ++column) {
            const SQLLEN bytes = lengths[column];
            row[column].text = QStringView(reinterpret_cast<const char16_t*>(buffers[column].data()),
                                           bytes > 0 ? bytes / static_cast<SQLLEN>(sizeof(SQLWCHAR)) : 0);
        }
        take(row);
    }
    SQLFreeStmt(handle, SQL_CLOSE);
    SQLFreeStmt(handle, SQL_UNBIND);
}

OdbcFloor::Rows OdbcFloor::read(const QString& statement)
{
    Rows rows;
    read(statement, [&rows](const Row& row) {
        std::vector<std::u16string>& kept = rows.emplace_back();
        kept.reserve(row.size());
        for (const Value& value : row)
            kept.emplace_back(value.text.utf16(), static_cast<std::size_t>(value.text.size()));
    });
    return rows;
}
