#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/LineShape.h>

namespace ZEP {

/// A straight line from `P1` to `P2`, both (0, 0, 0) at first.
class ZEP_CORE_EXPORT TZEPLine : public TZEPLineShape {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
    Q_PROPERTY(ZEP::TZEPVertex3* P1 READ P1)
    Q_PROPERTY(ZEP::TZEPVertex3* P2 READ P2)
public:
    using TZEPLineShape::TZEPLineShape;

    [[nodiscard]] TZEPVertex3* P1() { return FirstVector(); }
    [[nodiscard]] TZEPVertex3* P2() { return SecondVector(); }

    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawShape(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPLine); }
    [[nodiscard]] bool StaysInSize() const override { return MayBeCulled(); }
};

} // namespace ZEP
