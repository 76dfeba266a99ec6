#include "tests/gl/CallRecorder.h"
#include "tests/gl/GlArguments.h"

#include <GL/glu.h>

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace ZEP::GlArgument;

void* Symbol(const char* name) {
    for (const char* library : {"libOpenGL.so.0", "libGLU.so.1"}) {
        void* handle = dlopen(library, RTLD_NOW | RTLD_GLOBAL);
        if (void* symbol = handle ? dlsym(handle, name) : nullptr) return symbol;
    }
    std::fprintf(stderr, "no library has %s\n", name);
    std::abort();
}

template <class Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(Symbol(name));
}

/// Set while a call is handed on: what the real function calls in turn is not the caller's.
bool Inside = false;

class TInside {
public:
    TInside() : m_before(Inside) { Inside = true; }
    ~TInside() { Inside = m_before; }
    TInside(const TInside&) = delete;
    TInside& operator=(const TInside&) = delete;

private:
    bool m_before;
};

template <class Function, class... Arguments>
auto Forward(const char* name, bool query, Function* real, const Arguments&... arguments) {
    if (!query && !Inside && ZEP::GlCalls::IsRecording()) {
        std::string list;
        ((list += ", ", list += Text(arguments)), ...);
        ZEP::GlCalls::Note(std::string(name) + '(' + list.erase(0, 2) + ')');
    }
    const TInside inside;
    return real(arguments...);
}

int MaterialSize(GLenum name) {
    if (name == GL_SHININESS) return 1;
    return name == GL_COLOR_INDEXES ? 3 : 4;
}

int LightSize(GLenum name) {
    if (name == GL_SPOT_DIRECTION) return 3;
    return name <= GL_POSITION ? 4 : 1;
}

int SizeIfVector(GLenum name, GLenum vector) {
    return name == vector ? 4 : 1;
}

} // namespace

// The functions themselves are written by GlFunctions.cmake from the headers of OpenGL and GLU.
#define FUNCTION(query, result, name, parameters, ...)                                             \
    extern "C" result name parameters {                                                            \
        static const auto real = Real<decltype(name)>(#name);                                      \
        return Forward(#name, query, real __VA_OPT__(, ) __VA_ARGS__);                             \
    }
#include "GlFunctions.inc"
