#pragma once

#include <QString>

/// Rows without which a catalog cannot be worked with.
namespace reservedrows
{

/// Whether a user is the one who may do everything and is there to stay.
bool isAdministrator(const QString& user);

} // namespace reservedrows
