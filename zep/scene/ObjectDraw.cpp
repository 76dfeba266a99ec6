#include <zep/framework/Watch.h>
#include <zep/scene/ChildList.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Object.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/SectionCaps.h>
#include <zep/scene/ViewVolume.h>
#include <zep/scene/XForm.h>

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <array>
#include <optional>

namespace ZEP {

namespace {

constexpr GLbitfield SelectionAttributes =
    GL_POINT_BIT | GL_LINE_BIT | GL_LIGHTING_BIT | GL_ENABLE_BIT;
constexpr GLushort EverySecondPixel = 0xAAAA;

void SendCorner(const TGLArrayd3& min, const TGLArrayd3& max, unsigned corner) {
    // Corners 0 to 3 go round the rectangle at minimum z, 4 to 7 round that at maximum z.
    const bool right = (corner & 3U) == 1 || (corner & 3U) == 2;
    const bool back = (corner & 3U) >= 2;
    glVertex3d(right ? max[0] : min[0], back ? max[1] : min[1], corner >= 4 ? max[2] : min[2]);
}

void SendBox(const TGLArrayd3& min, const TGLArrayd3& max) {
    for (const unsigned first : {0U, 4U}) {
        glBegin(GL_LINE_LOOP);
        for (unsigned i = 0; i < 4; ++i) SendCorner(min, max, first + i);
        glEnd();
    }
    glBegin(GL_LINES);
    for (unsigned i = 0; i < 4; ++i) {
        SendCorner(min, max, i);
        SendCorner(min, max, i + 4);
    }
    glEnd();
    glBegin(GL_POINTS);
    for (unsigned i = 0; i < 8; ++i) SendCorner(min, max, i);
    glEnd();
}

/// Any object may have something to draw there.
bool IsForAll(TZEPDrawState state) {
    return state != dsShadowObjects && (ObjectPasses & PassBit(state)) != 0;
}

} // namespace

void TZEPObject::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (!m_visible) return;
    if (state == dsTransparent && !Children() && IsKnownOpaque()) return;
    std::optional<TZEPFrameLoan> loan;
    if (m_scene != &scene) loan.emplace(m_scene, scene);
    TZEPFrame& frame = scene.Frame(); // stays, where what is drawn frees the scene
    const TZEPXFormScope transform(frame, m_xform.get());
    const bool topLevel = m_parent == scene.AsObject();
    const bool drawsItself = !scene.QuickDraw() || topLevel || DrawsInQuickDraw();
    const TZEPWatch alive(this);
    if (drawsItself && !IsOutOfView()) DrawOwn(*this, *this, scene, state, kind);
    if (alive && !frame.SceneIsGone && Children()) DrawChildren(scene, state, kind);
}

void TZEPObject::DrawOwn(TZEPObject& object, const TZEPObject& flags, TZEPSceneContext& scene,
                         TZEPDrawState state, TZEPDrawKind kind) {
    if (state == dsTransparent && object.IsKnownOpaque()) return;
    TZEPFrame& frame = scene.Frame();
    const bool shares = object.SharesDrawRun();
    const TZEPDrawRun::Turn turn(frame.Run, shares);
    const auto draw = [&] {
        if (kind == dkSelect) return object.DrawForSelect(scene);
        const bool outlines = kind == dkDraft || flags.m_drawType == dtLine;
        if (!frame.Cut || outlines) return object.DrawPass(flags, scene, state, kind);
        const TZEPWatch alive(&object);
        object.DrawPass(flags, scene, state, kind);
        if (frame.Cut && alive && !frame.SceneIsGone) DrawCaps(object, scene, state);
    };
    if (shares || object.IsOfKnownClass()) return draw();
    const TZEPViewFrame anywhere(frame, std::nullopt); // it may draw others in places of its own
    draw();
}

TZEPPassSet TZEPObject::Passes() const {
    if (!IsOfKnownClass()) return AllPasses;
    const TZEPPassSet own = ObjectPasses & ~PassBit(dsShadowObjects);
    return SidePasses() | own | (m_receivesShadows ? PassBit(dsShadowObjects) : 0);
}

