#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

/// How a failing test shows Qt's texts.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* stream)
{
    if (texts.isEmpty())
        *stream << "nothing";
    for (const QString& text : texts)
        *stream << "\n    \"" << text.toStdString() << '"';
}
