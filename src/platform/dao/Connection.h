#pragma once

#include "Odbc.h"

#include <QString>

#include <memory>
#include <vector>

namespace dao
{

class Result;

/// One connection of the driver manager with its statement handles, as databases and recordsets share it. It closes
/// once: from then on every statement raises 91 and its results have no rows.
///
/// The rows of a result are those of its opening. A driver that promises static cursors which survive a commit keeps
/// them itself; for any other driver, unread rows are read into memory before the connection is used for something that
/// could change or drop them.
class Connection : public std::enable_shared_from_this<Connection>
{
public:
    /// Connects by a connect string without the leading "ODBC;". Raises 3146, and 3059 when a driver's dialog is
    /// cancelled.
    static std::shared_ptr<Connection> open(std::shared_ptr<odbc::Environment> environment, const QString& connect);

    ~Connection();

    void execute(const QString& statement);
    /// Runs a statement and leaves the result before its first row.
    std::unique_ptr<Result> query(const QString& statement);
    void close();

    odbc::Encoding encoding() const { return m_encoding; }
    /// The rows that a fetch may bring at once, given that cells cut short are then got one by one.
    std::size_t blockLimit() const { return m_getsInBlocks ? 16 : 1; }
    /// True when a cell that was bound can be got once more.
    bool bindsColumns() const { return m_getsBound; }

private:
    friend class Result;

    Connection(std::shared_ptr<odbc::Environment> environment, odbc::ConnectionHandle handle);

    void connect(const QString& connect);
    SQLRETURN driverConnect(const QString& connect);
    void askAbilities();
    void announce(const QString& statement) const;
    void requireOpen() const;
    SQLRETURN send(const odbc::StatementHandle& statement, const QString& text) const;
    [[noreturn]] void failWith(const odbc::StatementHandle& statement) const;

    odbc::StatementHandle takeStatement();
    void giveBack(odbc::StatementHandle statement);
    /// Reads all results to their ends if that many or more are unread; 0 stands for no limit.
    void makeRoom(std::size_t limit);
    void enlist(Result* result);
    void forget(Result* result);

    std::shared_ptr<odbc::Environment> m_environment;
    odbc::ConnectionHandle m_handle;
    bool m_connected = false;
    QString m_datasource;

    odbc::Encoding m_encoding = odbc::Encoding::Wide;
    bool m_getsBound = false;
    bool m_getsInBlocks = false;
    bool m_hasMoreResults = false;
    bool m_cursorsSurviveCommit = false;
    bool m_staticCursors = false;
    std::size_t m_activityLimit = 0;

    odbc::StatementHandle m_executing;
    std::vector<odbc::StatementHandle> m_spare;
    /// All results that live, read to their ends or not.
    std::vector<Result*> m_results;
};

} // namespace dao
