#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

namespace ZEP {

/// Base of every drawable object with a colour and a material. Each is drawn exactly once in a
/// frame: in the opaque pass, or in the transparent pass where its material is transparent.
///
/// It draws with item `MaterialIndex` of the scene's library where there is one, else with its own
/// `Material`.
class ZEP_CORE_EXPORT TZEPColoredObject : public TZEPObject {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/appearance/materials/Material.h")
    Q_PROPERTY(ZEP::TColor Color READ Color WRITE SetColor)
    Q_CLASSINFO("Color", "0xC0C0C0")
    Q_PROPERTY(ZEP::TZEPDrawType DrawType READ DrawType WRITE SetDrawType)
    Q_CLASSINFO("DrawType", "dtFill")
    Q_PROPERTY(ZEP::TZEPMaterial* Material READ Material)
    Q_PROPERTY(int MaterialIndex READ MaterialIndex WRITE SetMaterialIndex)
    Q_CLASSINFO("MaterialIndex", "-1")
    Q_PROPERTY(bool Selected READ Selected WRITE SetSelected)
    Q_CLASSINFO("Selected", "false")
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_CLASSINFO("Visible", "true")
public:
    using TZEPObject::TZEPObject;

    /// The material it is drawn with: the library's, else the own one (made when first asked for).
    [[nodiscard]] TZEPMaterial* GetMaterial();

    void DrawMain(bool draft) override;
    void DrawTransparent(bool draft) override;

protected:
    /// As `GetMaterial`, but an object without a material of its own answers a shared one of its
    /// colour, which must not be changed.
    [[nodiscard]] TZEPMaterial& DrawnMaterial();
    /// Applies the material, draws, cancels it if asked, and draws the selection.
    void DrawWith(TZEPMaterial& material, bool draft, bool cancel = true);
    /// As `DrawWith`, without the selection.
    void DrawUnselected(TZEPMaterial& material, bool draft, bool cancel = true);
    /// Called with the material applied, before each `DrawSpecific` in a pass: for what its
    /// geometry leaves as it is.
    virtual void PrepareGeometry() {}
    /// The material that it is drawn with is transparent, or holds a picture.
    [[nodiscard]] bool HasTransparentMaterial() const;
    [[nodiscard]] bool HasTexture() const;
    /// Item `MaterialIndex` of the scene's library; null where there is none.
    [[nodiscard]] TZEPMaterial* MaterialOfLibrary() const;

private:
    /// The material that it is drawn with, null for that of a plain colour.
    [[nodiscard]] const TZEPMaterial* SpecialMaterial() const;
    /// Draws with the material that is applied.
    void DrawGeometry(bool draft);
    void DrawSelected();
};

} // namespace ZEP
