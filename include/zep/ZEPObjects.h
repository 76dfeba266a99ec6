#pragma once

/// \file
/// The concrete drawable objects.

#include "objects/Arc.h"
#include "objects/Box.h"
#include "objects/Circle.h"
#include "objects/Cone.h"
#include "objects/HeightField.h"
#include "objects/Label.h"
#include "objects/Line.h"
#include "objects/Mesh.h"
#include "objects/Node.h"
#include "objects/Point.h"
#include "objects/Polygon.h"
#include "objects/Polyhedra.h"
#include "objects/Polyline.h"
#include "objects/Sphere.h"
#include "objects/Teapot.h"
#include "objects/Torus.h"
#include "objects/User.h"
#include "scene/Vertex3.h"
