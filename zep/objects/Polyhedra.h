#pragma once

#include <zep/Export.h>
#include <zep/objects/SharedLists.h>
#include <zep/objects/Solid.h>

namespace ZEP {

/// Base of the regular solids.
class ZEP_CORE_EXPORT TZEPPolyhedron : public TZEPSolid {
    Q_OBJECT
public:
    using TZEPSolid::TZEPSolid;

protected:
    /// \param send  sends the faces; called with whether they have places in a picture
    template <class Send>
    void DrawFaces(bool draft, Send&& send);

private:
    TSharedLists m_lists;
};

/// Eight triangles; corners at 0.5 on the axes.
class ZEP_CORE_EXPORT TZEPOctahedron : public TZEPPolyhedron {
    Q_OBJECT
public:
    using TZEPPolyhedron::TZEPPolyhedron;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPOctahedron);
    }
};

/// Twenty triangles; it touches all sides of the unit box.
class ZEP_CORE_EXPORT TZEPIcosahedron : public TZEPPolyhedron {
    Q_OBJECT
public:
    using TZEPPolyhedron::TZEPPolyhedron;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPIcosahedron);
    }
};

/// Twelve pentagons within the unit box.
class ZEP_CORE_EXPORT TZEPDodecahedron : public TZEPPolyhedron {
    Q_OBJECT
public:
    using TZEPPolyhedron::TZEPPolyhedron;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPDodecahedron);
    }
};

} // namespace ZEP
