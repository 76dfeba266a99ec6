#include <zep/converters/rs274d/ExtendedMachine.h>

#include <cmath>

namespace ZEP {

void TRS274DExtendedMachine::Arc(const TRS274DBlock& block) {
    const TRS274DAxes axes = AxesOf(m_plane);
    const TRS274DPoint target = Target(block);
    const std::array<double, 4> words{Units(block.Value('I')), Units(block.Value('J')),
                                      Units(block.Value('K')), Units(block.Value('R'))};
    TraceMotion(target, &words);
    const TRS274DPlanePoint start{m_position[axes.First], m_position[axes.Second]};
    const TRS274DPlanePoint end{target[axes.First], target[axes.Second]};
    const int turns = Turns(block);
    const auto center = ArcCenter(block, start, end);
    if (center) {
        const TRS274DTurn turn(start, end, *center, IsCounterClockwiseInPlane(), turns);
        if (turn.HasRadius())
            DrawTurn(turn, target, turns);
        else
            FailArc(TRS274DPassed::ArcWithoutCenter);
    } else {
        FailArc(block.Has('R') ? TRS274DPassed::ArcOutOfReach : TRS274DPassed::ArcWithoutCenter);
    }
    m_position = target;
}

/// The machine looks at the XZ plane with Z as the first axis; here X is the first.
bool TRS274DExtendedMachine::IsCounterClockwiseInPlane() const {
    return m_counterClockwise != (m_plane == apXZ);
}

std::optional<TRS274DPlanePoint> TRS274DExtendedMachine::ArcCenter(const TRS274DBlock& block,
                                                                   TRS274DPlanePoint start,
                                                                   TRS274DPlanePoint end) {
    if (block.Has('R'))
        return CenterOfRadius(start, end, Units(block.Value('R')), IsCounterClockwiseInPlane());
    const TRS274DAxes axes = AxesOf(m_plane);
    if (!block.Has(LetterOf('I', axes.First)) && !block.Has(LetterOf('I', axes.Second)))
        return std::nullopt;
    const TRS274DCenterChoice center{StatedCenter(block, false), StatedCenter(block, true)};
    if (m_centers == TRS274DCenters::Unknown) FindCenters(start, end, center);
    if (m_centers != TRS274DCenters::Absolute) return center.Incremental;
    if (m_centersFound) m_report.Add(TRS274DPassed::AbsoluteCenter, m_place.Line);
    return center.Absolute;
}

/// An axis without a word has the centre where the arc begins.
TRS274DPlanePoint TRS274DExtendedMachine::StatedCenter(const TRS274DBlock& block,
                                                       bool isAbsolute) const {
    TRS274DPoint center = m_rotation.Undone(m_position);
    const TRS274DAxes axes = AxesOf(m_plane);
    for (const std::size_t axis : {axes.First, axes.Second}) {
        const char letter = LetterOf('I', axis);
        if (isAbsolute && block.Has(letter)) center[axis] = m_frames.Offset(axis);
        center[axis] += Units(block.Value(letter));
    }
    center = m_rotation.Applied(center);
    return {center[axes.First], center[axes.Second]};
}

void TRS274DExtendedMachine::FindCenters(TRS274DPlanePoint start, TRS274DPlanePoint end,
                                         const TRS274DCenterChoice& center) {
    if (!m_judge || IsSamePoint(center.Incremental, center.Absolute)) return;
    m_centers = m_judge(CentersOf(start, end, center));
    m_centersFound = m_centers == TRS274DCenters::Absolute;
}

int TRS274DExtendedMachine::Turns(const TRS274DBlock& block) {
    constexpr double pointsOfTurn = 72;
    const qint64 turns = std::max(std::llrint(block.Value('P')), 1LL);
    SpendRepetitions(static_cast<double>(turns - 1) * pointsOfTurn);
    return static_cast<int>(turns);
}

void TRS274DExtendedMachine::DrawTurn(const TRS274DTurn& turn, const TRS274DPoint& target,
                                      int turns) {
    const std::size_t normal = AxesOf(m_plane).Normal;
    if (turn.IsSpiral()) m_report.Add(TRS274DPassed::Spiral, m_place.Line);
    if (turns == 1 && std::abs(target[normal] - m_position[normal]) < RS274DSamePoint)
        if (const auto arc = turn.CircularArc(m_plane, target[normal])) return Draw(*arc);
    turn.Points(m_position, target, m_plane, m_points);
    Draw(m_points, turn.Length(target[normal] - m_position[normal]));
}

} // namespace ZEP
