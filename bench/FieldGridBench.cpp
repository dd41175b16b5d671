#include "CatalogFixture.h"
#include "CellGrid.h"
#include "FileGrids.h"
#include "OdbcFloor.h"
#include "PaneRegistry.h"
#include "ShellPanes.h"
#include "StatementRecorder.h"
#include "TemporarySettings.h"
#include "mdiMain.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

constexpr int fieldCount = 20'000;

const QString datasource = u"Ledger"_s;
const QString file = u"ORDERS"_s;

/// A catalog with one file of many fields, and the program's window over it.
class Program
{
public:
    Program() : window({})
    {
        world.addDatasource(datasource);
        window.MDIForm_Load();
        window.resize(1200, 800);
        window.show();
        window.tvwExplorer_Expand(&window.tvwExplorer().Nodes().Item(u"DSN=Ledger:"_s));
        world.run(datasource, u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                              "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, "
                              "LENGTH, PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
                              "SELECT 'ORDERS', i, printf('FIELD_%05d', i), 'STRING', 10 * i, 10, 10, 0, i % 3, '', "
                              "'0', 'A field of the orders' FROM n"_s.arg(fieldCount));
        QApplication::processEvents();
    }

    /// From the command to the grid on the screen.
    void show()
    {
        window.PaneDisplay(u"frmFields"_s, {datasource, file});
        window.findChild<CellGrid*>(u"grd"_s)->viewport()->repaint();
    }

    CatalogFixture world;
    mdiMain window;
};

std::optional<Program> program;

void FieldGrid(benchmark::State& state)
{
    for (auto _ : state)
        program->show();
}
BENCHMARK(FieldGrid)->Unit(benchmark::kMillisecond)->UseRealTime();

void FieldGridFloor(benchmark::State& state)
{
    QStringList statements;
    {
        const StatementRecorder recorder;
        program->show();
        statements = recorder.statements();
    }
    OdbcFloor floor(datasource);
    for (auto _ : state) {
        for (const QString& statement : std::as_const(statements))
            benchmark::DoNotOptimize(floor.read(statement));
    }
    state.counters["statements"] = static_cast<double>(statements.size());
}
BENCHMARK(FieldGridFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const TemporarySettings settings;
    registerShellPanes();
    registerFileGrids();
    program.emplace();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    program.reset();
    return 0;
}
