#include <zep/scene/Scene.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>
#include <vector>

namespace ZEP {
namespace {

// Each step with N objects under one root and one owner; the time for each, `each`, must not grow
// with N by more than the caches of the processor explain.

/// Begins with no memory at hand, as a program does that opens a file: otherwise few objects would
/// come from what others gave back, and many not.
std::unique_ptr<TZEPScene> NewScene() {
    malloc_trim(0);
    return std::make_unique<TZEPScene>();
}

void Report(benchmark::State& state) {
    using benchmark::Counter;
    state.counters["each"] = Counter(static_cast<double>(state.range(0)),
                                     Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void Fill(TZEPScene& scene, int64_t count) {
    scene.BeginUpdate();
    for (int64_t i = 0; i < count; ++i) {
        auto* object = new TZEPObject(&scene);
        object->SetParentComponent(&scene);
    }
    scene.EndUpdate();
}

void Create(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto scene = NewScene();
        state.ResumeTiming();
        Fill(*scene, state.range(0));
        state.PauseTiming();
        scene.reset();
        state.ResumeTiming();
    }
    Report(state);
}

void AccessByIndex(benchmark::State& state) {
    TZEPScene scene;
    Fill(scene, state.range(0));
    for (auto _ : state)
        for (int i = 0; i < scene.GetItemsCount(); ++i)
            benchmark::DoNotOptimize(scene.GetItem(i)->GetItemIndex());
    Report(state);
}

// With every second object freed again, so that the list has holes.
void AccessByIndexAfterRemovals(benchmark::State& state) {
    TZEPScene scene;
    Fill(scene, 2 * state.range(0));
    std::vector<TZEPObject*> children;
    scene.ListChildren(children);
    for (std::size_t i = 0; i < children.size(); i += 2) delete children[i];
    for (auto _ : state)
        for (int i = 0; i < scene.GetItemsCount(); ++i)
            benchmark::DoNotOptimize(scene.GetItem(i)->GetItemIndex());
    Report(state);
}

void Iterate(benchmark::State& state) {
    TZEPScene scene;
    Fill(scene, state.range(0));
    int64_t count = 0;
    for (auto _ : state)
        scene.Iterate([](TZEPObject*, void* data) { ++*static_cast<int64_t*>(data); }, &count);
    if (count % (state.range(0) + 1) != 0) state.SkipWithError("not all objects were visited");
    Report(state);
}

// The last object has the ident, so that all are compared.
void SearchByIdent(benchmark::State& state) {
    TZEPScene scene;
    Fill(scene, state.range(0));
    auto* last = scene.GetItem(scene.GetItemsCount() - 1);
    last->SetIdent(QStringLiteral("last"));
    for (auto _ : state)
        if (scene.ItemByIdent(QStringLiteral("LAST")) != last) state.SkipWithError("not found");
    Report(state);
}

void Clear(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto scene = std::make_unique<TZEPScene>();
        Fill(*scene, state.range(0));
        state.ResumeTiming();
        scene->Clear();
        state.PauseTiming();
        scene.reset();
        state.ResumeTiming();
    }
    Report(state);
}

// First to last, the worst order for a list.
void FreeOneByOne(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto scene = std::make_unique<TZEPScene>();
        Fill(*scene, state.range(0));
        std::vector<TZEPObject*> children;
        scene->ListChildren(children);
        state.ResumeTiming();
        for (TZEPObject* child : children) delete child;
        state.PauseTiming();
        scene.reset();
        state.ResumeTiming();
    }
    Report(state);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(Create)->Apply(Sizes);
BENCHMARK(AccessByIndex)->Apply(Sizes);
BENCHMARK(AccessByIndexAfterRemovals)->Apply(Sizes);
BENCHMARK(Iterate)->Apply(Sizes);
BENCHMARK(SearchByIdent)->Apply(Sizes);
BENCHMARK(Clear)->Apply(Sizes);
BENCHMARK(FreeOneByOne)->Apply(Sizes);

} // namespace
} // namespace ZEP
