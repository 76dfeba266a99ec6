#include "tests/converters/dxf/DXFFixture.h"
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>

#include <cmath>

namespace ZEP {
namespace {

/// Where the ends of a text's base line are, as measured by its font.
struct TEnds {
    TGLArrayd3 Start, End;
};

TGLArrayd3 Absolute(const TZEPObject& object, const TGLArrayd3& point) {
    TGLArrayd3 there;
    object.ConvertToAbsolute(point, there);
    return there;
}

TEnds EndsOf(const TZEPObject& label) {
    return {Absolute(label, {0, 0, 0}), Absolute(label, {label.GetMax()[0], 0, 0})};
}

class DXFTextsHand : public DXF {
protected:
    TZEPObject& LabelOf(const char* entity) {
        Converter.SetExtended(true);
        Read(Entities(entity));
        return *Root.GetItem(0)->GetItem(0);
    }
};

TEST_F(DXFTextsHand, AreAlignedByTheirWidth) {
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
        const auto [start, end] = EndsOf(LabelOf(row.Entity));
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(std::lerp(start[k], end[k], row.Share), row.Place[k], 1e-9) << row.Name;
    }
}

TEST_F(DXFTextsHand, FitKeepsTheHeightAndAlignedTheShape) {
    for (const auto& [entity, height] : {std::pair("0 TEXT|1 Hello|40 2|72 5|10 0|11 100", 2.0),
                                         std::pair("0 TEXT|1 Hello|40 2|72 3|10 0|11 100", 0.0)}) {
        const TZEPObject& label = LabelOf(entity);
        const double up = Absolute(label, {0, 1, 0})[1];
        EXPECT_NEAR(up, height == 0 ? 100 / label.GetMax()[0] : height, 1e-9);
    }
}

TEST_F(DXFTextsHand, RunsStandBehindEachOtherOnTheLinesOfTheirBox) {
    const TZEPObject& layer =
        *LabelOf("0 MTEXT|1 {\\C1;red} {\\H4;{\\W2;wide} big} behindbehindbehind|40 2|41 40|71 1")
             .Parent();
    ASSERT_EQ(layer.GetItemsCount(), 4);
    double last = -1;
    for (int i = 0; i < 3; ++i) {
        const auto [start, end] = EndsOf(*layer.GetItem(i));
        EXPECT_GT(start[0], last) << i;
        EXPECT_NEAR(start[1], -4, 1e-9) << "the highest letters touch the box";
        last = end[0];
    }
    EXPECT_LT(last, 41);
    EXPECT_EQ(layer.GetItem(0)->Color(), clRed);
    EXPECT_NEAR(EndsOf(*layer.GetItem(3)).Start[1], -4 - 2 * 5 / 3.0, 1e-9);
}

TEST_F(DXFTextsHand, HaveLinesAsLongAsTheirLetters) {
    const struct {
        const char* Entity;
        double Up;
        double From; // of the text's width
    } rows[] = {{"0 TEXT|1 %%uHello|40 2|10 3|20 4", -0.4, 0},
                {"0 TEXT|1 Hi%%oHi|40 2|10 3|20 4", 2.4, 0.5},
                {"0 MTEXT|1 \\KHello|40 2|10 3|20 4|71 7", 1, 0}};
    for (const auto& row : rows) {
        const TZEPObject& label = LabelOf(row.Entity);
        ASSERT_EQ(label.Parent()->GetItemsCount(), 2) << row.Entity;
        auto& line = dynamic_cast<TZEPLine&>(*label.Parent()->GetItem(1));
        const TGLArrayd3 a = Absolute(line, line.P1()->Data()),
                         b = Absolute(line, line.P2()->Data());
        const auto [start, end] = EndsOf(label);
        constexpr double room = 0.3; // beside the ink of letters
        EXPECT_NEAR(a[0], std::lerp(start[0], end[0], row.From), room) << row.Entity;
        EXPECT_NEAR(b[0], end[0], room) << row.Entity;
        EXPECT_NEAR(a[1], 4 + row.Up, 1e-9) << row.Entity;
        EXPECT_EQ(a[1], b[1]) << row.Entity;
    }
}

TEST_F(DXFTextsHand, StackFractionsAboutTheMiddle) {
    const TZEPObject& layer =
        *LabelOf("0 MTEXT|1 x{\\H0.5x;\\A1;\\C1;\\S1/2;}\\S+3^-3;y|40 2|71 7").Parent();
    ASSERT_EQ(layer.GetItemsCount(), 7);
    // Letters of 1 and of 2: bases of both parts, and the line between the first ones.
    const double ups[] = {0, 1.2, -0.2, 1, 2.4, 0, 0};
    for (int i = 0; i < 7; ++i)
        EXPECT_NEAR(Absolute(*layer.GetItem(i), {0, 0, 0})[1], ups[i], 1e-9) << i;
    EXPECT_EQ(layer.GetItem(3)->Color(), clRed);
    EXPECT_GT(Absolute(*layer.GetItem(6), {0, 0, 0})[0], EndsOf(*layer.GetItem(5)).End[0] - 0.1);
}

TEST_F(DXFTextsHand, LeanByTheirObliqueAngle) {
    for (const char* entity : {"0 TEXT|1 I|40 2|41 3|51 45", "0 MTEXT|1 \\Q45;I|40 2|71 7"})
        EXPECT_NEAR(Absolute(LabelOf(entity), {0, 1, 0})[0], 2, 1e-9) << entity;
}

} // namespace
} // namespace ZEP
