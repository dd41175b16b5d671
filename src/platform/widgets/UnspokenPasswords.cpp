#include "UnspokenPasswords.h"

#include <QAccessible>
#include <QLineEdit>

namespace
{

QAccessible::UpdateHandler former = nullptr;

void pass(QAccessibleEvent* event);

/// Qt hands an event to the handler, or to the platform where there is none.
void handOn(QAccessibleEvent* event)
{
    if (former) {
        former(event);
        return;
    }
    // Qt has brought its own picture of the table up to date by now, and would do so twice. AT-SPI knows no such event.
    if (event->type() == QAccessible::TableModelChanged)
        return;
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(&pass);
}

QString hidden(const QString& text)
{
    return QString(text.size(), QLatin1Char('*'));
}

/// Hands a change of a text on with other texts in it.
template <class Change, class... Texts>
void handOnMasked(QLineEdit& entry, QAccessibleEvent& event, Texts (Change::*... texts)() const)
{
    const auto& change = static_cast<const Change&>(event);
    Change masked(&entry, change.changePosition(), hidden((change.*texts)())...);
    masked.setCursorPosition(change.cursorPosition());
    handOn(&masked);
}

void pass(QAccessibleEvent* event)
{
    auto* entry = qobject_cast<QLineEdit*>(event->object());
    if (!entry || entry->echoMode() == QLineEdit::Normal)
        handOn(event);
    else if (event->type() == QAccessible::TextInserted)
        handOnMasked(*entry, *event, &QAccessibleTextInsertEvent::textInserted);
    else if (event->type() == QAccessible::TextRemoved)
        handOnMasked(*entry, *event, &QAccessibleTextRemoveEvent::textRemoved);
    else if (event->type() == QAccessible::TextUpdated)
        handOnMasked(*entry, *event, &QAccessibleTextUpdateEvent::textRemoved,
                     &QAccessibleTextUpdateEvent::textInserted);
    else
        handOn(event);
}

} // namespace

UnspokenPasswords::UnspokenPasswords()
{
    former = QAccessible::installUpdateHandler(&pass);
}

UnspokenPasswords::~UnspokenPasswords()
{
    QAccessible::installUpdateHandler(former);
    former = nullptr;
}
