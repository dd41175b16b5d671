#pragma once

#include "KeyedCollection.h"

#include <QString>

#include <cstdint>

/// One row of TW_LOCDT: a storage type of the data files. ATTRIBUTES says in a small key language what a field of the
/// type may look like; the derived properties read the defaults from it as it is stored, so a first item is found only
/// if the stored text begins with a semicolon.
struct CLOCDT {
    QString REMARKS;
    QString ATTRIBUTES;
    /// The SQL type in which the storage type is presented; a row of TW_SQLDT.
    QString SQL_TYPE_NAME;
    QString LOCAL_TYPE_NAME;

    /// The length in bytes of a new field. Raises 6 out of range.
    std::int32_t DEFAULT_LENGTH() const;
    /// The digits or characters of a new field. Raises 6 as well.
    std::int32_t DEFAULT_PRECISION() const;
    QString DEFAULT_FORMAT() const;
};

/// The storage types of one connection by LOCAL_TYPE_NAME, in the order in which the driver returned them.
class CLOCDTs
{
public:
    /// Adds every row of TW_LOCDT of an open datasource. A failure is reported; what has been read by then stays.
    void FetchDTs(const QString& datasource);

    /// Raises 457 for a name that is already there.
    void add(CLOCDT type);
    /// Raises 5 for a missing name.
    const CLOCDT& Item(const QString& localTypeName) const { return m_types.Item(localTypeName); }
    /// The type of that name, or null.
    const CLOCDT* find(const QString& localTypeName) const { return m_types.find(localTypeName); }
    int Count() const { return m_types.Count(); }
    /// Raises 5 for a missing name.
    void Remove(const QString& localTypeName) { m_types.Remove(localTypeName); }
    auto begin() const { return m_types.begin(); }
    auto end() const { return m_types.end(); }

private:
    KeyedCollection<CLOCDT> m_types;
};
