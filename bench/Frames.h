#pragma once

#include "scene/Geom.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace ZEP {

class TZEPCamera;
class TZEPObject;

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

/// Draws frames of both by turns, in a view of 16 by 16 pixels so that traversal and calls are what
/// is seen, under the options of a new panel. The time of an iteration is the processor time of
/// all threads, so that other programs on the machine disturb it little; `raw_ms` is the
/// yardstick's, `times_raw` the ratio of the two quickest frames.
void MeasureFrame(benchmark::State& state, TFrame& frame);

/// `count` + 1 points of a winding path within -1..1 in x and y and 0..1 in z.
[[nodiscard]] std::vector<TGLArrayd3> Path(int count);

} // namespace ZEP
