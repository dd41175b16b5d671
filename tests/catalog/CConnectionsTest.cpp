#include "CConnections.h"

#include "Application.h"
#include "Boxes.h"
#include "DBEngine.h"
#include "Recordset.h"
#include "ScriptedBoxes.h"
#include "ScriptedErrorForm.h"
#include "frmTWErr.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace
{

/// A database that only knows its name and whether it is open.
class NamedDatabase final : public dao::Database
{
public:
    NamedDatabase(QString connect, QStringList& closed) : m_connect(std::move(connect)), m_closed(closed) {}

    void Execute(const QString&) override { throw RuntimeError(ErrorNumber::OdbcFailed); }
    std::unique_ptr<dao::Recordset> OpenRecordset(const QString&, dao::RecordsetType) override
    {
        throw RuntimeError(ErrorNumber::OdbcFailed);
    }
    void Close() override { m_closed.append(Name()); }
    QString Name() const override { return m_connect.section(';', 1, 1).section('=', 1); }
    QString Connect() const override { return m_connect; }

private:
    QString m_connect;
    QStringList& m_closed;
};

/// A workspace whose databases are names; what it is to fail with is queued.
class NamedWorkspace final : public dao::Workspace
{
public:
    std::unique_ptr<dao::Database> OpenDatabase(const QString& name, const QString& connect) override
    {
        EXPECT_EQ(name, "");
        connects.append(connect);
        dao::DBEngine::Errors().Clear();
        if (failures.empty())
            return std::make_unique<NamedDatabase>(connect, closed);
        const std::function<void()> failure = failures.front();
        failures.pop_front();
        failure();
        return nullptr;
    }

    void failOnce(ErrorNumber number, const std::vector<dao::Error>& chain = {})
    {
        failures.push_back([number, chain] {
            for (const dao::Error& error : chain)
                dao::DBEngine::Errors().Append(error);
            throw RuntimeError(number);
        });
    }

    QStringList connects;
    QStringList closed;
    std::deque<std::function<void()>> failures;
};

class CConnectionsTest : public testing::Test
{
protected:
    CConnectionsTest()
    {
        auto owned = std::make_unique<NamedWorkspace>();
        workspace = owned.get();
        connections.setWorkspace(std::move(owned));
    }
    ~CConnectionsTest() override
    {
        while (connections.Count() >= 1)
            connections.Remove(1);
        connections.setWorkspace(nullptr);
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }

    template <class Call>
    static int raisedBy(Call&& call)
    {
        try {
            call();
        } catch (const RuntimeError& error) {
            return static_cast<int>(error.number());
        }
        return 0;
    }

    CConnections& connections = CConnections::instance();
    NamedWorkspace* workspace = nullptr;
    ScriptedBoxes boxes;
    ScriptedErrorForm form;
};

TEST_F(CConnectionsTest, AddOpensByTheDatasourceNameAndTheFixedDatabase)
{
    const CConnection* connection = connections.add("Stock control");
    ASSERT_TRUE(connection);
    EXPECT_EQ(workspace->connects, QStringList({"ODBC;DSN=Stock control;DATABASE=PUBS"}));
    EXPECT_EQ(connection->db()->Name(), "Stock control");
}

TEST_F(CConnectionsTest, ANameThatEndsInDsnInAnyCaseIsAFileDatasource)
{
    for (const char* name : {"/etc/a.dsn", "/etc/a.DSN", "/etc/a.dSn", ".dsn", "dsn", "a.dsn ", "a.dsnx"})
        connections.add(name);
    EXPECT_EQ(
        workspace->connects,
        QStringList({"ODBC;FILEDSN=/etc/a.dsn;DATABASE=PUBS", "ODBC;FILEDSN=/etc/a.DSN;DATABASE=PUBS",
                     "ODBC;FILEDSN=/etc/a.dSn;DATABASE=PUBS", "ODBC;FILEDSN=.dsn;DATABASE=PUBS",
                     "ODBC;DSN=dsn;DATABASE=PUBS", "ODBC;DSN=a.dsn ;DATABASE=PUBS", "ODBC;DSN=a.dsnx;DATABASE=PUBS"}));
}

TEST_F(CConnectionsTest, ConnectionsStandInTheOrderInWhichTheyWereOpened)
{
    const CConnection* b = connections.add("b");
    const CConnection* a = connections.add("a");
    EXPECT_EQ(connections.Count(), 2);
    EXPECT_EQ(connections.Names(), std::vector<QString>({"b", "a"}));
    EXPECT_EQ(connections.Connections(), std::vector<CConnection*>({connections.find("b"), connections.find("a")}));
    EXPECT_EQ(connections.find("a"), a);
    EXPECT_EQ(connections.find("b"), b);
}

TEST_F(CConnectionsTest, FindLooksAndNeverConnects)
{
    EXPECT_EQ(connections.find("a"), nullptr);
    EXPECT_TRUE(workspace->connects.isEmpty());
    connections.add("a");
    EXPECT_EQ(connections.find("A"), nullptr);
}

TEST_F(CConnectionsTest, AFailureToConnectShowsTheMessagesInABoxAndStoresNothing)
{
    workspace->failOnce(ErrorNumber::OdbcFailed,
                        {{17, "Unable to open\rthe catalog"}, {3, "isam error 106."}, {3146, "ODBC--call failed."}});
    boxes.expect("Failed to connect for the following reason:\n"
                 "\nError: &H11\nUnable to open the catalog\n"
                 "\nD-ISAM Error: 106 - Exclusive access to the file was not possible.\n",
                 boxes::Icon::Exclamation);
    EXPECT_EQ(connections.add("a"), nullptr);
    EXPECT_EQ(connections.Count(), 0);
    EXPECT_EQ(dao::DBEngine::Errors().Count(), 0) << "the box has answered for the chain";
    EXPECT_EQ(workspace->connects.size(), 1) << "there is no retry here";
}

TEST_F(CConnectionsTest, AFailedConnectOnDemandShowsOneBoxAndFetchesNothing)
{
    workspace->failOnce(ErrorNumber::OdbcFailed, {{3146, "ODBC--call failed."}});
    boxes.expect("Failed to connect for the following reason:\n", boxes::Icon::Exclamation);
    EXPECT_EQ(connections.Item("a"), nullptr);
    EXPECT_EQ(connections.Count(), 0);
}

TEST_F(CConnectionsTest, ACancelInADriversDialogIsPassedOverInSilence)
{
    workspace->failOnce(ErrorNumber::Cancelled);
    EXPECT_EQ(connections.add("a"), nullptr);
    workspace->failOnce(ErrorNumber::Cancelled);
    EXPECT_EQ(connections.Item("a"), nullptr);
    EXPECT_EQ(connections.Count(), 0);
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(form.shown().empty());
}

TEST_F(CConnectionsTest, AnyOtherFailureGoesToTheErrorFormAndRetryConnectsAgain)
{
    workspace->failOnce(ErrorNumber::PathFileAccess);
    form.expect(Press::Retry);
    EXPECT_TRUE(connections.add("a"));
    EXPECT_EQ(workspace->connects.size(), 2);
    EXPECT_EQ(form.shown().front().trappedIn, "CConnectionsAdd");
    EXPECT_EQ(form.shown().front().additional, "None");
    EXPECT_EQ(form.shown().front().callStack, QStringList({"CConnectionsAdd"}));
}

TEST_F(CConnectionsTest, AnyOtherFailureIgnoredGivesNothing)
{
    workspace->failOnce(ErrorNumber::PathFileAccess);
    form.expect(Press::Ignore);
    EXPECT_EQ(connections.Item("a"), nullptr);
    EXPECT_EQ(connections.Count(), 0);
    EXPECT_EQ(form.shown().front().callStack, QStringList({"CConnectionsAdd", "CConnections.Item[PropertyGet]"}));
}

TEST_F(CConnectionsTest, AMessageOfTheFileManagerWithoutACodeGoesToTheErrorForm)
{
    workspace->failOnce(ErrorNumber::OdbcFailed, {{3, "isam trouble"}});
    form.expect(Press::Ignore);
    EXPECT_EQ(connections.add("a"), nullptr);
    EXPECT_EQ(form.shown().front().number, "13");
    EXPECT_EQ(form.shown().front().trappedIn, "CConnectionsAdd");
}

TEST_F(CConnectionsTest, WithoutAWorkspaceNothingConnects)
{
    connections.setWorkspace(nullptr);
    form.expect(Press::Ignore);
    EXPECT_EQ(connections.add("a"), nullptr);
    EXPECT_EQ(form.shown().front().number, "91");
}

TEST_F(CConnectionsTest, ASecondConnectionOfANameIsAnError)
{
    const CConnection* first = connections.add("a");
    form.expect(Press::Ignore);
    EXPECT_EQ(connections.add("a"), nullptr);
    EXPECT_EQ(form.shown().front().number, "457");
    EXPECT_EQ(connections.Count(), 1);
    EXPECT_EQ(connections.find("a"), first);
}

TEST_F(CConnectionsTest, RemoveClosesTheDatabaseAndDropsTheEntry)
{
    for (const char* name : {"a", "b", "c"})
        connections.add(name);
    connections.Remove("b");
    EXPECT_EQ(workspace->closed, QStringList({"b"}));
    EXPECT_EQ(connections.Names(), std::vector<QString>({"a", "c"}));
    connections.Remove(2);
    EXPECT_EQ(workspace->closed, QStringList({"b", "c"}));
    EXPECT_EQ(connections.Names(), std::vector<QString>({"a"}));
}

TEST_F(CConnectionsTest, RemovingTheFirstUntilNoneIsLeftClosesAll)
{
    for (const char* name : {"a", "b", "c"})
        connections.add(name);
    while (connections.Count() >= 1)
        connections.Remove(1);
    EXPECT_EQ(workspace->closed, QStringList({"a", "b", "c"}));
    EXPECT_EQ(connections.Count(), 0);
}

TEST_F(CConnectionsTest, RemoveRaisesForWhatIsNotThere)
{
    connections.add("a");
    EXPECT_EQ(raisedBy([&] { connections.Remove("b"); }), 5);
    EXPECT_EQ(raisedBy([&] { connections.Remove("A"); }), 5);
    EXPECT_EQ(raisedBy([&] { connections.Remove(0); }), 9);
    EXPECT_EQ(raisedBy([&] { connections.Remove(2); }), 9);
    EXPECT_EQ(connections.Count(), 1);
    EXPECT_TRUE(workspace->closed.isEmpty());
}

TEST_F(CConnectionsTest, AnUnsetConnectionHasNoDatabaseAndEmptyTypes)
{
    CConnection connection;
    EXPECT_EQ(connection.db(), nullptr);
    EXPECT_EQ(connection.SQLDTs().Count(), 0);
    EXPECT_EQ(connection.LOCDTs().Count(), 0);
}

TEST_F(CConnectionsTest, TheSettersReplaceTheTypes)
{
    CConnection connection;
    CSQLDT character;
    character.SQL_TYPE_NAME = "CHAR";
    CSQLDTs sqlTypes;
    sqlTypes.add(character);
    connection.setSQLDTs(sqlTypes);
    CLOCDT date;
    date.LOCAL_TYPE_NAME = "DATE";
    CLOCDTs localTypes;
    localTypes.add(date);
    connection.setLOCDTs(localTypes);
    EXPECT_EQ(connection.SQLDTs().Item("CHAR").SQL_TYPE_NAME, "CHAR");
    EXPECT_EQ(connection.LOCDTs().Item("DATE").LOCAL_TYPE_NAME, "DATE");
    connection.setLOCDTs({});
    EXPECT_EQ(connection.LOCDTs().Count(), 0);
}

} // namespace
