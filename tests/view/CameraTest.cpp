#include <zep/appearance/effects/Jitter.h>
#include <zep/framework/Property.h>
#include <zep/framework/Registry.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <numbers>

namespace ZEP {
namespace {

using std::numbers::pi;

MATCHER_P(Is, expected, "") {
    for (std::size_t k = 0; k < 3; ++k)
        if (!(std::abs(arg[k] - expected[k]) < 1e-9)) return false;
    return true;
}

auto At(double x, double y, double z) {
    return Is(TGLArrayd3{x, y, z});
}

/// A camera in a scene that is shown: repaints are counted.
class Camera : public testing::Test, public TZEPScenePanel {
protected:
    Camera() {
        Scene.RegisterGLPanel(this);
        Lens = new TZEPCamera(&Scene);
        Lens->SetParentComponent(&Scene);
        Lens->Position()->SetData(0, -10, 0);
        Repaints = 0;
    }
    ~Camera() override { Scene.UnregisterGLPanel(this); }

    void Invalidate() override { ++Repaints; }
    void SceneDestroyed() override {}

    TZEPObject* Object(double x, double y, double z, TZEPObject* parent = nullptr) {
        auto* object = new TZEPObject(&Scene);
        object->SetParentComponent(parent ? parent : &Scene);
        object->XForm()->Translate()->SetData(x, y, z);
        return object;
    }

