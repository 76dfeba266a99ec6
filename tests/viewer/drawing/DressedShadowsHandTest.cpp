#include "tests/FolderTest.h"

#include "viewer/drawing/Ground.h"
#include "viewer/drawing/ViewLights.h"
#include "viewer/drawing/ViewLook.h"
#include "viewer/files/Document.h"
#include "viewer/window/StartScene.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <GL/gl.h>
#include <malloc.h>

#include <cmath>

namespace ZEP {
namespace {

using TShadows = TViewLook::TShadows;

template <class T>
T* Add(TZEPScene& scene, const TGLArrayd3& place, const TGLArrayd3& size) {
    T* object = ZEP::Add<T>(&scene);
    object->XForm()->Translate()->SetData(place);
    object->XForm()->Scale()->SetData(size);
    return object;
}

void AddLight(TZEPScene& scene, const TGLArrayd3& place, bool aimed) {
    auto* light = ZEP::Add<TZEPLight>(&scene);
    light->Position()->SetData(place);
    light->SetDirectional(aimed);
}

/// A floor, and a roof three above its middle.
void AddHouse(TZEPScene& scene) {
    Add<TZEPBox>(scene, {0, 0, -0.5}, {10, 10, 1});
    Add<TZEPBox>(scene, {0, 0, 3}, {2, 2, 0.2});
}

/// Files in a view from above.
class DressedShadows : public FolderTest {
protected:
    DressedShadows() {
        m_panel.resize(120, 90);
        m_panel.SetCamera(m_document.Camera());
        m_view.emplace(
            &m_panel, [](const auto&) {}, [this] { return m_document.Backdrop().MiddleColor(); });
    }

    QString Put(const char* name, TZEPScene& scene) {
        scene.SaveToFile(Path(name));
        return Path(name);
    }
    void Open(TZEPScene& scene) {
        m_document.Open({Put("a.zep", scene)}, false);
        m_document.LookFrom(TDirection::Top, 4.0 / 3);
    }
    void Dress(const TViewLook& look) { m_view->Dress(look); }
    [[nodiscard]] TZEPObject& At(int index) const {
        return *m_document.Files().front().Root->GetItem(index);
    }
    template <class T>
    [[nodiscard]] T* Find() const {
        for (int i = 0; i < m_document.Scene()->GetItemsCount(); ++i)
            if (auto* found = qobject_cast<T*>(m_document.Scene()->GetItem(i))) return found;
        return nullptr;
    }
    int GreyAt(const TGLArrayd3& place) {
        const QImage frame = m_panel.GrabFrame();
        const auto screen = m_panel.GetScreenCoords(place);
        if (!screen) return -1;
        return qRed(frame.pixel(static_cast<int>((*screen)[0]), static_cast<int>((*screen)[1])));
    }

