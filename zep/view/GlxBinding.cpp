#include <zep/view/GlxBinding.h>

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QOpenGLContext>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <optional>

// After Qt: X defines common words as macros.
#include <GL/glx.h>
#include <GL/glxext.h>
#include <X11/Xutil.h>
#include <xcb/xproto.h>
#undef Bool
#undef None
#undef Status

namespace ZEP {

namespace {

/// Catches what the X server refuses while it lives; the default would end the program.
class ErrorTrap {
public:
    explicit ErrorTrap(Display* display) : m_display(display) {
        XSync(display, False);
        Refused = false;
        m_former = XSetErrorHandler(Note);
    }
    ~ErrorTrap() {
        XSync(m_display, False);
        XSetErrorHandler(m_former);
    }
    ErrorTrap(const ErrorTrap&) = delete;
    ErrorTrap& operator=(const ErrorTrap&) = delete;

    [[nodiscard]] bool Clean() const {
        XSync(m_display, False);
        return !Refused;
    }

private:
    static int Note(Display* /*display*/, XErrorEvent* /*event*/) {
        Refused = true;
        return 0;
    }

    static inline bool Refused = false;
    Display* m_display;
    XErrorHandler m_former;
};

/// A list of names separated by blanks holds `name`.
bool Names(const char* list, const char* name) {
    return list && QByteArray(list).split(' ').contains(name);
}

/// Hands the expose events of windows that the toolkit does not know to those who made them.
class ExposeFilter : public QAbstractNativeEventFilter {
public:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) override {
        if (type != "xcb_generic_event_t") return false;
        const auto* event = static_cast<const xcb_expose_event_t*>(message);
        // The events of one exposure count down.
        if ((event->response_type & 0x7F) != XCB_EXPOSE || event->count != 0) return false;
        const auto found = Handlers.find(event->window);
        if (found == Handlers.end()) return false;
        const std::function<void()> handler = found->second; // it may take itself off the list
        if (handler) handler();
        return false;
    }

    std::map<Window, std::function<void()>> Handlers;
};

struct Sampled {
    TPixelFormat Format;
    GLXFBConfig Config;
};

/// What the contexts of one X connection have in common.
struct Screen {
    explicit Screen(Display* display);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    Display* Connection;
    int Number;
    std::vector<GLXFBConfig> Configs;
    std::vector<TPixelFormat> Formats; // of the same place in `Configs`
    /// With several samples a pixel. No format of the search: one is had in place of its like.
    std::vector<Sampled> SampledConfigs;
    /// Keeps display lists and textures while there is no other context.
    GLXContext ShareRoot = nullptr;
    ExposeFilter Exposed;

private:
    void ReadFormats();
};

int Attribute(Display* display, GLXFBConfig config, int attribute) {
    int value = 0;
    return glXGetFBConfigAttrib(display, config, attribute, &value) == Success ? value : 0;
}

/// Whether Mesa's software rasteriser draws formats of that screen. Without the driver's own answer
/// a configuration that calls itself slow is taken for one.
bool IsGeneric(Display* display, int screen, GLXFBConfig config) {
    static const auto query = reinterpret_cast<PFNGLXQUERYRENDERERINTEGERMESAPROC>(
        glXGetProcAddress(reinterpret_cast<const GLubyte*>("glXQueryRendererIntegerMESA")));
    unsigned int accelerated = 0;
    if (query && Names(glXQueryExtensionsString(display, screen), "GLX_MESA_query_renderer") &&
        query(display, screen, 0, GLX_RENDERER_ACCELERATED_MESA, &accelerated))
        return accelerated == 0;
    return Attribute(display, config, GLX_CONFIG_CAVEAT) == GLX_SLOW_CONFIG;
}

TPixelFormat Describe(Display* display, GLXFBConfig config, bool generic) {
    const auto value = [&](int attribute) { return Attribute(display, config, attribute); };
    TPixelFormat format;
    format.Flags = pfDrawToWindow | pfSupportOpenGL;
    if (value(GLX_DOUBLEBUFFER)) format.Flags |= pfDoubleBuffer;
    if (generic) format.Flags |= pfGenericFormat;
    format.ColorBits = value(GLX_BUFFER_SIZE);
    format.RedBits = value(GLX_RED_SIZE);
    format.GreenBits = value(GLX_GREEN_SIZE);
    format.BlueBits = value(GLX_BLUE_SIZE);
    format.AlphaBits = value(GLX_ALPHA_SIZE);
    format.GreenShift = format.BlueBits;
    format.RedShift = format.BlueBits + format.GreenBits;
    format.AccumBits = value(GLX_ACCUM_RED_SIZE) + value(GLX_ACCUM_GREEN_SIZE) +
                       value(GLX_ACCUM_BLUE_SIZE) + value(GLX_ACCUM_ALPHA_SIZE);
    format.DepthBits = value(GLX_DEPTH_SIZE);
    format.StencilBits = value(GLX_STENCIL_SIZE);
    format.Samples = value(GLX_SAMPLES);
    return format;
}

/// An opaque window: one with an alpha channel of its own would let the desktop shine through
/// wherever a scene leaves alpha below 1.
bool IsOpaque(Display* display, GLXFBConfig config) {
    XVisualInfo* visual = glXGetVisualFromFBConfig(display, config);
    const bool opaque = visual && visual->depth <= 24;
    if (visual) XFree(visual);
    return opaque;
}

Screen::Screen(Display* display) : Connection(display), Number(DefaultScreen(display)) {
    if (glXQueryExtension(display, nullptr, nullptr)) ReadFormats();
}

Screen::~Screen() {
    if (ShareRoot) glXDestroyContext(Connection, ShareRoot);
}

void Screen::ReadFormats() {
    constexpr std::array Wanted = {GLX_DRAWABLE_TYPE,
                                   GLX_WINDOW_BIT,
                                   GLX_RENDER_TYPE,
                                   GLX_RGBA_BIT,
                                   GLX_X_RENDERABLE,
                                   True,
                                   GLX_X_VISUAL_TYPE,
                                   GLX_TRUE_COLOR,
                                   GLX_SAMPLES,
                                   0,
                                   GLX_DOUBLEBUFFER,
                                   static_cast<int>(GLX_DONT_CARE),
                                   0};
    int count = 0;
    GLXFBConfig* configs = glXChooseFBConfig(Connection, Number, Wanted.data(), &count);
    std::vector<std::pair<TPixelFormat, GLXFBConfig>> found;
    const bool generic = count > 0 && IsGeneric(Connection, Number, configs[0]);
    for (int i = 0; i < count; ++i)
        if (IsOpaque(Connection, configs[i])) {
            const TPixelFormat format = Describe(Connection, configs[i], generic);
            if (format.Samples > 0)
                SampledConfigs.push_back({format, configs[i]});
            else
                found.emplace_back(format, configs[i]);
        }
    if (configs) XFree(configs);
    std::stable_sort(found.begin(), found.end(), [](const auto& left, const auto& right) {
        return ListedBefore(left.first, right.first);
    });
    for (const auto& [format, config] : found) {
        if (!Formats.empty() && Formats.back() == format) continue;
        Formats.push_back(format);
        Configs.push_back(config);
    }
}

QGuiApplication* GuiApplication() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance());
}

