#pragma once

#include <QString>
#include <QStringList>

/// Brings what shows a collection up to date. What fails on the way has been shown, or has nothing to show.
namespace collectionview
{

/// Reads the level of a node of the tree anew, and selects it.
void readAnew(const QString& nodeKey);
/// Shows the grid of a collection again, if it is on view.
void showAnew(const QString& pane, const QStringList& keys);

} // namespace collectionview
