#include "CConnections.h"
#include "CatalogFixture.h"
#include "DBEngine.h"
#include "LocalTypeLimits.h"
#include "Recordset.h"
#include "ScriptedBoxes.h"
#include "ScriptedErrorForm.h"
#include "StatementRecorder.h"
#include "WatchedWorkspace.h"
#include "frmTWErr.h"
#include "modDatabase.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

const QString sqlTypes = "SELECT * FROM TW_SQLDT";
const QString localTypes = "SELECT * FROM TW_LOCDT";

/// Connections to catalogs of the bundled driver, through the driver manager.
class RealCatalogTest : public testing::Test
{
protected:
    RealCatalogTest()
    {
        connections.setWorkspace(dao::DBEngine::CreateWorkspace("Tarnwick Administrator", {}, {}, 1));
        world.addDatasource(datasource);
    }
    ~RealCatalogTest() override
    {
        while (connections.Count() >= 1)
            connections.Remove(1);
        connections.setWorkspace(nullptr);
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }

    /// Makes the catalog file and leaves it unconnected.
    void makeCatalog()
    {
        ASSERT_TRUE(connections.add(datasource));
        connections.Remove(datasource);
        statements.clear();
    }

    static QString nextName()
    {
        static int number = 0;
        return QStringLiteral("Catalog of test %1").arg(++number);
    }

    CConnections& connections = CConnections::instance();
    CatalogFixture world;
    const QString datasource = nextName();
    StatementRecorder statements;
    ScriptedErrorForm form;
};

TEST_F(RealCatalogTest, ItemConnectsOnDemandAndFetchesBothTypeCatalogsOnce)
{
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    EXPECT_EQ(statements.statements(), QStringList({sqlTypes, localTypes}));
    EXPECT_EQ(statements.datasources(), QStringList({datasource, datasource}));
    EXPECT_EQ(connection->db()->Name(), datasource);
    EXPECT_GT(connection->SQLDTs().Count(), 0);
    EXPECT_GT(connection->LOCDTs().Count(), 0);

    EXPECT_EQ(connections.Item(datasource), connection);
    EXPECT_EQ(statements.statements().size(), 2);
}

TEST_F(RealCatalogTest, AddConnectsWithoutTheTypeCatalogs)
{
    CConnection* connection = connections.add(datasource);
    ASSERT_TRUE(connection);
    EXPECT_TRUE(statements.statements().isEmpty());
    EXPECT_EQ(connection->SQLDTs().Count(), 0);
}

TEST_F(RealCatalogTest, ALaterConnectionFetchesTheTypeCatalogsAnew)
{
    makeCatalog();
    const auto count = [&] { return connections.Item(datasource)->LOCDTs().Count(); };
    const int before = count();
    world.run(datasource, "INSERT INTO TW_LOCDT (LOCAL_TYPE_NAME) VALUES ('NEW-TYPE')");
    EXPECT_EQ(count(), before) << "a connection keeps what it has read";
    connections.Remove(datasource);
    EXPECT_EQ(count(), before + 1);
    EXPECT_EQ(statements.statements(), QStringList({sqlTypes, localTypes, sqlTypes, localTypes}));
}

TEST_F(RealCatalogTest, TheTypesStandAsTheCatalogHoldsThem)
{
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    QStringList sqlNames;
    for (const CSQLDT& type : connection->SQLDTs())
        sqlNames.append(type.SQL_TYPE_NAME);
    QStringList expectedNames;
    for (const auto& row : world.rows(datasource, "SELECT SQL_TYPE_NAME FROM TW_SQLDT"))
        expectedNames.append(row.front());
    EXPECT_EQ(sqlNames, expectedNames);

    const QString columns = "SQL_TYPE_NAME, SQL_DATA_TYPE, LENGTH, PRECISION, LITERAL_PREFIX, LITERAL_SUFFIX, "
                            "CREATE_PARAMS, NULLABLE, CASE_SENSITIVE, SEARCHABLE, UNSIGNED_ATTRIBUTE, MONEY, "
                            "AUTO_INCREMENT, RADIX, LOCAL_TYPE_NAME, REMARKS";
    for (const auto& row : world.rows(datasource, "SELECT " + columns + " FROM TW_SQLDT")) {
        const CSQLDT& type = connection->SQLDTs().Item(row[0]);
        const auto number = [](std::int32_t value) { return QString::number(value); };
        EXPECT_EQ(QStringList({type.SQL_TYPE_NAME, number(type.SQL_DATA_TYPE), number(type.Length),
                               number(type.PRECISION), type.LITERAL_PREFIX, type.LITERAL_SUFFIX, type.CREATE_PARAMS,
                               number(type.NULLABLE), number(type.CASE_SENSITIVE), number(type.SEARCHABLE),
                               number(type.UNSIGNED_ATTRIBUTE), number(type.MONEY), number(type.AUTO_INCREMENT),
                               number(type.RADIX), type.LOCAL_TYPE_NAME, type.REMARKS}),
                  row)
            << row[0].toStdString();
    }
    QStringList localNames;
    for (const auto& row :
         world.rows(datasource, "SELECT LOCAL_TYPE_NAME, SQL_TYPE_NAME, ATTRIBUTES, REMARKS FROM TW_LOCDT")) {
        const CLOCDT& type = connection->LOCDTs().Item(row[0]);
        EXPECT_EQ(QStringList({type.LOCAL_TYPE_NAME, type.SQL_TYPE_NAME, type.ATTRIBUTES, type.REMARKS}), row);
        localNames.append(row[0]);
    }
    for (const char* name : {"HEXADECIMAL", "DATE", "TIME"})
        EXPECT_TRUE(localNames.contains(name)) << name;
}

