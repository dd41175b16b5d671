#include "RecordModule.h"

#include "OwnStatement.h"
#include "RecordScan.h"
#include "Text.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>

namespace tarnwick::records
{
namespace
{

/// The longest text that is given with a zero byte behind it: whoever reads it needs one, and SQLite would look for new
/// room each time to add it.
constexpr std::size_t mostTerminated = 64;

/// Plans, as SQLite carries them from `BestIndex` to `Filter`.
constexpr int readAll = 0;
constexpr int lookUpFirst = 1;    ///< the first column; the others follow
constexpr int passOverFirst = -1; ///< the same; the others go before

/// The most bytes of a field that an error shows.
constexpr std::size_t shownBytes = 32;

/// What SQLite keeps for a name.
struct Published {
    std::shared_ptr<const RecordTable> table;
    bool unfiltered = false; ///< all records, for the criteria's own statement
    Readers readers = Readers::All;
    Spelling spelling;
};

struct VirtualTable : sqlite3_vtab {
    VirtualTable(sqlite3* engine, const Published& published)
        : sqlite3_vtab{}, scanned{engine, published.table, published.unfiltered, published.spelling, false, 0, {}, {}},
          readers(published.readers)
    {
    }

    ScannedTable scanned;
    Readers readers;
};

struct Cursor : sqlite3_vtab_cursor {
    explicit Cursor(ScannedTable& table) : sqlite3_vtab_cursor{}, scan(table) {}

