#include "tests/gl/OffscreenContext.h"
#include <zep/batch/ObjectMark.h>
#include <zep/objects/Box.h>
#include <zep/objects/Line.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>
#include <zep/view/OverPixels.h>
#include <zep/view/Snap.h>

#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <array>
#include <cmath>

namespace ZEP {
namespace {

// A click in the middle of a view of 800 by 600: the scene's own, and one that draws everything in
// select mode to find the same.
constexpr int Width = 800;
constexpr int Height = 600;

/// A path that goes to and fro over ten layers, one line each.
void AddPath(TZEPScene& scene, int count) {
    const auto point = [](int i) {
        return TGLArrayd3{i % 100 * 0.02 - 1, i / 100 % 100 * 0.02 - 1, i / 10'000 * 0.1};
    };
    for (int i = 0; i < count; ++i) {
        auto* line = new TZEPLine(&scene);
        const TGLArrayd3 from = point(i), to = point(i + 1);
        line->P1()->SetData(from[0], from[1], from[2]);
        line->P2()->SetData(to[0], to[1], to[2]);
        line->SetSmooth(false);
        line->SetParentComponent(&scene);
    }
}

void AddBlocks(TZEPScene& scene, int count) {
    for (int i = 0; i < count; ++i) {
        auto* block = new TZEPBox(&scene);
        block->XForm()->Translate()->SetData(i % 100 * 0.02 - 1, i / 100 * 0.02 - 1, 0);
        block->XForm()->Scale()->SetData(0.015, 0.015, 0.015);
        block->SetParentComponent(&scene);
    }
}

/// A waving surface of triangles.
void AddSurface(TZEPScene& scene, int count) {
    const int side = static_cast<int>(std::sqrt(count / 2));
    auto* mesh = new TZEPMesh(&scene);
    mesh->SetSmooth(true);
    const auto points = static_cast<std::size_t>((side + 1) * (side + 1));
    mesh->Vertexes()->AddEach(points, [side](TZEPVertex3TexCI& vertex, std::size_t i) {
        const double x =
            2.0 * static_cast<double>(i % static_cast<std::size_t>(side + 1)) / side - 1;
        const double y =
            2.0 * static_cast<double>(i / static_cast<std::size_t>(side + 1)) / side - 1;
        vertex.SetPointQuietly({x, y, 0.2 * std::sin(9 * x) * std::cos(7 * y)});
    });
    const auto faces = static_cast<std::size_t>(2 * side * side);
    mesh->Faces()->AddEach(faces, [side](TZEPFace3CI& face, std::size_t i) {
        const int a = static_cast<int>(i / 2) / side * (side + 1) + static_cast<int>(i / 2) % side;
        if (i % 2 == 0)
            face.SetCornersQuietly(a, a + 1, a + side + 2);
        else
            face.SetCornersQuietly(a, a + side + 2, a + side + 1);
    });
    mesh->SetParentComponent(&scene);
}

class ClickedScene {
public:
    explicit ClickedScene(void (*fill)(TZEPScene&, int), int count) {
        m_scene.BeginUpdate();
        fill(m_scene, count);
        m_camera.SetParentComponent(&m_scene);
        m_camera.Position()->SetData(0, -3, 2);
        m_scene.EndUpdate();
        Click(0); // the first one measures what there is
    }

    /// At a place that each click has for itself.
    int Click(int turn) {
        return m_scene.Select(&m_camera, Width, Height, Width / 2 + turn % 50, Height / 2, 4, 4,
                              true, true, true);
    }
    /// What a click would take is looked for and marked over the frame that was drawn last.
    bool Hover(int turn, const QImage& frame) {
        TZEPObject* object =
            m_scene.Pick(&m_camera, Width, Height, Width / 2 + turn % 50, Height / 2, 4, 4, 0);
        DrawPixels(frame, {0, 0});
        if (object) {
            m_camera.Apply(Width, Height, -1);
            TObjectMark(*object).Draw(m_camera.GetViewMatrix(), 1);
        }
        glFinish();
        return object;
    }
    bool Snap(int turn) {
        return m_snapper.Find(m_camera, {Width, Height}, Width / 2.0 + turn % 50, Height / 2.0)
            .has_value();
    }
    int DrawAll() {
        std::array<GLuint, 4096> hits;
        m_camera.Pick(Width, Height, Width / 2, Height / 2, 4, 4);
        glSelectBuffer(static_cast<GLsizei>(hits.size()), hits.data());
        glRenderMode(GL_SELECT);
        glInitNames();
        m_scene.Draw(m_scene, dsAllObjects, dkSelect);
        return glRenderMode(GL_RENDER);
    }
    void MoveAll() {
        m_scene.Iterate([](TZEPObject* object, void*) { object->Invalidate(object); }, nullptr);
    }

private:
    TZEPScene m_scene;
    TZEPCamera m_camera{&m_scene};
    TZEPSnapper m_snapper;
};

void Click(benchmark::State& state, void (*fill)(TZEPScene&, int)) {
    const OffscreenContext context(Width, Height);
    ClickedScene scene(fill, static_cast<int>(state.range(0)));
    int turn = 0;
    int hits = 0;
    for (auto _ : state) hits += scene.Click(++turn);
    if (hits == 0) state.SkipWithError("nothing was hit");
    state.counters["hits"] = static_cast<double>(hits) / turn;
}

void Hover(benchmark::State& state, void (*fill)(TZEPScene&, int)) {
    const OffscreenContext context(Width, Height);
    ClickedScene scene(fill, static_cast<int>(state.range(0)));
    QImage frame(Width, Height, QImage::Format_ARGB32);
    frame.fill(Qt::darkBlue);
    int turn = 0;
    int found = 0;
    for (auto _ : state) found += scene.Hover(++turn, frame) ? 1 : 0;
    if (found == 0) state.SkipWithError("nothing was hit");
}

void Snap(benchmark::State& state, void (*fill)(TZEPScene&, int)) {
    const OffscreenContext context(Width, Height);
    ClickedScene scene(fill, static_cast<int>(state.range(0)));
    int turn = 0;
    int found = 0;
    for (auto _ : state) found += scene.Snap(++turn) ? 1 : 0;
    if (found == 0) state.SkipWithError("nothing was found");
}

/// The first click after everything has changed.
void FirstClick(benchmark::State& state, void (*fill)(TZEPScene&, int)) {
    const OffscreenContext context(Width, Height);
    ClickedScene scene(fill, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        scene.MoveAll();
        state.ResumeTiming();
        scene.Click(0);
    }
}

void DrawAll(benchmark::State& state, void (*fill)(TZEPScene&, int)) {
    const OffscreenContext context(Width, Height);
    ClickedScene scene(fill, static_cast<int>(state.range(0)));
    for (auto _ : state)
        if (scene.DrawAll() == 0) state.SkipWithError("nothing was hit");
}

BENCHMARK_CAPTURE(Click, lines, AddPath)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Hover, lines, AddPath)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Hover, boxes, AddBlocks)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Hover, mesh, AddSurface)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Snap, lines, AddPath)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Snap, boxes, AddBlocks)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Snap, mesh, AddSurface)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FirstClick, lines, AddPath)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawAll, lines, AddPath)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Click, boxes, AddBlocks)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Click, mesh, AddSurface)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FirstClick, boxes, AddBlocks)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FirstClick, mesh, AddSurface)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawAll, boxes, AddBlocks)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawAll, mesh, AddSurface)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
