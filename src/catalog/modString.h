#pragma once

#include <QString>

namespace modString {

/// The word for a count of 1; else a word that begins with "y" gets "ies" for its last letter, any other an "s".
QString Pluralise(const QString& word, long count);

/// The text up to the first NUL.
QString StripNull(const QString& text);

/// The value behind `key` in a text of `;KEY=value;` items; empty where the key does not occur.
QString ExtractAttr(const QString& key, const QString& attributes);

} // namespace modString
