#include "tests/converters/dxf/DXFFixture.h"

namespace ZEP {
namespace {

TEST_F(DXF, LeavesOnlyFacesWithDentsToTheTessellator) {
    const struct {
        const char* Name;
        const char* Points;
        bool Concave;
        std::string Normal; ///< where it is not that of the first three
    } rows[] = {
        {"square", "11 1|12 1|22 1|13 0|23 1", false, ""},
        {"clockwise", "11 0|21 1|12 1|22 1|13 1", false, ""},
        {"triangle", "11 1|12 1|22 1|13 1|23 1", false, ""},
        {"out of its plane", "11 1|12 1|22 1|32 1|13 0|23 1", false, ""},
        {"dent at the first", "10 1|20 1|11 4|12 0|22 4|13 0|23 0", false, ""},
        {"dent at the second", "11 1|21 1|12 4|13 0|23 4", true, ""},
        {"dent at the third", "11 4|12 1|22 1|13 0|23 4", false, ""},
        {"crossing", "11 1|21 1|12 1|13 0|23 1", true, ""},
        {"first triangle a line", "11 0|12 1|13 1|23 1", false, "0 0 1"},
        {"first two corners in line", "11 1|12 2|13 2|33 2", false, "0 -1 0"},
        {"a point", "10 1|11 1|12 1|13 1", false, ""},
    };
    Converter.SetExtended(true);
    for (const auto& row : rows) {
        ReadOnA(std::string("0 3DFACE|8 A|") + row.Points);
        auto* face = qobject_cast<TZEPPolygon*>(Root.GetItem(0)->GetItem(0));
        EXPECT_EQ(face->Concave(), row.Concave) << row.Name;
        EXPECT_EQ(face->UseDisplayList(), row.Concave) << row.Name;
        EXPECT_EQ(face->AutoNormal() ? "" : PointText(face->Normal()->Data()), row.Normal)
            << row.Name;
    }
}

TEST_F(DXF, LeavesFacesAsTheyAreInThePlainReading) {
    ReadOnA("0 3DFACE|8 A|11 1|12 1|22 1|13 0|23 1");
    auto* face = qobject_cast<TZEPPolygon*>(Root.GetItem(0)->GetItem(0));
    EXPECT_TRUE(face->Concave() && face->UseDisplayList() && face->AutoNormal());
}

} // namespace
} // namespace ZEP