    TZEPScene Scene;
    TZEPCamera* Lens;
    int Repaints = 0;
};

TEST_F(Camera, StartsWithItsDeclaredValues) {
    const TZEPCamera camera;
    QStringList names;
    for (const QMetaProperty& property : PublishedProperties(TZEPCamera::staticMetaObject))
        names.append(QString::fromLatin1(property.name()));
    EXPECT_TRUE(names.join(u' ').endsWith(
        QStringLiteral("Position PositionObject Target TargetObject Up FocalLength FOVY "
                       "NearClipPlane FarClipPlane Orthographic Extended")))
        << names.join(u' ').toStdString();
    EXPECT_NEAR(camera.FOVY(), 43.6028189727036, 1e-12);
    EXPECT_EQ(Lens->Up()->Data(), unitz);
    EXPECT_TRUE(camera.Changed());
    const auto* entry = TClassRegistry::Instance().Find(QStringLiteral("TZEPCamera"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->Group, QStringLiteral("OpenGL"));
}

TEST_F(Camera, FocalLengthAndFieldOfViewKeepInStep) {
    for (const auto& [focal, field] :
         {std::pair{18.0, 90.0}, {45.0, 43.6028189727036}, {18 * std::sqrt(3), 60.0}}) {
        Lens->SetFocalLength(focal);
        EXPECT_NEAR(Lens->FOVY(), field, 1e-12);
        Lens->SetFOVY(10);
        Lens->SetFOVY(field);
        EXPECT_NEAR(Lens->FocalLength(), focal, 1e-12);
    }
}

TEST_F(Camera, EveryChangeRepaintsOnceAndAnEqualValueNever) {
    const std::vector<std::pair<const char*, std::function<void()>>> settings{
        {"FocalLength", [&] { Lens->SetFocalLength(20); }},
        {"FOVY", [&] { Lens->SetFOVY(30); }},
        {"NearClipPlane", [&] { Lens->SetNearClipPlane(2); }},
        {"FarClipPlane", [&] { Lens->SetFarClipPlane(50); }},
        {"Orthographic", [&] { Lens->SetOrthographic(true); }},
        {"PositionObject", [&] { Lens->SetPositionObject(&Scene); }},
        {"TargetObject", [&] { Lens->SetTargetObject(&Scene); }},
        {"Position", [&] { Lens->Position()->SetX(3); }},
        {"Target", [&] { Lens->Target()->SetX(3); }},
        {"Up", [&] { Lens->Up()->SetX(3); }},
        {"view offset", [&] {
             Lens->SetViewOffset({1, 2, 3});
         }}};
    for (const auto& [name, set] : settings) {
        Lens->SetChanged(false);
        Repaints = 0;
        set();
        EXPECT_EQ(Repaints, 1) << name;
        EXPECT_TRUE(Lens->Changed()) << name;
        set();
        EXPECT_EQ(Repaints, 1) << name;
    }
}

TEST_F(Camera, FollowsObjectsUntilTheyGo) {
    TZEPObject* moved = Object(1, 2, 3);
    const std::unique_ptr<TZEPObject> target(Object(10, 0, 0, moved));
    Lens->SetPositionObject(moved);
    Lens->SetTargetObject(target.get());
    EXPECT_THAT(Lens->GetPosition(), At(1, 2, 3));
    EXPECT_THAT(Lens->GetTarget(), At(11, 2, 3));
    EXPECT_EQ(Lens->GetCenter(), Lens->GetPosition());
    Lens->Move(1, 0, 0, 0, 1, 0);
    EXPECT_THAT(Lens->GetPosition(), At(2, 2, 3));
    EXPECT_THAT(Lens->GetTarget(), At(11, 3, 3));
}

TEST_F(Camera, ForgetsWhatIsDestroyed) {
    Lens->Target()->SetData(4, 5, 6);
    TZEPObject* other = Object(1, 0, 0);
    for (TZEPObject* position : {other, static_cast<TZEPObject*>(nullptr)}) {
        const std::unique_ptr<TZEPObject> gone(Object(9, 9, 9));
        Lens->SetTargetObject(gone.get());
        Lens->SetPositionObject(position ? position : gone.get());
    }
    EXPECT_EQ(Lens->PositionObject(), nullptr);
    EXPECT_EQ(Lens->TargetObject(), nullptr);
    EXPECT_THAT(Lens->GetTarget(), At(4, 5, 6));
    double x = 0;
    double y = 0;
    double z = 0;
    Lens->GetTarget3Real(x, y, z);
    EXPECT_EQ((TGLArrayd3{x, y, z}), (TGLArrayd3{4, 5, 6}));
}

TEST_F(Camera, FollowingInARingEnds) {
    TZEPCamera other(&Scene);
    other.SetPositionObject(Lens);
    Lens->SetPositionObject(&other);
    EXPECT_THAT(Lens->GetPosition(), At(0, -10, 0));
    Lens->SetPositionObject(Lens);
    EXPECT_THAT(Lens->GetPosition(), At(0, -10, 0));
}

TEST_F(Camera, SeesFollowedObjectsInItsOwnFrame) {
    TZEPObject* carrier = Object(5, 0, 0);
    carrier->XForm()->Rotate()->SetZ(90);
    Lens->SetParentComponent(carrier);
    Lens->XForm()->Translate()->SetY(1); // absolute: (4, 0, 0)
    Lens->SetTargetObject(Object(4, 7, 2));
    EXPECT_THAT(Lens->GetTarget(), At(7, 0, 2));
    TGLArrayd3 absolute;
    Lens->ConvertToAbsolute(Lens->GetTarget(), absolute);
    EXPECT_THAT(absolute, At(4, 7, 2));
}

struct Movement {
    const char* Name;
    std::function<void(TZEPCamera&)> Do;
    TGLArrayd3 Eye, Target;
};

TEST_F(Camera, Moves) {
    const double r2 = std::sqrt(2) / 2;
    const std::vector<Movement> rows{
        {"truck", [](TZEPCamera& c) { c.Truck(0.1, 0.2, 5); }, {-1, -12, 0}, {-1, -2, 0}},
        {"truck in parallel",
         [](TZEPCamera& c) {
             c.SetOrthographic(true);
             c.Truck(0.1, 0.2, 5);
         },
         {-0.1, -10.2, 0},
         {-0.1, -0.2, 0}},
        {"orbit", [](TZEPCamera& c) { c.Orbit(90, 0); }, {10, 0, 0}, {0, 0, 0}},
        {"orbit up", [](TZEPCamera& c) { c.Orbit(0, -45); }, {0, -10 * r2, 10 * r2}, {0, 0, 0}},
        {"orbit over the pole",
         [](TZEPCamera& c) { c.Orbit(0, -135); },
         {0, 10 * r2, 10 * r2},
         {0, 0, 0}},
        {"orbit below the horizon",
         [](TZEPCamera& c) { c.Orbit(0, 45); },
         {0, -10 * r2, -10 * r2},
         {0, 0, 0}},
        {"pan", [](TZEPCamera& c) { c.Pan(90, 0); }, {0, -10, 0}, {-10, -10, 0}},
        {"pan up", [](TZEPCamera& c) { c.Pan(0, -45); }, {0, -10, 0}, {0, 10 * r2 - 10, 10 * r2}},
        {"dolly", [](TZEPCamera& c) { c.Dolly(0.5); }, {0, -15, 0}, {0, 0, 0}},
        {"dolly in", [](TZEPCamera& c) { c.Dolly(-0.9); }, {0, -1, 0}, {0, 0, 0}},
        {"dolly close by",
         [](TZEPCamera& c) {
             c.Position()->SetY(-0.5);
             c.Dolly(0.1);
         },
         {0, -0.6, 0},
         {0, 0, 0}},
        {"dolly within the target",
         [](TZEPCamera& c) {
             c.Position()->SetY(0);
             c.Dolly(0.1);
         },
         {0, 0, 0},
         {0, 0, 0}},
        {"perspective", [](TZEPCamera& c) { c.Perspective(0.5); }, {0, -15, 0}, {0, 0, 0}},
        {"perspective in parallel",
         [](TZEPCamera& c) {
             c.SetOrthographic(true);
             c.Perspective(0.5);
         },
         {0, -10, 0},
         {0, 0, 0}},
        {"extended truck",
         [](TZEPCamera& c) {
             c.SetExtended(true);
             c.SetNearClipPlane(10); // 18 in the middle of the depth range
             c.SetFarClipPlane(90);
             c.Truck(0.9, 1.8, 4.5);
         },
         {-0.1, -10.2, -0.5},
         {-0.1, -0.2, -0.5}},
        {"extended truck in parallel",
         [](TZEPCamera& c) {
             c.SetExtended(true);
             c.SetOrthographic(true);
             c.Truck(0.1, 0.2, 5);
         },
         {-0.1, -10.2, -5},
         {-0.1, -0.2, -5}},
        {"extended orbit over the pole",
         [](TZEPCamera& c) {
             c.SetExtended(true);
             c.Orbit(0, -135);
         },
         {0, -10 * std::sin(0.05 * pi / 180), 10 * std::cos(0.05 * pi / 180)},
         {0, 0, 0}},
        {"extended dolly through the target",
         [](TZEPCamera& c) {
             c.SetExtended(true);
             c.Dolly(-3);
         },
         {0, -1, 0},
         {0, 0, 0}},
        {"extended dolly close by",
         [](TZEPCamera& c) {
             c.SetExtended(true);
             c.Position()->SetY(-0.5);
             c.Dolly(0.1);
         },
         {0, -0.55, 0},
         {0, 0, 0}},
    };
    for (const Movement& row : rows) {
        TZEPCamera camera;
        camera.Position()->SetY(-10);
        row.Do(camera);
        EXPECT_THAT(camera.GetPosition(), Is(row.Eye)) << row.Name;
        EXPECT_THAT(camera.GetTarget(), Is(row.Target)) << row.Name;
        EXPECT_EQ(camera.Target()->Data(), zero3d) << row.Name;
    }
}

TEST_F(Camera, PanKeepsTheDistanceWhateverUpIs) {
    for (const TGLArrayd3& up : {unitz, unitx, TGLArrayd3{1, -2, 3}}) {
        Lens->Reset();
        Lens->Up()->SetData(up[0], up[1], up[2]);
        Lens->Pan(25, 40);
        TGLArrayd3 d = Lens->GetTarget();
        for (std::size_t k = 0; k < 3; ++k) d[k] -= Lens->GetPosition()[k];
        EXPECT_NEAR(std::sqrt(Dotd(d, d)), 10, 1e-9);
        EXPECT_GT(std::abs(d[0]) + std::abs(d[2]), 1) << "it turned";
    }
}

TEST_F(Camera, LimitedOrbitsStayBetweenPoleAndHorizon) {
    Scene.SetLimitCameraMovement(true);
    for (const auto& [turn, polar, extended] : {std::tuple{-500.0, 0.001, false},
                                                {500.0, 1.5697963267948967, false},
                                                {500.0, 1.5697963267948967, true}}) {
        Lens->SetExtended(extended);
        Lens->Orbit(0, turn);
        TGLArrayd3 s;
        OrthoToSphered(Lens->GetPosition(), s);
        EXPECT_NEAR(s[0], 10, 1e-9);
        EXPECT_NEAR(s[2], polar, 1e-6); // the arcsine near the pole has no more digits
    }
}

TEST_F(Camera, PerspectiveTradesDistanceForTheWholeAngle) {
    const double before = std::tan(Lens->FOVY() * pi / 180) * 10;
    Lens->Perspective(0.3);
    EXPECT_NEAR(std::tan(Lens->FieldOfView() * pi / 180) * 13, before, 1e-9);
    Lens->Position()->SetData(0, 3, 0); // the offset of -3 puts the eye into the target
    const double field = Lens->FieldOfView();
    Lens->Perspective(0.3);
    EXPECT_EQ(Lens->FieldOfView(), field);
}

TEST_F(Camera, FieldOfViewStaysWithinItsLimits) {
    Lens->SetFOVY(40);
    for (const auto& [delta, field, repaints] : {std::tuple{10.0, 50.0, 1},
                                                 {-49.5, 50.0, 0},
                                                 {126.0, 50.0, 0},
                                                 {125.0, 175.0, 1},
                                                 {-174.0, 1.0, 1},
                                                 {std::nan(""), 1.0, 0}}) {
        Repaints = 0;
        Lens->FOV(delta);
        EXPECT_NEAR(Lens->FieldOfView(), field, 1e-12) << delta;
        EXPECT_EQ(Repaints, repaints) << delta;
    }
    EXPECT_EQ(Lens->FOVY(), 40);
}

TEST_F(Camera, RollStaysBelowAFullTurn) {
    for (const auto& [turn, angle] :
         {std::pair{350.0, 350.0}, {10.0, 0.0}, {-20.0, 340.0}, {740.0, 0.0}, {-720.0, 0.0}}) {
        Lens->Roll(turn);
        EXPECT_NEAR(Lens->RollAngle(), angle, 1e-9) << turn;
        EXPECT_LT(Lens->RollAngle(), 360) << turn;
    }
}

void Navigate(TZEPCamera& camera) {
    camera.Orbit(20, -30);
    camera.Pan(3, 4);
    camera.Truck(0.1, 0.1, 0);
    camera.Roll(15);
    camera.FOV(5);
    camera.SetViewOffset({1, 2, 3});
}

TEST_F(Camera, StoreRestoreAndReset) {
    Navigate(*Lens);
    const TGLArrayd3 eye = Lens->GetPosition();
    const TGLArrayd3 target = Lens->GetTarget();
    const double field = Lens->FieldOfView();
    Repaints = 0;
    Lens->Store();
    EXPECT_TRUE(Lens->Stored());
    EXPECT_EQ(Repaints, 0);
    Navigate(*Lens);
    EXPECT_NE(Lens->GetPosition(), eye);
    Repaints = 0;
    Lens->Restore();
    EXPECT_EQ(Repaints, 0);
    EXPECT_FALSE(Lens->Stored());
    EXPECT_EQ(Lens->GetPosition(), eye);
    EXPECT_EQ(Lens->GetTarget(), target);
    EXPECT_EQ(Lens->FieldOfView(), field);
    EXPECT_EQ(Lens->RollAngle(), 15);
    EXPECT_EQ(Lens->ViewOffset(), (TGLArrayd3{1, 2, 3}));
    Lens->Reset();
    EXPECT_EQ(Repaints, 1);
    EXPECT_THAT(Lens->GetPosition(), At(0, -10, 0));
    EXPECT_EQ(Lens->FieldOfView(), Lens->FOVY());
    EXPECT_EQ(Lens->RollAngle(), 0);
    EXPECT_EQ(Lens->ViewOffset(), zero3d);
}

/// A descendant that holds the eye above the ground.
class GroundedCamera : public TZEPCamera {
public:
    void Move(double px, double py, double pz, double tx, double ty, double tz) override {
        TZEPCamera::Move(px, py, std::max(pz, -GetPosition()[2]), tx, ty, tz);
    }
};

TEST_F(Camera, DescendantsBoundAllMovementInOnePlace) {
    GroundedCamera camera;
    camera.Position()->SetY(-10);
    camera.Orbit(0, 60);
    EXPECT_EQ(camera.GetPosition()[2], 0);
}

TEST(Jitter, TablesHoldTheirSamplesAboutTheCentre) {
    for (const auto& [table, count] :
         {std::pair{j2, 2U}, {j3, 3U}, {j4, 4U}, {j8, 8U}, {j15, 15U}, {j24, 24U}, {j66, 66U}}) {
        ASSERT_EQ(table.size(), count);
        double x = 0;
        double y = 0;
        for (const TZEPJitter& sample : table) {
            EXPECT_LE(std::max(std::abs(sample.X), std::abs(sample.Y)), 0.5F);
            x += static_cast<double>(sample.X);
            y += static_cast<double>(sample.Y);
        }
        EXPECT_LT(std::hypot(x, y) / count, 0.02) << count;
    }
}

} // namespace
} // namespace ZEP
