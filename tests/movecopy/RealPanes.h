#pragma once

#include "CellGrid.h"
#include "DatabasesRoom.h"
#include "FilesRoom.h"
#include "GridPane.h"
#include "ItemPane.h"
#include "PaneRegistry.h"
#include "UsersRoom.h"
#include "mdiMain.h"

#include <optional>

/// All panes of the catalog's objects, for as long as it lives: longer than any window that shows one.
class RealPanes
{
public:
    RealPanes()
    {
        registerFilesRoom();
        registerDatabasesRoom();
        registerUsersRoom();
    }
    ~RealPanes()
    {
        for (const char* pane : {"frmFile", "frmFiles", "frmField", "frmFields", "frmDatabase", "frmDatabases",
                                 "frmTable", "frmTables", "frmColumn", "frmColumns", "frmSpecialCols", "frmTableData",
                                 "frmUser", "frmUsers", "frmDBPRV", "frmDBPRVs", "frmTBLPRV", "frmTBLPRVs"})
            panes::remove(QLatin1String(pane));
    }
    RealPanes(const RealPanes&) = delete;
    RealPanes& operator=(const RealPanes&) = delete;
};

/// Lets the window of another fixture show the real panes.
template <class Base>
class WithRealPanes : public Base
{
protected:
    void SetUp() override
    {
        m_panes.emplace();
        Base::SetUp();
    }
    void TearDown() override
    {
        this->window.reset();
        m_panes.reset();
        Base::TearDown();
    }

    /// The first cells of the grid on view.
    QStringList gridRows() const
    {
        const auto* grid = this->window->currentPane()->template findChild<CellGrid*>(QStringLiteral("grd"));
        QStringList all;
        for (int row = 0; grid && row < grid->Rows(); ++row)
            all.append(grid->TextMatrix(row, 0));
        return all;
    }
    /// The key parts of the pane on view.
    QStringList paneKeys() const
    {
        if (const auto* grid = dynamic_cast<const GridPane*>(this->window->currentPane()))
            return grid->keys();
        const auto* item = dynamic_cast<const ItemPane*>(this->window->currentPane());
        return item ? item->keys() : QStringList();
    }

private:
    std::optional<RealPanes> m_panes;
};
