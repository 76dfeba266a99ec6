#include "tests/viewer/WindowTest.h"
#include "viewer/window/Playback.h"
#include "viewer/window/Selection.h"
#include "viewer/window/StockDialog.h"
#include "viewer/window/StockTools.h"
#include "viewer/window/StockView.h"
#include <zep/scene/Scene.h>
#include <zep/stock/Workpiece.h>

#include <QDoubleSpinBox>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

namespace ZEP {
namespace {

/// A groove along x from 0 to 40 in line 4, and a rapid into its floor in line 6.
const QByteArray Groove = "G21\nT1 M6 (D=4 flat end mill)\nG1 Z-2 F600\nG1 X40\nG0 Z5\n"
                          "G0 X20 Z-2.5\nT2 M6 (D=3 ball)\n";

class StockWindow : public WindowTest {
protected:
    StockWindow() {
        QLocale::setDefault(QLocale::c());
        Show({Put("a.nc", Groove)});
        m_window->resize(500, 400); // frames take less
        Action("Cut stock...")->trigger();
        m_dialog = m_window->findChild<TStockDialog*>();
    }

    void Press(const char* text) const {
        for (auto* button : m_dialog->findChildren<QPushButton*>())
            if (button->text().remove(QLatin1Char('&')) == QLatin1String(text)) button->click();
    }
    [[nodiscard]] TStockView& View() const { return *m_window->findChild<TStockView*>(); }
    [[nodiscard]] TZEPWorkpiece* Workpiece() const {
        TZEPScene& scene = *Document().Scene();
        for (int i = 0; i < scene.GetItemsCount(); ++i)
            if (auto* workpiece = qobject_cast<TZEPWorkpiece*>(scene.GetItem(i))) return workpiece;
        return nullptr;
    }
    /// In the groove.
    [[nodiscard]] double HeightAt(double x) const {
        QTest::qWait(20);
        const TStock& stock = *Workpiece()->Stock();
        return stock.Height(static_cast<int>((x - stock.Min()[0]) / stock.CellWidth()),
                            static_cast<int>((0 - stock.Min()[1]) / stock.CellDepth()));
    }
    void Cut() {
        Press("Cut");
        EXPECT_TRUE(QTest::qWaitFor([&] { return View().IsWhole(); }, 5000));
    }

