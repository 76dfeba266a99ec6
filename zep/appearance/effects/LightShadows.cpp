#include <zep/appearance/effects/Light.h>
#include <zep/framework/Watch.h>
#include <zep/gl/Names.h>
#include <zep/gl/Scopes.h>
#include <zep/gl/StencilCount.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>

#include <GL/glext.h>

#include <QScopeGuard>
#include <QScopedValueRollback>

namespace ZEP {

namespace {

constexpr GLint Outside = 128; // the stencil's count where no volume is
constexpr GLuint AllBits = 255;

/// What the receivers are drawn with lies nearer by a trifle than what is there of them.
void BringNearer() {
    glPolygonOffset(-0.05F, -0.5F);
    glEnable(GL_POLYGON_OFFSET_FILL);
}

/// All that is drawn while it lives comes out black, whatever colours an object sets.
class TBlackScope {
public:
    TBlackScope() {
        glEnable(GL_COLOR_MATERIAL);
        glColor3i(0, 0, 0);
        glLogicOp(GL_CLEAR);
        glEnable(GL_COLOR_LOGIC_OP);
    }
    ~TBlackScope() {
        glDisable(GL_COLOR_LOGIC_OP);
        glDisable(GL_COLOR_MATERIAL);
    }
    TBlackScope(const TBlackScope&) = delete;
    TBlackScope& operator=(const TBlackScope&) = delete;
};

} // namespace

bool TZEPLight::IsCastingIn(const TZEPSceneContext* scene) const {
    return CastsShadows() && Visible() && SceneContext() == scene && m_lightNum < LightCount;
}

TGLArrayd3 TZEPLight::Eye() const {
    if (m_positionObject) return GetCenter();
    TGLArrayd3 eye;
    ConvertToAbsolute(FirstPoint(), eye);
    return eye;
}

void TZEPLight::BuildShadowVolumes() {
    if (SceneContext() && IsCastingIn(SceneContext())) Scene()->CountShadowLight();
}

void TZEPLight::CountVolumes() const {
    const GLenum up = StencilWrapEXT ? GL_INCR_WRAP_EXT : GL_INCR;
    const GLenum down = StencilWrapEXT ? GL_DECR_WRAP_EXT : GL_DECR;
    for (const GLuint list : ShadowLists()) CountFaces(up, down, [list] { glCallList(list); });
}

/// Lights draw in the order of their numbers, those that have volumes.
int TZEPLight::ImagesLeft() const {
    int left = 0;
    ForEachCasting(SceneContext(), [&](const TZEPLight& light) {
        left += light.m_lightNum >= m_lightNum && !light.ShadowLists().empty() ? 1 : 0;
    });
    return left;
}

void TZEPLight::DrawReceivers(TZEPScene& scene) const {
    glEnable(GL_LIGHTING);
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(m_lightNum);
    glEnable(light);
    const auto off = qScopeGuard([light] { glDisable(light); });
    scene.Draw(scene, dsShadows, dkFull);
}

/// Where receivers touch, both are near enough to be drawn: once is taken off, then it counts as
/// lit.
void TZEPLight::Subtract(TZEPScene& scene) const {
    glStencilFunc(GL_NOTEQUAL, Outside, AllBits);
    glStencilOp(GL_KEEP, GL_KEEP, GL_REPLACE);
    DrawReceivers(scene);
}

void TZEPLight::Accumulate(TZEPScene& scene) const {
    TZEPFrame& frame = scene.Frame();
    const TZEPWatch alive(this); // what is drawn may free it
    const QScopedValueRollback left(frame.ShadowImagesLeft, ImagesLeft());
    if (scene.ShadowLightCount() > 1) {
        glStencilFunc(GL_NOTEQUAL, Outside, AllBits);
        const QScopedValueRollback isBlack(frame.DrawsShadowsBlack, true);
        const TBlackScope black;
        scene.Draw(scene, dsShadowObjects, dkFull);
    }
    if (!alive || frame.SceneIsGone) return;
    glStencilFunc(GL_EQUAL, Outside, AllBits);
    DrawReceivers(scene);
}

void TZEPLight::DrawShadowVolumes() {
    TZEPScene* scene = Scene();
    if (!scene || !IsCastingIn(SceneContext()) || ShadowLists().empty()) return;
    const TZEPMatrixScope matrix;
    const auto farther = qScopeGuard([] { glDisable(GL_POLYGON_OFFSET_FILL); });
    glLoadMatrixd(scene->SavedModelView()[0].data());
    const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT | GL_LIGHTING_BIT);
    {
        const auto shown = qScopeGuard([] {
            WriteColors(true);
            glCullFace(GL_BACK);
        });
        WriteColors(false);
        glDepthMask(GL_FALSE);
        glClearStencil(Outside);
        glClear(GL_STENCIL_BUFFER_BIT);
        glStencilFunc(GL_ALWAYS, GLint{AllBits}, AllBits);
        glEnable(GL_STENCIL_TEST);
        glDisable(GL_LIGHTING);
        glEnable(GL_CULL_FACE);
        CountVolumes();
        BringNearer();
    }
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    if (scene->AccumShadows()) return Accumulate(*scene);
    Subtract(*scene);
}

} // namespace ZEP
