#pragma once

#include <zep/converters/Progress.h>
#include <zep/scene/Geom.h>

#include <string_view>
#include <vector>

namespace ZEP {

/// Characters of a line that count where the format's limit is kept.
inline constexpr std::size_t MaxDXFLineLength = 255;

/// \name A value as a number; 0 where it is none
/// @{
[[nodiscard]] double DXFNumber(std::string_view value);
[[nodiscard]] int DXFInteger(std::string_view value);
/// @}

/// Whether a code 0 of that value stands between sections: no entity.
[[nodiscard]] bool IsDXFSectionMark(std::string_view value);

/// A place between two pairs, to come back to.
struct TDXFPosition {
    std::size_t Offset = 0;
    qint64 Line = 0; ///< lines in front of it
};

/// Hands out the pairs of a drawing, a group code and a value on a line each, as views into the
/// text; nothing is copied. A line ends with CR, LF or CR LF, the last one also without any. A byte
/// order mark (UTF-8) in front is passed over.
///
/// A group code that is no number from 0 on, or that has no value line, ends the reading there:
/// whoever reads on gets `EndOfTags`. So does a cancelled progress call.
class TDXFTags {
public:
    /// What `NextGroupCode` returns when there is no more pair.
    static constexpr int EndOfTags = -2;

    /// \param text     must outlive this
    /// \param lenient  keeps lines longer than `MaxDXFLineLength` whole, drops blanks around values
    ///                 other than texts, and takes CR CR LF for one line end where the first is one
    explicit TDXFTags(std::string_view text, bool lenient = false);

    /// Asked every 64 kilobytes that are read, again when they are read again. The whole is the
    /// text and what is to be read again.
    void SetProgress(TProgress progress) { m_progress = std::move(progress); }
    /// So many bytes are about to be read again. What is then not read is taken back.
    void ExpectRepeats(qint64 bytes) { m_repeats += bytes; }
    void CountRepeat(std::size_t bytes) { m_repeated += static_cast<qint64>(bytes); }
    /// Asks now, while another text is read for this one. \return false where it is cancelled
    bool AskOnce() {
        Ask();
        return !m_cancelled;
    }
    [[nodiscard]] bool Cancelled() const { return m_cancelled; }

    /// \name Pairs
    /// @{
    /// Takes the next pair; its group code, or a negative number at the end.
    int NextGroupCode();
    [[nodiscard]] int Code() const { return m_code; }
    /// The value as it stands.
    [[nodiscard]] std::string_view ValStr() const { return m_value; }
    /// The value as a number; 0 where it is none, and `ErrorPosition` tells so.
    double ValDbl();
    int ValInt();
    /// Of the last conversion: 0, or the number of the first wrong character, counted from 1 after
    /// leading blanks.
    [[nodiscard]] std::size_t ErrorPosition() const { return m_errorPosition; }
    /// Take a pair; false at the end.
    bool code_and_string(int& code, std::string_view& value);
    bool code_and_double(int& code, double& value);
    /// Passes on to the next code 10 and takes it and the pair behind it as x and y.
    void read_2Dpoint(TGLArrayd3& point);
    /// The pair is delivered by the next read.
    void go_back_to_last(int code, std::string_view value);
    void go_back_to_last() { m_pushedBack = true; }
    /// Line of the group code that was taken last, from 1.
    [[nodiscard]] qint64 LineNumber() const { return m_pairLine; }
    /// @}

    /// \name Places
    /// @{
    /// In front of the pair that `NextGroupCode` delivers next.
    [[nodiscard]] TDXFPosition Position() const;
    void Goto(const TDXFPosition& position);
    void mark_position() { m_mark = Position(); }
    void goto_marked_position() { Goto(m_mark); }
    /// @}

    /// \name Sections
    /// @{
    /// Goes behind the next pair of code 2 with that name that follows a code 0 "SECTION"; to the
    /// end where there is none. Searches together read the text once at most. No section behind
    /// the first 1000 is found.
    bool skip_upto_section(std::string_view name);
    bool move_to_header_section() { return skip_upto_section("HEADER"); }
    bool move_to_classes_section() { return skip_upto_section("CLASSES"); }
    bool move_to_tables_section() { return skip_upto_section("TABLES"); }
    bool move_to_blocks_section() { return skip_upto_section("BLOCKS"); }
    bool move_to_entity_section() { return skip_upto_section("ENTITIES"); }
    /// No section begins in front of here but those that were found: searches need not look there.
    void PassSearched();
    /// The text has a section, or at least says where it ends: it is a drawing.
    [[nodiscard]] bool IsDrawing();
    /// The line that should hold a group code and ended the reading; 0 where there was none.
    [[nodiscard]] qint64 BadLine() const { return m_badLine; }
    /// The last pair was asked for where the text had ended without a code 0 "EOF".
    [[nodiscard]] bool IsCut() const {
        return m_code == EndOfTags && !m_isEnded && !m_cancelled && m_badLine == 0;
    }
    /// @}

private:
    struct TSection {
        std::string_view Name;
        std::size_t Start;  // in front of its code 0
        TDXFPosition Begin; // behind its name
    };

    bool NextLine(std::string_view& line);
    bool NextCode();
    int End();
    [[nodiscard]] std::string_view TextFrom(const TDXFPosition& position) const;
    void Ask();
    [[nodiscard]] const TSection* FindSection(std::string_view name, std::size_t offset);
    [[nodiscard]] bool FindNextSection();

    const char* m_begin = nullptr;
    const char* m_next = nullptr;
    const char* m_end = nullptr;
    std::size_t m_longestValue;
    bool m_lenient;
    bool m_doubleReturns = false; // CR CR LF ends a line

    int m_code = EndOfTags;
    std::string_view m_value;
    std::size_t m_errorPosition = 0;
    bool m_pushedBack = false;
    bool m_isEnded = false; // by EOF
    qint64 m_line = 0;      // lines taken
    qint64 m_pairLine = 0;  // of the last pair
    TDXFPosition m_pairPosition;
    TDXFPosition m_mark;

    TProgress m_progress;
    std::size_t m_unasked = 0; // bytes since the host was asked
    std::size_t m_done = 0;    // the furthest place that was told
    qint64 m_repeats = 0;      // bytes that are read again in all
    qint64 m_repeated = 0;     // so far
    bool m_cancelled = false;

    std::vector<TSection> m_sections;
    TDXFPosition m_searched; // so far
    bool m_hasEnd = false;
    qint64 m_badLine = 0;
};

} // namespace ZEP
