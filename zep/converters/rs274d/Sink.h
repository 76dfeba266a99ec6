#pragma once

#include <zep/Export.h>

#include <QtGlobal>

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace ZEP {

/// x, y, z.
using TRS274DPoint = std::array<double, 3>;

enum class TRS274DMoveMode : std::uint8_t { mmNone, mmQuick, mmLinear, mmArc, mmDrill };
enum TRS274DArcPlane : std::uint8_t { apXY, apXZ, apYZ };

/// Indexes (0 = X, 1 = Y, 2 = Z) of a plane's first, second and normal axis.
struct TRS274DAxes {
    std::size_t First, Second, Normal;
};

[[nodiscard]] constexpr TRS274DAxes AxesOf(TRS274DArcPlane plane) {
    constexpr TRS274DAxes axes[] = {{0, 1, 2}, {0, 2, 1}, {1, 2, 0}};
    return axes[plane];
}

/// A circular arc in a plane parallel to two axes.
struct TRS274DArc {
    TRS274DArcPlane Plane = apXY;
    TRS274DPoint Center{};
    double Radius = 0; ///< negative only where a program states it so
    /// Degrees in 0..360, from the plane's first axis towards the second; swept from `StartAngle`
    /// up to `EndAngle`, whichever way the tool runs. Equal angles are a full circle.
    double StartAngle = 0, EndAngle = 0;
    double Sweep = 0; ///< degrees from `StartAngle` to `EndAngle`, above 0, at most 360
};

/// Takes the tool path of a program, move by move; each call names the line in the program.
class ZEP_CORE_EXPORT TRS274DSink {
public:
    virtual ~TRS274DSink() = default;

    virtual void Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) = 0;
    virtual void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) = 0;
    virtual void Drill(const TRS274DPoint& at, qint64 line) = 0;
    virtual void Arc(const TRS274DArc& arc, qint64 line) = 0;
    /// A curve that is no arc (a helix, a spiral) by points on it, the first and the last included.
    virtual void Curve(std::span<const TRS274DPoint> points, qint64 line) = 0;
    virtual void NextTool() = 0;
    /// A line of the trace, without its end; called only where a trace was asked for.
    virtual void Dump(std::string_view text) = 0;
};

} // namespace ZEP
