#include "viewer/Display.h"

#include <QtGlobal>

#include <X11/Xlib.h>

namespace ZEP {

namespace {

const QString Advice =
    QStringLiteral("Start it as \"xvfb-run zepview ...\", set DISPLAY, or log in with \"ssh -X\". "
                   "\"zepview --info FILE\" needs no display.");

} // namespace

TDisplayEnvironment TDisplayEnvironment::Current() {
    return {qEnvironmentVariable("DISPLAY"), qEnvironmentVariable("WAYLAND_DISPLAY"),
            qEnvironmentVariable("QT_QPA_PLATFORM")};
}

QString DisplayProblem(const TDisplayEnvironment& environment,
                       const std::function<bool()>& reaches) {
    if (!environment.Platform.isEmpty() && !environment.Platform.startsWith(QStringLiteral("xcb")))
        return QStringLiteral("The view is drawn through X11, but QT_QPA_PLATFORM is \"%1\". Unset "
                              "it or set it to \"xcb\".")
            .arg(environment.Platform);
    if (environment.Display.isEmpty() && !environment.WaylandDisplay.isEmpty())
        return QStringLiteral("Under Wayland the view is drawn through XWayland, which is not "
                              "there: DISPLAY is not set. Install or enable XWayland. ") +
               Advice;
    if (environment.Display.isEmpty())
        return QStringLiteral("There is no display: DISPLAY is not set. ") + Advice;
    if (!reaches())
        return QStringLiteral("The display \"%1\" cannot be reached. ").arg(environment.Display) +
               Advice;
    return {};
}

TDisplayConnection::TDisplayConnection() : m_display(XOpenDisplay(nullptr)) {}

TDisplayConnection::~TDisplayConnection() {
    if (m_display) XCloseDisplay(static_cast<::Display*>(m_display));
}

void ChoosePlatform() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
}

} // namespace ZEP
