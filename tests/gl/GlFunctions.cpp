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
    if (!Inside && ZEP::GlCalls::Recording(query)) {
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

using D = GLdouble;
using F = GLfloat;
using I = GLint;

} // namespace

// A line defines a function: result, name, parameters as in the header, arguments as written down.
#define FUNCTION(query, result, name, parameters, ...)                                             \
    extern "C" result name parameters {                                                            \
        static const auto real = Real<decltype(name)>(#name);                                      \
        return Forward(#name, query, real __VA_OPT__(, ) __VA_ARGS__);                             \
    }
#define CALL(name, parameters, ...) FUNCTION(false, void, name, parameters, __VA_ARGS__)
#define ANSWER(result, name, parameters, ...) FUNCTION(false, result, name, parameters, __VA_ARGS__)
#define QUERY(result, name, parameters, ...) FUNCTION(true, result, name, parameters, __VA_ARGS__)

// Families: by values and by pointer.
#define POINT1(name, T, t)                                                                         \
    CALL(name##1##t, (T x), x)                                                                     \
    CALL(name##1##t##v, (const T* v), Values(v, 1))
#define POINT2(name, T, t)                                                                         \
    CALL(name##2##t, (T x, T y), x, y)                                                             \
    CALL(name##2##t##v, (const T* v), Values(v, 2))
#define POINT3(name, T, t)                                                                         \
    CALL(name##3##t, (T x, T y, T z), x, y, z)                                                     \
    CALL(name##3##t##v, (const T* v), Values(v, 3))
#define POINT4(name, T, t)                                                                         \
    CALL(name##4##t, (T x, T y, T z, T w), x, y, z, w)                                             \
    CALL(name##4##t##v, (const T* v), Values(v, 4))
// A named setting of a target: `i`, `f` and their vectors.
#define SETTING(name, T, t, vector)                                                                \
    CALL(name##t, (GLenum target, GLenum key, T value), Enum{target}, Enum{key}, EnumOr<T>{value}) \
    CALL(name##t##v, (GLenum target, GLenum key, const T* v), Enum{target}, Enum{key},             \
         Settings(v, vector))
#define GLOBAL(name, T, t, vector)                                                                 \
    CALL(name##t, (GLenum key, T value), Enum{key}, EnumOr<T>{value})                              \
    CALL(name##t##v, (GLenum key, const T* v), Enum{key}, Settings(v, SizeIfVector(key, vector)))

// clang-format off
// Matrices
CALL(glMatrixMode, (GLenum mode), Enum{mode})
CALL(glPushMatrix, ())
CALL(glPopMatrix, ())
CALL(glLoadIdentity, ())
CALL(glLoadMatrixd, (const D* m), Values(m, 16))
CALL(glLoadMatrixf, (const F* m), Values(m, 16))
CALL(glMultMatrixd, (const D* m), Values(m, 16))
CALL(glMultMatrixf, (const F* m), Values(m, 16))
CALL(glTranslated, (D x, D y, D z), x, y, z)
CALL(glTranslatef, (F x, F y, F z), x, y, z)
CALL(glRotated, (D angle, D x, D y, D z), angle, x, y, z)
CALL(glRotatef, (F angle, F x, F y, F z), angle, x, y, z)
CALL(glScaled, (D x, D y, D z), x, y, z)
CALL(glScalef, (F x, F y, F z), x, y, z)
CALL(glOrtho, (D l, D r, D b, D t, D n, D f), l, r, b, t, n, f)
CALL(glFrustum, (D l, D r, D b, D t, D n, D f), l, r, b, t, n, f)
CALL(glViewport, (I x, I y, GLsizei w, GLsizei h), x, y, w, h)
CALL(glDepthRange, (D n, D f), n, f)
CALL(gluPerspective, (D fovy, D aspect, D n, D f), fovy, aspect, n, f)
CALL(gluOrtho2D, (D l, D r, D b, D t), l, r, b, t)
CALL(gluLookAt, (D ex, D ey, D ez, D cx, D cy, D cz, D ux, D uy, D uz),
     ex, ey, ez, cx, cy, cz, ux, uy, uz)
CALL(gluPickMatrix, (D x, D y, D w, D h, I* viewport), x, y, w, h, Memory(viewport))

// Vertices
CALL(glBegin, (GLenum mode), Primitive{mode})
CALL(glEnd, ())
POINT2(glVertex, D, d) POINT2(glVertex, F, f) POINT2(glVertex, I, i)
POINT3(glVertex, D, d) POINT3(glVertex, F, f) POINT3(glVertex, I, i)
POINT4(glVertex, D, d) POINT4(glVertex, F, f) POINT4(glVertex, I, i)
POINT3(glNormal, D, d) POINT3(glNormal, F, f)
CALL(glNormal3b, (GLbyte x, GLbyte y, GLbyte z), x, y, z)
POINT3(glColor, D, d) POINT3(glColor, F, f) POINT3(glColor, GLubyte, ub)
POINT4(glColor, D, d) POINT4(glColor, F, f) POINT4(glColor, GLubyte, ub)
POINT1(glTexCoord, D, d) POINT1(glTexCoord, F, f)
POINT2(glTexCoord, D, d) POINT2(glTexCoord, F, f)
POINT3(glTexCoord, D, d) POINT3(glTexCoord, F, f)
POINT2(glRasterPos, D, d) POINT2(glRasterPos, F, f)
POINT3(glRasterPos, D, d) POINT3(glRasterPos, F, f)
CALL(glEdgeFlag, (GLboolean flag), Boolean{flag})
CALL(glRectd, (D x1, D y1, D x2, D y2), x1, y1, x2, y2)
CALL(glRectf, (F x1, F y1, F x2, F y2), x1, y1, x2, y2)
CALL(glRecti, (I x1, I y1, I x2, I y2), x1, y1, x2, y2)
CALL(glPointSize, (F size), size)
CALL(glLineWidth, (F width), width)
CALL(glLineStipple, (I factor, GLushort pattern), factor, Mask{pattern})
CALL(glPolygonMode, (GLenum face, GLenum mode), Enum{face}, Enum{mode})
CALL(glPolygonOffset, (F factor, F units), factor, units)
CALL(glPolygonStipple, (const GLubyte* mask), Memory(mask))
CALL(glFrontFace, (GLenum mode), Enum{mode})
CALL(glCullFace, (GLenum mode), Enum{mode})
CALL(glShadeModel, (GLenum mode), Enum{mode})
CALL(glClipPlane, (GLenum plane, const D* equation), Enum{plane}, Values(equation, 4))

// Vertex arrays
CALL(glEnableClientState, (GLenum array), Enum{array})
CALL(glDisableClientState, (GLenum array), Enum{array})
CALL(glPushClientAttrib, (GLbitfield bits), Bits{bits})
CALL(glPopClientAttrib, ())
CALL(glVertexPointer, (I size, GLenum type, GLsizei stride, const GLvoid* p),
     size, Enum{type}, stride, Memory(p))
CALL(glNormalPointer, (GLenum type, GLsizei stride, const GLvoid* p), Enum{type}, stride, Memory(p))
CALL(glColorPointer, (I size, GLenum type, GLsizei stride, const GLvoid* p),
     size, Enum{type}, stride, Memory(p))
CALL(glTexCoordPointer, (I size, GLenum type, GLsizei stride, const GLvoid* p),
     size, Enum{type}, stride, Memory(p))
CALL(glDrawArrays, (GLenum mode, I first, GLsizei count), Primitive{mode}, first, count)
CALL(glDrawElements, (GLenum mode, GLsizei count, GLenum type, const GLvoid* indices),
     Primitive{mode}, count, Enum{type}, Memory(indices))
CALL(glArrayElement, (I index), index)

// State
CALL(glEnable, (GLenum capability), Enum{capability})
CALL(glDisable, (GLenum capability), Enum{capability})
CALL(glPushAttrib, (GLbitfield bits), Bits{bits})
CALL(glPopAttrib, ())
CALL(glHint, (GLenum target, GLenum mode), Enum{target}, Enum{mode})
CALL(glDepthMask, (GLboolean on), Boolean{on})
CALL(glDepthFunc, (GLenum function), Enum{function})
CALL(glColorMask, (GLboolean r, GLboolean g, GLboolean b, GLboolean a),
     Boolean{r}, Boolean{g}, Boolean{b}, Boolean{a})
CALL(glBlendFunc, (GLenum source, GLenum target), Factor{source}, Factor{target})
CALL(glAlphaFunc, (GLenum function, F reference), Enum{function}, reference)
CALL(glLogicOp, (GLenum operation), Enum{operation})
CALL(glStencilFunc, (GLenum function, I reference, GLuint mask),
     Enum{function}, reference, Mask{mask})
CALL(glStencilOp, (GLenum fail, GLenum zfail, GLenum zpass),
     Factor{fail}, Factor{zfail}, Factor{zpass})
CALL(glStencilMask, (GLuint mask), Mask{mask})
CALL(glScissor, (I x, I y, GLsizei w, GLsizei h), x, y, w, h)
CALL(glDrawBuffer, (GLenum buffer), Enum{buffer})
CALL(glReadBuffer, (GLenum buffer), Enum{buffer})

// Buffers
CALL(glClear, (GLbitfield bits), Bits{bits})
CALL(glClearColor, (F r, F g, F b, F a), r, g, b, a)
CALL(glClearDepth, (D depth), depth)
CALL(glClearStencil, (I stencil), stencil)
CALL(glClearAccum, (F r, F g, F b, F a), r, g, b, a)
CALL(glAccum, (GLenum operation, F value), Enum{operation}, value)
CALL(glFlush, ())
CALL(glFinish, ())
CALL(glPixelStorei, (GLenum key, I value), Enum{key}, value)
CALL(glPixelZoom, (F x, F y), x, y)
CALL(glReadPixels, (I x, I y, GLsizei w, GLsizei h, GLenum format, GLenum type, GLvoid* pixels),
     x, y, w, h, Enum{format}, Enum{type}, Memory(pixels))
CALL(glDrawPixels, (GLsizei w, GLsizei h, GLenum format, GLenum type, const GLvoid* pixels),
     w, h, Enum{format}, Enum{type}, Memory(pixels))
CALL(glBitmap, (GLsizei w, GLsizei h, F x, F y, F dx, F dy, const GLubyte* bits),
     w, h, x, y, dx, dy, Memory(bits))

// Materials, lights, fog
SETTING(glMaterial, F, f, MaterialSize(key)) SETTING(glMaterial, I, i, MaterialSize(key))
CALL(glColorMaterial, (GLenum face, GLenum mode), Enum{face}, Enum{mode})
SETTING(glLight, F, f, LightSize(key)) SETTING(glLight, I, i, LightSize(key))
GLOBAL(glLightModel, F, f, GL_LIGHT_MODEL_AMBIENT) GLOBAL(glLightModel, I, i, GL_LIGHT_MODEL_AMBIENT)
GLOBAL(glFog, F, f, GL_FOG_COLOR) GLOBAL(glFog, I, i, GL_FOG_COLOR)

// Textures
SETTING(glTexParameter, F, f, SizeIfVector(key, GL_TEXTURE_BORDER_COLOR))
SETTING(glTexParameter, I, i, SizeIfVector(key, GL_TEXTURE_BORDER_COLOR))
SETTING(glTexEnv, F, f, SizeIfVector(key, GL_TEXTURE_ENV_COLOR))
SETTING(glTexEnv, I, i, SizeIfVector(key, GL_TEXTURE_ENV_COLOR))
SETTING(glTexGen, D, d, key == GL_TEXTURE_GEN_MODE ? 1 : 4)
SETTING(glTexGen, F, f, key == GL_TEXTURE_GEN_MODE ? 1 : 4)
SETTING(glTexGen, I, i, key == GL_TEXTURE_GEN_MODE ? 1 : 4)
CALL(glGenTextures, (GLsizei count, GLuint* names), count, Memory(names))
CALL(glBindTexture, (GLenum target, GLuint name), Enum{target}, name)
CALL(glDeleteTextures, (GLsizei count, const GLuint* names), count, Values(names, count))
CALL(glTexImage1D, (GLenum target, I level, I components, GLsizei w, I border, GLenum format,
     GLenum type, const GLvoid* pixels),
     Enum{target}, level, EnumOr<I>{components}, w, border, Enum{format}, Enum{type}, Memory(pixels))
CALL(glTexImage2D, (GLenum target, I level, I components, GLsizei w, GLsizei h, I border,
     GLenum format, GLenum type, const GLvoid* pixels),
     Enum{target}, level, EnumOr<I>{components}, w, h, border, Enum{format}, Enum{type},
     Memory(pixels))
ANSWER(I, gluBuild1DMipmaps, (GLenum target, I components, GLsizei w, GLenum format, GLenum type,
       const void* pixels),
       Enum{target}, EnumOr<I>{components}, w, Enum{format}, Enum{type}, Memory(pixels))
ANSWER(I, gluBuild2DMipmaps, (GLenum target, I components, GLsizei w, GLsizei h, GLenum format,
       GLenum type, const void* pixels),
       Enum{target}, EnumOr<I>{components}, w, h, Enum{format}, Enum{type}, Memory(pixels))
ANSWER(I, gluScaleImage, (GLenum format, GLsizei w, GLsizei h, GLenum type, const void* pixels,
       GLsizei toW, GLsizei toH, GLenum toType, GLvoid* toPixels),
       Enum{format}, w, h, Enum{type}, Memory(pixels), toW, toH, Enum{toType}, Memory(toPixels))

// Display lists
ANSWER(GLuint, glGenLists, (GLsizei count), count)
CALL(glNewList, (GLuint name, GLenum mode), name, Enum{mode})
CALL(glEndList, ())
CALL(glCallList, (GLuint name), name)
CALL(glCallLists, (GLsizei count, GLenum type, const GLvoid* names),
     count, Enum{type}, Memory(names))
CALL(glListBase, (GLuint base), base)
CALL(glDeleteLists, (GLuint name, GLsizei count), name, count)

// Selection and feedback
ANSWER(I, glRenderMode, (GLenum mode), Enum{mode})
CALL(glSelectBuffer, (GLsizei size, GLuint* buffer), size, Memory(buffer))
CALL(glFeedbackBuffer, (GLsizei size, GLenum type, F* buffer), size, Enum{type}, Memory(buffer))
CALL(glPassThrough, (F token), token)
CALL(glInitNames, ())
CALL(glLoadName, (GLuint name), name)
CALL(glPushName, (GLuint name), name)
CALL(glPopName, ())

// Evaluators
CALL(glMap2f, (GLenum target, F u1, F u2, I ustride, I uorder, F v1, F v2, I vstride, I vorder,
     const F* points),
     Enum{target}, u1, u2, ustride, uorder, v1, v2, vstride, vorder, Memory(points))
CALL(glMapGrid2f, (I un, F u1, F u2, I vn, F v1, F v2), un, u1, u2, vn, v1, v2)
CALL(glEvalMesh2, (GLenum mode, I i1, I i2, I j1, I j2), Enum{mode}, i1, i2, j1, j2)

// Quadrics
ANSWER(GLUquadric*, gluNewQuadric, ())
CALL(gluDeleteQuadric, (GLUquadric* quadric), Memory(quadric))
CALL(gluQuadricDrawStyle, (GLUquadric* q, GLenum style), Memory(q), Enum{style})
CALL(gluQuadricNormals, (GLUquadric* q, GLenum normals), Memory(q), Enum{normals})
CALL(gluQuadricOrientation, (GLUquadric* q, GLenum side), Memory(q), Enum{side})
CALL(gluQuadricTexture, (GLUquadric* q, GLboolean on), Memory(q), Boolean{on})
CALL(gluSphere, (GLUquadric* q, D radius, I slices, I stacks), Memory(q), radius, slices, stacks)
CALL(gluCylinder, (GLUquadric* q, D base, D top, D height, I slices, I stacks),
     Memory(q), base, top, height, slices, stacks)
CALL(gluDisk, (GLUquadric* q, D inner, D outer, I slices, I loops),
     Memory(q), inner, outer, slices, loops)
CALL(gluPartialDisk, (GLUquadric* q, D inner, D outer, I slices, I loops, D start, D sweep),
     Memory(q), inner, outer, slices, loops, start, sweep)

// Queries
QUERY(GLenum, glGetError, ())
QUERY(GLboolean, glIsEnabled, (GLenum capability), Enum{capability})
QUERY(GLboolean, glIsList, (GLuint name), name)
QUERY(GLboolean, glIsTexture, (GLuint name), name)
QUERY(const GLubyte*, glGetString, (GLenum name), Enum{name})
QUERY(void, glGetBooleanv, (GLenum name, GLboolean* values), Enum{name}, Memory(values))
QUERY(void, glGetIntegerv, (GLenum name, I* values), Enum{name}, Memory(values))
QUERY(void, glGetFloatv, (GLenum name, F* values), Enum{name}, Memory(values))
QUERY(void, glGetDoublev, (GLenum name, D* values), Enum{name}, Memory(values))
    // clang-format on
