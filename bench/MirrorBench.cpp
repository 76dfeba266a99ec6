#include "bench/ShadowScene.h"
#include <zep/objects/Polygon.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/VertexItems.h>

namespace ZEP {
namespace {

/// A frame of 100 spheres above a mirror that fills most of the view, against the same frame
/// without reflections.
void Mirror(benchmark::State& state) {
    TShadowScene mirrored(1, 100, static_cast<int>(state.range(0)),
                          static_cast<int>(state.range(1)));
    TZEPScene& scene = mirrored.Stage.Scene;
    auto* mirror = new TZEPPolygon(&scene);
    mirror->SetConcave(false);
    mirror->SetColorVertexes(false);
    for (const auto& [x, y] : {std::pair{-1.5, -1.5}, {1.5, -1.5}, {1.5, 1.5}, {-1.5, 1.5}})
        mirror->Vertexes()->Add()->SetPoint({x, y, 0.1});
    mirror->SetReflection(0.5);
    mirror->SetParentComponent(&scene);
    const auto draw = [&](bool reflections) {
        scene.SetReflections(reflections);
        mirrored.Stage.Render();
    };
    MeasureByTurns(
        state, [&] { draw(true); }, [&] { draw(false); });
}
BENCHMARK(Mirror)
    ->ArgNames({"width", "height"})
    ->Args({SmallView, SmallView})
    ->Args({800, 600})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
