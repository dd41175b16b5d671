#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <cstdint>
#include <string>
#include <vector>

/// The texts of a grid, all in one piece of memory: a cell is a place in it. A cell that gets another text leaves its
/// former one behind until the grid is filled anew.
class CellGridModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Drops all rows and takes new headings, each "<" or ">" and the caption.
    void begin(const QStringList& headings);
    /// The next cell of the rows, from left to right. Views see the rows from `end` on.
    void append(QStringView text);
    void end();

    void addRow(const QStringList& cells);
    QStringView text(int row, int column) const;
    void setText(int row, int column, QStringView text);
    const QString& heading(int column) const { return m_headings[static_cast<std::size_t>(column)].caption; }
    Qt::Alignment alignment(int column) const { return m_headings[static_cast<std::size_t>(column)].alignment; }

    /// Shown in front of the last row; an empty text shows nothing.
    void setNewRowMark(const QString& mark);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Heading {
        QString caption;
        Qt::Alignment alignment;
    };
    struct Cell {
        std::uint32_t start;
        std::uint32_t length;
    };

    Cell store(QStringView text);
    std::size_t place(int row, int column) const;

    std::vector<Heading> m_headings;
    std::vector<Cell> m_cells;
    std::u16string m_texts;
    QString m_newRowMark;
    int m_rows = 0;
};
