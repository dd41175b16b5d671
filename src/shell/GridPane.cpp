#include "GridPane.h"

#include "Boxes.h"
#include "CConnections.h"
#include "CMouseSleeper.h"
#include "CellGrid.h"
#include "Conversions.h"
#include "Events.h"
#include "Passwords.h"
#include "Recordset.h"
#include "Routine.h"
#include "RoutineNames.h"
#include "ToolBar.h"
#include "mdiMain.h"
#include "modGUI.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

const QStringList noYes{u"No"_s, u"Yes"_s};

} // namespace

GridColumn flagColumn(const QString& name, bool newRow)
{
    return {.name = name,
            .editor = CellEditor::Combo,
            .items = noYes,
            .newRow = noYes.at(newRow ? 1 : 0),
            .shown = [](const QString& stored) { return noYes.at(conversions::Val(stored) == 1 ? 1 : 0); }};
}

GridPane::GridPane(const Kind& kind, std::vector<GridColumn> columns, QWidget* parent)
    : PaneForm(QLatin1String(kind.form), parent), m_kind(kind), m_columns(std::move(columns)),
      m_grid(new CellGrid(u"grd"_s, this))
{
    if (m_kind.newRowMark)
        m_grid->setNewRowMark(QLatin1String(m_kind.newRowMark));
    body()->addWidget(m_grid, 1);
    buildEditors();
    connect(m_grid, &CellGrid::RowColChange, this, &GridPane::LeaveCell);
    connect(m_grid, &CellGrid::GotFocus, this, &GridPane::LeaveCell);
    connect(m_grid, &CellGrid::DblClick, this, &GridPane::EnterCell);
    connect(m_grid, &CellGrid::ClickBeside, this, [this] { leave(Leave::Row); });
    connect(m_grid, &CellGrid::KeyPress, this, [this](QKeyEvent* event) { grd_KeyPress(*event); });

    Routine routine(this->routine("Form_Load"));
    routine.run([&] { modGUI::PaneFormLoad(*this); });
}

GridPane::~GridPane() = default;

panes::Operations GridPane::operations(int keyParts)
{
    panes::Operations all;
    all.Display = {keyParts, [](Form& form, const QStringList& keys) { static_cast<GridPane&>(form).Display(keys); }};
    return all;
}

const char* GridPane::routine(const char* operation) const
{
    return routineName(m_kind.form, operation);
}

dao::Database& GridPane::db() const
{
    return *m_connection->db();
}

// Commands -----------------------------------------------------------------------------------------------------------

void GridPane::Display(const QStringList& keys)
{
    Routine routine(this->routine("Display"));
    routine.run([&] {
        const CMouseSleeper sleeper;
        closeEditor();
        m_typed.clear();
        m_readOnly = true;
        m_row = m_column = -1;
        m_rowChanged = false;
        m_connection = CConnections::instance().Item(keys.front());
        if (!m_connection)
            return;
        m_keys = keys;
        m_grid->Clear();
        lblTitle()->setText(title());
        m_grid->setAccessibleName(title());
        resetOwnerTip();
        populateLists();
        if (m_fields.isEmpty())
            m_fields = modDatabase::FetchFieldInfo(db(), QLatin1String(m_kind.table));
        // Without them no cell could be edited.
        if (m_fields.isEmpty())
            return;
        std::vector<modGrid::ShownForm> forms;
        for (const GridColumn& column : m_columns)
            forms.push_back(column.shown);
        modGrid::PopulateGrid(*m_grid, db(), selectStatement(), forms);
        if (m_grid->Cols() == 0)
            return;
        m_readOnly = isReadOnly();
        if (!m_readOnly)
            addBlankRow();
        sizeColumns();
        m_grid->select(0, 0);
    });
}

void GridPane::resetOwnerTip()
{
    if (const auto above = owner())
        mdiMain::instance().toolBar(QLatin1String(m_kind.toolBar)).Button(u"Up1"_s).setToolTipText(above->toolTip);
}

