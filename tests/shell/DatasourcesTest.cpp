#include "MainWindowFixture.h"
#include "RecordingPanes.h"
#include "WatchedWorkspace.h"

#include "BandBar.h"
#include "CConnections.h"
#include "Database.h"
#include "PaneForm.h"
#include "Recordset.h"
#include "RuntimeError.h"
#include "frmTWErr.h"

#include <QDir>
#include <QFile>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{

const QStringList typeCatalogs{u"SELECT * FROM TW_SQLDT"_s, u"SELECT * FROM TW_LOCDT"_s};

class Datasources : public MainWindowTest
{
protected:
    static int connections() { return CConnections::instance().Count(); }
};

class DatasourcesWithPanes : public Datasources
{
protected:
    RecordingPanes asked;
};

} // namespace

// The list ------------------------------------------------------------------------------------------------------------

TEST_F(Datasources, ThoseOfTheFamilyAreListedByTheExactDescriptionOfTheirDriver)
{
    const auto add = [&](const char* suffix, const QString& driver) {
        world.addForeignDatasource(datasource + QLatin1String(suffix), driver);
    };
    add("Trailing", u"Tarnwick ODBC  "_s);
    add("Prefix", u"Tarnwick ODBC 2"_s);
    add("Shorter", u"Tarnwick ODB"_s);
    add("Case", u"tarnwick odbc"_s);
    add("Foreign", u"SQLite3"_s);

    start();

    EXPECT_EQ(wholeTree(), (QStringList{u"DSN \"%1\" DSN Ghost +"_s.arg(datasource),
                                        u"DSN \"%1Trailing\" DSN Ghost +"_s.arg(datasource)}));
    EXPECT_EQ(connections(), 0);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(Datasources, WithoutAnyTheTreeIsEmptyAndTheWelcomePaneShows)
{
    QFile empty(world.folder() + "/none.ini");
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    qputenv("ODBCINI", QFile::encodeName(empty.fileName()));
    start();
    EXPECT_EQ(rootTexts(), QStringList());
    EXPECT_EQ(window->nodes().Count(), 0);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
}

TEST_F(Datasources, WithForeignOnesAloneTheTreeIsEmptyAndTheWelcomePaneShows)
{
    world.addForeignDatasource(datasource + "Foreign", u"SQLite3"_s);
    world.addForeignDatasource(datasource + "Other", u"Tarnwick ODBC 2"_s);
    world.removeDatasource(datasource);
    ASSERT_EQ(dao::DBEngine::DataSources().size(), 2U);
    start();
    EXPECT_EQ(rootTexts(), QStringList());
    EXPECT_EQ(window->nodes().Count(), 0);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
}

TEST_F(Datasources, OneThatUserAndSystemBothHaveIsListedOnceAndIsTheUsers)
{
    world.addSystemDatasource(datasource);
    world.addSystemDatasource(datasource + "System");
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('BAKER')"_s);

    start();

    QStringList roots = rootTexts();
    roots.sort();
    EXPECT_EQ(roots, (QStringList{datasource, datasource + "System"}));
    expandTo(key({u"US"_s}));
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BAKER"_s, u"CLERK"_s}));
    EXPECT_FALSE(QFile::exists(world.systemCatalogFile(datasource)));
    expandTo(keyBelow(datasource + "System", {u"US"_s}));
    EXPECT_EQ(children(keyBelow(datasource + "System", {u"US"_s})), QStringList{u"ADMIN"_s});
    EXPECT_TRUE(QFile::exists(world.systemCatalogFile(datasource + "System")));
}

TEST_F(Datasources, NamesOfAnyKindAreListedAndConnected)
{
    for (const QString& name :
         {u"O'Brien %1"_s.arg(datasource), u"Gr\u00fc\u00dfe \u6570 "_s + datasource, u"a;b "_s + datasource}) {
        SCOPED_TRACE(name.toStdString());
        world.addDatasource(name);
    }
    start();
    EXPECT_EQ(rootTexts().size(), 4);
    for (const QString& name : {u"O'Brien %1"_s.arg(datasource), u"Gr\u00fc\u00dfe \u6570 "_s + datasource}) {
        const QString users = keyBelow(name, {u"US"_s});
        expandTo(users);
        EXPECT_EQ(children(users), QStringList{u"ADMIN"_s}) << name.toStdString();
        ASSERT_TRUE(CConnections::instance().find(name));
        EXPECT_EQ(CConnections::instance().find(name)->db()->Name(), name);
    }
}

TEST_F(DatasourcesWithPanes, RefreshClosesEverythingAndListsAnew)
{
    const QStringList names{datasource, datasource + "B", datasource + "C"};
    world.addDatasource(names[1]);
    world.addDatasource(names[2]);
    start();
    for (const QString& name : names)
        expandTo(keyBelow(name, {u"US"_s}));
    click(keyBelow(names[1], {u"US"_s, u"us=ADMIN"_s}));
    ASSERT_EQ(connections(), 3);
    world.addDatasource(datasource + "D");
    asked.take();
    asked.lives.clear();
    statements.clear();
    int open = -1;
    QStringList listed;
    asked.meanwhile = [&](RecordingPane&, const QString&) {
        open = connections();
        listed = rootTexts();
    };

    chooseInBar(u"mnuFileRefresh"_s);

    EXPECT_EQ(asked.take(), QStringList{u"frmWelcome.Display()"_s});
    EXPECT_EQ(open, 0);
    EXPECT_EQ(listed, names + QStringList{datasource + "D"});
    EXPECT_EQ(connections(), 0);
    for (const QString& name : names)
        EXPECT_EQ(line(node(keyBelow(name))), u"DSN \"%1\" DSN Ghost +"_s.arg(name));
    EXPECT_EQ(window->nodes().Count(), 8);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_TRUE(asked.lives.contains(u"unload frmUser"_s));
    EXPECT_FALSE(asked.lives.contains(u"unload frmWelcome"_s));
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_EQ(forms::loadedNames(), QStringList{u"frmWelcome"_s});

    clickExpander(key());
    EXPECT_EQ(statements.statements(), typeCatalogs);
    EXPECT_EQ(connections(), 1);
}

TEST_F(Datasources, RefreshClosesAllConnectionsBeforeItListsTheFirstDatasource)
{
    const QStringList names{datasource, datasource + "B", datasource + "C"};
    world.addDatasource(names[1]);
    world.addDatasource(names[2]);
    start();
    QStringList seen;
    const auto nodes = [&] { return window->tvwExplorer().Nodes().Count(); };
    CConnections::instance().setWorkspace(std::make_unique<WatchedWorkspace>(
        [&](const QString& name) { seen.append(u"close %1 with %2 nodes"_s.arg(name).arg(nodes())); }));
    for (const QString& name : names)
        clickExpander(keyBelow(name));
    ASSERT_EQ(connections(), 3);
    QObject::connect(window->tvwExplorer().model(), &QAbstractItemModel::rowsInserted, window.get(),
                     [&](const QModelIndex& parent) {
                         if (!parent.isValid())
                             seen.append(u"list with %1 connections"_s.arg(connections()));
                     });

    chooseInBar(u"mnuFileRefresh"_s);

    EXPECT_EQ(seen, (QStringList{u"close %1 with 0 nodes"_s.arg(names[0]), u"close %1 with 0 nodes"_s.arg(names[1]),
                                 u"close %1 with 0 nodes"_s.arg(names[2]), u"list with 0 connections"_s}));
    EXPECT_EQ(rootTexts(), names);
}

TEST_F(DatasourcesWithPanes, TheRefreshButtonDoesTheSame)
{
    start();
    expandTo(key({u"US"_s}));
    asked.take();
    window->toolBar(u"tbrMain"_s).Button(u"DSN Refresh"_s).press();
    EXPECT_EQ(asked.take(), QStringList{u"frmWelcome.Display()"_s});
    EXPECT_EQ(wholeTree(), (QStringList{u"DSN \"%1\" DSN Ghost +"_s.arg(datasource)}));
    EXPECT_EQ(connections(), 0);
}

TEST_F(DatasourcesWithPanes, AMissingFileDuringARefreshHasABoxOfItsOwn)
{
    start();
    click(key());
    asked.atUnload = [&](const QString&) {
        asked.atUnload = nullptr;
        throw RuntimeError(ErrorNumber::FileNotFound);
    };
    boxes.expectInform(u"An error occurred while trying to read the directory:\n\n"
                       "Unable to read file DSN information"_s);
    chooseInBar(u"mnuFileRefresh"_s);
    EXPECT_EQ(rootTexts(), QStringList{datasource});
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(DatasourcesWithPanes, AnyOtherFailureDuringARefreshIsReported)
{
    start();
    click(key());
    asked.atUnload = [&](const QString&) {
        asked.atUnload = nullptr;
        throw RuntimeError(ErrorNumber::PathNotFound);
    };
    errors.expect(Press::Ignore);
    chooseInBar(u"mnuFileRefresh"_s);
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"76"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"mdiMain.FetchTreeviewRoot"_s);
    // The error form was unloaded before the pane, and the names of the routines that still run went with it.
    EXPECT_EQ(errors.shown()[0].callStack, QStringList());
}

TEST_F(Datasources, AfterARefreshTheCallStackHoldsWhatWasEnteredSince)
{
    start();
    chooseInBar(u"mnuFileRefresh"_s);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    statements.failAt(1);
    errors.expect(Press::Ignore);
    clickExpander(key());
    EXPECT_EQ(errors.shown().back().callStack, (QStringList{u"CSQLDTs.FetchDTs"_s, u"CConnections.Item[PropertyGet]"_s,
                                                            u"mdiMain.tvw_Explorer_Expand"_s}));
}

TEST_F(Datasources, ARightClickedRefreshFromAPaneLeavesNoStaleNodes)
{
    start();
    expandTo(key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s}));
    click(key({u"FI"_s, u"fi=PAYROLL"_s}));
    chooseInBar(u"mnuFileRefresh"_s);
    chooseInBar(u"mnuFileRefresh"_s);
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
    EXPECT_EQ(selectedKey(), QString());
}

