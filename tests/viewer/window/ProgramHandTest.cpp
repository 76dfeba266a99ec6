#include "tests/viewer/WindowTest.h"
#include "viewer/drawing/ToolMarker.h"
#include "viewer/window/MoveFilterBox.h"
#include "viewer/window/Playback.h"
#include "viewer/window/Selection.h"
#include "viewer/window/SourceDock.h"
#include "viewer/window/TimeSlider.h"
#include "viewer/window/ToolsList.h"
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Fitting.h>
#include <zep/view/Panel.h>

#include <QCheckBox>
#include <QDateTime>
#include <QDoubleSpinBox>
#include <QFile>
#include <QListView>
#include <QLocale>

namespace ZEP {
namespace {

/// A window with a program of six lines, of which the lines 2, 4, 5 and 6 move the tool.
class Program : public WindowTest {
protected:
    Program() { Show({Put("a.nc", "(start)\nG1 X1\n(more)\nX2\nX3\nG0 X9\n")}); }

    [[nodiscard]] QListView& List() const { return *m_window->findChild<QListView*>(); }
    [[nodiscard]] int MarkedLine() const {
        QTest::qWait(1);
        return List().currentIndex().row() + 1;
    }
    void PickLine(int line) const {
        List().setCurrentIndex(List().model()->index(line - 1, 0));
        QTest::qWait(1);
    }
    [[nodiscard]] QString Selected() const {
        const TZEPObject* object = m_window->Selection()->Only();
        return object ? object->Ident() : QString();
    }
};

TEST_F(Program, ALineSelectsItsMoveAndAMoveMarksItsLine) {
    EXPECT_EQ(List().model()->rowCount(), 6);
    for (const int line : {4, 2, 6}) {
        PickLine(line);
        EXPECT_EQ(Selected(), QStringLiteral("Line %1").arg(line));
    }
    PickLine(3);
    EXPECT_EQ(Selected(), QString()) << "a line that moves nothing";
    EXPECT_EQ(MarkedLine(), 3) << "the pick was taken back";
    m_window->Document().Files().front().Root->GetItem(2)->SetSelected(true);
    EXPECT_EQ(MarkedLine(), 5);
    m_window->Selection()->SelectOnly(nullptr);
    EXPECT_EQ(MarkedLine(), 0);
}

TEST_F(Program, TheArrowKeysStepFromMoveToMove) {
    struct TRow {
        Qt::Key Key;
        const char* Selected;
    };
    const TRow rows[] = {{Qt::Key_Down, "Line 2"},  {Qt::Key_Down, "Line 4"},
                         {Qt::Key_Right, "Line 5"}, {Qt::Key_Up, "Line 4"},
                         {Qt::Key_Left, "Line 2"},  {Qt::Key_Up, "Line 2"}};
    for (const TRow& row : rows) {
        QTest::keyClick(&*m_window, row.Key);
        EXPECT_EQ(Selected(), QString::fromLatin1(row.Selected));
    }
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                      List().visualRect(List().model()->index(1, 0)).center());
    ASSERT_EQ(Selected(), QStringLiteral("Line 2"));
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &*m_window,
                    Qt::Key_Down);
    EXPECT_EQ(Selected(), QStringLiteral("Line 4"));
}

TEST_F(Program, PlayRunsToTheEndAndStops) {
    auto* playback = m_window->findChild<TPlayback*>();
    playback->Player().SetSpeed(100, TToolPlayback::TPace::Moves);
    QTest::keyClick(&*m_window, Qt::Key_Space);
    EXPECT_TRUE(playback->IsPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !playback->IsPlaying(); }, 3000));
    EXPECT_EQ(Selected(), QStringLiteral("Line 6"));
    auto* panel = m_window->findChild<TZEPPanel*>();
    QTest::qWait(100);
    const int frames = panel->FrameCount();
    QTest::qWait(200);
    EXPECT_EQ(panel->FrameCount(), frames) << "it goes on drawing";
}

TEST_F(Program, TheSliderGoesToItsMove) {
    auto* slider = m_window->findChild<TTimeSlider*>();
    const auto press = [&](double place) {
        QTest::mouseClick(slider, Qt::LeftButton, {},
                          QPoint(static_cast<int>(slider->width() * place), 5));
    };
    press(0.6); // of four moves
    EXPECT_EQ(Selected(), QStringLiteral("Line 5"));
    press(0.1);
    EXPECT_EQ(Selected(), QStringLiteral("Line 2"));
    m_window->Selection()->SelectOnly(Root(0).GetItem(1));
    QTest::qWait(1);
    EXPECT_EQ(slider->value(), slider->maximum() / 2) << "it is done";
}

