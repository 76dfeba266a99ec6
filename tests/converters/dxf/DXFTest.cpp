#include "tests/converters/dxf/DXFFixture.h"

#include <climits>

namespace ZEP {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(DXF, MakesAnObjectOfAnEntity) {
    const struct {
        const char* Entity;
        const char* Object;
    } rows[] = {
        {"0 POINT|8 A|10 1|20 2|30 3", "TZEPPoint 1 2 3"},
        {"0 LINE|8 A|10 1|20 2|30 3|11 -4|21 5.5|31 6", "TZEPLine 1 2 3 > -4 5.5 6"},
        {"0 LINE|8 A", "TZEPLine 0 0 0 > 0 0 0"},
        {"0 CIRCLE|8 A|10 1|20 2|30 3|40 2.5", "TZEPCircle 1 2 3 x 5 5 0 in 45"},
        {"0 ARC|8 A|10 1|20 2|40 1|50 30|51 400", "TZEPArc 1 2 0 x 2 2 0 in 45 from 30 to 400"},
        {"0 TEXT|8 A|10 1|20 2|30 3|40 0.5|1  a B |50 90", "TZEPLabel ' a B ' 1 2 3 x 0.5 0.5 0.5"},
        {"0 3DFACE|8 A|11 1|12 1|22 1|13 1|23 1", "TZEPPolygon 0 0 0, 1 0 0, 1 1 0, 1 1 0"},
        {"0 3DFACE|8 A|13 7", "TZEPPolygon 0 0 0, 0 0 0, 0 0 0, 7 0 0"},
        // A number that is none is 0; of a group that is there twice the last one counts.
        {"0 LINE|8 A|10 6,5|20 x|11 1|11 2", "TZEPLine 0 0 0 > 2 0 0"},
        // Other groups mean nothing, also those whose numbers look alike.
        {"0 POINT|8 A|10 1|100 AcDbPoint|110 5|1010 5|39 5|14 5|40 5|34 5", "TZEPPoint 1 0 0"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(ReadOnA(row.Entity), ElementsAre("A/" + std::string(row.Object) + " ff0000"));
}

TEST_F(DXF, SetsWhatAnEntityImplies) {
    Read(LayerTable({"2 A"}) + Entities("0 TEXT|8 A|1 x|0 3DFACE|8 A|0 POLYLINE|8 A|0 SEQEND|8 A"));
    TZEPObject* layer = Root.GetItem(0);
    ASSERT_EQ(layer->GetItemsCount(), 3);
    auto* label = qobject_cast<TZEPLabel*>(layer->GetItem(0));
    EXPECT_FALSE(label->BitmapFont());
    EXPECT_EQ(label->Font()->Name(), QStringLiteral("Arial"));
    EXPECT_FALSE(qobject_cast<TZEPPolygon*>(layer->GetItem(1))->ColorVertexes());
    auto* polyline = qobject_cast<TZEPPolyline*>(layer->GetItem(2));
    EXPECT_FALSE(polyline->Smooth());
    EXPECT_EQ(polyline->OrigColor(), polyline->Color());
    for (int i = 0; i < 3; ++i) EXPECT_EQ(layer->GetItem(i)->Owner(), &Root);
    EXPECT_EQ(layer->Owner(), &Root);
    EXPECT_EQ(Root.UpdateLevel(), 0);
}

TEST_F(DXF, NamesObjectsByTheirGroup2) {
    EXPECT_THAT(ReadOnA("0 POINT|8 A|2 P1|0 POLYLINE|8 A|2 chain|0 SEQEND|8 A"),
                ElementsAre("A/TZEPPoint 0 0 0 ff0000 @P1", "A/TZEPPolyline  ff0000 @chain"));
}

TEST_F(DXF, ColorsAnEntityByItsNumberOrItsLayer) {
    const std::string layers = LayerTable({"2 A|62 5"});
    const struct {
        std::string Number;
        const char* Color;
    } rows[] = {{"1", "0000ff"},    {"-1", "0000ff"},    {"200", "ffffff"},
                {"0", "ff0000"},    {"256", "ff0000"},   {"-256", "ff0000"},
                {"1000", "ff0000"}, {"x", "ff0000"},     {std::to_string(INT_MIN), "ff0000"},
                {"255", "ffffff"},  {"     3", "00ff00"}};
    for (const auto& row : rows) {
        EXPECT_THAT(Read(layers + Entities("0 POINT|8 A|62 " + row.Number)),
                    ElementsAre(std::string("A/TZEPPoint 0 0 0 ") + row.Color))
            << row.Number;
        EXPECT_THAT(Read(layers + Entities("0 POLYLINE|8 A|62 " + row.Number + "|0 SEQEND|8 A")),
                    ElementsAre(std::string("A/TZEPPolyline  ") + row.Color))
            << row.Number;
    }
}

// --- layers ------------------------------------------------------------------------------------

TEST_F(DXF, MakesALayerOfEachRecord) {
    const struct {
        TTexts Records;
        TTexts Layers;
    } rows[] = {
        {{"5 1|2 A|70 0|62 1|6 CONTINUOUS", "2 B|62 2"}, {"A 0000ff", "B 00ffff"}},
        {{"2 A|62 1", "2 a|62 2"}, {"A 00ffff"}}, // one layer, compared without case
        {{"62 1|2 A"}, {"A c0c0c0"}},             // a colour in front of the name
        {{"2 A|62 -7"}, {"A ffffff"}},            // switched off
        {{"2 A|62 256", "2 B|62 0"}, {"A c0c0c0", "B 000000"}},
        {{"62 1", "2 B"}, {"B c0c0c0"}}, // a record without a name
        {{"2 A|2 B|62 1"}, {"A 0000ff"}},
        {{"2 "}, {" c0c0c0"}},
    };
    for (const auto& row : rows) {
        Read(LayerTable(row.Records) + Entities(""));
        EXPECT_EQ(Layers(), row.Layers) << row.Records[0];
    }
}

TEST_F(DXF, ReadsTheLayersAmongOtherTables) {
    Read(
        "0 SECTION|2 TABLES|0 TABLE|2 VPORT|0 VPORT|2 LAYER|62 1|0 ENDTAB|0 TABLE|5 2|2 LAYER|70 1|"
        "0 LAYER|2 A|62 3|0 ENDTAB|0 TABLE|2 STYLE|0 STYLE|2 LAYER|0 ENDTAB|0 TABLE|2 LAYER|"
        "0 LAYER|2 B|62 4|0 ENDTAB|0 ENDSEC|0 EOF");
    EXPECT_THAT(Layers(), ElementsAre("A 00ff00", "B ffff00"));
}

TEST_F(DXF, FindsALayerWithoutRegardToCase) {
    EXPECT_THAT(
        Read(LayerTable({"2 W\xC3\xA4nde|62 1", "2 B|62 2"}) +
             Entities("0 POINT|8 W\xC3\x84NDE|0 POINT|8 b|0 POINT|8 w\xC3\xA4nde|0 POINT|8 B ")),
        ElementsAre("W\xC3\xA4nde/TZEPPoint 0 0 0 0000ff", "W\xC3\xA4nde/TZEPPoint 0 0 0 0000ff",
                    "B/TZEPPoint 0 0 0 00ffff"));
    EXPECT_THAT(Passed(), ElementsAre("POINT on an undeclared layer: 1 @43"));
}

TEST_F(DXF, TakesTheChildrenOfTheRootForLayers) {
    auto* there = new TZEPLine(&Root);
    there->SetIdent(QStringLiteral("A"));
    there->SetColor(clGreen);
    there->SetParentComponent(&Root);
    Converter.ReadDXF(Pairs(LayerTable({"2 a|62 3"}) + Entities("0 POINT|8 A")));
    EXPECT_EQ(Root.GetItemsCount(), 1);
    EXPECT_THAT(Objects(), ElementsAre("A/TZEPPoint 0 0 0 00ff00"));
}

TEST_F(DXF, DropsWhatIsOnNoLayer) {
    for (const bool create : {false, true}) {
        Converter.SetCreateLayersIfNotExists(create);
        for (const char* kind : {"POINT", "TEXT", "LINE", "CIRCLE", "ARC", "3DFACE"}) {
            const std::string entity = std::string("0 ") + kind + "|62 1|8 ";
            EXPECT_THAT(ReadOnA(entity + "B|" + entity + "C"), IsEmpty());
            EXPECT_EQ(Root.GetItemsCount(), 1);
            EXPECT_THAT(Passed(),
                        ElementsAre(std::string(kind) + " on an undeclared layer: 2 @25"));
        }
    }
}

TEST_F(DXF, MakesLayersWithoutANameForInsertsAndPolylines) {
    const std::string drawing =
        Entities("0 INSERT|8 B|62 1|0 INSERT|8 B|62 2|0 POLYLINE|8 B|62 3|0 SEQEND|8 B|"
                 "0 LINE|8 B|0 POINT|62 0|0 POLYLINE|8 C|62 256|0 SEQEND|8 C");
    Read(drawing);
    EXPECT_THAT(Layers(), ElementsAre(" 0000ff", " 00ffff", " 00ff00", " c0c0c0"));
    // What names no layer finds the first without a name; what names B finds none.
    EXPECT_THAT(Objects(), ElementsAre("/TZEPPoint 0 0 0 0000ff", "/TZEPPolyline  00ff00",
                                       "/TZEPPolyline  c0c0c0"));
    EXPECT_THAT(Passed(), ElementsAre("INSERT: 2 @5", "LINE on an undeclared layer: 1 @27"));
}

TEST_F(DXF, LeavesPolylinesWithoutALayerAside) {
    Converter.SetCreateLayersIfNotExists(false);
    Read(Entities("0 INSERT|8 B|0 POLYLINE|8 B|62 1|0 VERTEX|10 1|0 SEQEND|8 B|0 POLYLINE|8 B|"
                  "0 SEQEND|8 B"));
    EXPECT_EQ(Root.GetItemsCount(), 0);
    TTexts owned;
    for (int i = 0; i < Root.ComponentCount(); ++i)
        owned.push_back(DescribeEntity(qobject_cast<TZEPObject*>(Root.Components(i))));
    EXPECT_THAT(owned, testing::UnorderedElementsAre("none/TZEPPolyline 1 0 0 0000ff",
                                                     "none/TZEPPolyline  c0c0c0"));
}

// --- polylines and meshes ----------------------------------------------------------------------

TEST_F(DXF, ReadsPolylines) {
    EXPECT_THAT(
        ReadOnA("0 POLYLINE|8 A|66 1|70 1|10 9|0 VERTEX|8 A|10 1|20 2|30 3|0 VERTEX|8 A|10 4|"
                "70 192|0 SEQEND|8 A|0 POLYLINE|8 A|70 8|0 VERTEX|10 5|0 SEQEND|8 A"),
        ElementsAre("A/TZEPPolyline 1 2 3, 4 0 0 closed ff0000", "A/TZEPPolyline 5 0 0 ff0000"));
    EXPECT_THAT(Passed(), IsEmpty());
}

TEST_F(DXF, ReadsPolyfaceMeshes) {
    const std::string places =
        "0 POLYLINE|8 A|62 3|2 mesh|70 64|0 VERTEX|70 192|0 VERTEX|10 1|70 192|"
        "0 VERTEX|10 1|20 1|70 192|0 VERTEX|20 1|70 192|";
    const struct {
        const char* Records;
        const char* Faces;
        TTexts Passed;
    } rows[] = {
        {"0 VERTEX|70 128|71 1|72 2|73 3|74 4", "(0, 1, 2) (0, 2, 3)", {}},
        {"0 VERTEX|70 128|71 1|72 2|73 3", "(0, 1, 2)", {}},
        {"0 VERTEX|70 128|71 -1|72 2|73 -3|74 -4", "(0, 1, 2) (0, 2, 3)", {}},
        {"0 VERTEX|70 128|71 4|72 3|73 2|74 0|0 VERTEX|70 128|71 1|72 3|73 2",
         "(3, 2, 1) (0, 2, 1)",
         {}},
        // Corners that are not there are kept: such a face is not drawn.
        {"0 VERTEX|70 128|71 1|72 2|73 9000", "(0, 1, 8999)", {}},
        {"0 VERTEX|70 128|71 1|72 2", "", {"POLYLINE faces of fewer than three corners: 1 @59"}},
        {"0 VERTEX|70 128|71 1|0 VERTEX|70 128",
         "",
         {"POLYLINE faces of fewer than three corners: 2 @59"}},
        {"0 VERTEX|70 128|71 1|72 2|74 3",
         "",
         {"POLYLINE faces of fewer than three corners: 1 @59"}},
        {"0 VERTEX|70 128|71 1|72 2|73 -2147483648",
         "",
         {"POLYLINE faces of fewer than three corners: 1 @59"}},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(ReadOnA(places + row.Records + "|0 SEQEND|8 A"),
                    ElementsAre(std::string("A/TZEPMesh 0 0 0, 1 0 0, 1 1 0, 0 1 0 faces ") +
                                row.Faces + " 00ff00 @mesh"))
            << row.Records;
        EXPECT_EQ(Passed(), row.Passed) << row.Records;
        EXPECT_FALSE(qobject_cast<TZEPMesh*>(Root.GetItem(0)->GetItem(0))->ColorFaces());
        EXPECT_EQ(Root.ComponentCount(), 2) << "the layer and the mesh";
    }
}

TEST_F(DXF, TakesFlagsOf128AloneForFaces) {
    EXPECT_THAT(ReadOnA("0 POLYLINE|8 A|0 VERTEX|70 129|10 1|71 1|72 2|73 3|0 SEQEND|8 A"),
                ElementsAre("A/TZEPPolyline 1 0 0 ff0000"));
}

TEST_F(DXF, PassesThePairBehindASequence) {
    // The plain reading passes it whatever it is.
    const std::string entities =
        "0 POLYLINE|8 A|0 VERTEX|10 1|0 VERTEX|10 2|0 SEQEND|0 LINE|8 A|10 1|0 POINT|8 A|"
        "0 INSERT|8 A|66 1|0 ATTRIB|8 A|0 SEQEND|0 LINE|8 A|0 POINT|8 A|10 2";
    EXPECT_THAT(ReadOnA(entities),
                ElementsAre("A/TZEPPolyline 1 0 0, 2 0 0 ff0000", "A/TZEPPoint 0 0 0 ff0000",
                            "A/TZEPPoint 2 0 0 ff0000"));
    Converter.SetExtended(true);
    EXPECT_THAT(ReadOnA(entities), testing::SizeIs(5));
}

TEST_F(DXF, PassesAnInsertWithItsAttributes) {
    EXPECT_THAT(ReadOnA("0 INSERT|8 A|2 block|66 1|0 ATTRIB|8 A|1 x|0 LINE|8 A|0 ATTRIB|8 B|62 1|"
                        "0 SEQEND|8 A|0 POINT|8 A"),
                ElementsAre("A/TZEPPoint 0 0 0 ff0000"));
    EXPECT_THAT(Layers(), ElementsAre("A ff0000", " 0000ff")) << "made for the second attribute";
    EXPECT_THAT(Passed(), ElementsAre("INSERT: 1 @25", "ATTRIB: 2 @33"));
    EXPECT_THAT(ReadOnA("0 INSERT|8 A|66 0|0 POINT|8 A"), testing::SizeIs(1));
}

// --- sections ----------------------------------------------------------------------------------

TEST_F(DXF, ReadsSectionsInAnyOrder) {
    const std::string header =
        "0 SECTION|2 HEADER|9 $EXTMIN|10 -1|20 -2|30 -3|9 $EXTMAX|10 1|20 2|30 3|"
        "9 $LTSCALE|40 7|0 ENDSEC|";
    const std::string tables = LayerTable({"2 A|62 5"});
    const std::string entities = "0 SECTION|2 ENTITIES|0 POINT|8 A|0 ENDSEC|";
    const std::string others = "0 SECTION|2 BLOCKS|0 BLOCK|0 LINE|8 A|0 ENDBLK|0 ENDSEC|0 SECTION|"
                               "2 OBJECTS|0 LINE|8 A|0 ENDSEC|";
    const std::string eof = "0 EOF";
    for (const std::string& drawing :
         {header + tables + entities + others + eof, entities + header + others + tables + eof,
          others + entities + tables + header,
          tables + others + "999 remark|" + header + entities}) {
        EXPECT_THAT(Read(drawing), ElementsAre("A/TZEPPoint 0 0 0 ff0000"));
        EXPECT_EQ(Converter.get_min_extent(), (TGLArrayd3{-1, -2, 0}));
        EXPECT_EQ(Converter.get_max_extent(), (TGLArrayd3{1, 2, 0}));
        EXPECT_THAT(Passed(), IsEmpty());
    }
    Read(tables + eof);
    EXPECT_EQ(Converter.get_max_extent(), zero3d) << "of the drawing before";
}

TEST_F(DXF, ReadsTheFirstSectionOfAKind) {
    const std::string drawing = LayerTable({"2 A|62 5"}) + LayerTable({"2 B|62 5"}) +
                                "0 SECTION|2 ENTITIES|0 POINT|8 A|0 ENDSEC|" +
                                Entities("0 POINT|8 B");
    EXPECT_THAT(Read(drawing), ElementsAre("A/TZEPPoint 0 0 0 ff0000"));
    EXPECT_THAT(Layers(), ElementsAre("A ff0000"));
    Converter.SetExtended(true);
    EXPECT_THAT(Read(drawing), ElementsAre("A/TZEPPoint 0 0 0 ff0000", "B/TZEPPoint 0 0 0 ff0000"));
}

TEST_F(DXF, CountsWhatItPasses) {
    std::string entities;
    const std::string longKind(100, 'x');
    for (int i = 0; i < 300; ++i) {
        const std::string number = std::to_string(i % 2 == 0 ? 0 : i);
        entities += "0 LWPOLYLINE" + number + "|8 A|90 2|10 1|10 2|";
    }
    ReadOnA(entities + "0 LINE|8 C|0 " + longKind + "|0 POINT|8 A|0 \x01|0 ");
    const TTexts passed = Passed();
    // 0 and 150 others, on a line each; what a hostile drawing brings up beyond 200 is one kind.
    EXPECT_EQ(passed[0], "LWPOLYLINE0: 150 @25");
    EXPECT_EQ(passed[1], "LWPOLYLINE1: 1 @35");
    EXPECT_EQ(passed[151], "LINE on an undeclared layer: 1 @3025");
    EXPECT_EQ(passed[152], longKind.substr(0, 40) + ": 1 @3029");
    EXPECT_EQ(passed.back(), "entities without a name: 1 @3037");
    ReadOnA("0 POINT|8 A");
    EXPECT_THAT(Passed(), IsEmpty());
}

TEST_F(DXF, CountsAtMost200Kinds) {
    std::string entities;
    for (int i = 0; i < 1000; ++i) entities += "0 KIND" + std::to_string(i) + "|";
    ReadOnA(entities + "0 KIND7");
    const auto& entries = Converter.Report().Entries();
    ASSERT_EQ(entries.size(), 201U);
    EXPECT_EQ(entries[7].Count, 2);
    EXPECT_EQ(entries.back().Kind, QStringLiteral("entities of further kinds"));
    EXPECT_EQ(entries.back().Count, 800);
}

TEST_F(DXF, DecodesNamesByTheCodePage) {
    const std::string header = "0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|9 $DWGCODEPAGE|3 ";
    const struct {
        const char* Page;
        const char* Bytes;
        const char* Text;
    } rows[] = {{"ANSI_1252", "W\xE4nde", "W\xC3\xA4nde"},
                {"ANSI_1251", "\xD1\xF2\xE5\xED\xE0", "\xD0\xA1\xD1\x82\xD0\xB5\xD0\xBD\xD0\xB0"},
                {"dos850", "W\x84nde", "W\xC3\xA4nde"},
                {"ANSI_1252", "W\xC3\xA4nde", "W\xC3\xA4nde"}};
    for (const auto& row : rows) {
        const std::string bytes = row.Bytes;
        // The header says so wherever it stands.
        const std::string drawing = LayerTable({"2 " + bytes + "|62 1"}) +
                                    "0 SECTION|2 ENTITIES|0 TEXT|8 " + bytes + "|1 " + bytes +
                                    "|0 ENDSEC|" + header + row.Page + "|0 ENDSEC";
        const std::string text = row.Text;
        EXPECT_THAT(Read(drawing),
                    ElementsAre(text + "/TZEPLabel '" + text + "' 0 0 0 x 0 0 0 0000ff"));
    }
}

// --- broken drawings ---------------------------------------------------------------------------

TEST_F(DXF, EndsQuietlyWhereADrawingEnds) {
    const std::string drawing =
        "0 SECTION|2 HEADER|9 $EXTMAX|10 1|20 2|0 ENDSEC|" + LayerTable({"2 A|62 5"}) +
        Entities(
            "0 POINT|8 A|0 POLYLINE|8 A|0 VERTEX|70 128|0 VERTEX|8 A|0 SEQEND|8 A|0 INSERT|8 A|"
            "66 1|0 ATTRIB|8 A|0 SEQEND|8 A|0 3DFACE|8 A");
    const std::string text = Pairs(drawing);
    ASSERT_EQ(Read(drawing).size(), 3U);
    for (const bool extended : {false, true}) {
        Converter.SetExtended(extended);
        std::size_t before = 0;
        for (std::size_t size = text.find("HEADER\n") + 7; size < text.size(); ++size) {
            Root.Clear();
            Converter.ReadDXF(text.substr(0, size));
            const std::size_t count = Objects().size();
            EXPECT_LE(count, before + 1) << size;
            if (!extended) {
                EXPECT_GE(count, before) << size;
            }
            EXPECT_EQ(Root.ComponentCount(), static_cast<int>(count) + Root.GetItemsCount())
                << "nothing is left over at " << size;
            before = count;
        }
        EXPECT_EQ(before, extended ? 2U : 3U) << "a mesh without faces is none in the extended one";
    }
}

TEST_F(DXF, MakesNothingOfAnEntityThatIsCutOff) {
    const std::string head = LayerTable({"2 A"}) + "0 SECTION|2 ENTITIES|";
    for (const char* rest : {"0 LINE|8 A|10 1", "0 POLYLINE|8 A", "0 POLYLINE|8 A|0 VERTEX|10 1",
                             "0 POLYLINE|8 A|0 VERTEX|10 1|0 VERTEX|70 128|71 1",
                             "0 POLYLINE|8 A|0 VERTEX|10 1|0 X"}) {
        EXPECT_THAT(Read(head + rest), IsEmpty()) << rest;
        EXPECT_EQ(Root.ComponentCount(), 1) << rest;
    }
}

TEST_F(DXF, TellsWhereAGroupCodeIsNone) {
    const std::string text =
        Pairs(LayerTable({"2 A"}) + "0 SECTION|2 ENTITIES|0 POINT|8 A|0 LINE|8 A|"
                                    "what 1|0 LINE|8 A|0 ENDSEC|0 EOF");
    Converter.ReadDXF(text);
    EXPECT_THAT(Objects(), ElementsAre("A/TZEPPoint 0 0 0 c0c0c0"));
    EXPECT_THAT(Passed(),
                ElementsAre("lines that are no group code (the reading ends there): 1 @31"));
}

TEST_F(DXF, RefusesWhatIsNoDrawing) {
    const std::string expected =
        " is no DXF drawing: expected group codes and values in turn, a line "
        "each, with a SECTION among them; it begins with \"";
    const struct {
        std::string Text;
        std::string Beginning;
    } rows[] = {
        {"", ""},
        {"G1 X1\nG1 X2\n", "G1 X1"},
        {"\x7F"
         "ELF\x02\x01",
         "?ELF??"},
        {Pairs("0 LINE|8 A"), "0"},
        {"a line that is longer than forty characters", "a line that is longer than forty charact"},
        {std::string(3, '\0'), "???"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ErrorOfReading(row.Text),
                  "TDXFConverter.LoadFromFile: The text" + expected + row.Beginning + "\".");
    EXPECT_EQ(ErrorOfReading("AutoCAD Binary DXF\r\n\x1A"),
              "TDXFConverter.LoadFromFile: The text is binary DXF, and only its ASCII form can be "
              "read.");
    EXPECT_EQ(ErrorOfReading(Pairs("999 nothing in it|0 EOF")), "");
    EXPECT_EQ(Root.UpdateLevel(), 0);
}

TEST_F(DXF, TakesTheSameTimeForManyLayers) {
    std::string pairs;
    for (int i = 0; i < 20000; ++i) pairs += "0 INSERT|8 B|0 LINE|8 C" + std::to_string(i) + "|";
    Converter.ReadDXF(Pairs(Entities(pairs)));
    EXPECT_EQ(Root.GetItemsCount(), 20000);
}

} // namespace
} // namespace ZEP
