#include <zep/converters/dxf/annotation/Sketch.h>

#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/Names.h>
#include <zep/converters/dxf/Spline.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double Degrees180 = 180;

/// Arrow heads that programs know without a block in the drawing.
enum class TArrowForm { Filled, Blank, Open, Oblique, Dot, SmallDot, Circle, None };

struct TArrowKind {
    std::string_view Name; ///< folded, without the underscore in front
    TArrowForm Form;
    double Length;    ///< in sizes
    double HalfAngle; ///< tangent
};
constexpr double ClosedAngle = 1.0 / 6;
constexpr TArrowKind ArrowKinds[] = {{"", TArrowForm::Filled, 1, ClosedAngle},
                                     {"closedblank", TArrowForm::Blank, 1, ClosedAngle},
                                     {"closed", TArrowForm::Blank, 0, ClosedAngle},
                                     {"open", TArrowForm::Open, 0, ClosedAngle},
                                     {"open30", TArrowForm::Open, 0, 0.26795},
                                     {"open90", TArrowForm::Open, 0, 1},
                                     {"oblique", TArrowForm::Oblique, 0, 0},
                                     {"archtick", TArrowForm::Oblique, 0, 0},
                                     {"dot", TArrowForm::Dot, 1, 0},
                                     {"dotsmall", TArrowForm::SmallDot, 0, 0},
                                     {"dotblank", TArrowForm::Circle, 1, 0},
                                     {"small", TArrowForm::Circle, 0, 0},
                                     {"origin", TArrowForm::Circle, 0, 0},
                                     {"origin2", TArrowForm::Circle, 1, 0},
                                     {"integral", TArrowForm::Oblique, 0, 0},
                                     {"none", TArrowForm::None, 0, 0}};

const TArrowKind& ArrowKindOf(std::string_view name) {
    std::string folded = FoldedDXFName(name);
    if (folded.starts_with('_')) folded.erase(0, 1);
    for (const TArrowKind& kind : ArrowKinds)
        if (kind.Name == folded) return kind;
    return ArrowKinds[0];
}

/// Names of blocks stand with and without an underscore in front.
bool InsertArrow(TDXFBuilder& builder, const TDXFRecord& record, std::string_view name,
                 const TDXFInsertion& insertion) {
    if (name.empty()) return false;
    return builder.Insert(record, name, insertion) ||
           builder.Insert(record, std::string(1, '_').append(name), insertion);
}

} // namespace

TDXFSketch::TDXFSketch(TDXFBuilder& builder, const TDXFRecord& whole, const TGLArrayd3& extrusion)
    : m_builder(builder), m_whole(whole), m_frame(ExtrusionFrame(extrusion)) {}

TGLArrayd3 TDXFSketch::ToPlane(const TGLArrayd3& point) const {
    if (IsIdentityd(m_frame)) return point;
    TGLMatrixd4 inverse = m_frame;
    InverseMatrixd(inverse);
    TGLArrayd3 inPlane = point;
    Xformd(inverse, inPlane);
    return inPlane;
}

TGLArrayd3 TDXFSketch::InDrawing(TGLArrayd3 point) const {
    Xformd(m_frame, point);
    return point;
}

void TDXFSketch::Chain(std::vector<TGLArrayd3> points, const TDXFInk& ink, bool closed) const {
    const TDXFPart part(m_whole, m_whole.Kind(), ink);
    m_builder.AddChain(part.Record(), CheckedChain({std::move(points), closed}), m_frame, false);
}

void TDXFSketch::Line(const TGLArrayd3& a, const TGLArrayd3& b, const TDXFInk& ink) const {
    Chain({a, b}, ink);
}

void TDXFSketch::Arc(const TGLArrayd3& center, double radius, double start, double end,
                     const TDXFInk& ink) const {
    const TDXFPart part(m_whole, m_whole.Kind(), ink);
    m_builder.AddChain(
        part.Record(),
        EllipseChain({.Center = center, .MajorAxis = {radius, 0, 0}, .Start = start, .End = end}),
        m_frame);
}

void TDXFSketch::Curve(std::vector<TGLArrayd3> points, const TGLArrayd3& start,
                       const TGLArrayd3& end, const TDXFInk& ink) const {
    const TDXFPart part(m_whole, m_whole.Kind(), ink);
    const TDXFSpline spline{
        .FitPoints = std::move(points), .StartTangent = start, .EndTangent = end};
    m_builder.AddChain(part.Record(), SplineChain(spline, m_builder.PointsLeft()), m_frame);
}

