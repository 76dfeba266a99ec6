#include "tests/tracing/Models.h"
#include "tests/tracing/TracingFixture.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <algorithm>

using namespace ZEP;
using namespace ZEP::Tracing;

namespace {

constexpr TLook Glass{.Glow = {0.1, 0.2, 0.1}, .Matte = {0.5, 0.5, 0.5}, .Mirror = 0.7};
constexpr TLook Wall{.Glow = {0.3, 0.2, 0}, .Matte = {0.3, 0.3, 0.3}};
constexpr double Upright = 90; // about x: what was up looks at the eye

const TCorners Square{{-0.5, -0.5, 0}, {0.5, -0.5, 0}, {0.5, 0.5, 0}, {-0.5, 0.5, 0}};

class TracedMirror : public TracingTest {
protected:
    void ExpectImages(const std::vector<TScene>& scenes) {
        ExpectEach("mirror.", scenes, [](TStage& s) { s.SetEye({{1.5, -8, 3}, {0, 0, 1}}); });
    }
};

TAdded<TZEPPolygon> AddGlass(TStage& stage, const TPlace& place, int parent = NoPiece) {
    const auto added = stage.AddPolygon(Square, place, Glass, parent);
    added.Object.SetConcave(false);
    return added;
}

void AddWall(TStage& stage) {
    stage.AddSheet({.Move = {0, 2, 1.5}, .Turn = {Upright, 0, 0}, .Scale = {8, 4, 1}}, Wall);
}

void AddGlassOnWall(TStage& stage) {
    AddGlass(stage, {.Move = {0, 1.97, 1.4}, .Turn = {Upright, 0, 0}, .Scale = {4, 2.6, 1}});
}

void AddThings(TStage& stage) {
    stage.AddBall({.Move = {-0.8, -0.5, 0.6}}, Green);
    stage.AddBox({.Move = {1, 0, 0.7}, .Turn = {20, 10, 40}}, Red);
}

} // namespace

// Whatever comes first in the tree, what is behind the glass is hidden by what it shows.
TEST_F(TracedMirror, ShowsTheSceneOnAWallInAnyOrder) {
    const std::map<char, void (*)(TStage&)> parts{
        {'g', AddGlassOnWall}, {'t', AddThings}, {'w', AddWall}};
    std::vector<TScene> scenes;
    std::string order = "gtw";
    do
        scenes.push_back({"wall." + order, [parts, order](TStage& s) {
                              s.AddLamp(Sun);
                              for (const char part : order) parts.at(part)(s);
                          }});
    while (std::ranges::next_permutation(order).found);
    ExpectImages(scenes);
}

TEST_F(TracedMirror, ShowsTheSceneWhereItStands) {
    ExpectImages({
        {"floor",
         [](TStage& s) {
             s.AddLamp({.Position = {-3, -3, 5}, .Color = {0.9, 0.9, 0.9}});
             s.AddSheet({.Scale = {6, 6, 1}}, Glass);
             s.AddBall({.Move = {-0.8, 0, 1}}, Green);
             s.AddBox({.Move = {1, 0, 0.9}, .Turn = {20, 10, 40}}, Red);
         }},
        {"things that reach through the floor",
         [](TStage& s) {
             s.AddLamp(Sun);
             s.AddSheet({.Scale = {6, 6, 1}}, Glass);
             s.AddBall({.Move = {-0.8, 0, 0.2}}, Green);
             s.AddBox({.Move = {1, 0, 0}, .Turn = {20, 10, 40}, .Scale = {0.6, 0.6, 3}}, Red);
         }},
        {"moved, turned and scaled by parents",
         [](TStage& s) {
             s.AddLamp(Sun);
             const int frame =
                 s.AddFrame({.Move = {0.3, 1, 1}, .Turn = {0, 0, -20}, .Scale = {2, 1, 1.4}});
             AddGlass(s, {.Move = {0.2, 0.5, 0}, .Turn = {70, 10, 0}, .Scale = {2, 2, 2}}, frame);
             AddThings(s);
         }},
        {"behind other things",
         [](TStage& s) {
             s.AddLamp(Sun);
             AddGlassOnWall(s);
             s.AddBall({.Move = {0.6, -2, 1.6}, .Scale = {0.8, 0.8, 0.8}}, Green);
             s.AddBox({.Move = {-1, 0.4, 0.7}, .Turn = {20, 10, 40}}, Red);
             AddWall(s);
         }},
        {"two of them",
         [](TStage& s) {
             s.AddLamp(Sun);
             for (const double side : {-1.0, 1.0})
                 AddGlass(
                     s,
                     {.Move = {1.7 * side, 1, 1.4}, .Turn = {Upright, 0, 0}, .Scale = {2.8, 3, 1}});
             AddThings(s);
         }},
        {"dented, clockwise",
         [](TStage& s) {
             s.AddLamp(Sun);
             TCorners corners = OutlineOfU;
             std::ranges::reverse(corners);
             s.AddPolygon(corners,
                          {.Move = {-2.2, 1.9, 0}, .Turn = {Upright, 0, 0}, .Scale = {1.5, 1, 1}},
                          {.Glow = {0.1, 0.2, 0.1}, .Mirror = 0.7});
             AddThings(s);
         }},
    });
}

TEST_F(TracedMirror, ShowsNothingFromBehindNorWithoutTheScenesReflections) {
    TStage stage;
    stage.SetEye({{1.5, 9, 3}, {0, 0, 1}});
    stage.AddLamp(Sun);
    AddGlassOnWall(stage);
    AddThings(stage);
    stage.Draw();
    const QImage behind = Context().ReadFrame();
    stage.Scene.SetReflections(false);
    stage.Draw();
    EXPECT_EQ(behind, Context().ReadFrame());
}

// What it shows has no shadows.
TEST_F(TracedMirror, StandsInASceneWithShadows) {
    ExpectShadowsOnGround({
        {"mirror.shadows on the ground",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddLamp(GreenLamp);
             s.AddBall({.Move = {0, 0, 1}}, Caster);
             AddGlass(s, {.Move = {0, 2.5, 1.6}, .Turn = {Upright, 0, 0}, .Scale = {5, 3, 1}});
         }},
        {"mirror.that casts a shadow",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             TLook look = Glass;
             look.Casts = true;
             s.AddPolygon(Square,
                          {.Move = {0.5, 1, 1.2}, .Turn = {Upright, 0, 0}, .Scale = {2, 2, 1}},
                          look)
                 .Object.SetConcave(false);
             s.AddBox({.Move = {-0.4, -0.6, 0.5}, .Turn = {0, 0, 40}}, Caster);
         }},
    });
}

// They darken its own colours, not what it shows.
TEST_F(TracedMirror, HasShadowsFallOnItself) {
    TStage stage;
    AddGround(stage);
    stage.AddLamp(RedLamp);
    stage.AddSheet({.Move = {0, 0, 0.2}, .Scale = {5, 5, 1}},
                   {.Matte = {1, 1, 1}, .Receives = true, .Mirror = 0.5});
    stage.AddBall({.Move = {0, 0, 1.4}}, Caster);
    ExpectShadowsAsTraced(stage, "mirror.shadow on itself");
    stage.AddLamp(GreenLamp);
    stage.SetMethod(TMethod::Subtracted);
    ExpectAsTraced(stage, "mirror.shadows on itself");
}
