#include "RecordModule.h"

#include "Privileges.h"
#include "Query.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <optional>
#include <vector>

namespace tarnwick::records
{
namespace
{

/// The most files that one table keeps mapped for texts that were given out; more than one only where files change
/// while they are read.
constexpr std::size_t mostRetained = 64;

/// The longest text that is copied into the room that SQLite keeps for a cell, with a zero byte behind it: whoever
/// reads it needs one, and SQLite would look for new room each time to add it.
constexpr std::size_t mostCopied = 64;

/// The most bytes of a field that an error shows.
constexpr std::size_t shownBytes = 32;

/// What SQLite keeps for a name.
struct Published {
    std::shared_ptr<const RecordTable> table;
    bool unfiltered = false; ///< all records, for the criteria's own statement
};

struct VirtualTable : sqlite3_vtab {
    VirtualTable(sqlite3* connection, const Published& published)
        : sqlite3_vtab{}, engine(connection), table(published.table), unfiltered(published.unfiltered)
    {
    }

    sqlite3* engine;
    std::shared_ptr<const RecordTable> table;
    bool unfiltered;
    bool insideCriteria = false;
    std::vector<std::shared_ptr<const MappedFile>> retained;
};

struct Cursor : sqlite3_vtab_cursor {
    explicit Cursor(const RecordTable& table) : sqlite3_vtab_cursor{}, shown(table) {}

