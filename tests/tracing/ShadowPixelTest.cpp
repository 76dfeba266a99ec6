#include "tests/tracing/Models.h"
#include "tests/tracing/TracingFixture.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;
using namespace ZEP::Tracing;

namespace {

using TracedShadow = TracingTest;

constexpr TLamp BlueLamp{.Position = {0.5, 4, 5}, .Color = {0, 0, 0.9}};

TLamp AtInfinity(TLamp lamp, double distance) {
    lamp.Position = lamp.Position * distance;
    lamp.IsAimed = false;
    return lamp;
}

TLamp Exact(TLamp lamp) {
    lamp.IsExact = true;
    return lamp;
}

TLamp NotCasting(TLamp lamp) {
    lamp.Casts = false;
    return lamp;
}

constexpr TLook Both{.Matte = {1, 1, 1}, .Casts = true, .Receives = true};

/// What the lamps above cast well apart.
void AddBallAndBox(TStage& stage) {
    stage.AddBall({.Move = {-1, 0.3, 1.4}, .Scale = {1.2, 1.2, 1.2}}, Caster);
    stage.AddBox({.Move = {1, 0, 1}, .Turn = {20, 30, 40}}, Caster);
}

} // namespace

TEST_F(TracedShadow, FallsFromSolids) {
    ExpectShadowsOnGround({
        {"box",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddBox({.Move = {0, 0, 1.2}, .Turn = {20, 30, 40}}, Caster);
         }},
        {"ball",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddBall({.Move = {0, 0, 1.2}, .Turn = {0, 50, 0}, .Scale = {2, 1, 1}}, Caster);
         }},
        {"one behind the other",
         [](TStage& s) {
             s.AddLamp({.Position = {-4, 1, 5}, .Color = {0.9, 0, 0}});
             s.AddBall({.Move = {-1.6, 0.4, 2.6}}, Caster);
             s.AddBox({.Move = {0, 0, 0.8}, .Turn = {0, 0, 30}}, Caster);
         }},
        {"one through the other",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddBall({.Move = {0.3, 0, 1.3}, .Scale = {1.4, 1.4, 1.4}}, Caster);
             s.AddBox({.Move = {0, 0, 1.2}, .Turn = {30, 0, 0}, .Scale = {3, 0.4, 0.4}}, Caster);
         }},
        {"standing on the ground",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddBox({.Move = {0, 0, 0.5}, .Turn = {0, 0, 20}}, Caster);
             s.AddBall({.Move = {2, 0, 0.2}}, Caster);
         }},
    });
}

TEST_F(TracedShadow, FallsFromUnderTurnedAndScaledParents) {
    ExpectShadowsOnGround({
        {"children",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             const int frame =
                 s.AddFrame({.Move = {0, 0, 1.4}, .Turn = {15, 25, 50}, .Scale = {1.5, 0.7, 1}});
             const int box =
                 s.AddBox({.Move = {-0.6, 0, 0}, .Turn = {0, 45, 0}}, Caster, frame).Piece;
             s.AddBall({.Move = {0.9, -0.4, 0.6}, .Scale = {0.8, 0.8, 0.8}}, Caster, box);
         }},
        {"a child that does not cast",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             const int box = s.AddBox({.Move = {-0.6, 0, 1.4}, .Turn = {0, 45, 0}}, Caster).Piece;
             s.AddBall({.Move = {1.2, 0.6, 0}}, {.Glow = {0, 0.4, 0.4}}, box);
         }},
        {"proxy",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             const int box = s.AddBox({.Move = {-1.5, 0.5, 1}, .Turn = {10, 20, 30}}, Caster).Piece;
             s.AddBall({.Move = {0, 0, 0.9}, .Scale = {0.8, 0.8, 0.8}}, Caster, box);
             s.AddProxy(box, {.Move = {2.6, 0, -0.3}, .Turn = {0, 0, 40}, .Scale = {0.8, 1.1, 1}},
                        false);
         }},
        {"proxy under a parent",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             const int frame = s.AddFrame({.Move = {2, 0, 0}, .Turn = {0, 0, 60}});
             const int box =
                 s.AddBox({.Move = {-0.5, 1, 1}, .Turn = {10, 20, 30}}, Caster, frame).Piece;
             const int other =
                 s.AddFrame({.Move = {-1.5, 0, 0.2}, .Turn = {0, 0, -30}, .Scale = {1, 1, 1.2}});
             s.AddProxy(box, {.Move = {0.3, -1, 0}}, false, other);
         }},
    });
}

