#include <zep/batch/BatchContents.h>

#include <zep/batch/GatheredClass.h>
#include <zep/framework/Contrast.h>
#include <zep/framework/Property.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

/// Up to here a software rasteriser draws the whole at an interactive rate.
constexpr std::size_t SmallVertexes = 50'000;
/// Smoothing and styles cost a software rasteriser ten times the plain line.
constexpr std::size_t FineVertexes = 200'000;
constexpr double ChordError = 2e-5; // of the size
constexpr double SizeChange = 2;    // factor from which on rules are made anew
constexpr double FloatError = 1e-6; // of the largest number that is added up
constexpr double LeastText = 4.5;   // pixels
constexpr double LeastTextMoving = 7;

/// \return the child of `root` that the object is or stands below; null where it does neither
TZEPObject* TopBelow(const TZEPObject& root, TZEPObject* object) {
    while (object && object->Parent() != &root) object = object->Parent();
    return object;
}

/// Widens the box by what is gathered below a group, seen or not.
void Measure(const TZEPObject& group, const TGLMatrixd4& matrix, TZEPBlockBox& box) {
    for (int i = 0, count = group.GetItemsCount(); i < count; ++i) {
        const TZEPObject& object = *group.GetItem(i);
        const TZEPGathered kind = TZEPGatheredClass::Of(object);
        if (kind == TZEPGathered::No) continue;
        TGLMatrixd4 toBox;
        MultMatrixd(matrix, object.GetMatrix(), toBox);
        if (kind == TZEPGathered::Group) {
            Measure(object, toBox, box);
            continue;
        }
        TGLArrayd3 min;
        TGLArrayd3 max;
        object.GetSize(min, max);
        XformBoxd(toBox, min, max);
        if (!IsFinite(min) || !IsFinite(max)) continue;
        MinBoundsd(box.Min, min);
        MaxBoundsd(box.Max, max);
    }
}

/// \param reach  of the places that were added up in floats
bool IsAbout(const TGLMatrixd4& loaded, const TGLMatrixd4& exact, double reach) {
    double scale = 1;
    for (std::size_t i = 0; i < 12; ++i) scale = std::max(scale, std::abs(exact[i / 4][i % 4]));
    for (std::size_t i = 0; i < 16; ++i) {
        const double error = FloatError * (i < 12 ? scale : scale + reach);
        if (!(std::abs(loaded[i / 4][i % 4] - exact[i / 4][i % 4]) <= error)) return false;
    }
    return true;
}

} // namespace

// --- keeping up --------------------------------------------------------------------------------

// A child that goes away invalidates nothing, and may be half gone.
void TBatchContents::Hear(TZEPObject& sender, TZEPObjectAction action) {
    if (action == saRename || &sender == m_batch) return;
    m_orderStale = m_orderStale || sender.Parent() == m_batch;
    TZEPObject* top = TopBelow(*m_batch, &sender);
    if (sender.Parent() == m_batch) m_own.IsStale = true;
    if (const auto layer = m_layers.find(top); layer != m_layers.end())
        layer->second.IsStale = true;
    if (action == saRemove) Forget(&sender);
}

void TBatchContents::Forget(TZEPObject* gone) {
    if (m_layers.erase(gone) > 0) std::erase(m_order, gone);
    m_meshes.Forget(gone);
    m_marks.Forget(gone);
}

void TBatchContents::NoteSelection(TZEPObject& object) {
    if (m_marks.NoteSelection(object)) ++m_heardSelections;
}

void TBatchContents::MarkAllStale() {
    m_own.IsStale = true;
    for (auto& [object, layer] : m_layers) layer.IsStale = true;
}

void TBatchContents::ListLayers() {
    m_order.clear();
    for (int i = 0, count = m_batch->GetItemsCount(); i < count; ++i) {
        TZEPObject* child = m_batch->GetItem(i);
        if (!IsGroup(*child)) continue;
        m_order.push_back(child);
        m_layers.try_emplace(child);
    }
}

