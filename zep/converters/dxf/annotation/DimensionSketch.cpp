#include <zep/converters/dxf/annotation/DimensionSketch.h>

#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr int UserPlaceFlag = 128;
constexpr int MiddleCenter = 5;
constexpr double DimensionTurn = 2 * std::numbers::pi;

/// Read from below or from the right.
TGLArrayd3 Readable(TGLArrayd3 direction) {
    constexpr double upright = 1e-6;
    const bool isTurned =
        direction[0] < -upright || (std::abs(direction[0]) <= upright && direction[1] < 0);
    return isTurned ? -direction : direction;
}

/// The part of a line that lies in the box about the origin: where it begins and ends, from 0 to 1.
bool CutWithin(const TGLArrayd3& from, const TGLArrayd3& way, double halfWidth, double halfHeight,
               double& begin, double& end) {
    begin = 0;
    end = 1;
    for (const std::size_t axis : {0U, 1U}) {
        const double half = axis == 0 ? halfWidth : halfHeight;
        if (way[axis] == 0) {
            if (std::abs(from[axis]) >= half) return false;
            continue;
        }
        const double a = (-half - from[axis]) / way[axis], b = (half - from[axis]) / way[axis];
        begin = std::max(begin, std::min(a, b));
        end = std::min(end, std::max(a, b));
    }
    return begin < end;
}

} // namespace

TDXFDimensionSketch::TDXFDimensionSketch(TDXFBuilder& builder, const TDXFRecord& record)
    : Style(builder.Drawing.DimensionStyles.Of(record)), m_record(record),
      m_handles(builder.Drawing.Handles), m_sketch(builder, record, record.Point(210, unitz)),
      m_z(m_sketch.ToPlane(record.Point(10))[2]), m_ink(InkOf(dvLineColor, dvLineWeight)) {}

TDXFInk TDXFDimensionSketch::InkOf(int color, int weight) const {
    TDXFInk ink = TDXFInk::OfNumber(Style.Integer(color));
    const int number = Style.Integer(weight, TDXFWeights::ByBlock);
    if (number != TDXFWeights::ByBlock) ink.Weight = number;
    return ink;
}

TGLArrayd3 TDXFDimensionSketch::InPlane(TGLArrayd3 point) const {
    point[2] = m_z;
    return point;
}

TGLArrayd3 TDXFDimensionSketch::Point(int code) const {
    return InPlane(m_sketch.ToPlane(m_record.Point(code)));
}

// --- text --------------------------------------------------------------------------------------

/// Zeros are what writers have that do not know.
bool TDXFDimensionSketch::HasTextPlace() const {
    const TGLArrayd3 place = m_record.Point(11);
    return m_record.Has(11) && (m_record.Flag(70, UserPlaceFlag) || place[0] != 0 || place[1] != 0);
}

TGLArrayd3 TDXFDimensionSketch::TextPlace() const {
    return InPlane(m_record.Point(11));
}

TGLArrayd3 TDXFDimensionSketch::Above(const TGLArrayd3& place, const TGLArrayd3& direction) const {
    enum { Centered = 0, Below = 4 };
    const int above = Style.Integer(dvTextAbove);
    const TGLArrayd3 along = Readable(direction), up{-along[1], along[0], 0};
    double way = Style.TextHeight() / 2 + std::abs(Style.Gap());
    if (above == Centered) way = Style.Number(dvTextPosition, 0) * Style.TextHeight();
    return place + up * (above == Below ? -way : way);
}

void TDXFDimensionSketch::PlaceText(const std::string& measured, const TGLArrayd3& otherwise,
                                    const TGLArrayd3& direction, bool inside) {
    m_text = m_record.Text(1);
    const auto mark = m_text.find("<>");
    if (m_text.empty()) m_text = measured;
    if (mark != std::string::npos) m_text.replace(mark, 2, measured);
    const bool isHorizontal =
        Style.Integer(inside ? dvTextInsideHorizontal : dvTextOutsideHorizontal, 1) != 0;
    TGLArrayd3 along = isHorizontal ? unitx : Readable(direction);
    if (m_record.Number(53) != 0) {
        const double turn = m_record.Number(53) * DimensionTurn / 360;
        along = {std::cos(turn), std::sin(turn), 0};
    }
    m_note = {.Text = m_text,
              .Place = HasTextPlace() ? TextPlace() : otherwise,
              .Direction = along,
              .Height = Style.TextHeight(),
              .Attachment = MiddleCenter,
              .Style = Style.Name(dvTextStyle, dvTextStyleName, m_handles)};
    const TDXFTextBox box = m_sketch.BoxOf(m_note);
    if (m_text == " ") return;
    m_halfWidth = box.Right + std::abs(Style.Gap());
    m_halfHeight = box.Top + std::abs(Style.Gap()) / 2;
}

