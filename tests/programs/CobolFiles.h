#pragma once

#include <string>
#include <vector>

/// Files that the COBOL programs of this folder write: how they are laid out, and what the programs print of them.
namespace cobol
{

/// A field of a record; it stands behind the one before it.
struct Field {
    std::string name;
    std::string type; ///< of TW_LOCDT
    int length = 0;
    int scale = 0;
};

struct File {
    std::string name; ///< of its definition, and of its data file in small letters; lines about it begin with it
    std::string organisation;
    std::string recordType;
    std::string openString;
    std::vector<Field> fields;

    std::string DataFile() const;
    /// The columns of its table: one for each field and, of a relative file, the slot's number before them.
    std::vector<Field> Columns() const;
};

extern const File sequential; ///< a field of each usage
extern const File relative;   ///< the same fields
extern const File lines;      ///< a field of each usage that is characters
extern const File varying;
extern const File others; ///< usages of other compilers

/// The statements that define a file in a catalog.
std::vector<std::string> Definition(const File& file);
/// The statement that gives a relative file's table the column of the slot's number.
std::string SlotNumber(const std::string& database, const std::string& table);
/// The statement that reads the columns of a file's table.
std::string SelectAll(const File& file, const std::string& sqlName);

/// A row for each record, with a cell for each column.
using Rows = std::vector<std::vector<std::string>>;

/// Compiles the program that writes usages.cob's files, runs it in the folder, where it leaves them, and returns what
/// it prints. Throws std::runtime_error where there is no compiler.
std::string RunUsages(const std::string& folder);
/// The same with others.cob.
std::string RunOthers(const std::string& folder);

/// What a program has printed of a file, as a client is to show it: numbers without zeros and signs that say nothing,
/// text without the blanks at its end. Throws std::runtime_error where that is no value for each column.
Rows Printed(const std::string& output, const File& file);
/// The cells that a client shows. They are taken as they are, except that zeros at the end of a fraction do not count,
/// and that floating point numbers are rounded to the digits that their type holds, as `Printed` does.
Rows Shown(const Rows& cells, const File& file);
/// The lines of a text, each with the cells between its `|`.
Rows Cells(const std::string& text);

} // namespace cobol
