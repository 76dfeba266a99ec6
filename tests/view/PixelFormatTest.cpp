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

struct ClosestCase {
    const char* Name;
    std::vector<TPixelFormat> Formats;
    int Expected;
};

TEST(PixelFormat, ClosestMissesLeast) {
    const auto with = [](int color, int depth, std::uint32_t flags = 0) {
        return FakeFormat(color, depth, pfDoubleBuffer | flags);
    };
    TPixelFormat indexed = with(32, 24);
    indexed.PixelType = ptColorIndex;
    TPixelFormat hidden = with(32, 24);
    hidden.Flags &= ~pfDrawToWindow;
    TPixelFormat noStencil = with(32, 24);
    noStencil.StencilBits = 0;
    const std::vector<ClosestCase> cases = {
        {"none", {}, 0},
        {"other kinds do not count", {indexed, hidden, FakeFormat(32, 24)}, 0},
        {"a surplus before a lack", {with(32, 16), with(32, 32)}, 2},
        {"the least surplus", {with(64, 32), with(32, 32), with(32, 24)}, 3},
        {"the first of equals", {with(24, 24), with(32, 24), with(32, 24)}, 2},
        {"the least lack", {with(16, 24), with(24, 24), with(32, 0)}, 2},
        {"stencil before depth", {noStencil, with(32, 16)}, 2},
        {"acceleration does not decide", {with(32, 24, pfGenericFormat), with(32, 24)}, 1},
    };
    for (const ClosestCase& c : cases)
        EXPECT_EQ(ClosestFormat(c.Formats, with(32, 24, pfGenericAccelerated)), c.Expected)
            << c.Name;
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
