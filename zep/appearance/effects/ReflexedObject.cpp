#include <zep/appearance/effects/ReflexedObject.h>

#include <zep/appearance/materials/Material.h>
#include <zep/framework/Property.h>
#include <zep/framework/Watch.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SectionScopes.h>
#include <zep/scene/ViewVolume.h>

#include <QScopeGuard>

#include <cmath>

namespace ZEP {

namespace {

constexpr GLint Mark = 0x80; // of the mirror's pixels in the stencil buffer

/// The distance of the eye from the plane, and for a view without an eye how far it looks against
/// the plane's normal.
double SideOfEye(const TGLArrayd4& plane, const TGLMatrixd4& camera) {
    const bool isParallel = LoadedMatrix(GL_PROJECTION_MATRIX)[3][3] != 0;
    double side = isParallel ? 0 : plane[3];
    for (std::size_t k = 0; k < 3; ++k) {
        double eye = camera[k][2]; // the direction to it
        if (!isParallel) {
            eye = 0;
            for (std::size_t j = 0; j < 3; ++j) eye -= camera[k][j] * camera[3][j];
        }
        side += plane[k] * eye;
    }
    return side;
}

void ApplyWithAlpha(const TZEPDrawRun& run, TZEPMaterial& material, float front) {
    material.ApplayWithFrontAlpha(front);
    run.ApplyRules(material, GL_FRONT_AND_BACK);
}

void TestMark(GLenum function) {
    glStencilFunc(function, Mark, Mark);
}

} // namespace

void TZEPReflexedObject::SetReflection(double reflection) {
    if (Change(m_reflection, reflection)) Invalidate(this);
}

TZEPPassSet TZEPReflexedObject::SidePasses() const {
    return TZEPShadowedObject::SidePasses() | (m_reflection != 0 ? PassBit(dsReflections) : 0);
}

bool TZEPReflexedObject::Mirrors() const {
    return m_reflection > 0 && SceneContext() && SceneContext()->Reflections();
}

/// Its front is where the eye is. None for an eye in the plane, and where there is no plane.
std::optional<TGLArrayd4> TZEPReflexedObject::MirrorPlane(const TGLMatrixd4& place,
                                                          const TGLMatrixd4& camera) const {
    std::array<TGLArrayd3, 3> points = MirrorPoints();
    for (TGLArrayd3& point : points) Xformd(place, point);
    TGLArrayd4 plane{};
    InitPlaned(points[0], points[1], points[2], plane);
    const double side = SideOfEye(plane, camera);
    if (!std::isfinite(side) || side == 0) return {};
    if (side < 0)
        for (double& part : plane) part = -part;
    return plane;
}

// --- what it shows -------------------------------------------------------------------------------

/// OpenGL's state while a mirror's image is drawn.
class TZEPReflexedObject::TImage {
public:
    TImage(TZEPReflexedObject& mirror, TZEPScene& scene)
        : m_mirror(mirror), m_alive(&mirror), m_scene(scene), m_frame(scene.Frame()),
          m_camera(scene.SavedModelView()), m_place(LoadedMatrix(GL_MODELVIEW_MATRIX)) {}
    ~TImage() { WriteColors(true); }
    TImage(const TImage&) = delete;
    TImage& operator=(const TImage&) = delete;

    void Draw() {
        LoadPlace();
        TGLArrayd3 min;
        TGLArrayd3 max;
        m_mirror.GetSize(min, max);
        if (TZEPViewVolume::OfContext(1).Shows(min, max) == TZEPSeen::Nothing) return;
        const auto plane = m_mirror.MirrorPlane(m_place, m_camera);
        if (!plane) return;
        const TZEPSectionScope sections(m_frame, m_camera);
        MarkPixels();
        DrawMirrored(*plane);
        if (m_alive && !m_mirror.DrawnMaterial().IsTransparent()) CloseDepth();
        glClear(GL_STENCIL_BUFFER_BIT);
    }

private:
    void LoadPlace() const {
        glLoadMatrixd(m_camera[0].data());
        glMultMatrixd(m_place[0].data());
    }

    void DrawFront() {
        if (m_alive) m_mirror.DrawSpecific(GL_FRONT, false);
    }

    void MarkPixels() {
        const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT);
        glDepthMask(GL_FALSE);
        glEnable(GL_STENCIL_TEST);
        glEnable(GL_CULL_FACE);
        WriteColors(false);
        glClearStencil(0);
        glClear(GL_STENCIL_BUFFER_BIT);
        TestMark(GL_ALWAYS);
        glStencilOp(GL_REPLACE, GL_REPLACE, GL_REPLACE);
        DrawFront();
        // Where another mirror is nearer, that one has drawn already. Elsewhere whatever is there
        // is farther than the mirror, but may be nearer than what it shows.
        glStencilOp(GL_KEEP, GL_ZERO, GL_KEEP);
        DrawFront();
        TestMark(GL_EQUAL);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        glDepthMask(GL_TRUE);
        glDepthFunc(GL_ALWAYS);
        glDepthRange(1, 1);
        DrawFront();
        glDepthRange(0, 1);
    }

