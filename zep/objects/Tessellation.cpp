#include <zep/objects/Tessellation.h>

#include <zep/gl/Tessellator.h>

#include <algorithm>
#include <cmath>
#include <deque>

namespace ZEP {

namespace {

constexpr double MostCrossings = 3e4;
constexpr double MostOverlaps = 1e6; // that lie above each other

/// What is sent to the tessellator, and what comes back: parts of triangles, or outlines.
struct TResult {
    TContours Parts;
    std::vector<GLboolean> Edges;
    std::deque<TGLArrayd3> Crossings;
    GLboolean IsEdge = GL_TRUE;
};

TResult& ResultOf(void* data) {
    return *static_cast<TResult*>(data);
}

void BeginPart(GLenum, void* data) {
    ResultOf(data).Parts.emplace_back();
}

void TakeEdgeFlag(GLboolean isEdge, void* data) {
    ResultOf(data).IsEdge = isEdge;
}

void TakePoint(void* vertex, void* data) {
    TResult& result = ResultOf(data);
    result.Parts.back().push_back(*static_cast<const TGLArrayd3*>(vertex));
    result.Edges.push_back(result.IsEdge);
}

void AddCrossing(GLdouble place[3], void* [4], GLfloat[4], void** vertex, void* data) {
    *vertex = &ResultOf(data).Crossings.emplace_back(TGLArrayd3{place[0], place[1], place[2]});
}

/// Edge flags make the tessellator send separate triangles.
TTessellator MakeTessellator(bool outlines) {
    TTessellator made;
    made.SetCallback(GLU_TESS_BEGIN_DATA, BeginPart);
    made.SetCallback(GLU_TESS_VERTEX_DATA, TakePoint);
    made.SetCallback(GLU_TESS_COMBINE_DATA, AddCrossing);
    if (outlines)
        gluTessProperty(made.Get(), GLU_TESS_BOUNDARY_ONLY, GL_TRUE);
    else
        made.SetCallback(GLU_TESS_EDGE_FLAG_DATA, TakeEdgeFlag);
    return made;
}

/// What GLU cannot compute with would make it fail.
bool CanBeTessellated(const TGLArrayd3& point) {
    return std::ranges::all_of(point, [](double c) { return std::fabs(c) < GLU_TESS_MAX_COORD; });
}

void Send(GLUtesselator* tessellator, std::span<const TGLArrayd3> contour) {
    if (!std::ranges::all_of(contour, CanBeTessellated)) return;
    gluTessBeginContour(tessellator);
    for (const TGLArrayd3& point : contour) {
        // GLU takes places to change but only reads them.
        auto* place = const_cast<TGLArrayd3*>(&point);
        gluTessVertex(tessellator, place->data(), place);
    }
    gluTessEndContour(tessellator);
}

/// Begins in front of the lowest of those corners that lie farthest to the left, which is no dent.
void TurnToCorner(std::vector<TGLArrayd3>& outline) {
    std::rotate(outline.begin(), std::ranges::min_element(outline), outline.end());
    std::rotate(outline.begin(), outline.end() - 1, outline.end());
}

/// How many pairs of sides there are whose spans along an axis meet.
double MeetingSpans(const TContours& contours, std::size_t axis) {
    std::vector<double> starts, ends;
    for (const auto& contour : contours)
        for (std::size_t i = 0; i < contour.size(); ++i) {
            const auto [min, max] =
                std::minmax(contour[i][axis], contour[(i + 1) % contour.size()][axis]);
            starts.push_back(min);
            ends.push_back(max);
        }
    std::ranges::sort(starts);
    std::ranges::sort(ends);
    double pairs = 0;
    std::size_t over = 0;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        while (ends[over] < starts[i]) ++over;
        pairs += static_cast<double>(i - over);
    }
    return pairs;
}

/// Begins with the one farthest to the left, within which no other lies but as a hole. The rest
/// comes in columns, up and down by turns, so that the ways between them are short.
void SortByWay(TContours& outlines) {
    const auto corner = [](const auto& outline) { return outline[1]; };
    std::ranges::iter_swap(outlines.begin(), std::ranges::min_element(outlines, {}, corner));
    const double left = corner(outlines.front())[0];
    const double right = corner(*std::ranges::max_element(outlines, {}, corner))[0];
    const double columns = std::ceil(std::sqrt(static_cast<double>(outlines.size())));
    const auto key = [&](const auto& outline) {
        const TGLArrayd3 place = corner(outline);
        const double column =
            right > left ? std::floor((place[0] - left) / (right - left) * columns) : 0;
        const bool isDown = std::fmod(column, 2) != 0;
        return std::pair(column, isDown ? -place[1] : place[1]);
    };
    std::ranges::sort(outlines.begin() + 1, outlines.end(), {}, key);
}

} // namespace

TTriangles TrianglesOf(std::span<const TGLArrayd3> polygon) {
    static const TTessellator tessellator = MakeTessellator(false);
    TResult result;
    gluTessProperty(tessellator.Get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_POSITIVE);
    gluTessBeginPolygon(tessellator.Get(), &result);
    Send(tessellator.Get(), polygon);
    gluTessEndPolygon(tessellator.Get());
    TTriangles triangles{{}, std::move(result.Edges)};
    for (const auto& part : result.Parts)
        triangles.Points.insert(triangles.Points.end(), part.begin(), part.end());
    return triangles;
}

TContours OutlinesOf(const TContours& contours, TFillRule rule) {
    static const TTessellator tessellator = MakeTessellator(true);
    TResult result;
    gluTessProperty(tessellator.Get(), GLU_TESS_WINDING_RULE,
                    rule == TFillRule::Odd ? GLU_TESS_WINDING_ODD : GLU_TESS_WINDING_NONZERO);
    gluTessNormal(tessellator.Get(), 0, 0, 1);
    gluTessBeginPolygon(tessellator.Get(), &result);
    for (const auto& contour : contours) Send(tessellator.Get(), contour);
    gluTessEndPolygon(tessellator.Get());
    std::erase_if(result.Parts, [](const auto& part) { return part.size() < 3; });
    return std::move(result.Parts);
}

bool AreTangled(const TContours& contours) {
    const double inX = MeetingSpans(contours, 0), inY = MeetingSpans(contours, 1);
    return inX > MostOverlaps || std::min(inX, inY) > MostCrossings;
}

std::vector<TGLArrayd3> PolygonOf(TContours outlines) {
    if (outlines.empty()) return {};
    for (auto& outline : outlines) TurnToCorner(outline);
    SortByWay(outlines);
    std::vector<TGLArrayd3> polygon;
    for (const auto& outline : outlines) {
        polygon.insert(polygon.end(), outline.begin(), outline.end());
        if (outlines.size() > 1) polygon.push_back(outline.front());
    }
    for (std::size_t i = outlines.size(); i-- > 2;) polygon.push_back(outlines[i - 1].front());
    return polygon;
}

} // namespace ZEP
