#include <zep/view/SnapSearch.h>

#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/ViewPlaces.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {

namespace {

using enum TZEPSnapKind;

constexpr int ArcPieces = 128;                          // of the part of an arc that is near
constexpr std::size_t MostMeeting = 64 + 2 * ArcPieces; // edges that are looked at for that
constexpr double Touching = 1e-7; // of two edges, in lengths of the shorter one
constexpr double NearSurface = 8; // reaches about a surface, where its edges count
constexpr double Tube = 1.25;     // reaches about the line of sight, which are larger farther away

/// Where on a line through `from` along `along` it comes nearest to another one; none where they
/// are parallel.
std::optional<double> NearestOn(const TGLArrayd3& from, const TGLArrayd3& along,
                                const TGLArrayd3& other, const TGLArrayd3& otherAlong) {
    const double a = Dotd(along, along);
    const double b = Dotd(along, otherAlong);
    const double c = Dotd(otherAlong, otherAlong);
    const double turned = a * c - b * b;
    if (!(turned > 1e-14 * a * c)) return {};
    const TGLArrayd3 away = other - from;
    return (c * Dotd(along, away) - b * Dotd(otherAlong, away)) / turned;
}

/// So far apart along an axis that they do not meet.
bool AreApart(const TSnapEdge& a, const TSnapEdge& b, double reach) {
    for (std::size_t k = 0; k < 3; ++k)
        if (std::max(a.From[k], a.To[k]) + reach < std::min(b.From[k], b.To[k]) ||
            std::max(b.From[k], b.To[k]) + reach < std::min(a.From[k], a.To[k]))
            return true;
    return false;
}

std::optional<TGLArrayd3> MeetingOf(const TSnapEdge& a, const TSnapEdge& b) {
    const TGLArrayd3 u = a.To - a.From;
    const TGLArrayd3 v = b.To - b.From;
    const double reach = Touching * std::max(Length(u), Length(v)) +
                         1e-12 * std::max(Length(a.From), Length(b.From));
    if (AreApart(a, b, 2 * reach)) return {};
    const auto s = NearestOn(a.From, u, b.From, v);
    const auto t = NearestOn(b.From, v, a.From, u);
    const auto within = [](const auto& at) { return at && *at >= -1e-9 && *at <= 1 + 1e-9; };
    if (!within(s) || !within(t)) return {};
    const TGLArrayd3 onA = a.From + *s * u;
    return Distance(onA, b.From + *t * v) <= reach ? std::optional(onA) : std::nullopt;
}

} // namespace

TSnapSearch::TSnapSearch(const TZEPCamera& camera, const QSize& view, double x, double y,
                         double reach)
    : m_size(view), m_x(x), m_y(y), m_reach(reach) {
    MultMatrixd(camera.GetProjectionMatrix(view.width(), view.height()), camera.GetViewMatrix(),
                m_toClip);
    for (const TZEPSection& section : camera.Sections())
        if (const auto plane = section.Plane()) m_planes.push_back(*plane);
    const auto from = ToWorld(camera, view, {x, y, 0});
    const auto to = ToWorld(camera, view, {x, y, 1});
    m_isSeen = from && to;
    if (!m_isSeen) return;
    m_eye = *from;
    m_sight = Unit(*to - *from);
}

void TSnapSearch::Add(TZEPObject& object, const TSnapShape& shape) {
    for (const auto& [kind, point] : shape.Points) Offer(kind, point, &object, {});
    for (const auto& [from, to] : shape.Edges)
        AddEdge({from, to, &object, {}, 0, shape.IsSurface}, true);
    for (const TSnapCircle& circle : shape.Circles) AddCircle(circle, object);
}

void TSnapSearch::AddCentre(TZEPObject* object, const TZEPRound& round) {
    Offer(Centre, round.Center, object, round);
}

void TSnapSearch::AddMeetings() {
    if (m_edges.size() > MostMeeting) {
        std::ranges::nth_element(m_edges, m_edges.begin() + MostMeeting, {}, &TSnapEdge::Pixels);
        m_edges.erase(m_edges.begin() + MostMeeting, m_edges.end());
    }
    std::ranges::sort(m_edges, {}, &TSnapEdge::Pixels);
    for (std::size_t i = 0; i < m_edges.size(); ++i)
        for (std::size_t k = 0; k < i; ++k) {
            const TSnapEdge& a = m_edges[i];
            const TSnapEdge& b = m_edges[k];
            const bool isWhole = (a.Round && b.Round) || (a.IsOfSurface && b.IsOfSurface);
            if (isWhole && a.Object == b.Object) continue; // of one arc, or one surface
            const bool joined =
                a.From == b.From || a.From == b.To || a.To == b.From || a.To == b.To;
            if (joined) continue; // at a corner
            if (const auto point = MeetingOf(a, b)) Offer(Intersection, *point, a.Object, {});
        }
}

std::vector<TZEPSnap> TSnapSearch::Found() const {
    std::vector<TZEPSnap> found;
    std::vector<const TOffer*> offers;
    for (const TOffer& offer : m_offers) offers.push_back(&offer);
    std::ranges::stable_sort(offers, {}, [](const TOffer* offer) {
        return std::pair(offer->Snap.Kind == Nearest, offer->Pixels);
    });
    for (const TOffer* offer : offers) found.push_back(offer->Snap);
    return found;
}

double TSnapSearch::DepthOf(const TGLArrayd3& point) const {
    return Dotd(point - m_eye, m_sight);
}

TSnapBox TSnapSearch::Around(const TGLArrayd3& at) const {
    const double reach = NearSurface * ReachAt(at);
    const TGLArrayd3 side{reach, reach, reach};
    return {at - side, at + side, m_eye, m_sight, Tube * ReachAt(at)};
}

