#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>

namespace tarnwick::diagnostics
{

/// One diagnostic record of a handle.
struct Record {
    std::string state; ///< SQLSTATE, five characters
    SQLINTEGER native;
    std::string message;
};

/// Puts a record of this driver on a handle, in place of what was there, and returns `SQL_ERROR`. The message never
/// repeats values of a statement.
SQLRETURN Raise(SQLSMALLINT type, SQLHANDLE handle, const char* state, std::string_view message, int native = 0);

/// The same as a warning: returns `SQL_SUCCESS_WITH_INFO`.
SQLRETURN Warn(SQLSMALLINT type, SQLHANDLE handle, const char* state, std::string_view message);

/// Reports a text that was cut to its buffer (SQLSTATE 01004).
SQLRETURN WarnOfCutText(SQLSMALLINT type, SQLHANDLE handle);

/// Forgets what a handle still holds; called when the handle is freed or reused.
void Clear(SQLSMALLINT type, SQLHANDLE handle);

/// Takes the records that the library below holds for a handle, and forgets them there.
std::string TakeLowerMessage(SQLSMALLINT type, SQLHANDLE handle, SQLINTEGER* native);

} // namespace tarnwick::diagnostics
