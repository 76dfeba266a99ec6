#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

#include <QPointer>
#include <QSize>
#include <QString>

#include <optional>
#include <vector>

namespace ZEP {

class TZEPCamera;
struct TZEPKnownCircle;

/// What a place snaps to.
enum class TZEPSnapKind : unsigned char {
    End,          ///< of a line, a chain of lines or an arc
    Vertex,       ///< a corner of a chain, a face, a mesh or a box, or a point
    Intersection, ///< of two lines or arcs
    MiddlePoint,  ///< of a line, an edge or an arc
    Centre,       ///< of a circle, an arc or a ball
    Nearest       ///< on a line, an arc, an edge or a surface
};

/// "End", "Middle", "Centre"...
[[nodiscard]] ZEP_CORE_EXPORT QString NameOf(TZEPSnapKind kind);

/// A circle or the one that an arc is a piece of.
struct TZEPRound {
    TGLArrayd3 Center{};
    double Radius = 0; ///< 0 of an ellipse
    TGLArrayd3 Rim{};  ///< a point on it
};

/// A point of the scene that a place in a view stands for.
struct TZEPSnap {
    TZEPSnapKind Kind = TZEPSnapKind::Nearest;
    TGLArrayd3 Point{}; ///< absolute
    QPointer<TZEPObject> Object;
    std::optional<TZEPRound> Round{}; ///< that the point belongs to
};

/// Finds what a place in a view snaps to: within some pixels the nearest end, corner, intersection,
/// middle or centre, and where there is none the nearest point of a line or a surface. What is
/// hidden by a surface, cut away by a section, not selectable or a dimension is passed over, and
/// so is what is no number.
///
/// Of 100,000 lines in a batch it takes a few milliseconds, of a mesh some 20 for each million
/// faces.
class ZEP_CORE_EXPORT TZEPSnapper {
public:
    TZEPSnapper();
    ~TZEPSnapper();

    /// How far from the place what it snaps to may be seen, in device pixels: 10 at first.
    void SetReach(double pixels) { m_reach = pixels; }
    /// With a context current, in which nothing is drawn. Centres count of the circles that the
    /// last places came near to.
    /// \param view   its size in device pixels
    /// \param place  in device pixels from its upper left corner
    [[nodiscard]] std::optional<TZEPSnap> Find(TZEPCamera& camera, const QSize& view, double x,
                                               double y);
    /// Other objects are there now.
    void Forget();

private:
    class TLooking;

    void Remember(const std::vector<TZEPKnownCircle>& circles);

    double m_reach = 10;
    std::vector<TZEPKnownCircle> m_circles; ///< the last ones, the latest first
};

} // namespace ZEP
