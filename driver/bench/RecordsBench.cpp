// What tables over records cost: a sum against a bare loop over the mapped file, and rows of text against the same rows
// in an SQLite table of the catalog. Only the ratio of a line to its floor counts.

#include "Catalog.h"
#include "MappedFile.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlite3.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

constexpr int summedRecords = 1000000;
constexpr std::size_t summedSize = 200;
constexpr std::size_t packedOffset = 60;
constexpr std::size_t packedLength = 5;

constexpr int shownRecords = 200000;
constexpr int shownColumns = 10;
constexpr std::size_t shownLength = 12;

/// A catalog over two data files, and the ini files that lead to it.
class Ground
{
public:
    static const Ground& Shared()
    {
        static const Ground ground;
        return ground;
    }

    std::string SummedFile() const { return (m_folder / "SUMMED.dat").string(); }
    std::string ConnectString() const { return "Driver=Tarnwick ODBC;Catalog=" + (m_folder / "bench.cat").string(); }

private:
    Ground() : m_folder(fs::temp_directory_path() / ("tarnwick-records-" + std::to_string(::getpid())))
    {
        fs::create_directories(m_folder);
        std::ofstream(m_folder / "odbcinst.ini") << "[Tarnwick ODBC]\nDriver=" << TARNWICK_DRIVER_FILE << "\n";
        std::ofstream(m_folder / "odbc.ini").flush();
        ::setenv("ODBCSYSINI", m_folder.c_str(), 1);
        ::setenv("ODBCINI", (m_folder / "odbc.ini").c_str(), 1);
        WriteSummed();
        WriteShown();
        Define();
    }
    ~Ground() { fs::remove_all(m_folder); }

    void WriteSummed() const
    {
        std::ofstream file(SummedFile(), std::ios::binary);
        std::string record(summedSize, 'x');
        for (int i = 0; i < summedRecords; ++i) {
            char digits[12];
            std::snprintf(digits, sizeof digits, "%09dC", i);
            for (std::size_t k = 0; k < packedLength; ++k)
                record[packedOffset + k] = static_cast<char>(
                    (digits[2 * k] - '0') << 4 | (digits[2 * k + 1] == 'C' ? 0xC : digits[2 * k + 1] - '0'));
            file << record;
        }
    }

    void WriteShown() const
    {
        std::ofstream file(m_folder / "SHOWN.dat", std::ios::binary);
        char cell[shownLength + 1];
        for (int i = 0; i < shownRecords; ++i)
            for (int k = 0; k < shownColumns; ++k) {
                std::snprintf(cell, sizeof cell, "%-12d", i * 10 + k);
                file.write(cell, shownLength);
            }
    }

    void Define() const
    {
        const std::string file = (m_folder / "bench.cat").string();
        tarnwick::catalog::Ensure(file);
        sqlite3* engine = nullptr;
        sqlite3_open(file.c_str(), &engine);
        std::string script = "INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY) VALUES ('B', '" + m_folder.string() +
                             "');"
                             "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, SCALE) "
                             "VALUES ('SUMMED', 'AMOUNT', 'PACKED', 60, 5, 2);";
        std::string columns;
        for (int k = 0; k < shownColumns; ++k) {
            const std::string name = "C" + std::to_string(k);
            script += "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH) VALUES ('SHOWN', "
                      "'" +
                      name + "', 'STRING', " + std::to_string(12 * k) + ", 12);";
            columns += (k > 0 ? ", " : "") + name + " VARCHAR(12)";
        }
        for (const char* table : {"SUMMED", "SHOWN"})
            script += "INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE) VALUES ('" +
                      std::string(table) + "', " + (table[1] == 'U' ? "200" : "120") +
                      ", 'SEQUENTIAL', 'FIXED');"
                      "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION) VALUES ('B', '" +
                      table + "', '" + table + "', '" + table + ".dat');";
        script += "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
                  "PRECISION, VISIBLE) SELECT 'B', FILE_NAME, FIELD_NAME, FIELD_NAME, CASE FILE_NAME WHEN 'SUMMED' "
                  "THEN 'DECIMAL' ELSE 'VARCHAR' END, LENGTH, 1 FROM TW_FIELD WHERE FILE_NAME IN ('SUMMED', 'SHOWN');"
                  "CREATE TABLE PLAIN (" +
                  columns +
                  ");"
                  "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                  std::to_string(shownRecords - 1) + ") INSERT INTO PLAIN SELECT ";
        for (int k = 0; k < shownColumns; ++k)
            script += (k > 0 ? ", " : "") + std::string("CAST(i * 10 + ") + std::to_string(k) + " AS TEXT)";
        script += " FROM n;";
        char* error = nullptr;
        if (sqlite3_exec(engine, script.c_str(), nullptr, nullptr, &error) != SQLITE_OK)
            throw std::runtime_error(error);
        sqlite3_close(engine);
    }

    fs::path m_folder;
};

