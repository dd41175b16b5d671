#include "CatalogFixture.h"
#include "CellGrid.h"
#include "DatabasesRoom.h"
#include "FilesRoom.h"
#include "OdbcFloor.h"
#include "PaneRegistry.h"
#include "ShellPanes.h"
#include "StatementRecorder.h"
#include "TemporarySettings.h"
#include "mdiMain.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int rowCount = 20'000;

const QString datasource = u"Ledger"_s;

/// A catalog with one file of many fields and one table of many columns, and the program's window over it.
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
        fill(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
             "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
             "SELECT 'ORDERS', i, printf('FIELD_%05d', i), 'STRING', 10 * i, 10, 10, 0, i % 3, '', '0', "
             "'A field of the orders' FROM n"_s);
        fill(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, DISPLAY_NAME, FIELD_NAME, "
             "SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, NULLABLE, UPDATABLE, VISIBLE, SEARCHABLE, DEFAULT_VALUE, "
             "REMARKS, COLUMN_TYPE) "
             "SELECT 'SALES', 'ORDERS', i, printf('COLUMN_%05d', i), printf('Column_%05d', i), "
             "printf('FIELD_%05d', i), 'VARCHAR', 10, 10, 0, i % 2, 1, 1, i % 4, '0', 'A column of the orders', 0 "
             "FROM n"_s);
        world.run(datasource, u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', 'ORDERS')"_s);
        QApplication::processEvents();
    }

    /// From the command to the grid on the screen.
    void show(const QString& pane, const QStringList& keys)
    {
        window.PaneDisplay(pane, keys);
        window.currentPane()->findChild<CellGrid*>(u"grd"_s)->viewport()->repaint();
    }

private:
    void fill(const QString& insert)
    {
        world.run(datasource,
                  u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "_s.arg(rowCount) +
                      insert);
    }

    CatalogFixture world;
    mdiMain window;
};

std::optional<Program> program;

void showFields()
{
    program->show(u"frmFields"_s, {datasource, u"ORDERS"_s});
}

void showColumns()
{
    program->show(u"frmColumns"_s, {datasource, u"SALES"_s, u"ORDERS"_s});
}

void ours(benchmark::State& state, const std::function<void()>& show)
{
    for (auto _ : state)
        show();
}

/// Reads what the grid reads through the functions of ODBC.
void floorOf(benchmark::State& state, const std::function<void()>& show)
{
    QStringList statements;
    {
        const StatementRecorder recorder;
        show();
        statements = recorder.statements();
    }
    OdbcFloor floor(datasource);
    for (auto _ : state) {
        for (const QString& statement : std::as_const(statements))
            benchmark::DoNotOptimize(floor.read(statement));
    }
    state.counters["statements"] = static_cast<double>(statements.size());
}

void FieldGrid(benchmark::State& state)
{
    ours(state, showFields);
}
BENCHMARK(FieldGrid)->Unit(benchmark::kMillisecond)->UseRealTime();

void FieldGridFloor(benchmark::State& state)
{
    floorOf(state, showFields);
}
BENCHMARK(FieldGridFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

void ColumnGrid(benchmark::State& state)
{
    ours(state, showColumns);
}
BENCHMARK(ColumnGrid)->Unit(benchmark::kMillisecond)->UseRealTime();

void ColumnGridFloor(benchmark::State& state)
{
    floorOf(state, showColumns);
}
BENCHMARK(ColumnGridFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const TemporarySettings settings;
    registerShellPanes();
    registerFilesRoom();
    registerDatabasesRoom();
    program.emplace();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    program.reset();
    return 0;
}
