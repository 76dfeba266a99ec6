#include "tests/converters/dxf/DXFReading.h"

#include <zep/converters/dxf/Reader.h>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::ElementsAre;

/// A line of a unit along x, from (1, 0, 0).
const std::string Unit = "0 BLOCK|8 0|2 Unit|70 0|10 0|20 0|0 LINE|8 0|10 1|11 2|0 ENDBLK";
const std::string Based =
    "0 BLOCK|8 0|2 Based|10 1|20 2|30 3|0 POINT|10 1|20 2|30 3|0 POINT|10 2|20 2|30 3|0 ENDBLK";

struct TRow {
    const char* Name;
    std::string Entities;
    TLines Shapes;
    TLines Passed;
};

void Check(const std::vector<TRow>& rows, const std::string& blocks,
           const std::string& layers = {}) {
    for (const TRow& row : rows) {
        DXFReading reading(Drawing(row.Entities, blocks, layers));
        EXPECT_EQ(reading.Shapes(), row.Shapes) << row.Name;
        EXPECT_EQ(reading.Passed(), row.Passed) << row.Name;
    }
}

std::vector<TZEPObject*> PointsIn(const TZEPObject& root) {
    std::vector<TZEPObject*> points;
    root.ListChildren(points, {&TZEPPoint::staticMetaObject});
    return points;
}

TEST(DXFBlocks, AreInsertedByTheirTransform) {
    Check(
        {
            {"as it is", "0 INSERT|2 Unit", {"line (1 0 0) (2 0 0)"}, {}},
            {"name by case", "0 INSERT|2 UNIT", {"line (1 0 0) (2 0 0)"}, {}},
            {"moved", "0 INSERT|2 Unit|10 5|20 6|30 7", {"line (6 6 7) (7 6 7)"}, {}},
            {"turned", "0 INSERT|2 Unit|10 5|50 90", {"line (5 1 0) (5 2 0)"}, {}},
            {"scaled, then turned",
             "0 INSERT|2 Unit|41 3|42 5|43 7|50 90",
             {"line (0 3 0) (0 6 0)"},
             {}},
            {"mirrored", "0 INSERT|2 Unit|41 -1", {"line (-1 0 0) (-2 0 0)"}, {}},
            {"from below",
             "0 INSERT|2 Unit|10 5|20 6|30 7|50 90|210 0|220 0|230 -1",
             {"line (-5 7 -7) (-5 8 -7)"},
             {}},
            {"upright, turned",
             "0 INSERT|2 Unit|10 5|20 6|30 7|50 90|210 1|220 0|230 0",
             {"line (7 5 7) (7 5 8)"},
             {}},
            {"base point",
             "0 INSERT|2 Based|10 10|41 2|42 2|43 2|50 90",
             {"point (10 0 0)", "point (10 2 0)"},
             {}},
            {"rows and columns turn, and are not scaled",
             "0 INSERT|2 Unit|10 1|41 2|50 90|70 2|71 2|44 10|45 100",
             {"line (1 2 0) (1 4 0)", "line (1 12 0) (1 14 0)", "line (-99 2 0) (-99 4 0)",
              "line (-99 12 0) (-99 14 0)"},
             {}},
            {"negative rows and columns are one",
             "0 INSERT|2 Unit|70 -5|71 -2147483648|44 1",
             {"line (1 0 0) (2 0 0)"},
             {}},
            {"hidden", "0 INSERT|2 Unit|60 1", {"line (1 0 0) (2 0 0) hidden"}, {}},
            {"none of that name",
             "0 INSERT|2 None|0 INSERT|0 POINT",
             {"point (0 0 0)"},
             {"INSERT of a block that is not there 2"}},
            {"what comes next is not lost",
             "0 INSERT|2 Unit|0 POINT|10 9",
             {"line (1 0 0) (2 0 0)", "point (9 0 0)"},
             {}},
            {"dimension: what was drawn for it",
             "0 DIMENSION|2 Unit|10 5|11 6|50 90|70 1",
             {"line (1 0 0) (2 0 0)"},
             {}},
            {"dimension of which nothing was drawn", "0 DIMENSION|2 *D7", {}, {"DIMENSION 1"}},
        },
        Unit + "|" + Based);
}

