#include "tests/converters/dxf/DXFFixture.h"

namespace ZEP {
namespace {

/// A block that is inserted two million times, in some hundred bytes.
TEST_F(DXF, ArraysTellTheirProgressAndCanBeCancelled) {
    const std::string text =
        Pairs("0 SECTION|2 BLOCKS|0 BLOCK|2 B|0 POINT|8 0|0 ENDBLK|0 ENDSEC|0 SECTION|2 ENTITIES|"
              "0 INSERT|2 B|70 1400|71 1400|44 1|45 1|0 POINT|8 0|0 ENDSEC|0 EOF");
    Converter.SetExtended(true);
    std::vector<double> told;
    int most = 1000;
    Converter.SetProgress([&](qint64 done, qint64 total) {
        told.push_back(static_cast<double>(done) / static_cast<double>(total));
        return static_cast<int>(told.size()) < most;
    });
    Converter.ReadDXF(text);
    EXPECT_FALSE(Converter.Cancelled());
    EXPECT_GT(told.size(), 10U);
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_GT(told.back(), told.front());
    EXPECT_LE(told.back(), 1);
    const int all = Root.GetItem(0)->GetItemsCount();
    EXPECT_GT(all, 100'000);
    EXPECT_LT(all, 200'000) << "each takes some hundred bytes, and so does its point";
    Root.Clear();
    told.clear();
    most = 3;
    Converter.ReadDXF(text);
    EXPECT_TRUE(Converter.Cancelled());
    EXPECT_LT(Root.GetItem(0)->GetItemsCount(), all / 2);
}

} // namespace
} // namespace ZEP
