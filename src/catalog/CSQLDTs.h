#pragma once

#include "KeyedCollection.h"

#include <QString>

#include <cstdint>

/// One row of TW_SQLDT: a data type that the driver presents to SQL clients. A null text of the catalog is the empty
/// text here, a null number 0.
struct CSQLDT {
    QString REMARKS;
    QString LOCAL_TYPE_NAME;
    std::int32_t RADIX = 0;
    std::int32_t AUTO_INCREMENT = 0;
    std::int32_t MONEY = 0;
    std::int32_t UNSIGNED_ATTRIBUTE = 0;
    std::int32_t SEARCHABLE = 0;
    std::int32_t CASE_SENSITIVE = 0;
    std::int32_t NULLABLE = 0;
    QString CREATE_PARAMS;
    QString LITERAL_SUFFIX;
    QString LITERAL_PREFIX;
    std::int32_t PRECISION = 0;
    std::int32_t Length = 0;
    std::int32_t SQL_DATA_TYPE = 0;
    QString SQL_TYPE_NAME;
};

/// The SQL data types of one connection by SQL_TYPE_NAME, in the order in which the driver returned them.
class CSQLDTs
{
public:
    /// Adds every row of TW_SQLDT of an open datasource. A failure is reported; what has been read by then stays.
    void FetchDTs(const QString& datasource);

    /// Raises 457 for a name that is already there.
    void add(CSQLDT type);
    /// Raises 5 for a missing name.
    const CSQLDT& Item(const QString& sqlTypeName) const { return m_types.Item(sqlTypeName); }
    /// The type of that name, or null.
    const CSQLDT* find(const QString& sqlTypeName) const { return m_types.find(sqlTypeName); }
    int Count() const { return m_types.Count(); }
    /// Raises 5 for a missing name.
    void Remove(const QString& sqlTypeName) { m_types.Remove(sqlTypeName); }
    auto begin() const { return m_types.begin(); }
    auto end() const { return m_types.end(); }

private:
    KeyedCollection<CSQLDT> m_types;
};
