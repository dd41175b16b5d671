#include "PropertyEntry.h"

#include "KeyFilter.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

namespace
{

/// What an input method composed from keys passes the filter as the keys themselves do, character by character.
QString filtered(const QString& composed, EntryState entry, const modDatabase::FieldInfo& column)
{
    QString passed;
    for (const char32_t character : composed.toUcs4()) {
        const QString key = modGUI::ControlKeyPress(entry, QString::fromUcs4(&character, 1), column);
        if (key.isEmpty())
            continue;
        passed += key;
        entry.text =
            entry.text.left(entry.selectionStart) + key + entry.text.mid(entry.selectionStart + entry.selectionLength);
        entry.selectionStart += key.size();
        entry.selectionLength = 0;
    }
    return passed;
}

/// The text of a memo with the blanks in it that do not break.
QString rawText(const QPlainTextEdit& memo)
{
    QString text = memo.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
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

void PropertyEdit::cut()
{
    if (m_column)
        modGUI::cutToColumn(*this, *m_column);
}

void PropertyEdit::keyPressEvent(QKeyEvent* event)
{
    if (!m_column || !modGUI::typesCharacter(*event) || isReadOnly()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QString key = modGUI::ControlKeyPress(EntryState::of(*this), event->text(), *m_column);
    if (!key.isEmpty())
        insert(key);
    event->accept();
}

void PropertyEdit::inputMethodEvent(QInputMethodEvent* event)
{
    if (isReadOnly()) {
        event->ignore();
        return;
    }
    if (!m_column || event->commitString().isEmpty() || event->replacementLength() != 0) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent passed(event->preeditString(), event->attributes());
    passed.setCommitString(filtered(event->commitString(), EntryState::of(*this), *m_column));
    QLineEdit::inputMethodEvent(&passed);
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
    return document()->isModified() ? rawText(*this) : m_set;
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
    const QString all = rawText(*this);
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
    if (!m_column || !modGUI::typesCharacter(*event) || isReadOnly()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    const QString key = modGUI::ControlKeyPress(state(), event->text(), *m_column);
    if (!key.isEmpty())
        insertPlainText(key);
    event->accept();
}

void PropertyMemo::inputMethodEvent(QInputMethodEvent* event)
{
    if (isReadOnly()) {
        event->ignore();
        return;
    }
    if (!m_column || event->commitString().isEmpty() || event->replacementLength() != 0) {
        QPlainTextEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent passed(event->preeditString(), event->attributes());
    passed.setCommitString(filtered(event->commitString(), state(), *m_column));
    QPlainTextEdit::inputMethodEvent(&passed);
    event->accept();
}

EntryState PropertyMemo::state() const
{
    const QTextCursor cursor = textCursor();
    return {rawText(*this), cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
}
