#include "Command.h"
#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <tuple>

namespace
{

namespace fs = std::filesystem;

CommandOutput MakeSamples(const std::string& folder)
{
    return RunCommand({TARNWICK_SAMPLES_FILE, folder}, "");
}

std::string ContentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// Each sample catalog.
class Samples : public ::testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(MakeSamples(setup.Path().string()).exitCode, 0);
        const std::string file = std::string(GetParam()) == "Ledger" ? "ledger.cat" : "warehouse.cat";
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File(file) +
                                   ";LEDGER_DATA=" + setup.File("data/ledger")))
            << client.Failure().message;
    }

    /// Expects a query for rows that break a rule to find none.
    void ExpectNone(const std::string& query)
    {
        const Result result = client.Execute(query);
        ASSERT_TRUE(result.Succeeded()) << result.diagnostic.message;
        for (const Row& row : result.rows) {
            std::string text;
            for (const Cell& cell : row)
                text += cell.value_or("<null>") + " ";
            ADD_FAILURE() << query << ": " << text;
        }
    }

    void ExpectSome(const std::string& query) { EXPECT_FALSE(client.Execute(query).rows.empty()) << query; }

    OdbcSetup setup;
    OdbcClient client;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Datasources, Samples, ::testing::Values("Ledger", "Warehouse"),
                         [](const auto& info) { return std::string(info.param); });

TEST_P(Samples, EverythingRefersToSomethingThatIsThere)
{
    ExpectNone("SELECT FILE_NAME, FIELD_NAME FROM TW_FIELD WHERE FILE_NAME NOT IN (SELECT FILE_NAME FROM TW_FILE)");
    ExpectNone("SELECT FILE_NAME, FIELD_NAME FROM TW_FIELD WHERE LOCAL_TYPE_NAME NOT IN (SELECT LOCAL_TYPE_NAME FROM "
               "TW_LOCDT)");
    ExpectNone("SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME NOT IN (SELECT FILE_NAME FROM TW_FIELD)");
    ExpectNone("SELECT DATABASE_NAME FROM TW_DB WHERE DRIVER_NAME NOT IN (SELECT DRIVER_NAME FROM TW_DRIVER)");
    ExpectNone("SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME NOT IN (SELECT DATABASE_NAME FROM TW_DB)");
    ExpectNone("SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME NOT IN (SELECT FILE_NAME FROM TW_FILE)");
    ExpectNone("SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_SPECIFICATION = '' OR TABLE_TYPE <> 'TABLE'");
    ExpectNone("SELECT TABLE_NAME, COLUMN_NAME FROM TW_COLUMN WHERE (DATABASE_NAME, TABLE_NAME) NOT IN (SELECT "
               "DATABASE_NAME, TABLE_NAME FROM TW_TABLE)");
    ExpectNone(
        "SELECT c.TABLE_NAME, c.COLUMN_NAME FROM TW_COLUMN c JOIN TW_TABLE t ON t.DATABASE_NAME = c.DATABASE_NAME AND "
        "t.TABLE_NAME = c.TABLE_NAME "
        "WHERE c.COLUMN_TYPE = 0 AND (t.FILE_NAME, c.FIELD_NAME) NOT IN (SELECT FILE_NAME, FIELD_NAME FROM TW_FIELD)");
    ExpectNone("SELECT TABLE_NAME, COLUMN_NAME FROM TW_COLUMN WHERE SQL_TYPE_NAME NOT IN (SELECT SQL_TYPE_NAME FROM "
               "TW_SQLDT)");
    ExpectNone("SELECT USER_NAME FROM TW_DBPRV WHERE USER_NAME NOT IN (SELECT USER_NAME FROM TW_USER) OR DATABASE_NAME "
               "NOT IN (SELECT DATABASE_NAME FROM TW_DB)");
    ExpectNone("SELECT USER_NAME FROM TW_TBLPRV WHERE USER_NAME NOT IN (SELECT USER_NAME FROM TW_USER) "
               "OR (DATABASE_NAME, TABLE_NAME) NOT IN (SELECT DATABASE_NAME, TABLE_NAME FROM TW_TABLE)");
    ExpectNone("SELECT TABLE_NAME FROM TW_COLUMN c WHERE COLUMN_TYPE = 8 AND NOT EXISTS (SELECT 1 FROM TW_COLUMN o "
               "WHERE o.DATABASE_NAME = c.DATABASE_NAME AND o.TABLE_NAME = c.TABLE_NAME AND o.COLUMN_NAME = c.REMARKS "
               "AND o.COLUMN_TYPE = 0)");
}

