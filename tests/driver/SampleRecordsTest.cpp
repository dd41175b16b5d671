// The tables of the samples through the driver, against the rows from which their data files were made.

#include "Catalog.h"
#include "Command.h"
#include "DataFiles.h"
#include "OdbcClient.h"
#include "Sample.h"
#include "Text.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>

namespace
{

using namespace tarnwick;

const samples::Sample& SampleNamed(const std::string& name)
{
    const auto all = samples::AllSamples();
    return *std::find_if(all.begin(), all.end(), [&](const auto& sample) { return name == sample.datasource; });
}

/// A cell of a source row, with what decides how it is compared.
struct SourceCell {
    Cell text;
    bool isNumber = false;
};

/// The rows of a sample before they become files: a catalog of its own and the temporary tables on its connection.
class Source
{
public:
    explicit Source(const samples::Sample& sample)
    {
        const std::string catalog = m_folder.File("source.cat");
        catalog::Ensure(catalog);
        m_engine = samples::OpenCatalog(catalog);
        samples::Fill(m_engine.get(), sample);
    }

    std::vector<std::vector<SourceCell>> Rows(const std::string& query) const
    {
        std::vector<std::vector<SourceCell>> rows;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(m_engine.get(), query.c_str(), -1, &statement, nullptr), SQLITE_OK)
            << query << ": " << sqlite3_errmsg(m_engine.get());
        while (sqlite3_step(statement) == SQLITE_ROW) {
            rows.emplace_back();
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const int type = sqlite3_column_type(statement, i);
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                rows.back().push_back({text ? Cell(text) : Cell(), type == SQLITE_INTEGER || type == SQLITE_FLOAT});
            }
        }
        sqlite3_finalize(statement);
        return rows;
    }

private:
    TemporaryFolder m_folder;
    samples::Engine m_engine;
};

/// A table of a sample, as its catalog defines it.
struct Table {
    std::string database;
    std::string name;
    std::string file;
    std::string criteria;
    std::string SqlName() const { return database + "_" + name; }
};

class SampleRecords : public ::testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(RunCommand({TARNWICK_SAMPLES_FILE, setup.Path().string()}, "").exitCode, 0);
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File(SampleNamed(GetParam()).fileName) +
                                   ";LEDGER_DATA=" + setup.File("data/ledger")))
            << client.Failure().message;
    }

    std::vector<Table> Tables()
    {
        std::vector<Table> tables;
        for (const Row& row : client
                                  .Execute("SELECT DATABASE_NAME, TABLE_NAME, FILE_NAME, CRITERIA FROM TW_TABLE WHERE "
                                           "DATABASE_NAME <> 'TW'")
                                  .rows)
            tables.push_back({*row[0], *row[1], *row[2], row[3].value_or("")});
        return tables;
    }

    /// Rows of TW_COLUMN: name, precision, nullable, type, SQL type, and the name as clients see it.
    std::vector<Row> Columns(const Table& table, const std::string& condition)
    {
        return client
            .Execute("SELECT COLUMN_NAME, PRECISION, NULLABLE, COLUMN_TYPE, SQL_TYPE_NAME, "
                     "ifnull(nullif(DISPLAY_NAME, ''), COLUMN_NAME) FROM TW_COLUMN WHERE DATABASE_NAME = '" +
                     table.database + "' AND TABLE_NAME = '" + table.name + "' AND VISIBLE = 1 AND " + condition +
                     " ORDER BY COLUMN_TYPE, COLUMN_NUMBER")
            .rows;
    }

    /// The source rows of a table: its number, then its visible ordinary columns.
    std::vector<std::vector<SourceCell>> SourceRows(const Source& source, const Table& table)
    {
        std::string cells = "rowid";
        for (const Row& column : Columns(table, "COLUMN_TYPE = 0"))
            cells += *column[4] == "BINARY" ? ", hex([" + *column[0] + "])" : ", [" + *column[0] + "]";
        return source.Rows("SELECT " + cells + " FROM temp.[" + samples::RowsOf(table.file) + "] AS [" +
                           table.SqlName() + "] WHERE " + (table.criteria.empty() ? "1" : table.criteria) +
                           " ORDER BY rowid");
    }

    OdbcSetup setup;
    OdbcClient client;
};

