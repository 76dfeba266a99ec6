#include <zep/converters/rs274d/ExtendedMachine.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

using TGroup = TRS274DGroup;

constexpr double MillimetresOfInch = 25.4;

/// Whose meaning depends on more than the number.
bool IsOfMills(TGroup group) {
    return group >= TGroup::Cycle && group <= TGroup::Rotation;
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
        if (word.Letter == 'G') ProcessG(word, block);
        if (word.Letter == 'M') ProcessM(word, block);
    }
    if (block.HasAnyOf("FS")) NoteSettings(block);
    if (block.HasAnyOf("ABCUVW")) m_report.Add(TRS274DPassed::OtherAxes, m_place.Line);
    Execute(block);
}

void TRS274DExtendedMachine::ProcessG(const TRS274DWord& word, const TRS274DBlock& block) {
    const TRS274DCode& found = FindGCode(word.Value);
    const TRS274DCode& code = IsOfMills(found.Group) ? MeaningOf(found, block) : found;
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
        SetMotion(mmLinear);
        if (code.Value == 1) SetThreading(true);
        return;
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
        return SetPlane(static_cast<TRS274DArcPlane>(code.Value));
    case TGroup::Units:
        m_inch = code.Value == 1;
        return;
    case TGroup::Distance:
        m_incremental = code.Value == 1;
        return;
    case TGroup::CenterDistance:
        m_centers = code.Value == 0 ? TRS274DCenters::Absolute : TRS274DCenters::Incremental;
        m_centersFound = false;
        return;
    case TGroup::RetractLevel:
        return SetRetract(code.Value == 0);
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
        return ApplyOther(code);
    }
}

void TRS274DExtendedMachine::ApplyOther(const TRS274DCode& code) {
    switch (code.Group) {
    case TGroup::Length:
        return m_report.Add(TRS274DPassed::LengthCompensation, m_place.Line);
    case TGroup::Radius:
        return m_report.Add(TRS274DPassed::RadiusCompensation, m_place.Line);
    case TGroup::SurfaceSpeed:
        m_hasNewSettings = true;
        m_isSurfaceSpeed = code.Value == 1;
        return;
    case TGroup::Polar:
        return SetPolar(code.Value == 1);
    case TGroup::EndRotation:
        return m_rotation.Clear();
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
    if (m_threads) SetThreading(false);
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
    if (m_plan.Dwells) Dwell(DwellOf(block));
    if (m_plan.Action) return RunAction(block);
    const bool moves = block.HasAnyOf("XYZ@^") || (m_mode == mmArc && block.HasAnyOf("IJK"));
    if (!moves) return;
    if (m_plan.OtherUse && !m_plan.Motion) return;
    if (m_threads && block.Has('K')) SetPitch(Units(block.Value('K')));
    NotePlaces(block);
    TellSettings(m_mode == mmDrill);
    Move(block);
}

void TRS274DExtendedMachine::Move(const TRS274DBlock& block) {
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
        return Drill(block);
    }
}

double TRS274DExtendedMachine::Units(double value) const {
    return m_inch ? value * MillimetresOfInch : value;
}

void TRS274DExtendedMachine::RunAction(const TRS274DBlock& block) {
    if (m_plan.Action->Group == TGroup::Tap) return Tap(block);
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
        m_knowsReference[which] = m_isPlaced;
        return;
    case TGroup::LocalOffset:
        return ForAxisWords(
            block, [&](std::size_t axis, double value) { m_frames.SetLocal(axis, value); });
    case TGroup::Offset:
        return ForAxisWords(block, [&](std::size_t axis, double value) {
            m_frames.SetOffsetAt(axis, m_position[axis], value);
            SetPlaced(axis, true);
        });
    case TGroup::ClearOffset:
        return m_frames.ClearOffset();
    case TGroup::SuspendOffset:
        return m_frames.SuspendOffset();
    case TGroup::RestoreOffset:
        return m_frames.RestoreOffset();
    case TGroup::Rotation:
        return Rotate(block);
    default:
        return;
    }
}

/// In and out at the pitch of the thread.
void TRS274DExtendedMachine::Tap(const TRS274DBlock& block) {
    const TRS274DPoint start = m_position;
    const bool threads = m_threads;
    SetThreading(true);
    SetPitch(Units(block.Value('K')));
    TellSettings(false);
    Feed(Target(block));
    Feed(start);
    SetThreading(threads);
}

void TRS274DExtendedMachine::SetData(const TRS274DBlock& block) {
    const qint64 kind = std::llrint(block.Value('L'));
    const qint64 number = std::llrint(block.Value('P'));
    // Elsewhere L20 and P0 are of systems beyond G59, and of an offset to all.
    const bool isHere = !IsFanuc() || (kind == 2 && number > 0);
    const bool isKnown = (kind == 2 || kind == 20) && !block.Has('R') && isHere;
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
    if (!isAll) {
        NotePlaces(block);
        TellSettings(false);
        Rapid(Target(block));
    }
    const bool wasPlaced = m_isPlaced;
    TRS274DPoint to = m_position;
    for (std::size_t axis = 0; axis < to.size(); ++axis) {
        if (!isAll && !block.Has(LetterOf('X', axis))) continue;
        to[axis] = m_references[which][axis];
        SetPlaced(axis, m_knowsReference[which]);
    }
    TellPlaces(wasPlaced);
    TellSettings(false);
    Rapid(to);
}

} // namespace ZEP
