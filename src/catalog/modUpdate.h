#pragma once

#include <QString>

#include <cstdint>

/// Changes the key of a catalog row and carries the change to every row that depends on it, since no driver does. Each
/// routine reads the old row, deletes it, inserts it under the new key and then walks its dependents. There is no
/// transaction: what has been executed stays. Every routine reports its failures itself and has no result; a key that
/// is not in the catalog raises 3021 before anything is written. `connection` is the name of a datasource.
namespace modUpdate
{

/// Moves a field; the columns of the new file's tables that map to it follow. `offset` is the field's new offset. The
/// format, the default value and the remarks are laid out anew by FormatSQL.
void UpdateField(const QString& connection, const QString& oldFile, const QString& newFile, const QString& oldField,
                 const QString& newField, std::int32_t offset);

/// Moves a file, the tables that map to it, and its fields.
void UpdateFile(const QString& connection, const QString& oldFile, const QString& newFile);

/// Moves a column. With equal names it rewrites the row under another type, number or field.
void UpdateColumn(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                  const QString& oldTable, const QString& newTable, const QString& oldColumn, const QString& newColumn,
                  std::int32_t columnType, std::int32_t columnNumber, const QString& fieldName);

/// Moves a table, its columns and its privileges. Its display name becomes the new name.
void UpdateTable(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                 const QString& oldTable, const QString& newTable);

/// Moves one user's privilege on one table.
void UpdateTBLPRV(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                  const QString& oldTable, const QString& newTable, const QString& oldUser, const QString& newUser);

/// Moves a database, its tables and its privileges. Its display name becomes the new name.
void UpdateDatabase(const QString& connection, const QString& oldDatabase, const QString& newDatabase);

/// Moves one user's privilege on one database, and on that database's tables.
void UpdateDBPRV(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                 const QString& oldUser, const QString& newUser);

/// Moves a user and the privileges in the databases that the user has a privilege on. The password is not carried: a
/// user under a new name has none.
void UpdateUser(const QString& connection, const QString& oldUser, const QString& newUser);

} // namespace modUpdate
