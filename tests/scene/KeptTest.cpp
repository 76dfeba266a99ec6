#include <zep/scene/Kept.h>

#include <gtest/gtest.h>

#include <memory>

using namespace ZEP;

namespace {

struct TNoted : TZEPKept {
    void GiveBack() override { ++Given; }
    int Given = 0;
};

void Pass(TZEPKeptList& list, unsigned frames) {
    for (unsigned i = 0; i < frames; ++i) list.NextFrame();
}

} // namespace

TEST(Kept, GoesWhereItWasLongNotUsed) {
    TZEPKeptList list;
    TNoted used, idle, mixed;
    for (TNoted* kept : {&idle, &used, &mixed}) list.Use(*kept);
    Pass(list, TZEPKeptList::LongTime / 2);
    list.Use(mixed);
    for (unsigned i = 0; i < TZEPKeptList::LongTime / 2; ++i) {
        list.Use(used);
        list.NextFrame();
    }
    EXPECT_EQ(idle.Given + mixed.Given + used.Given, 0);
    list.NextFrame();
    EXPECT_EQ(idle.Given, 1);
    EXPECT_EQ(mixed.Given + used.Given, 0);
    Pass(list, 2 * TZEPKeptList::LongTime);
    EXPECT_EQ(idle.Given, 1); // once
    EXPECT_EQ(mixed.Given, 1);
    list.Use(idle);
    Pass(list, TZEPKeptList::LongTime + 1);
    EXPECT_EQ(idle.Given, 2);
}

TEST(Kept, MayLeaveAndMoveAndOutliveItsList) {
    auto first = std::make_unique<TZEPKeptList>();
    TZEPKeptList second;
    TNoted last;
    {
        TNoted a, b, c;
        for (TNoted* kept : {&a, &b, &last, &c}) first->Use(*kept);
        second.Use(b);
    }
    second.Use(last);
    first->Use(last);
    first.reset();
    Pass(second, 2 * TZEPKeptList::LongTime);
    EXPECT_EQ(last.Given, 0);
}
