#include "mdiMain.h"

#include "Application.h"
#include "BandBar.h"
#include "Boxes.h"
#include "CConnections.h"
#include "CMouseSleeper.h"
#include "DatasourceFamily.h"
#include "Events.h"
#include "NodeTypes.h"
#include "Outside.h"
#include "Routine.h"
#include "frmDSNAdmin.h"

#include <QAction>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace
{

const QString welcome = u"frmWelcome"_s;

bool confirmExpandAll()
{
    return boxes::ask(u"This process could take some time.\nAre you sure you wish to Expand All?"_s);
}

} // namespace

void mdiMain::FetchTreeviewRoot()
{
    Routine routine("mdiMain.FetchTreeviewRoot");
    routine.passing({ErrorNumber::FileNotFound});
    routine.run([&] {
        try {
            m_nodes.Clear();
            CConnections& connections = CConnections::instance();
            while (connections.Count() >= 1)
                connections.Remove(1);
            listDatasources();
            PaneDisplay(welcome);
            forms::unloadAllBut({objectName(), welcome});
        } catch (const RuntimeError& error) {
            if (error.number() != ErrorNumber::FileNotFound)
                throw;
            boxes::inform(u"An error occurred while trying to read the directory:\n\n"
                          "Unable to read file DSN information"_s);
        }
    });
}

void mdiMain::listDatasources()
{
    const TreeView::RedrawOff redrawOff(*m_tree);
    for (const dao::DataSource& source : dao::familyDataSources()) {
        const CNode* node =
            m_nodes.add(nullptr, u"DSN"_s, source.Name, source.Name, nodetypes::ghostImage, nodetypes::ghostImage);
        if (node)
            m_nodes.addPlaceholder(*CNodes::treeNode(*node));
    }
}

void mdiMain::mnu_DSNConnect_Click()
{
    Routine routine("mdiMain.mnu_DSNConnect_Click");
    routine.run(
        [&] { tvwExplorer_Expand(&m_tree->Nodes().Item(nodetypes::datasourceKey(m_currentItem.Keys.value(0)))); });
}

void mdiMain::mnu_DSNDisconnect_Click()
{
    Routine routine("mdiMain.mnu_DSNDisconnect_Click");
    routine.run([&] {
        m_keepSelection = true;
        TreeNode* node = m_tree->SelectedItem();
        if (!node)
            throw RuntimeError(ErrorNumber::ObjectNotSet);
        if (node->SelectedImage() == nodetypes::ghostImage)
            return;
        CConnections::instance().Remove(m_nodes.Item(*node).NodeData());
        node->setSelectedImage(nodetypes::ghostImage);
        node->setImage(nodetypes::ghostImage);
        {
            const QScopedValueRollback keepLevel(m_keepLevel, true);
            node->setExpanded(false);
        }
        forms::unloadAllBut({objectName(), u"frmTWErr"_s});
        forgetCurrentPane();
        PaneDisplay(welcome);
    });
}

void mdiMain::mnuFileRefresh_Click()
{
    Routine routine("mdiMain.mnuFileRefresh_Click");
    routine.run([&] { FetchTreeviewRoot(); });
}

void mdiMain::mnuFileImportCSV_Click()
{
    Routine routine("mdiMain.mnuFileImportCSV_Click");
    routine.run([&] {
        if (nodetypes::isDatasource(m_currentItem.NodeType))
            PaneDisplay(u"frmCSVImport"_s, m_currentItem.Keys);
        else
            boxes::inform(u"Please select a Datasource before selecting 'Import Catalog'"_s);
    });
}

void mdiMain::mnuFileExportCSV_Click()
{
    Routine routine("mdiMain.mnuFileExportCSV_Click");
    routine.run([&] {
        if (nodetypes::isDatasource(m_currentItem.NodeType))
            PaneDisplay(u"frmCSVExport"_s, m_currentItem.Keys);
        else
            boxes::inform(u"Please select a Datasource before selecting 'Export Catalog'"_s);
    });
}

void mdiMain::mnu_DSNImport_Click()
{
    Routine routine("mdiMain.mnu_DSNImport_Click");
    routine.run([&] { mnuFileImportCSV_Click(); });
}

void mdiMain::mnu_DSNExport_Click()
{
    Routine routine("mdiMain.mnu_DSNExport_Click");
    routine.run([&] { mnuFileExportCSV_Click(); });
}

void mdiMain::mnuFileExit_Click()
{
    Routine routine("mdiMain.mnuFileExit_Click");
    routine.run([&] { close(); });
}

void mdiMain::mnuViewToolbar_Click()
{
    Routine routine("mdiMain.mnuViewToolbar_Click");
    routine.run([&] { m_bands->setVisible(menu(u"mnuView"_s).findChild<QAction*>(u"mnuViewToolbar"_s)->isChecked()); });
}

