#pragma once

#include "CNodes.h"
#include "DragItem.h"
#include "PaneRegistry.h"
#include "TreeView.h"
#include "UnspokenPasswords.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>

class BandBar;
class Form;
class QLabel;
class QMenu;
class ToolBar;
class ToolButton;

namespace menus
{
struct Item;
}

/// The program's window: the explorer tree on the left, the current pane on the right, tool bars, menus and status
/// line. It knows panes by name alone.
class mdiMain : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window; nothing is read and nothing shown before MDIForm_Load.
    explicit mdiMain(const QStringList& commandLine);
    ~mdiMain() override;

    /// The one main window. Raises 91 when there is none.
    static mdiMain& instance();
    /// The same, or null.
    static mdiMain* find();

    void MDIForm_Load();

    /// True when the command line holds the word "DEBUG".
    bool debugFlag() const { return m_debug; }
    CNodes& nodes() { return m_nodes; }
    TreeView& tvwExplorer() { return *m_tree; }
    ToolBar& toolBar(const QString& name) const;
    QMenu& menu(const QString& name) const;
    /// The node under the last mouse press.
    const DragItem& currentItem() const { return m_currentItem; }
    void setCurrentItem(DragItem item) { m_currentItem = std::move(item); }
    /// The pane now shown, or null.
    Form* currentPane() const;

    /// Sets the text of the status line and shows it at once.
    void Status(const QString& text);
    /// Shows the tool bar of the current pane beside the main one.
    void CoolbarContextToolbar();
    /// Hides nothing: bands come and go with their pane alone.
    void CoolbarBandsHide() {}

    void FetchTreeviewRoot();
    void tvwExplorer_Expand(TreeNode* node);
    void tvwExplorer_Collapse(TreeNode* node);
    DragItem NodeToDragItem(const TreeNode* node) const;
    /// Shows the pane of the current item.
    void DisplayNode();

    void PaneDisplay(const QString& pane, const QStringList& keys = {});
    void PaneAddNew(const QString& pane, const QStringList& keys);
    void PaneEdit(const QString& pane, const QStringList& keys);
    void PaneDelete(const QString& pane, const QStringList& keys);

    void mnu_ColumnReorder_Click();
    void mnu_FieldRecalculate_Click();
    void mnu_FieldReorder_Click();
    void mnu_TableViewData_Click();

    void mnuFileRefresh_Click();
    void mnuFileImportCSV_Click();
    void mnuFileExportCSV_Click();
    void mnuFileExit_Click();
    void mnuViewToolbar_Click();
    void mnuViewStatusBar_Click();
    void mnu_DSNConnect_Click();
    void mnu_DSNImport_Click();
    void mnu_DSNExport_Click();
    void mnu_DSNDisconnect_Click();
    void mnu_DSNExpandAll_Click();
    void mnu_FileExpandAll_Click();
    void mnu_DBExpandAll_Click();
    void mnu_TableExpandAll_Click();
    void mnu_DSNClear_Click();

    /// Lets the next context menu give the selection back when it closes.
    void clearKeepSelection() { m_keepSelection = false; }

    /// Set from the move that begins a drag within the tree to its end.
    bool isDragging() const { return m_dragging; }
    void setDragging(bool dragging) { m_dragging = dragging; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void buildToolBars();
    void buildMenus();
    QAction* buildMenuItem(const menus::Item& item, QMenu& menu);
    void runMenuItem(const menus::Item& item);
    void restorePlacement();
    void MDIForm_Unload();
    void MDIForm_Resize();
    void picTreeview_Resize();
    void setTreeviewWidth(int twips);
    void picSplitter_MouseMove(int x);

    void listDatasources();
    void expandLevel(TreeNode& node);
    void expandDatasource(TreeNode& node, const QString& datasource);
    void tvwExplorer_MouseDown(Qt::MouseButton button, QPoint position);
    void tvwExplorer_MouseMove(Qt::MouseButtons buttons, QPoint position);
    void tvwExplorer_MouseUp(Qt::MouseButton button, QPoint position);
    void beginDrag();
    void endDrag();
    DragItem draggedItem() const;
    void tvwExplorer_DragOver(QPoint position);
    void tvwExplorer_DragDrop(QPoint position);
    bool formerSelectionIsGone() const;
    void restoreSavedSelection();
    void tvwExplorer_ContextKey(TreeNode* node, QPoint globalPosition);
    void tbrMain_ButtonClick(ToolButton& button);
    void forwardToPane(const char* handler, ToolButton& button);
    void showDatasourceAdministrator();
    void expandSelected();
    void clearCatalog();

    void runCommand(const char* routineName, const QString& menuItem);
    void runPane(const char* routineName, const QString& pane, panes::Operation operation, const QStringList& keys);
    bool makeCurrent(const QString& pane);
    void forgetCurrentPane();

    /// From before the first entry that could hold a password.
    const UnspokenPasswords m_unspoken;
    bool m_debug = false;
    CNodes m_nodes;
    DragItem m_currentItem;
    QPointer<Form> m_currentPane;
    /// The key of the node that was selected before the last mouse press.
    QString m_savedNodeKey;
    bool m_keepSelection = false;
    bool m_dragging = false;
    /// The node that is being dragged.
    TreeNodeRef m_dragged;
    /// From a mouse press on the tree to the end of what its release leads to.
    bool m_inPress = false;
    /// While the code of a pane runs that the main window has called.
    bool m_paneAtWork = false;
    /// Set while a collapse leaves the level in the tree.
    bool m_keepLevel = false;

    QWidget* m_client = nullptr;
    QWidget* m_treeSide = nullptr;
    QWidget* m_splitter = nullptr;
    QWidget* m_paneArea = nullptr;
    TreeView* m_tree = nullptr;
    BandBar* m_bands = nullptr;
    QLabel* m_status = nullptr;
    QHash<QString, ToolBar*> m_toolBars;
    QHash<QString, QMenu*> m_menus;
};
