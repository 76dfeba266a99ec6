#include "tests/converters/dxf/DXFReading.h"

#include <gmock/gmock.h>

namespace ZEP {
namespace {

struct TRow {
    const char* Name;
    std::string Entities;
    TLines Shapes;
};

void Check(const std::vector<TRow>& rows) {
    for (const TRow& row : rows) {
        DXFReading reading(Drawing(row.Entities));
        EXPECT_EQ(reading.Shapes(), row.Shapes) << row.Name;
        EXPECT_EQ(reading.Passed(), TLines()) << row.Name;
    }
}

TEST(DXFTexts, StandWhereTheyAreMeant) {
    Check({
        {"plain", "0 TEXT|1 T|10 1|20 2|30 3|40 2", {"label T (1 2 3) (3 2 3) (1 4 3)"}},
        {"turned, wide",
         "0 TEXT|1 T|10 1|20 2|40 2|41 1.5|50 90",
         {"label T (1 2 0) (1 5 0) (-1 2 0)"}},
        {"no second point without an alignment",
         "0 TEXT|1 T|10 1|11 5|40 2",
         {"label T (1 0 0) (3 0 0) (1 2 0)"}},
        {"backward", "0 TEXT|1 T|40 2|71 2", {"label T (0 0 0) (-2 0 0) (0 2 0)"}},
        {"upside down", "0 TEXT|1 T|40 2|71 4", {"label T (0 0 0) (2 0 0) (0 -2 0)"}},
        {"top", "0 TEXT|1 T|10 9|40 2|73 3|11 1|21 2", {"label T (1 0 0) (3 0 0) (1 2 0)"}},
        {"middle", "0 TEXT|1 T|10 9|40 2|73 2|11 1|21 2", {"label T (1 1 0) (3 1 0) (1 3 0)"}},
        {"bottom", "0 TEXT|1 T|10 9|40 3|73 1|11 1|21 2", {"label T (1 3 0) (4 3 0) (1 6 0)"}},
        {"top, turned",
         "0 TEXT|1 T|40 2|50 90|73 3|11 1|21 2",
         {"label T (3 2 0) (3 4 0) (1 2 0)"}},
        {"attribute: top stands in another group",
         "0 ATTRIB|1 T|2 N|40 2|73 1|74 3|11 1|21 2",
         {"label T (1 0 0) (3 0 0) (1 2 0)"}},
        {"codes", "0 TEXT|1 %%c5 45%%d%%u|40 1", {"label Ø5 45° (0 0 0) (1 0 0) (0 1 0)"}},
        {"nothing to see", "0 TEXT|1 |0 TEXT|1   |0 TEXT|40 3", {}},
    });
}

TEST(DXFTexts, LinesStandBelowEachOther) {
    Check({
        {"top left",
         "0 MTEXT|1 A\\PB|10 1|20 2|30 3|40 3|71 1",
         {"label A (1 -1 3) (4 -1 3) (1 2 3)", "label B (1 -6 3) (4 -6 3) (1 -3 3)"}},
        {"bottom left",
         "0 MTEXT|1 A\\PB|40 3|71 7",
         {"label A (0 5 0) (3 5 0) (0 8 0)", "label B (0 0 0) (3 0 0) (0 3 0)"}},
        {"middle left",
         "0 MTEXT|1 A\\PB|40 3|71 4",
         {"label A (0 1 0) (3 1 0) (0 4 0)", "label B (0 -4 0) (3 -4 0) (0 -1 0)"}},
        {"wider apart",
         "0 MTEXT|1 A\\PB|40 3|44 2|71 7",
         {"label A (0 10 0) (3 10 0) (0 13 0)", "label B (0 0 0) (3 0 0) (0 3 0)"}},
        {"an empty line between",
         "0 MTEXT|1 A\\P\\PB|40 3|71 7",
         {"label A (0 10 0) (3 10 0) (0 13 0)", "label B (0 0 0) (3 0 0) (0 3 0)"}},
        {"turned", "0 MTEXT|1 A|40 2|50 90|71 7", {"label A (0 0 0) (0 2 0) (-2 0 0)"}},
        {"direction",
         "0 MTEXT|1 A|10 5|40 2|11 0|21 9|31 0|71 7|50 30",
         {"label A (5 0 0) (5 2 0) (3 0 0)"}},
        {"upright",
         "0 MTEXT|1 A|10 5|20 6|30 7|40 2|11 0|21 0|31 1|71 7|210 1|220 0|230 0",
         {"label A (5 6 7) (5 6 9) (5 4 7)"}},
        {"unknown attachment is top left",
         "0 MTEXT|1 A|40 2|71 42",
         {"label A (0 -2 0) (2 -2 0) (0 0 0)"}},
        {"in parts, with codes",
         "0 MTEXT|3 {\\fArial;one |3 t|1 wo\\~%%d}|40 1|71 7",
         {"label one two\u00A0° (0 0 0) (1 0 0) (0 1 0)"}},
        {"nothing to see", "0 MTEXT|1 \\P \\P|40 1", {}},
    });
}

TEST(DXFTexts, OfTooManyLinesEndEarly) {
    std::string text = "0 MTEXT|40 1|1 x";
    for (int i = 0; i < 5000; ++i) text += "\\Px";
    DXFReading reading(Drawing(text));
    EXPECT_EQ(reading.Shapes().size(), 1000U);
    EXPECT_EQ(reading.Passed(), TLines{"MTEXT beyond the limit of objects 1"});
}

TEST(DXFTexts, AreDecodedByTheCodePage) {
    const std::string header = Section("HEADER", "9 $ACADVER|1 AC1015|9 $DWGCODEPAGE|3 ANSI_1251");
    DXFReading reading(header + Section("ENTITIES", "0 TEXT|8 \xD1\xEB\xEE\xE9|1 \xD1|40 1"));
    EXPECT_EQ(reading.Shapes(), TLines{"Слой: label С (0 0 0) (1 0 0) (0 1 0)"});
}

} // namespace
} // namespace ZEP
