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

/// A connection to the X server of the environment. A server may begin anew, and with it end all
/// that others start meanwhile, when its last connection is closed: this one is kept until Qt has
/// one of its own.
class TDisplayConnection {
public:
    TDisplayConnection();
    ~TDisplayConnection();
    Q_DISABLE_COPY_MOVE(TDisplayConnection)

    [[nodiscard]] bool IsOpen() const { return m_display != nullptr; }

private:
    void* m_display; ///< as X11 knows it
};

/// Views are drawn through GLX: under Wayland the program runs on XWayland, unless the user chose.
void ChoosePlatform();

} // namespace ZEP
