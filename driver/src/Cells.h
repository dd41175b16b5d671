#pragma once

#include <sql.h>
#include <sqlext.h>

/// Single cells of the current row.
namespace tarnwick::cells
{

/// Reads a cell that has not been touched since its row was reached. A text that its buffer cannot hold is cut there,
/// its whole length told and a warning (01004) left. Arguments are those of SQLGetData.
SQLRETURN Read(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
               SQLLEN* length);

/// The same, where a text that was cut goes on with the next call: SQLGetData.
SQLRETURN Get(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
              SQLLEN* length);

/// Notes that the cells of a column are about to be read by `Get`, until another column's or row's are.
void BeginReading(SQLHSTMT statement, SQLUSMALLINT column);
bool IsBeingRead(SQLHSTMT statement, SQLUSMALLINT column);

/// The row has been left: no cell of it goes on.
void Forget(SQLHSTMT statement);

} // namespace tarnwick::cells
