#include "tests/viewer/WindowTest.h"
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/Dimension.h>
#include <zep/view/Panel.h>

#include <QClipboard>
#include <QMouseEvent>

namespace ZEP {
namespace {

class MeasureMenu : public WindowTest {
protected:
    void Click(const TGLArrayd3& point) {
        TZEPPanel* panel = nullptr;
        for (TZEPPanel* each : m_window->findChildren<TZEPPanel*>())
            if (each->Camera() == Document().Camera()) panel = each;
        const TGLArrayd3 place = *panel->GetScreenCoords(point);
        const QPointF at = QPointF(place[0], place[1]) / panel->devicePixelRatioF();
        QMouseEvent press(QEvent::MouseButtonPress, at, panel->mapToGlobal(at), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(panel, &press);
    }
    [[nodiscard]] std::vector<TZEPObject*> Dimensions() const {
        std::vector<TZEPObject*> found;
        Root(0).ListChildren(found, {&TZEPDimension::staticMetaObject});
        return found;
    }
};

TEST_F(MeasureMenu, DimensionsStayAreUndoneCopiedSavedAndRemoved) {
    const QString drawing = PutDrawing();
    Show({drawing});
    Action("Distance")->trigger();
    const TZEPBounds box = *Document().Bounds();
    Click(box.Min);
    Click(box.Max);
    ASSERT_EQ(Dimensions().size(), 1U);
    const double length = Distance(box.Min, box.Max);
    EXPECT_NEAR(*static_cast<TZEPDimension*>(Dimensions().front())->Value(), length, 1e-9);
    Action("Copy all")->trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QLatin1String("Distance ")));
    Action("Reload")->trigger();
    EXPECT_EQ(Dimensions().size(), 1U) << "after the drawing is read again";
    m_window->SaveAs(Path("a.zept"));
    Action("Remove all")->trigger();
    EXPECT_EQ(Dimensions().size(), 0U);
    for (const char* text : {"Undo removing dimensions", "Redo removing dimensions"})
        Action(text)->trigger();
    EXPECT_EQ(Dimensions().size(), 0U);
    m_window->OpenFiles({Path("a.zept")});
    EXPECT_EQ(Dimensions().size(), 1U) << "saved with the drawing";
}

TEST_F(MeasureMenu, SectionsGoWithWhatTheyCut) {
    Show({PutModel()});
    const auto cuts = [this] { return Document().Camera()->Sections()[1].On; };
    Action("Across y")->trigger();
    EXPECT_TRUE(cuts());
    const double place = Document().Camera()->Sections()[1].Distance;
    Action("Flip y")->trigger();
    EXPECT_EQ(Document().Camera()->Sections()[1].Distance, -place);
    Action("Reload")->trigger();
    EXPECT_TRUE(cuts());
    m_window->CloseFile(Document().Files().front().Name);
    EXPECT_FALSE(cuts());
    EXPECT_FALSE(Action("Across y")->isEnabled());
    EXPECT_FALSE(Action("Distance")->isEnabled());
}

} // namespace
} // namespace ZEP
