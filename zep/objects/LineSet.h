#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/LineShape.h>
#include <zep/scene/VertexItems.h>

namespace ZEP {

/// Straight lines that need not meet, as those of a hatch: each two vertexes are one.
///
/// Defaults: no vertexes.
class ZEP_CORE_EXPORT TZEPLineSet : public TZEPLineShape {
    Q_OBJECT
    Q_PROPERTY(ZEP::TZEPCollection* Vertexes READ Vertexes)
public:
    explicit TZEPLineSet(TComponent* owner = nullptr);

    /// The ends of the lines, two for each; a last one without its other end draws nothing.
    [[nodiscard]] TZEPVertexes* Vertexes() { return &m_vertexes; }

    /// Box of the vertexes; all zero with fewer than two.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawShape(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool StaysInSize() const override {
        return MayBeCulled() && m_vertexes.Count() > 1;
    }
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPLineSet);
    }

private:
    TZEPVertexes m_vertexes{this};
};

} // namespace ZEP
