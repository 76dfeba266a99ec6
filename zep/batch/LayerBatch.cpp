#include <zep/batch/LayerBatch.h>

#include <zep/appearance/effects/ReflexedObject.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/batch/GatheredClass.h>
#include <zep/batch/PixelScale.h>
#include <zep/batch/Spots.h>
#include <zep/framework/LookOnly.h>
#include <zep/objects/Label.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>

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

/// A polygon's own colour, and not that of a new object, which has another ambient colour.
bool HasSetColor(TZEPPolygon& polygon) {
    if (polygon.GetColor() != clSilver) return true;
    const TLookOnly look;
    return polygon.Material() != &SharedMaterial(nullptr, false);
}

/// Shadows and mirrors ask each object, and a class that is not known draws anything.
bool StandsAlone(const TZEPObject& object) {
    if (object.GetItemsCount() > 0 || object.CastsShadows() || object.ReceivesShadows() ||
        TZEPGatheredClass::Of(object) != TZEPGathered::Shape)
        return true;
    const auto* mirror = qobject_cast<const TZEPReflexedObject*>(&object);
    return mirror && mirror->Reflection() != 0;
}

/// It is drawn from arrays.
bool Gathers(TZEPObject& object) {
    if (StandsAlone(object)) return false;
    if (auto* label = qobject_cast<TZEPLabel*>(&object)) return IsPlainText(*label);
    if (auto* polygon = qobject_cast<TZEPPolygon*>(&object)) return IsPlainFace(*polygon);
    return HasPlainMaterial(object) && TPathBatch::Takes(object);
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
    last.Objects.emplace_back(&object);
    last.Passes |= PassesOf(object);
    Passes |= last.Passes;
}

/// Looks at what a layer holds, and fills it in.
class TLayerBatch::TGathering {
public:
    TGathering(TLayerBatch& layer, const TBatchRules& rules) : m_layer(layer), m_rules(rules) {}

    void Collect(TZEPObject& group, const TGLMatrixd4& frame, bool groups) {
        m_layer.m_groups.emplace_back(&group);
        static_cast<void>(group.TakeChildNews());
        const std::size_t own = m_frames.size();
        m_frames.push_back(frame);
        for (int i = 0, count = group.GetItemsCount(); i < count; ++i) {
            TZEPObject& object = *group.GetItem(i);
            if (!object.Visible()) continue;
            if (!IsGroup(object))
                Note(object, own);
            else if (groups)
                Collect(object, Product(frame, object.GetMatrix()), true);
        }
    }

    void Fill() {
        const TSpots spots(m_boxes);
        for (std::size_t i = 0; i < spots.Count(); ++i)
            Start(m_layer.m_spots.emplace_back(), spots.Origin(i), spots.Error(i));
        for (std::size_t i = 0; i < m_found.size(); ++i)
            Take(*m_found[i].Object, m_frames[m_found[i].Frame], m_layer.m_spots[spots.Of(i)]);
        for (TSpot& spot : m_layer.m_spots) {
            spot.Paths.Close();
            spot.Faces.Close();
            spot.PlainFaces.Close();
        }
    }

private:
    /// An object that is gathered.
    struct TFound {
        TZEPObject* Object;
        std::size_t Frame;
    };

    static TGLMatrixd4 MatrixOf(const TZEPObject& object, const TGLMatrixd4& frame) {
        const TGLMatrixd4 own = object.GetMatrix();
        return IsIdentityd(frame) ? own : IsIdentityd(own) ? frame : Product(frame, own);
    }

    void Note(TZEPObject& object, std::size_t frame) {
        if (Gathers(object)) {
            m_found.push_back({&object, frame});
            m_boxes.push_back(BoxOf(object, MatrixOf(object, m_frames[frame])));
            return;
        }
        (qobject_cast<TZEPShape*>(&object) ? m_layer.m_shapes : m_layer.m_others)
            .Add(m_frames[frame], object);
    }

    void Start(TSpot& spot, const TGLArrayd3& origin, double error) const {
        TBatchRules rules = m_rules;
        rules.Error = error;
        spot.Origin = origin;
        spot.Paths.Start(origin, rules);
        spot.Faces.Start(origin);
        spot.PlainFaces.Start(origin);
        spot.Texts.Start(origin);
    }

    void Take(TZEPObject& object, const TGLMatrixd4& frame, TSpot& spot) const {
        const TGLMatrixd4 matrix = MatrixOf(object, frame);
        if (auto* label = qobject_cast<TZEPLabel*>(&object))
            spot.Texts.Add(*label, frame, m_rules.Shown(label->GetColor()));
        else if (auto* polygon = qobject_cast<TZEPPolygon*>(&object))
            TakeFace(*polygon, matrix, spot);
        else
            spot.Paths.Add(object, IsIdentityd(matrix) ? idd : matrix);
    }

