#include <zep/appearance/materials/Texture.h>

#include <zep/framework/Exception.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::Each;
using testing::ElementsAre;

namespace {

struct Counter : TObject {
    int Changes = 0;
    TObject* Sender = nullptr;
    void Changed(TObject* sender) {
        ++Changes;
        Sender = sender;
    }
    TNotifyEvent Event() { return Notify<&Counter::Changed>(this); }
};

QImage Plain(int width, int height, QRgb color, QImage::Format format = QImage::Format_RGB32) {
    QImage image(width, height, format);
    image.fill(QColor::fromRgba(color));
    return image;
}

} // namespace

TEST(Texture, SidesAreTheNextPowersOfTwoUpTo1024) {
    struct Case {
        int PictureWidth, PictureHeight, Width, Height;
    };
    for (const Case& c : {Case{100, 60, 128, 64}, Case{256, 256, 256, 256},
                          Case{3000, 10, 1024, 16}, Case{1, 1, 1, 1}, Case{1, 1025, 1, 1024},
                          Case{1023, 3, 1024, 4}, Case{2, 513, 2, 1024}}) {
        TZEPTexture texture;
        texture.Image()->SetImage(Plain(c.PictureWidth, c.PictureHeight, 0xFF102030));
        EXPECT_EQ(texture.Width(), c.Width) << c.PictureWidth;
        EXPECT_EQ(texture.Height(), c.Height) << c.PictureHeight;
        ASSERT_EQ(texture.Pixels().size(), static_cast<std::size_t>(c.Width * c.Height));
        EXPECT_THAT(texture.Pixels(), Each(0x302010U)) << c.PictureWidth;
    }
}

TEST(Texture, RowsStandBottomUpAsRedGreenBlueAndZero) {
    QImage image = Plain(2, 2, 0xFFFFFFFF);
    image.setPixel(0, 0, 0xFF112233);
    image.setPixel(1, 1, 0xFF445566);
    TZEPTexture texture;
    texture.Image()->SetImage(image);
    EXPECT_THAT(texture.Pixels(), ElementsAre(0xFFFFFF, 0x665544, 0x332211, 0xFFFFFF));
}

TEST(Texture, EveryPixelFormatGivesTheSameBuffer) {
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        if (format == QImage::Format_Alpha8) continue; // holds no colour
        QImage image = Plain(4, 4, 0xFFFFFFFF).convertToFormat(static_cast<QImage::Format>(format));
        TZEPTexture texture;
        texture.Image()->SetImage(image);
        EXPECT_THAT(texture.Pixels(), Each(0xFFFFFFU)) << format;
    }
}

TEST(Texture, WhatIsSeeThroughStandsOnWhite) {
    TZEPTexture texture;
    texture.Image()->SetImage(Plain(1, 1, 0x000000FF, QImage::Format_ARGB32));
    EXPECT_THAT(texture.Pixels(), ElementsAre(0xFFFFFF));
}

TEST(Texture, HugePicturesAreScaledWithinBounds) {
    QImage image(20000, 20000, QImage::Format_Mono);
    image.setColorTable({0xFF000000, 0xFFFFFFFF});
    image.fill(0);
    std::fill(image.bits(), image.scanLine(10000), uchar{0xFF});
    TZEPTexture texture;
    texture.Image()->SetImage(image);
    ASSERT_EQ(texture.Pixels().size(), 1024U * 1024U);
    EXPECT_EQ(texture.Pixels().front(), 0U) << "the black lower half comes first";
    EXPECT_EQ(texture.Pixels().back(), 0xFFFFFFU);
}

TEST(Texture, ClearingThePictureEmptiesIt) {
    Counter counter;
    TZEPTexture texture(counter.Event());
    EXPECT_TRUE(texture.Empty());
    texture.Image()->SetImage(Plain(8, 4, 0xFF000000));
    EXPECT_FALSE(texture.Empty());
    texture.Image()->Clear();
    EXPECT_TRUE(texture.Empty());
    EXPECT_EQ(texture.Width(), 0);
    EXPECT_EQ(texture.Height(), 0);
    EXPECT_TRUE(texture.Pixels().empty());
    EXPECT_EQ(counter.Changes, 2);
    EXPECT_EQ(counter.Sender, &texture);
    texture.Image()->SetImage(QImage(0, 0, QImage::Format_RGB32));
    EXPECT_TRUE(texture.Empty());
}

TEST(Texture, AssignCopiesAllButTheBorder) {
    TZEPTexture source;
    source.SetEnvironment(teBlend);
    source.SetWrapT(twClamp);
    source.SetTilingT(3);
    source.SetOffsetS(0.25F);
    source.SetAngle(90);
    source.SetBorder(true);
    source.SetBorderColor(clRed);
    source.Image()->SetImage(Plain(3, 2, 0xFF00FF00));
    Counter counter;
    TZEPTexture copy(counter.Event());
    copy.Assign(&source);
    EXPECT_EQ(counter.Changes, 2) << "once for the picture, once for the rest";
    EXPECT_EQ(copy.Environment(), teBlend);
    EXPECT_EQ(copy.WrapT(), twClamp);
    EXPECT_EQ(copy.TilingT(), 3);
    EXPECT_EQ(copy.OffsetS(), 0.25F);
    EXPECT_EQ(copy.Angle(), 90);
    EXPECT_EQ(copy.BorderColor(), clRed);
    EXPECT_FALSE(copy.Border());
    EXPECT_EQ(copy.Width(), 4);
    EXPECT_EQ(copy.Pixels(), source.Pixels());
    EXPECT_THROW(copy.Assign(source.Image()), Exception);
}
