#pragma once

#include <QHash>

#include <algorithm>
#include <cmath>

namespace ZEP {

class TZEPObject;

/// Line weights (group 370), in hundredths of a millimetre, and whether the drawing shows them.
struct TDXFWeights {
    static constexpr int ByLayer = -1, ByBlock = -2, Default = -3;
    static constexpr int Pixel = 25;

    bool AreShown = false; ///< $LWDISPLAY
    QHash<const TZEPObject*, int> OfLayers{};

    /// As programs show it: a quarter of a millimetre is a pixel, and nothing is thinner.
    [[nodiscard]] static float PixelsOf(int weight) {
        constexpr int widest = 211;
        return static_cast<float>(std::clamp(weight, Pixel, widest)) / Pixel;
    }
    /// The nearest weight that drawings may have.
    [[nodiscard]] static int WeightOf(float pixels) {
        constexpr int weights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                   53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
        const auto distance = [&](int weight) {
            return std::abs(static_cast<float>(weight) - pixels * Pixel);
        };
        return *std::ranges::min_element(weights, {}, distance);
    }
};

} // namespace ZEP
