#pragma once

#include "Form.h"
#include "PaneRegistry.h"
#include "ToolbarPane.h"

#include <QStringList>

#include <functional>

class RecordingPanes;

/// A pane that writes down what is asked of it.
class RecordingPane : public Form, public ToolbarPane
{
public:
    RecordingPane(const QString& name, RecordingPanes& owner);
    ~RecordingPane() override;

    void run(const char* operation, const QStringList& keys);
    void tbr_ButtonClick(ToolButton& button) override;

protected:
    void unloading() override;

private:
    RecordingPanes& m_owner;
};

/// Stands in for all panes under their real names, with as many key parts as each operation takes, for as long as it
/// lives. The shell's own panes are back afterwards, the others gone.
class RecordingPanes
{
public:
    RecordingPanes();
    ~RecordingPanes();
    RecordingPanes(const RecordingPanes&) = delete;
    RecordingPanes& operator=(const RecordingPanes&) = delete;

    /// What was asked, in order, as "frmFile.Edit(Ledger, PAYROLL)"; a tool bar's click as "frmFile <Undo>".
    QStringList calls;
    /// The panes that were loaded and unloaded, as "load frmFile".
    QStringList lives;
    /// Runs within each operation, after it has been written down.
    std::function<void(RecordingPane& pane, const QString& call)> meanwhile;
    /// Runs while a pane is being unloaded.
    std::function<void(const QString& pane)> atUnload;

    /// The calls since the last asking.
    QStringList take();
};
