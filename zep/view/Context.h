#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>
#include <zep/view/ContextBinding.h>

#include <QString>

#include <optional>

namespace ZEP {

struct TGrantedFormat;

/// The OpenGL rendering context of one panel: it chooses the pixel format of the panel's window,
/// creates the context, makes it current and reports what the driver offers. It may be created and
/// destroyed many times. Where no context can be had nothing else fails: it reports empty strings
/// and `MakeCurrent` answers false.
///
/// Defaults: `SafeMode`; everything else empty, 0 or false.
class ZEP_EXPORT TZEPContext : public TPersistent {
    Q_GADGET
    Q_PROPERTY(QString Acceleration READ Acceleration WRITE IgnoreText)
    Q_CLASSINFO("Acceleration", "")
    Q_PROPERTY(QString Vendor READ Vendor WRITE IgnoreText)
    Q_CLASSINFO("Vendor", "")
    Q_PROPERTY(QString Renderer READ Renderer WRITE IgnoreText)
    Q_CLASSINFO("Renderer", "")
    Q_PROPERTY(QString Version READ Version WRITE IgnoreText)
    Q_CLASSINFO("Version", "")
    Q_PROPERTY(QString Extentions READ Extentions WRITE IgnoreText)
    Q_CLASSINFO("Extentions", "")
    Q_PROPERTY(int MaxLights MEMBER m_maxLights READ MaxLights)
    Q_CLASSINFO("MaxLights", "0")
    Q_PROPERTY(int MaxViewportSize MEMBER m_maxViewportSize READ MaxViewportSize)
    Q_CLASSINFO("MaxViewportSize", "0")
    Q_PROPERTY(int MaxClipPlanes MEMBER m_maxClipPlanes READ MaxClipPlanes)
    Q_CLASSINFO("MaxClipPlanes", "0")
    Q_PROPERTY(int MaxTextureSize MEMBER m_maxTextureSize READ MaxTextureSize)
    Q_CLASSINFO("MaxTextureSize", "0")
    Q_PROPERTY(int MaxTextureUnits MEMBER m_maxTextureUnits READ MaxTextureUnits)
    Q_CLASSINFO("MaxTextureUnits", "0")
    Q_PROPERTY(bool UseSoftwareRenderer READ UseSoftwareRenderer WRITE SetUseSoftwareRenderer)
    Q_CLASSINFO("UseSoftwareRenderer", "false")
    Q_PROPERTY(bool SafeMode READ SafeMode WRITE SetSafeMode)
    Q_CLASSINFO("SafeMode", "true")
public:
    explicit TZEPContext(std::unique_ptr<TContextBinding> binding = CreateContextBinding());
    ~TZEPContext() override;
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    /// \name Reports of the driver, valid once a context was created
    /// The strings are in upper case and end with a blank.
    /// @{
    /// "Software", "MCD" (the system's renderer with help of the card) or "ICD" (the card's own).
    [[nodiscard]] const QString& Acceleration() const { return m_acceleration; }
    [[nodiscard]] const QString& Vendor() const { return m_vendor; }
    [[nodiscard]] const QString& Renderer() const { return m_renderer; }
    [[nodiscard]] const QString& Version() const { return m_version; }
    [[nodiscard]] const QString& Extentions() const { return m_extentions; }
    [[nodiscard]] int MaxLights() const { return m_maxLights; }
    [[nodiscard]] int MaxViewportSize() const { return m_maxViewportSize; } ///< width in pixels
    [[nodiscard]] int MaxClipPlanes() const { return m_maxClipPlanes; }
    [[nodiscard]] int MaxTextureSize() const { return m_maxTextureSize; } ///< in texels
    [[nodiscard]] int MaxTextureUnits() const { return m_maxTextureUnits; }
    /// @}

