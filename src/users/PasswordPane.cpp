#include "PasswordPane.h"

#include "Boxes.h"
#include "modBoundControls.h"

#include <QFocusEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

PasswordPane::PasswordPane(const Kind& kind, std::vector<Property> properties, const QString& passwordColumn,
                           QWidget* parent)
    : ItemPane(kind, std::move(properties), parent), m_column(passwordColumn)
{
    passwordBox().installEventFilter(this);
}

QLineEdit& PasswordPane::passwordBox() const
{
    return static_cast<QLineEdit&>(sheet().entry(m_column));
}

QLineEdit& PasswordPane::txtConfirm() const
{
    return static_cast<QLineEdit&>(sheet().entry(u"txtConfirm"_s));
}

void PasswordPane::fill(const dao::Recordset& row)
{
    Controls shown = sheet().controls();
    std::erase_if(shown, [this](const Control& control) { return control.Tag == m_column; });
    modBoundControls::PopulateFields(shown, u"txtProperty"_s, row);
}

/// Both boxes look filled, whatever is stored.
void PasswordPane::displayed()
{
    const QString filler(qMax(columnSize(m_column) - 1, 0), ' '_L1);
    passwordBox().setText(filler);
    txtConfirm().setText(filler);
    txtConfirm().end(false);
}

void PasswordPane::adding()
{
    txtConfirm().clear();
}

void PasswordPane::enableEntries(bool enabled)
{
    ItemPane::enableEntries(enabled);
    txtConfirm().setEnabled(enabled);
}

/// What a new row begins with is no entry to be undone.
void PasswordPane::undo(State state)
{
    ItemPane::undo(state);
    if (state == State::Add)
        adding();
}

bool PasswordPane::wantsToEnterPassword()
{
    const bool wanted = boxes::ask(u"The password will be re-set to blank unless you specify a new one.\n"
                                   "Do you wish to specify a new password now?"_s);
    requireLoaded();
    if (wanted)
        setFocusTo(m_column);
    else if (state() == State::Add)
        // Blanks that have been entered are no password, and not to be written as one.
        setText(m_column, {});
    return wanted;
}

bool PasswordPane::isPasswordConfirmed()
{
    if (isPasswordBlank() || text(m_column) == txtConfirm().text())
        return true;
    return refuse(u"Password and Confirmation do not match!  Please re-enter the password."_s, m_column);
}

/// A pane that gives way to another one keeps no password that was being entered.
bool PasswordPane::event(QEvent* event)
{
    if (event->type() == QEvent::HideToParent) {
        passwordBox().clear();
        txtConfirm().clear();
    }
    return ItemPane::event(event);
}

/// What is typed replaces the filler; coming back from another window or a menu goes on where the entry was.
bool PasswordPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &passwordBox() || event->type() != QEvent::FocusIn)
        return ItemPane::eventFilter(watched, event);
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        QMetaObject::invokeMethod(&passwordBox(), &QLineEdit::selectAll, Qt::QueuedConnection);
    return ItemPane::eventFilter(watched, event);
}
