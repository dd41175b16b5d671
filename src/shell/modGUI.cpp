#include "modGUI.h"

#include "BandBar.h"
#include "ContextMenuTable.h"
#include "mdiMain.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace modGUI
{

namespace
{

TreeNode* find(const QString& key)
{
    return mdiMain::instance().tvwExplorer().Nodes().find(key);
}

void readAnew(const QString& key)
{
    if (TreeNode* node = find(key))
        node->setExpanded(false);
    // The collapse may have moved the pane, and with it the tree: the node is looked up again.
    if (TreeNode* node = find(key))
        node->setExpanded(true);
}

void setVisible(QMenu& menu, const std::vector<QString>& items, bool visible)
{
    for (const QString& item : items) {
        if (auto* action = menu.findChild<QAction*>(item))
            action->setVisible(visible);
    }
}

} // namespace

void ExpandToNode(const QString& key)
{
    QString former;
    for (qsizetype end = key.indexOf(':'_L1); end >= 0; end = key.indexOf(':'_L1, end + 1)) {
        const QString prefix = key.left(end + 1);
        if (!find(prefix))
            readAnew(former);
        if (TreeNode* node = find(prefix)) {
            node->setSelected(true);
            node->setExpanded(true);
        }
        former = prefix;
    }

    TreeNode* node = find(key);
    if (!node || !node->Child())
        return;
    if (node->Child()->Text().isEmpty())
        mdiMain::instance().tvwExplorer_Expand(node);
    readAnew(key);
}

QMenu* ContextMenu(const DragItem& item)
{
    const TreeNode* node = find(item.NodeKey);
    const bool connected = node && node->SelectedImage() != "DSN Ghost"_L1;
    const contextmenus::Use use = contextmenus::use(item, {.connected = connected});
    if (use.menu.isEmpty())
        return nullptr;
    QMenu& menu = mdiMain::instance().menu(use.menu);
    setVisible(menu, use.shown, true);
    setVisible(menu, use.hidden, false);
    return &menu;
}

void ShowContextMenu(const DragItem& item, const QPoint& globalPosition)
{
    mdiMain::instance().clearKeepSelection();
    if (QMenu* menu = ContextMenu(item))
        menu->exec(globalPosition);
}

void PaneToolbarSetup(ToolBar& toolBar)
{
    for (ToolButton* button : toolBar.Buttons())
        button->setImage(button->Key());
}

} // namespace modGUI
