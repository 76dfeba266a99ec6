#pragma once

#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <QApplication>
#include <QPainter>

#include <functional>

namespace ZEP {

/// A window with its panels as one picture.
inline QImage Grabbed(QWidget& window) {
    QImage picture = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    picture.setDevicePixelRatio(1);
    QPainter painter(&picture);
    for (TZEPPanel* panel : window.findChildren<TZEPPanel*>())
        painter.drawImage(panel->mapTo(&window, QPoint()) * window.devicePixelRatioF(),
                          panel->GrabFrame());
    return picture;
}

/// Shows a window until it is closed; `--picture FILE` writes its picture instead.
inline int ShowWindow(QWidget& window, const QStringList& arguments) {
    window.show();
    const qsizetype option = arguments.indexOf(QStringLiteral("--picture"));
    if (option < 1 || option + 1 >= arguments.size()) return QApplication::exec();
    QApplication::processEvents();
    return Grabbed(window).save(arguments[option + 1]) ? 0 : 1;
}

/// Shows a scene in a window of its own. A drag orbits or, with the right button, shifts the view;
/// the wheel brings it nearer. On a picture nothing has moved yet.
/// \param prepare  puts more into the panel
inline int ShowScene(TZEPCamera& camera, const QStringList& arguments,
                     const std::function<void(TZEPPanel*)>& prepare = {}) {
    QWidget window;
    auto* panel = new TZEPPanel(&window);
    panel->SetCamera(&camera);
    camera.SetExtended(true);
    panel->SetAlign(TZEPPanel::alClient);
    panel->PanelControl()->SetMouseLeft(mmOrbit);
    panel->PanelControl()->SetMouseRight(mmTruck);
    panel->PanelControl()->SetMouseWheel(mmDolly);
    if (arguments.contains(QStringLiteral("--picture"))) camera.Scene()->SetAnimation(false);
    if (prepare) prepare(panel);
    window.resize(960, 600);
    return ShowWindow(window, arguments);
}

} // namespace ZEP
