#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <QString>

#include <optional>

namespace ZEP {

class TZEPObject;

/// What is told of an object of a drawing, in absolute coordinates and the scene's unit.
struct TZEPFacts {
    std::optional<double> Radius; ///< of a circle or an arc that is seen as a round one
    std::optional<double> Length; ///< along a line, polyline, arc or circle
    std::optional<double> Area;   ///< of what is closed and flat, and of all faces of a mesh
    QString Layer;                ///< ident of the nearest actor above, where readers put layers
    QString Blocks;   ///< idents of the nodes between it and its layer, as "Door/Handle"
    QString LineType; ///< its name, or its dashes where it has none; empty for a solid line
    QString Text;     ///< of a label
};

[[nodiscard]] ZEP_CORE_EXPORT TZEPFacts FactsOf(TZEPObject& object);

/// Where an arc or a circle passes, absolute. \param degrees  counter-clockwise from its own x
[[nodiscard]] ZEP_CORE_EXPORT TGLArrayd3 PointOnCircle(const TZEPObject& object, double degrees);

} // namespace ZEP
