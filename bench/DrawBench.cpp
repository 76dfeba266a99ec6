#include "objects/Line.h"
#include "scene/Scene.h"
#include "scene/Vertex3.h"
#include "tests/gl/OffscreenContext.h"
#include "view/Camera.h"

#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <chrono>
#include <vector>

namespace ZEP {
namespace {

// A view so small that traversal and calls are what is seen, not pixels.
constexpr int Size = 16;
constexpr int Count = 100'000;

std::vector<TGLArrayd3> Path() {
    std::vector<TGLArrayd3> points;
    for (int i = 0; i <= Count; ++i)
        points.push_back({i % 100 * 0.02 - 1, i / 100 % 100 * 0.02 - 1, i / 10'000 * 0.1});
    return points;
}

/// Lines as a tool path has them: one object each, all in one colour or in turn in two.
class LineScene {
public:
    LineScene(const std::vector<TGLArrayd3>& path, int colors) {
        m_scene.BeginUpdate();
        for (std::size_t i = 0; i < Count; ++i) {
            auto* line = new TZEPLine(&m_scene);
            const TGLArrayd3 &from = path[i], &to = path[i + 1];
            line->P1()->SetData(from[0], from[1], from[2]);
            line->P2()->SetData(to[0], to[1], to[2]);
            line->SetSmooth(false);
            line->SetColor(i % static_cast<std::size_t>(colors) == 0 ? clYellow : clRed);
            line->SetParentComponent(&m_scene);
        }
        m_camera.SetParentComponent(&m_scene);
        m_camera.Position()->SetData(0, -3, 2);
        m_scene.EndUpdate();
    }

    void Render() {
        m_scene.Render(&m_camera, Size, Size, false);
        glFinish();
    }

private:
    TZEPScene m_scene;
    TZEPCamera m_camera{&m_scene};
};

/// What any program would have to do for such a frame: the yardstick.
void RenderRaw(const std::vector<TGLArrayd3>& path) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    for (std::size_t i = 0; i < Count; ++i) {
        glBegin(GL_LINES);
        glVertex3dv(path[i].data());
        glVertex3dv(path[i + 1].data());
        glEnd();
    }
    glFinish();
}

template <class Frame>
double SecondsOf(Frame frame) {
    const auto start = std::chrono::steady_clock::now();
    frame();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Frame(benchmark::State& state) {
    OffscreenContext context(Size, Size);
    const std::vector<TGLArrayd3> path = Path();
    LineScene scene(path, static_cast<int>(state.range(0)));
    scene.Render();
    RenderRaw(path);
    double library = 0, raw = 0;
    for (auto _ : state) {
        library += SecondsOf([&] { scene.Render(); });
        state.PauseTiming();
        raw += SecondsOf([&] { RenderRaw(path); });
        state.ResumeTiming();
    }
    const auto frames = static_cast<double>(state.iterations());
    state.counters["raw_ms"] = raw / frames * 1000;
    state.counters["times_raw"] = library / raw;
}

BENCHMARK(Frame)->ArgName("colors")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ZEP
