#include "tests/converters/dxf/DXFReading.h"

#include <gmock/gmock.h>

namespace ZEP {
namespace {

/// Where the ends of a text's base line are, as measured by its font.
struct TEnds {
    TGLArrayd3 Start, End;
};

TEnds EndsOf(const TZEPObject& label) {
    TGLArrayd3 min, max;
    label.GetSize(min, max);
    return {DXFReading::Absolute(label, {0, 0, 0}), DXFReading::Absolute(label, {max[0], 0, 0})};
}

std::vector<TZEPObject*> LabelsIn(const TZEPObject& root) {
    std::vector<TZEPObject*> labels;
    root.ListChildren(labels, {&TZEPLabel::staticMetaObject});
    return labels;
}

TEST(DXFTextsHand, AreAlignedByTheirWidth) {
    const struct {
        const char* Name;
        const char* Entity;
        double Share; // of the way from start to end
        TGLArrayd3 Place;
    } rows[] = {
        {"left", "0 TEXT|1 Hello|10 7|40 2", 0, {7, 0, 0}},
        {"centre", "0 TEXT|1 Hello|40 2|72 1|11 5|21 3", 0.5, {5, 3, 0}},
        {"right", "0 TEXT|1 Hello|40 2|72 2|11 5|21 3", 1, {5, 3, 0}},
        {"right, turned", "0 TEXT|1 Hello|40 2|50 30|72 2|11 5|21 3", 1, {5, 3, 0}},
        {"right top", "0 TEXT|1 Hello|40 2|72 2|73 3|11 5|21 3", 1, {5, 1, 0}},
        {"middle", "0 TEXT|1 Hello|40 2|72 4|11 5|21 3", 0.5, {5, 2, 0}},
        {"aligned, its end", "0 TEXT|1 Hello|40 2|72 3|10 1|20 1|11 4|21 5", 1, {4, 5, 0}},
        {"fit, its end", "0 TEXT|1 Hello|40 2|72 5|10 1|20 1|11 4|21 5", 1, {4, 5, 0}},
        {"fit, its start", "0 TEXT|1 Hello|40 2|72 5|10 1|20 1|11 4|21 5", 0, {1, 1, 0}},
        {"lines, bottom right", "0 MTEXT|1 Hello|40 2|71 9|10 5|20 3", 1, {5, 3, 0}},
        {"lines, top centre", "0 MTEXT|1 Hello|40 2|71 2|10 5|20 3", 0.5, {5, 1, 0}},
    };
    for (const auto& row : rows) {
        DXFReading reading(Drawing(row.Entity));
        const auto labels = LabelsIn(reading.Scene);
        ASSERT_EQ(labels.size(), 1U) << row.Name;
        const auto [start, end] = EndsOf(*labels.front());
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(std::lerp(start[k], end[k], row.Share), row.Place[k], 1e-9) << row.Name;
    }
}

TEST(DXFTextsHand, FitKeepsTheHeightAndAlignedTheShape) {
    for (const auto& [entity, height] : {std::pair("0 TEXT|1 Hello|40 2|72 5|10 0|11 100", 2.0),
                                         std::pair("0 TEXT|1 Hello|40 2|72 3|10 0|11 100", 0.0)}) {
        DXFReading reading(Drawing(entity));
        const TZEPObject& label = *LabelsIn(reading.Scene).front();
        TGLArrayd3 min, max;
        label.GetSize(min, max);
        const double up = DXFReading::Absolute(label, {0, 1, 0})[1];
        EXPECT_NEAR(up, height == 0 ? 100 / max[0] : height, 1e-9);
    }
}

} // namespace
} // namespace ZEP
