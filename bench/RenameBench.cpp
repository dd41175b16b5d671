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

const QString datasource = u"Ledger"_s;

/// Runs an INSERT over the numbers n(i) from 1 on.
void fill(const CatalogFixture& world, int count, const QString& insert)
{
    world.run(datasource,
              u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "_s.arg(count) + insert);
}

/// A file of 2,000 fields that 20 tables use; each table has a column for ten of them.
void fillFile(const CatalogFixture& world)
{
    world.run(datasource, u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('ORDERS', 8000)"_s);
    fill(world, 2'000,
         u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
         "REMARKS) SELECT 'ORDERS', i, printf('FIELD_%04d', i), 'CHARACTER', i * 4, 4, 4, 'A field' FROM n"_s);
    world.run(datasource, u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('SALES')"_s);
    fill(world, 20,
         u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) "
         "SELECT 'SALES', printf('TABLE_%02d', i), 'ORDERS' FROM n"_s);
    fill(world, 10,
         u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
         "SELECT 'SALES', TABLE_NAME, i, printf('COLUMN_%02d', i), printf('FIELD_%04d', i * 7) "
         "FROM n, TW_TABLE WHERE DATABASE_NAME = 'SALES'"_s);
}

/// A database of 50 tables of 40 columns, with two users who have rights on all of it.
void fillDatabase(const CatalogFixture& world)
{
    world.run(datasource, u"INSERT INTO TW_DB (DATABASE_NAME, DRIVER_NAME) VALUES ('STAFF', 'DISAM')"_s);
    fill(world, 50,
         u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) "
         "SELECT 'STAFF', printf('TABLE_%02d', i), 'PEOPLE' FROM n"_s);
    fill(world, 40,
         u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
         "SELECT 'STAFF', TABLE_NAME, i, printf('COLUMN_%02d', i), printf('OTHER_%04d', i) "
         "FROM n, TW_TABLE WHERE DATABASE_NAME = 'STAFF'"_s);
    for (const QString& user : {u"CLERK"_s, u"BOSS"_s}) {
        world.run(datasource, u"INSERT INTO TW_DBPRV (DATABASE_NAME, USER_NAME) VALUES ('STAFF', '%1')"_s.arg(user));
        world.run(datasource,
                  u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) "
                  "SELECT DATABASE_NAME, TABLE_NAME, '%1' FROM TW_TABLE WHERE DATABASE_NAME = 'STAFF'"_s.arg(user));
    }
}

const CatalogFixture* world = nullptr;

/// A rename and the way back to the first name, which goes past the driver.
struct Rename {
    void (*rename)();
    QString column;
    QStringList tables;
    QString name;
    QString newName;

    void goBack() const
    {
        for (const QString& table : tables)
            world->run(datasource, u"UPDATE %1 SET %2 = '%3' WHERE %2 = '%4'"_s.arg(table, column, name, newName));
    }
};

const Rename& file()
{
    static const Rename rename{[] { modUpdate::UpdateFile(datasource, u"ORDERS"_s, u"BILLS"_s); },
                               u"FILE_NAME"_s,
                               {u"TW_FILE"_s, u"TW_FIELD"_s, u"TW_TABLE"_s},
                               u"ORDERS"_s,
                               u"BILLS"_s};
    return rename;
}

const Rename& database()
{
    static const Rename rename{[] { modUpdate::UpdateDatabase(datasource, u"STAFF"_s, u"PEOPLE"_s); },
                               u"DATABASE_NAME"_s,
                               {u"TW_DB"_s, u"TW_TABLE"_s, u"TW_COLUMN"_s, u"TW_DBPRV"_s, u"TW_TBLPRV"_s},
                               u"STAFF"_s,
                               u"PEOPLE"_s};
    return rename;
}

void ours(benchmark::State& state, const Rename& rename)
{
    for (auto _ : state) {
        rename.rename();

        state.PauseTiming();
        rename.goBack();
        state.ResumeTiming();
    }
}

/// Sends the statements of the rename bare.
void floorOf(benchmark::State& state, const Rename& rename)
{
    QStringList statements;
    {
        const StatementRecorder recorder;
        rename.rename();
        statements = recorder.statements();
    }
    rename.goBack();
    OdbcFloor floor(datasource);
    for (auto _ : state) {
        for (const QString& statement : std::as_const(statements))
            benchmark::DoNotOptimize(floor.read(statement));

        state.PauseTiming();
        rename.goBack();
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(statements.size());
}

void FileRename(benchmark::State& state)
{
    ours(state, file());
}
BENCHMARK(FileRename)->Unit(benchmark::kMillisecond)->UseRealTime();

void FileRenameFloor(benchmark::State& state)
{
    floorOf(state, file());
}
BENCHMARK(FileRenameFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

void DatabaseRename(benchmark::State& state)
{
    ours(state, database());
}
BENCHMARK(DatabaseRename)->Unit(benchmark::kMillisecond)->UseRealTime();

void DatabaseRenameFloor(benchmark::State& state)
{
    floorOf(state, database());
}
BENCHMARK(DatabaseRenameFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

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
    fillFile(catalogs);
    fillDatabase(catalogs);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    connections.Remove(datasource);
    connections.setWorkspace(nullptr);
    return 0;
}
