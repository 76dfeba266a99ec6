#pragma once

/// \file
/// The reader of 3DS scenes.

#include "converters/ThreeDS.h"
