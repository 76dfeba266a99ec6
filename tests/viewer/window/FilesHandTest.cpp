#include "tests/viewer/WindowTest.h"
#include "viewer/window/MessagesDock.h"
#include "viewer/window/ViewOptions.h"
#include "viewer/window/WelcomePage.h"
#include <zep/view/Panel.h>

#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

namespace ZEP {
namespace {

constexpr int Longest = 5000; // ms

/// Files that come, go and change while the window shows them.
class Files : public WindowTest {
protected:
    [[nodiscard]] TMessagesDock& Messages() const { return *m_window->findChild<TMessagesDock*>(); }
    [[nodiscard]] QString Badge() const {
        return Messages().Badge()->isHidden() ? QString() : Messages().Badge()->text();
    }
    QString PutUnknown() {
        using namespace Sample;
        return Put("lines.dxf", Drawing(Layer("p", 1), LineOn("p") + Pairs({{0, "3DSOLID"}})));
    }
    void Drop(const QString& file, Qt::KeyboardModifiers modifiers) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, modifiers);
        QApplication::sendEvent(&*m_window, &enter);
        QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, modifiers);
        QApplication::sendEvent(&*m_window, &drop);
        QTest::qWait(20);
    }
};

TEST_F(Files, AreAddedToWhatIsShown) {
    Show({PutDrawing()});
    m_window->AddFiles({PutModel()});
    EXPECT_EQ(Document().Files().size(), 2U);
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("a.dxf, b.3ds - zepview"));
    Drop(Put("c.nc", "G1 X1\n"), Qt::ControlModifier);
    EXPECT_EQ(Document().Files().size(), 3U);
    Drop(Path("c.nc"), {});
    EXPECT_EQ(Document().Files().size(), 1U);
}

TEST_F(Files, MessagesAppearByThemselvesUnlessTheyWereClosed) {
    Show({PutDrawing()});
    EXPECT_FALSE(Messages().isVisible());
    EXPECT_EQ(Badge(), QString());
    m_window->OpenFiles({PutUnknown()});
    EXPECT_TRUE(Messages().isVisible());
    EXPECT_EQ(Badge(), QStringLiteral("1 kind passed over"));
    Messages().close();
    m_window->OpenFiles({PutDrawing(), PutUnknown()});
    EXPECT_FALSE(Messages().isVisible());
    Show({PutUnknown()});
    EXPECT_FALSE(Messages().isVisible()) << "not remembered";
    Messages().Badge()->click();
    EXPECT_TRUE(Messages().isVisible());
    m_window->OpenFiles({PutDrawing()});
    EXPECT_FALSE(Messages().isVisible());
    m_window->OpenFiles({PutUnknown()});
    EXPECT_TRUE(Messages().isVisible()) << "wanted again";
    m_window->OpenFiles({Put("c.nc", "G1 X1\n/G1 X2\n")});
    EXPECT_FALSE(Messages().isVisible()) << "nothing is missing";
    EXPECT_EQ(Badge(), QStringLiteral("1 kind passed over"));
}

TEST_F(Files, MessagesAreCopied) {
    Show({PutUnknown()});
    auto* list = Messages().findChild<QTreeView*>();
    list->setFocus();
    QTest::keySequence(list, QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "lines.dxf, line 37: 3DSOLID: 1 not drawn\n");
}

TEST_F(Files, AChangeOnTheDiskIsReadAndTheViewStays) {
    using namespace Sample;
    Show({PutDrawing(), PutModel()});
    const TZEPObject* model = &Root(1);
    Root(0).GetItem(1)->SetVisible(false);
    Document().Camera()->Orbit(20, 10);
    const TGLArrayd3 eye = Document().Camera()->GetPosition();
    Put("a.dxf", Drawing(Layer("p", 1) + Layer("q", 2),
                         LineOn("p") + LineOn("p") + LineOn("p") + LineOn("q")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return Root(0).GetItem(0)->GetItemsCount() == 3; }, Longest));
    EXPECT_FALSE(Root(0).GetItem(1)->Visible());
    EXPECT_EQ(Document().Camera()->GetPosition(), eye);
    EXPECT_EQ(&Root(1), model) << "what has not changed is read again";
}

TEST_F(Files, AVersionThatCannotBeReadIsToldAmongTheMessages) {
    Show({PutModel()});
    Put("b.3ds", "text");
    const QString note = QStringLiteral("1 file is not up to date");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Badge().startsWith(note); }, Longest));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(Messages().isVisible());
    EXPECT_EQ(Root(0).GetItemsCount(), 3) << "what was shown is gone";
    PutModel();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Badge().startsWith(note); }, Longest));
}

TEST_F(Files, AFileThatIsGoneStaysShown) {
    Show({PutModel()});
    ASSERT_TRUE(QFile::remove(Path("b.3ds")));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return m_window->statusBar()->currentMessage() ==
                   QStringLiteral("b.3ds is gone from the disk; it stays shown.");
        },
        Longest));
    EXPECT_EQ(Root(0).GetItemsCount(), 3);
}

