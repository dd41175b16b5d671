#include "Query.h"

#include "OwnStatement.h"
#include "RecordFormat.h"

#include <sqlite3.h>

namespace tarnwick::records
{

void Query::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

Query::Query(sqlite3* engine, std::string_view text, const std::vector<std::string>& parameters) : m_engine(engine)
{
    const OwnStatement own;
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(engine, text.data(), static_cast<int>(text.size()), &prepared, nullptr) != SQLITE_OK)
        throw RecordError(sqlite3_errmsg(engine));
    m_statement.reset(prepared);
    for (std::size_t i = 0; i < parameters.size(); ++i)
        sqlite3_bind_text(prepared, static_cast<int>(i) + 1, parameters[i].data(),
                          static_cast<int>(parameters[i].size()), SQLITE_TRANSIENT);
}

bool Query::Next()
{
    const OwnStatement own;
    const int answer = sqlite3_step(m_statement.get());
    if (answer == SQLITE_ROW)
        return true;
    if (answer == SQLITE_DONE)
        return false;
    throw RecordError(sqlite3_errmsg(m_engine));
}

std::string Query::Text(int column) const
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(m_statement.get(), column)))
                : std::string();
}

std::int64_t Query::Number(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

bool Query::IsNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

} // namespace tarnwick::records
