#include "DialogForm.h"

#include "Settings.h"
#include "Twips.h"
#include "mdiMain.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

DialogForm::DialogForm(const QString& name, QWidget* parent) : Form(name, parent)
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 16);
    rows->setSpacing(16);
    m_body = new QVBoxLayout;
    m_body->setSpacing(8);
    rows->addLayout(m_body, 1);
    m_buttons = new QHBoxLayout;
    m_buttons->setSpacing(8);
    m_buttons->addStretch(1);
    rows->addLayout(m_buttons);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { markDefault(now); });
}

void DialogForm::ask()
{
    const forms::Running running(*this);
    const QPointer<Form> alive = this;
    const QString unloads = name();
    showModal(mdiMain::find());
    if (alive && forms::loaded(unloads) == alive)
        forms::unload(unloads);
}

QPushButton* DialogForm::addButton(const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setMinimumWidth(80);
    m_buttons->addWidget(button);
    return button;
}

void DialogForm::setDefaultButton(QPushButton* button)
{
    m_default = button;
    markDefault(focusWidget());
}

/// The button that Enter would press shows it.
void DialogForm::markDefault(QWidget* focus)
{
    auto* button = focus && isAncestorOf(focus) ? qobject_cast<QPushButton*>(focus) : nullptr;
    if (!button)
        button = m_default;
    if (button == m_marked)
        return;
    if (m_marked)
        m_marked->setDefault(false);
    m_marked = button;
    if (m_marked)
        m_marked->setDefault(true);
}

void DialogForm::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && m_marked)
        m_marked->click();
    else if (event->key() == Qt::Key_Escape && m_cancel)
        m_cancel->click();
    else if (event->key() == Qt::Key_Escape)
        close();
    else
        Form::keyPressEvent(event);
}

void DialogForm::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        place();
    Form::showEvent(event);
}

QPoint DialogForm::storedPosition(const QString& section, QPoint otherwise)
{
    return {toPixels(settings::getNumber(section, QStringLiteral("Left"), toTwips(otherwise.x()))),
            toPixels(settings::getNumber(section, QStringLiteral("Top"), toTwips(otherwise.y())))};
}

void DialogForm::storePosition(const QString& section) const
{
    if (!m_placed)
        return;
    settings::save(section, QStringLiteral("Left"), toTwips(x()));
    settings::save(section, QStringLiteral("Top"), toTwips(y()));
}

void DialogForm::place()
{
    m_placed = true;
    const QWidget* owner = parentWidget() ? parentWidget()->window() : nullptr;
    const QRect around = owner && owner->isVisible() ? owner->frameGeometry() : screen()->availableGeometry();
    const QRect middle = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, frameSize(), around);
    const QPoint wanted = position(middle.topLeft());
    // A place on a screen that is no longer there would open the dialog out of sight.
    const QScreen* there = QGuiApplication::screenAt(QRect(wanted, frameSize()).center());
    const QRect available = (there ? there : screen())->availableGeometry();
    const auto within = [](int first, int last, int at) { return qBound(first, at, qMax(first, last)); };
    move(within(available.left(), available.right() - frameSize().width() + 1, wanted.x()),
         within(available.top(), available.bottom() - frameSize().height() + 1, wanted.y()));
}
