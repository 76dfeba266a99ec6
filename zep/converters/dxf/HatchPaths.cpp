#include <zep/converters/dxf/HatchPaths.h>

#include <zep/converters/dxf/Points.h>
#include <zep/converters/dxf/Spline.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

using TPoints = std::vector<TGLArrayd3>;
using TTags = std::span<const TDXFRecord::TTag>;

constexpr int PolylineFlag = 2;
constexpr double SamePlace = 1e-6; // of the size of the edges
constexpr double RadianOfDegree = std::numbers::pi / 180;

/// More contours than this are filled as they are: to find which lies in which takes the square of
/// their number.
constexpr std::size_t MostNested = 2000;

enum TEdgeType { etLine = 1, etArc, etEllipse, etSpline };

/// Groups that stand one behind the other.
class TTagReader {
public:
    TTagReader(TTags tags, double elevation) : m_tags(tags), m_elevation(elevation) {}

    [[nodiscard]] bool IsAtEnd() const { return m_next == m_tags.size(); }
    /// 0 at the end.
    [[nodiscard]] int Code() const { return IsAtEnd() ? 0 : m_tags[m_next].Code; }
    [[nodiscard]] int Integer() const { return IsAtEnd() ? 0 : DXFInteger(m_tags[m_next].Value); }
    [[nodiscard]] double Number() const { return IsAtEnd() ? 0 : m_tags[m_next].Number(); }
    void Pass() { m_next += IsAtEnd() ? 0 : 1; }
    /// Up to the next group of one of these codes. False where there is none.
    bool PassTo(std::initializer_list<int> codes) {
        while (!IsAtEnd() && std::ranges::find(codes, Code()) == codes.end()) Pass();
        return !IsAtEnd();
    }
    /// The number of a group, if it comes next.
    double Take(int code, double otherwise = 0) {
        if (Code() != code) return otherwise;
        const double number = Number();
        Pass();
        return number;
    }
    /// \param code  of x
    TGLArrayd3 TakePoint(int code) {
        const double x = Take(code);
        return {x, Take(code + 10), m_elevation};
    }

private:
    TTags m_tags;
    double m_elevation;
    std::size_t m_next = 0;
};

TPoints PolylinePath(TTagReader& tags, std::size_t mostPoints) {
    std::vector<TDXFBulgeVertex> vertexes;
    while (!tags.IsAtEnd() && tags.Code() != 92 && tags.Code() != 97 && tags.Code() != 75) {
        if (tags.Code() != 10) {
            tags.Pass();
            continue;
        }
        const TGLArrayd3 place = tags.TakePoint(10);
        vertexes.push_back({place, tags.Take(42)});
    }
    return BulgedChain(vertexes, true, mostPoints).Points;
}

TPoints LineEdge(TTagReader& tags) {
    const TGLArrayd3 from = tags.TakePoint(10);
    return {from, tags.TakePoint(11)};
}

/// The parameter of the place on an ellipse that is seen at an angle from its centre.
double ParameterAt(double angle, double ratio) {
    const double turn = std::remainder(angle, 2 * std::numbers::pi);
    return angle - turn + std::atan2(std::sin(turn), ratio * std::cos(turn));
}

/// One that runs clockwise has its angles counted clockwise.
TPoints RoundEdge(TTagReader& tags, TDXFEllipse ellipse) {
    const double start = ParameterAt(tags.Take(50) * RadianOfDegree, ellipse.Ratio);
    const double end = ParameterAt(tags.Take(51, 360) * RadianOfDegree, ellipse.Ratio);
    const bool isClockwise = tags.Take(73, 1) == 0;
    ellipse.Start = isClockwise ? -end : start;
    ellipse.End = isClockwise ? -start : end;
    TDXFChain chain = EllipseChain(ellipse);
    if (chain.Closed) chain.Points.push_back(chain.Points.front());
    if (isClockwise) std::ranges::reverse(chain.Points);
    return std::move(chain.Points);
}

TPoints ArcEdge(TTagReader& tags) {
    const TGLArrayd3 center = tags.TakePoint(10);
    return RoundEdge(tags, {.Center = center, .MajorAxis = {tags.Take(40), 0, 0}});
}

TPoints EllipseEdge(TTagReader& tags) {
    const TGLArrayd3 center = tags.TakePoint(10);
    TGLArrayd3 axis = tags.TakePoint(11);
    axis[2] = 0;
    return RoundEdge(tags, {.Center = center, .MajorAxis = axis, .Ratio = tags.Take(40, 1)});
}

