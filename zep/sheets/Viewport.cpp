#include <zep/sheets/Viewport.h>

#include <zep/appearance/effects/DrawnPlace.h>
#include <zep/batch/DrawScopes.h>
#include <zep/batch/Gathering.h>
#include <zep/framework/Property.h>
#include <zep/framework/Watch.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/SeenRegion.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/sheets/Layout.h>
#include <zep/sheets/ViewportClip.h>

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QStringList>

#include <cmath>
#include <optional>

namespace ZEP {

namespace {

const TRegisterObject<TZEPViewport> RegisteredViewport;

/// Of what lies before and behind the target, so that it keeps within what a view of the sheet
/// shows.
constexpr double Flatness = 1e-3;
constexpr double LargestScale = 1e12;
constexpr int LeastPixels = 4; // with those around

constexpr TZEPPassSet ModelPasses =
    PassBit(dsAllObjects) | PassBit(dsNonShadowObjects) | PassBit(dsTransparent);

/// To the right in a view from there, which has the vertical upright.
TGLArrayd3 RightOf(const TGLArrayd3& toEye) {
    constexpr double Upright = 1.0 / 64;
    const bool isUpright = std::abs(toEye[0]) < Upright && std::abs(toEye[1]) < Upright;
    return Unit(Cross(isUpright ? unity : unitz, toEye));
}

const TZEPLayout* LayoutAbove(const TZEPObject& object) {
    const TZEPObject* above = object.Parent();
    while (above && !qobject_cast<const TZEPLayout*>(above)) above = above->Parent();
    return static_cast<const TZEPLayout*>(above);
}

void DrawEach(TZEPObject& model, const TZEPLeftOut& leftOut, TZEPSceneContext& scene,
              TZEPDrawState state, TZEPDrawKind kind) {
    TZEPFrame& frame = scene.Frame();
    const TZEPWatch alive(&model);
    for (int i = 0; alive && !frame.SceneIsGone && i < model.GetItemsCount(); ++i) {
        TZEPObject* child = model.GetItem(i);
        if (leftOut.contains(child)) continue;
        frame.Run.Next(typeid(*child));
        child->Draw(scene, state, kind);
    }
}

} // namespace

TZEPViewport::TZEPViewport(TComponent* owner) : TZEPObject(owner) {
    m_outline.RegisterObject(this);
}

void TZEPViewport::Store(double& field, double value) {
    if (Change(field, value)) Invalidate(this);
}

void TZEPViewport::SetWidth(double width) {
    Store(m_width, width);
}

void TZEPViewport::SetHeight(double height) {
    Store(m_height, height);
}

void TZEPViewport::SetViewHeight(double height) {
    Store(m_viewHeight, height);
}

void TZEPViewport::SetTwist(double degrees) {
    Store(m_twist, degrees);
}

void TZEPViewport::SetLeftOut(const QString& idents) {
    if (!Change(m_leftOut, idents)) return;
    const QStringList names = idents.toCaseFolded().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    m_leftOutNames = QSet<QString>(names.begin(), names.end());
    Invalidate(this);
}

void TZEPViewport::Assign(const TComponent* source) {
    if (const auto* viewport = dynamic_cast<const TZEPViewport*>(source)) {
        m_width = viewport->m_width;
        m_height = viewport->m_height;
        m_viewHeight = viewport->m_viewHeight;
        m_twist = viewport->m_twist;
        m_leftOut = viewport->m_leftOut;
        m_leftOutNames = viewport->m_leftOutNames;
        m_outline.Assign(&viewport->m_outline);
    }
    TZEPObject::Assign(source);
}

void TZEPViewport::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    max = {m_width / 2, m_height / 2, 0};
    min = -max;
}

double TZEPViewport::Scale() const {
    const double scale = m_height / m_viewHeight;
    const bool shows = m_width > 0 && m_height > 0 && m_viewHeight > 0 && std::isfinite(m_width) &&
                       scale >= 1 / LargestScale && scale <= LargestScale;
    return shows ? scale : 0;
}

