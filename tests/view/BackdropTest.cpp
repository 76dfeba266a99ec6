#include <zep/view/Backdrop.h>

#include <gtest/gtest.h>

#include <limits>

namespace ZEP {
namespace {

TEST(Backdrop, TheGridStepIsARoundPartOfTheContent) {
    struct TRow {
        double Side, Step;
    };
    // The diagonal of a cube, 1.73 times its side, over 16, up to the next round number.
    for (const auto& [side, step] :
         {TRow{1, 0.2}, {4, 0.5}, {9, 1}, {100, 20}, {1000, 200}, {1e-4, 2e-5}, {0.46, 0.05}}) {
        TZEPBackdrop backdrop;
        backdrop.SetContent(TZEPBounds{{0, 0, 0}, {side, side, side}});
        EXPECT_NEAR(backdrop.GridStep(), step, step * 1e-9) << side;
    }
}

TEST(Backdrop, ThereIsNoGridWithoutExtentOrWhereItsPlacesCannotBeTold) {
    const double endless = std::numeric_limits<double>::infinity();
    for (const std::optional<TZEPBounds>& content : {std::optional<TZEPBounds>(),
                                                     {{{1, 2, 3}, {1, 2, 3}}},
                                                     {{{0, 0, 0}, {endless, 0, 0}}},
                                                     {{{1e20, 0, 0}, {1e20, 1, 0}}}}) {
        TZEPBackdrop backdrop;
        backdrop.SetContent(content);
        EXPECT_EQ(backdrop.GridStep(), 0);
    }
}

} // namespace
} // namespace ZEP
