#pragma once

#include <zep/scene/DrawStates.h>

namespace ZEP {

class TZEPObject;
class TZEPSceneContext;

/// Closes an object that was drawn in that pass, with its frame loaded, where a section cuts it
/// open: in the colour of what it is full of (`TZEPObject::SolidMaterial`). Nothing where it is
/// not cut, is hollow, or the cut is seen from behind, and without a stencil buffer.
///
/// Beyond the plane of the cut a ray leaves the body once more than it enters where the cut lies
/// within; that difference is counted in the stencil buffer, whose highest bit stays a mirror's.
void DrawCaps(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state);

} // namespace ZEP
