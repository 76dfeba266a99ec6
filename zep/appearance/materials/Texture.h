#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/framework/Picture.h>
#include <zep/framework/Property.h>

#include <GL/gl.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace ZEP {

/// A picture laid on a surface. It is kept as a buffer whose sides are powers of two of at most
/// 1024 texels and goes to OpenGL each time it is applied, unless it is `Resident`. Without a
/// picture a texture does nothing and costs little more than its settings.
///
/// A new texture has no picture, modulates, filters linearly, repeats, and has tiling 1, offset 0
/// and angle 0.
class ZEP_CORE_EXPORT TZEPTexture : public TPersistent {
    Q_GADGET
    Q_PROPERTY(float Angle READ Angle WRITE SetAngle)
    Q_PROPERTY(TZEPTextureEnv Environment READ Environment WRITE SetEnvironment)
    Q_CLASSINFO("Environment", "teModulate")
    Q_PROPERTY(TPicture* Image READ Image WRITE SetTexturePic)
    Q_PROPERTY(TZEPTextureMagFilter MagFilter READ MagFilter WRITE SetMagFilter)
    Q_CLASSINFO("MagFilter", "mafLinear")
    Q_PROPERTY(TZEPTextureMinFilter MinFilter READ MinFilter WRITE SetMinFilter)
    Q_CLASSINFO("MinFilter", "mifLinear")
    Q_PROPERTY(TZEPTextureWrap WrapS READ WrapS WRITE SetWrapS)
    Q_CLASSINFO("WrapS", "twRepeat")
    Q_PROPERTY(TZEPTextureWrap WrapT READ WrapT WRITE SetWrapT)
    Q_CLASSINFO("WrapT", "twRepeat")
    Q_PROPERTY(float TilingS READ TilingS WRITE SetTilingS)
    Q_PROPERTY(float TilingT READ TilingT WRITE SetTilingT)
    Q_PROPERTY(float OffsetS READ OffsetS WRITE SetOffsetS)
    Q_PROPERTY(float OffsetT READ OffsetT WRITE SetOffsetT)
    Q_PROPERTY(bool Resident READ Resident WRITE SetResident)
    Q_CLASSINFO("Resident", "false")
public:
    /// How texels and the surface's colour make a pixel.
    enum TZEPTextureEnv : unsigned char { teModulate, teReplace, teDecal, teBlend };
    Q_ENUM(TZEPTextureEnv)
    /// How a texture drawn smaller than it is is filtered; the last four build mipmaps.
    enum TZEPTextureMinFilter : unsigned char {
        mifNearest,
        mifLinear,
        mifNearestMipmapNearest,
        mifLinearMipmapNearest,
        mifNearestMipmapLinear,
        mifLinearMipmapLinear
    };
    Q_ENUM(TZEPTextureMinFilter)
    /// How a texture drawn larger than it is is filtered.
    enum TZEPTextureMagFilter : unsigned char { mafNearest, mafLinear };
    Q_ENUM(TZEPTextureMagFilter)
    /// What lies beyond the texture's edge.
    enum TZEPTextureWrap : unsigned char { twRepeat, twClamp, twClampToEdge };
    Q_ENUM(TZEPTextureWrap)

    explicit TZEPTexture(TNotifyEvent onTextureChange = {});
    /// Frees the texture object; needs no current context.
    ~TZEPTexture() override;
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    /// Turn about the texture's centre, in degrees.
    [[nodiscard]] float Angle() const { return m_angle; }
    void SetAngle(float value) { Store(m_angle, value); }
    [[nodiscard]] TZEPTextureEnv Environment() const { return m_environment; }
    void SetEnvironment(TZEPTextureEnv value) { Store(m_environment, value); }
    [[nodiscard]] TPicture* Image() { return &m_image; }
    /// Copies `value` into the texture's own picture.
    void SetTexturePic(const TPicture* value) { m_image.Assign(value); }
    [[nodiscard]] TZEPTextureMagFilter MagFilter() const { return m_magFilter; }
    void SetMagFilter(TZEPTextureMagFilter value) { Store(m_magFilter, value); }
    [[nodiscard]] TZEPTextureMinFilter MinFilter() const { return m_minFilter; }
    void SetMinFilter(TZEPTextureMinFilter value) { Store(m_minFilter, value); }
    [[nodiscard]] TZEPTextureWrap WrapS() const { return m_wrapS; }
    void SetWrapS(TZEPTextureWrap value) { Store(m_wrapS, value); }
    [[nodiscard]] TZEPTextureWrap WrapT() const { return m_wrapT; }
    void SetWrapT(TZEPTextureWrap value) { Store(m_wrapT, value); }
    /// How often the picture stands on a texture coordinate range of 1.
    [[nodiscard]] float TilingS() const { return m_tilingS; }
    void SetTilingS(float value) { Store(m_tilingS, value); }
    [[nodiscard]] float TilingT() const { return m_tilingT; }
    void SetTilingT(float value) { Store(m_tilingT, value); }
    /// Shift in texture coordinates, before tiling and turning.
    [[nodiscard]] float OffsetS() const { return m_offsetS; }
    void SetOffsetS(float value) { Store(m_offsetS, value); }
    [[nodiscard]] float OffsetT() const { return m_offsetT; }
    void SetOffsetT(float value) { Store(m_offsetT, value); }
    /// Its texture object is kept, and loaded anew only where the picture or what is made of it has
    /// changed: the same pixels, in a fiftieth of the time for a large picture. It stays applied
    /// between neighbours that are drawn with it.
    [[nodiscard]] bool Resident() const { return m_resident; }
    void SetResident(bool value) { Store(m_resident, value); }
    /// A border of one texel; starts false, is not published.
    [[nodiscard]] bool Border() const { return m_border; }
    void SetBorder(bool value) {
        if (value != m_border) m_kept = TKept::Nothing;
        Store(m_border, value);
    }
    [[nodiscard]] TColor BorderColor() const { return m_borderColor; }
    void SetBorderColor(TColor value) { Store(m_borderColor, value); }

