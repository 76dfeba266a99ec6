#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/scene/Frame.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <functional>
#include <random>

namespace ZEP {
namespace {

/// Draws what OpenGL's first matrices show: x, y and z from -1 to 1, on 64 by 64 pixels; with the
/// 16 pixels around it, to 1.5 in x and y.
class ViewCall : public OffscreenTest {
protected:
    ViewCall() : OffscreenTest(64, 64) {}

    TZEPLine* AddLine(double x) {
        auto* line = Add<TZEPLine>(&Group);
        line->SetSmooth(false);
        line->P1()->SetData(x, 0, 0);
        line->P2()->SetData(x + 1, 1, 0);
        return line;
    }
    TZEPPolyline* AddPolyline(double x) {
        auto* polyline = Add<TZEPPolyline>(&Group);
        polyline->SetSmooth(false);
        polyline->Vertexes()->Add()->SetPoint({x, 0, 0});
        polyline->Vertexes()->Add()->SetPoint({x + 1, 1, 0});
        return polyline;
    }
    void SetUp() override {
        OffscreenTest::SetUp();
        Top.SetParentComponent(&Scene);
        Group.SetParentComponent(&Top);
    }
    /// Shapes that are drawn in a frame.
    std::size_t Drawn() {
        const GlCalls calls;
        for (const TZEPDrawState state : {dsAllLights, dsAllObjects, dsTransparent})
            Scene.Draw(Scene, state, dkFull);
        return calls.Count("glBegin");
    }

