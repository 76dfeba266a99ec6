#include <zep/converters/rs274d/Flow.h>

#include <algorithm>

namespace ZEP {

TRS274DFlow::TRS274DFlow(TRS274DSubprograms& subprograms)
    : m_program(&subprograms.Program()), m_text(m_program), m_lines(m_program->Bytes()) {}

std::size_t TRS274DFlow::Position() const {
    return m_text == m_program ? std::max(m_furthest, m_lines.Position()) : m_furthest;
}

void TRS274DFlow::GoTo(const TLineSource& line) {
    Switch(*m_text, line);
}

void TRS274DFlow::GoBehind(const TLineSource& line) {
    GoTo(line);
    std::string_view passed;
    m_lines.Next(passed);
}

void TRS274DFlow::Switch(TRS274DText& text, const TLineSource& lines) {
    m_behind += m_lines.Position() - lines.Position(); // may wrap, and back
    m_furthest = Position();
    m_shownLine = Place().Line;
    m_text = &text;
    m_lines = lines;
}

void TRS274DFlow::Call(const TRS274DSubprogram& subprogram, double count, bool isSub) {
    m_frames.push_back(
        {m_text, m_lines, m_shownLine, subprogram.Start, count, m_loops.size(), isSub});
    Switch(*subprogram.Text, subprogram.Start);
}

TRS274DReturn TRS274DFlow::Return() {
    TFrame& frame = m_frames.back();
    m_loops.resize(frame.Loops);
    if (--frame.Times >= 1) return GoTo(frame.Start), TRS274DReturn::Nothing;
    Switch(*frame.Text, frame.Lines);
    m_shownLine = frame.ShownLine;
    const bool isSub = frame.IsSub;
    m_frames.pop_back();
    return isSub ? TRS274DReturn::Sub : TRS274DReturn::Program;
}

void TRS274DFlow::DropLoopsFrom(int repeat) {
    const std::size_t outside = m_frames.empty() ? 0 : m_frames.back().Loops;
    while (m_loops.size() > outside && m_loops.back().Repeat > repeat) m_loops.pop_back();
}

void TRS274DFlow::Begin(int repeat, double count) {
    DropLoopsFrom(repeat - 1);
    m_loops.push_back({repeat, count});
}

bool TRS274DFlow::Again(int repeat) {
    DropLoopsFrom(repeat);
    const std::size_t outside = m_frames.empty() ? 0 : m_frames.back().Loops;
    if (m_loops.size() <= outside || m_loops.back().Repeat != repeat) return false;
    if (--m_loops.back().Times >= 1) return true;
    m_loops.pop_back();
    return false;
}

} // namespace ZEP
