#pragma once

#include "DBEngine.h"

#include <QString>

#include <functional>
#include <memory>

/// Opens the real databases; it tells of their closes, and lets the rows of one statement break off.
class WatchedWorkspace final : public dao::Workspace
{
public:
    using Closes = std::function<void(const QString& datasource)>;

    explicit WatchedWorkspace(Closes closes = {});
    ~WatchedWorkspace() override;

    /// The driver fails on its way to the row behind so many rows of the statement, each time that it is opened; a
    /// second try goes on.
    void breakOffAfter(const QString& statement, int rows);

    std::unique_ptr<dao::Database> OpenDatabase(const QString& name, const QString& connect) override;

private:
    struct Orders;

    std::unique_ptr<dao::Workspace> m_real;
    std::shared_ptr<Orders> m_orders;
};
