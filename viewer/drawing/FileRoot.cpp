#include "viewer/drawing/FileRoot.h"

#include "viewer/content/Objects.h"
#include "viewer/drawing/DrawScopes.h"
#include "viewer/drawing/Look.h"
#include <zep/framework/Property.h>
#include <zep/scene/DrawRun.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

/// Up to here a software rasteriser draws the whole at an interactive rate.
constexpr std::size_t SmallVertexes = 50'000;
/// Smoothing and styles cost a software rasteriser ten times the plain line.
constexpr std::size_t FineVertexes = 200'000;
constexpr double ChordError = 2e-5; // of the file's size
constexpr double FloatError = 1e-5; // of the largest number that is added up
constexpr double LeastText = 4.5;   // pixels
constexpr double LeastTextMoving = 7;

/// \return the child of `root` that the object is or stands below; null where it does neither
TZEPObject* TopBelow(const TZEPObject& root, TZEPObject* object) {
    while (object && object->Parent() != &root) object = object->Parent();
    return object;
}

bool IsAtOrBelow(const TZEPObject* object, const TZEPObject* above) {
    while (object && object != above) object = object->Parent();
    return object;
}

} // namespace

TFileRoot::TFileRoot(TComponent* owner) : TZEPObject(owner) {
    RegisterNotify(Listener());
}

TFileRoot::~TFileRoot() {
    UnregisterNotify(Listener());
}

// --- keeping up --------------------------------------------------------------------------------

TZEPObjectNotify TFileRoot::Listener() {
    const auto hear = [](void* root, TZEPObject* sender, TZEPObjectAction action,
                         const void* data) {
        static_cast<TFileRoot*>(root)->Hear(sender, action, data);
    };
    return {hear, this};
}

// A child that goes away invalidates nothing, and may be half gone.
void TFileRoot::Hear(TZEPObject* sender, TZEPObjectAction action, const void*) {
    if (action == saRename || sender == this) return;
    m_orderStale = m_orderStale || sender->Parent() == this;
    m_own.MarkStale();
    if (TZEPObject* top = TopBelow(*this, sender))
        if (const auto layer = m_layers.find(top); layer != m_layers.end())
            layer->second->Batch.MarkStale();
    if (action == saRemove) Forget(sender);
}

void TFileRoot::Forget(TZEPObject* gone) {
    if (m_layers.erase(gone) > 0) std::erase(m_order, gone);
    m_meshes.Forget(gone);
    if (m_selected.empty()) return;
    std::erase_if(m_selected, [gone](TZEPObject* object) { return IsAtOrBelow(object, gone); });
    m_marksStale = true;
}

void TFileRoot::Invalidate(TObject* sender) {
    if (auto* object = dynamic_cast<TZEPObject*>(sender)) {
        if (object != this && !NotesSelection(*object)) MarkStale(*object);
    } else {
        m_meshes.Clear();
        MarkAllStale();
    }
    TZEPObject::Invalidate(sender);
}

/// A layer that is switched stays as it is.
void TFileRoot::MarkStale(TZEPObject& object) {
    TZEPObject* top = TopBelow(*this, &object);
    m_meshes.NoteChange(object);
    m_marksStale = m_marksStale || !m_selected.empty();
    const auto layer = m_layers.find(top);
    if (layer == m_layers.end()) return m_own.MarkStale();
    if (top == &object && Change(layer->second->WasVisible, top->Visible())) return;
    layer->second->Batch.MarkStale();
}

void TFileRoot::MarkAllStale() {
    m_own.MarkStale();
    for (const auto& [object, layer] : m_layers) layer->Batch.MarkStale();
    m_marksStale = true;
}

void TFileRoot::Prepare(double size) {
    m_size = size;
    MarkAllStale();
    Update();
}

void TFileRoot::SetBackground(TColor color) {
    if (m_background == color) return;
    m_background = color;
    MarkAllStale();
}

void TFileRoot::SetRoundArcs(bool round) {
    if (Change(m_roundArcs, round)) MarkAllStale();
}

TBatchRules TFileRoot::Rules() const {
    TBatchRules rules{.Error = m_size * ChordError, .RoundArcs = m_roundArcs};
    if (m_background)
        rules.Shown = [behind = *m_background](TColor color) { return Readable(color, behind); };
    return rules;
}

void TFileRoot::ListLayers() {
    m_order.clear();
    for (int i = 0, count = GetItemsCount(); i < count; ++i) {
        TZEPObject* child = GetItem(i);
        if (!IsGroup(*child)) continue;
        m_order.push_back(child);
        auto& layer = m_layers[child];
        if (!layer) layer = std::make_unique<TLayer>(TLayer{{}, child->Visible()});
    }
}

void TFileRoot::Update() {
    if (std::exchange(m_orderStale, false)) ListLayers();
    const TBatchRules rules = Rules();
    if (m_own.IsStale()) UpdateOne(m_own, *this, rules);
    for (TZEPObject* object : m_order)
        if (TLayerBatch& batch = m_layers[object]->Batch; object->Visible() && batch.IsStale())
            UpdateOne(batch, *object, rules);
}

void TFileRoot::UpdateOne(TLayerBatch& batch, TZEPObject& layer, const TBatchRules& rules) {
    batch.Build(layer, &layer != this, rules, m_selected);
    m_marksStale = m_marksStale || !m_selected.empty();
}

std::size_t TFileRoot::VertexCount() const {
    std::size_t count = m_own.VertexCount();
    for (TZEPObject* object : m_order)
        if (object->Visible()) count += m_layers.at(object)->Batch.VertexCount();
    return count;
}

