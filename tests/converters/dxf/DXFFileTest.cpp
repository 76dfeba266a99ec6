#include "tests/converters/dxf/DXFFixture.h"

#include <algorithm>

namespace ZEP {
namespace {

using testing::ElementsAre;

const std::string Drawing = LayerTable({"2 A|62 5"}) + Entities("0 POINT|8 A|10 1.5");

TEST_F(DXF, RefusesWhatItCanNotDo) {
    Converter.SetRoot(nullptr);
    EXPECT_EQ(ErrorOfLoading(), "TDXFConverter.LoadFromFile: Can't load into Root=nil");
    EXPECT_EQ(ErrorOfReading(""), "TDXFConverter.ReadDXF: Can't load into Root=nil");
    Converter.SetRoot(&Root);
    EXPECT_EQ(ErrorOfLoading(), "TDXFConverter.LoadFromFile: No file name defined");
    Converter.SetFileName(Folder.path());
    EXPECT_EQ(ErrorOfLoading(), "TDXFConverter.LoadFromFile: Can't read \"" +
                                    Folder.path().toStdString() + "\": not a file.");
}

TEST_F(DXF, NamesTheFileThatIsNoDrawing) {
    const QString binary = Written(QStringLiteral("b.dxf"), "AutoCAD Binary DXF\r\n\x1A");
    Converter.SetFileName(binary);
    EXPECT_EQ(ErrorOfLoading(), "TDXFConverter.LoadFromFile: \"" + binary.toStdString() +
                                    "\" is binary DXF, and only its ASCII form can be read.");
    const QString other = Written(QStringLiteral("c.dxf"), "%PDF-1.4");
    Converter.SetFileName(other);
    EXPECT_THAT(ErrorOfLoading(), testing::AllOf(testing::HasSubstr(other.toStdString()),
                                                 testing::EndsWith("begins with \"%PDF-1.4\".")));
}

TEST_F(DXF, ClearsTheRootOnlyWhenAskedTo) {
    Converter.SetFileName(Written(QStringLiteral("a.dxf"), Pairs(Drawing, "\r\n")));
    Converter.LoadFromFile();
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("A/TZEPPoint 1.5 0 0 ff0000"));
    Converter.SetClearBeforRead(false);
    Converter.LoadFromFile();
    EXPECT_THAT(Layers(), ElementsAre("A ff0000"));
    EXPECT_EQ(Objects().size(), 2U);
    Converter.SetClearBeforRead(true);
    Converter.SetFileName(QStringLiteral("/nowhere/a.dxf"));
    EXPECT_NE(ErrorOfLoading(), "");
    EXPECT_EQ(Root.GetItemsCount(), 0) << "it is cleared before the file is opened";
}

TEST_F(DXF, ForgetsARootThatIsFreed) {
    auto* root = new TZEPObject;
    Converter.SetRoot(root);
    EXPECT_EQ(Converter.Root(), root);
    delete root;
    EXPECT_EQ(Converter.Root(), nullptr);
}

// --- progress ----------------------------------------------------------------------------------

/// Of about a megabyte, most of it in one polyline.
std::string LongDrawing() {
    std::string entities;
    for (int i = 0; i < 1000; ++i) entities += "0 POINT|8 A|10 1|";
    entities += "0 POLYLINE|8 A";
    for (int i = 0; i < 40000; ++i) entities += "|0 VERTEX|8 A|10 1|20 2";
    return Pairs(LayerTable({"2 A"}) + Entities(entities + "|0 SEQEND|8 A"));
}

TEST_F(DXF, TellsItsProgress) {
    const std::string text = LongDrawing();
    std::vector<qint64> places;
    Converter.SetProgress([&](qint64 done, qint64 total) {
        EXPECT_EQ(total, static_cast<qint64>(text.size()));
        places.push_back(done);
        return true;
    });
    Converter.ReadDXF(text);
    EXPECT_GE(places.size(), text.size() / 65536);
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_LE(places.back(), static_cast<qint64>(text.size()));
    EXPECT_FALSE(Converter.Cancelled());
    EXPECT_EQ(Objects().size(), 1001U);
}

TEST_F(DXF, KeepsWhatWasReadUntilItIsCancelled) {
    const std::string text = LongDrawing();
    for (const bool extended : {false, true})
        for (const int calls : {1, 2, 4, 1 << 20}) {
            Root.Clear();
            Converter.SetExtended(extended);
            Converter.SetProgress([left = calls](qint64, qint64) mutable { return --left > 0; });
            Converter.ReadDXF(text);
            EXPECT_EQ(Converter.Cancelled(), calls < 1000) << calls;
            EXPECT_EQ(Root.UpdateLevel(), 0);
            EXPECT_THAT(Passed(), testing::IsEmpty()) << calls;
        }
    EXPECT_EQ(Objects().size(), 1001U);
}

TEST_F(DXF, EndsWhenTheHostFreesWhatItReadsInto) {
    const std::string text = LongDrawing();
    for (int calls = 1; calls < 30; ++calls) {
        auto* root = new TZEPObject;
        Converter.SetRoot(root);
        Converter.SetProgress([root, left = calls](qint64, qint64) mutable {
            if (--left == 0) delete root;
            return true;
        });
        Converter.ReadDXF(text);
        EXPECT_EQ(Converter.Cancelled(), Converter.Root() == nullptr);
        delete Converter.Root();
    }
}

TEST_F(DXF, PutsUpWithAHostThatFreesLayers) {
    const std::string text = LongDrawing();
    Converter.SetProgress([this](qint64, qint64) {
        Root.Clear();
        return true;
    });
    Converter.ReadDXF(text);
    EXPECT_FALSE(Converter.Cancelled());
    EXPECT_EQ(Root.GetItemsCount(), 0);
}

TEST_F(DXF, TakesAnotherRootMeanwhileAsACancel) {
    TZEPObject other;
    Converter.SetProgress([&](qint64, qint64) {
        Converter.SetRoot(&other);
        return true;
    });
    Converter.ReadDXF(LongDrawing());
    EXPECT_TRUE(Converter.Cancelled());
    EXPECT_EQ(other.GetItemsCount(), 0);
}

} // namespace
} // namespace ZEP
