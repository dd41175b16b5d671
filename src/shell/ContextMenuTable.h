#pragma once

#include "DragItem.h"

#include <QString>

#include <vector>

/// Which context menu each type of node has and what it shows there.
namespace contextmenus
{

/// A menu and the entries whose visibility one use of it sets; entries that are not named stay as they were.
struct Use {
    QString menu;
    std::vector<QString> shown;
    std::vector<QString> hidden;
};

/// The use of a menu for an item, which a datasource answers by whether it is connected; an empty menu name where none
/// pops up.
Use use(const DragItem& item, bool connected);

} // namespace contextmenus
