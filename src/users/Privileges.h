#pragma once

#include <QStringList>

#include <functional>

/// What the panes and the grids of users and of their privileges have in common.
namespace privileges
{

/// The statement that lists the users by name.
QString users();

/// The condition that selects a user, or the rows of one.
QString ofUser(const QString& user);
/// The same within a database.
QString ofUser(const QString& database, const QString& user);
/// The same on one of its tables.
QString ofUser(const QString& database, const QString& table, const QString& user);

/// The condition that selects the rows of a table of a database.
QString ofTable(const QString& database, const QString& table);

/// A password in front of what else an UPDATE sets, as "USER_PASSWORD = '...', "; `quoted` is what goes between the
/// apostrophes.
QString passwordAssignment(const QString& column, const QString& quoted);

/// The columns that say what a user may do.
const QStringList& rights();

/// The rights as they stand in an UPDATE, as "ALLOW_SELECT = 1, ...", each with what `value` gives for its column.
QString assignments(const std::function<QString(const QString& column)>& value);

} // namespace privileges
