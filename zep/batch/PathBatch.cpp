#include <zep/batch/PathBatch.h>

#include <zep/gl/ClientArrays.h>
#include <zep/gl/Told.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Line.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

namespace ZEP {

namespace {

constexpr float FaintAlpha = 0.15F;
constexpr float ToComeAlpha = 0.3F;
constexpr float FaintToComeAlpha = 0.1F; // of what is not solid
constexpr float MarkRimWidth = 1.5F;
constexpr float ThinMarkWidth = 2;
constexpr std::size_t MostWideMarks = 20'000; // vertexes: width is what costs most

bool IsSolid(TPenStyle style) {
    return style == psSolid || style == psInsideFrame;
}

/// As the polyline shows it, which takes it over at each draw.
TColor ColorOf(const TZEPPolyline& polyline) {
    return polyline.InError() ? clRed : polyline.OrigColor();
}

/// Smooth lines do without depth: the rim of each would cut into those that it joins.
void SetFine(TPenStyle style, float width) {
    glDepthMask(GL_FALSE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
    SetLineWidth(width);
    TellDotted(!IsSolid(style));
    if (IsSolid(style)) return glDisable(GL_LINE_STIPPLE);
    glLineStipple(std::max(1, static_cast<int>(std::lround(width))), StipplePattern(style));
    glEnable(GL_LINE_STIPPLE);
}

/// Smoothing and dots cost a software rasteriser ten times the plain line, and so does width. What
/// is not solid is faint in their place.
void SetPlain(TPenStyle style, float width) {
    const bool solid = IsSolid(style);
    TellDotted(false);
    SetLineWidth(width);
    glDepthMask(solid ? GL_TRUE : GL_FALSE);
    (solid ? glDisable : glEnable)(GL_BLEND);
    glBlendColor(0, 0, 0, FaintAlpha);
    glBlendFunc(GL_CONSTANT_ALPHA, GL_ONE_MINUS_CONSTANT_ALPHA);
}

/// What is to come is plain at any detail: none of it is looked at closely.
void SetToCome(TPenStyle style, float widths) {
    SetLineWidth(widths);
    glDepthMask(GL_FALSE);
    glEnable(GL_BLEND);
    glBlendColor(0, 0, 0, IsSolid(style) ? ToComeAlpha : FaintToComeAlpha);
    glBlendFunc(GL_CONSTANT_ALPHA, GL_ONE_MINUS_CONSTANT_ALPHA);
}

} // namespace

// --- taking over -------------------------------------------------------------------------------

void TPathBatch::Start(const TGLArrayd3& origin, const TBatchRules& rules) {
    m_origin = origin;
    m_rules = rules;
}

std::size_t TPathBatch::VertexCount() const {
    std::size_t count = 0;
    for (const TKind& lines : m_lines) count += lines.Vertexes.Count() + lines.Arcs.VertexCount();
    for (const TKind& points : m_points) count += points.Vertexes.Count();
    return count;
}

void TPathBatch::Close() {
    for (TKind& lines : m_lines) {
        lines.Along.shrink_to_fit();
        lines.Vertexes.Close();
        lines.Arcs.Close();
    }
    SortKinds(m_lines);
}

void TPathBatch::SortKinds(TKinds& kinds) {
    // Rapid moves first, else the retreat out of a hole covers the feed line into it.
    std::ranges::sort(kinds, {}, [](const TKind& kind) {
        const TFirst& first = kind.Firsts.front();
        return std::tuple(IsSolid(kind.Style), first.Block, first.Place);
    });
}

void TPathBatch::Replace(const TBlockEdits& edits, const TPathBatch& by) {
    ReplaceKinds(edits, m_lines, by.m_lines);
    ReplaceKinds(edits, m_points, by.m_points);
}

void TPathBatch::ReplaceKinds(const TBlockEdits& edits, TKinds& kinds, const TKinds& by) {
    const auto find = [](auto& some, const TKind& like) {
        return std::ranges::find_if(some, [&](const TKind& kind) { return kind.IsLike(like); });
    };
    for (const TKind& kind : by)
        if (find(kinds, kind) == kinds.end()) kinds.push_back(kind.Empty());
    for (TKind& kind : kinds) {
        const auto found = find(by, kind);
        const TKind none = kind.Empty();
        const TKind& other = found == by.end() ? none : *found;
        const std::vector<TReplaced> vertexes = kind.Vertexes.Replace(edits, other.Vertexes);
        if (kind.Dashes) ZEP::Replace(kind.Along, vertexes, other.Along);
        kind.Arcs.Replace(edits, other.Arcs);
        ReplacePieces(edits, kind.Firsts, other.Firsts);
    }
    std::erase_if(kinds, [](const TKind& kind) { return kind.Firsts.empty(); });
    SortKinds(kinds);
}

bool TPathBatch::Takes(const TZEPObject& object) {
    if (const auto* polyline = qobject_cast<const TZEPPolyline*>(&object))
        return !polyline->Smooth() && !polyline->ColorVertexes();
    return qobject_cast<const TZEPLineSet*>(&object) || qobject_cast<const TZEPLine*>(&object) ||
           qobject_cast<const TZEPArc*>(&object) || qobject_cast<const TZEPCircle*>(&object) ||
           qobject_cast<const TZEPPoint*>(&object);
}

void TPathBatch::Add(TZEPObject& object, const TGLMatrixd4& matrix) {
    m_matrix = &matrix;
    if (auto* line = qobject_cast<TZEPLine*>(&object)) {
        StartLines(*line, line->GetColor());
        MoveTo(line->P1()->Data());
        LineTo(line->P2()->Data());
    } else if (const auto* arc = qobject_cast<TZEPArc*>(&object)) {
        StartLines(*arc, arc->GetColor());
        const double sweep = arc->EndAngle() - arc->StartAngle();
        AddArc(arc->StartAngle(), sweep > 0 ? sweep : sweep + 360, arc->Segments());
    } else if (const auto* circle = qobject_cast<TZEPCircle*>(&object)) {
        StartLines(*circle, circle->GetColor());
        AddArc(0, 360, circle->Segments());
    } else if (auto* dashed = qobject_cast<TZEPDashedPolyline*>(&object);
               dashed && dashed->Pattern()) {
        AddDashed(*dashed);
    } else if (auto* polyline = qobject_cast<TZEPPolyline*>(&object)) {
        AddPolyline(*polyline);
    } else if (auto* lines = qobject_cast<TZEPLineSet*>(&object)) {
        AddLineSet(*lines);
    } else if (auto* point = qobject_cast<TZEPPoint*>(&object)) {
        KindOf(m_points, {psSolid, point->Width()})
            .Vertexes.Add(At(point->P()->Data()), ShownColor(point->GetColor()));
    }
}

void TPathBatch::AddLoop(const std::vector<TGLArrayd3>& corners, TColor color) {
    m_matrix = &idd;
    m_present = &KindOf(m_lines, {psSolid, 1});
    m_color = ShownColor(color);
    MoveTo(corners.back());
    for (const TGLArrayd3& corner : corners) LineTo(corner);
}

void TPathBatch::AddBox(const TGLArrayd3& min, const TGLArrayd3& max, const TGLMatrixd4& matrix) {
    m_matrix = &matrix;
    m_present = &KindOf(m_lines, {psSolid, 1});
    const auto corner = [&](unsigned i) -> TGLArrayd3 {
        return {(i & 1U ? max : min)[0], (i & 2U ? max : min)[1], (i & 4U ? max : min)[2]};
    };
    for (unsigned from = 0; from < 8; ++from)
        for (const unsigned axis : {1U, 2U, 4U}) {
            if ((from & axis) != 0) continue;
            MoveTo(corner(from));
            LineTo(corner(from | axis));
        }
}

void TPathBatch::AddMark(TZEPObject& object, const TGLMatrixd4& matrix) {
    if (Takes(object)) return Add(object, matrix);
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetSize(min, max);
    AddBox(min, max, matrix);
}

void TPathBatch::StartLines(const TZEPLineShape& shape, TColor color) {
    m_present = &KindOf(m_lines, {shape.Style(), shape.Width()});
    m_color = ShownColor(color);
}

TPathBatch::TKind& TPathBatch::KindOf(TKinds& kinds, const TKind& like) {
    auto kind = std::ranges::find_if(kinds, [&](const TKind& each) { return each.IsLike(like); });
    if (kind == kinds.end()) kind = kinds.insert(kind, like);
    kind->Vertexes.StartBlock(m_block);
    kind->Arcs.StartBlock(m_block);
    if (kind->Firsts.empty() || kind->Firsts.back().Block != m_block)
        kind->Firsts.push_back({m_block, m_place++});
    return *kind;
}

TVertexColor TPathBatch::ShownColor(TColor color) {
    if (m_given == color) return m_shown;
    m_given = color;
    return m_shown = ToVertexColor(m_rules.Shown(color));
}

TGLArrayd3 TPathBatch::At(const TGLArrayd3& point) const {
    TGLArrayd3 place = point;
    if (m_matrix != &idd) Xformd(*m_matrix, place);
    for (std::size_t k = 0; k < 3; ++k) place[k] -= m_origin[k];
    return place;
}

void TPathBatch::LineTo(const TGLArrayd3& point) {
    m_present->Vertexes.Add(m_last, m_color);
    m_present->Vertexes.Add(m_last = At(point), m_color);
}

/// Of a circle of diameter 1. \param start, turn  degrees
void TPathBatch::AddArc(double start, double turn, int segments) {
    constexpr double Radian = std::numbers::pi / 180;
    const TGLArrayd3 middle = At(zero3d);
    m_present->Arcs.Add({middle, At({0.5, 0, 0}) - middle, At({0, 0.5, 0}) - middle, start * Radian,
                         turn * Radian, m_rules.RoundArcs ? 0 : segments},
                        m_color, m_rules.Error);
}

void TPathBatch::AddPolyline(TZEPPolyline& polyline) {
    TZEPVertexes& points = *polyline.Vertexes();
    if (points.Count() < 2) return;
    StartLines(polyline, ColorOf(polyline));
    MoveTo(points[0].Data());
    for (int i = 1; i < points.Count(); ++i) LineTo(points[i].Data());
    if (polyline.Closed()) LineTo(points[0].Data());
}

void TPathBatch::AddDashed(TZEPDashedPolyline& polyline) {
    m_present = &KindOf(
        m_lines,
        {.Style = psSolid, .Width = polyline.Width(), .Dashes = polyline.Pattern()->Texture()});
    m_color = ShownColor(ColorOf(polyline));
    polyline.ForEachLine([this](const TDashedEnd& from, const TDashedEnd& to) {
        MoveTo(from.Point);
        LineTo(to.Point);
        for (const TDashedEnd* end : {&from, &to})
            m_present->Along.push_back(static_cast<float>(end->Along));
    });
}

void TPathBatch::AddLineSet(TZEPLineSet& lines) {
    const TZEPVertexes& ends = *lines.Vertexes();
    if (ends.Count() < 2) return;
    StartLines(lines, lines.GetColor());
    for (int i = 0; i + 1 < ends.Count(); i += 2) {
        MoveTo(ends[i].Data());
        LineTo(ends[i + 1].Data());
    }
}

// --- drawing -----------------------------------------------------------------------------------

TPathBatch::TCount TPathBatch::DoneOf(const TKind& kind, const TPathFrontier& frontier,
                                      const TKinds TPathBatch::*kinds) {
    if (!frontier.Done) return kind.Count();
    TCount count{kind.Vertexes.CountBefore(frontier.Block), kind.Arcs.CountBefore(frontier.Block)};
    for (const TKind& done : frontier.Done->*kinds)
        if (done.IsLike(kind)) {
            const TCount more = done.Count();
            count.Vertexes += more.Vertexes;
            count.Arcs.Arcs += more.Arcs.Arcs;
            count.Arcs.Vertexes += more.Arcs.Vertexes;
        }
    return count;
}

void TPathBatch::DrawSolid(const TKind& lines, const TDetail& detail, bool colored,
                           const TCount& from, const TCount& to) {
    lines.Vertexes.Draw(GL_LINES, detail, {from.Vertexes, to.Vertexes});
    lines.Arcs.Draw(detail, colored, from.Arcs, to.Arcs);
}

void TPathBatch::DrawLines(const TKind& lines, const TDetail& detail, const TCount& from,
                           const TCount& to) {
    if (!lines.Dashes || lines.Along.empty()) return DrawSolid(lines, detail, true, from, to);
    const TDashScope dashes(*lines.Dashes);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(1, GL_FLOAT, 0, lines.Along.data());
    lines.Vertexes.Draw(GL_LINES, detail, {from.Vertexes, to.Vertexes});
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
}

void TPathBatch::DrawToCome(const TDetail& detail, float widths,
                            const TPathFrontier& frontier) const {
    for (const TKind& lines : m_lines) {
        if (lines.Style == psClear) continue;
        SetToCome(lines.Style, widths);
        DrawLines(lines, detail, DoneOf(lines, frontier, &TPathBatch::m_lines), lines.Count());
    }
    for (const TKind& points : m_points) {
        SetToCome(points.Style, widths);
        SetPointSize(points.Width * widths);
        const std::size_t done = DoneOf(points, frontier, &TPathBatch::m_points).Vertexes;
        points.Vertexes.Draw(GL_POINTS, detail, {done});
    }
    glDisable(GL_BLEND);
    glDepthMask(GL_TRUE);
}

void TPathBatch::Draw(const TDetail& detail, bool fine, float widths,
                      const TPathFrontier& frontier) const {
    if (IsEmpty()) return;
    glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT |
                 GL_DEPTH_BUFFER_BIT);
    const TClientArraysScope arrays({GL_COLOR_ARRAY});
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    if (frontier.Done) DrawToCome(detail, widths, frontier);
    for (const TKind& lines : m_lines) {
        if (lines.Style == psClear) continue;
        if (fine)
            SetFine(lines.Style, lines.Width * widths);
        else
            SetPlain(lines.Style, widths);
        DrawLines(lines, detail, {}, DoneOf(lines, frontier, &TPathBatch::m_lines));
    }
    for (const TKind& points : m_points) {
        SetPointSize(points.Width * widths);
        const std::size_t done = DoneOf(points, frontier, &TPathBatch::m_points).Vertexes;
        points.Vertexes.Draw(GL_POINTS, detail, {0, done});
    }
    glPopAttrib();
}

void TPathBatch::DrawMarks(const TDetail& detail, float widths, const TMarkLook& look) const {
    glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_CURRENT_BIT);
    const TClientArraysScope arrays({});
    for (const GLenum off : std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_BLEND,
                                                          GL_LINE_STIPPLE, GL_TEXTURE_2D})
        glDisable(off);
    const bool wide = VertexCount() <= MostWideMarks;
    glColor3ubv(look.Rim.data());
    if (wide) DrawMark(detail, (look.Width + 2 * MarkRimWidth) * widths, true);
    glColor3ubv(look.Color.data());
    DrawMark(detail, (wide ? look.Width : ThinMarkWidth) * widths, wide);
    glPopAttrib();
}

/// \param joints  with points where lines meet, and for moves that are too short for a line
void TPathBatch::DrawMark(const TDetail& detail, float width, bool joints) const {
    SetLineWidth(width);
    for (const TKind& lines : m_lines) DrawSolid(lines, detail, false, {}, lines.Count());
    SetPointSize(width - 1);
    for (const TKind& lines : m_lines) {
        if (!joints) break;
        lines.Vertexes.Draw(GL_POINTS, detail);
        lines.Arcs.DrawPoints();
    }
    for (const TKind& points : m_points) {
        SetPointSize(width + points.Width);
        points.Vertexes.Draw(GL_POINTS, detail);
    }
}

} // namespace ZEP