void GridPane::sizeColumns()
{
    constexpr int button = 30;
    for (int i = 0; i < m_grid->Cols(); ++i) {
        const GridColumn& column = m_columns[static_cast<std::size_t>(i)];
        m_grid->setRoom(i, column.items, column.editor == CellEditor::Text ? 0 : button);
    }
    m_grid->sizeColumns();
}

void GridPane::addBlankRow()
{
    QStringList cells;
    for (const GridColumn& column : m_columns)
        cells.append(newRowValue(column));
    m_grid->AddItem(cells);
}

void GridPane::tbr_ButtonClick(ToolButton& button)
{
    const forms::Running running(*this);
    Routine routine(this->routine("tbr_ButtonClick"));
    routine.run([&] {
        if (m_keys.isEmpty())
            return;
        const auto above = owner();
        if (button.Key() != "Up1"_L1 || !above)
            return;
        mdiMain& window = mdiMain::instance();
        window.PaneDisplay(above->pane, above->keys);
        events::yield();
        TreeView& tree = window.tvwExplorer();
        if (TreeNode* node = tree.Nodes().find(above->node))
            tree.setSelectedItem(node);
        tree.setFocus();
    });
}

// The row that is being edited ---------------------------------------------------------------------------------------

int GridPane::columnOf(const QString& name) const
{
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].name == name)
            return static_cast<int>(i);
    throw RuntimeError(ErrorNumber::ItemNotFound);
}

QString GridPane::text(const QString& column) const
{
    return m_grid->TextMatrix(m_row, columnOf(column));
}

const QString& GridPane::loaded(const QString& column) const
{
    return m_loaded.at(static_cast<std::size_t>(columnOf(column)));
}

std::optional<QString> GridPane::typed(const QString& column) const
{
    const auto found = m_typed.constFind(column);
    return found == m_typed.cend() ? std::nullopt : std::optional(*found);
}

void GridPane::setText(const QString& column, const QString& text)
{
    if (text == this->text(column))
        return;
    m_grid->setTextMatrix(m_row, columnOf(column), text);
    m_rowChanged = true;
}

void GridPane::setItems(const QString& column, const QStringList& items)
{
    m_columns[static_cast<std::size_t>(columnOf(column))].items = items;
}

bool GridPane::isNewRow() const
{
    return !m_readOnly && m_row == m_grid->Rows() - 1;
}

bool GridPane::keyChanged() const
{
    return std::any_of(m_columns.begin(), m_columns.end(), [this](const GridColumn& column) {
        return column.isKey && text(column.name) != loaded(column.name);
    });
}

/// A new row in which everything stands as at first again has nothing to write.
bool GridPane::isRowChanged() const
{
    if (!m_rowChanged || !isNewRow() || !m_typed.isEmpty())
        return m_rowChanged;
    return std::any_of(m_columns.begin(), m_columns.end(),
                       [this](const GridColumn& column) { return text(column.name) != loaded(column.name); });
}

void GridPane::enterRow(int row)
{
    m_row = row;
    remember();
}

void GridPane::remember()
{
    m_loaded.clear();
    for (const GridColumn& column : m_columns)
        m_loaded.push_back(text(column.name));
    m_typed.clear();
    m_rowChanged = false;
    m_removed = false;
}

/// When another pane comes up, a cell that is being edited is dropped, and what has been typed into masked cells is not
/// held where nobody sees it.
bool GridPane::event(QEvent* event)
{
    if (event->type() == QEvent::HideToParent) {
        closeEditor();
        m_typed.clear();
    }
    return PaneForm::event(event);
}

void GridPane::takeFocus()
{
    m_grid->setFocus();
}

// Validation ---------------------------------------------------------------------------------------------------------