    /// Holds no picture.
    [[nodiscard]] virtual bool Empty() const { return m_image.Empty(); }
    /// Sides of the buffer: the smallest powers of two that hold the picture, at most 1024; 0
    /// without a picture.
    [[nodiscard]] int Width() const { return m_image.Texels().Width; }
    [[nodiscard]] int Height() const { return m_image.Texels().Height; }
    /// Width() x Height() values 0x00BBGGRR, the bottom row first.
    [[nodiscard]] const std::vector<std::uint32_t>& Pixels() const {
        return m_image.Texels().Pixels;
    }
    /// Whether the last application built mipmaps.
    [[nodiscard]] bool Mipmapped() const { return m_mipmapped; }

    /// All settings are the same, and neither has a picture.
    [[nodiscard]] bool HasValuesOf(const TZEPTexture& other) const;

    /// Makes the picture OpenGL's current texture and switches texturing on; nothing when empty.
    virtual void ApplayMaterial();
    /// As `ApplayMaterial` after `applied` was cancelled, where that is still applied. Of two that
    /// are resident only what differs is set.
    void ApplayChanges(const TZEPTexture& applied);
    /// Switches texturing off again; nothing when empty.
    virtual void CancelMaterial() const;
    /// What `CancelMaterial` does where there is a picture.
    static void SwitchOff();
    /// Others may load something into the texture object that is bound: it is loaded anew when it
    /// is applied next.
    static void ForgetBound();
    /// Another number each time that a texture of this thread has changed or gone.
    [[nodiscard]] static unsigned Changes();
    /// Makes the buffer anew from the picture.
    void TextureChanged(TObject* sender);

    /// Copies another texture but for its border; others raise `Exception`.
    void Assign(const TPersistent* source) override;

    /// Called with the texture as sender after every change.
    TNotifyEvent OnTextureChange;

private:
    struct TTexels {
        qint64 ImageKey = 0; ///< of the image that they are made of
        int Width = 0;
        int Height = 0;
        std::vector<std::uint32_t> Pixels;
    };
    /// A picture with its texels, which its copies share.
    class TShownPicture final : public TPicture {
    public:
        [[nodiscard]] const TTexels& Texels() const { return *m_texels; }
        void SetTexels(std::shared_ptr<const TTexels> texels) { m_texels = std::move(texels); }
        void Assign(const TPersistent* source) override;

    private:
        [[nodiscard]] qint64 BytesBeside(const QSize& size) const override;

        std::shared_ptr<const TTexels> m_texels = NoTexels();
    };
    static std::shared_ptr<const TTexels> NoTexels();
    static std::shared_ptr<const TTexels> TexelsOf(const QImage& image);

    template <class T>
    void Store(T& field, T value) {
        if (Change(field, value)) Changed();
    }
    void Changed();
    /// What a texture object that is kept holds.
    enum class TKept : unsigned char { Nothing, Picture, Mipmaps };

    [[nodiscard]] bool HasMipmapFilter() const;
    [[nodiscard]] bool CanKeep() const;
    void LoadAnew();
    void UseKept();
    bool MakeObject();
    void Upload();
    void SetFilters() const;
    void BuildMipmaps() const;
    void ApplyMatrix() const;
    [[nodiscard]] bool HasMatrixOf(const TZEPTexture& other) const;

    TZEPTextureEnv m_environment = teModulate;
    TZEPTextureMinFilter m_minFilter = mifLinear;
    TZEPTextureMagFilter m_magFilter = mafLinear;
    TZEPTextureWrap m_wrapS = twRepeat;
    TZEPTextureWrap m_wrapT = twRepeat;
    bool m_border = false;
    bool m_mipmapped = false;
    bool m_resident = false;
    TKept m_kept = TKept::Nothing;
    float m_angle = 0;
    float m_tilingS = 1;
    float m_tilingT = 1;
    float m_offsetS = 0;
    float m_offsetT = 0;
    TColor m_borderColor;
    GLuint m_name = 0;
    TShownPicture m_image;
};

using TZEPTextureEnv = TZEPTexture::TZEPTextureEnv;
using TZEPTextureMinFilter = TZEPTexture::TZEPTextureMinFilter;
using TZEPTextureMagFilter = TZEPTexture::TZEPTextureMagFilter;
using TZEPTextureWrap = TZEPTexture::TZEPTextureWrap;
using enum TZEPTexture::TZEPTextureEnv;
using enum TZEPTexture::TZEPTextureMinFilter;
using enum TZEPTexture::TZEPTextureMagFilter;
using enum TZEPTexture::TZEPTextureWrap;

} // namespace ZEP