// Connecting ----------------------------------------------------------------------------------------------------------

TEST_F(Datasources, AnUnreachableOneShowsOneBoxAndStaysClosed)
{
    const QString name = datasource + "Lost";
    world.addUnreachableDatasource(name);
    start();
    expectUnreachable();

    clickExpander(keyBelow(name));

    EXPECT_TRUE(boxes.done());
    EXPECT_EQ(line(node(keyBelow(name))), u"DSN \"%1\" DSN Ghost +"_s.arg(name));
    EXPECT_FALSE(node(keyBelow(name)).Expanded());
    EXPECT_EQ(connections(), 0);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_TRUE(node(keyBelow(name)).Selected());
    EXPECT_TRUE(window->tvwExplorer().updatesEnabled());
    EXPECT_TRUE(errors.shown().empty());
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
}

TEST_F(Datasources, TheOneThatIsBeingConnectedIsSelectedMeanwhile)
{
    const QString name = datasource + "Lost";
    world.addUnreachableDatasource(name);
    start();
    window->tvwExplorer().setSelectedItem(find(key()));
    ASSERT_EQ(selectedKey(), key());
    QString selected;
    QString seen;
    expectUnreachable([&] {
        const TreeView& tree = window->tvwExplorer();
        selected = selectedKey();
        seen = tree.currentIndex().data().toString();
        EXPECT_TRUE(tree.selectionModel()->isSelected(tree.currentIndex()));
        EXPECT_TRUE(tree.updatesEnabled());
    });

    node(keyBelow(name)).setExpanded(true);

    EXPECT_EQ(selected, keyBelow(name));
    EXPECT_EQ(seen, name);
}