TEST_P(Samples, NumbersFollowOneAnotherAndFieldsOneAnother)
{
    ExpectNone("SELECT FILE_NAME FROM TW_FIELD GROUP BY FILE_NAME HAVING min(FIELD_NUMBER) <> 1 OR max(FIELD_NUMBER) "
               "<> count(*) OR count(DISTINCT FIELD_NUMBER) <> count(*)");
    ExpectNone("SELECT TABLE_NAME FROM TW_COLUMN WHERE COLUMN_TYPE = 0 GROUP BY DATABASE_NAME, TABLE_NAME "
               "HAVING min(COLUMN_NUMBER) <> 1 OR max(COLUMN_NUMBER) <> count(*) OR count(DISTINCT COLUMN_NUMBER) <> "
               "count(*) OR count(DISTINCT FIELD_NAME) <> count(*)");
    ExpectNone("SELECT f.FILE_NAME, f.FIELD_NAME FROM TW_FIELD f JOIN TW_FILE h ON h.FILE_NAME = f.FILE_NAME WHERE "
               "h.RECORD_TYPE = 'FIXED' "
               "AND f.OFFSET <> (SELECT coalesce(sum(LENGTH), 0) FROM TW_FIELD b WHERE b.FILE_NAME = f.FILE_NAME AND "
               "b.FIELD_NUMBER < f.FIELD_NUMBER)");
    ExpectNone("SELECT f.FILE_NAME, f.FIELD_NAME FROM TW_FIELD f JOIN TW_FILE h ON h.FILE_NAME = f.FILE_NAME WHERE "
               "f.OFFSET + f.LENGTH > h.RECORD_SIZE");
    ExpectNone("SELECT FILE_NAME FROM TW_FILE h WHERE (FILE_NAME NOT IN (SELECT FILE_NAME FROM TW_TABLE WHERE "
               "DATABASE_NAME = 'TW')) "
               "AND RECORD_SIZE <> (SELECT max(OFFSET + LENGTH) FROM TW_FIELD f WHERE f.FILE_NAME = h.FILE_NAME)");
    ExpectNone("SELECT TABLE_NAME FROM TW_TABLE t WHERE NUMBER_COLUMNS <> (SELECT count(*) FROM TW_COLUMN c WHERE "
               "c.DATABASE_NAME = t.DATABASE_NAME AND c.TABLE_NAME = t.TABLE_NAME)");
}

