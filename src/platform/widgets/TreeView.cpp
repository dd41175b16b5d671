#include "TreeView.h"

#include "TreeDrag.h"
#include "TreeModel.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

constexpr int iconSide = 16;
constexpr int rowHeight = 24;

/// Rows with room to breathe, and the look of a drop target.
class TreeDelegate : public QStyledItemDelegate
{
public:
    explicit TreeDelegate(TreeView& view) : QStyledItemDelegate(&view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo(QSize(0, rowHeight));
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (const TreeNode* target = m_view.DropHighlight()) {
            option->state.setFlag(QStyle::State_Selected, index.internalPointer() == target);
            option->state.setFlag(QStyle::State_HasFocus, false);
        }
    }

private:
    TreeView& m_view;
};

bool isBelow(const TreeNode* node, const TreeNode& above)
{
    for (node = node ? node->Parent() : nullptr; node; node = node->Parent()) {
        if (node == &above)
            return true;
    }
    return false;
}

} // namespace

TreeView::TreeView(QWidget* parent)
    : QTreeView(parent), m_drag(std::make_unique<TreeDrag>(*this)), m_model(std::make_unique<TreeModel>(*this))
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize(QSize(iconSide, iconSide));
    setItemDelegate(new TreeDelegate(*this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setTextElideMode(Qt::ElideRight);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setExpandsOnDoubleClick(false);
    // The tree scrolls where it means to: a view that follows its current row by itself also opens what lies above it.
    setAutoScroll(false);
    setContextMenuPolicy(Qt::DefaultContextMenu);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    viewport()->setMouseTracking(true);
    setModel(m_model.get());

    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) { viewExpanded(index, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) { viewExpanded(index, false); });
}

TreeView::~TreeView()
{
    ++m_quiet;
    setModel(nullptr);
}

TreeNodes& TreeView::Nodes()
{
    return m_model->nodes();
}

// Selection ----------------------------------------------------------------------------------------------------------

void TreeView::setSelectedItem(TreeNode* node)
{
    select(node);
    if (node)
        reveal(*node);
}

void TreeView::select(TreeNode* node)
{
    m_selected = node;
    syncSelection();
}

/// Lets the view's selection follow the tree's.
void TreeView::syncSelection()
{
    if (m_redrawOff > 0)
        return;
    const QScopedValueRollback quiet(m_quiet, m_quiet + 1);
    const QModelIndex index =
        m_selected && m_model->isShown(*m_selected) ? m_model->indexOf(*m_selected) : QModelIndex();
    if (!index.isValid())
        selectionModel()->clear();
    else if (currentIndex() != index || !selectionModel()->isSelected(index))
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

/// Follows a move of the view itself, as the arrow keys and typing make it.
void TreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    if (m_quiet > 0 || m_model->isChangingRows() || !current.isValid())
        return;
    m_selected = m_model->nodeOf(current);
    syncSelection();
    scrollTo(current);
}

QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex& index, const QEvent*) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate);
}

void TreeView::nodeLeaves(const TreeNode& node, TreeNode* heir)
{
    if (m_selected == &node || isBelow(m_selected, node))
        m_selected = heir;
}

void TreeView::childrenLeave(const TreeNode& parent, TreeNode* heir)
{
    if (!heir || isBelow(m_selected, parent))
        m_selected = heir;
}

void TreeView::nodeGoes(const TreeNode& node)
{
    for (TreeNode** named : {&m_selected, &m_dropHighlight, &m_toReveal, &m_top}) {
        if (*named == &node)
            *named = nullptr;
    }
}

void TreeView::setDropHighlight(TreeNode* node)
{
    if (m_dropHighlight == node)
        return;
    m_dropHighlight = node;
    viewport()->update();
}

TreeNode* TreeView::HitTest(QPoint position) const
{
    if (!viewport()->rect().contains(position))
        return nullptr;
    // Only where the column begins is there always a cell.
    const QModelIndex index = indexAt(QPoint(isRightToLeft() ? viewport()->width() - 1 : 0, position.y()));
    return index.isValid() ? m_model->nodeOf(index) : nullptr;
}

bool TreeView::looksSelected(const TreeNode& node) const
{
    return &node == (m_dropHighlight ? m_dropHighlight : m_selected);
}

