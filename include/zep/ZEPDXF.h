#pragma once

/// \file
/// The reader of DXF drawings.

#include "converters/DXF.h"
#include "converters/DXFColors.h"
