#include "ManyFeatures.h"

#include <benchmark/benchmark.h>

/// Opening a camera and listing its features.
static void OpenAndList(benchmark::State& state)
{
    const ManyFeatures many(state.range(0));
    for (auto _ : state)
    {
        unsigned int count = 0;
        if (many.Camera()->Open(KltAccessModeFull) != KltErrorSuccess ||
            many.Camera()->GetFeatures(nullptr, count) != KltErrorSuccess || count != state.range(0))
            state.SkipWithError("The camera cannot be read.");
        many.Camera()->Close();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(OpenAndList)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
