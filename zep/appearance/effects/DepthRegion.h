#pragma once

#include <zep/scene/SeenRegion.h>

#include <GL/gl.h>

#include <vector>

namespace ZEP {

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
