#include "InterchangeRoom.h"

void registerInterchangeRoom() {}
