#pragma once

#include <QString>

/// The types of tree nodes: upper case for a collection, lower case for an item.
namespace nodetypes
{

inline bool isItem(const QString& type)
{
    return !type.isEmpty() && type.at(0).isLower();
}

inline bool isDatasource(const QString& type)
{
    return type == QLatin1String("DSN") || type == QLatin1String("FDSN");
}

/// The image keys of a datasource: unconnected and connected.
inline const QString ghostImage = QStringLiteral("DSN Ghost");
inline const QString connectedImage = QStringLiteral("Datasource");

/// The key of a datasource's node.
inline QString datasourceKey(const QString& datasource)
{
    return QLatin1String("DSN=") + datasource + QLatin1Char(':');
}

/// The pane that shows a node of the type; empty for none.
QString pane(const QString& type);

/// The image key of the picture that a drag of a node of the type shows; empty for none.
QString dragIcon(const QString& type);

} // namespace nodetypes
