#include "MoveCopyRoom.h"

#include "CopyCommands.h"
#include "DragHandlers.h"
#include "modDragAndDrop.h"

void registerMoveCopyRoom()
{
    drags::setHandlers({modDragAndDrop::DoDragOver, modDragAndDrop::DoDragDrop});
    registerCopyCommands();
}
