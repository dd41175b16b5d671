#pragma once

#include <QWidget>

#include <cstdint>

class QLineEdit;
class QToolButton;

/// A pair of small arrows beside an entry that counts its number up and down within limits. The entry's own up and down
/// keys do the same. What is typed is not held to the limits: that is the owner's check.
class UpDown : public QWidget
{
    Q_OBJECT

public:
    explicit UpDown(QLineEdit* buddy, QWidget* parent = nullptr);

    std::int32_t Min() const { return m_minimum; }
    std::int32_t Max() const { return m_maximum; }
    void setRange(std::int32_t minimum, std::int32_t maximum);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QToolButton* arrow(const char* name, Qt::ArrowType type, int step);
    void stepBy(int step);

    QLineEdit* m_buddy;
    std::int32_t m_minimum = 0;
    std::int32_t m_maximum = 0;
};
