#include <zep/converters/dxf/Curves.h>
#include <zep/converters/dxf/TextLabels.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/TextShape.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/XForm.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace ZEP {

namespace {

/// In heights of capital letters.
constexpr double LineDistance = 5.0 / 3;

/// No text has more; each becomes an object.
constexpr std::size_t MostTextLines = 1000;

/// The attachment points of a text of several lines, by group 71: top left, top centre ...
struct TAttachment {
    explicit TAttachment(int number) {
        if (number < 1 || number > 9) number = 1;
        const std::div_t place = std::div(number - 1, 3);
        Along = place.rem / 2.0;
        Down = place.quot / 2.0;
    }

    double Along; ///< of a line's width
    double Down;  ///< of the text's height
};

/// The frame and turn of a text whose direction may be given as a vector.
struct TTextFrame {
    explicit TTextFrame(const TDXFRecord& record);

    TGLMatrixd4 Frame;
    double Rotation;
};

TTextFrame::TTextFrame(const TDXFRecord& record)
    : Frame(FrameOf(record)), Rotation(record.Number(50)) {
    const TGLArrayd3 direction = record.Point(11);
    if (!record.Has(11)) return;
    // In the axes of the frame.
    const double x =
        direction[0] * Frame[0][0] + direction[1] * Frame[0][1] + direction[2] * Frame[0][2];
    const double y =
        direction[0] * Frame[1][0] + direction[1] * Frame[1][1] + direction[2] * Frame[1][2];
    Rotation = std::atan2(y, x) * 180 / std::numbers::pi;
}

/// A point of the drawing in the frame's coordinates.
TGLArrayd3 Within(const TGLMatrixd4& frame, const TGLArrayd3& point) {
    TGLMatrixd4 inverse = frame;
    InverseMatrixd(inverse);
    TGLArrayd3 within = point;
    Xformd(inverse, within);
    return within;
}

QString LongText(const TDXFBuilder& builder, const TDXFRecord& record) {
    std::string bytes;
    for (const TDXFRecord::TTag& tag : record.Tags())
        if (tag.Code == 3) bytes += tag.Value;
    bytes += record.Text(1);
    return builder.Drawing.Text.Decode(bytes);
}

/// A text of several lines (MTEXT), which stand about its attachment point.
struct TDXFLongText {
    TDXFLongText(TDXFBuilder& builder, const TDXFRecord& record);
    void AddLine(std::size_t number);
    [[nodiscard]] TDXFTextBox Box() const;
    /// About the text, at the distance that the entity says.
    void AddFrame();

    std::vector<TDXFTextLine> Lines;

private:
    [[nodiscard]] double WidthOfRun(const TDXFRun& run) const;
    [[nodiscard]] double WidthOfLine(const TDXFTextLine& line) const;
    [[nodiscard]] double HeightOf(const TDXFTextLine& line) const;
    void AddStack(const TDXFRun& run, double up, double from, double height);
    void AddRun(const TDXFRun& run, double up, const std::optional<double>& from);

