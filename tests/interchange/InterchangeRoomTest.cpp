#include "InterchangeRoom.h"

#include <gtest/gtest.h>
