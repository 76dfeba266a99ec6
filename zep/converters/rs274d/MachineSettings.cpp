#include <zep/converters/rs274d/ExtendedMachine.h>

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

void TRS274DExtendedMachine::TellNewSettings(bool drills) {
    m_hasNewSettings = false;
    m_settings.Drills = drills;
    TRS274DSettings settings = m_settings;
    if (m_threads) {
        settings.FeedMode = TRS274DFeedMode::PerRevolution;
        if (!IsFanuc()) settings.Feed = m_pitch; // elsewhere F is the pitch
    }
    if (settings == m_toldSettings) return;
    m_toldSettings = settings;
    m_sink.Settings(settings);
}

} // namespace ZEP
