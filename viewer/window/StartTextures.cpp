#include "viewer/window/StartTextures.h"

#include <QColor>
#include <QImage>

#include <cmath>
#include <numbers>

namespace ZEP::StartTextures {

namespace {

constexpr double Turn = 2 * std::numbers::pi;

/// \param color  of the point (s, t), each in 0..1, t upwards
template <class Color>
QImage Painted(int width, int height, Color color) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y, color((x + 0.5) / width, 1 - (y + 0.5) / height));
    return image;
}

QColor Mixed(const QColor& from, const QColor& to, double part) {
    const auto mix = [part](int a, int b) { return static_cast<int>(a + (b - a) * part); };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

} // namespace

QImage Marble() {
    return Painted(128, 128, [](double s, double t) {
        const double bend = std::sin(Turn * (2 * s + t)) + 0.6 * std::sin(Turn * (5 * t - 3 * s)) +
                            0.3 * std::sin(Turn * (9 * s + 7 * t));
        const double vein = std::abs(std::sin(Turn * (s + t) + 1.4 * bend));
        return Mixed(QColor(70, 92, 128), QColor(246, 246, 250), std::pow(vein, 0.45));
    });
}

QImage Checkers() {
    return Painted(64, 64, [](double s, double t) {
        const bool dark = (static_cast<int>(s * 4) + static_cast<int>(t * 4)) % 2 == 0;
        const double grain = 0.5 + 0.5 * std::sin(Turn * (6 * s + 0.4 * std::sin(Turn * 2 * t)));
        const QColor wood = dark ? QColor(120, 66, 34) : QColor(236, 196, 140);
        return Mixed(wood, wood.darker(125), grain);
    });
}

QImage Stage() {
    return Painted(1024, 1024, [](double s, double t) {
        const double radius = 2 * std::hypot(s - 0.5, t - 0.5);
        for (const double ring : {0.335, 0.79, 0.955})
            if (std::abs(radius - ring) < 0.007) return QColor(224, 178, 92);
        const bool light = static_cast<int>(radius * 16) % 2 == 0;
        return light ? QColor(92, 98, 112) : QColor(78, 84, 98);
    });
}

} // namespace ZEP::StartTextures