/// Selections that were told are marked already. Others, where a bracket or the scene held them
/// back, are found as the layer is made anew.
void TBatchContents::TakeNews() {
    std::vector<TLayer*> selected;
    int selections = 0;
    const auto take = [&](TLayer& layer) {
        if (layer.IsStale) return;
        const TZEPChildNews news = layer.Batch->TakeNews();
        layer.IsStale = news.Look;
        selections += news.Selections;
        if (news.Selections > 0) selected.push_back(&layer);
    };
    take(m_own);
    for (TZEPObject* object : m_order)
        if (object->Visible()) take(m_layers[object]);
    if (std::exchange(m_heardSelections, 0) == selections) return;
    for (TLayer* layer : selected) layer->IsStale = true;
}

void TBatchContents::Follow(const TBatchLook& look) {
    const std::optional<TColor> background = look.Shown.Background;
    const bool arcs = Change(m_rules.RoundArcs, look.RoundArcs);
    if (!Change(m_background, background) && !arcs) return;
    m_rules.Shown = TBatchRules{}.Shown;
    if (background)
        m_rules.Shown = [behind = *background](TColor color) { return Readable(color, behind); };
    MarkAllStale();
}

void TBatchContents::Update(const TBatchLook& look) {
    if (!m_batch) return;
    if (std::exchange(m_orderStale, false)) ListLayers();
    TakeNews();
    Follow(look);
    if (!HasStale()) return;
    const bool isFirst = m_drawnSize == 0;
    if (isFirst) MeasureAll();
    MakeStale();
    const double drawn = DrawnSize();
    if (drawn <= SizeChange * m_drawnSize && m_drawnSize <= SizeChange * drawn) return;
    m_drawnSize = drawn;
    if (isFirst || !MeasureAll()) return;
    MarkAllStale();
    MakeStale();
}

/// \return whether that changes how arcs are drawn
bool TBatchContents::MeasureAll() {
    TZEPBlockBox box;
    Measure(*m_batch, idd, box);
    const double size = box.Min[0] <= box.Max[0] ? Distance(box.Min, box.Max) : 0;
    return Change(m_rules.Error, ChordError * size);
}

/// Of the largest layer.
double TBatchContents::DrawnSize() const {
    double size = 0;
    ForEachSeen([&](const TLayerBatch& batch) { size = std::max(size, batch.Size()); });
    return size;
}

bool TBatchContents::HasStale() const {
    return m_own.IsStale || std::ranges::any_of(m_order, [this](TZEPObject* object) {
               return object->Visible() && m_layers.at(object).IsStale;
           });
}

void TBatchContents::MakeStale() {
    if (m_own.IsStale) MakeOne(*m_batch, m_own);
    for (TZEPObject* object : m_order)
        if (TLayer& layer = m_layers[object]; object->Visible() && layer.IsStale)
            MakeOne(*object, layer);
}

void TBatchContents::MakeOne(TZEPObject& object, TLayer& layer) {
    layer.Batch =
        std::make_shared<TLayerBatch>(object, &object != m_batch, m_rules, m_marks.Selected());
    layer.IsStale = false;
    m_marks.MarkStale();
    m_meshes.Doubt();
}

// --- what there is -----------------------------------------------------------------------------

template <class Visit>
void TBatchContents::ForEachSeen(const Visit& visit) const {
    if (m_own.Batch) visit(*m_own.Batch);
    for (const TZEPObject* object : m_order)
        if (object->Visible())
            if (const auto& layer = m_layers.at(const_cast<TZEPObject*>(object)); layer.Batch)
                visit(*layer.Batch);
}

std::size_t TBatchContents::VertexCount() const {
    std::size_t count = 0;
    ForEachSeen([&](const TLayerBatch& batch) { count += batch.VertexCount(); });
    return count;
}

bool TBatchContents::IsLarge() const {
    return VertexCount() > SmallVertexes;
}

bool TBatchContents::HasLines() const {
    bool has = false;
    ForEachSeen([&](const TLayerBatch& batch) { has = has || batch.HasLines(); });
    return has;
}

