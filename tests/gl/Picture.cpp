#include "tests/gl/Picture.h"

#include <QDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace ZEP {

namespace {

/// Once for each name that is asked for.
bool IsToBeKept(const QString& name) {
    static QStringList names = qEnvironmentVariable("ZEP_KEEP_PICTURES").split(QLatin1Char(','));
    return names.removeAll(name) > 0;
}

void Save(const QImage& image, const QString& folder, const QString& file) {
    QDir().mkpath(folder);
    EXPECT_TRUE(image.save(folder + QLatin1Char('/') + file)) << qPrintable(file);
}

} // namespace

TPictureDifference ComparePictures(const QImage& frame, const QImage& kept) {
    TPictureDifference result;
    result.Map =
        frame.convertToFormat(QImage::Format_Grayscale8).convertToFormat(QImage::Format_RGB32);
    double sum = 0;
    for (int y = 0; y < frame.height(); ++y)
        for (int x = 0; x < frame.width(); ++x) {
            const QRgb a = frame.pixel(x, y);
            const QRgb b = kept.pixel(x, y);
            const int channels[] = {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                    std::abs(qBlue(a) - qBlue(b))};
            const int largest = *std::ranges::max_element(channels);
            sum += channels[0] + channels[1] + channels[2];
            result.Largest = std::max(result.Largest, largest);
            if (largest > 0) result.Map.setPixel(x, y, qRgb(127 + largest / 2, 0, 0));
        }
    result.Mean = sum / (3.0 * frame.width() * frame.height());
    return result;
}

void ExpectPicture(const QImage& frame, const QString& name, TPictureLimits limits,
                   std::experimental::source_location where) {
    const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()),
                                     name.toStdString());
    const QString folder = QStringLiteral(ZEP_TEST_DATA "/pictures");
    const QString file = name + QStringLiteral(".png");
    if (IsToBeKept(name)) Save(frame, folder, file);

    const QString output = QStringLiteral(ZEP_TEST_OUTPUT);
    const QImage kept(folder + QLatin1Char('/') + file);
    if (kept.size() != frame.size()) {
        Save(frame, output, file);
        ADD_FAILURE() << (kept.isNull() ? "no such picture is kept" : "another size is kept")
                      << "; the new one is in " << qPrintable(output);
        return;
    }
    const TPictureDifference difference = ComparePictures(frame, kept);
    if (difference.Largest <= limits.Largest && difference.Mean <= limits.Mean) return;
    Save(frame, output, file);
    Save(difference.Map, output, name + QStringLiteral(".difference.png"));
    ADD_FAILURE() << "largest difference " << difference.Largest << " (allowed " << limits.Largest
                  << "), mean " << difference.Mean << " (allowed " << limits.Mean << "), see "
                  << qPrintable(output);
}

} // namespace ZEP
