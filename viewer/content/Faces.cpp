#include "viewer/content/Faces.h"

#include <zep/appearance/effects/Shape.h>
#include <zep/objects/Label.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Polygon.h>

namespace ZEP {

bool HasFaces(const TZEPObject& object) {
    return qobject_cast<const TZEPColoredObject*>(&object) &&
           !qobject_cast<const TZEPShape*>(&object) && !qobject_cast<const TZEPLabel*>(&object);
}

bool IsOpenSurface(const TZEPObject& object) {
    return qobject_cast<const TZEPMesh*>(&object) || qobject_cast<const TZEPPolygon*>(&object);
}

} // namespace ZEP
