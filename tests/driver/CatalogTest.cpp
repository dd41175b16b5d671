#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <sqlucode.h>

#include <algorithm>
#include <map>
#include <set>

namespace
{

class Catalog : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"))) << client.Failure().message;
    }

    std::string Ask(const std::string& question) { return client.Execute(question).Single(); }

    OdbcSetup setup;
    OdbcClient client;
};

const std::vector<std::string> editable = {"TW_FILE",   "TW_FIELD", "TW_DB",    "TW_TABLE",
                                           "TW_COLUMN", "TW_USER",  "TW_DBPRV", "TW_TBLPRV"};
const std::vector<std::string> allTables = {"TW_FILE",  "TW_FIELD",  "TW_DB",    "TW_TABLE", "TW_COLUMN", "TW_USER",
                                            "TW_DBPRV", "TW_TBLPRV", "TW_SQLDT", "TW_LOCDT", "TW_DRIVER"};

/// The columns whose type is whole number, by the range that they must hold.
const std::set<std::string> flagsAndNumbers = {
    "FIELD_NUMBER",       "SCALE",        "ENCRYPTED",        "NUMBER_COLUMNS", "COLUMN_NUMBER",  "NULLABLE",
    "UNSIGNED_ATTRIBUTE", "UPDATABLE",    "VISIBLE",          "MONEY",          "AUTO_INCREMENT", "CASE_SENSITIVE",
    "SEARCHABLE",         "RADIX",        "SETFILEPARAMETER", "COLUMN_TYPE",    "ALLOW_SELECT",   "ALLOW_INSERT",
    "ALLOW_UPDATE",       "ALLOW_DELETE", "SQL_DATA_TYPE",    "INDEXED_FILES",  "RELATIVE_FILES", "SEQUENTIAL_FILES",
    "READ_ONLY"};
const std::set<std::string> sizes = {"RECORD_SIZE", "OFFSET", "LENGTH", "PRECISION"};
/// Numbers of a column that go to 65535, though their namesakes elsewhere do not.
const std::set<std::string> sizesOfAColumn = {"SCALE", "RADIX", "SETFILEPARAMETER"};

bool IsSize(const std::string& table, const std::string& column)
{
    return sizes.contains(column) || (table == "TW_COLUMN" && sizesOfAColumn.contains(column));
}

} // namespace

TEST_F(Catalog, ColumnsStandInTheirOrder)
{
    const auto names = [&](const std::string& table) {
        std::string joined;
        for (const ResultColumn& column : client.Execute("SELECT * FROM " + table + " ").columns)
            joined += column.name + " ";
        return joined;
    };
    EXPECT_EQ(names("TW_FILE"), "FILE_NAME OPEN_STRING RECORD_SIZE FILE_ORGANISATION RECORD_TYPE REMARKS ");
    EXPECT_EQ(names("TW_FIELD"), "FILE_NAME FIELD_NUMBER FIELD_NAME LOCAL_TYPE_NAME OFFSET LENGTH PRECISION SCALE "
                                 "ENCRYPTED FORMAT DEFAULT_VALUE REMARKS ");
    EXPECT_EQ(names("TW_DB"),
              "DATABASE_NAME DEFAULT_DIRECTORY DRIVER_NAME SETUP_PROCEDURE CONNECT_STRING REMARKS DISPLAY_NAME ");
    EXPECT_EQ(names("TW_TABLE"), "DATABASE_NAME TABLE_NAME TABLE_TYPE FILE_NAME FILE_SPECIFICATION NUMBER_COLUMNS "
                                 "CRITERIA REMARKS DISPLAY_NAME ");
    EXPECT_EQ(
        names("TW_COLUMN"),
        "DATABASE_NAME TABLE_NAME COLUMN_NUMBER COLUMN_NAME FIELD_NAME SQL_TYPE_NAME LENGTH PRECISION SCALE NULLABLE "
        "UNSIGNED_ATTRIBUTE UPDATABLE VISIBLE MONEY AUTO_INCREMENT CASE_SENSITIVE SEARCHABLE RADIX DEFAULT_VALUE "
        "REMARKS "
        "SETFILEPARAMETER COLUMN_TYPE DISPLAY_NAME ");
    EXPECT_EQ(names("TW_USER"), "USER_NAME USER_PASSWORD REMARKS ");
    EXPECT_EQ(names("TW_DBPRV"), "USER_NAME DATABASE_NAME DATABASE_USERNAME DATABASE_PASSWORD ALLOW_SELECT "
                                 "ALLOW_INSERT ALLOW_UPDATE ALLOW_DELETE SECURITY_LEVEL REMARKS ");
    EXPECT_EQ(names("TW_TBLPRV"),
              "DATABASE_NAME TABLE_NAME USER_NAME ALLOW_SELECT ALLOW_INSERT ALLOW_UPDATE ALLOW_DELETE REMARKS ");
    EXPECT_EQ(names("TW_SQLDT"), "SQL_TYPE_NAME SQL_DATA_TYPE LENGTH PRECISION LITERAL_PREFIX LITERAL_SUFFIX "
                                 "CREATE_PARAMS NULLABLE CASE_SENSITIVE "
                                 "SEARCHABLE UNSIGNED_ATTRIBUTE MONEY AUTO_INCREMENT RADIX LOCAL_TYPE_NAME REMARKS ");
    EXPECT_EQ(names("TW_LOCDT"), "LOCAL_TYPE_NAME SQL_TYPE_NAME ATTRIBUTES REMARKS ");
}

