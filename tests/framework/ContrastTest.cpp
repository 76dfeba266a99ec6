#include <zep/framework/Contrast.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

constexpr TColor Dark{0x17110D};

TEST(Contrast, ColoursStandOutFromTheBackground) {
    struct TRow {
        const char* What;
        TColor Color, Background, Shown;
    };
    const TRow rows[] = {
        {"white on dark", clWhite, Dark, clWhite},
        {"white on white", clWhite, clWhite, clBlack},
        {"nearly white on white", TColor{0xF0F0F0}, clWhite, clBlack},
        {"black on dark", clBlack, Dark, clWhite},
        {"black on white", clBlack, clWhite, clBlack},
        {"red on white", clRed, clWhite, clRed},
        {"red on dark", clRed, Dark, clRed},
        {"blue on white", clBlue, clWhite, clBlue},
        {"grey on dark", TColor{0x808080}, Dark, TColor{0x808080}},
        {"grey on the same grey", TColor{0x808080}, TColor{0x808080}, clBlack},
    };
    for (const TRow& row : rows)
        EXPECT_EQ(Readable(row.Color, row.Background), row.Shown) << row.What;
}

TEST(Contrast, AColourThatGivesWayKeepsItsHue) {
    const QColor yellow = ToQColor(Readable(clYellow, clWhite));
    EXPECT_EQ(yellow.hsvHue(), 60);
    EXPECT_LT(yellow.value(), 230);
    const QColor navy = ToQColor(Readable(TColor{0x300000}, Dark));
    EXPECT_EQ(navy.hsvHue(), 240);
    EXPECT_GT(navy.value(), 0x30);
}

TEST(Contrast, OfAColourWithAPaletteTheLowerBytesCount) {
    EXPECT_EQ(ColorToRGB(TColor{0x02FFFFFF}), 0xFFFFFFU);
    EXPECT_EQ(Readable(TColor{0x02FFFFFF}, clWhite), clBlack);
}

} // namespace
} // namespace ZEP
