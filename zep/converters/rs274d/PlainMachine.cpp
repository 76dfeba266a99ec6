#include <zep/converters/rs274d/PlainMachine.h>

#include <cmath>

namespace ZEP {

namespace {

constexpr char CenterLetters[] = {'I', 'J', 'K', 'R'};

/// Pictures of inch programs are kept in centimetres.
constexpr double UnitsOfInch = 2.54;

/// What a radius that is too short is passed over within, as the difference of squares.
constexpr double ShortRadius = 0.001;

} // namespace

void TRS274DPlainMachine::RunBlock(const TRS274DBlock& block) {
    if (block.End() == TRS274DBlockEnd::BadNumber) return;
    for (const TRS274DWord& word : block.Words()) ProcessWord(word);
    if (!block.HasAnyOf("XYZ")) return;
    const qint64 repeats = GetRepeatCount(block); // below 0: it does not move
    for (qint64 i = 0; i <= repeats; ++i) {
        if (i > 0) SpendRepetitions(1);
        GetCoordFromBlock(block); // from where it stands now
        ProcessCommand();
    }
}

void TRS274DPlainMachine::ProcessWord(const TRS274DWord& word) {
    if (word.Letter == 'G') ProcessG(word, std::llrint(word.Value));
    if (word.Letter == 'M') ProcessM(std::llrint(word.Value));
}

void TRS274DPlainMachine::ProcessG(const TRS274DWord& word, qint64 code) {
    switch (code) {
    case 0:
    case 10:
    case 11:
    case 12:
        m_mode = mmQuick;
        return Trace("quick move");
    case 1:
        m_mode = mmLinear;
        return Trace("linear interpolation");
    case 2:
    case 3:
        m_mode = mmArc;
        m_counterClockwise = code == 3;
        return Trace("arc interpolation");
    case 17:
        m_plane = apXY;
        return Trace("select XY plane");
    case 18:
        m_plane = apXZ;
        return Trace("select XZ plane");
    case 19:
        m_plane = apYZ;
        return Trace("select YZ plane");
    case 20:
        m_inch = true;
        return Trace("inch system selection");
    case 21:
        m_inch = false;
        return Trace("millimeter system selection");
    case 74:
        m_multiquadrant = false;
        return Trace("quadrant arc");
    case 75:
        m_multiquadrant = true;
        return Trace("multiquadrant arc");
    case 80:
        if (m_mode == mmDrill) m_mode = mmNone;
        return Trace("cancel drill");
    case 90:
        m_incremental = false;
        return Trace("absolute distance mode");
    case 91:
        m_incremental = true;
        return Trace("incremental distance mode");
    case 98:
        return Trace("initial level return in canned cycles");
    case 99:
        return Trace("R value return in canned cycles");
    default:
        break;
    }
    if (code < 81 || code > 89) return TraceSkipped(word);
    m_mode = mmDrill;
    Trace("drill");
}

void TRS274DPlainMachine::ProcessM(qint64 code) {
    if (code == 6) {
        m_sink.NextTool();
        return Trace("next tool");
    }
    if (code != 0 && code != 2 && code != 30 && code != 60) return;
    m_running = false;
    Trace("program end");
}

double TRS274DPlainMachine::GetCoord(std::size_t axis, double value) const {
    const double units = m_inch ? value * UnitsOfInch : value;
    return m_incremental && axis < m_position.size() ? m_position[axis] + units : units;
}

void TRS274DPlainMachine::GetCoordFromBlock(const TRS274DBlock& block) {
    m_target = m_position;
    for (std::size_t axis = 0; axis < m_target.size(); ++axis) {
        const char letter = static_cast<char>('X' + static_cast<int>(axis));
        if (block.Has(letter)) m_target[axis] = GetCoord(axis, block.Value(letter));
    }
    for (std::size_t i = 0; i < m_centerWords.size(); ++i)
        m_centerWords[i] = GetCoord(m_target.size() + i, block.Value(CenterLetters[i]));
    m_hasRadius = block.Has('R');
}

void TRS274DPlainMachine::ProcessCommand() {
    if (m_mode == mmNone) return FailNoMotionMode();
    TraceMotion(m_target, m_mode == mmArc ? &m_centerWords : nullptr);
    switch (m_mode) {
    case mmQuick:
        return Rapid(m_target);
    case mmLinear:
        return Feed(m_target);
    case mmArc:
        ProcessArc();
        break;
    case mmDrill:
        m_sink.Drill(m_target, m_place.Line);
        break;
    case mmNone:
        break;
    }
    m_position = m_target;
}

void TRS274DPlainMachine::ProcessArc() {
    const TRS274DAxes axes = AxesOf(m_plane);
    const TRS274DPlanePoint start{m_position[axes.First], m_position[axes.Second]};
    const TRS274DPlanePoint end{m_target[axes.First], m_target[axes.Second]};
    if (IsSamePoint(start, end)) return ProcessFullCircle(start);
    const double toCenter = std::hypot(m_centerWords[axes.First], m_centerWords[axes.Second]);
    const double radius = m_hasRadius ? m_centerWords[3] : toCenter;
    const double half = Distance(start, end) / 2;
    if (m_options.StopOnErrors && radius * radius - half * half < -ShortRadius)
        FailArc(TRS274DPassed::ArcOutOfReach);
    // The quadrant mode only picks the side of the chord: with G74, G2 and G3 take the short way.
    const bool centerOnLeft = m_counterClockwise != m_multiquadrant;
    m_sink.Arc(ArcOverChord(start, end, radius, centerOnLeft, m_counterClockwise, m_plane,
                            m_target[axes.Normal]),
               m_place.Line);
}

void TRS274DPlainMachine::ProcessFullCircle(TRS274DPlanePoint start) {
    const TRS274DAxes axes = AxesOf(m_plane);
    const TRS274DPlanePoint offset{m_centerWords[axes.First], m_centerWords[axes.Second]};
    const double radius = std::hypot(offset.A, offset.B);
    if (radius <= 0) return FailArc(TRS274DPassed::ArcWithoutCenter);
    const TRS274DPlanePoint center{start.A + offset.A, start.B + offset.B};
    m_sink.Arc(FullCircle(center, radius, m_counterClockwise, m_plane, m_target[axes.Normal]),
               m_place.Line);
}

} // namespace ZEP