TEST_F(TracedShadow, FallsUnderEachLamp) {
    const auto with = [](std::vector<TLamp> lamps) {
        return [lamps](TStage& s) {
            AddBallAndBox(s);
            for (const TLamp& lamp : lamps) s.AddLamp(lamp);
        };
    };
    ExpectShadowsOnGround({
        {"two lamps", with({RedLamp, GreenLamp})},
        {"three lamps", with({RedLamp, GreenLamp, BlueLamp})},
        {"one of two casting", with({NotCasting(RedLamp), GreenLamp})},
        {"two of three casting", with({RedLamp, NotCasting(GreenLamp), BlueLamp})},
        {"a lamp at infinity", with({AtInfinity(RedLamp, 1e3)})},
        {"far away", with({AtInfinity(RedLamp, 1e6)})},
        {"aimed and at infinity", with({RedLamp, AtInfinity(GreenLamp, 1e3)})},
        {"straight above", with({{.Position = {1, 0, 6}, .Color = {0.9, 0, 0}}})},
        {"straight above at infinity",
         with({{.Position = {0, 0, 9e3}, .Color = {0.9, 0, 0}, .IsAimed = false}})},
        {"riding on a parent",
         [](TStage& s) {
             AddBallAndBox(s);
             const int frame = s.AddFrame({.Move = {-1, 0, 2}, .Turn = {0, -30, 0}});
             s.AddLamp({.Position = {0, -2, 3}, .Color = {0.9, 0, 0}}, frame);
             s.AddLamp({.Position = {1e3, -1e3, 3e3}, .Color = {0, 0.9, 0}, .IsAimed = false},
                       frame);
         }},
    });
}

TEST_F(TracedShadow, FallsOnAllThatReceives) {
    ExpectShadowsOnGround({
        {"on a ball",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddBox({.Move = {-1.2, -1, 2.8}, .Turn = {0, 30, 0}, .Scale = {0.8, 0.8, 0.8}},
                      Caster);
             s.AddBall({.Move = {0, 0, 1}, .Scale = {2, 2, 2}}, Ground);
         }},
        {"on a box",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddLamp(GreenLamp);
             s.AddBall({.Move = {0, -0.4, 2.5}, .Scale = {0.7, 0.7, 0.7}}, Caster);
             s.AddBox({.Move = {0, 0, 0.6}, .Turn = {0, 0, 20}, .Scale = {2, 1.6, 1.2}}, Ground);
         }},
        {"on each other",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddLamp(GreenLamp);
             s.AddBall({.Move = {-0.7, -0.5, 1.8}}, Both);
             s.AddBox({.Move = {0.4, 0.3, 0.8}, .Turn = {0, 20, 20}, .Scale = {2, 1.2, 0.8}}, Both);
         }},
        {"not on what does not receive",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddLamp(GreenLamp);
             s.AddBall({.Move = {-1, -0.8, 2.2}}, Caster);
             s.AddBall({.Move = {0, 0, 0.9}}, {.Matte = {1, 1, 1}});
         }},
        {"close to the lamp",
         [](TStage& s) {
             s.AddLamp({.Position = {0, 0, 4}, .Color = {0.9, 0, 0}});
             s.AddBox({.Move = {0, 0, 2.4}, .Scale = {4, 0.4, 0.4}}, Caster);
         }},
        {"on a proxy that receives",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             const int box = s.AddBox({.Move = {2.5, 0, 0.5}}, Ground).Piece;
             s.AddBall({.Move = {-1.2, -0.4, 2.4}, .Scale = {0.7, 0.7, 0.7}}, Caster);
             s.AddProxy(box, {.Move = {-2.5, 0.4, 0}, .Turn = {0, 0, 20}}, true);
         }},
    });
}

