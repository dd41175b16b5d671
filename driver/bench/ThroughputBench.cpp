// What the driver costs over the library below, through the same driver manager and on the same catalog: the library
// below is the floor. Only the ratio of two lines of one run counts.

#include "Catalog.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlite3.h>
#include <sqlucode.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;

constexpr int rowCount = 100000;

/// A catalog with many fields, and the ini files that lead to it by either driver.
class Ground
{
public:
    static const Ground& Shared()
    {
        static const Ground ground;
        return ground;
    }

    std::string ConnectString(bool own) const
    {
        const std::string file = (m_folder / "bench.cat").string();
        return own ? "Driver=Tarnwick ODBC;Catalog=" + file : "Driver=Below;Database=" + file;
    }

private:
    Ground() : m_folder(fs::temp_directory_path() / ("tarnwick-bench-" + std::to_string(std::rand())))
    {
        fs::create_directories(m_folder);
        std::ofstream(m_folder / "odbcinst.ini") << "[Tarnwick ODBC]\nDriver=" << TARNWICK_DRIVER_FILE
                                                 << "\n[Below]\nDriver=" << TARNWICK_SQLITE_ODBC_FILE << "\n";
        std::ofstream(m_folder / "odbc.ini").flush();
        ::setenv("ODBCSYSINI", m_folder.c_str(), 1);
        ::setenv("ODBCINI", (m_folder / "odbc.ini").c_str(), 1);
        Fill();
    }
    ~Ground() { fs::remove_all(m_folder); }

    void Fill() const
    {
        const std::string file = (m_folder / "bench.cat").string();
        tarnwick::catalog::Ensure(file);
        sqlite3* engine = nullptr;
        sqlite3_open(file.c_str(), &engine);
        sqlite3_exec(
            engine,
            ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(rowCount) +
             ") INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, FIELD_NUMBER, LOCAL_TYPE_NAME, OFFSET, LENGTH, REMARKS) "
             "SELECT 'FILE' || (i / 100), 'FIELD-' || i, i % 100, 'STRING', i % 60000, 12, "
             "'The remark of field number ' || i || ', W\xC3\xA4hrung' FROM n")
                .c_str(),
            nullptr, nullptr, nullptr);
        sqlite3_close(engine);
    }

    fs::path m_folder;
};

class Session
{
public:
    explicit Session(bool own)
    {
        std::string text = Ground::Shared().ConnectString(own);
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

    void Execute(const char* text) const
    {
        std::vector<SQLWCHAR> wide(text, text + std::char_traits<char>::length(text) + 1);
        if (!SQL_SUCCEEDED(SQLExecDirectW(m_statement, wide.data(), SQL_NTS)))
            throw std::runtime_error(text);
    }

private:
    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    SQLHSTMT m_statement = nullptr;
};

constexpr SQLUSMALLINT columnCount = 12;

struct Place {
    std::array<std::array<SQLWCHAR, 256>, columnCount> text;
    std::array<SQLLEN, columnCount> bytes;
};

/// Reads all fields into bound wide columns, `state.range(0)` rows at a time.
void BoundRows(benchmark::State& state, bool own)
{
    const auto blockRows = static_cast<SQLULEN>(state.range(0));
    const Session session(own);
    std::vector<Place> block(blockRows);
    SQLULEN fetched = 0;
    for (SQLUSMALLINT i = 0; i < columnCount; ++i)
        SQLBindCol(session.Statement(), i + 1, SQL_C_WCHAR, block[0].text[i].data(), sizeof block[0].text[i],
                   &block[0].bytes[i]);
    SQLSetStmtAttr(session.Statement(), SQL_ATTR_ROW_BIND_TYPE, reinterpret_cast<SQLPOINTER>(sizeof(Place)), 0);
    SQLSetStmtAttr(session.Statement(), SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(blockRows), 0);
    SQLSetStmtAttr(session.Statement(), SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    for (auto _ : state) {
        session.Execute("SELECT * FROM TW_FIELD");
        SQLULEN rows = 0;
        while (SQL_SUCCEEDED(SQLFetch(session.Statement())))
            rows += fetched;
        if (rows < rowCount)
            state.SkipWithError("rows are missing");
        SQLFreeStmt(session.Statement(), SQL_CLOSE);
    }
    state.SetItemsProcessed(state.iterations() * rowCount);
}

/// Reads all fields cell by cell as text of one width.
template <SQLSMALLINT type>
void Cells(benchmark::State& state, bool own)
{
    const Session session(own);
    std::array<SQLWCHAR, 256> text{};
    for (auto _ : state) {
        session.Execute("SELECT * FROM TW_FIELD");
        while (SQL_SUCCEEDED(SQLFetch(session.Statement()))) {
            for (SQLUSMALLINT i = 1; i <= columnCount; ++i) {
                SQLLEN bytes = 0;
                SQLGetData(session.Statement(), i, type, text.data(), sizeof text, &bytes);
            }
        }
        SQLFreeStmt(session.Statement(), SQL_CLOSE);
    }
    state.SetItemsProcessed(state.iterations() * rowCount);
}

void SmallStatement(benchmark::State& state, bool own)
{
    const Session session(own);
    for (auto _ : state) {
        session.Execute("SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'USER' ORDER BY FILE_NAME");
        SQLFreeStmt(session.Statement(), SQL_CLOSE);
    }
}

void ReadBoundRows(benchmark::State& state)
{
    BoundRows(state, true);
}

void ReadBoundRowsFloor(benchmark::State& state)
{
    BoundRows(state, false);
}

void GetWideCells(benchmark::State& state)
{
    Cells<SQL_C_WCHAR>(state, true);
}

void GetWideCellsFloor(benchmark::State& state)
{
    Cells<SQL_C_WCHAR>(state, false);
}

void GetNarrowCells(benchmark::State& state)
{
    Cells<SQL_C_CHAR>(state, true);
}

void GetNarrowCellsFloor(benchmark::State& state)
{
    Cells<SQL_C_CHAR>(state, false);
}

void RunSmallStatement(benchmark::State& state)
{
    SmallStatement(state, true);
}

void RunSmallStatementFloor(benchmark::State& state)
{
    SmallStatement(state, false);
}

} // namespace

BENCHMARK(ReadBoundRowsFloor)->Arg(1)->Arg(16)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadBoundRows)->Arg(1)->Arg(16)->Unit(benchmark::kMillisecond);
BENCHMARK(GetWideCellsFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(GetWideCells)->Unit(benchmark::kMillisecond);
BENCHMARK(GetNarrowCellsFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(GetNarrowCells)->Unit(benchmark::kMillisecond);
BENCHMARK(RunSmallStatementFloor)->Unit(benchmark::kMicrosecond);
BENCHMARK(RunSmallStatement)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