void ExpectEqual(const SourceCell& expected, const Cell& read)
{
    ASSERT_EQ(read.has_value(), expected.text.has_value()) << expected.text.value_or("null");
    if (!read)
        return;
    if (expected.isNumber)
        EXPECT_EQ(std::strtod(read->c_str(), nullptr), std::strtod(expected.text->c_str(), nullptr));
    else
        EXPECT_EQ(*read, *expected.text);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Datasources, SampleRecords, ::testing::Values("Ledger", "Warehouse"),
                         [](const auto& info) { return std::string(info.param); });

TEST_P(SampleRecords, EveryTableShowsTheRowsFromWhichItsFileWasMade)
{
    const Source source(SampleNamed(GetParam()));
    const std::vector<Table> tables = Tables();
    EXPECT_GE(tables.size(), 14u);
    for (const Table& table : tables) {
        SCOPED_TRACE(table.SqlName());
        const auto expected = SourceRows(source, table);
        const Result all = client.Execute("SELECT * FROM [" + table.SqlName() + "]");
        ASSERT_TRUE(all.Succeeded()) << all.diagnostic.message;
        ASSERT_EQ(all.rows.size(), expected.size());
        EXPECT_GE(expected.size(), 3u);
        for (std::size_t i = 0; i < expected.size(); ++i)
            for (std::size_t k = 1; k < expected[i].size(); ++k) {
                SCOPED_TRACE(std::to_string(i + 1) + ", " + all.columns[k - 1].name);
                ExpectEqual(expected[i][k], all.rows[i][k - 1]);
            }
    }
}

TEST_P(SampleRecords, ColumnsAreDescribedAsTheyAreRead)
{
    for (const Table& table : Tables()) {
        SCOPED_TRACE(table.SqlName());
        const std::vector<Row> defined = Columns(table, "1 = 1");
        const Result all = client.Execute("SELECT * FROM [" + table.SqlName() + "]");
        ASSERT_EQ(all.columns.size(), defined.size());
        std::vector<SQLWCHAR> wide = Wide(table.SqlName());
        const Result listed = client.Read([&](SQLHSTMT statement) {
            return SQLColumnsW(statement, nullptr, 0, nullptr, 0, wide.data(), SQL_NTS, nullptr, 0);
        });
        ASSERT_EQ(listed.rows.size(), defined.size());
        std::string list;
        for (std::size_t i = 0; i < defined.size(); ++i) {
            SCOPED_TRACE(*defined[i][0]);
            EXPECT_EQ(all.columns[i].name, *defined[i][5]);
            EXPECT_EQ(listed.rows[i][3], defined[i][5]);
            EXPECT_EQ(listed.rows[i][4], std::to_string(all.columns[i].type));
            EXPECT_EQ(listed.rows[i][6], std::to_string(all.columns[i].size));
            list += (i == 0 ? "[" : ", [") + *defined[i][0] + "]";
            for (const Row& row : all.rows) {
                EXPECT_TRUE(row[i].has_value() || defined[i][2] == "1" || defined[i][3] != "0");
                if (row[i] && all.columns[i].type == SQL_VARCHAR) {
                    EXPECT_LE(ToUtf16(*row[i]).size(), std::stoul(*defined[i][1])) << *row[i];
                }
            }
        }
        EXPECT_EQ(client.Execute("SELECT " + list + " FROM [" + table.SqlName() + "]").rows, all.rows);
    }
}

