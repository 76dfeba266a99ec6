#pragma once

#include <zep/Export.h>

#include <GL/gl.h>

namespace ZEP {

/// \name Names that OpenGL gave out
/// All contexts of the process share display lists and textures. A name that is freed while a
/// context is current is deleted at once; else it waits for the next frame.
/// @{
ZEP_CORE_EXPORT void ReleaseDisplayList(GLuint name);
ZEP_CORE_EXPORT void ReleaseTexture(GLuint name);
/// Deletes what waits; a frame calls it with its context current.
ZEP_CORE_EXPORT void DeleteReleasedNames();
/// Whoever draws tells whether a context is current on the window thread.
ZEP_CORE_EXPORT void SetContextIsCurrent(bool current);

/// Names that are freed while this lives are deleted at once; else at the next frame, since nobody
/// knows which context a host has current in between.
class TZEPNamesScope {
public:
    TZEPNamesScope() {
        SetContextIsCurrent(true);
        DeleteReleasedNames();
    }
    ~TZEPNamesScope() { SetContextIsCurrent(false); }
    TZEPNamesScope(const TZEPNamesScope&) = delete;
    TZEPNamesScope& operator=(const TZEPNamesScope&) = delete;
};
/// @}

/// \name What there is beyond OpenGL 1.1
/// Entry points are null and flags false where the driver lacks them. The context sets them after
/// it is created.
/// @{
using TBlendEquation = void (*)(GLenum mode);
using TBlendColor = void (*)(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha);
extern ZEP_CORE_EXPORT TBlendEquation BlendEquationEXT;
extern ZEP_CORE_EXPORT TBlendColor BlendColorEXT;
/// Counts in the stencil buffer may run over (`GL_EXT_stencil_wrap`).
extern ZEP_CORE_EXPORT bool StencilWrapEXT;
/// @}

} // namespace ZEP
