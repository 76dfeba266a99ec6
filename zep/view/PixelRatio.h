#pragma once

#include <QGuiApplication>

namespace ZEP {

/// Device pixels for each pixel, as the application has it.
[[nodiscard]] inline double ApplicationPixelRatio() {
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return application ? application->devicePixelRatio() : 1;
}

} // namespace ZEP
