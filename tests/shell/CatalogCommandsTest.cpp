#include "MainWindowFixture.h"
#include "RecordingPanes.h"

#include "CConnections.h"
#include "Settings.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

const QStringList typeCatalogs{u"SELECT * FROM TW_SQLDT"_s, u"SELECT * FROM TW_LOCDT"_s};

const QString expandQuestion = u"This process could take some time.\nAre you sure you wish to Expand All?"_s;

/// The statements of Clear Catalog, each behind the status text under which it runs.
const std::vector<std::pair<QString, QString>> clearing{
    {u"Removing Column definitions..."_s, u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME <> 'TW'"_s},
    {u"Removing Database definitions..."_s, u"DELETE FROM TW_DB WHERE DATABASE_NAME <> 'TW'"_s},
    {u"Removing Database privileges..."_s, u"DELETE FROM TW_DBPRV WHERE USER_NAME <> 'ADMIN' "_s},
    {u"Removing Database privileges..."_s, u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME <> 'TW' "_s},
    {u"Removing Field definitions..."_s,
     u"DELETE FROM TW_FIELD WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', 'LOCDT', 'SQLDT', 'TABLE', 'TBLPRV', 'USER')"_s},
    {u"Removing File definitions..."_s,
     u"DELETE FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', 'LOCDT', 'SQLDT', 'TABLE', 'TBLPRV', 'USER')"_s},
    {u"Removing Table definitions..."_s, u"DELETE FROM TW_TABLE WHERE DATABASE_NAME <> 'TW'"_s},
    {u"Removing Table privileges..."_s, u"DELETE FROM TW_TBLPRV "_s},
    {u"Removing User privileges..."_s, u"DELETE FROM TW_USER WHERE USER_NAME <> 'ADMIN'"_s},
};

QStringList clearStatements(qsizetype count = 9)
{
    QStringList all;
    for (const auto& [status, statement] : clearing)
        all.append(statement);
    return all.first(count);
}

/// Sees the status line at each statement, and passes the statement on.
class StatusWatcher final : public dao::StatementObserver
{
public:
    explicit StatusWatcher(const mdiMain& window)
        : m_status(*window.findChild<QLabel*>(u"Status"_s)), m_former(dao::DBEngine::setObserver(this))
    {
    }
    ~StatusWatcher() override { dao::DBEngine::setObserver(m_former); }
    StatusWatcher(const StatusWatcher&) = delete;
    StatusWatcher& operator=(const StatusWatcher&) = delete;

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        seen.emplace_back(m_status.text(), statement);
        return m_former->beforeStatement(datasource, statement);
    }

    std::vector<std::pair<QString, QString>> seen;

private:
    const QLabel& m_status;
    dao::StatementObserver* m_former;
};

class ClearCatalog : public MainWindowTest
{
protected:
    QString question() const
    {
        return u"WARNING - You are about to remove ALL the catalog definitions for Datasource '%1'.\n"
               "Are you sure you wish to completely clear the calaog?"_s.arg(datasource);
    }

    void expectYes() { boxes.expectAsk(question(), boxes::Answer::Yes); }
    void expectCleared() { boxes.expectInform(u"The catalog has been cleared."_s); }

    QStringList column(const QString& statement) const
    {
        QStringList all;
        for (const QStringList& row : world.rows(datasource, statement))
            all.append(row.join('|'));
        return all;
    }
};

class ExpandAll : public MainWindowTest
{
};

} // namespace