void TDXFSketch::Triangle(const std::array<TGLArrayd3, 3>& corners, const TDXFInk& ink) const {
    TDXFPart part(m_whole, m_whole.Kind(), ink);
    for (std::size_t i = 0; i < corners.size(); ++i)
        part.Set(10 + static_cast<int>(i), InDrawing(corners[i]));
    AddDXFFace(m_builder, part.Record());
}

void TDXFSketch::Area(const TContours& contours, const TDXFInk& ink) const {
    const TDXFPart part(m_whole, m_whole.Kind(), ink);
    m_builder.AddFilled(part.Record(), contours, TFillRule::Odd, m_frame);
}

void TDXFSketch::Fill(TDXFPart& part, const TDXFNote& note) const {
    constexpr int extrusionCode = 210;
    const TGLArrayd3 extrusion{m_frame[2][0], m_frame[2][1], m_frame[2][2]};
    part.Set(1, note.Text)
        .Set(10, InDrawing(note.Place))
        .Set(11, InDrawing(note.Direction))
        .Set(40, note.Height)
        .Set(71, note.Attachment)
        .Set(7, note.Style)
        .Set(44, note.Spacing)
        .Set(extrusionCode, extrusion);
    if (note.Width > 0) part.Set(41, note.Width);
}

void TDXFSketch::Text(const TDXFNote& note, const TDXFInk& ink) const {
    TDXFPart part(m_whole, m_whole.Kind(), ink);
    Fill(part, note);
    AddDXFLines(m_builder, part.Record());
}

TDXFTextBox TDXFSketch::BoxOf(const TDXFNote& note) const {
    TDXFPart part(m_whole, m_whole.Kind());
    Fill(part, note);
    return DXFTextBox(m_builder, part.Record());
}

double TDXFSketch::LengthOfArrow(std::string_view name, double size) {
    return ArrowKindOf(name).Length * size;
}

void TDXFSketch::Arrow(std::string_view name, const TGLArrayd3& tip, const TGLArrayd3& direction,
                       double size, const TDXFInk& ink) const {
    constexpr double smallDot = 0.25;
    if (!(size > 0) || !std::isfinite(size)) return;
    const TArrowKind& kind = ArrowKindOf(name);
    if (kind.Form == TArrowForm::None) return;
    TGLArrayd3 along = direction;
    Normalized(along);
    const TDXFPart part(m_whole, m_whole.Kind(), ink);
    const TDXFInsertion insertion{.Place = tip,
                                  .Scale = {size, size, size},
                                  .Rotation = std::atan2(along[1], along[0]) * Degrees180 /
                                              std::numbers::pi,
                                  .Extrusion = {m_frame[2][0], m_frame[2][1], m_frame[2][2]},
                                  .Hidden = m_whole.Integer(60) != 0};
    if (InsertArrow(m_builder, part.Record(), name, insertion)) return;
    const TGLArrayd3 back = along * -size;
    const TGLArrayd3 side = TGLArrayd3{-along[1], along[0], 0} * (size * kind.HalfAngle);
    if ((kind.Form == TArrowForm::Circle || kind.Form == TArrowForm::Dot) && kind.Length > 0)
        Line(tip + back / 2, tip + back, ink);
    const TGLArrayd3 left = tip + back + side, right = tip + back - side;
    switch (kind.Form) {
    case TArrowForm::Open:
        return Chain({left, tip, right}, ink);
    case TArrowForm::Blank:
        return Chain({left, tip, right}, ink, true);
    case TArrowForm::Oblique: {
        const TGLArrayd3 half{(along[0] - along[1]) * size / 2, (along[1] + along[0]) * size / 2,
                              0};
        return Line(tip - half, tip + half, ink);
    }
    case TArrowForm::Circle:
        return Arc(tip, size / 2, 0, 2 * std::numbers::pi, ink);
    case TArrowForm::Dot:
    case TArrowForm::SmallDot: {
        const double radius = kind.Form == TArrowForm::Dot ? size / 2 : size * smallDot;
        const TDXFChain round = EllipseChain({.Center = tip, .MajorAxis = {radius, 0, 0}});
        return Area({round.Points}, ink);
    }
    default:
        return Triangle({tip, left, right}, ink);
    }
}

} // namespace ZEP
