#pragma once

#include "Catalog.h"

#include <sql.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sqlite3;

namespace tarnwick
{

class StatementLog;

namespace records
{
class Privileges;
class RecordTables;
} // namespace records

/// What this driver knows of an open connection besides what the library below holds.
struct Connection {
    std::string datasource;  ///< DSN, or empty
    std::string catalogPath; ///< absolute
    std::shared_ptr<const StatementLog> log;

    /// Of a catalog without locks or log, which must not change: what it was when it was opened.
    std::optional<catalog::Version> opened;

    /// The SQLite connection behind the library below, valid until SQLDisconnect.
    sqlite3* engine = nullptr;

    /// The tables over records, which live in `engine`.
    std::shared_ptr<records::RecordTables> tables;

    /// What the connection's user may do.
    std::shared_ptr<records::Privileges> privileges;

    /// Whether the catalog was changed where the connection cannot see it; what it answers is of before.
    bool IsOutdated() const { return opened && catalog::VersionOf(catalogPath) != *opened; }
};

/// Connections and their statements. Every function may be called from any thread.
namespace registry
{

void OpenConnection(SQLHDBC handle, std::shared_ptr<const Connection> connection);

/// Gives the connection's statements, which are gone too.
std::vector<SQLHSTMT> CloseConnection(SQLHDBC handle);

/// Null if the connection is not open.
std::shared_ptr<const Connection> FindConnection(SQLHDBC handle);

void AddStatement(SQLHSTMT statement, SQLHDBC connection);
void RemoveStatement(SQLHSTMT statement);

/// The statement's connection, or null if it is not open.
std::shared_ptr<const Connection> ConnectionOf(SQLHSTMT statement);

} // namespace registry

} // namespace tarnwick
