#include "tests/view/FakePanel.h"

#include <random>

namespace ZEP {
namespace {

constexpr TZEPMouseMode AllModes[] = {mmNone, mmSelect, mmPan, mmTruck,      mmOrbit,
                                      mmRoll, mmDolly,  mmFOV, mmPerspective};

TEST(PanelControl, EachModeMakesItsMovementAndShowsItsCursor) {
    struct Case {
        TZEPMouseMode Mode;
        const char* Call; // for 20 pixels to the right and 10 up
        int Cursor;
    };
    const Case cases[] = {
        {mmNone, nullptr, -1},
        {mmPan, "Pan -10 -5", -1},
        {mmOrbit, "Orbit -5 2.5", 101},
        {mmRoll, "Roll -20", 100},
        {mmDolly, "Dolly -0.05", -1},
        {mmFOV, "FOV -1", -1},
        {mmPerspective, "Perspective -0.01", 103},
        {static_cast<TZEPMouseMode>(9), nullptr, -1},
        {static_cast<TZEPMouseMode>(127), nullptr, -1},
        {static_cast<TZEPMouseMode>(128 + mmRoll), "Roll -20", 100},
    };
    for (const bool left : {true, false}) {
        for (const Case& c : cases) {
            FakePanel panel;
            left ? panel.Control.SetMouseLeft(c.Mode) : panel.Control.SetMouseRight(c.Mode);
            const TShiftState held = left ? ssLeft : ssRight;
            panel.Press(100, 50, left ? mbLeft : mbRight, held);
            EXPECT_EQ(panel.Taken(), QStringList{"Store"});
            panel.Move(150, 99, held);
            panel.Notes.clear();
            panel.Move(120, 40, held);
            EXPECT_EQ(panel.Taken(), c.Call ? (QStringList{"Restore", c.Call}) : QStringList())
                << c.Mode;
            EXPECT_EQ(panel.Cursor, c.Cursor) << c.Mode;
            panel.Release(120, 40, left ? mbLeft : mbRight);
            EXPECT_EQ(panel.Taken(), c.Call ? QStringList{"repaint"} : QStringList()) << c.Mode;
            EXPECT_EQ(panel.Cursor, -1);
        }
    }
}

TEST(PanelControl, TheLeftButtonComesFirst) {
    FakePanel panel;
    panel.Control.SetMouseLeft(mmPan);
    panel.Control.SetMouseRight(mmRoll);
    panel.Press(0, 0);
    panel.Move(2, 0, ssLeft | ssRight);
    EXPECT_EQ(panel.Notes.last(), "Pan -1 0");
    panel.Move(2, 0, ssRight);
    EXPECT_EQ(panel.Notes.last(), "Roll -2");
    panel.Notes.clear();
    panel.Move(3, 0, ssMiddle);
    EXPECT_EQ(panel.Notes, QStringList());
}

TEST(PanelControl, ADragBackToItsStartGivesTheVeryViewBack) {
    std::mt19937 random(7);
    std::uniform_int_distribution place(-50, 450);
    for (const TZEPMouseMode mode : AllModes) {
        for (const bool orthographic : {false, true}) {
            for (const double field : {43.6, 110.0}) {
                FakePanel panel;
                panel.View->SetOrthographic(orthographic);
                panel.View->SetFOVY(field);
                panel.View->Orbit(33.3, 11.1);
                panel.View->Pan(1.7, -2.9);
                panel.View->Roll(77.7);
                panel.View->FOV(0.3);
                panel.Control.SetMouseLeft(mode);
                const ViewState before(*panel.View);
                panel.Press(123, 77);
                for (int i = 0; i < 20; ++i) panel.Move(place(random), place(random));
                panel.Move(123, 77);
                EXPECT_EQ(ViewState(*panel.View), before) << mode << ' ' << field;
                panel.Release(123, 77);
                EXPECT_EQ(ViewState(*panel.View), before) << mode << ' ' << field;
            }
        }
    }
}

TEST(PanelControl, OnlyThePlaceOfTheMouseCountsNotItsWay) {
    for (const TZEPMouseMode mode : AllModes) {
        FakePanel direct;
        FakePanel detour;
        for (FakePanel* panel : {&direct, &detour}) {
            panel->Control.SetMouseLeft(mode);
            panel->Press(10, 10);
        }
        for (int i = 0; i < 100; ++i) detour.Move(10 + i * 3, 200 - i);
        direct.Move(60, 25);
        detour.Move(60, 25);
        EXPECT_EQ(ViewState(*direct.View), ViewState(*detour.View)) << mode;
    }
}

TEST(PanelControl, TheRubberBandStartsBeyondFourPixels) {
    struct Case {
        QPoint To;
        bool Drawn;
    };
    for (const auto& [to, drawn] : {Case{{104, 54}, false},
                                    {{96, 46}, false},
                                    {{105, 50}, true},
                                    {{100, 45}, true},
                                    {{0, 0}, true}}) {
        FakePanel panel;
        panel.Control.SetMouseLeft(mmSelect);
        panel.Press(100, 50);
        panel.Move(to.x(), to.y());
        EXPECT_EQ(!panel.Band.isNull(), drawn) << to.x();
        panel.Release(to.x(), to.y());
        EXPECT_TRUE(panel.Band.isNull());
    }
    FakePanel panel;
    panel.Control.SetMouseLeft(mmSelect);
    panel.Press(100, 50);
    panel.Move(90, 70);
    EXPECT_EQ(panel.Band, QRect(QPoint(90, 50), QPoint(100, 70)));
    panel.Move(101, 50);
    EXPECT_EQ(panel.Band, QRect(QPoint(100, 50), QPoint(101, 50))) << "it stays once it is there";
    EXPECT_EQ(panel.Taken(), QStringList{"Store"}) << "no movement";
}

TEST(PanelControl, SelectsAPointOrARectangleOnRelease) {
    struct Case {
        std::optional<QPoint> Corner;
        QPoint Release;
        const char* Pick;
    };
    const Case cases[] = {
        {{}, {102, 51}, "Pick 400 200 102 149 4 4"},
        {QPoint(150, 80), {151, 81}, "Pick 400 200 125 135 50 30"},
        {QPoint(51, 20), {51, 20}, "Pick 400 200 75 165 49 30"},
        {QPoint(101, 56), {0, 0}, "Pick 400 200 100 147 1 6"},
        {QPoint(0, 0), {0, 0}, "Pick 400 200 50 175 100 50"},
    };
    for (const Case& c : cases) {
        FakePanel panel;
        panel.Control.SetMouseLeft(mmSelect);
        panel.Press(100, 50);
        if (c.Corner) panel.Move(c.Corner->x(), c.Corner->y());
        panel.Taken();
        panel.Release(c.Release.x(), c.Release.y());
        EXPECT_EQ(panel.Taken(), (QStringList{"befor", c.Pick, "after", "repaint"}));
    }
}

TEST(PanelControl, EveryReleaseSelectsWhereThePanelWantsIt) {
    FakePanel panel;
    panel.SelectsInMouseUp = true;
    panel.Control.SetMouseRight(mmPan);
    for (const TMouseButton button : {mbLeft, mbMiddle, mbRight}) {
        panel.Press(10, 20, button, {});
        panel.Taken();
        panel.Release(10, 20, button);
        EXPECT_EQ(panel.Taken(),
                  (QStringList{"befor", "Pick 400 200 10 180 4 4", "after", "messages"}));
        EXPECT_FALSE(panel.Control.MouseDowned());
    }
}

TEST(PanelControl, TheWheelMovesInFourModes) {
    struct Case {
        TZEPMouseMode Mode;
        const char* Call;
    };
    const Case cases[] = {
        {mmNone, nullptr},       {mmSelect, nullptr}, {mmPan, nullptr},
        {mmTruck, nullptr},      {mmOrbit, nullptr},  {mmRoll, "Roll -6"},
        {mmDolly, "Dolly 0.12"}, {mmFOV, "FOV 1.2"},  {mmPerspective, "Perspective 0.012"}};
    for (const Case& c : cases) {
        FakePanel panel;
        panel.Control.SetMouseWheel(c.Mode);
        panel.Control.MouseWheelMove(panel, {}, 120, {5, 5});
        EXPECT_EQ(panel.Taken(), c.Call ? (QStringList{c.Call, "repaint"}) : QStringList())
            << c.Mode;
    }
}

TEST(PanelControl, WithoutACameraAPressIsIgnored) {
    FakePanel panel;
    panel.Control.SetMouseLeft(mmOrbit);
    panel.Control.SetMouseWheel(mmDolly);
    TZEPCamera* camera = panel.View;
    panel.View = nullptr;
    panel.Press(1, 1);
    EXPECT_FALSE(panel.Control.MouseDowned());
    EXPECT_FALSE(panel.Captured);
    panel.Control.MouseWheelMove(panel, {}, 120, {5, 5});
    panel.View = camera;
    const ViewState before(*camera);
    panel.Move(100, 100); // nothing was stored for it
    panel.Release(100, 100);
    EXPECT_EQ(panel.Taken(), QStringList());
    EXPECT_EQ(ViewState(*camera), before);
}

TEST(PanelControl, AnotherCameraIsNotMovedByADragThatDidNotStartWithIt) {
    FakePanel panel;
    panel.Control.SetMouseLeft(mmOrbit);
    panel.Press(1, 1);
    TZEPCamera other;
    panel.View = &other;
    const ViewState before(other);
    panel.Move(50, 50);
    EXPECT_EQ(ViewState(other), before);
    panel.Release(50, 50);
    EXPECT_FALSE(panel.Captured);
    panel.View = nullptr;
}

/// How a drag may end.
struct Ending {
    const char* Name;
    void (*End)(FakePanel& panel);
};
const Ending Endings[] = {
    {"release", [](FakePanel& panel) { panel.Release(9, 9); }},
    {"release of another button", [](FakePanel& panel) { panel.Release(9, 9, mbMiddle); }},
    {"cancel", [](FakePanel& panel) { panel.Control.Cancel(panel); }},
    {"lost release", [](FakePanel& panel) { panel.Move(9, 9, {}); }},
    {"camera gone",
     [](FakePanel& panel) {
         delete panel.View;
         panel.Control.Cancel(panel);
     }},
    {"camera gone before the release",
     [](FakePanel& panel) {
         delete panel.View;
         panel.Release(9, 9);
     }},
};

TEST(PanelControl, HoweverADragEndsNothingOfItStays) {
    for (const Ending& ending : Endings) {
        for (const TZEPMouseMode mode : AllModes) {
            FakePanel panel;
            panel.Scene.SetAnimation(true);
            panel.Control.SetMouseLeft(mode);
            panel.Press(100, 100);
            EXPECT_TRUE(panel.Captured);
            EXPECT_TRUE(panel.Control.GetMouseDowned());
            EXPECT_FALSE(panel.Scene.Animation());
            panel.Move(50, 60);
            ending.End(panel);
            EXPECT_FALSE(panel.Captured) << ending.Name;
            EXPECT_FALSE(panel.Control.MouseDowned()) << ending.Name;
            EXPECT_TRUE(panel.Scene.Animation()) << ending.Name;
            EXPECT_TRUE(panel.Band.isNull()) << ending.Name;
            EXPECT_EQ(panel.Cursor, -1) << ending.Name;
            panel.Taken();
            panel.Move(1, 1);
            panel.Release(1, 1);
            EXPECT_EQ(panel.Taken(), QStringList()) << ending.Name << ": it is over";
        }
    }
}

TEST(PanelControl, AnAnimationThatWasStoppedStaysSo) {
    FakePanel panel;
    panel.Scene.SetAnimation(true);
    panel.Press(1, 1);
    panel.Release(1, 1);
    EXPECT_TRUE(panel.Scene.Animation());
    panel.Scene.SetAnimation(false);
    panel.Press(1, 1);
    panel.Release(1, 1);
    EXPECT_FALSE(panel.Scene.Animation());
}

TEST(PanelControl, TwoButtonsPauseTheAnimationOnce) {
    FakePanel panel;
    panel.Scene.SetAnimation(true);
    panel.Press(1, 1);
    panel.Press(1, 1, mbRight, ssLeft | ssRight);
    panel.Press(1, 1, mbMiddle, ssLeft | ssRight | ssMiddle);
    EXPECT_FALSE(panel.Scene.Animation());
    panel.Release(1, 1, mbMiddle, ssLeft | ssRight);
    EXPECT_FALSE(panel.Scene.Animation());
    EXPECT_TRUE(panel.Control.MouseDowned());
    panel.Release(1, 1, mbLeft, ssRight);
    panel.Release(1, 1, mbRight);
    EXPECT_TRUE(panel.Scene.Animation());
    EXPECT_FALSE(panel.Captured);
}

TEST(PanelControl, TheSceneMayGoDuringADrag) {
    TZEPPanelControl control;
    control.SetMouseLeft(mmOrbit);
    auto panel = std::make_unique<FakePanel>();
    auto scene = std::make_unique<TZEPScene>();
    auto* camera = new TZEPCamera(scene.get());
    camera->SetParentComponent(scene.get());
    delete panel->View;
    panel->View = camera;
    scene->SetAnimation(true);
    control.MouseDown(*panel, mbLeft, ssLeft, 1, 1);
    scene.reset();
    control.MouseMove(*panel, ssLeft, 20, 20);
    control.MouseUp(*panel, mbLeft, {}, 20, 20);
    EXPECT_FALSE(control.MouseDowned());
    EXPECT_FALSE(panel->Captured);
}

TEST(PanelControl, AHandlerMayFreeThePanel) {
    FakePanel panel;
    auto control = std::make_unique<TZEPPanelControl>(); // as a part of its panel
    control->SetMouseLeft(mmSelect);
    panel.OnBeforSelect = [&] { control.reset(); };
    control->MouseDown(panel, mbLeft, ssLeft, 5, 5);
    panel.Taken();
    control->MouseUp(panel, mbLeft, {}, 5, 5);
    EXPECT_EQ(panel.Taken(), QStringList{"befor"});
}

} // namespace
} // namespace ZEP
