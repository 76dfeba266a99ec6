#include <zep/converters/dxf/Palette.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(DXFPalette, IsThatOfDrawingPrograms) {
    const struct {
        int Number;
        unsigned Red, Green, Blue;
    } rows[] = {
        {1, 255, 0, 0},      {2, 255, 255, 0},     {3, 0, 255, 0},       {4, 0, 255, 255},
        {5, 0, 0, 255},      {6, 255, 0, 255},     {7, 255, 255, 255},   {8, 128, 128, 128},
        {9, 192, 192, 192},  {10, 255, 0, 0},      {11, 255, 127, 127},  {12, 165, 0, 0},
        {13, 165, 82, 82},   {14, 127, 0, 0},      {15, 127, 63, 63},    {16, 76, 0, 0},
        {17, 76, 38, 38},    {18, 38, 0, 0},       {19, 38, 19, 19},     {20, 255, 63, 0},
        {21, 255, 159, 127}, {30, 255, 127, 0},    {40, 255, 191, 0},    {50, 255, 255, 0},
        {60, 191, 255, 0},   {90, 0, 255, 0},      {110, 0, 255, 127},   {130, 0, 255, 255},
        {150, 0, 127, 255},  {170, 0, 0, 255},     {171, 127, 127, 255}, {210, 255, 0, 255},
        {230, 255, 0, 127},  {240, 255, 0, 63},    {250, 51, 51, 51},    {255, 255, 255, 255},
        {-1, 255, 255, 255}, {256, 255, 255, 255},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DXFPaletteColor(row.Number).Value, row.Red | row.Green << 8U | row.Blue << 16U)
            << row.Number;
}

TEST(DXFPalette, TrueColoursAreRedFirst) {
    EXPECT_EQ(DXFTrueColor(0x102030, 256), TColor(0x302010));
    EXPECT_EQ(DXFTrueColor(-1, 7), clWhite);
    EXPECT_EQ(DXFTrueColor(0, 256), clBlack);
    EXPECT_EQ(DXFTrueColor(0, 7), clWhite); // no colour of its own
}

} // namespace
} // namespace ZEP
