#pragma once

#include "RuntimeError.h"

#include <QHash>
#include <QString>

#include <utility>
#include <vector>

/// Rows by key, in the order in which they were added. Keys compare exactly. A reference to a row holds until the next
/// add or Remove.
template <class Row>
class KeyedCollection
{
public:
    /// Raises 457 for a key that is already there.
    void add(const QString& key, Row row)
    {
        if (m_index.contains(key))
            throw RuntimeError(ErrorNumber::KeyAlreadyThere);
        m_index.insert(key, m_rows.size());
        m_rows.push_back(std::move(row));
    }

    /// Raises 5 for a missing key.
    const Row& Item(const QString& key) const { return m_rows[position(key)]; }

    /// The row of a key, or null.
    const Row* find(const QString& key) const
    {
        const auto found = m_index.constFind(key);
        return found == m_index.constEnd() ? nullptr : &m_rows[*found];
    }

    int Count() const { return static_cast<int>(m_rows.size()); }

    /// Raises 5 for a missing key.
    void Remove(const QString& key)
    {
        const std::size_t removed = position(key);
        m_index.remove(key);
        m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(removed));
        for (std::size_t& row : m_index) {
            if (row > removed)
                --row;
        }
    }

    auto begin() const { return m_rows.begin(); }
    auto end() const { return m_rows.end(); }

private:
    std::size_t position(const QString& key) const
    {
        const auto found = m_index.constFind(key);
        if (found == m_index.constEnd())
            throw RuntimeError(ErrorNumber::FailedCall);
        return *found;
    }

    std::vector<Row> m_rows;
    QHash<QString, std::size_t> m_index;
};
