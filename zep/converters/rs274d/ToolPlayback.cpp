#include <zep/converters/rs274d/ToolPlayback.h>

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

/// What has no feed takes no time: a program without feeds would be over at once.
bool TellsTimes(const TToolPath& path) {
    return path.Seconds() > 0 && std::ranges::any_of(path.Tools(), [](const TPathTool& tool) {
               return tool.MaxFeed > 0;
           });
}

std::vector<int> ToolChangesOf(const TToolPath& path) {
    std::vector<int> changes;
    for (int i = 1; i < path.Count(); ++i)
        if (path.Move(i).Tool != path.Move(i - 1).Tool) changes.push_back(i);
    return changes;
}

} // namespace

void TToolPlayback::SetPath(std::shared_ptr<const TToolPath> path) {
    m_path = std::move(path);
    m_hasTimes = m_path && TellsTimes(*m_path);
    m_toolChanges = m_path ? ToolChangesOf(*m_path) : std::vector<int>();
    Start(m_path ? m_path->Count() : 0);
}

void TToolPlayback::SetMoves(int count) {
    m_path.reset();
    m_hasTimes = false;
    m_toolChanges.clear();
    Start(std::max(count, 0));
}

void TToolPlayback::Start(int count) {
    m_count = count;
    m_move = 0;
    m_fraction = 0;
    const QPointer<TToolPlayback> alive(this);
    SetPlaying(false);
    if (alive) Q_EMIT Moved(Move(), m_fraction);
}

// --- where it is ---------------------------------------------------------------------------------

std::optional<TRS274DPoint> TToolPlayback::Position() const {
    if (!m_path || m_count == 0) return {};
    return m_path->PointOf(m_move, m_fraction);
}

double TToolPlayback::Length() const {
    return m_hasTimes ? m_path->Seconds() : m_count;
}

double TToolPlayback::TimeOf(int move, double fraction) const {
    if (!m_hasTimes) return move + fraction;
    const TToolMove made = m_path->Move(move);
    return std::lerp(made.Begin, made.End, fraction);
}

TToolPlayback::TPlace TToolPlayback::PlaceOf(double moves) const {
    if (!(moves > 0)) return {0, 0};
    const int move = moves < m_count ? static_cast<int>(moves) : m_count - 1;
    return {move, std::min(moves - move, 1.0)};
}

TToolPlayback::TPlace TToolPlayback::PlaceAt(double seconds) const {
    if (!m_hasTimes) return PlaceOf(seconds);
    if (seconds >= m_path->Seconds()) return {m_count - 1, 1};
    const int move = m_path->MoveAt(seconds);
    const TToolMove made = m_path->Move(move);
    const double duration = made.End - made.Begin;
    const double fraction = duration > 0 ? (seconds - made.Begin) / duration : 1;
    return {move, std::clamp(fraction, 0.0, 1.0)};
}

// --- what moves it -------------------------------------------------------------------------------

void TToolPlayback::Play() {
    if (m_count == 0) return;
    const QPointer<TToolPlayback> alive(this);
    if (IsAtEnd()) Set({0, 0});
    if (alive && m_count > 0) SetPlaying(true); // who hears of it may take the path away
}

void TToolPlayback::Pause() {
    SetPlaying(false);
}

void TToolPlayback::SetPlaying(bool playing) {
    if (std::exchange(m_playing, playing) != playing) Q_EMIT PlayingChanged(playing);
}

void TToolPlayback::SetSpeed(double factor, TPace pace) {
    if (!(factor > 0)) return;
    m_speed = factor;
    m_pace = pace;
}

void TToolPlayback::Advance(double seconds) {
    if (!m_playing || !(seconds > 0)) return;
    const double passed = seconds * m_speed;
    TPlace place =
        m_pace == TPace::Moves ? PlaceOf(m_move + m_fraction + passed) : PlaceAt(Time() + passed);
    // Rounding never leads back, to a move that has been told as done.
    if (place.Move < m_move) place = {m_move, m_fraction};
    const QPointer<TToolPlayback> alive(this);
    Set(place);
    if (alive && IsAtEnd()) SetPlaying(false);
}

void TToolPlayback::Seek(double time) {
    if (m_count > 0) Set(PlaceAt(time > 0 ? time : 0));
}

void TToolPlayback::SeekMove(int move, double fraction) {
    if (m_count == 0) return;
    Set({std::clamp(move, 0, m_count - 1), fraction > 0 ? std::min(fraction, 1.0) : 0});
}

void TToolPlayback::SeekToolChange(bool forward) {
    if (forward) {
        const auto next = std::ranges::upper_bound(m_toolChanges, m_move);
        return next == m_toolChanges.end() ? void() : SeekMove(*next, 0);
    }
    const int end = m_fraction > 0 ? m_move + 1 : m_move;
    const auto next = std::ranges::lower_bound(m_toolChanges, end);
    SeekMove(next == m_toolChanges.begin() ? 0 : *std::prev(next), 0);
}

void TToolPlayback::Set(const TPlace& place) {
    if (place == TPlace{m_move, m_fraction}) return;
    m_move = place.Move;
    m_fraction = place.Fraction;
    Q_EMIT Moved(m_move, m_fraction);
}

} // namespace ZEP
