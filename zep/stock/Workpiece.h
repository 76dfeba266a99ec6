#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/scene/ColoredObject.h>

#include <memory>

namespace ZEP {

class TStock;
class TWorkpieceMeshes;

/// Shows stock as the solid that is left of it: lit, its walls steep, its sides and floor closed,
/// with holes where it is cut through. What tools cut has another colour than what they left, and
/// what they cut in rapid a third. It stands where the stock says, in its own frame.
///
/// Only tiles that have changed are made anew. Cells that are smaller than two pixels are drawn two
/// by two, or more, as one. The stock itself is not stored.
///
/// Defaults: silver, cut surfaces sand-coloured, those cut in rapid red.
class ZEP_CORE_EXPORT TZEPWorkpiece : public TZEPColoredObject {
    Q_OBJECT
    Q_PROPERTY(ZEP::TColor CutColor READ CutColor WRITE SetCutColor)
    Q_CLASSINFO("CutColor", "0x88BCE0")
    Q_PROPERTY(ZEP::TColor RapidColor READ RapidColor WRITE SetRapidColor)
    Q_CLASSINFO("RapidColor", "0x2020E0")
public:
    explicit TZEPWorkpiece(TComponent* owner = nullptr);
    ~TZEPWorkpiece() override;

    /// Null: nothing is shown.
    void SetStock(std::shared_ptr<const TStock> stock);
    [[nodiscard]] const std::shared_ptr<const TStock>& Stock() const { return m_stock; }
    /// The stock was cut, or went back: shows it as it is now.
    void Refresh() { Invalidate(this); }

    [[nodiscard]] TColor CutColor() const { return m_cutColor; }
    void SetCutColor(TColor color);
    [[nodiscard]] TColor RapidColor() const { return m_rapidColor; }
    void SetRapidColor(TColor color);

    void Assign(const TComponent* source) override;
    /// The whole block, whatever is left of it; all zero without stock.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    [[nodiscard]] TZEPMaterial* SolidMaterial() override { return &DrawnMaterial(); }
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool DrawsTransparent() const override { return HasTransparentMaterial(); }
    [[nodiscard]] bool StaysInSize() const override { return true; }

private:
    std::shared_ptr<const TStock> m_stock;
    std::unique_ptr<TWorkpieceMeshes> m_meshes;
    TColor m_cutColor{0x88BCE0};
    TColor m_rapidColor{0x2020E0};
};

} // namespace ZEP