bool TZEPObject::IsKnownOpaque() const {
    return !DrawsTransparent() && IsOfKnownClass();
}

void TZEPObject::DrawForSelect(TZEPSceneContext& scene) {
    TZEPFrame& frame = scene.Frame();
    const QScopedValueRollback selects(frame.IsNotRendering, true);
    glPushName(scene.SelectName(this));
    DrawSpecific(GL_FRONT_AND_BACK, false);
    frame.Run.End();
    glPopName();
}

void TZEPObject::DrawPass(const TZEPObject& flags, TZEPSceneContext& scene, TZEPDrawState state,
                          TZEPDrawKind kind) {
    const bool draft = kind == dkDraft || flags.m_drawType == dtLine;
    switch (state) {
    case dsPre:
        return DrawPre();
    case dsCamera:
        return;
    case dsAllLights:
        return DrawLight(false);
    case dsShadowLights:
        return DrawLight(true);
    case dsAllObjects:
        return DrawMain(draft);
    case dsNonShadowObjects:
        if (scene.Shadows() && !flags.m_receivesShadows) DrawMain(draft);
        return;
    case dsShadowObjects:
        if (scene.Shadows() && flags.m_receivesShadows) DrawMain(draft);
        return;
    case dsReflections:
        return DrawReflections();
    case dsBuildShadowVolumes:
        return BuildShadowVolumes();
    case dsDrawShadowVolumes:
        return DrawShadowVolumes();
    case dsShadows:
        return DrawShadows(draft);
    case dsTransparent:
        return DrawTransparent(draft);
    case dsPost:
        return DrawPost();
    }
}

void TZEPObject::DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    TZEPChildList<TZEPObject>* const children = Children();
    if (!children) return;
    TZEPFrame& frame = scene.Frame();
    const auto end = qScopeGuard([&frame] { frame.Run.EndNeighbours(); });
    const auto draw = [&](TZEPObject* child) {
        if (frame.SceneIsGone) return;
        frame.Run.Next(typeid(*child));
        child->Draw(scene, state, kind);
    };
    const bool some = kind != dkSelect && !IsForAll(state);
    const auto extend = [](TZEPBlockBox& box, const TZEPObject* child) { child->Extend(box); };
    const bool bounds = TZEPViewFrame::Bounds(frame);
    if (!some && !bounds) return children->ForEach(draw);
    children->ForEachBlock([&](std::size_t block) {
        const TZEPBlockBox& box = children->Box(block, extend);
        if (some && (box.Passes & PassBit(state)) == 0) return;
        const TZEPSeen seen =
            box.Bounded && bounds ? TZEPViewFrame::Shows(frame, box) : TZEPSeen::Part;
        if (seen == TZEPSeen::Nothing) return;
        const bool tests = bounds && seen == TZEPSeen::Part;
        children->ForEachIn(block, [&](TZEPObject* child) {
            if (!tests || child->IsInView()) draw(child);
        });
    });
}

void TZEPObject::QuickDraw() {
    if (m_visible) DrawMain(m_drawType == dtLine);
}

void TZEPObject::DrawSpecific(GLenum, bool) {}

void TZEPObject::DrawMain(bool draft) {
    DrawSpecific(GL_FRONT_AND_BACK, draft);
    if (m_selected) DrawSelection();
}

void TZEPObject::DrawTransparent(bool draft) {
    DrawSpecific(GL_FRONT_AND_BACK, draft);
    if (m_selected) DrawSelection();
}

void TZEPObject::DrawSelection() {
    TGLArrayd3 min;
    TGLArrayd3 max;
    GetSize(min, max);
    glPushAttrib(SelectionAttributes);
    glEnable(GL_COLOR_MATERIAL);
    glDisable(GL_LIGHTING);
    glLineStipple(1, EverySecondPixel);
    glEnable(GL_LINE_STIPPLE);
    glPointSize(3);
    glColor3f(1, 1, 1);
    SendBox(min, max);
    glPopAttrib();
}

} // namespace ZEP