    void TakeFace(TZEPPolygon& polygon, const TGLMatrixd4& matrix, TSpot& spot) const {
        std::vector<TGLArrayd3> corners;
        for (int i = 0; i < polygon.Vertexes()->Count(); ++i) {
            corners.push_back((*polygon.Vertexes())[i].Data());
            Xformd(matrix, corners.back());
        }
        if (polygon.DrawType() == dtLine) return spot.Paths.AddLoop(corners, polygon.GetColor());
        TFaceBatch& faces = HasSetColor(polygon) ? spot.Faces : spot.PlainFaces;
        faces.Add(corners, m_rules.Shown(polygon.GetColor()));
    }

    TLayerBatch& m_layer;
    const TBatchRules& m_rules;
    std::vector<TGLMatrixd4> m_frames; ///< of the groups
    std::vector<TFound> m_found;
    std::vector<TZEPBlockBox> m_boxes; ///< of those
};

TLayerBatch::TLayerBatch(TZEPObject& layer, bool groups, const TBatchRules& rules) {
    TGathering gathering(*this, rules);
    gathering.Collect(layer, idd, groups);
    gathering.Fill();
    m_passes = ArrayPasses | m_shapes.Passes | m_others.Passes;
}

std::size_t TLayerBatch::VertexCount() const {
    std::size_t count = 0;
    for (const TSpot& spot : m_spots)
        count +=
            spot.Paths.VertexCount() + spot.Faces.VertexCount() + spot.PlainFaces.VertexCount();
    return count;
}

bool TLayerBatch::HasLines() const {
    return std::ranges::any_of(m_spots, [](const TSpot& spot) { return !spot.Paths.IsEmpty(); });
}

TZEPChildNews TLayerBatch::TakeNews() const {
    TZEPChildNews all{false, 0};
    for (const QPointer<TZEPObject>& group : m_groups) {
        if (!group) return {};
        const TZEPChildNews news = group->TakeChildNews();
        all = {all.Look || news.Look, all.Selections + news.Selections};
    }
    return all;
}

TLayerBatch::TObjects TLayerBatch::Parents(TIsBatch isBatch) const {
    TObjects parents;
    const auto note = [&](const auto& self, TZEPObject& object) -> void {
        if (object.GetItemsCount() == 0 || isBatch(object)) return;
        parents.emplace_back(&object);
        for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
            self(self, *object.GetItem(i));
    };
    for (const TSeparates* separates : {&m_shapes, &m_others})
        for (const TSeparate& separate : separates->Frames)
            for (const QPointer<TZEPObject>& object : separate.Objects)
                if (object) note(note, *object);
    return parents;
}

// --- drawing -----------------------------------------------------------------------------------

void TLayerBatch::Draw(const TGLMatrixd4& frame, TZEPSceneContext& scene, TZEPDrawState state,
                       TZEPDrawKind kind, const TLayerView& view) const {
    if ((ArrayPasses & PassBit(state)) != 0)
        for (const TSpot& spot : m_spots) {
            scene.Frame().Run.End();
            const TMatrixScope place(scene.Frame(), Product(frame, TranslationTo(spot.Origin)),
                                     view.Exact);
            DrawArrays(spot, scene, state, view);
        }
    if (((m_shapes.Passes | m_others.Passes) & PassBit(state)) == 0) return;
    const TZEPFrame& drawn = scene.Frame(); // stays, where what is drawn frees the scene
    const TMatrixScope place(scene.Frame(), frame);
    DrawShapes({scene, state, kind});
    if (drawn.SceneIsGone) return;
    DrawOthers({scene, state, kind, view.Meshes, view.Surfaces.Wire}, view);
}

void TLayerBatch::DrawArrays(const TSpot& spot, TZEPSceneContext& scene, TZEPDrawState state,
                             const TLayerView& view) const {
    const TZEPViewVolume volume = TZEPViewVolume::OfContext(WidestCulled / 2);
    const TPixelScale pixels = TPixelScale::OfContext();
    const TDetail detail{view.Share, &volume, &pixels};
    if (state == dsTransparent) {
        spot.Paths.Draw(detail, view.Fine, view.Widths);
        return spot.Texts.Draw(view.LeastText);
    }
    const TSurfaceScope surfaces(scene.Frame().Run, view.Surfaces);
    const bool outlines = view.Surfaces.Wire;
    spot.Faces.Draw(detail, !view.Even && !outlines, outlines);
    spot.PlainFaces.Draw(detail, !view.Even && !outlines, outlines, true);
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
        TZEPFrame& frame = pass.Scene.Frame();
        const TMatrixScope place(frame, separate.Frame);
        for (const QPointer<TZEPObject>& object : separate.Objects)
            if (object && (PassesOf(*object) & PassBit(pass.State)) != 0) DrawOne(*object, pass);
        frame.Run.End(); // before its matrix goes
        if (frame.SceneIsGone) return;
    }
}

void TLayerBatch::DrawOne(TZEPObject& object, const TPass& pass) {
    if (pass.Meshes && pass.Meshes->Draw(object, pass.Scene, pass.State)) return;
    const bool outlines = pass.Wire && !qobject_cast<TZEPLabel*>(&object);
    object.Draw(pass.Scene, pass.State, outlines ? dkDraft : pass.Kind);
}

} // namespace ZEP
