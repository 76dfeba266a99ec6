#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/framework/Watch.h>
#include <zep/gl/Names.h>
#include <zep/gl/Scopes.h>
#include <zep/gl/Told.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SectionScopes.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/ViewVolume.h>
#include <zep/scene/XForm.h>

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <initializer_list>
#include <optional>
#include <utility>

namespace ZEP {

namespace {

constexpr TGLColor NoLight{0, 0, 0, 0};
/// Brightens the averaged shadow images back.
constexpr float ReturnFactor = 1.2F;

constexpr TZEPPassSet SeenPasses = ObjectPasses | PassBit(dsShadows);

/// What is seen in a pass, for those that draw the objects themselves: lights and what casts
/// shadows may lie outside of the view, and so may what a host selects by a draw of its own.
std::optional<TZEPViewVolume> VolumeOf(TZEPDrawState state, bool bounds) {
    if (!bounds || (SeenPasses & PassBit(state)) == 0) return {};
    return TZEPViewVolume::OfSight();
}

void DisableLights() {
    for (GLenum light = GL_LIGHT0; light <= GL_LIGHT7; ++light) glDisable(light);
}

void AddWhenBlending() {
    if (BlendEquationEXT) BlendEquationEXT(GL_FUNC_ADD);
}

} // namespace

/// What a pass sets is taken back, whatever its objects throw.
class TZEPScene::TState {
public:
    TState(TZEPScene& scene, TZEPDrawState state)
        : m_scene(scene), m_frame(scene.Frame()), m_state(state),
          m_entered(scene.EnterState(state)),
          m_darkFog(state == dsDrawShadowVolumes && scene.m_darkFog) {}
    ~TState() {
        if (!m_entered) return;
        m_frame.Run.End();
        if (m_frame.SceneIsGone)
            LeaveOpenGL();
        else
            m_scene.LeaveState(m_state);
    }
    TState(const TState&) = delete;
    TState& operator=(const TState&) = delete;

    explicit operator bool() const { return m_entered; }

private:
    /// What the next frame, of another scene, would not set anew.
    void LeaveOpenGL() const {
        if (m_state == dsReflections) glPopMatrix();
        if (m_state == dsBuildShadowVolumes || m_darkFog) glPopAttrib();
        glDepthMask(GL_TRUE);
        glDisable(GL_BLEND);
    }

    TZEPScene& m_scene;
    TZEPFrame& m_frame;
    TZEPDrawState m_state;
    bool m_entered;
    bool m_darkFog;
};

void TZEPScene::SetAmbient(const TGLColor& color) const {
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, color.data());
}

void TZEPScene::ClearBuffers() const {
    const TGLColor background = ToGLColor(m_backgroundColor, 0);
    glClearStencil(0);
    glClearColor(background[0], background[1], background[2], background[3]);
    SetAmbient(ToGLColor(m_sceneAmbientColor, 1));
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    AddWhenBlending(); // the last frame with shadows left it subtracting
}

void TZEPScene::Render(TZEPSceneCamera* camera, int width, int height, bool draft) {
    if (UpdateLevel() > 0 || !camera) return;
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    SetCurrentCamera(camera);
    const TZEPCutScope cut(*frame, *camera);
    const QScopedValueRollback sheet(frame->Sheet, QPointer<TComponent>(camera->Sheet()));
    const TZEPDrawRun::RuleScope rules(
        frame->Run, {static_cast<float>(frame->Widths), frame->Run.Rules().EvenMaterials});
    frame->Kept.NextFrame();
    TrimSharedMaterials();
    // The subtractive shadows need the blend equation.
    if (!m_accumShadows && !BlendEquationEXT) m_accumShadows = true;
    ClearBuffers();
    camera->Apply(width, height, -1);
    Q_EMIT AfterCamera(this);
    if (frame->SceneIsGone) return;
    if (m_firstPasses && !frame->Sheet) DrawStates({dsPre, dsReflections}, dkFull);
    if (frame->SceneIsGone) return;
    if (!draft && DrawsShadows()) return DrawShadowedStates();
    DrawStates({dsAllLights, dsAllObjects, dsTransparent}, draft ? dkDraft : dkFull);
}

void TZEPScene::DrawStates(std::initializer_list<TZEPDrawState> states, TZEPDrawKind kind) {
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    for (const TZEPDrawState state : states)
        if (!frame->SceneIsGone) Draw(*this, state, kind);
}

bool TZEPScene::DrawsShadows() const {
    return m_shadows && !m_frame->Cut && !m_frame->Sheet && HasBuffer(GL_STENCIL_BITS) &&
           (BlendEquationEXT || HasBuffer(GL_ACCUM_RED_BITS));
}

