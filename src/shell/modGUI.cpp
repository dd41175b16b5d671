#include "modGUI.h"

#include "BandBar.h"
#include "ContextMenuTable.h"
#include "NodeTypes.h"
#include "Routine.h"
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
    TreeNode* read = find(key);
    if (read && !read->Child()) {
        // A level that was empty has no expander that could be moved.
        mdiMain::instance().tvwExplorer_Expand(read);
        return;
    }
    if (read)
        read->setExpanded(false);
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
            // Bringing the node into view may open its parent, which reads the level anew.
            if (TreeNode* current = find(prefix)) {
                current->setSelected(true);
                current->setExpanded(true);
            }
        }
        former = prefix;
    }

    TreeNode* node = find(key);
    if (!node)
        return;
    if (node->Child() && node->Child()->Text().isEmpty())
        mdiMain::instance().tvwExplorer_Expand(node);
    readAnew(key);
}

QMenu* ContextMenu(const DragItem& item)
{
    const TreeNode* node = find(item.Node);
    const bool connected = node && node->SelectedImage() != nodetypes::ghostImage;
    const contextmenus::Use use = contextmenus::use(item, connected);
    if (use.menu.isEmpty())
        return nullptr;
    QMenu& menu = mdiMain::instance().menu(use.menu);
    setVisible(menu, use.shown, true);
    setVisible(menu, use.hidden, false);
    return &menu;
}

void ShowContextMenu(const DragItem& item, const QPoint& globalPosition)
{
    Routine routine("modGUI.ShowContextMenu");
    routine.run([&] {
        mdiMain::instance().clearKeepSelection();
        // The commands of the menu may change the current item.
        if (QMenu* menu = ContextMenu(DragItem(item)))
            menu->exec(globalPosition);
    });
}

void PaneToolbarSetup(ToolBar& toolBar)
{
    Routine routine("modGUI.PaneToolbarSetup");
    routine.run([&] {
        for (ToolButton* button : toolBar.Buttons())
            button->setImage(button->Key());
    });
}

void SetToolbarState(ToolBar& toolBar, int state, const QString& tag)
{
    const bool acting = state == 1;
    const auto enable = [&](const QString& key, bool enabled) {
        if (ToolButton* button = toolBar.find(key))
            button->setEnabled(enabled);
    };
    for (const QLatin1StringView command : {" Add"_L1, " Edit"_L1, " Delete"_L1})
        enable(toolBar.Tag() + command, !acting);
    enable(u"OK"_s, acting);
    if (ToolButton* ok = toolBar.find(u"OK"_s))
        ok->setTag(acting ? tag : QString());
    enable(u"Cancel"_s, acting);
    enable(u"Undo"_s, false);
    enable(u"ViewData"_s, !acting);
}

QString OutOfRange(const QString& what, int minimum, int maximum)
{
    return u"%1 is out of range.\nPlease enter a value between %2 and %3."_s.arg(what).arg(minimum).arg(maximum);
}

} // namespace modGUI
