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
    m_batch.Build(*this, m_size, m_separate);
}

bool TFileRoot::IsLarge() const {
    return m_batch.VertexCount() > SmallVertexes;
}

void TFileRoot::Invalidate(TObject* sender) {
    if (sender != this) m_stale = true;
    TZEPObject::Invalidate(sender);
}

void TFileRoot::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (kind == dkSelect) return TZEPObject::Draw(scene, state, kind);
    if (!Visible()) return;
    if (m_stale) Update();
    TZEPDrawRun::Current().Enter(false);
    const TZEPXFormScope transform(XForm());
    if (state == dsTransparent) m_batch.Draw(m_share);
    for (TZEPObject* child : std::as_const(m_separate)) child->Draw(scene, state, kind);
}

} // namespace ZEP
