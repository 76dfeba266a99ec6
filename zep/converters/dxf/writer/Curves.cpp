#include <zep/converters/dxf/Curves.h>

#include <zep/converters/ReadReport.h>
#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/writer/Entities.h>
#include <zep/converters/dxf/writer/Pairs.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Spline.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

enum TChainFlag { cfClosed = 1, cfSpatial = 8, cfRunsOn = 128 };
constexpr int SpatialVertex = 32;

constexpr double FullTurn = 360;
constexpr double SameAngle = 1e-9;
constexpr double RoundEnough = 1e-9;
constexpr double SameHeight = 1e-12;   ///< of the largest coordinate
constexpr double FlattestRatio = 1e-6; ///< that an ellipse may have

double InDegrees(double radians) {
    return radians * 180 / std::numbers::pi;
}

double OfOneTurn(double degrees) {
    const double turn = std::fmod(degrees, FullTurn);
    return turn < 0 ? turn + FullTurn : turn;
}

/// The spline that it is drawn as.
std::vector<TGLArrayd3> SplinePoints(TZEPPolyline& polyline) {
    TZEPSpline spline;
    for (int i = 0; i < polyline.Vertexes()->Count(); ++i)
        spline.AddVertex((*polyline.Vertexes())[i].Data());
    std::vector<TGLArrayd3> points(static_cast<std::size_t>(polyline.Segments()) + 1);
    for (std::size_t i = 0; i < points.size(); ++i) {
        spline.GetVertex(static_cast<double>(i) / polyline.Segments(), points[i]);
        points[i][2] =
            std::fmax(std::fmin(points[i][2], polyline.MaxZValue()), polyline.MinZValue());
    }
    return points;
}

/// In a plane of one z, but for what rounding leaves.
bool IsLevel(const std::vector<TGLArrayd3>& points) {
    double largest = 0;
    for (const TGLArrayd3& point : points)
        largest = std::max({largest, std::abs(point[0]), std::abs(point[1])});
    return std::ranges::all_of(points, [&](const TGLArrayd3& point) {
        return std::abs(point[2] - points.front()[2]) <= SameHeight * largest;
    });
}

double InRadians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

} // namespace

/// A circle, or a piece of one, as the transform leaves it.
struct TDXFEntityWriter::TRound {
    TGLArrayd3 Center, X, Y; ///< radii along the axes of the circle
    double Start, Sweep;     ///< degrees

    [[nodiscard]] bool IsWhole() const { return Sweep >= FullTurn - SameAngle; }
    [[nodiscard]] bool IsCircular() const {
        const double x = Length(X), y = Length(Y);
        return std::abs(x - y) <= RoundEnough * x && std::abs(Dotd(X, Y)) <= RoundEnough * x * y;
    }
    [[nodiscard]] TGLArrayd3 Normal() const { return WrittenDXFNormal(Cross(X, Y)); }
    [[nodiscard]] TDXFEllipse Ellipse() const;
};

// The radii are conjugate ones of the ellipse; turned by half of the angle they are its axes.
TDXFEllipse TDXFEntityWriter::TRound::Ellipse() const {
    const double turn = std::atan2(2 * Dotd(X, Y), Dotd(X, X) - Dotd(Y, Y)) / 2;
    const TGLArrayd3 major = X * std::cos(turn) + Y * std::sin(turn);
    const TGLArrayd3 minor = Y * std::cos(turn) - X * std::sin(turn);
    const double first = IsWhole() ? 0 : InRadians(Start) - turn;
    return {
        Center, major, Normal(), Length(minor) / Length(major), first, first + InRadians(Sweep)};
}

TGLArrayd3 WrittenDXFNormal(const TGLArrayd3& normal) {
    constexpr double upright = 1e-12;
    TGLArrayd3 unit = Unit(normal);
    if (unit == zero3d) return unitz;
    if (std::abs(unit[0]) > upright || std::abs(unit[1]) > upright) return unit;
    return {0, 0, unit[2] < 0 ? -1.0 : 1.0};
}

TGLArrayd3 InDXFPlane(const TGLMatrixd4& frame, const TGLArrayd3& point) {
    const auto along = [&](int axis) {
        const auto& row = frame[static_cast<std::size_t>(axis)];
        return Dotd(TGLArrayd3{row[0], row[1], row[2]}, point);
    };
    return {along(0), along(1), along(2)};
}

void TDXFEntityWriter::WritePolyline(TZEPObject& object) {
    auto& polyline = static_cast<TZEPPolyline&>(object);
    if (polyline.Vertexes()->Count() < 2) return;
    if (!polyline.Smooth())
        return WriteChain(PlacedEach(*polyline.Vertexes()), polyline.Closed(), false);
    TPoints points = SplinePoints(polyline);
    for (TGLArrayd3& point : points) point = Placed(point);
    WriteChain(points, false, true);
}