    /// Asks for the system's software renderer; set by `CreateContext` where it had to fall back.
    [[nodiscard]] bool UseSoftwareRenderer() const { return m_useSoftwareRenderer; }
    void SetUseSoftwareRenderer(bool use) { m_useSoftwareRenderer = use; }
    /// Searches all pixel formats instead of leaving the choice to the system.
    [[nodiscard]] bool SafeMode() const { return m_safeMode; }
    void SetSafeMode(bool safeMode) { m_safeMode = safeMode; }
    /// Multisampling of the contexts that are created from now on; `PixelFormat` tells what was
    /// granted. With samples there is no accumulation buffer on most systems. At first none.
    void SetSampleWish(const TSampleWish& wish) { m_sampleWish = wish; }
    [[nodiscard]] const TSampleWish& SampleWish() const { return m_sampleWish; }
    /// No message box tells that no context could be had: whoever asked is told by the answer.
    void SetQuiet(bool quiet) { m_quiet = quiet; }

    /// Creates the context for a native window, in place of one that there was before.
    void CreateContext(TWindowHandle window);
    /// Takes what the system chooses for 32 bits of colour and depth, 8 of alpha and stencil and 64
    /// of accumulation, and checks nothing.
    void CreateContext_Original(TWindowHandle window);
    /// Searches the formats: accelerated ones, then 48 requests to the system, then software. A
    /// message box tells, once for all contexts, that no context could be had, unless it is quiet.
    void CreateContext_SafeMode(TWindowHandle window);
    void DestroyContext();

    /// Reads the five limits; the context is current.
    void QueryMaxValues();
    /// Draws through this context from now on. False where it is the current one already (nothing
    /// is done then), where there is none, and where the system refuses.
    bool MakeCurrent();
    /// Draws through none from now on where this one is current: with some of Qt's platforms a
    /// context that stays current shuts Qt's own out.
    void Release();
    /// Whether what is drawn now is drawn through this context.
    [[nodiscard]] bool IsCurrent() const;
    /// Draws into a picture of that size in memory until `EndPicture`, with all of OpenGL's state
    /// but the viewport's size. The context is current; false where the system refuses.
    bool BeginPicture(int width, int height);
    void EndPicture();
    /// Whether `name` stands in `Extentions`, case ignored. Only its first occurrence is looked at,
    /// and only the character after it: a name that first occurs as the start of a longer one is
    /// not found.
    [[nodiscard]] bool CheckExtention(const QString& name) const;

    [[nodiscard]] bool HasContext() const { return m_context != 0; }
    [[nodiscard]] int PixelFormatIndex() const { return m_formatIndex; } ///< 0: none
    [[nodiscard]] const TPixelFormat& PixelFormat() const { return m_format; }
    [[nodiscard]] int StencilBits() const { return m_stencilBits; } ///< as OpenGL reports it
    [[nodiscard]] TContextBinding& Binding() const { return *m_binding; }

private:
    // What the driver reports is not assigned: a stored report of another machine is passed over.
    void IgnoreText(const QString& /*text*/) {}
    void OpenWindow(TWindowHandle window);
    bool FindFormat();
    bool Take(const std::optional<TGrantedFormat>& granted);
    void ReportFailure();
    void ReadDriver();

    std::unique_ptr<TContextBinding> m_binding;
    QString m_acceleration;
    QString m_vendor;
    QString m_renderer;
    QString m_version;
    QString m_extentions;
    int m_maxLights = 0;
    int m_maxViewportSize = 0;
    int m_maxClipPlanes = 0;
    int m_maxTextureSize = 0;
    int m_maxTextureUnits = 0;
    bool m_useSoftwareRenderer = false;
    bool m_safeMode = true;
    bool m_quiet = false;
    TSampleWish m_sampleWish;
    int m_formatIndex = 0;
    TPixelFormat m_format;
    TPaletteHandle m_palette = 0;
    TContextHandle m_context = 0;
    int m_stencilBits = 0;
};

} // namespace ZEP
