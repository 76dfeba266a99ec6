#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Curves.h>
#include <zep/converters/dxf/WidePath.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

// Its corners are meant: no spline through them.
void FillChain(TZEPPolyline& polyline, const TDXFChain& chain) {
    polyline.SetOrigColor(polyline.Color());
    polyline.SetSmooth(false);
    polyline.SetClosed(chain.Closed);
    for (const TGLArrayd3& point : chain.Points) polyline.Vertexes()->Add()->SetPoint(point);
}

double LengthOf(const TDXFChain& chain) {
    double length = 0;
    for (std::size_t i = 1; i < chain.Points.size(); ++i)
        length += Distance(chain.Points[i - 1], chain.Points[i]);
    if (chain.Closed) length += Distance(chain.Points.back(), chain.Points.front());
    return length;
}

} // namespace

TGLArrayd3 DXFWall(const TDXFRecord& record) {
    const TGLMatrixd4 frame = FrameOf(record);
    return TGLArrayd3{frame[2][0], frame[2][1], frame[2][2]} * record.Number(39);
}

const TDXFLineType* TDXFBuilder::LineTypeOf(const TDXFRecord& record) {
    const TZEPObject* layer = Scope.LayerOf(record);
    return layer ? Scope.LineTypeOf(record, *layer) : nullptr;
}

/// Null for a solid line, also in place of a pattern that nobody could see.
std::shared_ptr<const TZEPDashPattern> TDXFBuilder::PatternOf(const TDXFRecord& record,
                                                              const TDXFChain& chain) {
    if (!Drawing.LineTypes.AreThere()) return {};
    const TDXFLineType* type = LineTypeOf(record);
    if (!type) return {};
    if (type->HasTexts) Pass(record, TDXFReport::TReason::LineTexts);
    auto pattern = Drawing.LineTypes.PatternOf(*type, record.Number(48, 1));
    const double most = pattern ? TZEPDashPattern::MaxPeriods * pattern->Period() : 0;
    if (pattern && LengthOf(chain) <= most) return pattern;
    Pass(record, TDXFReport::TReason::TooFine);
    return {};
}

bool TDXFBuilder::MayMake(const TDXFRecord& record, const TZEPObject* layer, std::size_t points) {
    if (!layer) {
        Pass(record, TDXFReport::TReason::NoLayer);
        return false;
    }
    if (Scope.IsInBlock()) return m_limits.TakeObject(points);
    if (record.IsPart() ? m_limits.TakePart(points) : m_limits.TakePoints(points)) return true;
    Pass(record, TDXFReport::TReason::TooMany);
    return false;
}

void TDXFBuilder::Widen(TZEPObject& object, int weight) {
    if (auto* line = qobject_cast<TZEPLineShape*>(&object))
        line->SetWidth(TDXFWeights::PixelsOf(weight));
}

void TDXFBuilder::AddChain(const TDXFRecord& record, TDXFChain chain, const TGLMatrixd4& frame,
                           bool runsOn) {
    if (!IsIdentityd(frame)) {
        for (TGLArrayd3& point : chain.Points) Xformd(frame, point);
        chain = CheckedChain(std::move(chain));
    }
    if (chain.Points.empty()) return Pass(record, TDXFReport::TReason::NoPoints);
    AddPolyline(record, chain, runsOn);
    if (record.Number(ThicknessCode) == 0) return;
    AddWalls(record, chain);
    const TGLArrayd3 way = DXFWall(record);
    for (TGLArrayd3& point : chain.Points) point += way;
    AddPolyline(record, CheckedChain(std::move(chain)), runsOn);
}

void TDXFBuilder::AddPolyline(const TDXFRecord& record, const TDXFChain& chain, bool runsOn) {
    if (chain.Points.empty()) return;
    const auto pattern = PatternOf(record, chain);
    if (!pattern)
        return Add<TZEPPolyline>(record, chain.Points.size(),
                                 [&](TZEPPolyline& polyline) { FillChain(polyline, chain); });
    Add<TZEPDashedPolyline>(record, chain.Points.size(), [&](TZEPDashedPolyline& polyline) {
        FillChain(polyline, chain);
        polyline.SetPattern(pattern);
        polyline.SetRunsOn(runsOn);
    });
}

void TDXFBuilder::AddWalls(const TDXFRecord& record, const TDXFChain& chain) {
    const TGLArrayd3 way = DXFWall(record);
    const auto count = static_cast<int>(chain.Points.size());
    if (!IsFinite(way) || way == zero3d || count < 2) return;
    const int sides = chain.Closed ? count : count - 1;
    Add<TZEPMesh>(record, 4 * chain.Points.size(), [&](TZEPMesh& mesh) {
        mesh.SetColorFaces(false);
        for (const TGLArrayd3& point : chain.Points) {
            mesh.Vertexes()->Add()->SetPoint(point);
            mesh.Vertexes()->Add()->SetPoint(point + way);
        }
        for (int i = 0; i < sides; ++i) {
            const int a = 2 * i, b = 2 * ((i + 1) % count);
            mesh.Faces()->Add()->SetCornersQuietly(a, b, b + 1);
            mesh.Faces()->Add()->SetCornersQuietly(a, b + 1, a + 1);
        }
    });
}

void TDXFBuilder::AddBulged(const TDXFRecord& record, std::span<const TDXFBulgeVertex> vertexes,
                            bool closed, const TGLMatrixd4& frame, bool runsOn) {
    const bool isWide = std::ranges::any_of(vertexes, [](const TDXFBulgeVertex& vertex) {
        return vertex.StartWidth != 0 || vertex.EndWidth != 0;
    });
    if (isWide) AddWide(record, vertexes, closed, frame);
    AddChain(record, BulgedChain(vertexes, closed, PointsLeft()), frame, runsOn);
}

/// The line in its middle stays: from afar the area is too small to be seen.
void TDXFBuilder::AddWide(const TDXFRecord& record, std::span<const TDXFBulgeVertex> vertexes,
                          bool closed, const TGLMatrixd4& frame) {
    const std::vector<TDXFWidePlace> places = WidePlacesOf(vertexes, closed);
    if (places.size() > MaxDXFWidePlaces) return Pass(record, TDXFReport::TReason::TooWide);
    const TContours contours = WideContours(places, closed);
    if (!contours.empty()) AddFilled(record, contours, TFillRule::NonZero, frame);
}

} // namespace ZEP
