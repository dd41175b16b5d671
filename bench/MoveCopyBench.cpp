#include "CConnections.h"
#include "CatalogFixture.h"
#include "OdbcFloor.h"
#include "ShellPanes.h"
#include "StatementRecorder.h"
#include "TemporarySettings.h"
#include "mdiMain.h"
#include "modDragAndDrop.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

const QString source = u"Ledger"_s;
const QString target = u"Depot"_s;

/// The program's window over two catalogs: one with a database of 50 tables of 40 columns over a file of 40 fields, and
/// one with the file alone.
class Program
{
public:
    Program() : window({})
    {
        for (const QString& datasource : {source, target})
            world.addDatasource(datasource);
        window.MDIForm_Load();
        window.resize(1200, 800);
        window.show();
        for (const QString& datasource : {source, target}) {
            window.tvwExplorer_Expand(&window.tvwExplorer().Nodes().Item("DSN="_L1 + datasource + ':'));
            world.run(datasource, u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('PEOPLE', 400)"_s);
            fill(datasource, 40,
                 u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
                 "PRECISION) "
                 "SELECT 'PEOPLE', i, printf('FIELD_%02d', i), 'STRING', i * 10 - 10, 10, 10 FROM n"_s);
        }
        world.run(source, u"INSERT INTO TW_DB (DATABASE_NAME, DRIVER_NAME) VALUES ('STAFF', 'DISAM')"_s);
        fill(source, 50,
             u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) "
             "SELECT 'STAFF', printf('TABLE_%02d', i), 'PEOPLE' FROM n"_s);
        fill(source, 40,
             u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
             "SQL_TYPE_NAME, LENGTH, PRECISION, COLUMN_TYPE) "
             "SELECT 'STAFF', TABLE_NAME, i, printf('COLUMN_%02d', i), printf('FIELD_%02d', i), 'CHAR', 10, 10, 0 "
             "FROM n, TW_TABLE WHERE DATABASE_NAME = 'STAFF'"_s);
    }

    void takeBack() const
    {
        for (const char* table : {"DB", "TABLE", "COLUMN"})
            world.run(target, "DELETE FROM TW_%1 WHERE DATABASE_NAME = 'STAFF'"_L1.arg(QLatin1StringView(table)));
    }

private:
    void fill(const QString& datasource, int count, const QString& insert) const
    {
        world.run(datasource,
                  u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "_s.arg(count) +
                      insert);
    }

    CatalogFixture world;
    mdiMain window;
};

std::optional<Program> program;

bool copyDatabase()
{
    const DragItem database{.Node = {}, .NodeType = u"db"_s, .Keys = {source, u"STAFF"_s}, .DragIcon = {}};
    const DragItem databases{.Node = {}, .NodeType = u"DB"_s, .Keys = {target}, .DragIcon = {}};
    return modDragAndDrop::DragDBToDSN(database, databases, DragMode::Copy);
}

void DatabaseCopy(benchmark::State& state)
{
    for (auto _ : state) {
        if (!copyDatabase())
            state.SkipWithError("nothing was copied");

        state.PauseTiming();
        program->takeBack();
        state.ResumeTiming();
    }
}
BENCHMARK(DatabaseCopy)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Sends the same statements bare, each to its side.
void DatabaseCopyFloor(benchmark::State& state)
{
    QStringList statements;
    QStringList datasources;
    {
        const StatementRecorder recorder;
        copyDatabase();
        statements = recorder.statements();
        datasources = recorder.datasources();
    }
    program->takeBack();
    OdbcFloor sourceFloor(source);
    OdbcFloor targetFloor(target);
    for (auto _ : state) {
        for (qsizetype i = 0; i < statements.size(); ++i)
            benchmark::DoNotOptimize((datasources[i] == source ? sourceFloor : targetFloor).read(statements[i]));

        state.PauseTiming();
        program->takeBack();
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(statements.size());
}
BENCHMARK(DatabaseCopyFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const TemporarySettings settings;
    registerShellPanes();
    program.emplace();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    program.reset();
    return 0;
}
