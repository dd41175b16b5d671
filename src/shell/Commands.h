#pragma once

#include "DragItem.h"

#include <functional>

/// Menu commands that the feature rooms bring along, by the name of their menu item.
namespace commands
{

using Command = std::function<void(const DragItem& item)>;

void add(const QString& menuItem, Command command);
/// Runs the command for an item of the tree; nothing happens where no room has brought it.
void run(const QString& menuItem, const DragItem& item);

} // namespace commands
