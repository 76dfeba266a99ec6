#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/Shape.h>
#include <zep/scene/Vertex3.h>

namespace ZEP {

/// One point, `Width` pixels wide; a square, or round when smoothed.
///
/// Defaults: at (0, 0, 0), width 1, not smoothed.
class ZEP_CORE_EXPORT TZEPPoint : public TZEPShape {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
    Q_PROPERTY(ZEP::TZEPVertex3* P READ P)
public:
    explicit TZEPPoint(TComponent* owner = nullptr);

    [[nodiscard]] TZEPVertex3* P() { return &m_place; }

    /// Both corners are the point.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPPoint); }
    [[nodiscard]] bool StaysInSize() const override { return MayBeCulled(); }
    [[nodiscard]] TZEPVertex3* VectorAt(int number) override;
    [[nodiscard]] const TGLArrayd3* VectorData(int number) const override;

private:
    TZEPVertex3 m_place;
};

} // namespace ZEP
