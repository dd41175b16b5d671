#pragma once

#include <QString>
#include <QStringList>

namespace nodekeys
{

/// The key of the tree's node of a type that may be dragged, by the names on its path, datasource first. Names that lie
/// below the node are left alone.
QString of(const QString& type, const QStringList& names);

} // namespace nodekeys
