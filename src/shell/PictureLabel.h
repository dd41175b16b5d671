#pragma once

#include <QLabel>

/// A picture of an image key (see Icons), painted over the whole label in the colours and at the pixel ratio of the
/// moment. It takes no part in mouse and keyboard.
class PictureLabel : public QLabel
{
public:
    /// The size is in device-independent pixels; it may be changed like that of any widget.
    PictureLabel(const QString& imageKey, QSize size, QWidget* parent);

    QSize sizeHint() const override { return m_size; }
    QSize minimumSizeHint() const override { return m_size; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_imageKey;
    QSize m_size;
};
