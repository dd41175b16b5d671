#pragma once

class ToolButton;

/// A pane with a tool bar of its own: the main window hands it every button that is clicked there.
class ToolbarPane
{
public:
    virtual ~ToolbarPane() = default;
    /// Acts by the button's key; an unknown key does nothing.
    virtual void tbr_ButtonClick(ToolButton& button) = 0;
};
