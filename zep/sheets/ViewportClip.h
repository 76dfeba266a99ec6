#pragma once

#include <zep/gl/Scopes.h>
#include <zep/scene/Geom.h>

#include <optional>
#include <vector>

namespace ZEP {

struct TZEPFrame;

/// While it lives nothing is drawn beyond an outline that lies in the plane z = 0 of the frame that
/// was loaded when it began, and neither is it picked beyond its box.
class TViewportClip {
public:
    /// \param size     of the box about the origin
    /// \param corners  of the outline; empty: the box
    /// \param pixels   are drawn: neither select mode nor feedback
    TViewportClip(TZEPFrame& frame, const TGLArrayd3& size, std::vector<TGLArrayd3> corners,
                  bool pixels);
    ~TViewportClip();
    TViewportClip(const TViewportClip&) = delete;
    TViewportClip& operator=(const TViewportClip&) = delete;

private:
    [[nodiscard]] static int UsePlanes(const TGLArrayd3& size);
    void Mark(GLenum operation) const;

    TZEPFrame& m_frame;
    std::vector<TGLArrayd3> m_corners; ///< empty: no stencil
    TGLMatrixd4 m_matrix{};            ///< that they were loaded with
    GLuint m_mirror = 0;               ///< the pixels of a mirror, where it is drawn in one
    TZEPAttribScope m_attributes;
    std::optional<TZEPAttribScope> m_stencil;
};

} // namespace ZEP