// Of a mesh that dents, one part may stand before another as the lamp sees it: the shadow of each
// begins where that part is.
TEST_F(TracedShadow, OfADentedMeshFallsFromEachOfItsParts) {
    ExpectShadowsOnGround({
        {"concave mesh",
         [](TStage& s) {
             s.AddLamp(Exact(RedLamp));
             AddU(s, {.Move = {-1, 0, 0.5}, .Turn = {50, 10, 20}, .Scale = {1.8, 1.8, 1.2}},
                  Caster);
         }},
        {"of a mesh on itself",
         [](TStage& s) {
             s.AddLamp(Exact(AtInfinity(RedLamp, 1e3)));
             s.AddLamp(Exact(AtInfinity(GreenLamp, 1e3)));
             AddU(s, {.Move = {-1, 0, 0.1}, .Turn = {90, 0, 40}, .Scale = {2, 2, 3}}, Both);
             AddU(s, {.Move = {1, -0.5, 0.1}, .Turn = {0, 0, 20}, .Scale = {2, 2, 2}}, Both);
         }},
    });
}

// Volumes are kept where nothing has changed.
TEST_F(TracedShadow, FollowsWhatMovesAndChanges) {
    TStage stage;
    AddGround(stage);
    const int lampFrame = stage.AddFrame({});
    stage.AddLamp(RedLamp, lampFrame);
    const int frame = stage.AddFrame({.Move = {-1.5, 0, 1}});
    const int box = stage.AddBox({.Turn = {10, 20, 30}}, Caster, frame).Piece;
    const TCorners corners{{-0.5, -0.5, 0}, {0.5, -0.5, 0}, {0, 0.5, 0}};
    const auto polygon = stage.AddPolygon(corners, {.Move = {0, -2, 1}}, Caster);
    stage.AddProxy(frame, {.Move = {3, 0, 0}}, false);
    const std::pair<const char*, std::function<void()>> steps[]{
        {"at first", [] {}},
        {"again", [] {}},
        {"moved parent",
         [&] {
             stage.Move(frame, {.Move = {-1, 0.5, 1.3}, .Turn = {0, 0, 30}});
         }},
        {"turned",
         [&] {
             stage.Move(box, {.Turn = {50, 20, 30}});
         }},
        {"moved lamp",
         [&] {
             stage.Move(lampFrame, {.Turn = {0, 0, 70}});
         }},
        {"moved corner",
         [&] {
             polygon.Object.Vertexes()->Item(2)->SetPoint({0.8, 0.9, 0});
             stage.Reshape(polygon.Piece, Flat({corners[0], corners[1], {0.8, 0.9, 0}}));
         }},
        {"moved back", [&] { stage.Move(lampFrame, {}); }},
    };
    for (const auto& [name, change] : steps) {
        change();
        ExpectShadowsAsTraced(stage, name);
    }
}

// The sides of shadows are counted from the eye: from within one, light and shadow are exchanged,
// as far as what is seen lies outside of it.
TEST_F(TracedShadow, IsExchangedWithLightForAnEyeWithin) {
    TStage stage;
    stage.AddSheet({.Scale = {9, 9, 1}}, Ground);
    stage.AddBox({.Move = {0, 0, 6}, .Scale = {2, 2, 0.2}}, Caster);
    stage.AddLamp({.Position = {0, 0, 12}, .Color = {0.9, 0, 0}});
    stage.SetEye({{0, -0.5, 3}, {0, 0, 0}, 90});
    stage.SetMethod(TMethod::Subtracted);
    stage.Draw();
    const QImage drawn = Context().ReadFrame();
    int exchanged = 0;
    int dark = 0;
    const std::vector<TSample> traced = stage.Trace();
    for (std::size_t i = 0; i < traced.size(); ++i) {
        const int x = static_cast<int>(i) % TStage::Size;
        const bool isDark = traced[i].Missing != 0;
        dark += isDark;
        exchanged += isDark == (qRed(drawn.pixel(x, static_cast<int>(i) / TStage::Size)) > 20);
    }
    const int all = static_cast<int>(traced.size());
    EXPECT_GT(dark, all / 20);
    EXPECT_LT(dark, all - all / 20);
    EXPECT_GT(exchanged, all - all / 50);
}
