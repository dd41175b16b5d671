#include "FilesRoom.h"

#include "FieldCommands.h"
#include "FileGrids.h"
#include "PaneRegistry.h"
#include "frmField.h"
#include "frmFile.h"

using namespace Qt::StringLiterals;

void registerFilesRoom()
{
    panes::add(
        u"frmFile"_s, [] { return new frmFile; }, ItemPane::operations(2));
    panes::add(
        u"frmField"_s, [] { return new frmField; }, ItemPane::operations(3));
    registerFileGrids();
    registerFieldCommands();
}
