#pragma once

#include <QStringList>

/// The way to the fields of a file in the tree.
inline QStringList collection(const QString& file)
{
    return {QStringLiteral("FI"), QStringLiteral("fi=") + file, QStringLiteral("FD")};
}
