#include "tests/gl/OffscreenContext.h"

#include <zep/framework/Exception.h>
#include <zep/gl/Names.h>

#include <ostream>

#include <GL/glx.h>

namespace ZEP {

namespace {

// clang-format off
constexpr int PlainFormat[] = {
    GLX_DRAWABLE_TYPE, GLX_PBUFFER_BIT, GLX_RENDER_TYPE, GLX_RGBA_BIT, GLX_DOUBLEBUFFER, True,
    GLX_RED_SIZE, 8, GLX_GREEN_SIZE, 8, GLX_BLUE_SIZE, 8, GLX_DEPTH_SIZE, 24, None};
constexpr int FullFormat[] = {
    GLX_DRAWABLE_TYPE, GLX_PBUFFER_BIT, GLX_RENDER_TYPE, GLX_RGBA_BIT, GLX_DOUBLEBUFFER, True,
    GLX_RED_SIZE, 8, GLX_GREEN_SIZE, 8, GLX_BLUE_SIZE, 8, GLX_ALPHA_SIZE, 8,
    GLX_DEPTH_SIZE, 24, GLX_STENCIL_SIZE, 8,
    GLX_ACCUM_RED_SIZE, 8, GLX_ACCUM_GREEN_SIZE, 8, GLX_ACCUM_BLUE_SIZE, 8, None};
// clang-format on

GLXFBConfig ChooseFormat(Display* display, bool plain) {
    int count = 0;
    const std::unique_ptr<GLXFBConfig, int (*)(void*)> formats(
        glXChooseFBConfig(display, DefaultScreen(display), plain ? PlainFormat : FullFormat,
                          &count),
        XFree);
    if (count == 0) throw Exception(QStringLiteral("The display has no format for tests."));
    return *formats;
}

} // namespace

struct OffscreenContext::TBinding {
    std::unique_ptr<Display, int (*)(Display*)> Connection{XOpenDisplay(nullptr), XCloseDisplay};
    GLXPbuffer Buffer = 0;
    GLXContext Context = nullptr;

    TBinding(int width, int height, bool plain) {
        if (!Connection) throw Exception(QStringLiteral("No X display: is DISPLAY set?"));
        const GLXFBConfig format = ChooseFormat(Connection.get(), plain);
        const int size[] = {GLX_PBUFFER_WIDTH, width, GLX_PBUFFER_HEIGHT, height, None};
        Buffer = glXCreatePbuffer(Connection.get(), format, size);
        Context = glXCreateNewContext(Connection.get(), format, GLX_RGBA_TYPE, nullptr, True);
    }

    ~TBinding() {
        glXMakeContextCurrent(Connection.get(), None, None, nullptr);
        glXDestroyContext(Connection.get(), Context);
        glXDestroyPbuffer(Connection.get(), Buffer);
    }

    TBinding(const TBinding&) = delete;
    TBinding& operator=(const TBinding&) = delete;

    bool MakeCurrent() const {
        return glXMakeContextCurrent(Connection.get(), Buffer, Buffer, Context);
    }
};

OffscreenContext::OffscreenContext(int width, int height, bool plain)
    : m_binding(std::make_unique<TBinding>(width, height, plain)), m_width(width),
      m_height(height) {
    MakeCurrent();
    glViewport(0, 0, width, height);
    glEnable(GL_NORMALIZE);
    glDepthFunc(GL_LEQUAL);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
}

OffscreenContext::~OffscreenContext() {
    DeleteReleasedNames();
    SetContextIsCurrent(false);
}

bool OffscreenContext::HasDisplay() {
    const std::unique_ptr<Display, int (*)(Display*)> display(
        XOpenDisplay(nullptr), [](Display* d) { return d ? XCloseDisplay(d) : 0; });
    return display != nullptr;
}

void OffscreenContext::MakeCurrent() {
    if (!m_binding->MakeCurrent()) throw Exception(QStringLiteral("Cannot draw to the buffer."));
    SetContextIsCurrent(true);
}

QColor OffscreenContext::ReadPixel(int x, int y) const {
    GLubyte pixel[4] = {};
    glReadPixels(x, m_height - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

float OffscreenContext::ReadDepth(int x, int y) const {
    GLfloat depth = 0;
    glReadPixels(x, m_height - 1 - y, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    return depth;
}

QImage OffscreenContext::ReadFrame() const {
    QImage frame(m_width, m_height, QImage::Format_RGBX8888);
    glReadPixels(0, 0, m_width, m_height, GL_RGBA, GL_UNSIGNED_BYTE, frame.bits());
    return frame.mirrored().convertToFormat(QImage::Format_RGB32);
}

} // namespace ZEP

void PrintTo(const QColor& color, std::ostream* stream) {
    *stream << qPrintable(color.name()) << '/' << color.alpha();
}
