#pragma once

#include "TableDefinition.h"

#include <string>
#include <vector>

struct sqlite3;

namespace tarnwick::samples
{

/// A data file of a catalog's tables.
struct DataFile {
    std::string path;                    ///< where it stands, suffix included
    std::string fileName;                ///< the name of its definition
    records::TableDefinition definition; ///< of the first table over it
};

/// The data files of all tables of a catalog but its own, each once. Throws records::RecordError for a table whose
/// file has no place.
std::vector<DataFile> DataFilesOf(sqlite3* catalog, const records::Surroundings& surroundings);

/// The name of the temporary table that holds a file's rows while the sample is made: hyphens are no letters of SQL
/// names.
std::string RowsOf(const std::string& fileName);

/// The content of a data file: its rows, encoded as the file's definition in the same catalog says. The number of a row
/// is that of its record, and where numbers are left out the file has empty slots or deleted records. In files of
/// VARIABLE records a null is left out of its record, which ends behind the last field that has a value.
/// Throws std::runtime_error that names the file, the record and the field.
std::string ContentOf(sqlite3* catalog, const DataFile& file);

/// Writes a whole file under another name first, with the folders above it.
void WriteWhole(const std::string& path, const std::string& content);

} // namespace tarnwick::samples
