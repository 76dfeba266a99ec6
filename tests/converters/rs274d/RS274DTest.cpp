#include "tests/converters/rs274d/RS274DFixture.h"
#include <zep/framework/Property.h>

#include <gmock/gmock.h>

#include <numbers>

namespace ZEP {
namespace {

using testing::ElementsAre;

TEST_F(RS274D, PublishesItsPropertiesInOrder) {
    QStringList names;
    for (const QMetaProperty& property : PublishedProperties(TRS274DConverter::staticMetaObject)) {
        names << QLatin1String(property.name());
        const QVariant standard = DeclaredDefault(TRS274DConverter::staticMetaObject, property);
        EXPECT_TRUE(!standard.isValid() || property.read(&Converter) == standard)
            << property.name();
    }
    EXPECT_EQ(names.mid(2).join(u' ').toStdString(),
              "DoDump Root ClearBeforRead FileName ShowQuickMove StopOnErrors Extended");
}

TEST_F(RS274D, APlainProgramBecomesLinesArcsAndPoints) {
    Converter.SetFileName(Data("plate.nc"));
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 10 0 5 style2 808080 @Line 5",
                                       "TZEPLine 10 0 5 > 10 0 -1 0000ff @Line 6",
                                       "TZEPArc 0 0 -1 x20 0..90 0000ff @Line 7",
                                       "TZEPLine 0 10 -1 > -10 10 -1 0000ff @Line 8",
                                       "TZEPPoint 0 0 -4 w5 00ff00 @Line 10",
                                       "TZEPPoint 5 0 -4 w5 00ff00 @Line 11",
                                       "TZEPLine 5 0 -4 > 5 0 20 style2 808080 @Line 13"));
    for (int i = 0; i < Root.GetItemsCount(); ++i) EXPECT_EQ(Root.GetItem(i)->Owner(), &Root);
    EXPECT_TRUE(Converter.Report().Entries().empty());
}

TEST_F(RS274D, AnExtendedProgramHasWholeHoles) {
    Converter.SetFileName(Data("plate.nc"));
    Converter.SetExtended(true);
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 10 0 5 style2 808080 @Line 5",
                                       "TZEPLine 10 0 5 > 10 0 -1 0000ff @Line 6",
                                       "TZEPArc 0 0 -1 x20 0..90 0000ff @Line 7",
                                       "TZEPLine 0 10 -1 > -10 10 -1 0000ff @Line 8",
                                       "TZEPLine -10 10 -1 > -10 10 2 style2 808080 @Line 10",
                                       "TZEPLine -10 10 2 > 0 0 2 style2 808080 @Line 10",
                                       "TZEPLine 0 0 2 > 0 0 -4 00ff00 @Line 10",
                                       "TZEPLine 0 0 -4 > 0 0 2 style2 808080 @Line 10",
                                       "TZEPLine 0 0 2 > 5 0 2 style2 808080 @Line 11",
                                       "TZEPLine 5 0 2 > 5 0 -4 00ff00 @Line 11",
                                       "TZEPLine 5 0 -4 > 5 0 2 style2 808080 @Line 11",
                                       "TZEPLine 5 0 2 > 5 0 20 style2 808080 @Line 13"));
    EXPECT_THAT(Read("G2X1I.5Z3"), ElementsAre("TZEPPolyline 37 points ffffff @Line 1"));
}

TEST_F(RS274D, InchesPlanesAndPauses) {
    Converter.SetFileName(Data("inch-planes.nc"));
    Converter.LoadFromFile();
    // M0 ends the plain reading, and the helix lies on its end.
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 2.54 0 0 style2 808080 @Line 3",
                                       "TZEPArc 0 0 0 x5.08 0..90 0000ff @Line 4",
                                       "TZEPArc 0 0 2.54 x5.08 0..90 0000ff @Line 5"));
    Converter.SetExtended(true);
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 25.4 0 0 style2 808080 @Line 3",
                                       "TZEPArc 0 0 0 x50.8 0..90 0000ff @Line 4",
                                       "TZEPPolyline 19 points 0000ff @Line 5",
                                       "TZEPArc 0 0 25.4 x50.8 0..0 0000ff @Line 7",
                                       "TZEPArc 25.4 25.4 25.4 x50.8 0..0 0000ff @Line 8",
                                       "TZEPLine 25.4 0 25.4 > 25.4 0 0 00ff00 @Line 9",
                                       "TZEPLine 25.4 0 0 > 50.8 0 0 00ff00 @Line 10"));
}

