#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/Shape.h>

namespace ZEP {

struct TZEPLineAttributes;

/// A shape made of lines, drawn with a width, a pen style and, as it starts, smoothed. Descendants
/// send the lines in `DrawShape`.
///
/// Defaults: width 1, solid, smoothed.
class ZEP_CORE_EXPORT TZEPLineShape : public TZEPShape {
    Q_OBJECT
    Q_CLASSINFO("Smooth", "true")
    Q_PROPERTY(TPenStyle Style READ Style WRITE SetStyle)
public:
    /// How a line is broken up. Inside frame is drawn solid, clear not at all.
    enum TPenStyle : unsigned char {
        psSolid,
        psDash,
        psDot,
        psDashDot,
        psDashDotDot,
        psClear,
        psInsideFrame
    };
    Q_ENUM(TPenStyle)

    explicit TZEPLineShape(TComponent* owner = nullptr);

    [[nodiscard]] TPenStyle Style() const { return static_cast<TPenStyle>(ClassNumber()); }
    void SetStyle(TPenStyle style);

    /// Sets width, style, normal and smoothing around `DrawShape`.
    void DrawSpecific(GLenum face, bool draft) override;
    /// Sends the lines; nothing here.
    virtual void DrawShape(GLenum face, bool draft);

protected:
    [[nodiscard]] TZEPLineAttributes LineAttributes() const;
};

using TPenStyle = TZEPLineShape::TPenStyle;
using enum TZEPLineShape::TPenStyle;

/// The pixels that a style draws: bits of a repeated pattern, the lowest one first.
[[nodiscard]] ZEP_CORE_EXPORT GLushort StipplePattern(TPenStyle style);

} // namespace ZEP
