#pragma once

#include "tests/gl/OffscreenContext.h"
#include <zep/scene/Geom.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>

#include <benchmark/benchmark.h>

#include <functional>
#include <vector>

namespace ZEP {

/// What a frame shows, and what any program would have to do to draw the same.
class TFrame {
public:
    virtual ~TFrame() = default;
    /// Makes the objects under `root`.
    virtual void Fill(TZEPObject& root) = 0;
    /// Where from it is seen: all of -1..1 in x and y and 0..1 in z.
    virtual void Aim(TZEPCamera& camera);
    /// The yardstick: the bare calls for the same picture, in the view of the library's frame.
    virtual void DrawRaw() = 0;
};

/// A view of 16 by 16 pixels, so that traversal and calls are what is seen.
inline constexpr int SmallView = 16;

/// A scene and its camera in a context of their own, under the options of a new panel.
struct TStage {
    explicit TStage(int width = SmallView, int height = SmallView);
    /// One frame.
    void Render();

    OffscreenContext Context;
    TZEPScene Scene;
    TZEPCamera Camera;
};

/// Processor seconds of all threads until all is drawn: other programs on the machine disturb them
/// little.
[[nodiscard]] double SecondsOf(const std::function<void()>& draw);

/// Calls both by turns, after some turns that do not count. The time of an iteration is what the
/// first one takes; `raw_ms` is the yardstick's, `times_raw` the ratio of the two quickest calls.
void MeasureByTurns(benchmark::State& state, const std::function<void()>& draw,
                    const std::function<void()>& yardstick);

/// Draws frames of both by turns in a small view.
void MeasureFrame(benchmark::State& state, TFrame& frame);

/// `count` + 1 points of a winding path within -1..1 in x and y and 0..1 in z.
[[nodiscard]] std::vector<TGLArrayd3> Path(int count);

} // namespace ZEP
