#include "tests/converters/TreeText.h"
#include "tests/converters/dxf/DXFFixture.h"
#include <zep/appearance/materials/Material.h>
#include <zep/objects/Polygon.h>

#include <QImage>

namespace ZEP {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Drawings of several files in a folder.
class DXFFiles : public DXF {
protected:
    DXFFiles() { Converter.SetExtended(true); }

    /// \param pairs  with "!" for a bar in a name
    void PutDrawing(const char* name, const std::string& pairs) {
        std::string text = Pairs(pairs);
        std::ranges::replace(text, '!', '|');
        Put(name, QByteArray::fromStdString(text));
    }
    void Load(const char* name) {
        Converter.SetFileName(Path(name));
        Converter.LoadFromFile();
    }
    static std::string Other(const std::string& name, const std::string& file, int flags = 4) {
        return "0 BLOCK|2 " + name + "|70 " + std::to_string(flags) + "|1 " + file + "|0 ENDBLK|";
    }
    static std::string Blocks(const std::string& pairs) {
        return "0 SECTION|2 BLOCKS|" + pairs + "0 ENDSEC|";
    }
};

TEST_F(DXFFiles, ShowDrawingsInOtherFilesOnLayersOfTheirOwn) {
    PutDrawing("Plan.dxf", "0 SECTION|2 HEADER|9 $INSBASE|10 1|20 2|30 0|0 ENDSEC|" +
                               LayerTable({"2 0|62 3", "2 Walls|62 1", "2 Off|62 5"}) +
                               Blocks("0 BLOCK|2 Door|0 POINT|8 0|0 ENDBLK|") +
                               Entities("0 LINE|8 Walls|11 5|0 LINE|8 0|62 0|11 6|0 INSERT|2 "
                                        "Door|8 Off|0 SOMETHING"));
    PutDrawing("main.dxf", LayerTable({"2 A|62 2", "2 Plan!Off|62 -4"}) +
                               Blocks(Other("Plan", R"(C:\work\PLAN.DWG)")) +
                               Entities("0 INSERT|2 plan|8 A|62 6|10 10|50 90|0 INSERT|2 Nowhere"));
    Load("main.dxf");
    const std::string at = " at (12 -1 0) (12 0 0) (11 -1 0) (12 -1 1)";
    EXPECT_EQ(TreeText(Root), "TZEPActor Ident='A'\n"
                              "  TZEPNode" +
                                  at +
                                  " Ident='Plan'\n"
                                  "    TZEPLine" +
                                  at +
                                  " Color=ff00ff P2{X=6}\n"
                                  "TZEPActor Ident='Plan|Off' Visible=0\n"
                                  "  TZEPNode" +
                                  at +
                                  " Ident='Plan'\n"
                                  "    TZEPNode" +
                                  at +
                                  " Ident='Door'\n"
                                  "      TZEPPoint" +
                                  at +
                                  " Color=ffff00\n"
                                  "TZEPActor Ident='Plan|Walls'\n"
                                  "  TZEPNode" +
                                  at +
                                  " Ident='Plan'\n"
                                  "    TZEPLine" +
                                  at + " Color=ff P2{X=5}\n");
    EXPECT_THAT(Passed(), ElementsAre("SOMETHING 1", "INSERT of a block that is not there 1"));
}

TEST_F(DXFFiles, CountWhatKeepsOtherDrawingsAway) {
    PutDrawing("a.dxf", Blocks(Other("B", "b.dxf") + Other("A", "a.dxf")) +
                            Entities("0 INSERT|2 B|0 INSERT|2 A|0 POINT"));
    PutDrawing("b.dxf", Blocks(Other("A", "A.DXF") + Other("Over", "c.dxf", 12)) +
                            Entities("0 INSERT|2 A|0 INSERT|2 Over|0 POINT"));
    PutDrawing("c.dxf", Entities("0 POINT"));
    Put("binary.dxf", "AutoCAD Binary DXF\r\n\x1A");
    Put("none.dxf", "G1 X1\n");
    const struct {
        const char *Name, *File;
        TTexts Passed;
        int Points;
    } rows[] = {
        {"itself", "main.dxf", {"INSERT of a block in itself 1"}, 0},
        {"a ring", "a.dxf", {"INSERT of a block in itself 2"}, 2},
        {"an overlay", "c.dxf", {}, 1},
        {"none", "nowhere.dwg", {"INSERT of a file that is not beside the drawing 1"}, 0},
        {"no name", "", {"INSERT of a file that is not beside the drawing 1"}, 0},
        {"out of the folder", "../c.dxf", {}, 1},
        {"binary", "binary.dxf", {"INSERT of a file that is no ASCII DXF drawing 1"}, 0},
        {"no drawing", "none.dxf", {"INSERT of a file that is no ASCII DXF drawing 1"}, 0},
    };
    for (const auto& row : rows) {
        PutDrawing("main.dxf", Blocks(Other("X", row.File, 8)) + Entities("0 INSERT|2 X"));
        Load("main.dxf");
        EXPECT_EQ(Passed(), row.Passed) << row.Name;
        EXPECT_EQ(PointCount(), row.Points) << row.Name;
    }
}

/// Each is shown a hundred times by the one before it.
TEST_F(DXFFiles, OtherDrawingsMakeNoMoreThanTheLimit) {
    std::string points;
    for (int i = 0; i < 100; ++i) points += "|0 POINT";
    for (int i = 0; i < 6; ++i) {
        const std::string next = std::to_string(i + 1);
        PutDrawing((std::to_string(i) + ".dxf").c_str(),
                   Blocks(Other("N" + next, next + ".dxf")) +
                       Entities("0 INSERT|70 10|71 10|2 N" + next + points));
    }
    PutDrawing("6.dxf", Entities("0 POINT"));
    Load("0.dxf");
    EXPECT_THAT(Passed(), ElementsAre("INSERT beyond the limit of objects 1"));
    EXPECT_LT(PointCount(), 500'000);
}

/// The host is asked while another drawing is read, too, and then may cancel.
TEST_F(DXFFiles, PutUpWithAHostThatFreesWhatIsThere) {
    std::string points;
    for (int i = 0; i < 30'000; ++i) points += i % 2 == 0 ? "|0 POINT|8 A" : "|0 RAY|8 B|11 1";
    PutDrawing("Plan.dxf", LayerTable({"2 A|62 3", "2 C|62 1"}) + Entities("0 LINE|11 5" + points));
    PutDrawing("main.dxf", Blocks(Other("Plan", "plan.dxf")) +
                               Entities("0 LINE|11 9|0 INSERT|2 Plan|70 3|44 9|0 POINT"));
    for (const int most : {1000, 3}) {
        int calls = 0;
        Converter.SetProgress([&](qint64 done, qint64 total) {
            EXPECT_LE(done, total);
            Root.Clear();
            return ++calls < most;
        });
        Load("main.dxf");
        EXPECT_EQ(Converter.Cancelled(), most == 3);
        EXPECT_GT(calls, most == 3 ? 2 : 10);
    }
}

TEST_F(DXFFiles, ShowPicturesWithinTheirBoundary) {
    QImage(8, 4, QImage::Format_RGB32).save(Path("Pic.png"));
    const std::string image = "0 IMAGE|10 1|20 1|11 0.5|12 0|22 0.5|13 8|23 4|70 7|340 B";
    PutDrawing("main.dxf",
               "0 SECTION|2 OBJECTS|0 IMAGEDEF|5 B1|1 X:/PIC.PNG|0 IMAGEDEF|5 B2|1 main.dxf|0 "
               "ENDSEC|" +
                   Entities(image + "1|280 0|" + image +
                            "1|280 1|71 2|91 3|14 -0.5|24 -0.5|14 7.5|24 -0.5|14 7.5|24 3.5|" +
                            image + "2|" + image + "1|70 0"));
    Load("main.dxf");
    EXPECT_THAT(Passed(), ElementsAre("IMAGE of a file that is no picture 1"));
    TZEPObject& layer = *Root.GetItem(0);
    ASSERT_EQ(layer.GetItemsCount(), 4);
    const char* const places[] = {"(1 3 0) 0 1|(5 3 0) 1 1|(5 1 0) 1 0|(1 1 0) 0 0|",
                                  "(1 3 0) 0 1|(5 3 0) 1 1|(5 1 0) 1 0|"};
    for (int i = 0; i < 2; ++i) {
        auto& polygon = dynamic_cast<TZEPPolygon&>(*layer.GetItem(i));
        std::string text;
        for (int k = 0; k < polygon.Vertexes()->Count(); ++k) {
            const TZEPVertex3TexCI& vertex = (*polygon.Vertexes())[k];
            text += PointText(vertex.Data()) + " " + NumberText(vertex.TexX()) + " " +
                    NumberText(vertex.TexY()) + "|";
        }
        EXPECT_EQ(text, places[i]);
        EXPECT_FALSE(polygon.Material()->Texture()->Image()->Image().isNull());
    }
    EXPECT_EQ(layer.GetItem(2)->ClassName(), QStringLiteral("TZEPPolyline"));
    EXPECT_EQ(layer.GetItem(3)->ClassName(), QStringLiteral("TZEPPolyline"));
}

} // namespace
} // namespace ZEP
