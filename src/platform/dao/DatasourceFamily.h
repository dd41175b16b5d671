#pragma once

#include "DBEngine.h"

namespace dao
{

/// What the driver manager calls the driver of the family of datasources that have a catalog.
constexpr QLatin1StringView familyDriver("Tarnwick ODBC");

/// The datasources of the family, connected or not, in the driver manager's order: those whose driver is listed under
/// exactly that description.
std::vector<DataSource> familyDataSources();

} // namespace dao
