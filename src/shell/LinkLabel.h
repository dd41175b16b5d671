#pragma once

#include <QAbstractButton>

/// A text that opens something when it is clicked, reached and pressed by the keyboard too. While it is pressed, or
/// marked as such by setDown(), it shows in the colour of a visited link.
class LinkLabel : public QAbstractButton
{
public:
    explicit LinkLabel(const QString& text, QWidget* parent);

    /// Whether it shows as pressed for as long as what it opens is being opened.
    bool isMarked() const { return m_marked; }
    void setMarked(bool marked);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool m_marked = false;
};
