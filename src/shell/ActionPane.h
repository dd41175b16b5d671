#pragma once

#include "PaneForm.h"
#include "ToolbarPane.h"

class QPushButton;
class ToolBar;

/// A pane in which something is changed and then confirmed: it has a tool bar of its own, and two buttons that press
/// "OK" and "Cancel" there and show while there is something to confirm. Enter and Escape press them too.
class ActionPane : public PaneForm, public ToolbarPane
{
protected:
    /// The name of the tool bar must be a literal.
    ActionPane(const char* name, const char* toolBar, QWidget* parent);

    ToolBar& toolBar() const;
    /// Clicks a button of the tool bar by its key.
    void press(const QString& button);

    /// Makes the buttons, to which the Tab key then comes behind what stands in the pane by now.
    void makeActions();
    QPushButton* cmdAction() const { return m_action; }
    QPushButton* cmdCancel() const { return m_cancel; }
    /// An empty caption leaves the one that "OK" has.
    void showActions(bool acting, const QString& caption);

    void keyPressEvent(QKeyEvent* event) override;

private:
    const char* m_toolBar;
    QPushButton* m_action = nullptr;
    QPushButton* m_cancel = nullptr;
};
