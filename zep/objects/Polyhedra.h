#pragma once

#include <zep/Export.h>
#include <zep/objects/Solid.h>

namespace ZEP {

/// Eight triangles; corners at 0.5 on the axes.
class ZEP_CORE_EXPORT TZEPOctahedron : public TZEPSolid {
    Q_OBJECT
public:
    using TZEPSolid::TZEPSolid;
    void DrawSpecific(GLenum face, bool draft) override;
};

/// Twenty triangles; it touches all sides of the unit box.
class ZEP_CORE_EXPORT TZEPIcosahedron : public TZEPSolid {
    Q_OBJECT
public:
    using TZEPSolid::TZEPSolid;
    void DrawSpecific(GLenum face, bool draft) override;
};

/// Twelve pentagons within the unit box.
class ZEP_CORE_EXPORT TZEPDodecahedron : public TZEPSolid {
    Q_OBJECT
public:
    using TZEPSolid::TZEPSolid;
    void DrawSpecific(GLenum face, bool draft) override;
};

} // namespace ZEP
