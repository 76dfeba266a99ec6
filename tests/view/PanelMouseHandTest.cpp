#include "tests/view/PanelFixture.h"

#include <QProcess>
#include <QStandardPaths>

namespace ZEP {
namespace {

TEST_F(Panel, DraftsWhileAButtonIsHeldAndTheSceneWantsIt) {
    auto* probe = Add<DraftProbe>(Scene.get());
    Show();
    for (const bool quick : {false, true}) {
        Scene->SetQuickMouse(quick);
        Settle();
        probe->Drafts.clear();
        View->Paint();
        QTest::mousePress(View, Qt::LeftButton, {}, {10, 10});
        EXPECT_TRUE(View->MouseDowned());
        View->Paint();
        QTest::mouseRelease(View, Qt::LeftButton, {}, {10, 10});
        EXPECT_FALSE(View->MouseDowned());
        Settle(); // a draft is replaced without being asked for
        const std::vector<bool> still = {false, false};
        const std::vector<bool> moving = {false, true, false};
        EXPECT_EQ(probe->Drafts, quick ? moving : still);
    }
    probe->Drafts.clear();
    View->SetForceDraft(true);
    Settle();
    EXPECT_EQ(probe->Drafts, std::vector<bool>{true});
}

/// Notes the mouse events of a panel as text.
class MouseNotes : public QStringList {
public:
    explicit MouseNotes(TZEPPanel* panel) {
        const auto note = [this](const char* name) {
            return [this, name](TZEPPanel*, auto... values) {
                QStringList words{QLatin1String(name)};
                ((words << QString::number(int(values))), ...);
                append(words.join(u' '));
            };
        };
        QObject::connect(panel, &TZEPPanel::BeforeMouseDown, note("before down"));
        QObject::connect(panel, &TZEPPanel::AfterMouseDown, note("after down"));
        QObject::connect(panel, &TZEPPanel::BeforeMouseUp, note("before up"));
        QObject::connect(panel, &TZEPPanel::AfterMouseUp, note("after up"));
        QObject::connect(panel, &TZEPPanel::AfterMouseDblClick, note("double"));
        QObject::connect(panel, &TZEPPanel::BeforeMouseMove, note("before move"));
        QObject::connect(panel, &TZEPPanel::AfterMouseMove, note("after move"));
        QObject::connect(panel, &TZEPPanel::BeforeMouseWheel, note("before wheel"));
        QObject::connect(panel, &TZEPPanel::AfterMouseWheel, note("after wheel"));
    }
};

TEST_F(Panel, TellsOfTheMouseInDevicePixels) {
    Show();
    const int ratio = qRound(View->devicePixelRatioF());
    const QString at = QString::asprintf("%d %d", 10 * ratio, 20 * ratio);
    MouseNotes notes(View);
    QTest::mousePress(View, Qt::RightButton, Qt::ShiftModifier | Qt::ControlModifier, {10, 20});
    QTest::mouseRelease(View, Qt::RightButton, {}, {10, 20});
    EXPECT_EQ(notes, (QStringList{"before down 1 21 " + at, "after down 1 21 " + at,
                                  "before up 1 0 " + at, "after up 1 0 " + at}));
    notes.clear();
    QTest::mouseClick(View, Qt::LeftButton, {}, {10, 20});
    QTest::mouseDClick(View, Qt::LeftButton, {}, {10, 20});
    QTest::mouseRelease(View, Qt::LeftButton, {}, {10, 20});
    EXPECT_EQ(notes.filter(QStringLiteral("double")), QStringList{"double 0 72 " + at});
    EXPECT_EQ(notes.count("after down 0 8 " + at), 1);
    EXPECT_EQ(notes.count("after down 0 72 " + at), 1);
    EXPECT_EQ(notes.count("after up 0 0 " + at), 2);
}

TEST_F(Panel, ARealMouseReachesThePanelThroughItsDrawing) {
    if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
        GTEST_SKIP() << "xdotool is not installed";
    Show();
    MouseNotes notes(View);
    int x = 0;
    int y = 0;
    NativeWindow::Origin(View->winId(), x, y);
    const QStringList script = QString::asprintf("mousemove %d %d mousedown 1 mousemove %d %d "
                                                 "mouseup 1 click 4",
                                                 x + 30, y + 40, x + 50, y + 44)
                                   .split(QLatin1Char(' '));
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), script), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notes.contains("after wheel 0 120 50 44"); }, 3000));
    EXPECT_TRUE(notes.contains("after down 0 8 30 40")) << notes.join('\n').toStdString();
    EXPECT_TRUE(notes.contains("after move 8 50 44")) << notes.join('\n').toStdString();
    EXPECT_TRUE(notes.contains("after up 0 0 50 44")) << notes.join('\n').toStdString();
}

} // namespace
} // namespace ZEP
