#include <zep/converters/dxf/Curves.h>

#include <zep/converters/dxf/Points.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

using std::numbers::pi;

constexpr double SamePoint = 1e-9; // of the chain's size
constexpr double Rounding = 1e-4;  // radians: whole turns are written as 6.2832, too

/// Steps for an arc of that angle, in radians of any sign.
int StepsOf(double sweep) {
    return std::max(1, static_cast<int>(std::ceil(std::abs(sweep) * 180 / pi / DXFArcStep - 1e-9)));
}

/// The points between `from` and `to` on the arc.
void AppendArc(const TGLArrayd3& from, const TGLArrayd3& to, double bulge,
               std::vector<TGLArrayd3>& points) {
    if (bulge == 0 || !std::isfinite(bulge) || (from[0] == to[0] && from[1] == to[1])) return;
    const double sweep = 4 * std::atan(bulge);
    // The centre lies off the chord's middle by this part of the chord, to the left.
    const double offset = (1 / bulge - bulge) / 4;
    const double dx = to[0] - from[0], dy = to[1] - from[1];
    const double cx = from[0] + dx / 2 - dy * offset, cy = from[1] + dy / 2 + dx * offset;
    if (!std::isfinite(cx) || !std::isfinite(cy)) return;
    const double rx = from[0] - cx, ry = from[1] - cy;
    const int steps = StepsOf(sweep);
    for (int i = 1; i < steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        const double c = std::cos(sweep * t), s = std::sin(sweep * t);
        points.push_back(
            {cx + rx * c - ry * s, cy + rx * s + ry * c, std::lerp(from[2], to[2], t)});
    }
}

} // namespace

TDXFChain CheckedChain(TDXFChain chain) {
    auto& points = chain.Points;
    if (points.size() < 2 || !std::all_of(points.begin(), points.end(), IsFinite)) return {};
    if (!chain.Closed || points.size() == 2) return chain;
    if (Distance(points.front(), points.back()) <= SamePoint * SizeOf(points)) points.pop_back();
    return chain;
}

TDXFChain BulgedChain(std::span<const TDXFBulgeVertex> vertexes, bool closed,
                      std::size_t mostPoints) {
    TDXFChain chain{{}, closed};
    chain.Points.reserve(vertexes.size());
    for (std::size_t i = 0; i < vertexes.size(); ++i) {
        chain.Points.push_back(vertexes[i].Point);
        const bool isLast = i + 1 == vertexes.size();
        if (isLast && !closed) break;
        if (chain.Points.size() > mostPoints) continue;
        AppendArc(vertexes[i].Point, vertexes[isLast ? 0 : i + 1].Point, vertexes[i].Bulge,
                  chain.Points);
    }
    return CheckedChain(std::move(chain));
}

TDXFChain EllipseChain(const TDXFEllipse& ellipse) {
    if (!std::isfinite(ellipse.Start) || !std::isfinite(ellipse.End)) return {};
    TGLArrayd3 normal = ellipse.Normal, minor;
    Normalized(normal);
    CrossProdd(normal, ellipse.MajorAxis, minor);
    const double start = std::fmod(ellipse.Start, 2 * pi);
    double sweep = std::fmod(std::fmod(ellipse.End, 2 * pi) - start, 2 * pi);
    if (sweep <= 1e-9) sweep += 2 * pi; // also where the end is some turns further on
    if (std::abs(std::abs(ellipse.End - ellipse.Start) - 2 * pi) < Rounding) sweep = 2 * pi;
    const bool isFull = sweep >= 2 * pi - 1e-9;
    const int steps = StepsOf(sweep);
    TDXFChain chain{{}, isFull};
    for (int i = 0; i <= (isFull ? steps - 1 : steps); ++i) {
        const double t = start + sweep * i / steps;
        const double c = std::cos(t), s = std::sin(t) * ellipse.Ratio;
        chain.Points.push_back(ellipse.Center + ellipse.MajorAxis * c + minor * s);
    }
    return CheckedChain(std::move(chain));
}

} // namespace ZEP
