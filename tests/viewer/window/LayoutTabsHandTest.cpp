#include "tests/converters/dxf/DXFPairs.h"
#include "tests/viewer/WindowTest.h"
#include "viewer/window/LayoutTabs.h"
#include <zep/sheets/Layout.h>
#include <zep/view/Panel.h>

#include <QMessageBox>
#include <QTimer>

namespace ZEP {
namespace {

class LayoutTabs : public WindowTest {
protected:
    QString PutSheets() {
        return Put("plan.dxf", QByteArray::fromStdString(
                                   Pairs("0 SECTION|2 OBJECTS|0 LAYOUT|100 AcDbLayout|1 B|71 2|"
                                         "0 LAYOUT|44 297|45 210|100 AcDbLayout|1 A & 1|71 1|"
                                         "0 ENDSEC|0 SECTION|2 ENTITIES|0 LINE|8 a|11 9|0 ENDSEC|"
                                         "0 EOF")));
    }
    [[nodiscard]] TLayoutTabs& Tabs() const { return *m_window->findChild<TLayoutTabs*>(); }
    /// Of the tabs and their texts, with what is shown behind.
    [[nodiscard]] std::string Shown() const {
        std::string text;
        for (int i = 0; i < Tabs().count(); ++i)
            text += (i == Tabs().currentIndex() ? "[" : " ") + Tabs().tabText(i).toStdString();
        const TZEPLayout* layout = Document().Layout();
        return text + (layout ? ": " + layout->Ident().toStdString() : ": none");
    }
    void Press(Qt::Key key) {
        QTest::keyClick(m_window->findChild<TZEPPanel*>(), key, Qt::ControlModifier);
    }
};

TEST_F(LayoutTabs, ShowTheSheetsOfADrawing) {
    Show({PutDrawing()});
    EXPECT_FALSE(Tabs().isVisible());
    EXPECT_FALSE(Action("Next sheet")->isEnabled());
    m_window->OpenFiles({PutSheets()});
    EXPECT_TRUE(Tabs().isVisible());
    EXPECT_EQ(Shown(), "[Model A && 1 B: none");
    QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(1).center());
    EXPECT_EQ(Shown(), " Model[A && 1 B: A & 1");
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Shown(), " Model A && 1[B: B");
    m_window->AddFiles({Path("plan.dxf")}); // read again
    EXPECT_EQ(Shown(), " Model A && 1[B: B");
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Shown(), "[Model A && 1 B: none");
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Shown(), " Model A && 1[B: B");
    m_window->CloseAll();
    EXPECT_FALSE(Tabs().isVisible());
    EXPECT_EQ(Shown(), "[Model: none");
}

TEST_F(LayoutTabs, OpenAtTheSheetThatIsAskedFor) {
    Show({});
    m_window->OpenFiles({PutSheets()}, QStringLiteral("b"));
    EXPECT_EQ(Shown(), " Model A && 1[B: B");
    QString error;
    QTimer::singleShot(50, [&error] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        error = box ? box->text() : QString();
        if (box) box->close();
    });
    m_window->OpenFiles({Path("plan.dxf")}, QStringLiteral("C"));
    EXPECT_TRUE(error.endsWith(QStringLiteral("has no layout \"C\": it has Model, A & 1, B.")));
    EXPECT_EQ(Shown(), "[Model A && 1 B: none");
}

} // namespace
} // namespace ZEP
