#include "PasswordPane.h"

#include "Boxes.h"
#include "Privileges.h"
#include "modBoundControls.h"

#include <QFocusEvent>
#include <QLineEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

QString passwordColumnName(const std::vector<Property>& properties)
{
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [](const Property& property) { return property.kind == EntryKind::Password; });
    return QLatin1String(found->column);
}

} // namespace

PasswordPane::PasswordPane(const Kind& kind, std::vector<Property> properties, QWidget* parent)
    : ItemPane(kind, std::move(properties), parent), m_column(passwordColumnName(sheet().properties()))
{
    passwordBox().installEventFilter(this);
    txtConfirm().installEventFilter(this);
}

QLineEdit& PasswordPane::passwordBox() const
{
    return static_cast<QLineEdit&>(sheet().entry(m_column));
}

QLineEdit& PasswordPane::txtConfirm() const
{
    return static_cast<QLineEdit&>(sheet().entry(u"txtConfirm"_s));
}

QString PasswordPane::passwordAssignment() const
{
    return isPasswordBlank() ? QString() : privileges::passwordAssignment(m_column, quoted(m_column));
}

void PasswordPane::fill(const dao::Recordset& row)
{
    Controls shown = sheet().controls();
    std::erase_if(shown, [this](const Control& control) { return control.Tag == m_column; });
    modBoundControls::PopulateFields(shown, u"txtProperty"_s, row);
}

void PasswordPane::blank()
{
    ItemPane::blank();
    txtConfirm().setText({});
}

/// Both boxes look filled, whatever is stored.
void PasswordPane::displayed()
{
    const QString filler(qBound(0, columnSize(m_column) - 1, passwordBox().maxLength()), ' '_L1);
    passwordBox().setText(filler);
    txtConfirm().setText(filler);
    txtConfirm().end(false);
}

void PasswordPane::enableEntries(bool enabled)
{
    ItemPane::enableEntries(enabled);
    txtConfirm().setEnabled(enabled);
}

bool PasswordPane::wantsToEnterPassword()
{
    const bool wanted = boxes::ask(u"The password will be re-set to blank unless you specify a new one.\n"
                                   "Do you wish to specify a new password now?"_s);
    requireLoaded();
    if (wanted)
        selectPassword();
    else if (state() == State::Add)
        // Blanks that have been entered are no password, and not to be written as one.
        setText(m_column, {});
    return wanted;
}

bool PasswordPane::isPasswordConfirmed()
{
    if (isPasswordBlank() || text(m_column) == txtConfirm().text())
        return true;
    refuse(u"Password and Confirmation do not match!  Please re-enter the password."_s, m_column);
    requireLoaded();
    selectPassword();
    return false;
}

/// The focus selects the text, but does not come anew to a box that had it behind a message.
void PasswordPane::selectPassword()
{
    setFocusTo(m_column);
    passwordBox().selectAll();
}

/// A pane that gives way to another one keeps no password that was being entered.
bool PasswordPane::event(QEvent* event)
{
    if (event->type() == QEvent::HideToParent) {
        // Undo does not bring back what was there before a text is set.
        passwordBox().setText({});
        txtConfirm().setText({});
    }
    return ItemPane::event(event);
}

/// What is typed replaces the filler; coming back from another window or a menu goes on where the entry was.
bool PasswordPane::eventFilter(QObject* watched, QEvent* event)
{
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (!box || event->type() != QEvent::FocusIn)
        return ItemPane::eventFilter(watched, event);
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool comesBack =
        reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
    if (!comesBack)
        QMetaObject::invokeMethod(box, &QLineEdit::selectAll, Qt::QueuedConnection);
    return ItemPane::eventFilter(watched, event);
}
