#pragma once

/// \file
/// The core: objects, transforms, collections, materials and the scene.

#include "appearance/LineShape.h"
#include "appearance/Material.h"
#include "appearance/MaterialLibrary.h"
#include "appearance/Shape.h"
#include "scene/Collection.h"
#include "scene/ColoredObject.h"
#include "scene/DrawStates.h"
#include "scene/Object.h"
#include "scene/Scene.h"
#include "scene/Vertex3.h"
#include "scene/VertexItems.h"
#include "scene/XForm.h"
