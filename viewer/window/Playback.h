#pragma once

#include <zep/view/Actor.h>

#include <QObject>

#include <optional>

class QAction;
class QMainWindow;
class QSlider;
class QToolBar;

namespace ZEP {

class TSourceDock;
class TZEPScene;

/// Runs through the moves of a program with the scene's animation: a menu, and a tool bar with a
/// slider and the speed.
class TPlayback : public QObject {
    Q_OBJECT
public:
    /// \param window  owns this
    TPlayback(QMainWindow* window, TZEPScene* scene, TSourceDock* source);

    /// From the selected move on; from the first one where the program is at its end.
    void SetPlaying(bool playing);
    [[nodiscard]] bool IsPlaying() const { return m_playing; }
    /// \param movesPerSecond  above 0
    void SetSpeed(double movesPerSecond) { m_speed = movesPerSecond; }

private:
    void AddActions(QMainWindow& window);
    void Step(int by);
    void Tick(double time);
    void Follow();

    TZEPScene* m_scene;
    TSourceDock* m_source;
    TZEPActor m_actor;
    QSlider* m_slider;
    QToolBar* m_bar = nullptr;
    QAction* m_play = nullptr;
    std::optional<double> m_lastTime; ///< of the tick before, in seconds
    double m_place = 0;               ///< the move, with the part of it that is done
    double m_speed = 20;
    bool m_playing = false;
    bool m_hasProgram = false;
};

} // namespace ZEP
