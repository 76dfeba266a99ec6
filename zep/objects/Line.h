#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/LineShape.h>
#include <zep/scene/Vertex3.h>

#include <array>

namespace ZEP {

/// A straight line from `P1` to `P2`, both (0, 0, 0) at first.
class ZEP_CORE_EXPORT TZEPLine : public TZEPLineShape {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
    Q_PROPERTY(ZEP::TZEPVertex3* P1 READ P1)
    Q_PROPERTY(ZEP::TZEPVertex3* P2 READ P2)
public:
    explicit TZEPLine(TComponent* owner = nullptr);

    [[nodiscard]] TZEPVertex3* P1() { return m_ends.data(); }
    [[nodiscard]] TZEPVertex3* P2() { return &m_ends[1]; }

    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    /// One of many that have nothing but a colour is sent with its neighbours.
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;
    void DrawShape(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPLine); }
    [[nodiscard]] bool StaysInSize() const override { return MayBeCulled(); }
    [[nodiscard]] TZEPVertex3* VectorAt(int number) override;
    [[nodiscard]] const TGLArrayd3* VectorData(int number) const override;

private:
    /// No more is drawn than the line in its colour.
    [[nodiscard]] bool IsPlain() const;

    std::array<TZEPVertex3, 2> m_ends;
};

} // namespace ZEP
