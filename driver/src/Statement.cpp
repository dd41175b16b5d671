#include "ByRights.h"
#include "Lower.h"
#include "Prepared.h"
#include "RecordTables.h"
#include "Registry.h"
#include "Rewrite.h"
#include "StatementLog.h"
#include "Text.h"

#include <sqlucode.h>

using namespace tarnwick;

namespace
{

using Run = decltype(Lower::SQLExecDirect);

enum class ForLater { No, Yes };

/// Takes a statement in: writes it to the log, puts it into SQLite's spelling, sees that the tables over records that
/// it names are there, and hands it on, complete with its terminator. One that is prepared for later is kept.
SQLRETURN Submit(SQLHSTMT statement, std::string text, Run run, ForLater forLater)
{
    ForgetLastRun(statement);
    prepared::Forget(statement);
    const auto connection = registry::ConnectionOf(statement);
    if (connection && connection->log && !connection->log->Write(text))
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY000",
                                  "The statement was not run: it could not be written to the statement log.");
    if (RefuseOutdated(statement))
        return SQL_ERROR;
    if (text.find('\0') != std::string::npos)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "42000", "The statement holds a null character.");
    std::string rewritten = Rewrite(std::move(text));
    if (rewritten.find_first_not_of(" \t\r\n") == std::string::npos)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "42000", "The statement is empty.");
    prepared::Text kept;
    try {
        if (connection) {
            connection->tables->MakeReady(rewritten);
            if (forLater == ForLater::Yes)
                kept = {rewritten, connection->tables->Changes()};
            rewritten = connection->tables->WithExactNumbers(std::move(rewritten));
            if (const std::string refusal = connection->privileges->Refusal(rewritten); !refusal.empty())
                return diagnostics::Raise(SQL_HANDLE_STMT, statement, "42000", refusal);
        }
    } catch (const records::RecordError& error) {
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY000", error.what());
    }
    const SQLRETURN answer =
        RunByRights(statement, [&] { return run(statement, reinterpret_cast<SQLCHAR*>(rewritten.data()), SQL_NTS); });
    if (SQL_SUCCEEDED(answer) && forLater == ForLater::Yes)
        prepared::Keep(statement, std::move(kept));
    return answer;
}

SQLRETURN SubmitNarrow(SQLHSTMT statement, const SQLCHAR* text, SQLINTEGER length, Run run,
                       ForLater forLater = ForLater::No)
{
    std::string utf8(NarrowArgument(text, length));
    if (!IsUtf8(utf8))
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "22018", "The statement is not well-formed UTF-8.");
    return Submit(statement, std::move(utf8), run, forLater);
}

SQLRETURN SubmitWide(SQLHSTMT statement, const SQLWCHAR* text, SQLINTEGER length, Run run,
                     ForLater forLater = ForLater::No)
{
    auto utf8 = WideArgument(text, length);
    if (!utf8)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "22018", "The statement is not well-formed UTF-16.");
    return Submit(statement, std::move(*utf8), run, forLater);
}

} // namespace

SQLRETURN SQL_API SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length)
{
    return SubmitNarrow(statement, text, length, lower.SQLExecDirect);
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT statement, SQLWCHAR* text, SQLINTEGER length)
{
    return SubmitWide(statement, text, length, lower.SQLExecDirect);
}

SQLRETURN SQL_API SQLPrepare(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length)
{
    return SubmitNarrow(statement, text, length, lower.SQLPrepare, ForLater::Yes);
}

SQLRETURN SQL_API SQLPrepareW(SQLHSTMT statement, SQLWCHAR* text, SQLINTEGER length)
{
    return SubmitWide(statement, text, length, lower.SQLPrepare, ForLater::Yes);
}

SQLRETURN SQL_API SQLExecute(SQLHSTMT statement)
{
    ForgetLastRun(statement);
    if (RefuseOutdated(statement))
        return SQL_ERROR;
    try {
        if (auto again = prepared::MakeReady(statement)) {
            std::string text = registry::ConnectionOf(statement)->tables->WithExactNumbers(again->text);
            const SQLRETURN answer = RunByRights(statement, [&] {
                return lower.SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
            });
            if (!SQL_SUCCEEDED(answer))
                return answer;
            prepared::Keep(statement, std::move(*again));
        }
    } catch (const records::RecordError& error) {
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY000", error.what());
    }
    return RunByRights(statement, [&] { return lower.SQLExecute(statement); });
}

SQLRETURN SQL_API SQLParamData(SQLHSTMT statement, SQLPOINTER* value)
{
    return RunByRights(statement, [&] { return lower.SQLParamData(statement, value); });
}

SQLRETURN SQL_API SQLNativeSql(SQLHDBC connection, SQLCHAR* text, SQLINTEGER textLength, SQLCHAR* native,
                               SQLINTEGER capacity, SQLINTEGER* length)
{
    const std::string rewritten = Rewrite(std::string(NarrowArgument(text, textLength)));
    const Fit fit = PutNarrow(rewritten, native, capacity, length);
    return fit == Fit::Whole ? SQL_SUCCESS : diagnostics::WarnOfCutText(SQL_HANDLE_DBC, connection);
}

SQLRETURN SQL_API SQLNativeSqlW(SQLHDBC connection, SQLWCHAR* text, SQLINTEGER textLength, SQLWCHAR* native,
                                SQLINTEGER capacity, SQLINTEGER* length)
{
    auto utf8 = WideArgument(text, textLength);
    if (!utf8)
        return diagnostics::Raise(SQL_HANDLE_DBC, connection, "22018", "The statement is not well-formed UTF-16.");
    const Fit fit = PutWide(Rewrite(std::move(*utf8)), native, capacity, length);
    return fit == Fit::Whole ? SQL_SUCCESS : diagnostics::WarnOfCutText(SQL_HANDLE_DBC, connection);
}
