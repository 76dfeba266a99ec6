#include "bench/ShadowScene.h"
#include <zep/objects/Line.h>
#include <zep/objects/Node.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <vector>

namespace ZEP {
namespace {

constexpr int RealWidth = 800;
constexpr int RealHeight = 600;

/// A frame with shadows against the same frame without. Volumes are kept, or all made anew in each
/// frame since the lights move.
void Shadows(benchmark::State& state, bool accumulates, bool moves, int width, int height) {
    TShadowScene shadowed(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), width,
                          height);
    TStage& stage = shadowed.Stage;
    stage.Scene.SetAccumShadows(accumulates);
    const auto draw = [&](bool shadows) {
        stage.Scene.SetFShadows(shadows);
        stage.Render();
    };
    const auto drawShadowed = [&] {
        if (moves) shadowed.MoveLights();
        draw(true);
    };
    MeasureByTurns(state, drawShadowed, [&] { draw(false); });
}

void EveryCount(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"lights", "casters"})
        ->ArgsProduct({{1, 2, 4}, {10, 100, 1000}})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

void HundredCasters(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"lights", "casters"})
        ->ArgsProduct({{1, 2, 4}, {100}})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

/// Often enough for the shaders that the first frames make not to count.
void LargePicture(benchmark::internal::Benchmark* bench) {
    HundredCasters(bench);
    bench->Iterations(8);
}

BENCHMARK_CAPTURE(Shadows, kept, false, false, SmallView, SmallView)->Apply(EveryCount);
BENCHMARK_CAPTURE(Shadows, moving, false, true, SmallView, SmallView)->Apply(EveryCount);
BENCHMARK_CAPTURE(Shadows, kept_accumulated, true, false, SmallView, SmallView)->Apply(EveryCount);
BENCHMARK_CAPTURE(Shadows, moving_accumulated, true, true, SmallView, SmallView)->Apply(EveryCount);
BENCHMARK_CAPTURE(Shadows, kept_large, false, false, RealWidth, RealHeight)->Apply(LargePicture);
BENCHMARK_CAPTURE(Shadows, kept_accumulated_large, true, false, RealWidth, RealHeight)
    ->Apply(LargePicture);

/// The passes of a frame one by one, by subtraction: counters in milliseconds, the quickest of
/// each.
void ShadowPasses(benchmark::State& state, bool moves) {
    static constexpr std::array<const char*, 6> Names{"pre",           "lights", "objects",
                                                      "shadow_lights", "build",  "draw"};
    static constexpr std::array Passes{dsPre,          dsAllLights,          dsAllObjects,
                                       dsShadowLights, dsBuildShadowVolumes, dsDrawShadowVolumes};
    TShadowScene shadowed(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    TZEPScene& scene = shadowed.Stage.Scene;
    scene.SetFShadows(true);
    shadowed.Stage.Render();
    std::array<double, Passes.size()> best{};
    best.fill(1e9);
    for (auto _ : state) {
        if (moves) shadowed.MoveLights();
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
        double all = 0;
        for (std::size_t i = 0; i < Passes.size(); ++i) {
            const double seconds = SecondsOf([&] { scene.Draw(scene, Passes[i], dkFull); });
            best[i] = std::min(best[i], seconds);
            all += seconds;
        }
        state.SetIterationTime(all);
    }
    for (std::size_t i = 0; i < Passes.size(); ++i) state.counters[Names[i]] = best[i] * 1000;
}
BENCHMARK_CAPTURE(ShadowPasses, kept, false)->Apply(HundredCasters);
BENCHMARK_CAPTURE(ShadowPasses, moving, true)->Apply(HundredCasters);

/// 100,000 lines, which take no part in shadows, in a frame with one caster: against the same frame
/// with the lines hidden, so that `lines_ms` is what they cost. Without lights nothing has a
/// shadow.
void LinesBesideShadows(benchmark::State& state, bool inView) {
    constexpr double Away = 50;
    const int lights = static_cast<int>(state.range(0));
    TShadowScene shadowed(lights, 1);
    TZEPScene& scene = shadowed.Stage.Scene;
    scene.SetFShadows(lights > 0);
    scene.SetReflections(true);
    auto* lines = new TZEPNode(&scene);
    lines->XForm()->Translate()->SetX(inView ? 0 : Away);
    const std::vector<TGLArrayd3> path = Path(100'000);
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        auto* line = new TZEPLine(lines);
        line->P1()->SetDataQuietly(path[i]);
        line->P2()->SetDataQuietly(path[i + 1]);
        line->SetSmooth(false);
        line->SetParentComponent(lines);
    }
    lines->SetParentComponent(&scene);
    const auto draw = [&](bool shown) {
        lines->SetVisible(shown);
        shadowed.Stage.Render();
    };
    MeasureByTurns(
        state, [&] { draw(true); }, [&] { draw(false); });
    state.counters["lines_ms"] = state.counters["best_ms"] - state.counters["raw_ms"];
}

void SomeLights(benchmark::internal::Benchmark* bench) {
    bench->ArgName("lights")->Arg(0)->Arg(1)->Arg(4)->UseManualTime()->Unit(
        benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(LinesBesideShadows, in_view, true)->Apply(SomeLights);
BENCHMARK_CAPTURE(LinesBesideShadows, out_of_view, false)->Apply(SomeLights);

} // namespace
} // namespace ZEP
