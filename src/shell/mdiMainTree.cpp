#include "mdiMain.h"

#include "NodeTypes.h"
#include "Routine.h"
#include "modGUI.h"

using namespace Qt::StringLiterals;

DragItem mdiMain::NodeToDragItem(const TreeNode* node) const
{
    DragItem item;
    Routine routine("mdimain.NodeToDragItem");
    routine.run([&] {
        if (!node)
            return;
        const CNode& payload = m_nodes.Item(*node);
        item.NodeKey = payload.Key;
        item.NodeType = payload.NodeType();
        item.DragIcon = nodetypes::dragIcon(item.NodeType);
        for (const TreeNode* step = node; step; step = step->Parent()) {
            const CNode& owner = m_nodes.Item(*step);
            if (nodetypes::isItem(owner.NodeType()) || nodetypes::isDatasource(owner.NodeType()))
                item.Keys.prepend(owner.NodeData());
        }
    });
    return item;
}

void mdiMain::DisplayNode()
{
    Routine routine("mdiMain.DisplayNode");
    routine.run([&] {
        const QString pane = nodetypes::pane(m_currentItem.NodeType);
        if (!pane.isEmpty())
            PaneDisplay(pane, m_currentItem.Keys);
    });
}

void mdiMain::tvwExplorer_Collapse(TreeNode* node)
{
    if (m_keepLevel)
        return;
    Routine routine("mdiMain.tvwExplorer_Collapse");
    routine.run([&] {
        Status(u"Collapse"_s);
        const TreeView::RedrawOff redrawOff(*m_tree);
        const TreeNode* former = m_tree->SelectedItem();
        const QString formerKey = former ? former->Key() : QString();

        m_nodes.RemoveChildren(*node);
        m_nodes.addPlaceholder(*node);

        m_currentItem = NodeToDragItem(m_tree->SelectedItem());
        if (!formerKey.isEmpty() && !m_tree->Nodes().find(formerKey))
            DisplayNode();
        m_currentItem.NodeType.clear();
        m_dragging = false;
    });
}

void mdiMain::tvwExplorer_MouseDown(Qt::MouseButton, QPoint position)
{
    Routine routine("mdiMain.tvwExplorer_MouseDown");
    routine.run([&] {
        Status(u"MouseDown"_s);
        m_currentItem = NodeToDragItem(m_tree->HitTest(position));
        const TreeNode* selected = m_tree->SelectedItem();
        m_savedNodeKey = selected ? selected->Key() : QString();
        m_dragging = false;
    });
}

void mdiMain::tvwExplorer_MouseMove(Qt::MouseButtons buttons, QPoint position)
{
    Routine routine("mdiMain.tvwExplorer_MouseMove");
    routine.run([&] {
        Status(u"MouseMove"_s);
        if (buttons != Qt::LeftButton || m_dragging || m_currentItem.NodeType.isEmpty() ||
            m_currentItem.NodeType.contains("DSN"_L1))
            return;
        const TreeNode* under = m_tree->HitTest(position);
        if (!under || under != m_tree->SelectedItem())
            return;
        m_dragging = true;
        Status(u"BeginDrag"_s);
        if (m_beginDrag)
            m_beginDrag(m_currentItem);
    });
}

void mdiMain::tvwExplorer_MouseUp(Qt::MouseButton button, QPoint position)
{
    Routine routine("mdiMain.tvwExplorer_MouseUp");
    routine.run([&] {
        if (button != Qt::RightButton) {
            DisplayNode();
        } else {
            modGUI::ShowContextMenu(m_currentItem, m_tree->viewport()->mapToGlobal(position));
            if (!m_keepSelection)
                restoreSavedSelection();
        }
        m_dragging = false;
    });
}

void mdiMain::restoreSavedSelection()
{
    if (m_savedNodeKey.isEmpty())
        m_tree->setSelectedItem(nullptr);
    else if (TreeNode* saved = m_tree->Nodes().find(m_savedNodeKey))
        saved->setSelected(true);
}

void mdiMain::tvwExplorer_ContextKey(TreeNode* node, QPoint globalPosition)
{
    Routine routine("mdiMain.tvwExplorer_ContextKey");
    routine.run([&] {
        m_currentItem = NodeToDragItem(node);
        modGUI::ShowContextMenu(m_currentItem, globalPosition);
    });
}