TEST(DXFBlocks, NestWithTheirTransforms) {
    const std::string blocks =
        Unit + "|0 BLOCK|2 Two|0 INSERT|2 Unit|8 0|50 90|0 INSERT|2 Unit|8 0|10 10|0 ENDBLK"
               "|0 BLOCK|2 Four|0 INSERT|2 Two|8 0|0 INSERT|2 Two|8 0|20 100|0 ENDBLK";
    Check({{"Two",
            "0 INSERT|2 Two|8 A|41 2",
            {"A: line (0 1 0) (0 2 0)", "A: line (22 0 0) (24 0 0)"},
            {}},
           {"Four",
            "0 INSERT|2 Four|8 A|10 1",
            {"A: line (1 1 0) (1 2 0)", "A: line (12 0 0) (13 0 0)", "A: line (1 101 0) (1 102 0)",
             "A: line (12 100 0) (13 100 0)"},
            {}}},
          blocks);
    DXFReading reading(Drawing("0 INSERT|2 Four|8 A", blocks));
    EXPECT_THAT(reading.Paths(), testing::Each("/A/Four/Two/Unit/TZEPLine"));
}

TEST(DXFBlocks, TextsOfAnInsertionStandByTheDrawing) {
    const std::string insert = "0 INSERT|2 Unit|66 1|10 5|50 90|0 ATTRIB|1 B-12|2 NUMBER|10 5|"
                               "20 1|40 2|0 ATTRIB|1 secret|2 X|70 1|0 SEQEND|8 0|0 POINT|10 9";
    DXFReading reading(Drawing(insert, Unit));
    EXPECT_THAT(reading.Shapes(),
                ElementsAre("line (5 1 0) (5 2 0)", "label B-12 (5 1 0) (7 1 0) (5 3 0)",
                            "label secret (0 0 0) (1 0 0) (0 1 0) hidden", "point (9 0 0)"));
    EXPECT_EQ(reading.Scene.GetItem(0)->GetItem(1)->Ident(), QStringLiteral("NUMBER"));
}

TEST(DXFBlocks, LieOnTheirLayers) {
    const std::string blocks = "0 BLOCK|2 B|8 0|0 POINT|8 0|0 POINT|8 Walls|0 POINT|8 0|0 ENDBLK|"
                               "0 BLOCK|2 C|0 INSERT|2 B|8 0|0 INSERT|2 B|8 Walls|0 ENDBLK";
    // Those of layer "0" go with the insertion, through blocks in blocks, too.
    DXFReading one(Drawing("0 INSERT|2 B|8 Doors", blocks));
    EXPECT_THAT(one.Paths(),
                ElementsAre("/Doors/B/TZEPPoint", "/Doors/B/TZEPPoint", "/Walls/B/TZEPPoint"));
    DXFReading two(Drawing("0 INSERT|2 C|8 Doors", blocks));
    EXPECT_THAT(two.Paths(), ElementsAre("/Doors/C/B/TZEPPoint", "/Doors/C/B/TZEPPoint",
                                         "/Walls/C/B/TZEPPoint", "/Walls/C/B/TZEPPoint",
                                         "/Walls/C/B/TZEPPoint", "/Walls/C/B/TZEPPoint"));
}

TEST(DXFBlocks, FollowTheLayersThatAreOffOrFrozen) {
    const std::string layers = "0 LAYER|2 Off|70 0|62 -3|0 LAYER|2 Frozen|70 1|62 3";
    const std::string blocks =
        "0 BLOCK|2 B|0 POINT|8 0|0 POINT|8 On|0 POINT|8 Off|0 POINT|8 Frozen|0 ENDBLK|"
        "0 BLOCK|2 C|0 INSERT|2 B|8 Frozen|0 POINT|8 On|0 ENDBLK";
    const std::string hidden = "point (0 0 0) hidden";
    Check({{"none",
            "0 POINT|8 Off|0 POINT|8 Frozen|0 POINT|8 On",
            {"Off: " + hidden, "Frozen: " + hidden, "On: point (0 0 0)"},
            {}},
           {"on",
            "0 INSERT|2 B|8 On",
            {"Off: " + hidden, "Frozen: " + hidden, "On: point (0 0 0)", "On: point (0 0 0)"},
            {}},
           {"off hides what is on layer 0",
            "0 INSERT|2 B|8 Off",
            {"Off: " + hidden, "Off: " + hidden, "Frozen: " + hidden, "On: point (0 0 0)"},
            {}},
           {"frozen hides all",
            "0 INSERT|2 B|8 Frozen",
            {"Off: " + hidden, "Frozen: " + hidden, "Frozen: " + hidden, "On: " + hidden},
            {}},
           {"frozen within",
            "0 INSERT|2 C|8 On",
            {"Off: " + hidden, "Frozen: " + hidden, "Frozen: " + hidden, "On: " + hidden,
             "On: point (0 0 0)"},
            {}}},
          blocks, layers);
}