TEST_F(RealCatalogTest, TheLimitsOfEveryBundledTypeCanBeRead)
{
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    for (const CLOCDT& type : connection->LOCDTs()) {
        const QString name = type.LOCAL_TYPE_NAME;
        EXPECT_TRUE(connection->SQLDTs().find(type.SQL_TYPE_NAME)) << name.toStdString();
        EXPECT_GT(type.DEFAULT_LENGTH(), 0) << name.toStdString();
        EXPECT_GT(type.DEFAULT_PRECISION(), 0) << name.toStdString();
        for (const int position : {LocalTypeLimits::PaneStringPosition, LocalTypeLimits::GridStringPosition}) {
            const auto limits = LocalTypeLimits::of(';' + type.ATTRIBUTES + ';', position);
            EXPECT_LE(limits.Length.minimum, limits.Length.preset) << name.toStdString();
            EXPECT_LE(limits.Length.preset, limits.Length.maximum) << name.toStdString();
            EXPECT_LE(limits.Scale.minimum, limits.Scale.preset) << name.toStdString();
            EXPECT_LE(limits.Scale.preset, limits.Scale.maximum) << name.toStdString();
        }
    }
}

TEST_F(RealCatalogTest, NullsReadAsEmptyTextsAndZeros)
{
    makeCatalog();
    world.run(datasource, "DELETE FROM TW_SQLDT");
    world.run(datasource, "DELETE FROM TW_LOCDT");
    world.run(datasource, "INSERT INTO TW_SQLDT (SQL_TYPE_NAME, SQL_DATA_TYPE, LENGTH, PRECISION, LITERAL_PREFIX, "
                          "LITERAL_SUFFIX, CREATE_PARAMS, NULLABLE, CASE_SENSITIVE, SEARCHABLE, UNSIGNED_ATTRIBUTE, "
                          "MONEY, AUTO_INCREMENT, RADIX, LOCAL_TYPE_NAME, REMARKS) VALUES ('BARE', NULL, NULL, NULL, "
                          "NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)");
    world.run(datasource, "INSERT INTO TW_LOCDT (LOCAL_TYPE_NAME, SQL_TYPE_NAME, ATTRIBUTES, REMARKS) "
                          "VALUES ('PLAIN', NULL, NULL, NULL)");
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    const CSQLDT& type = connection->SQLDTs().Item("BARE");
    for (const std::int32_t number :
         {type.SQL_DATA_TYPE, type.Length, type.PRECISION, type.NULLABLE, type.CASE_SENSITIVE, type.SEARCHABLE,
          type.UNSIGNED_ATTRIBUTE, type.MONEY, type.AUTO_INCREMENT, type.RADIX})
        EXPECT_EQ(number, 0);
    for (const QString& text :
         {type.LITERAL_PREFIX, type.LITERAL_SUFFIX, type.CREATE_PARAMS, type.LOCAL_TYPE_NAME, type.REMARKS})
        EXPECT_EQ(text, "");
    const CLOCDT& local = connection->LOCDTs().Item("PLAIN");
    EXPECT_EQ(local.SQL_TYPE_NAME + local.ATTRIBUTES + local.REMARKS, "");
}

