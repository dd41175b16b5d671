#pragma once

#include "DatabasesRoom.h"
#include "FilesRoom.h"
#include "GridFixture.h"
#include "ItemFixture.h"
#include "PaneRegistry.h"

/// A user in front of the panes of databases, tables and columns; those of files are there too.
template <class Fixture>
class RoomFixture : public Fixture
{
protected:
    void SetUp() override
    {
        Fixture::SetUp();
        registerFilesRoom();
        registerDatabasesRoom();
    }
    void TearDown() override
    {
        Fixture::TearDown();
        for (const char* pane : {"frmFile", "frmField", "frmFiles", "frmFields", "frmDatabase", "frmDatabases",
                                 "frmTable", "frmTableData", "frmTables", "frmColumn", "frmColumns", "frmSpecialCols"})
            panes::remove(QLatin1String(pane));
    }
};

using ItemTest = RoomFixture<ItemFixture>;
using GridTest = RoomFixture<GridFixture>;
