#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <cmath>
#include <numbers>

using namespace ZEP;

namespace {

/// Colours an object, so that little of it is seen where no lamp shines.
void Paint(TZEPObject* object, TColor color, TColor specular = clBlack) {
    TZEPFaceMaterial* face = object->Material()->FrontFace();
    face->SetDiffuse(color);
    face->SetAmbient(TColor{0x201A16});
    face->SetSpecular(specular);
    face->SetShininess(60);
}

/// A floor or a wall. Fine cells: light is computed at their corners.
void AddSide(TZEPScene* scene, const TGLArrayd3& place, const TGLArrayd3& turn, TColor color) {
    auto* side = Add<TZEPHeightField>(scene);
    side->SetSlicesX(80);
    side->SetSlicesY(80);
    side->SetSmooth(true);
    side->XForm()->Translate()->SetData(place);
    side->XForm()->Rotate()->SetData(turn);
    side->XForm()->Scale()->SetData(8, 8, 1);
    side->SetReceiveShadows(true);
    Paint(side, color);
}

/// A solid that casts shadows.
template <class T>
T* AddSolid(TZEPObject* parent, const TGLArrayd3& place, const TGLArrayd3& size, TColor color) {
    auto* solid = Add<T>(parent);
    solid->XForm()->Translate()->SetData(place);
    solid->XForm()->Scale()->SetData(size);
    solid->SetCastShadows(true);
    Paint(solid, color, TColor{0x808080});
    return solid;
}

/// In a frame, before it and the wall: what stands behind a mirror is hidden by it.
void AddMirror(TZEPScene* scene) {
    auto* frame = AddSolid<TZEPBox>(scene, {0.6, 3.97, 1.9}, {4.2, 0.06, 2.7}, TColor{0x305878});
    frame->SetCastShadows(false);
    frame->SetReceiveShadows(true);
    auto* mirror = Add<TZEPPolygon>(scene);
    mirror->SetConcave(false); // it shows where its corners run counter-clockwise
    mirror->SetColorVertexes(false);
    mirror->XForm()->Translate()->SetData(0.6, 3.92, 1.9);
    for (const auto& [x, z] : {std::pair{-2.0, -1.25}, {2.0, -1.25}, {2.0, 1.25}, {-2.0, 1.25}})
        mirror->Vertexes()->Add()->SetPoint({x, 0, z});
    mirror->SetReflection(0.85);
}

/// A point of a tube along a trefoil knot, at the angle `v` about the tube.
TGLArrayd3 OnKnot(double u, double v) {
    const double c2 = std::cos(2 * u), s2 = std::sin(2 * u);
    const double c3 = std::cos(3 * u), s3 = std::sin(3 * u);
    const double r = 2 + c3;
    const TGLArrayd3 out{c3 * c2, c3 * s2, s3};
    const TGLArrayd3 along{-3 * s3 * c2 - 2 * r * s2, -3 * s3 * s2 + 2 * r * c2, 3 * c3};
    TGLArrayd3 side;
    CrossProdd(along, out, side);
    Normalized(side);
    TGLArrayd3 point{r * c2, r * s2, s3};
    for (std::size_t k = 0; k < 3; ++k)
        point[k] += 0.5 * (std::cos(v) * out[k] + std::sin(v) * side[k]);
    return point;
}

void AddKnot(TZEPObject* parent) {
    constexpr int Rings = 240, Sides = 24;
    auto* knot = AddSolid<TZEPMesh>(parent, zero3d, {0.28, 0.28, 0.28}, TColor{0x30A0E8});
    knot->XForm()->Rotate()->SetData(80, 0, 0);
    knot->SetSmooth(true);
    const auto number = [](int ring, int side) { return ring % Rings * Sides + side % Sides; };
    for (int i = 0; i < Rings; ++i)
        for (int k = 0; k < Sides; ++k) {
            using std::numbers::pi;
            knot->Vertexes()->Add()->SetPoint(OnKnot(2 * pi * i / Rings, 2 * pi * k / Sides));
            knot->Faces()->Add()->SetCornersQuietly(number(i, k), number(i, k + 1),
                                                    number(i + 1, k));
            knot->Faces()->Add()->SetCornersQuietly(number(i, k + 1), number(i + 1, k + 1),
                                                    number(i + 1, k));
        }
}

/// A lamp: a small glowing ball with the light that stands on it.
void AddLamp(TZEPScene* scene, const TGLArrayd3& place, TColor color) {
    auto* ball = Add<TZEPSphere>(scene);
    ball->XForm()->Translate()->SetData(place);
    ball->XForm()->Scale()->SetData(0.16, 0.16, 0.16);
    ball->Material()->FrontFace()->SetEmission(color);
    auto* light = Add<TZEPLight>(scene);
    light->SetDirectional(true); // not at infinity
    light->SetPositionObject(ball);
    light->SetColor(color);
    light->SetAttenuation(0.06F);
    light->SetCastShadows(true);
    light->SetExactShadows(true); // the knot casts shadows on what is seen between its parts
}

} // namespace

/// A room with two lamps and a mirror. A knot turns.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetSceneAmbientColor(clWhite);
    scene.SetFShadows(true);
    scene.SetReflections(true);
    // Shadows follow what moves only where those of the last frame are dropped, and what a mirror
    // shows has to be there before the mirror.
    scene.SetFirstPasses(true);

    AddSide(&scene, {0, 0, 0}, {0, 0, 0}, TColor{0x7898B0});
    for (const double side : {-1.0, 1.0}) {
        AddSide(&scene, {0, 4 * side, 4}, {90 * side, 0, 0}, TColor{0xA8B0A8});
        AddSide(&scene, {4 * side, 0, 4}, {0, -90 * side, 0}, TColor{0xA8B0A8});
    }
    AddMirror(&scene);
    AddSolid<TZEPBox>(&scene, {0.1, 0.4, 0.04}, {1.4, 1.4, 0.08}, TColor{0x202020});
    auto* plinth = AddSolid<TZEPBox>(&scene, {0.1, 0.4, 0.44}, {1.5, 1.5, 0.72}, TColor{0x90A8B0});
    plinth->SetReceiveShadows(true);
    auto* ball = AddSolid<TZEPSphere>(&scene, {-1.9, -0.6, 0.5}, {1, 1, 1}, TColor{0x3038D0});
    ball->SetSlices(60);
    ball->SetStacks(60);
    ball->SetSmooth(true);
    AddSolid<TZEPDodecahedron>(&scene, {2, -0.1, 0.55}, {1.1, 1.1, 1.1}, TColor{0x60B850});
    auto* turntable = Add<TZEPObject>(&scene);
    turntable->XForm()->Translate()->SetData(0.1, 0.4, 1.73);
    turntable->XForm()->Rotate()->SetData(0, 0, 30);
    AddKnot(turntable);
    AddLamp(&scene, {2.5, -2.2, 3.1}, TColor{0x70A4D0});
    AddLamp(&scene, {-2.6, 1.6, 3.2}, TColor{0xA88058});
    auto* actor = Add<TZEPActor>(&scene);
    QObject::connect(actor, &TZEPActor::OnAction, [turntable](TZEPObject*, double seconds) {
        turntable->XForm()->Rotate()->SetData(0, 0, std::fmod(seconds * 30, 360));
    });
    scene.SetAnimation(true);

    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(2.2, -6.8, 2.6);
    camera->Target()->SetData(0.1, 0.4, 1.35);
    return ShowScene(*camera, QApplication::arguments());
}
