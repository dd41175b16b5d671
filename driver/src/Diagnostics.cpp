#include "Diagnostics.h"

#include "Lower.h"
#include "Text.h"

#include <sqlite3.h>
#include <sqlucode.h>

#include <array>
#include <map>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace tarnwick::diagnostics
{
namespace
{

using Key = std::pair<SQLSMALLINT, SQLHANDLE>;

struct Store {
    std::mutex mutex;
    std::map<Key, std::vector<Record>> records;
};

Store& TheStore()
{
    static Store store;
    return store;
}

bool Contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// The library below reports almost everything as HY000. SQLite's result code and, for its one general code, the fixed
/// beginnings of its messages tell which SQLSTATE is meant.
const char* StateOf(SQLINTEGER native, std::string_view message)
{
    switch (native & 0xFF) {
    case SQLITE_CONSTRAINT:
        return "23000";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "HYT00";
    case SQLITE_TOOBIG:
        return "22001";
    case SQLITE_INTERRUPT:
        return "HY008";
    case SQLITE_NOMEM:
        return "HY001";
    case SQLITE_ERROR:
        break;
    default:
        return message.starts_with("unbound parameters") ? "07002" : "HY000";
    }
    if (message.starts_with("no such table"))
        return "42S02";
    if (message.starts_with("no such column") || Contains(message, " has no column named "))
        return "42S22";
    if (message.starts_with("table ") && Contains(message, "already exists"))
        return "42S01";
    if (Contains(message, "syntax error") || message.starts_with("unrecognized token") ||
        message.starts_with("incomplete input"))
        return "42000";
    return "HY000";
}

std::vector<Record> TakeFromLower(SQLSMALLINT type, SQLHANDLE handle)
{
    std::vector<Record> records;
    if (!lower.Loaded() || !handle)
        return records;
    // The library below forgets a record once it is read, so each call asks for the first.
    constexpr std::size_t most = 16;
    while (records.size() < most) {
        std::array<SQLCHAR, 6> state{};
        std::array<SQLCHAR, 4096> message;
        message[0] = 0;
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        const SQLRETURN answer = lower.SQLGetDiagRec(type, handle, 1, state.data(), &native, message.data(),
                                                     static_cast<SQLSMALLINT>(message.size()), &length);
        if (!SQL_SUCCEEDED(answer))
            break;
        Record record;
        record.state = reinterpret_cast<const char*>(state.data());
        record.native = native;
        record.message = reinterpret_cast<const char*>(message.data());
        if (!records.empty() && records.back().message == record.message && records.back().native == native)
            break;
        if (record.state == "HY000" || record.state == "S1000")
            record.state = StateOf(native, record.message);
        records.push_back(std::move(record));
    }
    return records;
}

void Put(SQLSMALLINT type, SQLHANDLE handle, const char* state, SQLINTEGER native, std::string message)
{
    Record record;
    record.state = state;
    record.native = native;
    record.message = std::move(message);
    Tell(type, handle, {std::move(record)});
}

std::string OwnMessage(std::string_view text)
{
    return "[Tarnwick][ODBC]" + std::string(text);
}

/// Brings a handle's records up to date: what the library below has gathered since takes the place of what was kept.
void Refresh(SQLSMALLINT type, SQLHANDLE handle)
{
    std::vector<Record> fresh = TakeFromLower(type, handle);
    if (fresh.empty())
        return;
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    store.records[{type, handle}] = std::move(fresh);
}

std::size_t CountKept(SQLSMALLINT type, SQLHANDLE handle)
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    const auto found = store.records.find({type, handle});
    return found == store.records.end() ? 0 : found->second.size();
}

/// A handle's record of that number, from 1. Whoever asks for the first one asks anew.
std::optional<Record> Find(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number)
{
    if (number == 1)
        Refresh(type, handle);
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    const auto found = store.records.find({type, handle});
    if (number < 1 || found == store.records.end() || static_cast<std::size_t>(number) > found->second.size())
        return std::nullopt;
    return found->second[static_cast<std::size_t>(number) - 1];
}

/// One record, with the text functions of the caller's width.
SQLRETURN GetRecord(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, void* state, SQLINTEGER* native, void* text,
                    SQLSMALLINT capacity, SQLSMALLINT* length, PutText put)
{
    if (!handle)
        return SQL_INVALID_HANDLE;
    if (number < 1 || capacity < 0)
        return SQL_ERROR;
    const std::optional<Record> record = Find(type, handle, number);
    if (!record)
        return SQL_NO_DATA;
    put(record->state, state, 6, nullptr);
    if (native)
        *native = record->native;
    SQLINTEGER whole = 0;
    const Fit fit = put(record->message, text, capacity, &whole);
    if (length)
        *length = static_cast<SQLSMALLINT>(whole);
    return fit == Fit::Whole ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

std::string ClassOrigin(const Record& record)
{
    return record.state.substr(0, 2) == "IM" ? "ODBC 3.0" : "ISO 9075";
}

/// A field of a record. `unit` is the size of a character: `capacity` and `length` count bytes here.
SQLRETURN GetField(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, SQLSMALLINT field, void* value,
                   SQLSMALLINT capacity, SQLSMALLINT* length, PutText put, SQLSMALLINT unit)
{
    if (!handle)
        return SQL_INVALID_HANDLE;
    if (field == SQL_DIAG_NUMBER) {
        Refresh(type, handle);
        *static_cast<SQLINTEGER*>(value) = static_cast<SQLINTEGER>(CountKept(type, handle));
        return SQL_SUCCESS;
    }
    if (number == 0)
        return lower.SQLGetDiagField(type, handle, number, field, value, capacity, length);
    const std::optional<Record> record = Find(type, handle, number);
    if (!record)
        return SQL_NO_DATA;
    std::string text;
    switch (field) {
    case SQL_DIAG_NATIVE:
        *static_cast<SQLINTEGER*>(value) = record->native;
        return SQL_SUCCESS;
    case SQL_DIAG_COLUMN_NUMBER:
        *static_cast<SQLINTEGER*>(value) = record->column;
        return SQL_SUCCESS;
    case SQL_DIAG_ROW_NUMBER:
        *static_cast<SQLLEN*>(value) = record->row;
        return SQL_SUCCESS;
    case SQL_DIAG_SQLSTATE:
        text = record->state;
        break;
    case SQL_DIAG_MESSAGE_TEXT:
        text = record->message;
        break;
    case SQL_DIAG_CLASS_ORIGIN:
    case SQL_DIAG_SUBCLASS_ORIGIN:
        text = ClassOrigin(*record);
        break;
    case SQL_DIAG_CONNECTION_NAME:
    case SQL_DIAG_SERVER_NAME:
        break;
    default:
        return SQL_ERROR;
    }
    SQLINTEGER whole = 0;
    const Fit fit = put(text, value, capacity / unit, &whole);
    if (length)
        *length = static_cast<SQLSMALLINT>(whole * unit);
    return fit == Fit::Whole ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

} // namespace

SQLRETURN Raise(SQLSMALLINT type, SQLHANDLE handle, const char* state, std::string_view message, int native)
{
    Put(type, handle, state, native, OwnMessage(message));
    return SQL_ERROR;
}

SQLRETURN Warn(SQLSMALLINT type, SQLHANDLE handle, const char* state, std::string_view message)
{
    Put(type, handle, state, 0, OwnMessage(message));
    return SQL_SUCCESS_WITH_INFO;
}

SQLRETURN WarnOfCutText(SQLSMALLINT type, SQLHANDLE handle)
{
    return Warn(type, handle, "01004", "The text was cut to the length of its buffer.");
}

Record Last(SQLSMALLINT type, SQLHANDLE handle, SQLLEN row, SQLUSMALLINT column)
{
    Record record = Find(type, handle, 1).value_or(Record{"HY000", 0, OwnMessage("The cell cannot be read.")});
    record.row = row;
    record.column = column;
    return record;
}

void Tell(SQLSMALLINT type, SQLHANDLE handle, std::vector<Record> records)
{
    if (records.empty())
        return;
    TakeFromLower(type, handle);
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    store.records[{type, handle}] = std::move(records);
}

void Clear(SQLSMALLINT type, SQLHANDLE handle)
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    store.records.erase({type, handle});
}

std::string TakeLowerMessage(SQLSMALLINT type, SQLHANDLE handle, SQLINTEGER* native)
{
    const std::vector<Record> records = TakeFromLower(type, handle);
    if (records.empty())
        return {};
    *native = records.front().native;
    return records.front().message;
}

} // namespace tarnwick::diagnostics

using namespace tarnwick;

SQLRETURN SQL_API SQLGetDiagRec(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, SQLCHAR* state,
                                SQLINTEGER* native, SQLCHAR* text, SQLSMALLINT capacity, SQLSMALLINT* length)
{
    return diagnostics::GetRecord(type, handle, number, state, native, text, capacity, length, PutNarrow);
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, SQLWCHAR* state,
                                 SQLINTEGER* native, SQLWCHAR* text, SQLSMALLINT capacity, SQLSMALLINT* length)
{
    return diagnostics::GetRecord(type, handle, number, state, native, text, capacity, length, PutWide);
}

SQLRETURN SQL_API SQLGetDiagField(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, SQLSMALLINT field,
                                  SQLPOINTER value, SQLSMALLINT capacity, SQLSMALLINT* length)
{
    return diagnostics::GetField(type, handle, number, field, value, capacity, length, PutNarrow, 1);
}

SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, SQLSMALLINT field,
                                   SQLPOINTER value, SQLSMALLINT capacity, SQLSMALLINT* length)
{
    return diagnostics::GetField(type, handle, number, field, value, capacity, length, PutWide, sizeof(SQLWCHAR));
}
