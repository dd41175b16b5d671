#include "mdiMain.h"

#include "CMouseSleeper.h"
#include "Commands.h"
#include "Routine.h"
#include "Settings.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace
{

const QString tableData = u"frmTableData"_s;

bool opensForEditing(const QString& pane)
{
    return settings::getNumber(u"Options"_s, u"Items"_s, 1) == 1 && panes::opensInEditState(pane);
}

} // namespace

Form* mdiMain::currentPane() const
{
    return m_currentPane;
}

void mdiMain::forgetCurrentPane()
{
    m_currentPane = nullptr;
}

void mdiMain::PaneDisplay(const QString& pane, const QStringList& keys)
{
    runPane("mdiMain.PaneDisplay", pane, panes::Operation::Display, keys);
}

void mdiMain::PaneAddNew(const QString& pane, const QStringList& keys)
{
    runPane("mdiMain.PaneAddNew", pane, panes::Operation::AddNew, keys);
}

void mdiMain::PaneEdit(const QString& pane, const QStringList& keys)
{
    runPane("mdiMain.PaneEdit", pane, panes::Operation::Edit, keys);
}

void mdiMain::PaneDelete(const QString& pane, const QStringList& keys)
{
    runPane("mdiMain.PaneDelete", pane, panes::Operation::Delete, keys);
}

void mdiMain::runPane(const char* routineName, const QString& pane, panes::Operation operation, const QStringList& keys)
{
    if (!panes::isKnown(pane))
        return;

    Routine routine(routineName, "mdiMain.PaneDisplay");
    routine.passing({ErrorNumber::ObjectNotSet}).aroundReport([this] { hide(); }, [this] { show(); });
    routine.run([&] {
        try {
            if (m_currentPane && m_currentPane->name() == tableData) {
                forms::unload(tableData);
                forgetCurrentPane();
            }
            if (operation == panes::Operation::Display && opensForEditing(pane)) {
                PaneEdit(pane, keys);
                return;
            }
            const CMouseSleeper sleeper;
            const bool changed = makeCurrent(pane);
            MDIForm_Resize();
            {
                const QScopedValueRollback paneAtWork(m_paneAtWork, true);
                panes::run(pane, operation, keys);
            }
            if (operation == panes::Operation::Display)
                MDIForm_Resize();
            if (changed)
                CoolbarContextToolbar();
            Status(u"Ready"_s);
        } catch (const RuntimeError& error) {
            // A pane that was torn down under its own operation has nothing more to show.
            if (error.number() != ErrorNumber::ObjectNotSet)
                throw;
        }
    });
}

bool mdiMain::makeCurrent(const QString& pane)
{
    if (m_currentPane && m_currentPane->name() == pane && !m_currentPane->isUnloaded())
        return false;

    Form& form = forms::get(pane);
    if (m_currentPane)
        m_currentPane->hide();
    m_currentPane = &form;
    if (form.parentWidget() != m_paneArea)
        form.setParent(m_paneArea);
    form.setGeometry(m_paneArea->rect());
    form.show();
    return true;
}

void mdiMain::runCommand(const char* routineName, const QString& menuItem)
{
    Routine routine(routineName);
    // The command may change the tree, and the current item with it.
    const DragItem item = m_currentItem;
    routine.run([&] { commands::run(menuItem, item); });
}

void mdiMain::mnu_ColumnReorder_Click()
{
    runCommand("mdiMain.mnu_ColumnReorder_Click", u"mnu_ColumnReorder"_s);
}

void mdiMain::mnu_FieldRecalculate_Click()
{
    runCommand("mdiMain.mnu_FieldRecalculate_Click", u"mnu_FieldRecalculate"_s);
}

void mdiMain::mnu_FieldReorder_Click()
{
    runCommand("mdiMain.mnu_FieldReorder_Click", u"mnu_FieldReorder"_s);
}

void mdiMain::mnu_TableViewData_Click()
{
    runCommand("mdiMain.mnu_TableViewData_Click", u"mnu_TableViewData"_s);
}