bool TBatchContents::HasPartIn(TZEPDrawState state) const {
    bool has = false;
    ForEachSeen([&](const TLayerBatch& batch) { has = has || batch.TakesPartIn(state); });
    return has;
}

// --- drawing -----------------------------------------------------------------------------------

/// From the batch to the eye; none where something else is loaded than what the camera shows.
std::optional<TGLMatrixd4> TBatchContents::ExactView(const TZEPSceneContext& scene) const {
    if (!scene.Frame().ProxyTargets.empty() || !m_batch->Scene()) return {};
    const TZEPSceneCamera* camera = m_batch->Scene()->CurrentCamera();
    const std::optional<TGLMatrixd4> view = camera ? camera->ExactView() : std::nullopt;
    if (!view) return {};
    const TGLMatrixd4 own = m_batch->GetAbsoluteMatrix();
    TGLMatrixd4 exact;
    MultMatrixd(*view, own, exact);
    const auto length = [](const TGLArrayd4& v) { return Length({v[0], v[1], v[2]}); };
    const double reach = length((*view)[3]) + length(own[3]);
    if (!IsAbout(LoadedMatrix(GL_MODELVIEW_MATRIX), exact, reach)) return {};
    return exact;
}

TLayerView TBatchContents::View(const TBatchLook& look, TZEPDrawKind kind) {
    const TZEPShown& shown = look.Shown;
    const bool moves = shown.Share < 1;
    const double widths = shown.Widths > 0 && std::isfinite(shown.Widths) ? shown.Widths : 1;
    const bool smooth = look.SmoothShading || shown.Shading == TZEPShading::Smooth;
    TLayerView view{.Share = shown.Share,
                    .Fine = !moves && VertexCount() <= FineVertexes,
                    .Even = shown.EvenLight,
                    .LeastText = widths * (moves ? LeastTextMoving : LeastText),
                    .Widths = static_cast<float>(widths)};
    view.Surfaces = {.Sinks = HasLines(),
                     .Wire = shown.Wire || kind == dkDraft,
                     .Flat = shown.Shading == TZEPShading::Flat};
    if (smooth && !view.Surfaces.Flat && !view.Surfaces.Wire) view.Meshes = &m_meshes;
    return view;
}

void TBatchContents::Draw(const TBatchLook& look, TZEPSceneContext& scene, TZEPDrawState state,
                          TZEPDrawKind kind) {
    if (!m_batch) return;
    const bool even = look.Shown.EvenLight;
    if (even && (state == dsShadowObjects || state == dsShadows)) return;
    if (even && state == dsNonShadowObjects && scene.Shadows()) state = dsAllObjects;
    Update(look);
    if (!HasPartIn(state)) return;
    TLayerView view = View(look, kind);
    const std::optional<TGLMatrixd4> exact = ExactView(scene);
    if (exact) view.Exact = &*exact;
    TZEPDrawRun& run = scene.Frame().Run;
    const TZEPDrawRun::RuleScope rules(run, {view.Widths, run.Rules().EvenMaterials});
    DrawLayers(scene, state, kind, view);
    if (m_batch && state == dsTransparent) m_marks.Draw(*m_batch, m_rules, scene.Frame(), view);
}

// Each is held while it draws, and made anew before where something that was drawn has freed what
// is in it.
void TBatchContents::DrawLayers(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                                const TLayerView& view) {
    const auto own = m_own.Batch;
    own->Draw(idd, scene, state, kind, view);
    const std::vector<TZEPObject*> order = m_order;
    for (TZEPObject* object : order) {
        const auto found = m_batch ? m_layers.find(object) : m_layers.end();
        if (found == m_layers.end() || !object->Visible()) continue;
        if (found->second.IsStale) MakeOne(*object, found->second);
        const auto batch = found->second.Batch;
        batch->Draw(object->GetMatrix(), scene, state, kind, view);
    }
}

} // namespace ZEP