TEST_P(Samples, FieldsObeyTheirStorageTypes)
{
    ExpectNone("SELECT f.FILE_NAME, f.FIELD_NAME, f.LENGTH FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = "
               "f.LOCAL_TYPE_NAME "
               "WHERE l.ATTRIBUTES LIKE '%;LENGTH=%' AND l.ATTRIBUTES || ';' NOT LIKE '%;LENGTH=' || f.LENGTH || ';%'");
    ExpectNone("SELECT f.FILE_NAME, f.FIELD_NAME, f.PRECISION FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = "
               "f.LOCAL_TYPE_NAME "
               "WHERE l.ATTRIBUTES LIKE '%;PRECISION=%' AND l.ATTRIBUTES || ';' NOT LIKE '%;PRECISION=' || f.PRECISION "
               "|| ';%'");
    ExpectNone(
        "SELECT f.FILE_NAME, f.FIELD_NAME FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME "
        "WHERE (l.ATTRIBUTES LIKE 'PACKED;%' OR l.ATTRIBUTES LIKE 'BINARY;STRING;%') AND f.PRECISION <> 2 * f.LENGTH");
    ExpectNone(
        "SELECT f.FILE_NAME, f.FIELD_NAME FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME "
        "WHERE (l.ATTRIBUTES LIKE 'CHARACTER;%' OR l.ATTRIBUTES LIKE 'ZONED;%') AND f.PRECISION <> f.LENGTH");
    ExpectNone("SELECT FILE_NAME, FIELD_NAME FROM TW_FIELD WHERE FORMAT <> '' AND length(FORMAT) <> LENGTH");
    ExpectNone("SELECT FILE_NAME, FIELD_NAME FROM TW_FIELD WHERE LOCAL_TYPE_NAME IN ('DATE', 'TIME') AND FORMAT = ''");
    ExpectNone(
        "SELECT f.FILE_NAME, f.FIELD_NAME FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME "
        "WHERE l.ATTRIBUTES LIKE '%;FORMAT=%' AND l.ATTRIBUTES || ';' NOT LIKE '%;FORMAT=' || f.FORMAT || ';%'");
    ExpectNone("SELECT f.FIELD_NAME, f.SCALE FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME "
               "WHERE f.SCALE <> 0 AND l.ATTRIBUTES NOT LIKE '%;DEFAULT_SCALE=%'");
}

TEST_P(Samples, NamesObeyTheRules)
{
    ExpectNone("SELECT FIELD_NAME FROM TW_FIELD WHERE FIELD_NAME = '' OR FIELD_NAME GLOB '*[^A-Z0-9_-]*'");
    ExpectNone("SELECT COLUMN_NAME FROM TW_COLUMN WHERE COLUMN_NAME = '' OR COLUMN_NAME GLOB '*[^A-Z0-9_]*'");
    ExpectNone("SELECT DATABASE_NAME FROM TW_DB WHERE length(DATABASE_NAME) > 10 OR (DISPLAY_NAME <> '' AND "
               "upper(DISPLAY_NAME) <> DATABASE_NAME)");
    ExpectNone("SELECT TABLE_NAME FROM TW_TABLE WHERE DISPLAY_NAME <> '' AND upper(DISPLAY_NAME) <> TABLE_NAME");
    ExpectNone("SELECT COLUMN_NAME FROM TW_COLUMN WHERE DISPLAY_NAME <> '' AND upper(DISPLAY_NAME) <> COLUMN_NAME");
    ExpectNone("SELECT COLUMN_NAME FROM TW_COLUMN WHERE COLUMN_TYPE = 0 AND COLUMN_NAME IN ('RFA', 'INDEX_NUMBER', "
               "'INDEX_NAME', 'INDEX_COLUMNS', 'TABLE_ORDER', 'ROWID', 'RELATIVE_NUMBER', 'RELATIVE_INDEX')");
}

