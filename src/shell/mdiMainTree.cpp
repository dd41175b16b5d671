#include "mdiMain.h"

#include "DragHandlers.h"
#include "NodeTypes.h"
#include "Routine.h"
#include "modGUI.h"

#include <QScopedValueRollback>
#include <QScrollBar>

using namespace Qt::StringLiterals;

DragItem mdiMain::NodeToDragItem(const TreeNode* node) const
{
    DragItem item;
    Routine routine("mdimain.NodeToDragItem");
    routine.run([&] {
        if (!node || !node->Payload())
            return;
        const CNode& payload = m_nodes.Item(*node);
        item.Node = payload.Key;
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
        m_nodes.RemoveChildren(*node);
        m_nodes.addPlaceholder(*node);

        m_currentItem = NodeToDragItem(m_tree->SelectedItem());
        if (formerSelectionIsGone())
            DisplayNode();
        m_currentItem.NodeType.clear();
        m_tree->CancelDrag();
        m_dragging = false;
    });
}

/// Whether a collapse by the user's hand has taken the node that was selected before. The tree has moved the selection
/// by the time it tells of a collapse. A pane that reads the tree anew during its own command stays where it is.
bool mdiMain::formerSelectionIsGone() const
{
    return m_inPress && !m_paneAtWork && !m_savedNodeKey.isEmpty() && !m_tree->Nodes().find(m_savedNodeKey);
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
        m_inPress = true;
    });
}

void mdiMain::tvwExplorer_MouseMove(Qt::MouseButtons buttons, QPoint position)
{
    Routine routine("mdiMain.tvwExplorer_MouseMove");
    routine.run([&] {
        Status(u"MouseMove"_s);
        if (buttons == Qt::NoButton)
            m_inPress = false;
        if (buttons != Qt::LeftButton || m_dragging || m_currentItem.NodeType.isEmpty() ||
            m_currentItem.NodeType.contains("DSN"_L1))
            return;
        const TreeNode* under = m_tree->HitTest(position);
        if (!under || under != m_tree->SelectedItem())
            return;
        beginDrag();
    });
}

void mdiMain::beginDrag()
{
    m_dragging = true;
    Status(u"BeginDrag"_s);
    // The drag has taken the release.
    m_inPress = false;
    if (!drags::handlers().over)
        return;
    m_dragged = m_tree->SelectedItem();
    m_tree->setDragIcon(m_currentItem.DragIcon);
    m_tree->BeginDrag();
}

void mdiMain::endDrag()
{
    m_dragging = false;
    m_dragged = {};
    m_tree->setDragIcon({});
}

/// What is dragged, told anew by its node; nothing once the node has gone.
DragItem mdiMain::draggedItem() const
{
    return NodeToDragItem(m_dragged.get());
}

void mdiMain::tvwExplorer_DragOver(QPoint position)
{
    Routine routine("mdiMain.tvwExplorer_DragOver");
    routine.run([&] {
        Status(u"DragOver"_s);
        TreeNode* under = m_tree->HitTest(position);
        const DragItem target = NodeToDragItem(under);
        m_tree->setDropHighlight(under);
        drags::handlers().over(m_tree, draggedItem(), target);
    });
}

void mdiMain::tvwExplorer_DragDrop(QPoint position)
{
    Routine routine("mdiMain.tvwExplorer_DragDrop");
    routine.run([&] {
        // What is judged is the place of the drop.
        tvwExplorer_DragOver(position);
        Status(u"DragDrop"_s);
        const DragItem source = draggedItem();
        const DragItem target = NodeToDragItem(m_tree->HitTest(position));
        drags::handlers().drop(m_tree, source, target);
    });
    endDrag();
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
    m_inPress = false;
}

void mdiMain::restoreSavedSelection()
{
    TreeNode* saved = m_tree->Nodes().find(m_savedNodeKey);
    if (!saved && !m_savedNodeKey.isEmpty())
        return;
    // What the user looks at stays where it is.
    const QPoint scrolled(m_tree->horizontalScrollBar()->value(), m_tree->verticalScrollBar()->value());
    m_tree->setSelectedItem(saved);
    m_tree->horizontalScrollBar()->setValue(scrolled.x());
    m_tree->verticalScrollBar()->setValue(scrolled.y());
}

void mdiMain::tvwExplorer_ContextKey(TreeNode* node, QPoint globalPosition)
{
    Routine routine("mdiMain.tvwExplorer_ContextKey");
    routine.run([&] {
        m_currentItem = NodeToDragItem(node);
        // A command of the menu takes nodes away by the user's hand, as one under the mouse does.
        const QScopedValueRollback inPress(m_inPress, true);
        modGUI::ShowContextMenu(m_currentItem, globalPosition);
    });
}
