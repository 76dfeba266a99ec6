#include <zep/appearance/effects/DepthRegion.h>

#include <zep/gl/Scopes.h>

#include <array>
#include <initializer_list>

namespace ZEP {

namespace {

/// Rows of numbers without gaps, whatever a host has set.
class TPixelRows {
public:
    TPixelRows() {
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        for (const GLenum gap : std::initializer_list<GLenum>{
                 GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS, GL_UNPACK_ROW_LENGTH,
                 GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS})
            glPixelStorei(gap, 0);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    }
    ~TPixelRows() { glPopClientAttrib(); }
    TPixelRows(const TPixelRows&) = delete;
    TPixelRows& operator=(const TPixelRows&) = delete;
};

/// Coordinates from -1 to 1 across the viewport.
class TFlatView {
public:
    TFlatView() {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }

private:
    TZEPMatricesScope m_matrices;
};

} // namespace

void TZEPDepthRegion::Read() {
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    m_depths.resize(static_cast<std::size_t>(m_region.Width) *
                    static_cast<std::size_t>(m_region.Height));
    const TPixelRows rows;
    glReadPixels(viewport[0] + m_region.X, viewport[1] + m_region.Y, m_region.Width,
                 m_region.Height, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT, m_depths.data());
}

void TZEPDepthRegion::Write() const {
    const TPixelRows rows;
    const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT |
                                     GL_CURRENT_BIT | GL_PIXEL_MODE_BIT);
    const TFlatView view;
    for (const GLenum test :
         std::initializer_list<GLenum>{GL_LIGHTING, GL_TEXTURE_2D, GL_FOG, GL_BLEND, GL_ALPHA_TEST,
                                       GL_CLIP_PLANE0, GL_POLYGON_OFFSET_FILL})
        glDisable(test);
    WriteColors(false);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_ALWAYS);
    glDepthMask(GL_TRUE);
    glPixelZoom(1, 1);
    // A raster position must lie in the view; an empty bitmap moves it to wherever.
    glRasterPos2i(-1, -1);
    glBitmap(0, 0, 0, 0, static_cast<float>(m_region.X), static_cast<float>(m_region.Y), nullptr);
    glDrawPixels(m_region.Width, m_region.Height, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT,
                 m_depths.data());
}

} // namespace ZEP
