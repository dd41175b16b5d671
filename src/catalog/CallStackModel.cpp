#include "CallStackModel.h"

CallStackModel::CallStackModel(QObject* parent) : QAbstractListModel(parent)
{
    m_names.reserve(64);
}

void CallStackModel::setWatched(bool watched)
{
    if (watched == m_watched)
        return;
    if (watched)
        beginResetModel();
    m_watched = watched;
    if (watched)
        endResetModel();
}

int CallStackModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_names.size());
}

QVariant CallStackModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    return QString::fromUtf8(m_names[m_names.size() - 1 - static_cast<std::size_t>(index.row())]);
}

void CallStackModel::tellPush(const char* routine)
{
    beginInsertRows({}, 0, 0);
    m_names.push_back(routine);
    endInsertRows();
}

void CallStackModel::tellPop()
{
    beginRemoveRows({}, 0, 0);
    m_names.pop_back();
    endRemoveRows();
}
