#pragma once

#include <GL/gl.h>

namespace ZEP {

/// While it lives, colours of vertexes are those of the material.
class TVertexColors {
public:
    explicit TVertexColors(bool colored) : m_colored(colored) {
        if (!m_colored) return;
        glPushAttrib(Attributes);
        glEnable(GL_COLOR_MATERIAL);
    }
    ~TVertexColors() {
        if (m_colored) glPopAttrib();
    }
    TVertexColors(const TVertexColors&) = delete;
    TVertexColors& operator=(const TVertexColors&) = delete;

private:
    /// The number of the enable constant taken as a mask: its bits save the current colour and
    /// normal and the lighting state, which is all that coloured vertexes change, and besides
    /// points, lines, polygon stipple, depth buffer, accumulation buffer and viewport.
    static constexpr GLbitfield Attributes = GL_COLOR_MATERIAL;

    bool m_colored;
};

} // namespace ZEP