void TZEPScene::DrawShadowedStates() {
    const auto subtracted = {dsAllLights,          dsAllObjects,        dsShadowLights,
                             dsBuildShadowVolumes, dsDrawShadowVolumes, dsAllLights,
                             dsTransparent};
    if (!m_accumShadows) return DrawStates(subtracted, dkFull);
    if (HasBuffer(GL_ACCUM_RED_BITS))
        return DrawStates({dsAllLights, dsNonShadowObjects, dsShadowLights, dsBuildShadowVolumes,
                           dsShadowObjects, dsDrawShadowVolumes, dsAllLights, dsTransparent},
                          dkFull);
    m_accumShadows = false; // for this frame
    const TZEPWatch alive(this);
    const auto chosen = qScopeGuard([this, &alive] {
        if (alive) m_accumShadows = true;
    });
    DrawStates(subtracted, dkFull);
}

void TZEPScene::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    const TZEPDrawRun::Walk walk(frame->Run);
    if (kind == dkSelect) m_selectNames.clear();
    const TState entered(*this, state);
    if (!entered) return;
    std::optional<TZEPSectionScope> sections;
    if ((SeenPasses & PassBit(state)) != 0) sections.emplace(*frame);
    const TZEPViewFrame view(*frame, VolumeOf(state, kind != dkSelect || m_selectsNear));
    if (frame->Sheet && (SeenPasses & PassBit(state)) != 0) return DrawSheet(state, kind);
    DrawChildren(scene, state, kind);
}

/// What its view shows in place of the whole, in its place and visible or not.
void TZEPScene::DrawSheet(TZEPDrawState state, TZEPDrawKind kind) {
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    auto& sheet = static_cast<TZEPObject&>(*frame->Sheet);
    if (sheet.Scene() != this) return;
    const TZEPMatrixScope place;
    const TGLMatrixd4 absolute = sheet.GetAbsoluteMatrix();
    const TZEPViewFrame view(*frame, absolute);
    glMultMatrixd(absolute[0].data());
    frame->Run.Next(typeid(sheet));
    const TZEPWatch alive(&sheet);
    DrawOwn(sheet, sheet, *this, state, kind);
    if (alive && !frame->SceneIsGone) sheet.DrawChildren(*this, state, kind);
    frame->Run.End(); // before its matrix goes
}

bool TZEPScene::EnterState(TZEPDrawState state) {
    switch (state) {
    case dsCamera:
        return false;
    case dsAllLights:
    case dsShadowLights:
        DisableLights();
        return true;
    case dsReflections:
        if (!m_reflections || !HasBuffer(GL_STENCIL_BITS)) return false;
        m_savedModelView = LoadedMatrix(GL_MODELVIEW_MATRIX);
        glPushMatrix();
        glLoadIdentity();
        return true;
    case dsBuildShadowVolumes:
        if (!m_shadows) return false;
        glPushAttrib(GL_ENABLE_BIT);
        glEnable(GL_CULL_FACE);
        m_shadowLights = 0;
        return true;
    case dsDrawShadowVolumes:
        return EnterShadowVolumes();
    case dsShadows:
        return m_shadows && m_shadowLights >= 1;
    case dsTransparent:
        AddWhenBlending();
        TellBlended(true);
        glEnable(GL_BLEND);
        glDepthMask(GL_FALSE);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        return true;
    default:
        return true;
    }
}

void TZEPScene::LeaveState(TZEPDrawState state) {
    switch (state) {
    case dsReflections:
        return glPopMatrix();
    case dsBuildShadowVolumes:
        return glPopAttrib();
    case dsDrawShadowVolumes:
        return LeaveShadowVolumes();
    case dsShadows:
        if (m_accumShadows && m_shadowLights >= 2)
            glAccum(GL_ACCUM, 1.0F / static_cast<float>(m_shadowLights + 1));
        return;
    case dsTransparent:
        TellBlended(false);
        glDepthMask(GL_TRUE);
        glDisable(GL_BLEND);
        return;
    default:
        return;
    }
}

bool TZEPScene::EnterShadowVolumes() {
    if (!m_shadows || m_shadowLights < 1) return false;
    m_savedModelView = LoadedMatrix(GL_MODELVIEW_MATRIX);
    SetAmbient(NoLight);
    if (m_accumShadows) {
        if (m_shadowLights > 1) glAccum(GL_LOAD, 1.0F / static_cast<float>(m_shadowLights + 1));
        return true;
    }
    if (BlendEquationEXT) BlendEquationEXT(GL_FUNC_REVERSE_SUBTRACT);
    glBlendFunc(GL_ONE, GL_ONE);
    glEnable(GL_BLEND);
    // Of what is taken off, fog dims the light; its own colour stays.
    m_darkFog = glIsEnabled(GL_FOG);
    if (!m_darkFog) return true;
    glPushAttrib(GL_FOG_BIT);
    glFogfv(GL_FOG_COLOR, NoLight.data());
    return true;
}

void TZEPScene::LeaveShadowVolumes() {
    SetAmbient(ToGLColor(m_sceneAmbientColor, 1));
    if (std::exchange(m_darkFog, false)) glPopAttrib();
    if (!m_accumShadows) return glDisable(GL_BLEND);
    if (m_shadowLights >= 2) glAccum(GL_RETURN, ReturnFactor);
}

} // namespace ZEP
