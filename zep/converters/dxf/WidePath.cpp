#include <zep/converters/dxf/WidePath.h>

#include <zep/scene/Vectors.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ZEP {

namespace {

/// A corner of less than some 10 degrees has no mitre.
constexpr double SharpestCosine = -0.985;

/// A straight piece of some length.
struct TPiece {
    TGLArrayd3 From, To;
    double Start, End; ///< half widths
    TGLArrayd3 Side;   ///< to its left, of length 1
};

TGLArrayd3 LeftOf(const TGLArrayd3& direction) {
    return {-direction[1], direction[0], 0};
}

std::vector<TPiece> PiecesOf(std::span<const TDXFWidePlace> places, bool closed) {
    std::vector<TPiece> pieces;
    const std::size_t count = closed ? places.size() : places.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const TDXFWidePlace& place = places[i];
        const TGLArrayd3& to = places[(i + 1) % places.size()].Point;
        const TGLArrayd3 way = to - place.Point;
        const double length = Length(way);
        if (!(length > 0)) continue;
        pieces.push_back({place.Point, to, std::abs(place.Start) / 2, std::abs(place.End) / 2,
                          LeftOf(way / length)});
    }
    return pieces;
}

double AreaOf(const std::vector<TGLArrayd3>& contour) {
    double area = 0;
    TGLArrayd3 last = contour.back();
    for (const TGLArrayd3& point : contour) {
        area += Cross(last - contour.front(), point - contour.front())[2];
        last = point;
    }
    return area;
}

/// Turned round if it runs clockwise.
void Add(TContours& contours, std::vector<TGLArrayd3> contour) {
    const double area = AreaOf(contour);
    if (area == 0) return;
    if (area < 0) std::ranges::reverse(contour);
    contours.push_back(std::move(contour));
}

/// What lies between the ends of two pieces on the outside of a bend.
void AddJoint(TContours& contours, const TPiece& in, const TPiece& out) {
    const double half = in.End;
    const double bend = Cross(in.Side, out.Side)[2], cosine = Dotd(in.Side, out.Side);
    if (half == 0 || std::abs(half - out.Start) > half * 1e-6) return;
    if (bend == 0 && cosine > 0) return;
    const double outside = bend > 0 ? -half : half;
    const TGLArrayd3 first = in.To + in.Side * outside, last = in.To + out.Side * outside;
    if (cosine < SharpestCosine) return Add(contours, {in.To, first, last});
    const TGLArrayd3 tip = in.To + (in.Side + out.Side) * (outside / (1 + cosine));
    Add(contours, {in.To, first, tip, last});
}

} // namespace

std::vector<TDXFWidePlace> WidePlacesOf(std::span<const TDXFBulgeVertex> vertexes, bool closed) {
    std::vector<TDXFWidePlace> places;
    for (std::size_t i = 0; i < vertexes.size() && places.size() <= MaxDXFWidePlaces; ++i) {
        const TDXFBulgeVertex& from = vertexes[i];
        const bool isLast = i + 1 == vertexes.size();
        const std::array piece{from, vertexes[isLast ? 0 : i + 1]};
        const bool isEnd = isLast && !closed;
        std::vector<TGLArrayd3> points = BulgedChain(piece, false).Points;
        if (points.empty()) continue;
        const auto pieces = static_cast<double>(points.size() - 1);
        const auto width = [&](std::size_t k) {
            return std::lerp(from.StartWidth, from.EndWidth, static_cast<double>(k) / pieces);
        };
        for (std::size_t k = 0; k + 1 < points.size() && !isEnd; ++k)
            places.push_back({points[k], width(k), width(k + 1)});
        if (isEnd) places.push_back({from.Point});
    }
    return places;
}

TContours WideContours(std::span<const TDXFWidePlace> places, bool closed) {
    TContours contours;
    if (places.size() < 2) return contours;
    const std::vector<TPiece> pieces = PiecesOf(places, closed);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const TPiece& piece = pieces[i];
        Add(contours, {piece.From - piece.Side * piece.Start, piece.To - piece.Side * piece.End,
                       piece.To + piece.Side * piece.End, piece.From + piece.Side * piece.Start});
        if (i > 0) AddJoint(contours, pieces[i - 1], piece);
    }
    if (closed && pieces.size() > 1) AddJoint(contours, pieces.back(), pieces.front());
    return contours;
}

} // namespace ZEP
