#include "ShellPanes.h"

#include "PaneRegistry.h"
#include "frmAbout.h"
#include "frmDSN.h"
#include "frmOptions.h"
#include "frmWelcome.h"

namespace
{

/// A pane that can only be displayed.
template <class Pane, class... Keys>
void add(const char* name, void (Pane::*display)(Keys...))
{
    panes::Operations operations;
    operations.Display = panes::call(display);
    panes::add(
        QLatin1String(name), [] { return new Pane; }, operations);
}

} // namespace

void registerShellPanes()
{
    add("frmDSN", &frmDSN::Display);
    add("frmWelcome", &frmWelcome::Display);
    add("frmOptions", &frmOptions::Display);
    add("frmAbout", &frmAbout::Display);
}
