#include <zep/sheets/ViewportClip.h>

#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>

#include <array>
#include <utility>

namespace ZEP {

namespace {

constexpr GLuint Mirror = 0x80; // marks the pixels of a mirror that is being filled
constexpr GLuint Window = 0x40;

std::vector<TGLArrayd3> BoxOf(const TGLArrayd3& size) {
    const double x = size[0] / 2;
    const double y = size[1] / 2;
    return {{-x, -y, 0}, {x, -y, 0}, {x, y, 0}, {-x, y, 0}};
}

} // namespace

TViewportClip::TViewportClip(TZEPFrame& frame, const TGLArrayd3& size,
                             std::vector<TGLArrayd3> corners, bool pixels)
    : m_frame(frame), m_corners(std::move(corners)), m_attributes(GL_TRANSFORM_BIT) {
    frame.Run.End();
    if (UsePlanes(size) < 4 && m_corners.empty()) m_corners = BoxOf(size);
    if (!pixels || !HasBuffer(GL_STENCIL_BITS)) m_corners.clear();
    if (m_corners.empty()) return;
    m_matrix = LoadedMatrix(GL_MODELVIEW_MATRIX);
    m_stencil.emplace(GL_STENCIL_BUFFER_BIT | GL_ENABLE_BIT);
    m_mirror = glIsEnabled(GL_STENCIL_TEST) ? Mirror : 0;
    glEnable(GL_STENCIL_TEST);
    Mark(GL_INVERT);
    glStencilMask(0);
    glStencilFunc(GL_EQUAL, static_cast<GLint>(Window | m_mirror), Window | m_mirror);
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
}

TViewportClip::~TViewportClip() {
    m_frame.Run.End();
    if (m_stencil) Mark(GL_ZERO);
}

/// The four sides by planes that nobody uses. \return  how many there were
int TViewportClip::UsePlanes(const TGLArrayd3& size) {
    const std::array<TGLArrayd4, 4> sides{{{1, 0, 0, size[0] / 2},
                                           {-1, 0, 0, size[0] / 2},
                                           {0, 1, 0, size[1] / 2},
                                           {0, -1, 0, size[1] / 2}}};
    GLint count = 0;
    glGetIntegerv(GL_MAX_CLIP_PLANES, &count);
    std::size_t used = 0;
    for (GLint i = count - 1; i > 0 && used < sides.size(); --i) { // 0 is that of mirrors
        const GLenum plane = GL_CLIP_PLANE0 + static_cast<GLenum>(i);
        if (glIsEnabled(plane)) continue;
        glClipPlane(plane, sides[used++].data());
        glEnable(plane);
    }
    return static_cast<int>(used);
}

/// Goes over what lies within an odd number of lines: a fan inverts that, wherever its centre is.
/// \param operation  on the bit of each pixel
void TViewportClip::Mark(GLenum operation) const {
    const TZEPAttribScope attributes(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT |
                                     GL_POLYGON_BIT | GL_STENCIL_BUFFER_BIT | GL_TRANSFORM_BIT);
    const TZEPMatrixScope place;
    glLoadMatrixd(m_matrix[0].data());
    WriteColors(false);
    glDepthMask(GL_FALSE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glStencilMask(Window);
    glStencilFunc(m_mirror != 0 ? GL_EQUAL : GL_ALWAYS, static_cast<GLint>(m_mirror), m_mirror);
    glStencilOp(GL_KEEP, operation, operation);
    const TPrimitiveScope fan(GL_TRIANGLE_FAN);
    for (const TGLArrayd3& corner : m_corners) glVertex3dv(corner.data());
}

} // namespace ZEP
