#include <zep/converters/dxf/annotation/DimensionSketch.h>
#include <zep/converters/dxf/annotation/DimensionText.h>
#include <zep/scene/Vectors.h>

#include <cmath>

namespace ZEP {

namespace {

/// From the circle out to the text, with a bend where the text is not in line with it. A text above
/// the line is underlined by it.
void LineToText(const TDXFDimensionSketch& sketch, const TGLArrayd3& point,
                const TGLArrayd3& outward) {
    constexpr double parallel = 1e-6;
    const bool isAbove = sketch.Style.Integer(dvTextAbove) != 0;
    const bool isInLine = std::abs(Cross(outward, sketch.TextDirection())[2]) < parallel;
    const TGLArrayd3 along = sketch.TextDirection(), center = sketch.TextCenter();
    const double side = Dotd(center - point, along) < 0 ? -1 : 1; // on which the text lies
    const TGLArrayd3 half = along * (side * sketch.TextWidth() / 2);
    const TGLArrayd3 near = center - half, far = center + half;
    const double way = Dotd((isInLine && isAbove ? far : near) - point, outward);
    const TGLArrayd3 bend = point + outward * std::max(way, 2 * sketch.ArrowSize());
    sketch.Line(point + outward * sketch.LengthOfHead(1), bend);
    if (isInLine) return;
    sketch.Line(bend, isAbove ? bend + half * 2 : near);
}

TGLArrayd3 DefaultPlace(const TDXFDimensionSketch& sketch, const TGLArrayd3& center,
                        const TGLArrayd3& point) {
    return sketch.Above(Middle(center, point), Unit(point - center));
}

} // namespace

bool AddDXFRadiusDimension(TDXFDimensionSketch& sketch, const TDXFRecord&) {
    const TGLArrayd3 center = sketch.Point(10), point = sketch.Point(15);
    const double radius = Distance(center, point);
    if (!(radius > 0) || !std::isfinite(2 * radius)) return false;
    const TGLArrayd3 outward = Unit(point - center);
    const TGLArrayd3 otherwise = DefaultPlace(sketch, center, point);
    const TGLArrayd3 place = sketch.HasTextPlace() ? sketch.TextPlace() : otherwise;
    const bool isInside = Distance(center, place) < radius;
    sketch.PlaceText(DXFMeasuredText(radius, sketch.Style, "R"), otherwise, outward, isInside);
    sketch.Head(1, point, isInside ? outward : -outward);
    if (isInside) {
        sketch.Line(center, point - outward * sketch.LengthOfHead(1));
    } else {
        LineToText(sketch, point, outward);
        if (sketch.Style.Integer(dvLineInside) != 0) sketch.Line(center, point);
        sketch.CenterMark(center, radius);
    }
    sketch.AddText();
    return true;
}

bool AddDXFDiameterDimension(TDXFDimensionSketch& sketch, const TDXFRecord&) {
    TGLArrayd3 near = sketch.Point(15), far = sketch.Point(10);
    const TGLArrayd3 center = Middle(near, far);
    const double radius = Distance(center, near);
    if (!(radius > 0) || !std::isfinite(2 * radius)) return false;
    const TGLArrayd3 otherwise = sketch.Above(center, Unit(near - far));
    const TGLArrayd3 place = sketch.HasTextPlace() ? sketch.TextPlace() : otherwise;
    if (Distance(place, far) < Distance(place, near)) std::swap(near, far);
    const TGLArrayd3 outward = Unit(near - center);
    const bool isInside = Distance(center, place) < radius;
    sketch.PlaceText(DXFMeasuredText(2 * radius, sketch.Style, "%%c"), otherwise, outward,
                     isInside);
    sketch.Head(1, near, isInside ? outward : -outward);
    const bool isThrough = isInside || sketch.Style.Integer(dvLineInside) != 0;
    const double head = sketch.LengthOfHead(1);
    if (isThrough) {
        sketch.Head(2, far, -outward);
        sketch.Line(far + outward * sketch.LengthOfHead(2),
                    isInside ? near - outward * head : near);
    }
    if (!isInside) LineToText(sketch, near, outward);
    if (!isThrough) sketch.CenterMark(center, radius);
    sketch.AddText();
    return true;
}

} // namespace ZEP
