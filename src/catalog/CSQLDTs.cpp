#include "CSQLDTs.h"

#include "CConnections.h"
#include "Recordset.h"
#include "Routine.h"

void CSQLDTs::FetchDTs(const QString& datasource)
{
    const QString sql = "SELECT * FROM TW_SQLDT";
    Routine routine("CSQLDTs.FetchDTs");
    routine.additional([&] { return sql; });
    routine.run([&] {
        CConnection* connection = CConnections::instance().Item(datasource);
        if (!connection)
            return;
        if (!connection->db())
            throw RuntimeError(ErrorNumber::ObjectNotSet);
        const auto types = connection->db()->OpenRecordset(sql);
        for (; !types->Eof(); types->MoveNext()) {
            const auto text = [&](const char* column) { return types->Fields().Item(column).Value().Text(); };
            const auto number = [&](const char* column) {
                const dao::Value value = types->Fields().Item(column).Value();
                return value.IsNull() ? 0 : value.Long();
            };
            CSQLDT type;
            type.SQL_TYPE_NAME = text("SQL_TYPE_NAME");
            type.SQL_DATA_TYPE = number("SQL_DATA_TYPE");
            type.Length = number("LENGTH");
            type.PRECISION = number("PRECISION");
            type.LITERAL_PREFIX = text("LITERAL_PREFIX");
            type.LITERAL_SUFFIX = text("LITERAL_SUFFIX");
            type.CREATE_PARAMS = text("CREATE_PARAMS");
            type.NULLABLE = number("NULLABLE");
            type.CASE_SENSITIVE = number("CASE_SENSITIVE");
            type.SEARCHABLE = number("SEARCHABLE");
            type.UNSIGNED_ATTRIBUTE = number("UNSIGNED_ATTRIBUTE");
            type.MONEY = number("MONEY");
            type.AUTO_INCREMENT = number("AUTO_INCREMENT");
            type.RADIX = number("RADIX");
            type.LOCAL_TYPE_NAME = text("LOCAL_TYPE_NAME");
            type.REMARKS = text("REMARKS");
            add(std::move(type));
        }
    });
}

void CSQLDTs::add(CSQLDT type)
{
    const QString key = type.SQL_TYPE_NAME;
    m_types.add(key, std::move(type));
}