TEST(DXFBlocks, TakeTheirColours) {
    // By block, by layer on layer 0 and on another one, own, true colour.
    const std::string entities =
        "0 POINT|8 0|62 0|0 POINT|8 0|0 POINT|8 Blue|62 256|0 POINT|8 0|62 3|0 POINT|8 0|420 66051";
    const std::string blocks = "0 BLOCK|2 B|" + entities +
                               "|0 ENDBLK|0 BLOCK|2 C|0 INSERT|2 B|8 0|"
                               "62 0|0 ENDBLK";
    const std::string layers = "0 LAYER|2 0|62 1|0 LAYER|2 Blue|62 5|0 LAYER|2 Red|62 1|"
                               "0 LAYER|2 True|62 7|420 66051";
    constexpr TColor rgb{0x030201};
    const struct {
        const char* Insert;
        std::vector<TColor> Colors; // in the order of the layers
    } rows[] = {
        {"0 INSERT|2 B|8 Red|62 2", {clBlue, clYellow, clRed, clLime, rgb}},
        {"0 INSERT|2 B|8 Red", {clBlue, clRed, clRed, clLime, rgb}},
        {"0 INSERT|2 B|8 Red|62 0", {clBlue, clRed, clRed, clLime, rgb}},
        {"0 INSERT|2 B|8 Red|62 -2", {clBlue, clYellow, clRed, clLime, rgb}},
        {"0 INSERT|2 B|8 True", {clBlue, rgb, rgb, clLime, rgb}},
        {"0 INSERT|2 B|8 Red|62 2|420 65280", {clBlue, clLime, clRed, clLime, rgb}},
        {"0 INSERT|2 B|8 New", {clBlue, clWhite, clWhite, clLime, rgb}},
        {"0 INSERT|2 C|8 Red|62 2", {clBlue, clYellow, clRed, clLime, rgb}},
    };
    for (const auto& row : rows) {
        DXFReading reading(Drawing(row.Insert, blocks, layers));
        std::vector<TColor> colors;
        for (const TZEPObject* point : PointsIn(reading.Scene)) colors.push_back(point->Color());
        EXPECT_EQ(colors, row.Colors) << row.Insert;
    }
}

