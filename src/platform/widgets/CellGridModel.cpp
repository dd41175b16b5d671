#include "CellGridModel.h"

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

void CellGridModel::begin(const QStringList& headings)
{
    beginResetModel();
    m_headings.clear();
    m_cells.clear();
    m_texts.clear();
    m_rows = 0;
    for (const QString& heading : headings) {
        const bool right = heading.startsWith('>'_L1);
        const bool aligned = right || heading.startsWith('<'_L1);
        m_headings.push_back(
            {aligned ? heading.sliced(1) : heading, (right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter});
    }
}

CellGridModel::Cell CellGridModel::store(QStringView text)
{
    const std::size_t start = m_texts.size();
    if (start + static_cast<std::size_t>(text.size()) > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("CellGridModel");
    m_texts.append(text.utf16(), static_cast<std::size_t>(text.size()));
    return {static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(text.size())};
}

void CellGridModel::append(QStringView text)
{
    m_cells.push_back(store(text));
}

void CellGridModel::end()
{
    if (!m_headings.empty()) {
        m_rows = static_cast<int>(m_cells.size() / m_headings.size());
        m_cells.resize(static_cast<std::size_t>(m_rows) * m_headings.size());
    }
    endResetModel();
}

void CellGridModel::addRow(const QStringList& cells)
{
    beginInsertRows({}, m_rows, m_rows);
    for (int column = 0; column < columnCount(); ++column)
        m_cells.push_back(store(column < cells.size() ? QStringView(cells[column]) : QStringView()));
    ++m_rows;
    endInsertRows();
}

std::size_t CellGridModel::place(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < 0 || column >= columnCount())
        throw std::out_of_range("CellGridModel");
    return static_cast<std::size_t>(row) * m_headings.size() + static_cast<std::size_t>(column);
}

QStringView CellGridModel::text(int row, int column) const
{
    const Cell& cell = m_cells[place(row, column)];
    return {m_texts.data() + cell.start, static_cast<qsizetype>(cell.length)};
}

void CellGridModel::setText(int row, int column, QStringView text)
{
    m_cells[place(row, column)] = store(text);
    const QModelIndex changed = index(row, column);
    emit dataChanged(changed, changed);
}

void CellGridModel::setNewRowMark(const QString& mark)
{
    m_newRowMark = mark;
    if (m_rows > 0)
        emit headerDataChanged(Qt::Vertical, m_rows - 1, m_rows - 1);
}

int CellGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int CellGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
}

QVariant CellGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
        return text(index.row(), index.column()).toString();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignment(index.column()));
    default:
        return {};
    }
}

QVariant CellGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole && section == m_rows - 1 ? QVariant(m_newRowMark) : QVariant();
    if (section < 0 || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return heading(section);
    return role == Qt::TextAlignmentRole ? QVariant::fromValue(alignment(section)) : QVariant();
}
