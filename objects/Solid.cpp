#include "objects/Solid.h"

#include "appearance/Material.h"

#include <algorithm>
#include <cmath>

namespace ZEP {

const TZEPMaterial* TZEPSolid::SpecialMaterial() const {
    const TZEPMaterial* shared = MaterialOfLibrary();
    return shared ? shared : ExistingMaterial();
}

bool TZEPSolid::Textured() const {
    const TZEPMaterial* material = SpecialMaterial();
    return material && material->HasTexture();
}

bool TZEPSolid::DrawsTransparent() const {
    const TZEPMaterial* material = SpecialMaterial();
    return material && material->IsTransparent();
}

int CellCount(int count, int least) {
    return std::clamp(count, least, TZEPSolid::MaxCells);
}

double SolidRadius(double radius) {
    return std::isfinite(radius) && radius > 0 ? radius : 0;
}

} // namespace ZEP
