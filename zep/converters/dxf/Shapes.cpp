#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/PointList.h>
#include <zep/converters/dxf/Spline.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Line.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/XForm.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr int CircleSegments = 45;

/// Of an area, with its islands: the ways between them cross others, and each time costs.
constexpr std::size_t MostOutlines = 500;
constexpr int ClosedPath = 1;
constexpr int RunsOnFlag = 128;
constexpr int ThirdCorner = 12;
constexpr int FourthCorner = 13;

/// What begins another class of an entity that derives from a spline.
constexpr std::string_view HelixMark = "AcDbHelix";

/// In 0..360: the box of an arc is right for these only.
double Turn(double degrees) {
    const double turn = std::fmod(degrees, 360);
    return turn < 0 ? turn + 360 : turn;
}

template <class T>
void FillRound(T& round, const TDXFRecord& record) {
    const double diameter = 2 * record.Number(40);
    round.SetSegments(CircleSegments);
    PlaceFlat(round, FrameOf(record), record.Point(10), 0, {diameter, diameter, diameter});
}

/// \param start, end  degrees
void AddArcChain(TDXFBuilder& builder, const TDXFRecord& record, double start, double end) {
    constexpr double Radian = std::numbers::pi / 180;
    builder.AddChain(record,
                     EllipseChain({.Center = record.Point(10),
                                   .MajorAxis = {record.Number(40), 0, 0},
                                   .Start = start * Radian,
                                   .End = end * Radian}),
                     FrameOf(record));
}

/// The normal of a triangle, as long as its area is large.
TGLArrayd3 AreaOf(const TGLArrayd3& a, const TGLArrayd3& b, const TGLArrayd3& c) {
    return Cross(b - a, c - a);
}

/// Where the two triangles of a face look the same way, they fill it: it needs no tessellator and
/// no list then, and light falls on it. A dent, or sides that cross, are left to the tessellator.
void DrawAsTriangles(TZEPPolygon& polygon) {
    const TZEPTexVertexes& v = *polygon.Vertexes();
    const TGLArrayd3 first = AreaOf(v[0].Data(), v[1].Data(), v[2].Data());
    const TGLArrayd3 second = AreaOf(v[0].Data(), v[2].Data(), v[3].Data());
    if (Dotd(first, second) < 0) return;
    polygon.SetConcave(false);
    polygon.SetUseDisplayList(false);
    if (first != zero3d || second == zero3d) return;
    const TGLArrayd3 normal = second / Length(second);
    polygon.SetAutoNormal(false);
    polygon.Normal()->SetData(normal);
}

std::vector<TGLArrayd3> CornersOf(const TDXFRecord& record, std::span<const int> codes,
                                  const TGLMatrixd4& frame) {
    std::vector<TGLArrayd3> corners;
    for (const int code : codes) {
        // A triangle may leave out the fourth corner.
        const bool isLeftOut = code == FourthCorner && !record.Has(code);
        corners.push_back(record.Point(isLeftOut ? ThirdCorner : code));
        Xformd(frame, corners.back());
    }
    return corners;
}

void AddPolygon(TDXFBuilder& builder, const TDXFRecord& record,
                const std::vector<TGLArrayd3>& corners) {
    builder.Add<TZEPPolygon>(record, 0, [&](TZEPPolygon& polygon) {
        polygon.SetColorVertexes(false);
        for (const TGLArrayd3& corner : corners) polygon.Vertexes()->Add()->SetPoint(corner);
        DrawAsTriangles(polygon);
    });
}

} // namespace

TGLMatrixd4 FrameOf(const TDXFRecord& record) {
    return ExtrusionFrame(record.Point(210, unitz));
}

void PlaceFlat(TZEPObject& object, const TGLMatrixd4& frame, const TGLArrayd3& place,
               double rotation, const TGLArrayd3& scale) {
    TGLArrayd3 inDrawing = place;
    Xformd(frame, inDrawing);
    TGLArrayd3 angles{0, 0, rotation};
    if (!IsIdentityd(frame)) {
        TGLMatrixd4 turn = frame;
        Rotated(rotation, 0, 0, 1, turn);
        angles = RotationAngles(turn);
    }
    // Quietly but for the last, which recomputes the matrix.
    object.XForm()->Translate()->SetDataQuietly(inDrawing);
    if (angles != zero3d) object.XForm()->Rotate()->SetDataQuietly(angles);
    object.XForm()->Scale()->SetData(scale);
}

