#include "FilesRoom.h"

#include "PaneRegistry.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

TEST(FilesRoom, ThePanesAreThereOnceTheRoomIsRegistered)
{
    registerFilesRoom();
    SUCCEED();
}

} // namespace
