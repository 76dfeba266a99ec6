#include <zep/stock/Run.h>

#include <zep/framework/Exception.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ZEP {

namespace {

using TClock = std::chrono::steady_clock;

/// Cells, of some 12 ns each.
constexpr qint64 WorkApart = 4'000'000;
/// What a move costs beside its cells, in cells.
constexpr qint64 WorkOfMove = 200;
constexpr int MostChords = 2000;
constexpr double RadiansOfDegree = std::numbers::pi / 180;

TStockTool Slimmer(TStockTool tool) {
    tool.Diameter = std::max(tool.Diameter - 2 * TStockRun::RapidSlack, TStockTool::MinDiameter);
    tool.CornerRadius = std::min(tool.CornerRadius, tool.Radius());
    return tool;
}

TRS274DPoint OnArc(const TRS274DArc& arc, double radians) {
    const TRS274DAxes axes = AxesOf(arc.Plane);
    TRS274DPoint point = arc.Center;
    point[axes.First] += arc.Radius * std::cos(radians);
    point[axes.Second] += arc.Radius * std::sin(radians);
    return point;
}

/// Radians from the arc's start angle to where the tool begins, if that is none of its ends.
double BeginningOf(const TRS274DArc& arc, const TRS274DPoint& from) {
    const TRS274DAxes axes = AxesOf(arc.Plane);
    if (arc.StartAngle != arc.EndAngle)
        return (arc.Clockwise ? arc.EndAngle : arc.StartAngle) * RadiansOfDegree;
    return std::atan2(from[axes.Second] - arc.Center[axes.Second],
                      from[axes.First] - arc.Center[axes.First]);
}

} // namespace

TStockRun::TStockRun(TStock& stock, const TToolPath& path, std::vector<TStockTool> tools)
    : m_stock(stock), m_path(path), m_tools(std::move(tools)), m_apart(WorkApart) {
    if (m_tools.size() < m_path.Tools().size())
        throw Exception(QStringLiteral("The path has %1 tools, not %2.")
                            .arg(m_path.Tools().size())
                            .arg(m_tools.size()));
    for (const TStockTool& tool : m_tools)
        if (const QString fault = tool.Fault(); !fault.isEmpty()) throw Exception(fault);
    m_stock.Reset();
    m_kept.push_back({0, m_stock.State(), 0});
    m_workKept = m_stock.Work();
}

bool TStockRun::GoTo(int moves, double part, std::chrono::milliseconds limit) {
    moves = std::clamp(moves, 0, Count());
    part = moves < Count() && part > 0 ? std::min(part, 1.0) : 0;
    const TKept& kept = KeptBefore(moves);
    if (kept.Moves > m_done || std::pair(moves, part) < std::pair(m_done, m_part)) Restore(kept);
    const TClock::time_point end = TClock::now() + limit;
    while (m_done < moves) {
        CutNext();
        if (m_done % 16 == 0 && m_done < moves && TClock::now() >= end) return false;
    }
    if (part > m_part) CutPart(part);
    return true;
}

const TStockRun::TKept& TStockRun::KeptBefore(int moves) const {
    return *std::prev(std::ranges::upper_bound(m_kept, moves, {}, &TKept::Moves));
}

void TStockRun::Restore(const TKept& kept) {
    m_stock.SetState(kept.State);
    m_done = kept.Moves;
    m_part = 0;
}

/// The parts of a way down cut one below the other: only as a whole do they tell how deep it is.
void TStockRun::CutPart(double part) {
    if (m_part == 0 && m_done >= m_furthest && m_path.Move(m_done).Kind == TToolMoveKind::Rapid) {
        const auto before = m_stock.State();
        NoteRapid(CutMove(m_done, 1));
        m_stock.SetState(before);
    }
    CutMove(m_done, part);
    m_part = part;
}

void TStockRun::CutNext() {
    const double depth = CutMove(m_done, 1);
    if (m_part == 0) NoteRapid(depth);
    ++m_done;
    m_part = 0;
    m_furthest = std::max(m_furthest, m_done);
    Keep();
}

