#include "RecordScan.h"

#include <sqlite3.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace tarnwick::records
{
namespace
{

/// The most records that an index is made of.
constexpr std::size_t mostIndexed = 8'000'000;

/// The most records that are passed over in one step.
constexpr int mostPassed = 10'000;

/// After so many records it is asked whether their file was cut: reading one takes less time than the question.
constexpr std::uint64_t askedEach = 64;

} // namespace

RecordScan::RecordScan(ScannedTable& table) : m_table(table)
{
    ++m_table.scans;
}

RecordScan::~RecordScan()
{
    if (--m_table.scans > 0)
        return;
    m_table.lookUps.clear();
    m_table.file.reset();
}

void RecordScan::Begin()
{
    Open(m_table.unfiltered ? Table().LastFile() : Table().File());
    BeginAll();
}

void RecordScan::BeginWith(std::size_t column, sqlite3_value* value)
{
    Open(m_table.unfiltered ? Table().LastFile() : Table().File());
    if (sqlite3_value_type(value) == SQLITE_NULL) {
        m_isAtEnd = true;
        return;
    }
    const KeyIndex::Wanted wanted = KeyIndex::WantedBy(Table().Definition().columns[column].shown, value);
    const KeyIndex* const index = IndexOf(column, wanted.by);
    if (!index)
        return BeginAll();
    const auto places = index->Find(wanted);
    m_found.emplace(places.begin(), places.end());
    Next();
}

void RecordScan::BeginAtEqual(std::size_t column, sqlite3_value* value)
{
    Open(m_table.unfiltered ? Table().LastFile() : Table().File());
    if (sqlite3_value_type(value) == SQLITE_TEXT) {
        m_soughtField = Table().Decoder(column);
        m_sought.assign(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                        static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    BeginAll();
}

void RecordScan::Next()
{
    Step();
    // SQLite looks between two steps whether it was interrupted.
    for (int passed = 0; m_soughtField && passed < mostPassed && !m_isAtEnd && HasOtherText(); ++passed)
        Step();
}

bool RecordScan::HasOtherText()
{
    Value value;
    return Decode(*m_soughtField, value) == nullptr && (value.kind != Value::Kind::Text || value.text != m_sought);
}

void RecordScan::Step()
{
    if (!m_found && !m_chosen)
        return StepRecord();
    if (m_found)
        StepFound();
    else
        StepChosen();
    RefuseCutFile(m_isAtEnd);
}

std::string RecordScan::Place() const
{
    return "The data file '" + m_file->Path() + "', record " + std::to_string(m_records->Number());
}

const char* RecordScan::DecodePart(const FieldDecoder& field, std::string_view bytes, Value& value)
{
    if (!(m_isCut ? field.MayBeCut() : field.MayEndEarly()))
        return "the record ends inside the field";
    return m_isCut ? field.DecodeBeginning(bytes, value, m_room) : field.Decode(bytes, value, m_room);
}

void RecordScan::StepRecord()
{
    using Step = RecordCursor::Step;
    const Step step = m_records->Next();
    m_isCut = step == Step::Short;
    m_isAtEnd = step == Step::End || (m_isCut && m_records->MayBeEmpty());
    if (step != Step::Record || m_records->Number() % askedEach == 0)
        RefuseCutFile(step != Step::Record);
    if (step == Step::Corrupt || (m_isCut && Table().WhenBad() == BadFields::Error))
        throw RecordError(Place() + ": " + m_records->Reason() + ".");
}

void RecordScan::StepFound()
{
    m_isAtEnd = m_found->empty();
    if (m_isAtEnd)
        return;
    const KeyIndex::Place place = m_found->front();
    m_found->pop_front();
    GoTo(place);
}

void RecordScan::StepChosen()
{
    struct Inside {
        explicit Inside(bool& flag) : inside(flag) { inside = true; }
        ~Inside() { inside = false; }
        bool& inside;
    };
    const Inside guard(m_table.insideCriteria);
    m_isAtEnd = !m_chosen->Next();
    if (!m_isAtEnd)
        GoTo({static_cast<std::uint64_t>(m_chosen->Number(0)), static_cast<std::uint64_t>(m_chosen->Number(1))});
}

void RecordScan::GoTo(const KeyIndex::Place& place)
{
    using Step = RecordCursor::Step;
    const Step step = m_records->Seek(place.position, place.number);
    m_isCut = step == Step::Short;
    const bool isRecord = step == Step::Record || (m_isCut && Table().WhenBad() == BadFields::Null);
    if (isRecord && m_records->Position() == place.position)
        return;
    RefuseCutFile(true);
    throw RecordError("The data file '" + m_file->Path() + "' was changed while it was read.");
}

void RecordScan::RefuseCutFile(bool now) const
{
    if (!m_file->WasCut(now))
        return;
    const std::string what = m_file->HasKeptItsContent() ? std::string("cannot be read: ") + std::strerror(EIO) + "."
                                                         : std::string("was cut while it was read.");
    throw RecordError("The data file '" + m_file->Path() + "' " + what);
}

void RecordScan::Open(std::shared_ptr<const MappedFile> file)
{
    m_chosen.reset();
    m_found.reset();
    m_soughtField = nullptr;
    m_file = std::move(file);
    m_table.file = m_file;
    m_records.emplace(Table().Format(), m_file->Content());
}

void RecordScan::BeginAll()
{
    if (Table().HasCriteria() && !m_table.unfiltered)
        m_chosen.emplace(Choose());
    Next();
}

Query RecordScan::Choose() const
{
    const std::string& name = Table().Definition().sqlName;
    if (m_table.insideCriteria)
        throw RecordError("The criteria of the table " + name + " asks for the table itself.");
    try {
        return Query(m_table.engine, m_table.spelling(Table().CriteriaStatement()));
    } catch (const RecordError& error) {
        throw RecordError("The criteria of the table " + name + " cannot be applied: " + error.what());
    }
}

std::optional<KeyIndex> RecordScan::MakeIndex(std::size_t column, KeyIndex::By by) const
{
    KeyIndex index(Table().Definition().columns[column].shown, by);
    const FieldDecoder& field = *Table().Decoder(column);
    RecordScan scan(m_table);
    scan.Open(m_file);
    for (scan.BeginAll(); !scan.IsAtEnd(); scan.Next()) {
        const KeyIndex::Place place = {scan.Record().Position(), scan.Record().Number()};
        Value value;
        if (scan.Decode(field, value) != nullptr)
            index.AddUnread(place);
        else
            index.Add(value, place);
        if (index.Size() > mostIndexed)
            return std::nullopt;
    }
    index.Sort();
    return index;
}

const KeyIndex* RecordScan::IndexOf(std::size_t column, KeyIndex::By by)
{
    ScannedTable::LookUps& lookUps = m_table.lookUps[{column, by}];
    if (!std::exchange(lookUps.hasBeenRead, true))
        return nullptr;
    if (lookUps.file != m_file) {
        lookUps.index = MakeIndex(column, by);
        lookUps.file = m_file;
    }
    return lookUps.index ? &*lookUps.index : nullptr;
}

} // namespace tarnwick::records
