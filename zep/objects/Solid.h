#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ShadowedObject.h>

namespace ZEP {

/// Base of the solids. They are modelled about the origin, of size 1 along each axis unless they
/// have radii, with normals that point outwards and faces that run counter-clockwise seen from
/// outside; the transform sizes and places them.
class ZEP_CORE_EXPORT TZEPSolid : public TZEPShadowedObject {
    Q_OBJECT
public:
    using TZEPShadowedObject::TZEPShadowedObject;

    /// The most slices, stacks or cells along one direction: counts beyond become this, so that a
    /// solid has at most a million cells to a face, whatever a host or a file asks for.
    static constexpr int MaxCells = 1000;

    [[nodiscard]] TZEPMaterial* SolidMaterial() override;

protected:
    /// Its surface has no gaps.
    [[nodiscard]] virtual bool IsClosed() const { return true; }
    [[nodiscard]] bool DrawsTransparent() const override { return HasTransparentMaterial(); }
    [[nodiscard]] bool StaysInSize() const override { return true; }
};

/// A count of cells brought into 1 (or `least`) to `TZEPSolid::MaxCells`.
[[nodiscard]] ZEP_CORE_EXPORT int CellCount(int count, int least = 1);

/// A radius as solids keep it: what is negative or no finite number becomes 0.
[[nodiscard]] ZEP_CORE_EXPORT double SolidRadius(double radius);

} // namespace ZEP
