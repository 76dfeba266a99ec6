#pragma once

#include <zep/Export.h>
#include <zep/objects/SharedLists.h>
#include <zep/objects/Solid.h>

namespace ZEP {

/// A torus around the z axis. It shows nothing until its radii are set.
///
/// Defaults: flat, both radii 0, 8 sides, 15 rings.
class ZEP_CORE_EXPORT TZEPTorus : public TZEPSolid {
    Q_OBJECT
    Q_PROPERTY(bool Smooth READ Smooth WRITE SetSmooth)
    Q_CLASSINFO("Smooth", "false")
    Q_PROPERTY(double Radius1 READ Radius1 WRITE SetRadius1)
    Q_CLASSINFO("Radius1", "0")
    Q_PROPERTY(double Radius2 READ Radius2 WRITE SetRadius2)
    Q_CLASSINFO("Radius2", "0")
    Q_PROPERTY(int Sides READ Sides WRITE SetSides)
    Q_CLASSINFO("Sides", "8")
    Q_PROPERTY(int Rings READ Rings WRITE SetRings)
    Q_CLASSINFO("Rings", "15")
public:
    using TZEPSolid::TZEPSolid;

    void SetSmooth(bool smooth) override;
    [[nodiscard]] double Radius1() const { return m_radius1; }
    /// Of the ring that the tube's centre runs on; what is negative or no finite number becomes 0.
    void SetRadius1(double radius);
    [[nodiscard]] double Radius2() const { return m_radius2; }
    /// Of the tube; what is negative or no finite number becomes 0.
    void SetRadius2(double radius);
    [[nodiscard]] int Sides() const { return m_sides; }
    /// Cells around the tube, at most `MaxCells`; below 1 nothing is drawn.
    void SetSides(int sides);
    [[nodiscard]] int Rings() const { return m_rings; }
    /// Cells around the ring, at most `MaxCells`; below 1 nothing is drawn.
    void SetRings(int rings);

    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPTorus); }

private:
    template <class T>
    void Set(T& field, T value);

    double m_radius1 = 0;
    double m_radius2 = 0;
    int m_sides = 8;
    int m_rings = 15;
    TSharedLists m_lists;
};

} // namespace ZEP