/// A negative gap says that the text has a frame.
void TDXFDimensionSketch::AddText() const {
    m_sketch.Text(m_note, InkOf(dvTextColor, dvLineWeight));
    if (Style.Gap() >= 0 || m_halfWidth == 0) return;
    const TGLArrayd3 along = m_note.Direction * m_halfWidth;
    const TGLArrayd3 up = TGLArrayd3{-m_note.Direction[1], m_note.Direction[0], 0} * m_halfHeight;
    const TGLArrayd3& center = m_note.Place;
    m_sketch.Chain(
        {center - along - up, center + along - up, center + along + up, center - along + up}, m_ink,
        true);
}

// --- lines -------------------------------------------------------------------------------------

void TDXFDimensionSketch::Line(const TGLArrayd3& from, const TGLArrayd3& to) const {
    if (from == to) return;
    const TGLArrayd3 along = m_note.Direction, up{-along[1], along[0], 0};
    const TGLArrayd3 way = to - from, start = from - m_note.Place;
    double begin = 0, end = 0;
    if (!CutWithin({Dotd(start, along), Dotd(start, up), 0}, {Dotd(way, along), Dotd(way, up), 0},
                   m_halfWidth, m_halfHeight, begin, end))
        return m_sketch.Line(from, to, m_ink);
    if (begin > 0) m_sketch.Line(from, from + way * begin, m_ink);
    if (end < 1) m_sketch.Line(from + way * end, to, m_ink);
}

/// Without the part that the text covers.
void TDXFDimensionSketch::Arc(const TGLArrayd3& center, double radius, double start,
                              double end) const {
    const auto turn = [](double angle) {
        const double rest = std::fmod(angle, DimensionTurn);
        return rest < 0 ? rest + DimensionTurn : rest;
    };
    const TGLArrayd3 text = m_note.Place - center;
    const TGLArrayd3 out = Unit({text[0], text[1], 0});
    const double along = std::abs(Dotd(m_note.Direction, {-out[1], out[0], 0}));
    const double across = std::sqrt(std::max(1 - along * along, 0.0));
    const double deep = along * m_halfHeight + across * m_halfWidth;
    const double half = (along * m_halfWidth + across * m_halfHeight) / radius;
    const double sweep = turn(end - start);
    const double middle = turn(std::atan2(text[1], text[0]) - start);
    const bool isCovered = std::abs(Length(text) - radius) < deep && middle < sweep;
    if (!isCovered) return m_sketch.Arc(center, radius, start, end, m_ink);
    if (middle - half > 0) m_sketch.Arc(center, radius, start, start + middle - half, m_ink);
    if (middle + half < sweep) m_sketch.Arc(center, radius, start + middle + half, end, m_ink);
}

void TDXFDimensionSketch::Extension(int number, const TGLArrayd3& from,
                                    const TGLArrayd3& to) const {
    if (Style.Integer(number == 1 ? dvNoExtension1 : dvNoExtension2) != 0) return;
    const TGLArrayd3 way = to - from;
    const double length = Length(way);
    if (!(length > 0)) return;
    const TGLArrayd3 along = way / length;
    double offset = Style.Size(dvExtensionOffset, 0.0625);
    if (Style.Integer(dvFixedExtensions) != 0)
        offset = std::max(length - Style.Size(dvExtensionLength, 1), 0.0);
    if (offset >= length) return;
    m_sketch.Line(from + along * offset, to + along * Style.Size(dvExtensionBeyond, 0.18),
                  InkOf(dvExtensionColor, dvExtensionWeight));
}

std::string_view TDXFDimensionSketch::HeadName(int number) const {
    if (Style.Integer(dvTwoBlocks) == 0) return Style.Name(dvBlock, dvBlockName, m_handles);
    return number == 1 ? Style.Name(dvBlock1, dvBlock1Name, m_handles)
                       : Style.Name(dvBlock2, dvBlock2Name, m_handles);
}

double TDXFDimensionSketch::LengthOfHead(int number) const {
    return HasTicks() ? 0 : TDXFSketch::LengthOfArrow(HeadName(number), ArrowSize());
}

void TDXFDimensionSketch::Head(int number, const TGLArrayd3& tip,
                               const TGLArrayd3& direction) const {
    if (HasTicks())
        return m_sketch.Arrow("_OBLIQUE", tip, direction, 2 * Style.Size(dvTickSize, 0), m_ink);
    m_sketch.Arrow(HeadName(number), tip, direction, ArrowSize(), m_ink);
}

void TDXFDimensionSketch::CenterMark(const TGLArrayd3& center, double radius) const {
    const double mark = Style.Size(dvCenterMark, 0.09), size = std::abs(mark);
    if (size == 0 || !std::isfinite(size)) return;
    for (const TGLArrayd3& axis : {unitx, unity}) {
        m_sketch.Line(center - axis * size, center + axis * size, m_ink);
        if (mark > 0 || radius <= 2 * size) continue;
        for (const double side : {-1.0, 1.0})
            m_sketch.Line(center + axis * (side * 2 * size),
                          center + axis * (side * (radius + size)), m_ink);
    }
}

} // namespace ZEP
