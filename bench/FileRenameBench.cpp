#include "CConnections.h"
#include "CatalogFixture.h"
#include "DBEngine.h"
#include "OdbcFloor.h"
#include "StatementRecorder.h"
#include "frmTWErr.h"
#include "modUpdate.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int fieldCount = 2'000;
constexpr int tableCount = 20;

const QString datasource = u"Ledger"_s;

/// A file of many fields that many tables use; each table has a column for ten of them.
void fill(const CatalogFixture& world)
{
    world.run(datasource, u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('ORDERS', 8000)"_s);
    world.run(datasource,
              u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
              "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
              "REMARKS) SELECT 'ORDERS', i, printf('FIELD_%04d', i), 'CHARACTER', i * 4, 4, 4, 'A field' FROM n"_s.arg(
                  fieldCount));
    world.run(datasource, u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('SALES')"_s);
    world.run(datasource, u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                          "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) "
                          "SELECT 'SALES', printf('TABLE_%02d', i), 'ORDERS' FROM n"_s.arg(tableCount));
    world.run(datasource, u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10) "
                          "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
                          "SELECT 'SALES', TABLE_NAME, i, printf('COLUMN_%02d', i), printf('FIELD_%04d', i * 7) "
                          "FROM n, TW_TABLE WHERE DATABASE_NAME = 'SALES'"_s);
}

/// Gives the file its first name again, past the driver.
void nameAsBefore(const CatalogFixture& world)
{
    for (const QString& table : {u"TW_FILE"_s, u"TW_FIELD"_s, u"TW_TABLE"_s})
        world.run(datasource, u"UPDATE %1 SET FILE_NAME = 'ORDERS' WHERE FILE_NAME = 'BILLS'"_s.arg(table));
}

const CatalogFixture* world = nullptr;

void rename()
{
    modUpdate::UpdateFile(datasource, u"ORDERS"_s, u"BILLS"_s);
}

void FileRename(benchmark::State& state)
{
    for (auto _ : state) {
        rename();

        state.PauseTiming();
        nameAsBefore(*world);
        state.ResumeTiming();
    }
}
BENCHMARK(FileRename)->Unit(benchmark::kMillisecond)->UseRealTime();

void FileRenameFloor(benchmark::State& state)
{
    QStringList statements;
    {
        const StatementRecorder recorder;
        rename();
        statements = recorder.statements();
    }
    nameAsBefore(*world);
    OdbcFloor floor(datasource);
    for (auto _ : state) {
        for (const QString& statement : std::as_const(statements))
            benchmark::DoNotOptimize(floor.read(statement));

        state.PauseTiming();
        nameAsBefore(*world);
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(statements.size());
}
BENCHMARK(FileRenameFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CatalogFixture catalogs;
    world = &catalogs;
    catalogs.addDatasource(datasource);
    frmTWErr::Load();
    CConnections& connections = CConnections::instance();
    connections.setWorkspace(dao::DBEngine::CreateWorkspace(u"Tarnwick Administrator"_s, {}, {}, 1));
    connections.Item(datasource);
    fill(catalogs);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    connections.Remove(datasource);
    connections.setWorkspace(nullptr);
    return 0;
}