TEST_P(Samples, SpecialColumnsSuitTheirDrivers)
{
    ExpectNone("SELECT COLUMN_NAME FROM TW_COLUMN WHERE COLUMN_TYPE > 0 AND (COLUMN_NUMBER <> 1 OR FIELD_NAME <> "
               "COLUMN_NAME OR UPDATABLE <> 0 OR VISIBLE <> 1 OR DEFAULT_VALUE <> '')");
    const std::string joined =
        "SELECT c.TABLE_NAME, c.COLUMN_NAME FROM TW_COLUMN c JOIN TW_DB d ON d.DATABASE_NAME = c.DATABASE_NAME "
        "JOIN TW_TABLE t ON t.DATABASE_NAME = c.DATABASE_NAME AND t.TABLE_NAME = c.TABLE_NAME JOIN TW_FILE f ON "
        "f.FILE_NAME = t.FILE_NAME WHERE ";
    ExpectNone(joined + "c.COLUMN_TYPE = 1 AND (d.DRIVER_NAME <> 'VAX-RMS' OR f.FILE_ORGANISATION = 'RELATIVE')");
    ExpectNone(joined + "c.COLUMN_TYPE = 6 AND d.DRIVER_NAME <> 'DISAM'");
    ExpectNone(joined + "c.COLUMN_TYPE = 7 AND (d.DRIVER_NAME <> 'VAX-RMS' OR f.FILE_ORGANISATION <> 'RELATIVE')");
    ExpectNone(joined + "c.COLUMN_TYPE = 8 AND d.DRIVER_NAME <> 'VAX-RMS'");
    ExpectNone("SELECT DISTINCT COLUMN_NAME FROM TW_COLUMN WHERE COLUMN_TYPE > 0 AND (COLUMN_TYPE, COLUMN_NAME, "
               "LENGTH, PRECISION, SQL_TYPE_NAME) NOT IN "
               "(VALUES (1, 'RFA', 14, 14, 'VARCHAR'), (2, 'INDEX_NUMBER', 2, 5, 'SMALLINT'), (3, 'INDEX_NAME', 64, "
               "64, 'VARCHAR'), (4, 'INDEX_COLUMNS', 254, 254, 'VARCHAR'), "
               "(5, 'TABLE_ORDER', 2, 5, 'SMALLINT'), (6, 'ROWID', 4, 10, 'INTEGER'), (7, 'RELATIVE_NUMBER', 4, 10, "
               "'INTEGER'), (8, 'RELATIVE_INDEX', 4, 10, 'INTEGER'))");
}

TEST_P(Samples, HaveSomethingToShowEverywhere)
{
    const std::string own = " AND FILE_NAME NOT IN (SELECT FILE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'TW')";
    EXPECT_GE(std::stoi(client.Execute("SELECT COUNT(*) FROM TW_FILE WHERE 1 = 1" + own).Single()), 12);
    for (const char* organisation : {"INDEXED", "RELATIVE", "SEQUENTIAL"})
        ExpectSome("SELECT 1 FROM TW_FILE WHERE FILE_ORGANISATION = '" + std::string(organisation) + "'" + own);
    for (const char* recordType : {"FIXED", "VARIABLE"})
        ExpectSome("SELECT 1 FROM TW_FILE WHERE RECORD_TYPE = '" + std::string(recordType) + "'" + own);
    for (const char* kind :
         {"PACKED;%", "ZONED;%", "BINARY;INTEGER;%", "BINARY;STRING;%", "FLOAT;%", "CHARACTER;%FORMAT%"})
        ExpectSome("SELECT 1 FROM TW_FIELD f JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME WHERE "
                   "l.ATTRIBUTES LIKE '" +
                   std::string(kind) + "'" + own);
    ExpectSome("SELECT 1 FROM TW_FIELD WHERE ENCRYPTED = 1");
    ExpectNone("SELECT c.TABLE_NAME, c.COLUMN_NAME FROM TW_COLUMN c JOIN TW_TABLE t ON t.DATABASE_NAME = "
               "c.DATABASE_NAME AND t.TABLE_NAME = c.TABLE_NAME JOIN TW_FIELD f ON f.FILE_NAME = t.FILE_NAME AND "
               "f.FIELD_NAME = c.FIELD_NAME WHERE f.ENCRYPTED <> 0 AND c.VISIBLE <> 0");
    ExpectSome("SELECT 1 FROM TW_FIELD WHERE DEFAULT_VALUE <> ''" + own);
    ExpectSome("SELECT 1 FROM TW_DB WHERE DATABASE_NAME <> 'TW' LIMIT 1 OFFSET 1");
    ExpectSome("SELECT 1 FROM TW_TABLE WHERE CRITERIA <> ''");
    for (const char* flag :
         {"MONEY = 1", "AUTO_INCREMENT = 1", "UPDATABLE = 0", "VISIBLE = 0", "NULLABLE = 0", "CASE_SENSITIVE = 0",
          "SETFILEPARAMETER = 1", "SEARCHABLE = 1", "SEARCHABLE = 2", "SEARCHABLE = 3", "COLUMN_TYPE > 0"})
        ExpectSome("SELECT 1 FROM TW_COLUMN WHERE DATABASE_NAME <> 'TW' AND " + std::string(flag));
    for (const char* level : {"DATABASE", "TABLE"})
        ExpectSome("SELECT 1 FROM TW_DBPRV WHERE DATABASE_NAME <> 'TW' AND SECURITY_LEVEL = '" + std::string(level) +
                   "'");
    ExpectSome("SELECT 1 FROM TW_TBLPRV WHERE DATABASE_NAME <> 'TW'");
    ExpectSome("SELECT 1 FROM TW_USER WHERE USER_NAME <> 'ADMIN'");
}

