#pragma once

#include "tests/view/NativeWindow.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/widgets/SceneModel.h>

#include <QPointer>
#include <QVBoxLayout>

namespace ZEP {

/// A window that shows a scene with something of everything that has events. Whatever is freed,
/// the rest goes on: nothing here owns anything but by Qt's and the library's rules.
struct TWorld {
    TWorld() {
        Library = new TZEPMaterialLibrary;
        Library->Materials()->Add()->Material()->SetTransparency(0.5F);
        Scene = new TZEPScene;
        Scene->SetMaterialLibrary(Library);
        Scene->SetFirstPasses(true);
        Scene->SetFShadows(true);
        Scene->SetReflections(true);
        Camera = Add<TZEPCamera>(Scene);
        Camera->Position()->SetData(0, -8, 3);
        Light = Add<TZEPLight>(Scene);
        Light->Position()->SetData(5, -20, 30);
        Light->SetCastShadows(true);
        Group = Add<TZEPActor>(Scene);
        AddFrontSolids();
        AddBehind();
        Model = new TZEPSceneModel;
        Model->SetRoot(Scene);
        Window = new QWidget;
        Panel = new TZEPPanel(Window);
        Panel->SetAlign(TZEPPanel::alClient);
        Panel->SetCamera(Camera);
        Panel->PanelControl()->SetMouseLeft(mmSelect);
        Panel->PanelControl()->SetMouseRight(mmOrbit);
        Panel->PanelControl()->SetMouseWheel(mmDolly);
        Window->resize(90, 70);
        Window->show();
    }
    ~TWorld() {
        delete Model;
        delete Window;
        delete Scene;
        delete Library;
    }
    TWorld(const TWorld&) = delete;
    TWorld& operator=(const TWorld&) = delete;

    void AddFrontSolids() {
        Box = Add<TZEPBox>(Group);
        Box->SetShadows(0, true);
        Below = Add<TZEPSphere>(Box);
        auto* mirror = Add<TZEPPolygon>(Group);
        for (const TGLArrayd3& corner : {TGLArrayd3{-2, 1, -2}, {2, 1, -2}, {2, 1, 2}, {-2, 1, 2}})
            mirror->Vertexes()->Add()->SetPoint(corner);
        mirror->SetReflection(0.5);
        mirror->SetShadows(1, true);
        User = Add<TZEPUser>(Group);
        User->SetShadows(0, true);
        User->SetShadows(1, true);
        Field = Add<TZEPHeightField>(Group);
        auto* carved = Add<TZEPLogicalObject>(Group);
        carved->SetOperation(loSUB);
        Add<TZEPSphere>(carved);
        Add<TZEPBox>(carved);
    }

    void AddBehind() {
        Batch = Add<TZEPBatch>(Scene);
        auto* layer = Add<TZEPActor>(Batch);
        Line = Add<TZEPLine>(layer);
        Line->P2()->SetData(3, 0, 3);
        Add<TZEPUser>(layer)->SetOnDraw(nullptr);
        Add<TZEPProxy>(Scene)->SetProxy(Group);
    }

    QPointer<QWidget> Window;
    QPointer<TZEPPanel> Panel;
    QPointer<TZEPScene> Scene;
    QPointer<TZEPCamera> Camera;
    QPointer<TZEPLight> Light;
    QPointer<TZEPMaterialLibrary> Library;
    QPointer<TZEPActor> Group;
    QPointer<TZEPBox> Box;
    QPointer<TZEPSphere> Below;
    QPointer<TZEPUser> User;
    QPointer<TZEPHeightField> Field;
    QPointer<TZEPBatch> Batch;
    QPointer<TZEPLine> Line;
    QPointer<TZEPSceneModel> Model;
};

} // namespace ZEP
