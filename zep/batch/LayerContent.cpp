#include <zep/batch/LayerContent.h>

#include <zep/appearance/materials/SharedMaterials.h>
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

/// A polygon's own colour, and not that of a new object, which has another ambient colour.
bool HasSetColor(TZEPPolygon& polygon) {
    if (polygon.GetColor() != clSilver) return true;
    const TLookOnly look;
    return polygon.Material() != &SharedMaterial(nullptr, false);
}

/// The pass draws the look of surfaces, all of it or the part of one light.
bool ShowsSurfaces(TZEPDrawState state) {
    return ((ObjectPasses | PassBit(dsShadows)) & PassBit(state)) != 0;
}

} // namespace

TLayerContent::TLayerContent(TGathering&& gathering, const TSpots& spots, const TBatchRules& rules)
    : m_blocks(std::move(gathering.Blocks)) {
    TBatchRules ofSpot = rules;
    for (std::size_t i = 0; i < spots.Count(); ++i) {
        TSpot& spot = m_spots.emplace_back(TSpot{spots.Origin(i)});
        ofSpot.Error = spots.Error(i);
        spot.Paths.Start(spot.Origin, ofSpot);
        spot.Faces.Start(spot.Origin);
        spot.PlainFaces.Start(spot.Origin);
        spot.Texts.Start(spot.Origin);
    }
    for (const TGathering::TFound& found : gathering.Found) {
        rules.Steps->Take();
        Take(found, gathering.Frames[found.Frame], rules);
    }
    for (TSpot& spot : m_spots) {
        spot.Paths.Close();
        spot.Faces.Close();
        spot.PlainFaces.Close();
    }
    ListPasses();
}

void TLayerContent::Take(const TGathering::TFound& found, const TGLMatrixd4& frame,
                         const TBatchRules& rules) {
    TSpot& spot = m_spots[found.Spot];
    const TGLMatrixd4 matrix = MatrixOf(*found.Object, frame);
    spot.Paths.StartBlock(found.Block);
    if (auto* label = qobject_cast<TZEPLabel*>(found.Object)) {
        spot.Texts.StartBlock(found.Block);
        spot.Texts.Add(*label, frame, rules.Shown(label->GetColor()));
    } else if (auto* polygon = qobject_cast<TZEPPolygon*>(found.Object)) {
        spot.Faces.StartBlock(found.Block);
        spot.PlainFaces.StartBlock(found.Block);
        TakeFace(*polygon, matrix, spot, rules);
    } else {
        spot.Paths.Add(*found.Object, IsIdentityd(matrix) ? idd : matrix);
    }
}

void TLayerContent::TakeFace(TZEPPolygon& polygon, const TGLMatrixd4& matrix, TSpot& spot,
                             const TBatchRules& rules) {
    std::vector<TGLArrayd3> corners;
    for (int i = 0; i < polygon.Vertexes()->Count(); ++i) {
        corners.push_back((*polygon.Vertexes())[i].Data());
        Xformd(matrix, corners.back());
    }
    if (polygon.DrawType() == dtLine) return spot.Paths.AddLoop(corners, polygon.GetColor());
    TFaceBatch& faces = HasSetColor(polygon) ? spot.Faces : spot.PlainFaces;
    faces.Add(corners, rules.Shown(polygon.GetColor()));
}

void TLayerContent::Replace(const TBlockEdits& edits, TLayerContent&& by) {
    for (std::size_t i = m_spots.size(); i < by.m_spots.size(); ++i)
        m_spots.push_back({by.m_spots[i].Origin, {}, {}, {}, {}});
    for (std::size_t i = 0; i < m_spots.size(); ++i) {
        m_spots[i].Paths.Replace(edits, by.m_spots[i].Paths);
        m_spots[i].Faces.Replace(edits, by.m_spots[i].Faces);
        m_spots[i].PlainFaces.Replace(edits, by.m_spots[i].PlainFaces);
        m_spots[i].Texts.Replace(edits, by.m_spots[i].Texts);
    }
    std::vector<TReplaced> blocks;
    std::size_t first = 0;
    for (const TBlockEdit& edit : edits) {
        blocks.push_back({edit.First, edit.End, first, first + edit.Count});
        first += edit.Count;
    }
    ZEP::Replace(m_blocks, blocks, by.m_blocks);
    ListPasses();
}

void TLayerContent::ListPasses() {
    m_shapePasses = 0;
    m_otherPasses = 0;
    for (const TBlock& block : m_blocks) {
        m_shapePasses |= block.Shapes.Passes();
        m_otherPasses |= block.Others.Passes();
    }
    m_passes = ArrayPasses | m_shapePasses | m_otherPasses;
}

std::size_t TLayerContent::GatheredCount() const {
    std::size_t count = 0;
    for (const TBlock& block : m_blocks) count += block.Gathered;
    return count;
}

std::size_t TLayerContent::VertexCount() const {
    std::size_t count = 0;
    for (const TSpot& spot : m_spots)
        count +=
            spot.Paths.VertexCount() + spot.Faces.VertexCount() + spot.PlainFaces.VertexCount();
    return count;
}

bool TLayerContent::HasLines() const {
    return std::ranges::any_of(m_spots, [](const TSpot& spot) { return !spot.Paths.IsEmpty(); });
}

// --- drawing -----------------------------------------------------------------------------------

