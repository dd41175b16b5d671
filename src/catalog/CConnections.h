#pragma once

#include "CLOCDTs.h"
#include "CSQLDTs.h"
#include "Database.h"

#include <QString>

#include <memory>
#include <vector>

namespace dao
{
class Workspace;
}

/// One open datasource: its database and its two type catalogs. It owns the handle.
class CConnection
{
public:
    CConnection();
    ~CConnection();
    CConnection(const CConnection&) = delete;
    CConnection& operator=(const CConnection&) = delete;

    /// The open catalog database; null while unset.
    dao::Database* db() const { return m_db.get(); }
    void setDb(std::unique_ptr<dao::Database> db);

    CSQLDTs& SQLDTs() { return m_sqlDts; }
    void setSQLDTs(CSQLDTs types);
    CLOCDTs& LOCDTs() { return m_locDts; }
    void setLOCDTs(CLOCDTs types);

private:
    std::unique_ptr<dao::Database> m_db;
    CSQLDTs m_sqlDts;
    CLOCDTs m_locDts;
};

/// The open connections, by datasource name, in the order in which they were opened. There is one for the process, and
/// it leaves its connections to the system when the process ends. Names compare exactly. A connection lives until it is
/// removed.
class CConnections
{
public:
    static CConnections& instance();
    CConnections(const CConnections&) = delete;
    CConnections& operator=(const CConnections&) = delete;

    /// The workspace that connections are opened in. Remove the connections of a former one first.
    void setWorkspace(std::unique_ptr<dao::Workspace> workspace);
    dao::Workspace* workspace() const { return m_workspace.get(); }

    /// Opens a connection and stores it under the name; null after a failure, which has then been shown, or after the
    /// user's cancel in a driver's dialog.
    CConnection* add(const QString& name);
    /// The connection of the name, connecting on demand and then loading its type catalogs; null if that failed.
    CConnection* Item(const QString& name);
    /// The connection of the name if it is open, else null. Never connects.
    CConnection* find(const QString& name) const;
    int Count() const { return static_cast<int>(m_entries.size()); }
    /// Closes and drops a connection. Raises 5 for a name that is not there, 9 for an index outside of 1 to Count.
    void Remove(const QString& name);
    void Remove(int index);
    /// The names in order.
    std::vector<QString> Names() const;
    /// The connections in order.
    std::vector<CConnection*> Connections() const;

private:
    struct Entry {
        QString name;
        std::unique_ptr<CConnection> connection;
    };

    CConnections();
    ~CConnections();

    CConnection* store(const QString& name, std::unique_ptr<CConnection> connection);

    std::unique_ptr<dao::Workspace> m_workspace;
    std::vector<Entry> m_entries;
};
