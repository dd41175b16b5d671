#pragma once

#include "DragItem.h"

#include <QString>

class PaneForm;
class QMenu;
class QPoint;
class ToolBar;

/// What the main window and all panes share.
namespace modGUI
{

/// Brings the node of a key into view and selects it, reading levels that the tree does not know yet. Never reports.
void ExpandToNode(const QString& key);

/// The context menu of an item with its entries shown or hidden for it; null where the item has none.
QMenu* ContextMenu(const DragItem& item);
/// Pops the context menu of an item up, if it has one, and returns when it has gone.
void ShowContextMenu(const DragItem& item, const QPoint& globalPosition);

/// Gives every button of a tool bar with a key the image of that key.
void PaneToolbarSetup(ToolBar& toolBar);

/// What the buttons of an item pane's tool bar can do: 0 while a row is shown, 1 while one is being added, edited or
/// deleted, which `tag` names as the tag of "OK". A bar may lack any of the buttons.
void SetToolbarState(ToolBar& toolBar, int state, const QString& tag = {});

/// Applies the web or the classic look to a pane that has just been built, and shows hidden controls under the debug
/// word.
void PaneFormLoad(PaneForm& form);
/// Fits title band and corner picture to the pane's size.
void PaneFormResize(PaneForm& form);

/// The message that a number lies outside of its limits.
QString OutOfRange(const QString& what, int minimum, int maximum);

} // namespace modGUI
