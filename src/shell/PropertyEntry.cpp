#include "PropertyEntry.h"

#include "KeyFilter.h"

#include <QKeyEvent>

namespace
{

/// Whether a key puts a character into an entry.
bool types(const QKeyEvent& event)
{
    const QString key = event.text();
    const bool isShortcut =
        event.modifiers().testFlag(Qt::ControlModifier) != event.modifiers().testFlag(Qt::AltModifier);
    return !key.isEmpty() && key.at(0) >= u' ' && key.at(0) != QChar(127) && !isShortcut;
}

} // namespace

PropertyEdit::PropertyEdit(QWidget* parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, &PropertyEdit::cut);
}

void PropertyEdit::setColumn(const modDatabase::FieldInfo& column)
{
    m_column = column;
}

void PropertyEdit::cut(const QString& text)
{
    if (!m_column)
        return;
    const QString fitting = modGUI::cutToColumn(text, *m_column);
    if (fitting.size() == text.size())
        return;
    const int caret = cursorPosition();
    setText(fitting);
    setCursorPosition(caret);
}

void PropertyEdit::keyPressEvent(QKeyEvent* event)
{
    if (!m_column || !types(*event) || isReadOnly()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const EntryState entry{text(), hasSelectedText() ? selectionStart() : cursorPosition(), selectedText().size()};
    const QString key = modGUI::ControlKeyPress(entry, event->text(), *m_column);
    if (!key.isEmpty())
        insert(key);
    event->accept();
}

PropertyMemo::PropertyMemo(QWidget* parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, &PropertyMemo::cut);
}

void PropertyMemo::setColumn(const modDatabase::FieldInfo& column)
{
    m_column = column;
}

QString PropertyMemo::text() const
{
    return document()->isModified() ? toPlainText() : m_set;
}

void PropertyMemo::setText(const QString& text)
{
    if (text == this->text())
        return;
    m_set = text;
    setPlainText(text);
}

void PropertyMemo::cut()
{
    if (!m_column || !document()->isModified())
        return;
    const QString all = toPlainText();
    const QString fitting = modGUI::cutToColumn(all, *m_column);
    if (fitting.size() == all.size())
        return;
    QTextCursor surplus(document());
    surplus.setPosition(static_cast<int>(fitting.size()));
    surplus.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    surplus.removeSelectedText();
}

void PropertyMemo::keyPressEvent(QKeyEvent* event)
{
    if (!m_column || !types(*event) || isReadOnly()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    const QTextCursor cursor = textCursor();
    const EntryState entry{toPlainText(), cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
    const QString key = modGUI::ControlKeyPress(entry, event->text(), *m_column);
    if (!key.isEmpty())
        insertPlainText(key);
    event->accept();
}
