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
    double Sweep = 0;       ///< degrees from `StartAngle` to `EndAngle`, above 0, at most 360
    bool Clockwise = false; ///< the tool runs from `EndAngle` down to `StartAngle`
};

/// What the word F means.
enum class TRS274DFeedMode : std::uint8_t {
    PerMinute,     ///< G94
    PerRevolution, ///< G95
    InverseTime    ///< G93: moves a minute
};

enum class TRS274DSpindle : std::uint8_t { Stopped, Clockwise, CounterClockwise };

/// Which ends of the moves that come the program tells. What only the machine knows is drawn as if
/// it were 0: where the tool is before the program places it, the reference point, and what counts
/// from the machine's own origin (G53).
enum class TRS274DPlaced : std::uint8_t { Whole, End, Neither };

/// What holds for the moves that come.
struct TRS274DSettings {
    double Feed = 0; ///< millimetres a minute or a revolution, or moves a minute; 0: none stated
    double SpindleSpeed = 0; ///< the word S, turns a minute; 0: none stated
    TRS274DFeedMode FeedMode = TRS274DFeedMode::PerMinute;
    TRS274DSpindle Spindle = TRS274DSpindle::Stopped;
    bool Drills = false; ///< the moves are those of a drilling cycle
    TRS274DPlaced Placed = TRS274DPlaced::Whole;
    bool operator==(const TRS274DSettings&) const = default;
};

/// A tool that comes into the spindle.
struct TRS274DTool {
    static constexpr qint64 NoNumber = -1;
    qint64 Number = NoNumber; ///< the word T; 0 empties the spindle; `NoNumber`: none stated
    /// From a comment: of the block with M6, else of a list of tools ("(T1 D=6. - end mill)"), else
    /// of the line before M6. Bytes of the program; empty where there is none.
    std::string_view Name;
    double Diameter = 0; ///< millimetres, by a "D" in the comment; 0: not stated
};

/// Takes the tool path of a program, move by move; each call names the line in the program. What a
/// sink may know beyond the moves is told by programs that are read `Extended`.
class ZEP_CORE_EXPORT TRS274DSink {
public:
    virtual ~TRS274DSink() = default;

    virtual void Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) = 0;
    virtual void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) = 0;
    virtual void Drill(const TRS274DPoint& at, qint64 line) = 0;
    virtual void Arc(const TRS274DArc& arc, qint64 line) = 0;
    /// A curve that is no arc (a helix, a spiral) by points on it, the first and the last included.
    /// \param length  of the curve itself
    virtual void Curve(std::span<const TRS274DPoint> points, double length, qint64 line) = 0;
    virtual void NextTool() = 0;
    /// M6, with what is known of the tool.
    virtual void ToolChange(const TRS274DTool& tool, qint64 line) {
        Q_UNUSED(tool)
        Q_UNUSED(line)
        NextTool();
    }
    /// Before the first move that they hold for, and only where they have changed; those of
    /// `TRS274DSettings()` hold until then.
    virtual void Settings(const TRS274DSettings& settings) { Q_UNUSED(settings) }
    /// The tool stands still: G4, and at the bottom of G82, G86, G88 and G89.
    /// \param seconds  above 0
    virtual void Dwell(double seconds, qint64 line) {
        Q_UNUSED(seconds)
        Q_UNUSED(line)
    }
    /// A line of the trace, without its end; called only where a trace was asked for.
    virtual void Dump(std::string_view text) = 0;
};

} // namespace ZEP
