#include <zep/converters/rs274d/ExtendedMachine.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

using TGroup = TRS274DGroup;

constexpr double MillimetresOfInch = 25.4;

char LetterOf(char first, std::size_t axis) {
    return static_cast<char>(first + static_cast<int>(axis));
}

bool IsSilentM(qint64 code) {
    constexpr qint64 silent[] = {3,  4,  5,  7,  8,  9,  10, 11, 13, 14, 19, 29, 41, 42, 43,
                                 44, 48, 49, 50, 51, 52, 53, 61, 62, 63, 64, 65, 66, 67, 68};
    return std::ranges::binary_search(silent, code);
}

} // namespace

void TRS274DExtendedMachine::RunBlock(const TRS274DBlock& block) {
    m_plan = {};
    if (block.End() != TRS274DBlockEnd::Complete) return;
    if (block.Words().size() < 2) m_toolNames.Note(block.Comment(), m_place.Line);
    if (block.Has('T')) SelectTool(block.Value('T'));
    for (const TRS274DWord& word : block.Words()) {
        if (word.Letter == 'G') ProcessG(word);
        if (word.Letter == 'M') ProcessM(word, block);
    }
    if (block.HasAnyOf("FS")) NoteSettings(block);
    if (block.HasAnyOf("ABCUVW")) m_report.Add(TRS274DPassed::OtherAxes, m_place.Line);
    Execute(block);
}

void TRS274DExtendedMachine::ProcessG(const TRS274DWord& word) {
    const TRS274DCode& code = FindGCode(word.Value);
    if (code.Trace)
        Trace(code.Trace);
    else
        TraceSkipped(word);
    if (code.Group == TGroup::Unknown) {
        m_report.AddCode('G', word.Value, m_place.Line);
        m_plan.OtherUse = true;
    }
    ApplyMode(code);
}

void TRS274DExtendedMachine::ApplyMode(const TRS274DCode& code) {
    switch (code.Group) {
    case TGroup::Unknown:
    case TGroup::Silent:
        return;
    case TGroup::Rapid:
        return SetMotion(mmQuick);
    case TGroup::Feed:
        return SetMotion(mmLinear);
    case TGroup::Clockwise:
    case TGroup::CounterClockwise:
        m_counterClockwise = code.Group == TGroup::CounterClockwise;
        return SetMotion(mmArc);
    case TGroup::Cycle:
        SetMotion(mmDrill);
        m_hole.Cycle = code.Value;
        return;
    case TGroup::CancelMotion:
        if (m_mode == mmDrill) m_mode = m_modeBeforeCycle;
        return;
    case TGroup::Plane:
        m_plane = static_cast<TRS274DArcPlane>(code.Value);
        return;
    case TGroup::Units:
        m_inch = code.Value == 1;
        return;
    case TGroup::Distance:
        m_incremental = code.Value == 1;
        return;
    case TGroup::CenterDistance:
        m_absoluteCenters = code.Value == 0;
        return;
    case TGroup::RetractLevel:
        m_returnToInitial = code.Value == 0;
        return;
    case TGroup::WorkSystem:
        return m_frames.SelectSystem(code.Value);
    case TGroup::MachineFrame:
        m_plan.MachineFrame = true;
        return;
    case TGroup::Dwell:
        m_plan.OtherUse = m_plan.Dwells = true;
        return;
    case TGroup::FeedMode:
        return SetFeedMode(static_cast<TRS274DFeedMode>(code.Value));
    default:
        m_plan.Action = &code;
        return;
    }
}

void TRS274DExtendedMachine::SetMotion(TRS274DMoveMode mode) {
    if (mode == mmDrill && m_mode != mmDrill) {
        m_modeBeforeCycle = m_mode;
        m_newCycle = true;
    }
    m_mode = mode;
    m_plan.Motion = true;
}