/// Draws the part of a row before its picture in the colours of the rest of it.
void TreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    const QScopedValueRollback highlight(m_drawsHighlight, looksSelected(*m_model->nodeOf(index)));
    if (m_dropHighlight) {
        const QPalette::ColorGroup group = isActiveWindow() ? QPalette::Active : QPalette::Inactive;
        painter->fillRect(rect, palette().brush(group, m_drawsHighlight ? QPalette::Highlight : QPalette::Base));
    }
    QTreeView::drawBranches(painter, rect, index);
}

void TreeView::initViewItemOption(QStyleOptionViewItem* option) const
{
    QTreeView::initViewItemOption(option);
    if (!m_drawsHighlight)
        return;
    // The styles know no selected expander, and draw a dark one on a dark ground.
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        option->palette.setBrush(role, palette().highlightedText());
}

// Opening and closing ------------------------------------------------------------------------------------------------

void TreeView::setNodeExpanded(TreeNode& node, bool expanded)
{
    const bool isLeaf = node.m_count == 0;
    if (node.m_expanded == expanded || (isLeaf && expanded))
        return;
    node.m_expanded = expanded;
    if (!expanded && isBelow(m_selected, node))
        select(&node);
    showExpanded(node);
    if (isLeaf)
        return;
    if (expanded)
        emit Expand(&node);
    else
        emit Collapse(&node);
}

void TreeView::toggle(TreeNode& node)
{
    if (node.m_count > 0)
        setNodeExpanded(node, !node.m_expanded);
}

void TreeView::showExpanded(TreeNode& node)
{
    if (!m_model->isShown(node))
        return;
    const QScopedValueRollback quiet(m_quiet, m_quiet + 1);
    // Rows are laid out when they are next looked at: a level that is closed and opened again, as it is to be read
    // anew, then neither moves the scroll bar nor costs a layout for each step.
    scheduleDelayedItemsLayout();
    QTreeView::setExpanded(m_model->indexOf(node), node.m_expanded);
    childrenShown(node, node.Child());
}

/// Opens in the view what is open among the children of an open node, from one child on, and below them.
void TreeView::childrenShown(TreeNode& parent, TreeNode* from)
{
    if (!parent.m_expanded || parent.m_withheld)
        return;
    const QScopedValueRollback quiet(m_quiet, m_quiet + 1);
    const QModelIndex level = m_model->indexOf(parent);
    if (level.isValid() && !isExpanded(level))
        QTreeView::setExpanded(level, true);
    std::vector<TreeNode*> todo{from};
    while (!todo.empty()) {
        TreeNode* first = todo.back();
        todo.pop_back();
        for (TreeNode* child = first; child; child = child->Next()) {
            if (!child->m_expanded)
                continue;
            QTreeView::setExpanded(m_model->indexOf(*child), true);
            if (!child->m_withheld)
                todo.push_back(child->Child());
        }
    }
}

/// Follows what the view opened or closed by itself, as an assistive tool may make it do.
void TreeView::viewExpanded(const QModelIndex& index, bool expanded)
{
    if (m_quiet > 0)
        return;
    TreeNode& node = *m_model->nodeOf(index);
    setNodeExpanded(node, expanded);
}

void TreeView::reveal(TreeNode& node)
{
    const TreeNodeRef target(&node);
    std::vector<TreeNodeRef> ancestors;
    for (TreeNode* above = node.Parent(); above; above = above->Parent()) {
        if (!above->m_expanded)
            ancestors.emplace_back(above);
    }
    for (auto above = ancestors.rbegin(); above != ancestors.rend(); ++above) {
        (*above)->setExpanded(true);
        if (!target || !*above)
            return;
    }
    if (!isReachable(*target))
        return;
    if (m_redrawOff > 0)
        m_toReveal = target.get();
    else
        scrollTo(m_model->indexOf(*target));
}

/// Whether every ancestor of a node is open.
bool TreeView::isReachable(const TreeNode& node) const
{
    for (const TreeNode* above = node.Parent(); above; above = above->Parent()) {
        if (!above->m_expanded)
            return false;
    }
    return true;
}

// Redraw -------------------------------------------------------------------------------------------------------------

void TreeView::holdRedraw()
{
    if (m_redrawOff++ > 0)
        return;
    setUpdatesEnabled(false);
    m_model->withhold();
}

