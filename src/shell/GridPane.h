#pragma once

#include "PaneForm.h"
#include "PaneRegistry.h"
#include "ToolbarPane.h"
#include "modDatabase.h"
#include "modGrid.h"

#include <QHash>
#include <QStringList>

#include <optional>
#include <vector>

class CConnection;
class CellGrid;
class QComboBox;
class QKeyEvent;
class PropertyEdit;
class QLineEdit;
class ctlTextLookup;

/// What lies over a cell while it is edited: a text box, a list, or a text box with a button that looks a value up.
enum class CellEditor { Text, Combo, LookUp };

/// A column of a grid, in one row of a table.
struct GridColumn {
    /// The column of the catalog.
    QString name;
    CellEditor editor = CellEditor::Text;
    /// What a list offers; a list that is read from somewhere is given by GridPane::setItems.
    QStringList items = {};
    /// What a new row begins with.
    QString newRow = {};
    /// Whether a change of the column is a change of the row's key.
    bool isKey = false;
    /// Shows asterisks and keeps what was typed aside (see GridPane::typed).
    bool isMasked = false;
    /// What shows for a stored value; null shows the value itself.
    modGrid::ShownForm shown = nullptr;
};

/// A column of a flag, which shows as "Yes" or "No".
GridColumn flagColumn(const QString& name, bool newRow);

/// The pane of all rows of a node as a grid: what all eight of them have in common. A cell is edited in an editor that
/// lies over it. When the current cell moves to another row, or the user clicks beside the cells, the row that was
/// changed is validated and written: under another key by removing it and adding it anew, else by an update, in either
/// case without what depends on it. A row that fails keeps the current cell. The last row is blank and adds a row.
///
/// A pane states its columns, its statements, its messages and its title, and where it departs from the family. In all
/// calls a column goes by its name in the catalog, and the row is the one that is being edited.
class GridPane : public PaneForm, public ToolbarPane
{
    Q_OBJECT

public:
    /// Reads the rows of the keys' node, datasource first. Nothing happens where there is no connection.
    void Display(const QStringList& keys);
    /// Lays the editor over the current cell, unless the cell may not be edited.
    void EnterCell();
    /// Takes the editor away and its text into the cell; a changed row that the current cell has left is written.
    void LeaveCell();
    /// A key that came to the grid: typing begins to edit.
    void grd_KeyPress(QKeyEvent& event);
    /// A key that came to the editor. Returns whether it is used up.
    bool Cell_Keypress(QKeyEvent& event);
    /// Whether a text stands for a set flag.
    static bool ToBoolean(const QString& text);
    /// The number of a kind of search by its name; 0 for any other text.
    static int ToSearchable(const QString& text);
    void tbr_ButtonClick(ToolButton& button) final;

    /// Gives the grid the focus, for its pane to be worked on by keyboard.
    void takeFocus();

    /// The key parts of the node, datasource first.
    const QStringList& keys() const { return m_keys; }
    QString shownNode() const final { return m_keys.isEmpty() ? QString() : nodeKey(); }

    /// What the registry is to call for a pane that takes so many key parts.
    static panes::Operations operations(int keyParts);

protected:
    struct Kind {
        const char* form;
        const char* table;
        const char* toolBar;
        /// What marks the row for a new row, if anything.
        const char* newRowMark = nullptr;
    };
    /// Where "Up1" leads: a pane, its keys, the node to select, and what the button says.
    struct Owner {
        QString pane;
        QStringList keys;
        QString node;
        QString toolTip;
    };

    GridPane(const Kind& kind, std::vector<GridColumn> columns, QWidget* parent);
    ~GridPane() override;

    CellGrid& grd() const { return *m_grid; }
    const std::vector<GridColumn>& allColumns() const { return m_columns; }
    CConnection& connection() const { return *m_connection; }
    dao::Database& db() const;
    const QString& datasource() const { return m_keys.front(); }

