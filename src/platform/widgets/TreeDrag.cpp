#include "TreeDrag.h"

#include "Icons.h"
#include "TreeView.h"

#include <QCursor>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QTimerEvent>
#include <QtMath>

namespace
{

constexpr int pictureSide = 24;
constexpr int edge = 24;
constexpr int scrollStep = 12;
constexpr int scrollInterval = 40;

/// The pointer of a drag: an arrow that tells the place, and behind it the picture on a plate of its own, so that
/// neither the name under the pointer nor the colour of its row gets in the way.
QPixmap pointerWith(const QPixmap& picture, const QPalette& palette)
{
    constexpr QRectF plate(11.5, 11.5, pictureSide + 6, pictureSide + 6);
    const qreal ratio = picture.devicePixelRatio();
    const int side = qCeil(plate.right()) + 1;
    QPixmap pointer(QSize(side, side) * ratio);
    pointer.setDevicePixelRatio(ratio);
    pointer.fill(Qt::transparent);

    QPainter painter(&pointer);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor border = palette.color(QPalette::Text);
    border.setAlpha(96);
    painter.setPen(border);
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawRoundedRect(plate, 4, 4);
    painter.drawPixmap(plate.center() - QPointF(pictureSide, pictureSide) / 2, picture);
    // The arrow of any desktop, seen on light and dark.
    painter.setPen(Qt::black);
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygonF({{0.5, 0.5}, {0.5, 16.5}, {4.3, 13.1}, {6.8, 18.7}, {9.4, 17.5}, {7, 12.1}, {12, 11.7}, {0.5, 0.5}}));
    return pointer;
}

} // namespace

TreeDrag::TreeDrag(TreeView& view) : m_view(view) {}

TreeDrag::~TreeDrag() = default;

void TreeDrag::begin(QPoint position)
{
    m_position = position;
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
        m_view.viewport()->setCursor(QCursor(pointerWith(picture, m_view.palette()), 0, 0));
}

void TreeDrag::moveTo(QPoint position)
{
    m_position = position;
    if (stepAt(position) == 0)
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start(scrollInterval, this);
}

void TreeDrag::reportPlace()
{
    if (m_isActive)
        emit m_view.DragOver(m_position);
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
}
