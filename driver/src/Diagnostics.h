#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>
#include <vector>

/// The diagnostic records of handles. The library below forgets a record once it is read, while the driver manager
/// reads each more than once; so records are taken over here when they are first asked for, and stay until the handle's
/// next statement.
namespace tarnwick::diagnostics
{

/// One diagnostic record of a handle.
struct Record {
    std::string state; ///< SQLSTATE, five characters
    SQLINTEGER native = 0;
    std::string message;
    SQLLEN row = SQL_ROW_NUMBER_UNKNOWN; ///< of the block, from 1
    SQLINTEGER column = SQL_COLUMN_NUMBER_UNKNOWN;
};

/// Puts a record of this driver on a handle, in place of what was there, and returns `SQL_ERROR`. The message never
/// repeats values of a statement.
SQLRETURN Raise(SQLSMALLINT type, SQLHANDLE handle, const char* state, std::string_view message, int native = 0);

/// The same as a warning: returns `SQL_SUCCESS_WITH_INFO`.
SQLRETURN Warn(SQLSMALLINT type, SQLHANDLE handle, const char* state, std::string_view message);

/// Reports a text that was cut to its buffer (SQLSTATE 01004).
SQLRETURN WarnOfCutText(SQLSMALLINT type, SQLHANDLE handle);

/// The record that was put on a handle last, for a cell of the block that is being fetched.
Record Last(SQLSMALLINT type, SQLHANDLE handle, SQLLEN row, SQLUSMALLINT column);

/// Puts several records on a handle in place of what was there; does nothing if there are none.
void Tell(SQLSMALLINT type, SQLHANDLE handle, std::vector<Record> records);

/// Forgets what a handle still holds: it begins a new statement, or is freed.
void Clear(SQLSMALLINT type, SQLHANDLE handle);

/// The message that the library below holds for a handle, and its code; it is gone there afterwards.
std::string TakeLowerMessage(SQLSMALLINT type, SQLHANDLE handle, SQLINTEGER* native);

} // namespace tarnwick::diagnostics