TEST_F(Catalog, TypesAndSizesAreReportedWithAndWithoutRows)
{
    for (const std::string& table : allTables) {
        const Result full = client.Execute("SELECT * FROM " + table + " ");
        const Result empty = client.Execute("SELECT * FROM " + table + " WHERE 1 = 2");
        ASSERT_EQ(full.columns.size(), empty.columns.size());
        for (std::size_t i = 0; i < full.columns.size(); ++i) {
            const ResultColumn& column = full.columns[i];
            SCOPED_TRACE(table + "." + column.name);
            EXPECT_EQ(column.type, empty.columns[i].type);
            EXPECT_EQ(column.size, empty.columns[i].size);
            EXPECT_EQ(column.nullable, SQL_NULLABLE);
            if (IsSize(table, column.name)) {
                EXPECT_EQ(column.type, SQL_INTEGER);
                EXPECT_EQ(column.size, 10u);
            } else if (flagsAndNumbers.contains(column.name)) {
                EXPECT_EQ(column.type, SQL_SMALLINT);
                EXPECT_EQ(column.size, 5u);
            } else {
                EXPECT_EQ(column.type, SQL_VARCHAR);
                EXPECT_GT(column.size, 0u);
            }
            if (column.name == "DATABASE_NAME") {
                EXPECT_EQ(column.size, 10u);
            }
        }
    }
    const Result table = client.Execute("SELECT CRITERIA FROM TW_TABLE");
    EXPECT_EQ(table.columns[0].type, SQL_VARCHAR);
    EXPECT_EQ(table.columns[0].size, 1024u);
}

TEST_F(Catalog, NumbersOfAColumnGoTo65535)
{
    ASSERT_TRUE(client
                    .Execute("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, LENGTH, PRECISION, SCALE, "
                             "RADIX, SETFILEPARAMETER) VALUES ('D', 'T', 'C', 65535, 65535, 65535, 65535, 65535)")
                    .Succeeded());
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text =
        Wide("SELECT LENGTH, PRECISION, SCALE, RADIX, SETFILEPARAMETER FROM TW_COLUMN WHERE DATABASE_NAME = 'D'");
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    for (SQLUSMALLINT column = 1; column <= 5; ++column) {
        SQLSMALLINT type = 0;
        EXPECT_TRUE(
            SQL_SUCCEEDED(SQLDescribeColW(statement, column, nullptr, 0, nullptr, &type, nullptr, nullptr, nullptr)));
        EXPECT_EQ(type, SQL_INTEGER);
        SQLINTEGER value = 0;
        EXPECT_EQ(SQLGetData(statement, column, SQL_C_LONG, &value, 0, nullptr), SQL_SUCCESS);
        EXPECT_EQ(value, 65535);
    }
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    const Result fields = client.Execute("SELECT LOCAL_TYPE_NAME, LENGTH, PRECISION FROM TW_FIELD WHERE FILE_NAME = "
                                         "'COLUMN' AND FIELD_NAME IN ('SCALE', 'RADIX', 'SETFILEPARAMETER')");
    ASSERT_EQ(fields.rows.size(), 3u);
    for (const Row& row : fields.rows)
        EXPECT_EQ(row, (Row{"INTEGER-4", "4", "10"}));
}

