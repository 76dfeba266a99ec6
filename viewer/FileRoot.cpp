#include "viewer/FileRoot.h"

#include "appearance/DrawRun.h"
#include "scene/XForm.h"

#include <utility>

namespace ZEP {

namespace {

/// Up to here a software rasteriser draws the whole at an interactive rate.
constexpr std::size_t SmallVertexes = 50'000;

} // namespace

// A child that goes away invalidates nothing.
TFileRoot::TFileRoot(TComponent* owner) : TZEPObject(owner) {
    RegisterNotify(Listener());
}

TFileRoot::~TFileRoot() {
    UnregisterNotify(Listener());
}

TZEPObjectNotify TFileRoot::Listener() {
    const auto hear = [](void* root, TZEPObject*, TZEPObjectAction, const void*) {
        static_cast<TFileRoot*>(root)->m_stale = true;
    };
    return {hear, this};
}

void TFileRoot::Prepare(double size) {
    m_size = size;
    Update();
}

void TFileRoot::Update() {
    m_stale = false;
    m_separate.clear();
    m_selected.clear();
    m_marksStale = true;
    for (int i = 0, count = GetItemsCount(); i < count; ++i)
        if (TZEPObject* child = GetItem(i); child->Selected()) m_selected.insert(child);
    m_batch.Build(*this, m_size, m_separate);
}

bool TFileRoot::IsLarge() const {
    return m_batch.VertexCount() > SmallVertexes;
}

void TFileRoot::Invalidate(TObject* sender) {
    if (sender != this && !NotesSelection(sender)) m_stale = true;
    TZEPObject::Invalidate(sender);
}

/// What else changed would have been told on its own.
bool TFileRoot::NotesSelection(TObject* sender) {
    auto* child = dynamic_cast<TZEPObject*>(sender);
    if (!child || child->Parent() != this) return false;
    const bool changed = child->Selected() ? m_selected.insert(child).second //
                                           : m_selected.erase(child) > 0;
    m_marksStale = m_marksStale || changed;
    return changed;
}

void TFileRoot::DrawMarks() {
    if (std::exchange(m_marksStale, false)) m_marks.BuildOf(m_selected, m_size);
    if (!m_marks.IsEmpty()) m_marks.DrawMarks();
}

void TFileRoot::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (kind == dkSelect) return TZEPObject::Draw(scene, state, kind);
    if (!Visible()) return;
    if (m_stale) Update();
    TZEPDrawRun::Current().Enter(false);
    const TZEPXFormScope transform(XForm());
    if (state == dsTransparent) m_batch.Draw(m_share);
    for (TZEPObject* child : std::as_const(m_separate)) child->Draw(scene, state, kind);
    if (state == dsTransparent) DrawMarks();
}

} // namespace ZEP
