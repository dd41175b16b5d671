#pragma once

#include "modDatabase.h"

#include <QString>

class QKeyEvent;
class QLineEdit;

/// What an entry control holds at the moment at which a key arrives.
struct EntryState {
    QString text;
    qsizetype selectionStart = 0;
    qsizetype selectionLength = 0;

    static EntryState of(const QLineEdit& entry);
};

namespace modGUI
{

/// The character filter of an entry for a catalog column: the text that a key puts into the entry, or nothing for a key
/// that is dropped. Names are upper case with "_" for blanks; a key below 32 passes. It sees keys alone: what is pasted
/// or dropped is only cut (see cutToColumn).
QString ControlKeyPress(const EntryState& entry, const QString& key, const modDatabase::FieldInfo& field);

/// The upper-case character that a key puts into a name: a letter, a digit, "_" or "-", of the seven-bit set. Nothing
/// for any other key.
QString nameCharacter(const QString& key);

/// The text cut back to the size of its column. Only text and char columns cut; no character is cut in two.
QString cutToColumn(const QString& text, const modDatabase::FieldInfo& field);
/// The same to an entry's text; the caret stays.
void cutToColumn(QLineEdit& entry, const modDatabase::FieldInfo& field);

/// Whether a key puts a character into an entry: Ctrl and Alt alone make commands of keys, both together a third
/// character.
bool typesCharacter(const QKeyEvent& key);

} // namespace modGUI