TEST_F(Catalog, ColumnAttributesAgreeWithTheDescription)
{
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text = Wide("SELECT FILE_NAME, FIELD_NUMBER, OFFSET FROM TW_FIELD WHERE 1 = 2");
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    const auto number = [&](SQLUSMALLINT column, SQLUSMALLINT field) {
        SQLLEN value = -99;
        EXPECT_TRUE(SQL_SUCCEEDED(SQLColAttributeW(statement, column, field, nullptr, 0, nullptr, &value)));
        return value;
    };
    const auto word = [&](SQLUSMALLINT column, SQLUSMALLINT field) {
        SQLWCHAR value[100] = {};
        SQLSMALLINT bytes = 0;
        EXPECT_TRUE(SQL_SUCCEEDED(SQLColAttributeW(statement, column, field, value, sizeof value, &bytes, nullptr)));
        return Narrow(value, static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
    };
    EXPECT_EQ(number(1, SQL_DESC_CONCISE_TYPE), SQL_VARCHAR);
    EXPECT_EQ(number(1, SQL_DESC_LENGTH), 32);
    EXPECT_EQ(number(1, SQL_DESC_DISPLAY_SIZE), 32);
    EXPECT_EQ(number(1, SQL_DESC_OCTET_LENGTH), 128);
    EXPECT_EQ(word(1, SQL_DESC_TYPE_NAME), "VARCHAR");
    EXPECT_EQ(word(1, SQL_DESC_NAME), "FILE_NAME");
    EXPECT_EQ(word(1, SQL_DESC_LABEL), "FILE_NAME");
    EXPECT_EQ(word(1, SQL_DESC_TABLE_NAME), "TW_FIELD");
    EXPECT_EQ(number(2, SQL_DESC_TYPE), SQL_SMALLINT);
    EXPECT_EQ(number(2, SQL_DESC_PRECISION), 5);
    EXPECT_EQ(number(2, SQL_DESC_DISPLAY_SIZE), 6);
    EXPECT_EQ(number(2, SQL_DESC_OCTET_LENGTH), 2);
    EXPECT_EQ(word(2, SQL_DESC_TYPE_NAME), "SMALLINT");
    EXPECT_EQ(number(3, SQL_DESC_TYPE), SQL_INTEGER);
    EXPECT_EQ(number(3, SQL_DESC_DISPLAY_SIZE), 11);
    EXPECT_EQ(number(3, SQL_DESC_OCTET_LENGTH), 4);
    EXPECT_EQ(number(1, SQL_DESC_COUNT), 3);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

TEST_F(Catalog, SqlColumnsTellsTheSameAsAResult)
{
    for (const std::string& table : allTables) {
        std::vector<SQLWCHAR> name = Wide(table);
        const Result listed = client.Read([&](SQLHSTMT statement) {
            return SQLColumnsW(statement, nullptr, 0, nullptr, 0, name.data(), SQL_NTS, nullptr, 0);
        });
        const Result selected = client.Execute("SELECT * FROM " + table);
        ASSERT_EQ(listed.rows.size(), selected.columns.size()) << table;
        for (std::size_t i = 0; i < listed.rows.size(); ++i) {
            EXPECT_EQ(listed.rows[i][2], table);
            EXPECT_EQ(listed.rows[i][3], selected.columns[i].name);
            EXPECT_EQ(listed.rows[i][4], std::to_string(selected.columns[i].type));
            EXPECT_EQ(listed.rows[i][6], std::to_string(selected.columns[i].size));
            EXPECT_EQ(listed.rows[i][16], std::to_string(i + 1));
            EXPECT_EQ(listed.rows[i][17], "YES");
        }
    }
    std::vector<SQLWCHAR> table = Wide("TW\\_D%");
    std::vector<SQLWCHAR> column = Wide("REMARKS");
    const Result some = client.Read([&](SQLHSTMT statement) {
        return SQLColumnsW(statement, nullptr, 0, nullptr, 0, table.data(), SQL_NTS, column.data(), SQL_NTS);
    });
    EXPECT_EQ(some.rows.size(), 3u);
}

TEST_F(Catalog, TypeInfoComesFromTheTypeCatalog)
{
    const Result all = client.Read([](SQLHSTMT statement) { return SQLGetTypeInfoW(statement, SQL_ALL_TYPES); });
    EXPECT_EQ(std::to_string(all.rows.size()), Ask("SELECT COUNT(*) FROM TW_SQLDT"));
    EXPECT_TRUE(std::is_sorted(all.rows.begin(), all.rows.end(),
                               [](const Row& a, const Row& b) { return std::stoi(*a[1]) < std::stoi(*b[1]); }));
    const Result small = client.Read([](SQLHSTMT statement) { return SQLGetTypeInfoW(statement, SQL_SMALLINT); });
    ASSERT_EQ(small.rows.size(), 1u);
    EXPECT_EQ(small.rows[0][0], "SMALLINT");
    EXPECT_EQ(small.rows[0][2], "5");
    EXPECT_EQ(small.columns.size(), 19u);
    const Result date = client.Read([](SQLHSTMT statement) { return SQLGetTypeInfoW(statement, SQL_TYPE_DATE); });
    ASSERT_EQ(date.rows.size(), 1u);
    EXPECT_EQ(date.rows[0][0], "DATE");
}

TEST_F(Catalog, OnlyTheNameKeysAreUnique)
{
    const auto insert = [&](const std::string& text) { return client.Execute("INSERT INTO " + text).diagnostic.state; };
    EXPECT_EQ(insert("TW_FILE (FILE_NAME) VALUES ('A')"), "");
    EXPECT_EQ(insert("TW_FILE (FILE_NAME) VALUES ('A')"), "23000");
    EXPECT_EQ(insert("TW_FILE (FILE_NAME) VALUES ('a')"), "");
    EXPECT_EQ(insert("TW_FIELD (FILE_NAME, FIELD_NAME, FIELD_NUMBER) VALUES ('A', 'X', 1)"), "");
    EXPECT_EQ(insert("TW_FIELD (FILE_NAME, FIELD_NAME, FIELD_NUMBER) VALUES ('A', 'Y', 1)"), "");
    EXPECT_EQ(insert("TW_FIELD (FILE_NAME, FIELD_NAME, FIELD_NUMBER) VALUES ('A', 'X', 2)"), "23000");
    EXPECT_EQ(insert("TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('NO SUCH FILE', 'X')"), "");
    EXPECT_EQ(insert("TW_DB (DATABASE_NAME) VALUES ('A')"), "");
    EXPECT_EQ(insert("TW_DB (DATABASE_NAME) VALUES ('A')"), "23000");
    EXPECT_EQ(insert("TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('A', 'T')"), "");
    EXPECT_EQ(insert("TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('A', 'T')"), "23000");
    EXPECT_EQ(insert("TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, COLUMN_NUMBER) VALUES ('A', 'T', 'C', 1)"),
              "");
    EXPECT_EQ(insert("TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, COLUMN_NUMBER) VALUES ('A', 'T', 'D', 1)"),
              "");
    EXPECT_EQ(insert("TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, COLUMN_NUMBER) VALUES ('A', 'T', 'C', 3)"),
              "23000");
    EXPECT_EQ(insert("TW_USER (USER_NAME) VALUES ('ADMIN')"), "23000");
    EXPECT_EQ(insert("TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('U', 'A')"), "");
    EXPECT_EQ(insert("TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('U', 'A')"), "23000");
    EXPECT_EQ(insert("TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('A', 'T', 'U')"), "");
    EXPECT_EQ(insert("TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('A', 'T', 'U')"), "23000");
    EXPECT_EQ(insert("TW_LOCDT (LOCAL_TYPE_NAME) VALUES ('STRING')"), "");
    EXPECT_EQ(insert("TW_SQLDT (SQL_TYPE_NAME) VALUES ('CHAR')"), "");
}

TEST_F(Catalog, ColumnsLeftOutAreZeroOrEmptyAndAnyMayBeNull)
{
    for (const std::string& table : allTables) {
        const std::vector<ResultColumn> columns = client.Execute("SELECT * FROM " + table).columns;
        client.Execute("DELETE FROM " + table);
        ASSERT_TRUE(client.Execute("INSERT INTO " + table + " DEFAULT VALUES").Succeeded());
        const Result defaults = client.Execute("SELECT * FROM " + table);
        ASSERT_EQ(defaults.rows.size(), 1u);
        std::string nulls;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            EXPECT_EQ(defaults.rows[0][i], columns[i].type == SQL_VARCHAR ? "" : "0")
                << table << "." << columns[i].name;
            nulls += i == 0 ? "NULL" : ", NULL";
        }
        for (int twice = 0; twice < 2; ++twice)
            ASSERT_TRUE(client.Execute("INSERT INTO " + table + " VALUES (" + nulls + ")").Succeeded()) << table;
        const Result all = client.Execute("SELECT * FROM " + table);
        ASSERT_EQ(all.rows.size(), 3u);
        EXPECT_EQ(std::count(all.rows[2].begin(), all.rows[2].end(), std::nullopt), static_cast<int>(columns.size()));
    }
}

TEST_F(Catalog, SystemFilesDescribeTheTablesAsTheyAre)
{
    std::string files;
    for (const Row& row : client.Execute("SELECT FILE_NAME FROM TW_FILE ORDER BY FILE_NAME").rows)
        files += *row[0] + ",";
    EXPECT_EQ(files, "CNTRL,COLUMN,DB,DBPRV,DRIVER,FIELD,FILE,KEY,LOCDT,SQLDT,TABLE,TBLPRV,USER,");
    for (const Row& file :
         client.Execute("SELECT FILE_NAME, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE FROM TW_FILE").rows) {
        SCOPED_TRACE(*file[0]);
        const Result table = client.Execute("SELECT * FROM TW_" + *file[0]);
        const Result fields = client.Execute(
            "SELECT FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE FROM TW_FIELD "
            "WHERE FILE_NAME = '" +
            *file[0] + "' ORDER BY FIELD_NUMBER");
        ASSERT_EQ(table.columns.size(), fields.rows.size());
        int offset = 0;
        for (std::size_t i = 0; i < fields.rows.size(); ++i) {
            const Row& field = fields.rows[i];
            const ResultColumn& column = table.columns[i];
            const bool isText = column.type == SQL_VARCHAR;
            const int length = isText ? static_cast<int>(column.size) : column.type == SQL_SMALLINT ? 2 : 4;
            EXPECT_EQ(field[0], std::to_string(i + 1));
            EXPECT_EQ(field[1], column.name);
            EXPECT_EQ(field[2], isText ? "STRING" : "INTEGER-" + std::to_string(length));
            EXPECT_EQ(field[3], std::to_string(offset));
            EXPECT_EQ(field[4], std::to_string(length));
            EXPECT_EQ(field[5], std::to_string(column.size));
            EXPECT_EQ(field[6], "0");
            offset += length;
        }
        EXPECT_EQ(file[1], std::to_string(offset + 8));
        EXPECT_EQ(file[2], "INDEXED");
        EXPECT_EQ(file[3], "FIXED");
    }
}

TEST_F(Catalog, TheCatalogsOwnDatabaseShowsItsFiles)
{
    EXPECT_EQ(Ask("SELECT DRIVER_NAME FROM TW_DB WHERE DATABASE_NAME = 'TW'"), "SYSTEM");
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM TW_TABLE WHERE DATABASE_NAME = 'TW'"), "13");
    EXPECT_EQ(
        Ask("SELECT COUNT(*) FROM TW_TABLE t JOIN TW_FILE f ON f.FILE_NAME = t.FILE_NAME WHERE t.NUMBER_COLUMNS = "
            "(SELECT COUNT(*) FROM TW_COLUMN c WHERE c.DATABASE_NAME = 'TW' AND c.TABLE_NAME = t.TABLE_NAME)"),
        "13");
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM TW_COLUMN c WHERE NOT EXISTS (SELECT 1 FROM TW_TABLE t JOIN TW_FIELD f ON "
                  "f.FILE_NAME = t.FILE_NAME "
                  "WHERE t.DATABASE_NAME = c.DATABASE_NAME AND t.TABLE_NAME = c.TABLE_NAME AND f.FIELD_NAME = "
                  "c.FIELD_NAME AND f.LENGTH = c.LENGTH)"),
              "0");
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM TW_COLUMN WHERE SQL_TYPE_NAME NOT IN (SELECT SQL_TYPE_NAME FROM TW_SQLDT)"),
              "0");
    for (const char* table : {"TW_DB", "TW_TABLE", "TW_COLUMN"}) {
        const std::string name =
            std::string(table) == "TW_DB" ? "DATABASE_NAME" : std::string(table).substr(3) + "_NAME";
        EXPECT_EQ(Ask("SELECT COUNT(*) FROM " + std::string(table) + " WHERE upper(DISPLAY_NAME) <> " + name), "0");
        EXPECT_EQ(Ask("SELECT COUNT(*) FROM " + std::string(table) + " WHERE DISPLAY_NAME = ''"), "0");
    }
    EXPECT_EQ(Ask("SELECT DISPLAY_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'FILE' AND COLUMN_NAME = 'FILE_NAME'"),
              "File_Name");
}

