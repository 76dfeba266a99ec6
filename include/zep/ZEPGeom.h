#pragma once

/// \file
/// Vectors, matrices and the spline.

#include "scene/Geom.h"
#include "scene/Spline.h"
