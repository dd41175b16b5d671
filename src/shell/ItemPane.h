#pragma once

#include "ActionPane.h"
#include "PaneRegistry.h"
#include "PropertySheet.h"
#include "modDatabase.h"

#include <QStringList>

class CConnection;

namespace dao
{
class Recordset;
}

/// The pane of one catalog row: what all eight of them have in common. It shows the row, and adds, edits or deletes it
/// by the buttons of its tool bar. Its state is the tag of the bar's "OK" button: empty while the row is shown, else
/// the bar's own tag with " Add", " Edit" or " Delete".
///
/// A pane states its properties, its statements, its messages and its titles, and where it departs from the family.
class ItemPane : public ActionPane
{
    Q_OBJECT

public:
    enum class State { Display, Add, Edit, Delete };

    /// Reads the row of the keys, datasource first, and shows it. False where there is no connection, or when a failure
    /// was ignored.
    bool Display(const QStringList& keys);
    /// Takes a new row below the owners.
    void AddNew(const QStringList& owners);
    /// Shows the row and opens it for change, unless it is protected.
    void Edit(const QStringList& keys);
    /// Shows the row and asks whether it is to go.
    void Delete(const QStringList& keys);
    void tbr_ButtonClick(ToolButton& button) final;

    void PopulateCombos();
    /// Whether the row may be written; says why not, and moves the focus there.
    bool ValidateFields();
    void EnableEdit(bool enabled);
    /// The key parts of the row shown, datasource first; the last one is empty while adding.
    QStringList keys() const { return m_owners + QStringList{m_name}; }
    /// The tree keys of the collection above and of the row shown.
    QString CalcParentKey() const { return parentKey(); }
    QString CalcNodeKey() const { return nodeKey(m_name); }
    QString shownNode() const final;

    /// What the registry is to call for a pane whose rows have so many key parts.
    static panes::Operations operations(int keyParts);

protected:
    struct Kind {
        const char* form;
        const char* table;
        const char* collection;
        const char* toolBar;
        const char* deleteQuestion;
        /// The column that holds the last key part.
        const char* nameColumn;
        /// The node of a row: its type, its picture, and whether it opens.
        const char* nodeType;
        const char* nodeImage;
        bool nodeOpens = false;
        /// Where entry begins; the name unless it is another column.
        const char* firstColumn = nullptr;
        /// The routine in which a choice from a list is taken.
        const char* listRoutine = "cboDropdown_Change";
        /// Whether "Up1" gives the focus to the grid; to the tree otherwise.
        bool upFocusesGrid = false;
    };

    ItemPane(const Kind& kind, std::vector<Property> properties, QWidget* parent);
    ~ItemPane() override;

    PropertySheet& sheet() const { return *m_sheet; }
    CConnection& connection() const { return *m_connection; }
    dao::Database& db() const;
    const QString& datasource() const { return m_owners.front(); }
    /// The key parts above the row, datasource first.
    const QStringList& owners() const { return m_owners; }
    /// The row's name as the pane knows it; empty while adding.
    const QString& name() const { return m_name; }
    /// The name that the row had when it was read.
    const QString& loadedName() const { return m_loadedName; }
    bool keyChanged() const { return m_keyChanged; }
    /// What "OK" is going to do.
    State state() const;

    QString text(const QString& column) const { return m_sheet->text(column).Value(); }
    void setText(const QString& column, const QString& text) { m_sheet->text(column).setValue(text); }
    bool isBlank(const QString& column) const;
    /// The text as it goes between the apostrophes of a statement.
    QString quoted(const QString& column) const { return modDatabase::SQLQuote(text(column)); }
    /// The size that the driver reports of a column.
    int columnSize(const QString& column) const { return static_cast<int>(m_fields.Item(column).Size); }
    void enable(const QString& column, bool enabled);
    void setFocusTo(const QString& column);
    /// Shows a message of validation, moves the focus and gives false. The program's title stands over it unless
    /// another one is given.
    bool refuse(const QString& message, const QString& column, const QString& boxTitle = {});
    /// Whether the statement finds a row.
    bool finds(const QString& statement) const;
    /// Whether the number in a column lies within the limits of its arrows.
    bool isWithin(const QString& column, int spinner) const;
    /// A routine of this form, for a report.
    const char* routine(const char* operation) const;

