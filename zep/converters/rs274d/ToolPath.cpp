#include <zep/converters/rs274d/ToolPath.h>

#include <zep/converters/rs274d/ToolNames.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>

namespace ZEP {

namespace {

using TKind = TToolMoveKind;

constexpr double SecondsOfMinute = 60;
constexpr double LongestMove = 1e15; // seconds: a feed may be as good as none
constexpr double RadiansOfDegree = std::numbers::pi / 180;

/// The ends of an arc are reckoned from its angles: a point as near is the same.
constexpr double ArcRounding = 1e-6;

double DistanceOf(const TRS274DPoint& a, const TRS274DPoint& b) {
    const double x = b[0] - a[0], y = b[1] - a[1], z = b[2] - a[2];
    return std::sqrt(x * x + y * y + z * z);
}

TRS274DPoint Between(const TRS274DPoint& a, const TRS274DPoint& b, double fraction) {
    TRS274DPoint point;
    for (std::size_t i = 0; i < point.size(); ++i) point[i] = std::lerp(a[i], b[i], fraction);
    return point;
}

TRS274DPoint AtAngle(const TRS274DArc& arc, double degrees) {
    const TRS274DAxes axes = AxesOf(arc.Plane);
    TRS274DPoint point = arc.Center;
    point[axes.First] += arc.Radius * std::cos(degrees * RadiansOfDegree);
    point[axes.Second] += arc.Radius * std::sin(degrees * RadiansOfDegree);
    return point;
}

/// Degrees.
double AngleOf(const TRS274DArc& arc, const TRS274DPoint& point) {
    const TRS274DAxes axes = AxesOf(arc.Plane);
    return std::atan2(point[axes.Second] - arc.Center[axes.Second],
                      point[axes.First] - arc.Center[axes.First]) /
           RadiansOfDegree;
}

TRS274DPoint ArcEnd(const TRS274DArc& arc, bool isEndAngle) {
    return AtAngle(arc, isEndAngle ? arc.EndAngle : arc.StartAngle);
}

bool TellsSize(const QString& name) {
    return std::ranges::any_of(name, [](QChar c) { return c.isDigit(); });
}

bool IsFull(const TRS274DArc& arc) {
    return arc.StartAngle == arc.EndAngle;
}

void WidenRange(double& low, double& high, double value) {
    if (value <= 0) return;
    low = low > 0 ? std::min(low, value) : value;
    high = std::max(high, value);
}

} // namespace

TToolPath::TToolPath(bool rapidsHaveObjects) : m_rapidsHaveObjects(rapidsHaveObjects) {
    m_tools[0].Color = m_colors.Current();
}

// --- filling -------------------------------------------------------------------------------------

quint32 TToolPath::StartAt(const TRS274DPoint& from) {
    const bool isNear = !m_moves.empty() && m_moves.back().Arc > NoArc &&
                        DistanceOf(m_points.back(), from) < ArcRounding;
    if (isNear) m_points.back() = from; // as the program says it
    if (m_points.empty() || m_points.back() != from) m_points.push_back(from);
    return static_cast<quint32>(m_points.size() - 1);
}

void TToolPath::Add(TKind kind, quint32 first, qint64 line, qint32 arc, double seconds) {
    constexpr qint64 lastLine = std::numeric_limits<qint32>::max();
    const TMove& move =
        m_moves.emplace_back(TMove{.First = first,
                                   .Last = static_cast<quint32>(m_points.size() - 1),
                                   .Line = static_cast<qint32>(std::min(line, lastLine)),
                                   .Arc = arc,
                                   .Rate = seconds,
                                   .Tool = m_tool,
                                   .Kind = kind,
                                   .Placed = m_settings.Placed});
    const double length = LengthOf(move);
    if (kind != TKind::Rapid && kind != TKind::Dwell) NoteFeed(FeedFor(length));
    m_ends.push_back(Seconds() + SecondsOf(move, length));
}

double TToolPath::FeedFor(double length) const {
    switch (m_settings.FeedMode) {
    case TRS274DFeedMode::PerMinute:
        return m_settings.Feed;
    case TRS274DFeedMode::PerRevolution:
        return m_settings.Feed * m_settings.SpindleSpeed;
    case TRS274DFeedMode::InverseTime:
        return m_settings.Feed * length;
    }
    return 0;
}

void TToolPath::NoteFeed(double feed) {
    m_moves.back().Rate = feed;
    TPathTool& tool = m_tools[m_tool];
    WidenRange(tool.MinFeed, tool.MaxFeed, feed);
    if (m_settings.Spindle != TRS274DSpindle::Stopped)
        WidenRange(tool.MinSpeed, tool.MaxSpeed, m_settings.SpindleSpeed);
}

void TToolPath::Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) {
    const quint32 first = StartAt(from);
    m_points.push_back(to);
    if (!m_rapidsHaveObjects) m_bare.push_back(Count());
    Add(TKind::Rapid, first, line);
}

