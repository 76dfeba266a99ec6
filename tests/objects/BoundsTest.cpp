#include "tests/objects/TextScene.h"
#include <zep/objects/CirclePoints.h>

#include <QGuiApplication>

#include <numbers>

namespace ZEP {
namespace {

std::string Text(const TGLArrayd3& point) {
    QByteArray text;
    for (const double number : point) text += ' ' + QByteArray::number(number, 'g', 6);
    return text.toStdString();
}

/// Also `size Box1`, and the same `absolute`.
class TMeasuredScene : public TTextScene {
public:
    using TTextScene::TTextScene;

    std::string Do(const std::string& command) {
        const TWords words(command);
        Edit(words, command);
        if (words.Verb() != "size") return {};
        const TZEPObject& object = Object(words.At(1));
        const bool isAbsolute = words.At(2) == "absolute";
        TGLArrayd3 min, max;
        isAbsolute ? object.GetAbsoluteSize(min, max) : object.GetSize(min, max);
        const double radius = isAbsolute ? object.GetAbsoluteRadius() : object.GetRadius();
        return Text(min) + " to" + Text(max) + ", center" +
               Text(isAbsolute ? object.GetAbsoluteCenter() : object.GetCenter()) + ", radius " +
               QByteArray::number(radius, 'g', 6).toStdString();
    }
};

TEST(Bounds, AreAsTheyAreWrittenDown) {
    ExpectCases("bounds.txt", [](const TCase& c) { return Answers<TMeasuredScene>(c); });
}

// By every way through them, measuring would not come to an end.
TEST(Bounds, OfProxiesOfEachOtherEnd) {
    TTextScene scene("object S: TZEPScene object A: TZEPNode object Box: TZEPBox end end "
                     "object B: TZEPNode end end");
    for (int i = 0; i < 12; ++i)
        for (const auto& [in, of] : {std::pair{"A", "B"}, {"B", "A"}}) {
            auto* proxy = new TZEPProxy(&scene.Scene);
            proxy->SetParentComponent(&scene.Object(in));
            proxy->SetProxy(&scene.Object(of));
        }
    EXPECT_EQ(scene.Object("A").GetMax(), (TGLArrayd3{0.5, 0.5, 0.5}));
}

TEST(Bounds, FollowAVertexThatMoves) {
    TTextScene scene(
        "object S: TZEPScene object M: TZEPMesh Vertexes = <item end item X = 1 end> end "
        "object P: TZEPPolygon Vertexes = <item end item X = 1 end> end end");
    for (const auto& [name, vertexes] :
         {std::pair{"M", dynamic_cast<TZEPMesh&>(scene.Object("M")).Vertexes()},
          {"P", dynamic_cast<TZEPPolygon&>(scene.Object("P")).Vertexes()}}) {
        EXPECT_EQ(scene.Object(name).GetMax()[0], 1) << name;
        vertexes->Item(1)->SetX(7);
        EXPECT_EQ(scene.Object(name).GetMax()[0], 7) << name << ": kept bounds are out of date";
    }
}

TEST(Bounds, OfLabelsWithoutFontsAreEmpty) {
    ASSERT_EQ(qobject_cast<QGuiApplication*>(QCoreApplication::instance()), nullptr);
    TZEPLabel label;
    label.SetCaption(QStringLiteral("text"));
    EXPECT_EQ(label.GetMax(), zero3d);
}

TEST(PolygonMirror, IsSpannedByTheFirstThreeVertexes) {
    TZEPPolygon polygon;
    const auto add = [&](const TGLArrayd3& point) { polygon.Vertexes()->Add()->SetPoint(point); };
    add(unitx);
    add(unity);
    EXPECT_THAT(polygon.MirrorPoints(), testing::ElementsAre(zero3d, zero3d, zero3d));
    add(unitz);
    add({9, 9, 9});
    EXPECT_THAT(polygon.MirrorPoints(), testing::ElementsAre(unitx, unity, unitz));
}

/// Box of a hundred thousand points along the arc, by the rule of the angles alone.
void SampledBox(double start, double end, TGLArrayd3& min, TGLArrayd3& max) {
    constexpr int Samples = 100000;
    const double sweep = start < end ? end - start : end - start + 360;
    min = {1, 1, 0};
    max = {-1, -1, 0};
    for (int i = 0; i <= Samples; ++i) {
        const double angle = (start + sweep * i / Samples) * std::numbers::pi / 180;
        const TGLArrayd3 point{0.5 * std::cos(angle), 0.5 * std::sin(angle), 0};
        MinBoundsd(min, point);
        MaxBoundsd(max, point);
    }
}

TEST(Arc, BoxIsThatOfItsPoints) {
    struct Case {
        double Start, End;
    };
    for (const Case& c : {
             Case{0, 0},      Case{10, 10},     Case{350, 10},    Case{10, 350},    Case{10, 5},
             Case{0, 90},     Case{90, 180},    Case{89, 91},     Case{89.5, 90.5}, Case{90, 90.5},
             Case{0.5, 89.5}, Case{45, 50},     Case{180, 90},    Case{270, 0},     Case{0, 360},
             Case{-90, 90},   Case{-350, -10},  Case{-800, -700}, Case{700, 740},   Case{0, 720},
             Case{800, 10},   Case{359.9, 0.1}, Case{100, 50},    Case{360, 90},    Case{1e6, 1e6},
         }) {
        TZEPArc arc;
        arc.SetStartAngle(c.Start);
        arc.SetEndAngle(c.End);
        TGLArrayd3 min;
        TGLArrayd3 max;
        TGLArrayd3 sampledMin;
        TGLArrayd3 sampledMax;
        arc.GetSize(min, max);
        SampledBox(c.Start, c.End, sampledMin, sampledMax);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(min[axis], sampledMin[axis], 1e-8) << c.Start << " to " << c.End;
            EXPECT_NEAR(max[axis], sampledMax[axis], 1e-8) << c.Start << " to " << c.End;
        }
    }
}

TEST(Arc, AnglesBeyondAllMeasureStillEnd) {
    for (const double angle : {1e300, -1e300, 1e18, HUGE_VAL, -HUGE_VAL, double{NAN}}) {
        TZEPArc arc;
        arc.SetStartAngle(angle);
        TGLArrayd3 min;
        TGLArrayd3 max;
        arc.GetSize(min, max);
        arc.SetStartAngle(0);
        arc.SetEndAngle(angle);
        arc.GetSize(min, max);
        EXPECT_EQ(max[2], 0) << angle;
    }
}

TEST(CirclePoints, StayOnTheCircleOverAMillionSteps) {
    double x = 0;
    double y = 0;
    int count = 0;
    constexpr double Step = 2 * std::numbers::pi / 1000000;
    ForCirclePoints(0.25, Step, 1000001, [&](double px, double py) {
        x = px;
        y = py;
        ++count;
    });
    EXPECT_EQ(count, 1000001);
    EXPECT_NEAR(x, 0.5 * std::cos(0.25), 1e-9);
    EXPECT_NEAR(y, 0.5 * std::sin(0.25), 1e-9);
}

} // namespace
} // namespace ZEP
