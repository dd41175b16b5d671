#include "Engine.h"

#include "ConnectError.h"

#include <sqlite3.h>

#include <memory>
#include <mutex>
#include <string>

namespace tarnwick
{
namespace
{

thread_local bool capturing = false;
thread_local sqlite3* captured = nullptr;

std::mutex registrationMutex;
int registrations = 0;

int OnOpen(sqlite3* engine, char**, const void*)
{
    if (capturing)
        captured = engine;
    return SQLITE_OK;
}

using Extension = void (*)();

Extension OnOpenAsExtension()
{
    return reinterpret_cast<Extension>(&OnOpen);
}

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

/// The first column of the first row as text; empty without a row.
std::string Ask(sqlite3* engine, const char* question)
{
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(engine, question, -1, &prepared, nullptr) != SQLITE_OK)
        throw ConnectError(sqlite3_errmsg(engine), sqlite3_errcode(engine));
    const std::unique_ptr<sqlite3_stmt, FinalizeStatement> statement(prepared);
    const int answer = sqlite3_step(prepared);
    if (answer == SQLITE_DONE)
        return {};
    if (answer != SQLITE_ROW)
        throw ConnectError(sqlite3_errmsg(engine), sqlite3_errcode(engine));
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0));
    return text ? text : "";
}

} // namespace

EngineCapture::EngineCapture()
{
    const std::lock_guard lock(registrationMutex);
    if (registrations++ == 0)
        sqlite3_auto_extension(OnOpenAsExtension());
    captured = nullptr;
    capturing = true;
}

EngineCapture::~EngineCapture()
{
    capturing = false;
    const std::lock_guard lock(registrationMutex);
    if (--registrations == 0)
        sqlite3_cancel_auto_extension(OnOpenAsExtension());
}

sqlite3* EngineCapture::Engine() const
{
    return captured;
}

void PrepareEngine(sqlite3* engine)
{
    if (Ask(engine, "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN ('TW_FILE', 'TW_FIELD', "
                    "'TW_DB', 'TW_TABLE', 'TW_COLUMN', 'TW_USER')") == "0")
        throw ConnectError("it is a database, but holds no catalog");
    sqlite3_db_config(engine, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(engine, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    if (sqlite3_db_readonly(engine, "main") == 1)
        return;
    Ask(engine, "PRAGMA synchronous = FULL");
    try {
        Ask(engine, "PRAGMA journal_mode = WAL");
    } catch (const ConnectError& busy) {
        // Another client is still in the rollback journal's mode; that journal is as durable under FULL.
        if ((busy.Native() & 0xFF) != SQLITE_BUSY)
            throw;
    }
}

} // namespace tarnwick
