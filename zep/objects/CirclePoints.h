#pragma once

#include <cmath>

namespace ZEP {

/// Calls `send(x, y)` for points of the circle of radius 0.5 about the origin: `count` of them, the
/// first at the angle `start`, each of the others `step` further on (radians, counter-clockwise
/// from +x). Each point is the one before, turned, which spares a sine and a cosine; a million
/// steps stray by less than 1e-9.
template <class Send>
void ForCirclePoints(double start, double step, int count, Send&& send) {
    const double cosine = std::cos(step);
    const double sine = std::sin(step);
    double x = 0.5 * std::cos(start);
    double y = 0.5 * std::sin(start);
    for (int i = 0; i < count; ++i) {
        send(x, y);
        const double turned = x * cosine - y * sine;
        y = x * sine + y * cosine;
        x = turned;
    }
}

} // namespace ZEP
