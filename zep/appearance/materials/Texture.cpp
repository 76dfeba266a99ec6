#include <zep/appearance/materials/Texture.h>

#include <zep/gl/Names.h>

#include <GL/glu.h>

#include <QPainter>

#include <algorithm>
#include <bit>
#include <optional>
#include <tuple>
#include <unordered_set>

namespace ZEP {

namespace {

constexpr int MaxSide = 1024;
/// Larger pictures are thinned to this before they are scaled smoothly, which bounds the memory.
constexpr int MaxScaledSide = 4 * MaxSide;
constexpr std::uint32_t ColorBits = 0x00FFFFFF;

constexpr std::array Environments{GL_MODULATE, GL_REPLACE, GL_DECAL, GL_BLEND};
constexpr std::array MinFilters{GL_NEAREST,
                                GL_LINEAR,
                                GL_NEAREST_MIPMAP_NEAREST,
                                GL_LINEAR_MIPMAP_NEAREST,
                                GL_NEAREST_MIPMAP_LINEAR,
                                GL_LINEAR_MIPMAP_LINEAR};
constexpr std::array MagFilters{GL_NEAREST, GL_LINEAR};
constexpr std::array Wraps{GL_REPEAT, GL_CLAMP, GL_CLAMP_TO_EDGE};

int TextureSide(int pictureSide) {
    if (pictureSide >= MaxSide) return MaxSide;
    return static_cast<int>(std::bit_ceil(static_cast<unsigned>(pictureSide)));
}

QImage Thinned(const QImage& image) {
    const QSize size = image.size().boundedTo({MaxScaledSide, MaxScaledSide});
    const QImage thinned = size == image.size() ? image : image.scaled(size);
    // Smooth scaling takes two colours of a palette for black and white.
    return thinned.depth() == 1 ? thinned.convertToFormat(QImage::Format_ARGB32) : thinned;
}

/// The picture stretched to `size` on a white canvas, bytes in the order red, green, blue.
QImage Stretched(const QImage& image, QSize size) {
    QImage canvas(size, QImage::Format_RGBX8888);
    canvas.fill(Qt::white);
    QPainter(&canvas).drawImage(canvas.rect(), Thinned(image).scaled(size, Qt::IgnoreAspectRatio,
                                                                     Qt::SmoothTransformation));
    return canvas;
}

} // namespace

namespace {

/// Names of texture objects into which others may have loaded something since a texture kept them.
/// There are none before the first one is kept: then OpenGL is not asked either.
std::optional<std::unordered_set<GLuint>>& Spoilt() {
    static std::optional<std::unordered_set<GLuint>> names;
    return names;
}

unsigned& ChangeCount() {
    thread_local unsigned count = 0;
    return count;
}

GLint Asked(GLenum what) {
    GLint answer = 0;
    glGetIntegerv(what, &answer);
    return answer;
}

void ResetFilters() {
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
}

} // namespace

TZEPTexture::TZEPTexture(TNotifyEvent onTextureChange) : OnTextureChange(onTextureChange) {
    m_image.OnChange = Notify<&TZEPTexture::TextureChanged>(this);
}

TZEPTexture::~TZEPTexture() {
    ++ChangeCount();
    ReleaseTexture(m_name);
}

unsigned TZEPTexture::Changes() {
    return ChangeCount();
}

void TZEPTexture::Changed() {
    ++ChangeCount();
    OnTextureChange(this);
}

qint64 TZEPTexture::TShownPicture::BytesBeside(const QSize& size) const {
    return qint64(sizeof(std::uint32_t)) * TextureSide(size.width()) * TextureSide(size.height());
}

void TZEPTexture::TShownPicture::Assign(const TPersistent* source) {
    if (const auto* shown = dynamic_cast<const TShownPicture*>(source)) m_texels = shown->m_texels;
    TPicture::Assign(source);
}

std::shared_ptr<const TZEPTexture::TTexels> TZEPTexture::NoTexels() {
    static const auto none = std::make_shared<const TTexels>();
    return none;
}

std::shared_ptr<const TZEPTexture::TTexels> TZEPTexture::TexelsOf(const QImage& image) {
    auto texels = std::make_shared<TTexels>();
    const int width = texels->Width = TextureSide(image.width());
    const int height = texels->Height = TextureSide(image.height());
    texels->ImageKey = image.cacheKey();
    const QImage canvas = Stretched(image, {width, height});
    texels->Pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int row = height - 1; row >= 0; --row) {
        const auto* line = reinterpret_cast<const std::uint32_t*>(canvas.constScanLine(row));
        std::transform(line, line + width, std::back_inserter(texels->Pixels),
                       [](std::uint32_t pixel) { return pixel & ColorBits; });
    }
    return texels;
}

void TZEPTexture::TextureChanged(TObject*) {
    const QImage& image = m_image.Image();
    m_kept = TKept::Nothing;
    if (Empty())
        m_image.SetTexels(NoTexels());
    else if (m_image.Texels().ImageKey != image.cacheKey())
        m_image.SetTexels(TexelsOf(image));
    Changed();
}

void TZEPTexture::ApplayMaterial() {
    if (Empty()) return;
    m_mipmapped = HasMipmapFilter();
    SetFilters();
    constexpr TGLColor White{1, 1, 1, 1};
    glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, White.data());
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, Environments[m_environment]);
    if (CanKeep())
        UseKept();
    else
        LoadAnew();
    glEnable(GL_TEXTURE_2D);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_FASTEST);
    ApplyMatrix();
}

