#include <zep/converters/dxf/annotation/DimensionSketch.h>
#include <zep/converters/dxf/annotation/DimensionText.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

TGLArrayd3 DirectionOfDegrees(double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {std::cos(angle), std::sin(angle), 0};
}

/// Where the line through a point meets the dimension line.
TGLArrayd3 FootOn(const TGLArrayd3& line, const TGLArrayd3& along, const TGLArrayd3& point,
                  const TGLArrayd3& extension) {
    const double across = Cross(along, extension)[2];
    return line + along * (Cross(point - line, extension)[2] / across);
}

struct TLinearDimension {
    TGLArrayd3 Points[2], Feet[2], Along, Extension;

    [[nodiscard]] double Length() const { return Distance(Feet[0], Feet[1]); }
};

void AddHeads(const TDXFDimensionSketch& sketch, const TLinearDimension& measured) {
    const double arrow = sketch.ArrowSize();
    const bool isInside =
        sketch.HasTicks() || 2 * arrow + std::abs(sketch.Style.Gap()) <= measured.Length();
    const TGLArrayd3 outward[2] = {-measured.Along, measured.Along};
    TGLArrayd3 ends[2];
    for (const int i : {0, 1}) {
        if (sketch.IsLineSuppressed(i + 1)) continue;
        const TGLArrayd3& foot = measured.Feet[i];
        sketch.Head(i + 1, foot, isInside ? outward[i] : -outward[i]);
        const double head = sketch.LengthOfHead(i + 1);
        const double beyond = head > 0 ? 0 : sketch.Style.Size(dvLineBeyond, 0);
        ends[i] = foot + outward[i] * (isInside ? beyond - head : 0);
        if (!isInside) sketch.Line(foot + outward[i] * head, foot + outward[i] * (2 * arrow));
    }
    const TGLArrayd3 middle = Middle(measured.Feet[0], measured.Feet[1]);
    const bool isWhole = !sketch.IsLineSuppressed(1) && !sketch.IsLineSuppressed(2);
    if (isWhole) return sketch.Line(ends[0], ends[1]);
    for (const int i : {0, 1})
        if (!sketch.IsLineSuppressed(i + 1)) sketch.Line(ends[i], middle);
}

} // namespace

bool AddDXFLinearDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record, bool aligned) {
    constexpr double steepest = 1e-9;
    TLinearDimension measured;
    measured.Points[0] = sketch.Point(13);
    measured.Points[1] = sketch.Point(14);
    measured.Along = aligned ? Unit(measured.Points[1] - measured.Points[0])
                             : DirectionOfDegrees(record.Number(50));
    const double oblique = record.Number(52);
    measured.Extension = oblique == 0 ? TGLArrayd3{-measured.Along[1], measured.Along[0], 0}
                                      : DirectionOfDegrees(oblique);
    if (std::abs(Cross(measured.Along, measured.Extension)[2]) < steepest) return false;
    const TGLArrayd3 line = sketch.Point(10);
    for (const int i : {0, 1})
        measured.Feet[i] = FootOn(line, measured.Along, measured.Points[i], measured.Extension);
    const double length = measured.Length();
    if (!std::isfinite(length)) return false;
    if (Dotd(measured.Feet[1] - measured.Feet[0], measured.Along) < 0)
        measured.Along = -measured.Along;
    const TGLArrayd3 middle = Middle(measured.Feet[0], measured.Feet[1]);
    const TGLArrayd3 place = sketch.HasTextPlace() ? sketch.TextPlace() : middle;
    const bool isInside = std::abs(Dotd(place - middle, measured.Along)) < length / 2;
    sketch.PlaceText(DXFMeasuredText(length, sketch.Style), sketch.Above(middle, measured.Along),
                     measured.Along, isInside);
    for (const int i : {0, 1}) sketch.Extension(i + 1, measured.Points[i], measured.Feet[i]);
    AddHeads(sketch, measured);
    sketch.AddText();
    return true;
}

} // namespace ZEP
