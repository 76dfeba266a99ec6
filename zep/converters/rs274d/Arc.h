#pragma once

#include <zep/converters/rs274d/Sink.h>

#include <optional>
#include <vector>

namespace ZEP {

/// Ends closer than this on both axes of the plane are one point: the arc is a full circle.
inline constexpr double RS274DSamePoint = 1e-7;

/// Two coordinates in an arc's plane: on its first and its second axis.
struct TRS274DPlanePoint {
    double A = 0, B = 0;
};

/// The arc whose centre is rebuilt from the chord, on the side that `centerOnLeft` says.
/// \param start, end  apart from each other by `RS274DSamePoint` at least
/// \param radius      where half the chord is longer, the centre is put as far off as it should be
///                    within: a radius that is slightly short is made up for
/// \param counterClockwise  which of the ends the arc starts at
[[nodiscard]] TRS274DArc ArcOverChord(TRS274DPlanePoint start, TRS274DPlanePoint end, double radius,
                                      bool centerOnLeft, bool counterClockwise,
                                      TRS274DArcPlane plane, double normal);

/// A circle about `center`.
[[nodiscard]] TRS274DArc FullCircle(TRS274DPlanePoint center, double radius, bool counterClockwise,
                                    TRS274DArcPlane plane, double normal);

[[nodiscard]] double Distance(TRS274DPlanePoint a, TRS274DPlanePoint b);
[[nodiscard]] bool IsSamePoint(TRS274DPlanePoint a, TRS274DPlanePoint b);

/// The centre of the arc of `radius` from `start` to `end`; a negative radius takes the long way.
/// Nothing where the ends are one point, or further apart than the radius reaches.
[[nodiscard]] std::optional<TRS274DPlanePoint> CenterOfRadius(TRS274DPlanePoint start,
                                                              TRS274DPlanePoint end, double radius,
                                                              bool counterClockwise);

/// A tool's way about a centre: its radius runs from the start's to the end's, and what is normal
/// to the plane moves along.
class TRS274DTurn {
public:
    /// \param turns  the number of times that the angle of the end is reached, 1 at least
    TRS274DTurn(TRS274DPlanePoint start, TRS274DPlanePoint end, TRS274DPlanePoint center,
                bool counterClockwise, int turns);

    /// Radians, positive counter-clockwise.
    [[nodiscard]] double Sweep() const { return m_sweep; }
    [[nodiscard]] bool HasRadius() const { return m_startRadius > 0 && m_endRadius > 0; }
    /// The ends' distances from the centre differ by more than rounding explains.
    [[nodiscard]] bool IsSpiral() const;

    /// The circular arc through both ends. The centre moves along the chord to where it is as far
    /// from either end: programs state it with few digits. Nothing where that would move the
    /// curve by more than rounding explains.
    [[nodiscard]] std::optional<TRS274DArc> CircularArc(TRS274DArcPlane plane, double normal) const;

    /// Of the way, which rises by so much.
    [[nodiscard]] double Length(double rise) const;
    /// Points on the way, at most five degrees apart, both ends included and exact.
    void Points(const TRS274DPoint& start, const TRS274DPoint& end, TRS274DArcPlane plane,
                std::vector<TRS274DPoint>& points) const;

private:
    TRS274DPlanePoint m_start, m_end, m_center;
    bool m_full;
    double m_startRadius, m_endRadius;
    double m_startAngle, m_sweep;
};

} // namespace ZEP
