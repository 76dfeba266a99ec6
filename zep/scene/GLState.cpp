#include <zep/scene/GLState.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

bool IsLoaded(const TGLMatrixd4& modelView, double reach) {
    constexpr double floatError = 1e-6; // of the largest number that is added up
    const TGLMatrixd4 loaded = LoadedMatrix(GL_MODELVIEW_MATRIX);
    double scale = 1;
    for (std::size_t i = 0; i < 12; ++i) scale = std::max(scale, std::abs(modelView[i / 4][i % 4]));
    for (std::size_t i = 0; i < 16; ++i) {
        const double error = floatError * (i < 12 ? scale : scale + reach);
        if (!(std::abs(loaded[i / 4][i % 4] - modelView[i / 4][i % 4]) <= error)) return false;
    }
    return true;
}

} // namespace ZEP
