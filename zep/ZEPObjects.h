#pragma once

/// \file
/// Unit ZEPObjects: the concrete drawable objects.

#include <zep/batch/Batch.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Box.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Cone.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/HeightField.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyhedra.h>
#include <zep/objects/Polyline.h>
#include <zep/objects/Sphere.h>
#include <zep/objects/Teapot.h>
#include <zep/objects/Torus.h>
#include <zep/objects/User.h>
#include <zep/scene/Vertex3.h>
#include <zep/sheets/Layout.h>
#include <zep/sheets/Viewport.h>