bool TFileRoot::HasLines() const {
    return m_own.HasLines() || std::ranges::any_of(m_layers, [](const auto& layer) {
               return layer.second->Batch.HasLines();
           });
}

bool TFileRoot::IsLarge() const {
    return VertexCount() > SmallVertexes;
}

// --- what is selected --------------------------------------------------------------------------

/// What else changed would have been told on its own.
bool TFileRoot::NotesSelection(TZEPObject& object) {
    const bool changed = object.Selected() ? m_selected.insert(&object).second //
                                           : m_selected.erase(&object) > 0;
    m_marksStale = m_marksStale || changed;
    return changed;
}

TGLMatrixd4 TFileRoot::FrameOf(const TZEPObject& object) const {
    TGLMatrixd4 frame = idd;
    for (const TZEPObject* above = object.Parent(); above && above != this; above = above->Parent())
        MultMatrixd(above->GetMatrix(), TGLMatrixd4(frame), frame);
    return frame;
}

/// \param whole  all of a group is marked, whatever marks its objects make themselves
void TFileRoot::AddMark(TZEPObject& object, const TGLMatrixd4& frame, bool whole) {
    if (!object.Visible()) return;
    TGLMatrixd4 matrix;
    MultMatrixd(frame, object.GetMatrix(), matrix);
    if (IsGroup(object)) {
        for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
            AddMark(*object.GetItem(i), matrix, true);
    } else if (!m_marks.Add(object, matrix) && (whole || TLayerBatch::Gathers(object))) {
        m_boxes.push_back({&object, matrix});
    }
}

/// Of the first object where it is a group.
TGLArrayd3 TFileRoot::PlaceOf(TZEPObject& object) const {
    if (IsGroup(object) && object.GetItemsCount() > 0) return PlaceOf(*object.GetItem(0));
    TGLArrayd3 place = MiddleOf(object);
    Xformd(object.GetMatrix(), place);
    Xformd(FrameOf(object), place);
    return place;
}

void TFileRoot::BuildMarks() {
    m_marksOrigin = m_selected.empty() ? zero3d : PlaceOf(**m_selected.begin());
    m_marks.Start(m_marksOrigin, Rules());
    m_boxes.clear();
    for (TZEPObject* object : m_selected)
        if (TZEPObject* top = TopBelow(*this, object); top && top->Visible())
            AddMark(*object, FrameOf(*object), false);
    m_marks.Close();
}

void TFileRoot::DrawMarks(const TGLMatrixd4* exact) {
    if (std::exchange(m_marksStale, false)) BuildMarks();
    TZEPDrawRun::Current().Enter(false);
    if (!m_marks.IsEmpty()) {
        TGLMatrixd4 origin = GetMatrix();
        Translatedv(m_marksOrigin, origin);
        const TMatrixScope place(origin, exact);
        m_marks.DrawMarks();
    }
    const TMatrixScope own(GetMatrix());
    for (const TMarkedBox& box : m_boxes) {
        const TMatrixScope place(box.Matrix);
        box.Object->DrawSelection();
    }
}

// --- drawing -----------------------------------------------------------------------------------

/// None where something else is loaded than the camera's matrix.
std::optional<TGLMatrixd4> TFileRoot::ExactView() const {
    const auto* camera = Scene() ? dynamic_cast<TZEPCamera*>(Scene()->CurrentCamera()) : nullptr;
    if (!camera) return {};
    const TGLMatrixd4 view = camera->GetViewMatrix();
    const TGLMatrixd4 loaded = LoadedMatrix(GL_MODELVIEW_MATRIX);
    double reach = 1;
    for (const double place : camera->GetPosition()) reach = std::max(reach, std::abs(place));
    for (std::size_t i = 0; i < 16; ++i)
        if (!(std::abs(loaded[i / 4][i % 4] - view[i / 4][i % 4]) <= FloatError * reach)) return {};
    return view;
}

bool TFileRoot::HasPartIn(TZEPDrawState state) const {
    return m_own.TakesPartIn(state) || std::ranges::any_of(m_order, [&](TZEPObject* object) {
               return object->Visible() && m_layers.at(object)->Batch.TakesPartIn(state);
           });
}

void TFileRoot::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (kind == dkSelect) return TZEPObject::Draw(scene, state, kind);
    if (!Visible()) return;
    if (m_even && (state == dsShadowObjects || state == dsShadows)) return;
    if (m_even && state == dsNonShadowObjects && scene.Shadows()) state = dsAllObjects;
    Update();
    if (!HasPartIn(state)) return;
    TLayerView view{.Share = m_share,
                    .Fine = m_share >= 1 && VertexCount() <= FineVertexes,
                    .Even = m_even,
                    .LeastText = m_share < 1 ? LeastTextMoving : LeastText};
    view.Sinks = HasLines();
    const std::optional<TGLMatrixd4> exact = ExactView();
    if (exact) view.Exact = &*exact;
    if (m_smoothMeshes && !m_flat) view.Meshes = &m_meshes;
    DrawBatches(scene, state, kind, view);
    if (state == dsTransparent) DrawMarks(view.Exact);
}

void TFileRoot::DrawBatches(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                            const TLayerView& view) {
    const TGLMatrixd4 own = GetMatrix();
    m_own.Draw(own, scene, state, kind, view);
    for (TZEPObject* object : m_order) {
        if (!object->Visible()) continue;
        TGLMatrixd4 frame;
        MultMatrixd(own, object->GetMatrix(), frame);
        m_layers.at(object)->Batch.Draw(frame, scene, state, kind, view);
    }
}

} // namespace ZEP
