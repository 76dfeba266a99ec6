#include <zep/converters/rs274d/ExtendedMachine.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

void TRS274DExtendedMachine::NoteSettings(const TRS274DBlock& block) {
    m_hasNewSettings = true;
    if (block.Has('F')) {
        m_feed = block.Value('F');
        const bool isLength = m_settings.FeedMode != TRS274DFeedMode::InverseTime;
        m_settings.Feed = std::fmax(isLength ? Units(m_feed) : m_feed, 0);
    }
    if (block.Has('S')) {
        m_speed = block.Value('S');
        m_settings.SpindleSpeed = std::fmax(m_speed, 0);
    }
}

/// A number in another mode is no feed: the program has to state one.
void TRS274DExtendedMachine::SetFeedMode(TRS274DFeedMode mode) {
    if (m_settings.FeedMode == mode) return;
    m_hasNewSettings = true;
    m_settings.FeedMode = mode;
    m_settings.Feed = 0;
}

void TRS274DExtendedMachine::SetTurns(bool turns) {
    m_turns = turns;
    if (turns) SetFeedMode(TRS274DFeedMode::PerRevolution);
}

/// G98 and G99; on lathes they are what G94 and G95 are elsewhere.
void TRS274DExtendedMachine::SetRetract(bool toInitial) {
    m_returnToInitial = toInitial;
    if (m_turns)
        SetFeedMode(toInitial ? TRS274DFeedMode::PerMinute : TRS274DFeedMode::PerRevolution);
}

/// M13 and M14 turn the coolant on, too.
void TRS274DExtendedMachine::TurnSpindle(qint64 code) {
    m_hasNewSettings = true;
    if (code == 3 || code == 13) m_settings.Spindle = TRS274DSpindle::Clockwise;
    if (code == 4 || code == 14) m_settings.Spindle = TRS274DSpindle::CounterClockwise;
    if (code == 5) m_settings.Spindle = TRS274DSpindle::Stopped;
}

void TRS274DExtendedMachine::SelectTool(double number) {
    m_selectedTool = number;
    m_hasSelected = true;
}

void TRS274DExtendedMachine::ChangeTool(const TRS274DBlock& block) {
    m_tool = m_selectedTool;
    m_settings.Spindle = TRS274DSpindle::Stopped;
    m_hasNewSettings = true;
    TRS274DTool tool;
    if (m_hasSelected) tool.Number = std::llrint(std::fmax(m_tool, 0));
    tool.Name = m_toolNames.NameOf(tool.Number, block.Comment(), m_place.Line);
    tool.Diameter = Units(m_toolNames.DiameterOf(tool.Number, tool.Name));
    m_sink.ToolChange(tool, m_place.Line);
}

/// Seconds. Fanuc's P counts in thousandths, its X and U in seconds.
double TRS274DExtendedMachine::DwellOf(const TRS274DBlock& block) const {
    if (!IsFanuc()) return block.Value('P');
    if (block.Has('P')) return block.Value('P') / 1000;
    return m_plan.Dwells ? block.Value(block.Has('X') ? 'X' : 'U') : 0;
}

void TRS274DExtendedMachine::Dwell(double seconds) {
    if (seconds <= 0) return;
    TellSettings(m_mode == mmDrill && !m_plan.Dwells);
    m_sink.Dwell(seconds, m_place.Line);
}

/// A thread is cut by its pitch for each turn, whatever the feed is.
void TRS274DExtendedMachine::SetThreading(bool threads) {
    m_hasNewSettings = m_hasNewSettings || m_threads != threads;
    m_threads = threads;
}

void TRS274DExtendedMachine::SetPitch(double pitch) {
    m_hasNewSettings = true;
    m_pitch = std::fmax(pitch, 0);
}

/// Where it cuts is taken for where it is drawn; what counts from where the tool is stays as it
/// was.
void TRS274DExtendedMachine::FindPlaces(const TRS274DBlock& block) {
    const bool wasPlaced = m_isPlaced;
    const TRS274DAxes axes = AxesOf(m_plane);
    if (m_mode != mmQuick && !m_plan.MachineFrame) {
        for (std::size_t axis = 0; axis < m_placedAxes.size(); ++axis) SetPlaced(axis, true);
    } else if (m_plan.MachineFrame || !m_incremental) {
        for (std::size_t axis = 0; axis < m_placedAxes.size(); ++axis)
            if (block.Has(LetterOf('X', axis))) SetPlaced(axis, !m_plan.MachineFrame);
        if (block.HasAnyOf("@^")) SetPlaced(0, true), SetPlaced(1, true);
        if (m_isPolar && !m_plan.MachineFrame)
            SetPlaced(axes.First, true), SetPlaced(axes.Second, true);
    }
    TellPlaces(wasPlaced);
}

void TRS274DExtendedMachine::SetPlaced(std::size_t axis, bool placed) {
    m_placedAxes[axis] = placed;
    m_isPlaced = std::ranges::all_of(m_placedAxes, std::identity());
}

void TRS274DExtendedMachine::TellPlaces(bool wasPlaced) {
    m_settings.Placed = !m_isPlaced ? TRS274DPlaced::Neither
                        : wasPlaced ? TRS274DPlaced::Whole
                                    : TRS274DPlaced::End;
    m_hasNewSettings = true;
}

void TRS274DExtendedMachine::TellNewSettings(bool drills) {
    m_hasNewSettings = false;
    m_settings.Drills = drills;
    TRS274DSettings settings = m_settings;
    if (m_isSurfaceSpeed) settings.SpindleSpeed = 0; // it depends on the place
    if (m_threads) {
        settings.FeedMode = TRS274DFeedMode::PerRevolution;
        if (!IsFanuc()) settings.Feed = m_pitch; // elsewhere F is the pitch
    }
    if (settings == m_toldSettings) return;
    m_toldSettings = settings;
    m_sink.Settings(settings);
}

} // namespace ZEP
