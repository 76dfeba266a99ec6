#include <zep/objects/Label.h>

#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/objects/TextShape.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLabel> RegisteredLabel;

void SendPlaceIn(const TTextBox& box, const TTextPoint& point) {
    const auto& [low, high] = box;
    glTexCoord2f((point[0] - low[0]) / (high[0] - low[0]),
                 (point[1] - low[1]) / (high[1] - low[1]));
}

/// \param picture  the box that the material's picture covers; null: there is none
void SendPoints(GLenum mode, const std::vector<TTextPoint>& points, const TTextBox* picture) {
    glBegin(mode);
    for (const TTextPoint& point : points) {
        if (picture) SendPlaceIn(*picture, point);
        glVertex2fv(point.data());
    }
    glEnd();
}

bool IsSelecting() {
    GLint mode = GL_RENDER;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    return mode == GL_SELECT;
}

} // namespace

TZEPLabel::TZEPLabel(TComponent* owner)
    : TZEPShadowedObject(owner), m_font(Notify<&TZEPLabel::TextChanged>(this)) {}

TZEPLabel::~TZEPLabel() = default;

void TZEPLabel::SetCaption(const QString& caption) {
    if (Change(m_caption, caption)) TextChanged(this);
}

void TZEPLabel::SetBitmapFont(bool bitmap) {
    if (Change(m_bitmapFont, bitmap)) TextChanged(this);
}

void TZEPLabel::TextChanged(TObject* sender) {
    m_shape.reset();
    m_box.reset();
    m_bitmap.reset();
    m_lists.Reset();
    Invalidate(sender);
}

const TTextShape& TZEPLabel::Shape() {
    if (!m_shape) m_shape = std::make_unique<TTextShape>(MakeTextShape(m_caption, m_font));
    return *m_shape;
}

const TTextBox& TZEPLabel::Box() const {
    if (!m_box) m_box = std::make_unique<TTextBox>(MeasureText(m_caption, m_font));
    return *m_box;
}

void TZEPLabel::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = max = zero3d;
    if (m_bitmapFont) return;
    const auto& [low, high] = Box();
    min = {low[0], low[1], 0};
    max = {high[0], high[1], 0};
}

void TZEPLabel::DrawSpecific(GLenum, bool draft) {
    if (m_caption.isEmpty()) return;
    if (m_bitmapFont) return DrawBitmap();
    const auto& [low, high] = Box();
    const TZEPAttribScope attributes(GL_POLYGON_BIT);
    glDisable(GL_CULL_FACE);
    if (IsSelecting()) return glRectf(low[0], low[1], high[0], high[1]);
    DrawShape(draft);
}

// Pixels have no outline.
void TZEPLabel::BuildShadowVolumes() {
    if (!m_bitmapFont) TZEPShadowedObject::BuildShadowVolumes();
}

void TZEPLabel::DrawShape(bool draft) {
    // A material of the library does not tell of its changes.
    if (Change(m_textured, HasTexture())) m_lists.Reset();
    const TTextBox* picture = m_textured ? &Box() : nullptr;
    m_lists.Draw(draft, [&] {
        glNormal3f(0, 0, 1);
        if (!draft) return SendPoints(GL_TRIANGLES, Shape().Triangles, picture);
        for (const auto& outline : Shape().Outlines) SendPoints(GL_LINE_LOOP, outline, picture);
    });
}

void TZEPLabel::DrawBitmap() {
    if (!m_bitmap) m_bitmap = std::make_unique<TTextBitmap>(MakeTextBitmap(m_caption, m_font));
    const QImage& bits = m_bitmap->Bits;
    if (bits.isNull()) return;
    const TZEPAttribScope attributes(GL_ENABLE_BIT);
    glDisable(GL_TEXTURE_2D); // Mesa 22.3 ends in a fault over a bitmap with a picture
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_LSB_FIRST, GL_FALSE);
    glNormal3f(0, 0, 1);
    glRasterPos3f(0, 0, 0);
    glBitmap(bits.width(), bits.height(), 0, static_cast<float>(m_bitmap->Baseline), 0, 0,
             bits.constBits());
    glPopClientAttrib();
}

} // namespace ZEP
