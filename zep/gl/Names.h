#pragma once

#include <GL/gl.h>

namespace ZEP {

/// \name Names that OpenGL gave out
/// All contexts of the process share display lists and textures. A name that is freed while a
/// context is current is deleted at once; else it waits for the next frame.
/// @{
void ReleaseDisplayList(GLuint name);
void ReleaseTexture(GLuint name);
/// Deletes what waits; a frame calls it with its context current.
void DeleteReleasedNames();
/// The context binding tells whether a context is current on the window thread.
void SetContextIsCurrent(bool current);
/// @}

/// \name What there is beyond OpenGL 1.1
/// Entry points are null and flags false where the driver lacks them. The context sets them after
/// it is created.
/// @{
using TBlendEquation = void (*)(GLenum mode);
using TBlendColor = void (*)(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha);
extern TBlendEquation BlendEquationEXT;
extern TBlendColor BlendColorEXT;
/// Counts in the stencil buffer may run over (`GL_EXT_stencil_wrap`).
extern bool StencilWrapEXT;
/// @}

} // namespace ZEP
