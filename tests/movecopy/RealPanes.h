#pragma once

#include "DatabasesRoom.h"
#include "FilesRoom.h"
#include "PaneRegistry.h"
#include "UsersRoom.h"

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
