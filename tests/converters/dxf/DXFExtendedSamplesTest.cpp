#include "tests/converters/dxf/DXFReading.h"

#include <QDir>

#include <gmock/gmock.h>

#include <map>

namespace ZEP {
namespace {

using TCounts = std::map<std::string, int>;

/// Of the objects by their class, apart from layers.
TCounts CountsIn(const TZEPObject& root) {
    std::vector<TZEPObject*> objects;
    root.ListChildren(objects);
    TCounts counts;
    for (const TZEPObject* object : objects)
        if (object->Parent() != &root) ++counts[object->ClassName().toStdString().substr(4)];
    return counts;
}

struct TBounds {
    TGLArrayd3 Min{1e308, 1e308, 1e308}, Max{-1e308, -1e308, -1e308};
};

TBounds BoundsOf(const TZEPObject& root) {
    std::vector<TZEPObject*> lines;
    root.ListChildren(lines, {&TZEPLine::staticMetaObject});
    TBounds bounds;
    for (const TZEPObject* line : lines) {
        MinBoundsd(bounds.Min, line->GetAbsoluteMin());
        MaxBoundsd(bounds.Max, line->GetAbsoluteMax());
    }
    return bounds;
}

class DXFExtendedSamples : public testing::Test {
protected:
    void SetUp() override {
        if (!m_folder.exists()) GTEST_SKIP() << "no samples";
    }
    void Read(const QString& name) {
        m_converter.SetRoot(&Scene);
        m_converter.SetExtended(true);
        m_converter.SetFileName(m_folder.filePath(name));
        m_converter.LoadFromFile();
    }
    [[nodiscard]] TLines Passed() const {
        TLines passed;
        for (const auto& entry : m_converter.Report().Entries())
            passed.push_back(entry.Kind.toStdString() + " " + std::to_string(entry.Count));
        return passed;
    }

    TZEPScene Scene;
    const QDir m_folder{QStringLiteral(ZEP_SAMPLES "/dxf")};

private:
    TDXFConverter m_converter;
};

TEST_F(DXFExtendedSamples, HoldWhatACountOfTheirEntitiesAndBlocksSays) {
    const struct {
        const char* Name;
        TCounts Counts;
        TLines Passed;
    } rows[] = {
        // 18 lines and six times a block of 7.
        {"transform-insert.dxf", {{"Line", 18 + 6 * 7}, {"Node", 6}}, {}},
        // Its only polyline, in a block: of faces.
        {"wuson.dxf", {{"Mesh", 1}, {"Node", 1}}, {}},
        // 16 dimensions, each with points on a layer of their own beside what is on layer "0", and
        // an insertion with an attribute. 7 light polylines and a spline. 35 texts of one line or
        // more. One of the two polylines says that it is a mesh of faces, and has none.
        {"uncommon.dxf",
         {{"Arc", 10},
          {"Circle", 1},
          {"Label", 42 + 1},
          {"Line", 59},
          {"Mesh", 1},
          {"Node", 16 * 2 + 1},
          {"Point", 59},
          {"Polygon", 21},
          {"Polyline", 7 + 1}},
         {"MULTILEADER 2", "RAY 3", "MESH 1", "POLYLINE of too few points 1", "XLINE 2",
          "3DSOLID 1"}},
        // Blocks were drawn for none of its dimensions.
        {"duplicate_handles.dxf", {{"Label", 19}, {"Line", 111}, {"Polyline", 8}}, {"DIMENSION 7"}},
        // Nothing but a layer that the table does not declare.
        {"PinkEggFromLW.dxf", {{"Polygon", 288}}, {}},
    };
    for (const auto& row : rows) {
        Read(QLatin1String(row.Name));
        EXPECT_EQ(CountsIn(Scene), row.Counts) << row.Name;
        EXPECT_EQ(Passed(), row.Passed) << row.Name;
    }
}

TEST_F(DXFExtendedSamples, InsertionsLieWhereTheirTransformsSay) {
    Read(QStringLiteral("transform-insert.dxf"));
    // Computed from the file's numbers by another program.
    const TBounds bounds = BoundsOf(Scene);
    EXPECT_NEAR(bounds.Min[0], -10, 1e-9);
    EXPECT_NEAR(bounds.Min[1], -14, 1e-9);
    EXPECT_NEAR(bounds.Max[0], 67.07106781186548, 1e-9);
    EXPECT_NEAR(bounds.Max[1], 14, 1e-9);
}

TEST_F(DXFExtendedSamples, AllOfThemOpen) {
    for (const QString& name : m_folder.entryList({QStringLiteral("*.dxf")}, QDir::Files)) {
        if (name.startsWith(QLatin1String("bin_"))) continue;
        Read(name);
        EXPECT_FALSE(CountsIn(Scene).empty()) << name.toStdString();
    }
}

} // namespace
} // namespace ZEP
