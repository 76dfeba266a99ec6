#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

/// Five solids to a row. Each stands once in a colour and once, in front of that, with a picture.
class Gallery {
public:
    explicit Gallery(TZEPScene* scene) : m_scene(scene) {}

    template <class T, class Set>
    void Show(const QString& name, TColor color, Set set) {
        const double x = 1.9 * (m_count % 5);
        const double y = -4 * (m_count / 5);
        set(Plain(Place<T>(x, y), color));
        set(Textured(Place<T>(x + 0.3, y - 1.3)));
        Title(name, x - 0.35, y - 2.1);
        ++m_count;
    }

private:
    template <class T>
    T* Place(double x, double y) {
        T* solid = Add<T>(m_scene);
        solid->XForm()->Translate()->SetData(x, y, 0);
        solid->XForm()->Rotate()->SetData(0, 0, 20);
        return solid;
    }
    template <class T>
    static T& Plain(T* solid, TColor color) {
        solid->SetColor(color);
        TZEPFaceMaterial* face = solid->Material()->FrontFace();
        face->SetAmbient(clBlack);
        face->SetSpecular(clGray);
        face->SetShininess(40);
        return *solid;
    }
    template <class T>
    T& Textured(T* solid) const {
        const char* names[]{"bricks.jpg", "checkers.png", "wood.bmp"};
        TZEPMaterial* material = solid->Material();
        material->FrontFace()->SetAmbient(clBlack);
        material->FrontFace()->SetDiffuse(clWhite);
        material->Texture()->Image()->LoadFromFile(QStringLiteral(ZEP_PICTURES "/") +
                                                   QLatin1String(names[m_count % 3]));
        return *solid;
    }
    void Title(const QString& text, double x, double y) {
        auto* label = Add<TZEPLabel>(m_scene);
        label->SetCaption(text);
        label->Font()->SetName(QStringLiteral("DejaVu Sans"));
        label->XForm()->Translate()->SetData(x, y, -0.5);
        label->XForm()->Rotate()->SetData(50, 0, 0);
        label->XForm()->Scale()->SetData(0.15, 0.15, 0.15);
    }

    TZEPScene* m_scene;
    int m_count = 0;
};

void Fill(Gallery& gallery) {
    const auto smooth = [](auto& solid) { solid.SetSmooth(true); };
    const auto same = [](auto&) {};
    gallery.Show<TZEPBox>(QStringLiteral("Box"), TColor{0x4060E0}, same);
    gallery.Show<TZEPSphere>(QStringLiteral("Sphere"), TColor{0x50B050}, smooth);
    gallery.Show<TZEPCone>(QStringLiteral("Cone"), TColor{0xD08030}, [](TZEPCone& cone) {
        cone.SetRadius1(0.15);
        cone.SetRadius2(0.5);
        cone.SetSlices(32);
        cone.SetSmooth(true);
    });
    gallery.Show<TZEPCone>(QStringLiteral("Cylinder"), TColor{0x90C040}, [](TZEPCone& cylinder) {
        cylinder.SetRadius1(0.4);
        cylinder.SetRadius2(0.4);
        cylinder.SetSlices(32);
        cylinder.SetSmooth(true);
    });
    gallery.Show<TZEPTorus>(QStringLiteral("Torus"), TColor{0x30C0D0}, [](TZEPTorus& torus) {
        torus.SetRadius1(0.38);
        torus.SetRadius2(0.16);
        torus.SetSides(20);
        torus.SetRings(40);
        torus.SetSmooth(true);
        torus.XForm()->Rotate()->SetData(60, 20, 0);
    });
    gallery.Show<TZEPTeapot>(QStringLiteral("Teapot"), TColor{0xC0A0E0}, [](TZEPTeapot& teapot) {
        teapot.SetSegments(8);
        teapot.XForm()->Scale()->SetData(0.85, 0.85, 0.85);
    });
    gallery.Show<TZEPLegendBox>(QStringLiteral("Legend box"), TColor{0xB080D0},
                                [](auto& frame) { frame.XForm()->Scale()->SetData(1, 0.25, 0.7); });
    gallery.Show<TZEPOctahedron>(QStringLiteral("Octahedron"), TColor{0x8080F0}, same);
    gallery.Show<TZEPIcosahedron>(QStringLiteral("Icosahedron"), TColor{0x70D0A0}, same);
    gallery.Show<TZEPDodecahedron>(QStringLiteral("Dodecahedron"), TColor{0xE0B060}, same);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetBackgroundColor(TColor{0x302820});
    Gallery gallery(&scene);
    Fill(gallery);

    auto* sun = Add<TZEPLight>(&scene);
    sun->SetColor(TColor{0xD0E0F0});
    sun->Position()->SetData(-2, -3, 5);
    auto* sky = Add<TZEPLight>(&scene);
    sky->SetColor(TColor{0x504030});
    sky->Position()->SetData(4, -1, 1);
    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(3.8, -14, 13);
    camera->Target()->SetData(3.8, -2.9, 0);
    camera->FitTo({-0.8, -6.4, -0.5}, {8.6, 0.6, 0.5}, 1.6);
    return ShowScene(*camera, QApplication::arguments());
}
