#pragma once

#include "FieldDecoder.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace tarnwick::records
{

/// The special columns that the catalog knows, by their `COLUMN_TYPE`.
enum class Special {
    None = 0,
    RecordFileAddress = 1,
    IndexNumber = 2,
    IndexName = 3,
    IndexColumns = 4,
    TableOrder = 5,
    RowId = 6,
    RelativeNumber = 7,
    RelativeIndex = 8,
};

/// The declared type of columns that hold decimal digits as text.
constexpr const char* decimalText = "DECIMAL_TEXT";

/// A column of a table over records.
struct Column {
    std::string name;        ///< as clients see it
    std::string declaration; ///< its type, as a column of an SQL table is declared
    Shown shown = Shown::Text;
    IntegerLimits limits;
    std::size_t digits = 0; ///< of a decimal number: all of them
    int scale = 0;          ///< of a decimal number: those behind the point
    std::string remarks;
    bool isVisible = true;
    Special special = Special::None;
    std::optional<Field> field; ///< of an ordinary column
    std::string problem;        ///< why it cannot be read; empty if it can

    bool operator==(const Column&) const = default;
};

/// A table as the catalog defines it at one moment.
struct TableDefinition {
    std::string sqlName; ///< as clients see it: the database's and the table's name, each as its display name writes
                         ///< it, joined by an underscore, or the table's alone where its database is the default one
    std::string database;
    std::string table;
    std::string path; ///< of the data file
    std::string criteria;
    std::string remarks;
    std::string organisation;
    std::string recordType;
    std::string openString;
    std::size_t recordSize = 0;
    std::vector<Column> columns;
    std::string problem; ///< why the table cannot be read; empty if it can

    bool operator==(const TableDefinition&) const = default;

    /// The name by which its criteria knows the table: always that of both.
    std::string JoinedName() const { return database + "_" + table; }
};

/// What a data source adds to its catalog's definitions.
struct Surroundings {
    std::string defaultDatabase;  ///< `DefaultDatabase`; empty for none
    std::string catalogDirectory; ///< where relative directories start
    /// The value of a key of the data source, empty if it has none: the directory behind a logical name.
    std::function<std::string(const std::string&)> directoryOf;
};

/// The definition of the table that clients call `name`, in any case; nothing if the catalog has none of that name.
/// Throws RecordError if the catalog cannot be read.
std::optional<TableDefinition> ReadDefinition(sqlite3* engine, const Surroundings& surroundings, std::string_view name);

/// A table's place in the catalog, in just this spelling.
struct TableKey {
    std::string database;
    std::string table;
};

/// The same for a table whose place is known, which needs no search through the others.
std::optional<TableDefinition> ReadDefinition(sqlite3* engine, const Surroundings& surroundings, const TableKey& key);

/// Where a table's data file is. Throws RecordError for a logical directory that the data source does not know.
std::string DataFilePath(const Surroundings& surroundings, const std::string& directory,
                         const std::string& specification);

} // namespace tarnwick::records
