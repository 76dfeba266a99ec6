#include "viewer/drawing/LayerBatch.h"

#include "viewer/content/Objects.h"
#include "viewer/drawing/DrawScopes.h"
#include <zep/appearance/effects/ReflexedObject.h>
#include <zep/appearance/materials/Material.h>
#include <zep/framework/LookOnly.h>
#include <zep/objects/Label.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/DrawRun.h>
#include <zep/scene/ViewVolume.h>

namespace ZEP {

namespace {

/// In these there is something to do for arrays.
constexpr TZEPPassSet ArrayPasses = ObjectPasses & ~PassBit(dsShadowObjects);

/// A colour is all that its material tells.
bool HasPlainMaterial(TZEPObject& object) {
    if (object.MaterialIndex() >= 0) return false;
    const TLookOnly look;
    const TZEPMaterial& material = *object.Material();
    const TZEPFaceMaterial& front = *material.FrontFace();
    return !material.IsTransparent() && !material.HasTexture() && front.Emission() == clBlack &&
           front.Diffuse() == object.GetColor() &&
           material.BackFace()->Diffuse() == front.Diffuse();
}

bool IsPlainFace(TZEPPolygon& polygon) {
    const int count = polygon.Vertexes()->Count();
    return (count == 3 || count == 4) && polygon.AutoNormal() && !polygon.ColorVertexes() &&
           HasPlainMaterial(polygon);
}

bool IsPlainText(TZEPLabel& label) {
    return !label.BitmapFont() && label.DrawType() == dtFill && HasPlainMaterial(label);
}

TGLMatrixd4 Product(const TGLMatrixd4& a, const TGLMatrixd4& b) {
    TGLMatrixd4 product;
    MultMatrixd(a, b, product);
    return product;
}

/// Shadows and mirrors ask each object.
bool StandsAlone(const TZEPObject& object) {
    const auto* mirror = qobject_cast<const TZEPReflexedObject*>(&object);
    return object.CastsShadows() || object.ReceivesShadows() ||
           (mirror && mirror->Reflection() != 0);
}

/// What is below it may take part in any pass.
TZEPPassSet PassesOf(const TZEPObject& object) {
    return object.GetItemsCount() > 0 ? AllPasses : object.Passes();
}

/// The pass draws the look of surfaces, all of it or the part of one light.
bool ShowsSurfaces(TZEPDrawState state) {
    return ((ObjectPasses | PassBit(dsShadows)) & PassBit(state)) != 0;
}

} // namespace

void TLayerBatch::TSeparates::Add(const TGLMatrixd4& frame, TZEPObject& object) {
    if (Frames.empty() || Frames.back().Frame != frame) Frames.push_back({frame, {}});
    TSeparate& last = Frames.back();
    last.Objects.push_back(&object);
    last.Passes |= PassesOf(object);
    Passes |= last.Passes;
}

bool TLayerBatch::Gathers(TZEPObject& object) {
    if (object.GetItemsCount() > 0 || StandsAlone(object)) return false;
    if (auto* label = qobject_cast<TZEPLabel*>(&object)) return IsPlainText(*label);
    auto* polygon = qobject_cast<TZEPPolygon*>(&object);
    return polygon && IsPlainFace(*polygon);
}

void TLayerBatch::Build(TZEPObject& layer, bool groups, const TBatchRules& rules,
                        TObjects& selected) {
    m_rules = rules;
    m_started = m_stale = false;
    m_shapes = {};
    m_others = {};
    StartAt(zero3d);
    m_started = false;
    Collect(layer, idd, groups, selected);
    m_paths.Close();
    m_faces.Close();
    m_passes = ArrayPasses | m_shapes.Passes | m_others.Passes;
}

std::size_t TLayerBatch::VertexCount() const {
    return m_paths.VertexCount() + m_faces.VertexCount();
}

void TLayerBatch::StartAt(const TGLArrayd3& origin) {
    m_started = true;
    m_origin = origin;
    m_paths.Start(origin, m_rules);
    m_faces.Start(origin);
    m_texts.Start(origin);
}

void TLayerBatch::Collect(TZEPObject& group, const TGLMatrixd4& frame, bool groups,
                          TObjects& selected) {
    for (int i = 0, count = group.GetItemsCount(); i < count; ++i) {
        TZEPObject& object = *group.GetItem(i);
        if (object.Selected()) selected.insert(&object);
        if (!object.Visible()) continue;
        if (IsGroup(object)) {
            if (groups) Collect(object, Product(frame, object.GetMatrix()), true, selected);
        } else if (object.GetItemsCount() > 0 || !Take(object, frame)) {
            (qobject_cast<TZEPShape*>(&object) ? m_shapes : m_others).Add(frame, object);
        }
    }
}

bool TLayerBatch::Take(TZEPObject& object, const TGLMatrixd4& frame) {
    if (StandsAlone(object)) return false;
    const TGLMatrixd4 own = object.GetMatrix();
    const bool moved = !IsIdentityd(own) || !IsIdentityd(frame);
    const TGLMatrixd4 matrix = moved ? Product(frame, own) : idd;
    if (!m_started) {
        TGLArrayd3 origin = MiddleOf(object);
        Xformd(matrix, origin);
        StartAt(origin);
    }
    if (object.MaterialIndex() < 0 && m_paths.Add(object, moved ? matrix : idd)) return true;
    if (!Gathers(object)) return false;
    if (auto* label = qobject_cast<TZEPLabel*>(&object))
        m_texts.Add(*label, frame, m_rules.Shown(label->GetColor()));
    else
        TakeFace(*qobject_cast<TZEPPolygon*>(&object), matrix);
    return true;
}

void TLayerBatch::TakeFace(TZEPPolygon& polygon, const TGLMatrixd4& matrix) {
    std::vector<TGLArrayd3> corners;
    for (int i = 0; i < polygon.Vertexes()->Count(); ++i) {
        corners.push_back((*polygon.Vertexes())[i].Data());
        Xformd(matrix, corners.back());
    }
    if (polygon.DrawType() == dtLine) return m_paths.AddLoop(corners, polygon.GetColor());
    m_faces.Add(corners, m_rules.Shown(polygon.GetColor()));
}

// --- drawing -----------------------------------------------------------------------------------

void TLayerBatch::Draw(const TGLMatrixd4& frame, TZEPSceneContext& scene, TZEPDrawState state,
                       TZEPDrawKind kind, const TLayerView& view) const {
    if ((ArrayPasses & PassBit(state)) != 0) {
        TZEPDrawRun::Current().Enter(false);
        TGLMatrixd4 origin = idd;
        for (std::size_t k = 0; k < 3; ++k) origin[3][k] = m_origin[k];
        const TMatrixScope place(Product(frame, origin), view.Exact);
        DrawArrays(state, view);
    }
    if (((m_shapes.Passes | m_others.Passes) & PassBit(state)) == 0) return;
    const TMatrixScope place(frame);
    DrawShapes(scene, state, kind);
    DrawOthers(scene, state, kind, view);
}

void TLayerBatch::DrawArrays(TZEPDrawState state, const TLayerView& view) const {
    const TZEPViewVolume volume = TZEPViewVolume::OfContext(WidestCulled / 2);
    const TDetail detail{view.Share, &volume};
    if (state == dsTransparent) {
        m_paths.Draw(detail, view.Fine);
        return m_texts.Draw(view.LeastText);
    }
    const TSinkScope sink(view.Sinks);
    m_faces.Draw(detail, !view.Even);
}

void TLayerBatch::DrawShapes(TZEPSceneContext& scene, TZEPDrawState state,
                             TZEPDrawKind kind) const {
    if ((m_shapes.Passes & PassBit(state)) == 0) return;
    std::optional<TEvenScope> even;
    if (ShowsSurfaces(state)) even.emplace();
    DrawSeparates(m_shapes, scene, state, kind, nullptr);
}

void TLayerBatch::DrawOthers(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                             const TLayerView& view) const {
    if ((m_others.Passes & PassBit(state)) == 0) return;
    std::optional<TEvenScope> even;
    if (view.Even && ShowsSurfaces(state)) even.emplace();
    const TSinkScope sink(view.Sinks && ShowsSurfaces(state));
    DrawSeparates(m_others, scene, state, kind, view.Meshes);
}

void TLayerBatch::DrawSeparates(const TSeparates& separates, TZEPSceneContext& scene,
                                TZEPDrawState state, TZEPDrawKind kind, TSmoothMeshes* meshes) {
    for (const TSeparate& separate : separates.Frames) {
        if ((separate.Passes & PassBit(state)) == 0) continue;
        const TMatrixScope place(separate.Frame);
        for (TZEPObject* object : separate.Objects) {
            if ((PassesOf(*object) & PassBit(state)) == 0) continue;
            if (!meshes || !meshes->Draw(*object, scene, state)) object->Draw(scene, state, kind);
        }
        TZEPDrawRun::Current().End(); // before the frame goes
    }
}

} // namespace ZEP