/// The X connection of the application, one of our own where no graphical one runs.
Display* Connection() {
    const QGuiApplication* application = GuiApplication();
    if (!application) {
        static Display* const own = XOpenDisplay(nullptr);
        return own;
    }
    const auto* x11 = application->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->display() : nullptr;
}

/// Read once, since it takes some tens of milliseconds; given back before the application closes
/// its connection.
std::shared_ptr<Screen>& SharedScreen() {
    static std::shared_ptr<Screen> screen;
    return screen;
}

std::shared_ptr<Screen> CurrentScreen() {
    Display* display = Connection();
    std::shared_ptr<Screen>& screen = SharedScreen();
    if (!display || (screen && screen->Connection == display)) return display ? screen : nullptr;
    screen = std::make_shared<Screen>(display);
    if (QGuiApplication* application = GuiApplication()) {
        application->installNativeEventFilter(&screen->Exposed);
        qAddPostRoutine([] { SharedScreen().reset(); });
    }
    return screen;
}

GLXContext ToContext(TContextHandle context) {
    return reinterpret_cast<GLXContext>(context);
}

class GlxBinding : public TContextBinding {
public:
    ~GlxBinding() override { GlxBinding::SetWindow(0); }

    void SetWindow(TWindowHandle window) override;
    [[nodiscard]] TWindowHandle DrawWindow() const override { return m_child; }
    void SetExposeHandler(std::function<void()> handler) override;
    void Resize(int width, int height) override;

    [[nodiscard]] int FormatCount() override;
    bool DescribeFormat(int index, TPixelFormat& format) override;
    [[nodiscard]] int ChooseFormat(const TPixelFormat& request) override;
    void SetSampleWish(const TSampleWish& wish) override { m_wish = wish; }
    bool SetFormat(int index) override;
    // Formats with a palette are not among those above.
    TPaletteHandle RealizePalette(const std::vector<TPaletteEntry>&) override { return 0; }
    void DeletePalette(TPaletteHandle) override {}

