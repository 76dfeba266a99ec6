#include "bench/Frames.h"

#include <zep/scene/Vertex3.h>

#include <GL/gl.h>

#include <algorithm>
#include <ctime>

namespace ZEP {

namespace {

double ProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
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

TStage::TStage(int width, int height) : Context(width, height), Camera(&Scene) {
    for (const int option : {GL_DEPTH_TEST, GL_CULL_FACE, GL_LIGHTING})
        glEnable(static_cast<GLenum>(option));
    Camera.SetParentComponent(&Scene);
}

void TStage::Render() {
    Scene.Render(&Camera, Context.Width(), Context.Height(), false);
}

double SecondsOf(const std::function<void()>& draw) {
    const double start = ProcessorSeconds();
    draw();
    glFinish();
    return ProcessorSeconds() - start;
}

void MeasureByTurns(benchmark::State& state, const std::function<void()>& draw,
                    const std::function<void()>& yardstick) {
    for (int i = 0; i < 2; ++i) { // what is made once: shared materials, display lists, shaders
        draw();
        yardstick();
    }
    double best = 1e9;
    double bestRaw = 1e9;
    for (auto _ : state) {
        const double seconds = SecondsOf(draw);
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        bestRaw = std::min(bestRaw, SecondsOf(yardstick));
    }
    state.counters["best_ms"] = best * 1000;
    state.counters["raw_ms"] = bestRaw * 1000;
    state.counters["times_raw"] = best / bestRaw;
}

void MeasureFrame(benchmark::State& state, TFrame& frame) {
    TStage stage;
    stage.Scene.BeginUpdate();
    frame.Fill(stage.Scene);
    frame.Aim(stage.Camera);
    stage.Scene.EndUpdate();
    MeasureByTurns(
        state, [&] { stage.Render(); },
        [&] {
            glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
            frame.DrawRaw();
        });
}

} // namespace ZEP
