#include "bench/Frames.h"

#include "scene/Scene.h"
#include "scene/Vertex3.h"
#include "tests/gl/OffscreenContext.h"
#include "view/Camera.h"

#include <GL/gl.h>

#include <algorithm>
#include <ctime>

namespace ZEP {

namespace {

constexpr int Size = 16;

double ProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <class Draw>
double SecondsOf(Draw draw) {
    const double start = ProcessorSeconds();
    draw();
    glFinish();
    return ProcessorSeconds() - start;
}

} // namespace

std::vector<TGLArrayd3> Path(int count) {
    std::vector<TGLArrayd3> points;
    const double layers = count / 10'000 + 1;
    for (int i = 0; i <= count; ++i)
        points.push_back({i % 100 * 0.02 - 1, i / 100 % 100 * 0.02 - 1, i / 10'000 / layers});
    return points;
}

void TFrame::Aim(TZEPCamera& camera) {
    camera.Position()->SetData(0, -6, 4);
}

void MeasureFrame(benchmark::State& state, TFrame& frame) {
    OffscreenContext context(Size, Size);
    for (const int option : {GL_DEPTH_TEST, GL_CULL_FACE, GL_LIGHTING})
        glEnable(static_cast<GLenum>(option));
    TZEPScene scene;
    TZEPCamera camera(&scene);
    scene.BeginUpdate();
    frame.Fill(scene);
    camera.SetParentComponent(&scene);
    frame.Aim(camera);
    scene.EndUpdate();
    const auto draw = [&] { scene.Render(&camera, Size, Size, false); };
    const auto drawRaw = [&] {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        frame.DrawRaw();
    };
    draw(); // what is made once: shared materials, display lists
    draw();
    double best = 1e9;
    double bestRaw = 1e9;
    for (auto _ : state) {
        const double seconds = SecondsOf(draw);
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        bestRaw = std::min(bestRaw, SecondsOf(drawRaw));
    }
    state.counters["best_ms"] = best * 1000;
    state.counters["raw_ms"] = bestRaw * 1000;
    state.counters["times_raw"] = best / bestRaw;
}

} // namespace ZEP