    [[nodiscard]] TContextHandle CreateContext() override;
    bool MakeCurrent(TContextHandle context) override;
    [[nodiscard]] bool IsCurrent(TContextHandle context) const override;
    void DeleteContext(TContextHandle context) override;
    [[nodiscard]] TEntryPoint EntryPoint(const char* name) override;
    bool BeginPicture(TContextHandle context, int width, int height) override;
    void EndPicture(TContextHandle context) override;
    void SwapBuffers() override;

private:
    /// Null once the application closed its connection.
    [[nodiscard]] std::shared_ptr<Screen> Alive() const { return m_screen.lock(); }
    void DestroyChild();
    bool CreateChild(Screen& screen, GLXFBConfig config);
    [[nodiscard]] const Sampled* SampledFor(const Screen& screen, const TPixelFormat& format) const;

    std::weak_ptr<Screen> m_screen;
    Window m_window = 0;
    Window m_child = 0;
    Colormap m_colormap = 0;
    GLXFBConfig m_config = nullptr;
    TSampleWish m_wish;
    int m_index = 0;                       // of the format
    std::optional<TPixelFormat> m_sampled; // what the window has got in its place
    GLXPbuffer m_picture = 0;
    std::function<void()> m_exposed;
};

void GlxBinding::SetWindow(TWindowHandle window) {
    DestroyChild();
    m_window = static_cast<Window>(window);
    if (window) m_screen = CurrentScreen();
}

void GlxBinding::DestroyChild() {
    if (const auto screen = Alive(); screen && m_child) {
        // The parent may be gone, and its children with it.
        const ErrorTrap trap(screen->Connection);
        screen->Exposed.Handlers.erase(m_child);
        XDestroyWindow(screen->Connection, m_child);
        XFreeColormap(screen->Connection, m_colormap);
    }
    m_child = 0;
    m_colormap = 0;
    m_config = nullptr;
    m_sampled.reset();
}

void GlxBinding::SetExposeHandler(std::function<void()> handler) {
    m_exposed = std::move(handler);
    if (const auto screen = Alive(); screen && m_child)
        screen->Exposed.Handlers[m_child] = m_exposed;
}

void GlxBinding::Resize(int width, int height) {
    const auto screen = Alive();
    if (!screen || !m_child) return;
    const ErrorTrap trap(screen->Connection);
    XResizeWindow(screen->Connection, m_child, static_cast<unsigned int>(std::max(width, 1)),
                  static_cast<unsigned int>(std::max(height, 1)));
}

int GlxBinding::FormatCount() {
    const auto screen = Alive();
    return screen ? static_cast<int>(screen->Formats.size()) : 0;
}

bool GlxBinding::DescribeFormat(int index, TPixelFormat& format) {
    if (index < 1 || index > FormatCount()) return false;
    const bool isSampled = m_sampled && index == m_index;
    format = isSampled ? *m_sampled : Alive()->Formats[static_cast<std::size_t>(index) - 1];
    return true;
}

int GlxBinding::ChooseFormat(const TPixelFormat& request) {
    const auto screen = Alive();
    return screen ? ClosestFormat(screen->Formats, request) : 0;
}

bool GlxBinding::SetFormat(int index) {
    DestroyChild();
    const auto screen = Alive();
    if (!screen || index < 1 || index > FormatCount()) return false;
    const auto place = static_cast<std::size_t>(index) - 1;
    m_index = index;
    const Sampled* sampled = SampledFor(*screen, screen->Formats[place]);
    if (sampled && CreateChild(*screen, sampled->Config)) {
        m_sampled = sampled->Format;
        return true;
    }
    return CreateChild(*screen, screen->Configs[place]);
}

/// The one of the most samples that are not too many; null where there is none.
const Sampled* GlxBinding::SampledFor(const Screen& screen, const TPixelFormat& format) const {
    const bool isSoftware = format.Has(pfGenericFormat) && !format.Has(pfGenericAccelerated);
    if (m_wish.Samples < 2 || (isSoftware && !m_wish.InSoftware)) return nullptr;
    const Sampled* best = nullptr;
    for (const Sampled& sampled : screen.SampledConfigs) {
        TPixelFormat like = sampled.Format;
        like.Samples = 0;
        like.AccumBits = format.AccumBits; // few systems have both
        if (like != format || sampled.Format.Samples > m_wish.Samples) continue;
        if (!best || sampled.Format.Samples > best->Format.Samples) best = &sampled;
    }
    return best;
}

