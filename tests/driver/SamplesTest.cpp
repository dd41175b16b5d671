#include "Command.h"
#include "OdbcClient.h"
#include "Text.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <algorithm>
#include <fstream>
#include <map>

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
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File(file))) << client.Failure().message;
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

    /// Expects a column of records to be as its row of TW_COLUMN (name, SQL type, scale, precision, nullable) says.
    static void ExpectRecordsFit(const Result& records, std::size_t column, const Row& definition)
    {
        static const std::map<std::string, SQLSMALLINT> types = {
            {"BIT", SQL_SMALLINT},   {"SMALLINT", SQL_SMALLINT}, {"TINYINT", SQL_SMALLINT}, {"INTEGER", SQL_INTEGER},
            {"DECIMAL", SQL_BIGINT}, {"NUMERIC", SQL_BIGINT},    {"BIGINT", SQL_BIGINT},    {"REAL", SQL_DOUBLE},
            {"DOUBLE", SQL_DOUBLE},  {"BINARY", SQL_BINARY}};
        const auto known = types.find(*definition[1]);
        const bool isText = known == types.end();
        const SQLSMALLINT type = isText ? SQLSMALLINT{SQL_VARCHAR} : known->second;
        EXPECT_EQ(records.columns[column].type, std::stoi(*definition[2]) > 0 ? SQLSMALLINT{SQL_DOUBLE} : type);
        if (isText) {
            EXPECT_EQ(records.columns[column].size, std::stoul(*definition[3]));
        }
        for (const Row& record : records.rows) {
            EXPECT_TRUE(record[column].has_value() || definition[4] == "1");
            if (isText && record[column]) {
                EXPECT_LE(tarnwick::ToUtf16(*record[column]).size(), std::stoul(*definition[3])) << *record[column];
            }
        }
    }

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

TEST_P(Samples, TablesWithRecordsAnswerUnderTheNamesThatClientsKnow)
{
    const std::map<std::string, std::size_t> held = {{"Ledger", 6}, {"Warehouse", 7}};
    const Result tables =
        client.Execute("SELECT t.DATABASE_NAME, t.TABLE_NAME, m.type FROM TW_TABLE t JOIN sqlite_master m ON m.name = "
                       "t.DATABASE_NAME || '_' || t.TABLE_NAME WHERE t.DATABASE_NAME <> 'TW'");
    EXPECT_EQ(tables.rows.size(), held.at(GetParam()) + 1);
    for (const Row& table : tables.rows) {
        const std::string name = *table[0] + "_" + *table[1];
        SCOPED_TRACE(name);
        const Result defined = client.Execute(
            "SELECT COLUMN_NAME, SQL_TYPE_NAME, SCALE, PRECISION, NULLABLE FROM TW_COLUMN WHERE DATABASE_NAME = '" +
            *table[0] + "' AND TABLE_NAME = '" + *table[1] +
            "' AND COLUMN_TYPE = 0 AND VISIBLE = 1 ORDER BY COLUMN_NUMBER");
        const Result all = client.Execute("SELECT * FROM [" + name + "] ");
        ASSERT_TRUE(all.Succeeded()) << all.diagnostic.message;
        ASSERT_EQ(all.columns.size(), defined.rows.size());
        std::string list;
        for (std::size_t i = 0; i < all.columns.size(); ++i) {
            SCOPED_TRACE(all.columns[i].name);
            const Row& definition = defined.rows[i];
            EXPECT_EQ(all.columns[i].name, definition[0]);
            list += (i == 0 ? "[" : ", [") + *definition[0] + "]";
            ExpectRecordsFit(all, i, definition);
        }
        std::vector<SQLWCHAR> wide = Wide(name);
        const Result listed = client.Read([&](SQLHSTMT statement) {
            return SQLColumnsW(statement, nullptr, 0, nullptr, 0, wide.data(), SQL_NTS, nullptr, 0);
        });
        ASSERT_EQ(listed.rows.size(), all.columns.size());
        for (std::size_t i = 0; i < all.columns.size(); ++i) {
            EXPECT_EQ(listed.rows[i][3], all.columns[i].name);
            EXPECT_EQ(listed.rows[i][4], std::to_string(all.columns[i].type)) << all.columns[i].name;
            EXPECT_EQ(listed.rows[i][6], std::to_string(all.columns[i].size)) << all.columns[i].name;
        }
        EXPECT_LE(all.rows.size(), 40u);
        EXPECT_GE(all.rows.size(), table[2] == "table" ? 10u : 1u);
        EXPECT_EQ(client.Execute("SELECT " + list + " FROM [" + name + "] ").rows, all.rows);
    }
}

TEST_P(Samples, ATableOverTheFileOfAnotherShowsTheRecordsThatMeetItsCriteria)
{
    const bool ledger = std::string(GetParam()) == "Ledger";
    const std::string whole = ledger ? "BANK_ACCOUNT" : "ORDERS_ORDER_HEAD";
    const std::string part = ledger ? "BANK_OVERDRAWN" : "ORDERS_OPEN_ORDER";
    const std::string condition = ledger ? "BALANCE < 0" : "STATE IN ('N', 'P')";
    EXPECT_EQ(client.Execute("SELECT * FROM [" + part + "] ").rows,
              client.Execute("SELECT * FROM [" + whole + "] WHERE " + condition).rows);
    EXPECT_LT(client.Execute("SELECT * FROM [" + part + "] ").rows.size(),
              client.Execute("SELECT * FROM [" + whole + "] ").rows.size());
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
    fs::remove(folder.File("made/warehouse.cat"));
    const CommandOutput again = MakeSamples(folder.File("made"));
    EXPECT_EQ(again.exitCode, 0) << again.text;
    EXPECT_EQ(ContentOf(catalog), before);
    EXPECT_TRUE(fs::exists(folder.File("made/warehouse.cat")));
    const std::string ini = ContentOf(folder.File("made/odbc.ini"));
    EXPECT_NE(ini.find("[Other]\nDriver = Something\n"), std::string::npos) << ini;
    EXPECT_EQ(ini.find("[Ledger]"), ini.rfind("[Ledger]"));
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
