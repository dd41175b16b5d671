#include "TableDefinition.h"

#include "Decimal.h"
#include "Query.h"
#include "RecordFormat.h"
#include "Text.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace tarnwick::records
{
namespace
{

namespace fs = std::filesystem;

/// The most digits that an integer of 64 bits always holds.
constexpr std::size_t integerDigits = 18;

/// What the catalog allows to say of a field or a record, in bytes.
constexpr std::int64_t mostBytes = 65535;

constexpr const char* tableQuestion =
    "SELECT t.DATABASE_NAME, t.TABLE_NAME, t.FILE_NAME, t.FILE_SPECIFICATION, t.CRITERIA, d.DEFAULT_DIRECTORY,"
    "       f.FILE_NAME, f.FILE_ORGANISATION, f.RECORD_TYPE, f.OPEN_STRING, f.RECORD_SIZE, d.DISPLAY_NAME,"
    "       t.DISPLAY_NAME, t.REMARKS"
    "  FROM TW_TABLE t"
    "  LEFT JOIN TW_DB d ON d.DATABASE_NAME = t.DATABASE_NAME"
    "  LEFT JOIN TW_FILE f ON f.FILE_NAME = t.FILE_NAME"
    " WHERE t.DATABASE_NAME <> 'TW' AND ";

constexpr const char* columnQuestion =
    "SELECT c.COLUMN_NAME, c.DISPLAY_NAME, c.SQL_TYPE_NAME, c.PRECISION, c.LENGTH, c.VISIBLE, c.COLUMN_TYPE,"
    "       c.FIELD_NAME, f.FIELD_NAME, f.LOCAL_TYPE_NAME, f.OFFSET, f.LENGTH, f.SCALE, f.FORMAT, f.ENCRYPTED,"
    "       l.SQL_TYPE_NAME, l.ATTRIBUTES, c.REMARKS, c.UNSIGNED_ATTRIBUTE"
    "  FROM TW_COLUMN c"
    "  LEFT JOIN TW_FIELD f ON f.FILE_NAME = ?3 AND f.FIELD_NAME = c.FIELD_NAME"
    "  LEFT JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME"
    " WHERE c.DATABASE_NAME = ?1 AND c.TABLE_NAME = ?2"
    " ORDER BY c.COLUMN_TYPE, c.COLUMN_NUMBER, c.COLUMN_NAME";

/// Where a number has its point is the text's own matter.
bool IsText(const Field& field)
{
    using Kind = StorageType::Kind;
    return field.type.kind == Kind::Text || field.type.kind == Kind::CountedText || field.type.kind == Kind::ZeroText;
}

/// The form that keeps every digit of an exact number.
Shown ShownNumber(const Field& field)
{
    const std::size_t digits = DigitsOf(field);
    if (field.scale > 0 || digits == 0 || IsText(field))
        return digits > exactRealDigits ? Shown::Decimal : Shown::Real;
    return digits + static_cast<std::size_t>(-field.scale) > integerDigits ? Shown::Decimal : Shown::Integer;
}

std::string Sized(const char* type, std::int64_t size)
{
    return std::string(type) + "(" + std::to_string(size) + ")";
}

IntegerLimits LimitsOf(int bytes, bool isUnsigned)
{
    if (bytes >= 8)
        return {};
    const std::int64_t all = std::int64_t{1} << (8 * bytes);
    return isUnsigned ? IntegerLimits{0, all - 1} : IntegerLimits{-all / 2, all / 2 - 1};
}

/// Decimal digits as text, which compare by their value. As mere DECIMAL SQLite would compare them as floating point
/// numbers; that they are no text is told where columns are described.
void TakeDecimal(Column& column)
{
    column.digits = std::min<std::size_t>(DigitsOf(*column.field), mostDigits) +
                    static_cast<std::size_t>(-std::min(column.field->scale, 0));
    column.scale = std::max(column.field->scale, 0);
    column.declaration = std::string(decimalText) + "(" + std::to_string(column.digits) + ", " +
                         std::to_string(column.scale) + ") COLLATE TARNWICK_DECIMAL";
}

/// The column's form by its SQL type, and where the field's digits need more than that, by them.
void TakeSqlType(Column& column, const std::string& type, std::int64_t size, bool isUnsigned)
{
    struct Known {
        const char* name;
        Shown shown;
        const char* declaration;
        int integerBytes = 8;
    };
    static constexpr Known known[] = {
        {"BIT", Shown::Bit, "BIT"},
        {"TINYINT", Shown::Integer, "TINYINT", 1},
        {"SMALLINT", Shown::Integer, "SMALLINT", 2},
        {"INTEGER", Shown::Integer, "INTEGER", 4},
        {"BIGINT", Shown::Integer, "BIGINT"},
        {"DECIMAL", Shown::Decimal, "BIGINT"},
        {"NUMERIC", Shown::Decimal, "BIGINT"},
        {"REAL", Shown::Real, "DOUBLE"},
        {"FLOAT", Shown::Real, "DOUBLE"},
        {"DOUBLE", Shown::Real, "DOUBLE"},
        {"DATE", Shown::Date, "DATE"},
        {"TIME", Shown::Time, "TIME"},
        {"TIMESTAMP", Shown::Timestamp, "TIMESTAMP"},
        {"BINARY", Shown::Bytes, "BLOB"},
        {"VARBINARY", Shown::Bytes, "BLOB"},
        {"LONGVARBINARY", Shown::Bytes, "BLOB"},
    };
    const auto* const found = std::find_if(std::begin(known), std::end(known),
                                           [&](const Known& k) { return EqualIgnoringCase(k.name, type); });
    if (found == std::end(known)) {
        column.shown = Shown::Text;
        const auto needed = static_cast<std::int64_t>(column.field ? CharactersOf(*column.field) : 0);
        column.declaration = Sized("VARCHAR", std::max(std::clamp<std::int64_t>(size, 1, mostBytes), needed));
        return;
    }
    column.shown = found->shown;
    column.declaration = found->declaration;
    column.limits = LimitsOf(found->integerBytes, isUnsigned);
    if (column.shown == Shown::Bytes && column.field)
        column.declaration = Sized("BLOB", static_cast<std::int64_t>(column.field->length));
    const bool isExact = column.shown == Shown::Integer || column.shown == Shown::Decimal;
    if (!isExact || !column.field)
        return;
    if (column.shown == Shown::Decimal || column.field->scale > 0)
        column.shown = ShownNumber(*column.field);
    if (column.shown == Shown::Real)
        column.declaration = "DOUBLE";
    else if (column.shown == Shown::Decimal)
        TakeDecimal(column);
}

/// The field of a column's row; `problem` says what is wrong with it.
Field ReadField(const Query& row, std::string& problem)
{
    Field field;
    field.name = row.Text(8);
    field.typeName = row.Text(9);
    field.type = StorageType::Read(field.typeName, row.Text(15), row.Text(16));
    const std::int64_t offset = row.Number(10);
    const std::int64_t length = row.Number(11);
    const std::int64_t scale = row.Number(12);
    field.format = row.Text(13);
    field.isEncrypted = row.Number(14) != 0;
    if (row.IsNull(16))
        problem = "its field " + field.name + " has the storage type '" + field.typeName +
                  "', which the catalog does not know";
    else if (offset < 0 || offset > mostBytes || length < 1 || length > mostBytes)
        problem = "its field " + field.name + " has no place in the record: offset " + std::to_string(offset) +
                  ", length " + std::to_string(length);
    else if (scale < -32 || scale >= mostDigits)
        problem = "its field " + field.name + " has the scale " + std::to_string(scale);
    if (!problem.empty())
        return field;
    field.offset = static_cast<std::size_t>(offset);
    field.length = static_cast<std::size_t>(length);
    field.scale = static_cast<int>(scale);
    return field;
}

/// A display name changes nothing but the case of the name.
std::string Displayed(const std::string& name, const std::string& displayName)
{
    return EqualIgnoringCase(name, displayName) ? displayName : name;
}

Column ReadColumn(const Query& row)
{
    Column column;
    column.name = Displayed(row.Text(0), row.Text(1));
    column.remarks = row.Text(17);
    column.isVisible = row.Number(5) != 0;
    const std::int64_t special = row.Number(6);
    if (special >= 1 && special <= 8)
        column.special = static_cast<Special>(special);
    else if (row.IsNull(8))
        column.problem = "its field '" + row.Text(7) + "' is not in the file's definition";
    else
        column.field = ReadField(row, column.problem);
    TakeSqlType(column, row.Text(2), row.Number(row.Number(3) > 0 ? 3 : 4), row.Number(18) != 0);
    return column;
}

void ReadFile(const Query& row, const Surroundings& surroundings, TableDefinition& definition)
{
    if (row.IsNull(6)) {
        definition.problem = "its file definition '" + row.Text(2) + "' does not exist";
        return;
    }
    definition.organisation = row.Text(7);
    definition.recordType = row.Text(8);
    definition.openString = row.Text(9);
    const std::int64_t size = row.Number(10);
    if (size < 0 || size > mostBytes) {
        definition.problem = "its file definition has the record size " + std::to_string(size);
        return;
    }
    definition.recordSize = static_cast<std::size_t>(size);
    try {
        definition.path = DataFilePath(surroundings, row.Text(5), row.Text(3));
    } catch (const RecordError& error) {
        definition.problem = error.what();
    }
}

/// The definition of the table in the first row, if there is one.
std::optional<TableDefinition> ReadTable(sqlite3* engine, const Surroundings& surroundings, Query& row)
{
    if (!row.Next())
        return std::nullopt;
    const bool isBound = !surroundings.defaultDatabase.empty();
    TableDefinition definition;
    definition.database = row.Text(0);
    definition.table = row.Text(1);
    definition.sqlName = Displayed(definition.table, row.Text(12));
    if (!isBound)
        definition.sqlName = Displayed(definition.database, row.Text(11)) + "_" + definition.sqlName;
    definition.criteria = row.Text(4);
    definition.remarks = row.Text(13);
    ReadFile(row, surroundings, definition);
    Query columns(engine, columnQuestion, {definition.database, definition.table, row.Text(2)});
    while (columns.Next())
        definition.columns.push_back(ReadColumn(columns));
    if (std::none_of(definition.columns.begin(), definition.columns.end(),
                     [](const Column& column) { return column.isVisible; }) &&
        definition.problem.empty())
        definition.problem = "it has no columns";
    return definition;
}

} // namespace

std::string DataFilePath(const Surroundings& surroundings, const std::string& directory,
                         const std::string& specification)
{
    if (specification.empty())
        throw RecordError("it has no file specification");
    if (fs::path(specification).is_absolute())
        return specification;
    fs::path folder = directory;
    if (directory.ends_with(':')) {
        const std::string name = directory.substr(0, directory.size() - 1);
        folder = surroundings.directoryOf ? surroundings.directoryOf(name) : std::string();
        if (folder.empty())
            throw RecordError("the data source has no key " + name + " for the directory '" + directory + "'");
    }
    // As it is written: "link/.." is not where the link stands.
    return (fs::path(surroundings.catalogDirectory) / folder / specification).string();
}

std::optional<TableDefinition> ReadDefinition(sqlite3* engine, const Surroundings& surroundings, std::string_view name)
{
    const bool isBound = !surroundings.defaultDatabase.empty();
    const std::string condition = isBound ? "t.TABLE_NAME = ?1 COLLATE NOCASE AND t.DATABASE_NAME = ?2 COLLATE NOCASE"
                                          : "t.DATABASE_NAME || '_' || t.TABLE_NAME = ?1 COLLATE NOCASE";
    std::vector<std::string> parameters{std::string(name)};
    if (isBound)
        parameters.push_back(surroundings.defaultDatabase);
    Query row(engine, tableQuestion + condition + " ORDER BY t.DATABASE_NAME, t.TABLE_NAME LIMIT 1", parameters);
    return ReadTable(engine, surroundings, row);
}

std::optional<TableDefinition> ReadDefinition(sqlite3* engine, const Surroundings& surroundings, const TableKey& key)
{
    Query row(engine, tableQuestion + std::string("t.DATABASE_NAME = ?1 AND t.TABLE_NAME = ?2"),
              {key.database, key.table});
    return ReadTable(engine, surroundings, row);
}

} // namespace tarnwick::records
