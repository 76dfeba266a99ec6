#include "viewer/window/StartScene.h"

#include "viewer/window/StartTeapot.h"
#include "viewer/window/StartTextures.h"
#include <zep/appearance/effects/Light.h>
#include <zep/appearance/materials/Material.h>
#include <zep/batch/Batch.h>
#include <zep/framework/Property.h>
#include <zep/objects/Box.h>
#include <zep/objects/Cone.h>
#include <zep/objects/DisplayLists.h>
#include <zep/objects/HeightField.h>
#include <zep/objects/Label.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Polyhedra.h>
#include <zep/objects/Sphere.h>
#include <zep/objects/Torus.h>
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Actor.h>
#include <zep/view/Camera.h>

#include <QImage>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {

namespace {

constexpr double RingRadius = 2.75;
constexpr double LampRadius = 3.9;
constexpr double StageRadius = 4.2;
constexpr int StageCells = 44;
constexpr double StageReach = 0.516; // of its width: the last whole cells end below the rim
constexpr double StageReflection = 0.3;
constexpr double RingSpeed = 7;     // degrees in a second
constexpr double LampSpeed = -38;   // degrees in a second
constexpr double CoreSpeed = 50;    // degrees in a second
constexpr int AmbientDivisor = 550; // percent
constexpr TGLArrayd3 FirstToEye{1.0, -10.2, 4.6};
constexpr TGLArrayd3 FirstTarget{0, 0, 0.6};
constexpr TGLArrayd3 MiddleTarget{0, 0, 0.9};
constexpr double WholeAspect = 1.05; // from which on width to height the stage is seen whole
constexpr double WholeDistance = 13; // from where the stage is seen from every side
constexpr double LongestStep = 0.1;  // seconds; after a pause time goes on where it stood

/// A solid that stays what it is at first, in a display list. What OpenGL is sent vertex by vertex
/// while shadows are looked at, Mesa 22.3 never gives back: a solid that moves would fill the
/// memory.
template <class Solid>
class TListed final : public Solid {
public:
    using Solid::Solid;
    void DrawSpecific(GLenum face, bool draft) override {
        m_lists.Draw(draft, [&] { Solid::DrawSpecific(face, draft); });
    }

private:
    TDisplayLists m_lists;
};

template <class T>
T* AddAt(TZEPObject* parent, const TGLArrayd3& place, const TGLArrayd3& size = {1, 1, 1}) {
    auto* object = Add<T>(parent);
    object->XForm()->Translate()->SetData(place);
    object->XForm()->Scale()->SetData(size);
    return object;
}

/// Lamps add their ambient light to every surface: a small ambient part keeps the shades deep, and
/// still shows everything when the lamps are off.
void SetLook(TZEPObject* object, TColor color, float shininess) {
    TZEPFaceMaterial* face = object->Material()->FrontFace();
    face->SetDiffuse(color);
    face->SetAmbient(FromQColor(ToQColor(color).darker(AmbientDivisor)));
    face->SetSpecular(TColor{0xB0B0B0});
    face->SetShininess(shininess);
}

void SetPicture(TZEPObject* object, const QImage& picture) {
    SetLook(object, clWhite, 40);
    object->Material()->Texture()->Image()->SetImage(picture);
    object->Material()->Texture()->SetResident(true);
}

void SetGlass(TZEPObject* object, TColor color) {
    SetLook(object, color, 30);
    object->Material()->FrontFace()->SetSpecular(clWhite);
    object->Material()->SetTransparency(0.5F);
}

/// Where a solid stands on the ring, by the hour of a clock with six hours.
TGLArrayd3 PlaceAt(int hour, double height) {
    const double angle = hour * std::numbers::pi / 3;
    return {RingRadius * std::cos(angle), RingRadius * std::sin(angle), height};
}

template <class T>
T* AddRound(TZEPObject* parent, const TGLArrayd3& place, const TGLArrayd3& size) {
    T* solid = AddAt<T>(parent, place, size);
    solid->SetSmooth(true);
    return solid;
}

/// A small glowing ball, and a spot that stands in it and aims at the middle.
TZEPLight* AddLamp(TZEPObject* lamps, TColor color, double degrees, double height,
                   TZEPObject* target) {
    const double angle = degrees * std::numbers::pi / 180;
    const TGLArrayd3 place{LampRadius * std::cos(angle), LampRadius * std::sin(angle), height};
    auto* ball = AddRound<TZEPSphere>(lamps, place, {0.18, 0.18, 0.18});
    ball->SetColor(clBlack);
    ball->Material()->FrontFace()->SetEmission(color);
    auto* light = Add<TZEPLight>(lamps);
    light->SetColor(color);
    light->SetDirectional(true); // aimed
    light->SetPositionObject(ball);
    light->SetTargetObject(target);
    light->SetCutoff(50);
    light->SetExponent(5);
    return light;
}

} // namespace

