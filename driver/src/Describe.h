#pragma once

#include <sql.h>
#include <sqlext.h>

/// What readers of cells ask of a result column.
namespace tarnwick
{

/// Whether a column is declared to hold bytes.
bool IsBinaryColumn(SQLHSTMT statement, SQLUSMALLINT number);

/// The C type that SQL_C_DEFAULT means for a column, by its SQL type.
SQLSMALLINT DefaultType(SQLHSTMT statement, SQLUSMALLINT number);

} // namespace tarnwick
