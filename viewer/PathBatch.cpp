#include "viewer/PathBatch.h"

#include "objects/Arc.h"
#include "objects/Line.h"
#include "objects/Point.h"
#include "objects/Polyline.h"
#include "scene/Vertex3.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr float RapidAlpha = 0.15F;
constexpr double ChordError = 2e-5; // of the path's size
constexpr GLushort Dots = 0xCCCC;   // as the pen style of rapid moves
/// Smoothing and dots cost a software rasteriser ten times the plain line.
constexpr std::size_t FineVertexes = 200'000;
constexpr std::array<GLubyte, 3> MarkColor{255, 230, 0};
constexpr std::array<GLubyte, 3> MarkRim{30, 20, 0};
constexpr float MarkWidth = 5;
constexpr float MarkRimWidth = 1.5F;
constexpr std::size_t PieceVertexes = 64; // what stays together where a part is drawn

/// A turn that is fine enough for an arc of that radius, in degrees.
double StepOf(double radius, double error) {
    if (radius <= error) return 90;
    return 2 * std::acos(1 - error / radius) * 180 / std::numbers::pi;
}

} // namespace

class TPathBatch::TBuilder {
public:
    TBuilder(TPathBatch& batch, double error) : m_batch(batch), m_error(error) {}

    /// \return false for what is of another kind
    bool Add(TZEPObject& object) {
        if (auto* line = qobject_cast<TZEPLine*>(&object))
            AddLine(*line);
        else if (const auto* arc = qobject_cast<TZEPArc*>(&object))
            AddArc(*arc);
        else if (auto* polyline = qobject_cast<TZEPPolyline*>(&object);
                 polyline && !polyline->Smooth())
            AddPolyline(*polyline);
        else if (auto* point = qobject_cast<TZEPPoint*>(&object))
            AddPoint(*point);
        else
            return false;
        return true;
    }

private:
    void Start(const TZEPLineShape& shape) {
        Dip(shape);
        m_vertexes = shape.Style() == psSolid ? &m_batch.m_feeds : &m_batch.m_rapids;
        (shape.Style() == psSolid ? m_batch.m_feedWidth : m_batch.m_rapidWidth) = shape.Width();
    }

    void Dip(const TZEPObject& shape) {
        m_matrix = shape.GetMatrix();
        const TGLColor color = ToGLColor(shape.GetColor(), 1);
        std::transform(color.begin(), color.end(), m_color.begin(), [](float part) {
            return static_cast<std::uint8_t>(std::lround(part * 255));
        });
    }

    TVertex At(TGLArrayd3 point) const {
        Xformd(m_matrix, point);
        return {{static_cast<float>(point[0]), static_cast<float>(point[1]),
                 static_cast<float>(point[2])},
                m_color};
    }

    void MoveTo(const TGLArrayd3& point) { m_last = At(point); }

    void LineTo(const TGLArrayd3& point) {
        m_vertexes->push_back(m_last);
        m_vertexes->push_back(m_last = At(point));
    }

    void AddLine(TZEPLine& line) {
        Start(line);
        MoveTo(line.P1()->Data());
        LineTo(line.P2()->Data());
    }

    void AddArc(const TZEPArc& arc) {
        Start(arc);
        const double sweep = arc.EndAngle() - arc.StartAngle();
        const double turn = sweep > 0 ? sweep : sweep + 360;
        const double radius = std::hypot(m_matrix[0][0], m_matrix[0][1], m_matrix[0][2]) / 2;
        const int finest = arc.Segments();
        const int needed = static_cast<int>(std::min(turn / StepOf(radius, m_error), 1e6)) + 1;
        const int count = std::clamp(needed, 2, std::max(finest, 2));
        const auto at = [&](int i) -> TGLArrayd3 {
            const double angle = (arc.StartAngle() + turn * i / count) * std::numbers::pi / 180;
            return {0.5 * std::cos(angle), 0.5 * std::sin(angle), 0};
        };
        MoveTo(at(0));
        for (int i = 1; i <= count; ++i) LineTo(at(i));
    }

    void AddPolyline(TZEPPolyline& polyline) {
        TZEPVertexes& points = *polyline.Vertexes();
        if (points.Count() < 2) return;
        Start(polyline);
        MoveTo(points[0].Data());
        for (int i = 1; i < points.Count(); ++i) LineTo(points[i].Data());
    }

    void AddPoint(TZEPPoint& point) {
        Dip(point);
        m_batch.m_holeWidth = point.Width();
        m_batch.m_holes.push_back(At(point.P()->Data()));
    }

