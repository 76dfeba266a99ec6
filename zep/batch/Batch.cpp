#include <zep/batch/Batch.h>

#include <zep/batch/BatchContents.h>
#include <zep/framework/Property.h>
#include <zep/framework/Watch.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>

#include <utility>

namespace ZEP {

namespace {

const TRegisterObject<TZEPBatch> RegisteredBatch;

bool IsBatch(const TZEPObject& object) {
    return qobject_cast<const TZEPBatch*>(&object);
}

const TZEPBatch* BatchAbove(const TZEPObject& object) {
    const TZEPObject* above = object.Parent();
    while (above && !IsBatch(*above)) above = above->Parent();
    return static_cast<const TZEPBatch*>(above);
}

} // namespace

TZEPBatch::TZEPBatch(TComponent* owner)
    : TZEPObject(owner), m_contents(std::make_shared<TBatchContents>(*this, &IsBatch)) {
    RegisterNotify(Listener());
}

TZEPBatch::~TZEPBatch() {
    m_contents->Detach();
    UnregisterNotify(Listener());
}

TZEPObjectNotify TZEPBatch::Listener() {
    const auto hear = [](void* contents, TZEPObject* sender, TZEPObjectAction action, const void*) {
        static_cast<TBatchContents*>(contents)->Hear(*sender, action);
    };
    return {hear, m_contents.get()};
}

void TZEPBatch::SetEvenLight(bool even) {
    if (Change(m_evenLight, even)) Invalidate(this);
}

void TZEPBatch::SetRoundArcs(bool round) {
    if (Change(m_roundArcs, round)) Invalidate(this);
}

void TZEPBatch::SetSmoothShading(bool smooth) {
    if (Change(m_smoothShading, smooth)) Invalidate(this);
}

void TZEPBatch::SetShown(const std::optional<TZEPShown>& shown) {
    TZEPShown was = Shown();
    m_shown = shown;
    was.Share = Shown().Share;
    if (was != Shown()) Invalidate(this);
}

TZEPShown TZEPBatch::Shown() const {
    const TZEPShown* rules = Rules();
    return rules ? *rules : TZEPShown{};
}

/// Its own or those of the batch above it; null where nobody has set any.
const TZEPShown* TZEPBatch::Rules() const {
    if (m_shown) return &*m_shown;
    const TZEPBatch* above = BatchAbove(*this);
    return above ? above->Rules() : nullptr;
}

/// \param ofView  of the view that draws; null: it has no rules of its own
TBatchLook TZEPBatch::Look(const TZEPShown* ofView) const {
    TBatchLook look{ofView && !Rules() ? *ofView : Shown(), m_roundArcs, m_smoothShading,
                    m_frontier, m_hidden};
    look.Shown.EvenLight = look.Shown.EvenLight || m_evenLight;
    return look;
}

void TZEPBatch::SetFrontier(const std::optional<int>& child) {
    if (Change(m_frontier, child)) Invalidate(this);
}

void TZEPBatch::SetHiddenChildren(const std::shared_ptr<const std::vector<bool>>& hidden) {
    if (Change(m_hidden, hidden)) Invalidate(this);
}

bool TZEPBatch::Prepare(const std::function<bool(double)>& progress) {
    return m_contents->Prepare(Look(nullptr), progress);
}

bool TZEPBatch::IsLarge() const {
    return m_contents->IsLarge();
}

void TZEPBatch::Assign(const TComponent* source) {
    if (const auto* batch = dynamic_cast<const TZEPBatch*>(source)) {
        m_evenLight = batch->m_evenLight;
        m_roundArcs = batch->m_roundArcs;
        m_smoothShading = batch->m_smoothShading;
    }
    TZEPObject::Assign(source);
}

void TZEPBatch::DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (!m_hidden && (kind == dkSelect || scene.Frame().Carves))
        return TZEPObject::DrawChildren(scene, state, kind);
    DrawChildrenBut({}, scene, state, kind);
}

void TZEPBatch::DrawChildrenBut(const TZEPLeftOut& leftOut, TZEPSceneContext& scene,
                                TZEPDrawState state, TZEPDrawKind kind) {
    if (kind == dkSelect || scene.Frame().Carves) return DrawOneByOne(leftOut, scene, state, kind);
    const auto contents = m_contents;
    TBatchLook look = Look(scene.Frame().Shown);
    look.LeftOut = &leftOut;
    contents->Draw(look, scene, state, kind);
}

/// What it draws may take away the batch and what is below it.
void TZEPBatch::DrawOneByOne(const TZEPLeftOut& leftOut, TZEPSceneContext& scene,
                             TZEPDrawState state, TZEPDrawKind kind) {
    TZEPFrame& frame = scene.Frame(); // stays, where what is drawn frees the scene
    const auto hidden = m_hidden;
    const TZEPWatch alive(this);
    for (int i = 0; alive && !frame.SceneIsGone && i < GetItemsCount(); ++i) {
        const auto number = static_cast<std::size_t>(i);
        if (hidden && number < hidden->size() && (*hidden)[number]) continue;
        TZEPObject* child = GetItem(i);
        if (leftOut.contains(child)) continue;
        frame.Run.Next(typeid(*child));
        child->Draw(scene, state, kind);
    }
}

} // namespace ZEP