TEST_F(RealCatalogTest, ATypeThatStandsTwiceIsReportedAndWhatWasReadByThenStays)
{
    makeCatalog();
    world.run(datasource, "DELETE FROM TW_LOCDT");
    for (const char* name : {"FIRST", "SECOND", "FIRST", "THIRD"})
        world.run(datasource, QStringLiteral("INSERT INTO TW_LOCDT (LOCAL_TYPE_NAME) VALUES ('%1')").arg(name));
    form.expect(Press::Ignore);
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "457");
    EXPECT_EQ(form.shown().front().trappedIn, "CLOCDTs.FetchDTs");
    EXPECT_EQ(connection->LOCDTs().Count(), 2);
}

TEST_F(RealCatalogTest, ANumberThatIsNoneIsReportedAndWhatWasReadByThenStays)
{
    makeCatalog();
    world.run(datasource, "DELETE FROM TW_SQLDT");
    for (const char* row : {"'FIRST', 1", "'SECOND', 2", "'THIRD', 'three'", "'FOURTH', 4"})
        world.run(datasource,
                  QStringLiteral("INSERT INTO TW_SQLDT (SQL_TYPE_NAME, SQL_DATA_TYPE) VALUES (%1)").arg(row));
    form.expect(Press::Ignore);
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "13");
    EXPECT_EQ(form.shown().front().trappedIn, "CSQLDTs.FetchDTs");
    QStringList names;
    for (const CSQLDT& type : connection->SQLDTs())
        names.append(type.SQL_TYPE_NAME);
    EXPECT_EQ(names, QStringList({"FIRST", "SECOND"}));
    EXPECT_EQ(connection->SQLDTs().Item("SECOND").SQL_DATA_TYPE, 2);
    EXPECT_GT(connection->LOCDTs().Count(), 0) << "the other catalog is read all the same";
}

TEST_F(RealCatalogTest, RowsThatBreakOffAreReportedAndWhatWasReadByThenStays)
{
    auto workspace = std::make_unique<WatchedWorkspace>();
    workspace->breakOffAfter(sqlTypes, 3);
    workspace->breakOffAfter(localTypes, 2);
    connections.setWorkspace(std::move(workspace));
    form.expect(Press::Ignore);
    form.expect(Press::Ignore);

    CConnection* connection = connections.Item(datasource);

    ASSERT_TRUE(connection);
    ASSERT_EQ(form.shown().size(), 2U);
    EXPECT_EQ(form.shown()[0].number, "ODBC Error");
    EXPECT_EQ(form.shown()[0].trappedIn, "CSQLDTs.FetchDTs");
    EXPECT_EQ(form.shown()[1].trappedIn, "CLOCDTs.FetchDTs");
    QStringList read;
    for (const CSQLDT& type : connection->SQLDTs())
        read.append(type.SQL_TYPE_NAME);
    for (const CLOCDT& type : connection->LOCDTs())
        read.append(type.LOCAL_TYPE_NAME);
    QStringList expected;
    for (const char* statement :
         {"SELECT SQL_TYPE_NAME FROM TW_SQLDT LIMIT 3", "SELECT LOCAL_TYPE_NAME FROM TW_LOCDT LIMIT 2"}) {
        for (const auto& row : world.rows(datasource, statement))
            expected.append(row[0]);
    }
    EXPECT_EQ(expected.size(), 5);
    EXPECT_EQ(read, expected);
}

TEST_F(RealCatalogTest, AFailedFetchThatIsIgnoredLeavesTheConnectionAndFetchesTheOtherCatalog)
{
    statements.failAt(1);
    form.expect(Press::Ignore);
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    EXPECT_EQ(connection->SQLDTs().Count(), 0);
    EXPECT_GT(connection->LOCDTs().Count(), 0);
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "ODBC Error");
    EXPECT_EQ(form.shown().front().trappedIn, "CSQLDTs.FetchDTs");
    EXPECT_EQ(form.shown().front().additional, modDatabase::FormatSQL(sqlTypes));
    EXPECT_EQ(form.shown().front().callStack, QStringList({"CSQLDTs.FetchDTs", "CConnections.Item[PropertyGet]"}));
}

TEST_F(RealCatalogTest, AFailedFetchIsRepeatedOnRetry)
{
    statements.failAt(2);
    form.expect(Press::Retry);
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    EXPECT_EQ(statements.statements(), QStringList({sqlTypes, localTypes, localTypes}));
    EXPECT_EQ(connection->LOCDTs().Count(), world.value(datasource, "SELECT COUNT(*) FROM TW_LOCDT").toInt());
}