TEST_F(RS274D, OffsetsRepeatsAndHoles) {
    Converter.SetFileName(Data("offsets.nc"));
    Converter.LoadFromFile();
    // Plain: a move is repeated, G92 and G28 are no more than their axis words.
    EXPECT_THAT(
        Objects(),
        ElementsAre(
            "TZEPLine 0 0 0 > 10 0 0 style2 808080 @Line 2",
            "TZEPLine 10 0 0 > 10 5 0 ffffff @Line 3", "TZEPLine 10 5 0 > 10 10 0 ffffff @Line 3",
            "TZEPLine 10 10 0 > 10 15 0 ffffff @Line 3",
            "TZEPLine 10 15 0 > 10 15 0 ffffff @Line 4", "TZEPLine 10 15 0 > 1 15 0 ffffff @Line 5",
            "TZEPPoint 2 2 -1 w5 ffffff @Line 6", "TZEPPoint 4 2 -1 w5 ffffff @Line 7",
            "TZEPPoint 4 2 -1 w5 ffffff @Line 7", "TZEPLine 4 2 -1 > 5 2 -1 ffffff @Line 10"));
    Converter.SetExtended(true);
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 10 0 0 style2 808080 @Line 2",
                                       "TZEPLine 10 0 0 > 10 5 0 ffffff @Line 3",
                                       "TZEPLine 10 5 0 > 11 5 0 ffffff @Line 5",
                                       "TZEPLine 11 5 0 > 11 5 1 style2 808080 @Line 6",
                                       "TZEPLine 11 5 1 > 12 7 1 style2 808080 @Line 6",
                                       "TZEPLine 12 7 1 > 12 7 -1 ffffff @Line 6",
                                       "TZEPLine 12 7 -1 > 12 7 1 style2 808080 @Line 6",
                                       "TZEPLine 12 7 1 > 14 7 1 style2 808080 @Line 7",
                                       "TZEPLine 14 7 1 > 14 7 -1 ffffff @Line 7",
                                       "TZEPLine 14 7 -1 > 14 7 1 style2 808080 @Line 7",
                                       "TZEPLine 14 7 1 > 10 7 1 style2 808080 @Line 9",
                                       "TZEPLine 10 7 1 > 0 7 1 style2 808080 @Line 9",
                                       "TZEPLine 0 7 1 > 15 7 1 ffffff @Line 10"));
}

TEST_F(RS274D, ToolColorsGoRound) {
    const struct {
        int Changes;
        std::uint32_t Color;
    } rows[] = {{0, 0xFFFFFF}, {1, 0x0000FF}, {2, 0x00FF00}, {3, 0xFF0000}, {4, 0xFFFF00},
                {5, 0xFF00FF}, {6, 0x00FFFF}, {7, 0xFFFFFF}, {8, 0x0000FF}};
    for (const auto& row : rows) {
        std::string program;
        for (int i = 0; i < row.Changes; ++i) program += "M6\n";
        Read(program + "G1X1");
        EXPECT_EQ(Root.GetItem(0)->Color(), TColor(row.Color)) << row.Changes;
        EXPECT_EQ(Converter.PathColor(), TColor(row.Color)) << row.Changes;
    }
}

TEST_F(RS274D, HiddenRapidsStillMoveThePosition) {
    Converter.SetShowQuickMove(false);
    EXPECT_THAT(Read("G0X1\nG1X2"), ElementsAre("TZEPLine 1 0 0 > 2 0 0 ffffff @Line 2"));
}

