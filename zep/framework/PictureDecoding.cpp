#include <zep/framework/PictureDecoding.h>

#include <zep/framework/ReadBudget.h>

#include <QBuffer>
#include <QImageReader>
#include <QPixelFormat>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace ZEP {

namespace {

constexpr QByteArrayView PngSignature = "\x89PNG\r\n\x1a\n";
constexpr qsizetype ChunkFrame = 12; // bytes: length, name and check sum
/// All that tells how the pixels of a PNG look. Others hold texts and profiles, which may be of any
/// length once they are unpacked.
constexpr std::array<QByteArrayView, 9> PixelChunks{"IHDR", "PLTE", "IDAT", "IEND", "tRNS",
                                                    "gAMA", "cHRM", "sRGB", "pHYs"};

/// A JPEG goes over the whole picture in each scan; real ones have some ten.
constexpr qsizetype MostScans = 100;
constexpr QByteArrayView ScanMark = "\xFF\xDA";

/// The PNG without what is not needed; empty where a chunk is longer than the file.
QByteArray PixelsOfPng(const QByteArray& data) {
    QByteArray pixels = PngSignature.toByteArray();
    for (qsizetype at = PngSignature.size(); at < data.size();) {
        if (data.size() - at < ChunkFrame) return {};
        const qsizetype length = qFromBigEndian<quint32>(data.constData() + at);
        if (length > data.size() - at - ChunkFrame) return {};
        const QByteArrayView chunk(data.constData() + at, length + ChunkFrame);
        const QByteArrayView name = chunk.sliced(4, 4);
        if (std::ranges::find(PixelChunks, name) != PixelChunks.end()) pixels.append(chunk);
        if (name == "IEND") break; // what follows is no picture
        at += chunk.size();
    }
    return pixels;
}

QByteArray WithoutExtras(const QByteArray& data) {
    return data.startsWith(PngSignature) ? PixelsOfPng(data) : data;
}

bool HasTooManyScans(const QByteArray& data) {
    return data.startsWith("\xFF\xD8") && data.count(ScanMark) > MostScans;
}

/// A GIF has a canvas beside its pictures, of which a decoder tells the one or the other.
QSize SizeOf(const QImageReader& reader, const QByteArray& data) {
    constexpr qsizetype canvas = 6;
    const QSize size = reader.size();
    if (!data.startsWith("GIF8") || data.size() < canvas + 4) return size;
    const char* sides = data.constData() + canvas;
    return size.expandedTo(
        {qFromLittleEndian<quint16>(sides), qFromLittleEndian<quint16>(sides + 2)});
}

qint64 BytesOfPixel(QImage::Format format) {
    const int bits = QImage::toPixelFormat(format).bitsPerPixel();
    return std::max(bits / 8, 4); // fewer become four where the picture is drawn
}

/// Drawings in lines and areas have no size in pixels of their own, and name other files.
bool IsOfPixels(const QByteArray& format) {
    return !format.isEmpty() && !format.startsWith("svg") && format != "pdf";
}

} // namespace

QImage DecodePicture(const QByteArray& data, TReadBudget& budget,
                     const std::function<qint64(const QSize&)>& beside) {
    const auto refuse = [] {
        throw Exception(QStringLiteral("The data is no picture of a known format"));
    };
    QByteArray needed = WithoutExtras(data);
    QBuffer buffer(&needed);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const bool isOfPixels = IsOfPixels(reader.format());
    const QSize size = isOfPixels ? SizeOf(reader, needed) : QSize();
    if (size.isEmpty()) refuse();
    const qint64 bytes = size.width() * qint64(size.height()) * BytesOfPixel(reader.imageFormat());
    if (HasTooManyScans(needed) || !budget.Take(bytes + beside(size)))
        throw TPictureTooLarge(QStringLiteral("The picture of %1 x %2 pixels is larger than its "
                                              "file allows")
                                   .arg(size.width())
                                   .arg(size.height()));
    QImage image = reader.read();
    if (image.isNull()) refuse();
    return image;
}

} // namespace ZEP
