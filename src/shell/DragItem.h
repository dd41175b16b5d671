#pragma once

#include <QString>
#include <QStringList>

/// A node of the tree as commands and drags see it: what it is and the names on its path, datasource first.
struct DragItem {
    /// The key of the node's payload; empty for no node.
    QString Node;
    /// The type of the node; empty if there is none.
    QString NodeType;
    QStringList Keys;
    /// The image key of the picture that a drag of the node shows; empty for nodes that don't drag.
    QString DragIcon;
};
