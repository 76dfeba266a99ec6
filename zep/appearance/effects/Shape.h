#pragma once

#include <zep/Export.h>
#include <zep/scene/ColoredObject.h>
#include <zep/scene/ViewVolume.h>

namespace ZEP {

/// A drawable object with a width of its lines or points and with smoothing. A smoothed one needs
/// blending, so it is drawn in the transparent pass: the first such draw gives its material the
/// transparency 0.00001, which it keeps.
///
/// Defaults: width 1, not smoothed.
class ZEP_CORE_EXPORT TZEPShape : public TZEPColoredObject {
    Q_OBJECT
    Q_PROPERTY(bool Smooth READ Smooth WRITE SetSmooth)
    Q_PROPERTY(float Width READ Width WRITE SetWidth)
public:
    using TZEPColoredObject::TZEPColoredObject;

    [[nodiscard]] float Width() const { return m_width; }
    /// In pixels. What is negative or no number becomes 1.
    void SetWidth(float width);

    void DrawMain(bool draft) override;
    void DrawTransparent(bool draft) override;

protected:
    /// Lines and points show the corner of their material's picture.
    void PrepareGeometry() override;
    [[nodiscard]] bool DrawsTransparent() const override {
        return Smooth() || HasLineTransparency() || HasTransparentMaterial();
    }
    /// Narrow enough, and without a mark to leave: a smooth shape makes the library's material that
    /// it is drawn with transparent.
    [[nodiscard]] bool MayBeCulled() const {
        return m_width <= WidestCulled && !(Smooth() && MaterialIndex() >= 0);
    }

private:
    [[nodiscard]] TZEPMaterial& BlendedMaterial();

    float m_width = 1;
};

} // namespace ZEP
