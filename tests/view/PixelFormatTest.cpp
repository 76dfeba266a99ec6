#include "tests/view/FakeBinding.h"
#include <zep/view/PixelFormatSearch.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(PixelFormat, PaletteSpreadsTheBitsOfEachChannel) {
    TPixelFormat format;
    format.ColorBits = 8;
    format.RedBits = 3;
    format.GreenBits = 3;
    format.GreenShift = 3;
    format.BlueBits = 2;
    format.BlueShift = 6;
    const auto palette = BuildPalette(format);
    ASSERT_EQ(palette.size(), 256U);
    EXPECT_EQ(palette[0], (TPaletteEntry{0, 0, 0}));
    EXPECT_EQ(palette[0b01'010'011], (TPaletteEntry{3 * 255 / 7, 2 * 255 / 7, 255 / 3}));
    EXPECT_EQ(palette[255], (TPaletteEntry{255, 255, 255}));
}

TEST(PixelFormat, PaletteOfStrangeFormatsStaysInBounds) {
    TPixelFormat format;
    format.ColorBits = 32;
    format.GreenBits = 30;
    const auto palette = BuildPalette(format);
    EXPECT_EQ(palette.size(), 65536U);
    EXPECT_EQ(palette.back(), (TPaletteEntry{0, 255, 0}));
    format.ColorBits = -1;
    EXPECT_EQ(BuildPalette(format).size(), 1U);
}

/// Whatever order the system names its formats in, the listed order leads the search to the same.
TEST(PixelFormat, TheListedOrderLeadsTheSearchToTheMostUseful) {
    for (const std::uint32_t kind : {0U, pfGenericFormat, pfGenericFormat | pfGenericAccelerated}) {
        std::vector<TPixelFormat> formats;
        for (const std::uint32_t buffering : {0U, pfDoubleBuffer})
            for (const int depth : {16, 24})
                for (const int accum : {0, 64}) {
                    formats.push_back(FakeFormat(32, depth, kind | buffering));
                    formats.back().AccumBits = accum;
                }
        const TPixelFormat best = formats.back();
        for (std::size_t turn = 0; turn < formats.size(); ++turn) {
            std::rotate(formats.begin(), formats.begin() + 1, formats.end());
            FakeBinding::System system;
            system.Formats = formats;
            std::sort(system.Formats.begin(), system.Formats.end(), ListedBefore);
            FakeBinding binding(system);
            const auto granted = SearchFormat(binding, kind != pfGenericFormat);
            ASSERT_TRUE(granted);
            EXPECT_EQ(granted->Format, best) << kind << ' ' << turn;
        }
    }
}

} // namespace
} // namespace ZEP
