#pragma once

#include "Diagnostics.h"
#include "Privileges.h"

#include <string>

namespace tarnwick
{

/// Lets the library below run a statement. What a user's rights refuse is told in the words of the refusal.
template <typename Call>
SQLRETURN RunByRights(SQLHSTMT statement, Call call)
{
    records::Privileges::TakeRefusal();
    const SQLRETURN answer = call();
    if (const std::string refusal = records::Privileges::TakeRefusal(); answer == SQL_ERROR && !refusal.empty())
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "42000", refusal);
    return answer;
}

} // namespace tarnwick
