#include "CatalogFixture.h"
#include "OdbcFloor.h"
#include "ShellPanes.h"
#include "StatementRecorder.h"
#include "TemporarySettings.h"
#include "mdiMain.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <malloc.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

constexpr int fileCount = 100'000;
constexpr int tableCount = 300;
constexpr int columnCount = 30;

const QString files = u"Files"_s;
const QString tables = u"Tables"_s;

/// Two catalogs and the program's window over them.
class Explorer
{
public:
    Explorer() : window({})
    {
        world.addDatasource(files);
        world.addDatasource(tables);
        window.MDIForm_Load();
        window.show();
        expand("DSN=Files:"_L1);
        expand("DSN=Tables:"_L1);
        world.run(files, u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                         "INSERT INTO TW_FILE (FILE_NAME) SELECT printf('FILE_%06d', i) FROM n"_s.arg(fileCount));
        world.run(tables, u"INSERT INTO TW_DB (DATABASE_NAME, DRIVER_NAME) VALUES ('SALES', 'DISAM')"_s);
        world.run(tables, u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                          "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) "
                          "SELECT 'SALES', printf('TABLE_%03d', i) FROM n"_s.arg(tableCount));
        world.run(tables, u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                          "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
                          "SELECT 'SALES', TABLE_NAME, i, printf('COLUMN_%02d', i), 0 FROM n, TW_TABLE "
                          "WHERE DATABASE_NAME = 'SALES'"_s.arg(columnCount));
    }

    TreeNode& node(QLatin1StringView key) { return window.tvwExplorer().Nodes().Item(key); }

    void expand(QLatin1StringView key)
    {
        window.tvwExplorer_Expand(&node(key));
        QApplication::processEvents();
    }

    CatalogFixture world;
    mdiMain window;
};

std::optional<Explorer> explorer;

void ExpandFiles(benchmark::State& state)
{
    TreeNode& node = explorer->node("DSN=Files:FI=Files:"_L1);
    std::size_t bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        node.setExpanded(true);
        node.setExpanded(false);
        QApplication::processEvents();
        malloc_trim(0);
        const std::size_t before = mallinfo2().uordblks;
        state.ResumeTiming();

        node.setExpanded(true);

        state.PauseTiming();
        bytes = mallinfo2().uordblks - before;
        state.ResumeTiming();
    }
    state.counters["bytes_per_file"] = static_cast<double>(bytes) / node.Children();
    node.setExpanded(false);
}
BENCHMARK(ExpandFiles)->Unit(benchmark::kMillisecond);

void ExpandFilesFloor(benchmark::State& state)
{
    OdbcFloor floor(files);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            floor.read(u"SELECT FILE_NAME FROM TW_FILE "
                       "WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', 'SQLDT', "
                       "'LOCDT', 'TABLE', 'TBLPRV', 'USER') ORDER BY FILE_NAME ASC"_s));
}
BENCHMARK(ExpandFilesFloor)->Unit(benchmark::kMillisecond);

void expandAll()
{
    CNodes& nodes = explorer->window.nodes();
    nodes.ExpandChildren(nodes.Item(u"DSN=Tables:"_s));
}

void ExpandAll(benchmark::State& state)
{
    for (auto _ : state)
        expandAll();
}
BENCHMARK(ExpandAll)->Unit(benchmark::kMillisecond);

void ExpandAllFloor(benchmark::State& state)
{
    QStringList statements;
    {
        const StatementRecorder recorder;
        expandAll();
        statements = recorder.statements();
    }
    OdbcFloor floor(tables);
    for (auto _ : state) {
        for (const QString& statement : std::as_const(statements))
            benchmark::DoNotOptimize(floor.read(statement));
    }
    state.counters["statements"] = static_cast<double>(statements.size());
}
BENCHMARK(ExpandAllFloor)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const TemporarySettings settings;
    registerShellPanes();
    explorer.emplace();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    explorer.reset();
    return 0;
}
