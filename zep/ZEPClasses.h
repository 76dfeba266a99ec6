#pragma once

/// \file
/// Unit ZEPClasses: objects, transforms, collections, materials, the scene, the camera and, for
/// hosts that link `ZEP::ZEP`, the panel and its context.

#include <zep/Version.h>
#include <zep/appearance/effects/Fog.h>
#include <zep/appearance/effects/Light.h>
#include <zep/appearance/effects/LineShape.h>
#include <zep/appearance/effects/LogicalObject.h>
#include <zep/appearance/effects/Proxy.h>
#include <zep/appearance/effects/ReflexedObject.h>
#include <zep/appearance/effects/ShadowedObject.h>
#include <zep/appearance/effects/Shape.h>
#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Exception.h>
#include <zep/framework/SharedCollection.h>
#include <zep/scene/Add.h>
#include <zep/scene/ColoredObject.h>
#include <zep/scene/DrawStates.h>
#include <zep/scene/Object.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Sections.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/VertexItems.h>
#include <zep/scene/XForm.h>
#include <zep/view/Actor.h>
#include <zep/view/Backdrop.h>
#include <zep/view/Camera.h>
#include <zep/view/Dimension.h>
#include <zep/view/Directions.h>
#include <zep/view/Facts.h>
#include <zep/view/Fitting.h>
#include <zep/view/Headlight.h>
#include <zep/view/PointMoves.h>
#include <zep/view/Snap.h>
#include <zep/view/ViewPlaces.h>
#ifdef ZEP_WIDGETS
#include <zep/view/Context.h>
#include <zep/view/Cursors.h>
#include <zep/view/Gizmo.h>
#include <zep/view/Hover.h>
#include <zep/view/MeasureTool.h>
#include <zep/view/MousePresets.h>
#include <zep/view/Panel.h>
#include <zep/view/PanelControl.h>
#include <zep/view/PanelPages.h>
#include <zep/view/PanelVectors.h>
#include <zep/view/SectionHandles.h>
#include <zep/view/TimeLine.h>
#endif
