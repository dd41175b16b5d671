#pragma once

#include <sql.h>
#include <sqlext.h>

/// Single cells of the current row.
namespace tarnwick::cells
{

/// The bytes that a C type of numbers, dates or times takes; 0 for any other type.
SQLLEN SizeOf(SQLSMALLINT type);

/// The C type that SQL_C_DEFAULT means for a column, found once for each result.
SQLSMALLINT DefaultTypeOf(SQLHSTMT statement, SQLUSMALLINT column);

/// Reads a cell that has not been touched since its row was reached. A text that its buffer cannot hold is cut there,
/// its whole length told and a warning (01004) left. Arguments are those of SQLGetData.
SQLRETURN Read(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
               SQLLEN* length);

/// SQLGetData: the same, where a text that was cut goes on with the next call for its column, and a column begins anew
/// when others have been read since. Columns up to `highestRead` have been read by `Read` in this row.
SQLRETURN Get(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
              SQLLEN* length, SQLUSMALLINT highestRead);

/// The row has been left: no cell of it goes on.
void Leave(SQLHSTMT statement);

/// The result has been left: the next one may have other columns.
void Close(SQLHSTMT statement);

/// The statement is freed.
void Forget(SQLHSTMT statement);

} // namespace tarnwick::cells