TEST_F(Datasources, AnUnreachableOneCanBeTriedAgain)
{
    const QString name = datasource + "Lost";
    world.addUnreachableDatasource(name);
    start();
    expectUnreachable();
    clickExpander(keyBelow(name));
    ASSERT_TRUE(QDir(world.folder()).mkdir(u"nowhere"_s));

    clickExpander(keyBelow(name));

    EXPECT_EQ(children(keyBelow(name)), (QStringList{u"Files"_s, u"Databases"_s, u"Users"_s}));
    EXPECT_EQ(connections(), 1);
    EXPECT_EQ(line(node(keyBelow(name))), u"DSN \"%1\" Datasource"_s.arg(name));
}

TEST_F(Datasources, ConnectingReadsTheTypeCatalogsOnceInOrder)
{
    start();
    expandTo(key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s}));
    EXPECT_EQ(statements.statements().first(2), typeCatalogs);
    EXPECT_EQ(statements.statements().count(typeCatalogs[0]), 1);
    EXPECT_EQ(statements.statements().count(typeCatalogs[1]), 1);
    for (const QString& from : statements.datasources())
        EXPECT_EQ(from, datasource);
    CConnection* connection = CConnections::instance().find(datasource);
    ASSERT_TRUE(connection);
    EXPECT_GT(connection->SQLDTs().Count(), 0);
    EXPECT_GT(connection->LOCDTs().Count(), 0);
}

