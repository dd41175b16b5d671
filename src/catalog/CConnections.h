#pragma once

#include "CLOCDTs.h"
#include "CSQLDTs.h"
#include "Database.h"

#include <QString>

#include <memory>
#include <vector>

/// One open datasource: its database and its two type catalogs. It owns the handle.
class CConnection
{
public:
    CConnection();
    ~CConnection();

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

namespace dao {
class Workspace;
}

/// The open connections, by datasource name, in the order in which they were opened. There is one for the process.
class CConnections
{
public:
    static CConnections& instance();

    /// The workspace that connections are opened in.
    void setWorkspace(std::unique_ptr<dao::Workspace> workspace);
    dao::Workspace* workspace() const;

    /// Opens a connection and stores it under the name; null after a failure, which has then been shown.
    CConnection* add(const QString& name);
    /// The connection of the name, connecting on demand and then loading its type catalogs; null if that failed.
    CConnection* Item(const QString& name);
    /// The connection of the name if it is open, else null. Never connects.
    CConnection* find(const QString& name) const;
    int Count() const;
    /// Closes and drops a connection. Raises 5 for a name that is not there, 9 for an index outside of 1 to Count.
    void Remove(const QString& name);
    void Remove(int index);
    /// The names in order.
    std::vector<QString> Names() const;
};
