#include "Lower.h"
#include "Rows.h"

#include <sqlucode.h>

using namespace tarnwick;

SQLRETURN SQL_API SQLFetch(SQLHSTMT statement)
{
    return rows::Fetch(statement, SQL_FETCH_NEXT, 0);
}

SQLRETURN SQL_API SQLFetchScroll(SQLHSTMT statement, SQLSMALLINT orientation, SQLLEN offset)
{
    return rows::Fetch(statement, orientation, offset);
}

SQLRETURN SQL_API SQLExtendedFetch(SQLHSTMT statement, SQLUSMALLINT orientation, SQLLEN offset, SQLULEN* fetched,
                                   SQLUSMALLINT* status)
{
    return rows::ExtendedFetch(statement, orientation, offset, fetched, status);
}

SQLRETURN SQL_API SQLBindCol(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target,
                             SQLLEN capacity, SQLLEN* length)
{
    return rows::BindColumn(statement, column, type, target, capacity, length);
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target,
                             SQLLEN capacity, SQLLEN* length)
{
    return rows::GetCell(statement, column, type, target, capacity, length);
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT statement)
{
    rows::Close(statement);
    return lower.SQLMoreResults(statement);
}

SQLRETURN SQL_API SQLCloseCursor(SQLHSTMT statement)
{
    rows::Close(statement);
    return lower.SQLCloseCursor(statement);
}

SQLRETURN SQL_API SQLSetPos(SQLHSTMT statement, SQLSETPOSIROW row, SQLUSMALLINT operation, SQLUSMALLINT lock)
{
    return rows::SetPosition(statement, row, operation, lock);
}

SQLRETURN SQL_API SQLBulkOperations(SQLHSTMT statement, SQLSMALLINT operation)
{
    return rows::BulkOperation(statement, operation);
}

SQLRETURN SQL_API SQLGetStmtAttr(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER capacity,
                                 SQLINTEGER* length)
{
    return rows::GetAttribute(statement, attribute, value, capacity, length);
}

SQLRETURN SQL_API SQLGetStmtAttrW(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER capacity,
                                  SQLINTEGER* length)
{
    return rows::GetAttribute(statement, attribute, value, capacity, length);
}

SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length)
{
    return rows::SetAttribute(statement, attribute, value, length);
}

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length)
{
    return rows::SetAttribute(statement, attribute, value, length);
}
