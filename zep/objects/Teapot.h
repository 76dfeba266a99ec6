#pragma once

#include <zep/Export.h>
#include <zep/objects/Solid.h>

namespace ZEP {

/// The teapot of Martin Newell, its base near z = -0.19 and its spout towards +x. It is about 1.6
/// long, 1 deep and 0.8 high; the box that it reports is the wider one that fits and selections
/// have always gone by.
///
/// Defaults: 4 segments, all parts.
class ZEP_CORE_EXPORT TZEPTeapot : public TZEPSolid {
    Q_OBJECT
    Q_PROPERTY(int Segments READ Segments WRITE SetSegments)
    Q_CLASSINFO("Segments", "4")
    Q_PROPERTY(TZEPTeapotPartSet Parts READ Parts WRITE SetParts)
    Q_CLASSINFO("Parts", "tpBody,tpHandle,tpSpout,tpLid")
public:
    enum TZEPTeapotParts : unsigned char {
        tpBody = 1 << 0, ///< with rim and bottom
        tpHandle = 1 << 1,
        tpSpout = 1 << 2,
        tpLid = 1 << 3
    };
    Q_DECLARE_FLAGS(TZEPTeapotPartSet, TZEPTeapotParts)
    Q_FLAG(TZEPTeapotPartSet)

    /// 320,000 cells, as many as a frame can bear.
    static constexpr int MaxSegments = 100;

    using TZEPSolid::TZEPSolid;

    [[nodiscard]] int Segments() const { return m_segments; }
    /// Cells along each side of the 32 patches, kept within 1 to `MaxSegments`.
    void SetSegments(int segments);
    [[nodiscard]] TZEPTeapotPartSet Parts() const { return m_parts; }
    /// What is drawn.
    void SetParts(TZEPTeapotPartSet parts);

    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    /// Nothing for `GL_BACK` alone: the teapot is a closed surface.
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    /// Handle, spout and lid meet the body, but do not close it.
    [[nodiscard]] bool IsClosed() const override { return false; }

private:
    void SendPatches(GLenum mode) const;

    int m_segments = 4;
    TZEPTeapotPartSet m_parts = TZEPTeapotPartSet(tpBody) | tpHandle | tpSpout | tpLid;
};

using TZEPTeapotParts = TZEPTeapot::TZEPTeapotParts;
using TZEPTeapotPartSet = TZEPTeapot::TZEPTeapotPartSet;
using enum TZEPTeapot::TZEPTeapotParts;
Q_DECLARE_OPERATORS_FOR_FLAGS(TZEPTeapotPartSet)

} // namespace ZEP
