#pragma once

#include "DBEngine.h"

#include <vector>

namespace dao
{

/// Adds the loader's own reason behind a record in which the driver manager says that it can't open a driver's library:
/// the driver manager does not pass on which symbol or library was missing.
void explainUnloadableLibrary(std::vector<Error>& records);

} // namespace dao