void TToolPath::Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) {
    const quint32 first = StartAt(from);
    m_points.push_back(to);
    Add(m_settings.Drills ? TKind::Drill : TKind::Feed, first, line);
}

void TToolPath::Drill(const TRS274DPoint& at, qint64 line) {
    Add(TKind::Drill, StartAt(at), line);
}

void TToolPath::Arc(const TRS274DArc& arc, qint64 line) {
    const quint32 first = StartAt(IsFull(arc) ? Position() : ArcEnd(arc, arc.Clockwise));
    m_points.push_back(IsFull(arc) ? m_points.back() : ArcEnd(arc, !arc.Clockwise));
    m_arcs.push_back(arc);
    Add(TKind::Arc, first, line, static_cast<qint32>(m_arcs.size() - 1));
}

void TToolPath::Curve(std::span<const TRS274DPoint> points, double length, qint64 line) {
    const quint32 first = StartAt(points.front());
    m_points.insert(m_points.end(), points.begin() + 1, points.end());
    m_curves.push_back(length);
    Add(TKind::Arc, first, line, FirstCurve + 1 - static_cast<qint32>(m_curves.size()));
}

void TToolPath::Dwell(double seconds, qint64 line) {
    m_bare.push_back(Count());
    Add(TKind::Dwell, StartAt(Position()), line, NoArc, seconds);
}

void TToolPath::NextTool() {
    m_colors.Next();
    AddTool({.Color = m_colors.Current()});
}

void TToolPath::ToolChange(const TRS274DTool& tool, qint64 /*line*/) {
    m_colors.Change(tool.Number);
    const QString name = QString::fromUtf8(tool.Name.data(), qsizetype(tool.Name.size()));
    if (const auto known = m_numbered.find(tool.Number); known != m_numbered.end()) {
        m_tool = known->second;
        TPathTool& present = m_tools[m_tool];
        if (present.Diameter > 0 || TellsSize(present.Name) || !TellsSize(name)) return;
        present.Name = name; // the first one was an operation, or nothing
        present.Diameter = tool.Diameter;
        return;
    }
    AddTool({.Number = tool.Number,
             .Name = name,
             .Diameter = tool.Diameter,
             .Color = m_colors.Current()});
    if (tool.Number >= 0) m_numbered.try_emplace(tool.Number, m_tool);
}

void TToolPath::AddTool(const TPathTool& tool) {
    if (m_tools.size() <= MaxRS274DTools) m_tools.push_back(tool);
    m_tool = static_cast<quint16>(m_tools.size() - 1);
}

// --- asking --------------------------------------------------------------------------------------

TRS274DPoint TToolPath::Position() const {
    return m_points.empty() ? TRS274DPoint() : m_points.back();
}

double TToolPath::LengthOf(const TMove& move) const {
    if (move.Arc <= FirstCurve) return m_curves[static_cast<std::size_t>(FirstCurve - move.Arc)];
    if (move.Arc != NoArc) {
        const TRS274DArc& arc = m_arcs[static_cast<std::size_t>(move.Arc)];
        return std::abs(arc.Radius) * arc.Sweep * RadiansOfDegree;
    }
    return DistanceOf(m_points[move.First], m_points[move.Last]);
}

double TToolPath::SecondsOf(const TMove& move, double length) const {
    if (move.Kind == TKind::Dwell) return move.Rate;
    const double rate = move.Kind == TKind::Rapid ? m_rapidRate : move.Rate;
    return rate > 0 ? std::min(length / rate * SecondsOfMinute, LongestMove) : 0;
}

TToolMove TToolPath::Move(int index) const {
    const auto place = static_cast<std::size_t>(index);
    const TMove& move = m_moves[place];
    return {.Kind = move.Kind,
            .From = m_points[move.First],
            .To = m_points[move.Last],
            .Line = move.Line,
            .Tool = move.Tool,
            .Feed = move.Kind == TKind::Dwell ? 0 : move.Rate,
            .Length = LengthOf(move),
            .Begin = place > 0 ? m_ends[place - 1] : 0,
            .End = m_ends[place],
            .Placed = move.Placed};
}

const TRS274DArc* TToolPath::ArcOf(int index) const {
    const TMove& move = m_moves[static_cast<std::size_t>(index)];
    return move.Arc <= NoArc ? nullptr : &m_arcs[static_cast<std::size_t>(move.Arc)];
}