class Session
{
public:
    Session()
    {
        std::string text = Ground::Shared().ConnectString();
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        if (!SQL_SUCCEEDED(SQLDriverConnect(m_connection, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                                            nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)))
            throw std::runtime_error("cannot connect: " + text);
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &m_statement);
    }
    ~Session()
    {
        SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
        SQLDisconnect(m_connection);
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    SQLHSTMT Statement() const { return m_statement; }

    void Execute(std::string text) const
    {
        if (!SQL_SUCCEEDED(SQLExecDirect(m_statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS)))
            throw std::runtime_error(text);
    }

private:
    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    SQLHSTMT m_statement = nullptr;
};

constexpr double expectedSum = static_cast<double>(summedRecords) * (summedRecords - 1) / 2 / 100;

void SumPacked(benchmark::State& state)
{
    const Session session;
    for (auto _ : state) {
        session.Execute("SELECT SUM(AMOUNT) FROM B_SUMMED");
        double sum = 0;
        SQLFetch(session.Statement());
        SQLGetData(session.Statement(), 1, SQL_C_DOUBLE, &sum, 0, nullptr);
        if (sum < expectedSum - 1 || sum > expectedSum + 1)
            state.SkipWithError("the sum is wrong");
        SQLFreeStmt(session.Statement(), SQL_CLOSE);
    }
}

void SumPackedFloor(benchmark::State& state)
{
    const std::string path = Ground::Shared().SummedFile();
    for (auto _ : state) {
        const auto file = tarnwick::records::MappedFile::Open(path);
        long long sum = 0;
        for (std::size_t at = packedOffset; at < file->Content().size(); at += summedSize) {
            long long number = 0;
            for (std::size_t k = 0; k < packedLength; ++k) {
                const auto byte = static_cast<unsigned char>(file->Content()[at + k]);
                number =
                    k + 1 < packedLength ? number * 100 + (byte >> 4) * 10 + (byte & 0xF) : number * 10 + (byte >> 4);
            }
            sum += number;
        }
        benchmark::DoNotOptimize(sum);
        if (static_cast<double>(sum) / 100 < expectedSum - 1)
            state.SkipWithError("the sum is wrong");
    }
}

/// Reads ten columns of all rows into strings.
void ReadRows(benchmark::State& state, const char* table)
{
    const Session session;
    std::array<std::array<char, 32>, shownColumns> cells;
    std::array<SQLLEN, shownColumns> lengths;
    for (SQLUSMALLINT i = 0; i < shownColumns; ++i)
        SQLBindCol(session.Statement(), i + 1, SQL_C_CHAR, cells[i].data(), 32, &lengths[i]);
    for (auto _ : state) {
        session.Execute("SELECT * FROM " + std::string(table));
        int rows = 0;
        std::size_t bytes = 0;
        for (; SQL_SUCCEEDED(SQLFetch(session.Statement())); ++rows)
            for (std::size_t i = 0; i < shownColumns; ++i)
                bytes += std::string(cells[i].data(), static_cast<std::size_t>(lengths[i])).size();
        benchmark::DoNotOptimize(bytes);
        if (rows != shownRecords)
            state.SkipWithError("rows are missing");
        SQLFreeStmt(session.Statement(), SQL_CLOSE);
    }
}

/// Counts the rows with a text that the first column of one row has.
void CountEqual(benchmark::State& state, const char* table)
{
    const Session session;
    for (auto _ : state) {
        session.Execute("SELECT COUNT(*) FROM " + std::string(table) + " WHERE C0 = '1234560'");
        SQLINTEGER count = 0;
        SQLFetch(session.Statement());
        SQLGetData(session.Statement(), 1, SQL_C_SLONG, &count, 0, nullptr);
        if (count != 1)
            state.SkipWithError("not just one row has the text");
        SQLFreeStmt(session.Statement(), SQL_CLOSE);
    }
}

void FilterText(benchmark::State& state)
{
    CountEqual(state, "B_SHOWN");
}

void FilterTextFloor(benchmark::State& state)
{
    CountEqual(state, "PLAIN");
}

constexpr double severalReadings = 3; ///< in seconds

void SelectTen(benchmark::State& state)
{
    ReadRows(state, "B_SHOWN");
}

void SelectTenFloor(benchmark::State& state)
{
    ReadRows(state, "PLAIN");
}

BENCHMARK(SumPacked)->Unit(benchmark::kMillisecond);
BENCHMARK(SumPackedFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(FilterText)->Unit(benchmark::kMillisecond);
BENCHMARK(FilterTextFloor)->Unit(benchmark::kMillisecond);
// One reading takes half a second, and differs from the next by more than the two differ: a run is several.
BENCHMARK(SelectTen)->Unit(benchmark::kMillisecond)->MinTime(severalReadings);
BENCHMARK(SelectTenFloor)->Unit(benchmark::kMillisecond)->MinTime(severalReadings);

} // namespace

BENCHMARK_MAIN();
