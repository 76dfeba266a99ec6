#include <zep/converters/dxf/Text.h>

#include <algorithm>

namespace ZEP {

namespace {

/// Our fonts are not those of the file: a line that just fits there should fit here.
constexpr double Slack = 1.01;

/// Puts words on lines.
class TWrapping {
public:
    TWrapping(double width, const TDXFMeasure& measure)
        : m_width(width * Slack), m_measure(measure) {}

    void Add(const TDXFTextLine& line) {
        for (const TDXFRun& run : line)
            if (run.IsStack())
                AddStack(run);
            else
                AddWords(run);
        EndWord();
        EndLine();
    }
    [[nodiscard]] std::vector<TDXFTextLine> Take() { return std::move(m_lines); }

private:
    void AddWords(const TDXFRun& run) {
        for (QStringView rest = run.Text; !rest.isEmpty();) {
            const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
            const auto end = std::ranges::find_if(rest, isBlank);
            const auto next = std::find_if_not(end, rest.end(), isBlank);
            if (end != rest.begin())
                AddTo(m_word, m_wordWidth, rest.first(end - rest.begin()), run);
            if (next != end) {
                EndWord();
                AddTo(m_blanks, m_blanksWidth, rest.mid(end - rest.begin(), next - end), run);
            }
            rest = rest.mid(next - rest.begin());
        }
    }

    void AddStack(const TDXFRun& run) {
        m_word.push_back(run);
        m_wordWidth += m_measure(run);
    }

    void AddTo(TDXFTextLine& line, double& width, QStringView text, const TDXFRun& run) {
        line.push_back({text.toString(), run.Look});
        width += m_measure(line.back());
    }

    /// Blanks in front of a line that was broken are left out.
    void EndWord() {
        if (m_word.empty()) return;
        const bool fits = m_lineWidth + m_blanksWidth + m_wordWidth <= m_width;
        if (!fits && m_hasWord) {
            EndLine();
        } else {
            Move(m_blanks);
            m_lineWidth += m_blanksWidth;
        }
        m_blanks.clear();
        m_blanksWidth = 0;
        Move(m_word);
        m_lineWidth += m_wordWidth;
        m_wordWidth = 0;
        m_hasWord = true;
    }

    void Move(TDXFTextLine& pieces) {
        for (TDXFRun& piece : pieces)
            if (!m_line.empty() && !piece.IsStack() && !m_line.back().IsStack() &&
                m_line.back().Look == piece.Look)
                m_line.back().Text += piece.Text;
            else
                m_line.push_back(std::move(piece));
        pieces.clear();
    }

    void EndLine() {
        m_lines.push_back(std::move(m_line));
        m_line.clear();
        m_blanks.clear();
        m_blanksWidth = m_lineWidth = 0;
        m_hasWord = false;
    }

    double m_width;
    const TDXFMeasure& m_measure;
    TDXFTextLine m_line, m_blanks, m_word;
    double m_lineWidth = 0, m_blanksWidth = 0, m_wordWidth = 0;
    bool m_hasWord = false; // on the line
    std::vector<TDXFTextLine> m_lines;
};

} // namespace

std::vector<TDXFTextLine> WrappedDXFLines(const std::vector<TDXFTextLine>& lines, double width,
                                          const TDXFMeasure& measure) {
    TWrapping wrapping(width, measure);
    for (const TDXFTextLine& line : lines) wrapping.Add(line);
    return wrapping.Take();
}

} // namespace ZEP
