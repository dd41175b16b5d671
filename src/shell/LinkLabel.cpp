#include "LinkLabel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace
{

/// Room for the focus frame around the text, in device-independent pixels.
constexpr int frame = 2;

} // namespace

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QAbstractButton(parent)
{
    setText(text);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkLabel::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(2 * frame, 2 * frame);
}

void LinkLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(underMouse() || hasFocus() || isDown());
    painter.setFont(underlined);
    painter.setPen(palette().color(isDown() ? QPalette::LinkVisited : QPalette::Link));
    painter.drawText(rect().adjusted(frame, 0, -frame, 0), Qt::AlignVCenter | Qt::AlignLeading, text());
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
