#include <zep/converters/dxf/annotation/Sketch.h>
#include <zep/scene/Vectors.h>

#include <algorithm>

namespace ZEP {

namespace {

/// Letters of the font of geometric tolerances.
struct TToleranceSign {
    char Letter;
    std::string_view Sign;
};
constexpr TToleranceSign ToleranceSigns[] = {
    {'a', "\\U+2220"}, {'b', "\\U+27C2"}, {'c', "\\U+23E5"}, {'d', "\\U+2313"}, {'e', "\\U+25CB"},
    {'f', "\\U+2225"}, {'g', "\\U+232D"}, {'h', "\\U+2197"}, {'i', "\\U+232F"}, {'j', "\\U+2316"},
    {'k', "\\U+2312"}, {'l', "\\U+24C1"}, {'m', "\\U+24C2"}, {'n', "%%c"},      {'p', "\\U+24C5"},
    {'r', "\\U+25CE"}, {'s', "\\U+24C8"}, {'t', "\\U+2330"}, {'u', "\\U+23E4"}};

std::string_view SignOf(char letter) {
    const auto* sign = std::ranges::find(ToleranceSigns, letter, &TToleranceSign::Letter);
    return sign == std::end(ToleranceSigns) ? std::string_view() : sign->Sign;
}

/// With characters in place of "{\Fgdt;j}".
std::string WithSigns(std::string_view text) {
    constexpr std::string_view begin = "{\\Fgdt;";
    std::string result;
    while (!text.empty()) {
        const bool isSign = FoldedDXFName(text.substr(0, begin.size())) == FoldedDXFName(begin);
        if (isSign) {
            const auto end = std::min(text.find('}'), text.size());
            for (const char letter : text.substr(begin.size(), end - std::min(end, begin.size())))
                result += SignOf(letter);
            text.remove_prefix(std::min(end + 1, text.size()));
            continue;
        }
        result += text.front();
        text.remove_prefix(1);
    }
    return result;
}

std::vector<std::string> Split(const std::string& text, std::string_view between) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (auto at = text.find(between); at != std::string::npos; at = text.find(between, from)) {
        parts.push_back(text.substr(from, at - from));
        from = at + between.size();
    }
    parts.push_back(text.substr(from));
    return parts;
}

/// The frame of a tolerance: rows of cells, twice as high as their letters.
class TToleranceFrame {
public:
    TToleranceFrame(TDXFBuilder& builder, const TDXFRecord& record)
        : m_style(builder.Drawing.DimensionStyles.Of(record)),
          m_sketch(builder, record, record.Point(210, unitz)),
          m_place(m_sketch.ToPlane(record.Point(10))),
          m_along(Unit(m_sketch.ToPlane(record.Point(11, unitx)))), m_height(m_style.TextHeight()),
          m_font(m_style.Name(dvTextStyle, dvTextStyleName, builder.Drawing.Handles)) {}

    void AddRow(const std::string& row);

private:
    [[nodiscard]] TGLArrayd3 At(double along, double up) const {
        return m_place + m_along * along + TGLArrayd3{-m_along[1], m_along[0], 0} * (up + m_up);
    }

    const TDXFDimensionStyle m_style;
    TDXFSketch m_sketch;
    TGLArrayd3 m_place, m_along;
    double m_height;
    std::string_view m_font;
    double m_up = 0;
};

void TToleranceFrame::AddRow(const std::string& row) {
    constexpr int middleLeft = 4;
    const TDXFInk ink = TDXFInk::OfNumber(m_style.Integer(dvLineColor));
    double from = 0;
    std::vector<double> edges;
    for (const std::string& cell : Split(row, "%%v")) {
        if (cell.empty()) continue;
        const TDXFNote note{.Text = cell,
                            .Place = At(from + m_height / 2, 0),
                            .Direction = m_along,
                            .Height = m_height,
                            .Attachment = middleLeft,
                            .Style = m_font};
        const TDXFTextBox box = m_sketch.BoxOf(note);
        m_sketch.Text(note, TDXFInk::OfNumber(m_style.Integer(dvTextColor)));
        from += box.Right - box.Left + m_height;
        edges.push_back(from);
    }
    if (edges.empty()) return;
    m_sketch.Chain({At(0, -m_height), At(from, -m_height), At(from, m_height), At(0, m_height)},
                   ink, true);
    edges.pop_back();
    for (const double edge : edges) m_sketch.Line(At(edge, -m_height), At(edge, m_height), ink);
    m_up -= 2 * m_height;
}

} // namespace

void AddDXFTolerance(TDXFBuilder& builder, const TDXFRecord& record) {
    TToleranceFrame frame(builder, record);
    for (const std::string& row : Split(WithSigns(record.Text(1)), "^J")) frame.AddRow(row);
}

} // namespace ZEP
