#include "MoveCopyRoom.h"

void registerMoveCopyRoom() {}
