#include "tests/objects/InvalidationCounter.h"
#include <zep/objects/Polyline.h>

#include <gmock/gmock.h>

using namespace ZEP;

TEST(Polyline, BoxHoldsItsVertexesOnceThereAreTwo) {
    TZEPPolyline polyline;
    const auto expectBox = [&](const TGLArrayd3& min, const TGLArrayd3& max) {
        EXPECT_EQ(polyline.GetMin(), min);
        EXPECT_EQ(polyline.GetMax(), max);
    };
    expectBox(zero3d, zero3d);
    polyline.Vertexes()->Add()->SetPoint({3, 4, 5});
    expectBox(zero3d, zero3d);
    polyline.Vertexes()->Add()->SetPoint({4, 1, 7});
    expectBox({3, 1, 5}, {4, 4, 7});
    polyline.Vertexes()->Add()->SetPoint({-1, 2, 6});
    expectBox({-1, 1, 5}, {4, 4, 7});
    polyline.Vertexes()->Clear();
    expectBox(zero3d, zero3d);
}

TEST(Polyline, EveryNewValueInvalidatesAndDropsTheList) {
    using P = TZEPPolyline;
    struct Case {
        const char* Name;
        void (*Set)(P&);
    };
    for (const bool manual : {false, true}) {
        for (const Case& c :
             {Case{"Segments", [](P& p) { p.SetSegments(7); }},
              Case{"ColorVertexes", [](P& p) { p.SetColorVertexes(true); }},
              Case{"Closed", [](P& p) { p.SetClosed(true); }},
              Case{"OrigColor", [](P& p) { p.SetOrigColor(clRed); }},
              Case{"InError", [](P& p) { p.SetInError(true); }},
              Case{"MaxZValue", [](P& p) { p.SetMaxZValue(5); }},
              Case{"MinZValue", [](P& p) { p.SetMinZValue(-5); }},
              Case{"UseDisplayList", [](P& p) { p.SetUseDisplayList(true); }},
              Case{"Selected", [](P& p) { p.SetSelected(true); }},
              Case{"Smooth", [](P& p) { p.SetSmooth(false); }},
              Case{"Style", [](P& p) { p.SetStyle(psDot); }},
              Case{"a vertex", [](P& p) { p.Vertexes()->Item(0)->SetX(9); }},
              Case{"a vertex's colour", [](P& p) { p.Vertexes()->Item(0)->SetColor(clRed); }}}) {
            InvalidationCounter counter;
            P polyline;
            polyline.Vertexes()->Add();
            counter.Scene.SetManualUpdate(manual);
            counter.Watch(polyline);
            polyline.SetDisplayList(1000);
            c.Set(polyline);
            EXPECT_EQ(counter.Count, manual ? 0 : 1) << c.Name;
            EXPECT_EQ(polyline.DisplayList(), 0) << c.Name;
            polyline.SetDisplayList(1000);
            c.Set(polyline);
            EXPECT_EQ(counter.Count, manual ? 0 : 1) << c.Name << " again";
            EXPECT_EQ(polyline.DisplayList(), 1000) << c.Name << " again";
        }
    }
}

TEST(Polyline, ItsPlaceAndItsChildrenLeaveTheListAlone) {
    TZEPPolyline polyline;
    TZEPPolyline child;
    child.SetParentComponent(&polyline);
    polyline.SetDisplayList(1000);
    child.SetClosed(true);
    EXPECT_EQ(polyline.DisplayList(), 1000);
}
