#include "DataFiles.h"

#include "FieldEncoder.h"
#include "Query.h"
#include "RecordWriter.h"
#include "Text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace tarnwick::samples
{
namespace
{

namespace fs = std::filesystem;

/// The data part of an indexed file has a suffix that its specification may leave out.
std::string PathOf(const records::TableDefinition& definition)
{
    const bool isBare =
        EqualIgnoringCase(definition.organisation, "INDEXED") && fs::path(definition.path).extension().empty();
    return definition.path + (isBare ? ".dat" : "");
}

std::vector<FieldEncoder> EncodersOf(sqlite3* catalog, const std::string& fileName,
                                     const std::shared_ptr<const records::CodePage>& page)
{
    std::vector<FieldEncoder> encoders;
    records::Query row(catalog,
                       "SELECT f.FIELD_NAME, f.LOCAL_TYPE_NAME, l.SQL_TYPE_NAME, l.ATTRIBUTES, f.OFFSET, f.LENGTH,"
                       "       f.SCALE, f.FORMAT, f.ENCRYPTED"
                       "  FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME"
                       " WHERE f.FILE_NAME = ?1 ORDER BY f.FIELD_NUMBER",
                       {fileName});
    while (row.Next()) {
        records::Field field;
        field.name = row.Text(0);
        field.typeName = row.Text(1);
        field.type = records::StorageType::Read(row.Text(1), row.Text(2), row.Text(3));
        field.offset = static_cast<std::size_t>(row.Number(4));
        field.length = static_cast<std::size_t>(row.Number(5));
        field.scale = static_cast<int>(row.Number(6));
        field.format = row.Text(7);
        field.isEncrypted = row.Number(8) != 0;
        encoders.emplace_back(field, page);
    }
    return encoders;
}

/// One record of the file, put together field by field.
class Record
{
public:
    explicit Record(std::size_t size) : m_bytes(size, '\0'), m_taken(size, false) {}

    void Put(const records::Field& field, const std::string& bytes)
    {
        const std::size_t end = field.offset + field.length;
        if (end > m_bytes.size())
            throw EncodingError("the field ends behind the record");
        if (std::find(Place(field.offset), Place(end), true) != Place(end))
            throw EncodingError("another field has a value in the same place");
        std::fill(Place(field.offset), Place(end), true);
        m_bytes.replace(field.offset, field.length, bytes);
        m_end = std::max(m_end, end);
    }

    const std::string& Whole() const { return m_bytes; }
    std::string UpToItsLastField() const { return m_bytes.substr(0, m_end); }

private:
    std::vector<bool>::iterator Place(std::size_t position)
    {
        return m_taken.begin() + static_cast<std::ptrdiff_t>(position);
    }

    std::string m_bytes;
    std::vector<bool> m_taken;
    std::size_t m_end = 0;
};

std::string Encode(const records::Query& row, const std::vector<FieldEncoder>& encoders,
                   const records::TableDefinition& definition)
{
    const bool isVariable = EqualIgnoringCase(definition.recordType, "VARIABLE");
    Record record(definition.recordSize);
    for (std::size_t i = 0; i < encoders.size(); ++i) {
        const records::Field& field = encoders[i].Target();
        const int cell = static_cast<int>(i) + 1;
        const bool isNull = row.IsNull(cell);
        if (isNull && isVariable)
            continue;
        try {
            record.Put(field, encoders[i].Encode(isNull ? std::nullopt : SourceValue(row.Text(cell))));
        } catch (const EncodingError& error) {
            throw EncodingError("field " + field.name + ", '" + (isNull ? "null" : row.Text(cell)) +
                                "': " + error.what());
        }
    }
    return isVariable ? record.UpToItsLastField() : record.Whole();
}

} // namespace

std::string RowsOf(const std::string& fileName)
{
    std::string name = fileName;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

std::vector<DataFile> DataFilesOf(sqlite3* catalog, const records::Surroundings& surroundings)
{
    std::vector<DataFile> files;
    records::Query tables(catalog, "SELECT DATABASE_NAME || '_' || TABLE_NAME, FILE_NAME FROM TW_TABLE"
                                   " WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME, TABLE_NAME");
    while (tables.Next()) {
        auto definition = records::ReadDefinition(catalog, surroundings, tables.Text(0));
        if (!definition || !definition->problem.empty())
            throw records::RecordError("The table " + tables.Text(0) + " cannot be read: " +
                                       (definition ? definition->problem : "it has no definition") + ".");
        const std::string path = PathOf(*definition);
        if (std::none_of(files.begin(), files.end(), [&](const DataFile& file) { return file.path == path; }))
            files.push_back({path, tables.Text(1), std::move(*definition)});
    }
    return files;
}

std::string ContentOf(sqlite3* catalog, const DataFile& file)
{
    const records::TableDefinition& definition = file.definition;
    std::int64_t number = 0;
    try {
        const auto format = records::RecordFormat::Read(definition.organisation, definition.recordType,
                                                        definition.openString, definition.recordSize);
        const std::vector<FieldEncoder> encoders = EncodersOf(catalog, file.fileName, format.page);
        std::string cells = "rowid";
        for (const FieldEncoder& encoder : encoders)
            cells += ", \"" + RowsOf(encoder.Target().name) + '"';
        RecordWriter writer(format);
        records::Query rows(catalog, "SELECT " + cells + " FROM temp.\"" + RowsOf(file.fileName) + "\" ORDER BY rowid");
        while (rows.Next()) {
            for (++number; number < rows.Number(0); ++number)
                writer.AddEmpty();
            writer.Add(Encode(rows, encoders, definition));
        }
        return writer.Content();
    } catch (const std::runtime_error& error) {
        throw std::runtime_error("The data file " + file.fileName + ", record " + std::to_string(number) + ": " +
                                 error.what());
    }
}

void WriteWhole(const std::string& path, const std::string& content)
{
    fs::create_directories(fs::path(path).parent_path());
    const std::string unfinished = path + ".unfinished";
    std::ofstream stream(unfinished, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream)
        throw std::runtime_error("Cannot write " + unfinished);
    fs::rename(unfinished, path);
}

} // namespace tarnwick::samples
