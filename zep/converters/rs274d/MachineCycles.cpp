#include <zep/converters/rs274d/ExtendedMachine.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

/// The same number is a cycle of mills, a cycle of lathes, or nothing that moves.
const TRS274DCode& TRS274DExtendedMachine::MeaningOf(const TRS274DCode& code,
                                                     const TRS274DBlock& block) const {
    using enum TRS274DGroup;
    static constexpr TRS274DCode ofLathe{-1, Unknown, 0, nullptr};
    static constexpr TRS274DCode tapping{740, Cycle, 74, "drill"};
    static constexpr TRS274DCode boring{760, Cycle, 76, "drill"};
    switch (code.Group) {
    case Cycle:
        return m_turns && code.Value == 73 ? ofLathe : code;
    case Quadrants:
        if (m_turns) return ofLathe;
        return code.Value == 74 && IsTapping(block) ? tapping : code;
    case Boring:
        return IsFanuc() && !m_turns ? boring : ofLathe;
    case Polar:
    case Rotation:
        return m_turns && code.Value == 1 ? ofLathe : code;
    default:
        return code;
    }
}

bool TRS274DExtendedMachine::IsTapping(const TRS274DBlock& block) const {
    if (m_mode == mmDrill && m_hole.Cycle == 74) return true;
    return block.Has('R') && block.Has(LetterOf('X', AxesOf(m_plane).Normal));
}

qint64 TRS274DExtendedMachine::HoleCount(const TRS274DBlock& block) {
    const char letter = IsFanuc() && block.Has('K') ? 'K' : 'L';
    return block.Has(letter) ? GetRepeatCount(block, letter) : 1;
}

void TRS274DExtendedMachine::Drill(const TRS274DBlock& block) {
    const qint64 count = HoleCount(block);
    ReadHole(block);
    const std::size_t normal = AxesOf(m_plane).Normal;
    const bool isBack = m_hole.Cycle == 87;
    if (m_position[normal] < m_hole.R && !isBack) MoveOnNormal(true, m_hole.R);
    for (qint64 i = 0; i < count; ++i) {
        if (i > 0) SpendRepetitions(1);
        TRS274DPoint place = Target(block);
        place[normal] = m_position[normal];
        isBack ? BoreBack(place) : DrillAt(place);
    }
}

/// The machine decides to which side the tool moves before it enters the hole: what it bores is
/// not drawn. It comes back to where it was above.
void TRS274DExtendedMachine::BoreBack(const TRS274DPoint& place) {
    Rapid(place);
    m_report.Add(TRS274DPassed::BackBoring, m_place.Line);
}

/// R and depth stay until the cycle ends, as numbers: in the distance mode in force. With
/// incremental distances R counts from the initial level and the depth from R.
void TRS274DExtendedMachine::ReadHole(const TRS274DBlock& block) {
    const std::size_t normal = AxesOf(m_plane).Normal;
    const char depth = LetterOf('X', normal);
    if (m_newCycle) {
        m_initialLevel = m_position[normal];
        m_levelWord = m_depthWord = std::nullopt;
        m_hole.Peck = m_hole.Dwell = 0;
        m_newCycle = false;
    }
    if (block.Has('R')) m_levelWord = Units(block.Value('R'));
    if (block.Has(depth)) m_depthWord = Units(block.Value(depth));
    if (block.Has('P')) m_hole.Dwell = DwellOf(block);
    if (block.Has('Q')) m_hole.Peck = Units(block.Value('Q'));
    const double origin = m_frames.Offset(normal);
    const auto level = [&](std::optional<double> word, double base) {
        return word ? *word + (m_incremental ? base : origin) : m_initialLevel;
    };
    m_hole.R = level(m_levelWord, m_initialLevel);
    m_hole.Bottom = level(m_depthWord, m_hole.R);
    m_hole.Clear = m_returnToInitial ? std::max(m_initialLevel, m_hole.R) : m_hole.R;
}

void TRS274DExtendedMachine::DrillAt(const TRS274DPoint& place) {
    SpendRepetitions(PeckCount(m_hole) - 1);
    HoleMoves(m_hole, m_levelMoves);
    Rapid(place);
    if (m_position[AxesOf(m_plane).Normal] != m_hole.R) MoveOnNormal(true, m_hole.R);
    for (const TRS274DLevelMove& move : m_levelMoves) {
        MoveOnNormal(move.Rapid, move.Level);
        if (&move == m_levelMoves.data() && Dwells(m_hole)) Dwell(m_hole.Dwell);
    }
}

void TRS274DExtendedMachine::MoveOnNormal(bool rapid, double level) {
    TRS274DPoint to = m_position;
    to[AxesOf(m_plane).Normal] = level;
    if (rapid)
        Rapid(to);
    else
        Feed(to);
}

} // namespace ZEP
