#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace dao
{

class Database;
class Recordset;
class Workspace;

/// One entry of the error chain: a diagnostic record of the driver manager or the driver, or the closing generic entry
/// 3146 "ODBC--call failed.".
struct Error {
    long Number = 0;
    QString Description;
};

/// The chain of errors of the last failure, in the order in which the driver gave them, the generic entry last.
class Errors
{
public:
    int Count() const { return static_cast<int>(m_errors.size()); }
    /// Raises 3265 for an index out of range.
    const Error& Item(int index) const;
    void Clear() { m_errors.clear(); }
    void Append(Error error) { m_errors.push_back(std::move(error)); }

private:
    std::vector<Error> m_errors;
};

/// Sees the exact text of every statement, in order, before it is sent, and can make it fail. Tests use it.
class StatementObserver
{
public:
    virtual ~StatementObserver() = default;
    /// Returns an empty chain to let the statement pass, or the diagnostic records with which it fails.
    virtual std::vector<Error> beforeStatement(const QString& datasource, const QString& statement) = 0;
};

/// What a listing of the driver manager says of one datasource.
struct DataSource {
    QString Name;
    /// The driver's description, trimmed.
    QString Description;
};

/// The entry to the database layer: the error chain, the workspace and the driver manager's lists.
namespace DBEngine
{

/// The error chain. Each operation of this layer empties it when it starts.
dao::Errors& Errors();

/// A direct ODBC workspace: every statement goes to the driver as it stands.
std::unique_ptr<Workspace> CreateWorkspace(const QString& name, const QString& user, const QString& password, int type);

/// Hangs an observer on every statement of the process and returns the former one; null takes it off.
StatementObserver* setObserver(StatementObserver* observer);

/// All user and system datasources in the driver manager's order (SQLDataSources). An empty list when no environment
/// can be had. Fills no error chain.
std::vector<DataSource> DataSources();

/// A key of a datasource's entry in ODBC.INI (SQLGetPrivateProfileString), or the default; 255 characters at the most.
QString GetPrivateProfileString(const QString& section, const QString& key, const QString& defaultValue);

} // namespace DBEngine

/// A direct ODBC workspace; databases opened in it share one environment.
class Workspace
{
public:
    virtual ~Workspace() = default;
    /// Opens a database by a connect string "ODBC;DSN=...": what stands behind "ODBC;" goes to the driver manager.
    /// Raises 3146 on any ODBC failure with the whole error chain, 3059 when the user cancels a driver's dialog. The
    /// driver is told not to complete the string by a dialog of its own. For a driver library that can't be loaded the
    /// chain also holds the loader's own reason.
    virtual std::unique_ptr<Database> OpenDatabase(const QString& name, const QString& connect) = 0;
};

} // namespace dao
