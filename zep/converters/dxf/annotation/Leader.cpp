#include <zep/converters/dxf/PointList.h>
#include <zep/converters/dxf/annotation/Sketch.h>
#include <zep/scene/Vectors.h>

namespace ZEP {

namespace {

constexpr int LeaderTextAnnotation = 0;

/// A text above the end of the leader is underlined by it.
void AppendUnderline(const TDXFSketch& sketch, const TDXFRecord& record,
                     const TDXFDimensionStyle& style, std::vector<TGLArrayd3>& points) {
    const double textWidth = record.Number(41);
    const bool isUnderlined = record.Integer(73, 3) == LeaderTextAnnotation &&
                              record.Integer(75) != 0 && style.Integer(dvTextAbove) != 0;
    if (!isUnderlined || !(textWidth > 0)) return;
    TGLArrayd3 direction = sketch.ToPlane(record.Point(211, unitx));
    Normalized(direction);
    const double way = style.Gap() + textWidth;
    points.push_back(points.back() + direction * (record.Integer(74) == 1 ? -way : way));
}

} // namespace

void AddDXFLeader(TDXFBuilder& builder, const TDXFRecord& record) {
    const TDXFDimensionStyle style = builder.Drawing.DimensionStyles.Of(record);
    const TDXFSketch sketch(builder, record, record.Point(210, unitz));
    std::vector<TGLArrayd3> points = TDXFPointList(10, record).Points;
    if (points.size() < 2) return builder.Pass(record, TDXFReport::TReason::NoPoints);
    for (TGLArrayd3& point : points) point = sketch.ToPlane(point);
    const TGLArrayd3 tip = points[0], first = points[1];
    TDXFInk ink = TDXFInk::OfNumber(style.Integer(dvLineColor));
    if (const int weight = style.Integer(dvLineWeight, TDXFWeights::ByBlock);
        weight != TDXFWeights::ByBlock)
        ink.Weight = weight;
    AppendUnderline(sketch, record, style, points);
    const bool isCurve = record.Integer(72) == 1;
    if (isCurve)
        sketch.Curve(points, first - tip, points.back() - points[points.size() - 2], ink);
    else
        sketch.Chain(points, ink);
    // No program shows a head on a line that is not twice as long.
    const double size = style.ArrowSize();
    if (record.Integer(71, 1) == 0 || Distance(tip, first) < 2 * size) return;
    sketch.Arrow(style.Name(dvLeaderBlock, dvLeaderBlockName, builder.Drawing.Handles), tip,
                 tip - first, size, ink);
}

} // namespace ZEP