void TRS274DExtendedMachine::ProcessM(const TRS274DWord& word, const TRS274DBlock& block) {
    const qint64 code = std::llrint(word.Value);
    switch (code) {
    case 0:
    case 1:
    case 60:
        return Trace("program pause");
    case 2:
    case 30:
        m_running = false;
        return Trace("program end");
    case 97:
    case 98:
        m_plan.Transfer = code == 97 ? TRS274DTransfer::CallLine : TRS274DTransfer::CallProgram;
        return Trace("call of a subprogram");
    case 99:
        m_plan.Transfer = TRS274DTransfer::Return;
        return Trace("end of a subprogram");
    case 6:
        ChangeTool(block);
        return Trace("next tool");
    default:
        break;
    }
    TurnSpindle(code);
    if (!IsSilentM(code)) m_report.AddCode('M', word.Value, m_place.Line);
}

void TRS274DExtendedMachine::Execute(const TRS274DBlock& block) {
    if (m_plan.Dwells) Dwell(block.Value('P'));
    if (m_plan.Action) return RunAction(block);
    const bool moves = block.HasAnyOf("XYZ@^") || (m_mode == mmArc && block.HasAnyOf("IJK"));
    if (!moves) return;
    if (m_plan.OtherUse && !m_plan.Motion) return;
    TellSettings(m_mode == mmDrill);
    Move(block, GetRepeatCount(block));
}

void TRS274DExtendedMachine::Move(const TRS274DBlock& block, qint64 repeats) {
    const TRS274DPoint target = Target(block);
    if (m_mode != mmNone && m_mode != mmArc) TraceMotion(target, nullptr);
    switch (m_mode) {
    case mmNone:
        return FailNoMotionMode();
    case mmQuick:
        return Rapid(target);
    case mmLinear:
        return Feed(target);
    case mmArc:
        return Arc(block);
    case mmDrill:
        return Drill(block, block.Has('L') ? repeats : 1);
    }
}

double TRS274DExtendedMachine::Units(double value) const {
    return m_inch ? value * MillimetresOfInch : value;
}

TRS274DPoint TRS274DExtendedMachine::Target(const TRS274DBlock& block) const {
    TRS274DPoint target = m_position;
    if (block.HasAnyOf("@^")) ApplyPolar(block, target);
    ForAxisWords(block, [&](std::size_t axis, double value) {
        if (m_plan.MachineFrame)
            target[axis] = value;
        else
            target[axis] = value + (m_incremental ? m_position[axis] : m_frames.Offset(axis));
    });
    return target;
}

/// "@" is the distance from the origin of the coordinate system, "^" the angle about it in
/// degrees; what is not stated stays.
void TRS274DExtendedMachine::ApplyPolar(const TRS274DBlock& block, TRS274DPoint& target) const {
    const double x = m_position[0] - m_frames.Offset(0);
    const double y = m_position[1] - m_frames.Offset(1);
    const auto stated = [&](char letter, double value, double current) {
        if (!block.Has(letter)) return current;
        return m_incremental ? current + value : value;
    };
    const double radius = stated('@', Units(block.Value('@')), std::hypot(x, y));
    const double angle = stated('^', block.Value('^') * std::numbers::pi / 180, std::atan2(y, x));
    target[0] = m_frames.Offset(0) + radius * std::cos(angle);
    target[1] = m_frames.Offset(1) + radius * std::sin(angle);
}

template <class Function>
void TRS274DExtendedMachine::ForAxisWords(const TRS274DBlock& block, Function function) const {
    for (std::size_t axis = 0; axis < m_position.size(); ++axis) {
        const char letter = LetterOf('X', axis);
        if (block.Has(letter)) function(axis, Units(block.Value(letter)));
    }
}

void TRS274DExtendedMachine::RunAction(const TRS274DBlock& block) {
    TellSettings(false);
    const TRS274DCode& action = *m_plan.Action;
    const auto which = static_cast<std::size_t>(action.Value);
    switch (action.Group) {
    case TGroup::SetData:
        return SetData(block);
    case TGroup::Reference:
        return GoToReference(which, block);
    case TGroup::StoreReference:
        m_references[which] = m_position;
        return;
    case TGroup::LocalOffset:
        return ForAxisWords(
            block, [&](std::size_t axis, double value) { m_frames.SetLocal(axis, value); });
    case TGroup::Offset:
        return ForAxisWords(block, [&](std::size_t axis, double value) {
            m_frames.SetOffsetAt(axis, m_position[axis], value);
        });
    case TGroup::ClearOffset:
        return m_frames.ClearOffset();
    case TGroup::SuspendOffset:
        return m_frames.SuspendOffset();
    case TGroup::RestoreOffset:
        return m_frames.RestoreOffset();
    case TGroup::Tap: {
        const TRS274DPoint start = m_position;
        Feed(Target(block));
        return Feed(start);
    }
    default:
        return;
    }
}

