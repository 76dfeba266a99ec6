#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/LineShape.h>

namespace ZEP {

/// A piece of the circle of diameter 1 about the origin in the plane z = 0, counter-clockwise from
/// `StartAngle` to `EndAngle`; the transform places and sizes it.
///
/// Defaults: both angles 0, which is a full circle, 30 segments.
class ZEP_CORE_EXPORT TZEPArc : public TZEPLineShape {
    Q_OBJECT
    Q_PROPERTY(int Segments READ Segments WRITE SetSegments)
    Q_CLASSINFO("Segments", "30")
    Q_PROPERTY(double StartAngle READ StartAngle WRITE SetStartAngle)
    Q_PROPERTY(double EndAngle READ EndAngle WRITE SetEndAngle)
public:
    using TZEPLineShape::TZEPLineShape;

    [[nodiscard]] int Segments() const { return m_segments; }
    /// Number of line pieces, brought into 3 to 1,000,000.
    void SetSegments(int segments);
    /// Degrees counter-clockwise from +x.
    [[nodiscard]] double StartAngle() const { return m_startAngle; }
    void SetStartAngle(double angle);
    [[nodiscard]] double EndAngle() const { return m_endAngle; }
    /// An end that is not above the start lies one turn further on.
    void SetEndAngle(double angle);

    /// The box of the end points and of the axes' points that the arc passes.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawShape(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPArc); }
    [[nodiscard]] bool StaysInSize() const override { return MayBeCulled(); }

private:
    [[nodiscard]] double Sweep() const;

    int m_segments = 30;
    double m_startAngle = 0;
    double m_endAngle = 0;
};

} // namespace ZEP