TEST_F(Datasources, EachTypeCatalogThatFailsIsReportedAndTheDatasourceOpensWithoutIt)
{
    const struct {
        int statement;
        QString routine;
        int sqlTypes;
        int localTypes;
    } rows[] = {{1, u"CSQLDTs.FetchDTs"_s, 0, 1}, {2, u"CLOCDTs.FetchDTs"_s, 1, 0}};
    start();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.statement);
        statements.clear();
        statements.failAt(row.statement);
        errors.expect(Press::Ignore);
        clickExpander(key());
        EXPECT_EQ(errors.shown().back().trappedIn, row.routine);
        EXPECT_EQ(statements.statements(), typeCatalogs);
        EXPECT_EQ(children(key()), (QStringList{u"Files"_s, u"Databases"_s, u"Users"_s}));
        EXPECT_EQ(line(node(key())), u"DSN \"%1\" Datasource"_s.arg(datasource));
        CConnection* connection = CConnections::instance().find(datasource);
        ASSERT_TRUE(connection);
        EXPECT_EQ(std::min(connection->SQLDTs().Count(), 1), row.sqlTypes);
        EXPECT_EQ(std::min(connection->LOCDTs().Count(), 1), row.localTypes);
        chooseInBar(u"mnuFileRefresh"_s);
    }
}

TEST_F(Datasources, ATypeCatalogThatFailsIsReadAgainOnRetry)
{
    start();
    for (int statement : {1, 2}) {
        SCOPED_TRACE(statement);
        statements.clear();
        statements.failAt(statement);
        errors.expect(Press::Retry);
        clickExpander(key());
        QStringList expected = typeCatalogs;
        expected.insert(statement, typeCatalogs[statement - 1]);
        EXPECT_EQ(statements.statements(), expected);
        CConnection* connection = CConnections::instance().find(datasource);
        ASSERT_TRUE(connection);
        EXPECT_GT(connection->SQLDTs().Count(), 0);
        EXPECT_GT(connection->LOCDTs().Count(), 0);
        chooseInBar(u"mnuFileRefresh"_s);
    }
}

