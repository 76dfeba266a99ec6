#include <zep/view/Snap.h>

#include <zep/scene/Scene.h>
#include <zep/scene/SelectHits.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/Dimension.h>
#include <zep/view/SnapSearch.h>
#include <zep/view/ViewPlaces.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZEP {

namespace {

using enum TZEPSnapKind;

constexpr std::size_t MostObjects = 64; // that are looked at
constexpr double HiddenBehind = 2;      // reaches that a surface stands before what it hides
constexpr std::size_t MostCircles = 8;  // that are remembered

} // namespace

QString NameOf(TZEPSnapKind kind) {
    switch (kind) {
    case End:
        return QStringLiteral("End");
    case Vertex:
        return QStringLiteral("Corner");
    case Intersection:
        return QStringLiteral("Intersection");
    case MiddlePoint:
        return QStringLiteral("Middle");
    case Centre:
        return QStringLiteral("Centre");
    case Nearest:
        break;
    }
    return QStringLiteral("Nearest");
}

TZEPSnapper::TZEPSnapper() = default;
TZEPSnapper::~TZEPSnapper() = default;

void TZEPSnapper::Forget() {
    m_circles.clear();
}

/// What OpenGL tells of one view.
class TZEPSnapper::TLooking {
public:
    TLooking(TZEPCamera& camera, const QSize& view) : m_camera(&camera), m_view(view) {}

    [[nodiscard]] std::vector<TZEPObject*> Objects(double x, double y, double side) const {
        return m_camera->Scene()->ObjectsIn(*m_camera, RegionAt(x, y, side), TZEPReach::Touched);
    }
    /// Of what is nearest in a square, at its middle.
    [[nodiscard]] std::optional<TGLArrayd3> Surface(double x, double y, double side) const {
        if (!m_camera || !m_camera->Scene()) return {};
        const auto depth = m_camera->Scene()->DepthIn(*m_camera, RegionAt(x, y, side));
        if (!depth || !m_camera) return {};
        return ToWorld(*m_camera, m_view, {x, y, *depth});
    }
    /// The camera is still there: what is drawn may free it.
    explicit operator bool() const { return m_camera && m_camera->Scene(); }

private:
    [[nodiscard]] TZEPPickRegion RegionAt(double x, double y, double side) const {
        const int pixels = std::max(1, static_cast<int>(side));
        return {m_view.width(),
                m_view.height(),
                static_cast<int>(x),
                m_view.height() - static_cast<int>(y),
                pixels,
                pixels};
    }

    QPointer<TZEPCamera> m_camera;
    QSize m_view;
};

void TZEPSnapper::Remember(const std::vector<TZEPKnownCircle>& circles) {
    std::erase_if(m_circles, [&](const TZEPKnownCircle& known) {
        return !known.Object ||
               std::ranges::find(circles, known.Object, &TZEPKnownCircle::Object) != circles.end();
    });
    m_circles.insert(m_circles.begin(), circles.begin(), circles.end());
    if (m_circles.size() > MostCircles) m_circles.resize(MostCircles);
}

std::optional<TZEPSnap> TZEPSnapper::Find(TZEPCamera& camera, const QSize& view, double x,
                                          double y) {
    if (!camera.Scene() || view.isEmpty()) return {};
    TSnapSearch search(camera, view, x, y, m_reach);
    if (!search.IsSeen()) return {};
    const TLooking look(camera, view);
    std::vector<QPointer<TZEPObject>> objects;
    for (TZEPObject* object : look.Objects(x, y, 2 * m_reach))
        if (objects.size() < MostObjects && !qobject_cast<TZEPDimension*>(object) &&
            !camera.IsOffSheet(*object))
            objects.emplace_back(object);
    const auto surface = look.Surface(x, y, 2 * m_reach);
    const TSnapBox near = search.Around(surface.value_or(zero3d));
    bool hides = false;
    for (const QPointer<TZEPObject>& object : objects) {
        if (!object) continue;
        const TSnapShape shape = TSnapShape::Of(*object, near);
        hides = hides || shape.IsSurface;
        search.Add(*object, shape);
    }
    search.AddMeetings();
    for (const TZEPKnownCircle& known : m_circles)
        if (known.Object) search.AddCentre(known.Object, known.Round);
    Remember(search.Circles());
    const std::vector<TZEPSnap> found = search.Found();
    if (!hides) return found.empty() ? std::nullopt : std::optional(found.front());
    const auto hit = look.Surface(x, y, 1);
    for (const TZEPSnap& snap : found)
        if (!hit || search.DepthOf(snap.Point) <=
                        search.DepthOf(*hit) + HiddenBehind * search.ReachAt(*hit))
            return snap;
    if (!hit || !look || AnyCuts(camera.Sections())) return {}; // of a cap OpenGL has no depth
    return TZEPSnap{Nearest, *hit, objects.front(), {}};
}

} // namespace ZEP
