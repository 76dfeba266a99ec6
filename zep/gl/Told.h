#pragma once

#include <zep/Export.h>

#include <GL/gl.h>

namespace ZEP {

/// Who makes lines and areas of what OpenGL feeds back (`GL_FEEDBACK`) is told what it does not
/// say: how wide lines and points are, whether lines are dotted, and whether alpha counts.
struct TZEPTold {
    void (*LineWidth)(GLfloat pixels) = nullptr;
    void (*PointSize)(GLfloat pixels) = nullptr;
    void (*Dotted)(bool on) = nullptr; ///< by OpenGL's present pattern
    void (*Blended)(bool on) = nullptr;
};

/// \param told  none of it, at first, for nobody
ZEP_CORE_EXPORT void SetTold(const TZEPTold& told);

/// \name The calls of OpenGL that are told
/// @{
ZEP_CORE_EXPORT void SetLineWidth(GLfloat pixels);
void SetPointSize(GLfloat pixels);
/// @}

/// \name Told beside what OpenGL is
/// @{
void TellDotted(bool on);
void TellBlended(bool on);
/// @}

} // namespace ZEP
