#pragma once

#include <QImage>
#include <QString>

#include <experimental/source_location>

namespace ZEP {

/// How far a picture may be from the one that is kept, in steps of a channel (0 to 255): the
/// largest of any channel of any pixel, and the mean over all of them.
struct TPictureLimits {
    int Largest = 0;
    double Mean = 0;
};

/// How far two pictures of one size are apart, and where: the frame in grey, differences in red.
struct TPictureDifference {
    int Largest = 0;
    double Mean = 0;
    QImage Map;
};
TPictureDifference ComparePictures(const QImage& frame, const QImage& kept);

/// How many pixels of two pictures of one size are not the same.
inline int DifferentPixels(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    return count;
}

/// Fails unless the frame is within the limits of `tests/data/pictures/NAME.png`, and writes
/// `NAME.png` and `NAME.difference.png` to the folder that the message names. The environment
/// variable `ZEP_KEEP_PICTURES` lists (with commas) the names whose pictures are to be replaced by
/// the frame instead; a picture that is not there is never made unasked.
void ExpectPicture(
    const QImage& frame, const QString& name, TPictureLimits limits,
    std::experimental::source_location where = std::experimental::source_location::current());

} // namespace ZEP
