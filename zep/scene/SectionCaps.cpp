#include <zep/scene/SectionCaps.h>

#include <zep/appearance/materials/Material.h>
#include <zep/framework/Watch.h>
#include <zep/gl/StencilCount.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Object.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/SectionScopes.h>
#include <zep/scene/SeenRegion.h>
#include <zep/scene/Vectors.h>

#include <GL/glext.h>

#include <algorithm>
#include <initializer_list>

namespace ZEP {

namespace {

constexpr GLuint Mirror = 0x80; // marks the pixels of a mirror that is being filled
constexpr GLuint Counts = 0x7F;

struct TBox {
    TGLArrayd3 Min, Max;
};

/// A plane in the frame that `place` leads out of.
TGLArrayd4 Within(const TGLMatrixd4& place, const TGLArrayd4& plane) {
    TGLArrayd4 own{0, 0, 0, plane[3]};
    for (std::size_t k = 0; k < 3; ++k) {
        for (std::size_t j = 0; j < 3; ++j) own[k] += place[k][j] * plane[j];
        own[3] += place[3][k] * plane[k];
    }
    return own;
}

TGLArrayd3 NormalOf(const TGLArrayd4& plane) {
    return {plane[0], plane[1], plane[2]};
}

bool Crosses(const TGLArrayd4& plane, const TBox& box) {
    const TGLArrayd3 half = (box.Max - box.Min) / 2;
    double reach = 0;
    for (std::size_t k = 0; k < 3; ++k) reach += std::abs(plane[k]) * half[k];
    return std::abs(Dotd(NormalOf(plane), Middle(box.Min, box.Max)) + plane[3]) < reach;
}

/// The eye is on the side that is cut away. \param plane  in its frame
bool FacesEye(const TGLArrayd4& plane) {
    const bool isParallel = LoadedMatrix(GL_PROJECTION_MATRIX)[3][3] != 0;
    return (isParallel ? plane[2] : plane[3]) < 0;
}

/// Covers the plane wherever it is in the box.
void SendSquare(const TGLArrayd4& plane, const TBox& box) {
    const TGLArrayd3 normal = Unit(NormalOf(plane));
    const TGLArrayd3 middle = Middle(box.Min, box.Max);
    const double away = (Dotd(NormalOf(plane), middle) + plane[3]) / Length(NormalOf(plane));
    const TGLArrayd3 at = middle - away * normal;
    const TGLArrayd3 side = Unit(Cross(normal, std::abs(normal[0]) < 0.9 ? unitx : unity));
    const double reach = Distance(box.Min, box.Max);
    const TGLArrayd3 u = reach * side;
    const TGLArrayd3 v = reach * Cross(normal, side);
    const TPrimitiveScope square(GL_QUADS);
    glNormal3dv((-normal).data()); // to what is cut away
    for (const TGLArrayd3& corner : {at - u - v, at + u - v, at + u + v, at - u + v})
        glVertex3dv(corner.data());
}

/// The caps of one object; its drawing may free it.
class TCaps {
public:
    TCaps(TZEPObject& object, TZEPFrame& frame, const TZEPRegion& region)
        : m_object(object), m_alive(&object), m_frame(frame),
          m_mirrored(glIsEnabled(GL_STENCIL_TEST) ? Mirror : 0) {
        std::array<GLint, 4> viewport{};
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        glEnable(GL_SCISSOR_TEST);
        glScissor(viewport[0] + region.X, viewport[1] + region.Y, region.Width, region.Height);
        glStencilMask(Counts);
        glEnable(GL_STENCIL_TEST);
        glDisable(GL_POLYGON_OFFSET_FILL);
    }

    /// \param plane  the section's
    void Draw(GLenum plane, const TGLArrayd4& own, const TBox& box) const {
        glClearStencil(0);
        glClear(GL_STENCIL_BUFFER_BIT);
        Count(plane);
        TZEPMaterial* material = m_alive ? m_object.SolidMaterial() : nullptr;
        if (!material || m_frame.SceneIsGone) return;
        const TZEPAttribScope planes(GL_ENABLE_BIT);
        glDisable(plane);
        glDisable(GL_CULL_FACE);
        glStencilFunc(GL_NOTEQUAL, 0, Counts); // outside of the mirror nothing has been counted
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        {
            const TZEPDrawRun::MaterialScope applied(m_frame.Run, *material);
            m_frame.Run.OpenSurface();
            const TZEPAttribScope plain(GL_ENABLE_BIT);
            glDisable(GL_TEXTURE_2D);
            SendSquare(own, box);
        }
        m_frame.Run.End();
    }

private:
    void Count(GLenum plane) const {
        const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT |
                                         GL_POLYGON_BIT);
        for (const GLenum each : SectionPlanes)
            if (each != plane) glDisable(each);
        WriteColors(false);
        glDepthMask(GL_FALSE);
        glDisable(GL_DEPTH_TEST);
        glEnable(GL_CULL_FACE);
        glStencilFunc(m_mirrored != 0 ? GL_EQUAL : GL_ALWAYS, GLint(Mirror), Mirror);
        CountFaces(GL_INCR_WRAP, GL_DECR_WRAP, [this] {
            if (m_alive && !m_frame.SceneIsGone) m_object.DrawSpecific(GL_FRONT_AND_BACK, false);
            m_frame.Run.End();
        });
    }

    TZEPObject& m_object;
    TZEPWatch m_alive;
    TZEPFrame& m_frame;
    GLuint m_mirrored;
};

TZEPRegion RegionOf(const TBox& box) {
    TZEPSeenPart part;
    part.Add(LoadedToClip(), box.Min, box.Max);
    return part.InPixels();
}

void DrawCapsOf(TZEPObject& object, TZEPFrame& frame) {
    TBox box{};
    object.GetSize(box.Min, box.Max);
    const TGLMatrixd4 place = LoadedMatrix(GL_MODELVIEW_MATRIX);
    std::optional<TCaps> caps;
    std::optional<TZEPAttribScope> attributes;
    for (std::size_t i = 0; i < SectionCount; ++i) {
        if (!frame.Cut->Sections[i].Plane()) continue;
        TGLArrayd4 seen;
        glGetClipPlane(SectionPlanes[i], seen.data());
        const TGLArrayd4 own = Within(place, seen);
        if (!FacesEye(seen) || !Crosses(own, box)) continue;
        if (!caps) {
            const TZEPRegion region = RegionOf(box);
            if (region.IsEmpty()) return;
            frame.Run.End();
            attributes.emplace(GL_ENABLE_BIT | GL_STENCIL_BUFFER_BIT | GL_SCISSOR_BIT |
                               GL_LIGHTING_BIT | GL_CURRENT_BIT);
            glLightModelf(GL_LIGHT_MODEL_TWO_SIDE, 0); // its normal is the one to go by
            caps.emplace(object, frame, region);
        }
        caps->Draw(SectionPlanes[i], own, box);
    }
}

} // namespace

void DrawCaps(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state) {
    TZEPFrame& frame = scene.Frame();
    if (!frame.Cut || frame.IsNotRendering || frame.Carves) return;
    if (state != dsAllObjects && state != dsTransparent) return;
    const TZEPMaterial* material = object.SolidMaterial();
    if (!material || material->IsTransparent() != (state == dsTransparent)) return;
    if (HasBuffer(GL_STENCIL_BITS)) DrawCapsOf(object, frame);
}

} // namespace ZEP