TEST_F(RealCatalogTest, AFailureOfPrivilegesWhileFetchingShowsOneBox)
{
    ScriptedBoxes boxes;
    boxes.expect("The current user has insufficient privileges to complete this action.", boxes::Icon::None);
    statements.failAt(1, {{42000, "no privileges on TW_SQLDT"}});
    EXPECT_TRUE(connections.Item(datasource));
    EXPECT_TRUE(form.shown().empty());
}

/// Takes any box and keeps its prompt.
class BoxKeeper final : public boxes::Presenter
{
public:
    BoxKeeper() : m_former(boxes::setPresenter(this)) {}
    ~BoxKeeper() override { boxes::setPresenter(m_former); }
    BoxKeeper(const BoxKeeper&) = delete;
    BoxKeeper& operator=(const BoxKeeper&) = delete;

    boxes::Answer show(const boxes::Box& box) override
    {
        shown.push_back(box);
        return boxes::Answer::Ok;
    }

    std::vector<boxes::Box> shown;

private:
    boxes::Presenter* m_former;
};

TEST_F(RealCatalogTest, AnUnreachableDatasourceShowsOneBoxWithTheDriversReasonAndIsNotStored)
{
    BoxKeeper box;
    const QString unreachable = nextName();
    world.addUnreachableDatasource(unreachable);
    EXPECT_EQ(connections.Item(unreachable), nullptr);
    EXPECT_EQ(connections.Item("no such datasource"), nullptr);
    EXPECT_EQ(connections.Count(), 0);
    ASSERT_EQ(box.shown.size(), 2U);
    for (const boxes::Box& shown : box.shown) {
        EXPECT_TRUE(shown.prompt.startsWith("Failed to connect for the following reason:\n\nError: &H"))
            << shown.prompt.toStdString();
        EXPECT_EQ(shown.icon, boxes::Icon::Exclamation);
    }
    EXPECT_TRUE(connections.Item(datasource)) << "another datasource still connects";
}

TEST_F(RealCatalogTest, AFileDatasourceConnectsUnderItsPath)
{
    const QString path = world.addFileDatasource("file");
    CConnection* connection = connections.Item(path);
    ASSERT_TRUE(connection);
    EXPECT_EQ(connection->db()->Name(), path);
    EXPECT_EQ(connections.find(path), connection);
}

TEST_F(RealCatalogTest, TheDriverManagerListsTheDatasourcesOfTheFixture)
{
    world.addForeignDatasource("Somebody else's", "Other Driver");
    QStringList listed;
    for (const dao::DataSource& source : dao::DBEngine::DataSources())
        listed.append(source.Name + ": " + source.Description);
    EXPECT_EQ(listed, QStringList({datasource + ": Tarnwick ODBC", "Somebody else's: Other Driver"}));
}

TEST_F(RealCatalogTest, WhateverSQLQuoteQuotesArrivesAsItWas)
{
    CConnection* connection = connections.Item(datasource);
    ASSERT_TRUE(connection);
    std::mt19937 random(27);
    const std::vector<QString> pieces{"'",  "''", "\"", "a", "B", " ", "%",          "_", ";",  "--", "\\",
                                      "\n", "\r", "\t", "é", "ß", "€", "\U0001F600", "?", "{d", "}",  ":x"};
    for (int round = 0; round < 150; ++round) {
        QString value;
        for (auto count = random() % 40; count > 0; --count)
            value += pieces[random() % pieces.size()];
        connection->db()->Execute("DELETE FROM TW_FILE WHERE FILE_NAME = 'QUOTE'");
        connection->db()->Execute("INSERT INTO TW_FILE (FILE_NAME, REMARKS) VALUES ('QUOTE', '" +
                                  modDatabase::SQLQuote(value) + "')");
        ASSERT_EQ(world.value(datasource, "SELECT REMARKS FROM TW_FILE WHERE FILE_NAME = 'QUOTE'").toStdString(),
                  value.toStdString());
        const auto found = connection->db()->OpenRecordset("SELECT REMARKS FROM TW_FILE WHERE REMARKS = '" +
                                                           modDatabase::SQLQuote(value) + "'");
        ASSERT_FALSE(found->Eof()) << value.toStdString();
        ASSERT_EQ(found->Fields().Item("REMARKS").Value().Text().toStdString(), value.toStdString());
    }
}

} // namespace
