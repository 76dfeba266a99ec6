#include <zep/converters/rs274d/ExtendedMachine.h>

namespace ZEP {

namespace {

/// Numbers of what a Fanuc control knows of itself; X, Y and Z come first in each row.
enum TNumber : int {
    Alarm = 3000,
    LastSignal = 3012, ///< from the alarm on: clocks, stops, waiting
    MotionWord = 4001,
    PlaneWord = 4002,
    DistanceWord = 4003,
    UnitsWord = 4006,
    SystemWord = 4014,
    FeedWord = 4109,
    SpeedWord = 4119,
    ToolWord = 4120,
    LastEnd = 5001,      ///< in the work system
    MachinePlace = 5021, ///< the machine's
    WorkPlace = 5041,
    FirstOrigin = 5221, ///< as in the other dialect
    LastOrigin = 5330
};

} // namespace

std::optional<double> TRS274DExtendedMachine::FanucValue(int number) const {
    constexpr double planes[] = {17, 18, 19};
    constexpr int firstSystem = 54;
    for (const int row : {LastEnd, MachinePlace, WorkPlace}) {
        const auto axis = static_cast<std::size_t>(number - row);
        if (number < row || axis >= m_position.size()) continue;
        return Programmed(m_position[axis] - (row == MachinePlace ? 0 : m_frames.Offset(axis)));
    }
    switch (number) {
    case MotionWord:
        return MotionCode() / 10;
    case PlaneWord:
        return planes[m_plane];
    case DistanceWord:
        return m_incremental ? 91 : 90;
    case UnitsWord:
        return m_inch ? 20 : 21;
    case SystemWord:
        return firstSystem + m_frames.Selected();
    case FeedWord:
        return m_feed;
    case SpeedWord:
        return m_speed;
    case ToolWord:
        return m_selectedTool;
    default:
        break;
    }
    const bool isOrigin = number >= FirstOrigin && number <= LastOrigin;
    return isOrigin ? NumberedValue(number) : std::nullopt;
}

/// An alarm ends the program; stops and clocks change no path.
bool TRS274DExtendedMachine::RunsSignal(int number) {
    if (number == Alarm) {
        m_report.Add(TRS274DPassed::Alarm, m_place.Line);
        End();
    }
    return number >= Alarm && number <= LastSignal;
}

} // namespace ZEP
