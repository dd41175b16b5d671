#pragma once

#include "Recordset.h"

#include <QString>

namespace modDatabase
{

/// A value for a statement: every apostrophe doubled, a null as the empty text. Callers write the apostrophes around
/// it.
QString SQLQuote(const QString& text);
QString SQLQuote(const dao::Value& value);

/// A statement laid out for reading: blanks folded, control characters blanked, a line for each clause. Linear in the
/// length of the text.
QString FormatSQL(const QString& text);
QString FormatSQL(const dao::Value& value);

} // namespace modDatabase
