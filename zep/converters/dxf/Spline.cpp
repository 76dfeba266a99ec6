#include <zep/converters/dxf/Spline.h>

#include <zep/converters/dxf/Points.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ZEP {

namespace {

constexpr double Tolerance = 1.0 / 5000; // of the curve's size
constexpr int MaxHalvings = 6;           // of a span
constexpr double EmptySpan = 1e-12;      // of all spans

using TPoints = std::vector<TGLArrayd3>;

double DistanceToChord(const TGLArrayd3& point, const TGLArrayd3& a, const TGLArrayd3& b) {
    const TGLArrayd3 chord = b - a;
    const double square = Dotd(chord, chord);
    if (!(square > 0)) return Distance(point, a);
    const double t = std::clamp(Dotd(point - a, chord) / square, 0.0, 1.0);
    return Distance(point, (1 - t) * a + t * b);
}

struct TSampling {
    double Tolerance;
    std::size_t MostPoints;
};

/// Appends the points behind the start of a span, at as many places as its bends ask for.
template <class TCurve>
class TSampler {
public:
    TSampler(const TCurve& curve, const TSampling& sampling, int minHalvings, TPoints& points)
        : m_curve(curve), m_sampling(sampling), m_minHalvings(minHalvings), m_points(points) {}

    void Append(std::size_t span, double from, double to) {
        if (m_points.size() > m_sampling.MostPoints) return;
        Halve(span, from, m_curve.At(span, from), to, m_curve.At(span, to), 0);
    }

private:
    // NOLINTNEXTLINE(misc-no-recursion): a few levels
    void Halve(std::size_t span, double from, const TGLArrayd3& start, double to,
               const TGLArrayd3& end, int halvings) {
        const double half = from + (to - from) / 2;
        const TGLArrayd3 middle = m_curve.At(span, half);
        const bool isFlat = halvings >= m_minHalvings &&
                            DistanceToChord(middle, start, end) <= m_sampling.Tolerance;
        if (isFlat || halvings == MaxHalvings) return m_points.push_back(end);
        Halve(span, from, start, half, middle, halvings + 1);
        Halve(span, half, middle, to, end, halvings + 1);
    }

    const TCurve& m_curve;
    TSampling m_sampling;
    int m_minHalvings;
    TPoints& m_points;
};

bool AreKnots(const std::vector<double>& knots, std::size_t count, std::size_t degree) {
    return knots.size() >= count + degree + 1 &&
           std::all_of(knots.begin(), knots.end(), [](double k) { return std::isfinite(k); }) &&
           std::is_sorted(knots.begin(), knots.end()) && knots[count] > knots[degree];
}

/// 0 0 0 0 1 2 3 3 3 3, or 0 1 2 3 ... for a periodic one.
std::vector<double> EvenKnots(std::size_t count, std::size_t degree, bool periodic) {
    std::vector<double> knots;
    for (std::size_t i = 0; i < count + degree + 1; ++i)
        knots.push_back(static_cast<double>(periodic ? i : std::clamp(i, degree, count) - degree));
    return knots;
}

/// The recurrence of de Boor on points that carry their weights.
class TRationalCurve {
public:
    explicit TRationalCurve(const TDXFSpline& spline);

    [[nodiscard]] TGLArrayd3 At(std::size_t span, double t) const;
    [[nodiscard]] TPoints Points(const TSampling& sampling) const;

private:
    void Add(const TGLArrayd3& point, double weight) {
        m_points.push_back({point[0] * weight, point[1] * weight, point[2] * weight, weight});
    }

    std::size_t m_degree;
    std::vector<TGLArrayd4> m_points;
    std::vector<double> m_knots;
};

TRationalCurve::TRationalCurve(const TDXFSpline& spline) {
    const std::size_t count = spline.ControlPoints.size();
    const int degree = std::clamp(spline.Degree, 1, TDXFSpline::MaxDegree);
    m_degree = std::min(static_cast<std::size_t>(degree), count - 1);
    const bool isWeighted =
        spline.Weights.size() == count &&
        std::all_of(spline.Weights.begin(), spline.Weights.end(), [](double w) { return w > 0; });
    for (std::size_t i = 0; i < count; ++i)
        Add(spline.ControlPoints[i], isWeighted ? spline.Weights[i] : 1);
    if (AreKnots(spline.Knots, count, m_degree)) {
        m_knots = spline.Knots;
        return;
    }
    if (spline.Closed) {
        if (count > 2 && m_points.front() == m_points.back()) m_points.pop_back();
        m_degree = std::min(m_degree, m_points.size() - 1);
        for (std::size_t i = 0; i < m_degree; ++i) m_points.push_back(m_points[i]);
    }
    m_knots = EvenKnots(m_points.size(), m_degree, spline.Closed);
}

TGLArrayd3 TRationalCurve::At(std::size_t span, double t) const {
    std::array<TGLArrayd4, TDXFSpline::MaxDegree + 1> d; // NOLINT: filled as far as it is read
    const std::size_t first = span - m_degree;
    for (std::size_t j = 0; j <= m_degree; ++j) d[j] = m_points[first + j];
    for (std::size_t r = 1; r <= m_degree; ++r)
        for (std::size_t j = m_degree; j >= r; --j) {
            const double low = m_knots[first + j], high = m_knots[j + 1 + span - r];
            const double a = high > low ? (t - low) / (high - low) : 0;
            for (std::size_t k = 0; k < 4; ++k) d[j][k] = (1 - a) * d[j - 1][k] + a * d[j][k];
        }
    const TGLArrayd4& p = d[m_degree];
    return {p[0] / p[3], p[1] / p[3], p[2] / p[3]};
}

TPoints TRationalCurve::Points(const TSampling& sampling) const {
    const double all = m_knots[m_points.size()] - m_knots[m_degree];
    const int minHalvings = m_degree == 1 ? 0 : m_degree <= 3 ? 2 : 3;
    TPoints points;
    TSampler sampler(*this, sampling, minHalvings, points);
    for (std::size_t i = m_degree; i < m_points.size(); ++i) {
        if (!(m_knots[i + 1] - m_knots[i] > all * EmptySpan)) continue;
        if (points.empty()) points.push_back(At(i, m_knots[i]));
        sampler.Append(i, m_knots[i], m_knots[i + 1]);
    }
    return points;
}

/// Cubic pieces over the lengths of the chords.
class TFittedCurve {
public:
    explicit TFittedCurve(const TDXFSpline& spline);

