#pragma once

#include <zep/converters/rs274d/Block.h>
#include <zep/converters/rs274d/Options.h>
#include <zep/converters/rs274d/Report.h>
#include <zep/converters/rs274d/Sink.h>

#include <QString>

#include <string>

namespace ZEP {

/// The largest repeat count (word L) of a block: what controls take. More is an error.
inline constexpr int MaxRS274DRepeatCount = 9999;

/// The largest number of repetitions (motions by L, turns of helices by P, pecks of drilling
/// cycles) in one program; more is an error. It bounds what a small file can ask for.
inline constexpr int MaxRS274DRepetitions = 300000;

/// Where a block stands.
struct TRS274DPlace {
    qint64 Line = 0; ///< in the program; of a block in another file, that of the call
    /// The file where it is not the program's own, and its line there.
    const QString* File = nullptr;
    qint64 FileLine = 0;
};

/// Runs the blocks of a program one by one and tells a sink where the tool goes. What the two
/// kinds of machine share: position, modes, errors, trace.
class TRS274DMachine {
public:
    /// `sink` and `report` outlive the machine.
    TRS274DMachine(const TRS274DOptions& options, TRS274DSink& sink, TRS274DReport& report);
    virtual ~TRS274DMachine() = default;
    TRS274DMachine(const TRS274DMachine&) = delete;
    TRS274DMachine& operator=(const TRS274DMachine&) = delete;

    /// Runs one block. Raises `Exception` naming the line for a repeat count out of range, and
    /// with `StopOnErrors` for errors of the program.
    void Run(const TRS274DBlock& block, const TRS274DPlace& place);
    /// A line that is too long for a block.
    void PassLine(const TRS274DPlace& place);
    /// Where errors are, until the next block runs.
    void StandAt(const TRS274DPlace& place) { m_place = place; }
    /// An error of the program, at the block that runs: raised with `StopOnErrors`, else counted.
    void Fail(TRS274DPassed kind, const QString& message);
    /// Raises `Exception` that names the place of the block that runs.
    /// \param message  a sentence with its full stop
    [[noreturn]] void Refuse(const QString& message,
                             const QString& gap = QStringLiteral(" ")) const;
    /// Whether the program's end has not been met.
    [[nodiscard]] bool IsRunning() const { return m_running; }
    void End() { m_running = false; }
    /// What has been handed to the sink; a curve counts for each ten of its points.
    [[nodiscard]] qint64 Motions() const { return m_motions; }

protected:
    using enum TRS274DMoveMode;

    virtual void RunBlock(const TRS274DBlock& block) = 0;

    void FailArc(TRS274DPassed kind);
    void FailNoMotionMode();
    /// The word L, or another one, rounded; 0 without one, at most `MaxRS274DRepeatCount`; more is
    /// an error of the program. Asked only for a block that moves.
    [[nodiscard]] qint64 GetRepeatCount(const TRS274DBlock& block, char letter = 'L');
    /// Takes from what the program may repeat.
    void SpendRepetitions(double count);

    void Rapid(const TRS274DPoint& to);
    void Feed(const TRS274DPoint& to);
    void Draw(const TRS274DArc& arc);
    void Draw(std::span<const TRS274DPoint> points, double length);

    void Trace(std::string_view text);
    void TraceSkipped(const TRS274DWord& word);
    /// A motion's target, and for arcs what the centre words say.
    void TraceMotion(const TRS274DPoint& target, const std::array<double, 4>* center);

    const TRS274DOptions m_options;
    TRS274DSink& m_sink;
    TRS274DReport& m_report;
    TRS274DPlace m_place;
    bool m_running = true;

    TRS274DMoveMode m_mode = mmNone;
    TRS274DArcPlane m_plane = apXY;
    bool m_counterClockwise = false;
    bool m_incremental = false;
    bool m_inch = false;
    TRS274DPoint m_position{};

private:
    void NoteEnd(const TRS274DBlock& block);
    void AppendNumber(std::string_view name, double value);

    double m_repetitions = 0;
    qint64 m_motions = 0;
    std::string m_text;
};

} // namespace ZEP