TStartScene::TStartScene() : m_scene(std::make_unique<TZEPScene>()) {
    m_scene->SetSceneAmbientColor(TColor{0x404040});
    m_scene->SetFShadows(true);
    m_scene->SetReflections(true);
    m_scene->SetFirstPasses(true);
    m_backdrop.SetGuides(false);
    m_root = Add<TZEPBatch>(m_scene.get());
    AddStage();
    AddTeapot();
    AddRing();
    AddText();
    AddLights();
    m_camera = Add<TZEPCamera>(m_scene.get());
    m_backdrop.SetCamera(m_camera);
    LookFromStart();
    auto* actor = Add<TZEPActor>(m_scene.get());
    QObject::connect(actor, &TZEPActor::OnAction, [this](TZEPObject*, double time) { Tick(time); });
    MoveTo(0);
}

TStartScene::~TStartScene() = default;

void TStartScene::Look(const TGLArrayd3& toEye, const TGLArrayd3& target) {
    m_toEye = toEye;
    m_target = target;
    Place();
}

/// A narrow view needs more distance.
void TStartScene::Place() {
    const double k = std::max(1.0, WholeAspect / m_aspect);
    m_camera->Target()->SetData(m_target);
    m_camera->Position()->SetData(m_target[0] + k * m_toEye[0], m_target[1] + k * m_toEye[1],
                                  m_target[2] + k * m_toEye[2]);
    m_camera->Reset();
}

void TStartScene::SetAspect(double aspect) {
    if (Change(m_aspect, std::max(aspect, 0.1))) Place();
}

void TStartScene::LookFrom(TDirection direction) {
    TGLArrayd3 toEye = ToEye(direction);
    Normalized(toEye);
    for (double& part : toEye) part *= WholeDistance;
    Look(toEye, MiddleTarget);
}

void TStartScene::LookFromStart() {
    Look(FirstToEye, FirstTarget);
}

void TStartScene::SetBackground(const std::optional<TColor>& color) {
    using TColors = TZEPBackdrop::TColors;
    m_backdrop.SetColors(color ? TColors::Plain(*color) : TColors());
}

/// A round mirror, of cells that are small enough for the light of the lamps, in a rim that hides
/// where they end.
void TStartScene::AddStage() {
    auto* stage =
        AddRound<TZEPHeightField>(m_root, {0, 0, 0}, {2 * StageRadius, 2 * StageRadius, 1});
    stage->SetSlicesX(StageCells);
    stage->SetSlicesY(StageCells);
    stage->SetOnHeight([](double x, double y) {
        return std::hypot(x, y) < StageReach ? 0 : std::numeric_limits<double>::quiet_NaN();
    });
    SetPicture(stage, StartTextures::Stage());
    stage->SetReceiveShadows(true);
    stage->SetReflection(StageReflection);
    auto* rim = AddRound<TZEPTorus>(m_root, {0, 0, -0.02}, {1, 1, 0.7});
    rim->SetRadius1(StageRadius);
    rim->SetRadius2(0.15);
    rim->SetSides(10);
    rim->SetRings(80);
    SetLook(rim, TColor{0x685850}, 60);
}

void TStartScene::AddTeapot() {
    auto* teapot = AddAt<TZEPMesh>(m_root, {0, 0, 0.58}, {1.7, 1.7, 1.7});
    MakeTeapot(*teapot);
    teapot->XForm()->Rotate()->SetData(0, 0, -25);
    SetLook(teapot, TColor{0xA8A098}, 70);
    teapot->SetCastShadows(true);
}

