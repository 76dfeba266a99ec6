#include <zep/appearance/effects/Jitter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <utility>

namespace ZEP {
namespace {

TEST(Jitter, SamplesAreSpreadEvenlyOverAPixel) {
    struct Case {
        std::span<const TZEPJitter> Table;
        std::size_t Count;
    };
    for (const auto& [table, count] : {Case{j2, 2}, Case{j3, 3}, Case{j4, 4}, Case{j8, 8},
                                       Case{j15, 15}, Case{j24, 24}, Case{j66, 66}}) {
        ASSERT_EQ(table.size(), count);
        std::set<std::pair<float, float>> places;
        double x = 0;
        double y = 0;
        for (const TZEPJitter& sample : table) {
            EXPECT_LE(std::abs(sample.X), 0.5F) << count;
            EXPECT_LE(std::abs(sample.Y), 0.5F) << count;
            places.emplace(sample.X, sample.Y);
            x += static_cast<double>(sample.X) / static_cast<double>(count);
            y += static_cast<double>(sample.Y) / static_cast<double>(count);
        }
        EXPECT_EQ(places.size(), count) << "a sample twice";
        EXPECT_NEAR(x, 0, 0.04) << count;
        EXPECT_NEAR(y, 0, 0.04) << count;
    }
    EXPECT_EQ(j2[0].X, 0.246490F);
    EXPECT_EQ(j2[1].Y, -0.249999F);
}

} // namespace
} // namespace ZEP
