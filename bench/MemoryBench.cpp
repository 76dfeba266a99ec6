#include "tests/ResidentMemory.h"
#include <zep/objects/Arc.h>
#include <zep/objects/Line.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace ZEP {
namespace {

constexpr int Count = 200'000;

// What an object costs, all in: itself, its points, its places in the lists of owner and parent.
template <class Make>
void Memory(benchmark::State& state, Make make) {
    for (auto _ : state) {
        malloc_trim(0);
        const double before = ResidentBytes();
        TZEPScene scene;
        for (int i = 0; i < Count; ++i) make(scene, i)->SetParentComponent(&scene);
        state.counters["bytes_each"] = (ResidentBytes() - before) / Count;
    }
}

TZEPLine* MakeLine(TZEPScene& scene, int i) {
    auto* line = new TZEPLine(&scene);
    line->P1()->SetData(i, 0, 0);
    line->P2()->SetData(i, 1, 0);
    return line;
}

TZEPLine* MakeColoredLine(TZEPScene& scene, int i) {
    TZEPLine* line = MakeLine(scene, i);
    line->SetColor(clYellow);
    return line;
}

TZEPArc* MakeArc(TZEPScene& scene, int i) {
    auto* arc = new TZEPArc(&scene);
    arc->XForm()->Translate()->SetData(i, 0, 0);
    return arc;
}

// One measurement each: memory that was used before and given back would hide what is used now.
BENCHMARK_CAPTURE(Memory, lines, MakeLine)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, colored_lines, MakeColoredLine)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, arcs, MakeArc)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
