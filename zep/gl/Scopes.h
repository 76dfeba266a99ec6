#pragma once

#include <GL/gl.h>

namespace ZEP {

/// \name What was pushed comes back, whatever is thrown in between
/// @{

/// The current matrix.
class TZEPMatrixScope {
public:
    TZEPMatrixScope() { glPushMatrix(); }
    ~TZEPMatrixScope() { glPopMatrix(); }
    TZEPMatrixScope(const TZEPMatrixScope&) = delete;
    TZEPMatrixScope& operator=(const TZEPMatrixScope&) = delete;
};

/// The projection and the model-view matrix, which is the current one then and thereafter.
class TZEPMatricesScope {
public:
    TZEPMatricesScope() { Push(); }
    ~TZEPMatricesScope() { Pop(); }
    TZEPMatricesScope(const TZEPMatricesScope&) = delete;
    TZEPMatricesScope& operator=(const TZEPMatricesScope&) = delete;

    static void Push() { ForBoth(glPushMatrix); }
    static void Pop() { ForBoth(glPopMatrix); }

private:
    static void ForBoth(void (*action)()) {
        glMatrixMode(GL_PROJECTION);
        action();
        glMatrixMode(GL_MODELVIEW);
        action();
    }
};

/// Groups of OpenGL's state.
class TZEPAttribScope {
public:
    explicit TZEPAttribScope(GLbitfield groups) { glPushAttrib(groups); }
    ~TZEPAttribScope() { glPopAttrib(); }
    TZEPAttribScope(const TZEPAttribScope&) = delete;
    TZEPAttribScope& operator=(const TZEPAttribScope&) = delete;
};
/// @}

/// The vertexes of one primitive come while it lives.
class TPrimitiveScope {
public:
    explicit TPrimitiveScope(GLenum primitive) { glBegin(primitive); }
    ~TPrimitiveScope() { glEnd(); }
    TPrimitiveScope(const TPrimitiveScope&) = delete;
    TPrimitiveScope& operator=(const TPrimitiveScope&) = delete;
};

/// All four channels of colour are written, or none.
inline void WriteColors(bool on) {
    const GLboolean mask = on ? GL_TRUE : GL_FALSE;
    glColorMask(mask, mask, mask, mask);
}

} // namespace ZEP
