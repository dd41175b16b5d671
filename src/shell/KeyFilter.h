#pragma once

#include "modDatabase.h"

#include <QString>

/// What an entry control holds at the moment at which a key arrives.
struct EntryState {
    QString text;
    qsizetype selectionStart = 0;
    qsizetype selectionLength = 0;
};

namespace modGUI
{

/// The character filter of an entry for a catalog column: the text that a key puts into the entry, or nothing for a key
/// that is dropped. Names are upper case with "_" for blanks; a key below 32 passes. It sees keys alone: what is pasted
/// or dropped is only cut (see cutToColumn).
QString ControlKeyPress(const EntryState& entry, const QString& key, const modDatabase::FieldInfo& field);

/// The text cut back to the size of its column. Only text and char columns cut; no character is cut in two.
QString cutToColumn(const QString& text, const modDatabase::FieldInfo& field);

} // namespace modGUI
