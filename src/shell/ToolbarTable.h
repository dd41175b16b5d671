#pragma once

#include <vector>

/// The tool bars of the main window as one table: bands, panes, tags, buttons and their tips.
namespace toolbars
{

struct Button {
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
};

/// One row a band, in the order of the bands.
const std::vector<Row>& table();

} // namespace toolbars