bool GridPane::isWithin(const QString& column, double minimum, double maximum) const
{
    const QString entered = text(column);
    if (!conversions::IsNumeric(entered))
        return false;
    try {
        const double number = conversions::Val(entered);
        return number >= minimum && number <= maximum;
    } catch (const RuntimeError&) {
        // Beyond what a double holds.
        return false;
    }
}

bool GridPane::finds(const QString& statement) const
{
    return !db().OpenRecordset(statement)->Eof();
}

QStringList GridPane::firstColumn(const QString& statement) const
{
    QStringList values;
    for (const auto rows = db().OpenRecordset(statement); !rows->Eof(); rows->MoveNext())
        values.append(rows->View(0).toString());
    return values;
}

QString GridPane::refuse(const QString& message, const QString& column)
{
    boxes::inform(message);
    requireLoaded();
    return column;
}

bool GridPane::ToBoolean(const QString& text)
{
    const QString upper = text.toUpper();
    return upper == "YES"_L1 || upper == "TRUE"_L1 || upper == "ON"_L1;
}

int GridPane::ToSearchable(const QString& text)
{
    static constexpr std::array names{"Unsearchable"_L1, "LIKE only"_L1, "All except LIKE"_L1, "Searchable"_L1};
    const auto* const found = std::find(names.begin(), names.end(), text);
    return found == names.end() ? 0 : static_cast<int>(found - names.begin());
}

// Leaving ------------------------------------------------------------------------------------------------------------

void GridPane::LeaveCell()
{
    leave(Leave::Cell);
}

bool GridPane::leave(Leave what)
{
    if (m_leaving)
        return false;
    const forms::Running running(*this);
    bool written = false;
    Routine routine(this->routine("LeaveCell"));
    const bool ended = routine.run([&] {
        {
            const QScopedValueRollback leaving(m_leaving, true);
            takeCell();
            if (what == Leave::Row || m_grid->Row() != m_row)
                written = leaveRow();
        }
        if (written)
            follow();
    });
    // A row that could not be written waits for another try.
    if (!ended && m_rowChanged && !isUnloaded()) {
        const QScopedValueRollback leaving(m_leaving, true);
        m_grid->select(m_row, m_column);
    }
    return written;
}

void GridPane::takeCell()
{
    if (!m_editor)
        return;
    const QString entered = editorText();
    const QString start = m_editorStart;
    closeEditor();
    const QString name = column().name;
    if (entered == start) {
        // What was chosen again decides again upon the rest of the row.
        if (std::exchange(m_chosen, false) && !entered.isEmpty())
            cellChanged(name);
        return;
    }
    if (!column().isMasked) {
        m_grid->setTextMatrix(m_row, m_column, entered);
    } else if (entered.isEmpty()) {
        m_typed.remove(name);
        m_grid->setTextMatrix(m_row, m_column, loaded(name));
    } else {
        m_typed.insert(name, entered);
        m_grid->setTextMatrix(m_row, m_column, passwords::mask());
    }
    m_rowChanged = true;
    cellChanged(name);
}

void GridPane::removeRow(const QString& statement)
{
    db().Execute(statement);
    m_removed = true;
}

/// Writes the row if it has changed. Returns whether it has been written.
bool GridPane::leaveRow()
{
    if (m_row < 0 || !isRowChanged())
        return false;
    const CMouseSleeper sleeper;
    const QString failing = validate();
    requireLoaded();
    if (!failing.isEmpty()) {
        m_grid->select(m_row, columnOf(failing));
        EnterCell();
        return false;
    }
    const bool isNew = isNewRow();
    if (m_removed || isNew || keyChanged())
        replaceRow();
    else
        updateRow();
    remember();
    if (isNew)
        addBlankRow();
    return true;
}

/// The tree reads the node anew. What the user does while it yields finds a row that is done with.
void GridPane::follow()
{
    modGUI::ExpandToNode(nodeKey());
    if (!isUnloaded() && isVisible() && !m_editor)
        m_grid->setFocus();
}
