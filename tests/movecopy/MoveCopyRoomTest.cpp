#include "MoveCopyRoom.h"

#include <gtest/gtest.h>
