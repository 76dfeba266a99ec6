#pragma once

#include <zep/Export.h>
#include <zep/batch/Batch.h>

namespace ZEP {

/// A sheet of a drawing: the paper, what is drawn on it, and viewports (`TZEPViewport`) that show
/// the model. The model is what stands beside the layout: the other children of its parent. A view
/// shows the sheet in place of the model by `TZEPCamera::SetSheet`, visible or not; it is seen in
/// no other way.
///
/// Its children that only hold others are parts of the model's layers where they have the ident of
/// one, compared without case: they hide with that.
///
/// Defaults: visible, no paper.
class ZEP_CORE_EXPORT TZEPLayout : public TZEPBatch {
    Q_OBJECT
    Q_PROPERTY(double PaperLeft READ PaperLeft WRITE SetPaperLeft)
    Q_PROPERTY(double PaperBottom READ PaperBottom WRITE SetPaperBottom)
    Q_PROPERTY(double PaperWidth READ PaperWidth WRITE SetPaperWidth)
    Q_PROPERTY(double PaperHeight READ PaperHeight WRITE SetPaperHeight)
public:
    using TZEPBatch::TZEPBatch;

    /// \name The paper: a white rectangle below all else, in the plane z = 0
    /// None where width or height is not above 0.
    /// @{
    [[nodiscard]] double PaperLeft() const { return m_left; }
    void SetPaperLeft(double left);
    [[nodiscard]] double PaperBottom() const { return m_bottom; }
    void SetPaperBottom(double bottom);
    [[nodiscard]] double PaperWidth() const { return m_width; }
    void SetPaperWidth(double width);
    [[nodiscard]] double PaperHeight() const { return m_height; }
    void SetPaperHeight(double height);
    [[nodiscard]] bool HasPaper() const;
    /// @}

    void Assign(const TComponent* source) override;
    /// Of the paper; all zero without one.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    /// Nothing: among the model it is not seen.
    void Draw(TZEPSceneContext&, TZEPDrawState, TZEPDrawKind) override {}
    void DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;
    void DrawMain(bool draft) override;
    void DrawTransparent(bool draft) override { static_cast<void>(draft); }

private:
    [[nodiscard]] TZEPLeftOut HiddenWithLayers() const;
    void Store(double& field, double value);

    double m_left = 0, m_bottom = 0, m_width = 0, m_height = 0;
};

} // namespace ZEP