TGLMatrixd4 TZEPViewport::ModelToWindow() const {
    const double scale = Scale();
    const TGLArrayd3 toEye = SecondPoint() == zero3d ? unitz : Unit(SecondPoint());
    const TGLArrayd3 right = RightOf(toEye);
    const TGLArrayd3 up = Cross(toEye, right);
    TGLMatrixd4 turn = idd;
    for (std::size_t i = 0; i < 3; ++i) turn[i] = {right[i], up[i], toEye[i], 0};
    TGLMatrixd4 matrix = idd;
    Rotated(m_twist, 0, 0, 1, matrix);
    matrix = Product(matrix, turn);
    const TGLArrayd3 factors{scale, scale, scale * Flatness};
    for (TGLArrayd4& column : matrix)
        for (std::size_t row = 0; row < 3; ++row) column[row] *= factors[row];
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t i = 0; i < 3; ++i) matrix[3][row] -= matrix[i][row] * FirstPoint()[i];
    return matrix;
}

TZEPObject* TZEPViewport::Model() const {
    const TZEPLayout* layout = LayoutAbove(*this);
    return layout ? layout->Parent() : nullptr;
}

// What is drawn may free this and the model.
void TZEPViewport::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    TZEPFrame& frame = scene.Frame();
    TZEPObject* model = Model();
    if (!Visible() || (ModelPasses & PassBit(state)) == 0) return;
    if (frame.Window || !model || Scale() == 0) return;
    const TZEPDrawRun::Walk walk(frame.Run);
    const TZEPXFormScope own(frame, ExistingXForm());
    TGLArrayd3 min;
    TGLArrayd3 max;
    GetSize(min, max);
    TZEPSeenPart part;
    part.Add(LoadedToClip(), min, max);
    const TZEPRegion window = part.InPixels();
    if (window.Width < LeastPixels || window.Height < LeastPixels) return;
    std::vector<TGLArrayd3> corners;
    for (int i = 0; i < m_outline.Count(); ++i) corners.push_back(m_outline[i].Data());
    if (corners.size() < 3) corners.clear();
    const QScopedValueRollback drawn(frame.Window, &window);
    const bool pixels = kind != dkSelect && !frame.IsNotRendering;
    const TViewportClip clip(frame, max - min, std::move(corners), pixels);
    DrawModel(*model, scene, state, kind);
}

void TZEPViewport::DrawModel(TZEPObject& model, TZEPSceneContext& scene, TZEPDrawState state,
                             TZEPDrawKind kind) const {
    TZEPFrame& frame = scene.Frame();
    const TGLMatrixd4 matrix = ModelToWindow();
    std::optional<TZEPDrawnPlace> placed; // so that what is far from the origin is exact
    if (IsIdentityd(model.GetMatrix()))
        placed.emplace(frame, model, Product(MatrixAsDrawn(frame, *this), matrix));
    const TMatrixScope place(frame, matrix);
    std::optional<TZEPViewFrame> seen;
    if (TZEPViewFrame::Bounds(frame))
        seen.emplace(frame, TZEPViewVolume::OfContext(WidestCulled / 2, frame.Window));
    const auto end = qScopeGuard([&frame] { frame.Run.End(); }); // before its matrix goes
    TZEPLeftOut leftOut;
    for (int i = 0, count = m_leftOutNames.isEmpty() ? 0 : model.GetItemsCount(); i < count; ++i)
        if (m_leftOutNames.contains(model.GetItem(i)->Ident().toCaseFolded()))
            leftOut.insert(model.GetItem(i));
    if (auto* batch = qobject_cast<TZEPBatch*>(&model))
        return batch->DrawChildrenBut(leftOut, scene, state, kind);
    DrawEach(model, leftOut, scene, state, kind);
}

} // namespace ZEP