TEST_F(ClearCatalog, RunsItsStatementsInOrderEachUnderItsStatusText)
{
    start();
    clickExpander(key());
    StatusWatcher watcher(*window);
    expectYes();
    expectCleared();

    choose(key(), u"mnu_DSNClear"_s);

    EXPECT_EQ(watcher.seen, clearing);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(ClearCatalog, LeavesTheCatalogsOwnRows)
{
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('CLERK', 'TW'), ('ADMIN', 'SALES')"_s);
    const QStringList systemFiles = column(u"SELECT * FROM TW_FILE WHERE FILE_NAME NOT IN ('KEY', 'PAYROLL', 'EMPTY') "
                                           "ORDER BY FILE_NAME"_s);
    const QStringList systemFields = column(u"SELECT * FROM TW_FIELD WHERE FILE_NAME NOT IN ('KEY', 'PAYROLL') "
                                            "ORDER BY FILE_NAME, FIELD_NUMBER"_s);
    const QStringList systemTables = column(u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'TW' ORDER BY TABLE_NAME"_s);
    const QStringList systemColumns =
        column(u"SELECT * FROM TW_COLUMN WHERE DATABASE_NAME = 'TW' ORDER BY TABLE_NAME, COLUMN_NUMBER"_s);
    ASSERT_EQ(systemFiles.size(), 12);
    ASSERT_FALSE(column(u"SELECT * FROM TW_TBLPRV WHERE DATABASE_NAME = 'TW'"_s).isEmpty());
    start();
    clickExpander(key());
    expectYes();
    expectCleared();

    choose(key(), u"mnu_DSNClear"_s);

    EXPECT_EQ(column(u"SELECT * FROM TW_FILE ORDER BY FILE_NAME"_s), systemFiles);
    EXPECT_EQ(column(u"SELECT * FROM TW_FIELD ORDER BY FILE_NAME, FIELD_NUMBER"_s), systemFields);
    EXPECT_EQ(column(u"SELECT DATABASE_NAME FROM TW_DB"_s), QStringList{u"TW"_s});
    EXPECT_EQ(column(u"SELECT * FROM TW_TABLE ORDER BY TABLE_NAME"_s), systemTables);
    EXPECT_EQ(column(u"SELECT * FROM TW_COLUMN ORDER BY TABLE_NAME, COLUMN_NUMBER"_s), systemColumns);
    EXPECT_EQ(column(u"SELECT USER_NAME FROM TW_USER"_s), QStringList{u"ADMIN"_s});
    EXPECT_EQ(column(u"SELECT USER_NAME, DATABASE_NAME FROM TW_DBPRV"_s), QStringList{u"ADMIN|TW"_s});
    EXPECT_EQ(column(u"SELECT * FROM TW_TBLPRV"_s), QStringList());
}

TEST_F(ClearCatalog, CollapsesTheDatasourceSoThatTheNextExpansionReadsAnew)
{
    start();
    expandTo(key({u"FI"_s}));
    expectYes();
    expectCleared();

    choose(key(), u"mnu_DSNClear"_s);

    EXPECT_EQ(wholeTree(), (QStringList{u"DSN \"%1\" Datasource +"_s.arg(datasource)}));
    EXPECT_TRUE(CConnections::instance().find(datasource));
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    expandTo(key({u"FI"_s}));
    EXPECT_EQ(children(key({u"FI"_s})).size(), 12);
    EXPECT_FALSE(children(key({u"FI"_s})).contains(u"KEY"_s));
}

TEST_F(ClearCatalog, ThePaneOfARowThatIsGoneGivesWayToTheDatasource)
{
    RecordingPanes asked;
    start();
    expandTo(key({u"US"_s}));
    click(key({u"US"_s, u"us=CLERK"_s}));
    asked.take();
    expectYes();
    expectCleared();
    choose(key(), u"mnu_DSNClear"_s);
    EXPECT_EQ(asked.take(), QStringList{u"frmDSN.Display(%1)"_s.arg(datasource)});
    EXPECT_EQ(selectedKey(), key());
}

TEST_F(ClearCatalog, ByTheMenuKeyThePaneOfARowThatIsGoneGivesWayToo)
{
    RecordingPanes asked;
    start();
    expandTo(key({u"US"_s}));
    click(key({u"US"_s}));
    click(key({u"US"_s, u"us=CLERK"_s}));
    type(Qt::Key_Home);
    asked.take();
    expectYes();
    expectCleared();
    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (QAction* entry : menu->actions()) {
            if (entry->objectName() == "mnu_DSNClear"_L1)
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
        }
    });
    type(Qt::Key_Menu);
    EXPECT_EQ(asked.take(), QStringList{u"frmDSN.Display(%1)"_s.arg(datasource)});
}

