#pragma once

#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Text.h>

#include <QPointer>

namespace ZEP {

class TZEPLabel;

/// \file
/// How texts of drawings become labels: a unit is the height of their capital letters.

/// The point of a text that lies at its place.
struct TDXFAnchor {
    double Along = 0; ///< of the text's width
    double Up = 0;    ///< above the base line
};

void SetDXFText(TZEPLabel& label, const QString& text);
/// Measured only where it matters: it takes longer than all else.
[[nodiscard]] double WidthOfDXFText(const TZEPLabel& label);
void MoveDXFText(TZEPLabel& label, const TDXFAnchor& anchor);
/// Leans its letters by degrees to the right, over the base line that it has been moved to.
/// \param ratio  of its height to its width in the drawing
void SlantDXFText(TZEPLabel& label, double degrees, double ratio);

/// Lines along a text: below, above and through its letters.
/// \param label     null once the host has freed it
/// \param from, to  where they begin and end
/// \param color     none: that of the entity
void AddDXFTextRules(TDXFBuilder& builder, const TDXFRecord& record, int rules,
                     const QPointer<TZEPObject>& label, double from, double to,
                     const std::optional<TColor>& color = {});

} // namespace ZEP
