#pragma once

/// \file
/// Unit ZEPGeom: vectors, matrices and the spline.

#include <zep/scene/Geom.h>
#include <zep/scene/Spline.h>
