#include "viewer/window/ContentsDock.h"

#include "tests/viewer/WindowTest.h"
#include "viewer/window/ContentsModel.h"
#include "viewer/window/ContentsView.h"
#include "viewer/window/Selection.h"
#include <zep/view/Panel.h>

#include <QLineEdit>
#include <QMenu>
#include <QTimer>

#include <cmath>

namespace ZEP {
namespace {

class ContentsDock : public WindowTest {
protected:
    [[nodiscard]] TContentsDock& Dock() const { return *m_window->findChild<TContentsDock*>(); }
    [[nodiscard]] TContentsView& Tree() const { return *m_window->findChild<TContentsView*>(); }
    [[nodiscard]] QModelIndex Row(std::initializer_list<int> path) const {
        QModelIndex index;
        for (const int row : path) index = Tree().model()->index(row, 0, index);
        return index;
    }
    void Click(const QModelIndex& index, Qt::KeyboardModifiers modifiers = {}) const {
        Tree().scrollTo(index);
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, modifiers,
                          Tree().visualRect(index).center());
        QTest::qWait(20);
    }
    void ClickBox(const QModelIndex& index, Qt::KeyboardModifiers modifiers = {}) const {
        Tree().scrollTo(index);
        const QRect row = Tree().visualRect(index);
        const int half = Tree().style()->pixelMetric(QStyle::PM_IndicatorWidth) / 2;
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, modifiers,
                          {row.left() + half + 3, row.center().y()});
        QTest::qWait(20);
    }
    /// Chooses in the menu of a row.
    void Choose(const QModelIndex& index, const char* text) const {
        Click(index);
        QTimer::singleShot(200, [text] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            for (QAction* action : menu->actions())
                if (action->text().remove(QLatin1Char('&')) == QLatin1String(text)) {
                    menu->setActiveAction(action);
                    QTest::keyClick(menu, Qt::Key_Return);
                    return;
                }
            ADD_FAILURE() << "no entry " << text;
            menu->close();
        });
        Q_EMIT Tree().customContextMenuRequested(Tree().visualRect(index).center());
    }
    [[nodiscard]] std::vector<TZEPObject*> Selected() const {
        std::vector<TZEPObject*> objects = m_window->Selection()->Objects();
        std::ranges::sort(objects);
        return objects;
    }
};

TEST_F(ContentsDock, AppearsForFilesWithPartsUnlessItWasClosed) {
    const QString program = Put("p.nc", "G1 X1\n");
    Show({program});
    EXPECT_FALSE(Dock().isVisible());
    m_window->OpenFiles({PutDrawing()});
    EXPECT_TRUE(Dock().isVisible());
    EXPECT_TRUE(Tree().isExpanded(Row({0})));
    QTest::keyClick(&*m_window, Qt::Key_F3);
    EXPECT_FALSE(Dock().isVisible());
    m_window->OpenFiles({PutModel()});
    EXPECT_FALSE(Dock().isVisible());
    Show({PutModel()});
    EXPECT_FALSE(Dock().isVisible()) << "not remembered";
    QTest::keyClick(&*m_window, Qt::Key_F3);
    EXPECT_TRUE(Dock().isVisible());
    EXPECT_TRUE(Tree().hasFocus());
}

TEST_F(ContentsDock, BoxesShowAndHide) {
    Show({PutDrawing(), PutModel()});
    TZEPObject& q = *Root(0).GetItem(1);
    ClickBox(Row({0, 1}));
    EXPECT_FALSE(q.Visible());
    ClickBox(Row({0, 1}));
    EXPECT_TRUE(q.Visible());
    EXPECT_FALSE(Root(0).GetItem(2)->Visible()) << "switched off in the file";
    ClickBox(Row({1, 1}), Qt::ShiftModifier);
    EXPECT_FALSE(Root(0).Visible());
    EXPECT_FALSE(Root(1).GetItem(0)->Visible());
    EXPECT_TRUE(Root(1).GetItem(1)->Visible());
    Choose(Row({1, 0}), "Show all");
    EXPECT_TRUE(Root(0).Visible() && Root(0).GetItem(2)->Visible());
    EXPECT_TRUE(Root(1).GetItem(0)->Visible());
    Choose(Row({1, 0}), "Hide");
    EXPECT_FALSE(Root(1).GetItem(0)->Visible());
}

