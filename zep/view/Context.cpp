#include <zep/view/Context.h>

#include <zep/framework/DebugLog.h>
#include <zep/framework/Message.h>
#include <zep/gl/Names.h>
#include <zep/view/PixelFormatSearch.h>

#include <GL/glext.h>

namespace ZEP {

namespace {

/// The context that this library made current last; panels skip what would change nothing.
TContextHandle CurrentContext = 0;
/// A message has told that there is no context; one tells again once there was one.
bool FailureIsKnown = false;

void Record(TContextHandle context) {
    CurrentContext = context;
    if (context == 0) SetContextIsCurrent(false);
}

/// The trailing blank lets `CheckExtention` recognise the last one.
QString DriverString(GLenum name) {
    const GLubyte* text = glGetString(name);
    if (!text) return {};
    return QString::fromLatin1(reinterpret_cast<const char*>(text)).toUpper() + QLatin1Char(' ');
}

int DriverValue(GLenum name) {
    GLint values[4] = {};
    glGetIntegerv(name, values);
    return values[0];
}

bool IsSoftware(const TPixelFormat& format) {
    return format.Has(pfGenericFormat) && !format.Has(pfGenericAccelerated);
}

/// What is neither leaves `former`: accelerated, but not generic.
QString AccelerationOf(const TPixelFormat& format, const QString& former) {
    const bool accelerated = format.Has(pfGenericAccelerated);
    if (format.Has(pfGenericFormat))
        return accelerated ? QStringLiteral("MCD") : QStringLiteral("Software");
    return accelerated ? former : QStringLiteral("ICD");
}

TPixelFormat OriginalRequest() {
    TPixelFormat request;
    request.Flags = pfDrawToWindow | pfSupportOpenGL | pfDoubleBuffer;
    request.ColorBits = 32;
    request.AlphaBits = 8;
    request.AccumBits = 64;
    request.DepthBits = 32;
    request.StencilBits = 8;
    return request;
}

} // namespace

TZEPContext::TZEPContext(std::unique_ptr<TContextBinding> binding)
    : m_binding(std::move(binding)) {}

TZEPContext::~TZEPContext() {
    DestroyContext();
}

void TZEPContext::CreateContext(TWindowHandle window) {
    if (m_safeMode) return CreateContext_SafeMode(window);
    CreateContext_Original(window);
}

void TZEPContext::OpenWindow(TWindowHandle window) {
    DestroyContext();
    m_formatIndex = 0;
    m_format = {};
    m_binding->SetWindow(window);
    m_binding->SetSampleWish(m_sampleWish);
}

void TZEPContext::CreateContext_Original(TWindowHandle window) {
    OpenWindow(window);
    m_formatIndex = m_binding->ChooseFormat(OriginalRequest());
    m_binding->SetFormat(m_formatIndex);
    m_binding->DescribeFormat(m_formatIndex, m_format);
    m_context = m_binding->CreateContext();
    ReadDriver();
}

void TZEPContext::CreateContext_SafeMode(TWindowHandle window) {
    OpenWindow(window);
    FindFormat();
    DebugLog(QStringLiteral("PixelFormat: %1").arg(m_formatIndex));
    m_binding->DescribeFormat(m_formatIndex, m_format);
    m_context = m_binding->CreateContext();
    if (m_context == 0)
        ReportFailure();
    else
        DebugLog(QStringLiteral("OpenGL context OK!"));
    ReadDriver();
    m_stencilBits = DriverValue(GL_STENCIL_BITS);
}

bool TZEPContext::FindFormat() {
    if (Take(SearchFormat(*m_binding, !m_useSoftwareRenderer))) return true;
    if (!m_useSoftwareRenderer && Take(RequestFormat(*m_binding))) {
        m_useSoftwareRenderer = IsSoftware(m_format); // the system's choice may be a fallback too
        return true;
    }
    if (!Take(SearchFormat(*m_binding, false))) return false;
    m_useSoftwareRenderer = true;
    return true;
}

bool TZEPContext::Take(const std::optional<TGrantedFormat>& granted) {
    if (!granted) return false;
    m_formatIndex = granted->Index;
    m_format = granted->Format;
    m_palette = granted->Palette;
    return true;
}

void TZEPContext::ReportFailure() {
    if (FailureIsKnown) return;
    DebugLog(QStringLiteral("ERROR initializing OpenGL!"));
    if (m_quiet) return;
    // Set first: the box is modal, and a panel may ask for a context again behind it.
    FailureIsKnown = true;
    ShowMessage(QStringLiteral("Unable to initialize OpenGL context!"), QStringLiteral("Error"),
                TMessageIcon::Hand);
}

void TZEPContext::ReadDriver() {
    m_acceleration = m_context == 0 ? QString() : AccelerationOf(m_format, m_acceleration);
    MakeCurrent();
    m_vendor = DriverString(GL_VENDOR);
    m_renderer = DriverString(GL_RENDERER);
    m_version = DriverString(GL_VERSION);
    m_extentions = DriverString(GL_EXTENSIONS);
    QueryMaxValues();
    if (m_context == 0) return; // the entry points of the other panels stay
    FailureIsKnown = false;
    BlendEquationEXT =
        reinterpret_cast<TBlendEquation>(m_binding->EntryPoint("glBlendEquationEXT"));
    BlendColorEXT = reinterpret_cast<TBlendColor>(m_binding->EntryPoint("glBlendColorEXT"));
    StencilWrapEXT = CheckExtention(QStringLiteral("GL_EXT_stencil_wrap"));
    glEnable(GL_NORMALIZE); // objects are sized by their scale
    glDepthFunc(GL_LEQUAL);
}

void TZEPContext::QueryMaxValues() {
    m_maxLights = DriverValue(GL_MAX_LIGHTS);
    m_maxViewportSize = DriverValue(GL_MAX_VIEWPORT_DIMS);
    m_maxClipPlanes = DriverValue(GL_MAX_CLIP_PLANES);
    m_maxTextureSize = DriverValue(GL_MAX_TEXTURE_SIZE);
    const bool several = CheckExtention(QStringLiteral("GL_ARB_MULTITEXTURE"));
    m_maxTextureUnits = several ? DriverValue(GL_MAX_TEXTURE_UNITS_ARB) : 1;
}

bool TZEPContext::IsCurrent() const {
    // A host may draw through contexts of its own between two frames: the record alone would then
    // lead this panel's drawing into the host's window.
    return m_context != 0 && CurrentContext == m_context && m_binding->IsCurrent(m_context);
}

bool TZEPContext::MakeCurrent() {
    if (IsCurrent()) return false;
    // Without a context the former one is let go all the same, so that nothing that is meant for
    // this panel appears in another.
    const bool made = m_binding->MakeCurrent(m_context) && m_context != 0;
    Record(made ? m_context : 0);
    return made;
}

void TZEPContext::Release() {
    if (!IsCurrent()) return;
    m_binding->MakeCurrent(0);
    Record(0);
}

bool TZEPContext::BeginPicture(int width, int height) {
    if (!IsCurrent() || !m_binding->BeginPicture(m_context, width, height)) return false;
    // Not all systems give samples to pictures, and with samples no line is smooth by itself.
    if (m_format.Samples > 0) glDisable(GL_MULTISAMPLE);
    return true;
}

void TZEPContext::EndPicture() {
    m_binding->EndPicture(m_context);
    if (m_format.Samples > 0 && IsCurrent()) glEnable(GL_MULTISAMPLE);
}

void TZEPContext::DestroyContext() {
    if (m_context != 0) {
        Release();
        m_binding->DeleteContext(m_context);
        m_context = 0;
    }
    if (m_palette != 0) m_binding->DeletePalette(m_palette);
    m_palette = 0;
    m_binding->SetWindow(0);
}

bool TZEPContext::CheckExtention(const QString& name) const {
    const QString upper = name.toUpper();
    const auto found = m_extentions.indexOf(upper);
    if (found < 0) return false;
    const auto after = found + upper.size();
    return after < m_extentions.size() && m_extentions[after] == QLatin1Char(' ');
}

} // namespace ZEP
