#pragma once

#include "Tokenizer.h"

#include <set>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// Whether a token can be the name of a column, a table or a database.
bool IsName(const Token& token);

/// A name without its quotes, in upper case.
std::string NameIn(const Token& token);

/// Adds the names, in upper case, that a statement, such as a view's, gives to columns of its own: behind AS or a
/// parenthesis, or in the list of a view or a WITH.
void CollectGivenNames(std::string_view statement, std::set<std::string>& names);

} // namespace tarnwick::records
