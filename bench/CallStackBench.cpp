#include "frmTWErr.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <vector>

namespace
{

void CallStack(benchmark::State& state)
{
    for (auto _ : state) {
        frmTWErr::Push("frmFile.Display");
        frmTWErr::Pop();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(CallStack);

void CallStackFloor(benchmark::State& state)
{
    std::vector<const char*> names;
    for (auto _ : state) {
        names.push_back("frmFile.Display");
        benchmark::DoNotOptimize(names.data());
        names.pop_back();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(CallStackFloor);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    frmTWErr::Load();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
