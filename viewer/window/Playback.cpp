#include "viewer/window/Playback.h"

#include "viewer/window/SourceDock.h"
#include <zep/scene/Scene.h>

#include <QComboBox>
#include <QMainWindow>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolBar>

#include <algorithm>
#include <limits>

namespace ZEP {

namespace {

constexpr int Last = std::numeric_limits<int>::max();
constexpr int Speeds[] = {1, 5, 20, 100, 500, 2500}; // moves a second
constexpr double LongestTick = 0.5; // seconds: while the program stood still, so did the play

QComboBox* SpeedBox(TPlayback* playback) {
    auto* box = new QComboBox;
    for (const int speed : Speeds) box->addItem(QStringLiteral("%1 moves/s").arg(speed), speed);
    QObject::connect(box, &QComboBox::currentIndexChanged, playback,
                     [playback, box] { playback->SetSpeed(box->currentData().toDouble()); });
    box->setCurrentIndex(2);
    box->setFocusPolicy(Qt::NoFocus); // the arrow keys step through the program
    return box;
}

} // namespace

TPlayback::TPlayback(QMainWindow* window, TZEPScene* scene, TSourceDock* source)
    : QObject(window), m_scene(scene), m_source(source), m_slider(new QSlider(Qt::Horizontal)) {
    AddActions(*window);
    m_slider->setFocusPolicy(Qt::NoFocus);
    m_actor.SetParentComponent(scene);
    connect(&m_actor, &TZEPActor::OnAction, this, [this](TZEPObject*, double t) { Tick(t); });
    connect(m_slider, &QSlider::valueChanged, source, &TSourceDock::GoTo);
    connect(source, &TSourceDock::Moved, this, &TPlayback::Follow);
    Follow();
}

void TPlayback::AddActions(QMainWindow& window) {
    QMenu* menu = window.menuBar()->addMenu(QStringLiteral("&Program"));
    const auto add = [&](const QString& text, const QList<QKeySequence>& keys, auto&& call) {
        QAction* action = menu->addAction(text, this, call);
        action->setShortcuts(keys);
        return action;
    };
    QAction* back =
        add(QStringLiteral("&Previous move"), {Qt::Key_Up, Qt::Key_Left}, [this] { Step(-1); });
    QAction* next =
        add(QStringLiteral("&Next move"), {Qt::Key_Down, Qt::Key_Right}, [this] { Step(1); });
    add(QStringLiteral("&First move"), {QKeySequence(Qt::CTRL | Qt::Key_Home)},
        [this] { m_source->GoTo(0); });
    add(QStringLiteral("&Last move"), {QKeySequence(Qt::CTRL | Qt::Key_End)},
        [this] { m_source->GoTo(Last); });
    m_play = menu->addAction(QStringLiteral("P&lay"), QKeySequence(Qt::Key_Space));
    m_play->setCheckable(true);
    connect(m_play, &QAction::toggled, this, &TPlayback::SetPlaying);
    menu->addSeparator();
    QAction* text = m_source->toggleViewAction();
    text->setText(QStringLiteral("&Text"));
    text->setShortcut(QKeySequence(Qt::Key_F4));
    menu->addAction(text);
    m_bar = new QToolBar(QStringLiteral("Program"));
    m_bar->setObjectName(QStringLiteral("ProgramBar"));
    window.addToolBar(Qt::BottomToolBarArea, m_bar);
    m_bar->addActions({back, m_play, next});
    m_bar->addWidget(m_slider);
    m_bar->addWidget(SpeedBox(this));
}

void TPlayback::Step(int by) {
    m_source->GoTo(std::max(m_source->CurrentMove(), by < 0 ? 0 : -1) + by);
}

void TPlayback::SetPlaying(bool playing) {
    playing = playing && m_source->MoveCount() > 0;
    m_playing = playing;
    m_lastTime.reset();
    m_play->setChecked(playing);
    if (playing && m_source->CurrentMove() + 1 >= m_source->MoveCount()) m_source->GoTo(0);
    if (playing) m_place = std::max(m_source->CurrentMove(), 0);
    m_scene->SetAnimation(playing);
}

void TPlayback::Tick(double time) {
    if (!m_playing) return m_scene->SetAnimation(false); // a drag has set it on again
    const double passed = m_lastTime ? std::min(time - *m_lastTime, LongestTick) : 0;
    m_lastTime = time;
    const int current = m_source->CurrentMove();
    if (current != static_cast<int>(m_place)) m_place = std::max(current, 0); // the user went there
    m_place = std::min(m_place + passed * m_speed, m_source->MoveCount() - 1.0);
    m_source->GoTo(static_cast<int>(m_place));
    if (m_place >= m_source->MoveCount() - 1) SetPlaying(false);
}

void TPlayback::Follow() {
    const QSignalBlocker blocker(m_slider);
    const int count = m_source->MoveCount();
    m_slider->setMaximum(std::max(count - 1, 0));
    m_slider->setValue(std::max(m_source->CurrentMove(), 0));
    if (count == 0) SetPlaying(false);
    // With a program its bar comes; whether it stays is the user's choice.
    if (count == 0 || !m_hasProgram) m_bar->setVisible(count > 0);
    m_hasProgram = count > 0;
}

} // namespace ZEP
