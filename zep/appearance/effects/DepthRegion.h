#pragma once

#include <GL/gl.h>

#include <vector>

namespace ZEP {

/// A rectangle of the window, in pixels from the lower left corner of the viewport.
struct TZEPRegion {
    int X = 0, Y = 0, Width = 0, Height = 0;
    [[nodiscard]] bool IsEmpty() const { return Width <= 0 || Height <= 0; }
};

/// The depths in a part of the window, to come back to.
class TZEPDepthRegion {
public:
    explicit TZEPDepthRegion(const TZEPRegion& region) : m_region(region) {}

    /// Takes the depths that are there now.
    void Read();
    /// Puts them back wherever the stencil test, as it is set, passes.
    void Write() const;

private:
    TZEPRegion m_region;
    std::vector<GLuint> m_depths;
};

} // namespace ZEP
