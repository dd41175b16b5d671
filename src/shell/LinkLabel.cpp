#include "LinkLabel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QAbstractButton(parent)
{
    setText(text);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LinkLabel::setMarked(bool marked)
{
    m_marked = marked;
    update();
}

QSize LinkLabel::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, text());
}

void LinkLabel::paintEvent(QPaintEvent*)
{
    const bool pressed = isDown() || m_marked;
    QPainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(underMouse() || hasFocus() || pressed);
    painter.setFont(underlined);
    painter.setPen(palette().color(pressed ? QPalette::LinkVisited : QPalette::Link));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeading, text());
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void LinkLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}
