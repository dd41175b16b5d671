#pragma once

#include <set>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// Adds the names, in upper case, that a statement, such as a view's, gives to columns of its own: behind AS or a
/// parenthesis, or in the list of a view or a WITH.
void CollectGivenNames(std::string_view statement, std::set<std::string>& names);

} // namespace tarnwick::records
