#include "OdbcDatabase.h"

#include "ConnectString.h"
#include "Connection.h"
#include "OdbcRecordset.h"
#include "Step.h"

namespace dao
{

OdbcDatabase::OdbcDatabase(std::shared_ptr<odbc::Environment> environment, const QString& connect)
    : m_connect(connect), m_connection(Connection::open(std::move(environment), connectString::withoutPrefix(connect)))
{
}

OdbcDatabase::~OdbcDatabase()
{
    Close();
}

void OdbcDatabase::Execute(const QString& statement)
{
    step([&] {
        DBEngine::Errors().Clear();
        m_connection->execute(statement);
    });
}

std::unique_ptr<Recordset> OdbcDatabase::OpenRecordset(const QString& statement, RecordsetType)
{
    return step([&]() -> std::unique_ptr<Recordset> {
        DBEngine::Errors().Clear();
        return std::make_unique<OdbcRecordset>(m_connection->query(statement));
    });
}

void OdbcDatabase::Close()
{
    m_connection->close();
}

QString OdbcDatabase::Name() const
{
    return connectString::datasource(connectString::withoutPrefix(m_connect));
}

} // namespace dao
