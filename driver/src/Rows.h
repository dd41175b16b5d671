#pragma once

#include <sql.h>
#include <sqlext.h>

/// The rows of results. The library below turns text into UTF-16 with the last of the supplementary planes lost, and
/// loses its place in a block of rows when one of them is asked for; so wide cells, bound columns and blocks are this
/// driver's. It lets the library below step from row to row and takes the cells from it one by one, as narrow text
/// where wide text is wanted. A statement that neither binds columns nor reads blocks is forwarded as it is.
namespace tarnwick::rows
{

/// SQLGetData.
SQLRETURN GetCell(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
                  SQLLEN* length);

SQLRETURN BindColumn(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
                     SQLLEN* length);

/// SQLFetch is `SQL_FETCH_NEXT`.
SQLRETURN Fetch(SQLHSTMT statement, SQLSMALLINT orientation, SQLLEN offset);

/// SQLExtendedFetch, whose block has a size and a status array of its own.
SQLRETURN ExtendedFetch(SQLHSTMT statement, SQLUSMALLINT orientation, SQLLEN offset, SQLULEN* fetched,
                        SQLUSMALLINT* status);

/// SQLSetPos: goes to a row of the block, or changes rows through the bound columns.
SQLRETURN SetPosition(SQLHSTMT statement, SQLSETPOSIROW row, SQLUSMALLINT operation, SQLUSMALLINT lock);

SQLRETURN BulkOperation(SQLHSTMT statement, SQLSMALLINT operation);

SQLRETURN SetAttribute(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length);
SQLRETURN GetAttribute(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER capacity,
                       SQLINTEGER* length);

/// The cursor is closed: its place in the rows is forgotten.
void Close(SQLHSTMT statement);

/// All columns are unbound.
void Unbind(SQLHSTMT statement);

/// The statement is freed.
void Forget(SQLHSTMT statement);

} // namespace tarnwick::rows
