#include "tests/appearance/effects/ShadowFixture.h"

#include <functional>

namespace ZEP {
namespace {

using TCalls = std::vector<std::string>;

/// Notes that it is drawn.
class TProbe : public TZEPShadowedObject {
public:
    using TZEPShadowedObject::TZEPShadowedObject;
    void DrawMain(bool) override {
        GlCalls::Note("main " + Ident().toStdString());
        if (const auto act = OnMain) act(); // which may replace itself
    }
    void DrawSpecific(GLenum, bool) override {}
    std::function<void()> OnMain;
};

class ProxyCall : public ShadowScene {
protected:
    void SetUp() override {
        ShadowScene::SetUp();
        if (IsSkipped()) return;
        Elsewhere.SetFShadows(true);
        Target = AddProbe(&Elsewhere, "target");
        Target->XForm()->Translate()->SetX(5);
        AddProbe(Target, "inner");
        Proxy = Add<TZEPProxy>();
        Proxy->XForm()->Translate()->SetX(1);
        Proxy->SetProxy(Target);
        AddProbe(Proxy, "own");
    }
    TProbe* AddProbe(TZEPObject* parent, const char* ident) {
        auto* probe = Add<TProbe>(parent);
        probe->SetIdent(QString::fromLatin1(ident));
        return probe;
    }

    TZEPScene Elsewhere;
    TProbe* Target = nullptr;
    TZEPProxy* Proxy = nullptr;
};

TEST_F(ProxyCall, WithinItsOwnTargetItDrawsAsOftenAsItIsTold) {
    Proxy->SetParentComponent(AddProbe(Target, "branch")); // below the target now
    for (const int recurse : {-1, 0, 1, 5}) {
        Proxy->SetRecurse(recurse);
        const GlCalls calls;
        Target->Draw(Scene, dsAllObjects, dkFull);
        EXPECT_EQ(calls.Count("main own"), static_cast<std::size_t>(recurse + 1)) << recurse;
    }
    Proxy->SetRecurse(1'000'000);
    const GlCalls calls;
    Target->Draw(Scene, dsAllObjects, dkFull);
    EXPECT_GT(calls.Count("main own"), 5U);
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ProxyCall, ProxiesThatLeadToEachOtherComeToAnEnd) {
    auto* branch = AddProbe(Target, "branch");
    for (int i = 0; i < 8; ++i) {
        auto* proxy = Add<TZEPProxy>(Proxy);
        proxy->SetProxy(Target);
        proxy->SetParentComponent(branch);
    }
    const GlCalls calls;
    Target->Draw(Scene, dsAllObjects, dkFull);
    EXPECT_GT(calls.Count("main inner"), 8U);
    EXPECT_LT(calls.Count("main inner"), 50'000U);
}

TEST_F(ProxyCall, WhatIsDrawnMayFreeTheTargetOrTheProxy) {
    for (const char* inner : {"inner", "own"})
        for (const bool target : {true, false}) {
            auto* holder = Add<TZEPNode>();
            auto* goal = AddProbe(holder, "goal");
            TProbe* below = AddProbe(goal, "below");
            auto* proxy = Add<TZEPProxy>(holder);
            TProbe* own = AddProbe(proxy, "child");
            proxy->SetProxy(goal);
            TProbe* actor = QLatin1String(inner) == QLatin1String("own") ? own : below;
            // Not the object that draws itself at this moment.
            actor->OnMain = [&, actor] {
                actor->SetParentComponent(&Scene);
                actor->OnMain = {};
                if (target)
                    delete goal;
                else
                    delete proxy;
            };
            proxy->Draw(Scene, dsAllObjects, dkFull);
            EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
            delete holder;
        }
}

// Whoever owns what is shown: between neighbours the same state stays set.
TEST_F(ProxyCall, WhatStandsInNoSceneSharesTheRunOfTheSceneThatShowsIt) {
    const auto callsWithTargetIn = [&](TZEPObject* parent) {
        TZEPNode target;
        for (int i = 0; i < 3; ++i) Add<TZEPLine>(&target)->P2()->SetData(1, i, 0);
        target.SetParentComponent(parent);
        auto* proxy = Add<TZEPProxy>();
        proxy->SetProxy(&target);
        const GlCalls calls;
        proxy->Draw(Scene, dsAllObjects, dkFull);
        TCalls drawn = calls.List();
        delete proxy;
        target.SetParentComponent(nullptr);
        return drawn;
    };
    ExpectCalls(callsWithTargetIn(nullptr), callsWithTargetIn(&Scene));
    ExpectCalls(callsWithTargetIn(&Elsewhere), callsWithTargetIn(&Scene));
}

} // namespace
} // namespace ZEP
