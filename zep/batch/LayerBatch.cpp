#include <zep/batch/LayerBatch.h>

#include <zep/appearance/effects/ReflexedObject.h>
#include <zep/batch/GatheredClass.h>
#include <zep/objects/Label.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

namespace ZEP {

namespace {

/// In these there is something to do for arrays.
constexpr TZEPPassSet ArrayPasses = ObjectPasses & ~PassBit(dsShadowObjects);

/// A colour is all that its material tells. One that was asked for its material has one that may
/// change without a word.
bool HasPlainMaterial(const TZEPObject& object) {
    return object.MaterialIndex() < 0 && !object.HasOwnMaterial();
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

/// Shadows and mirrors ask each object, and a class that is not known draws anything.
bool StandsAlone(const TZEPObject& object) {
    if (object.GetItemsCount() > 0 || object.CastsShadows() || object.ReceivesShadows() ||
        TZEPGatheredClass::Of(object) != TZEPGathered::Shape)
        return true;
    const auto* mirror = qobject_cast<const TZEPReflexedObject*>(&object);
    return mirror && mirror->Reflection() != 0;
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

TGLArrayd3 MiddleOf(const TZEPObject& object) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetSize(min, max);
    return Middle(min, max);
}

void TLayerBatch::TSeparates::Add(const TGLMatrixd4& frame, TZEPObject& object) {
    if (Frames.empty() || Frames.back().Frame != frame) Frames.push_back({frame, {}});
    TSeparate& last = Frames.back();
    last.Objects.emplace_back(&object);
    last.Passes |= PassesOf(object);
    Passes |= last.Passes;
}

bool TLayerBatch::Gathers(TZEPObject& object) {
    if (StandsAlone(object)) return false;
    if (auto* label = qobject_cast<TZEPLabel*>(&object)) return IsPlainText(*label);
    auto* polygon = qobject_cast<TZEPPolygon*>(&object);
    return polygon && IsPlainFace(*polygon);
}

TLayerBatch::TLayerBatch(TZEPObject& layer, bool groups, const TBatchRules& rules,
                         TObjects& selected)
    : m_rules(rules) {
    Collect(layer, idd, groups, selected);
    m_paths.Close();
    m_faces.Close();
    m_passes = ArrayPasses | m_shapes.Passes | m_others.Passes;
}

std::size_t TLayerBatch::VertexCount() const {
    return m_paths.VertexCount() + m_faces.VertexCount();
}

TZEPChildNews TLayerBatch::TakeNews() const {
    TZEPChildNews all{false, 0};
    for (TZEPObject* group : m_groups) {
        const TZEPChildNews news = group->TakeChildNews();
        all = {all.Look || news.Look, all.Selections + news.Selections};
    }
    return all;
}

double TLayerBatch::Size() const {
    TZEPBlockBox box;
    m_paths.Extend(box.Min, box.Max);
    m_faces.Extend(box.Min, box.Max);
    return box.Min[0] <= box.Max[0] ? Distance(box.Min, box.Max) : 0;
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
    m_groups.push_back(&group);
    static_cast<void>(group.TakeChildNews());
    for (int i = 0, count = group.GetItemsCount(); i < count; ++i) {
        TZEPObject& object = *group.GetItem(i);
        if (object.Selected()) selected.insert(&object);
        if (!object.Visible()) continue;
        if (IsGroup(object)) {
            if (groups) Collect(object, Product(frame, object.GetMatrix()), true, selected);
        } else if (!Take(object, frame)) {
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
    if (qobject_cast<TZEPShape*>(&object))
        return HasPlainMaterial(object) && m_paths.Add(object, moved ? matrix : idd);
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
    if ((ArrayPasses & PassBit(state)) != 0 && m_started) {
        scene.Frame().Run.Enter(false);
        TGLMatrixd4 origin = idd;
        origin[3] = {m_origin[0], m_origin[1], m_origin[2], 1};
        const TMatrixScope place(scene.Frame(), Product(frame, origin), view.Exact);
        DrawArrays(scene, state, view);
    }
    if (((m_shapes.Passes | m_others.Passes) & PassBit(state)) == 0) return;
    const TMatrixScope place(scene.Frame(), frame);
    DrawShapes({scene, state, kind});
    DrawOthers({scene, state, kind, view.Meshes, view.Surfaces.Wire}, view);
}

void TLayerBatch::DrawArrays(TZEPSceneContext& scene, TZEPDrawState state,
                             const TLayerView& view) const {
    const TZEPViewVolume volume = TZEPViewVolume::OfContext(WidestCulled / 2);
    const TDetail detail{view.Share, &volume};
    if (state == dsTransparent) {
        m_paths.Draw(detail, view.Fine, view.Widths);
        return m_texts.Draw(view.LeastText);
    }
    const TSurfaceScope surfaces(scene.Frame().Run, view.Surfaces);
    const bool outlines = view.Surfaces.Wire;
    m_faces.Draw(detail, !view.Even && !outlines, outlines);
}

void TLayerBatch::DrawShapes(const TPass& pass) const {
    if ((m_shapes.Passes & PassBit(pass.State)) == 0) return;
    std::optional<TEvenScope> even;
    if (ShowsSurfaces(pass.State)) even.emplace(pass.Scene.Frame().Run);
    DrawSeparates(m_shapes, pass);
}

void TLayerBatch::DrawOthers(const TPass& pass, const TLayerView& view) const {
    if ((m_others.Passes & PassBit(pass.State)) == 0) return;
    if (!ShowsSurfaces(pass.State))
        return DrawSeparates(m_others, {pass.Scene, pass.State, pass.Kind});
    std::optional<TEvenScope> even;
    if (view.Even) even.emplace(pass.Scene.Frame().Run);
    TSurfaceScope::TLook look = view.Surfaces;
    look.Wire = false; // each draws its own outline
    const TSurfaceScope surfaces(pass.Scene.Frame().Run, look);
    DrawSeparates(m_others, pass);
}

void TLayerBatch::DrawSeparates(const TSeparates& separates, const TPass& pass) {
    for (const TSeparate& separate : separates.Frames) {
        if ((separate.Passes & PassBit(pass.State)) == 0) continue;
        const TMatrixScope place(pass.Scene.Frame(), separate.Frame);
        for (const QPointer<TZEPObject>& object : separate.Objects)
            if (object && (PassesOf(*object) & PassBit(pass.State)) != 0) DrawOne(*object, pass);
        pass.Scene.Frame().Run.End(); // before the frame goes
    }
}

void TLayerBatch::DrawOne(TZEPObject& object, const TPass& pass) {
    if (pass.Meshes && pass.Meshes->Draw(object, pass.Scene, pass.State)) return;
    const bool outlines = pass.Wire && !qobject_cast<TZEPLabel*>(&object);
    object.Draw(pass.Scene, pass.State, outlines ? dkDraft : pass.Kind);
}

} // namespace ZEP
