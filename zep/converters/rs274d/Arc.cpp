#include <zep/converters/rs274d/Arc.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

using std::numbers::pi;

constexpr double PointStep = pi / 36;
constexpr double SameSweep = 1e-12;

double Angle(TRS274DPlanePoint center, TRS274DPlanePoint point) {
    return std::atan2(point.B - center.B, point.A - center.A);
}

/// In 0..360: the box of an arc object is right for these only.
double Degrees(double radians) {
    const double degrees = radians * 180 / pi;
    const double positive = degrees < 0 ? degrees + 360 : degrees;
    return positive < 360 - 1e-9 ? positive : 0;
}

TRS274DPoint InSpace(TRS274DPlanePoint point, TRS274DArcPlane plane, double normal) {
    const TRS274DAxes axes = AxesOf(plane);
    TRS274DPoint result{};
    result[axes.First] = point.A;
    result[axes.Second] = point.B;
    result[axes.Normal] = normal;
    return result;
}

/// \param fromAngle, toAngle  of the tool
TRS274DArc ArcAbout(TRS274DPlanePoint center, double radius, double fromAngle, double toAngle,
                    bool counterClockwise, TRS274DArcPlane plane, double normal) {
    const double startAngle = counterClockwise ? fromAngle : toAngle;
    const double endAngle = counterClockwise ? toAngle : fromAngle;
    const double sweep = endAngle - startAngle;
    return {.Plane = plane,
            .Center = InSpace(center, plane, normal),
            .Radius = radius,
            .StartAngle = startAngle,
            .EndAngle = endAngle,
            .Sweep = sweep > 0 ? sweep : sweep + 360,
            .Clockwise = !counterClockwise};
}

/// What a stated centre may be off by through rounding: a hundredth of a millimetre and a
/// thousandth of the radius, as machines allow.
double RoundingOf(double radius) {
    return 0.01 + 0.001 * radius;
}

/// `height` off the chord's middle, to the left when seen from start to end.
TRS274DPlanePoint OffChord(TRS274DPlanePoint start, TRS274DPlanePoint end, double height) {
    const double d = Distance(start, end);
    return {(start.A + end.A) / 2 - (end.B - start.B) * height / d,
            (start.B + end.B) / 2 + (end.A - start.A) * height / d};
}

} // namespace

double Distance(TRS274DPlanePoint a, TRS274DPlanePoint b) {
    return std::hypot(b.A - a.A, b.B - a.B);
}

bool IsSamePoint(TRS274DPlanePoint a, TRS274DPlanePoint b) {
    return std::abs(b.A - a.A) < RS274DSamePoint && std::abs(b.B - a.B) < RS274DSamePoint;
}

TRS274DArc ArcOverChord(TRS274DPlanePoint start, TRS274DPlanePoint end, double radius,
                        bool centerOnLeft, bool counterClockwise, TRS274DArcPlane plane,
                        double normal) {
    const double half = Distance(start, end) / 2;
    const double height = std::sqrt(std::abs(radius * radius - half * half));
    const TRS274DPlanePoint center = OffChord(start, end, centerOnLeft ? height : -height);
    const double startAngle = Degrees(Angle(center, start));
    const double endAngle = Degrees(Angle(center, end));
    return ArcAbout(center, radius, startAngle, endAngle, counterClockwise, plane, normal);
}

TRS274DArc FullCircle(TRS274DPlanePoint center, double radius, bool counterClockwise,
                      TRS274DArcPlane plane, double normal) {
    return ArcAbout(center, radius, 0, 0, counterClockwise, plane, normal);
}

std::optional<TRS274DPlanePoint> CenterOfRadius(TRS274DPlanePoint start, TRS274DPlanePoint end,
                                                double radius, bool counterClockwise) {
    const double half = Distance(start, end) / 2;
    const double length = std::abs(radius);
    if (IsSamePoint(start, end) || half - length > RoundingOf(length)) return std::nullopt;
    const double height = std::sqrt(std::fmax(length * length - half * half, 0.0));
    return OffChord(start, end, counterClockwise == (radius > 0) ? height : -height);
}

