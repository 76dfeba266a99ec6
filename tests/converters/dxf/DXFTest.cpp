#include "tests/converters/dxf/DXFFixture.h"
#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/Reader.h>
#include <zep/objects/Line.h>

namespace ZEP {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A point on the layer A of a drawing that declares it.
const std::string PointOnA = LayerTable({"2 A|62 5"}) + Entities("0 POINT|8 A");

TEST_F(DXF, TakesTheChildrenOfTheRootForLayers) {
    auto* there = new TZEPLine(&Root);
    there->SetIdent(QStringLiteral("A"));
    there->SetColor(clGreen);
    there->SetParentComponent(&Root);
    Converter.ReadDXF(Pairs(LayerTable({"2 a|62 3"}) + Entities("0 POINT|8 A")));
    EXPECT_EQ(Root.GetItemsCount(), 1);
    ASSERT_EQ(there->GetItemsCount(), 1);
    EXPECT_EQ(there->GetItem(0)->Color(), clLime);
}

TEST_F(DXF, LeavesPolylinesWithoutALayerAside) {
    Converter.SetCreateLayersIfNotExists(false);
    Read(Entities("0 POLYLINE|8 B|62 1|0 VERTEX|10 1|0 SEQEND|8 B"));
    EXPECT_EQ(Root.GetItemsCount(), 0);
    ASSERT_EQ(Root.ComponentCount(), 1);
    EXPECT_EQ(Root.Components(0)->ClassName(), QStringLiteral("TZEPPolyline"));
}

TEST_F(DXF, ForgetsTheExtentAndTheReportOfTheDrawingBefore) {
    Read("0 SECTION|2 HEADER|9 $EXTMAX|10 1|20 2|0 ENDSEC|" + Entities("0 HATCH"));
    EXPECT_EQ(Converter.get_max_extent(), (TGLArrayd3{1, 2, 0}));
    EXPECT_EQ(Converter.Report().Entries().size(), 1U);
    Read(PointOnA);
    EXPECT_EQ(Converter.get_max_extent(), zero3d);
    EXPECT_TRUE(Converter.Report().Entries().empty());
}

TEST_F(DXF, RefusesWhatIsNoDrawing) {
    const std::string expected =
        " is no DXF drawing: expected group codes and values in turn, a line "
        "each, with a SECTION among them; it begins with \"";
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {"G1 X1\nG1 X2\n", "G1 X1"},
        {"\x7F"
         "ELF\x02\x01",
         "?ELF??"},
        {Pairs("0 LINE|8 A"), "0"},
        {"a line that is longer than forty characters", "a line that is longer than forty charact"},
        {std::string(3, '\0'), "???"}};
    for (const auto& [text, beginning] : rows)
        EXPECT_EQ(ErrorOf([&, &drawing = text] { Converter.ReadDXF(drawing); }),
                  "TDXFConverter.LoadFromFile: The text" + expected + beginning + "\".");
    const std::string binary = "AutoCAD Binary DXF\r\n\x1A";
    EXPECT_EQ(ErrorOf([&] { Converter.ReadDXF(binary); }),
              "TDXFConverter.LoadFromFile: The text is binary DXF, and only its ASCII form can be "
              "read.");
    const QString file = Put("b.dxf", QByteArray::fromStdString(binary));
    Converter.SetFileName(file);
    EXPECT_THAT(ErrorOf([&] { Converter.LoadFromFile(); }),
                testing::HasSubstr("\"" + file.toStdString() + "\" is binary DXF"));
    EXPECT_EQ(ErrorOf([&] { Converter.ReadDXF(Pairs("999 nothing in it|0 EOF")); }), "");
}

