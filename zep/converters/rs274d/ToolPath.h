#pragma once

#include <zep/converters/rs274d/Sink.h>
#include <zep/converters/rs274d/ToolColors.h>
#include <zep/view/Extent.h>

#include <QString>

#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace ZEP {

enum class TToolMoveKind : std::uint8_t {
    Rapid, ///< those of drilling cycles included
    Feed,
    Arc,   ///< helices and spirals, too
    Drill, ///< a feed of a drilling cycle; read plainly a point where a hole is
    Dwell
};
inline constexpr std::size_t ToolMoveKinds = 5;

/// One move of a tool path; lengths in millimetres, times in seconds since the path's start.
struct TToolMove {
    TToolMoveKind Kind;
    TRS274DPoint From, To; ///< the same for a dwell and a plainly read hole
    qint64 Line;           ///< of the program, 1 for the first
    std::size_t Tool;      ///< in `TToolPath::Tools`
    double Feed;           ///< millimetres a minute; 0 where none is known, and of a dwell
    double Length;         ///< along the way
    double Begin, End;
    TRS274DPlaced Placed; ///< which ends the program tells
};

/// A tool of a path.
struct TPathTool {
    qint64 Number = TRS274DTool::NoNumber; ///< see `TRS274DTool`
    QString Name{};                        ///< see `TRS274DTool`
    double Diameter = 0;                   ///< millimetres; 0: not stated
    TColor Color{};                        ///< of its objects as `TRS274DConverter` makes them
    double MinFeed = 0, MaxFeed = 0;       ///< of what it cuts, millimetres a minute; 0: none known
    double MinSpeed = 0, MaxSpeed = 0;     ///< of the turning spindle, turns a minute; 0: none
};

/// Keeps the path of a program: where the tool is at which time. Any reading fills it:
///
///     TToolPath path;
///     TRS274DReport report;
///     TRS274DInterpreter({}, path, report).Run(text); // or converter.SetSink(&path)
///
/// Times come from the lengths: of rapids at a rate that the host states, of the others at the feed
/// of the program (G93, G94, G95); dwells are added, accelerations and tool changes left out. What
/// has no feed takes no time. Plainly read programs tell no feeds, tools and dwells. 64 bytes a
/// move. Defaults: 10,000 millimetres a minute in rapid.
class ZEP_CORE_EXPORT TToolPath : public TRS274DSink {
public:
    static constexpr double DefaultRapidRate = 10'000;

    /// \param rapidsHaveObjects  of the converter that makes the objects, `ShowQuickMove`
    explicit TToolPath(bool rapidsHaveObjects = true);

    [[nodiscard]] int Count() const { return static_cast<int>(m_moves.size()); }
    /// \param index  0 to `Count() - 1`, here and below
    [[nodiscard]] TToolMove Move(int index) const;
    /// Of the way, bulges of arcs included.
    [[nodiscard]] TZEPBounds BoundsOf(int index) const;
    /// \param fraction  of the length, 0 to 1; of a spiral, of its turn
    [[nodiscard]] TRS274DPoint PointOf(int index, double fraction) const;
    /// The arc that a move is; null where it goes along `PointsOf`, as helices do.
    [[nodiscard]] const TRS274DArc* ArcOf(int index) const;
    /// Places of the way, its ends included, with straight lines between them but for an arc; one
    /// where the tool stands still.
    [[nodiscard]] std::span<const TRS274DPoint> PointsOf(int index) const;
    /// The moves that a line of the program makes, in the order of the tool. It sorts the moves by
    /// their lines when it is first asked: not by several threads at once.
    [[nodiscard]] std::span<const int> MovesOfLine(qint64 line) const;
    /// The first is what the program begins with, before any change.
    [[nodiscard]] const std::vector<TPathTool>& Tools() const { return m_tools; }

    /// \name Time, in seconds
    /// @{
    [[nodiscard]] double Seconds() const { return m_ends.empty() ? 0 : m_ends.back(); }
    /// The move that is made then; before the start the first, after the end the last one; -1
    /// without moves.
    [[nodiscard]] int MoveAt(double seconds) const;
    /// Where the tool is then; the origin without moves.
    [[nodiscard]] TRS274DPoint PositionAt(double seconds) const;
    [[nodiscard]] double RapidRate() const { return m_rapidRate; }
    /// Tells all times anew.
    /// \param rate  millimetres a minute, above 0; another one is passed over
    void SetRapidRate(double rate);
    /// @}

    /// \name Objects, as the same reading of a converter makes them
    /// A dwell has none, and a rapid where rapids have none.
    /// @{
    [[nodiscard]] int ObjectCount() const { return Count() - static_cast<int>(m_bare.size()); }
    /// The number of the move's object among the children of the converter's root that it has made.
    [[nodiscard]] std::optional<int> ObjectOf(int index) const;
    /// \param object  0 to `ObjectCount() - 1`
    [[nodiscard]] int MoveOf(int object) const;
    /// @}

    void Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override;
    void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override;
    void Drill(const TRS274DPoint& at, qint64 line) override;
    void Arc(const TRS274DArc& arc, qint64 line) override;
    void Curve(std::span<const TRS274DPoint> points, double length, qint64 line) override;
    void NextTool() override;
    void ToolChange(const TRS274DTool& tool, qint64 line) override;
    void Settings(const TRS274DSettings& settings) override { m_settings = settings; }
    void Dwell(double seconds, qint64 line) override;
    void Dump(std::string_view) override {}

private:
    static constexpr qint32 NoArc = -1;
    static constexpr qint32 FirstCurve = -2; ///< the next ones below

    struct TMove {
        quint32 First, Last; ///< points
        qint32 Line;
        qint32 Arc = NoArc; ///< its number, or that of a curve
        double Rate = 0;    ///< feed, or the seconds of a dwell
        quint16 Tool = 0;
        TToolMoveKind Kind;
        TRS274DPlaced Placed = TRS274DPlaced::Whole;
    };

    /// \return the number of a point that lies there: the last one, or a new one
    quint32 StartAt(const TRS274DPoint& from);
    /// A move to the last point.
    /// \param seconds  of a dwell
    void Add(TToolMoveKind kind, quint32 first, qint64 line, qint32 arc = NoArc,
             double seconds = 0);
    void AddTool(const TPathTool& tool);
    [[nodiscard]] double FeedFor(double length) const;
    void NoteFeed(double feed);
    [[nodiscard]] TRS274DPoint Position() const;
    [[nodiscard]] double LengthOf(const TMove& move) const;
    [[nodiscard]] double SecondsOf(const TMove& move, double length) const;
    [[nodiscard]] TRS274DPoint PointOnArc(const TMove& move, double fraction) const;

    std::vector<TMove> m_moves;
    std::vector<double> m_ends; ///< of the moves, seconds
    std::vector<TRS274DPoint> m_points;
    std::vector<TRS274DArc> m_arcs;
    std::vector<double> m_curves; ///< lengths of those that are no arcs
    std::vector<TPathTool> m_tools{1};
    std::map<qint64, quint16> m_numbered; ///< tools
    TRS274DToolColors m_colors;
    TRS274DSettings m_settings;
    std::vector<int> m_bare; ///< moves without an object
    mutable std::vector<int> m_byLine;
    double m_rapidRate = DefaultRapidRate;
    quint16 m_tool = 0;
    bool m_rapidsHaveObjects;
};

} // namespace ZEP
