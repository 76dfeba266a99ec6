#pragma once

/// \file
/// The core: objects, transforms, collections, materials, the scene, the camera and, for programs
/// with Qt Widgets, the panel and its context.

#include "appearance/Fog.h"
#include "appearance/Light.h"
#include "appearance/LineShape.h"
#include "appearance/LogicalObject.h"
#include "appearance/Material.h"
#include "appearance/MaterialLibrary.h"
#include "appearance/Proxy.h"
#include "appearance/ReflexedObject.h"
#include "appearance/ShadowedObject.h"
#include "appearance/Shape.h"
#include "scene/Collection.h"
#include "scene/ColoredObject.h"
#include "scene/DrawStates.h"
#include "scene/Object.h"
#include "scene/Scene.h"
#include "scene/Vertex3.h"
#include "scene/VertexItems.h"
#include "scene/XForm.h"
#include "view/Actor.h"
#include "view/Camera.h"
#if __has_include(<QWidget>)
#include "view/Context.h"
#include "view/Cursors.h"
#include "view/Panel.h"
#include "view/PanelControl.h"
#include "view/TimeLine.h"
#endif
