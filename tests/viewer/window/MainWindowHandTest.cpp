#include "tests/viewer/WindowTest.h"
#include "viewer/files/RecentFiles.h"
#include "viewer/window/WelcomePage.h"
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <QDropEvent>
#include <QMimeData>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>

namespace ZEP {
namespace {

/// Windows of all kinds of files.
class MainWindow : public WindowTest {
protected:
    /// Takes long enough that something can be done meanwhile.
    QString LongFile() {
        QByteArray text;
        for (int i = 0; i < 400'000; ++i)
            text += "G1 X" + QByteArray::number(i % 977) + " Y" + QByteArray::number(i) + "\n";
        return Put("long.nc", text);
    }

    QString ShortFile() { return Put("short.nc", "G1 X10 Y5\nG1 X20\n"); }

    static qint64 ObjectsIn(const TMainWindow& window) {
        qint64 objects = 0;
        for (const TOpenedFile& file : window.Document().Files())
            objects += file.Root->GetItemsCount();
        return objects;
    }

    static bool ShowsPanel(const TMainWindow& window) {
        return qobject_cast<TZEPPanel*>(window.findChild<QStackedWidget*>()->currentWidget());
    }

    static QAction* ActionOf(const TMainWindow& window, Qt::Key key) {
        for (QAction* action : window.findChildren<QAction*>())
            if (action->shortcut() == QKeySequence(key)) return action;
        return nullptr;
    }
};

TEST_F(MainWindow, WhatIsOpenedReplacesTheWelcome) {
    TMainWindow window(false);
    window.show();
    EXPECT_FALSE(ShowsPanel(window));
    window.OpenFiles({ShortFile()});
    EXPECT_TRUE(ShowsPanel(window));
    EXPECT_EQ(ObjectsIn(window), 2);
    EXPECT_TRUE(window.windowTitle().startsWith(QStringLiteral("short.nc")));
    EXPECT_EQ(RecentFiles(), QStringList{Path("short.nc")});
}

TEST_F(MainWindow, FlatFilesAreSeenFromTheTopInParallel) {
    TMainWindow window(false);
    const QString flat = ShortFile();
    const QString deep = Put("deep.nc", "G1 X10 Y5\nG1 X20 Z-4\n");
    const TZEPCamera& camera = *window.Document().Camera();
    for (const bool isFlat : {true, false, true}) {
        window.OpenFiles({isFlat ? flat : deep});
        EXPECT_EQ(camera.Orthographic(), isFlat);
        EXPECT_EQ(ActionOf(window, Qt::Key_X)->isChecked(), isFlat);
        const TGLArrayd3 eye = camera.GetPosition();
        const TGLArrayd3 target = camera.GetTarget();
        EXPECT_EQ(std::abs(eye[0] - target[0]) < 1e-6, isFlat);
    }
}

TEST_F(MainWindow, KeysOfTheViewServeTheStartSceneUntilSomethingIsOpen) {
    TMainWindow window(false);
    const TZEPCamera& start = *window.findChild<TWelcomePage*>()->Start().Camera();
    const TGLArrayd3 first = start.GetPosition();
    for (const auto fit : {Qt::Key_F, Qt::Key_A, Qt::Key_Home}) {
        ActionOf(window, Qt::Key_4)->trigger(); // from the right
        EXPECT_NEAR(start.GetPosition()[1], 0, 1e-9);
        EXPECT_GT(start.GetPosition()[0], 5);
        ActionOf(window, fit)->trigger();
        EXPECT_EQ(start.GetPosition(), first);
    }
    for (const auto file : {Qt::Key_G, Qt::Key_X}) {
        EXPECT_FALSE(ActionOf(window, file)->isEnabled());
        window.OpenFiles({ShortFile()});
        EXPECT_TRUE(ActionOf(window, file)->isEnabled());
        window.CloseFile(Path("short.nc"));
    }
}

TEST_F(MainWindow, TextThatIsDraggedIsNotTaken) {
    TMainWindow window(false);
    QMimeData data;
    data.setText(QStringLiteral("G1 X1"));
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(MainWindow, AFileThatIsGoneLeavesTheRecentFiles) {
    TMainWindow window(false);
    const QString gone = ShortFile();
    window.OpenFiles({gone});
    ASSERT_TRUE(QFile::remove(gone));
    QTimer::singleShot(100, [] { QApplication::activeModalWidget()->close(); });
    window.OpenFiles({gone});
    EXPECT_TRUE(RecentFiles().isEmpty());
}

TEST_F(MainWindow, WhatTheUserDoesDuringALoadCallsItOff) {
    struct TRow {
        const char* Name;
        std::function<void(TMainWindow&)> Do;
        qint64 Objects;
        bool Visible;
    };
    const QString other = Put("other.nc", "G1 X1\nG1 X2\nG1 X3\n");
    const TRow rows[] = {
        {"cancel",
         [](TMainWindow& window) {
             window.findChild<QToolButton*>(QStringLiteral("Cancel"))->click();
         },
         2, true},
        {"another file", [&](TMainWindow& window) { window.OpenFiles({other}); }, 3, true},
        {"close", [](TMainWindow& window) { window.close(); }, 2, false},
    };
    const QString large = LongFile();
    for (const TRow& row : rows) {
        SCOPED_TRACE(row.Name);
        TMainWindow window(false);
        window.show();
        window.OpenFiles({ShortFile()});
        bool during = false;
        QTimer::singleShot(20, &window, [&] {
            during = ObjectsIn(window) == 2;
            row.Do(window);
        });
        window.OpenFiles({large});
        EXPECT_TRUE(during);
        EXPECT_EQ(ObjectsIn(window), row.Objects);
        EXPECT_EQ(window.isVisible(), row.Visible);
    }
}

TEST_F(MainWindow, ALargePathIsDrawnInPartWhileItMovesAndWholeAtRest) {
    TMainWindow window(false);
    window.show();
    window.OpenFiles({LongFile()});
    EXPECT_TRUE(window.Document().IsLarge());
    auto* panel = window.findChild<TZEPPanel*>();
    QTest::qWait(600); // the frames of the first view
    const int before = panel->FrameCount();
    window.Document().Camera()->Orbit(10, 0);
    QTest::qWait(600);
    // With a rasteriser that draws all in time, one frame is enough.
    EXPECT_GE(panel->FrameCount(), before + 1);
    const int rest = panel->FrameCount();
    QTest::qWait(600);
    EXPECT_EQ(panel->FrameCount(), rest) << "a view at rest is drawn over and over";
}

} // namespace
} // namespace ZEP
