#include "viewer/window/ViewOptions.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/gl/Names.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QScopeGuard>
#include <QSettings>
#include <QTemporaryDir>

namespace ZEP {
namespace {

using TFaces = TViewLook::TFaces;
using TFog = TViewLook::TFog;
using TShadows = TViewLook::TShadows;

/// A panel before a scene, with settings of its own.
class ViewOptions : public testing::Test {
protected:
    ViewOptions() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
        QSettings().clear();
        m_camera = Add<TZEPCamera>();
        m_camera->Position()->SetData(0, -10, 0);
        m_panel.SetCamera(m_camera);
        m_panel.resize(60, 40);
        m_file = Add<TZEPBatch>();
    }

    template <class T>
    T* Add() {
        auto* object = new T(&m_scene);
        object->SetParentComponent(m_file ? m_file : &m_scene);
        return object;
    }

    std::unique_ptr<TDressedView> View() {
        return std::make_unique<TDressedView>(
            &m_panel, [this](const auto& color) { m_background = color; },
            [this] { return m_background.value_or(clNavy); });
    }

    QAction* Entry(const char* text) {
        for (QAction* action : m_menu.findChildren<QAction*>())
            if (action->text() == QLatin1String(text)) return action;
        return nullptr;
    }

    /// The light that `View` adds comes first.
    TZEPLight* Headlight() { return qobject_cast<TZEPLight*>(m_scene.GetItem(0)); }

