#pragma once

#include <QByteArray>
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
    for (const QString& text : texts)
        *stream << "\n    \"" << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* stream)
{
    *stream << '"' << bytes.toStdString() << '"';
}
