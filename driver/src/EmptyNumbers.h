#pragma once

#include <string>

namespace tarnwick
{

/// Puts 0 in the place of each empty text literal `''` that an INSERT or an UPDATE gives to a numeric column of a
/// catalog table, which SQLite would store as a text. Numbers in quotes need no help: a column declared as a number
/// takes their value. Read are the rows behind VALUES, with or without a list of columns, and the assignments behind
/// SET; a literal that is part of a larger expression, or that is selected, stays.
std::string ZeroEmptyNumbers(std::string statement);

} // namespace tarnwick
