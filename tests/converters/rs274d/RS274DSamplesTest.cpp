#include "tests/converters/rs274d/PathRecorder.h"
#include <zep/converters/rs274d/Converter.h>
#include <zep/framework/MappedFile.h>
#include <zep/objects/Line.h>
#include <zep/scene/Scene.h>

#include <QDir>

#include <gmock/gmock.h>

#include <map>

namespace ZEP {
namespace {

/// Counts the moves, and keeps their ends: the last one and the box of all.
class PathExtent : public PathCounter {
public:
    TRS274DPoint Last{}, Min{}, Max{};

    void Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override {
        PathCounter::Rapid(from, to, line);
        Go(from, to);
    }
    void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override {
        PathCounter::Feed(from, to, line);
        Go(from, to);
    }
    void Arc(const TRS274DArc& arc, qint64 line) override {
        PathCounter::Arc(arc, line);
        if (arc.StartAngle == arc.EndAngle) return; // a full circle may start anywhere
        Include(PointOf(arc, arc.StartAngle));
        Include(PointOf(arc, arc.EndAngle));
    }
    void Curve(std::span<const TRS274DPoint> points, qint64 line) override {
        PathCounter::Curve(points, line);
        Go(points.front(), points.back());
    }

private:
    void Go(const TRS274DPoint& from, const TRS274DPoint& to) {
        Include(from);
        Include(to);
        Last = to;
    }
    void Include(const TRS274DPoint& point) {
        for (std::size_t i = 0; i < point.size(); ++i) {
            Min[i] = std::min(Min[i], point[i]);
            Max[i] = std::max(Max[i], point[i]);
        }
    }
};

/// Rapids, feeds, arcs, curves, drill points, tool changes.
using TCounts = std::array<int, 6>;

TCounts CountsOf(const PathCounter& path) {
    return {path.Rapids, path.Feeds, path.Arcs, path.Curves, path.Drills, path.Tools};
}

/// Where an independent interpreter saw the tool go, in the program's unit.
struct TExtent {
    double Unit; // millimetres; 0: not compared
    TRS274DPoint Last, Min, Max;
};

struct TSample {
    const char* Name;
    TCounts Plain, Extended;
    TExtent Extent;
    std::vector<std::string> Passed; ///< in the extended reading
};

/// The independent interpreter counts the same moves, apart from what the comments say; arcs and
/// curves together are its arcs.
const TSample Samples[] = {
    {"3dtest.ngc", {25, 22, 3}, {25, 22, 3}, {25.4, {0, 0, 0}, {0, 0, 0}, {2, 2, 1.75}}, {}},
    {"cds.ngc", {25, 191, 50}, {25, 191, 50}, {25.4, {3.625, 4, 3}, {0, -0.25, 0}, {4, 4, 3}}, {}},
    {"arcspiral.ngc",
     {4, 2, 999},
     {4, 2, 999},
     {25.4, {0.002, 0.0002, 1}, {-1.9479, -1.9784, -0.1}, {1.8834, 1.9157, 1}},
     {}},
    // Plain: M0 ends it in line 4.
    {"tort.ngc",
     {1},
     {74, 56, 6, 132},
     {1, {0, 0, 20}, {-27.4231, -22.4502, -17.8018}, {47.8166, 49.9247, 36.2631}},
     {}},
    // The other counts a G00 without axis words as a sixteenth rapid.
    {"plasmatest.ngc",
     {15, 218, 129, 0, 0, 1},
     {15, 218, 129, 0, 0, 1},
     {1, {560.595, 159.544, 0}, {0, 0, 0}, {593.743, 310.75, 0}},
     {}},
    // Plain: "^" ends the block, and with it L6 is lost.
    {"hole-circle.ngc",
     {1, 0, 0, 0, 1},
     {14, 6},
     {25.4, {1.5, 0, 0.1}, {-1.5, -1.299, -0.4}, {1.5, 1.299, 0.1}},
     {}},
    // What needs variables is missing; three arcs start where a passed block should have led.
    {"mmount.ngc",
     {73, 36, 60, 0, 14, 7},
     {67, 47, 45, 13, 0, 7},
     {},
     {"blocks with variables 38@24", "blocks with control words 16@30",
      "blocks with expressions 3@41", "arcs of unequal radii (drawn as spirals) 3@88"}},
    // Plain: M0 ends it.
    {"skeleton.ngc", {2}, {7, 0, 0, 0, 0, 2}, {25.4, {0, 0, 0}, {0, 0, 0}, {1, 1, 0.25}}, {}},
    // Plain: each of the eight G10 L2 is a rapid three times over. The other states coordinates
    // before they are moved by the work offset of Y-101.6 that is selected in the end.
    {"botomata_bottom.nc",
     {620, 3096, 2384, 0, 0, 4},
     {596, 3096, 2384, 0, 0, 4},
     {1, {3.061, 0.89 - 101.6, 2}, {-44.132, -44.132 - 101.6, -20}, {44.132, 44.132, 2}},
     {}},
    {"vcarve.ngc",
     {119, 4034},
     {119, 4034},
     {25.4, {0.4149, 0.1538, 0.1}, {-0.0649, 0, -0.0162}, {0.4831, 0.1903, 0.1}},
     {}},
    // The other stops at the first of two G28 with two rapids each: home in Z, then in X.
    {"G81.NC",
     {4, 0, 0, 0, 12, 1},
     {27 + 4, 12, 0, 0, 0, 1},
     {1, {0, -25.882, 0}, {-96.593, -96.593, -20}, {96.593, 96.593, 100}},
     {}},
    {"CONTOUR_R1.NC",
     {5 + 2, 9, 4, 0, 0, 1},
     {5 + 4, 9, 4, 0, 0, 1},
     {1, {0, 65.123, 0}, {-55.123, -55.123, -5.123}, {55.123, 65.123, 100}},
     {}},
    {"TEST_G91.NC",
     {19, 45, 76, 0, 0, 2},
     {19, 45, 30, 46, 0, 2},
     {1, {0, 0.001, 12}, {-100, -59.999, -20}, {100, 60.001, 13}},
     {}},
};

/// The facts are stated with three to four decimals.
void ExpectPoint(const TRS274DPoint& point, const TRS274DPoint& expected, double unit) {
    for (std::size_t i = 0; i < point.size(); ++i)
        EXPECT_NEAR(point[i] / unit, expected[i], 6e-4) << "axis " << i;
}

/// Lines, dotted lines, arcs, polylines and points that the converter makes of a file.
std::map<std::string, int> ObjectsOf(const QString& fileName, bool extended) {
    TZEPScene scene;
    TRS274DConverter converter;
    converter.SetRoot(&scene);
    converter.SetFileName(fileName);
    converter.SetExtended(extended);
    converter.LoadFromFile();
    std::map<std::string, int> counts;
    for (int i = 0; i < scene.GetItemsCount(); ++i) {
        TZEPObject* object = scene.GetItem(i);
        auto* line = qobject_cast<TZEPLine*>(object);
        const bool isRapid = line && line->Style() == psDot;
        ++counts[isRapid ? "rapid" : object->ClassName().toStdString()];
    }
    return counts;
}

std::map<std::string, int> ObjectsOf(const TCounts& counts) {
    constexpr const char* names[] = {"rapid", "TZEPLine", "TZEPArc", "TZEPPolyline", "TZEPPoint"};
    std::map<std::string, int> objects;
    for (std::size_t i = 0; i < std::size(names); ++i)
        if (counts[i] > 0) objects[names[i]] = counts[i];
    return objects;
}

void CheckSample(const TSample& sample, const QString& fileName) {
    SCOPED_TRACE(sample.Name);
    const TMappedFile file(fileName, fileName);
    const PathCounts plain(file.Text(), {});
    const PathReading<PathExtent> extended(file.Text(), {.Extended = true});
    EXPECT_EQ(plain.Error + extended.Error, "");
    EXPECT_EQ(CountsOf(plain), sample.Plain);
    EXPECT_EQ(CountsOf(extended), sample.Extended);
    EXPECT_EQ(extended.Passed(), sample.Passed);
    EXPECT_EQ(ObjectsOf(fileName, false), ObjectsOf(sample.Plain));
    EXPECT_EQ(ObjectsOf(fileName, true), ObjectsOf(sample.Extended));
    if (sample.Extent.Unit == 0) return;
    ExpectPoint(extended.Last, sample.Extent.Last, sample.Extent.Unit);
    ExpectPoint(extended.Min, sample.Extent.Min, sample.Extent.Unit);
    ExpectPoint(extended.Max, sample.Extent.Max, sample.Extent.Unit);
}

TEST(RS274DSamples, AreReadAsAnIndependentInterpreterReadsThem) {
    const QDir folder(QStringLiteral(ZEP_SAMPLES "/nc"));
    if (!folder.exists()) GTEST_SKIP() << "no samples";
    for (const TSample& sample : Samples)
        CheckSample(sample, folder.filePath(QLatin1String(sample.Name)));
    // One that is new must still be read.
    for (const QString& name : folder.entryList(QDir::Files)) {
        const TMappedFile file(folder.filePath(name), name);
        for (const bool extended : {false, true})
            EXPECT_EQ(PathCounts(file.Text(), {.Extended = extended}).Error, "")
                << name.toStdString();
    }
}

} // namespace
} // namespace ZEP
