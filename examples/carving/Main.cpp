#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <array>
#include <cmath>

using namespace ZEP;

namespace {

/// A cut shows the inner side of what cuts: both sides need their looks.
void Polish(TZEPObject* object, TColor color) {
    object->SetColor(color);
    for (TZEPFaceMaterial* face :
         {object->Material()->FrontFace(), object->Material()->BackFace()}) {
        face->SetAmbient(TColor{0x202020});
        face->SetSpecular(TColor{0x909090});
        face->SetShininess(50);
    }
}

/// A cube and what stands in it, its first child, as one solid.
template <class T>
T* AddCarved(TZEPObject* parent, TZEPLogicalOperation operation, TColor tool, TColor block) {
    auto* carved = Add<TZEPLogicalObject>(parent);
    carved->SetOperation(operation);
    auto* first = Add<T>(carved);
    first->SetSmooth(true);
    first->SetSlices(96);
    first->SetStacks(48);
    Polish(first, tool);
    auto* cube = Add<TZEPBox>(carved);
    for (const int axis : {0, 1, 2}) cube->SetSlices(axis, 24);
    Polish(cube, block);
    return first;
}

/// A mirror below all.
void AddFloor(TZEPScene* scene) {
    auto* floor = Add<TZEPHeightField>(scene);
    floor->SetSlicesX(100);
    floor->SetSlicesY(100);
    floor->SetSmooth(true);
    floor->XForm()->Translate()->SetData(0, 0, -1.05);
    floor->XForm()->Scale()->SetData(24, 24, 1);
    floor->SetColor(TColor{0x302820});
    floor->SetReflection(0.4);
}

void AddLamp(TZEPScene* scene, const TGLArrayd3& place, TColor color) {
    auto* lamp = Add<TZEPLight>(scene);
    lamp->SetDirectional(true); // not at infinity
    lamp->Position()->SetData(place);
    lamp->SetColor(color);
}

} // namespace

/// A cube without a ball, a cube that a cylinder drills, and what a cube and a ball have in common.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetBackgroundColor(TColor{0x382E28});
    scene.SetReflections(true);
    scene.SetFirstPasses(true); // what a mirror shows has to be there before the mirror

    AddFloor(&scene);
    std::array<TZEPObject*, 3> tables{};
    for (std::size_t i = 0; i < 3; ++i) {
        tables[i] = Add<TZEPObject>(&scene);
        tables[i]->XForm()->Translate()->SetData(2.4 * (double(i) - 1), 0, 0);
        tables[i]->XForm()->Scale()->SetData(1.5, 1.5, 1.5);
    }
    auto* hollow = AddCarved<TZEPSphere>(tables[0], loSUB, TColor{0x3090F0}, TColor{0xD0B080});
    auto* drill = AddCarved<TZEPCone>(tables[1], loSUB, TColor{0x60C0F8}, TColor{0x509838});
    auto* die = AddCarved<TZEPSphere>(tables[2], loAND, TColor{0x3040D0}, TColor{0xC8D8E0});
    drill->SetRadius1(0.4);
    drill->SetRadius2(0.2);
    const auto move = [=](double seconds) {
        const double wave = std::sin(seconds);
        hollow->XForm()->Scale()->SetData(1.25 + 0.1 * wave, 1.25 + 0.1 * wave, 1.25 + 0.1 * wave);
        die->XForm()->Scale()->SetData(1.3 + 0.1 * wave, 1.3 + 0.1 * wave, 1.3 + 0.1 * wave);
        drill->XForm()->Translate()->SetData(0, 0, 0.2 + 0.4 * wave);
        for (TZEPObject* table : tables)
            table->XForm()->Rotate()->SetData(0, 0, std::fmod(20 + 25 * seconds, 360));
    };
    move(0);
    auto* actor = Add<TZEPActor>(&scene);
    QObject::connect(actor, &TZEPActor::OnAction,
                     [move](TZEPObject*, double seconds) { move(seconds); });
    scene.SetAnimation(true);

    AddLamp(&scene, {-4, -6, 6}, TColor{0xB0B8B8});
    AddLamp(&scene, {5, -2, 4}, TColor{0x505860});
    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(0.2, -6, 3.6);
    camera->Target()->SetData(0.08, 0, -0.2);
    return ShowScene(*camera, QApplication::arguments());
}
