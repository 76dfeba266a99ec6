#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/widgets/SceneModel.h>
#include <zep/widgets/SceneSelection.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QTreeView>

using namespace ZEP;

namespace {

template <class T>
T* AddPart(TZEPObject* group, const char* ident, double x, TColor color) {
    auto* part = Add<T>(group);
    part->SetIdent(QLatin1String(ident));
    part->SetColor(color);
    part->SetSmooth(true);
    part->XForm()->Translate()->SetData(x, 0, 0.5);
    return part;
}

/// \return one of them
TZEPObject* AddParts(TZEPScene* scene) {
    auto* wheels = Add<TZEPNode>(scene);
    wheels->SetIdent(QStringLiteral("Wheels"));
    AddPart<TZEPSphere>(wheels, "front", -1.5, TColor{0xC8A040});
    AddPart<TZEPSphere>(wheels, "spare", 3, TColor{0x70C050})->SetVisible(false);
    AddPart<TZEPBox>(scene, "Body", 0, TColor{0x5060E0})->XForm()->Scale()->SetData(1.8, 1, 1);
    return AddPart<TZEPSphere>(wheels, "back", 1.5, TColor{0xC8A040});
}

} // namespace

/// A scene in a panel, and its objects as a tree beside it: boxes show and hide, and what is
/// selected in the one is selected in the other.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZEPScene scene;
    scene.SetSceneAmbientColor(TColor{0x303030});
    TZEPObject* part = AddParts(&scene);
    Add<TZEPHeadlight>(&scene);
    auto* camera = Add<TZEPCamera>(&scene);
    LookFrom(*camera, TDirection::Iso);
    FitCamera(*camera, scene, 1);

    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    auto* tree = new QTreeView;
    auto* panel = new TZEPPanel;
    layout->addWidget(tree, 2);
    layout->addWidget(panel, 3);
    panel->SetCamera(camera);
    panel->PanelControl()->SetMouseLeft(mmSelect);
    panel->PanelControl()->SetMouseRight(mmOrbit);

    auto* model = new TZEPSceneModel(tree);
    model->SetRoot(&scene);
    tree->setModel(model);
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree->setUniformRowHeights(true); // a million rows are not measured one by one
    tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tree->expandAll();
    new TZEPSceneSelection(model, tree->selectionModel(), tree);
    part->SetSelected(true);

    window.resize(960, 560);
    return ShowWindow(window, QApplication::arguments());
}
