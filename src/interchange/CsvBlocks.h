#pragma once

#include <array>

class QString;
class TextWriter;

namespace dao
{
class Recordset;
}

/// One kind of line of a catalog's CSV file: what its first column says, and the rows that are written of it.
struct CsvBlock {
    const char* id;
    const char* status;
    const char* statement;
};

/// The eight kinds in the order of the file, in which each refers to those before it alone: files before fields,
/// databases before tables, tables before columns, users before privileges. The catalog's own files, its own database
/// and the user ADMIN stay out.
const std::array<CsvBlock, 8>& csvBlocks();

/// Writes the current row as a line: the kind, and the columns in the order of the statement, with commas between
/// them. A text stands between double quotes, any other value bare; a null is empty. Nothing in a value is escaped.
void appendCsvLine(TextWriter& file, const char* id, const dao::Recordset& row);
