#pragma once

#include "PaneRegistry.h"

#include <string>
#include <vector>

class mdiMain;

/// The menus of the main window as one table: the bar's three and the hidden ones that serve as context menus.
namespace menus
{

struct Item {
    /// The action's object name; items without a caption are separators.
    const char* name;
    const char* caption = nullptr;
    /// A pane command on the current item: the pane and its operation.
    const char* pane = nullptr;
    panes::Operation operation = panes::Operation::Display;
    /// A routine of the main window; items with neither are commands that a feature room brings along.
    void (mdiMain::*run)() = nullptr;
    bool checkable = false;
    /// The name of the item's handler on the call stack, where the item has no routine of its own.
    std::string handler = {};
};

struct Menu {
    const char* name;
    const char* caption;
    /// Shown in the menu bar.
    bool inBar;
    std::vector<Item> items;
};

const std::vector<Menu>& table();

} // namespace menus
