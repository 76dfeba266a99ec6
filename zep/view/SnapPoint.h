#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

#include <QPointer>
#include <QString>

#include <optional>

namespace ZEP {

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

} // namespace ZEP
