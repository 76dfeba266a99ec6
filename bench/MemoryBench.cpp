#include "objects/Line.h"
#include "scene/Scene.h"
#include "scene/Vertex3.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <unistd.h>

#include <fstream>

namespace ZEP {
namespace {

constexpr int Count = 200'000;

double ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    double size = 0, resident = 0;
    file >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// What a line costs, all in: object, points, colour, its places in lists of owner and parent.
void Lines(benchmark::State& state, bool withColor) {
    for (auto _ : state) {
        malloc_trim(0);
        const double before = ResidentBytes();
        TZEPScene scene;
        for (int i = 0; i < Count; ++i) {
            auto* line = new TZEPLine(&scene);
            line->P1()->SetData(i, 0, 0);
            line->P2()->SetData(i, 1, 0);
            if (withColor) line->SetColor(clYellow);
            line->SetParentComponent(&scene);
        }
        state.counters["bytes_per_line"] = (ResidentBytes() - before) / Count;
    }
}

// One measurement each: memory that was used before and given back would hide what is used now.
BENCHMARK_CAPTURE(Lines, plain, false)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lines, colored, true)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
