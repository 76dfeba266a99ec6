#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <algorithm>
#include <cmath>

using namespace ZEP;

namespace {

/// sin r / r, the picture of a drop's ripple.
double Ripple(double x, double y) {
    const double r = std::hypot(x, y);
    return r == 0 ? 3 : 3 * std::sin(r) / r;
}

/// From blue in the valleys over green to red on the peak.
TColor ColorOf(double height) {
    const double part = std::clamp((height + 0.7) / 2.5, 0.0, 1.0);
    return FromQColor(QColor::fromHsvF(static_cast<float>(0.65 * (1 - part)), 0.75F, 0.9F));
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetBackgroundColor(TColor{0x302820});

    auto* field = Add<TZEPHeightField>(&scene);
    field->SetMinX(-10);
    field->SetMaxX(10);
    field->SetMinY(-10);
    field->SetMaxY(10);
    field->SetSlicesX(100);
    field->SetSlicesY(100);
    field->SetSmooth(true);
    field->SetOnHeight(Ripple);
    field->SetOnColor(ColorOf);
    field->SetColorVertexes(true);

    auto* sun = Add<TZEPLight>(&scene);
    sun->SetColor(TColor{0x707070});
    sun->Position()->SetData(-2, 1, 2);
    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(8, -20, 14);
    camera->FitTo(field->GetMin(), field->GetMax(), 1.6);
    return ShowScene(*camera, QApplication::arguments());
}
