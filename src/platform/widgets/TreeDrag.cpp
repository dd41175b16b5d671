#include "TreeDrag.h"

#include "Icons.h"
#include "TreeView.h"

#include <QCursor>
#include <QPixmap>
#include <QScrollBar>
#include <QTimerEvent>

namespace
{

constexpr int pictureSide = 24;
constexpr int edge = 24;
constexpr int scrollStep = 12;
constexpr int scrollInterval = 40;

} // namespace

TreeDrag::TreeDrag(TreeView& view) : m_view(view) {}

TreeDrag::~TreeDrag() = default;

void TreeDrag::begin()
{
    m_isActive = true;
    m_isHeld = true;
    showPicture();
}

void TreeDrag::end()
{
    m_isActive = false;
    m_scrolling.stop();
    m_view.viewport()->unsetCursor();
}

void TreeDrag::setPicture(const QString& image)
{
    if (m_picture == image)
        return;
    m_picture = image;
    if (m_isActive)
        showPicture();
}

void TreeDrag::showPicture()
{
    const QPixmap picture =
        Icons::pixmap(m_picture, QSize(pictureSide, pictureSide), m_view.viewport()->devicePixelRatioF());
    if (picture.isNull())
        m_view.viewport()->unsetCursor();
    else
        m_view.viewport()->setCursor(QCursor(picture));
}

void TreeDrag::moveTo(QPoint position)
{
    m_position = position;
    if (stepAt(position) == 0)
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start(scrollInterval, this);
}

int TreeDrag::stepAt(QPoint position) const
{
    if (position.y() < edge)
        return -scrollStep;
    return position.y() >= m_view.viewport()->height() - edge ? scrollStep : 0;
}

void TreeDrag::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_scrolling.timerId())
        return;
    QScrollBar* bar = m_view.verticalScrollBar();
    const int before = bar->value();
    bar->setValue(before + stepAt(m_position));
    if (bar->value() == before)
        m_scrolling.stop();
    else
        emit m_view.DragOver(m_position);
}
