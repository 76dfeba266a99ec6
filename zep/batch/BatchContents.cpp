#include <zep/batch/BatchContents.h>

#include <zep/appearance/effects/DrawnPlace.h>
#include <zep/batch/GatheredClass.h>
#include <zep/framework/Contrast.h>
#include <zep/framework/Property.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>

#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

/// Up to here a software rasteriser draws the whole at an interactive rate.
constexpr std::size_t SmallVertexes = 50'000;
/// Smoothing and styles cost a software rasteriser ten times the plain line.
constexpr std::size_t FineVertexes = 200'000;
constexpr double LeastText = 4.5; // pixels
constexpr double LeastTextMoving = 7;
constexpr auto EdgesOnFaces = TColor(0x202020);

void AddEdges(const TZEPShown& shown, TLayerView& view) {
    const bool alone = shown.Edges == TZEPEdges::Alone;
    TColor color = alone ? clGray : EdgesOnFaces;
    if (alone && shown.Background) color = Readable(clBlack, *shown.Background);
    const TGLColor parts = ToGLColor(color, 1);
    view.Look.Edges = {parts[0], parts[1], parts[2]};
    view.Look.Hidden = alone;
    view.Surfaces.Sinks = true;
}

/// Of the steps in which all below an object is made ready: an object is gathered and taken over.
double WeightBelow(TZEPObject& object) {
    double weight = 2;
    if (auto* mesh = qobject_cast<TZEPMesh*>(&object)) weight += mesh->Faces()->Count();
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        weight += WeightBelow(*object.GetItem(i));
    return weight;
}

} // namespace

// --- keeping up --------------------------------------------------------------------------------

void TBatchContents::TLayer::Drop() {
    Batch.reset();
    Other.reset();
}

// A child that goes away may be half gone.
void TBatchContents::Hear(TZEPObject& sender, TZEPObjectAction action) {
    if (action == saRename || &sender == m_batch) return;
    ++m_changes;
    m_marks.MarkStale();
    if (action == saRemove) m_layers.erase(&sender);
}

void TBatchContents::ListLayers() {
    m_order.clear();
    std::unordered_map<TZEPObject*, TLayer> layers;
    for (const QPointer<TZEPObject>& object : m_own.Batch->Layers()) {
        if (!object) continue;
        m_order.push_back(object);
        const auto known = m_layers.find(object);
        if (known != m_layers.end() && known->second.Of)
            layers.insert(m_layers.extract(known));
        else
            layers[object].Of = object;
    }
    m_layers = std::move(layers);
}

/// \return  the batch, or the one that waits for its background, looks different
bool TBatchContents::KeepUp(TLayer& layer) {
    TLayerBatch* known = layer.Batch ? layer.Batch.get() : layer.Other.get();
    if (!known) return false;
    const TLayerBatch::TNews news = known->Update(*layer.Meshes);
    if (news.Look || news.Selection) m_marks.MarkStale();
    if (!layer.Batch || !layer.Other) return news.Look;
    if (news.Look)
        layer.Other.reset();
    else if (news.Selection)
        layer.Other->DoubtSelection();
    return news.Look;
}

bool TBatchContents::Make(TZEPObject& object, TLayer& layer) {
    if (!layer.Batch) {
        KeepUp(layer); // before another one takes the news
        layer.Batch = std::make_unique<TLayerBatch>(object, &object != m_batch, m_isBatch, m_rules);
    }
    if (&object == m_batch) layer.Batch->Hide(m_hidden);
    layer.Changes = m_changes;
    return KeepUp(layer);
}

void TBatchContents::Follow(const TBatchLook& look) {
    constexpr int Forgets = 500;
    if (Change(m_rules.RoundArcs, look.RoundArcs))
        ForEachLayer([](TLayer& layer) { layer.Drop(); });
    if (m_background != look.Shown.Background) return SwitchBackground(look.Shown.Background);
    if (!m_otherBackground || ++m_sameBackground < Forgets) return;
    m_otherBackground.reset();
    ForEachLayer([](TLayer& layer) { layer.Other.reset(); });
}

