#pragma once

#include "viewer/drawing/PlayedPath.h"
#include <zep/converters/rs274d/ToolPlayback.h>
#include <zep/view/Actor.h>

#include <QObject>
#include <QPointer>

#include <optional>

class QAction;
class QLabel;
class QMainWindow;
class QMenu;
class QToolBar;

namespace ZEP {

class TPlaySpeed;
class TSourceDock;
class TTimeSlider;
class TZEPScene;

/// Runs through the moves of a program with the scene's animation: a menu, and a tool bar with the
/// time and the speed. The move that it has come to is selected, and what is selected is where it
/// goes on from. While it plays, and once it was stepped, the view shows the tool, and what is to
/// come is faint; with nothing selected the path is as it was.
class TPlayback : public QObject {
    Q_OBJECT
public:
    struct TPlace {
        int Move;
        double Part; ///< 0 to 1
    };

    /// \param window  owns this
    TPlayback(QMainWindow* window, TZEPScene* scene, TSourceDock* source);

    /// From the selected move on; from the first one where the program is at its end.
    void SetPlaying(bool playing);
    [[nodiscard]] bool IsPlaying() const { return m_player.IsPlaying(); }
    /// Where it is, what moves it, and how fast.
    [[nodiscard]] TToolPlayback& Player() { return m_player; }
    /// To the first move of a line, or of the next line that has one, which is told.
    void GoToLine(int line);
    /// The times of the program are others, by another rapid rate.
    void TakeTimes();
    /// Of the selected move, for the status line; empty without one, and without a path.
    [[nodiscard]] QString Status() const;
    /// The move of the path that is selected, and how much of it is done; nothing without one, and
    /// without a path.
    [[nodiscard]] std::optional<TPlace> Place() const;
    /// "Program": what else a program offers goes there.
    [[nodiscard]] QMenu* Menu() const { return m_menu; }

Q_SIGNALS:
    /// The status, or the place, is another one.
    void StatusChanged();
    /// For the user, for a while.
    void Told(const QString& message);

private:
    void AddActions();
    void AddView(QMenu& menu, const QString& text, void (TPlayedPath::*show)(bool));
    void MakeBar(QMainWindow& window);
    void TakeProgram();
    void Step(int by);
    void StepTool(bool forward);
    void GoTo(int move);
    void AskForLine();
    void Tick(double time);
    void Follow();
    void SetShown(bool shown);
    void Show();
    void ShowTime();
    void ShowPlaying(bool playing);
    /// The number of the object that the playback's move is, among those of the program.
    [[nodiscard]] int Object() const;
    [[nodiscard]] QString TipAt(double place) const;

    QMainWindow* m_window;
    QMenu* m_menu;
    QPointer<TZEPScene> m_scene;
    TSourceDock* m_source;
    TToolPlayback m_player;
    TPlayedPath m_view;
    TZEPActor m_actor;
    TTimeSlider* m_slider;
    TPlaySpeed* m_speed;
    QLabel* m_time;
    QToolBar* m_bar = nullptr;
    QAction* m_play = nullptr;
    std::optional<double> m_lastTime; ///< of the tick before, in seconds
    bool m_isShown = false;           ///< in the view
    bool m_hasProgram = false;
};

} // namespace ZEP
