#pragma once

/// \file
/// Unit ZEPTextures: textures of materials.

#include <zep/appearance/materials/Texture.h>
