#include "tests/view/PanelFixture.h"
#include <zep/ZEPObjects.h>
#include <zep/scene/Vectors.h>

#include <QMouseEvent>
#include <QTemporaryDir>

#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {
namespace {

/// Seen from the front, 8 units to each side, 40 pixels each.
class Measuring : public Panel {
protected:
    void SetUp() override {
        Panel::SetUp();
        if (!Scene) return;
        Camera->SetOrthographic(true);
        Camera->Position()->SetData(0, -10, 0);
        Camera->SetFOVY(2 * std::atan(0.8) * 180 / std::numbers::pi);
        AddLine(Scene.get(), {-6, 0, -4}, {-2, 0, -4});
        auto* batch = Add<TZEPBatch>(Scene.get());
        Upright = AddLine(batch, {-3, 0, -5}, {-3, 0, -2});
        Ring = Add<TZEPCircle>(batch);
        Ring->XForm()->Scale()->SetData(4, 4, 4);
        Ring->XForm()->Rotate()->SetX(90);
        Ring->XForm()->Translate()->SetData(3, 0, 3);
        auto* box = Add<TZEPBox>(Scene.get());
        box->XForm()->Scale()->SetData(2, 2, 2);
        box->XForm()->Translate()->SetData(4, 0, -4);
        AddLine(Scene.get(), {std::numeric_limits<double>::quiet_NaN(), 0, 0}, {0, 0, 5});
        Window.setGeometry(20, 30, 640, 480);
        Show();
    }
    static TZEPLine* AddLine(TZEPObject* parent, const TGLArrayd3& from, const TGLArrayd3& to) {
        auto* line = Add<TZEPLine>(parent);
        line->P1()->SetData(from);
        line->P2()->SetData(to);
        return line;
    }
    [[nodiscard]] QPointF At(double x, double z) const {
        const TGLArrayd3 place = *View->GetScreenCoords({x, 0, z});
        return QPointF(place[0], place[1]) / View->devicePixelRatioF();
    }
    void Click(double x, double z) {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            if (!View) return;
            const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, At(x, z), View->mapToGlobal(At(x, z)), Qt::LeftButton, held,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(View, &event);
        }
    }
    [[nodiscard]] std::optional<TZEPSnap> Find(double x, double z) {
        const QPointF place = At(x, z) * View->devicePixelRatioF();
        View->MakeCurrent();
        const auto found =
            Snapper.Find(*Camera, {View->Width(), View->Height()}, place.x(), place.y());
        View->DoneCurrent();
        return found;
    }

    TZEPLine* Upright = nullptr;
    TZEPCircle* Ring = nullptr;
    TZEPSnapper Snapper;
};

TEST_F(Measuring, SnapsAreTheNearestOfTheirKind) {
    struct TCase {
        double X, Z;
        std::optional<TZEPSnapKind> Kind;
        TGLArrayd3 Point{};
    };
    using enum TZEPSnapKind;
    const TCase cases[] = {{-5.9, -3.9, End, {-6, 0, -4}},
                           {-4.1, -3.95, MiddlePoint, {-4, 0, -4}},
                           {-3.08, -4.05, Intersection, {-3, 0, -4}},
                           {-5.2, -4.1, Nearest, {-5.2, 0, -4}},
                           {3, 3, {}}, // nobody knows of the circle yet
                           {5.1, 3, Nearest, {5, 0, 3}},
                           {3.1, 3.1, Centre, {3, 0, 3}},
                           {3.05, -3.05, Vertex, {3, -1, -3}},
                           {4.05, -3.1, MiddlePoint, {4, -1, -3}},
                           {4.4, -4.4, Nearest, {4.4, -1, -4.4}},
                           {0, 5, {}}, // the end of what is no number
                           {-6, 5, {}}};
    for (const TCase& each : cases) {
        SCOPED_TRACE(testing::Message() << each.X << ", " << each.Z);
        const auto found = Find(each.X, each.Z);
        ASSERT_EQ(found.has_value(), each.Kind.has_value());
        if (!found) continue;
        EXPECT_EQ(NameOf(found->Kind), NameOf(*each.Kind));
        const double reach = each.Kind == Nearest ? 0.03 : 1e-9;
        EXPECT_LT(Distance(found->Point, each.Point), reach)
            << found->Point[0] << ", " << found->Point[1] << ", " << found->Point[2];
    }
    Camera->SetSections({TZEPSection{{0, -1, 0}, 0.5, true}});
    const auto behind = Find(3.05, -3.05);
    EXPECT_FALSE(behind && behind->Point[1] < 0) << "what is cut away";
}

TEST_F(Measuring, ClicksMeasureWhatStaysAndIsStored) {
    auto* tool = new TZEPMeasureTool(View);
    QStringList reports;
    QObject::connect(tool, &TZEPMeasureTool::Measured,
                     [&](TZEPDimension* made, TZEPObject*) { reports << made->Report(); });
    QString told;
    QObject::connect(tool, &TZEPMeasureTool::Told, [&](const QString& text) { told = text; });
    tool->SetSuffix(QStringLiteral("mm"));
    tool->Start(dmDistance);
    Click(-5.9, -3.9);
    Click(-6, 6);
    EXPECT_TRUE(told.startsWith(QLatin1String("There is nothing"))) << told.toStdString();
    EXPECT_EQ(tool->Points().size(), 1U);
    Click(-3, -4);
    tool->Start(dmRadius);
    Click(5, 3);
    tool->Start(dmAngle);
    for (const auto& [x, z] : {std::pair{-6.0, -4.0}, {-3.0, -4.0}, {-3.0, -2.0}}) Click(x, z);
    tool->Start(dmChain);
    for (const auto& [x, z] : {std::pair{3.0, -3.0}, {5.0, -3.0}, {5.0, -5.0}, {3.0, -3.0}})
        Click(x, z);
    EXPECT_EQ(reports.join(QLatin1Char('\n')).toStdString(),
              "Distance 3.000 mm (x 3.000, y 0.000, z 0.000)\n"
              "Radius 2.000 mm, diameter 4.000 mm, centre x 3.000, y 0.000, z 3.000\n"
              "Angle 90.000° at x -3.000, y 0.000, z -4.000\n"
              "Length 6.828 mm, area 2.000 mm²");
    EXPECT_EQ(Scene->GetItemsCount(), 5 + 4);
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("measures.zept"));
    Scene->GetItem(5)->SaveToTextFile(file);
    TZEPDimension loaded;
    loaded.LoadFromTextFile(file);
    EXPECT_EQ(loaded.Text().toStdString(), "3.000 mm");
    tool->Start(dmRadius);
    Click(-6, -4);
    for (const bool measures : {true, false}) { // takes back the point, then ends
        QTest::keyClick(View, Qt::Key_Escape);
        EXPECT_EQ(tool->Kind().has_value(), measures);
    }
}

TEST_F(Measuring, HandlersMayFreeWhatIsMeasuredAndThePanel) {
    auto* tool = new TZEPMeasureTool(View);
    tool->Start(dmDistance);
    Click(-3, -3);
    delete Upright;
    Settle();
    Click(-6, -4);
    EXPECT_EQ(Scene->GetItemsCount(), 6);
    QObject::connect(tool, &TZEPMeasureTool::Measured, [&](TZEPDimension* made, TZEPObject*) {
        delete made;
        delete View;
        View = nullptr;
    });
    Click(-6, -4);
    Click(-2, -4);
    EXPECT_FALSE(View);
    EXPECT_EQ(Scene->GetItemsCount(), 6);
}

} // namespace
} // namespace ZEP
