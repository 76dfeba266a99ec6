#include "tests/viewer/WindowTest.h"
#include "viewer/window/Playback.h"
#include "viewer/window/Selection.h"
#include "viewer/window/SourceDock.h"
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Fitting.h>
#include <zep/view/Panel.h>

#include <QDateTime>
#include <QFile>
#include <QListView>
#include <QSlider>

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
    playback->SetSpeed(100);
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
    auto* slider = m_window->findChild<QSlider*>();
    EXPECT_EQ(slider->maximum(), 3);
    slider->setValue(2);
    EXPECT_EQ(Selected(), QStringLiteral("Line 5"));
    m_window->Selection()->SelectOnly(m_window->Document().Files().front().Root->GetItem(1));
    QTest::qWait(1);
    EXPECT_EQ(slider->value(), 1);
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
    QTest::keyClick(&*m_window, Qt::Key_Down);
    QTest::keyClick(&*m_window, Qt::Key_Down);
    EXPECT_EQ(Selected(), QStringLiteral("Line 4"));
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
    playback.SetSpeed(10);
    const auto movesAt = [&](double time) {
        const int before = source.CurrentMove();
        scene.Action(time);
        return source.CurrentMove() - before;
    };
    playback.SetPlaying(true);
    EXPECT_EQ(movesAt(100), 0);
    EXPECT_EQ(movesAt(100.45), 4);
    playback.SetPlaying(false);
    playback.SetPlaying(true);
    EXPECT_EQ(movesAt(500), 0) << "behind a pause";
    EXPECT_EQ(movesAt(500.25), 2);
    EXPECT_EQ(movesAt(900), 5) << "half a second at most, whatever held the program up";
    playback.SetPlaying(false);
    EXPECT_EQ(movesAt(901), 0);
}

} // namespace
} // namespace ZEP
