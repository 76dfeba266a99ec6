#include <zep/batch/ArcArray.h>

#include <zep/batch/PixelScale.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ZEP {

namespace {

constexpr std::size_t GroupSize = 64;
constexpr int MostSegments = 720;  // of a whole circle that is stored
constexpr double LeastTurn = 1e-7; // radians, of a line
constexpr double MostPixels = 0.3; // that lines may stray from an arc
constexpr double WholeCircle = 2 * std::numbers::pi;
constexpr double FirstTurn = WholeCircle / 8;

TGLArrayd3 PlaceOf(const TArc& arc, double angle) {
    return arc.Middle + std::cos(angle) * arc.X + std::sin(angle) * arc.Y;
}

/// Of the circle about it.
double RadiusOf(const TArc& arc) {
    return std::max(Length(arc.X), Length(arc.Y));
}

/// How far a line strays from an arc of that turn.
double Sagitta(double radius, double turn) {
    return radius * (1 - std::cos(turn / 2));
}

/// A turn whose line strays as far as that.
double TurnOf(double radius, double error) {
    return radius > error ? 2 * std::acos(1 - error / radius) : WholeCircle / 4;
}

bool IsOfNumbers(const TArc& arc) {
    return IsFinite(arc.Middle) && IsFinite(arc.X) && IsFinite(arc.Y) && std::isfinite(arc.Start) &&
           std::isfinite(arc.Turn);
}

/// Sends the lines of an arc that a view needs.
class TFineArc {
public:
    /// \param detail  with the volume and the scale of the view
    TFineArc(const TArc& arc, const TDetail& detail)
        : m_arc(arc), m_detail(detail), m_radius(RadiusOf(arc)) {}

    void Send() const {
        if (m_arc.Segments > 0 && m_arc.Segments < MostSegments) return SendSegments();
        const double turn = std::clamp(m_arc.Turn, -WholeCircle, WholeCircle);
        const int parts = std::max(1, static_cast<int>(std::ceil(std::abs(turn) / FirstTurn)));
        for (int i = 0; i < parts; ++i)
            SendPart(End(m_arc.Start + turn * i / parts),
                     End(m_arc.Start + turn * (i + 1) / parts));
    }

private:
    struct TEnd {
        double Angle;
        TGLArrayd3 Place;
    };

    [[nodiscard]] TEnd End(double angle) const { return {angle, PlaceOf(m_arc, angle)}; }
    static void SendLine(const TGLArrayd3& from, const TGLArrayd3& to) {
        glVertex3dv(from.data());
        glVertex3dv(to.data());
    }

    void SendSegments() const {
        const double step = m_arc.Turn / m_arc.Segments;
        for (int i = 0; i < m_arc.Segments; ++i)
            SendLine(PlaceOf(m_arc, m_arc.Start + step * i),
                     PlaceOf(m_arc, m_arc.Start + step * (i + 1)));
    }

    /// Halves it where one line would be seen beside it.
    void SendPart(const TEnd& from, const TEnd& to) const {
        const double turn = to.Angle - from.Angle;
        const double stray = Sagitta(m_radius, turn);
        TZEPBlockBox box;
        for (const TEnd* end : {&from, &to})
            for (const double side : {-stray, stray}) {
                const TGLArrayd3 reach = end->Place + TGLArrayd3{side, side, side};
                MinBoundsd(box.Min, reach);
                MaxBoundsd(box.Max, reach);
            }
        if (m_detail.Volume->Shows(box.Min, box.Max) == TZEPSeen::Nothing) return;
        const bool strays = stray * m_detail.Pixels->Most(box.Min, box.Max) > MostPixels;
        if (!strays || !(std::abs(turn) > LeastTurn)) return SendLine(from.Place, to.Place);
        const TEnd middle = End(from.Angle + turn / 2);
        SendPart(from, middle);
        SendPart(middle, to);
    }

    const TArc& m_arc;
    const TDetail& m_detail;
    double m_radius;
};

} // namespace

