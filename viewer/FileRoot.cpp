#include "viewer/FileRoot.h"

#include "appearance/DrawRun.h"
#include "scene/XForm.h"

namespace ZEP {

namespace {

/// With more children than these a frame of them takes more than a tenth of a second on a software
/// rasteriser.
constexpr int MostSeparate = 10'000;

} // namespace

void TFileRoot::Prepare(double size) {
    m_batch = {};
    if (GetItemsCount() > MostSeparate) m_batch.Build(*this, size);
}

void TFileRoot::Clear() {
    m_batch = {};
    TZEPObject::Clear();
}

void TFileRoot::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (!IsLarge() || kind == dkSelect) return TZEPObject::Draw(scene, state, kind);
    if (!Visible() || state != dsAllObjects) return;
    TZEPDrawRun::Current().Enter(false);
    const TZEPXFormScope transform(XForm());
    m_batch.Draw(m_share);
}

} // namespace ZEP
