#include "tests/converters/dxf/DXFFixture.h"
#include <zep/converters/dxf/Tags.h>

namespace ZEP {
namespace {

using testing::ElementsAre;

/// All pairs, as "code=value@line".
TTexts AllOf(TDXFTags& tags) {
    TTexts texts;
    while (tags.NextGroupCode() >= 0)
        texts.push_back(std::to_string(tags.Code()) + "=" + std::string(tags.ValStr()) + "@" +
                        std::to_string(tags.LineNumber()));
    return texts;
}
TTexts AllOf(std::string_view text, bool lenient = false) {
    TDXFTags tags(text, lenient);
    return AllOf(tags);
}

TEST(DXFTags, TakeEveryLineEnd) {
    const TTexts expected{"0=LINE@1", "10= 1.5@3", "1=@5", "0=EOF@7"};
    for (const char* text : {
             "0\nLINE\n 10\n 1.5\n  1\n\n  0\nEOF\n",
             "0\r\nLINE\r\n 10\r\n 1.5\r\n  1\r\n\r\n  0\r\nEOF\r\n",
             "0\rLINE\r 10\r 1.5\r  1\r\r  0\rEOF\r",
             "0\rLINE\r\n 10\n 1.5\r  1\r\n\n  0\nEOF",
             "\xEF\xBB\xBF"
             "0\nLINE\n\t10 \n 1.5\n+1\n\n0000\nEOF",
         })
        EXPECT_EQ(AllOf(text), expected) << text;
    EXPECT_EQ(AllOf("0\r\r\nLINE\r\r\n10\r\r\n1.5\r\r\n", true), (TTexts{"0=LINE@1", "10=1.5@3"}));
}

TEST(DXFTags, EndWhereThereIsNoPair) {
    const struct {
        const char* Text;
        TTexts Pairs;
        qint64 BadLine;
    } rows[] = {
        {"", {}, 0},
        {"\n\n \n", {}, 0},
        {"0", {}, 1},
        {"0\n", {}, 1},
        {"0\nA\n8", {"0=A@1"}, 3},
        {"0\nA\nX\nB\n0\nC", {"0=A@1"}, 3},
        {"0\nA\n1.5\nB", {"0=A@1"}, 3},
        {"0\nA\n99999999999\nB", {"0=A@1"}, 3},
        {"0\nA\n-1\nB\n0\nC", {"0=A@1"}, 3},
        {"0\nEOF\nwhat is left over", {"0=EOF@1"}, 0},
        {"0\nA\n\x1A", {"0=A@1"}, 0}, // the end mark of old systems
    };
    for (const auto& row : rows) {
        TDXFTags tags(row.Text);
        EXPECT_EQ(AllOf(tags), row.Pairs) << row.Text;
        EXPECT_EQ(tags.BadLine(), row.BadLine) << row.Text;
        EXPECT_LT(tags.NextGroupCode(), 0) << row.Text;
    }
}

TEST(DXFTags, ConvertNumbers) {
    const struct {
        const char* Text;
        double Number;
        std::size_t Error;
        int Whole;
        std::size_t WholeError;
    } rows[] = {
        {"12", 12, 0, 12, 0},        {" \t-12 ", -12, 0, -12, 0},
        {"+7", 7, 0, 7, 0},          {"0.25", 0.25, 0, 0, 2},
        {".5", 0.5, 0, 0, 1},        {"5.", 5, 0, 0, 2},
        {"-1.5E+02", -150, 0, 0, 3}, {"1234567.0123456789", 1234567.0123456789, 0, 0, 8},
        {"6,5", 0, 2, 0, 2},         {"", 0, 1, 0, 1},
        {"x", 0, 1, 0, 1},           {"+-5", 0, 1, 0, 1},
        {"inf", 0, 1, 0, 1},         {"-nan", 0, 1, 0, 1},
        {"1e999", 0, 6, 0, 2},       {"3000000000", 3e9, 0, 0, 11},
    };
    for (const auto& row : rows) {
        const std::string text = Pairs(std::string("40 ") + row.Text);
        TDXFTags tags(text);
        tags.NextGroupCode();
        EXPECT_EQ(tags.ValDbl(), row.Number) << row.Text;
        EXPECT_EQ(tags.ErrorPosition(), row.Error) << row.Text;
        EXPECT_EQ(tags.ValInt(), row.Whole) << row.Text;
        EXPECT_EQ(tags.ErrorPosition(), row.WholeError) << row.Text;
    }
}

TEST(DXFTags, CutLinesAtTheirLimit) {
    const std::string value(300, 'x');
    const std::string text = Pairs("1 " + value + "|8  A |0 END");
    TDXFTags plain(text);
    plain.NextGroupCode();
    EXPECT_EQ(plain.ValStr(), value.substr(0, 255));
    EXPECT_EQ(plain.NextGroupCode(), 8);
    EXPECT_EQ(plain.ValStr(), " A ");
    TDXFTags lenient(text, true);
    lenient.NextGroupCode();
    EXPECT_EQ(lenient.ValStr(), value);
    lenient.NextGroupCode();
    EXPECT_EQ(lenient.ValStr(), "A");
}

TEST(DXFTags, DeliverAPairAgain) {
    const std::string text = Pairs("0 A|8 B|0 C");
    TDXFTags tags(text);
    int code = 0;
    std::string_view value;
    EXPECT_TRUE(tags.code_and_string(code, value));
    tags.go_back_to_last(code, value);
    EXPECT_EQ(tags.Position().Offset, 0U);
    EXPECT_EQ(AllOf(tags), (TTexts{"0=A@1", "8=B@3", "0=C@5"}));
    EXPECT_FALSE(tags.code_and_string(code, value));
    EXPECT_LT(code, 0);
}

TEST(DXFTags, ComeBackToAMark) {
    const std::string text = Pairs("0 A|8 B|0 C|0 D");
    TDXFTags tags(text);
    tags.NextGroupCode();
    tags.mark_position();
    tags.NextGroupCode();
    tags.NextGroupCode();
    tags.go_back_to_last();
    tags.goto_marked_position();
    EXPECT_EQ(AllOf(tags), (TTexts{"8=B@3", "0=C@5", "0=D@7"}));
    tags.goto_marked_position();
    EXPECT_EQ(tags.NextGroupCode(), 8);
}

TEST(DXFTags, ReadAPointOfTwoCoordinates) {
    const std::string text = Pairs("9 $EXTMAX|5 skipped|10 1.5|20 -2|30 7");
    TDXFTags tags(text);
    TGLArrayd3 point{9, 9, 9};
    tags.read_2Dpoint(point);
    EXPECT_EQ(point, (TGLArrayd3{1.5, -2, 9}));
    double z = 0;
    int code = 0;
    EXPECT_TRUE(tags.code_and_double(code, z));
    EXPECT_EQ(z, 7);
    tags.read_2Dpoint(point);
    EXPECT_EQ(point, (TGLArrayd3{1.5, -2, 9})) << "there is none";
}

TEST(DXFTags, FindSectionsFromWhereTheyAre) {
    const std::string text = Pairs("0 SECTION|2 ENTITIES|0 ENDSEC|0 SECTION|2 HEADER|9 $A|0 ENDSEC|"
                                   "0 SECTION|999 remark|2 TABLES|0 ENDSEC|2 BLOCKS|"
                                   "0 SECTION|2 entities|0 SECTION|2 ENTITIES|8 second");
    TDXFTags tags(text);
    EXPECT_TRUE(tags.move_to_header_section());
    EXPECT_EQ(tags.NextGroupCode(), 9);
    EXPECT_EQ(tags.LineNumber(), 11);
    EXPECT_FALSE(tags.skip_upto_section("HEADER")) << "it lies behind";
    EXPECT_LT(tags.NextGroupCode(), 0);
    for (const bool again : {false, true}) {
        SCOPED_TRACE(again);
        tags.Goto({});
        EXPECT_TRUE(tags.move_to_entity_section());
        EXPECT_EQ(tags.Position().Line, 4);
        EXPECT_TRUE(tags.move_to_entity_section());
        EXPECT_EQ(AllOf(tags), (TTexts{"8=second@33"}));
        for (const char* name : {"TABLES", "BLOCKS", "CLASSES", ""}) {
            tags.Goto({});
            EXPECT_FALSE(tags.skip_upto_section(name)) << name;
        }
    }
}

TEST(DXFTags, AreReadOnceForAllSearches) {
    std::string text = Pairs("0 SECTION|2 ENTITIES");
    while (text.size() < 1000000) text += "  8\nsome layer\n";
    TDXFTags tags(text);
    int asked = 0;
    tags.SetProgress([&](qint64 done, qint64 total) {
        ++asked;
        EXPECT_EQ(total, static_cast<qint64>(text.size()));
        return done <= total;
    });
    for (const char* name : {"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES"}) {
        tags.Goto({});
        tags.skip_upto_section(name);
    }
    EXPECT_EQ(asked, 1000000 / 65536);
}

TEST(DXFTags, EndWhenTheyAreCancelled) {
    std::string text;
    while (text.size() < 300000) text += "  8\nsome layer\n";
    TDXFTags tags(text);
    int asked = 0;
    tags.SetProgress([&](qint64, qint64) { return ++asked < 3; });
    EXPECT_EQ(AllOf(tags).size(), 3 * 4370U); // of 15 bytes each
    EXPECT_TRUE(tags.Cancelled());
    tags.Goto({});
    EXPECT_LT(tags.NextGroupCode(), 0);
    EXPECT_FALSE(tags.skip_upto_section("HEADER"));
    EXPECT_EQ(tags.BadLine(), 0);
    EXPECT_EQ(asked, 3);
}

} // namespace
} // namespace ZEP