TEST_F(ClearCatalog, NoLeavesEverything)
{
    start();
    expandTo(key({u"US"_s}));
    const QStringList catalog = wholeCatalog();
    const QStringList tree = wholeTree();
    statements.clear();
    boxes.expectAsk(question(), boxes::Answer::No);

    choose(key(), u"mnu_DSNClear"_s);

    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(wholeCatalog(), catalog);
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(ClearCatalog, AnythingButADatasourceIsRefused)
{
    start();
    expandTo(key({u"US"_s}));
    statements.clear();
    for (const QStringList& current : {QStringList{u"US"_s}, QStringList{u"US"_s, u"us=CLERK"_s}}) {
        click(key(current));
        boxes.expectInform(u"Please select a Datasource before selecting 'Clear Catalog'"_s);
        window->mnu_DSNClear_Click();
        EXPECT_EQ(statusText(), u"Ready"_s);
    }
    window->setCurrentItem({});
    boxes.expectInform(u"Please select a Datasource before selecting 'Clear Catalog'"_s);
    window->mnu_DSNClear_Click();
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(ClearCatalog, AnUnconnectedDatasourceIsConnectedAfterTheQuestion)
{
    start();
    click(key());
    boxes.expectAsk(question(), boxes::Answer::Yes, [&] { EXPECT_EQ(CConnections::instance().Count(), 0); });
    expectCleared();
    window->mnu_DSNClear_Click();
    EXPECT_EQ(statements.statements(), typeCatalogs + clearStatements());
}

TEST_F(ClearCatalog, AnUnreachableDatasourceEndsItAfterTheBoxOfTheConnection)
{
    const QString lost = datasource + "Lost";
    world.addUnreachableDatasource(lost);
    start();
    click(keyBelow(lost));
    boxes.expectAsk(u"WARNING - You are about to remove ALL the catalog definitions for Datasource '%1'.\n"
                    "Are you sure you wish to completely clear the calaog?"_s.arg(lost),
                    boxes::Answer::Yes);
    expectUnreachable();
    window->mnu_DSNClear_Click();
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(ClearCatalog, IgnoreHalfWayLeavesWhatWasDoneInForce)
{
    start();
    expandTo(key({u"US"_s}));
    const QStringList tree = wholeTree();
    statements.clear();
    statements.failAt(5);
    expectYes();
    errors.expect(Press::Ignore);

    choose(key(), u"mnu_DSNClear"_s);

    EXPECT_EQ(statements.statements(), clearStatements(5));
    EXPECT_EQ(errors.shown().back().trappedIn, u"mdiMain.mnu_DSNClear_Click"_s);
    EXPECT_EQ(column(u"SELECT COUNT(*) FROM TW_COLUMN WHERE DATABASE_NAME <> 'TW'"_s), QStringList{u"0"_s});
    EXPECT_EQ(column(u"SELECT DATABASE_NAME FROM TW_DB"_s), QStringList{u"TW"_s});
    EXPECT_EQ(column(u"SELECT COUNT(*) FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s), QStringList{u"3"_s});
    EXPECT_EQ(column(u"SELECT COUNT(*) FROM TW_TABLE WHERE DATABASE_NAME = 'SALES'"_s), QStringList{u"1"_s});
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(ClearCatalog, AUserWithoutPrivilegesSeesOneBoxAndNothingIsDeleted)
{
    start();
    clickExpander(key());
    const QStringList catalog = wholeCatalog();
    statements.clear();
    statements.failAt(1, {{-1, "[Test] No privileges for this."}});
    expectYes();
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);

    choose(key(), u"mnu_DSNClear"_s);

    EXPECT_EQ(statements.statements(), clearStatements(1));
    EXPECT_EQ(wholeCatalog(), catalog);
    EXPECT_TRUE(errors.shown().empty());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(ClearCatalog, OneDatasourceIsClearedAndNoOther)
{
    const QString other = datasource + "B";
    world.addDatasource(other);
    start();
    clickExpander(key());
    clickExpander(keyBelow(other));
    world.run(other, u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
    expectYes();
    expectCleared();
    choose(key(), u"mnu_DSNClear"_s);
    EXPECT_EQ(column(u"SELECT USER_NAME FROM TW_USER"_s), QStringList{u"ADMIN"_s});
    EXPECT_EQ(world.rows(other, u"SELECT USER_NAME FROM TW_USER"_s).size(), 2U);
    EXPECT_TRUE(node(keyBelow(other)).Expanded());
}

// Expand All ----------------------------------------------------------------------------------------------------------

namespace
{

const QStringList wholeSubtreeOfFiles{
    u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', 'SQLDT', 'LOCDT', 'TABLE', 'TBLPRV', 'USER') ORDER BY FILE_NAME ASC"_s,
    u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' ORDER BY FIELD_NAME ASC"_s,
    u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'KEY' ORDER BY FIELD_NAME ASC"_s,
    u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY FIELD_NAME ASC"_s};
const QStringList wholeSubtreeOfTables{
    u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' ORDER BY TABLE_NAME ASC"_s,
    u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s,
    u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' ORDER BY USER_NAME "_s};
const QStringList wholeSubtreeOfDatabases =
    QStringList{u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME ASC"_s} +
    wholeSubtreeOfTables +
    QStringList{u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' ORDER BY USER_NAME "_s};
const QStringList wholeSubtree = wholeSubtreeOfFiles + wholeSubtreeOfDatabases +
                                 QStringList{u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s};

} // namespace

TEST_F(ExpandAll, OfADatasourceOpensEverything)
{
    start();
    clickExpander(key());
    statements.clear();
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);

    choose(key(), u"mnu_DSNExpandAll"_s);

    EXPECT_EQ(statements.statements(), wholeSubtree);
    EXPECT_EQ(wholeTree(), (QStringList{u"DSN \"$\" Datasource -"_s,
                                        u"  FI \"Files\" Files data \"$\" -"_s,
                                        u"    fi \"EMPTY\" File -"_s,
                                        u"      FD \"Fields\" Fields data \"EMPTY\" -"_s,
                                        u"    fi \"KEY\" File -"_s,
                                        u"      FD \"Fields\" Fields data \"KEY\" -"_s,
                                        u"        fd \"FIELD_NAME\" Field"_s,
                                        u"        fd \"FILE_NAME\" Field"_s,
                                        u"        fd \"KEY_NUMBER\" Field"_s,
                                        u"        fd \"SEGMENT_NUMBER\" Field"_s,
                                        u"        fd \"UNIQUE_KEY\" Field"_s,
                                        u"    fi \"PAYROLL\" File -"_s,
                                        u"      FD \"Fields\" Fields data \"PAYROLL\" -"_s,
                                        u"        fd \"BONUS\" Field"_s,
                                        u"        fd \"EMPLOYEE\" Field"_s,
                                        u"        fd \"SALARY\" Field"_s,
                                        u"  DB \"Databases\" DBs data \"$\" -"_s,
                                        u"    db \"SALES\" DB -"_s,
                                        u"      TA \"Tables\" Tables data \"SALES\" -"_s,
                                        u"        ta \"ORDERS\" Table -"_s,
                                        u"          CO \"Columns\" Columns data \"ORDERS\" -"_s,
                                        u"            co \"BUYER\" Column"_s,
                                        u"            co \"AMOUNT\" Column"_s,
                                        u"          SCO \"Special Columns\" Special Columns data \"ORDERS\""_s,
                                        u"          TBLPRV \"Table Privileges\" Padlock data \"ORDERS\" -"_s,
                                        u"            tblprv \"CLERK\" User"_s,
                                        u"      DBPRV \"Database Privileges\" Padlock data \"SALES\" -"_s,
                                        u"        dbprv \"CLERK\" User"_s,
                                        u"  US \"Users\" Users data \"$\" -"_s,
                                        u"    us \"ADMIN\" User bold"_s,
                                        u"    us \"CLERK\" User"_s}
                                .replaceInStrings(u"$"_s, datasource)));
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(ExpandAll, ReadsEveryLevelAnewWhateverWasOpen)
{
    start();
    clickExpander(key());
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key(), u"mnu_DSNExpandAll"_s);
    const QStringList tree = wholeTree();
    statements.clear();
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key(), u"mnu_DSNExpandAll"_s);
    EXPECT_EQ(statements.statements(), wholeSubtree);
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
}

TEST_F(ExpandAll, OfTheFilesAsksAndOpensThem)
{
    start();
    clickExpander(key());
    statements.clear();
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key({u"FI"_s}), u"mnu_FileExpandAll"_s);
    EXPECT_EQ(statements.statements(), wholeSubtreeOfFiles);
    EXPECT_TRUE(node(key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s})).Expanded());
    EXPECT_FALSE(node(key({u"DB"_s})).Expanded());
}

TEST_F(ExpandAll, OfAFileOpensThatFile)
{
    start();
    expandTo(key({u"FI"_s}));
    statements.clear();
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key({u"FI"_s, u"fi=PAYROLL"_s}), u"mnu_FileExpandAll"_s);
    EXPECT_EQ(statements.statements(), QStringList{wholeSubtreeOfFiles.last()});
}

TEST_F(ExpandAll, OfTheDatabasesAsksAndOpensThem)
{
    start();
    clickExpander(key());
    statements.clear();
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key({u"DB"_s}), u"mnu_DBExpandAll"_s);
    EXPECT_EQ(statements.statements(), wholeSubtreeOfDatabases);
}

TEST_F(ExpandAll, OfTheTablesAsksNothing)
{
    start();
    expandTo(key({u"DB"_s, u"db=SALES"_s}));
    statements.clear();
    choose(key({u"DB"_s, u"db=SALES"_s, u"TA"_s}), u"mnu_TableExpandAll"_s);
    EXPECT_EQ(statements.statements(), wholeSubtreeOfTables);
}

TEST_F(ExpandAll, OfACollectionThatWasEmptyReadsItAgain)
{
    const QStringList tables{u"DB"_s, u"db=BARE"_s, u"TA"_s};
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('BARE')"_s);
    start();
    expandTo(key(tables));
    ASSERT_EQ(node(key(tables)).Children(), 0);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('BARE', 'LATER')"_s);
    statements.clear();

    choose(key(tables), u"mnu_TableExpandAll"_s);

    EXPECT_EQ(children(key(tables)), QStringList{u"LATER"_s});
    EXPECT_TRUE(node(key(tables)).Expanded());
    EXPECT_TRUE(node(key(tables + QStringList{u"ta=LATER"_s, u"CO"_s})).Expanded());
    EXPECT_EQ(
        statements.statements(),
        (QStringList{
            u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'BARE' ORDER BY TABLE_NAME ASC"_s,
            u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'BARE' AND TABLE_NAME = 'LATER' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s,
            u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'BARE' AND TABLE_NAME = 'LATER' ORDER BY USER_NAME "_s}));
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
}

TEST_F(ExpandAll, OfACollectionThatIsStillEmptyReadsItOnceAndLeavesNoPlaceholder)
{
    const QStringList tables{u"DB"_s, u"db=BARE"_s, u"TA"_s};
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('BARE')"_s);
    start();
    expandTo(key(tables));
    statements.clear();
    choose(key(tables), u"mnu_TableExpandAll"_s);
    EXPECT_EQ(node(key(tables)).Children(), 0);
    EXPECT_EQ(statements.statements(),
              QStringList{u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'BARE' ORDER BY TABLE_NAME ASC"_s});
}

TEST_F(ExpandAll, NoOpensNothing)
{
    start();
    // Connected by the menu a datasource has its level and stays closed.
    choose(key(), u"mnu_DSNConnect"_s);
    statements.clear();
    const QStringList tree = wholeTree();
    boxes.expectAsk(expandQuestion, boxes::Answer::No);
    choose(key(), u"mnu_DSNExpandAll"_s);
    EXPECT_EQ(wholeTree(), tree);

    clickExpander(key());
    boxes.expectAsk(expandQuestion, boxes::Answer::No);
    choose(key({u"FI"_s}), u"mnu_FileExpandAll"_s);
    boxes.expectAsk(expandQuestion, boxes::Answer::No);
    choose(key({u"DB"_s}), u"mnu_DBExpandAll"_s);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(ExpandAll, ADatasourceThatFailsToConnectShowsOneBoxAndStaysClosed)
{
    const QString lost = datasource + "Lost";
    world.addUnreachableDatasource(lost);
    start();
    click(keyBelow(lost));
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    expectUnreachable([&] {
        EXPECT_TRUE(window->tvwExplorer().updatesEnabled());
        EXPECT_EQ(selectedKey(), keyBelow(lost));
    });

    window->mnu_DSNExpandAll_Click();

    EXPECT_TRUE(boxes.done());
    EXPECT_FALSE(node(keyBelow(lost)).Expanded());
    EXPECT_EQ(line(node(keyBelow(lost))), u"DSN \"%1\" DSN Ghost +"_s.arg(lost));
    EXPECT_EQ(CConnections::instance().Count(), 0);
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_TRUE(window->tvwExplorer().updatesEnabled());
}

TEST_F(ExpandAll, AnUnconnectedDatasourceIsConnectedOnTheWay)
{
    start();
    click(key());
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    window->mnu_DSNExpandAll_Click();
    EXPECT_EQ(statements.statements(), typeCatalogs + wholeSubtree);
    EXPECT_TRUE(node(key()).Expanded());
    EXPECT_EQ(line(node(key())), u"DSN \"%1\" Datasource"_s.arg(datasource));
    EXPECT_EQ(children(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s})),
              (QStringList{u"BUYER"_s, u"AMOUNT"_s}));
    EXPECT_EQ(selectedKey(), key());
    EXPECT_EQ(CConnections::instance().Count(), 1);
}

TEST_F(ExpandAll, OpensTheCatalogsOwnRowsOnlyWhereTheyShow)
{
    start();
    clickExpander(key());
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key({u"DB"_s}), u"mnu_DBExpandAll"_s);
    EXPECT_EQ(find(key({u"DB"_s, u"db=TW"_s})), nullptr);
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key({u"DB"_s}), u"mnu_DBExpandAll"_s);
    EXPECT_EQ(children(key({u"DB"_s, u"db=TW"_s, u"TA"_s, u"ta=USER"_s, u"CO"_s})),
              (QStringList{u"USER_NAME"_s, u"USER_PASSWORD"_s, u"REMARKS"_s}));
    EXPECT_TRUE(node(key({u"DB"_s, u"db=TW"_s, u"TA"_s, u"ta=USER"_s, u"CO"_s, u"co=REMARKS"_s})).Grey());
}

TEST_F(ExpandAll, LeavesThePaneOfARowWithinTheBranch)
{
    RecordingPanes asked;
    start();
    expandTo(key({u"FI"_s}));
    click(key({u"FI"_s, u"fi=PAYROLL"_s}));
    asked.take();
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key({u"FI"_s}), u"mnu_FileExpandAll"_s);
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    // The row is back, and with it the selection.
    EXPECT_EQ(selectedKey(), key({u"FI"_s, u"fi=PAYROLL"_s}));
}

TEST_F(ExpandAll, LeavesTheSelectionWhereItWas)
{
    start();
    expandTo(key({u"US"_s}));
    click(key({u"US"_s, u"us=CLERK"_s}));
    boxes.expectAsk(expandQuestion, boxes::Answer::Yes);
    choose(key({u"FI"_s}), u"mnu_FileExpandAll"_s);
    EXPECT_EQ(selectedKey(), key({u"US"_s, u"us=CLERK"_s}));
}
