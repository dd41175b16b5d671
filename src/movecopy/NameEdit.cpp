#include "NameEdit.h"

#include "KeyFilter.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

namespace
{

/// The characters of a typed text that a name may have.
QString kept(const QString& typed)
{
    QString name;
    for (const QChar character : typed)
        name += modGUI::nameCharacter(character);
    return name;
}

} // namespace

NameEdit::NameEdit(QWidget* parent) : QLineEdit(parent) {}

void NameEdit::keyPressEvent(QKeyEvent* event)
{
    if (!modGUI::typesCharacter(*event)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QString typed = kept(event->text());
    if (!typed.isEmpty())
        insert(typed);
    event->accept();
}

void NameEdit::inputMethodEvent(QInputMethodEvent* event)
{
    QInputMethodEvent passed(event->preeditString(), event->attributes());
    passed.setCommitString(kept(event->commitString()), event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(&passed);
    event->accept();
}