TEST_P(Samples, CriteriaNameColumnsThatExist)
{
    for (const Row& row :
         client.Execute("SELECT DATABASE_NAME, TABLE_NAME, CRITERIA FROM TW_TABLE WHERE CRITERIA <> ''").rows) {
        const std::string prefix = *row[0] + "_" + *row[1] + ".";
        const std::size_t at = row[2]->find(prefix);
        ASSERT_NE(at, std::string::npos) << *row[2];
        const std::string column = row[2]->substr(at + prefix.size(), row[2]->find(' ', at) - at - prefix.size());
        ExpectSome("SELECT 1 FROM TW_COLUMN WHERE DATABASE_NAME = '" + *row[0] + "' AND TABLE_NAME = '" + *row[1] +
                   "' AND COLUMN_NAME = '" + column + "'");
    }
}

TEST_P(Samples, SomeRecordsHaveNullsNamesOfManyAlphabetsAndDates)
{
    const bool ledger = std::string(GetParam()) == "Ledger";
    const std::string people = ledger ? "BANK_CUSTOMER" : "ORDERS_BUYER";
    const std::string name = ledger ? "SURNAME" : "NAME";
    const std::string date = ledger ? "BORN" : "SINCE";
    const Result names = client.Execute("SELECT [" + name + "] FROM [" + people + "] ");
    for (const char* firstByteOfItsLetters : {"\xCE", "\xD0", "\xE6"})
        EXPECT_TRUE(std::any_of(names.rows.begin(), names.rows.end(), [&](const Row& row) {
            return row[0]->find(firstByteOfItsLetters) != std::string::npos;
        }));
    ExpectSome("SELECT 1 FROM [" + people + "] WHERE [" + date + "] IS NULL");
    ExpectSome("SELECT 1 FROM [" + people + "] WHERE [" + date + "] < #12/31/1998#");
    ExpectNone("SELECT [" + date + "] FROM [" + people + "] WHERE [" + date + "] <> date([" + date + "])");
}

TEST_P(Samples, RecordsReferToRecordsThatAreThere)
{
    if (std::string(GetParam()) == "Ledger") {
        ExpectNone("SELECT ACCOUNT_NO FROM BANK_ACCOUNT WHERE CUSTOMER_NO NOT IN (SELECT CUSTOMER_NO FROM "
                   "BANK_CUSTOMER)");
        ExpectNone("SELECT POSTING_NO FROM BANK_POSTING WHERE ACCOUNT_NO NOT IN (SELECT ACCOUNT_NO FROM BANK_ACCOUNT)");
        ExpectNone("SELECT ACCOUNT_NO, BALANCE FROM BANK_ACCOUNT a WHERE abs(BALANCE - (SELECT total(AMOUNT) FROM "
                   "BANK_POSTING p WHERE p.ACCOUNT_NO = a.ACCOUNT_NO)) > 0.005");
        ExpectNone("SELECT PERIOD FROM PAYROLL_PAYSLIP WHERE EMPLOYEE_NO NOT IN (SELECT EMPLOYEE_NO FROM "
                   "PAYROLL_EMPLOYEE) OR abs(GROSS - TAX - INSURANCE - NET) > 0.005");
    } else {
        ExpectNone("SELECT ORDER_NO FROM ORDERS_ORDER_HEAD WHERE BUYER_NO NOT IN (SELECT BUYER_NO FROM ORDERS_BUYER)");
        ExpectNone("SELECT ORDER_NO FROM ORDERS_ORDER_HEAD WHERE ORDER_NO NOT IN (SELECT ORDER_NO FROM "
                   "ORDERS_ORDER_LINE)");
        ExpectNone("SELECT ORDER_NO FROM ORDERS_ORDER_LINE WHERE ITEM_NO NOT IN (SELECT ITEM_NO FROM STOCK_ITEM) OR "
                   "ORDER_NO NOT IN (SELECT ORDER_NO FROM ORDERS_ORDER_HEAD)");
        ExpectNone("SELECT ITEM_NO FROM STOCK_ITEM WHERE SUPPLIER_NO NOT IN (SELECT SUPPLIER_NO FROM STOCK_SUPPLIER) "
                   "OR ITEM_NO NOT IN (SELECT ITEM_NO FROM STOCK_STOCK_LEVEL)");
        ExpectNone("SELECT PARCEL_NO FROM EXCHANGE_DELIVERY WHERE ORDER_NO NOT IN (SELECT ORDER_NO FROM "
                   "ORDERS_ORDER_HEAD WHERE STATE IN ('S', 'I'))");
    }
}

