#pragma once

#include <QAbstractButton>

/// A text that opens something when it is clicked, reached and pressed by the keyboard too. While it is pressed, or
/// marked as such by setDown(), it shows in the colour of a visited link.
class LinkLabel : public QAbstractButton
{
public:
    explicit LinkLabel(const QString& text, QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