    QString text(const QString& column) const;
    /// The text as it goes between the apostrophes of a statement.
    QString quoted(const QString& column) const { return modDatabase::SQLQuote(text(column)); }
    /// What the cell held when the row was entered or last written.
    const QString& loaded(const QString& column) const;
    QString quotedLoaded(const QString& column) const { return modDatabase::SQLQuote(loaded(column)); }
    /// The number that is stored for what a flag shows.
    QString flag(const QString& column) const
    {
        return ToBoolean(text(column)) ? QStringLiteral("1") : QStringLiteral("0");
    }
    /// What has been typed into a masked cell, if anything.
    std::optional<QString> typed(const QString& column) const;
    /// Forgets what has been typed into a masked cell.
    void dropTyped(const QString& column) { m_typed.remove(column); }
    /// Sets a cell as the user would.
    void setText(const QString& column, const QString& text);
    /// Whether the row is one that the catalog does not have yet.
    bool isNewRow() const;
    /// Whether a column of the key differs from the row as loaded.
    bool keyChanged() const;

    /// Whether the cell holds a number within the limits; a blank one holds none.
    bool isWithin(const QString& column, double minimum, double maximum) const;
    /// Whether the statement finds a row.
    bool finds(const QString& statement) const;
    /// The first column of all rows that the statement finds.
    QStringList firstColumn(const QString& statement) const;
    /// Shows a message of validation and gives the column back.
    QString refuse(const QString& message, const QString& column);
    /// Runs the statement that removes the row under its loaded key.
    void removeRow(const QString& statement);
    void setItems(const QString& column, const QStringList& items);
    /// The text of the editor at the moment, and the way to put a value into it that was looked up.
    QString lookedUp() const;
    void setLookedUp(const QString& text);
    /// A routine of this form, for a call stack.
    const char* routine(const char* operation) const;

    /// What the list of a column offers in the present row.
    virtual QStringList itemsOf(const GridColumn& column) const { return column.items; }
    /// What a new row begins with below the present last row.
    virtual QString newRowValue(const GridColumn& column) const { return column.newRow; }

private:
    enum class Leave { Cell, Row };

    virtual QString title() const = 0;
    virtual QString selectStatement() const = 0;
    /// The tree key of the node whose rows the grid shows.
    virtual QString nodeKey() const = 0;
    /// Checks the row and says what is wrong; the column that is to be entered again, or an empty text.
    virtual QString validate() = 0;
    /// Removes the row under its loaded key, if it has one, and adds it.
    virtual void replaceRow() = 0;
    virtual void updateRow() = 0;

    /// None at the top of a branch.
    virtual std::optional<Owner> owner() const { return std::nullopt; }
    virtual void populateLists() {}
    virtual bool isReadOnly() const { return false; }
    /// Cells that take no editor.
    virtual bool isLocked(const QString&) { return false; }
    /// The cell has taken another text from its editor.
    virtual void cellChanged(const QString&) {}
    virtual void lookUp(const QString&) {}

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    void buildEditors();
    void resetOwnerTip();
    void sizeColumns();
    void addBlankRow();

    int columnOf(const QString& name) const;
    const GridColumn& column() const { return m_columns[static_cast<std::size_t>(m_column)]; }
    void enterRow(int row);
    void remember();
    void openEditor();
    void closeEditor();
    void endEdit();
    QString editorText() const;
    void setEditorText(const QString& text);
    void takeCell();
    bool isRowChanged() const;
    bool leaveRow();
    void follow();
    bool leave(Leave what);
    bool goBelow(int column);
    void ctlLUCell_Click();
    void txtCell_Change(QLineEdit& edit);
    QLineEdit& lineEditOf(const QWidget& editor) const;
    QLineEdit* lineEdit() const;

    Kind m_kind;
    std::vector<GridColumn> m_columns;
    CellGrid* m_grid;
    PropertyEdit* m_text = nullptr;
    QComboBox* m_combo = nullptr;
    ctlTextLookup* m_lookUp = nullptr;
    /// The one that shows, or null.
    QWidget* m_editor = nullptr;
    CConnection* m_connection = nullptr;
    modDatabase::FieldInfos m_fields;
    QStringList m_keys;
    bool m_readOnly = true;
    /// Where the editor was laid last; -1 before that.
    int m_row = -1;
    int m_column = -1;
    QString m_editorStart;
    /// Whether an entry of the list has been chosen by hand, be it the one that stood there.
    bool m_chosen = false;
    modDatabase::FieldInfo m_field;
    std::vector<QString> m_loaded;
    QHash<QString, QString> m_typed;
    bool m_rowChanged = false;
    /// Whether the catalog has lost the row to a replacement that ended half way, whatever name it has got since.
    bool m_removed = false;
    bool m_leaving = false;
};
