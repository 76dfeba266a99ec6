#include "bench/Frames.h"
#include "tests/ResidentMemory.h"
#include <zep/appearance/effects/Proxy.h>
#include <zep/objects/Cone.h>
#include <zep/objects/Node.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <malloc.h>

#include <memory>

namespace ZEP {
namespace {

constexpr int Trees = 1000;

void AddCone(TZEPObject& tree, double height, double width, TColor color) {
    auto* cone = new TZEPCone(&tree);
    cone->SetRadius2(width);
    cone->XForm()->Translate()->SetData(0, 0, height);
    cone->XForm()->Scale()->SetData(1, 1, 0.4);
    cone->SetColor(color);
    cone->SetParentComponent(&tree);
}

/// A trunk and three parts of a crown.
void GrowTree(TZEPObject& tree) {
    AddCone(tree, 0.2, 0.1, TColor{0x204060});
    for (const double height : {0.4, 0.6, 0.8})
        AddCone(tree, height, 0.9 - height, TColor{0x208020});
}

/// A forest within -1..1: a tree that is copied, or one that proxies draw over and over.
class TForest {
public:
    explicit TForest(bool proxies) {
        Stage.Scene.BeginUpdate();
        GrowTree(m_model);
        malloc_trim(0);
        const double before = ResidentBytes();
        for (int i = 0; i < Trees; ++i) Place(NewTree(proxies), i);
        BytesEach = (ResidentBytes() - before) / Trees;
        Stage.Camera.Position()->SetData(0, -2.5, 2.5);
        Stage.Scene.EndUpdate();
    }

    TStage Stage;
    double BytesEach = 0;

private:
    TZEPObject& NewTree(bool isProxy) {
        if (isProxy) {
            auto* proxy = new TZEPProxy(&Stage.Scene);
            proxy->SetProxy(&m_model);
            return *proxy;
        }
        auto* tree = new TZEPNode(&Stage.Scene);
        GrowTree(*tree);
        return *tree;
    }
    void Place(TZEPObject& tree, int i) {
        tree.XForm()->Translate()->SetData(i % 32 / 16.0 - 1, i / 32 / 16.0 - 1, 0);
        tree.XForm()->Scale()->SetData(0.05, 0.05, 0.2);
        tree.SetParentComponent(&Stage.Scene);
    }

    TZEPNode m_model;
};

/// Frames of both by turns, each in a context of its own.
void Forest(benchmark::State& state) {
    TForest copies(false);
    TForest proxies(true);
    const auto draw = [](TForest& forest) {
        forest.Stage.Context.MakeCurrent();
        forest.Stage.Render();
    };
    MeasureByTurns(
        state, [&] { draw(proxies); }, [&] { draw(copies); });
    state.counters["bytes_proxy"] = proxies.BytesEach;
    state.counters["bytes_copy"] = copies.BytesEach;
}
BENCHMARK(Forest)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
