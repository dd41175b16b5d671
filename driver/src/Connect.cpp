#include "Catalog.h"
#include "ConnectError.h"
#include "ConnectString.h"
#include "DataSource.h"
#include "Diagnostics.h"
#include "Engine.h"
#include "Lower.h"
#include "Prepared.h"
#include "Privileges.h"
#include "RecordTables.h"
#include "Registry.h"
#include "Rows.h"
#include "StatementLog.h"
#include "Text.h"

#include <sqlucode.h>

#include <filesystem>

using namespace tarnwick;

namespace
{

/// SQLSTATE: the client could not establish the connection.
constexpr const char* cannotConnect = "08001";

/// Connects the library below to a catalog file and gives the SQLite connection behind it, set up and tried.
sqlite3* ConnectLower(SQLHDBC handle, const std::string& path, catalog::Access access, long timeout)
{
    std::string text = "Database=" + catalog::Uri(path, access) + ";Timeout=" + std::to_string(timeout) + ";NoCreat=1";
    SQLSMALLINT length = 0;
    const EngineCapture capture;
    const SQLRETURN answer = lower.SQLDriverConnect(handle, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                                                    nullptr, 0, &length, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(answer)) {
        SQLINTEGER native = 0;
        throw ConnectError(diagnostics::TakeLowerMessage(SQL_HANDLE_DBC, handle, &native), native);
    }
    try {
        if (!capture.Engine())
            throw ConnectError("the SQLite ODBC driver uses another SQLite library than this driver");
        PrepareEngine(capture.Engine());
    } catch (const ConnectError&) {
        lower.SQLDisconnect(handle);
        throw;
    }
    return capture.Engine();
}

void OpenCatalog(SQLHDBC handle, Connection& connection, long timeout)
{
    const std::string& path = connection.catalogPath;
    catalog::Ensure(path);
    const catalog::Version version = catalog::VersionOf(path);
    const auto access = catalog::NeedsImmutableAccess(path) ? catalog::Access::Immutable : catalog::Access::Ordinary;
    if (access == catalog::Access::Immutable)
        connection.opened = version;
    try {
        connection.engine = ConnectLower(handle, path, access, timeout);
    } catch (const ConnectError& error) {
        throw ConnectError("Cannot open the catalog '" + path + "': " + error.what(), error.Native());
    }
}

/// The tables over records that a connection serves.
std::shared_ptr<records::RecordTables> ServeRecords(const Connection& connection, const DataSource& source,
                                                    const ConnectString& text)
{
    records::Surroundings surroundings;
    surroundings.defaultDatabase = source.defaultDatabase;
    surroundings.catalogDirectory = std::filesystem::path(connection.catalogPath).parent_path().string();
    surroundings.directoryOf = [text, name = source.name](const std::string& key) {
        return DataSource::Value(text, name, key);
    };
    const auto badFields = source.badFieldsAreNull ? records::BadFields::Null : records::BadFields::Error;
    return std::make_shared<records::RecordTables>(connection.engine, std::move(surroundings), badFields);
}

/// Holds a connection to the rights of its user.
std::shared_ptr<records::Privileges> Guard(const Connection& connection, const std::string& user)
{
    const auto locate = [tables = connection.tables](std::string_view name) {
        const auto table = tables->Find(name);
        if (!table)
            return std::optional<records::Privileges::Place>();
        return std::optional(records::Privileges::Place(table->Definition().database, table->Definition().table));
    };
    try {
        auto privileges = std::make_shared<records::Privileges>(connection.engine, user, locate);
        privileges->Guard();
        return privileges;
    } catch (const records::RecordError& error) {
        throw ConnectError("The privileges of the user " + user + " cannot be read: " + error.what());
    }
}

/// A connection of the library below that is open, and is closed again unless it is kept.
class OpenBelow
{
public:
    explicit OpenBelow(SQLHDBC handle) : m_handle(handle) {}
    ~OpenBelow()
    {
        if (m_handle)
            lower.SQLDisconnect(m_handle);
    }
    OpenBelow(const OpenBelow&) = delete;
    OpenBelow& operator=(const OpenBelow&) = delete;

