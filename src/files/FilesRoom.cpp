#include "FilesRoom.h"

void registerFilesRoom() {}
