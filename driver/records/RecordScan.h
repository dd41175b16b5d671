#pragma once

#include "KeyIndex.h"
#include "Query.h"
#include "RecordModule.h"

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

struct sqlite3;
struct sqlite3_value;

namespace tarnwick::records
{

/// What the scans of one table on one connection share.
struct ScannedTable {
    /// Records asked for by their value in one column. The first time is a reading from the beginning like any other,
    /// the second makes the index.
    struct LookUps {
        bool hasBeenRead = false;
        std::shared_ptr<const MappedFile> file; ///< of which the index is
        std::optional<KeyIndex> index;
    };

    sqlite3* engine;
    std::shared_ptr<const RecordTable> table;
    bool unfiltered; ///< all records, whatever the criteria says: for the criteria's own statement
    Spelling spelling;
    bool insideCriteria = false;
    int scans = 0;
    std::shared_ptr<const MappedFile> file;                          ///< what was read last, while there are scans
    std::map<std::pair<std::size_t, KeyIndex::By>, LookUps> lookUps; ///< by column, while there are scans
};

/// A walk through the records that a table shows.
class RecordScan
{
public:
    explicit RecordScan(ScannedTable& table);
    ~RecordScan();
    RecordScan(const RecordScan&) = delete;
    RecordScan& operator=(const RecordScan&) = delete;

    /// Goes to the first record. Throws RecordError, as `Next` does, for what is wrong with file, record or criteria.
    void Begin();

    /// The same for the records that may have a value in a column.
    void BeginWith(std::size_t column, sqlite3_value* value);

    /// The same, but records with another text in a column than the value are passed over where they stand: of what
    /// nobody asked for, nothing is copied. Some may be gone to all the same.
    void BeginAtEqual(std::size_t column, sqlite3_value* value);

    void Next();
    bool IsAtEnd() const { return m_isAtEnd; }

    const RecordTable& Table() const { return *m_table.table; }
    const RecordCursor& Record() const { return *m_records; }

    /// Which record of which file it is, as an error begins.
    std::string Place() const;

    /// Decodes a field of the record. Null, or why its bytes are no value. What is decoded holds until the next call.
    /// Throws RecordError if the file was cut.
    const char* Decode(const FieldDecoder& field, Value& value)
    {
        const std::string_view bytes = field.In(m_records->Bytes());
        const char* const reason =
            field.IsWhole(bytes) ? field.Decode(bytes, value, m_room) : DecodePart(field, bytes, value);
        if (m_file->HasZeros())
            RefuseCutFile(true);
        return reason;
    }

private:
    const char* DecodePart(const FieldDecoder& field, std::string_view bytes, Value& value);
    void Step();
    bool HasOtherText();
    void StepRecord();
    void StepFound();
    void StepChosen();
    void GoTo(const KeyIndex::Place& place);
    void RefuseCutFile(bool now) const;
    void Open(std::shared_ptr<const MappedFile> file);
    void BeginAll();
    Query Choose() const;
    std::optional<KeyIndex> MakeIndex(std::size_t column, KeyIndex::By by) const;
    const KeyIndex* IndexOf(std::size_t column, KeyIndex::By by);

    ScannedTable& m_table;
    std::shared_ptr<const MappedFile> m_file;
    std::optional<RecordCursor> m_records;
    std::optional<Query> m_chosen;                      ///< the records that meet the criteria
    std::optional<std::deque<KeyIndex::Place>> m_found; ///< those of an index that are not read yet
    const FieldDecoder* m_soughtField = nullptr;        ///< of the column whose text is asked for, if one is
    std::string m_sought;
    bool m_isAtEnd = true;
    bool m_isCut = false; ///< the record, by the file's end
    std::string m_room;
};

} // namespace tarnwick::records