TRS274DTurn::TRS274DTurn(TRS274DPlanePoint start, TRS274DPlanePoint end, TRS274DPlanePoint center,
                         bool counterClockwise, int turns)
    : m_start(start), m_end(end), m_center(center), m_full(IsSamePoint(start, end)),
      m_startRadius(Distance(center, start)), m_endRadius(Distance(center, end)),
      m_startAngle(Angle(center, start)) {
    double sweep = Angle(center, end) - m_startAngle;
    if (!counterClockwise) sweep = -sweep;
    if (sweep < 0) sweep += 2 * pi;
    if (m_full || sweep < SameSweep) sweep = 2 * pi;
    sweep += 2 * pi * (turns - 1);
    m_sweep = counterClockwise ? sweep : -sweep;
}

bool TRS274DTurn::IsSpiral() const {
    return std::abs(m_endRadius - m_startRadius) > RoundingOf(m_startRadius);
}

std::optional<TRS274DArc> TRS274DTurn::CircularArc(TRS274DArcPlane plane, double normal) const {
    if (m_full) return FullCircle(m_center, m_startRadius, m_sweep > 0, plane, normal);
    const double d = Distance(m_start, m_end);
    const TRS274DPlanePoint along{(m_end.A - m_start.A) / d, (m_end.B - m_start.B) / d};
    const TRS274DPlanePoint middle = OffChord(m_start, m_end, 0);
    const double offBisector =
        (m_center.A - middle.A) * along.A + (m_center.B - middle.B) * along.B;
    // The far side of a long arc moves with the centre, a short arc only by the radius.
    const bool isLong = std::abs(m_sweep) > pi;
    if (IsSpiral() || (isLong && std::abs(offBisector) > RoundingOf(m_startRadius)))
        return std::nullopt;
    const TRS274DPlanePoint center{m_center.A - offBisector * along.A,
                                   m_center.B - offBisector * along.B};
    const double startAngle = Degrees(Angle(center, m_start));
    const double endAngle = Degrees(Angle(center, m_end));
    // A sliver of a huge circle: equal angles would mean all of it.
    if (startAngle == endAngle) return std::nullopt;
    const double radius = Distance(center, m_start);
    return ArcAbout(center, radius, startAngle, endAngle, m_sweep > 0, plane, normal);
}

// By Simpson's rule, which is exact where the radius stays.
double TRS274DTurn::Length(double rise) const {
    constexpr int pairs = 16;
    const double out = m_endRadius - m_startRadius;
    const auto speed = [&](int i) {
        const double around = m_sweep * std::lerp(m_startRadius, m_endRadius, i / (2.0 * pairs));
        return std::sqrt(around * around + out * out + rise * rise);
    };
    double sum = speed(0) - speed(2 * pairs);
    for (int i = 1; i < 2 * pairs; i += 2) sum += 4 * speed(i) + 2 * speed(i + 1);
    return sum / (6 * pairs);
}

void TRS274DTurn::Points(const TRS274DPoint& start, const TRS274DPoint& end, TRS274DArcPlane plane,
                         std::vector<TRS274DPoint>& points) const {
    const int steps = static_cast<int>(std::ceil(std::abs(m_sweep) / PointStep - 1e-9));
    const std::size_t normal = AxesOf(plane).Normal;
    points.clear();
    points.push_back(start);
    for (int i = 1; i < steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        const double angle = m_startAngle + m_sweep * t;
        const double radius = std::lerp(m_startRadius, m_endRadius, t);
        points.push_back(
            InSpace({m_center.A + radius * std::cos(angle), m_center.B + radius * std::sin(angle)},
                    plane, std::lerp(start[normal], end[normal], t)));
    }
    points.push_back(end);
}

} // namespace ZEP
