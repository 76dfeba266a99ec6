#include <zep/converters/dxf/WidePath.h>

#include <zep/scene/Vectors.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ZEP {

namespace {

/// A corner of less than some 10 degrees has no mitre.
constexpr double SharpestCosine = -0.985;

constexpr double SameWidth = 1e-6; // of the width

/// A straight piece of some length.
struct TPiece {
    TGLArrayd3 From, To;
    double Start, End; ///< half widths
    TGLArrayd3 Side;   ///< to its left, of length 1
};

std::vector<TPiece> PiecesOf(std::span<const TDXFWidePlace> places, bool closed) {
    std::vector<TPiece> pieces;
    const std::size_t count = closed ? places.size() : places.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const TDXFWidePlace& place = places[i];
        const TGLArrayd3& to = places[(i + 1) % places.size()].Point;
        const TGLArrayd3 way = Unit(to - place.Point);
        if (way == zero3d || !IsFinite(way)) continue;
        pieces.push_back({place.Point,
                          to,
                          std::abs(place.Start) / 2,
                          std::abs(place.End) / 2,
                          {-way[1], way[0], 0}});
    }
    return pieces;
}

bool AreMitred(const TPiece& in, const TPiece& out) {
    return std::abs(in.End - out.Start) <= in.End * SameWidth &&
           Dotd(in.Side, out.Side) > SharpestCosine;
}

/// To the left, from where two pieces meet to the tip of their mitre.
TGLArrayd3 MitreOf(const TPiece& in, const TPiece& out) {
    return (in.Side + out.Side) * (in.End / (1 + Dotd(in.Side, out.Side)));
}

/// What fills the outside of a corner without a mitre.
std::vector<TGLArrayd3> BevelOf(const TPiece& in, const TPiece& out) {
    const double half = std::min(in.End, out.Start);
    if (Cross(in.Side, out.Side)[2] < 0)
        return {in.To, in.To + out.Side * half, in.To + in.Side * half};
    return {in.To, in.To - in.Side * half, in.To - out.Side * half};
}

/// Both sides of pieces that are mitred where they meet.
class TSides {
public:
    void Add(const TGLArrayd3& place, const TGLArrayd3& toLeft) {
        m_left.push_back(place + toLeft);
        m_right.push_back(place - toLeft);
    }
    /// One contour round an open run, two of a closed one.
    void Finish(TContours& contours, bool closed) {
        std::ranges::reverse(m_left);
        if (closed)
            contours.push_back(std::move(m_right));
        else
            m_left.insert(m_left.end(), m_right.begin(), m_right.end());
        contours.push_back(std::move(m_left));
        m_left.clear();
        m_right.clear();
    }

private:
    std::vector<TGLArrayd3> m_left, m_right;
};

/// The first piece that is not mitred with the one before it; 0 where there is none.
std::size_t FirstBreak(const std::vector<TPiece>& pieces) {
    for (std::size_t i = 0; i < pieces.size(); ++i)
        if (!AreMitred(pieces[i == 0 ? pieces.size() - 1 : i - 1], pieces[i])) return i;
    return 0;
}

} // namespace

std::vector<TDXFWidePlace> WidePlacesOf(std::span<const TDXFBulgeVertex> vertexes, bool closed) {
    std::vector<TDXFWidePlace> places;
    for (std::size_t i = 0; i < vertexes.size() && places.size() <= MaxDXFWidePlaces; ++i) {
        const TDXFBulgeVertex& from = vertexes[i];
        const bool isLast = i + 1 == vertexes.size();
        if (isLast && !closed) {
            places.push_back({from.Point});
            break;
        }
        const std::array piece{from, vertexes[isLast ? 0 : i + 1]};
        const std::vector<TGLArrayd3> points = BulgedChain(piece, false).Points;
        const auto width = [&](std::size_t k) {
            const auto pieces = static_cast<double>(points.size() - 1);
            return std::lerp(from.StartWidth, from.EndWidth, static_cast<double>(k) / pieces);
        };
        for (std::size_t k = 0; k + 1 < points.size(); ++k)
            places.push_back({points[k], width(k), width(k + 1)});
    }
    return places;
}

TContours WideContours(std::span<const TDXFWidePlace> places, bool closed) {
    TContours contours;
    if (places.size() < 2) return contours;
    std::vector<TPiece> pieces = PiecesOf(places, closed);
    if (pieces.empty()) return contours;
    if (closed)
        std::rotate(pieces.begin(), pieces.begin() + std::ptrdiff_t(FirstBreak(pieces)),
                    pieces.end());
    const bool isRing = closed && pieces.size() > 2 && AreMitred(pieces.back(), pieces.front());
    TSides sides;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const TPiece& piece = pieces[i];
        const bool isFirst = i == 0, isLast = i + 1 == pieces.size();
        const bool meetsLast = !isFirst && AreMitred(pieces[i - 1], piece);
        if (isFirst && isRing) sides.Add(piece.From, MitreOf(pieces.back(), piece));
        if (!meetsLast && !(isFirst && isRing)) sides.Add(piece.From, piece.Side * piece.Start);
        if (isLast && isRing) break;
        const TPiece& next = pieces[isLast ? 0 : i + 1];
        if (!isLast && AreMitred(piece, next)) {
            sides.Add(piece.To, MitreOf(piece, next));
            continue;
        }
        sides.Add(piece.To, piece.Side * piece.End);
        sides.Finish(contours, false);
        if (!isLast || closed) contours.push_back(BevelOf(piece, next));
    }
    if (isRing) sides.Finish(contours, true);
    return contours;
}

} // namespace ZEP