    TDocument m_document;
    TZEPPanel m_panel;
    std::optional<TDressedView> m_view;
};

TEST_F(DressedShadows, ASunShinesWhereNoLightCasts) {
    const TGLArrayd3 inShadow{1, 2.2, 0};
    const TGLArrayd3 inLight{-3, -3, 0};
    TZEPScene house;
    AddHouse(house);
    Open(house);
    Dress({});
    EXPECT_NEAR(GreyAt(inShadow), GreyAt(inLight), 4);
    for (const TShadows shadows : {TShadows::Subtracted, TShadows::Accumulated}) {
        Dress({.Shadows = shadows});
        EXPECT_TRUE(Find<TSunLight>());
        EXPECT_LT(GreyAt(inShadow), GreyAt(inLight) - 60);
    }
    for (const TViewLook& look : {TViewLook{.Shadows = TShadows::Off}, TViewLook{},
                                  TViewLook{.Lights = false, .Shadows = TShadows::Subtracted}}) {
        Dress(look);
        EXPECT_FALSE(Find<TSunLight>());
        EXPECT_NEAR(GreyAt(inShadow), GreyAt(inLight), 4);
    }
}

TEST_F(DressedShadows, LightsOfAFileCastAndComeBack) {
    struct TRow {
        TGLArrayd3 Light;
        bool Aimed, Casts;
        TGLArrayd3 InShadow;
    };
    const TRow rows[] = {
        {{-6, 0, 9}, true, true, {2.4, 0, 0}}, // the roof's shadow reaches from 1.5 to 4.5
        {{-2, 0, 3}, false, true, {2, 0, 0}},  // from the direction: 1 to 3
        {{0, 0, 0}, false, false, {-3, 3, 0}}, // from nowhere
    };
    for (const TRow& row : rows) {
        SCOPED_TRACE(&row - rows);
        TZEPScene house;
        AddHouse(house);
        AddLight(house, row.Light, row.Aimed);
        Open(house);
        Dress({.Shadows = TShadows::Subtracted});
        auto& lamp = dynamic_cast<TZEPLight&>(At(2));
        EXPECT_EQ(lamp.CastsShadows(), row.Casts);
        EXPECT_EQ(lamp.ExactShadows(), row.Casts);
        EXPECT_EQ(Find<TSunLight>() == nullptr, row.Casts);
        EXPECT_EQ(row.Casts, GreyAt(row.InShadow) < GreyAt({-3, -3, 0}) - 50);
        Dress({});
        EXPECT_FALSE(lamp.CastsShadows() || lamp.ExactShadows());
        EXPECT_EQ(lamp.Position()->Data(), row.Light);
    }
}

TEST_F(DressedShadows, WhatIsSwitchedOnComesBackAndChoicesOfAFileStay) {
    TZEPScene house;
    AddHouse(house);
    TZEPScene own;
    AddHouse(own);
    Add<TZEPBox>(own, {0, 0, 0}, {1, 1, 1})->SetCastShadows(true);
    m_document.Open({Put("a.zep", house), Put("b.zep", own)}, false);
    const auto flags = [&] {
        QString text;
        for (const TOpenedFile& file : m_document.Files())
            for (int i = 0; i < file.Root->GetItemsCount(); ++i) {
                const TZEPObject& object = *file.Root->GetItem(i);
                text += QLatin1Char(object.CastsShadows() ? 'c' : '-');
                text += QLatin1Char(object.ReceivesShadows() ? 'r' : '-');
            }
        return text;
    };
    const QString made = flags();
    EXPECT_EQ(made, QStringLiteral("--------c-"));
    for (int times = 0; times < 2; ++times) {
        Dress({.Shadows = TShadows::Accumulated});
        EXPECT_EQ(flags(), QStringLiteral("crcr----c-"));
    }
    for (const TViewLook& look :
         {TViewLook{}, TViewLook{.Shadows = TShadows::Off},
          TViewLook{.Faces = TViewLook::TFaces::HiddenLine, .Shadows = TShadows::Subtracted}}) {
        Dress({.Shadows = TShadows::Subtracted});
        Dress(look);
        EXPECT_EQ(flags(), made);
    }
}

TEST_F(DressedShadows, DrawingsAreLeftAlone) {
    TZEPScene flat;
    Add<TZEPBox>(flat, {0, 0, 0}, {4, 4, 0});
    Open(flat);
    Dress({.Shadows = TShadows::Subtracted, .Ground = true});
    EXPECT_FALSE(At(0).CastsShadows() || At(0).ReceivesShadows());
    EXPECT_FALSE(Find<TSunLight>());
    EXPECT_FALSE(Find<TGround>());
}

TEST_F(DressedShadows, TheGroundMirrorsAndIsNoContent) {
    TZEPScene tower;
    Add<TZEPBox>(tower, {0, 0, 2}, {1, 1, 4});
    Open(tower);
    const std::optional<TZEPBounds> bounds = m_document.Bounds();
    Dress({.Ground = true});
    ASSERT_TRUE(Find<TGround>());
    m_document.LookFrom(TDirection::Iso, 4.0 / 3);
    const TGLArrayd3 eye = m_document.Camera()->GetPosition();
    m_document.Camera()->Position()->SetData(2 * eye[0], 2 * eye[1], 2 * eye[2]);
    const TGLArrayd3 mirrored{-0.2, -0.5, -0.6}; // seen through the ground
    const TGLArrayd3 beside{1.5, 0.5, 0};
    EXPECT_GT(std::abs(GreyAt(mirrored) - GreyAt(beside)), 7);
    Dress({.Reflections = false, .Ground = true});
    EXPECT_NEAR(GreyAt(mirrored), GreyAt(beside), 3);
    EXPECT_EQ(m_document.Bounds()->Min, bounds->Min);
    EXPECT_EQ(m_document.Bounds()->Max, bounds->Max);
    TZEPScene& scene = *m_document.Scene();
    ASSERT_TRUE(m_panel.MakeCurrent());
    scene.Select(m_document.Camera(), 120, 90, 60, 45, 120, 90, true, false, true);
    EXPECT_TRUE(At(0).Selected());
    EXPECT_FALSE(Find<TGround>()->Selected());
    EXPECT_EQ(scene.Pick(m_document.Camera(), 120, 90, 5, 20, 4, 4, 9), nullptr);
    Dress({});
    EXPECT_FALSE(Find<TGround>());
}

/// Without what was freed: how much of that the process keeps depends on what else runs.
double BytesInUse() {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

/// Display lists that there are, of the first ones.
int CountLists() {
    int count = 0;
    for (GLuint name = 1; name < 10'000; ++name) count += glIsList(name) ? 1 : 0;
    return count;
}

TEST_F(DressedShadows, NothingGrowsOverAThousandFrames) {
    TZEPScene house;
    AddHouse(house);
    // What is sent point by point in feedback mode Mesa 22.3 keeps: casters that move have lists.
    Add<TZEPSphere>(house, {2, 2, 1}, {1, 1, 2});
    auto* ring = Add<TZEPTorus>(house, {0, 0, 2}, {1, 1, 1});
    ring->SetRadius1(0.6);
    ring->SetRadius2(0.2);
    AddLight(house, {-6, 0, 9}, true);
    Open(house);
    for (const bool accumulated : {false, true}) {
        Dress({.Shadows = accumulated ? TShadows::Accumulated : TShadows::Subtracted,
               .Ground = !accumulated});
        const auto draw = [&](int from, int to) {
            for (int i = from; i < to; ++i) {
                At(3).XForm()->Rotate()->SetData(3 * i, 5 * i, 7 * i);
                At(2).XForm()->Translate()->SetData(2 * std::cos(i), 2 * std::sin(i), 1);
                ASSERT_FALSE(m_panel.GrabFrame().isNull());
            }
            ASSERT_TRUE(m_panel.MakeCurrent());
        };
        draw(0, 300);
        const int lists = CountLists();
        const double bytes = BytesInUse();
        draw(300, accumulated ? 600 : 1300);
        EXPECT_LE(CountLists(), lists + 2);
        EXPECT_GT(lists, 2);
        EXPECT_LT(BytesInUse() - bytes, 3e6);
    }
}

TEST(StartSceneShadows, FallOnTheStage) {
    TStartScene start;
    TZEPPanel panel;
    panel.resize(120, 90);
    panel.SetCamera(start.Camera());
    start.MoveTo(14);
    const QImage shadowed = panel.GrabFrame();
    start.Scene()->SetFShadows(false);
    const QImage bare = panel.GrabFrame();
    int darker = 0;
    for (int y = 0; y < bare.height(); ++y)
        for (int x = 0; x < bare.width(); ++x)
            darker += qGray(shadowed.pixel(x, y)) < qGray(bare.pixel(x, y)) - 8 ? 1 : 0;
    EXPECT_GT(darker, 100);
    start.Scene()->SetReflections(false);
    EXPECT_NE(panel.GrabFrame(), bare);
}

} // namespace
} // namespace ZEP
