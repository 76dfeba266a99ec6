#pragma once

#include <QColor>
#include <QImage>

#include <iosfwd>
#include <memory>

namespace ZEP {

/// An OpenGL context on a buffer without a window, current while it lives, set up as a panel sets
/// up its own: `GL_NORMALIZE` on, `glDepthFunc(GL_LEQUAL)`, the viewport over the whole buffer. It
/// has red, green, blue, alpha and stencil with 8 bits each, depth with 24, and an accumulation
/// buffer. Points are counted in pixels from the upper left corner, as in a `QImage`.
class OffscreenContext {
public:
    /// Throws `Exception` without a display, or when the display has no such format.
    /// \param plain  as few buffers as there can be: no stencil, no accumulation buffer
    explicit OffscreenContext(int width = 256, int height = 256, bool plain = false);
    ~OffscreenContext();
    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

    static bool HasDisplay();

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    void MakeCurrent();

    /// Of the buffer that is drawn to; with alpha.
    QColor ReadPixel(int x, int y) const;
    /// 0 at the near plane, 1 at the far one.
    float ReadDepth(int x, int y) const;
    /// The whole picture, opaque.
    QImage ReadFrame() const;

private:
    struct TBinding;
    std::unique_ptr<TBinding> m_binding;
    int m_width;
    int m_height;
};

} // namespace ZEP

/// How a failed test shows a colour: `#rrggbb/alpha`.
void PrintTo(const QColor& color, std::ostream* stream);
