#pragma once

#include <string>
#include <vector>

/// The tool bars of the main window as one table: bands, panes, tags, buttons and their tips.
namespace toolbars
{

struct Button {
    /// Null for a separator.
    const char* key;
    /// Empty for a button without a tip of its own.
    const char* toolTip;
};

struct Row {
    const char* toolBar;
    /// The prefix of the button keys " Add", " Edit" and " Delete".
    const char* tag;
    /// The pane with which the tool bar shows; null for the one that always does.
    const char* pane;
    std::vector<Button> buttons;
    /// The name of the handler of its clicks on the call stack.
    std::string handler = {};
};

/// One row a band, in the order of the bands.
const std::vector<Row>& table();

} // namespace toolbars
