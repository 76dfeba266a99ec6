#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

TZEPDimension* AddDimension(TZEPScene* scene, TZEPDimensionKind kind,
                            const std::vector<TGLArrayd3>& points) {
    auto* dimension = Add<TZEPDimension>(scene);
    dimension->SetKind(kind);
    dimension->SetSuffix(QStringLiteral("mm"));
    dimension->SetColor(TColor{0x20A5FF});
    dimension->SetPoints(points);
    return dimension;
}

} // namespace

/// A plate with its dimensions, to which clicks add distances: at its corners, its edges and the
/// centre of its bore.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    auto* plate = Add<TZEPBox>(&scene);
    plate->XForm()->Scale()->SetData(80, 50, 10);
    plate->SetColor(TColor{0xA08060});
    auto* rim = Add<TZEPCircle>(&scene);
    rim->XForm()->Scale()->SetData(24, 24, 1);
    rim->XForm()->Translate()->SetData(10, 0, 5.1);
    rim->SetSegments(90);
    AddDimension(&scene, dmDistance, {{-40, -25, 5}, {40, -25, 5}});
    AddDimension(&scene, dmRadius, {{10, 0, 5.1}, {10, 12, 5.1}});
    AddDimension(&scene, dmAngle, {{-40, 25, 5}, {-40, -25, 5}, {10, 0, 5.1}});
    scene.SetSceneAmbientColor(TColor{0x404040});
    Add<TZEPHeadlight>(&scene);
    auto* camera = Add<TZEPCamera>(&scene);
    LookFrom(*camera, TDirection::Iso);
    FitCamera(*camera, scene, 960.0 / 600);
    return ShowScene(*camera, QApplication::arguments(), [](TZEPPanel* panel) {
        auto* tool = new TZEPMeasureTool(panel);
        QObject::connect(tool, &TZEPMeasureTool::Told, panel->window(), &QWidget::setWindowTitle);
        tool->SetSuffix(QStringLiteral("mm"));
        tool->Start(dmDistance);
    });
}