    [[nodiscard]] TGLArrayd3 At(std::size_t span, double t) const;
    [[nodiscard]] TPoints Points(const TSampling& sampling) const;

private:
    [[nodiscard]] TGLArrayd3 Slope(std::size_t span) const {
        return 1 / m_lengths[span] * m_points[span + 1] - 1 / m_lengths[span] * m_points[span];
    }
    [[nodiscard]] TGLArrayd3 InnerTangent(std::size_t before, std::size_t after) const;
    void SetEnds(const TDXFSpline& spline);

    TPoints m_points;
    TPoints m_tangents;
    std::vector<double> m_lengths;
};

TFittedCurve::TFittedCurve(const TDXFSpline& spline) {
    for (const TGLArrayd3& point : spline.FitPoints)
        if (m_points.empty() || point != m_points.back()) m_points.push_back(point);
    if (spline.Closed && m_points.front() != m_points.back()) m_points.push_back(m_points.front());
    for (std::size_t i = 0; i + 1 < m_points.size(); ++i)
        m_lengths.push_back(Distance(m_points[i], m_points[i + 1]));
    m_tangents.resize(m_points.size());
    for (std::size_t i = 1; i + 1 < m_points.size(); ++i) m_tangents[i] = InnerTangent(i - 1, i);
    if (m_points.size() > 1) SetEnds(spline);
}

TGLArrayd3 TFittedCurve::InnerTangent(std::size_t before, std::size_t after) const {
    const double both = m_lengths[before] + m_lengths[after];
    return m_lengths[after] / both * Slope(before) + m_lengths[before] / both * Slope(after);
}

void TFittedCurve::SetEnds(const TDXFSpline& spline) {
    const std::size_t last = m_lengths.size();
    if (spline.Closed) {
        m_tangents.front() = m_tangents.back() = InnerTangent(last - 1, 0);
        return;
    }
    const auto end = [&](TGLArrayd3 known, const TGLArrayd3& slope, const TGLArrayd3& neighbour) {
        Normalized(known);
        if (known != zero3d) return known;
        return last == 1 ? slope : 1.5 * slope - 0.5 * neighbour;
    };
    m_tangents.front() = end(spline.StartTangent, Slope(0), m_tangents[1]);
    m_tangents.back() = end(spline.EndTangent, Slope(last - 1), m_tangents[last - 1]);
}

TGLArrayd3 TFittedCurve::At(std::size_t span, double t) const {
    const double u = 1 - t;
    const TGLArrayd3 places =
        u * u * (1 + 2 * t) * m_points[span] + t * t * (1 + 2 * u) * m_points[span + 1];
    const TGLArrayd3 bends = t * u * u * m_tangents[span] - t * t * u * m_tangents[span + 1];
    return places + m_lengths[span] * bends;
}

TPoints TFittedCurve::Points(const TSampling& sampling) const {
    TPoints points{m_points.front()};
    TSampler sampler(*this, sampling, 2, points);
    for (std::size_t i = 0; i < m_lengths.size(); ++i) sampler.Append(i, 0, 1);
    return points;
}

} // namespace

TDXFChain SplineChain(const TDXFSpline& spline, std::size_t mostPoints) {
    const auto sampling = [=](const TPoints& points) {
        return TSampling{SizeOf(points) * Tolerance, mostPoints};
    };
    if (spline.ControlPoints.size() > 1)
        return CheckedChain(
            {TRationalCurve(spline).Points(sampling(spline.ControlPoints)), spline.Closed});
    if (spline.FitPoints.size() > 1)
        return CheckedChain(
            {TFittedCurve(spline).Points(sampling(spline.FitPoints)), spline.Closed});
    return {};
}

} // namespace ZEP
