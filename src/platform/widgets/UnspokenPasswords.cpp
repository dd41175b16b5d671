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

void pass(QAccessibleEvent* event)
{
    auto* entry = qobject_cast<QLineEdit*>(event->object());
    if (!entry || entry->echoMode() == QLineEdit::Normal) {
        handOn(event);
    } else if (event->type() == QAccessible::TextInserted) {
        const auto& change = static_cast<const QAccessibleTextInsertEvent&>(*event);
        QAccessibleTextInsertEvent masked(entry, change.changePosition(), hidden(change.textInserted()));
        masked.setCursorPosition(change.cursorPosition());
        handOn(&masked);
    } else if (event->type() == QAccessible::TextRemoved) {
        const auto& change = static_cast<const QAccessibleTextRemoveEvent&>(*event);
        QAccessibleTextRemoveEvent masked(entry, change.changePosition(), hidden(change.textRemoved()));
        masked.setCursorPosition(change.cursorPosition());
        handOn(&masked);
    } else if (event->type() == QAccessible::TextUpdated) {
        const auto& change = static_cast<const QAccessibleTextUpdateEvent&>(*event);
        QAccessibleTextUpdateEvent masked(entry, change.changePosition(), hidden(change.textRemoved()),
                                          hidden(change.textInserted()));
        masked.setCursorPosition(change.cursorPosition());
        handOn(&masked);
    } else {
        handOn(event);
    }
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
