#pragma once

#include <zep/Export.h>
#include <zep/converters/rs274d/ToolPath.h>

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

/// Plays a tool path: which move the tool makes, and where it is, as time passes. It has neither
/// clock nor window; a host calls `Advance` from whatever drives its frames:
///
///     TToolPlayback playback;
///     playback.SetPath(path);
///     QObject::connect(&playback, &TToolPlayback::Moved, [&] { marker.Put(playback.Position());
///     }); playback.Play(); playback.Advance(0.04); // forty milliseconds have passed
///
/// Whatever is called in a handler of its signals, freeing it included, is safe.
///
/// Defaults: no moves, paused; machine time as it is.
class ZEP_CORE_EXPORT TToolPlayback : public QObject {
    Q_OBJECT
public:
    /// What the speed is a factor of.
    enum class TPace : unsigned char {
        Machine, ///< the time that the machine takes; a second for each move where none is known
        Moves    ///< moves a second, whatever time they take
    };

    using QObject::QObject;

    /// Before the first move of another path, paused. Null: without moves.
    void SetPath(std::shared_ptr<const TToolPath> path);
    /// Likewise moves of which nothing is known but how many there are.
    void SetMoves(int count);
    /// Null where only the number of moves is known.
    [[nodiscard]] const TToolPath* Path() const { return m_path.get(); }
    [[nodiscard]] int Count() const { return m_count; }
    /// The program states feeds, so that there are times to play in.
    [[nodiscard]] bool HasTimes() const { return m_hasTimes; }

    /// \name Where it is
    /// @{
    /// 0 to `Count() - 1`; -1 without moves.
    [[nodiscard]] int Move() const { return m_count > 0 ? m_move : -1; }
    /// Of the move, that is done; 0 to 1.
    [[nodiscard]] double Fraction() const { return m_fraction; }
    /// Where the tool is; none without a path.
    [[nodiscard]] std::optional<TRS274DPoint> Position() const;
    /// Seconds since the start of the program; without times, moves.
    [[nodiscard]] double Time() const { return TimeOf(m_move, m_fraction); }
    /// Of all moves.
    [[nodiscard]] double Length() const;
    /// Moves that begin with another tool than the one before, in order.
    [[nodiscard]] const std::vector<int>& ToolChanges() const { return m_toolChanges; }
    /// \param move  0 to `Count() - 1`. \param fraction  of it
    [[nodiscard]] double TimeOf(int move, double fraction) const;
    /// @}

    /// \name What moves it
    /// All of it takes the nearest place there is; without moves nothing happens.
    /// @{
    /// From where it is; at the end, from the start.
    void Play();
    void Pause();
    [[nodiscard]] bool IsPlaying() const { return m_playing; }
    /// \param factor  above 0; another one is passed over
    void SetSpeed(double factor, TPace pace = TPace::Machine);
    /// Time has passed. Nothing while it is paused; at the end it pauses.
    /// \param seconds  above 0; another time is passed over
    void Advance(double seconds);
    /// To a time as `Time` tells it.
    void Seek(double time);
    void SeekMove(int move, double fraction = 1);
    /// To where the tool after the present one comes, or the present one has come; from there, to
    /// the one before it, and at last to the start.
    void SeekToolChange(bool forward);
    /// @}

Q_SIGNALS:
    /// It is elsewhere: so much of the move with that number is done, and all before it.
    void Moved(int move, double fraction);
    void PlayingChanged(bool playing);

private:
    struct TPlace {
        int Move;
        double Fraction;
        bool operator==(const TPlace&) const = default;
    };

    void Start(int count);
    void Set(const TPlace& place);
    void SetPlaying(bool playing);
    [[nodiscard]] bool IsAtEnd() const { return m_move == m_count - 1 && m_fraction >= 1; }
    [[nodiscard]] TPlace PlaceOf(double moves) const;
    [[nodiscard]] TPlace PlaceAt(double seconds) const;

    std::shared_ptr<const TToolPath> m_path;
    std::vector<int> m_toolChanges;
    int m_count = 0;
    int m_move = 0;
    double m_fraction = 0;
    double m_speed = 1;
    TPace m_pace = TPace::Machine;
    bool m_hasTimes = false;
    bool m_playing = false;
};

} // namespace ZEP
