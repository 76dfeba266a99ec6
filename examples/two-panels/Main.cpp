#include <zep/objects/Line.h>
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Actor.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QSplitter>
#include <QStatusBar>

#include <cmath>
#include <numbers>

using namespace ZEP;

namespace {

TZEPLine* AddLine(TZEPObject* parent, const TGLArrayd3& from, const TGLArrayd3& to, TColor color) {
    auto* line = Add<TZEPLine>(parent);
    line->P1()->SetData(from);
    line->P2()->SetData(to);
    line->SetColor(color);
    line->SetWidth(2);
    return line;
}

/// A vase of straight lines, the upper circle turned against the lower one.
void AddVase(TZEPObject* parent) {
    constexpr int Count = 36;
    const auto at = [](int i, double z) {
        const double angle = 2 * std::numbers::pi * i / Count;
        return TGLArrayd3{2 * std::cos(angle), 2 * std::sin(angle), z};
    };
    for (int i = 0; i < Count; ++i) {
        AddLine(parent, at(i, 0), at(i + 12, 5), clYellow)
            ->SetIdent(QStringLiteral("stave %1").arg(i));
        AddLine(parent, at(i, 0), at(i + 1, 0), clAqua)->SetIdent(QStringLiteral("foot %1").arg(i));
        AddLine(parent, at(i, 5), at(i + 1, 5), clAqua)->SetIdent(QStringLiteral("rim %1").arg(i));
    }
}

TZEPCamera* AddCamera(TZEPScene& scene, const TGLArrayd3& eye, bool parallel) {
    auto* camera = Add<TZEPCamera>(&scene);
    camera->SetExtended(true);
    camera->SetOrthographic(parallel);
    camera->Position()->SetData(eye);
    camera->FitTo({-2, -2, 0}, {2, 2, 5}, 1);
    return camera;
}

TZEPPanel* AddPanel(QSplitter& splitter, TZEPCamera* camera, TZEPMouseMode left) {
    auto* panel = new TZEPPanel(&splitter);
    panel->SetCamera(camera);
    panel->PanelControl()->SetMouseLeft(left);
    panel->PanelControl()->SetMouseRight(mmPan);
    panel->PanelControl()->SetMouseWheel(mmDolly);
    return panel;
}

} // namespace

/// One scene in two panels: on the left a drag orbits, on the right a click or a rectangle selects.
/// An actor turns the vase, but for while a button is held.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);

    TZEPScene scene;
    scene.SetBackgroundColor(clNavy);
    scene.SetSceneAmbientColor(clWhite);
    auto* vase = Add<TZEPObject>(&scene);
    AddVase(vase);
    auto* actor = Add<TZEPActor>(&scene);
    QObject::connect(actor, &TZEPActor::OnAction, [vase](TZEPObject*, double seconds) {
        vase->XForm()->Rotate()->SetData(0, 0, std::fmod(seconds * 20, 360));
    });

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Two panels"));
    auto* splitter = new QSplitter;
    window.setCentralWidget(splitter);
    AddPanel(*splitter, AddCamera(scene, {6, -9, 6}, false), mmOrbit);
    TZEPPanel* plan = AddPanel(*splitter, AddCamera(scene, {0, -9, 2}, true), mmSelect);
    QObject::connect(plan, &TZEPPanel::AfterSelect, [&] {
        QStringList names;
        for (int i = 0; i < vase->GetItemsCount(); ++i)
            if (vase->GetItem(i)->Selected()) names << vase->GetItem(i)->Ident();
        window.statusBar()->showMessage(names.isEmpty() ? QStringLiteral("Nothing is selected.")
                                                        : names.join(QStringLiteral(", ")));
    });
    window.statusBar()->showMessage(
        QStringLiteral("Left: drag to orbit. Right: click or drag to select."));
    window.resize(1000, 560);
    window.show();
    scene.SetAnimation(true);
    const int result = QApplication::exec();
    // The panels let go of their cameras before the scene takes these away.
    delete window.takeCentralWidget();
    return result;
}
