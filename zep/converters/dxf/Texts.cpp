#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/Text.h>
#include <zep/objects/Label.h>
#include <zep/objects/TextShape.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/XForm.h>

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace ZEP {

namespace {

/// In heights of capital letters.
constexpr double Descent = 1.0 / 3;
constexpr double LineDistance = 5.0 / 3;

/// No text has more; each becomes an object.
constexpr std::size_t MostLines = 1000;

constexpr int InvisibleAttribute = 1;
constexpr int ConstantAttribute = 2;
constexpr int Mirrored = 2;
constexpr int UpsideDown = 4;

/// Where along a line of text its place is, by group 72.
enum THorizontal { hzLeft, hzCenter, hzRight, hzAligned, hzMiddle, hzFit };
/// And where across it, by group 73.
enum TVertical { vtBaseline, vtBottom, vtMiddle, vtTop };

/// The point of a text, in heights of its capital letters, that lies at its place.
struct TAnchor {
    double Along = 0; ///< of the text's width
    double Up = 0;    ///< above the base line
};

void SetText(TZEPLabel& label, const QString& text) {
    label.SetCaption(text);
    label.SetBitmapFont(false);
    label.Font()->SetName(QStringLiteral("Arial"));
}

/// Measured only where it matters: it takes longer than all else.
double WidthOf(const TZEPLabel& label) {
    TGLArrayd3 min, max;
    label.GetSize(min, max);
    return max[0];
}

void MoveTo(TZEPLabel& label, const TAnchor& anchor) {
    const double along = anchor.Along == 0 ? 0 : anchor.Along * WidthOf(label);
    if (along != 0 || anchor.Up != 0) label.XForm()->mTranslate(-along, -anchor.Up, 0);
}

/// Leans its letters by degrees to the right, over the base line that it has been moved to.
/// \param ratio  of its height to its width in the drawing
void Slant(TZEPLabel& label, double degrees, double ratio) {
    constexpr double steepest = 85;
    constexpr int xOfY = 4; // in the matrix
    if (degrees == 0 || !(std::abs(degrees) <= steepest)) return;
    QByteArray matrix = label.XForm()->StoreMatrix();
    const double slant = std::tan(degrees * std::numbers::pi / 180) * ratio;
    qToLittleEndian<double>(slant, matrix.data() + xOfY * sizeof slant);
    label.XForm()->LoadMatrix(matrix);
}

TDXFMeasure Measure(const TFont& font) {
    return [&font](const TDXFRun& run) {
        return AdvanceOfText(run.Text, font) * run.Look.Height * run.Look.Width;
    };
}

TAnchor AnchorOf(const TDXFRecord& record) {
    const int horizontal = record.Integer(72);
    const int vertical = record.Integer(record.Kind() == "TEXT" ? 73 : 74);
    TAnchor anchor;
    if (horizontal == hzCenter || horizontal == hzMiddle) anchor.Along = 0.5;
    if (horizontal == hzRight) anchor.Along = 1;
    if (vertical == vtBottom) anchor.Up = -Descent;
    if (vertical == vtMiddle || horizontal == hzMiddle) anchor.Up = 0.5;
    if (vertical == vtTop) anchor.Up = 1;
    return anchor;
}

/// A text of one line: its size along and across, its place and its turn in its plane.
struct TTextPlace {
    explicit TTextPlace(const TDXFRecord& record);
    void FitBetween(const TZEPLabel& label, const TDXFRecord& record);

    TGLArrayd3 Place;
    double Rotation, Width, Height;
};

TTextPlace::TTextPlace(const TDXFRecord& record)
    : Place(record.Point(10)), Rotation(record.Number(50)), Width(record.Number(41, 1)),
      Height(record.Number(40, 1)) {
    const int horizontal = record.Integer(72);
    const bool isBetween = horizontal == hzAligned || horizontal == hzFit;
    const bool isPlain = AnchorOf(record).Along == 0 && AnchorOf(record).Up == 0;
    if (!isPlain && !isBetween && record.Has(11)) Place = record.Point(11);
    if (!(Width > 0)) Width = 1;
    Width *= Height;
    if (record.Flag(71, Mirrored)) Width = -Width;
    if (record.Flag(71, UpsideDown)) Height = -Height;
}

/// From the first point to the second, for which the width, or width and height, are changed.
void TTextPlace::FitBetween(const TZEPLabel& label, const TDXFRecord& record) {
    const TGLArrayd3 end = record.Point(11);
    const double x = end[0] - Place[0], y = end[1] - Place[1];
    const double wide = WidthOf(label);
    if (!record.Has(11) || (x == 0 && y == 0) || !(wide > 0)) return;
    Rotation = std::atan2(y, x) * 180 / std::numbers::pi;
    Width = std::hypot(x, y) / wide;
    if (record.Integer(72) == hzAligned) Height = Width;
}

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

/// The definition of an attribute outside of blocks.
bool IsTag(const TDXFBuilder& builder, const TDXFRecord& record) {
    return record.Kind() == "ATTDEF" && !builder.Scope.IsInBlock();
}

/// The text of a definition in a block, which is but an example, unless it is that of all.
bool IsExample(const TDXFBuilder& builder, const TDXFRecord& record) {
    return record.Kind() == "ATTDEF" && builder.Scope.IsInBlock() &&
           !record.Flag(70, ConstantAttribute);
}

/// As it stands in the file. Insertions without attributes of their own may say the texts of
/// definitions.
std::string_view ShortText(const TDXFBuilder& builder, const TDXFRecord& record) {
    if (IsTag(builder, record)) return record.Text(2);
    if (IsExample(builder, record)) return builder.Scope.TextOf(DXFHandle(record.Text(5)));
    return record.Text(1);
}

/// A text of several lines (MTEXT), which stand about its attachment point.
struct TDXFLongText {
    TDXFLongText(TDXFBuilder& builder, const TDXFRecord& record);
    void AddLine(std::size_t number);
    [[nodiscard]] TDXFTextBox Box() const;

    std::vector<TDXFTextLine> Lines;

private:
    [[nodiscard]] double WidthOfLine(const TDXFTextLine& line) const;
    [[nodiscard]] double HeightOf(const TDXFTextLine& line) const;
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
    if (width > 0 && std::isfinite(width)) Lines = WrappedDXFLines(Lines, width, Measure(m_font));
    if (Lines.size() > MostLines) {
        builder.Pass(record, TDXFReport::TReason::TooMany);
        Lines.resize(MostLines);
    }
    const double spacing = LineDistance * record.Number(44, 1);
    for (const TDXFTextLine& line : Lines)
        m_down.push_back(m_down.empty() ? HeightOf(line)
                                        : m_down.back() + spacing * HeightOf(line));
}

/// Of its highest run.
double TDXFLongText::HeightOf(const TDXFTextLine& line) const {
    double height = 0;
    for (const TDXFRun& run : line) height = std::max(height, run.Look.Height);
    return line.empty() ? 1 : height;
}

double TDXFLongText::WidthOfLine(const TDXFTextLine& line) const {
    double width = 0;
    for (const TDXFRun& run : line) width += Measure(m_font)(run);
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
    if (line.size() == 1) return AddRun(line.front(), up, {});
    double from = -m_attachment.Along * WidthOfLine(line);
    for (const TDXFRun& run : line) {
        AddRun(run, up, from);
        from += Measure(m_font)(run);
    }
}

/// \param up    of its base line from the attachment point, in heights of the text
/// \param from  of its beginning, likewise; none: as its width says
void TDXFLongText::AddRun(const TDXFRun& run, double up, const std::optional<double>& from) {
    if (run.Text.trimmed().isEmpty()) return;
    const TDXFTextLook& look = run.Look;
    const double height = m_height * look.Height, width = height * look.Width;
    m_builder.Add<TZEPLabel>(m_record, 0, [&](TZEPLabel& label) {
        SetText(label, run.Text);
        if (look.Color) label.SetColor(*look.Color);
        PlaceFlat(label, m_turn.Frame, Within(m_turn.Frame, m_record.Point(10)), m_turn.Rotation,
                  {width, height, height});
        if (from) label.XForm()->mTranslate(*from / (look.Height * look.Width), 0, 0);
        MoveTo(label, {from ? 0 : m_attachment.Along, -up / look.Height});
        Slant(label, look.Oblique, 1 / look.Width);
    });
}

} // namespace

void AddDXFText(TDXFBuilder& builder, const TDXFRecord& record) {
    const bool isTag = IsTag(builder, record);
    const QString text = PlainDXFText(builder.Drawing.Text.Decode(ShortText(builder, record)));
    if (text.trimmed().isEmpty()) return;
    const bool isAttribute = record.Kind() != "TEXT";
    builder.Add<TZEPLabel>(record, 0, [&](TZEPLabel& label) {
        SetText(label, text);
        if (isAttribute) label.SetIdent(builder.Drawing.Text.Decode(record.Text(2)));
        if (isAttribute && !isTag && record.Flag(70, InvisibleAttribute)) label.SetVisible(false);
        TTextPlace place(record);
        const int horizontal = record.Integer(72);
        if (horizontal == hzAligned || horizontal == hzFit) place.FitBetween(label, record);
        PlaceFlat(label, FrameOf(record), place.Place, place.Rotation,
                  {place.Width, place.Height, std::abs(place.Height)});
        label.XForm()->Translate()->SetData(label.XForm()->Translate()->Data() +
                                            builder.Scope.Shift());
        MoveTo(label, AnchorOf(record));
        Slant(label, record.Number(51), std::abs(place.Height / place.Width));
    });
}

void AddDXFLines(TDXFBuilder& builder, const TDXFRecord& record) {
    TDXFLongText text(builder, record);
    for (std::size_t i = 0; i < text.Lines.size(); ++i) text.AddLine(i);
}

TDXFTextBox DXFTextBox(TDXFBuilder& builder, const TDXFRecord& record) {
    return TDXFLongText(builder, record).Box();
}

} // namespace ZEP