std::span<const TRS274DPoint> TToolPath::PointsOf(int index) const {
    const TMove& move = m_moves[static_cast<std::size_t>(index)];
    return {m_points.data() + move.First, m_points.data() + move.Last + 1};
}

TZEPBounds TToolPath::BoundsOf(int index) const {
    const TMove& move = m_moves[static_cast<std::size_t>(index)];
    TZEPBounds bounds{m_points[move.First], m_points[move.First]};
    const auto widen = [&](const TRS274DPoint& point) {
        for (std::size_t i = 0; i < point.size(); ++i) {
            bounds.Min[i] = std::min(bounds.Min[i], point[i]);
            bounds.Max[i] = std::max(bounds.Max[i], point[i]);
        }
    };
    for (quint32 i = move.First + 1; i <= move.Last; ++i) widen(m_points[i]);
    if (move.Arc <= NoArc) return bounds;
    const TRS274DArc& arc = m_arcs[static_cast<std::size_t>(move.Arc)];
    for (double quarter = 0; quarter < 360; quarter += 90) {
        const double behind = std::fmod(quarter - arc.StartAngle + 360, 360);
        if (behind < arc.Sweep) widen(AtAngle(arc, quarter));
    }
    return bounds;
}

TRS274DPoint TToolPath::PointOf(int index, double fraction) const {
    const TMove& move = m_moves[static_cast<std::size_t>(index)];
    if (!(fraction > 0) || move.First == move.Last) return m_points[move.First];
    if (fraction >= 1) return m_points[move.Last];
    if (move.Arc > NoArc) return PointOnArc(move, fraction);
    // Points of a curve are as far apart from each other in its turn.
    const double place = fraction * (move.Last - move.First);
    const quint32 before = std::min(move.First + static_cast<quint32>(place), move.Last - 1);
    return Between(m_points[before], m_points[before + 1], place - (before - move.First));
}

TRS274DPoint TToolPath::PointOnArc(const TMove& move, double fraction) const {
    const TRS274DArc& arc = m_arcs[static_cast<std::size_t>(move.Arc)];
    double start = arc.Clockwise ? arc.EndAngle : arc.StartAngle;
    if (IsFull(arc)) start = AngleOf(arc, m_points[move.First]);
    return AtAngle(arc, start + (arc.Clockwise ? -fraction : fraction) * arc.Sweep);
}

std::span<const int> TToolPath::MovesOfLine(qint64 line) const {
    const auto lineOf = [this](int move) {
        return qint64{m_moves[static_cast<std::size_t>(move)].Line};
    };
    if (m_byLine.size() != m_moves.size()) {
        m_byLine.resize(m_moves.size());
        std::iota(m_byLine.begin(), m_byLine.end(), 0);
        // Loops and subprograms alone come back to lines.
        if (!std::ranges::is_sorted(m_byLine, {}, lineOf))
            std::ranges::stable_sort(m_byLine, {}, lineOf);
    }
    const auto first = std::ranges::lower_bound(m_byLine, line, {}, lineOf);
    const auto last = std::ranges::upper_bound(m_byLine, line, {}, lineOf);

    return {first, last};
}

int TToolPath::MoveAt(double seconds) const {
    const auto end = std::ranges::upper_bound(m_ends, seconds);
    return std::min(static_cast<int>(end - m_ends.begin()), Count() - 1);
}

TRS274DPoint TToolPath::PositionAt(double seconds) const {
    const int index = MoveAt(seconds);
    if (index < 0) return {};
    const auto place = static_cast<std::size_t>(index);
    const double begin = place > 0 ? m_ends[place - 1] : 0;
    const double duration = m_ends[place] - begin;
    return PointOf(index, duration > 0 ? (seconds - begin) / duration : 1);
}

void TToolPath::SetRapidRate(double rate) {
    if (!(rate > 0) || rate == m_rapidRate) return;
    m_rapidRate = rate;
    double seconds = 0;
    for (std::size_t i = 0; i < m_moves.size(); ++i) {
        seconds += SecondsOf(m_moves[i], LengthOf(m_moves[i]));
        m_ends[i] = seconds;
    }
}

std::optional<int> TToolPath::ObjectOf(int index) const {
    const auto bare = std::ranges::lower_bound(m_bare, index);
    if (bare != m_bare.end() && *bare == index) return {};
    return index - static_cast<int>(bare - m_bare.begin());
}

int TToolPath::MoveOf(int object) const {
    // The object in front of which so many bare moves stand.
    std::size_t low = 0, high = m_bare.size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (m_bare[middle] - static_cast<int>(middle) <= object)
            low = middle + 1;
        else
            high = middle;
    }
    return object + static_cast<int>(low);
}

} // namespace ZEP
