#pragma once

#include <QHash>

#include <algorithm>

namespace ZEP {

class TZEPObject;

/// Line weights (group 370), in hundredths of a millimetre, and whether the drawing shows them.
struct TDXFWeights {
    static constexpr int ByLayer = -1, ByBlock = -2, Default = -3;

    bool AreShown = false; ///< $LWDISPLAY
    QHash<const TZEPObject*, int> OfLayers{};

    /// As programs show it: a quarter of a millimetre is a pixel, and nothing is thinner.
    [[nodiscard]] static float PixelsOf(int weight) {
        constexpr int pixel = 25, widest = 211;
        return static_cast<float>(std::clamp(weight, pixel, widest)) / pixel;
    }
};

} // namespace ZEP