    void showCollection() { showCollection(m_owners); }
    /// The same for owners that were taken before the tree yielded.
    void showCollection(const QStringList& owners);
    /// Reads the level of the row's node anew where it has been read, so that its names stand in order.
    void rereadCollection();
    /// The same for any node by its key.
    void rereadNode(const QString& key);
    /// Gives a node another name, wherever it stands: `beginning` is its key without that name. Nothing happens where
    /// the tree has no such node. The tree may yield; raises 91 when the pane is gone then.
    void renameNode(const QString& beginning, const QString& from, const QString& to);
    void removeNode();
    /// An "Undo" that begins again what is being done.
    void startAgain(State state)
    {
        if (state == State::Add)
            AddNew(m_owners);
        else if (state == State::Edit)
            Edit(keys());
    }
    /// What a click on the button behind an entry does, under the trap of its own routine.
    void clickButton(const QString& name);

    // What a pane may do otherwise, or besides.

    /// Fills the controls from the row.
    virtual void fill(const dao::Recordset& row);
    /// Empties the controls.
    virtual void blank();
    virtual void enableEntries(bool enabled);
    virtual void followInsert();
    virtual void followUpdate();
    /// Gives the row's node, and whatever else stands for the row in the tree, another name. The tree may yield, as in
    /// renameNode.
    virtual void renameNodes(const QString& from, const QString& to);
    virtual void undo(State state);
    /// Goes by whether the pane knows a row.
    virtual void cancel(State state);
    /// A text has changed; behind Undo having been enabled.
    virtual void textChanged(const QString& column);
    /// Asks whether the row is to go.
    virtual bool confirmsDelete();
    /// Whether the change of a key column makes the row another one.
    virtual bool makesKeyChanged(const QString& column) const { return property(column).isKey; }
    virtual void listChanged(const QString& column);

private:
    /// The name of a routine on the call stack, where it is not the one of reports.
    virtual const char* stackedRoutine(const char* operation) const { return routine(operation); }
    virtual QString parentKey() const = 0;
    virtual QString title(State state) const = 0;
    /// The row that the keys name.
    virtual QString selectStatement() const = 0;
    /// Behind the filling of the controls by Display; the row may be missing.
    virtual void displayed() {}
    /// Rows that may not be changed.
    virtual bool isProtected() const { return false; }
    virtual void populateLists() {}
    /// Last steps of AddNew and of Edit.
    virtual void adding() {}
    virtual void editing() {}
    virtual bool validate() = 0;

    virtual void insertRow();
    /// Asked before the tool bar begins a delete.
    virtual bool mayDelete() { return true; }
    /// Asked before anything of an edit is done.
    virtual bool mayUpdate() { return true; }
    /// Carries a changed key to the rows that depend on it.
    virtual void carryKey() = 0;
    virtual void updateRow() = 0;
    /// Everything that a confirmed delete does.
    virtual void deleteRow() = 0;

    virtual void buttonClicked(const QString&) {}
    /// A button of the tool bar that the family does not know.
    virtual void toolBarClicked(const QString&) {}

    bool connectTo(const QString& datasource);
    void enterState(State state, const QString& actionCaption);
    void txtProperty_Change(const QString& column);
    void takeChoice(const QString& column);
    void chkProperty_Click(const QString& column);

    QString nodeKey(const QString& name) const
    {
        return parentKey() + QLatin1String(m_kind.nodeType) + QLatin1Char('=') + name + QLatin1Char(':');
    }
    const Property& property(const QString& column) const;

    void ok();
    void okAdd();
    void okEdit();
    void up();

    Kind m_kind;
    PropertySheet* m_sheet;
    CConnection* m_connection = nullptr;
    modDatabase::FieldInfos m_fields;
    QStringList m_owners;
    QString m_name;
    QString m_loadedName;
    bool m_keyChanged = false;
    bool m_confirming = false;
};