    TPathBatch& m_batch;
    double m_error;
    TVertexes* m_vertexes = nullptr;
    TGLMatrixd4 m_matrix = idd;
    std::array<std::uint8_t, 4> m_color{};
    TVertex m_last{};
};

void TPathBatch::Clear() {
    m_feeds.clear();
    m_rapids.clear();
    m_holes.clear();
}

void TPathBatch::BuildOf(const std::unordered_set<TZEPObject*>& objects, double size) {
    Clear();
    TBuilder builder(*this, size * ChordError);
    for (TZEPObject* object : objects)
        if (object->Visible()) builder.Add(*object);
}

void TPathBatch::Build(TZEPObject& root, double size, std::vector<TZEPObject*>& rest) {
    Clear();
    m_feeds.reserve(2 * static_cast<std::size_t>(root.GetItemsCount()));
    TBuilder builder(*this, size * ChordError);
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject* object = root.GetItem(i);
        if (!object->Visible()) continue;
        if (object->GetItemsCount() > 0 || !builder.Add(*object)) rest.push_back(object);
    }
}

/// Dotted, or faint where that costs too much. Smooth lines do without depth: the rim of each
/// would cut into those that it joins.
void TPathBatch::SetRapid(bool fine) const {
    glDepthMask(GL_FALSE);
    glEnable(GL_BLEND);
    if (!fine) {
        glLineWidth(1);
        glBlendColor(0, 0, 0, RapidAlpha);
        return glBlendFunc(GL_CONSTANT_ALPHA, GL_ONE_MINUS_CONSTANT_ALPHA);
    }
    glEnable(GL_LINE_SMOOTH);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(m_rapidWidth);
    glLineStipple(std::max(1, static_cast<int>(std::lround(m_rapidWidth))), Dots);
    glEnable(GL_LINE_STIPPLE);
}

void TPathBatch::SetFeed(bool fine) const {
    glDisable(GL_LINE_STIPPLE);
    if (fine) return glLineWidth(m_feedWidth);
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
}

void TPathBatch::Draw(double share) const {
    const bool fine = VertexCount() <= FineVertexes && share >= 1;
    glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT |
                 GL_DEPTH_BUFFER_BIT);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glDisable(GL_LIGHTING);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    // First, since a retreat covers the hole that it comes from.
    SetRapid(fine);
    DrawPieces(GL_LINES, m_rapids, share);
    SetFeed(fine);
    DrawPieces(GL_LINES, m_feeds, share);
    glPointSize(m_holeWidth);
    DrawPieces(GL_POINTS, m_holes, share);
    glPopClientAttrib();
    glPopAttrib();
}

void TPathBatch::DrawMarks() const {
    glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_CURRENT_BIT);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    for (const GLenum off :
         std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_BLEND, GL_LINE_STIPPLE})
        glDisable(off);
    glEnableClientState(GL_VERTEX_ARRAY);
    glColor3ubv(MarkRim.data()); // sets it off from a path of any colour
    DrawMark(MarkWidth + 2 * MarkRimWidth);
    glColor3ubv(MarkColor.data());
    DrawMark(MarkWidth);
    glPopClientAttrib();
    glPopAttrib();
}

void TPathBatch::DrawMark(float width) const {
    glLineWidth(width);
    DrawPieces(GL_LINES, m_rapids, 1);
    DrawPieces(GL_LINES, m_feeds, 1);
    glPointSize(width - 1); // joints, and moves that are too short for a line
    DrawPieces(GL_POINTS, m_rapids, 1);
    DrawPieces(GL_POINTS, m_feeds, 1);
    glPointSize(width + m_holeWidth);
    DrawPieces(GL_POINTS, m_holes, 1);
}

void TPathBatch::DrawPieces(GLenum mode, const TVertexes& vertexes, double share) {
    if (vertexes.empty()) return;
    glVertexPointer(3, GL_FLOAT, sizeof(TVertex), vertexes.front().Point.data());
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(TVertex), vertexes.front().Color.data());
    const std::size_t count = vertexes.size();
    if (share >= 1) return glDrawArrays(mode, 0, static_cast<GLsizei>(count));
    const auto stride =
        static_cast<std::size_t>(static_cast<double>(PieceVertexes) / std::max(share, 1e-3) / 2) *
        2;
    for (std::size_t first = 0; first < count; first += stride)
        glDrawArrays(mode, static_cast<GLint>(first),
                     static_cast<GLsizei>(std::min(PieceVertexes, count - first)));
}

} // namespace ZEP
