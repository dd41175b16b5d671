#include "Diagnostics.h"
#include "Lower.h"
#include "Prepared.h"
#include "Registry.h"
#include "Rows.h"

using namespace tarnwick;

namespace
{

/// What the driver manager gets for an environment or connection while the library below cannot be loaded: enough to
/// ask for a connection and be told why there is none.
char placeholder;

} // namespace

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE input, SQLHANDLE* output)
{
    if (!lower.Loaded()) {
        if (type != SQL_HANDLE_ENV && type != SQL_HANDLE_DBC)
            return SQL_ERROR;
        *output = &placeholder;
        return SQL_SUCCESS;
    }
    const SQLRETURN answer = lower.SQLAllocHandle(type, input, output);
    if (SQL_SUCCEEDED(answer) && type == SQL_HANDLE_STMT) {
        // A statement that went with its connection may have left something under this address.
        rows::Forget(*output);
        prepared::Forget(*output);
        diagnostics::Clear(SQL_HANDLE_STMT, *output);
        registry::AddStatement(*output, input);
    }
    return answer;
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT type, SQLHANDLE handle)
{
    diagnostics::Clear(type, handle);
    if (!lower.Loaded())
        return SQL_SUCCESS;
    if (type == SQL_HANDLE_STMT) {
        rows::Forget(handle);
        prepared::Forget(handle);
        registry::RemoveStatement(handle);
    }
    return lower.SQLFreeHandle(type, handle);
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT statement, SQLUSMALLINT option)
{
    switch (option) {
    case SQL_CLOSE:
        rows::Close(statement);
        break;
    case SQL_UNBIND:
        rows::Unbind(statement);
        break;
    case SQL_DROP:
        diagnostics::Clear(SQL_HANDLE_STMT, statement);
        rows::Forget(statement);
        prepared::Forget(statement);
        registry::RemoveStatement(statement);
        break;
    default:
        break;
    }
    return lower.SQLFreeStmt(statement, option);
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV environment, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length)
{
    return lower.Loaded() ? lower.SQLSetEnvAttr(environment, attribute, value, length) : SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetEnvAttr(SQLHENV environment, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER capacity,
                                SQLINTEGER* length)
{
    return lower.SQLGetEnvAttr(environment, attribute, value, capacity, length);
}