/// Where an arc object has its points in the scene.
TGLArrayd3 OnArc(TZEPArc* arc, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    TGLArrayd3 point;
    arc->ConvertToAbsolute({0.5 * std::cos(angle), 0.5 * std::sin(angle), 0}, point);
    return point;
}

void ExpectNear(const TGLArrayd3& point, const TGLArrayd3& expected, const std::string& what) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(point[i], expected[i], 1e-9) << what;
}

TEST_F(RS274D, ArcObjectsEndOnTheProgrammedPoints) {
    const struct {
        const char* Arc;
        TGLArrayd3 End;
        bool FromEnd[2]; // the object starts at the arc's end: plain, extended
    } rows[] = {
        {"G17G3X0Y4R3", {0, 4, 0}, {false, false}}, {"G17G2X0Y4R3", {0, 4, 0}, {true, true}},
        {"G18G3X0Z4R3", {0, 0, 4}, {false, true}},  {"G18G2X0Z4R3", {0, 0, 4}, {true, false}},
        {"G19G3Y1Z4R3", {3, 1, 4}, {false, false}}, {"G19G2Y1Z4R3", {3, 1, 4}, {true, true}},
    };
    const TGLArrayd3 start{3, 0, 0};
    for (const bool extended : {false, true})
        for (const auto& row : rows) {
            Converter.SetExtended(extended);
            Read(std::string("G0X3\n") + row.Arc);
            auto* arc = qobject_cast<TZEPArc*>(Root.GetItem(1));
            ASSERT_NE(arc, nullptr) << row.Arc;
            const bool fromEnd = row.FromEnd[extended];
            ExpectNear(OnArc(arc, arc->StartAngle()), fromEnd ? row.End : start, row.Arc);
            ExpectNear(OnArc(arc, arc->EndAngle()), fromEnd ? start : row.End, row.Arc);
            EXPECT_NEAR(arc->XForm()->Scale()->X(), 6, 1e-9);
        }
}

TEST_F(RS274D, FullCirclesGoAroundTheirStatedCenterInEveryPlane) {
    const struct {
        const char* Circle;
        TGLArrayd3 Min, Max;
    } rows[] = {
        {"G17G2I2J0", {3, -1, 1}, {7, 3, 1}}, {"G17G3X3Y1I0J-1", {2, -1, 1}, {4, 1, 1}},
        {"G18G3I0K3", {0, 1, 1}, {6, 1, 7}},  {"G18G2X3Z1K-3", {0, 1, -5}, {6, 1, 1}},
        {"G19G2J-1", {3, -1, 0}, {3, 1, 2}},  {"G19G3J3K4X3", {3, -1, 0}, {3, 9, 10}},
    };
    for (const bool extended : {false, true})
        for (const auto& row : rows) {
            Converter.SetExtended(extended);
            Read(std::string("G0X3Y1Z1\n") + row.Circle);
            ASSERT_EQ(Root.GetItemsCount(), 2) << row.Circle;
            auto* circle = qobject_cast<TZEPArc*>(Root.GetItem(1));
            ASSERT_NE(circle, nullptr) << row.Circle;
            EXPECT_EQ(circle->StartAngle(), circle->EndAngle());
            TGLArrayd3 min, max;
            circle->GetAbsoluteSize(min, max);
            ExpectNear(min, row.Min, row.Circle);
            ExpectNear(max, row.Max, row.Circle);
        }
}

TEST_F(RS274D, ForgetsARootThatIsFreed) {
    auto* root = new TZEPObject(&Scene);
    Converter.SetRoot(root);
    Converter.SetRoot(&Root);
    delete root;
    EXPECT_EQ(Converter.Root(), &Root);
    root = new TZEPObject(&Scene);
    Converter.SetRoot(root);
    delete root;
    EXPECT_EQ(Converter.Root(), nullptr);
}

} // namespace
} // namespace ZEP
