#pragma once

#include <sql.h>
#include <sqlext.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// A folder that is gone at the end of the test.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string File(const std::string& name) const { return (m_path / name).string(); }
    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// A folder for a test's catalogs, in a process whose driver manager knows the driver under test. The manager reads its
/// ini files once, so all setups of a process share them, and every data source has a name of its own.
class OdbcSetup
{
public:
    OdbcSetup();

    /// Adds a data source with the given lines ("Key = value") and returns its name.
    std::string AddDataSource(const std::vector<std::string>& lines);

    /// A data source whose catalog is the file of that name in the setup's folder.
    std::string AddCatalog(const std::string& fileName);

    std::string File(const std::string& name) const { return m_folder.File(name); }
    const std::filesystem::path& Path() const { return m_folder.Path(); }

private:
    TemporaryFolder m_folder;
};

/// What an ODBC call left behind.
struct Diagnostic {
    std::string state;
    SQLINTEGER native = 0;
    std::string message;
};

using Cell = std::optional<std::string>; ///< nothing for a null
using Row = std::vector<Cell>;

struct ResultColumn {
    std::string name;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT nullable = 0;
};

struct Result {
    SQLRETURN answer = SQL_ERROR;
    Diagnostic diagnostic; ///< of a failure
    std::vector<ResultColumn> columns;
    std::vector<Row> rows;
    SQLLEN changed = -1;

    bool Succeeded() const { return SQL_SUCCEEDED(answer) || answer == SQL_NO_DATA; }
    /// The only cell of the only row.
    std::string Single() const;
};

/// A client of the driver manager that speaks wide text only. Texts here are UTF-8.
class OdbcClient
{
public:
    OdbcClient();
    ~OdbcClient();
    OdbcClient(const OdbcClient&) = delete;
    OdbcClient& operator=(const OdbcClient&) = delete;

    /// False leaves the reason in `Failure`.
    bool Connect(const std::string& connectString);
    void Disconnect();
    const Diagnostic& Failure() const { return m_failure; }
    const std::string& CompletedConnectString() const { return m_completed; }

    /// Runs a statement and reads all its rows, each cell got as wide text.
    Result Execute(const std::string& statement);
    /// The same through SQLPrepareW and SQLExecute.
    Result Prepared(const std::string& statement);
    /// What SQLNativeSqlW makes of a statement.
    std::string Native(const std::string& statement);
    /// A text of SQLGetInfoW.
    std::string Info(SQLUSMALLINT type);

    SQLHDBC Handle() const { return m_connection; }

    /// Runs `call` on a fresh statement and reads the rows of its result, as for a catalog function.
    template <typename Call>
    Result Read(Call call)
    {
        SQLHSTMT statement = NewStatement();
        const Result result = Fetch(statement, call(statement));
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        return result;
    }

    SQLHSTMT NewStatement();
    static Diagnostic DiagnosticOf(SQLSMALLINT type, SQLHANDLE handle);

private:
    static Result Fetch(SQLHSTMT statement, SQLRETURN answer);

    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    bool m_connected = false;
    Diagnostic m_failure;
    std::string m_completed;
};

/// UTF-8 to the wide text of ODBC, and back.
std::vector<SQLWCHAR> Wide(const std::string& utf8);
std::string Narrow(const SQLWCHAR* text, std::size_t units);
