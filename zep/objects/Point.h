#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/Shape.h>

namespace ZEP {

/// One point, `Width` pixels wide; a square, or round when smoothed.
///
/// Defaults: at (0, 0, 0), width 1, not smoothed.
class ZEP_CORE_EXPORT TZEPPoint : public TZEPShape {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
    Q_PROPERTY(ZEP::TZEPVertex3* P READ P)
public:
    using TZEPShape::TZEPShape;

    [[nodiscard]] TZEPVertex3* P() { return FirstVector(); }

    /// Both corners are the point.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPPoint); }
    [[nodiscard]] bool StaysInSize() const override { return MayBeCulled(); }
};

} // namespace ZEP