TEST(SamplesTool, LeavesCatalogsThatAreThereAsTheyAre)
{
    TemporaryFolder folder;
    ASSERT_EQ(MakeSamples(folder.File("made")).exitCode, 0);
    const std::string catalog = folder.File("made/ledger.cat");
    const std::string before = ContentOf(catalog);
    ASSERT_FALSE(before.empty());
    std::ofstream(folder.File("made/odbc.ini"), std::ios::app) << "\n[Other]\nDriver = Something\n";
    std::ofstream(folder.File("made/data/ledger/RATE.DAT"), std::ios::app) << "changed";
    fs::remove(folder.File("made/warehouse.cat"));
    const CommandOutput again = MakeSamples(folder.File("made"));
    EXPECT_EQ(again.exitCode, 0) << again.text;
    EXPECT_EQ(ContentOf(catalog), before);
    EXPECT_TRUE(fs::exists(folder.File("made/warehouse.cat")));
    EXPECT_TRUE(ContentOf(folder.File("made/data/ledger/RATE.DAT")).ends_with("changed"));
    const std::string ini = ContentOf(folder.File("made/odbc.ini"));
    EXPECT_NE(ini.find("[Other]\nDriver = Something\n"), std::string::npos) << ini;
    EXPECT_EQ(ini.find("[Ledger]"), ini.rfind("[Ledger]"));
}

TEST(SamplesTool, ChangesNothingWhereEverythingIsThereAlready)
{
    TemporaryFolder folder;
    const auto contents = [&] {
        std::map<std::string, std::string> all;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder.Path()))
            if (entry.is_regular_file())
                all[entry.path().string()] = ContentOf(entry.path().string());
        return all;
    };
    ASSERT_EQ(MakeSamples(folder.Path().string()).exitCode, 0);
    const auto before = contents();
    EXPECT_EQ(before.size(), 30u);
    const CommandOutput again = MakeSamples(folder.Path().string());
    EXPECT_EQ(again.exitCode, 0) << again.text;
    EXPECT_EQ(again.text.find("missing"), std::string::npos) << again.text;
    EXPECT_EQ(contents(), before);
}

TEST(SamplesTool, SaysThatACatalogHasNoDataFilesAndLeavesItAsItIs)
{
    TemporaryFolder folder;
    ASSERT_EQ(MakeSamples(folder.Path().string()).exitCode, 0);
    fs::remove_all(folder.File("data/orders"));
    const std::string before = ContentOf(folder.File("warehouse.cat"));
    const CommandOutput again = MakeSamples(folder.Path().string());
    EXPECT_EQ(again.exitCode, 0);
    EXPECT_NE(again.text.find("Warehouse is left as it is, but is not whole. There is no data file " +
                              folder.File("data/orders/buyer.dat") + ". Samples of older versions had no data files."),
              std::string::npos)
        << again.text;
    EXPECT_EQ(again.text.find("Ledger is left"), std::string::npos) << again.text;
    EXPECT_EQ(ContentOf(folder.File("warehouse.cat")), before);
    EXPECT_FALSE(fs::exists(folder.File("data/orders")));

    fs::remove(folder.File("warehouse.cat"));
    ASSERT_EQ(MakeSamples(folder.Path().string()).exitCode, 0);
    EXPECT_TRUE(fs::exists(folder.File("data/orders/buyer.dat")));
}

