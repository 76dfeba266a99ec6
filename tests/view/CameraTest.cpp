#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/objects/RepaintCounter.h"
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace ZEP {
namespace {

/// The camera under the commands of `tests/data/cases/view/camera.txt`; each answers what it has
/// changed, and how often the view is drawn again where that is not once.
class TMovedCamera {
public:
    TMovedCamera() { m_lens->Position()->SetData(0, -10, 0); }

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
            {"orbit-center",
             [](C& c, V v) {
                 c.SetOrbitCenter(TGLArrayd3{v[0], v[1], v[2]});
             }},
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
        m_panel.Count = 0;
        verbs.at(words.Verb())(*m_lens, {words.Number(1), words.Number(2), words.Number(3)});
        std::string text;
        for (const auto& [name, value] : State())
            if (value != before.at(name)) text += ", " + name + " " + value;
        if (m_panel.Count != 1) text += ", drawn " + std::to_string(m_panel.Count) + " times";
        return text.empty() ? text : text.substr(2);
    }

private:
    [[nodiscard]] std::map<std::string, std::string> State() const {
        return {{"eye", Text(m_lens->GetPosition())},
                {"target", Text(m_lens->GetTarget())},
                {"offset", Text(m_lens->ViewOffset())},
                {"FOVY", Text({m_lens->FOVY()})},
                {"focal length", Text({m_lens->FocalLength()})},
                {"field", Text({m_lens->FieldOfView()})},
                {"roll", Text({m_lens->RollAngle()})},
                {"stored", m_lens->Stored() ? "yes" : "no"},
                {"published eye", Text(m_lens->Position()->Data())},
                {"published target", Text(m_lens->Target()->Data())}};
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

    TZEPScene m_scene;
    TRepaintCounter m_panel{m_scene};
    TZEPCamera* m_lens = Add<TZEPCamera>(&m_scene);
};

TEST(Camera, MovesAsItIsWrittenDown) {
    ExpectCases("view/camera.txt", [](const TCase& c) {
        TMovedCamera camera;
        return EachLine(c, [&](const std::string& line) { return camera.Do(line); });
    });
}

/// A descendant that holds the eye above the ground.
class GroundedCamera : public TZEPCamera {
public:
    void Move(double px, double py, double pz, double tx, double ty, double tz) override {
        TZEPCamera::Move(px, py, std::max(pz, -GetPosition()[2]), tx, ty, tz);
    }
};

TEST(Camera, DescendantsBoundAllMovementInOnePlace) {
    GroundedCamera camera;
    camera.Position()->SetY(-10);
    camera.Orbit(0, 60);
    EXPECT_EQ(camera.GetPosition()[2], 0);
}

} // namespace
} // namespace ZEP
