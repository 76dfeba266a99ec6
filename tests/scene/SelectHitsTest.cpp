#include <zep/scene/SelectHits.h>

#include <zep/scene/BlockCounts.h>
#include <zep/scene/Object.h>

#include <gtest/gtest.h>

#include <random>

namespace ZEP {
namespace {

/// A hit with its distance from the eye.
struct TOffer {
    int Priority;
    GLuint Depth;
    double Distance;
};

/// The number of the offer that is best.
int BestOf(bool manual, const std::vector<TOffer>& offers) {
    std::vector<std::unique_ptr<TZEPObject>> objects;
    TZEPBestHit best(manual);
    for (const TOffer& offer : offers) {
        objects.push_back(std::make_unique<TZEPObject>());
        objects.back()->SetSelectPriority(offer.Priority);
        best.Offer({objects.back().get(), offer.Depth}, offer.Distance);
    }
    for (std::size_t i = 0; i < objects.size(); ++i)
        if (objects[i].get() == best.Object()) return static_cast<int>(i);
    return -1;
}

TEST(BestHit, IsTheNearestOfThoseThatGoFirst) {
    EXPECT_EQ(BestOf(false, {{0, 30, 1}, {0, 10, 9}, {5, 20, 0}}), 1) << "by depth alone";
    EXPECT_EQ(BestOf(true, {{0, 30, 5}, {0, 10, 3}, {0, 20, 4}}), 1) << "by distance";
    EXPECT_EQ(BestOf(true, {{0, 0, 5}, {2, 0, 4}, {1, 0, 3}}), 1) << "not behind one that is first";
    EXPECT_EQ(BestOf(true, {}), -1);
}

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
