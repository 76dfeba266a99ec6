#include "objects/Solid.h"

#include "appearance/Material.h"

#include <algorithm>
#include <cmath>

namespace ZEP {

bool TZEPSolid::Textured() const {
    const TZEPMaterial* shared = MaterialOfLibrary();
    const TZEPMaterial* material = shared ? shared : ExistingMaterial();
    return material && material->HasTexture();
}

int CellCount(int count, int least) {
    return std::clamp(count, least, TZEPSolid::MaxCells);
}

double SolidRadius(double radius) {
    return std::isfinite(radius) && radius > 0 ? radius : 0;
}

} // namespace ZEP