/// \param depth  that the next move cuts
void TStockRun::NoteRapid(double depth) {
    if (m_done < m_furthest || !(depth > 0)) return;
    const TToolMove move = m_path.Move(m_done);
    if (move.Kind != TToolMoveKind::Rapid) return;
    if (m_rapidCuts.empty() || m_rapidCuts.back().Move != m_done)
        m_rapidCuts.push_back({m_done, move.Line, depth});
}

void TStockRun::Keep() {
    const int last = m_kept.back().Moves;
    if (m_done <= last) m_workKept = m_stock.Work() + last * WorkOfMove;
    if (m_stock.Work() + m_done * WorkOfMove - m_workKept < m_apart) return;
    m_workKept = m_stock.Work() + m_done * WorkOfMove;
    m_kept.push_back({m_done, m_stock.State(), 0});
    m_kept.back().Bytes = TStock::BytesBeside(m_kept.back().State, m_kept[m_kept.size() - 2].State);
    while (Bytes() > MaxBytes && m_kept.size() > 2) Thin();
}

qint64 TStockRun::Bytes() const {
    qint64 bytes = 0;
    for (const TKept& kept : m_kept) bytes += kept.Bytes;
    return bytes;
}

void TStockRun::Thin() {
    std::vector<TKept> kept;
    for (std::size_t i = 0; i < m_kept.size(); i += 2) {
        kept.push_back(std::move(m_kept[i]));
        if (kept.size() > 1)
            kept.back().Bytes = TStock::BytesBeside(kept.back().State, kept[kept.size() - 2].State);
    }
    m_kept = std::move(kept);
    m_apart *= 2;
}

// --- a move ------------------------------------------------------------------------------------

double TStockRun::CutMove(int index, double part) {
    const TToolMove move = m_path.Move(index);
    const TStockTool& tool = m_tools[move.Tool];
    if (move.Kind == TToolMoveKind::Dwell) return 0;
    if (move.Kind == TToolMoveKind::Rapid) return CutRapid(tool, index, part);
    const TRS274DArc* arc = m_path.ArcOf(index);
    if (!arc) return CutWay(tool, index, part);
    const double sweep = part * arc->Sweep * RadiansOfDegree;
    const double start = BeginningOf(*arc, move.From);
    return CutArc(tool, *arc, arc->Clockwise ? start - sweep : start, sweep);
}

double TStockRun::CutRapid(const TStockTool& tool, int index, double part) {
    const TToolMove move = m_path.Move(index);
    if (move.Placed == TRS274DPlaced::Neither || (move.Placed == TRS274DPlaced::End && part < 1))
        return 0;
    const TGLArrayd3 raised{0, 0, RapidSlack};
    const TRS274DPoint from = move.Placed == TRS274DPlaced::End ? move.To : move.From;
    return m_stock.CutLine(Slimmer(tool), from + raised, m_path.PointOf(index, part) + raised,
                           TStockMark::CutInRapid);
}

double TStockRun::CutWay(const TStockTool& tool, int index, double part) {
    const std::span<const TRS274DPoint> points = m_path.PointsOf(index);
    if (points.size() == 1) return m_stock.CutLine(tool, points[0], points[0]);
    const TRS274DPoint end = m_path.PointOf(index, part);
    const auto pieces = static_cast<std::size_t>(part * static_cast<double>(points.size() - 1));
    double deepest = 0;
    for (std::size_t i = 0; i < pieces; ++i)
        deepest = std::max(deepest, m_stock.CutLine(tool, points[i], points[i + 1]));
    return std::max(deepest, m_stock.CutLine(tool, points[pieces], end));
}

double TStockRun::CutArc(const TStockTool& tool, const TRS274DArc& arc, double start,
                         double sweep) {
    if (arc.Plane == apXY) return m_stock.CutArc(tool, arc.Center, arc.Radius, start, sweep);
    const double radius = std::max(std::abs(arc.Radius), ArcTolerance);
    const double chord = 2 * std::acos(1 - std::min(ArcTolerance / radius, 1.0));
    const int chords =
        static_cast<int>(std::clamp(std::ceil(sweep / chord), 1.0, MostChords * 1.0));
    double deepest = 0;
    for (int i = 0; i < chords; ++i)
        deepest = std::max(deepest, m_stock.CutLine(tool, OnArc(arc, start + i * sweep / chords),
                                                    OnArc(arc, start + (i + 1) * sweep / chords)));
    return deepest;
}

} // namespace ZEP