    const RecordTable& shown;
    std::shared_ptr<const MappedFile> file;
    std::optional<RecordCursor> records;
    std::optional<Query> chosen; ///< the records that meet the criteria
    bool isAtEnd = true;
    bool copiesText = false;
    std::string room;
};

VirtualTable& TableOf(sqlite3_vtab* table)
{
    return *static_cast<VirtualTable*>(table);
}

Cursor& CursorOf(sqlite3_vtab_cursor* cursor)
{
    return *static_cast<Cursor*>(cursor);
}

void Say(char** place, const std::string& message)
{
    sqlite3_free(*place);
    *place = sqlite3_mprintf("%s", message.c_str());
}

/// Runs what may throw on behalf of SQLite, which knows no exceptions.
template <typename Body>
int Guarded(sqlite3_vtab* table, Body body)
{
    try {
        body();
        return SQLITE_OK;
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    } catch (const std::exception& error) {
        Say(&table->zErrMsg, error.what());
        return SQLITE_ERROR;
    }
}

std::string InHexadecimal(std::string_view bytes)
{
    std::string text;
    char digits[4];
    for (const char byte : bytes.substr(0, shownBytes)) {
        std::snprintf(digits, sizeof digits, " %02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        text += digits;
    }
    return bytes.size() > shownBytes ? text + " ..." : text;
}

std::string PlaceOf(const Cursor& cursor)
{
    return "The data file '" + cursor.shown.Definition().path + "', record " + std::to_string(cursor.records->Number());
}

int Connect(sqlite3* engine, void* data, int, const char* const*, sqlite3_vtab** table, char** error)
{
    const auto& published = *static_cast<const Published*>(data);
    if (!published.table->Problem().empty()) {
        Say(error, published.table->Problem());
        return SQLITE_ERROR;
    }
    const OwnStatement own;
    const int answer = sqlite3_declare_vtab(engine, published.table->Declaration(published.unfiltered).c_str());
    if (answer != SQLITE_OK) {
        Say(error, "The columns of the table " + published.table->Definition().sqlName +
                       " make no table: " + sqlite3_errmsg(engine));
        return answer;
    }
    *table = new (std::nothrow) VirtualTable(engine, published);
    return *table ? SQLITE_OK : SQLITE_NOMEM;
}

int Disconnect(sqlite3_vtab* table)
{
    const std::unique_ptr<VirtualTable> ended(&TableOf(table));
    return SQLITE_OK;
}

/// Every use of a table reads it from its beginning.
int BestIndex(sqlite3_vtab*, sqlite3_index_info* plan)
{
    constexpr int guessedRecords = 100000;
    plan->estimatedCost = guessedRecords;
    plan->estimatedRows = guessedRecords;
    return SQLITE_OK;
}

int Open(sqlite3_vtab* table, sqlite3_vtab_cursor** cursor)
{
    *cursor = new (std::nothrow) Cursor(*TableOf(table).table);
    return *cursor ? SQLITE_OK : SQLITE_NOMEM;
}

int Close(sqlite3_vtab_cursor* cursor)
{
    const std::unique_ptr<Cursor> ended(&CursorOf(cursor));
    return SQLITE_OK;
}

/// Texts point into the mapping, and SQLite may hold them until the statement ends; so the table holds the file too.
void Retain(VirtualTable& table, Cursor& cursor)
{
    if (std::find(table.retained.begin(), table.retained.end(), cursor.file) != table.retained.end())
        return;
    cursor.copiesText = table.retained.size() >= mostRetained;
    if (!cursor.copiesText)
        table.retained.push_back(cursor.file);
}

/// Goes to the next record that meets the criteria.
void StepChosen(VirtualTable& table, Cursor& cursor)
{
    struct Inside {
        explicit Inside(bool& flag) : inside(flag) { inside = true; }
        ~Inside() { inside = false; }
        bool& inside;
    };
    const Inside guard(table.insideCriteria);
    cursor.isAtEnd = !cursor.chosen->Next();
    if (!cursor.isAtEnd)
        cursor.records->Seek(static_cast<std::uint64_t>(cursor.chosen->Number(0)),
                             static_cast<std::uint64_t>(cursor.chosen->Number(1)));
}

void StepRecord(Cursor& cursor)
{
    const RecordCursor::Step step = cursor.records->Next();
    cursor.isAtEnd = step == RecordCursor::Step::End;
    if (step == RecordCursor::Step::Error && cursor.shown.WhenBad() == BadFields::Error)
        throw RecordError(PlaceOf(cursor) + ": " + cursor.records->Reason() + ".");
}

void Step(VirtualTable& table, Cursor& cursor)
{
    if (cursor.chosen)
        StepChosen(table, cursor);
    else
        StepRecord(cursor);
}

Query Choose(const VirtualTable& table)
{
    const TableDefinition& definition = table.table->Definition();
    if (table.insideCriteria)
        throw RecordError("The criteria of the table " + definition.sqlName + " asks for the table itself.");
    try {
        return Query(table.engine, table.table->CriteriaStatement());
    } catch (const RecordError& error) {
        throw RecordError("The criteria of the table " + definition.sqlName + " cannot be applied: " + error.what());
    }
}

int Filter(sqlite3_vtab_cursor* base, int, const char*, int, sqlite3_value**)
{
    Cursor& cursor = CursorOf(base);
    VirtualTable& table = TableOf(base->pVtab);
    return Guarded(base->pVtab, [&] {
        cursor.chosen.reset();
        cursor.file = table.table->File();
        Retain(table, cursor);
        cursor.records.emplace(table.table->Format(), cursor.file->Content());
        const bool isFiltered = table.table->Definition().criteria.find_first_not_of(' ') != std::string::npos;
        if (isFiltered && !table.unfiltered)
            cursor.chosen.emplace(Choose(table));
        Step(table, cursor);
    });
}

int Next(sqlite3_vtab_cursor* base)
{
    return Guarded(base->pVtab, [&] { Step(TableOf(base->pVtab), CursorOf(base)); });
}

int IsAtEnd(sqlite3_vtab_cursor* cursor)
{
    return CursorOf(cursor).isAtEnd ? 1 : 0;
}

void GiveText(sqlite3_context* context, std::string_view text, sqlite3_destructor_type lifetime)
{
    if (text.size() > mostCopied || text.find('\0') != std::string_view::npos)
        return sqlite3_result_text64(context, text.data(), text.size(), lifetime, SQLITE_UTF8);
    char terminated[mostCopied + 1];
    terminated[text.copy(terminated, mostCopied)] = '\0';
    sqlite3_result_text(context, terminated, -1, SQLITE_TRANSIENT);
}

void Give(sqlite3_context* context, const Value& value, bool copiesText)
{
    const auto lifetime = value.inRecord && !copiesText ? SQLITE_STATIC : SQLITE_TRANSIENT;
    switch (value.kind) {
    case Value::Kind::Null:
        return sqlite3_result_null(context);
    case Value::Kind::Integer:
        return sqlite3_result_int64(context, value.integer);
    case Value::Kind::Real:
        return sqlite3_result_double(context, value.real);
    case Value::Kind::Text:
        return GiveText(context, value.text, lifetime);
    case Value::Kind::Bytes:
        return sqlite3_result_blob64(context, value.text.data(), value.text.size(), lifetime);
    }
}

/// The columns that are no field. A plain file has no indexes; a table over it no order of its own.
void GiveSpecial(const Cursor& cursor, const Column& column, sqlite3_context* context)
{
    switch (column.special) {
    case Special::RecordFileAddress: {
        char text[24];
        std::snprintf(text, sizeof text, "%014llu", static_cast<unsigned long long>(cursor.records->Position()));
        return sqlite3_result_text(context, text, -1, SQLITE_TRANSIENT);
    }
    case Special::RowId:
    case Special::RelativeNumber:
        return sqlite3_result_int64(context, static_cast<sqlite3_int64>(cursor.records->Number()));
    default:
        return sqlite3_result_null(context);
    }
}

void Refuse(sqlite3_context* context, const std::string& message)
{
    sqlite3_result_error(context, message.c_str(), static_cast<int>(message.size()));
}

void GiveField(Cursor& cursor, const Column& column, const FieldDecoder& decoder, sqlite3_context* context)
{
    const std::string_view record = cursor.records->Bytes();
    const Field& field = *column.field;
    if (field.offset >= record.size())
        return sqlite3_result_null(context);
    const std::string_view bytes = record.substr(field.offset, field.length);
    Value value;
    const char* const reason = bytes.size() < field.length && !decoder.MayEndEarly()
                                   ? "the record ends inside the field"
                                   : decoder.Decode(bytes, value, cursor.room);
    if (!reason)
        return Give(context, value, cursor.copiesText);
    if (cursor.shown.WhenBad() == BadFields::Null)
        return sqlite3_result_null(context);
    Refuse(context, PlaceOf(cursor) + ", field " + field.name + ": the bytes" + InHexadecimal(bytes) +
                        " cannot be read as " + field.typeName + ": " + reason + ".");
}

/// The place of a record, for the criteria's own statement.
void GivePlace(const Cursor& cursor, std::size_t which, sqlite3_context* context)
{
    const std::uint64_t place = which == 0 ? cursor.records->Position() : cursor.records->Number();
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(place));
}

int GiveColumn(sqlite3_vtab_cursor* base, sqlite3_context* context, int number)
{
    Cursor& cursor = CursorOf(base);
    const RecordTable& table = cursor.shown;
    const auto& columns = table.Definition().columns;
    auto position = static_cast<std::size_t>(number);
    if (!TableOf(base->pVtab).unfiltered)
        position = table.Visible()[position];
    if (position >= columns.size()) {
        GivePlace(cursor, position - columns.size(), context);
        return SQLITE_OK;
    }
    const Column& column = columns[position];
    try {
        if (const FieldDecoder* decoder = table.Decoder(position))
            GiveField(cursor, column, *decoder, context);
        else if (column.problem.empty())
            GiveSpecial(cursor, column, context);
        else
            Refuse(context, "The column " + column.name + " of the table " + table.Definition().sqlName +
                                " cannot be read: " + column.problem + ".");
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
    return SQLITE_OK;
}

int GiveRowId(sqlite3_vtab_cursor* cursor, sqlite3_int64* number)
{
    *number = static_cast<sqlite3_int64>(CursorOf(cursor).records->Number());
    return SQLITE_OK;
}

sqlite3_module MakeModule()
{
    sqlite3_module module{};
    module.xConnect = Connect;
    module.xBestIndex = BestIndex;
    module.xDisconnect = Disconnect;
    module.xOpen = Open;
    module.xClose = Close;
    module.xFilter = Filter;
    module.xNext = Next;
    module.xEof = IsAtEnd;
    module.xColumn = GiveColumn;
    module.xRowid = GiveRowId;
    return module;
}

void Forget(void* data)
{
    const std::unique_ptr<Published> ended(static_cast<Published*>(data));
}

int PublishAs(sqlite3* engine, const std::string& name, Published published)
{
    static const sqlite3_module module = MakeModule();
    auto kept = std::make_unique<Published>(std::move(published));
    // SQLite forgets what it is given also when it fails.
    return sqlite3_create_module_v2(engine, name.c_str(), &module, kept.release(), Forget);
}

/// The digits of a decimal number's text without its sign, its point and needless zeros.
struct DigitText {
    bool negative;
    std::string_view whole;
    std::string_view fraction;
};

DigitText Split(std::string_view text)
{
    DigitText digits{text.starts_with('-'), {}, {}};
    text.remove_prefix(digits.negative ? 1 : 0);
    const std::size_t point = std::min(text.find('.'), text.size());
    digits.whole = text.substr(0, point);
    digits.whole.remove_prefix(std::min(digits.whole.find_first_not_of('0'), digits.whole.size()));
    digits.fraction = text.substr(std::min(point + 1, text.size()));
    digits.fraction = digits.fraction.substr(0, digits.fraction.find_last_not_of('0') + 1);
    return digits;
}

int CompareDecimals(void*, int leftSize, const void* left, int rightSize, const void* right)
{
    const DigitText a = Split({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)});
    const DigitText b = Split({static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
    if (a.negative != b.negative)
        return a.negative ? -1 : 1;
    int order =
        a.whole.size() != b.whole.size() ? (a.whole.size() < b.whole.size() ? -1 : 1) : a.whole.compare(b.whole);
    if (order == 0)
        order = a.fraction.compare(b.fraction);
    return a.negative ? -order : order;
}

} // namespace

int Publish(sqlite3* engine, const std::shared_ptr<const RecordTable>& table)
{
    const int answer = PublishAs(engine, table->UnfilteredName(), {table, true});
    return answer == SQLITE_OK ? PublishAs(engine, table->Definition().sqlName, {table, false}) : answer;
}

void Withdraw(sqlite3* engine, const std::string& name)
{
    sqlite3_create_module_v2(engine, name.c_str(), nullptr, nullptr, nullptr);
}

void RegisterCollation(sqlite3* engine)
{
    sqlite3_create_collation(engine, "TARNWICK_DECIMAL", SQLITE_UTF8, nullptr, CompareDecimals);
}

} // namespace tarnwick::records
