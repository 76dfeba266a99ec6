#include "tests/converters/dxf/DXFFixture.h"

#include <QDir>

#include <map>

namespace ZEP {
namespace {

using TCounts = std::map<std::string, int>;

struct TSample {
    const char* Name;
    TCounts Plain; ///< objects by class
    TTexts Passed; ///< in the plain reading, without places
    TTexts Layers;
    TGLArrayd3 Min, Max; ///< of the header
    /// Vertexes of polylines and meshes, faces of meshes.
    std::array<int, 3> Items;
};

/// By scripts that know nothing of the reader (the folder's own README).
const TSample Samples[] = {
    {"issue_2229.dxf",
     {{"TZEPMesh", 4}},
     {"VIEWPORT: 1"},
     {"0 ffffff"},
     {-600, -420, 0},
     {600, 0, 0},
     {0, 768, 1520}},
    {"PinkEggFromLW.dxf", {}, {"3DFACE on an undeclared layer: 288"}, {}, {}, {}, {}},
    // All of it is inside a block; the layer is made for its INSERT.
    {"wuson.dxf", {}, {"INSERT: 1"}, {" 000000"}, {}, {}, {}},
    {"lineTest.dxf",
     {{"TZEPPolygon", 2}, {"TZEPLine", 1}},
     {},
     {"1 ffffff"},
     {},
     {1000, 1000, 0},
     {}},
    {"Leica_Disto_S910.dxf",
     {{"TZEPLine", 10}, {"TZEPPoint", 11}, {"TZEPLabel", 11}},
     {},
     {"LEICA_DISTO_ID 0000ff", "LEICA_DISTO_3D ff0000", "LEICA_DISTO_POINT_ENTITY 800080"},
     {},
     {},
     {}},
    {"AC1003_LINE_Example.dxf",
     {{"TZEPArc", 9}, {"TZEPLine", 13}},
     {},
     {"1 0000ff"},
     {},
     {3.625, 1.625, 0},
     {}},
    {"POLI-ALL210_12.DXF",
     {{"TZEPPolygon", 1}, {"TZEPPolyline", 30}},
     {},
     {"0 00ff00", "T-2DPLINE-ALL 00ffff"},
     {-6, -11, 0},
     {18, 13, 0},
     {101, 0, 0}},
    {"duplicate_handles.dxf",
     {{"TZEPLine", 111}, {"TZEPLabel", 19}},
     {"ELLIPSE: 8", "DIMENSION: 7"},
     {"0 ffffff", "CK_LEVEL_1 ffffff", "DEFPOINTS ffffff"},
     {-500, -300, 0},
     {500, 300, 0},
     {}},
    {"uncommon.dxf",
     {{"TZEPArc", 1},
      {"TZEPCircle", 1},
      {"TZEPLine", 19},
      {"TZEPMesh", 1},
      {"TZEPPoint", 6},
      {"TZEPPolyline", 1}},
     {"MTEXT: 19", "SPLINE: 1", "DIMENSION: 13", "LWPOLYLINE: 6", "LARGE_RADIAL_DIMENSION: 2",
      "ARC_DIMENSION: 1", "MULTILEADER: 2", "RAY: 3", "MESH: 1", "SOLID: 1", "INSERT: 1",
      "ATTRIB: 1", "XLINE: 2", "3DSOLID: 1", "VIEWPORT: 2"},
     {"0 ffffff", "Defpoints ffffff"},
     {},
     {138.0681249415453, 80.30990104645679, 0},
     {8, 8, 6}},
    {"emc2-motion-joint-controller-block-diag.dxf",
     {{"TZEPCircle", 6}, {"TZEPLine", 78}, {"TZEPLabel", 38}, {"TZEPPolyline", 52}},
     {},
     {"0 ffffff", "MERGE ffffff", "STANDARD ffffff", "PINS ffffff", "PARAMS ffffff",
      "OUTLINE ffffff", "INTERNALS ffffff"},
     {-24.458112, 16.165, 0},
     {-13.224388, 23.235, 0},
     {213, 0, 0}},
    {"multiple-layers.dxf",
     {{"TZEPLine", 10}, {"TZEPCircle", 1}},
     {},
     {"0 ffffff", "noname ffffff",
      "Layer with a pretty long name including \\ \"special\" /'\\\\ characters ffffff"},
     {},
     {},
     {}},
    {"transform-insert.dxf", {{"TZEPLine", 18}}, {"INSERT: 6"}, {"0 ffffff"}, {}, {}, {}},
    {"nothing-decimal-comma-separated.dxf", {{"TZEPLine", 4}}, {}, {"0 000000"}, {}, {}, {}},
};

class DXFSamples : public DXF {
protected:
    TCounts Counts() {
        TCounts counts;
        ForEachObject([&](TZEPObject* object) { ++counts[object->ClassName().toStdString()]; });
        return counts;
    }
    std::array<int, 3> Items() {
        std::array<int, 3> items{};
        ForEachObject([&](TZEPObject* object) {
            if (auto* polyline = qobject_cast<TZEPPolyline*>(object))
                items[0] += polyline->Vertexes()->Count();
            if (auto* mesh = qobject_cast<TZEPMesh*>(object)) {
                items[1] += mesh->Vertexes()->Count();
                items[2] += mesh->Faces()->Count();
            }
        });
        return items;
    }
    TTexts PassedCounts() {
        TTexts texts = Passed();
        for (std::string& text : texts) text.resize(text.find(" @"));
        return texts;
    }
    void Check(const TSample& sample) {
        SCOPED_TRACE(sample.Name);
        EXPECT_EQ(ErrorOfLoading(), "");
        EXPECT_EQ(Counts(), sample.Plain);
        EXPECT_EQ(Items(), sample.Items);
        EXPECT_EQ(PassedCounts(), sample.Passed);
        EXPECT_EQ(Layers(), sample.Layers);
        EXPECT_EQ(Converter.get_min_extent(), sample.Min);
        EXPECT_EQ(Converter.get_max_extent(), sample.Max);
    }

private:
    template <class Use>
    void ForEachObject(Use use) {
        for (int i = 0; i < Root.GetItemsCount(); ++i)
            for (int j = 0; j < Root.GetItem(i)->GetItemsCount(); ++j)
                use(Root.GetItem(i)->GetItem(j));
    }
};

TEST_F(DXFSamples, AreReadAsIndependentScriptsCountThem) {
    const QDir folder(QStringLiteral(ZEP_SAMPLES "/dxf"));
    if (!folder.exists()) GTEST_SKIP() << "no samples";
    for (const TSample& sample : Samples) {
        Converter.SetFileName(folder.filePath(QLatin1String(sample.Name)));
        Check(sample);
    }
    // One that is new must still be read, in both ways; the binary one is refused.
    for (const QString& name : folder.entryList({QStringLiteral("*.dxf")}, QDir::Files))
        for (const bool extended : {false, true}) {
            Converter.SetFileName(folder.filePath(name));
            Converter.SetExtended(extended);
            SCOPED_TRACE(name.toStdString());
            const bool isBinary = name.startsWith(QStringLiteral("bin_"));
            EXPECT_THAT(ErrorOfLoading(),
                        testing::MatchesRegex(isBinary ? ".* is binary DXF, .*" : ""));
        }
}

} // namespace
} // namespace ZEP