TEST_F(Program, FitTakesWhatIsSelectedOrAll) {
    TZEPCamera& camera = *m_window->Document().Camera();
    const auto distance = [&] { return Distance(camera.GetPosition(), camera.GetTarget()); };
    for (const bool parallel : {false, true}) {
        SCOPED_TRACE(parallel);
        SwitchProjection(camera, parallel, 1);
        m_window->Selection()->SelectOnly(nullptr);
        QTest::qWait(1);
        QTest::keyClick(&*m_window, Qt::Key_F);
        const double whole = distance(); // 9 long
        PickLine(2);                     // 1 long
        QTest::keyClick(&*m_window, Qt::Key_F);
        EXPECT_LT(distance(), whole / 4);
        EXPECT_NEAR(camera.GetTarget()[0], 0.5, 0.2);
        EXPECT_GT(camera.FarClipPlane(), 50 * whole) << "the rest is cut off";
        QTest::keyClick(&*m_window, Qt::Key_A);
        EXPECT_NEAR(distance(), whole, whole * 1e-6);
    }
}

TEST_F(Program, AnotherFileReplacesTextAndSelection) {
    PickLine(4);
    m_window->findChild<TPlayback*>()->SetPlaying(true);
    m_window->OpenFiles({Put("b.nc", "G1 X5\nG1 X7\n")});
    QTest::qWait(100);
    EXPECT_EQ(List().model()->rowCount(), 2);
    QTest::keyClick(&*m_window, Qt::Key_Down);
    QTest::qWait(1);
    EXPECT_FALSE(Selected().isEmpty());
    m_window->findChild<TPlayback*>()->SetPlaying(true);
    m_window.reset(); // while it plays
}

TEST_F(Program, OfTwoFilesTheTextIsThatOfTheSelected) {
    const QString a = Path("a.nc");
    m_window->OpenFiles({a, Put("b.nc", "G1 X5\nG1 X7\nG1 X8\n")});
    EXPECT_EQ(List().model()->rowCount(), 6);
    m_window->Document().Files().back().Root->GetItem(2)->SetSelected(true);
    EXPECT_EQ(MarkedLine(), 3);
    EXPECT_EQ(List().model()->rowCount(), 3);
}

TEST_F(Program, InASavedSceneStepsAndFindsItsTextUnlessThatIsNewer) {
    const QString scene = Path("s.zep");
    TDocument document;
    const QString program = Path("a.nc");
    ASSERT_TRUE(document.Open({program, program}, false)); // two, so that they are nested
    document.Save(scene);
    m_window->OpenFiles({scene});
    EXPECT_EQ(List().model()->rowCount(), 6);
    PickLine(5);
    EXPECT_EQ(Selected(), QStringLiteral("Line 5"));
    QFile file(program);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFile::FileModificationTime);
    m_window->OpenFiles({scene});
    EXPECT_EQ(List().model()->rowCount(), 0);
    EXPECT_FALSE(m_window->findChild<TMoveFilterBox*>()->isVisibleTo(&*m_window));
    QTest::keyClick(&*m_window, Qt::Key_Down);
    QTest::keyClick(&*m_window, Qt::Key_Down);
    EXPECT_EQ(Selected(), QStringLiteral("Line 4"));
}

/// Seven seconds long, with moves in the lines 4, 6, 8 (a dwell) and 9; the second tool dwells.
class MachinedProgram : public WindowTest {
protected:
    MachinedProgram() {
        QLocale::setDefault(QLocale::c());
        Show({PutProgram("a.nc")});
        m_playback = m_window->findChild<TPlayback*>();
    }

    QString PutProgram(const char* name) {
        return Put(name, "G21\nM6 T1 (D=6 mill)\nF60\nG1 X1\n(more)\nX3\nT2 M6\nG4 P1\nX6\n");
    }
    /// Status, what is selected, whether the tool is seen, how many moves look done, what the view
    /// turns about.
    [[nodiscard]] QString State() const {
        QTest::qWait(1);
        const TZEPObject* object = m_window->Selection()->Only();
        const TZEPBatch& root = *Document().Files().front().Root;
        const auto center = Document().Camera()->OrbitCenter();
        QStringList state{m_playback->Status(), object ? object->Ident() : QString()};
        if (m_window->findChild<TZEPPanel*>() && Marker().Visible()) state << "tool";
        if (root.Frontier()) state << QString::number(*root.Frontier());
        if (center) state << QStringLiteral("about %1").arg((*center)[0]);
        return state.join(QStringLiteral(" | "));
    }
    [[nodiscard]] TZEPObject& Marker() const {
        TZEPScene& scene = *Document().Scene();
        for (int i = 0; i < scene.GetItemsCount(); ++i)
            if (auto* marker = qobject_cast<TToolMarker*>(scene.GetItem(i))) return *marker;
        return scene;
    }
    void Play() {
        m_playback->Player().SetSpeed(10);
        m_playback->SetPlaying(true);
        QTest::qWait(100);
        ASSERT_TRUE(m_playback->IsPlaying());
    }

