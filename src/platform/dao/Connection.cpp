#include "Connection.h"

#include "ConnectString.h"
#include "DriverLibrary.h"
#include "Result.h"
#include "RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace dao
{

using odbc::Encoding;
using odbc::StatementHandle;

namespace
{

bool isAscii(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() < 0x80; });
}

/// True for a driver without wide entry points. The driver manager hides which ones a driver has, but its conversion
/// for such a driver loses characters, and a text that it only hands to and fro shows that.
bool losesCharacters(SQLHDBC connection)
{
    const QString probe = QStringLiteral("'\u0416\U0001F600'");
    SQLWCHAR answer[64] = {};
    SQLINTEGER length = 0;
    const SQLRETURN result =
        SQLNativeSqlW(connection, odbc::wide(probe), static_cast<SQLINTEGER>(probe.size()), answer, 64, &length);
    return SQL_SUCCEEDED(result) && odbc::fromWide(answer, 63) != probe;
}

bool isState(SQLHDBC connection, const char* state)
{
    SQLCHAR found[6] = {};
    SQLINTEGER native = 0;
    return SQL_SUCCEEDED(SQLGetDiagRec(SQL_HANDLE_DBC, connection, 1, found, &native, nullptr, 0, nullptr)) &&
           std::strcmp(reinterpret_cast<const char*>(found), state) == 0;
}

/// A driver may fall back to another kind of cursor when it sees the statement.
bool isStatic(SQLHSTMT statement)
{
    SQLULEN type = SQL_CURSOR_FORWARD_ONLY;
    return SQL_SUCCEEDED(SQLGetStmtAttr(statement, SQL_ATTR_CURSOR_TYPE, &type, 0, nullptr)) &&
           type == SQL_CURSOR_STATIC;
}

template <class Number>
Number info(SQLHDBC connection, SQLUSMALLINT what, Number otherwise)
{
    Number answer = 0;
    return SQL_SUCCEEDED(SQLGetInfo(connection, what, &answer, sizeof answer, nullptr)) ? answer : otherwise;
}

} // namespace

Connection::Connection(std::shared_ptr<odbc::Environment> environment, odbc::ConnectionHandle handle)
    : m_environment(std::move(environment)), m_handle(std::move(handle))
{
}

Connection::~Connection()
{
    close();
}

std::shared_ptr<Connection> Connection::open(std::shared_ptr<odbc::Environment> environment, const QString& connect)
{
    if (!environment || !*environment)
        odbc::fail({});
    odbc::ConnectionHandle handle(environment->get());
    if (!handle)
        odbc::fail(odbc::diagnostics(SQL_HANDLE_ENV, environment->get()));
    std::shared_ptr<Connection> connection(new Connection(std::move(environment), std::move(handle)));
    connection->connect(connect);
    connection->askAbilities();
    return connection;
}

void Connection::connect(const QString& connect)
{
    m_datasource = connectString::datasource(connect);
    odbc::Utf8Scope utf8;
    SQLRETURN result = driverConnect(connect);
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA && isState(m_handle.get(), "IM002")) {
        // The driver manager may still remember that there was no such datasource; what its installer library reads is
        // new.
        const QString driver = DBEngine::GetPrivateProfileString(m_datasource, QStringLiteral("Driver"), {});
        if (!driver.isEmpty())
            result = driverConnect(QStringLiteral("DRIVER={%1};").arg(driver) + connect);
    }
    if (result == SQL_NO_DATA)
        throw RuntimeError(ErrorNumber::Cancelled);
    if (!SQL_SUCCEEDED(result)) {
        std::vector<Error> records = odbc::diagnostics(SQL_HANDLE_DBC, m_handle.get());
        explainUnloadableLibrary(records);
        odbc::fail(std::move(records));
    }
    m_connected = true;
}

SQLRETURN Connection::driverConnect(const QString& connect)
{
    // The driver manager looks a datasource up by the lower bytes of a wide name, and finds no file by a wide path.
    const bool wide = isAscii(m_datasource) && connectString::value(connect, u"FILEDSN").isEmpty() &&
                      isAscii(connectString::value(connect, u"DRIVER"));
    if (wide)
        return SQLDriverConnectW(m_handle.get(), nullptr, odbc::wide(connect), SQL_NTS, nullptr, 0, nullptr,
                                 SQL_DRIVER_NOPROMPT);
    const QByteArray bytes = odbc::toNarrow(connect);
    return SQLDriverConnect(m_handle.get(), nullptr, odbc::narrow(bytes), SQL_NTS, nullptr, 0, nullptr,
                            SQL_DRIVER_NOPROMPT);
}

void Connection::askAbilities()
{
    SQLHDBC handle = m_handle.get();
    m_encoding = losesCharacters(handle) ? Encoding::Utf8 : Encoding::Wide;

    const auto getting = info<SQLUINTEGER>(handle, SQL_GETDATA_EXTENSIONS, 0);
    m_getsBound = (getting & SQL_GD_BOUND) != 0;
    m_getsInBlocks = m_getsBound && (getting & SQL_GD_BLOCK) != 0;
    m_activityLimit = info<SQLUSMALLINT>(handle, SQL_MAX_CONCURRENT_ACTIVITIES, 0);
    m_cursorsSurviveCommit = info<SQLUSMALLINT>(handle, SQL_CURSOR_COMMIT_BEHAVIOR, SQL_CB_DELETE) == SQL_CB_PRESERVE;
    SQLUSMALLINT supported = SQL_FALSE;
    SQLGetFunctions(handle, SQL_API_SQLMORERESULTS, &supported);
    m_hasMoreResults = supported == SQL_TRUE;
}

