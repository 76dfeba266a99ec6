#pragma once

#include <GL/gl.h>

namespace ZEP {

/// Counts what `draw` draws before what is there into the stencil buffer: front faces by the
/// operation `up`, then back faces by `down`. Left is how deep that lies within.
template <class Draw>
void CountFaces(GLenum up, GLenum down, Draw&& draw) {
    glStencilOp(GL_KEEP, GL_KEEP, up);
    glCullFace(GL_BACK);
    draw();
    glStencilOp(GL_KEEP, GL_KEEP, down);
    glCullFace(GL_FRONT);
    draw();
}

} // namespace ZEP