TEST(DXFBlocks, ThatAreOddAreReadAsFarAsTheyGo) {
    const struct {
        const char* Name;
        std::string Blocks;
        TLines Shapes;
    } rows[] = {
        {"no end", "0 BLOCK|2 B|0 POINT|0 POINT|10 1", {"point (0 0 0)", "point (1 0 0)"}},
        {"no end before the next",
         "0 BLOCK|2 B|0 POINT|0 BLOCK|2 C|0 POINT|0 ENDBLK",
         {"point (0 0 0)"}},
        {"the first of a name",
         "0 BLOCK|2 B|0 POINT|0 ENDBLK|0 BLOCK|2 b|0 ENDBLK",
         {"point (0 0 0)"}},
        {"nothing in it", "0 BLOCK|2 B|0 ENDBLK", {}},
        {"another file's", "0 BLOCK|2 B|70 4|1 other.dxf|0 POINT|0 ENDBLK", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DXFReading(Drawing("0 INSERT|2 B", row.Blocks)).Shapes(), row.Shapes) << row.Name;
    // Blocks behind the entities, in two sections.
    DXFReading late(Section("ENTITIES", "0 INSERT|2 A|0 INSERT|2 B") +
                    Section("BLOCKS", "0 BLOCK|2 A|0 POINT|0 ENDBLK") +
                    Section("BLOCKS", "0 BLOCK|2 B|0 POINT|10 1|0 ENDBLK"));
    EXPECT_THAT(late.Shapes(), ElementsAre("point (0 0 0)", "point (1 0 0)"));
}

TEST(DXFBlocks, PutUpWithAHostThatFreesWhatIsThere) {
    // The host is asked within blocks, too.
    std::string blocks = "0 BLOCK|2 A|0 INSERT|2 B|8 0|0 INSERT|2 B|8 Walls|0 ENDBLK|0 BLOCK|2 B";
    for (int i = 0; i < 3000; ++i) blocks += i % 2 == 0 ? "|0 POINT|8 0" : "|0 POINT|8 Walls";
    const std::string text = Drawing("0 INSERT|2 A|8 Doors|70 5", blocks + "|0 ENDBLK");
    TZEPScene scene;
    TDXFConverter converter;
    converter.SetRoot(&scene);
    converter.SetExtended(true);
    int calls = 0;
    converter.SetProgress([&](qint64, qint64) {
        ++calls;
        scene.Clear();
        return true;
    });
    converter.ReadDXF(text);
    EXPECT_GT(calls, 5);
    EXPECT_LT(PointsIn(scene).size(), 30'000U);
    converter.SetProgress([left = calls / 2](qint64, qint64) mutable { return --left > 0; });
    converter.ReadDXF(text);
    EXPECT_TRUE(converter.Cancelled());
    EXPECT_TRUE(converter.Report().Entries().empty());
}

TEST(DXFBlocks, InThemselvesAreNotInserted) {
    const std::string blocks =
        "0 BLOCK|2 Self|0 POINT|0 INSERT|2 SELF|0 ENDBLK|"
        "0 BLOCK|2 A|0 POINT|10 1|0 INSERT|2 B|0 ENDBLK|0 BLOCK|2 B|0 INSERT|2 A|0 ENDBLK";
    Check({{"self", "0 INSERT|2 Self", {"point (0 0 0)"}, {"INSERT of a block in itself 1"}},
           {"by another", "0 INSERT|2 A", {"point (1 0 0)"}, {"INSERT of a block in itself 1"}}},
          blocks);
}

TEST(DXFBlocks, NestToALimitOnly) {
    std::string blocks = "0 BLOCK|2 B0|0 POINT|0 ENDBLK";
    for (int i = 1; i <= TDXFScope::MaxDepth; ++i)
        blocks += "|0 BLOCK|2 B" + std::to_string(i) + "|0 INSERT|2 B" + std::to_string(i - 1) +
                  "|0 ENDBLK";
    const auto insert = [](int i) { return "0 INSERT|2 B" + std::to_string(i); };
    Check({{"deep", insert(TDXFScope::MaxDepth - 1), {"point (0 0 0)"}, {}},
           {"too deep", insert(TDXFScope::MaxDepth), {}, {"INSERT of blocks nested too deep 1"}}},
          blocks);
}

/// Objects made of a drawing whose blocks may make no more than `limit`.
int ObjectsOf(const std::string& text, qint64 limit, TLines& passed) {
    TZEPScene scene;
    TDXFDrawing drawing(text, scene, {.Extended = true, .MaxBlockObjects = limit});
    TDXFReader(drawing).Read();
    TReadReport report;
    drawing.Report.MoveTo(report, drawing.Text);
    for (const auto& entry : report.Entries())
        passed.push_back(entry.Kind.toStdString() + " " + std::to_string(entry.Count));
    return static_cast<int>(PointsIn(scene).size());
}

TEST(DXFBlocks, MakeNoMoreObjectsThanTheLimit) {
    // Ten levels of ten each: ten thousand million points.
    std::string bomb = "0 BLOCK|2 B0|0 POINT|0 ENDBLK";
    for (int i = 1; i <= 10; ++i) {
        bomb += "|0 BLOCK|2 B" + std::to_string(i);
        for (int k = 0; k < 10; ++k) bomb += "|0 INSERT|2 B" + std::to_string(i - 1);
        bomb += "|0 ENDBLK";
    }
    const std::string beyond = "INSERT beyond the limit of objects ";
    const std::string empty = "|0 BLOCK|2 Empty|0 HATCH|0 ENDBLK|0 BLOCK|2 Nothing|0 ENDBLK|"
                              "0 BLOCK|2 Curve|0 SPLINE|71 1";
    std::string curve;
    for (int i = 0; i < 160; ++i) curve += "|10 " + std::to_string(i);
    const std::string blocks = bomb + empty + curve + "|0 ENDBLK";
    const struct {
        const char* Name;
        const char* Entities;
        int Points;
        TLines Passed;
    } rows[] = {
        {"within", "0 INSERT|2 B1|0 INSERT|2 B1", 20, {}},
        // Eight levels down, 4 of 211 on the third, 7 of 21 on the second: 1000.
        {"bomb", "0 INSERT|2 B10|0 POINT", 471, {beyond + "1"}},
        {"array", "0 INSERT|2 B0|70 2147483647|71 2147483647|0 POINT", 501, {beyond + "1"}},
        {"array of nothing", "0 INSERT|2 Nothing|70 2147483647|71 2147483647|0 POINT", 1, {}},
        {"the first of several", "0 INSERT|2 B0|70 600|0 INSERT|2 B1|0 POINT", 501, {beyond + "2"}},
        {"exactly", "0 INSERT|2 B0|70 500", 500, {}},
        {"points of curves count",
         "0 INSERT|2 Curve|70 84|0 INSERT|2 B0|0 POINT",
         1,
         {beyond + "2"}},
    };
    for (const auto& row : rows) {
        TLines passed;
        EXPECT_EQ(ObjectsOf(Drawing(row.Entities, blocks), 1000, passed), row.Points) << row.Name;
        EXPECT_EQ(passed, row.Passed) << row.Name;
    }
    TLines passed;
    ObjectsOf(Drawing("0 INSERT|2 Empty|70 2147483647", blocks), 1000, passed);
    EXPECT_THAT(passed, testing::Contains(beyond + "1"));
}

} // namespace
} // namespace ZEP