TEST(SamplesTool, SaysWhereACatalogCannotBeReadAndGoesOn)
{
    OdbcSetup setup;
    ASSERT_EQ(MakeSamples(setup.Path().string()).exitCode, 0);
    OdbcClient client;
    ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("warehouse.cat")));
    const std::string change = "UPDATE TW_DB SET DEFAULT_DIRECTORY = 'ELSEWHERE:' WHERE DATABASE_NAME = 'STOCK'";
    ASSERT_TRUE(client.Execute(change).Succeeded());
    client.Disconnect();
    std::ofstream(setup.File("ledger.cat")) << "this is no catalog, but it is long enough to be taken for something";
    fs::remove(setup.File("odbc.ini"));
    const CommandOutput again = MakeSamples(setup.Path().string());
    EXPECT_EQ(again.exitCode, 0) << again.text;
    EXPECT_NE(
        again.text.find("Warehouse is left as it is, but is not whole. The table STOCK_BIN cannot be read: the data "
                        "source has no key ELSEWHERE for the directory 'ELSEWHERE:'."),
        std::string::npos)
        << again.text;
    EXPECT_NE(again.text.find("Ledger is left as it is, but is not whole."), std::string::npos) << again.text;
    EXPECT_TRUE(fs::exists(setup.File("odbc.ini")));
}

TEST(SamplesTool, WritesIniFilesThatLeadToTheSamples)
{
    TemporaryFolder folder;
    ASSERT_EQ(MakeSamples(folder.Path().string()).exitCode, 0);
    const std::string ini = ContentOf(folder.File("odbc.ini"));
    for (const char* name : {"Ledger", "Warehouse"}) {
        EXPECT_NE(ini.find("[" + std::string(name) + "]\nDriver = Tarnwick ODBC\n"), std::string::npos) << ini;
        const CommandOutput output = RunCommand({"env", "ODBCSYSINI=" + folder.Path().string(),
                                                 "ODBCINI=" + folder.File("odbc.ini"), "isql", name, "-b", "-x0x7C"},
                                                "SELECT COUNT (*) AS N FROM TW_DRIVER\n");
        EXPECT_EQ(output.exitCode, 0) << output.text;
        EXPECT_NE(output.text.find("4"), std::string::npos) << output.text;
    }
    // The bank's data lie behind a logical directory, the others' in folders beside their catalogs.
    for (const auto& [name, query, row] :
         {std::tuple{"Ledger", "SELECT SURNAME, TOWN FROM [BANK_CUSTOMER] WHERE CUSTOMER_NO = 10010002",
                     "Brandt|Lübeck"},
          std::tuple{"Warehouse", "SELECT NAME, SINCE FROM [ORDERS_BUYER] WHERE BUYER_NO = 305",
                     "横浜マリン商会|1989-11-20"}}) {
        const CommandOutput output = RunCommand({"env", "ODBCSYSINI=" + folder.Path().string(),
                                                 "ODBCINI=" + folder.File("odbc.ini"), "isql", name, "-b", "-x0x7C"},
                                                query + std::string("\n"));
        EXPECT_EQ(output.exitCode, 0) << output.text;
        EXPECT_NE(output.text.find(row), std::string::npos) << output.text;
    }
}

TEST(SamplesTool, SaysWhatItNeeds)
{
    const CommandOutput output = RunCommand({TARNWICK_SAMPLES_FILE}, "");
    EXPECT_EQ(output.exitCode, 2);
    EXPECT_NE(output.text.find("Usage"), std::string::npos);
    TemporaryFolder folder;
    std::ofstream(folder.File("file")).flush();
    const CommandOutput failed = MakeSamples(folder.File("file"));
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_NE(failed.text.find("tarnwick-samples:"), std::string::npos);
}
