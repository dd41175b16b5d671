#pragma once

#include "Diagnostics.h"
#include "Prepared.h"
#include "Privileges.h"
#include "Registry.h"
#include "Rows.h"

#include <string>

namespace tarnwick
{

/// Takes away what a statement's last run left: a result that was read to its end may be followed by another one
/// without having been closed.
inline void ForgetLastRun(SQLHSTMT statement)
{
    diagnostics::Clear(SQL_HANDLE_STMT, statement);
    rows::Close(statement);
}

/// Whether a statement would answer by a catalog that is no more; then it has its error.
inline bool RefuseOutdated(SQLHSTMT statement)
{
    const auto connection = registry::ConnectionOf(statement);
    if (!connection || !connection->IsOutdated())
        return false;
    diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY000",
                       "The catalog was changed since it was opened for reading only; connect again.");
    return true;
}

/// Lets the library below run a statement. What a user's rights refuse is told in the words of the refusal.
template <typename Call>
SQLRETURN RunByRights(SQLHSTMT statement, Call call)
{
    if (RefuseOutdated(statement))
        return SQL_ERROR;
    records::Privileges::TakeRefusal();
    const SQLRETURN answer = call();
    if (const std::string refusal = records::Privileges::TakeRefusal(); answer == SQL_ERROR && !refusal.empty())
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "42000", refusal);
    return answer;
}

/// Answers a catalog function, which takes the place of what the statement had prepared.
template <typename Call>
SQLRETURN AnswerAnew(SQLHSTMT statement, Call call)
{
    ForgetLastRun(statement);
    prepared::Forget(statement);
    return RefuseOutdated(statement) ? SQL_ERROR : call();
}

} // namespace tarnwick
