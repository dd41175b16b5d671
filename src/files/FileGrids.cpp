#include "FileGrids.h"

#include "frmFields.h"
#include "frmFiles.h"

using namespace Qt::StringLiterals;

void registerFileGrids()
{
    panes::add(
        u"frmFiles"_s, [] { return new frmFiles; }, GridPane::operations(1));
    panes::add(
        u"frmFields"_s, [] { return new frmFields; }, GridPane::operations(2));
}