    QPointer<TStockDialog> m_dialog;
};

TEST_F(StockWindow, TheBlockFollowsThePlaybackInTheMiddleOfMovesToo) {
    auto* playback = m_window->findChild<TPlayback*>();
    TToolPlayback& player = playback->Player();
    Cut();
    EXPECT_DOUBLE_EQ(HeightAt(30), -2) << "all of it, with nothing selected";
    playback->GoToLine(3);
    EXPECT_DOUBLE_EQ(HeightAt(15), 0);
    player.SeekMove(1, 0.5);
    EXPECT_DOUBLE_EQ(HeightAt(15), -2);
    EXPECT_DOUBLE_EQ(HeightAt(30), 0) << "the half that is to come";
    player.SeekMove(1, 1);
    EXPECT_DOUBLE_EQ(HeightAt(30), -2);
    player.SeekMove(0, 0.5);
    EXPECT_DOUBLE_EQ(HeightAt(0), -1);
    m_window->Selection()->SelectOnly(nullptr);
    EXPECT_DOUBLE_EQ(HeightAt(30), -2);
    Press("Remove");
    EXPECT_EQ(Workpiece(), nullptr);
}

TEST_F(StockWindow, RapidsThatCutAreListedAndFound) {
    Cut();
    auto& list = *m_dialog->findChild<QTreeWidget*>();
    ASSERT_EQ(list.topLevelItemCount(), 1);
    EXPECT_EQ(list.topLevelItem(0)->text(0), QStringLiteral("6"));
    EXPECT_EQ(list.topLevelItem(0)->text(1).left(4), QStringLiteral("0.49"))
        << "of half a millimetre";
    const QPoint place = list.visualItemRect(list.topLevelItem(0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(m_window->Selection()->Only(), nullptr);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(m_window->Selection()->Only());
    EXPECT_EQ(m_window->Selection()->Only()->Ident(), QStringLiteral("Line 6"));
}

TEST_F(StockWindow, WhatCannotBeCutIsToldAndWhatIsShownStays) {
    auto& tools = *m_dialog->findChild<TStockTools*>();
    EXPECT_EQ(tools.rowCount(), 1) << "the other one does not move";
    ASSERT_EQ(tools.Tools().size(), 3U);
    EXPECT_EQ(tools.Tools()[1].Diameter, 4);
    Cut();
    const std::shared_ptr<const TStock> before = Workpiece()->Stock();
    auto* const first = m_dialog->findChild<QDoubleSpinBox*>();
    first->setValue(99'999);
    QString told;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        told = box->text();
        box->accept();
    });
    Press("Cut");
    EXPECT_TRUE(told.startsWith(QStringLiteral("A block of stock has a size above 0 along x")));
    EXPECT_EQ(Workpiece()->Stock(), before);
    EXPECT_TRUE(View().IsWhole());
}

TEST_F(StockWindow, AProgramThatIsReadAnewIsCutAsBefore) {
    auto& tools = *m_dialog->findChild<TStockTools*>();
    const auto boxes = [&tools] { return tools.findChildren<QDoubleSpinBox*>(); };
    m_dialog->findChildren<QDoubleSpinBox*>()[2]->setValue(-7); // the lowest z
    boxes()[0]->setValue(6);
    Cut();
    Put("a.nc", Groove + "G1 Y10\n");
    m_window->OpenFiles({Path("a.nc")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return View().IsShown() && View().IsWhole(); }, 5000));
    EXPECT_EQ(Workpiece()->Stock()->Min()[2], -7);
    EXPECT_EQ(tools.Tools()[1].Diameter, 6);
    m_window->OpenFiles({Put("b.nc", Groove)});
    EXPECT_FALSE(View().IsShown());
    EXPECT_EQ(tools.Tools()[1].Diameter, 4);
}

TEST_F(StockWindow, WhateverHappensWhileItIsCutIsSafe) {
    QByteArray loops = "T1 M6 (D=8 ball)\nG1 F100 Z-2\n";
    for (int i = 0; i < 700; ++i)
        loops += QByteArrayLiteral("X40\nY") + QByteArray::number(i % 50) + "\nX0\n";
    const std::function<void()> events[] = {
        [&] { m_window->CloseFile(Path("long.nc")); },
        [&] { m_window->OpenFiles({Put("b.nc", "G1 X5\nG1 X7\n")}); },
        [&] { m_window->OpenFiles({PutDrawing()}); },
        [&] { Put("long.nc", Groove), m_window->AddFiles({Path("long.nc")}); },
        [&] { m_window->findChild<TPlayback*>()->SetPlaying(true); },
        [&] { Root(0).Clear(); },
        [&] { delete Root(0).GetItem(0); },
        [&] { delete Workpiece(); },
        [&] { delete m_dialog; },
        [&] { m_window->SaveAs(Path("s.zep")); },
        [&] { m_window->findChild<QDoubleSpinBox*>(QStringLiteral("RapidRate"))->setValue(5); },
        [&] { m_window.reset(); },
    };
    for (const auto& event : events) {
        SCOPED_TRACE(&event - events);
        m_window->OpenFiles({Put("long.nc", loops)});
        Action("Cut stock...")->trigger();
        m_dialog = m_window->findChild<TStockDialog*>();
        Press("Cut");
        QTest::qWait(5);
        EXPECT_TRUE(View().IsShown() && !View().IsWhole());
        event();
        QTest::qWait(30);
        if (!m_window) break;
        QTest::keyClick(&*m_window, Qt::Key_Down);
        QTest::keyClick(&*m_window, Qt::Key_End, Qt::ControlModifier);
        if (m_dialog) Press("Cut");
        QTest::qWait(20);
        if (m_dialog) Press("Remove");
    }
}

} // namespace
} // namespace ZEP
