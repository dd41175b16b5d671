// What the mouse and the keyboard do in a tree.
#include "TreeView.h"

#include "TreeDrag.h"
#include "TreeModel.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <utility>

void TreeView::BeginDrag()
{
    m_drag->begin(m_pressPosition);
}

void TreeView::CancelDrag()
{
    if (!m_drag->isActive())
        return;
    m_drag->end();
    setDropHighlight(nullptr);
    emit DragCancel();
}

bool TreeView::IsDragging() const
{
    return m_drag->isActive();
}

const QString& TreeView::DragIcon() const
{
    return m_drag->picture();
}

void TreeView::setDragIcon(const QString& image)
{
    m_drag->setPicture(image);
}

/// The keyboard coming to the tree selects nothing by itself.
void TreeView::focusInEvent(QFocusEvent* event)
{
    const QScopedValueRollback quiet(m_quiet, m_quiet + 1);
    QTreeView::focusInEvent(event);
    if (!m_selected)
        selectionModel()->clearCurrentIndex();
}

void TreeView::hideEvent(QHideEvent* event)
{
    CancelDrag();
    QTreeView::hideEvent(event);
}

void TreeView::mousePressEvent(QMouseEvent* event)
{
    react(*event, false);
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    react(*event, true);
}

void TreeView::react(const QMouseEvent& press, bool isDouble)
{
    const Qt::MouseButton button = press.button();
    const QPoint position = press.position().toPoint();
    m_pressPosition = position;
    m_dragDistancePassed = false;

    const QPointer<TreeView> self(this);
    CancelDrag();
    if (self && button == Qt::LeftButton)
        m_drag->letGo();
    if (self)
        emit MouseDown(button, position);
    if (!self || (button != Qt::LeftButton && button != Qt::RightButton))
        return;
    TreeNode* node = HitTest(position);
    if (!node)
        return;
    const bool toggles = button == Qt::LeftButton && (isDouble || isOnExpander(*node, position));
    // What closes is not what the user turns to: the selection moves only if it was inside.
    if (!toggles || !node->Expanded())
        select(node);
    if (toggles)
        toggle(*node);
}

bool TreeView::isOnExpander(const TreeNode& node, QPoint position) const
{
    const QRect row = visualRect(m_model->indexOf(node));
    const int beside = isRightToLeft() ? position.x() - row.right() - 1 : row.left() - 1 - position.x();
    return node.m_count > 0 && beside >= 0 && beside < indentation();
}

void TreeView::mouseMoveEvent(QMouseEvent* event)
{
    QPoint position = event->position().toPoint();
    // The release may have gone to a window that came up meanwhile.
    if (!event->buttons().testFlag(Qt::LeftButton))
        m_drag->letGo();
    if (m_drag->isSpent())
        return;
    if (m_drag->isActive()) {
        if (!event->buttons().testFlag(Qt::LeftButton)) {
            CancelDrag();
            return;
        }
        m_drag->moveTo(position);
        emit DragOver(position);
        return;
    }
    if (event->buttons() != Qt::NoButton && !m_dragDistancePassed) {
        if ((position - m_pressPosition).manhattanLength() < QApplication::startDragDistance())
            return;
        m_dragDistancePassed = true;
        position = m_pressPosition;
    }
    emit MouseMove(event->buttons(), position);
}

void TreeView::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint position = event->position().toPoint();
    const bool isSpent = m_drag->isSpent() && event->button() == Qt::LeftButton;
    if (event->button() == Qt::LeftButton)
        m_drag->letGo();
    if (isSpent)
        return;
    if (!m_drag->isActive()) {
        emit MouseUp(event->button(), position);
    } else if (event->button() == Qt::LeftButton && viewport()->rect().contains(position)) {
        const QPointer<TreeView> self(this);
        m_drag->end();
        emit DragDrop(position);
        if (self)
            setDropHighlight(nullptr);
    } else {
        CancelDrag();
    }
}

void TreeView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    // The platforms that send this event send the key behind it.
    m_menuKeySeen = true;
    if (!m_drag->isActive())
        raiseContextKey();
}

void TreeView::raiseContextKey()
{
    if (!m_selected)
        return;
    const QRect row = visualRect(m_model->indexOf(*m_selected)).intersected(viewport()->rect());
    emit ContextKey(m_selected, viewport()->mapToGlobal(isRightToLeft() ? row.bottomRight() : row.bottomLeft()));
}

void TreeView::keyPressEvent(QKeyEvent* event)
{
    // What is dragged, and where it may go, is to stay as it was judged.
    if (m_drag->isActive() && event->key() != Qt::Key_Escape) {
        event->accept();
        return;
    }
    const bool isTyping = m_sinceTyping.isValid() && m_sinceTyping.elapsed() < QApplication::keyboardInputInterval() &&
                          !event->modifiers().testFlag(Qt::KeypadModifier);
    bool isDone = true;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        break;
    case Qt::Key_Escape:
        isDone = m_drag->isActive();
        CancelDrag();
        break;
    case Qt::Key_Left:
        isDone = goSideways(!isRightToLeft());
        break;
    case Qt::Key_Right:
        isDone = goSideways(isRightToLeft());
        break;
    case Qt::Key_Plus:
    case Qt::Key_Minus:
        // Within a name that is being typed they are characters of it.
        if (isTyping)
            keyboardSearch(event->text());
        else if (m_selected)
            setNodeExpanded(*m_selected, event->key() == Qt::Key_Plus);
        break;
    case Qt::Key_Asterisk:
        break;
    case Qt::Key_Menu:
        if (!std::exchange(m_menuKeySeen, false))
            raiseContextKey();
        break;
    case Qt::Key_F10:
        isDone = event->modifiers() == Qt::ShiftModifier;
        if (isDone)
            raiseContextKey();
        break;
    default:
        isDone = false;
    }
    if (isDone)
        event->accept();
    else
        QTreeView::keyPressEvent(event);
}

/// Inwards opens a node, then goes to its first child; outwards closes it, then goes to its parent.
bool TreeView::goSideways(bool outwards)
{
    if (!m_selected)
        return false;
    const bool isOpen = m_selected->m_expanded && m_selected->m_count > 0;
    if (outwards ? isOpen : (!isOpen && m_selected->m_count > 0))
        setNodeExpanded(*m_selected, !outwards);
    else if (TreeNode* next = outwards ? m_selected->Parent() : m_selected->Child())
        setSelectedItem(next);
    return true;
}

void TreeView::keyboardSearch(const QString& search)
{
    m_sinceTyping.start();
    QTreeView::keyboardSearch(search);
}
