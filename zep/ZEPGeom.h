#pragma once

/// \file
/// Vectors, matrices and the spline.

#include <zep/scene/Geom.h>
#include <zep/scene/Spline.h>
