#include "tests/converters/dxf/DXFReading.h"

#include <gmock/gmock.h>

namespace ZEP {
namespace {

struct TRow {
    const char* Name;
    std::string Entities;
    TLines Shapes;
    TLines Passed;
};

void Check(const std::vector<TRow>& rows) {
    for (const TRow& row : rows) {
        DXFReading reading(Drawing(row.Entities));
        EXPECT_EQ(reading.Shapes(), row.Shapes) << row.Name;
        EXPECT_EQ(reading.Passed(), row.Passed) << row.Name;
    }
}

TEST(DXFExtended, ReadsShapes) {
    Check({
        {"point", "0 POINT|8 0|10 1|20 2|30 3", {"point (1 2 3)"}, {}},
        {"line", "0 LINE|8 0|39 5|10 1|20 2|30 3|11 4|21 5|31 6", {"line (1 2 3) (4 5 6)"}, {}},
        {"undeclared layer", "0 LINE|8 Walls|11 4", {"Walls: line (0 0 0) (4 0 0)"}, {}},
        {"one layer by two cases",
         "0 POINT|8 Walls|0 POINT|8 WALLS",
         {"Walls: point (0 0 0)", "Walls: point (0 0 0)"},
         {}},
        {"circle", "0 CIRCLE|10 1|20 2|30 3|40 5", {"circle (1 2 3) (6 2 3) (1 7 3)"}, {}},
        {"arc, angles beyond a turn",
         "0 ARC|10 1|40 2|50 -90|51 450",
         {"arc (1 0 0) (3 0 0) (1 2 0) 270 90"},
         {}},
        {"face of three corners and of four",
         "0 3DFACE|10 0|11 1|12 1|22 1|0 3DFACE|10 0|11 1|12 1|22 1|13 0|23 1|33 2",
         {"polygon (0 0 0) (1 0 0) (1 1 0) (1 1 0)", "polygon (0 0 0) (1 0 0) (1 1 0) (0 1 2)"},
         {}},
        {"solid: third and fourth corner change places",
         "0 SOLID|10 0|11 1|12 0|22 1|13 1|23 1|0 TRACE|10 0|11 1|12 0|22 1",
         {"polygon (0 0 0) (1 0 0) (1 1 0) (0 1 0)", "polygon (0 0 0) (1 0 0) (0 1 0) (0 1 0)"},
         {}},
        {"ellipse, whole and half",
         "0 ELLIPSE|10 1|20 0|11 4|40 0.5|41 0|42 6.283185307179586|"
         "0 ELLIPSE|11 0|21 2|40 0.5|41 0|42 3.141592653589793",
         {"ring 72 (5 0 0) (4.985 0.1743 0) (4.939 0.3473 0) (4.864 0.5176 0) (4.985 -0.1743 0)",
          "chain 37 (0 2 0) (-0.08716 1.992 0) (-0.1736 1.97 0) (-0.2588 1.932 0) (0 -2 0)"},
         {}},
        {"spline of degree 1",
         "0 SPLINE|70 0|71 1|40 0|40 0|40 1|40 2|40 2|10 1|20 1|30 1|10 2|20 2|30 2|10 3|20 2|30 2",
         {"chain 3 (1 1 1) (2 2 2) (3 2 2)"},
         {}},
        {"spline through points",
         "0 SPLINE|71 3|11 0|21 0|11 9|21 3",
         {"chain 5 (0 0 0) (2.25 0.75 0) (4.5 1.5 0) (6.75 2.25 0) (9 3 0)"},
         {}},
        {"helix is its spline, not its axis",
         "0 HELIX|100 AcDbSpline|71 1|40 0|40 0|40 1|40 1|10 1|10 2|100 AcDbHelix|10 7|40 3",
         {"chain 2 (1 0 0) (2 0 0)"},
         {}},
    });
}

TEST(DXFExtended, ReadsPolylines) {
    Check({
        {"light, open, with elevation and width",
         "0 LWPOLYLINE|90 3|70 0|43 0.5|38 2|10 0|20 0|40 1|41 1|10 1|20 0|10 1|20 1",
         {"chain 3 (0 0 2) (1 0 2) (1 1 2)"},
         {}},
        {"light, closed, bulge as an arc",
         "0 LWPOLYLINE|70 1|10 0|20 0|42 1|10 2|20 0|42 1",
         {"ring 72 (0 0 0) (0.003805 -0.08716 0) (0.01519 -0.1736 0) (0.03407 -0.2588 0) "
          "(0.003805 0.08716 0)"},
         {}},
        {"light, of one point",
         "0 LWPOLYLINE|90 1|10 0|20 0",
         {},
         {"LWPOLYLINE of too few points 1"}},
        {"light, says more points than it has",
         "0 LWPOLYLINE|90 2147483647|10 0|20 0|10 1",
         {"chain 2 (0 0 0) (1 0 0)"},
         {}},
        {"flat, with elevation",
         "0 POLYLINE|66 1|30 4|70 1|0 VERTEX|10 0|20 0|0 VERTEX|10 1|20 0|0 VERTEX|10 1|20 1|"
         "0 SEQEND|0 POINT|10 9",
         {"ring 3 (0 0 4) (1 0 4) (1 1 4)", "point (9 0 0)"},
         {}},
        {"flat, bulge",
         "0 POLYLINE|66 1|0 VERTEX|10 0|42 -1|0 VERTEX|10 2|0 SEQEND",
         {"chain 37 (0 0 0) (0.003805 0.08716 0) (0.01519 0.1736 0) (0.03407 0.2588 0) (2 0 0)"},
         {}},
        {"spatial: no bulges",
         "0 POLYLINE|66 1|70 8|0 VERTEX|10 0|30 1|42 1|70 32|0 VERTEX|10 2|30 3|70 32|0 SEQEND",
         {"chain 2 (0 0 1) (2 0 3)"},
         {}},
        {"smoothed: without what it was made of",
         "0 POLYLINE|66 1|70 4|0 VERTEX|10 0|70 16|0 VERTEX|10 1|70 8|0 VERTEX|10 2|70 8|0 SEQEND",
         {"chain 2 (1 0 0) (2 0 0)"},
         {}},
        {"without SEQEND",
         "0 POLYLINE|66 1|0 VERTEX|10 0|0 VERTEX|10 2|0 POINT|10 5",
         {"chain 2 (0 0 0) (2 0 0)", "point (5 0 0)"},
         {}},
        {"faces, with hidden edges, a point beyond and one of two corners",
         "0 POLYLINE|66 1|70 64|71 4|72 2|0 VERTEX|10 0|70 192|0 VERTEX|10 1|70 192|"
         "0 VERTEX|10 1|20 1|70 192|0 VERTEX|20 1|70 192|0 VERTEX|70 128|71 1|72 -2|73 3|74 4|"
         "0 VERTEX|70 128|71 1|72 2|0 VERTEX|70 128|71 1|72 2|73 3|0 SEQEND",
         {"mesh 4 3 (0 0 0) (1 0 0) (1 1 0) (0 1 0)"},
         {"POLYLINE faces of fewer than three corners 1"}},
        {"rows and columns",
         "0 POLYLINE|66 1|70 16|71 2|72 3|0 VERTEX|10 0|0 VERTEX|10 1|0 VERTEX|10 2|0 VERTEX|20 1|"
         "0 VERTEX|10 1|20 1|0 VERTEX|10 2|20 1|0 SEQEND",
         {"mesh 6 4 (0 0 0) (1 0 0) (2 0 0) (0 1 0) (2 1 0)"},
         {}},
        {"closed along the columns",
         "0 POLYLINE|66 1|70 48|71 2|72 3|0 VERTEX|10 0|0 VERTEX|10 1|0 VERTEX|10 2|0 VERTEX|20 1|"
         "0 VERTEX|10 1|20 1|0 VERTEX|10 2|20 1|0 SEQEND",
         {"mesh 6 6 (0 0 0) (1 0 0) (2 0 0) (0 1 0) (2 1 0)"},
         {}},
        {"more rows and columns than vertexes",
         "0 POLYLINE|66 1|70 16|71 2147483647|72 2147483647|0 VERTEX|10 0|0 VERTEX|10 1|0 SEQEND",
         {},
         {"POLYLINE of too few points 1"}},
        {"negative rows",
         "0 POLYLINE|66 1|70 16|71 -3|72 -3|0 VERTEX|10 0|0 VERTEX|10 1|0 SEQEND",
         {},
         {"POLYLINE of too few points 1"}},
    });
}

TEST(DXFExtended, ExtrusionsTurnWhatIsFlat) {
    const std::string down = "|210 0|220 0|230 -1";
    const std::string alongX = "|210 1|220 0|230 0";
    Check({
        {"circle from below",
         "0 CIRCLE|10 1|20 2|30 3|40 1" + down,
         {"circle (-1 2 -3) (-2 2 -3) (-1 3 -3)"},
         {}},
        {"arc upright",
         "0 ARC|10 1|20 2|30 3|40 1|50 0|51 90" + alongX,
         {"arc (3 1 2) (3 2 2) (3 1 3) 0 90"},
         {}},
        {"solid",
         "0 SOLID|10 0|11 1|12 0|22 1|13 1|23 1" + down,
         {"polygon (0 0 0) (-1 0 0) (-1 1 0) (0 1 0)"},
         {}},
        {"light polyline",
         "0 LWPOLYLINE|38 5|10 1|20 2|10 3|20 4" + alongX,
         {"chain 2 (5 1 2) (5 3 4)"},
         {}},
        {"flat polyline",
         "0 POLYLINE|66 1" + down + "|0 VERTEX|10 1|0 VERTEX|10 2|0 SEQEND",
         {"chain 2 (-1 0 0) (-2 0 0)"},
         {}},
        {"spatial polyline",
         "0 POLYLINE|66 1|70 8" + down + "|0 VERTEX|10 1|0 VERTEX|10 2|0 SEQEND",
         {"chain 2 (1 0 0) (2 0 0)"},
         {}},
        {"text",
         "0 TEXT|1 T|10 1|20 2|40 2|50 90" + down,
         {"label T (-1 2 0) (-1 4 0) (1 2 0)"},
         {}},
        {"line stays", "0 LINE|10 1|11 2" + down, {"line (1 0 0) (2 0 0)"}, {}},
        {"too far",
         "0 LWPOLYLINE|38 -1.7e308|10 1.7e308|10 2|210 1|220 1|230 0",
         {},
         {"LWPOLYLINE of too few points 1"}},
    });
}

TEST(DXFExtended, PassesOverAndCounts) {
    Check({
        {"other kinds",
         "0 HATCH|91 5|0 3DSOLID|1 x|0 HATCH|0 RAY|10 1|0 POINT|10 1",
         {"point (1 0 0)"},
         {"HATCH 2", "3DSOLID 1", "RAY 1"}},
        {"what shows nothing in a model", "0 VIEWPORT|0 ATTDEF|2 TAG|1 x|0 SEQEND", {}, {}},
        {"paper space",
         "0 LINE|67 1|0 LINE|67 0|0 POLYLINE|66 1|67 1|0 VERTEX|10 1|0 VERTEX|10 2|0 SEQEND",
         {"line (0 0 0) (0 0 0)"},
         {"LINE in paper space 1", "POLYLINE in paper space 1"}},
        {"invisible", "0 POINT|60 1", {"point (0 0 0) hidden"}, {}},
        {"groups of applications and of embedded objects are none of the entity",
         "0 POINT|10 1|1010 7|1071 5|101 Embedded Object|10 9|20 9",
         {"point (1 0 0)"},
         {}},
        {"numbers that are none are 0",
         "0 LINE|10 nan|20 inf|30 1e999|11 1,5|21 x|31 -",
         {"line (0 0 0) (0 0 0)"},
         {}},
    });
}

TEST(DXFExtended, AnEntityThatIsCutOffIsDropped) {
    const std::string whole = Drawing("0 LINE|8 0|10 1|11 2|0 POLYLINE|66 1|0 VERTEX|10 1|0 VERTEX|"
                                      "10 2|0 SEQEND");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        try {
            DXFReading reading(whole.substr(0, length));
            EXPECT_LE(reading.Shapes().size(), 2U);
        } catch (const std::exception&) {
            EXPECT_LT(length, 20U); // no section yet
        }
    }
}

} // namespace
} // namespace ZEP
