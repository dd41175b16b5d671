#pragma once

#include "Database.h"
#include "Odbc.h"

#include <memory>

namespace dao
{

class Connection;

/// A database on a connection of the driver manager.
class OdbcDatabase final : public Database
{
public:
    /// Connects. Raises 3146 or 3059; no step by itself.
    OdbcDatabase(std::shared_ptr<odbc::Environment> environment, const QString& connect);
    ~OdbcDatabase() override;

    void Execute(const QString& statement) override;
    std::unique_ptr<Recordset> OpenRecordset(const QString& statement, RecordsetType type) override;
    void Close() override;
    QString Name() const override;
    QString Connect() const override { return m_connect; }

private:
    QString m_connect;
    std::shared_ptr<Connection> m_connection;
};

} // namespace dao