// The filters of what is bound before are left alone: that is kept, and gets its own each time.
void TZEPTexture::ApplayChanges(const TZEPTexture& applied) {
    if (Empty()) return applied.CancelMaterial();
    if (applied.Empty() || !applied.m_resident || !CanKeep()) {
        applied.CancelMaterial();
        return ApplayMaterial();
    }
    m_mipmapped = HasMipmapFilter();
    if (m_environment != applied.m_environment)
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, Environments[m_environment]);
    UseKept();
    if (!HasMatrixOf(applied)) ApplyMatrix();
}

bool TZEPTexture::HasMipmapFilter() const {
    return m_minFilter != mifNearest && m_minFilter != mifLinear;
}

// A list holds the picture as it is now.
bool TZEPTexture::CanKeep() const {
    return m_resident && Asked(GL_LIST_INDEX) == 0;
}

void TZEPTexture::SetFilters() const {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, MagFilters[m_magFilter]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, MinFilters[m_minFilter]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, Wraps[m_wrapS]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, Wraps[m_wrapT]);
}

// Without a context GLU would end the program.
void TZEPTexture::BuildMipmaps() const {
    if (!glGetString(GL_VERSION)) return;
    gluBuild2DMipmaps(GL_TEXTURE_2D, 3, Width(), Height(), GL_RGBA, GL_UNSIGNED_BYTE,
                      Pixels().data());
}

// Mipmaps go into whatever object is bound.
void TZEPTexture::LoadAnew() {
    m_kept = TKept::Nothing;
    if (!m_mipmapped) return Upload();
    ForgetBound();
    BuildMipmaps();
}

void TZEPTexture::UseKept() {
    const TKept wanted = m_mipmapped ? TKept::Mipmaps : TKept::Picture;
    const bool isSpoilt = Spoilt() && Spoilt()->erase(m_name) > 0;
    if (m_kept == wanted && !isSpoilt && glIsTexture(m_name)) {
        glBindTexture(GL_TEXTURE_2D, m_name);
        return m_mipmapped ? SetFilters() : ResetFilters();
    }
    if (!Spoilt()) Spoilt().emplace();
    m_kept = wanted;
    if (!m_mipmapped) return Upload();
    if (!MakeObject()) return;
    SetFilters();
    BuildMipmaps();
}

void TZEPTexture::ForgetBound() {
    if (!Spoilt()) return;
    if (const GLint bound = Asked(GL_TEXTURE_BINDING_2D))
        Spoilt()->insert(static_cast<GLuint>(bound));
}

bool TZEPTexture::MakeObject() {
    if (m_name != 0) glDeleteTextures(1, &m_name);
    m_name = 0;
    glGenTextures(1, &m_name);
    if (m_name == 0) return false;
    if (Spoilt()) Spoilt()->erase(m_name); // of an object that had the name before
    glBindTexture(GL_TEXTURE_2D, m_name);
    return true;
}

// The object repeats and filters linearly, whatever is set: the settings went to the texture that
// was bound before. Scenes are tuned to look so.
void TZEPTexture::Upload() {
    if (!MakeObject()) return;
    ResetFilters();
    // Three components: the pixels' fourth byte is never an alpha.
    glTexImage2D(GL_TEXTURE_2D, 0, 3, Width(), Height(), m_border ? 1 : 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, Pixels().data());
}

void TZEPTexture::ApplyMatrix() const {
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glTranslatef(0.5F, 0.5F, 0);
    glRotatef(m_angle, 0, 0, 1);
    glScalef(m_tilingS, m_tilingT, 1);
    glTranslatef(-0.5F - m_offsetS, -0.5F - m_offsetT, 0);
    glMatrixMode(GL_MODELVIEW);
}

bool TZEPTexture::HasMatrixOf(const TZEPTexture& other) const {
    const auto values = [](const TZEPTexture& t) {
        return std::tie(t.m_angle, t.m_tilingS, t.m_tilingT, t.m_offsetS, t.m_offsetT);
    };
    return values(*this) == values(other);
}

void TZEPTexture::CancelMaterial() const {
    if (!Empty()) SwitchOff();
}

void TZEPTexture::SwitchOff() {
    glDisable(GL_TEXTURE_2D);
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
}

bool TZEPTexture::HasValuesOf(const TZEPTexture& other) const {
    const auto values = [](const TZEPTexture& t) {
        return std::tie(t.m_environment, t.m_minFilter, t.m_magFilter, t.m_wrapS, t.m_wrapT,
                        t.m_border, t.m_resident, t.m_angle, t.m_tilingS, t.m_tilingT, t.m_offsetS,
                        t.m_offsetT, t.m_borderColor);
    };
    return Empty() && other.Empty() && values(*this) == values(other);
}

void TZEPTexture::Assign(const TPersistent* source) {
    const auto* texture = dynamic_cast<const TZEPTexture*>(source);
    if (!texture) return TPersistent::Assign(source);
    m_environment = texture->m_environment;
    m_minFilter = texture->m_minFilter;
    m_magFilter = texture->m_magFilter;
    m_wrapS = texture->m_wrapS;
    m_wrapT = texture->m_wrapT;
    m_tilingS = texture->m_tilingS;
    m_tilingT = texture->m_tilingT;
    m_offsetS = texture->m_offsetS;
    m_offsetT = texture->m_offsetT;
    m_borderColor = texture->m_borderColor;
    m_angle = texture->m_angle;
    m_resident = texture->m_resident;
    m_image.Assign(&texture->m_image);
    Changed();
}

} // namespace ZEP