TEST_F(Datasources, ConnectInTheMenuLoadsTheLevelAndLeavesTheNodeClosed)
{
    start();
    choose(key(), u"mnu_DSNConnect"_s);
    EXPECT_EQ(statements.statements(), typeCatalogs);
    EXPECT_EQ(connections(), 1);
    EXPECT_EQ(line(node(key())), u"DSN \"%1\" Datasource"_s.arg(datasource));
    EXPECT_EQ(children(key()), (QStringList{u"Files"_s, u"Databases"_s, u"Users"_s}));
    EXPECT_FALSE(node(key()).Expanded());
    clickExpander(key());
    EXPECT_EQ(statements.statements(), typeCatalogs);
    EXPECT_TRUE(node(key()).Expanded());
}

TEST_F(Datasources, ConnectInTheMenuOnAnUnreachableOneShowsOneBox)
{
    const QString name = datasource + "Lost";
    world.addUnreachableDatasource(name);
    start();
    expectUnreachable();
    choose(keyBelow(name), u"mnu_DSNConnect"_s);
    EXPECT_EQ(line(node(keyBelow(name))), u"DSN \"%1\" DSN Ghost +"_s.arg(name));
    EXPECT_EQ(connections(), 0);
}

TEST_F(Datasources, ANameThatEndsInDsnInAnyCaseConnectsThroughTheFile)
{
    const QString path = world.addFileDatasource(datasource + "File");
    ASSERT_TRUE(path.endsWith(u".dsn"_s));
    // A driver manager may look for such a name with the usual suffix behind it.
    for (const char* other : {"/other.DsN", "/other.DsN.dsn"})
        ASSERT_TRUE(QFile::copy(path, world.folder() + QLatin1String(other)));
    start();
    for (const QString& name : {path, world.folder() + "/other.DsN"}) {
        CNode* source = window->nodes().add(nullptr, u"FDSN"_s, name, u"file"_s, u"DSN Ghost"_s);
        ASSERT_TRUE(source);
        window->nodes().addPlaceholder(node(source->Key));
        expandTo(keyBelow(name, {u"US"_s}));
        EXPECT_EQ(children(keyBelow(name, {u"US"_s})), QStringList{u"ADMIN"_s});
        ASSERT_TRUE(CConnections::instance().find(name));
        EXPECT_EQ(CConnections::instance().find(name)->db()->Name(), name);
        EXPECT_EQ(CConnections::instance().find(name)->db()->Connect(), "ODBC;FILEDSN=" + name + ";DATABASE=PUBS");
    }
    expandTo(key({u"US"_s}));
    EXPECT_EQ(CConnections::instance().find(datasource)->db()->Connect(), "ODBC;DSN=" + datasource + ";DATABASE=PUBS");
}

TEST_F(Datasources, ThePaneSaysWhetherADatasourceIsConnected)
{
    start();
    const auto description = [&] {
        return dynamic_cast<const PaneForm*>(window->currentPane())->lblDescription()->text();
    };
    click(key());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    EXPECT_EQ(paneTitle(), datasource + " (Unconnected) - Datasource Properties");
    EXPECT_EQ(description(), u"Please connect to this datasource to explorer it further..."_s);
    clickExpander(key());
    EXPECT_EQ(paneTitle(), datasource + " (Connected) - Datasource Properties");
    EXPECT_EQ(description(), QString());
    choose(key(), u"mnu_DSNDisconnect"_s);
    click(key());
    EXPECT_EQ(paneTitle(), datasource + " (Unconnected) - Datasource Properties");
}

// Disconnecting -------------------------------------------------------------------------------------------------------