    QTemporaryDir m_folder;
    TZEPScene m_scene;
    TZEPCamera* m_camera;
    TZEPObject* m_file = nullptr; ///< what is added from then on stands below it
    std::optional<TColor> m_background;
    TZEPPanel m_panel;
    QWidget m_window;
    QMenu m_menu;
};

TEST_F(ViewOptions, AreRemembered) {
    const TViewLook looks[] = {
        {},
        {.Lights = false, .Headlight = true},
        {.Fog = TFog::Exp2, .Flat = true},
        {.Faces = TFaces::Edged, .Background = TColor{0x123456}},
        {.Shadows = TShadows::Accumulated, .Reflections = false, .Ground = true},
    };
    for (const TViewLook& look : looks) {
        look.Save();
        EXPECT_EQ(TViewLook::Load(), look);
    }
}

TEST_F(ViewOptions, WhatTheSettingsHoldWronglyIsPassedOver) {
    for (const char* key : {"view/fog", "view/shadows"})
        for (const char* value : {"-1", "4", "99999999999", "thick"}) {
            QSettings().setValue(QString::fromLatin1(key), QString::fromLatin1(value));
            EXPECT_EQ(TViewLook::Load(), TViewLook()) << key << ' ' << value;
        }
    QSettings().setValue(QStringLiteral("view/background"), QStringLiteral("no colour"));
    EXPECT_EQ(TViewLook::Load(), TViewLook());
}

TEST_F(ViewOptions, TheHeadlightShinesWhereItIsAskedForOrNothingElseDoes) {
    struct TRow {
        bool Solid, Lamp, Lights, Headlight, Shines;
        TColor Ambient;
    };
    const TColor lit{0x202020};
    const TColor headlit{0x303030};
    const TRow rows[] = {
        {false, false, true, false, false, clWhite}, // lines keep their colours
        {false, false, true, true, false, clWhite},  //
        {true, false, true, false, true, headlit},   // to show the shape
        {true, true, true, false, false, lit},       //
        {true, true, true, true, true, lit},         //
        {true, true, false, true, false, clWhite},   // all lights are off
        {true, false, false, false, false, clWhite},
    };
    for (const TRow& row : rows) {
        SCOPED_TRACE(&row - rows);
        const std::unique_ptr<TZEPObject> solid(row.Solid ? Add<TZEPBox>() : nullptr);
        const std::unique_ptr<TZEPObject> lamp(row.Lamp ? Add<TZEPLight>() : nullptr);
        const auto view = View();
        view->Dress({.Lights = row.Lights, .Headlight = row.Headlight});
        const std::unique_ptr<TZEPLight> headlight(Headlight());
        EXPECT_EQ(headlight->Visible(), row.Shines);
        EXPECT_EQ(m_scene.SceneAmbientColor(), row.Ambient);
    }
}

TEST_F(ViewOptions, SpotsThatWereNeverAimedLightNothing) {
    Add<TZEPBox>();
    auto* spot = Add<TZEPLight>();
    spot->SetDirectional(true);
    spot->SetCutoff(30);
    spot->Position()->SetData(1, 2, 3);
    spot->Target()->SetData(1, 2, 3);
    const auto view = View();
    view->Dress({});
    EXPECT_TRUE(Headlight()->Visible());
    spot->Target()->SetData(0, 0, 0);
    view->Dress({});
    EXPECT_FALSE(Headlight()->Visible());
}

TEST_F(ViewOptions, SurfacesAreSeenFromBothSides) {
    const auto view = View();
    view->Dress({});
    EXPECT_TRUE(m_panel.Options().testFlag(goCullFace));
    Add<TZEPMesh>();
    view->Dress({});
    EXPECT_FALSE(m_panel.Options().testFlag(goCullFace));
    EXPECT_TRUE(Headlight()->Visible());
}

TEST_F(ViewOptions, FlatDrawingsNeedNoLight) {
    Add<TZEPPolygon>();
    const auto view = View();
    view->Dress({.Headlight = true});
    EXPECT_TRUE(Headlight()->Visible());
    qobject_cast<TZEPBatch*>(m_file)->SetEvenLight(true);
    view->Dress({.Headlight = true});
    EXPECT_FALSE(Headlight()->Visible());
}

TEST_F(ViewOptions, LightNeitherBleachesNorHidesAColour) {
    auto* box = Add<TZEPBox>();
    box->XForm()->Scale()->SetData(9, 9, 9); // fills the view
    TZEPFaceMaterial& face = *box->Material()->FrontFace();
    const QColor diffuse(200, 120, 40);
    const auto view = View();
    const auto seen = [&](const TViewLook& look) {
        view->Dress(look);
        return m_panel.GrabFrame().pixelColor(30, 20);
    };
    for (const TColor ambient : {clBlack, FromQColor(diffuse)}) {
        face.SetDiffuse(FromQColor(diffuse));
        face.SetAmbient(ambient);
        const QColor dark = seen({.Lights = false});
        EXPECT_NEAR(dark.red(), 200, 2);
        EXPECT_NEAR(dark.green(), 120, 2);
        EXPECT_NEAR(dark.blue(), 40, 2);
        const QColor bright = seen({.Headlight = true}); // the face is seen square
        EXPECT_GT(bright.red(), 135);
        EXPECT_LT(bright.red(), 215);
        EXPECT_NEAR(1.0 * bright.green() / bright.red(), 0.6, 0.03);
        EXPECT_EQ(face.Ambient(), ambient);
    }
}

TEST_F(ViewOptions, NothingIsWrittenIntoWhatIsShown) {
    auto* lamp = Add<TZEPLight>();
    auto* box = Add<TZEPBox>();
    box->XForm()->Scale()->SetData(3, 3, 3);
    box->Material()->FrontFace()->SetDiffuse(clRed);
    const auto view = View();
    const auto middle = [&](const TViewLook& look) {
        view->Dress(look);
        return m_panel.GrabFrame().pixelColor(31, 21);
    };
    const QColor lit = middle({});
    EXPECT_EQ(middle({.Lights = false}), QColor(Qt::red));
    EXPECT_EQ(middle({.Lights = false, .Faces = TFaces::Wire}), QColor(Qt::black));
    EXPECT_TRUE(lamp->Visible());
    EXPECT_EQ(box->DrawType(), dtFill);
    EXPECT_EQ(box->Material()->FrontFace()->Ambient(), TColor{0x404040});
    EXPECT_EQ(middle({}), lit);
}

TEST_F(ViewOptions, FogKeepsToWhatIsLookedAt) {
    const auto view = View();
    view->Dress({.Fog = TFog::Exp2, .Background = TColor{0x8090A0}});
    const TZEPFog& fog = *m_panel.Fog();
    EXPECT_TRUE(fog.Enabled());
    EXPECT_EQ(fog.Mode(), fmExp2);
    EXPECT_EQ(fog.Color(), TColor{0x8090A0});
    const double density = fog.Density();
    const double end = fog.FogEnd();
    m_camera->Position()->SetData(0, -20, 0);
    ASSERT_FALSE(m_panel.GrabFrame().isNull());
    EXPECT_NEAR(fog.Density(), density / 2, 1e-9);
    EXPECT_NEAR(fog.FogEnd(), end * 2, 1e-9);
    view->Dress({});
    EXPECT_FALSE(fog.Enabled());
    EXPECT_EQ(fog.Color(), clNavy);
}

TEST_F(ViewOptions, TheMenuShowsAndMakesTheChoice) {
    TViewLook{.Fog = TFog::Linear, .Faces = TFaces::Wire}.Save();
    TViewOptions options(&m_menu, &m_window);
    options.AddView(View());
    EXPECT_TRUE(Entry("&Wire frame")->isChecked());
    EXPECT_TRUE(Entry("&Linear")->isChecked());
    for (const char* text : {"Shaded with &edges", "&Lights", "Flat &shading", "&Exponential",
                             "&Accumulated", "Refle&ctions", "Gro&und"})
        Entry(text)->trigger();
    const TViewLook chosen{.Lights = false,
                           .Fog = TFog::Exp,
                           .Flat = true,
                           .Faces = TFaces::Edged,
                           .Shadows = TShadows::Accumulated,
                           .Reflections = false,
                           .Ground = true};
    EXPECT_EQ(options.Look(), chosen);
    EXPECT_EQ(TViewLook::Load(), chosen);
    EXPECT_TRUE(m_panel.Options().testFlag(goFlatShadeModel));
    EXPECT_FALSE(Entry("&Linear")->isChecked());
    EXPECT_FALSE(Entry("&Headlight")->isEnabled());
}

TEST_F(ViewOptions, WhatTheContextCannotDoIsGreyedOutWithTheReason) {
    TViewOptions options(&m_menu, &m_window);
    options.AddView(View());
    const auto subtracts = qScopeGuard([was = BlendEquationEXT] { BlendEquationEXT = was; });
    BlendEquationEXT = nullptr;
    Q_EMIT m_menu.aboutToShow(); // there is no context yet
    EXPECT_TRUE(Entry("S&ubtracted")->isEnabled());
    ASSERT_FALSE(m_panel.GrabFrame().isNull());
    const TBlendEquation there = std::exchange(BlendEquationEXT, nullptr);
    Q_EMIT m_menu.aboutToShow();
    EXPECT_FALSE(Entry("S&ubtracted")->isEnabled());
    EXPECT_TRUE(Entry("S&ubtracted")->toolTip().contains(QStringLiteral("GL_EXT_blend_subtract")));
    EXPECT_TRUE(Entry("Sha&dows")->menu()->toolTipsVisible());
    EXPECT_TRUE(m_menu.toolTipsVisible());
    for (const char* text : {"&Accumulated", "Refle&ctions", "As the &scene has them"})
        EXPECT_TRUE(Entry(text)->isEnabled()) << text;
    BlendEquationEXT = there;
    Q_EMIT m_menu.aboutToShow();
    EXPECT_TRUE(Entry("S&ubtracted")->isEnabled());
    EXPECT_EQ(Entry("S&ubtracted")->toolTip(), Entry("S&ubtracted")->statusTip());
}

} // namespace
} // namespace ZEP