void Connection::execute(const QString& statement)
{
    requireOpen();
    announce(statement);
    const bool rowsAreSafe = m_staticCursors && m_cursorsSurviveCommit;
    makeRoom(rowsAreSafe ? m_activityLimit : 1);
    if (!m_executing)
        m_executing = StatementHandle(m_handle.get());
    if (!m_executing)
        odbc::fail(odbc::diagnostics(SQL_HANDLE_DBC, m_handle.get(), m_encoding));

    SQLRETURN result = send(m_executing, statement);
    while (SQL_SUCCEEDED(result) && m_hasMoreResults)
        result = SQLMoreResults(m_executing.get());
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        failWith(m_executing);
    SQLFreeStmt(m_executing.get(), SQL_CLOSE);
}

std::unique_ptr<Result> Connection::query(const QString& statement)
{
    requireOpen();
    announce(statement);
    makeRoom(m_activityLimit);

    StatementHandle handle = takeStatement();
    SQLRETURN result = send(handle, statement);
    if (result == SQL_SUCCESS_WITH_INFO)
        m_staticCursors = m_staticCursors && isStatic(handle.get());
    SQLSMALLINT columns = 0;
    while (SQL_SUCCEEDED(result) && SQL_SUCCEEDED(SQLNumResultCols(handle.get(), &columns)) && columns == 0)
        result = m_hasMoreResults ? SQLMoreResults(handle.get()) : SQL_NO_DATA;
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        failWith(handle);
    if (columns <= 0) {
        giveBack(std::move(handle));
        odbc::fail({{0, QStringLiteral("The statement has no result set.")}});
    }
    return std::make_unique<Result>(shared_from_this(), std::move(handle), columns);
}

void Connection::close()
{
    for (Result* result : m_results)
        result->end();
    m_executing.reset();
    m_spare.clear();
    if (m_connected) {
        // An open transaction would keep the connection from ending.
        if (!SQL_SUCCEEDED(SQLDisconnect(m_handle.get()))) {
            SQLEndTran(SQL_HANDLE_DBC, m_handle.get(), SQL_ROLLBACK);
            SQLDisconnect(m_handle.get());
        }
        m_connected = false;
    }
    m_handle.reset();
}

void Connection::announce(const QString& statement) const
{
    if (StatementObserver* observer = odbc::observer()) {
        std::vector<Error> records = observer->beforeStatement(m_datasource, statement);
        if (!records.empty())
            odbc::fail(std::move(records));
    }
}

void Connection::requireOpen() const
{
    if (!m_connected)
        throw RuntimeError(ErrorNumber::ObjectNotSet);
}

SQLRETURN Connection::send(const StatementHandle& statement, const QString& text) const
{
    SQLRETURN result = SQL_ERROR;
    if (m_encoding == Encoding::Wide) {
        result = SQLExecDirectW(statement.get(), odbc::wide(text), static_cast<SQLINTEGER>(text.size()));
    } else {
        const QByteArray bytes = odbc::toNarrow(text);
        result = SQLExecDirect(statement.get(), odbc::narrow(bytes), static_cast<SQLINTEGER>(bytes.size()));
    }
    if (result == SQL_NEED_DATA) {
        SQLCancel(statement.get());
        odbc::fail({{0, QStringLiteral("The statement has a parameter without a value.")}});
    }
    return result;
}

void Connection::failWith(const StatementHandle& statement) const
{
    std::vector<Error> records = odbc::diagnostics(SQL_HANDLE_STMT, statement.get(), m_encoding);
    SQLFreeStmt(statement.get(), SQL_CLOSE);
    odbc::fail(std::move(records));
}

StatementHandle Connection::takeStatement()
{
    if (!m_spare.empty()) {
        StatementHandle statement = std::move(m_spare.back());
        m_spare.pop_back();
        return statement;
    }
    StatementHandle statement(m_handle.get());
    if (!statement)
        odbc::fail(odbc::diagnostics(SQL_HANDLE_DBC, m_handle.get(), m_encoding));
    m_staticCursors = SQLSetStmtAttr(statement.get(), SQL_ATTR_CURSOR_TYPE,
                                     reinterpret_cast<SQLPOINTER>(SQL_CURSOR_STATIC), 0) == SQL_SUCCESS;
    return statement;
}

void Connection::giveBack(StatementHandle statement)
{
    constexpr std::size_t spares = 4;
    const bool ready = SQL_SUCCEEDED(SQLFreeStmt(statement.get(), SQL_CLOSE)) &&
                       SQL_SUCCEEDED(SQLFreeStmt(statement.get(), SQL_UNBIND));
    if (ready && m_connected && m_spare.size() < spares)
        m_spare.push_back(std::move(statement));
}

void Connection::makeRoom(std::size_t limit)
{
    const auto unread = static_cast<std::size_t>(
        std::count_if(m_results.begin(), m_results.end(), [](const Result* result) { return !result->finished(); }));
    if (limit == 0 || unread < limit)
        return;
    for (Result* result : m_results)
        result->complete();
}

void Connection::enlist(Result* result)
{
    m_results.push_back(result);
}

void Connection::forget(Result* result)
{
    std::erase(m_results, result);
}

} // namespace dao