    RecordScan scan;
};

ScannedTable& TableOf(sqlite3_vtab* table)
{
    return static_cast<VirtualTable*>(table)->scanned;
}

RecordScan& ScanOf(sqlite3_vtab_cursor* cursor)
{
    return static_cast<Cursor*>(cursor)->scan;
}

/// The column of the definition behind a column that SQLite numbers.
std::size_t ColumnAt(const ScannedTable& table, int number)
{
    const auto position = static_cast<std::size_t>(number);
    return table.unfiltered ? position : table.table->Visible()[position];
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
    for (const char byte : bytes.substr(0, shownBytes)) {
        text += ' ';
        AppendHexadecimal(byte, text);
    }
    return bytes.size() > shownBytes ? text + " ..." : text;
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
    const std::unique_ptr<VirtualTable> ended(static_cast<VirtualTable*>(table));
    return SQLITE_OK;
}

/// The column with a field that a constraint holds to be equal to something; null for any other constraint.
const Column* EqualColumn(const ScannedTable& table, const sqlite3_index_info& plan, int which)
{
    const auto& constraint = plan.aConstraint[which];
    if (!constraint.usable || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ || constraint.iColumn < 0)
        return nullptr;
    const std::size_t column = ColumnAt(table, constraint.iColumn);
    return table.table->Decoder(column) ? &table.table->Definition().columns[column] : nullptr;
}

/// What a column is compared with, where that is known already; null where it is not.
sqlite3_value* Constant(sqlite3_index_info& plan, int which)
{
    sqlite3_value* constant = nullptr;
    return sqlite3_vtab_rhs_value(&plan, which, &constant) == SQLITE_OK ? constant : nullptr;
}

/// Whether the records with a value in a column can be looked up for a comparison.
bool CanLookUp(const ScannedTable& table, sqlite3_index_info& plan, int which)
{
    const Column* const column = EqualColumn(table, plan, which);
    if (!column)
        return false;
    // What is compared with a constant, or with the few of a list, is best read once and from the beginning. A long
    // number has a collation of its own, and so SQLite does not tell that it is a constant.
    const std::string_view asked = sqlite3_vtab_collation(&plan, which);
    if (Constant(plan, which) || sqlite3_vtab_in(&plan, which, -1) != 0 || EqualIgnoringCase(asked, "TARNWICK_LITERAL"))
        return false;
    const char* const collation = KeyIndex::CollationOf(column->shown);
    return !collation || EqualIgnoringCase(collation, asked);
}

/// Whether the records with another text than a constant one can be passed over.
bool CanPassOver(const ScannedTable& table, sqlite3_index_info& plan, int which)
{
    const Column* const column = EqualColumn(table, plan, which);
    sqlite3_value* const constant = column ? Constant(plan, which) : nullptr;
    return constant && column->shown == Shown::Text && sqlite3_value_type(constant) == SQLITE_TEXT &&
           EqualIgnoringCase(sqlite3_vtab_collation(&plan, which), "BINARY");
}

/// A table is read from its beginning, all of it or without records of another text than a constant one, or the records
/// with a value in one column are looked up; and SQLite makes the comparison once more.
int BestIndex(sqlite3_vtab* base, sqlite3_index_info* plan)
{
    constexpr int guessedRecords = 100000;
    constexpr int guessedEqual = 10;
    const ScannedTable& table = TableOf(base);
    plan->estimatedCost = guessedRecords;
    plan->estimatedRows = guessedRecords;
    const auto go = [&](int way, int which) {
        plan->idxNum = way;
        plan->aConstraintUsage[which].argvIndex = 1;
    };
    for (int i = 0; i < plan->nConstraint; ++i)
        if (CanLookUp(table, *plan, i)) {
            go(lookUpFirst + plan->aConstraint[i].iColumn, i);
            plan->estimatedCost = guessedEqual;
            plan->estimatedRows = guessedEqual;
            return SQLITE_OK;
        }
    for (int i = 0; i < plan->nConstraint; ++i)
        if (CanPassOver(table, *plan, i)) {
            go(passOverFirst - plan->aConstraint[i].iColumn, i);
            return SQLITE_OK;
        }
    return SQLITE_OK;
}

int Open(sqlite3_vtab* table, sqlite3_vtab_cursor** cursor)
{
    *cursor = new (std::nothrow) Cursor(TableOf(table));
    return *cursor ? SQLITE_OK : SQLITE_NOMEM;
}

int Close(sqlite3_vtab_cursor* cursor)
{
    const std::unique_ptr<Cursor> ended(static_cast<Cursor*>(cursor));
    return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* cursor, int plan, const char*, int, sqlite3_value** values)
{
    const ScannedTable& table = TableOf(cursor->pVtab);
    return Guarded(cursor->pVtab, [&] {
        if (static_cast<VirtualTable*>(cursor->pVtab)->readers == Readers::Criteria && !OwnStatement::IsRunning())
            throw RecordError("no such table: " +
                              (table.unfiltered ? table.table->UnfilteredName() : table.table->Definition().sqlName));
        if (plan == readAll)
            ScanOf(cursor).Begin();
        else if (plan >= lookUpFirst)
            ScanOf(cursor).BeginWith(ColumnAt(table, plan - lookUpFirst), values[0]);
        else
            ScanOf(cursor).BeginAtEqual(ColumnAt(table, passOverFirst - plan), values[0]);
    });
}

int Next(sqlite3_vtab_cursor* cursor)
{
    return Guarded(cursor->pVtab, [&] { ScanOf(cursor).Next(); });
}

int IsAtEnd(sqlite3_vtab_cursor* cursor)
{
    return ScanOf(cursor).IsAtEnd() ? 1 : 0;
}

void GiveText(sqlite3_context* context, std::string_view text)
{
    if (text.size() > mostTerminated)
        return sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    char terminated[mostTerminated + 1];
    terminated[text.copy(terminated, mostTerminated)] = '\0';
    sqlite3_result_text(context, terminated, -1, SQLITE_TRANSIENT);
}

/// Texts and bytes are copied: SQLite may hold them for longer than the record.
void Give(sqlite3_context* context, const Value& value)
{
    switch (value.kind) {
    case Value::Kind::Null:
        return sqlite3_result_null(context);
    case Value::Kind::Integer:
        return sqlite3_result_int64(context, value.integer);
    case Value::Kind::Real:
        return sqlite3_result_double(context, value.real);
    case Value::Kind::Text:
        return GiveText(context, value.text);
    case Value::Kind::Bytes:
        return sqlite3_result_blob64(context, value.text.data(), value.text.size(), SQLITE_TRANSIENT);
    }
}

/// The columns that are no field. A plain file has no indexes; a table over it no order of its own.
void GiveSpecial(const RecordCursor& record, const Column& column, sqlite3_context* context)
{
    switch (column.special) {
    case Special::RecordFileAddress: {
        char text[24];
        std::snprintf(text, sizeof text, "%014llu", static_cast<unsigned long long>(record.Position()));
        return sqlite3_result_text(context, text, -1, SQLITE_TRANSIENT);
    }
    case Special::RowId:
    case Special::RelativeNumber:
        return sqlite3_result_int64(context, static_cast<sqlite3_int64>(record.Number()));
    default:
        return sqlite3_result_null(context);
    }
}

void Refuse(sqlite3_context* context, const std::string& message)
{
    sqlite3_result_error(context, message.c_str(), static_cast<int>(message.size()));
}

void RefuseField(const RecordScan& scan, std::size_t position, const char* reason, sqlite3_context* context)
{
    if (scan.Table().WhenBad() == BadFields::Null)
        return sqlite3_result_null(context);
    const Field& field = *scan.Table().Definition().columns[position].field;
    const std::string_view bytes = scan.Table().Decoder(position)->In(scan.Record().Bytes());
    Refuse(context, scan.Place() + ", field " + field.name + ": the bytes" + InHexadecimal(bytes) +
                        " cannot be read as " + field.typeName + ": " + reason + ".");
}

/// The place of a record, for the criteria's own statement.
void GivePlace(const RecordCursor& record, std::size_t which, sqlite3_context* context)
{
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(which == 0 ? record.Position() : record.Number()));
}

/// A column without a field that can be read.
void GiveOther(const RecordScan& scan, std::size_t position, sqlite3_context* context)
{
    const RecordTable& table = scan.Table();
    const auto& columns = table.Definition().columns;
    if (position >= columns.size())
        GivePlace(scan.Record(), position - columns.size(), context);
    else if (table.Problem(position).empty())
        GiveSpecial(scan.Record(), columns[position], context);
    else
        Refuse(context, "The column " + columns[position].name + " of the table " + table.Definition().sqlName +
                            " cannot be read: " + table.Problem(position) + ".");
}

void GiveColumn(RecordScan& scan, std::size_t position, sqlite3_context* context)
{
    const FieldDecoder* const field = scan.Table().Decoder(position);
    if (!field)
        return GiveOther(scan, position, context);
    Value value;
    const char* const reason = scan.Decode(*field, value);
    return reason ? RefuseField(scan, position, reason, context) : Give(context, value);
}

int GiveCell(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int number)
{
    try {
        GiveColumn(ScanOf(cursor), ColumnAt(TableOf(cursor->pVtab), number), context);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const RecordError& error) {
        Refuse(context, error.what());
    }
    return SQLITE_OK;
}

int GiveRowId(sqlite3_vtab_cursor* cursor, sqlite3_int64* number)
{
    *number = static_cast<sqlite3_int64>(ScanOf(cursor).Record().Number());
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
    module.xColumn = GiveCell;
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

} // namespace

int Publish(sqlite3* engine, const std::shared_ptr<const RecordTable>& table, Readers readers, Spelling spelling)
{
    int answer = SQLITE_OK;
    if (table->HasCriteria())
        answer = PublishAs(engine, table->UnfilteredName(), {table, true, Readers::Criteria, spelling});
    else
        Withdraw(engine, table->UnfilteredName());
    return answer == SQLITE_OK
               ? PublishAs(engine, table->Definition().sqlName, {table, false, readers, std::move(spelling)})
               : answer;
}

void Withdraw(sqlite3* engine, const std::string& name)
{
    sqlite3_create_module_v2(engine, name.c_str(), nullptr, nullptr, nullptr);
}

} // namespace tarnwick::records
