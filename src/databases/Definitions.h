#pragma once

#include <QStringList>

class CConnection;

namespace dao
{
class Database;
}

/// What the panes and the grids of databases, tables and columns have in common.
namespace definitions
{

/// Whether a database is the catalog's own, which may be looked at and not changed.
bool isCatalogDatabase(const QString& database);

/// A display name may be left out; otherwise it is the name itself in any case of letters.
bool isDisplayName(const QString& displayName, const QString& name);

/// A name that a special column of a table has. Case counts.
bool isReservedColumn(const QString& column);

/// Whether columns of an SQL type have a length, a precision and attributes of their own. All others take those of the
/// type.
bool isCharacterType(const QString& sqlTypeName);

/// The statement that lists the drivers that a database of the user's can have.
QString drivers();

/// The condition that a file is not one of the catalog's own.
QString isUserFile();

/// The names of a search: what stands in SEARCHABLE is the place in this list.
const QStringList& searches();

/// The names of a connection's SQL types, in the order of its catalog.
QStringList sqlTypeNames(CConnection& connection);

/// The statement that lists the fields which the columns of a table can map to.
QString fieldsOfTable(dao::Database& db, const QString& database, const QString& table);

/// A number behind those of all columns of a table, as a text.
QString nextColumnNumber(dao::Database& db, const QString& database, const QString& table);

/// How many columns a table has, special ones included, as a text.
QString countColumns(dao::Database& db, const QString& database, const QString& table);

/// The condition that selects a table, or the columns of a table.
QString ofTable(const QString& database, const QString& table);

/// The one database that a datasource is bound to, as its entry in ODBC.INI has it; empty where it is bound to none.
QString defaultDatabase(const QString& datasource);

/// The name of a table behind that of its database, as SQL clients of more than one database see it.
QString joinedName(const QString& database, const QString& table);

/// The name of a table in the SQL of a datasource that is bound to one database; an empty one stands for none.
QString nameInSql(const QString& defaultDatabase, const QString& database, const QString& table);

/// Whether a name in SQL, in any case of letters, is that of a table of the catalog with passwords in it.
bool holdsPasswords(const QString& name);

/// A text as it stands in a statement, between apostrophes.
QString quotedText(const QString& text);

} // namespace definitions
