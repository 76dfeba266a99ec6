#include "viewer/window/Playback.h"

#include "viewer/content/Describe.h"
#include "viewer/window/PlaySpeed.h"
#include "viewer/window/SourceDock.h"
#include "viewer/window/TimeSlider.h"
#include <zep/batch/Batch.h>
#include <zep/scene/Scene.h>

#include <QInputDialog>
#include <QLabel>
#include <QLocale>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>

#include <algorithm>
#include <limits>

namespace ZEP {

namespace {

constexpr int Last = std::numeric_limits<int>::max();
constexpr double LongestTick = 0.5; // seconds: while the program stood still, so did the play

QString TimesText(const QString& present, const QString& whole, bool times) {
    return QStringLiteral(" %1 / %2 ").arg(present, whole) + (times ? "" : "moves ");
}

} // namespace

TPlayback::TPlayback(QMainWindow* window, TZEPScene* scene, TSourceDock* source)
    : QObject(window), m_window(window),
      m_menu(window->menuBar()->addMenu(QStringLiteral("&Program"))), m_scene(scene),
      m_source(source), m_view(scene), m_slider(new TTimeSlider), m_speed(new TPlaySpeed(m_player)),
      m_time(new QLabel) {
    AddActions();
    MakeBar(*window);
    m_actor.SetParentComponent(scene);
    connect(&m_actor, &TZEPActor::OnAction, this, [this](TZEPObject*, double t) { Tick(t); });
    connect(m_slider, &TTimeSlider::PlaceWanted, this, [this](double place) {
        SetShown(true);
        m_player.Seek(place * m_player.Length());
    });
    m_slider->SetTip([this](double place) { return TipAt(place); });
    connect(&m_player, &TToolPlayback::Moved, this, &TPlayback::Show);
    connect(&m_player, &TToolPlayback::PlayingChanged, this, &TPlayback::ShowPlaying);
    connect(source, &TSourceDock::ProgramChanged, this, &TPlayback::TakeProgram);
    connect(source, &TSourceDock::Moved, this, &TPlayback::Follow);
    TakeProgram();
}

void TPlayback::AddActions() {
    const auto add = [&](const QString& text, const QList<QKeySequence>& keys, auto&& call) {
        QAction* action = m_menu->addAction(text, this, call);
        action->setShortcuts(keys);
        return action;
    };
    QAction* back =
        add(QStringLiteral("&Previous move"), {Qt::Key_Up, Qt::Key_Left}, [this] { Step(-1); });
    QAction* next =
        add(QStringLiteral("&Next move"), {Qt::Key_Down, Qt::Key_Right}, [this] { Step(1); });
    add(QStringLiteral("P&revious tool"), {QKeySequence(Qt::CTRL | Qt::Key_Up)},
        [this] { StepTool(false); });
    add(QStringLiteral("Next t&ool"), {QKeySequence(Qt::CTRL | Qt::Key_Down)},
        [this] { StepTool(true); });
    add(QStringLiteral("&First move"), {QKeySequence(Qt::CTRL | Qt::Key_Home)},
        [this] { GoTo(0); });
    add(QStringLiteral("&Last move"), {QKeySequence(Qt::CTRL | Qt::Key_End)},
        [this] { GoTo(Last); });
    add(QStringLiteral("&Go to line..."), {QKeySequence(Qt::CTRL | Qt::Key_G)},
        [this] { AskForLine(); });
    m_play = m_menu->addAction(QStringLiteral("P&lay"), QKeySequence(Qt::Key_Space));
    m_play->setCheckable(true);
    connect(m_play, &QAction::toggled, this, &TPlayback::SetPlaying);
    m_menu->addSeparator();
    AddView(*m_menu, QStringLiteral("Show the tool"), &TPlayedPath::SetHasTool);
    AddView(*m_menu, QStringLiteral("What is to &come is faint"), &TPlayedPath::SetIsFaint);
    m_menu->addSeparator();
    QAction* text = m_source->toggleViewAction();
    text->setText(QStringLiteral("&Text"));
    text->setShortcut(QKeySequence(Qt::Key_F4));
    m_menu->addAction(text);
    m_bar = new QToolBar(QStringLiteral("Program"));
    m_bar->addActions({back, m_play, next});
}

void TPlayback::AddView(QMenu& menu, const QString& text, void (TPlayedPath::*show)(bool)) {
    QAction* action = menu.addAction(text);
    action->setCheckable(true);
    action->setChecked(true);
    connect(action, &QAction::toggled, this, [this, show](bool on) {
        (m_view.*show)(on);
        SetShown(m_isShown);
    });
}

void TPlayback::MakeBar(QMainWindow& window) {
    m_bar->setObjectName(QStringLiteral("ProgramBar"));
    window.addToolBar(Qt::BottomToolBarArea, m_bar);
    m_bar->addWidget(m_slider);
    m_bar->addWidget(m_time);
    m_bar->addWidget(m_speed);
}

// --- the program ---------------------------------------------------------------------------------

void TPlayback::TakeProgram() {
    const TProgram* program = m_source->Program();
    const int count = m_source->MoveCount();
    // A path whose objects are not those that are shown, since some have gone, tells nothing.
    const bool hasPath = program && program->Path && program->Path->ObjectCount() == count;
    m_isShown = false;
    m_view.SetRoot(program ? qobject_cast<TZEPBatch*>(program->Root) : nullptr);
    if (hasPath)
        m_player.SetPath(program->Path);
    else
        m_player.SetMoves(count);
    m_speed->Offer();
    TakeTimes();
    // With a program its bar comes; whether it stays is the user's choice.
    if (count == 0 || !m_hasProgram) m_bar->setVisible(count > 0);
    m_hasProgram = count > 0;
    Follow();
}

void TPlayback::TakeTimes() {
    std::vector<double> ticks;
    for (const int change : m_player.ToolChanges())
        ticks.push_back(m_player.TimeOf(change, 0) / m_player.Length());
    m_slider->SetTicks(std::move(ticks));
    ShowTime();
}

int TPlayback::Object() const {
    const TToolPath* path = m_player.Path();
    if (!path) return m_player.Move();
    // What has no object, as a dwell, is seen as the move before it.
    for (int move = m_player.Move(); move >= 0; --move)
        if (const std::optional<int> object = path->ObjectOf(move)) return *object;
    return 0;
}

// --- steps ---------------------------------------------------------------------------------------

void TPlayback::Step(int by) {
    GoTo(std::max(m_source->CurrentMove(), by < 0 ? 0 : -1) + by);
}

void TPlayback::GoTo(int move) {
    if (m_source->MoveCount() == 0) return;
    m_source->GoTo(move);
    Follow();
    SetShown(true);
}

void TPlayback::StepTool(bool forward) {
    if (m_source->MoveCount() == 0) return;
    Follow();
    m_player.SeekToolChange(forward);
    SetShown(true);
}

void TPlayback::AskForLine() {
    if (m_source->MoveCount() == 0) return;
    const QPointer<TPlayback> alive(this);
    bool isGiven = false;
    const int line = QInputDialog::getInt(m_window, QStringLiteral("Go to line"),
                                          QStringLiteral("Line of the program:"),
                                          m_source->CurrentLine(), 1, Last, 1, &isGiven);
    if (alive && isGiven) GoToLine(line);
}

void TPlayback::GoToLine(int line) {
    const std::optional<int> move = m_source->MoveFrom(line);
    if (!move) return Told(QStringLiteral("No move comes from line %1 or a later one.").arg(line));
    GoTo(*move);
    if (const int found = m_source->CurrentLine(); found != line)
        Q_EMIT Told(QStringLiteral("Line %1 makes no move; this is the next that does, line %2.")
                        .arg(line)
                        .arg(found));
}

// --- playing -------------------------------------------------------------------------------------

void TPlayback::SetPlaying(bool playing) {
    if (!playing) return m_player.Pause();
    Follow();
    m_player.Play();
    SetShown(IsPlaying());
    ShowPlaying(IsPlaying()); // there may be nothing to play
}

void TPlayback::ShowPlaying(bool playing) {
    m_lastTime.reset();
    m_play->setChecked(playing);
    if (m_scene) m_scene->SetAnimation(playing);
}

void TPlayback::Tick(double time) {
    if (!IsPlaying()) return ShowPlaying(false); // a drag has set it on again
    Follow();                                    // where the user went since
    const double passed = m_lastTime ? std::min(time - *m_lastTime, LongestTick) : 0;
    m_lastTime = time;
    m_player.Advance(passed);
}

/// What is selected is where it goes on from.
void TPlayback::Follow() {
    const int selected = m_source->CurrentMove();
    if (selected < 0) {
        if (!IsPlaying()) SetShown(false);
    } else if (selected != Object() || !m_isShown) {
        const TToolPath* path = m_player.Path();
        m_player.SeekMove(path ? path->MoveOf(selected) : selected);
    }
    ShowTime();
}

// --- what is seen --------------------------------------------------------------------------------

void TPlayback::SetShown(bool shown) {
    m_isShown = shown;
    if (!shown) m_view.Hide();
    Show();
}

void TPlayback::Show() {
    if (m_isShown && m_source->MoveCount() > 0) {
        m_view.Show(m_player, Object());
        if (m_source->CurrentMove() != Object()) m_source->GoTo(Object());
    }
    ShowTime();
}

void TPlayback::ShowTime() {
    const double length = m_player.Length();
    m_slider->SetPlace(length > 0 ? m_player.Time() / length : 0);
    const bool times = m_player.HasTimes();
    const QString whole = times ? TimeText(length) : QLocale().toString(m_player.Count());
    const QString present = times ? TimeText(m_player.Time()) : QLocale().toString(Object() + 1);
    m_time->setMinimumWidth(
        m_time->fontMetrics().horizontalAdvance(TimesText(whole, whole, times)));
    m_time->setText(TimesText(present, whole, times));
    m_time->setToolTip(times ? QString() : NoTimesText());
    Q_EMIT StatusChanged();
}

QString TPlayback::TipAt(double place) const {
    const double time = place * m_player.Length();
    if (!m_player.HasTimes())
        return QStringLiteral("Move %1").arg(QLocale().toString(static_cast<int>(time) + 1));
    const TToolPath& path = *m_player.Path();
    const TPathTool& tool = path.Tools()[path.Move(path.MoveAt(time)).Tool];
    QString text = TimeText(time);
    if (tool.Number >= 0) text += QStringLiteral(", T%1 ").arg(tool.Number) + tool.Name;
    return text;
}

std::optional<TPlayback::TPlace> TPlayback::Place() const {
    if (!m_player.Path() || m_source->CurrentMove() < 0 || m_player.Move() < 0) return {};
    return TPlace{m_player.Move(), m_player.Fraction()};
}

QString TPlayback::Status() const {
    const std::optional<TPlace> place = Place();
    return place ? Describe(*m_player.Path(), place->Move, place->Part) : QString();
}

} // namespace ZEP