void TreeView::releaseRedraw()
{
    if (--m_redrawOff > 0)
        return;
    m_model->release();
    syncSelection();
    if (TreeNode* target = std::exchange(m_toReveal, nullptr); target && isReachable(*target))
        scrollTo(m_model->indexOf(*target));
    setUpdatesEnabled(true);
}

TreeView::RedrawOff::RedrawOff(TreeView& tree) : m_tree(&tree)
{
    tree.holdRedraw();
}

TreeView::RedrawOff::~RedrawOff()
{
    end();
}

void TreeView::RedrawOff::end()
{
    if (m_tree)
        m_tree->releaseRedraw();
    m_tree.clear();
}

// Geometry -----------------------------------------------------------------------------------------------------------

void TreeView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m_model->forgetFonts();
    QTreeView::changeEvent(event);
}

bool TreeView::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QTreeView::viewportEvent(event);
    // A name that does not fit is shown whole.
    const auto* help = static_cast<QHelpEvent*>(event);
    const TreeNode* node = HitTest(help->pos());
    QString text;
    if (node) {
        const QModelIndex index = m_model->indexOf(*node);
        const QRect row = visualRect(index);
        const int width = sizeHintForIndex(index).width();
        const int begin = isRightToLeft() ? row.right() + 1 - width : row.left();
        if (begin < 0 || begin + width > viewport()->width())
            text = node->Text();
    }
    QToolTip::showText(help->globalPos(), text, viewport());
    return true;
}

void TreeView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    if (!index.isValid() || !isReachable(*m_model->nodeOf(index)))
        return;
    // A row is as wide as the widest one: what is to be seen of it is where its name begins.
    const int across = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(across);
    const QRect row = visualRect(index);
    // The base class leaves the last line of pixels of a row at the bottom out of sight.
    if (hint == EnsureVisible && row.height() < viewport()->height())
        verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                      std::max(row.bottom() - viewport()->height() + 1, 0));
    const int begin = isRightToLeft() ? viewport()->width() - row.right() - 1 : row.left();
    if (begin < 0 || begin > viewport()->width() * 3 / 4)
        horizontalScrollBar()->setValue(across + begin - 2 * indentation());
}

void TreeView::doItemsLayout()
{
    {
        const QScopedValueRollback layingOut(m_layingOut, true);
        QTreeView::doItemsLayout();
    }
    keepTop();
}

void TreeView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (dy == 0 || m_layingOut)
        return;
    rememberTop();
    fitColumn(header()->length());
    // Other rows have come under a pointer that rests.
    if (!m_model->isChangingRows())
        m_drag->reportPlace();
}

void TreeView::updateGeometries()
{
    QTreeView::updateGeometries();
    fitColumn(0);
}

/// Lets the one column be as wide as the widest row in sight: measuring all rows of a large tree takes far too long.
void TreeView::fitColumn(int atLeast)
{
    if (m_fitting || header()->count() == 0)
        return;
    const QScopedValueRollback fitting(m_fitting, true);
    const int width = std::max({atLeast, viewport()->width(), widthOfVisibleRows()});
    if (width == header()->sectionSize(0))
        return;
    header()->resizeSection(0, width);
    QTreeView::updateGeometries();
}

int TreeView::widthOfVisibleRows() const
{
    // As if there were no scroll bar: otherwise the bar would cover the row that it is there for, and vanish again.
    const int bottom = maximumViewportSize().height();
    int widest = 0;
    for (QModelIndex index = indexAt(QPoint(0, 0)); index.isValid(); index = indexBelow(index)) {
        if (visualRect(index).top() >= bottom)
            break;
        int depth = 1;
        for (const TreeNode* above = m_model->nodeOf(index)->Parent(); above; above = above->Parent())
            ++depth;
        widest = std::max(widest, depth * indentation() + sizeHintForIndex(index).width());
    }
    return widest;
}

/// Notes which row is the first in sight.
void TreeView::rememberTop()
{
    m_top = HitTest(QPoint(0, 0));
    if (m_top)
        m_topOffset = visualRect(m_model->indexOf(*m_top)).top();
}

/// Keeps the row that was the first in sight where it was, whatever came or went above it.
void TreeView::keepTop()
{
    if (m_top && m_model->isShown(*m_top)) {
        const QRect row = visualRect(m_model->indexOf(*m_top));
        if (row.isValid())
            verticalScrollBar()->setValue(verticalScrollBar()->value() + row.top() - m_topOffset);
    }
    rememberTop();
}