    void DrawMirrored(const TGLArrayd4& plane) {
        const auto finish = qScopeGuard([] {
            glDisable(GL_POLYGON_OFFSET_FILL);
            glDisable(GL_CLIP_PLANE0);
            glDisable(GL_STENCIL_TEST);
            glFrontFace(GL_CCW);
        });
        TGLMatrixd4 mirrored;
        MirrorMatrixd(plane, mirrored);
        glLoadMatrixd(m_camera[0].data());
        glMultMatrixd(mirrored[0].data());
        glClipPlane(GL_CLIP_PLANE0, plane.data());
        glEnable(GL_CLIP_PLANE0);
        glEnable(GL_STENCIL_TEST);
        glFrontFace(GL_CW);
        WriteColors(true);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        TestMark(GL_EQUAL);
        glPolygonOffset(-0.05F, -0.5F);
        glEnable(GL_POLYGON_OFFSET_FILL);
        for (const TZEPDrawState state : {dsAllLights, dsAllObjects, dsTransparent})
            if (!m_frame.SceneIsGone) m_scene.Draw(m_scene, state, dkFull);
    }

    /// What stands behind the mirror must not be drawn over what it shows.
    void CloseDepth() {
        const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT);
        LoadPlace();
        WriteColors(false);
        glEnable(GL_CULL_FACE);
        glEnable(GL_STENCIL_TEST);
        glDepthFunc(GL_ALWAYS);
        glPolygonOffset(1, 2); // the mirror itself comes before that
        glEnable(GL_POLYGON_OFFSET_FILL);
        DrawFront();
    }

    TZEPReflexedObject& m_mirror;
    TZEPWatch m_alive; ///< what is drawn may free the mirror
    TZEPScene& m_scene;
    TZEPFrame& m_frame;
    TGLMatrixd4 m_camera;
    TGLMatrixd4 m_place; ///< of the mirror, in the absolute frame
};

// A mirror that faces another one is drawn by that, but shows nothing of its own.
void TZEPReflexedObject::DrawReflections() {
    if (m_drawsImage || m_reflection == 0 || !Scene() || !Scene()->Reflections()) return;
    DrawFrame().Run.End();
    m_drawsImage = true;
    const TZEPWatch alive(this);
    const auto done = qScopeGuard([this, &alive] {
        if (alive) m_drawsImage = false;
    });
    const TZEPMatrixScope matrix;
    TImage(*this, *Scene()).Draw();
}

// --- the mirror itself ---------------------------------------------------------------------------

/// The front faces, then the back faces, which are opaque: `between` sets what they need.
template <class Between>
void TZEPReflexedObject::DrawSides(Between&& between) {
    const TZEPWatch alive(this);
    PrepareGeometry();
    DrawSpecific(GL_FRONT, false);
    between();
    if (alive) DrawSpecific(GL_BACK, false);
}

// In its own image it would lie upon what it shows, and where shadows are drawn black, what it
// shows has no shadow.
void TZEPReflexedObject::DrawMain(bool draft) {
    if (m_drawsImage) return;
    if (!Mirrors()) return TZEPShadowedObject::DrawMain(draft);
    if (DrawFrame().DrawsShadowsBlack) return;
    TZEPMaterial& material = DrawnMaterial();
    if (material.IsTransparent()) return;
    DrawFrame().Run.End();
    const TZEPWatch alive(this); // what it draws may free it
    {
        const TZEPAttribScope attributes(GL_ENABLE_BIT);
        const TZEPMaterialUse use(material);
        ApplyWithAlpha(DrawFrame().Run, material, static_cast<float>(1 - m_reflection));
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_CULL_FACE);
        glEnable(GL_BLEND);
        DrawSides([] { glDisable(GL_BLEND); });
    }
    if (alive && Selected()) DrawSelection();
}

void TZEPReflexedObject::DrawTransparent(bool draft) {
    if (m_drawsImage) return;
    if (!Mirrors()) return TZEPShadowedObject::DrawTransparent(draft);
    TZEPMaterial& material = DrawnMaterial();
    if (!material.IsTransparent()) return;
    DrawFrame().Run.End();
    const TZEPWatch alive(this); // what it draws may free it
    {
        const TZEPAttribScope attributes(GL_ENABLE_BIT);
        const TZEPMaterialUse use(material);
        const double alpha = 1 - m_reflection * static_cast<double>(material.Transparency());
        ApplyWithAlpha(DrawFrame().Run, material, static_cast<float>(alpha));
        glEnable(GL_CULL_FACE);
        PrepareGeometry();
        DrawSpecific(GL_FRONT_AND_BACK, false);
    }
    if (alive && Selected()) DrawSelection();
}

// Of the light that falls on a mirror no more is seen than of its own colour: that much is taken
// off what the mirror shows, or where images are added up, added to it.
void TZEPReflexedObject::DrawShadows(bool draft) {
    if (!Mirrors()) return TZEPShadowedObject::DrawShadows(draft);
    TZEPMaterial& material = DrawnMaterial();
    if (!ReceivesShadows() || material.IsTransparent()) return;
    DrawFrame().Run.End();
    const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT);
    const TZEPMaterialUse use(material);
    const bool adds = SceneContext()->AccumShadows();
    const double part = (1 - m_reflection) / (adds ? DrawFrame().ShadowImagesLeft : 1);
    ApplyWithAlpha(DrawFrame().Run, material, static_cast<float>(part));
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    DrawSides([adds] {
        if (adds) return glDisable(GL_BLEND);
        glBlendFunc(GL_ONE, GL_ONE);
    });
}

} // namespace ZEP