    TPlayback* m_playback = nullptr;
};

TEST_F(MachinedProgram, StepsByMoveByToolAndByLineShowWhereTheToolIs) {
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(&*m_window, key, with);
    };
    QString told;
    QObject::connect(m_playback, &TPlayback::Told, [&](const QString& text) { told = text; });
    EXPECT_EQ(State(), QStringLiteral(" | "));
    press(Qt::Key_Down);
    EXPECT_EQ(State(), QStringLiteral("Line 4, feed: X 1.000  Y 0.000  Z 0.000  F 60 mm/min  T1 "
                                      "(D=6 mill), length 1.000 | Line 4 | tool | 1 | about 0.5"));
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(State(), QStringLiteral("Line 8, dwell: X 3.000  Y 0.000  Z 0.000  T2, length 0.000 "
                                      "| Line 6 | tool | 2 | about 2"))
        << "a dwell has no object";
    m_playback->GoToLine(9);
    EXPECT_TRUE(State().startsWith(QStringLiteral("Line 9, feed: X 6.000")))
        << State().toStdString();
    EXPECT_EQ(told, QString());
    m_playback->GoToLine(5);
    EXPECT_TRUE(State().startsWith(QStringLiteral("Line 6, feed: X 3.000")))
        << State().toStdString();
    EXPECT_EQ(told, QStringLiteral("Line 5 makes no move; this is the next that does, line 6."));
    m_playback->GoToLine(10);
    EXPECT_TRUE(State().startsWith(QStringLiteral("Line 6"))) << State().toStdString();
    EXPECT_EQ(told, QStringLiteral("No move comes from line 10 or a later one."));
    m_window->Selection()->SelectOnly(nullptr);
    EXPECT_EQ(State(), QStringLiteral(" | ")) << "the path looks as it did";
    m_window->Selection()->SelectOnly(Root(0).GetItem(2));
    EXPECT_FALSE(State().contains(QStringLiteral("tool"))) << "what is looked at is not played";
}

TEST_F(MachinedProgram, PlaysInTheTimeOfTheMachine) {
    m_playback->Player().SetSpeed(4);
    m_playback->SetPlaying(true);
    TZEPScene& scene = *Document().Scene();
    scene.Action(100);
    scene.Action(100.5); // two seconds
    EXPECT_TRUE(m_playback->Status().startsWith(QStringLiteral("Line 6, feed: X 2.000")));
    m_window->Selection()->SelectOnly(Root(0).GetItem(0)); // the user goes there
    scene.Action(100.75);
    EXPECT_TRUE(m_playback->Status().startsWith(QStringLiteral("Line 6, feed: X 2.000")));
    scene.Action(101.25);
    EXPECT_TRUE(m_playback->Status().startsWith(QStringLiteral("Line 9, feed: X 3.000")));
    scene.Action(101.75);
    scene.Action(102.25);
    EXPECT_FALSE(m_playback->IsPlaying());
    EXPECT_TRUE(m_playback->Status().startsWith(QStringLiteral("Line 9, feed: X 6.000")));
}

TEST_F(MachinedProgram, WhateverHappensWhileItPlaysIsSafe) {
    const QString a = Path("a.nc");
    const std::function<void()> events[] = {
        [&] { m_window->CloseFile(a); },
        [&] { m_window->OpenFiles({Put("b.nc", "G1 X5\nG1 X7\n")}); },
        [&] { m_window->OpenFiles({PutDrawing()}); },
        [&] { Put("a.nc", "F1\nG1 X5\n"), m_window->AddFiles({a}); },
        [&] {
            m_window->AddFiles({PutProgram("c.nc")});
            m_window->Selection()->SelectOnly(Root(1).GetItem(1));
        },
        [&] { m_window->SaveAs(Path("s.zep")); },
        [&] { Root(0).Clear(); },
        [&] { delete Root(0).GetItem(0); },
        [&] { delete &Marker(); },
        [&] { m_window.reset(); },
    };
    for (const auto& event : events) {
        SCOPED_TRACE(&event - events);
        m_window->OpenFiles({PutProgram("a.nc")});
        Play();
        event();
        QTest::qWait(100);
        if (!m_window) break;
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Space, Qt::Key_End}) {
            QTest::keyClick(&*m_window, key,
                            key == Qt::Key_End ? Qt::ControlModifier : Qt::NoModifier);
            QTest::qWait(20);
        }
    }
}

