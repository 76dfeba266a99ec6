#include <zep/appearance/effects/Proxy.h>

#include <zep/appearance/effects/DrawnPlace.h>
#include <zep/framework/Exception.h>
#include <zep/framework/Property.h>
#include <zep/framework/Watch.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/XForm.h>

#include <QScopeGuard>

#include <algorithm>
#include <optional>
#include <vector>

namespace ZEP {

namespace {

const TRegisterObject<TZEPProxy> RegisteredProxy;

constexpr std::size_t DeepestMeasured = 8; // proxies within each other

/// The targets that are being drawn, each within the one before. It bounds what proxies that lead
/// to each other would draw without end.
class TNesting {
public:
    TNesting(TZEPFrame& frame, const TZEPObject& target) : m_frame(frame) {
        auto& targets = frame.ProxyTargets;
        if (targets.empty()) frame.ProxyRepeats = 0;
        const bool repeats = std::ranges::find(targets, &target) != targets.end();
        if (targets.size() >= Deepest || (!targets.empty() && !HasMatrices())) return;
        if (repeats && ++frame.ProxyRepeats > MostRepeated) return;
        targets.push_back(&target);
        m_entered = true;
    }
    ~TNesting() {
        if (m_entered) m_frame.ProxyTargets.pop_back();
    }
    TNesting(const TNesting&) = delete;
    TNesting& operator=(const TNesting&) = delete;

    explicit operator bool() const { return m_entered; }

private:
    static constexpr std::size_t Deepest = 64;
    static constexpr int MostRepeated = 5000; // of a target within itself
    static constexpr int SpareMatrices = 6;

    /// On OpenGL's stack, for what is drawn.
    static bool HasMatrices() {
        GLint used = 0;
        GLint all = 0;
        glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &used);
        glGetIntegerv(GL_MAX_MODELVIEW_STACK_DEPTH, &all);
        return used + SpareMatrices <= all;
    }

    TZEPFrame& m_frame;
    bool m_entered = false;
};

} // namespace

void TZEPProxy::SetRecurse(int recurse) {
    if (Change(m_recurse, recurse)) Invalidate(this);
}

void TZEPProxy::SetProxy(TZEPObject* object) {
    if (object == m_target) return;
    if (object)
        for (const TZEPObject* above = this; above; above = above->Parent())
            if (above == object) throw Exception(QStringLiteral("Recursive proxy assigment"));
    m_target = object;
    if (object) object->FreeNotification(this);
    Invalidate(this);
}

void TZEPProxy::SetParentComponentExt(TComponent* parent, bool append) {
    if (parent && parent == m_target) SetProxy(nullptr);
    TZEPObject::SetParentComponentExt(parent, append);
}

void TZEPProxy::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove && component == m_target) SetProxy(nullptr);
    TZEPObject::Notification(component, operation);
}

// A target that measures what is below it may come back here, also by way of other proxies.
void TZEPProxy::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    static std::vector<const TZEPObject*> measured;
    const bool repeats = std::ranges::find(measured, m_target) != measured.end();
    if (!m_target || repeats || measured.size() >= DeepestMeasured)
        return TZEPObject::GetSize(min, max);
    measured.push_back(m_target);
    const auto done = qScopeGuard([] { measured.pop_back(); });
    m_target->GetSize(min, max);
}

// The counter goes back to 0 at once, not by one: proxies of one target within each other may draw
// that more often than each alone would.
void TZEPProxy::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (!Visible() || m_depth > m_recurse || !m_target) return;
    TZEPFrame& frame = scene.Frame();
    const TNesting nesting(frame, *m_target);
    if (!nesting) return;
    const TZEPDrawRun::Walk walk(frame.Run);
    const TZEPXFormScope own(frame, ExistingXForm());
    const TZEPWatch alive(this);
    ++m_depth;
    const auto done = qScopeGuard([this, &alive] {
        if (alive) m_depth = 0;
    });
    DrawChildren(scene, state, kind);
    if (alive && m_target && !frame.SceneIsGone) DrawTarget(scene, state, kind);
}

// What is drawn may free the target or the proxy.
void TZEPProxy::DrawTarget(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    TZEPObject& target = *m_target;
    const TZEPWatch alive(this);
    const TZEPWatch targetAlive(&target);
    TZEPFrame& frame = scene.Frame();
    std::optional<TZEPDrawnPlace> place; // shadows fall from there
    if (state == dsBuildShadowVolumes) place.emplace(frame, target, MatrixAsDrawn(frame, *this));
    const TZEPXFormScope placed(frame, target.ExistingXForm());
    target.DrawChildren(scene, state, kind);
    if (alive && targetAlive && !frame.SceneIsGone) DrawOwn(target, *this, scene, state, kind);
}

} // namespace ZEP
