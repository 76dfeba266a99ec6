#pragma once

#include <zep/Export.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Sections.h>

#include <GL/gl.h>

#include <array>
#include <optional>

namespace ZEP {

class TZEPSceneCamera;

/// OpenGL's clip planes of sections.
inline constexpr std::array<GLenum, SectionCount> SectionPlanes{GL_CLIP_PLANE1, GL_CLIP_PLANE2,
                                                                GL_CLIP_PLANE3};

/// What a frame draws while this lives is cut as a camera's view is; a sheet is not cut.
class ZEP_CORE_EXPORT TZEPCutScope {
public:
    TZEPCutScope(TZEPFrame& frame, const TZEPSceneCamera& camera);
    ~TZEPCutScope() { m_frame.Cut = m_outer; }
    TZEPCutScope(const TZEPCutScope&) = delete;
    TZEPCutScope& operator=(const TZEPCutScope&) = delete;

private:
    TZEPFrame& m_frame;
    const TZEPCut* m_outer;
    TZEPCut m_cut;
};

/// While it lives OpenGL leaves out what the view of a frame cuts away, and shows the insides of
/// what is cut open: no face is culled. Nothing where nothing is cut.
class ZEP_CORE_EXPORT TZEPSectionScope {
public:
    /// \param view  from the scene to the eye
    TZEPSectionScope(TZEPFrame& frame, const TGLMatrixd4& view);
    /// The same, as it is loaded.
    explicit TZEPSectionScope(TZEPFrame& frame);
    ~TZEPSectionScope();
    TZEPSectionScope(const TZEPSectionScope&) = delete;
    TZEPSectionScope& operator=(const TZEPSectionScope&) = delete;

private:
    void Enter(const TGLMatrixd4& view);

    TZEPFrame& m_frame;
    std::optional<TZEPAttribScope> m_attributes;
    bool m_culled = false;
};

/// While it lives nothing is cut.
class ZEP_CORE_EXPORT TZEPWholeScope {
public:
    explicit TZEPWholeScope(TZEPFrame& frame);
    ~TZEPWholeScope() { m_frame.Cut = m_outer; }
    TZEPWholeScope(const TZEPWholeScope&) = delete;
    TZEPWholeScope& operator=(const TZEPWholeScope&) = delete;

private:
    TZEPFrame& m_frame;
    const TZEPCut* m_outer;
    std::optional<TZEPAttribScope> m_attributes;
};

} // namespace ZEP