TEST_F(MachinedProgram, InASceneWithoutItsTextCountsMoves) {
    m_window->SaveAs(Path("s.zep"));
    QFile::remove(Path("a.nc"));
    m_window->OpenFiles({Path("s.zep")});
    EXPECT_FALSE(m_playback->Player().HasTimes());
    QTest::keyClick(&*m_window, Qt::Key_Down);
    QTest::keyClick(&*m_window, Qt::Key_Down);
    EXPECT_EQ(State(), QStringLiteral(" | Line 6 | 2 | about 2"))
        << "where the tool is, nobody knows";
    Play();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_playback->IsPlaying(); }, 3000));
}

/// As rules of the view: the objects are as they were.
TEST_F(Program, ThePanelHidesMovesAndTellsTimes) {
    m_window->OpenFiles({Put("tools.nc", "G0 X9\nT1 M6\nG1 X1 F60\nT2 M6\nX2\n")});
    auto& filter = *m_window->findChild<TMoveFilterBox*>();
    auto& tools = *m_window->findChild<TToolsList*>();
    auto* root = static_cast<TZEPBatch*>(m_window->Document().Files().front().Root);
    const auto shown = [&] {
        QTest::qWait(250);
        std::string text;
        for (int i = 0; i < root->GetItemsCount(); ++i) {
            const auto hidden = root->HiddenChildren();
            text += hidden && (*hidden)[static_cast<std::size_t>(i)] ? '-' : '+';
            EXPECT_TRUE(root->GetItem(i)->Visible());
        }
        return text;
    };
    const auto check = [&](const char* text) {
        for (QCheckBox* box : filter.findChildren<QCheckBox*>())
            if (box->text().startsWith(QLatin1String(text))) box->toggle();
        return shown();
    };
    EXPECT_EQ(shown(), "+++");
    EXPECT_EQ(check("rapid"), "-++");
    tools.topLevelItem(1)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(shown(), "--+");
    m_window->findChild<QDoubleSpinBox*>(QStringLiteral("RapidRate"))->setValue(60);
    EXPECT_EQ(tools.topLevelItem(0)->text(1), QStringLiteral("0:09"));
    EXPECT_EQ(shown(), "--+") << "after other times";
    filter.ShowAll();
    EXPECT_EQ(shown(), "+++");
    EXPECT_EQ(check("Lines"), "+++") << "all of them";
    m_window->OpenFiles({Path("a.nc")});
    EXPECT_EQ(tools.topLevelItemCount(), 1);
    EXPECT_EQ(filter.Filter(), TMoveFilter()) << "of another program";
}

using Playback = WindowTest;

/// No event comes between: the test says what time it is.
TEST_F(Playback, NeitherAPauseNorAStandstillIsMadeUpFor) {
    TMainWindow window(false);
    window.OpenFiles({Put("long.nc", "G1\n" + QByteArray("X1\nX2\n").repeated(1000))});
    auto& source = *window.findChild<TSourceDock*>();
    auto& playback = *window.findChild<TPlayback*>();
    TZEPObject& scene = *window.Document().Files().front().Root->Scene();
    source.GoTo(0);
    playback.Player().SetSpeed(10, TToolPlayback::TPace::Moves);
    const auto movesAt = [&](double time) {
        const int before = source.CurrentMove();
        scene.Action(time);
        return source.CurrentMove() - before;
    };
    playback.SetPlaying(true);
    EXPECT_EQ(movesAt(100), 0);
    EXPECT_EQ(movesAt(100.45), 5);
    playback.SetPlaying(false);
    playback.SetPlaying(true);
    EXPECT_EQ(movesAt(500), 0) << "behind a pause";
    EXPECT_EQ(movesAt(500.22), 2);
    EXPECT_EQ(movesAt(900), 5) << "half a second at most, whatever held the program up";
    playback.SetPlaying(false);
    EXPECT_EQ(movesAt(901), 0);
}

} // namespace
} // namespace ZEP
