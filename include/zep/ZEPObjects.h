#pragma once

/// \file
/// The concrete drawable objects.

#include "objects/Arc.h"
#include "objects/Circle.h"
#include "objects/Line.h"
#include "objects/Point.h"
#include "objects/Polyline.h"
#include "scene/Vertex3.h"