TEST_P(SampleRecords, TablesWithCriteriaShowAPartOfTheirFile)
{
    const Source source(SampleNamed(GetParam()));
    int withCriteria = 0;
    for (const Table& table : Tables()) {
        if (table.criteria.empty())
            continue;
        ++withCriteria;
        const auto whole = source.Rows("SELECT 1 FROM temp.[" + samples::RowsOf(table.file) + "]");
        const Result shown = client.Execute("SELECT * FROM [" + table.SqlName() + "]");
        ASSERT_TRUE(shown.Succeeded()) << shown.diagnostic.message;
        EXPECT_GT(shown.rows.size(), 0u) << table.SqlName();
        EXPECT_LT(shown.rows.size(), whole.size()) << table.SqlName();
    }
    EXPECT_GE(withCriteria, 2);
    const bool ledger = std::string(GetParam()) == "Ledger";
    EXPECT_EQ(client
                  .Execute(ledger ? "SELECT COUNT(*) FROM BANK_OVERDRAWN WHERE BALANCE >= 0"
                                  : "SELECT COUNT(*) FROM ORDERS_OPEN_ORDER WHERE STATE NOT IN ('N', 'P')")
                  .Single(),
              "0");
    // Of one file, entries lie between a header and a trailer; of the other, receipts before issues.
    EXPECT_EQ(client
                  .Execute(ledger ? "SELECT COUNT(*) FROM BANK_JOURNAL WHERE RECORD_KIND <> 'E'"
                                  : "SELECT COUNT(*) FROM STOCK_RECEIPT r JOIN STOCK_ISSUE i ON r.KIND = i.KIND")
                  .Single(),
              "0");
}

TEST_P(SampleRecords, SpecialColumnsTellWhereARecordStands)
{
    const Source source(SampleNamed(GetParam()));
    int numbers = 0;
    int addresses = 0;
    for (const Table& table : Tables()) {
        const auto expected = SourceRows(source, table);
        for (const Row& column : Columns(table, "COLUMN_TYPE > 0")) {
            SCOPED_TRACE(table.SqlName() + "." + *column[0]);
            const Result read = client.Execute("SELECT [" + *column[0] + "] FROM [" + table.SqlName() + "]");
            ASSERT_EQ(read.rows.size(), expected.size()) << read.diagnostic.message;
            for (std::size_t i = 0; i < expected.size(); ++i) {
                const Cell& cell = read.rows[i][0];
                if (*column[0] == "ROWID" || *column[0] == "RELATIVE_NUMBER") {
                    EXPECT_EQ(cell, expected[i][0].text);
                    ++numbers;
                } else if (*column[0] == "RFA") {
                    ASSERT_TRUE(cell);
                    EXPECT_TRUE(i == 0 || *cell > *read.rows[i - 1][0]) << *cell;
                    ++addresses;
                } else {
                    EXPECT_EQ(cell, std::nullopt);
                }
            }
        }
    }
    EXPECT_GT(numbers, 0);
    EXPECT_GT(addresses, 0);
    // A closed office leaves an empty slot, a line that was taken off its order a deleted record.
    if (std::string(GetParam()) == "Ledger")
        EXPECT_EQ(client.Execute("SELECT COUNT(*) || ' ' || MAX(RELATIVE_NUMBER) FROM BANK_BRANCH").Single(), "5 8");
    else
        EXPECT_EQ(client.Execute("SELECT MAX(ROWID) - COUNT(*) FROM ORDERS_ORDER_LINE").Single(), "1");
}

TEST_P(SampleRecords, EncryptedFieldsAreRefusedWhereTheyAreShown)
{
    const bool ledger = std::string(GetParam()) == "Ledger";
    const std::string table = ledger ? "CHEQUE_BOOK" : "PURCHASE";
    const std::string column = ledger ? "CODE_WORD" : "APPROVED_BY";
    const std::string name = (ledger ? "BANK_" : "STOCK_") + table;
    EXPECT_TRUE(client.Execute("SELECT * FROM [" + name + "]").Succeeded());
    EXPECT_FALSE(client.Execute("SELECT " + column + " FROM [" + name + "]").Succeeded());
    ASSERT_TRUE(client
                    .Execute("UPDATE TW_COLUMN SET VISIBLE = 1 WHERE TABLE_NAME = '" + table + "' AND COLUMN_NAME = '" +
                             column + "'")
                    .Succeeded());
    const Result shown = client.Execute("SELECT * FROM [" + name + "]");
    EXPECT_FALSE(shown.Succeeded());
    EXPECT_NE(shown.diagnostic.message.find("encrypted"), std::string::npos) << shown.diagnostic.message;
}