TEST_F(Files, AreSavedAsOneSceneWithoutTheShadowsOfTheView) {
    QFile::copy(QStringLiteral(ZEP_SOURCE "/examples/models/gears.3ds"), Path("b.3ds"));
    Show({Path("b.3ds")});
    m_window->SaveAs(Path("s.zept"));
    const QByteArray alone = Contents("s.zept");
    TViewOptions& options = *m_window->findChild<TViewOptions*>();
    options.SetLook({.Shadows = TViewLook::TShadows::Subtracted});
    ASSERT_TRUE(Root(0).GetItem(0)->CastsShadows());
    ASSERT_TRUE(QFile::remove(Path("b.3ds")));
    m_window->SaveAs(Path("s.zept"));
    EXPECT_EQ(Contents("s.zept"), alone);
    EXPECT_TRUE(Root(0).GetItem(0)->CastsShadows()) << "the view shows them still";
    Show({Path("s.zept"), PutDrawing()});
    const TGLArrayd3 eye = Document().Camera()->GetPosition();
    m_window->SaveAs(Path("s.zept"));
    ASSERT_EQ(Document().Files().size(), 1U) << "it holds the drawing, too";
    EXPECT_EQ(Root(0).GetItemsCount(), 2);
    EXPECT_EQ(Document().Camera()->GetPosition(), eye);
}

TEST_F(Files, ChangesWaitWhereTheUserWantsThat) {
    Show({PutDrawing()});
    ASSERT_TRUE(Action("Reload automatically")->isChecked());
    Action("Reload automatically")->trigger();
    Show({PutDrawing()});
    EXPECT_FALSE(Action("Reload automatically")->isChecked());
    Put("a.dxf", Sample::Drawing(Sample::Layer("p", 1), {}));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return m_window->statusBar()->currentMessage().startsWith(
                QStringLiteral("a.dxf has changed on the disk"));
        },
        Longest));
    EXPECT_EQ(Root(0).GetItemsCount(), 3);
    QTest::keyClick(&*m_window, Qt::Key_F5);
    EXPECT_EQ(Root(0).GetItemsCount(), 1);
}

TEST_F(Files, LeaveTheStartPageUndrawn) {
    Show({});
    auto& page = *m_window->findChild<TWelcomePage*>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return page.View()->FrameCount() > 1; }, Longest));
    m_window->OpenFiles({PutDrawing()});
    const int drawn = page.View()->FrameCount();
    m_window->findChild<TViewOptions*>()->SetLook({.Flat = true});
    QTest::qWait(200);
    EXPECT_EQ(page.View()->FrameCount(), drawn);
    m_window->CloseAll();
    EXPECT_TRUE(QTest::qWaitFor([&] { return page.View()->FrameCount() > drawn + 1; }, Longest));
}

TEST_F(Files, AreClosedAtOnce) {
    Show({PutDrawing(), PutModel()});
    QTest::keySequence(&*m_window, QKeySequence(QKeySequence::Close));
    EXPECT_TRUE(Document().Files().empty());
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("zepview"));
    EXPECT_TRUE(m_window->isVisible());
}

TEST_F(Files, TheirCamerasAreChosen) {
    Show({PutDrawing()});
    QMenu* cameras = Action("Cameras in the file")->menu();
    EXPECT_FALSE(cameras->isEnabled());
    m_window->AddFiles({PutModel()});
    ASSERT_EQ(cameras->actions().size(), 1);
    EXPECT_EQ(cameras->actions()[0]->text(), QStringLiteral("Eye"));
    QTest::keyClick(&*m_window, Qt::Key_X); // parallel
    QTest::keyClick(&*m_window, Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(Document().Camera()->GetPosition(), (TGLArrayd3{9, 0, 1}));
    EXPECT_FALSE(Document().Camera()->Orthographic());
    EXPECT_FALSE(Action("Orthographic")->isChecked());
    Document().Camera()->Orbit(30, 0);
    EXPECT_NE(Document().Camera()->GetPosition(), (TGLArrayd3{9, 0, 1}));
    EXPECT_EQ(Root(1).GetItemsCount(), 3);
    m_window->CloseFile(Path("b.3ds"));
    EXPECT_TRUE(cameras->actions().isEmpty());
}

TEST_F(Files, ThatFailAreToldWhileTheOthersAreShown) {
    Show({});
    QString told;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        told = box->text();
        box->close();
    });
    timer.start(20);
    m_window->OpenFiles({Put("bad.3ds", "text"), PutDrawing(), Path("none.nc")});
    EXPECT_TRUE(told.contains(QStringLiteral("bad.3ds"))) << told.toStdString();
    EXPECT_TRUE(told.contains(QStringLiteral("none.nc"))) << told.toStdString();
    ASSERT_EQ(Document().Files().size(), 1U);
    EXPECT_EQ(Document().Files()[0].Name, Path("a.dxf"));
}

} // namespace
} // namespace ZEP