void TDXFEntityWriter::WriteChain(TPoints points, bool closed, bool runsOn) {
    if (closed && points.size() > 1 && points.front() == points.back()) points.pop_back();
    if (points.size() < 2 || !Take(points)) return;
    const int flags = (closed ? cfClosed : 0) | (runsOn ? cfRunsOn : 0);
    if (IsLevel(points)) return WriteFlatChain(points, flags);
    WriteSpatialChain(points, flags | cfSpatial);
}

void TDXFEntityWriter::WriteFlatChain(const TPoints& points, int flags) {
    Begin("LWPOLYLINE", "AcDbPolyline");
    m_pairs.Integer(90, static_cast<qint64>(points.size()));
    m_pairs.Integer(70, flags);
    if (points.front()[2] != 0) m_pairs.Number(38, points.front()[2]);
    for (const TGLArrayd3& point : points) m_pairs.FlatPoint(10, point);
}

void TDXFEntityWriter::WriteSpatialChain(const TPoints& points, int flags) {
    const quint64 owner = Begin("POLYLINE", "AcDb3dPolyline");
    m_pairs.Integer(66, 1);
    m_pairs.Point(10, zero3d);
    m_pairs.Integer(70, flags);
    for (const TGLArrayd3& point : points)
        WriteVertex(owner, "AcDb3dPolylineVertex", point, SpatialVertex);
    BeginPart("SEQEND", owner, {});
}

void TDXFEntityWriter::WriteVertex(quint64 owner, std::string_view subclass,
                                   const TGLArrayd3& point, int flags) {
    BeginPart("VERTEX", owner, "AcDbVertex");
    m_pairs.Text(100, subclass);
    m_pairs.Point(10, point);
    m_pairs.Integer(70, flags);
}

void TDXFEntityWriter::WriteCircle(TZEPObject&) {
    WriteRound(0, FullTurn);
}

void TDXFEntityWriter::WriteArc(TZEPObject& object) {
    const auto& arc = static_cast<const TZEPArc&>(object);
    const double sweep = arc.EndAngle() - arc.StartAngle();
    WriteRound(arc.StartAngle(), sweep > 0 ? sweep : sweep + FullTurn);
}

void TDXFEntityWriter::WriteRound(double start, double sweep) {
    const TGLArrayd3 center = Placed(zero3d);
    const TRound round{center, Placed({0.5, 0, 0}) - center, Placed({0, 0.5, 0}) - center, start,
                       std::min(sweep, FullTurn)};
    TGLArrayd3 reach;
    for (std::size_t i = 0; i < 3; ++i) reach[i] = std::hypot(round.X[i], round.Y[i]);
    if (!Take(std::array{center - reach, center + reach}) || reach == zero3d) return;
    if (!round.IsCircular()) return WriteEllipse(round.Ellipse());
    WriteCircular(round);
}

void TDXFEntityWriter::WriteCircular(const TRound& round) {
    const TGLArrayd3 normal = round.Normal();
    const TGLMatrixd4 frame = ExtrusionFrame(normal);
    Begin(round.IsWhole() ? "CIRCLE" : "ARC", "AcDbCircle");
    m_pairs.Point(10, InDXFPlane(frame, round.Center));
    m_pairs.Number(40, Length(round.X));
    WriteExtrusion(normal);
    if (round.IsWhole()) return;
    const TGLArrayd3 zero = InDXFPlane(frame, round.X);
    const double first = InDegrees(std::atan2(zero[1], zero[0])) + round.Start;
    m_pairs.Text(100, "AcDbArc");
    m_pairs.Number(50, OfOneTurn(first));
    m_pairs.Number(51, OfOneTurn(first + round.Sweep));
}

void TDXFEntityWriter::WriteEllipse(const TDXFEllipse& ellipse) {
    if (!(ellipse.Ratio >= FlattestRatio)) {
        const TDXFChain chain = EllipseChain(ellipse);
        return WriteChain(chain.Points, chain.Closed, true);
    }
    Begin("ELLIPSE", "AcDbEllipse");
    m_pairs.Point(10, ellipse.Center);
    m_pairs.Point(11, ellipse.MajorAxis);
    m_pairs.Point(210, ellipse.Normal);
    m_pairs.Number(40, ellipse.Ratio);
    m_pairs.Number(41, ellipse.Start);
    m_pairs.Number(42, ellipse.End);
}

} // namespace ZEP
