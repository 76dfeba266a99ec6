#include "tests/batch/BatchFromAbove.h"

#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Polyline.h>

namespace ZEP {
namespace {

class Batch : public TBatchFromAbove {};

TEST_F(Batch, FollowsEveryChangeOfItsChildren) {
    TZEPLine* line = AddLine(0);
    EXPECT_EQ(At(1, 0), qRgb(255, 0, 0));
    line->SetColor(clBlue);
    line->SetVisible(false);
    EXPECT_EQ(At(1, 0), qRgb(0, 0, 0));
    line->SetVisible(true);
    EXPECT_EQ(At(1, 0), qRgb(0, 0, 255));
    line->P1()->SetData(-4, 2, 0);
    line->P2()->SetData(4, 2, 0);
    EXPECT_EQ(At(1, 0), qRgb(0, 0, 0));
    EXPECT_EQ(At(1, 2), qRgb(0, 0, 255));
    line->SetSelected(true);
    EXPECT_EQ(At(1, 2), qRgb(255, 255, 0));
    line->SetSelected(false);
    EXPECT_EQ(At(1, 2), qRgb(0, 0, 255));
    line->SetSelected(true);
    line->P1()->SetData(-4, 1, 0);
    line->P2()->SetData(4, 1, 0);
    EXPECT_EQ(At(1, 1), qRgb(255, 255, 0));
    EXPECT_EQ(At(1, 2), qRgb(0, 0, 0));
    delete line;
    EXPECT_EQ(At(1, 2), qRgb(0, 0, 0));
    AddLine(-3, clLime);
    m_batch.XForm()->Translate()->SetData(0, 1, 0);
    EXPECT_EQ(At(1, -2), qRgb(0, 255, 0));
    m_batch.SetVisible(false);
    EXPECT_EQ(At(1, -2), qRgb(0, 0, 0));
}

TEST_F(Batch, DrawsEachKindInItsPlace) {
    auto* arc = Add<TZEPArc>(clRed); // the left half of a circle of radius 3
    arc->SetStartAngle(90);
    arc->SetEndAngle(270);
    arc->XForm()->Scale()->SetData(6, 6, 6);
    auto* circle = Add<TZEPCircle>(clLime);
    circle->XForm()->Scale()->SetData(2, 2, 2);
    auto* polyline = Add<TZEPPolyline>(clBlue);
    polyline->SetOrigColor(clBlue);
    polyline->SetSmooth(false);
    polyline->Vertexes()->Add()->SetPoint({2, -4, 0});
    polyline->Vertexes()->Add()->SetPoint({4, -4, 0});
    polyline->Vertexes()->Add()->SetPoint({4, 4, 0});
    EXPECT_EQ(At(-3, 0), qRgb(255, 0, 0));
    EXPECT_EQ(At(3, 0), qRgb(0, 0, 0));
    EXPECT_EQ(At(1, 0), qRgb(0, 255, 0));
    EXPECT_EQ(At(3, -4), qRgb(0, 0, 255));
    EXPECT_EQ(At(4, 1), qRgb(0, 0, 255));
}

TEST_F(Batch, APartOfALargePathStillShowsItsForm) {
    // Two bands, above and below; the upper one is read first.
    for (int i = 0; i < 30'000; ++i) AddLine(i < 15'000 ? 3 + i * 1e-4 : -3 - (i - 15'000) * 1e-4);
    m_batch.Prepare();
    EXPECT_TRUE(m_batch.IsLarge());
    for (const double share : {1.0, 0.1, 0.01}) {
        Show({.Share = share});
        EXPECT_EQ(At(0, 3), qRgb(255, 0, 0)) << share;
        bool lower = false;
        for (double y = -3; y > -4.5; y -= 0.1) lower = lower || At(0, y) == qRgb(255, 0, 0);
        EXPECT_TRUE(lower) << share;
        EXPECT_EQ(At(0, 0), qRgb(0, 0, 0)) << share;
    }
}

} // namespace
} // namespace ZEP