    TDXFBuilder& m_builder;
    const TDXFRecord& m_record;
    TTextFrame m_turn;
    TAttachment m_attachment;
    double m_height;
    std::vector<double> m_down; // of the base lines from the top, in heights of the text
    TFont m_font;
};

TDXFLongText::TDXFLongText(TDXFBuilder& builder, const TDXFRecord& record)
    : m_builder(builder), m_record(record), m_turn(record), m_attachment(record.Integer(71, 1)),
      m_height(record.Number(40, 1)) {
    Lines = DXFTextLines(LongText(builder, record), m_height,
                         builder.Drawing.TextStyles.Find(record.Text(7)));
    const double width = record.Number(41) / m_height;
    if (width > 0 && std::isfinite(width))
        Lines =
            WrappedDXFLines(Lines, width, [this](const TDXFRun& run) { return WidthOfRun(run); });
    if (Lines.size() > MostTextLines) {
        builder.Pass(record, TDXFReport::TReason::TooMany);
        Lines.resize(MostTextLines);
    }
    const double spacing = LineDistance * record.Number(44, 1);
    for (const TDXFTextLine& line : Lines)
        m_down.push_back(m_down.empty() ? HeightOf(line)
                                        : m_down.back() + spacing * HeightOf(line));
}

double TDXFLongText::WidthOfRun(const TDXFRun& run) const {
    const double letters =
        std::max(AdvanceOfText(run.Text, m_font), AdvanceOfText(run.Lower, m_font));
    return letters * run.Look.Height * run.Look.Width;
}

/// Of its highest run.
double TDXFLongText::HeightOf(const TDXFTextLine& line) const {
    double height = 0;
    for (const TDXFRun& run : line) height = std::max(height, run.Look.Height);
    return line.empty() ? 1 : height;
}

double TDXFLongText::WidthOfLine(const TDXFTextLine& line) const {
    double width = 0;
    for (const TDXFRun& run : line) width += WidthOfRun(run);
    return width;
}

TDXFTextBox TDXFLongText::Box() const {
    double width = 0;
    for (const TDXFTextLine& line : Lines) width = std::max(width, WidthOfLine(line));
    width *= m_height;
    const double height = m_height * m_down.back();
    const double left = -m_attachment.Along * width, top = m_attachment.Down * height;
    return {left, left + width, top - height, top};
}

void TDXFLongText::AddLine(std::size_t number) {
    const TDXFTextLine& line = Lines[number];
    const double up = m_attachment.Down * m_down.back() - m_down[number];
    const double height = HeightOf(line);
    const bool isAlone = line.size() == 1 && !line.front().IsStack();
    if (isAlone) return AddRun(line.front(), up, {});
    double from = -m_attachment.Along * WidthOfLine(line);
    for (const TDXFRun& run : line) {
        if (run.IsStack())
            AddStack(run, up, from, height);
        else
            AddRun(run, up + run.Look.Alignment * (height - run.Look.Height) / 2, from);
        from += WidthOfRun(run);
    }
}

void TDXFLongText::AddFrame() {
    constexpr double usual = 1.5; // of the height of a line with the room about it
    const double room = (m_record.Number(45, usual) - 1) * m_height;
    const double angle = m_turn.Rotation * std::numbers::pi / 180;
    const TGLArrayd3 place = Within(m_turn.Frame, m_record.Point(10));
    const TGLArrayd3 along{std::cos(angle), std::sin(angle), 0}, up{-along[1], along[0], 0};
    const TDXFTextBox box = Box();
    const auto corner = [&](double x, double y) { return place + along * x + up * y; };
    m_builder.AddChain(m_record,
                       CheckedChain({{corner(box.Left - room, box.Bottom - room),
                                      corner(box.Right + room, box.Bottom - room),
                                      corner(box.Right + room, box.Top + room),
                                      corner(box.Left - room, box.Top + room)},
                                     true}),
                       m_turn.Frame, false);
}

/// One part above the other about the middle of the letters, or on the line, or below its top.
void TDXFLongText::AddStack(const TDXFRun& run, double up, double from, double height) {
    const double size = run.Look.Height, gap = run.Bar == u'/' ? 0.2 * size : 0.1 * size;
    const bool isOne = run.Text.isEmpty() || run.Lower.isEmpty();
    double middle = height / 2;
    if (!isOne && run.Look.Alignment == 0) middle = size + gap;
    if (!isOne && run.Look.Alignment == 2) middle = height - size - gap;
    const double width = WidthOfRun(run);
    const auto part = [&](const QString& text, double base) {
        const TDXFRun single{text, run.Look};
        AddRun(single, up + base, from + (width - WidthOfRun(single)) / 2);
    };
    part(run.Text, middle + gap);
    part(run.Lower, middle - gap - size);
    if (run.Bar != u'/') return;
    const TDXFTextLook look{.Color = run.Look.Color};
    m_builder.Add<TZEPLine>(m_record, 0, [&](TZEPLine& line) {
        if (look.Color) line.SetColor(*look.Color);
        line.P2()->SetData(width, 0, 0);
        PlaceFlat(line, m_turn.Frame, Within(m_turn.Frame, m_record.Point(10)), m_turn.Rotation,
                  {m_height, m_height, m_height});
        line.XForm()->mTranslate(from, up + middle, 0);
    });
}

/// \param up    of its base line from the attachment point, in heights of the text
/// \param from  of its beginning, likewise; none: as its width says
void TDXFLongText::AddRun(const TDXFRun& run, double up, const std::optional<double>& from) {
    if (run.Text.trimmed().isEmpty()) return;
    const TDXFTextLook& look = run.Look;
    const double height = m_height * look.Height, width = height * look.Width;
    QPointer<TZEPObject> made;
    m_builder.Add<TZEPLabel>(m_record, 0, [&](TZEPLabel& label) {
        SetDXFText(label, run.Text);
        if (look.Color) label.SetColor(*look.Color);
        PlaceFlat(label, m_turn.Frame, Within(m_turn.Frame, m_record.Point(10)), m_turn.Rotation,
                  {width, height, height});
        if (from) label.XForm()->mTranslate(*from / (look.Height * look.Width), 0, 0);
        MoveDXFText(label, {from ? 0 : m_attachment.Along, -up / look.Height});
        SlantDXFText(label, look.Oblique, 1 / look.Width);
        if (look.Rules != drNone) made = &label;
    });
    if (look.Rules != drNone)
        AddDXFTextRules(m_builder, m_record, look.Rules, made, 0, AdvanceOfText(run.Text, m_font),
                        look.Color);
}

/// How many columns it has is said in an embedded object or, in older drawings, in what is added.
bool IsInColumns(const TDXFRecord& record) {
    constexpr int embedded = 101, count = 72, addedNumber = 1070;
    constexpr std::string_view addedCount = "76", addedMark = "ACAD_MTEXT_COLUMN_INFO_BEGIN";
    bool isEmbedded = false, isAdded = false, isNext = false;
    for (const TDXFRecord::TTag& tag : record.Added()) {
        isEmbedded = isEmbedded || tag.Code == embedded;
        isAdded = isAdded || tag.Value == addedMark;
        if ((isEmbedded && tag.Code == count) || isNext) return DXFInteger(tag.Value) > 1;
        isNext = isAdded && tag.Code == addedNumber && tag.Value == addedCount;
    }
    return false;
}

} // namespace

void AddDXFLines(TDXFBuilder& builder, const TDXFRecord& record) {
    TDXFLongText text(builder, record);
    if (builder.Drawing.TextStyles.IsVertical(record.Text(7)))
        builder.Pass(record, TDXFReport::TReason::NotVertical);
    if (IsInColumns(record)) builder.Pass(record, TDXFReport::TReason::NoColumns);
    for (std::size_t i = 0; i < text.Lines.size(); ++i) text.AddLine(i);
    enum { BackgroundBits = 1 | 2, FrameBit = 16 };
    if (record.Flag(90, BackgroundBits)) builder.Pass(record, TDXFReport::TReason::NoBackground);
    if (record.Flag(90, FrameBit)) text.AddFrame();
}

TDXFTextBox DXFTextBox(TDXFBuilder& builder, const TDXFRecord& record) {
    return TDXFLongText(builder, record).Box();
}

} // namespace ZEP
