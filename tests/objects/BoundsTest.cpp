#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/objects/TextScene.h"

#include <QGuiApplication>

namespace ZEP {
namespace {

std::string Text(const TGLArrayd3& point) {
    QByteArray text;
    for (const double number : point) text += ' ' + QByteArray::number(number, 'g', 6);
    return text.toStdString();
}

/// Behind a scene, which is a component stream: `> size Box1`, the same `absolute`, and
/// `> set Box1 SlicesX = 3`.
TEST(Bounds, AreAsTheyAreWrittenDown) {
    ExpectCases("bounds.txt", [](const TCase& c) {
        const auto first = CommandsIn(c.Input);
        TTextScene scene(c.Input.substr(0, first));
        return EachLine(
            {c.Name, c.Input.substr(first), {}}, [&](const std::string& line) -> std::string {
                const TWords words(line);
                const std::string name = words.At(2);
                if (words.At(1) == "set")
                    return scene.Set(name, line.substr(7 + name.size())), std::string();
                const TZEPObject& object = scene.Object(name);
                const bool isAbsolute = words.At(3) == "absolute";
                TGLArrayd3 min, max;
                isAbsolute ? object.GetAbsoluteSize(min, max) : object.GetSize(min, max);
                const double radius = isAbsolute ? object.GetAbsoluteRadius() : object.GetRadius();
                return Text(min) + " to" + Text(max) + ", center" +
                       Text(isAbsolute ? object.GetAbsoluteCenter() : object.GetCenter()) +
                       ", radius " + QByteArray::number(radius, 'g', 6).toStdString();
            });
    });
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

} // namespace
} // namespace ZEP
