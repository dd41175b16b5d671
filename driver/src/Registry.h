#pragma once

#include <sql.h>

#include <memory>
#include <string>

struct sqlite3;

namespace tarnwick
{

class StatementLog;

/// What this driver knows of an open connection besides what the library below holds.
struct Connection {
    std::string datasource;  ///< DSN, or empty
    std::string catalogPath; ///< absolute
    std::shared_ptr<const StatementLog> log;

    /// The SQLite connection behind the library below, valid until SQLDisconnect. This is where modules and functions
    /// of the family would be registered.
    sqlite3* engine = nullptr;
};

/// Connections and, where a statement log is kept, the statements that write to it. Every function may be called from
/// any thread.
namespace registry
{

void OpenConnection(SQLHDBC handle, std::shared_ptr<const Connection> connection);
void CloseConnection(SQLHDBC handle);

/// Null if the connection is not open.
std::shared_ptr<const Connection> FindConnection(SQLHDBC handle);

void AddStatement(SQLHSTMT statement, SQLHDBC connection);
void RemoveStatement(SQLHSTMT statement);

/// The log of the statement's connection, or null. Costs one atomic read while no connection has a log.
std::shared_ptr<const StatementLog> LogOf(SQLHSTMT statement);

} // namespace registry

} // namespace tarnwick