TEST_F(ContentsDock, RowsAndObjectsAreSelectedTogether) {
    Show({PutDrawing(), PutModel()});
    TZEPObject& p = *Root(0).GetItem(0);
    Click(Row({1, 0}));
    EXPECT_EQ(Selected(), std::vector<TZEPObject*>{Root(1).GetItem(0)});
    Click(Row({0, 0}));
    EXPECT_EQ(m_window->Selection()->Count(), 2U) << "all that is on the layer";
    EXPECT_TRUE(p.GetItem(0)->Selected() && p.GetItem(1)->Selected());
    EXPECT_EQ(Tree().selectionModel()->selectedRows(), QModelIndexList{Row({0, 0})});
    ASSERT_FALSE(Tree().isExpanded(Row({0, 0})));
    m_window->Selection()->SelectOnly(p.GetItem(1));
    QTest::qWait(20);
    EXPECT_EQ(Tree().selectionModel()->selectedRows(), (QModelIndexList{Row({0, 0, 1})}));
    EXPECT_TRUE(Tree().isExpanded(Row({0, 0}))) << "the row is not to be seen";
    m_window->Selection()->SelectOnly(nullptr);
    QTest::qWait(20);
    EXPECT_TRUE(Tree().selectionModel()->selectedRows().isEmpty());
}

TEST_F(ContentsDock, KeysAreTheTreesWhileItHasThem) {
    Show({PutDrawing(), PutModel()});
    Click(Row({1, 0}));
    ASSERT_TRUE(Tree().hasFocus());
    QTest::keyClick(&Tree(), Qt::Key_Down);
    QTest::qWait(20);
    EXPECT_EQ(Selected(), std::vector<TZEPObject*>{Root(1).GetItem(1)});
    QTest::keyClick(&Tree(), Qt::Key_Space);
    EXPECT_FALSE(Root(1).GetItem(1)->Visible());
    QTest::keyClick(&Tree(), Qt::Key_Space);
    EXPECT_TRUE(Root(1).GetItem(1)->Visible());
    // Letters stay with the window.
    const bool parallel = Document().Camera()->Orthographic();
    QTest::keyClick(&Tree(), Qt::Key_X);
    EXPECT_NE(Document().Camera()->Orthographic(), parallel);
}

TEST_F(ContentsDock, ADoubleClickFitsWhatTheRowHolds) {
    using namespace Sample;
    const QByteArray far = Pairs({{0, "LINE"}, {8, "q"}, {10, "900"}, {11, "1000"}});
    const QByteArray near = Pairs({{0, "LINE"}, {8, "p"}, {10, "20"}, {11, "24"}});
    Show({Put("a.dxf", Drawing(Layer("p", 1) + Layer("q", 1), near + far))});
    for (const Qt::Key key : {Qt::Key_unknown, Qt::Key_Return}) {
        QTest::keyClick(&*m_window, Qt::Key_A);
        ASSERT_GT(Document().Camera()->GetTarget()[0], 100);
        Click(Row({0, 0}));
        if (key == Qt::Key_unknown)
            QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {},
                               Tree().visualRect(Row({0, 0})).center());
        else
            QTest::keyClick(&Tree(), key);
        EXPECT_NEAR(Document().Camera()->GetTarget()[0], 22, 0.1) << key;
    }
}

TEST_F(ContentsDock, ASearchIsTyped) {
    Show({PutDrawing(), PutModel()});
    auto* search = Dock().findChild<QLineEdit*>();
    QTest::keyClick(&*m_window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(search->hasFocus());
    QTest::keyClicks(search, QStringLiteral("axle")); // of which the letters are shortcuts, too
    EXPECT_EQ(search->text(), QStringLiteral("axle"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Tree().model()->rowCount() == 1; }, 2000));
    EXPECT_EQ(Row({0, 0}).data().toString(), QStringLiteral("Axle"));
    EXPECT_TRUE(Tree().isExpanded(Row({0})));
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Tree().model()->rowCount() == 2; }, 2000));
}

TEST_F(ContentsDock, AFileIsClosedAndTheLastOneLeavesTheWelcome) {
    Show({PutDrawing(), PutModel()});
    m_window->Selection()->SelectOnly(Root(0).GetItem(0)->GetItem(0));
    Choose(Row({0, 0}), "Close file");
    ASSERT_EQ(Document().Files().size(), 1U);
    EXPECT_TRUE(m_window->windowTitle().startsWith(QStringLiteral("b.3ds")));
    Choose(Row({0}), "Close file");
    EXPECT_TRUE(Document().Files().empty());
    EXPECT_FALSE(Dock().isVisible());
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("zepview"));
}

} // namespace
} // namespace ZEP
