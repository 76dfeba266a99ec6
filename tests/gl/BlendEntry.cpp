#include "tests/gl/BlendEntry.h"

#include <zep/gl/Names.h>

#include <GL/glx.h>

namespace ZEP {

TBlendEntry::TBlendEntry() {
    BlendEquationEXT = reinterpret_cast<TBlendEquation>(
        glXGetProcAddress(reinterpret_cast<const GLubyte*>("glBlendEquationEXT")));
    StencilWrapEXT = true;
}

TBlendEntry::~TBlendEntry() {
    BlendEquationEXT = nullptr;
    StencilWrapEXT = false;
}

} // namespace ZEP
