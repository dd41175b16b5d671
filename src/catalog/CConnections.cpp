#include "CConnections.h"

#include "Application.h"
#include "Boxes.h"
#include "DBEngine.h"
#include "Routine.h"
#include "frmTWErr.h"

#include <algorithm>

namespace
{

/// The catalog tables are reached through the one fixed database, whatever the datasource holds.
QString connectString(const QString& name)
{
    const bool isFile = name.right(4).toUpper() == QLatin1String(".DSN");
    return (isFile ? "ODBC;FILEDSN=" : "ODBC;DSN=") + name + ";DATABASE=PUBS";
}

void showFailure()
{
    boxes::show({.prompt = "Failed to connect for the following reason:\n" + frmTWErr::FetchODBCErrors(),
                 .icon = boxes::Icon::Exclamation,
                 .buttons = boxes::Buttons::Ok,
                 .title = application::title()});
    dao::DBEngine::Errors().Clear();
}

} // namespace

CConnection::CConnection() = default;
CConnection::~CConnection() = default;

void CConnection::setDb(std::unique_ptr<dao::Database> db)
{
    m_db = std::move(db);
}

void CConnection::setSQLDTs(CSQLDTs types)
{
    m_sqlDts = std::move(types);
}

void CConnection::setLOCDTs(CLOCDTs types)
{
    m_locDts = std::move(types);
}

CConnections::CConnections() = default;
CConnections::~CConnections() = default;

CConnections& CConnections::instance()
{
    // Never destroyed: at the end of the process drivers may be unloaded before this would close its handles.
    static CConnections& connections = *new CConnections;
    return connections;
}

void CConnections::setWorkspace(std::unique_ptr<dao::Workspace> workspace)
{
    m_workspace = std::move(workspace);
}

CConnection* CConnections::add(const QString& name)
{
    CConnection* added = nullptr;
    Routine routine("CConnectionsAdd");
    routine.passing({ErrorNumber::OdbcFailed, ErrorNumber::Cancelled});
    routine.run([&] {
        if (!m_workspace)
            throw RuntimeError(ErrorNumber::ObjectNotSet);
        auto connection = std::make_unique<CConnection>();
        try {
            connection->setDb(step([&] { return m_workspace->OpenDatabase({}, connectString(name)); }));
        } catch (const RuntimeError& error) {
            if (error.number() == ErrorNumber::OdbcFailed)
                showFailure();
            else if (error.number() != ErrorNumber::Cancelled)
                throw;
            return;
        }
        added = store(name, std::move(connection));
    });
    return added;
}

CConnection* CConnections::Item(const QString& name)
{
    CConnection* connection = nullptr;
    Routine routine("CConnections.Item[PropertyGet]");
    routine.run([&] {
        connection = find(name);
        if (connection)
            return;
        connection = add(name);
        if (!connection)
            return;
        connection->SQLDTs().FetchDTs(name);
        connection->LOCDTs().FetchDTs(name);
    });
    return connection;
}

CConnection* CConnections::find(const QString& name) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.name == name; });
    return found == m_entries.end() ? nullptr : found->connection.get();
}

void CConnections::Remove(const QString& name)
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.name == name; });
    if (found == m_entries.end())
        throw RuntimeError(ErrorNumber::FailedCall);
    Remove(static_cast<int>(found - m_entries.begin()) + 1);
}

void CConnections::Remove(int index)
{
    if (index < 1 || index > Count())
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    const auto entry = m_entries.begin() + (index - 1);
    if (dao::Database* db = entry->connection->db())
        db->Close();
    m_entries.erase(entry);
}

std::vector<QString> CConnections::Names() const
{
    std::vector<QString> names;
    for (const Entry& entry : m_entries)
        names.push_back(entry.name);
    return names;
}

std::vector<CConnection*> CConnections::Connections() const
{
    std::vector<CConnection*> connections;
    for (const Entry& entry : m_entries)
        connections.push_back(entry.connection.get());
    return connections;
}

CConnection* CConnections::store(const QString& name, std::unique_ptr<CConnection> connection)
{
    if (find(name))
        throw RuntimeError(ErrorNumber::KeyAlreadyThere);
    m_entries.push_back({name, std::move(connection)});
    return m_entries.back().connection.get();
}