TEST_F(Catalog, TheAdministratorHasItsRights)
{
    EXPECT_EQ(Ask("SELECT USER_NAME FROM TW_USER"), "ADMIN");
    EXPECT_EQ(Ask("SELECT ALLOW_SELECT + ALLOW_INSERT + ALLOW_UPDATE + ALLOW_DELETE FROM TW_DBPRV WHERE USER_NAME = "
                  "'ADMIN' AND DATABASE_NAME = 'TW'"),
              "4");
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM TW_TBLPRV p JOIN TW_TABLE t ON t.DATABASE_NAME = p.DATABASE_NAME AND "
                  "t.TABLE_NAME = p.TABLE_NAME WHERE p.USER_NAME = 'ADMIN' AND ALLOW_SELECT = 1"),
              "13");
    for (const std::string& table : editable)
        EXPECT_EQ(Ask("SELECT ALLOW_INSERT + ALLOW_UPDATE + ALLOW_DELETE FROM TW_TBLPRV WHERE TABLE_NAME = '" +
                      table.substr(3) + "'"),
                  "3");
}

TEST_F(Catalog, DriversAreKnown)
{
    std::string drivers;
    for (const Row& row : client
                              .Execute("SELECT DRIVER_NAME FROM TW_DRIVER WHERE DRIVER_NAME <> '' AND DRIVER_NAME <> "
                                       "'SYSTEM' ORDER BY DRIVER_NAME ASC")
                              .rows)
        drivers += *row[0] + ",";
    EXPECT_EQ(drivers, "DISAM,FLAT,VAX-RMS,");
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM TW_DRIVER WHERE DRIVER_NAME = 'SYSTEM'"), "1");
}

