#include <zep/scene/BlockCounts.h>

#include <gtest/gtest.h>

#include <random>

namespace ZEP {
namespace {

TEST(BlockCounts, AgreeWithAPlainCount) {
    std::mt19937 random(7);
    TZEPBlockCounts counts;
    std::vector<int> plain;
    for (int round = 0; round < 300; ++round) {
        const std::size_t block = random() % (plain.size() + 3);
        if (block >= plain.size()) plain.resize(block + 1);
        const int change = plain[block] > 2 ? -2 : 3;
        plain[block] += change;
        counts.Add(block, change);
        int index = 0;
        for (std::size_t i = 0; i < plain.size(); ++i) {
            ASSERT_EQ(counts.Before(i), index);
            for (int place = 0; place < plain[i]; ++place, ++index) {
                int found = index;
                ASSERT_EQ(counts.Find(found), i);
                ASSERT_EQ(found, place);
            }
        }
    }
    counts.Clear();
    EXPECT_TRUE(counts.IsEmpty());
}

} // namespace
} // namespace ZEP
