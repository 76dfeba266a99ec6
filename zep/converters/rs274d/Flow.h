#pragma once

#include <zep/converters/rs274d/Machine.h>
#include <zep/converters/rs274d/Subprograms.h>

namespace ZEP {

/// Subprograms that have called each other; a program in which more do so has no end.
inline constexpr int MaxRS274DCallDepth = 100;

/// What is over when a subprogram returns.
enum class TRS274DReturn : std::uint8_t { Nothing, Program, Sub };

/// Which line of which text comes next: what stands open where the lines of a program are not read
/// in their order. Calls and loops are kept here; whether one is entered is the caller's to say.
class TRS274DFlow {
public:
    /// \param subprograms  outlives it
    explicit TRS274DFlow(TRS274DSubprograms& subprograms);

    /// Hands out the next line; false at the end of the text.
    bool Next(std::string_view& line) { return m_lines.Next(line); }
    /// Of the line that was handed out last.
    [[nodiscard]] TRS274DPlace Place() const {
        if (m_text == m_program) return {.Line = m_lines.LineNumber()};
        return {m_shownLine, &m_text->Name(), m_lines.LineNumber()};
    }
    [[nodiscard]] TRS274DText& Text() const { return *m_text; }
    /// The furthest that the program itself has been read, in bytes.
    [[nodiscard]] std::size_t Position() const;
    /// All that has been read, and again, in bytes.
    [[nodiscard]] std::size_t Taken() const { return m_behind + m_lines.Position(); }

    /// In the text that is read: behind the line that was handed out last.
    [[nodiscard]] std::size_t PlaceInText() const { return m_lines.Position(); }

    /// On with that line.
    void GoTo(const TLineSource& line);
    /// On behind it.
    void GoBehind(const TLineSource& line);

    /// On in a subprogram, `count` times; then behind the line that was handed out last.
    /// \param isSub  it has parameters of its own
    void Call(const TRS274DSubprogram& subprogram, double count, bool isSub);
    [[nodiscard]] std::size_t Depth() const { return m_frames.size(); }
    /// Behind the call, or to the next of its times; not to be asked outside of a call.
    /// \return nothing where it runs again
    TRS274DReturn Return();

    /// What is called runs no more times than this one.
    void DropTimes() { m_frames.back().Times = 1; }

    /// A loop that counts begins, at the control word of that index.
    void Begin(int repeat, double count);
    /// Whether the loop that begins there has times left; takes one.
    bool Again(int repeat);

private:
    struct TFrame {
        TRS274DText* Text;
        TLineSource Lines;
        qint64 ShownLine;
        TLineSource Start; ///< of what is called
        double Times;      ///< left
        std::size_t Loops; ///< open outside of it
        bool IsSub;
    };
    struct TLoop {
        int Repeat;
        double Times;
    };

    void Switch(TRS274DText& text, const TLineSource& lines);
    /// Loops that were left by a jump are over.
    void DropLoopsFrom(int repeat);

    TRS274DText* const m_program;
    TRS274DText* m_text;
    TLineSource m_lines;
    qint64 m_shownLine = 0; ///< of the program, while another text is read
    std::size_t m_behind = 0;
    std::size_t m_furthest = 0;
    std::vector<TFrame> m_frames;
    std::vector<TLoop> m_loops;
};

} // namespace ZEP
