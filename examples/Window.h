#pragma once

#include "scene/Scene.h"
#include "view/Camera.h"
#include "view/Panel.h"

#include <QApplication>

namespace ZEP {

/// Shows a scene in a window until that is closed; `--picture FILE` writes the picture of the first
/// frame instead.
inline int ShowScene(TZEPCamera& camera, const QStringList& arguments) {
    TZEPPanel panel;
    panel.SetCamera(&camera);
    panel.resize(960, 600);
    const qsizetype option = arguments.indexOf(QStringLiteral("--picture"));
    if (option > 0 && option + 1 < arguments.size())
        return panel.GrabFrame().save(arguments[option + 1]) ? 0 : 1;
    panel.show();
    return QApplication::exec();
}

/// A new object under `parent`.
template <class T>
T* Add(TZEPObject* parent) {
    auto* object = new T(parent);
    object->SetParentComponent(parent);
    return object;
}

} // namespace ZEP
