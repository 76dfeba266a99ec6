#include <zep/framework/PictureDecoding.h>

#include "tests/ErrorOf.h"
#include <zep/framework/Picture.h>
#include <zep/framework/ReadBudget.h>

#include <QBuffer>
#include <QtEndian>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

constexpr const char* TooLarge = "The picture of 4000 x 3000 pixels is larger than its file allows";
constexpr const char* None = "The data is no picture of a known format";

QByteArray Encoded(const QImage& image, const char* format) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

QImage Plain(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(0x102030);
    return image;
}

/// A text of a megabyte that is packed into some thousand bytes, behind the head of a PNG.
QByteArray WithText(QByteArray png, quint32 forgedLength = 0) {
    const QByteArray text = QByteArray("a\0\0", 3) + qCompress(QByteArray(1 << 20, ' ')).mid(4);
    QByteArray length(4, '\0');
    qToBigEndian(forgedLength ? forgedLength : quint32(text.size()), length.data());
    constexpr qsizetype behindHead = 8 + 25;
    return png.insert(behindHead, length + "zTXt" + text + "crc-");
}

TEST(PictureDecoding, TakesWhatAPictureNeedsBeforeItIsDecoded) {
    const QByteArray png = Encoded(Plain(4000, 3000), "png");
    QByteArray scans = Encoded(Plain(4000, 3000), "jpg");
    for (int i = 0; i < 200; ++i) scans += "\xFF\xDA";
    struct TRow {
        const char* Name;
        QByteArray Data;
        qint64 FreeBytes;
        const char* Error;
    };
    const QByteArray gif =
        QByteArray::fromBase64("R0lGODdhAQABAIAAAAAAAP///ywAAAAAAQABAAACAkQBADs=");
    constexpr qint64 all = 4000 * 3000 * 4;
    const TRow rows[] = {
        {"fits", png, all, ""},
        {"does not fit", png, all - 1, TooLarge},
        {"a small picture on a large canvas", "GIF87a\xA0\x0F\xB8\x0B" + gif.mid(10), all - 1,
         TooLarge},
        {"also as bitmap", Encoded(Plain(4000, 3000), "bmp"), all - 1, TooLarge},
        {"goes over the picture too often", scans, all, TooLarge},
        {"the head of a larger one alone", png.left(40), all, None},
        {"a packed text", WithText(png), all, ""},
        {"a text that ends behind the file", WithText(png, 0x7FFFFFFF), all, None},
        {"lines, not pixels", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", all,
         None},
    };
    for (const TRow& row : rows) {
        TReadBudget budget(0, row.FreeBytes);
        QImage image;
        const auto decode = [&] {
            image = DecodePicture(row.Data, budget, [](const QSize&) { return 0; });
        };
        EXPECT_EQ(ErrorOf(decode), row.Error) << row.Name;
        EXPECT_EQ(image.isNull(), *row.Error != '\0') << row.Name;
        EXPECT_EQ(image.textKeys().size(), 0) << row.Name << ": it was unpacked";
    }
}

TEST(PictureDecoding, EachFormatTellsItsSize) {
    for (const char* format : {"png", "jpg", "bmp", "ppm", "pgm", "pbm", "xpm", "xbm", "ico"}) {
        TPicture picture;
        EXPECT_EQ(ErrorOf([&] { picture.SetData(Encoded(Plain(9, 5), format)); }), "") << format;
        EXPECT_EQ(picture.Image().size(), QSize(9, 5)) << format;
    }
    TPicture picture;
    picture.SetData(QByteArray::fromBase64("R0lGODdhAQABAIAAAAAAAP///ywAAAAAAQABAAACAkQBADs="));
    EXPECT_EQ(picture.Image().size(), QSize(1, 1)) << "gif";
}

TEST(PictureDecoding, AnImageTakesThePlaceOfTheBytesThatWereLoaded) {
    TPicture picture;
    const QByteArray loaded = Encoded(Plain(3, 2), "BMP");
    picture.SetData(loaded);
    EXPECT_EQ(picture.Data(), loaded);
    picture.SetImage(Plain(5, 4));
    EXPECT_EQ(QImage::fromData(picture.Data()).size(), QSize(5, 4));
}

} // namespace
} // namespace ZEP