    void Keep() { m_handle = nullptr; }

private:
    SQLHDBC m_handle;
};

/// Opens the data source that a connect string describes and registers the connection.
SQLRETURN Connect(SQLHDBC handle, std::string_view connectText)
{
    diagnostics::Clear(SQL_HANDLE_DBC, handle);
    if (!lower.Loaded())
        return diagnostics::Raise(SQL_HANDLE_DBC, handle, cannotConnect, lower.Failure());
    try {
        const ConnectString text(connectText);
        const DataSource source = DataSource::Read(text);
        if (source.catalog.empty())
            throw ConnectError("The data source names no catalog: the key Catalog is missing.");
        Connection connection;
        connection.datasource = source.name;
        connection.catalogPath = catalog::Resolve(source.catalog);
        if (!source.statementLog.empty())
            connection.log = std::make_shared<StatementLog>(source.statementLog);
        OpenCatalog(handle, connection, source.timeout);
        OpenBelow below(handle);
        connection.tables = ServeRecords(connection, source, text);
        connection.privileges = Guard(connection, source.user);
        registry::OpenConnection(handle, std::make_shared<const Connection>(std::move(connection)));
        below.Keep();
        return SQL_SUCCESS;
    } catch (const ConnectError& error) {
        return diagnostics::Raise(SQL_HANDLE_DBC, handle, cannotConnect, error.what(), error.Native());
    } catch (const std::exception& error) {
        return diagnostics::Raise(SQL_HANDLE_DBC, handle, cannotConnect, error.what());
    }
}

/// Gives the connect string back: it holds all that is needed to connect again.
SQLRETURN ReturnText(SQLHDBC handle, Fit fit)
{
    return fit == Fit::Whole ? SQL_SUCCESS : diagnostics::WarnOfCutText(SQL_HANDLE_DBC, handle);
}

/// The connect string of SQLConnect's arguments.
std::string Attributes(std::string_view datasource, std::string_view user)
{
    std::string text = "DSN={" + std::string(datasource) + "}";
    return user.empty() ? text : text + ";UID={" + std::string(user) + "}";
}

SQLRETURN RefuseWideText(SQLHDBC handle)
{
    return diagnostics::Raise(SQL_HANDLE_DBC, handle, "22018", "The connect string is not well-formed UTF-16.");
}

} // namespace

SQLRETURN SQL_API SQLDriverConnect(SQLHDBC handle, SQLHWND, SQLCHAR* text, SQLSMALLINT textLength, SQLCHAR* completed,
                                   SQLSMALLINT capacity, SQLSMALLINT* length, SQLUSMALLINT)
{
    const std::string_view connectText = NarrowArgument(text, textLength);
    const SQLRETURN answer = Connect(handle, connectText);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    SQLINTEGER whole = 0;
    const Fit fit = PutNarrow(connectText, completed, capacity, &whole);
    if (length)
        *length = static_cast<SQLSMALLINT>(whole);
    return ReturnText(handle, fit);
}

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT textLength,
                                    SQLWCHAR* completed, SQLSMALLINT capacity, SQLSMALLINT* length, SQLUSMALLINT)
{
    const auto connectText = WideArgument(text, textLength);
    if (!connectText)
        return RefuseWideText(handle);
    const SQLRETURN answer = Connect(handle, *connectText);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    SQLINTEGER whole = 0;
    const Fit fit = PutWide(*connectText, completed, capacity, &whole);
    if (length)
        *length = static_cast<SQLSMALLINT>(whole);
    return ReturnText(handle, fit);
}

SQLRETURN SQL_API SQLConnect(SQLHDBC handle, SQLCHAR* datasource, SQLSMALLINT datasourceLength, SQLCHAR* user,
                             SQLSMALLINT userLength, SQLCHAR*, SQLSMALLINT)
{
    return Connect(handle, Attributes(NarrowArgument(datasource, datasourceLength), NarrowArgument(user, userLength)));
}

SQLRETURN SQL_API SQLConnectW(SQLHDBC handle, SQLWCHAR* datasource, SQLSMALLINT datasourceLength, SQLWCHAR* user,
                              SQLSMALLINT userLength, SQLWCHAR*, SQLSMALLINT)
{
    const auto name = WideArgument(datasource, datasourceLength);
    const auto userName = WideArgument(user, userLength);
    return name && userName ? Connect(handle, Attributes(*name, *userName)) : RefuseWideText(handle);
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle)
{
    diagnostics::Clear(SQL_HANDLE_DBC, handle);
    const SQLRETURN answer = lower.SQLDisconnect(handle);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    for (SQLHSTMT statement : registry::CloseConnection(handle)) {
        rows::Forget(statement);
        prepared::Forget(statement);
        diagnostics::Clear(SQL_HANDLE_STMT, statement);
    }
    return answer;
}
