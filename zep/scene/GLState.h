#pragma once

#include <zep/scene/Geom.h>

#include <GL/gl.h>

namespace ZEP {

/// \name What the current context has now
/// @{

/// `GL_MODELVIEW_MATRIX` or another of its matrices.
[[nodiscard]] inline TGLMatrixd4 LoadedMatrix(GLenum which) {
    TGLMatrixd4 matrix{};
    glGetDoublev(which, matrix[0].data());
    return matrix;
}

/// From the frame that is drawn in to clip coordinates: projection · modelview.
[[nodiscard]] inline TGLMatrixd4 LoadedToClip() {
    TGLMatrixd4 matrix;
    MultMatrixd(LoadedMatrix(GL_PROJECTION_MATRIX), LoadedMatrix(GL_MODELVIEW_MATRIX), matrix);
    return matrix;
}

/// Whether the modelview matrix is that one but for the rounding of OpenGL, which counts in floats.
/// \param reach  of the places that were added up in it
[[nodiscard]] bool IsLoaded(const TGLMatrixd4& modelView, double reach);

/// \param bits  of a buffer: `GL_STENCIL_BITS`, `GL_ACCUM_RED_BITS`
[[nodiscard]] inline bool HasBuffer(GLenum bits) {
    GLint count = 0;
    glGetIntegerv(bits, &count);
    return count > 0;
}
/// @}

} // namespace ZEP
