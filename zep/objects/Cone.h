#pragma once

#include <zep/Export.h>
#include <zep/objects/SharedLists.h>
#include <zep/objects/Solid.h>

namespace ZEP {

/// A cone, a cylinder or what lies between, along the z axis from -0.5 to 0.5. It shows nothing
/// until a radius is set.
///
/// Defaults: flat, both radii 0, 10 slices, 1 stack, side and both ends.
class ZEP_CORE_EXPORT TZEPCone : public TZEPSolid {
    Q_OBJECT
    Q_PROPERTY(bool Smooth READ Smooth WRITE SetSmooth)
    Q_CLASSINFO("Smooth", "false")
    Q_PROPERTY(double Radius1 READ Radius1 WRITE SetRadius1)
    Q_CLASSINFO("Radius1", "0")
    Q_PROPERTY(double Radius2 READ Radius2 WRITE SetRadius2)
    Q_CLASSINFO("Radius2", "0")
    Q_PROPERTY(int Slices READ Slices WRITE SetSlices)
    Q_CLASSINFO("Slices", "10")
    Q_PROPERTY(int Stacks READ Stacks WRITE SetStacks)
    Q_CLASSINFO("Stacks", "1")
    Q_PROPERTY(TZEPConeParts Parts READ Parts WRITE SetParts)
    Q_CLASSINFO("Parts", "cpTop,cpBottom,cpSide")
public:
    enum TZEPConePart : unsigned char { cpTop = 1 << 0, cpBottom = 1 << 1, cpSide = 1 << 2 };
    Q_DECLARE_FLAGS(TZEPConeParts, TZEPConePart)
    Q_FLAG(TZEPConeParts)

    static constexpr TZEPConeParts AllParts{cpTop | cpBottom | cpSide};

    using TZEPSolid::TZEPSolid;

    [[nodiscard]] double Radius1() const { return m_radius1; }
    /// At the top, z = 0.5; what is negative or no finite number becomes 0.
    void SetRadius1(double radius);
    [[nodiscard]] double Radius2() const { return m_radius2; }
    /// At the bottom, z = -0.5; what is negative or no finite number becomes 0.
    void SetRadius2(double radius);
    [[nodiscard]] int Slices() const { return m_slices; }
    /// Around the axis, kept within 3 to `MaxCells`; GLU draws at most 239.
    void SetSlices(int slices);
    [[nodiscard]] int Stacks() const { return m_stacks; }
    /// Along the axis, kept within 1 to `MaxCells`.
    void SetStacks(int stacks);
    [[nodiscard]] TZEPConeParts Parts() const { return m_parts; }
    /// What is drawn.
    void SetParts(TZEPConeParts parts);

    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool IsClosed() const override { return m_parts == AllParts; }
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPCone); }

private:
    void Send(bool draft) const;

    double m_radius1 = 0;
    double m_radius2 = 0;
    int m_slices = 10;
    int m_stacks = 1;
    TZEPConeParts m_parts = AllParts;
    TSharedLists m_lists;
};

using TZEPConePart = TZEPCone::TZEPConePart;
using TZEPConeParts = TZEPCone::TZEPConeParts;
using enum TZEPCone::TZEPConePart;
Q_DECLARE_OPERATORS_FOR_FLAGS(TZEPConeParts)

} // namespace ZEP
