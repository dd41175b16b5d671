#include "RecordModule.h"

#include "Rewrite.h"
#include "Text.h"

#include <filesystem>

namespace tarnwick::records
{
namespace
{

bool IsFile(const std::string& path)
{
    std::error_code ignored;
    const std::filesystem::file_type type = std::filesystem::status(path, ignored).type();
    return type != std::filesystem::file_type::not_found && type != std::filesystem::file_type::directory;
}

/// The data file of an indexed file may be named without its suffix.
std::string ExistingPath(const TableDefinition& definition)
{
    if (!EqualIgnoringCase(definition.organisation, "INDEXED") || IsFile(definition.path))
        return definition.path;
    const std::string withSuffix = definition.path + ".dat";
    return IsFile(withSuffix) ? withSuffix : definition.path;
}

/// Why a field cannot stand in records of a format; empty if it can. Records of varying length may end anywhere.
std::string PlaceProblem(const Field& field, const RecordFormat& format)
{
    if (!format.HasFixedSize() || field.offset + field.length <= format.recordSize)
        return {};
    return "its field " + field.name + " ends behind the record's " + std::to_string(format.recordSize) + " bytes";
}

} // namespace

RecordTable::RecordTable(TableDefinition definition, BadFields badFields, std::shared_ptr<RecentFiles> recent)
    : m_definition(std::move(definition)), m_badFields(badFields), m_recent(std::move(recent))
{
    std::string reason = m_definition.problem;
    try {
        if (reason.empty())
            m_format = RecordFormat::Read(m_definition.organisation, m_definition.recordType, m_definition.openString,
                                          m_definition.recordSize);
    } catch (const RecordError& error) {
        reason = error.what();
    }
    if (!reason.empty())
        m_problem = "The table " + m_definition.sqlName + " cannot be read: " + reason + ".";
    for (std::size_t i = 0; i < m_definition.columns.size(); ++i) {
        const Column& column = m_definition.columns[i];
        if (column.isVisible)
            m_visible.push_back(i);
        m_columnProblems.push_back(column.problem.empty() && column.field ? PlaceProblem(*column.field, m_format)
                                                                          : column.problem);
        m_decoders.push_back(
            column.field && m_columnProblems.back().empty()
                ? std::make_unique<FieldDecoder>(*column.field, column.shown, m_format.page, column.limits)
                : nullptr);
        if (m_decoders.back() && m_decoders.back()->Problem()) {
            m_columnProblems.back() = m_decoders.back()->Problem();
            m_decoders.back().reset();
        }
    }
}

std::string RecordTable::Declaration(bool forCriteria) const
{
    std::string text = "CREATE TABLE records (";
    const char* separator = "";
    for (const Column& column : m_definition.columns) {
        if (!column.isVisible && !forCriteria)
            continue;
        text += separator + QuotedName(column.name) + " " + column.declaration;
        separator = ", ";
    }
    return text + (forCriteria ? ", \"record position\" BIGINT, \"record number\" BIGINT)" : ")");
}

std::string RecordTable::UnfilteredName() const
{
    return unfilteredBeginning + m_definition.sqlName;
}

bool RecordTable::HasCriteria() const
{
    return m_definition.criteria.find_first_not_of(" \t\r\n") != std::string::npos;
}

std::string RecordTable::CriteriaStatement() const
{
    return Rewrite("SELECT \"record position\", \"record number\" FROM " + QuotedName(UnfilteredName()) + " AS " +
                   QuotedName(m_definition.JoinedName()) + " WHERE " + m_definition.criteria);
}

std::shared_ptr<const MappedFile> RecordTable::File() const
{
    const auto isStillFound = [&](const MappedFile& file) {
        return file.Path() == m_definition.path || !IsFile(m_definition.path);
    };
    if (auto file = m_file.lock(); file && isStillFound(*file) && file->IsCurrent())
        return file;
    const std::string path = ExistingPath(m_definition);
    auto file = m_recent->Find(path);
    if (!file) {
        file = MappedFile::Open(path);
        m_recent->Keep(file);
    }
    m_file = file;
    return file;
}

std::shared_ptr<const MappedFile> RecordTable::LastFile() const
{
    const auto file = m_file.lock();
    return file ? file : File();
}

} // namespace tarnwick::records
