#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace tarnwick::records
{

/// One prepared question that the driver itself asks a catalog; no user's rights limit it. Throws RecordError with
/// SQLite's text where it fails.
class Query
{
public:
    Query(sqlite3* engine, std::string_view text, const std::vector<std::string>& parameters = {});

    /// Steps to the next row; false behind the last one.
    bool Next();

    /// A cell of the row; nulls read as the empty text and 0.
    std::string Text(int column) const;
    std::int64_t Number(int column) const;
    bool IsNull(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    sqlite3* m_engine;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

} // namespace tarnwick::records
