#pragma once

/// \file
/// Textures of materials.

#include <zep/appearance/materials/Texture.h>
