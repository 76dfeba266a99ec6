#include <zep/appearance/effects/EdgeTurns.h>

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <utility>

namespace ZEP {
namespace {

using TPoint = TZEPEdgeTurns::TPoint;
using TTurns = std::map<std::pair<TPoint, TPoint>, int>;

TTurns TurnsOf(const TZEPEdgeTurns& edges) {
    TTurns turns;
    edges.ForEach([&](const TZEPEdgeTurns::TEdge& edge) {
        EXPECT_TRUE(turns.try_emplace({edge.Low, edge.High}, edge.Turns).second) << "kept twice";
    });
    return turns;
}

/// Edges that come and go at random, few and many, stand where a plain map has them.
TEST(EdgeTurns, WhatRunsBothWaysIsGone) {
    std::mt19937 random(11);
    TZEPEdgeTurns edges;
    for (const int points : {2, 12, 60, 300}) {
        edges.Clear();
        TTurns expected;
        std::uniform_int_distribution<int> place(0, points - 1);
        for (int i = 0; i < 20'000; ++i) {
            const TPoint from{static_cast<float>(place(random)), 0.5F, 1};
            const TPoint to{static_cast<float>(place(random)), 0.5F, 1};
            edges.Add(from, to);
            if (from == to) continue;
            const auto edge = expected.try_emplace(std::minmax(from, to)).first;
            edge->second += from < to ? 1 : -1;
            if (edge->second == 0) expected.erase(edge);
        }
        EXPECT_EQ(TurnsOf(edges), expected) << points;
    }
}

TEST(EdgeTurns, ZeroIsZeroWithEitherSign) {
    TZEPEdgeTurns edges;
    edges.Add({0.0F, -0.0F, 1}, {1, 1, 1});
    edges.Add({1, 1, 1}, {-0.0F, 0.0F, 1});
    EXPECT_TRUE(TurnsOf(edges).empty());
}

} // namespace
} // namespace ZEP
