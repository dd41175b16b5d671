#include "ToolBar.h"

#include "Icons.h"
#include "RuntimeError.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyleOption>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace
{

constexpr int iconSide = 16;
constexpr int buttonSide = 32;
constexpr int gap = 4;

/// The style's own separator, in a layout.
class Separator : public QWidget
{
public:
    explicit Separator(QWidget* parent) : QWidget(parent) { setFixedSize(2 * gap, buttonSide); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOption option;
        option.initFrom(this);
        option.state |= QStyle::State_Horizontal;
        style()->drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, &option, &painter, this);
    }
};

} // namespace

ToolButton::ToolButton(QString key, QToolButton* widget) : m_key(std::move(key)), m_widget(widget) {}

bool ToolButton::Enabled() const
{
    return !m_widget->testAttribute(Qt::WA_ForceDisabled);
}

void ToolButton::setEnabled(bool enabled)
{
    m_widget->setEnabled(enabled);
}

bool ToolButton::Visible() const
{
    return !m_widget->isHidden();
}

void ToolButton::setVisible(bool visible)
{
    m_widget->setVisible(visible);
}

QString ToolButton::ToolTipText() const
{
    return m_widget->toolTip();
}

void ToolButton::setToolTipText(const QString& text)
{
    m_widget->setToolTip(text);
    m_widget->setAccessibleName(text.isEmpty() ? m_key : text);
}

void ToolButton::setImage(const QString& imageKey)
{
    m_widget->setIcon(Icons::icon(imageKey));
}

void ToolButton::press()
{
    m_widget->click();
}

ToolBar::ToolBar(const QString& name, QWidget* parent) : QWidget(parent)
{
    setObjectName(name);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(gap, gap, gap, gap);
    row->setSpacing(gap);
    row->setAlignment(Qt::AlignLeading | Qt::AlignVCenter);
}

ToolBar::~ToolBar() = default;

ToolButton& ToolBar::Add(const QString& key, const QString& toolTip)
{
    if (find(key))
        throw RuntimeError(ErrorNumber::KeyAlreadyThere);
    auto* widget = new QToolButton(this);
    widget->setObjectName(objectName() + QLatin1Char('_') + QString(key).replace(QLatin1Char(' '), QLatin1Char('_')));
    widget->setAutoRaise(true);
    widget->setIconSize(QSize(iconSide, iconSide));
    widget->setFixedSize(buttonSide, buttonSide);
    layout()->addWidget(widget);

    m_buttons.emplace_back(new ToolButton(key, widget));
    ToolButton* button = m_order.emplace_back(m_buttons.back().get());
    button->setToolTipText(toolTip);
    button->setImage(key);
    connect(widget, &QToolButton::clicked, this, [this, button] { emit ButtonClick(*button); });
    return *button;
}

void ToolBar::AddSeparator()
{
    layout()->addWidget(new Separator(this));
}

ToolButton& ToolBar::Button(const QString& key) const
{
    if (ToolButton* button = find(key))
        return *button;
    throw RuntimeError(ErrorNumber::FailedCall);
}

ToolButton* ToolBar::find(const QString& key) const
{
    const auto found = std::find_if(m_order.begin(), m_order.end(), [&](ToolButton* b) { return b->Key() == key; });
    return found == m_order.end() ? nullptr : *found;
}