TArcArray::TGroup& TArcArray::Group() {
    if (m_groups.empty() || m_groups.back().Block != m_block || m_groups.back().Arcs == GroupSize) {
        const TZEPBlockBox nothing;
        m_groups.push_back({m_block, 0, 0, nothing.Min, nothing.Max});
    }
    return m_groups.back();
}

void TArcArray::Add(const TArc& arc, const TVertexColor& color, double error) {
    if (!IsOfNumbers(arc)) return;
    TGroup& group = Group();
    const double radius = RadiusOf(arc);
    const double needed = std::abs(arc.Turn) / TurnOf(radius, error);
    const int most = arc.Segments > 0 ? arc.Segments : MostSegments;
    const int count = std::clamp(static_cast<int>(std::min(needed, 1.0 * MostSegments)) + 1,
                                 std::min(2, most), most);
    TGLArrayd3 last = PlaceOf(arc, arc.Start);
    for (int i = 1; i <= count; ++i) {
        const TGLArrayd3 place = PlaceOf(arc, arc.Start + arc.Turn * i / count);
        m_vertexes.Add(last, color);
        m_vertexes.Add(place, color);
        last = place;
    }
    const TGLArrayd3 reach{radius, radius, radius};
    MinBoundsd(group.Min, arc.Middle - reach);
    MaxBoundsd(group.Max, arc.Middle + reach);
    if (count != arc.Segments)
        group.Error = std::max(group.Error, Sagitta(radius, arc.Turn / count));
    m_arcs.push_back({arc, color});
    ++group.Arcs;
    group.Vertexes += 2 * static_cast<std::size_t>(count);
}

void TArcArray::Replace(const TBlockEdits& edits, const TArcArray& by) {
    const std::vector<TReplaced> groups = PiecesOf(edits, m_groups, by.m_groups);
    ZEP::Replace(m_arcs, ItemsOf(groups, m_groups, by.m_groups, &TGroup::Arcs), by.m_arcs);
    ReplacePieces(edits, m_groups, by.m_groups);
    m_vertexes.Replace(edits, by.m_vertexes);
}

void TArcArray::Close() {
    m_vertexes.Close();
    m_arcs.shrink_to_fit();
    m_groups.shrink_to_fit();
}

TArcCount TArcArray::CountBefore(std::size_t block) const {
    TArcCount count;
    for (const TGroup& group : m_groups) {
        if (group.Block >= block) break;
        count = {count.Arcs + group.Arcs, count.Vertexes + group.Vertexes};
    }
    return count;
}

void TArcArray::Draw(const TDetail& detail, bool colored, const TArcCount& from,
                     const TArcCount& to) const {
    const TPlaces of{from.Vertexes, to.Vertexes};
    if (detail.Share < 1 || !detail.Volume || !detail.Pixels)
        return m_vertexes.Draw(GL_LINES, detail, of);
    const auto draw = [&](std::size_t first, std::size_t end) {
        m_vertexes.Draw(GL_LINES, {std::max(first, of.First), std::min(end, of.End)});
    };
    std::size_t first = 0; // of stored vertexes that are seen
    std::size_t end = 0;
    std::size_t endArc = 0;
    for (const TGroup& group : m_groups) {
        const std::size_t start = std::exchange(end, end + group.Vertexes);
        const std::size_t firstArc = std::exchange(endArc, endArc + group.Arcs);
        const bool seen = detail.Volume->Shows(group.Min, group.Max) != TZEPSeen::Nothing;
        const bool fine = group.Error * detail.Pixels->Most(group.Min, group.Max) > MostPixels;
        if (seen && !fine) continue;
        draw(first, start);
        first = end;
        if (seen)
            DrawFine({std::max(firstArc, from.Arcs), std::min(endArc, to.Arcs)}, detail, colored);
    }
    draw(first, end);
}

void TArcArray::DrawFine(const TPlaces& arcs, const TDetail& detail, bool colored) const {
    if (arcs.First >= arcs.End) return;
    glBegin(GL_LINES);
    for (std::size_t i = arcs.First; i < arcs.End; ++i) {
        if (colored) glColor4ubv(m_arcs[i].Color.data());
        TFineArc(m_arcs[i].Arc, detail).Send();
    }
    glEnd();
}

} // namespace ZEP
