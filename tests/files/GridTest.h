#pragma once

#include "FilesRoom.h"
#include "GridFixture.h"

/// A user in front of a grid of this room.
class GridTest : public GridFixture
{
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        registerFilesRoom();
    }
};