void TRS274DExtendedMachine::SetData(const TRS274DBlock& block) {
    const qint64 kind = std::llrint(block.Value('L'));
    const qint64 number = std::llrint(block.Value('P'));
    const bool isKnown = (kind == 2 || kind == 20) && !block.Has('R');
    if (!isKnown || number < 0 || number > TRS274DFrames::SystemCount)
        return m_report.AddCode('G', 10, m_place.Line);
    const int system = number == 0 ? m_frames.Selected() : static_cast<int>(number) - 1;
    ForAxisWords(block, [&](std::size_t axis, double value) {
        if (kind == 2)
            m_frames.SetOrigin(system, axis, value);
        else
            m_frames.SetOriginAt(system, axis, m_position[axis], value);
    });
}

void TRS274DExtendedMachine::GoToReference(std::size_t which, const TRS274DBlock& block) {
    const bool isAll = !block.HasAnyOf("XYZ");
    if (!isAll) Rapid(Target(block));
    TRS274DPoint to = m_position;
    for (std::size_t axis = 0; axis < to.size(); ++axis)
        if (isAll || block.Has(LetterOf('X', axis))) to[axis] = m_references[which][axis];
    Rapid(to);
}

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
                                                                   TRS274DPlanePoint end) const {
    if (block.Has('R'))
        return CenterOfRadius(start, end, Units(block.Value('R')), IsCounterClockwiseInPlane());
    const TRS274DAxes axes = AxesOf(m_plane);
    if (!block.Has(LetterOf('I', axes.First)) && !block.Has(LetterOf('I', axes.Second)))
        return std::nullopt;
    return TRS274DPlanePoint{CenterCoordinate(block, axes.First),
                             CenterCoordinate(block, axes.Second)};
}

double TRS274DExtendedMachine::CenterCoordinate(const TRS274DBlock& block, std::size_t axis) const {
    const char letter = LetterOf('I', axis);
    if (!block.Has(letter)) return m_position[axis];
    return Units(block.Value(letter)) +
           (m_absoluteCenters ? m_frames.Offset(axis) : m_position[axis]);
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
    Draw(m_points);
}

void TRS274DExtendedMachine::Drill(const TRS274DBlock& block, qint64 repeats) {
    ReadHole(block);
    const std::size_t normal = AxesOf(m_plane).Normal;
    if (m_position[normal] < m_hole.R) MoveOnNormal(true, m_hole.R);
    for (qint64 i = 0; i < repeats; ++i) {
        if (i > 0) SpendRepetitions(1);
        TRS274DPoint place = Target(block);
        place[normal] = m_position[normal];
        DrillAt(place);
    }
}

/// R and Z stay until the cycle ends. With incremental distances R counts from the initial level
/// and Z from R.
void TRS274DExtendedMachine::ReadHole(const TRS274DBlock& block) {
    const std::size_t normal = AxesOf(m_plane).Normal;
    const char depth = LetterOf('X', normal);
    if (m_newCycle) {
        m_initialLevel = m_position[normal];
        m_hole.R = m_hole.Bottom = m_initialLevel;
        m_hole.Peck = m_hole.Dwell = 0;
        m_newCycle = false;
    }
    const double origin = m_frames.Offset(normal);
    if (block.Has('R'))
        m_hole.R = Units(block.Value('R')) + (m_incremental ? m_initialLevel : origin);
    if (block.Has(depth))
        m_hole.Bottom = Units(block.Value(depth)) + (m_incremental ? m_hole.R : origin);
    if (block.Has('P')) m_hole.Dwell = block.Value('P');
    if (block.Has('Q')) m_hole.Peck = Units(block.Value('Q'));
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
