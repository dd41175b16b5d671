#include "BandLayout.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

BandLayout::BandLayout(QWidget* parent) : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(0);
}

BandLayout::~BandLayout() = default;

void BandLayout::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
    invalidate();
}

int BandLayout::count() const
{
    return static_cast<int>(m_items.size());
}

QLayoutItem* BandLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* BandLayout::takeAt(int index)
{
    if (!itemAt(index))
        return nullptr;
    QLayoutItem* item = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    return item;
}

int BandLayout::heightForWidth(int width) const
{
    return arrange(QRect(0, 0, width, 0), false);
}

QSize BandLayout::minimumSize() const
{
    QSize size(0, 0);
    for (const auto& item : m_items) {
        if (!item->isEmpty())
            size = size.expandedTo(item->minimumSize());
    }
    return size;
}

QSize BandLayout::sizeHint() const
{
    QSize size(0, 0);
    for (const auto& item : m_items) {
        if (!item->isEmpty())
            size = QSize(size.width() + gap + item->sizeHint().width(),
                         std::max(size.height(), item->sizeHint().height()));
    }
    return size - QSize(size.isEmpty() ? 0 : gap, 0);
}

void BandLayout::setGeometry(const QRect& area)
{
    QLayout::setGeometry(area);
    arrange(area, true);
}

/// Goes through the rows and returns their height in all; moves the widgets if asked to.
int BandLayout::arrange(const QRect& area, bool apply) const
{
    const Qt::LayoutDirection direction = parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int x = area.left();
    int y = area.top();
    int rowHeight = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint().expandedTo(item->minimumSize());
        if (x > area.left() && x + size.width() > area.left() + area.width()) {
            x = area.left();
            y += rowHeight;
            rowHeight = 0;
        }
        if (apply)
            item->setGeometry(QStyle::visualRect(direction, area, QRect(QPoint(x, y), size)));
        x += size.width() + gap;
        rowHeight = std::max(rowHeight, size.height());
    }
    return y + rowHeight - area.top();
}
