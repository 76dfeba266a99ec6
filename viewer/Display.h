#pragma once

#include <QString>

#include <functional>

namespace ZEP {

/// The environment variables that choose where windows appear.
struct TDisplayEnvironment {
    QString Display;        ///< DISPLAY: the X server
    QString WaylandDisplay; ///< WAYLAND_DISPLAY
    QString Platform;       ///< QT_QPA_PLATFORM: what the user chose

    [[nodiscard]] static TDisplayEnvironment Current();
};

/// Why no window can be opened, and what to do about it; empty when one can. Qt ends the process
/// where it finds no display, so this is asked before there is a `QApplication`.
/// \param reaches  connects to the X server of the environment
[[nodiscard]] QString DisplayProblem(const TDisplayEnvironment& environment,
                                     const std::function<bool()>& reaches);
[[nodiscard]] QString DisplayProblem();

/// Views are drawn through GLX: under Wayland the program runs on XWayland, unless the user chose.
void ChoosePlatform();

} // namespace ZEP
