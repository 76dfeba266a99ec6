#pragma once

#include <zep/scene/Geom.h>

namespace ZEP {

class TZEPCamera;

/// Where a camera stands, and how it sees.
struct TCameraPlace {
    [[nodiscard]] static TCameraPlace Of(TZEPCamera& camera);
    void Apply(TZEPCamera& camera) const;
    /// Straight down, and parallel.
    [[nodiscard]] bool IsFlatView() const;

    TGLArrayd3 Eye{}, Target{}, Up{}, Offset{};
    double Field = 0, Roll = 0, Near = 0, Far = 0;
    bool Parallel = false;
};

} // namespace ZEP