double TSnapSearch::PixelsTo(const TGLArrayd3& point) const {
    std::array<double, 4> clip = m_toClip[3];
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 4; ++k) clip[k] += point[i] * m_toClip[i][k];
    if (!(clip[3] > 0)) return std::numeric_limits<double>::infinity();
    const double x = (clip[0] / clip[3] + 1) / 2 * m_size.width();
    const double y = (1 - clip[1] / clip[3]) / 2 * m_size.height();
    const double pixels = std::hypot(x - m_x, y - m_y);
    return std::isfinite(pixels) ? pixels : std::numeric_limits<double>::infinity();
}

bool TSnapSearch::IsCutAway(const TGLArrayd3& point) const {
    return std::ranges::any_of(m_planes, [&](const TGLArrayd4& plane) {
        return plane[0] * point[0] + plane[1] * point[1] + plane[2] * point[2] + plane[3] <
               -1e-9 * (std::abs(plane[3]) + Length(point));
    });
}

void TSnapSearch::Offer(TZEPSnapKind kind, const TGLArrayd3& point, TZEPObject* object,
                        const std::optional<TZEPRound>& round) {
    const double pixels = PixelsTo(point);
    if (pixels <= m_reach && !IsCutAway(point))
        m_offers.push_back({{kind, point, object, round}, pixels});
}

bool TSnapSearch::AddEdge(TSnapEdge edge, bool hasMiddle) {
    const TGLArrayd3 along = edge.To - edge.From;
    const auto at = NearestOn(edge.From, along, m_eye, m_sight);
    const TGLArrayd3 nearest = edge.From + std::clamp(at.value_or(0), 0.0, 1.0) * along;
    edge.Pixels = PixelsTo(nearest);
    if (!(edge.Pixels <= m_reach)) return false;
    Offer(Nearest, nearest, edge.Object, edge.Round);
    if (hasMiddle) Offer(MiddlePoint, Middle(edge.From, edge.To), edge.Object, edge.Round);
    m_edges.push_back(edge);
    return true;
}

void TSnapSearch::AddCircle(const TSnapCircle& circle, TZEPObject& object) {
    const auto radius = circle.Radius();
    const TGLArrayd3 rim = circle.At(circle.From + circle.Sweep / 2);
    const auto round =
        radius ? std::optional<TZEPRound>({circle.Center, *radius, rim}) : std::nullopt;
    const double angle = AngleNear(circle);
    const double seen = PixelsTo(circle.At(angle));
    // That point may lie off an arc of which another part is near: its ends are points.
    const double width = PixelsAround(circle, angle);
    if (!(width > 0) || seen > 4 * m_reach) return;
    const double reach = std::min(2 * m_reach / width, std::numbers::pi);
    bool isNear = false;
    for (int i = 0; i < ArcPieces; ++i) {
        const double from = angle + reach * (2.0 * i / ArcPieces - 1);
        const double to = angle + reach * (2.0 * (i + 1) / ArcPieces - 1);
        if (!circle.Holds(from) || !circle.Holds(to)) continue;
        isNear |= AddEdge({circle.At(from), circle.At(to), &object, round, 0}, false);
    }
    if (!isNear) return;
    const TZEPRound known = round.value_or(TZEPRound{circle.Center, 0, rim});
    m_circles.push_back({&object, known});
    AddCentre(&object, known);
}

double TSnapSearch::AngleNear(const TSnapCircle& circle) const {
    const TGLArrayd3 normal = Cross(circle.U, circle.V);
    const double across = Dotd(normal, m_sight);
    if (std::abs(across) > 1e-3 * Length(normal)) {
        const double far = Dotd(normal, circle.Center - m_eye) / across;
        const TGLArrayd3 at = m_eye + far * m_sight - circle.Center;
        const double uu = Dotd(circle.U, circle.U);
        const double uv = Dotd(circle.U, circle.V);
        const double vv = Dotd(circle.V, circle.V);
        const double u = Dotd(at, circle.U);
        const double v = Dotd(at, circle.V);
        return std::atan2(uu * v - uv * u, vv * u - uv * v);
    }
    constexpr int Steps = 512; // it is seen from its side
    double best = 0;
    for (int i = 1; i < Steps; ++i)
        if (const double angle = 2 * std::numbers::pi * i / Steps;
            PixelsTo(circle.At(angle)) < PixelsTo(circle.At(best)))
            best = angle;
    return best;
}

double TSnapSearch::PixelsAround(const TSnapCircle& circle, double angle) const {
    constexpr double Little = 1e-3;
    const double pixels =
        std::abs(PixelsTo(circle.At(angle + Little)) - PixelsTo(circle.At(angle - Little)));
    const TGLArrayd3 step = circle.At(angle + Little) - circle.At(angle - Little);
    const double unit = PixelsPerUnit(circle.At(angle));
    return std::max(pixels, Length(step) * unit) / (2 * Little);
}

double TSnapSearch::PixelsPerUnit(const TGLArrayd3& at) const {
    const TGLArrayd3 side = Unit(Cross(m_sight, std::abs(m_sight[2]) < 0.9 ? unitz : unitx));
    const auto clipW = [&](const TGLArrayd3& p) {
        return m_toClip[0][3] * p[0] + m_toClip[1][3] * p[1] + m_toClip[2][3] * p[2] +
               m_toClip[3][3];
    };
    const double w = clipW(at);
    double x = 0;
    double y = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        x += side[i] * m_toClip[i][0];
        y += side[i] * m_toClip[i][1];
    }
    return w > 0 ? std::hypot(x * m_size.width(), y * m_size.height()) / (2 * w) : 0;
}

} // namespace ZEP
