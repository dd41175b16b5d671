#pragma once

#include <QString>

#include <cstdint>
#include <functional>

namespace dao
{
class Recordset;
}

/// A row of a type catalog. A null reads as the empty text or 0.
class TypeRow
{
public:
    explicit TypeRow(const dao::Recordset& row) : m_row(row) {}

    QString text(const char* column) const;
    std::int32_t number(const char* column) const;

private:
    const dao::Recordset& m_row;
};

/// Hands each row of a type catalog of a datasource to `add`, in the driver's order; none if it does not connect. A
/// failure is reported under the routine's name and ends the reading.
void fetchTypes(const char* routineName, const QString& table, const QString& datasource,
                const std::function<void(const TypeRow&)>& add);
