#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>
#include <zep/scene/VertexItems.h>

#include <QSet>

namespace ZEP {

class TZEPVertex3;

/// A window on a layout through which the model is seen (`TZEPLayout`): cut off at its outline,
/// scaled, turned, and but for some layers. Nothing is copied: it draws the model once more, in its
/// place on the sheet, and a click there finds the model's objects.
///
/// It is a rectangle about its own origin, of which the transform tells the place. What lies before
/// and behind the plane of the target is drawn in the thousandth part of its depth, so that the
/// sheet stays flat. The view is parallel, from the direction of the eye; seen straight down, the
/// model's x axis points right.
///
/// It uses the clip planes of OpenGL that are not in use, from the last one on, and, for an outline
/// that is no rectangle, a bit of the stencil buffer. Where pixels are not drawn, in clicks and in
/// pictures of lines, such an outline counts as the rectangle about it.
///
/// Defaults: visible, without a size, seen from above, all layers.
class ZEP_CORE_EXPORT TZEPViewport : public TZEPObject {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_CLASSINFO("Visible", "true")
    Q_PROPERTY(double Width READ Width WRITE SetWidth)
    Q_PROPERTY(double Height READ Height WRITE SetHeight)
    Q_PROPERTY(double ViewHeight READ ViewHeight WRITE SetViewHeight)
    Q_PROPERTY(double Twist READ Twist WRITE SetTwist)
    Q_PROPERTY(ZEP::TZEPVertex3* Target READ Target)
    Q_PROPERTY(ZEP::TZEPVertex3* Direction READ Direction)
    Q_PROPERTY(QString LeftOut READ LeftOut WRITE SetLeftOut)
    Q_PROPERTY(ZEP::TZEPCollection* Outline READ Outline)
public:
    explicit TZEPViewport(TComponent* owner = nullptr);

    /// \name Of the window, in units of the sheet; it shows nothing unless they are above 0
    /// @{
    [[nodiscard]] double Width() const { return m_width; }
    void SetWidth(double width);
    [[nodiscard]] double Height() const { return m_height; }
    void SetHeight(double height);
    /// @}
    /// How much of the model is seen from the lower to the upper edge, in units of the model.
    [[nodiscard]] double ViewHeight() const { return m_viewHeight; }
    void SetViewHeight(double height);
    /// Degrees by which what is seen is turned, counter-clockwise.
    [[nodiscard]] double Twist() const { return m_twist; }
    void SetTwist(double degrees);
    /// What is seen in the middle, a point of the model.
    [[nodiscard]] TZEPVertex3* Target() { return FirstVector(); }
    /// From there to the eye, of any length; zero, as at first: up.
    [[nodiscard]] TZEPVertex3* Direction() { return SecondVector(); }
    /// Idents of layers that it does not show, compared without case, a line each. Layers are
    /// children of the layout's parent.
    [[nodiscard]] const QString& LeftOut() const { return m_leftOut; }
    void SetLeftOut(const QString& idents);
    /// The corners of an outline within its width and height, in its own frame, each area within an
    /// odd number of its lines; fewer than three: the rectangle.
    [[nodiscard]] TZEPVertexes* Outline() { return &m_outline; }

    /// Units of the sheet for one of the model; 0 where it shows nothing.
    [[nodiscard]] double Scale() const;
    /// From the frame of the model's layers to its own.
    [[nodiscard]] TGLMatrixd4 ModelToWindow() const;

    void Assign(const TComponent* source) override;
    /// The window.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;

private:
    void Store(double& field, double value);
    [[nodiscard]] TZEPObject* Model() const;
    void DrawModel(TZEPObject& model, TZEPSceneContext& scene, TZEPDrawState state,
                   TZEPDrawKind kind) const;

    double m_width = 0, m_height = 0, m_viewHeight = 0, m_twist = 0;
    QString m_leftOut;
    QSet<QString> m_leftOutNames; ///< of that, folded
    TZEPVertexes m_outline{this};
};

} // namespace ZEP
