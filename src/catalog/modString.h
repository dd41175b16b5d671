#pragma once

#include <QString>
#include <QStringView>

namespace modString
{

/// The word for a count of 1; else a word that begins with "y" gets "ies" for its last letter, any other an "s".
QString Pluralise(const QString& word, long count);

/// The text up to the first NUL.
QString StripNull(const QString& text);

/// The text without blanks at its ends; other white space stays.
QString Trim(const QString& text);
/// The same of a part of a text.
QStringView Trim(QStringView text);

/// The text without blanks at its ends, nor any character there whose code is below 32 or at least 129.
QString TrimAll(const QString& text);

/// The value behind `key` in a text of `;KEY=value;` items, up to the next semicolon or the end; empty where the key
/// does not occur.
/// The key is found wherever its characters stand, so semicolons and the "=" belong into it; a key without its "="
/// works too.
QString ExtractAttr(const QString& key, const QString& attributes);

} // namespace modString
