#pragma once

#include "TreeNodes.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTreeView>

#include <memory>

class TreeDrag;
class TreeModel;

/// The explorer's tree: keyed nodes over a compact model, filled a level at a time in one insertion. A press of the
/// left button selects the row under it; on the expander it selects and opens the row, or closes it and leaves a
/// selection outside alone. A press of the right button selects too. A double click opens or closes. Arrow keys, Home,
/// End, page keys, plus, minus and typing a name do what they do everywhere; Enter does nothing. The keyboard coming to
/// the tree selects nothing; its first arrow key does. All signals are raised while nodes and rows agree, so a handler
/// may do with the nodes what it likes, run events, or empty the tree.
class TreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit TreeView(QWidget* parent = nullptr);
    ~TreeView() override;

    TreeNodes& Nodes();

    TreeNode* SelectedItem() const { return m_selected; }
    /// Selects the node and brings it into view (see TreeNode::EnsureVisible). Null clears the selection.
    void setSelectedItem(TreeNode* node);

    /// Begins a drag within the tree; meant for a handler of MouseMove. Until it ends, moves raise DragOver instead of
    /// MouseMove, and so does scrolling; the release raises DragDrop instead of MouseUp, and the tree scrolls while the
    /// pointer is near an edge. Escape, another button, or a release outside of the tree ends it with DragCancel; other
    /// keys do nothing. After an end without a drop what the pointer does is not reported until the button is up.
    void BeginDrag();
    /// Ends a drag without a drop; no effect, and no event, without one.
    void CancelDrag();
    bool IsDragging() const;

    /// The image key of the picture at the pointer during a drag; empty for none.
    const QString& DragIcon() const;
    void setDragIcon(const QString& image);

    /// The node that is marked as the target of a drag, or null. It looks selected, and the selected one does not.
    TreeNode* DropHighlight() const { return m_dropHighlight; }
    void setDropHighlight(TreeNode* node);

    /// The node whose row, expander included, lies at a position of the viewport; null on empty space.
    TreeNode* HitTest(QPoint position) const;

    /// While one lives the tree shows its former state; at the end of the outermost one it shows all changes at once.
    /// What Nodes and the nodes say is true at any time.
    class RedrawOff
    {
    public:
        explicit RedrawOff(TreeView& tree);
        ~RedrawOff();
        RedrawOff(const RedrawOff&) = delete;
        RedrawOff& operator=(const RedrawOff&) = delete;

        /// Shows the changes now; the end of the scope then does nothing.
        void end();

    private:
        QPointer<TreeView> m_tree;
    };

signals:
    /// The node has been expanded (by mouse, keyboard or code) and may fill itself.
    void Expand(TreeNode* node);
    void Collapse(TreeNode* node);

    /// Raised before the tree reacts to a press, the second one of a double click too; the position is the viewport's.
    void MouseDown(Qt::MouseButton button, QPoint position);
    /// While a button is held, moves are held back until the pointer has left the press by the desktop's drag distance,
    /// so that an unsteady click drags nothing; the first one after that still reports the place of the press.
    void MouseMove(Qt::MouseButtons buttons, QPoint position);
    /// Raised after the tree has reacted to the release.
    void MouseUp(Qt::MouseButton button, QPoint position);
    void DragOver(QPoint position);
    /// Raised when the drag has ended; the drop highlight still stands, and goes after the handlers.
    void DragDrop(QPoint position);
    /// Raised when a drag has ended without a drop.
    void DragCancel();
    /// A context menu was asked for by the keyboard (the menu key or Shift+F10), for the selected node.
    void ContextKey(TreeNode* node, QPoint globalPosition);

public:
    void keyboardSearch(const QString& search) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void focusInEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event = nullptr) const override;
    void updateGeometries() override;
    bool viewportEvent(QEvent* event) override;

private:
    friend class TreeModel;
    friend class TreeNode;

    void setNodeExpanded(TreeNode& node, bool expanded);
    void toggle(TreeNode& node);
    void showExpanded(TreeNode& node);
    void childrenShown(TreeNode& parent, TreeNode* from);
    void reveal(TreeNode& node);
    bool isReachable(const TreeNode& node) const;
    void nodeLeaves(const TreeNode& node, TreeNode* heir);
    void childrenLeave(const TreeNode& parent, TreeNode* heir);
    void nodeGoes(const TreeNode& node);
    void syncSelection();
    void select(TreeNode* node);
    void viewExpanded(const QModelIndex& index, bool expanded);

    bool looksSelected(const TreeNode& node) const;
    void react(const QMouseEvent& press, bool isDouble);
    bool isOnExpander(const TreeNode& node, QPoint position) const;
    bool goSideways(bool outwards);
    void raiseContextKey();

    int widthOfVisibleRows() const;
    void fitColumn(int atLeast);
    void rememberTop();
    void keepTop();

    void holdRedraw();
    void releaseRedraw();

    // Nodes that are named here are let go in nodeGoes().
    TreeNode* m_selected = nullptr;
    TreeNode* m_dropHighlight = nullptr;
    TreeNode* m_toReveal = nullptr;
    TreeNode* m_top = nullptr;
    int m_topOffset = 0;
    int m_redrawOff = 0;
    int m_quiet = 0;
    bool m_layingOut = false;
    bool m_fitting = false;
    bool m_menuKeySeen = false;
    bool m_dragDistancePassed = false;
    mutable bool m_drawsHighlight = false;
    QPoint m_pressPosition;
    QElapsedTimer m_sinceTyping;
    std::unique_ptr<TreeDrag> m_drag;
    std::unique_ptr<TreeModel> m_model;
};
