#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

namespace ZEP {

/// A rectangle of the window, in pixels from the lower left corner of the viewport.
struct TZEPRegion {
    int X = 0, Y = 0, Width = 0, Height = 0;
    [[nodiscard]] bool IsEmpty() const { return Width <= 0 || Height <= 0; }
};

/// The part of the viewport that boxes are seen in.
class ZEP_CORE_EXPORT TZEPSeenPart {
public:
    /// \param toClip  from the frame of the box: projection · modelview
    void Add(const TGLMatrixd4& toClip, const TGLArrayd3& min, const TGLArrayd3& max);
    void AddAll();
    [[nodiscard]] TZEPRegion InPixels() const;

private:
    double m_minX = 1, m_minY = 1, m_maxX = 0, m_maxY = 0; ///< parts of its width and height
};

} // namespace ZEP
