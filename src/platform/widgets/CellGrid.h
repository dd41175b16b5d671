#pragma once

#include <QPointer>
#include <QStringList>
#include <QTableView>

class CellGridModel;

/// A grid of texts with one current cell, over which its owner may lay an editor. It edits nothing by itself. Rows and
/// columns count from 0; the headings are no row. Arrow keys, Tab, Home, End and page keys move the current cell, as
/// does a press of the mouse; all other keys are handed to the owner.
/// Signals are raised when the grid has done with the event that they come from, so a handler may move the current
/// cell, fill the grid anew, or show a box.
class CellGrid : public QTableView
{
    Q_OBJECT

public:
    /// The name is the object name, as "grd".
    explicit CellGrid(const QString& name, QWidget* parent = nullptr);
    ~CellGrid() override;

    int Rows() const;
    int Cols() const;
    /// The current cell; -1 where there is none.
    int Row() const { return currentIndex().row(); }
    int Col() const { return currentIndex().column(); }
    const QString& Heading(int column) const;
    /// Raises std::out_of_range for a cell that is not there, as setTextMatrix does.
    QString TextMatrix(int row, int column) const;
    void setTextMatrix(int row, int column, const QString& text);
    /// Adds a row at the end; cells that are not given are empty.
    void AddItem(const QStringList& cells);
    /// Drops everything, headings too.
    void Clear();
    /// Makes a cell the current one and brings it into view. No effect for a cell that is not there.
    void select(int row, int column);

    /// Fills the grid anew for as long as it lives: cell by cell, row by row. The grid shows the rows at its end, and a
    /// row that was not completed is dropped.
    class Filling
    {
    public:
        /// The headings: for each column "<" for texts at the left or ">" for numbers at the right, and its caption;
        /// "|" stands between two columns.
        Filling(CellGrid& grid, const QString& formatString);
        /// The same headings one by one, which may hold any character.
        Filling(CellGrid& grid, const QStringList& headings);
        ~Filling();
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;

        void add(QStringView text);

    private:
        CellGrid& m_grid;
    };

    /// Gives each column the width of what shows of it at the moment and of its heading, within bounds.
    void sizeColumns();
    /// Makes sizeColumns leave room for texts that may come to stand in a column, and for `extra` pixels beside them.
    void setRoom(int column, const QStringList& texts, int extra);
    /// A mark in front of the last row, as "*"; an empty one takes no room.
    void setNewRowMark(const QString& mark);

    /// Lays a widget over the current cell, a little wider than it, and keeps it there when the grid scrolls or a
    /// column changes; it must be a child of the viewport. Null lets the former one go.
    void layOver(QWidget* editor);
    /// Brings the cell under the editor into view.
    void showEditor();
    /// Brings the current cell into view.
    void showCurrent() { scrollTo(currentIndex()); }

signals:
    /// Another cell is the current one, by the user's hand or by code.
    void RowColChange();
    /// A key that does not move the current cell; and Down in the last row or Tab in the last cell, which move it to
    /// the top only if the handler leaves the event unaccepted.
    void KeyPress(QKeyEvent* event);
    void DblClick();
    void GotFocus();
    /// A press of the left button beside all cells.
    void ClickBeside();

protected:
    void changeEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void updateGeometries() override;
    bool viewportEvent(QEvent* event) override;

private:
    struct Room {
        QStringList texts;
        int extra = 0;
    };

    template <typename Work>
    void announceAfter(Work work);
    void followFont();
    void placeEditor();
    int widthOf(int column) const;

    CellGridModel* m_model;
    std::vector<Room> m_rooms;
    QPointer<QWidget> m_editor;
    QPersistentModelIndex m_edited;
    int m_busy = 0;
    bool m_moved = false;
};