/// The arrays for the one before are kept for a while: two views may take turns.
void TBatchContents::SwitchBackground(const std::optional<TColor>& background) {
    const bool known = m_otherBackground && *m_otherBackground == background;
    m_otherBackground = std::exchange(m_background, background);
    m_sameBackground = 0;
    ForEachLayer([&](TLayer& layer) {
        KeepUp(layer);
        std::swap(layer.Batch, layer.Other);
        if (!known) layer.Batch.reset();
    });
    m_rules.Shown = [](TColor color) { return color; };
    if (background)
        m_rules.Shown = [behind = *background](TColor color) { return Readable(color, behind); };
}

void TBatchContents::Update(const TBatchLook& look) {
    Follow(look);
    m_hidden = look.Hidden;
    if (Make(*m_batch, m_own)) ListLayers();
    m_own.Batch->SetFrontier(look.Frontier);
    for (TZEPObject* object : m_order)
        if (object->Visible()) Make(*object, m_layers[object]);
}

bool TBatchContents::Prepare(const TBatchLook& look, const TSteps::TWatch& watch) {
    // What is half made is of no use.
    auto drop = qScopeGuard([this] { ForEachLayer([](TLayer& layer) { layer.Drop(); }); });
    const auto end = qScopeGuard([steps = m_rules.Steps] { steps->End(); });
    m_rules.Steps->Start(watch, watch ? WeightBelow(*m_batch) : 0);
    try {
        Update(look);
        PrepareMeshes(View(look, dkFull, 1).Look);
    } catch (const TSteps::TCancelled&) {
        return false;
    }
    drop.dismiss();
    return true;
}

void TBatchContents::PrepareMeshes(const TSurfaceLook& look) {
    ForEachLayer([&](const TLayer& layer) {
        if (!layer.Batch || (layer.Of && !layer.Of->Visible())) return;
        layer.Batch->Content()->ForEachOther([&](TZEPObject& object) {
            layer.Meshes->Prepare(object, look.Smooth, look.Edges.has_value(), *m_rules.Steps);
        });
    });
}

void TBatchContents::MarkSelected() {
    const bool whole = m_marks.AreOfAll(*m_batch);
    if (!Change(m_whole, whole) && !m_marks.IsStale()) return;
    TBatchObjects selected;
    for (int i = 0, count = whole ? m_batch->GetItemsCount() : 0; i < count; ++i)
        selected.emplace_back(m_batch->GetItem(i));
    if (!whole)
        ForEachLayer([&](const TLayer& layer) {
            if (layer.Batch) layer.Batch->ListSelected(selected);
        });
    m_marks.Build(*m_batch, selected, whole, m_rules);
}

// --- what there is -----------------------------------------------------------------------------

template <class Visit>
void TBatchContents::ForEachLayer(const Visit& visit) {
    visit(m_own);
    for (auto& [object, layer] : m_layers) visit(layer);
}

template <class Visit>
void TBatchContents::ForEachSeen(const Visit& visit) const {
    if (m_own.Batch) visit(*m_own.Batch->Content());
    for (const auto& [object, layer] : m_layers)
        if (layer.Batch && layer.Of && layer.Of->Visible()) visit(*layer.Batch->Content());
}

std::size_t TBatchContents::VertexCount() const {
    std::size_t count = 0;
    ForEachSeen([&](const TLayerContent& layer) { count += layer.VertexCount(); });
    return count;
}

bool TBatchContents::IsLarge() const {
    return VertexCount() > SmallVertexes;
}

bool TBatchContents::HasLines() const {
    bool has = false;
    ForEachSeen([&](const TLayerContent& layer) { has = has || layer.HasLines(); });
    return has;
}

bool TBatchContents::HasPartIn(TZEPDrawState state) const {
    bool has = false;
    ForEachSeen([&](const TLayerContent& layer) { has = has || layer.TakesPartIn(state); });
    return has;
}

// --- drawing -----------------------------------------------------------------------------------

