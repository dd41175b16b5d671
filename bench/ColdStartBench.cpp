#include "CatalogFixture.h"
#include "TemporarySettings.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace
{

void start(benchmark::State& state, const QString& window)
{
    for (auto _ : state) {
        if (QProcess::execute(QStringLiteral(COLDSTART_WINDOW), {window}) != 0) {
            state.SkipWithError("the window did not start");
            break;
        }
    }
}

void ColdStart(benchmark::State& state)
{
    start(state, u"workbench"_s);
}
BENCHMARK(ColdStart)->Unit(benchmark::kMillisecond)->UseRealTime();

void ColdStartFloor(benchmark::State& state)
{
    start(state, u"empty"_s);
}
BENCHMARK(ColdStartFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const TemporarySettings settings;
    CatalogFixture world;
    world.addDatasource(u"Ledger"_s);
    world.addDatasource(u"Warehouse"_s);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