TPoints SplineEdge(TTagReader& tags, std::size_t mostPoints) {
    TDXFSpline spline{.Degree = static_cast<int>(std::clamp(tags.Take(94, 3), 1.0, 25.0))};
    tags.PassTo({40, 10, 11, 72, 97, 92});
    while (tags.Code() == 40) spline.Knots.push_back(tags.Take(40));
    while (tags.Code() == 10) {
        spline.ControlPoints.push_back(tags.TakePoint(10));
        if (tags.Code() == 42) spline.Weights.push_back(tags.Take(42));
    }
    // A number of fit points, where there are some; else of what comes behind the path.
    if (spline.ControlPoints.size() < 2 && tags.Code() == 97) tags.Pass();
    while (tags.Code() == 11) spline.FitPoints.push_back(tags.TakePoint(11));
    return SplineChain(spline, mostPoints).Points;
}

TPoints Edge(TTagReader& tags, std::size_t mostPoints) {
    const int type = tags.Integer();
    tags.Pass();
    switch (type) {
    case etLine:
        return LineEdge(tags);
    case etArc:
        return ArcEdge(tags);
    case etEllipse:
        return EllipseEdge(tags);
    case etSpline:
        return SplineEdge(tags, mostPoints);
    default:
        return {};
    }
}

bool AreNear(const TGLArrayd3& a, const TGLArrayd3& b, double size) {
    return Distance(a, b) <= SamePlace * size;
}

/// Appends an edge to the last contour, turned round if it meets that with its other end; where it
/// does not meet it, it begins a new one.
void Join(TPoints edge, TContours& contours, bool isFirst) {
    if (edge.size() < 2 || !std::ranges::all_of(edge, IsFinite)) return;
    if (isFirst) return contours.push_back(std::move(edge));
    TPoints& last = contours.back();
    const double size = SizeOf(last) + SizeOf(edge);
    if (AreNear(edge.back(), last.back(), size) && !AreNear(edge.front(), last.back(), size))
        std::ranges::reverse(edge);
    if (!AreNear(edge.front(), last.back(), size)) return contours.push_back(std::move(edge));
    last.insert(last.end(), edge.begin() + 1, edge.end());
}

void ReadEdges(TTagReader& tags, std::size_t mostPoints, TContours& contours) {
    const std::size_t first = contours.size();
    // Splines have a number of fit points that looks as what ends the path.
    if (!tags.PassTo({93, 92, 75})) return;
    for (double edges = tags.Take(93); edges > 0; --edges) {
        if (!tags.PassTo({72, 92, 75}) || tags.Code() != 72) return;
        Join(Edge(tags, mostPoints), contours, contours.size() == first);
    }
}

/// The point lies within the contour.
bool Contains(const TPoints& contour, const TGLArrayd3& point) {
    bool isWithin = false;
    for (std::size_t i = 0, k = contour.size() - 1; i < contour.size(); k = i++) {
        const TGLArrayd3& a = contour[i];
        const TGLArrayd3& b = contour[k];
        if ((a[1] > point[1]) == (b[1] > point[1])) continue;
        const double x = a[0] + (b[0] - a[0]) * ((point[1] - a[1]) / (b[1] - a[1]));
        if (point[0] < x) isWithin = !isWithin;
    }
    return isWithin;
}

} // namespace

TContours HatchContours(const TDXFRecord& record, std::size_t mostPoints) {
    TTagReader paths(record.Tags(), record.Number(30));
    TContours contours;
    std::size_t points = 0;
    if (!paths.PassTo({91})) return contours;
    while (paths.PassTo({92, 75, 98}) && paths.Code() == 92 && points <= mostPoints) {
        const bool isPolyline = (paths.Integer() & PolylineFlag) != 0;
        const std::size_t first = contours.size();
        paths.Pass();
        if (isPolyline)
            contours.push_back(PolylinePath(paths, mostPoints));
        else
            ReadEdges(paths, mostPoints, contours);
        for (std::size_t i = first; i < contours.size(); ++i) points += contours[i].size();
    }
    for (TPoints& contour : contours) contour = CheckedChain({std::move(contour), true}).Points;
    std::erase_if(contours, [](const TPoints& contour) { return contour.size() < 3; });
    return contours;
}

TContours ContoursOfStyle(TContours contours, TDXFHatchStyle style) {
    if (style == TDXFHatchStyle::Normal || contours.size() > MostNested) return contours;
    const int deepest = style == TDXFHatchStyle::Outer ? 1 : 0;
    TContours shown;
    for (const TPoints& contour : contours) {
        const auto around = std::ranges::count_if(contours, [&](const TPoints& other) {
            return &other != &contour && Contains(other, contour.front());
        });
        if (around <= deepest) shown.push_back(contour);
    }
    return shown;
}

} // namespace ZEP