void TLayerContent::Draw(const TGLMatrixd4& frame, TZEPSceneContext& scene, TZEPDrawState state,
                         TZEPDrawKind kind, const TLayerView& view) const {
    if ((ArrayPasses & PassBit(state)) != 0)
        for (const TSpot& spot : m_spots) {
            scene.Frame().Run.End();
            const TMatrixScope place(scene.Frame(), Product(frame, TranslationTo(spot.Origin)),
                                     view.Exact);
            DrawArrays(spot, scene, state, view);
        }
    if (state == dsTransparent && view.Look.Hidden) DrawHiddenEdges(frame, scene, kind, view);
    if (((m_shapePasses | m_otherPasses) & PassBit(state)) == 0) return;
    const TZEPFrame& drawn = scene.Frame(); // stays, where what is drawn frees the scene
    const TMatrixScope place(scene.Frame(), frame);
    DrawShapes({scene, state, kind});
    if (drawn.SceneIsGone) return;
    DrawOthers({scene, state, kind, view.Meshes, view.Look}, view);
}

TPathFrontier TLayerContent::FrontierAt(const TSpot& spot, const TLayerView& view) const {
    if (!view.Frontier) return {};
    const auto i = static_cast<std::size_t>(&spot - m_spots.data());
    return {view.Frontier->Block, &view.Frontier->Done->m_spots[i].Paths};
}

void TLayerContent::DrawArrays(const TSpot& spot, TZEPSceneContext& scene, TZEPDrawState state,
                               const TLayerView& view) const {
    const TZEPViewVolume volume = TZEPViewVolume::OfContext(WidestCulled / 2, scene.Frame().Window);
    const TPixelScale pixels = TPixelScale::OfContext();
    const TDetail detail{view.Share, &volume, &pixels};
    if (state == dsTransparent) {
        if (view.Look.Hidden) DrawFaceEdges(spot, detail, view);
        spot.Paths.Draw(detail, view.Fine, view.Widths, FrontierAt(spot, view));
        return spot.Texts.Draw(view.LeastText);
    }
    const TSurfaceScope surfaces(scene.Frame().Run, view.Surfaces);
    const bool outlines = view.Surfaces.Wire;
    {
        const TDepthOnlyScope faces(scene.Frame().Run, view.Look.Hidden);
        spot.Faces.Draw(detail, !view.Even && !outlines, outlines);
        spot.PlainFaces.Draw(detail, !view.Even && !outlines, outlines, true);
    }
    if (!view.Look.Hidden) DrawFaceEdges(spot, detail, view);
}

void TLayerContent::DrawFaceEdges(const TSpot& spot, const TDetail& detail,
                                  const TLayerView& view) {
    if (!view.Look.Edges) return;
    spot.Faces.DrawEdges(detail, *view.Look.Edges);
    spot.PlainFaces.DrawEdges(detail, *view.Look.Edges);
}

void TLayerContent::DrawHiddenEdges(const TGLMatrixd4& frame, TZEPSceneContext& scene,
                                    TZEPDrawKind kind, const TLayerView& view) const {
    if (!view.Look.Edges) return;
    const TMatrixScope place(scene.Frame(), frame);
    for (const TBlock& block : m_blocks)
        block.Others.DrawEdges({scene, dsTransparent, kind, view.Meshes, view.Look});
}

void TLayerContent::DrawShapes(const TPass& pass) const {
    if ((m_shapePasses & PassBit(pass.State)) == 0) return;
    std::optional<TEvenScope> even;
    if (ShowsSurfaces(pass.State)) even.emplace(pass.Scene.Frame().Run);
    DrawEach(&TBlock::Shapes, pass);
}

void TLayerContent::DrawOthers(const TPass& pass, const TLayerView& view) const {
    if ((m_otherPasses & PassBit(pass.State)) == 0) return;
    if (!ShowsSurfaces(pass.State))
        return DrawEach(&TBlock::Others, {pass.Scene, pass.State, pass.Kind});
    std::optional<TEvenScope> even;
    if (view.Even) even.emplace(pass.Scene.Frame().Run);
    TSurfaceScope::TLook look = view.Surfaces;
    look.Wire = false; // each draws its own outline
    const TSurfaceScope surfaces(pass.Scene.Frame().Run, look);
    if (pass.Look.Sorted && pass.State == dsTransparent) return DrawFarthestFirst(pass);
    DrawEach(&TBlock::Others, pass);
}

void TLayerContent::DrawFarthestFirst(const TPass& pass) const {
    TGLMatrixd4 view;
    glGetDoublev(GL_MODELVIEW_MATRIX, view[0].data());
    std::vector<TSeparates::TPlaced> order;
    for (const TBlock& block : m_blocks) block.Others.List(pass.State, view, order);
    std::ranges::stable_sort(order, {}, &TSeparates::TPlaced::Depth);
    const TZEPFrame& frame = pass.Scene.Frame();
    for (const TSeparates::TPlaced& placed : order) {
        if (frame.SceneIsGone) return;
        TSeparates::Draw(placed, pass);
    }
}

void TLayerContent::DrawEach(TSeparates TBlock::*separates, const TPass& pass) const {
    const TZEPFrame& frame = pass.Scene.Frame();
    for (const TBlock& block : m_blocks) {
        if (frame.SceneIsGone) return;
        if (((block.*separates).Passes() & PassBit(pass.State)) != 0) (block.*separates).Draw(pass);
    }
}

} // namespace ZEP
