#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ShadowedObject.h>
#include <zep/framework/Font.h>
#include <zep/objects/DisplayLists.h>

#include <memory>

namespace ZEP {

struct TTextBitmap;
struct TTextBox;
struct TTextShape;

/// Text. It lies in the plane z = 0, seen from both sides, and is as high as its scale: capital
/// letters reach from y = 0 to 1, the text begins at x = 0. As a bitmap it has the height of its
/// font in pixels wherever its origin is in view.
///
/// A picture of the material covers the box of the text; a bitmap has none.
///
/// A click anywhere in the box of the text picks it. Of a longer text the first 4096 characters
/// are drawn.
///
/// Defaults: no caption, outlines, Arial.
class ZEP_CORE_EXPORT TZEPLabel : public TZEPShadowedObject {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool BitmapFont READ BitmapFont WRITE SetBitmapFont)
    Q_CLASSINFO("BitmapFont", "false")
    Q_PROPERTY(ZEP::TFont* Font READ Font)
public:
    explicit TZEPLabel(TComponent* owner = nullptr);
    ~TZEPLabel() override;

    [[nodiscard]] const QString& Caption() const { return m_caption; }
    /// Any text of Unicode; line feeds begin new lines.
    void SetCaption(const QString& caption);
    [[nodiscard]] bool BitmapFont() const { return m_bitmapFont; }
    /// Draws pixels in place of areas.
    void SetBitmapFont(bool bitmap);
    [[nodiscard]] TFont* Font() { return &m_font; }

    /// The box of what is seen of the text; the origin for a bitmap and for an empty text.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawSpecific(GLenum face, bool draft) override;
    void BuildShadowVolumes() override;

protected:
    /// Also as a bitmap: that is drawn where its origin is in view.
    [[nodiscard]] bool StaysInSize() const override { return true; }

private:
    void TextChanged(TObject* sender);
    [[nodiscard]] const TTextShape& Shape();
    [[nodiscard]] const TTextBox& Box() const;
    void DrawShape(bool draft);
    void DrawBitmap();

    QString m_caption;
    TFont m_font;
    std::unique_ptr<TTextShape> m_shape;
    mutable std::unique_ptr<TTextBox> m_box; ///< known long before the text is drawn
    std::unique_ptr<TTextBitmap> m_bitmap;
    TDisplayLists m_lists;
    bool m_bitmapFont = false;
    bool m_textured = false; // so are the lists
};

} // namespace ZEP