void TDXFBuilder::AddFilled(const TDXFRecord& record, const TContours& contours, TFillRule rule,
                            const TGLMatrixd4& frame, const std::optional<TColor>& color) {
    if (AreTangled(contours)) return Pass(record, TDXFReport::TReason::TooTangled);
    TContours outlines = OutlinesOf(contours, rule);
    if (outlines.size() > MostOutlines) return Pass(record, TDXFReport::TReason::TooTangled);
    std::vector<TGLArrayd3> polygon = PolygonOf(std::move(outlines));
    for (TGLArrayd3& point : polygon) Xformd(frame, point);
    if (polygon.empty() || !std::ranges::all_of(polygon, IsFinite))
        return Pass(record, TDXFReport::TReason::NoPoints);
    Add<TZEPPolygon>(record, polygon.size(), [&](TZEPPolygon& filled) {
        if (color) filled.SetColor(*color);
        filled.SetColorVertexes(false);
        filled.Vertexes()->AddEach(polygon.size(), [&](TZEPVertex3TexCI& vertex, std::size_t i) {
            vertex.SetPointQuietly(polygon[i]);
        });
        if (polygon.size() == 4) DrawAsTriangles(filled);
    });
}

void AddDXFPoint(TDXFBuilder& builder, const TDXFRecord& record) {
    // What a dimension measures from may lie anywhere, and is no part of the picture.
    if (builder.Scope.IsOfDimension()) return;
    builder.Add<TZEPPoint>(record, 0,
                           [&](TZEPPoint& point) { point.P()->SetData(record.Point(10)); });
}

void AddDXFLine(TDXFBuilder& builder, const TDXFRecord& record) {
    if (builder.IsChain(record))
        return builder.AddChain(record, {{record.Point(10), record.Point(11)}});
    builder.Add<TZEPLine>(record, 0, [&](TZEPLine& line) {
        line.P1()->SetData(record.Point(10));
        line.P2()->SetData(record.Point(11));
    });
}

void AddDXFCircle(TDXFBuilder& builder, const TDXFRecord& record) {
    if (builder.IsChain(record)) return AddArcChain(builder, record, 0, 360);
    builder.Add<TZEPCircle>(record, 0, [&](TZEPCircle& circle) { FillRound(circle, record); });
}

void AddDXFArc(TDXFBuilder& builder, const TDXFRecord& record) {
    if (builder.IsChain(record))
        return AddArcChain(builder, record, record.Number(50), record.Number(51));
    builder.Add<TZEPArc>(record, 0, [&](TZEPArc& arc) {
        FillRound(arc, record);
        arc.SetStartAngle(Turn(record.Number(50)));
        arc.SetEndAngle(Turn(record.Number(51)));
    });
}

void AddDXFFace(TDXFBuilder& builder, const TDXFRecord& record) {
    AddPolygon(builder, record, CornersOf(record, std::array{10, 11, 12, 13}, idd));
}

void AddDXFSolid(TDXFBuilder& builder, const TDXFRecord& record) {
    const TGLMatrixd4 frame = FrameOf(record);
    std::vector<TGLArrayd3> corners = CornersOf(record, std::array{10, 11, 13, 12}, frame);
    AddPolygon(builder, record, corners);
    if (record.Number(39) == 0) return;
    builder.AddWalls(record, {corners, true});
    const TGLArrayd3 way = DXFWall(record);
    for (TGLArrayd3& corner : corners) corner += way;
    AddPolygon(builder, record, corners);
}

void AddDXFLightPolyline(TDXFBuilder& builder, const TDXFRecord& record) {
    std::vector<TDXFBulgeVertex> vertexes;
    const double elevation = record.Number(38), width = record.Number(43);
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        if (tag.Code == 10) vertexes.push_back({{tag.Number(), 0, elevation}, 0, width, width});
        if (vertexes.empty()) continue;
        if (tag.Code == 20) vertexes.back().Point[1] = tag.Number();
        if (tag.Code == 40) vertexes.back().StartWidth = tag.Number();
        if (tag.Code == 41) vertexes.back().EndWidth = tag.Number();
        if (tag.Code == 42) vertexes.back().Bulge = tag.Number();
    }
    builder.AddBulged(record, vertexes, record.Flag(70, ClosedPath), FrameOf(record),
                      record.Flag(70, RunsOnFlag));
}

void AddDXFEllipse(TDXFBuilder& builder, const TDXFRecord& record) {
    const TDXFEllipse whole;
    builder.AddChain(record, EllipseChain({record.Point(10), record.Point(11),
                                           record.Point(210, unitz), record.Number(40, 1),
                                           record.Number(41), record.Number(42, whole.End)}));
}

void AddDXFSpline(TDXFBuilder& builder, const TDXFRecord& record) {
    TDXFSpline spline{.Degree = record.Integer(71, 3),
                      .Closed = record.Flag(70, ClosedPath),
                      .StartTangent = record.Point(12),
                      .EndTangent = record.Point(13)};
    TDXFPointList controls(10), fits(11);
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        if (tag.Code == 100 && tag.Value == HelixMark) break;
        if (tag.Code == 40) spline.Knots.push_back(tag.Number());
        if (tag.Code == 41) spline.Weights.push_back(tag.Number());
        controls.Take(tag);
        fits.Take(tag);
    }
    spline.ControlPoints = std::move(controls.Points);
    spline.FitPoints = std::move(fits.Points);
    builder.AddChain(record, SplineChain(spline, builder.PointsLeft()));
}

} // namespace ZEP
