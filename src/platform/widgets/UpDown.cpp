#include "UpDown.h"

#include "Conversions.h"
#include "RuntimeError.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr int arrowWidth = 18;

/// The whole number that a text begins with; one beyond all numbers is as far away as its sign says.
double number(const QString& text)
{
    try {
        return std::trunc(conversions::Val(text));
    } catch (const RuntimeError&) {
        const double beyond = std::numeric_limits<double>::max();
        return text.trimmed().startsWith(u'-') ? -beyond : beyond;
    }
}

} // namespace

UpDown::UpDown(QLineEdit* buddy, QWidget* parent) : QWidget(parent), m_buddy(buddy)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(arrow("up", Qt::UpArrow, 1));
    column->addWidget(arrow("down", Qt::DownArrow, -1));
    setFixedSize(arrowWidth, buddy->sizeHint().height());
    buddy->installEventFilter(this);
}

void UpDown::setRange(std::int32_t minimum, std::int32_t maximum)
{
    m_minimum = minimum;
    m_maximum = maximum;
}

QToolButton* UpDown::arrow(const char* name, Qt::ArrowType type, int step)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setArrowType(type);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    button->setAccessibleName(step > 0 ? tr("One more") : tr("One less"));
    connect(button, &QToolButton::clicked, this, [this, step] { stepBy(step); });
    return button;
}

void UpDown::stepBy(int step)
{
    if (!m_buddy->isEnabled() || m_buddy->isReadOnly())
        return;
    const double wanted = number(m_buddy->text()) + step;
    m_buddy->setText(QString::number(
        static_cast<qint64>(std::clamp(wanted, static_cast<double>(m_minimum), static_cast<double>(m_maximum)))));
    m_buddy->selectAll();
}

bool UpDown::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_buddy && event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            stepBy(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
