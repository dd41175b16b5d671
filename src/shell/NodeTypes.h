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

/// The pane that shows a node of the type; empty for none.
QString pane(const QString& type);

/// The image key of the picture that a drag of a node of the type shows; empty for none.
QString dragIcon(const QString& type);

} // namespace nodetypes