void mdiMain::mnuViewStatusBar_Click()
{
    Routine routine("mdiMain.mnuViewStatusBar_Click");
    routine.run(
        [&] { statusBar()->setVisible(menu(u"mnuView"_s).findChild<QAction*>(u"mnuViewStatusBar"_s)->isChecked()); });
}

void mdiMain::tbrMain_ButtonClick(ToolButton& button)
{
    Routine routine("mdiMain.tbrMain_ButtonClick");
    routine.run([&] {
        if (button.Key() == "DSN Refresh"_L1)
            FetchTreeviewRoot();
        else if (button.Key() == "DSN Admin"_L1)
            showDatasourceAdministrator();
        else if (button.Key() == "Import"_L1)
            mnuFileImportCSV_Click();
        else if (button.Key() == "Export"_L1)
            mnuFileExportCSV_Click();
    });
}

void mdiMain::showDatasourceAdministrator()
{
    if (!Outside::instance().run(u"control"_s, {u"odbccp32.cpl"_s}))
        showDatasourceWindow(this);
}

void mdiMain::expandSelected()
{
    const CNode* selected = m_nodes.SelectedItem();
    if (!selected)
        throw RuntimeError(ErrorNumber::ObjectNotSet);
    const QScopedValueRollback keepsPane(m_paneAtWork, true);
    m_nodes.ExpandChildren(*selected);
}

void mdiMain::mnu_DSNExpandAll_Click()
{
    Routine routine("mdiMain.mnu_DSNExpandAll_Click");
    routine.run([&] {
        if (!confirmExpandAll())
            return;
        expandSelected();
        // A datasource that failed to connect has nothing but its placeholder and stays closed.
        TreeNode* node = m_tree->SelectedItem();
        if (node && node->Child() && !node->Child()->Text().isEmpty())
            node->setExpanded(true);
    });
}

void mdiMain::mnu_FileExpandAll_Click()
{
    Routine routine("mdiMain.mnu_FileExpandAll_Click");
    routine.run([&] {
        if (confirmExpandAll())
            expandSelected();
    });
}

void mdiMain::mnu_DBExpandAll_Click()
{
    Routine routine("mdiMain.mnu_DBExpandAll_Click");
    routine.run([&] {
        if (confirmExpandAll())
            expandSelected();
    });
}

void mdiMain::mnu_TableExpandAll_Click()
{
    Routine routine("mdiMain.mnu_TableExpandAll_Click");
    routine.run([&] { expandSelected(); });
}

void mdiMain::mnu_DSNClear_Click()
{
    Routine routine("mdiMain.mnu_DSNClear_Click");
    routine.run([&] { clearCatalog(); });
    Status(u"Ready"_s);
}

void mdiMain::clearCatalog()
{
    if (!nodetypes::isDatasource(m_currentItem.NodeType)) {
        boxes::inform(u"Please select a Datasource before selecting 'Clear Catalog'"_s);
        return;
    }
    const QString datasource = m_currentItem.Keys.value(0);
    if (!boxes::ask(u"WARNING - You are about to remove ALL the catalog definitions for Datasource '"_s + datasource +
                    u"'.\nAre you sure you wish to completely clear the calaog?"_s))
        return;
    CConnection* connection = CConnections::instance().Item(datasource);
    if (!connection)
        return;
    dao::Database& db = *connection->db();

    Status(u"Removing Column definitions..."_s);
    db.Execute(u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME <> 'TW'"_s);

    Status(u"Removing Database definitions..."_s);
    db.Execute(u"DELETE FROM TW_DB WHERE DATABASE_NAME <> 'TW'"_s);

    Status(u"Removing Database privileges..."_s);
    db.Execute(u"DELETE FROM TW_DBPRV WHERE USER_NAME <> 'ADMIN' "_s);
    db.Execute(u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME <> 'TW' "_s);

    Status(u"Removing Field definitions..."_s);
    db.Execute(u"DELETE FROM TW_FIELD "
               "WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', "
               "'LOCDT', 'SQLDT', 'TABLE', 'TBLPRV', 'USER')"_s);

    Status(u"Removing File definitions..."_s);
    db.Execute(u"DELETE FROM TW_FILE "
               "WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', "
               "'LOCDT', 'SQLDT', 'TABLE', 'TBLPRV', 'USER')"_s);

    Status(u"Removing Table definitions..."_s);
    db.Execute(u"DELETE FROM TW_TABLE WHERE DATABASE_NAME <> 'TW'"_s);

    Status(u"Removing Table privileges..."_s);
    db.Execute(u"DELETE FROM TW_TBLPRV "_s);

    Status(u"Removing User privileges..."_s);
    db.Execute(u"DELETE FROM TW_USER WHERE USER_NAME <> 'ADMIN'"_s);

    m_tree->Nodes().Item(nodetypes::datasourceKey(datasource)).setExpanded(false);
    boxes::inform(u"The catalog has been cleared."_s);
}
