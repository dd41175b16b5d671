#pragma once

#include <QString>

/// The catalog holds passwords in clear. This is what keeps them out of sight.
namespace passwords
{

/// Whether a column of the catalog holds passwords, in whatever case its name is given.
bool isPassword(QStringView column);

/// What shows in place of a password, of any length.
const QString& mask();

/// What shows for a stored value: the mask, or nothing where there is no password.
QString shown(const QString& password);

} // namespace passwords
