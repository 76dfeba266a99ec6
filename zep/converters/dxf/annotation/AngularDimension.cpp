#include <zep/converters/dxf/annotation/DimensionSketch.h>
#include <zep/converters/dxf/annotation/DimensionText.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>
#include <optional>

namespace ZEP {

namespace {

constexpr double WholeTurn = 2 * std::numbers::pi;

double AngleOf(const TGLArrayd3& way) {
    return std::atan2(way[1], way[0]);
}

double SweepOf(double from, double to) {
    const double sweep = std::fmod(to - from, WholeTurn);
    return sweep < 0 ? sweep + WholeTurn : sweep;
}

TGLArrayd3 OnCircle(const TGLArrayd3& center, double radius, double angle) {
    return center + TGLArrayd3{std::cos(angle), std::sin(angle), 0} * radius;
}

/// An angle about a vertex, from `Start` counter-clockwise.
struct TMeasuredAngle {
    TGLArrayd3 Vertex{};
    double Radius = 0, Start = 0, Sweep = 0;
    TGLArrayd3 Ends[2]{}; ///< where the extension lines begin
};

/// The arc, its heads and the text.
bool AddMeasuredAngle(TDXFDimensionSketch& sketch, const TMeasuredAngle& angle) {
    const double radius = angle.Radius;
    if (!(radius > 0) || !std::isfinite(radius) || !(angle.Sweep > 0)) return false;
    const double middle = angle.Start + angle.Sweep / 2, end = angle.Start + angle.Sweep;
    const TGLArrayd3 out = OnCircle(zero3d, 1, middle), along{-out[1], out[0], 0};
    const TGLArrayd3 onArc = angle.Vertex + out * radius;
    const TGLArrayd3 otherwise = sketch.Above(onArc, along);
    const double arrow = sketch.ArrowSize() / radius;
    const bool isInside = sketch.HasTicks() || 2 * arrow < angle.Sweep;
    sketch.PlaceText(DXFAngleText(angle.Sweep, sketch.Style), otherwise, along, isInside);
    const double angles[2] = {angle.Start, end};
    double ends[2] = {angle.Start, end};
    for (const int i : {0, 1}) {
        const TGLArrayd3 foot = OnCircle(angle.Vertex, radius, angles[i]);
        // Only where it lies beyond what is measured.
        if (Distance(angle.Vertex, angle.Ends[i]) < radius)
            sketch.Extension(i + 1, angle.Ends[i], foot);
        const double turn = (i == 0 ? -1 : 1) * (isInside ? 1 : -1);
        const double half = arrow / 2; // a head is a chord
        const double at = angles[i] - turn * half;
        const TGLArrayd3 tangent = TGLArrayd3{-std::sin(at), std::cos(at), 0} * turn;
        sketch.Head(i + 1, foot, tangent);
        if (isInside) ends[i] -= turn * sketch.LengthOfHead(i + 1) / radius;
        if (!isInside)
            sketch.Line(foot - tangent * sketch.LengthOfHead(i + 1),
                        foot - tangent * (2 * sketch.ArrowSize()));
    }
    sketch.Arc(angle.Vertex, radius, ends[0], ends[1]);
    sketch.AddText();
    return true;
}

struct TPlaneLine {
    TGLArrayd3 A{}, B{};
};

std::optional<TGLArrayd3> MeetingOf(const TPlaneLine& first, const TPlaneLine& second) {
    constexpr double parallel = 1e-12;
    const TGLArrayd3 u = first.B - first.A, v = second.B - second.A;
    const double across = Cross(u, v)[2];
    if (!(std::abs(across) > parallel * Length(u) * Length(v))) return std::nullopt;
    return first.A + u * (Cross(second.A - first.A, v)[2] / across);
}

/// The end of a line that is nearer to the arc, on the side of the vertex that is measured.
TGLArrayd3 EndOn(const TPlaneLine& line, const TGLArrayd3& vertex, const TGLArrayd3& direction) {
    const double a = Dotd(line.A - vertex, direction), b = Dotd(line.B - vertex, direction);
    return a > b ? line.A : line.B;
}

} // namespace

bool AddDXFThreePointDimension(TDXFDimensionSketch& sketch, const TDXFRecord&) {
    TMeasuredAngle angle{.Vertex = sketch.Point(15)};
    const TGLArrayd3 a = sketch.Point(13), b = sketch.Point(14), at = sketch.Point(10);
    angle.Radius = Distance(angle.Vertex, at);
    const double first = AngleOf(a - angle.Vertex), second = AngleOf(b - angle.Vertex);
    const bool isBetween = SweepOf(first, AngleOf(at - angle.Vertex)) <= SweepOf(first, second);
    angle.Start = isBetween ? first : second;
    angle.Sweep = isBetween ? SweepOf(first, second) : SweepOf(second, first);
    angle.Ends[0] = isBetween ? a : b;
    angle.Ends[1] = isBetween ? b : a;
    return AddMeasuredAngle(sketch, angle);
}

/// Of the four angles between the lines the one that the arc lies in.
bool AddDXFAngularDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record) {
    const TPlaneLine lines[2] = {{sketch.Point(13), sketch.Point(14)},
                                 {sketch.Point(15), sketch.Point(10)}};
    const auto vertex = MeetingOf(lines[0], lines[1]);
    if (!vertex) return false;
    const TGLArrayd3 at = sketch.InPlane(record.Point(16));
    TMeasuredAngle angle{.Vertex = *vertex, .Radius = Distance(*vertex, at)};
    const double place = AngleOf(at - *vertex);
    for (const double one : {1.0, -1.0})
        for (const double other : {1.0, -1.0}) {
            const TGLArrayd3 u = Unit(lines[0].B - lines[0].A) * one;
            const TGLArrayd3 v = Unit(lines[1].B - lines[1].A) * other;
            const bool isFirst = SweepOf(AngleOf(u), AngleOf(v)) < std::numbers::pi;
            const double start = AngleOf(isFirst ? u : v), end = AngleOf(isFirst ? v : u);
            if (SweepOf(start, place) > SweepOf(start, end)) continue;
            angle.Start = start;
            angle.Sweep = SweepOf(start, end);
            angle.Ends[0] = isFirst ? EndOn(lines[0], *vertex, u) : EndOn(lines[1], *vertex, v);
            angle.Ends[1] = isFirst ? EndOn(lines[1], *vertex, v) : EndOn(lines[0], *vertex, u);
        }
    return AddMeasuredAngle(sketch, angle);
}

} // namespace ZEP
