#include "bench/Frames.h"
#include <zep/appearance/effects/LogicalObject.h>
#include <zep/objects/Box.h>
#include <zep/objects/Sphere.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

namespace ZEP {
namespace {

/// A sphere and a box, one carved by the other, against both drawn plainly.
void Logical(benchmark::State& state, TZEPLogicalOperation operation) {
    const int size = static_cast<int>(state.range(0));
    TStage stage(size, size);
    auto* logical = new TZEPLogicalObject(&stage.Scene);
    auto* sphere = new TZEPSphere(&stage.Scene);
    sphere->XForm()->Scale()->SetData(1.3, 1.3, 1.3);
    sphere->SetParentComponent(logical);
    (new TZEPBox(&stage.Scene))->SetParentComponent(logical);
    logical->SetParentComponent(&stage.Scene);
    stage.Camera.Position()->SetData(1, -2, 1.5);
    const auto draw = [&](TZEPLogicalOperation drawn) {
        logical->SetOperation(drawn);
        stage.Render();
    };
    MeasureByTurns(
        state, [&] { draw(operation); }, [&] { draw(loOR); });
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgName("size")->Arg(SmallView)->Arg(400)->UseManualTime()->Unit(
        benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(Logical, and, loAND)->Apply(Sizes);
BENCHMARK_CAPTURE(Logical, sub, loSUB)->Apply(Sizes);

} // namespace
} // namespace ZEP
