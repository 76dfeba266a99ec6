#include "tests/Cases.h"
#include "tests/Words.h"
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>

namespace ZEP {
namespace {

MATCHER_P(Is, expected, "") {
    for (std::size_t k = 0; k < 3; ++k)
        if (!(std::abs(arg[k] - expected[k]) < 1e-9)) return false;
    return true;
}

auto At(double x, double y, double z) {
    return Is(TGLArrayd3{x, y, z});
}

/// A camera in a scene that is shown: repaints are counted.
class TWatchedCamera : public TZEPScenePanel {
public:
    TWatchedCamera() {
        Scene.RegisterGLPanel(this);
        Lens = new TZEPCamera(&Scene);
        Lens->SetParentComponent(&Scene);
        Lens->Position()->SetData(0, -10, 0);
        Repaints = 0;
    }
    ~TWatchedCamera() { Scene.UnregisterGLPanel(this); }
    Q_DISABLE_COPY_MOVE(TWatchedCamera)

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

class Camera : public testing::Test, public TWatchedCamera {};

/// The camera under the commands of `tests/data/cases/view/camera.txt`; each answers what it has
/// changed, and how often the view is drawn again where that is not once.
class TMovedCamera : public TWatchedCamera {
public:
    std::string Do(const std::string& line) {
        using C = TZEPCamera;
        using V = const double(&)[3];
        static const std::map<std::string, void (*)(C&, V)> verbs{
            {"position", [](C& c, V v) { c.Position()->SetData(v[0], v[1], v[2]); }},
            {"up", [](C& c, V v) { c.Up()->SetData(v[0], v[1], v[2]); }},
            {"parallel", [](C& c, V v) { c.SetOrthographic(v[0] == 0); }},
            {"extended", [](C& c, V) { c.SetExtended(true); }},
            {"limited", [](C& c, V) { c.Scene()->SetLimitCameraMovement(true); }},
            {"planes", [](C& c, V v) { c.SetNearClipPlane(v[0]), c.SetFarClipPlane(v[1]); }},
            {"focal-length", [](C& c, V v) { c.SetFocalLength(v[0]); }},
            {"field", [](C& c, V v) { c.SetFOVY(v[0]); }},
            {"truck", [](C& c, V v) { c.Truck(v[0], v[1], v[2]); }},
            {"orbit", [](C& c, V v) { c.Orbit(v[0], v[1]); }},
            {"pan", [](C& c, V v) { c.Pan(v[0], v[1]); }},
            {"dolly", [](C& c, V v) { c.Dolly(v[0]); }},
            {"perspective", [](C& c, V v) { c.Perspective(v[0]); }},
            {"zoom", [](C& c, V v) { c.FOV(v[0]); }},
            {"roll", [](C& c, V v) { c.Roll(v[0]); }},
            {"offset",
             [](C& c, V v) {
                 c.SetViewOffset({v[0], v[1], v[2]});
             }},
            {"store", [](C& c, V) { c.Store(); }},
            {"restore", [](C& c, V) { c.Restore(); }},
            {"reset", [](C& c, V) { c.Reset(); }},
        };
        const TWords words(line);
        const auto before = State();
        Repaints = 0;
        verbs.at(words.Verb())(*Lens, {words.Number(1), words.Number(2), words.Number(3)});
        std::string text;
        for (const auto& [name, value] : State())
            if (value != before.at(name)) text += ", " + name + " " + value;
        if (Repaints != 1) text += ", drawn " + std::to_string(Repaints) + " times";
        return text.empty() ? text : text.substr(2);
    }

private:
    [[nodiscard]] std::map<std::string, std::string> State() const {
        return {{"eye", Text(Lens->GetPosition())},
                {"target", Text(Lens->GetTarget())},
                {"offset", Text(Lens->ViewOffset())},
                {"FOVY", Text({Lens->FOVY()})},
                {"focal length", Text({Lens->FocalLength()})},
                {"field", Text({Lens->FieldOfView()})},
                {"roll", Text({Lens->RollAngle()})},
                {"stored", Lens->Stored() ? "yes" : "no"},
                {"published eye", Text(Lens->Position()->Data())},
                {"published target", Text(Lens->Target()->Data())}};
    }
    template <class TNumbers>
    static std::string Text(const TNumbers& numbers) {
        std::string text;
        for (const double number : numbers)
            text += QByteArray::number(std::abs(number) < 1e-9 ? 0.0 : number, 'g', 9) + " ";
        return text.substr(0, text.size() - 1);
    }
    static std::string Text(std::initializer_list<double> numbers) {
        return Text<std::initializer_list<double>>(numbers);
    }
};

TEST(CameraCases, MovesAsItIsWrittenDown) {
    ExpectCases("view/camera.txt", [](const TCase& c) {
        TMovedCamera camera;
        return EachLine(c, [&](const std::string& line) { return camera.Do(line); });
    });
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

} // namespace
} // namespace ZEP
