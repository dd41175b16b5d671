#include "PictureLabel.h"

#include "Icons.h"

#include <QPainter>

PictureLabel::PictureLabel(const QString& imageKey, QSize size, QWidget* parent)
    : QLabel(parent), m_imageKey(imageKey), m_size(size)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void PictureLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawPixmap(rect(), Icons::pixmap(m_imageKey, size(), devicePixelRatioF()));
}