    TZEPScene Scene;
    TZEPObject Top{&Scene};
    TZEPObject Group{&Scene};
};

// What streams do not hold; the others are in `tests/data/cases/calls/view.txt`.
TEST_F(ViewCall, EveryEditIsSeenInTheNextFrame) {
    TZEPLine& line = *AddLine(20);
    TZEPPolyline& polyline = *AddPolyline(20);
    TZEPXForm home({}, nullptr);
    home.Scale()->SetData(1, 1, 1);
    home.Translate()->SetX(-20);
    TZEPXForm away({}, nullptr);
    away.Scale()->SetData(1, 1, 1);
    constexpr TGLMatrixd4 Left{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {-20, 0, 0, 1}}};
    struct TEdit {
        const char* Name;
        std::function<void()> Do, Undo;
    };
    const TEdit edits[] = {
        {"a base matrix", [&] { line.XForm()->mId(Left); }, [&] { line.XForm()->mId(idd); }},
        {"an extra matrix", [&] { line.XForm()->mTranslate(-20, 0, 0); },
         [&] { line.XForm()->mTranslate(20, 0, 0); }},
        {"an assigned transform", [&] { line.XForm()->Assign(&home); },
         [&] { line.XForm()->Assign(&away); }},
        {"a vertex", [&] { polyline.Vertexes()->Item(0)->SetX(0); },
         [&] { polyline.Vertexes()->Item(0)->SetX(20); }},
        {"one more vertex", [&] { polyline.Vertexes()->Add(); },
         [&] { polyline.Vertexes()->Delete(2); }},
        {"a child in view of a parent that is not", [&] { Add<TZEPLine>(&line); },
         [&] { line.Clear(); }},
    };
    for (const bool manual : {false, true}) {
        Scene.SetManualUpdate(manual);
        ASSERT_EQ(Drawn(), 0U);
        for (const TEdit& edit : edits) {
            edit.Do();
            EXPECT_EQ(Drawn(), 1U) << edit.Name;
            edit.Undo();
            EXPECT_EQ(Drawn(), 0U) << edit.Name << " undone";
        }
    }
}

// The kept boxes of blocks against the boxes of the objects, through many small random edits.
TEST_F(ViewCall, RandomEditsOfManyLines) {
    std::mt19937 random(5);
    const auto place = [&] { return static_cast<int>(random() % 61) * 0.1 - 3.05; };
    std::vector<TZEPLine*> lines;
    const auto add = [&] {
        lines.push_back(AddLine(0));
        lines.back()->P1()->SetData(place(), place(), 0);
        lines.back()->P2()->SetData(place(), place(), 0);
    };
    for (int i = 0; i < 400; ++i) add();
    const auto inView = [](const TZEPLine* line) {
        TGLArrayd3 min, max;
        line->GetAbsoluteSize(min, max);
        return line->Visible() && min[0] <= 1.5 && min[1] <= 1.5 && max[0] >= -1.5 &&
               max[1] >= -1.5;
    };
    for (int round = 0; round < 200; ++round) {
        const std::size_t chosen = random() % lines.size();
        TZEPLine* line = lines[chosen];
        switch (random() % 6) {
        case 0:
            line->P1()->SetData(place(), place(), 0);
            break;
        case 1:
            line->XForm()->Translate()->SetY(place() + 0.03);
            break;
        case 2:
            line->SetVisible(!line->Visible());
            break;
        case 3:
            line->SetItemIndex(static_cast<int>(random() % lines.size()));
            break;
        case 4:
            line->SetParentComponentExt(&Group, random() % 2 == 0);
            break;
        default:
            delete line;
            lines.erase(lines.begin() + static_cast<long>(chosen));
            add();
        }
        const auto expected = std::count_if(lines.begin(), lines.end(), inView);
        ASSERT_EQ(Drawn(), static_cast<std::size_t>(expected)) << "round " << round;
    }
}

TEST_F(ViewCall, HiddenChildrenMakeNoBox) {
    std::vector<TZEPLine*> lines;
    for (int i = 0; i < 64; ++i) lines.push_back(AddLine(0));
    EXPECT_EQ(Drawn(), 64U);
    for (TZEPLine* line : lines) line->SetVisible(false);
    EXPECT_EQ(Drawn(), 0U);
    {
        TZEPFrame frame;
        const TZEPViewFrame walk(frame, TZEPViewVolume{idd});
        EXPECT_EQ(TZEPViewFrame::Shows(frame, TZEPBlockBox()), TZEPSeen::Nothing);
    }
    lines[3]->SetVisible(true);
    EXPECT_EQ(Drawn(), 1U);
}

TEST_F(ViewCall, OnlyWhatIsNotSeenIsPassedOver) {
    AddLine(20);
    const auto drawn = [this](TZEPDrawState state, TZEPDrawKind kind) {
        const GlCalls calls;
        Scene.Draw(Scene, state, kind);
        return calls.Count("glBegin");
    };
    EXPECT_EQ(drawn(dsAllObjects, dkFull), 0U);
    EXPECT_EQ(drawn(dsAllObjects, dkDraft), 0U);
    EXPECT_EQ(drawn(dsAllObjects, dkSelect), 1U) << "the pick volume is not the view";
    Scene.SetFShadows(true);
    EXPECT_EQ(drawn(dsNonShadowObjects, dkFull), 0U);
    glNewList(glGenLists(1), GL_COMPILE);
    EXPECT_EQ(drawn(dsAllObjects, dkFull), 1U) << "the list may be called in another view";
    glEndList();
    const GlCalls alone;
    Group.Draw(Scene, dsAllObjects, dkFull);
    EXPECT_EQ(alone.Count("glBegin"), 1U) << "outside of a walk";
}

/// A host's own line that also lights.
class Lamp : public TZEPLine {
public:
    using TZEPLine::TZEPLine;
    void DrawLight(bool) override { GlCalls::Note("light"); }

protected:
    bool StaysInSize() const override { return false; }
};

TEST_F(ViewCall, WhatDoesNotStayInItsBoxIsAlwaysDrawn) {
    AddLine(0);
    auto* lamp = Add<Lamp>(&Group);
    lamp->SetSmooth(false);
    lamp->P1()->SetData(50, 0, 0);
    lamp->P2()->SetData(51, 0, 0);
    const GlCalls calls;
    EXPECT_EQ(Drawn(), 2U);
    for (const TZEPDrawState state : {dsAllLights, dsAllObjects}) Scene.Draw(Scene, state, dkFull);
    EXPECT_EQ(calls.Count("light"), 1U);
}

// --- what neighbours share -------------------------------------------------------------------

TEST_F(ViewCall, AListOfTheHostsOwnSharesNothing) {
    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    glLineWidth(7);
    glEndList();
    std::vector<TZEPPolyline*> polylines;
    for (int i = 0; i < 3; ++i) {
        polylines.push_back(AddPolyline(-0.5));
        polylines.back()->SetUseDisplayList(true);
    }
    const auto pushes = [this] {
        const GlCalls calls;
        Scene.Draw(Scene, dsAllObjects, dkFull);
        return calls.Count("glPushAttrib");
    };
    EXPECT_EQ(pushes(), 1U) << "while the lists are compiled";
    EXPECT_EQ(pushes(), 1U) << "when they are called";
    polylines[1]->SetDisplayList(static_cast<int>(list));
    EXPECT_EQ(pushes(), 3U);
}

} // namespace
} // namespace ZEP
