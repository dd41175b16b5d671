#pragma once

#include <QAbstractListModel>

#include <vector>

/// The names of the running routines as the list of a combo box, the newest in row 0. Every routine of the program
/// pushes and pops, so both cost a few instructions: the views hear of it only while they are watching.
class CallStackModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit CallStackModel(QObject* parent = nullptr);

    /// The text must be a literal: the pointer is kept.
    void push(const char* routine)
    {
        if (m_watched)
            tellPush(routine);
        else
            m_names.push_back(routine);
    }

    /// No effect on an empty stack.
    void pop()
    {
        if (m_names.empty())
            return;
        if (m_watched)
            tellPop();
        else
            m_names.pop_back();
    }

    /// From true on the views follow each change; becoming so, they see the stack as it is.
    void setWatched(bool watched);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    void tellPush(const char* routine);
    void tellPop();

    /// Oldest first.
    std::vector<const char*> m_names;
    bool m_watched = false;
};
