#include "tests/tracing/Models.h"
#include "tests/tracing/TracingFixture.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;
using namespace ZEP::Tracing;

namespace {

constexpr TLook Yellow{.Glow = {0.4, 0.4, 0}};
constexpr TLook Cyan{.Glow = {0, 0.3, 0.3}};
constexpr TPlace Turned{.Turn = {10, -20, 30}, .Scale = {1, 1.2, 0.9}};

class TracedCarving : public TracingTest {
protected:
    void ExpectSolids(const std::vector<TScene>& scenes) {
        ExpectEach("carved.", scenes, [](TStage& s) {
            s.SetEye({{1.5, -5, 3}, {0, 0, 0}});
            s.AddLamp(Sun);
        });
    }
};

/// A ball in the upper part of a box; as a difference, the box without it.
void AddBallInBox(TStage& stage, TSetOperation operation, const TPlace& place) {
    const int carved = stage.AddCarving(operation, place);
    stage.AddBall({.Move = {-0.3, -0.5, 0.4}, .Scale = {1.6, 1.6, 1.6}}, Red, carved);
    stage.AddBox({.Scale = {2, 2, 2}}, Green, carved);
}

/// The other way round.
void AddBoxInBall(TStage& stage, TSetOperation operation, const TPlace& place) {
    const int carved = stage.AddCarving(operation, place);
    stage.AddBox({.Move = {0.4, -0.2, 0}, .Turn = {0, 0, 30}, .Scale = {1, 1, 3}}, Red, carved);
    stage.AddBall({.Scale = {2.4, 2.4, 2.4}}, Green, carved);
}

/// A thick plate towards the eye with a hole through it.
void AddPlateWithHole(TStage& stage) {
    const int carved = stage.AddCarving(TSetOperation::Difference, {.Turn = {0, 0, 15}});
    stage.AddBall({.Scale = {1.8, 1.8, 1.8}}, Red, carved);
    stage.AddBox({.Scale = {3, 0.6, 2.6}}, Green, carved);
}

void AddNeighbours(TStage& stage) {
    stage.AddBall({.Move = {-0.3, 2.5, -0.8}, .Scale = {1.5, 1.5, 1.5}}, Yellow); // behind
    stage.AddBox({.Move = {1.1, -1.4, 0.6}, .Turn = {20, 0, 30}, .Scale = {0.5, 0.5, 0.5}}, Cyan);
}

} // namespace

TEST_F(TracedCarving, ShowsWhatIsLeftOfTwoSolids) {
    std::vector<TScene> scenes;
    for (const auto& [operation, word] : {std::pair{TSetOperation::Union, "union"},
                                          {TSetOperation::Common, "common"},
                                          {TSetOperation::Difference, "difference"}})
        for (const TPlace& place : {TPlace{}, Turned}) {
            const std::string name = std::string(word) + (place.Turn.X == 0 ? "" : ", turned");
            scenes.push_back({name + ", ball in box", [kind = operation, place](TStage& s) {
                                  AddBallInBox(s, kind, place);
                              }});
            scenes.push_back({name + ", box in ball", [kind = operation, place](TStage& s) {
                                  AddBoxInBall(s, kind, place);
                              }});
        }
    ExpectSolids(scenes);
}

TEST_F(TracedCarving, StandsAmongOthersInAnyOrder) {
    ExpectSolids({
        {"before its neighbours",
         [](TStage& s) {
             AddPlateWithHole(s);
             AddNeighbours(s);
         }},
        {"after its neighbours",
         [](TStage& s) {
             AddNeighbours(s);
             AddPlateWithHole(s);
         }},
        {"among its neighbours",
         [](TStage& s) {
             s.AddBall({.Move = {-0.3, 2.5, -0.8}, .Scale = {1.5, 1.5, 1.5}}, Yellow);
             AddPlateWithHole(s);
             s.AddBox({.Move = {0.2, 0.1, 0}, .Scale = {0.3, 2, 0.3}}, Cyan); // through the hole
         }},
        {"one behind the other",
         [](TStage& s) {
             AddPlateWithHole(s);
             AddBallInBox(s, TSetOperation::Difference,
                          {.Move = {-0.4, 2.6, -1}, .Scale = {1.2, 1.2, 1.2}});
         }},
        {"one before the other",
         [](TStage& s) {
             AddBallInBox(s, TSetOperation::Common,
                          {.Move = {-0.4, 2.6, -1}, .Scale = {1.2, 1.2, 1.2}});
             AddPlateWithHole(s);
         }},
        {"under a parent",
         [](TStage& s) {
             const int frame = s.AddFrame(Turned);
             const int carved =
                 s.AddCarving(TSetOperation::Difference, {.Turn = {0, 20, 0}}, frame);
             s.AddBall({.Move = {-0.6, -0.7, 0.6}, .Scale = {1.8, 1.8, 1.8}}, Red, carved);
             s.AddBox({.Turn = {20, 0, 0}, .Scale = {2, 1.6, 2}}, Green, carved);
         }},
    });
}

TEST_F(TracedCarving, IsSeenInMirrors) {
    const auto addMirror = [](TStage& s) {
        s.AddSheet({.Move = {0, 0, -1.4}, .Scale = {9, 9, 1}},
                   {.Glow = {0.1, 0.1, 0.1}, .Mirror = 0.6});
    };
    ExpectSolids({
        {"above a mirror",
         [=](TStage& s) {
             addMirror(s);
             AddPlateWithHole(s);
             AddNeighbours(s);
         }},
        {"above a mirror that is drawn last",
         [=](TStage& s) {
             AddBallInBox(s, TSetOperation::Common, Turned);
             AddNeighbours(s);
             addMirror(s);
         }},
    });
}

// It neither casts shadows nor has any fall on itself.
TEST_F(TracedCarving, StandsInASceneWithShadows) {
    TStage stage;
    AddGround(stage);
    stage.AddLamp(RedLamp);
    stage.AddBall({.Move = {-1.4, -0.6, 2}, .Scale = {0.8, 0.8, 0.8}}, Caster);
    stage.AddBall({.Move = {1.5, -1, 1.5}, .Scale = {0.8, 0.8, 0.8}}, Caster);
    const int carved = stage.AddCarving(TSetOperation::Difference, {.Move = {0, 0, 0.7}});
    stage.AddBall({.Move = {0, -0.5, 0.6}, .Scale = {1.2, 1.2, 1.2}}, {.Glow = {0, 0.3, 0}},
                  carved);
    stage.AddBox({.Scale = {1.6, 1.6, 1.2}}, {.Glow = {0.3, 0.3, 0}}, carved);
    stage.SetMethod(TMethod::Subtracted);
    ExpectAsTraced(stage, "carved.shadows");
}