bool GlxBinding::CreateChild(Screen& screen, GLXFBConfig config) {
    Display* display = screen.Connection;
    const ErrorTrap trap(display);
    XWindowAttributes parent;
    const std::unique_ptr<XVisualInfo, int (*)(void*)> visual(
        glXGetVisualFromFBConfig(display, config), XFree);
    if (!visual || !XGetWindowAttributes(display, m_window, &parent)) return false;
    XSetWindowAttributes attributes = {};
    attributes.colormap = m_colormap =
        XCreateColormap(display, m_window, visual->visual, AllocNone);
    attributes.event_mask = ExposureMask;
    m_child = XCreateWindow(display, m_window, 0, 0, static_cast<unsigned int>(parent.width),
                            static_cast<unsigned int>(parent.height), 0, visual->depth, InputOutput,
                            visual->visual, CWColormap | CWBorderPixel | CWEventMask, &attributes);
    XLowerWindow(display, m_child); // below what a host lays over the panel
    XMapWindow(display, m_child);
    m_config = config;
    if (trap.Clean()) {
        screen.Exposed.Handlers[m_child] = m_exposed;
        return true;
    }
    DestroyChild();
    return false;
}

TContextHandle GlxBinding::CreateContext() {
    const auto screen = Alive();
    if (!screen || !m_child) return 0;
    Display* display = screen->Connection;
    const ErrorTrap trap(display);
    if (!screen->ShareRoot)
        screen->ShareRoot = glXCreateNewContext(display, m_config, GLX_RGBA_TYPE, nullptr, True);
    GLXContext context =
        glXCreateNewContext(display, m_config, GLX_RGBA_TYPE, screen->ShareRoot, True);
    if (trap.Clean()) return reinterpret_cast<TContextHandle>(context);
    if (context) glXDestroyContext(display, context);
    return 0;
}

bool GlxBinding::MakeCurrent(TContextHandle context) {
    const auto screen = Alive();
    if (!screen) return false;
    const ErrorTrap trap(screen->Connection);
    if (!context) return glXMakeCurrent(screen->Connection, 0, nullptr);
    // While a context of EGL is current in a thread, none of GLX can be.
    if (QOpenGLContext* hosts = QOpenGLContext::currentContext()) hosts->doneCurrent();
    const GLXDrawable target = m_picture ? m_picture : m_child; // a picture goes on
    return glXMakeCurrent(screen->Connection, target, ToContext(context)) && trap.Clean();
}

bool GlxBinding::IsCurrent(TContextHandle context) const {
    return glXGetCurrentContext() == ToContext(context);
}

void GlxBinding::DeleteContext(TContextHandle context) {
    const auto screen = Alive();
    if (!screen || !context) return;
    const ErrorTrap trap(screen->Connection);
    glXDestroyContext(screen->Connection, ToContext(context));
}

TEntryPoint GlxBinding::EntryPoint(const char* name) {
    // GLX answers an address for every name there is: only the driver's list of extensions tells
    // which of them work.
    struct Extension {
        const char* Function;
        const char* Name;
    };
    constexpr std::array Extensions = {Extension{"glBlendEquationEXT", "GL_EXT_blend_subtract"},
                                       Extension{"glBlendColorEXT", "GL_EXT_blend_color"}};
    const auto* list = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    for (const Extension& extension : Extensions)
        if (std::strcmp(extension.Function, name) == 0 && !Names(list, extension.Name))
            return nullptr;
    return glXGetProcAddress(reinterpret_cast<const GLubyte*>(name));
}

bool GlxBinding::BeginPicture(TContextHandle context, int width, int height) {
    const auto screen = Alive();
    if (!screen || !m_config || m_picture) return false;
    Display* display = screen->Connection;
    const ErrorTrap trap(display);
    const std::array size = {GLX_PBUFFER_WIDTH, width, GLX_PBUFFER_HEIGHT, height, 0};
    m_picture = glXCreatePbuffer(display, m_config, size.data());
    if (trap.Clean() && m_picture &&
        glXMakeContextCurrent(display, m_picture, m_picture, ToContext(context)) && trap.Clean())
        return true;
    EndPicture(context);
    return false;
}

void GlxBinding::EndPicture(TContextHandle context) {
    const auto screen = Alive();
    if (!screen || !m_picture) return;
    const ErrorTrap trap(screen->Connection);
    glXMakeCurrent(screen->Connection, m_child, ToContext(context));
    glXDestroyPbuffer(screen->Connection, std::exchange(m_picture, 0));
}

void GlxBinding::SwapBuffers() {
    const auto screen = Alive();
    if (screen && m_child) glXSwapBuffers(screen->Connection, m_child);
}

} // namespace

std::unique_ptr<TContextBinding> CreateGlxBinding() {
    return std::make_unique<GlxBinding>();
}

std::unique_ptr<TContextBinding> CreateContextBinding() {
    return CreateGlxBinding();
}

} // namespace ZEP
