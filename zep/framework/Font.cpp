#include <zep/framework/Font.h>

namespace ZEP {

QFont TFont::ToQFont(int pixels) const {
    QFont font(m_name);
    font.setPixelSize(pixels);
    font.setBold(m_style.testFlag(fsBold));
    font.setItalic(m_style.testFlag(fsItalic));
    font.setUnderline(m_style.testFlag(fsUnderline));
    font.setStrikeOut(m_style.testFlag(fsStrikeOut));
    return font;
}

void TFont::Assign(const TPersistent* source) {
    const auto* font = dynamic_cast<const TFont*>(source);
    if (!font) return TPersistent::Assign(source);
    m_name = font->m_name;
    m_height = font->m_height;
    m_style = font->m_style;
    m_onChange(this);
}

} // namespace ZEP
