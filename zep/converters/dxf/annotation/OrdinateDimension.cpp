#include <zep/converters/dxf/annotation/DimensionSketch.h>
#include <zep/converters/dxf/annotation/DimensionText.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr int OrdinateOfX = 64;

} // namespace

/// A line from the place to the text, with a slanted piece where the text lies beside it.
bool AddDXFOrdinateDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record) {
    const TGLArrayd3 origin = sketch.Point(10), place = sketch.Point(13), end = sketch.Point(14);
    const double turn = -record.Number(51) * std::numbers::pi / 180;
    const TGLArrayd3 x{std::cos(turn), std::sin(turn), 0}, y{-x[1], x[0], 0};
    const bool isOfX = record.Flag(70, OrdinateOfX);
    const TGLArrayd3 along = isOfX ? y : x, measured = isOfX ? x : y;
    const double value = std::abs(Dotd(place - origin, measured));
    const double way = Dotd(end - place, along), side = way < 0 ? -1 : 1;
    if (!std::isfinite(value) || !std::isfinite(way)) return false;
    const TGLArrayd3 outward = along * side;
    const double offset = sketch.Style.Size(dvExtensionOffset, 0.0625);
    const std::string text = DXFMeasuredText(value, sketch.Style);
    sketch.PlaceText(text, end, along, true);
    if (!sketch.HasTextPlace())
        sketch.PlaceText(text, end + outward * (sketch.TextWidth() / 2), along, true);
    const bool isAbove = sketch.Style.Integer(dvTextAbove) != 0;
    const TGLArrayd3 last = isAbove ? end + outward * sketch.TextWidth() : end; // below the text
    const double foot = std::min(2 * sketch.ArrowSize(), std::abs(way) / 2);
    const TGLArrayd3 start = place + outward * offset;
    const bool isStraight = std::abs(Dotd(end - place, measured)) < 1e-9 * std::abs(way);
    if (isStraight) {
        sketch.Line(start, last);
    } else {
        const TGLArrayd3 knee = place + outward * (std::abs(way) - 2 * foot);
        const TGLArrayd3 elbow = end - outward * foot;
        if (std::abs(way) - 2 * foot > offset) sketch.Line(start, knee);
        sketch.Line(knee, elbow);
        sketch.Line(elbow, last);
    }
    sketch.AddText();
    return true;
}

} // namespace ZEP
