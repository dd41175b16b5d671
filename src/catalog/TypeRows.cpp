#include "TypeRows.h"

#include "CConnections.h"
#include "Recordset.h"
#include "Routine.h"

QString TypeRow::text(const char* column) const
{
    return m_row.Fields().Item(column).Value().Text();
}

std::int32_t TypeRow::number(const char* column) const
{
    const dao::Value value = m_row.Fields().Item(column).Value();
    return value.IsNull() ? 0 : value.Long();
}

void fetchTypes(const char* routineName, const QString& table, const QString& datasource,
                const std::function<void(const TypeRow&)>& add)
{
    const QString sql = "SELECT * FROM " + table;
    Routine routine(routineName);
    routine.additional([&] { return sql; });
    routine.run([&] {
        CConnection* connection = CConnections::instance().Item(datasource);
        if (!connection)
            return;
        if (!connection->db())
            throw RuntimeError(ErrorNumber::ObjectNotSet);
        for (const auto types = connection->db()->OpenRecordset(sql); !types->Eof(); types->MoveNext())
            add(TypeRow(*types));
    });
}
