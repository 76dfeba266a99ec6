#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <array>
#include <cmath>
#include <random>

using namespace ZEP;

namespace {

/// Shows a third of its colour where the sun does not shine.
void Paint(TZEPObject* object, TColor color) {
    object->SetColor(color);
    const QColor dark = ToQColor(color).darker(300);
    object->Material()->FrontFace()->SetAmbient(FromQColor(dark));
}

double Hill(double x, double y) {
    return 1.2 * std::sin(0.22 * x + 0.5) * std::cos(0.17 * y) + 0.35 * std::sin(0.6 * y - 0.4 * x);
}

void AddGround(TZEPScene* scene) {
    auto* ground = Add<TZEPHeightField>(scene);
    ground->SetMinX(-30);
    ground->SetMaxX(30);
    ground->SetMinY(-30);
    ground->SetMaxY(30);
    ground->SetSlicesX(150);
    ground->SetSlicesY(150);
    ground->SetSmooth(true);
    ground->SetOnHeight(Hill);
    Paint(ground, TColor{0x58A088});
    ground->SetReceiveShadows(true);
}

/// A part of a tree: flat faces, each wholly in the light or in the shadow of its own solid.
template <class T>
T* AddPart(TZEPObject* tree, double height, const TGLArrayd3& size, TColor color) {
    auto* part = Add<T>(tree);
    part->XForm()->Translate()->SetData(0, 0, height);
    part->XForm()->Scale()->SetData(size);
    Paint(part, color);
    part->SetCastShadows(true);
    part->SetReceiveShadows(true);
    return part;
}

void AddCone(TZEPObject* tree, double height, const TGLArrayd3& size, double top, TColor color) {
    auto* cone = AddPart<TZEPCone>(tree, height, size, color);
    cone->SetRadius1(top);
    cone->SetRadius2(0.5);
}

/// A tree to be shown by proxies alone: these do not ask whether it is visible.
TZEPObject* AddTree(TZEPScene* scene) {
    auto* tree = Add<TZEPObject>(scene);
    tree->SetVisible(false);
    AddCone(tree, 0.4, {0.25, 0.25, 0.9}, 0.35, TColor{0x304860});
    return tree;
}

TZEPObject* AddFir(TZEPScene* scene) {
    TZEPObject* fir = AddTree(scene);
    for (const double k : {0.0, 1.0, 2.0})
        AddCone(fir, 1.1 + 0.65 * k, {1.5 - 0.35 * k, 1.5 - 0.35 * k, 1.1}, 0, TColor{0x486838});
    return fir;
}

TZEPObject* AddOak(TZEPScene* scene, TColor color) {
    TZEPObject* oak = AddTree(scene);
    AddPart<TZEPIcosahedron>(oak, 1.5, {1.5, 1.5, 1.5}, color);
    AddPart<TZEPIcosahedron>(oak, 2.1, {1, 1, 1}, color)->XForm()->Rotate()->SetData(40, 10, 30);
    return oak;
}

/// Three trees, shown hundreds of times about a clearing.
void AddForest(TZEPScene* scene) {
    TZEPObject* fir = AddFir(scene); // every second tree is one
    const std::array trees{fir, fir, AddOak(scene, TColor{0x50A080}),
                           AddOak(scene, TColor{0x4090D0})};
    std::mt19937 random(5);
    const auto between = [&random](double least, double most) {
        return least + (most - least) * double(random()) / double(std::mt19937::max());
    };
    for (int i = 0; i < 24 * 24; ++i) {
        const double x = 2.4 * (i % 24 - 12) + between(-0.8, 0.8);
        const double y = 2.4 * (i / 24 - 10) + between(-0.8, 0.8);
        if (std::hypot(x - 1, y + 15) < 5.5) continue;
        const double size = between(0.7, 1.3);
        auto* proxy = Add<TZEPProxy>(scene);
        proxy->SetProxy(trees[random() % trees.size()]);
        proxy->XForm()->Translate()->SetData(x, y, Hill(x, y));
        proxy->XForm()->Rotate()->SetData(between(-4, 4), between(-4, 4), between(0, 360));
        proxy->XForm()->Scale()->SetData(size, size, size * between(0.9, 1.2));
    }
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetBackgroundColor(TColor{0xE8D0B0});
    scene.SetSceneAmbientColor(TColor{0xFFD8C0});
    scene.SetFShadows(true);
    scene.SetFirstPasses(true); // drops the shadows of the last frame

    AddGround(&scene);
    AddForest(&scene);
    auto* sun = Add<TZEPLight>(&scene); // at infinity: from far away its shadows are parallel
    sun->Position()->SetData(-900, -300, 620);
    sun->SetColor(TColor{0x98B4C0});
    sun->SetCastShadows(true);

    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(3, -28.5, 9.5);
    camera->Target()->SetData(1, -8, 1);
    return ShowScene(*camera, QApplication::arguments());
}
