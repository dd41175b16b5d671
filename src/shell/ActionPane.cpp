#include "ActionPane.h"

#include "ToolBar.h"
#include "mdiMain.h"

#include <QKeyEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;

ActionPane::ActionPane(const char* name, const char* toolBar, QWidget* parent)
    : PaneForm(QLatin1String(name), parent), m_toolBar(toolBar)
{
}

void ActionPane::makeActions()
{
    m_action = new QPushButton(this);
    m_action->setObjectName(u"cmdAction"_s);
    connect(m_action, &QPushButton::clicked, this, [this] { press(u"OK"_s); });
    m_cancel = new QPushButton(u"Cancel"_s, this);
    m_cancel->setObjectName(u"cmdCancel"_s);
    connect(m_cancel, &QPushButton::clicked, this, [this] { press(u"Cancel"_s); });
}

ToolBar& ActionPane::toolBar() const
{
    return mdiMain::instance().toolBar(QLatin1String(m_toolBar));
}

void ActionPane::press(const QString& button)
{
    toolBar().Button(button).press();
}

void ActionPane::showActions(bool acting, const QString& caption)
{
    if (!caption.isEmpty())
        m_action->setText(caption);
    for (QPushButton* button : {m_action, m_cancel}) {
        button->setVisible(acting);
        button->setEnabled(acting);
    }
}

void ActionPane::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    if (isEnter && focused)
        focused->click();
    else if (isEnter && m_action->isVisible())
        m_action->click();
    else if (event->key() == Qt::Key_Escape && m_cancel->isVisible())
        m_cancel->click();
    else
        PaneForm::keyPressEvent(event);
}
