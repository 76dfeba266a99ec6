#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/LineShape.h>

namespace ZEP {

/// A circle of diameter 1 about the origin in the plane z = 0; the transform places and sizes it.
///
/// Defaults: 30 segments.
class ZEP_CORE_EXPORT TZEPCircle : public TZEPLineShape {
    Q_OBJECT
    Q_PROPERTY(int Segments READ Segments WRITE SetSegments)
    Q_CLASSINFO("Segments", "30")
public:
    using TZEPLineShape::TZEPLineShape;

    [[nodiscard]] int Segments() const { return m_segments; }
    /// Number of corners, brought into 3 to 1,000,000.
    void SetSegments(int segments);

    /// (-0.5, -0.5, 0) to (0.5, 0.5, 0).
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawShape(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPCircle);
    }
    [[nodiscard]] bool StaysInSize() const override { return MayBeCulled(); }

private:
    int m_segments = 30;
};

} // namespace ZEP
