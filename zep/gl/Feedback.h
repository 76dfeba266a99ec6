#pragma once

#include <GL/gl.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <span>

namespace ZEP {

/// What OpenGL would draw, told in window coordinates (feedback mode, `GL_3D`).
class TZEPFeedback {
public:
    /// Calls `draw` in feedback mode, again with a larger buffer for as long as that does not fit.
    /// \return  the tokens; valid until the next call
    std::span<const GLfloat> Render(const std::function<void()>& draw);

private:
    void Grow();

    std::unique_ptr<GLfloat[]> m_buffer; // keeps its grown size
    std::size_t m_size = 0;
};

/// Hands the polygons among the tokens to `visit`: x, y, z of each corner. Points are passed over
/// where a pass-through of 0x1234BA00 goes before; anything else than these raises `Exception`
/// ("ERROR: Unexpected feedback token 0x%x (%d).").
void ForEachPolygon(std::span<const GLfloat> tokens,
                    const std::function<void(std::span<const GLfloat>)>& visit);

} // namespace ZEP
