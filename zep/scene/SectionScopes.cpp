#include <zep/scene/SectionScopes.h>

#include <zep/scene/GLState.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vectors.h>

namespace ZEP {

namespace {

/// What is loaded, exactly where the camera can tell: a mirror or a host loads others.
TGLMatrixd4 LoadedView(const TZEPCut& cut) {
    if (cut.View) {
        const auto& shift = (*cut.View)[3];
        if (IsLoaded(*cut.View, Length({shift[0], shift[1], shift[2]}))) return *cut.View;
    }
    return LoadedMatrix(GL_MODELVIEW_MATRIX);
}

/// As the eye has it. \param view  turns and mirrors, shifts, and keeps lengths
TGLArrayd4 InEyeFrame(const TGLArrayd4& plane, const TGLMatrixd4& view) {
    TGLArrayd4 seen{0, 0, 0, plane[3]};
    for (std::size_t k = 0; k < 3; ++k) {
        for (std::size_t j = 0; j < 3; ++j) seen[k] += plane[j] * view[j][k];
        seen[3] -= seen[k] * view[3][k];
    }
    return seen;
}

} // namespace

TZEPCutScope::TZEPCutScope(TZEPFrame& frame, const TZEPSceneCamera& camera)
    : m_frame(frame), m_outer(frame.Cut), m_cut{camera.Sections(), {}} {
    const bool cuts = !camera.Sheet() && AnyCuts(m_cut.Sections);
    if (cuts) m_cut.View = camera.ExactView();
    frame.Cut = cuts ? &m_cut : nullptr;
}

TZEPSectionScope::TZEPSectionScope(TZEPFrame& frame) : m_frame(frame) {
    if (frame.Cut) Enter(LoadedView(*frame.Cut));
}

TZEPSectionScope::TZEPSectionScope(TZEPFrame& frame, const TGLMatrixd4& view) : m_frame(frame) {
    if (frame.Cut) Enter(view);
}

void TZEPSectionScope::Enter(const TGLMatrixd4& view) {
    m_attributes.emplace(GL_TRANSFORM_BIT);
    m_culled = glIsEnabled(GL_CULL_FACE);
    glDisable(GL_CULL_FACE);
    glMatrixMode(GL_MODELVIEW);
    const TZEPMatrixScope matrix;
    glLoadIdentity();
    for (std::size_t i = 0; i < SectionCount; ++i) {
        const std::optional<TGLArrayd4> plane = m_frame.Cut->Sections[i].Plane();
        if (!plane) continue;
        glClipPlane(SectionPlanes[i], InEyeFrame(*plane, view).data());
        glEnable(SectionPlanes[i]);
    }
}

TZEPSectionScope::~TZEPSectionScope() {
    if (!m_attributes) return;
    m_frame.Run.End();
    if (m_culled) glEnable(GL_CULL_FACE);
}

TZEPWholeScope::TZEPWholeScope(TZEPFrame& frame) : m_frame(frame), m_outer(frame.Cut) {
    if (!m_outer) return;
    m_attributes.emplace(GL_TRANSFORM_BIT);
    for (const GLenum plane : SectionPlanes) glDisable(plane);
    frame.Cut = nullptr;
}

} // namespace ZEP