void TStartScene::AddRing() {
    m_ring = Add<TZEPObject>(m_root);
    auto* marble = AddRound<TZEPSphere>(m_ring, PlaceAt(0, 0.5), {1, 1, 1});
    marble->SetSlices(30);
    marble->SetStacks(30);
    SetPicture(marble, StartTextures::Marble());
    marble->SetCastShadows(true);

    auto* torus = AddRound<TZEPTorus>(m_ring, PlaceAt(1, 0.55), {1, 1, 1});
    torus->SetRadius1(0.42);
    torus->SetRadius2(0.15);
    torus->SetSides(18);
    torus->SetRings(36);
    torus->XForm()->Rotate()->SetData(65, 20, 0);
    SetLook(torus, TColor{0x40A8F0}, 60);
    torus->SetCastShadows(true);

    auto* ruby = AddAt<TListed<TZEPDodecahedron>>(m_ring, PlaceAt(2, 0.5), {1.05, 1.05, 1.05});
    SetLook(ruby, TColor{0x4030C8}, 50);
    ruby->SetCastShadows(true);

    auto* crate = AddAt<TListed<TZEPBox>>(m_ring, PlaceAt(3, 0.42), {0.85, 0.85, 0.85});
    SetPicture(crate, StartTextures::Checkers());
    crate->SetCastShadows(true);

    m_core = AddAt<TZEPIcosahedron>(m_ring, PlaceAt(4, 0.55), {0.5, 0.5, 0.5});
    SetLook(m_core, TColor{0x30C0FF}, 60);
    auto* glass = AddRound<TZEPSphere>(m_ring, PlaceAt(4, 0.55), {1.1, 1.1, 1.1});
    glass->SetSlices(30);
    glass->SetStacks(30);
    SetGlass(glass, TColor{0xFFD8B0});

    auto* cone = AddRound<TListed<TZEPCone>>(m_ring, PlaceAt(5, 0.5), {1, 1, 1});
    cone->SetRadius1(0);
    cone->SetRadius2(0.5);
    cone->SetSlices(36);
    SetLook(cone, TColor{0x70C050}, 50);
    cone->SetCastShadows(true);
}

/// Text behind the stage, upright; it glows, so that it is read in any light.
void TStartScene::AddText() {
    auto* label = AddAt<TZEPLabel>(m_root, {0, 4.1, 0.7}, {1.15, 1.15, 1.15});
    label->SetCaption(QStringLiteral("zepview"));
    label->Font()->SetName(QStringLiteral("DejaVu Sans"));
    label->XForm()->Rotate()->SetData(90, 0, 0);
    label->SetColor(TColor{0x483018});
    label->Material()->FrontFace()->SetEmission(TColor{0xB08860});
    TGLArrayd3 min{};
    TGLArrayd3 max{};
    label->GetSize(min, max);
    label->XForm()->Translate()->SetData(-0.575 * (min[0] + max[0]), 4.1, 0.7);
}

void TStartScene::AddLights() {
    auto* sky = Add<TZEPLight>(m_root); // at infinity
    sky->SetColor(TColor{0x787068});
    sky->Position()->SetData(-1, -3, 2.2);
    auto* middle = AddAt<TZEPObject>(m_root, {0, 0, 0.2});
    m_lamps = Add<TZEPObject>(m_root);
    // Only the highest: each costs a frame as much again as the mirror does.
    AddLamp(m_lamps, TColor{0x60B8FF}, 0, 3.2, middle)->SetCastShadows(true);
    AddLamp(m_lamps, TColor{0xFF9850}, 120, 2.7, middle);
    AddLamp(m_lamps, TColor{0xA048E0}, 240, 2.2, middle);
}

void TStartScene::SetMoving(bool moving) {
    m_lastTick = -1;
    m_scene->SetAnimation(moving);
}

void TStartScene::MoveTo(double seconds) {
    m_seconds = seconds;
    m_ring->XForm()->Rotate()->SetData(0, 0, std::fmod(20 + RingSpeed * seconds, 360));
    m_lamps->XForm()->Rotate()->SetData(0, 0, std::fmod(-60 + LampSpeed * seconds, 360));
    m_core->XForm()->Rotate()->SetData(0, 25, std::fmod(CoreSpeed * seconds, 360));
}

void TStartScene::Tick(double time) {
    const double step = m_lastTick < 0 ? 0 : std::min(time - m_lastTick, LongestStep);
    m_lastTick = time;
    MoveTo(m_seconds + step);
}

} // namespace ZEP
