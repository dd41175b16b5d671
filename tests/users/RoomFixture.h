#pragma once

#include "GridFixture.h"
#include "ItemFixture.h"
#include "PaneRegistry.h"
#include "UsersRoom.h"

/// A user in front of the panes of users and of privileges.
template <class Fixture>
class RoomFixture : public Fixture
{
protected:
    void SetUp() override
    {
        Fixture::SetUp();
        registerUsersRoom();
    }
    void TearDown() override
    {
        Fixture::TearDown();
        for (const char* pane : {"frmUser", "frmUsers", "frmDBPRV", "frmDBPRVs", "frmTBLPRV", "frmTBLPRVs"})
            panes::remove(QLatin1String(pane));
    }
};

using ItemTest = RoomFixture<ItemFixture>;
using GridTest = RoomFixture<GridFixture>;