TEST_F(Catalog, PrimaryKeysAreToldToClients)
{
    std::vector<SQLWCHAR> table = Wide("TW_COLUMN");
    const Result keys = client.Read(
        [&](SQLHSTMT statement) { return SQLPrimaryKeysW(statement, nullptr, 0, nullptr, 0, table.data(), SQL_NTS); });
    ASSERT_EQ(keys.rows.size(), 3u);
    EXPECT_EQ(keys.rows[0][3], "DATABASE_NAME");
    EXPECT_EQ(keys.rows[1][3], "TABLE_NAME");
    EXPECT_EQ(keys.rows[2][3], "COLUMN_NAME");
}

TEST_F(Catalog, ANewOneHoldsNoTablesButItsOwn)
{
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM sqlite_master WHERE type <> 'index' AND name NOT LIKE 'TW~_%' ESCAPE '~'"),
              "0");
}

TEST_F(Catalog, FloatingPointColumnsHaveTheSizesThatOdbcDefines)
{
    client.Execute("CREATE TABLE MEASURED (WEIGHT DOUBLE)");
    SQLHSTMT statement = client.NewStatement();
    std::vector<SQLWCHAR> text = Wide("SELECT WEIGHT FROM MEASURED");
    ASSERT_EQ(SQLExecDirectW(statement, text.data(), SQL_NTS), SQL_SUCCESS);
    const auto number = [&](SQLUSMALLINT field) {
        SQLLEN value = -99;
        EXPECT_TRUE(SQL_SUCCEEDED(SQLColAttributeW(statement, 1, field, nullptr, 0, nullptr, &value)));
        return value;
    };
    EXPECT_EQ(number(SQL_DESC_CONCISE_TYPE), SQL_DOUBLE);
    EXPECT_EQ(number(SQL_DESC_LENGTH), 15);
    EXPECT_EQ(number(SQL_DESC_DISPLAY_SIZE), 24);
    EXPECT_EQ(number(SQL_DESC_OCTET_LENGTH), 8);
    EXPECT_EQ(number(SQL_DESC_NUM_PREC_RADIX), 10);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}
