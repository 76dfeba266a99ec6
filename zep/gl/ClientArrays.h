#pragma once

#include <GL/gl.h>

#include <initializer_list>

namespace ZEP {

/// Saves the client's arrays, which `glPopClientAttrib` brings back, and enables just these:
/// whatever a host left enabled would be read from where it was, and painted.
void PushClientArrays(std::initializer_list<GLenum> arrays);

/// While it lives only some of the client's arrays are enabled.
class TClientArraysScope {
public:
    TClientArraysScope(std::initializer_list<GLenum> arrays) { PushClientArrays(arrays); }
    ~TClientArraysScope() { glPopClientAttrib(); }
    TClientArraysScope(const TClientArraysScope&) = delete;
    TClientArraysScope& operator=(const TClientArraysScope&) = delete;
};

} // namespace ZEP
