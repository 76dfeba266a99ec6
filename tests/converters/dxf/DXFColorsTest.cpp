#include <zep/converters/dxf/Colors.h>

#include <gtest/gtest.h>

#include <climits>

namespace ZEP {
namespace {

TEST(DXFColors, AreThoseOfTheTable) {
    const struct {
        std::size_t Number;
        std::uint32_t Color;
    } rows[] = {{0, 0x000000},  {1, 0x0000FF},  {2, 0x00FFFF},  {3, 0x00FF00},  {4, 0xFFFF00},
                {5, 0xFF0000},  {6, 0x800080},  {7, 0xFFFFFF},  {8, 0x808080},  {9, 0x808080},
                {10, 0x008000}, {11, 0x8080FF}, {12, 0x0000C0}, {13, 0x6060D0}, {14, 0x000090},
                {15, 0x404090}, {16, 0x000080}, {17, 0x404080}, {18, 0x000040}, {19, 0x202040},
                {20, 0x0040FF}, {21, 0x80A0FF}, {22, 0x0030C0}, {23, 0x6080C0}, {24, 0x002090},
                {25, 0x406090}, {26, 0x002080}, {27, 0x304070}, {28, 0x001040}, {29, 0x203050}};
    for (const auto& row : rows)
        EXPECT_EQ(DXF_Layer_Colors[row.Number].Value, row.Color) << row.Number;
    for (std::size_t i = std::size(rows); i < DXF_Layer_Colors.size(); ++i)
        EXPECT_EQ(DXF_Layer_Colors[i], clWhite) << i;
}

TEST(DXFColors, AreFoundByDistance) {
    const struct {
        TColor Color;
        int Number;
    } rows[] = {
        {clWhite, 7},  {clBlack, 0},   {clRed, 1},     {0x0000FE, 1}, {0x808080, 8},
        {0x818181, 8}, {0x203051, 29}, {0xF0F0F0, 7},  {0x010000, 0}, {0x7F0080, 6},
        {clBlue, 5},   {clSilver, 21}, {0x304070, 27},
    };
    for (const auto& row : rows)
        EXPECT_EQ(find_DXF_color(row.Color), row.Number) << std::hex << row.Color.Value;
}

TEST(DXFColors, OfNumbersBeyondTheTableAreNone) {
    const struct {
        int Number;
        std::optional<TColor> Color;
    } rows[] = {{0, clBlack},
                {1, clRed},
                {-1, clRed},
                {200, clWhite},
                {255, clWhite},
                {-255, clWhite},
                {256, std::nullopt},
                {-256, std::nullopt},
                {257, std::nullopt},
                {INT_MAX, std::nullopt},
                {INT_MIN, std::nullopt}};
    for (const auto& row : rows) EXPECT_EQ(DXFColor(row.Number), row.Color) << row.Number;
}

} // namespace
} // namespace ZEP
