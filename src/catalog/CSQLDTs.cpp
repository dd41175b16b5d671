#include "CSQLDTs.h"

#include "TypeRows.h"

void CSQLDTs::FetchDTs(const QString& datasource)
{
    fetchTypes("CSQLDTs.FetchDTs", "TW_SQLDT", datasource, [this](const TypeRow& row) {
        CSQLDT type;
        type.SQL_TYPE_NAME = row.text("SQL_TYPE_NAME");
        type.SQL_DATA_TYPE = row.number("SQL_DATA_TYPE");
        type.Length = row.number("LENGTH");
        type.PRECISION = row.number("PRECISION");
        type.LITERAL_PREFIX = row.text("LITERAL_PREFIX");
        type.LITERAL_SUFFIX = row.text("LITERAL_SUFFIX");
        type.CREATE_PARAMS = row.text("CREATE_PARAMS");
        type.NULLABLE = row.number("NULLABLE");
        type.CASE_SENSITIVE = row.number("CASE_SENSITIVE");
        type.SEARCHABLE = row.number("SEARCHABLE");
        type.UNSIGNED_ATTRIBUTE = row.number("UNSIGNED_ATTRIBUTE");
        type.MONEY = row.number("MONEY");
        type.AUTO_INCREMENT = row.number("AUTO_INCREMENT");
        type.RADIX = row.number("RADIX");
        type.LOCAL_TYPE_NAME = row.text("LOCAL_TYPE_NAME");
        type.REMARKS = row.text("REMARKS");
        add(std::move(type));
    });
}

void CSQLDTs::add(CSQLDT type)
{
    const QString key = type.SQL_TYPE_NAME;
    m_types.add(key, std::move(type));
}
