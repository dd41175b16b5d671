#include "InterchangeRoom.h"

#include "PaneRegistry.h"
#include "frmCSVExport.h"
#include "frmCSVImport.h"

namespace
{

/// A pane that can only be displayed, for a datasource.
template <class Pane>
void add(const char* name)
{
    panes::Operations operations;
    operations.Display = panes::call(&Pane::Display);
    panes::add(
        QLatin1StringView(name), [] { return new Pane; }, operations);
}

} // namespace

void registerInterchangeRoom()
{
    add<frmCSVExport>("frmCSVExport");
    add<frmCSVImport>("frmCSVImport");
}
