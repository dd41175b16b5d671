#pragma once

#include <QStringList>

#include <functional>

/// What the panes and the grids of users and of their privileges have in common.
namespace privileges
{

/// The user who may do everything and is there to stay.
bool isAdministrator(const QString& user);

/// The statement that lists the users by name.
QString users();

/// The columns that say what a user may do.
const QStringList& rights();

/// The rights as they stand in an UPDATE, as "ALLOW_SELECT = 1, ...", each with what `value` gives for its column.
QString assignments(const std::function<QString(const QString& column)>& value);

} // namespace privileges
