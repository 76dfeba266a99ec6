#include "tests/tracing/Models.h"
#include "tests/tracing/TracingFixture.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;
using namespace ZEP::Tracing;

namespace {

using TracedCaster = TracingTest;

constexpr TLamp Other{.Position = {2, -3, 6}, .Color = {0, 0.9, 0}};
constexpr TPlace AboveGround{.Move = {0, 0, 1.3}, .Turn = {20, -15, 30}, .Scale = {2, 2, 2}};

/// The surface z = 0.5 - |x| over a square, drawn in an even number of cells.
TAdded<TZEPHeightField> AddRoof(TStage& stage, const TPlace& place, const TLook& look) {
    const TCorners corners{{-0.5, -0.5, 0}, {0, -0.5, 0.5}, {0.5, -0.5, 0},
                           {-0.5, 0.5, 0},  {0, 0.5, 0.5},  {0.5, 0.5, 0}};
    const TShape roof = Triangles(corners, {{0, 1, 4}, {0, 4, 3}, {1, 2, 5}, {1, 5, 4}});
    const auto added = stage.Add<TZEPHeightField>(roof, place, look);
    added.Object.SetOnHeight([](double x, double) { return 0.5 - std::abs(x); });
    return added;
}

/// Around the origin.
TCorners Centred(TCorners corners, double scale) {
    for (TVector& corner : corners) corner = (corner - TVector{1.5, 1.5, 0}) * scale;
    return corners;
}

} // namespace

TEST_F(TracedCaster, PolygonsCastShadows) {
    struct TKind {
        const char* Name;
        bool IsConvex, Concave, UsesList;
    };
    const TCorners square{{-0.5, -0.5, 0}, {0.5, -0.5, 0}, {0.5, 0.5, 0}, {-0.5, 0.5, 0}};
    std::vector<TScene> scenes;
    for (const TKind& kind : {TKind{"dented", false, true, true},
                              {"dented without a list", false, true, false},
                              {"tessellated square", true, true, true},
                              {"square", true, false, true},
                              {"square without a list", true, false, false}})
        scenes.push_back({std::string("polygon.") + kind.Name, [=](TStage& s) {
                              s.AddLamp(RedLamp);
                              s.AddLamp(Other);
                              const TCorners corners =
                                  kind.IsConvex ? square : Centred(OutlineOfU, 1.0 / 3);
                              const auto added = s.AddPolygon(corners, AboveGround, Caster);
                              added.Object.SetConcave(kind.Concave);
                              added.Object.SetUseDisplayList(kind.UsesList);
                          }});
    // Its underside is towards the lamp.
    scenes.push_back({"polygon.from below", [](TStage& s) {
                          s.AddLamp(RedLamp);
                          TPlace place = AboveGround;
                          place.Turn = {215, 0, 30};
                          s.AddPolygon(Centred(OutlineOfU, 1.0 / 3), place, Caster);
                      }});
    ExpectShadowsOnGround(scenes);
}

// A height field is seen from above only, by the lamp as well.
TEST_F(TracedCaster, HeightFieldsCastShadowsFromAbove) {
    ExpectShadowsOnGround({
        {"field.flat",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddSheet(AboveGround, Caster);
         }},
        {"field.roof",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             AddRoof(s, AboveGround, Caster);
         }},
        {"field.steep roof",
         [](TStage& s) {
             s.AddLamp(RedLamp);
             s.AddLamp(Other);
             AddRoof(s, {.Move = {0.4, 0, 1}, .Turn = {0, 0, 50}, .Scale = {1.5, 2, 4}}, Caster);
         }},
    });
}

TEST_F(TracedCaster, MeshesCastShadowsAsTheyAreTurned) {
    std::vector<TScene> scenes;
    for (const TVector& turn :
         {TVector{0, 0, 0}, {90, 0, 0}, {90, 0, 70}, {120, 30, 0}, {-40, 60, 10}})
        scenes.push_back(
            {"mesh." + std::to_string(scenes.size()), [turn](TStage& s) {
                 s.AddLamp(RedLamp);
                 s.AddLamp(Other);
                 AddU(s, {.Move = {0, 0, 1.6}, .Turn = turn, .Scale = {1.6, 1.6, 2.5}}, Caster);
             }});
    ExpectShadowsOnGround(scenes);
}

TEST_F(TracedCaster, LinesCastNone) {
    TStage stage;
    AddGround(stage);
    stage.AddLamp(RedLamp);
    stage.AddBall({.Move = {0, 0, 1.2}}, Caster);
    auto* line = new TZEPLine(&stage.Scene);
    line->P1()->SetData(-9, -20, 4);
    line->P2()->SetData(9, 20, 4);
    auto* chain = new TZEPPolyline(&stage.Scene);
    for (const TGLArrayd3& point : {TGLArrayd3{-2, -2, 4}, {-2, 2, 4.5}, {2, 0, 4}})
        chain->Vertexes()->Add()->SetPoint(point);
    for (TZEPObject* object : std::initializer_list<TZEPObject*>{line, chain}) {
        object->SetParentComponent(&stage.Scene);
        object->SetShadows(0, true);
        object->SetShadows(1, true);
    }
    stage.SetEye({{2, -9, 2.5}, {0, 0, -1}}); // they are above of what is seen
    ExpectShadowsAsTraced(stage, "lines");
}
