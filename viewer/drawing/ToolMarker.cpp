#include "viewer/drawing/ToolMarker.h"

#include <zep/batch/Batch.h>
#include <zep/gl/Scopes.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Add.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr int Sides = 24;
constexpr double PartOfView = 0.08; // its height in that of the view
constexpr double LeastSlender = 2;  // height of a cylinder, in its diameters
constexpr double ConeRadius = 0.2;  // in its height
constexpr TGLArrayd3 ToLight{-0.48, -0.6, 0.64};
constexpr double Darkest = 0.4;
constexpr TGLArrayd3 Steel{214, 220, 228};

/// As a lamp beside the eye of a view from the front would light it.
TColor Lit(const TGLArrayd3& normal) {
    const double light = Darkest + (1 - Darkest) * (0.5 + 0.5 * Dotd(normal, ToLight));
    const auto part = [&](std::size_t i) { return static_cast<std::uint32_t>(Steel[i] * light); };
    return TColor{part(0) | part(1) << 8U | part(2) << 16U};
}

TGLArrayd3 OnRim(int side, double radius, double z) {
    const double angle = 2 * std::numbers::pi * side / Sides;
    return {radius * std::cos(angle), radius * std::sin(angle), z};
}

} // namespace

TToolMarker::TToolMarker(TZEPScene* scene) : TZEPNode(scene), m_faces(ZEP::Add<TZEPBatch>(this)) {
    m_faces->SetEvenLight(true);
    SetSelectable(false);
    SetPickable(false);
    SetVisible(false);
    SetParentComponent(scene);
    Make();
}

void TToolMarker::SetDiameter(double diameter) {
    const bool wasCone = m_diameter == 0;
    m_diameter = diameter > 0 && std::isfinite(diameter) ? diameter : 0;
    if (wasCone != (m_diameter == 0)) Make();
    Invalidate(this);
}

void TToolMarker::Put(const TGLArrayd3& tip) {
    XForm()->Translate()->SetData(tip);
}

/// Of height 1 and, as a cylinder, of diameter 1.
void TToolMarker::Make() {
    BeginUpdate();
    m_faces->Clear();
    const double foot = m_diameter > 0 ? 0.5 : 0;
    const double top = m_diameter > 0 ? 0.5 : ConeRadius;
    for (int i = 0; i < Sides; ++i) {
        AddFace({OnRim(i, top, 1), OnRim(i + 1, top, 1), {0, 0, 1}});
        if (foot == 0) {
            AddFace({zero3d, OnRim(i + 1, top, 1), OnRim(i, top, 1)});
            continue;
        }
        AddFace({OnRim(i, foot, 0), OnRim(i + 1, foot, 0), OnRim(i + 1, top, 1), OnRim(i, top, 1)});
        AddFace({OnRim(i + 1, foot, 0), OnRim(i, foot, 0), zero3d});
    }
    EndUpdate();
}

/// \param corners  counter-clockwise, seen from outside
void TToolMarker::AddFace(std::initializer_list<TGLArrayd3> corners) {
    const TGLArrayd3* at = corners.begin();
    auto* face = ZEP::Add<TZEPPolygon>(m_faces);
    face->SetColorVertexes(false);
    for (const TGLArrayd3& corner : corners) face->Vertexes()->Add()->SetPoint(corner);
    TGLArrayd3 normal;
    CrossProdd(at[1] - at[0], at[2] - at[0], normal);
    face->SetColor(Lit(Unit(normal)));
}

double TToolMarker::HeightInView() {
    TZEPSceneCamera* current = Scene() ? Scene()->CurrentCamera() : nullptr;
    const auto* camera = current ? qobject_cast<TZEPCamera*>(current->AsObject()) : nullptr;
    if (!camera) return 1;
    const TGLArrayd3 seen =
        camera->Orthographic() ? camera->GetTarget() : XForm()->Translate()->Data();
    const double half = camera->FieldOfView() / 2 * std::numbers::pi / 180;
    return PartOfView * 2 * Distance(camera->GetPosition(), seen) * std::tan(half);
}

void TToolMarker::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (kind != dkSelect) TZEPNode::Draw(scene, state, kind);
}

void TToolMarker::DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    const double view = HeightInView();
    const double width = m_diameter > 0 ? m_diameter : view;
    scene.Frame().Run.End();
    const TZEPMatrixScope matrix;
    glScaled(width, width, m_diameter > 0 ? std::max(view, LeastSlender * width) : view);
    TZEPNode::DrawChildren(scene, state, kind);
    scene.Frame().Run.End();
}

} // namespace ZEP
