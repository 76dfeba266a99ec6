#pragma once

#include <QImage>

namespace ZEP {

/// A picture that tells how it lies: red and green above, blue and white below.
inline QImage FourColours() {
    QImage image(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            image.setPixelColor(
                x, y, y < 32 ? (x < 32 ? Qt::red : Qt::green) : (x < 32 ? Qt::blue : Qt::white));
    return image;
}

} // namespace ZEP