/// Its transforms turn as its matrices do.
TEST_F(DXF, AnglesOfAFrameTurnLikeItsMatrix) {
    for (const TGLArrayd3& extrusion :
         {TGLArrayd3{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {0, -1, 0}, {1, 2, 3}, {0.01, 0, -1}})
        for (const double turn : {0.0, 30.0, -100.0, 180.0}) {
            TGLMatrixd4 m = ExtrusionFrame(extrusion);
            Rotated(turn, 0, 0, 1, m);
            TZEPObject object;
            const TGLArrayd3 angles = RotationAngles(m);
            object.XForm()->Rotate()->SetData(angles);
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_THAT(object.GetMatrix()[i],
                            testing::Pointwise(testing::DoubleNear(1e-9), m[i]));
        }
}

// --- bounds ------------------------------------------------------------------------------------

TEST_F(DXF, CountsAtMost200Kinds) {
    std::string entities = "0 " + std::string(100, 'x') + "|";
    for (int i = 0; i < 999; ++i) entities += "0 KIND" + std::to_string(i) + "|";
    Read(Entities(entities + "0 KIND7|0 \x01|0 "));
    const auto& entries = Converter.Report().Entries();
    ASSERT_EQ(entries.size(), 201U);
    EXPECT_EQ(entries[0].Kind, QString(40, u'x'));
    EXPECT_EQ(entries[8].Count, 2);
    EXPECT_EQ(entries.back().Kind, QStringLiteral("entities of further kinds"));
    EXPECT_EQ(entries.back().Count, 802);
}

TEST_F(DXF, TakesTheSameTimeForManyLayers) {
    std::string pairs;
    for (int i = 0; i < 20000; ++i) pairs += "0 INSERT|8 B|0 LINE|8 C" + std::to_string(i) + "|";
    Converter.ReadDXF(Pairs(Entities(pairs)));
    EXPECT_EQ(Root.GetItemsCount(), 20000);
}

TEST_F(DXF, TextsOfTooManyLinesEndEarly) {
    std::string text = "0 MTEXT|40 1|1 x";
    for (int i = 0; i < 5000; ++i) text += "\\Px";
    Converter.SetExtended(true);
    Read(Entities(text));
    EXPECT_EQ(Root.GetItem(0)->GetItemsCount(), 1000);
    EXPECT_THAT(Passed(), ElementsAre("MTEXT beyond the limit of objects 1"));
}

TEST_F(DXF, BlocksNestToALimitOnly) {
    std::string blocks = "0 BLOCK|2 B0|0 POINT|0 ENDBLK|";
    for (int i = 1; i <= TDXFScope::MaxDepth; ++i)
        blocks += "0 BLOCK|2 B" + std::to_string(i) + "|0 INSERT|2 B" + std::to_string(i - 1) +
                  "|0 ENDBLK|";
    const auto read = [&](int depth) {
        Converter.SetExtended(true);
        Read("0 SECTION|2 BLOCKS|" + blocks + "0 ENDSEC|" +
             Entities("0 INSERT|2 B" + std::to_string(depth)));
        return Passed();
    };
    EXPECT_THAT(read(TDXFScope::MaxDepth - 1), IsEmpty());
    EXPECT_THAT(read(TDXFScope::MaxDepth), ElementsAre("INSERT of blocks nested too deep 1"));
}

/// The host is asked within blocks, too.
TEST_F(DXF, BlocksPutUpWithAHostThatFreesWhatIsThere) {
    std::string blocks = "0 BLOCK|2 A|0 INSERT|2 B|8 0|0 INSERT|2 B|8 Walls|0 ENDBLK|0 BLOCK|2 B";
    for (int i = 0; i < 3000; ++i) blocks += i % 2 == 0 ? "|0 POINT|8 0" : "|0 POINT|8 Walls";
    Converter.SetExtended(true);
    int calls = 0;
    Converter.SetProgress([&](qint64, qint64) {
        ++calls;
        Root.Clear();
        return true;
    });
    Converter.ReadDXF(Pairs("0 SECTION|2 BLOCKS|" + blocks + "|0 ENDBLK|0 ENDSEC|" +
                            Entities("0 INSERT|2 A|8 Doors|70 5")));
    EXPECT_GT(calls, 5);
    EXPECT_LT(PointCount(), 30'000);
}

/// A block that is inserted two million times, in some hundred bytes.
TEST_F(DXF, ArraysTellTheirProgressAndCanBeCancelled) {
    const std::string text =
        Pairs("0 SECTION|2 BLOCKS|0 BLOCK|2 B|0 POINT|8 0|0 ENDBLK|0 ENDSEC|0 SECTION|2 ENTITIES|"
              "0 INSERT|2 B|70 1400|71 1400|44 1|45 1|0 POINT|8 0|0 ENDSEC|0 EOF");
    Converter.SetExtended(true);
    std::vector<double> told;
    int most = 1000;
    Converter.SetProgress([&](qint64 done, qint64 total) {
        told.push_back(static_cast<double>(done) / static_cast<double>(total));
        return static_cast<int>(told.size()) < most;
    });
    Converter.ReadDXF(text);
    EXPECT_FALSE(Converter.Cancelled());
    EXPECT_GT(told.size(), 10U);
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_GT(told.back(), told.front());
    EXPECT_LE(told.back(), 1);
    const int all = Root.GetItem(0)->GetItemsCount();
    EXPECT_GT(all, 100'000);
    EXPECT_LT(all, 200'000) << "each takes some hundred bytes, and so does its point";
    Root.Clear();
    told.clear();
    most = 3;
    Converter.ReadDXF(text);
    EXPECT_TRUE(Converter.Cancelled());
    EXPECT_LT(Root.GetItem(0)->GetItemsCount(), all / 2);
}

TEST_F(DXF, BlocksMakeNoMoreObjectsThanTheLimit) {
    // Ten levels of ten each: ten thousand million points.
    std::string blocks = "0 BLOCK|2 B0|0 POINT|0 ENDBLK|";
    for (int i = 1; i <= 10; ++i) {
        blocks += "0 BLOCK|2 B" + std::to_string(i) + "|";
        for (int k = 0; k < 10; ++k) blocks += "0 INSERT|2 B" + std::to_string(i - 1) + "|";
        blocks += "0 ENDBLK|";
    }
    blocks += "0 BLOCK|2 Nothing|0 ENDBLK|0 BLOCK|2 Curve|0 SPLINE|71 1";
    for (int i = 0; i < 160; ++i) blocks += "|10 " + std::to_string(i);
    const std::string beyond = "INSERT beyond the limit of objects ";
    const struct {
        const char *Name, *Entities;
        int Points;
        TTexts Passed;
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
        Root.Clear();
        const std::string text =
            Pairs("0 SECTION|2 BLOCKS|" + blocks + "|0 ENDBLK|0 ENDSEC|" + Entities(row.Entities));
        const auto bytes = static_cast<qint64>(text.size()) * TReadBudget::BytesOfEach;
        TDXFDrawing drawing(
            text, Root, {.Extended = true, .FreeBytes = 1000 * TDXFLimits::ObjectBytes - bytes});
        TDXFReader(drawing).Read();
        TReadReport report;
        drawing.Report.MoveTo(report, drawing.Text);
        EXPECT_EQ(PointCount(), row.Points) << row.Name;
        EXPECT_EQ(TextsOf(report), row.Passed) << row.Name;
    }
}

} // namespace
} // namespace ZEP
