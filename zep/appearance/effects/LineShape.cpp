#include <zep/appearance/effects/LineShape.h>

#include <zep/scene/Frame.h>

#include <array>

namespace ZEP {

namespace {

/// By pen style.
constexpr std::array<GLushort, 7> Patterns{0xFFFF, 0xFFC3, 0xCCCC, 0xFFCC, 0xFCCC, 0x0000, 0xFFFF};

} // namespace

TZEPLineShape::TZEPLineShape(TComponent* owner) : TZEPShape(owner) {
    SetSmooth(true);
}

GLushort StipplePattern(TPenStyle style) {
    return Patterns[style];
}

void TZEPLineShape::SetStyle(TPenStyle style) {
    if (Style() == style) return;
    SetClassNumber(style);
    Invalidate(this);
}

TZEPLineAttributes TZEPLineShape::LineAttributes() const {
    return {.Width = Width(),
            .Stippled = Style() != psSolid,
            .Pattern = StipplePattern(Style()),
            .Smooth = Smooth()};
}

void TZEPLineShape::DrawSpecific(GLenum face, bool draft) {
    const TZEPDrawRun::AttributeScope attributes(DrawFrame().Run, LineAttributes());
    DrawShape(face, draft);
}

void TZEPLineShape::DrawShape(GLenum, bool) {}

} // namespace ZEP
