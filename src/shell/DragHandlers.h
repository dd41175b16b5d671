#pragma once

#include <functional>

struct DragItem;
class TreeView;

/// What a drag within the explorer's tree does. The main window knows where the drag is; a feature room brings along
/// what comes of it.
namespace drags
{

struct Handlers {
    /// The pointer is over another place: judges the drag. The target is empty over no node.
    std::function<void(TreeView* tree, const DragItem& source, const DragItem& target)> over;
    /// The item has been dropped. Whether something came of it.
    std::function<bool(TreeView* tree, const DragItem& source, const DragItem& target)> drop;
};

/// Without handlers nothing drags.
void setHandlers(Handlers handlers);
const Handlers& handlers();

} // namespace drags