/// From the batch to the eye; none where something else is loaded than what the camera shows. A
/// viewport tells where it shows the batch.
std::optional<TGLMatrixd4> TBatchContents::ExactView(const TZEPSceneContext& scene) const {
    if (!scene.Frame().ProxyTargets.empty() || !m_batch->Scene()) return {};
    const TZEPSceneCamera* camera = m_batch->Scene()->CurrentCamera();
    const std::optional<TGLMatrixd4> view = camera ? camera->ExactView() : std::nullopt;
    if (!view) return {};
    const TGLMatrixd4 own = MatrixAsDrawn(scene.Frame(), *m_batch);
    const TGLMatrixd4 exact = Product(*view, own);
    const auto length = [](const TGLArrayd4& v) { return Length({v[0], v[1], v[2]}); };
    const double reach = length((*view)[3]) + length(own[3]);
    if (!IsLoaded(exact, reach)) return {};
    return exact;
}

TLayerView TBatchContents::View(const TBatchLook& look, TZEPDrawKind kind, double pictureWidths) {
    const TZEPShown& shown = look.Shown;
    const bool moves = shown.Share < 1;
    const double widths =
        pictureWidths * (shown.Widths > 0 && std::isfinite(shown.Widths) ? shown.Widths : 1);
    const bool smooth = look.SmoothShading || shown.Shading == TZEPShading::Smooth;
    TLayerView view{.Share = shown.Share,
                    .Fine = !moves && VertexCount() <= FineVertexes,
                    .Even = shown.EvenLight,
                    .LeastText = widths * (moves ? LeastTextMoving : LeastText),
                    .Widths = static_cast<float>(widths)};
    view.Surfaces = {.Sinks = HasLines(),
                     .Wire = shown.Wire || kind == dkDraft,
                     .Flat = shown.Shading == TZEPShading::Flat};
    view.Look = {.Smooth = smooth && !view.Surfaces.Flat && !view.Surfaces.Wire,
                 .Wire = view.Surfaces.Wire,
                 .Sorted = shown.SortTransparent};
    if (shown.Edges != TZEPEdges::None && !view.Surfaces.Wire) AddEdges(shown, view);
    return view;
}

void TBatchContents::Draw(const TBatchLook& look, TZEPSceneContext& scene, TZEPDrawState state,
                          TZEPDrawKind kind) {
    const bool even = look.Shown.EvenLight;
    if (even && (state == dsShadowObjects || state == dsShadows)) return;
    if (even && state == dsNonShadowObjects && scene.Shadows()) state = dsAllObjects;
    Update(look);
    if (!HasPartIn(state)) return;
    TLayerView view = View(look, kind, scene.Frame().Widths);
    const std::optional<TGLMatrixd4> exact = ExactView(scene);
    if (exact) view.Exact = &*exact;
    TZEPFrame& frame = scene.Frame(); // stays, where what is drawn frees the scene
    TZEPDrawRun& run = frame.Run;
    const TZEPDrawRun::RuleScope rules(run, {view.Widths, run.Rules().EvenMaterials});
    DrawLayers(scene, state, kind, view, look.LeftOut);
    if (!m_batch || state != dsTransparent || frame.SceneIsGone) return;
    MarkSelected();
    m_marks.Draw(frame, view);
}

// Each is made anew before where something that was drawn has freed what is in it.
void TBatchContents::DrawLayers(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                                const TLayerView& view, const TZEPLeftOut* leftOut) {
    const TZEPFrame& frame = scene.Frame();
    DrawLayer(m_own, idd, scene, state, kind, view);
    const std::vector<TZEPObject*> order = m_order;
    for (TZEPObject* object : order) {
        if (frame.SceneIsGone) return;
        const auto found = m_batch ? m_layers.find(object) : m_layers.end();
        if (found == m_layers.end() || !found->second.Of || !object->Visible()) continue;
        if (leftOut && leftOut->contains(object)) continue;
        if (found->second.Changes != m_changes) Make(*object, found->second);
        DrawLayer(found->second, object->GetMatrix(), scene, state, kind, view);
    }
}

// What it draws may take the layer away.
void TBatchContents::DrawLayer(const TLayer& layer, const TGLMatrixd4& frame,
                               TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                               TLayerView view) {
    const std::shared_ptr<const TLayerContent> content = layer.Batch->Content();
    const std::shared_ptr<const TLayerFrontier> frontier = layer.Batch->Frontier();
    view.Frontier = frontier.get();
    const std::shared_ptr<TMeshLooks> meshes = layer.Meshes;
    view.Meshes = meshes.get();
    content->Draw(frame, scene, state, kind, view);
}

} // namespace ZEP