TEST_F(DatasourcesWithPanes, DisconnectClosesAndKeepsTheLevelsUntilTheNextExpansion)
{
    start();
    expandTo(key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s}));
    click(key({u"FI"_s, u"fi=PAYROLL"_s}));
    click(key({u"FI"_s}));
    const int nodes = window->nodes().Count();
    asked.take();
    asked.lives.clear();
    statements.clear();
    ASSERT_EQ(currentPane(), u"frmFiles"_s);

    choose(key(), u"mnu_DSNDisconnect"_s);

    EXPECT_EQ(connections(), 0);
    EXPECT_EQ(line(node(key())), u"DSN \"%1\" DSN Ghost"_s.arg(datasource));
    EXPECT_FALSE(node(key()).Expanded());
    EXPECT_EQ(window->nodes().Count(), nodes);
    EXPECT_EQ(children(key()), (QStringList{u"Files"_s, u"Databases"_s, u"Users"_s}));
    EXPECT_EQ(asked.take(), QStringList{u"frmWelcome.Display()"_s});
    QStringList unloaded = asked.lives.filter(u"unload"_s);
    unloaded.sort();
    EXPECT_EQ(unloaded, (QStringList{u"unload frmDSN"_s, u"unload frmFields"_s, u"unload frmFile"_s,
                                     u"unload frmFiles"_s, u"unload frmWelcome"_s}));
    EXPECT_EQ(forms::loadedNames(), (QStringList{u"frmTWErr"_s, u"frmWelcome"_s}));
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_TRUE(window->currentPane()->isVisible());
    EXPECT_EQ(statements.statements(), QStringList());
    // The right click keeps the selection this time.
    EXPECT_EQ(selectedKey(), key());

    clickExpander(key());
    EXPECT_EQ(statements.statements(), typeCatalogs);
    EXPECT_EQ(lines(key()).first(), u"FI \"Files\" Files data \"%1\" +"_s.arg(datasource));
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
}

TEST_F(DatasourcesWithPanes, DisconnectUnloadsPanesOfOtherDatasourcesToo)
{
    const QString other = datasource + "B";
    world.addDatasource(other);
    start();
    expandTo(key({u"US"_s}));
    expandTo(keyBelow(other, {u"US"_s}));
    click(keyBelow(other, {u"US"_s, u"us=ADMIN"_s}));
    asked.lives.clear();
    choose(key(), u"mnu_DSNDisconnect"_s);
    EXPECT_TRUE(asked.lives.contains(u"unload frmUser"_s));
    EXPECT_EQ(connections(), 1);
    EXPECT_TRUE(CConnections::instance().find(other));
    EXPECT_EQ(node(keyBelow(other)).Image(), u"Datasource"_s);
    EXPECT_TRUE(node(keyBelow(other, {u"US"_s})).Expanded());
}

TEST_F(DatasourcesWithPanes, DisconnectOnAnUnconnectedOneChangesNothing)
{
    const QString other = datasource + "B";
    world.addDatasource(other);
    start();
    expandTo(key({u"US"_s}));
    click(key({u"US"_s, u"us=ADMIN"_s}));
    window->tvwExplorer().setSelectedItem(find(keyBelow(other)));
    const QStringList before = wholeTree();
    asked.take();
    asked.lives.clear();
    statements.clear();

    window->mnu_DSNDisconnect_Click();

    EXPECT_EQ(wholeTree(), before);
    EXPECT_EQ(connections(), 1);
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(asked.lives, QStringList());
    EXPECT_EQ(currentPane(), u"frmUser"_s);
    EXPECT_EQ(selectedKey(), keyBelow(other));
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(Datasources, OnlyTheRightClickThatDisconnectsKeepsItsSelection)
{
    const QString other = datasource + "B";
    world.addDatasource(other);
    start();
    clickExpander(key());
    click(keyBelow(other));
    choose(key(), u"mnu_DSNDisconnect"_s);
    EXPECT_EQ(selectedKey(), key());
    rightClick(keyBelow(other));
    EXPECT_EQ(selectedKey(), key());
}

TEST_F(Datasources, DisconnectLosesAPaneInMidEditWithoutAQuestion)
{
    start();
    clickExpander(key());
    chooseInBar(u"mnuViewOptions"_s);
    ASSERT_EQ(currentPane(), u"frmOptions"_s);
    choose(key(), u"mnu_DSNDisconnect"_s);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_EQ(forms::loaded(u"frmOptions"_s), nullptr);
}
