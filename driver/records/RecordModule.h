#pragma once

#include "MappedFile.h"
#include "RecordCursor.h"
#include "TableDefinition.h"

#include <functional>
#include <memory>
#include <string>

struct sqlite3;

namespace tarnwick::records
{

/// What a data source wants for a field whose bytes are no value.
enum class BadFields { Error, Null };

/// A table over records on its way to SQLite: the definition with its record format and decoders made.
class RecordTable
{
public:
    /// `recent` takes the files that the table opens.
    RecordTable(TableDefinition definition, BadFields badFields, std::shared_ptr<RecentFiles> recent);

    const TableDefinition& Definition() const { return m_definition; }
    const RecordFormat& Format() const { return m_format; }
    BadFields WhenBad() const { return m_badFields; }

    /// Why the table cannot be read at all, in a whole sentence; empty if it can.
    const std::string& Problem() const { return m_problem; }

    /// The text of a table definition that shows the columns: with `forCriteria`, all of them and behind them the place
    /// and the number of the record; without, those that clients see.
    std::string Declaration(bool forCriteria) const;

    /// The columns by their position in the table that clients see.
    const std::vector<std::size_t>& Visible() const { return m_visible; }

    /// Why a column cannot be read; empty if it can.
    const std::string& Problem(std::size_t column) const { return m_columnProblems[column]; }

    /// The decoder of a column with a field that can be read; null for any other.
    const FieldDecoder* Decoder(std::size_t column) const
    {
        return column < m_decoders.size() ? m_decoders[column].get() : nullptr;
    }

    /// The name under which the criteria's own statement, and no other, reads all records.
    std::string UnfilteredName() const;
    static constexpr const char* unfilteredBeginning = "all records of ";

    /// Whether only some of the records are shown.
    bool HasCriteria() const;

    /// The statement that gives the places and numbers of the records that meet the criteria.
    std::string CriteriaStatement() const;

    /// The data file, mapped anew if another stands there, its size has changed or nobody has it any more; for one
    /// connection, whose statements SQLite lets in one after the other. Throws RecordError.
    std::shared_ptr<const MappedFile> File() const;

    /// The data file as `File` gave it last: what the criteria's own statement reads, so that it tells of the records
    /// which its table goes through, whatever another program adds meanwhile. Throws RecordError.
    std::shared_ptr<const MappedFile> LastFile() const;

private:
    TableDefinition m_definition;
    BadFields m_badFields;
    RecordFormat m_format;
    std::string m_problem;
    std::vector<std::size_t> m_visible;
    std::vector<std::string> m_columnProblems;
    std::vector<std::unique_ptr<FieldDecoder>> m_decoders;
    std::shared_ptr<RecentFiles> m_recent;
    mutable std::weak_ptr<const MappedFile> m_file;
};

/// Puts a statement into a form that SQLite reads as it is meant.
using Spelling = std::function<std::string(std::string)>;

/// Whose statements may read a table.
enum class Readers {
    All,
    Criteria, ///< only those that apply a table's criteria; to all others there is no such table
};

/// Makes `table` readable on a connection under its name, in place of what had that name; with a criteria, under its
/// unfiltered name too. Tables appear without a trace in the catalog's file: SQLite looks a name that it does not find
/// there up among its modules. Statements that are already prepared keep what they have. Gives an SQLite result code.
/// The criteria's own statement passes through `spelling` on its way to SQLite.
int Publish(sqlite3* engine, const std::shared_ptr<const RecordTable>& table, Readers readers, Spelling spelling);

/// Takes a name away again.
void Withdraw(sqlite3* engine, const std::string& name);

} // namespace tarnwick::records
