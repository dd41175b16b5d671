#include "RecordingPanes.h"

#include "BandBar.h"
#include "ShellPanes.h"

#include <utility>
#include <vector>

namespace
{

/// The panes with the number of key parts that each operation takes; -1 for an operation that a pane does not have.
struct Row {
    const char* name;
    int display;
    int addNew = -1;
    int edit = -1;
    int remove = -1;
};

const std::vector<Row> rows = {
    {"frmAbout", 0},          {"frmWelcome", 0},         {"frmOptions", 0},
    {"frmFiles", 1},          {"frmDatabases", 1},       {"frmUsers", 1},
    {"frmCSVImport", 1},      {"frmCSVExport", 1},       {"frmDSN", 1},
    {"frmFile", 2, 1, 2, 2},  {"frmFields", 2},          {"frmDatabase", 2, 1, 2, 2},
    {"frmTables", 2},         {"frmUser", 2, 1, 2, 2},   {"frmDBPRVs", 2},
    {"frmField", 3, 2, 3, 3}, {"frmTable", 3, 2, 3, 3},  {"frmColumns", 3},
    {"frmSpecialCols", 3},    {"frmDBPRV", 3, 2, 3, 3},  {"frmTableData", 3},
    {"frmTBLPRVs", 3},        {"frmColumn", 4, 3, 4, 4}, {"frmTBLPRV", 4, 3, 4, 4},
};

panes::Call call(int count, const char* operation)
{
    if (count < 0)
        return {};
    return {count, [operation](Form& form, const QStringList& keys) {
                dynamic_cast<RecordingPane&>(form).run(operation, keys);
            }};
}

} // namespace

RecordingPane::RecordingPane(const QString& name, RecordingPanes& owner) : Form(name), m_owner(owner)
{
    m_owner.lives.append("load " + name);
}

RecordingPane::~RecordingPane() = default;

void RecordingPane::run(const char* operation, const QStringList& keys)
{
    const QString call = name() + '.' + QLatin1String(operation) + '(' + keys.join(", ") + ')';
    m_owner.calls.append(call);
    if (m_owner.meanwhile)
        m_owner.meanwhile(*this, call);
}

void RecordingPane::tbr_ButtonClick(ToolButton& button)
{
    const QString call = name() + " <" + button.Key() + '>';
    m_owner.calls.append(call);
    if (m_owner.meanwhile)
        m_owner.meanwhile(*this, call);
}

void RecordingPane::unloading()
{
    m_owner.lives.append("unload " + name());
    if (const auto atUnload = m_owner.atUnload)
        atUnload(name());
}

RecordingPanes::RecordingPanes()
{
    for (const Row& row : rows) {
        const QString name = QLatin1String(row.name);
        panes::add(name, [this, name] { return new RecordingPane(name, *this); },
                   {call(row.display, "Display"), call(row.addNew, "AddNew"), call(row.edit, "Edit"),
                    call(row.remove, "Delete")});
    }
}

RecordingPanes::~RecordingPanes()
{
    for (const Row& row : rows) {
        forms::unload(QLatin1String(row.name));
        panes::remove(QLatin1String(row.name));
    }
    registerShellPanes();
}

QStringList RecordingPanes::take()
{
    return std::exchange(calls, {});
}
