#pragma once

/// \file
/// Textures of materials.

#include "appearance/Texture.h"
