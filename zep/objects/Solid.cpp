#include <zep/objects/Solid.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

TZEPMaterial* TZEPSolid::SolidMaterial() {
    return IsClosed() ? &DrawnMaterial() : nullptr;
}

int CellCount(int count, int least) {
    return std::clamp(count, least, TZEPSolid::MaxCells);
}

double SolidRadius(double radius) {
    return std::isfinite(radius) && radius > 0 ? radius : 0;
}

} // namespace ZEP
