#include "tests/Cases.h"
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

/// Drawings, with their pairs and the line that is bad, 0 where there is none.
TEST(DXFTags, EndWhereThereIsNoPair) {
    ExpectCases("text/pairs.txt", [](const TCase& c) {
        TDXFTags tags(std::string_view(c.Input).substr(0, c.Input.size() - 1));
        std::string text;
        for (const std::string& pair : AllOf(tags)) text += pair + "\n";
        EXPECT_LT(tags.NextGroupCode(), 0) << c.Name;
        return text + "bad line " + std::to_string(tags.BadLine());
    });
}

/// What stands between quotes as a number and as a whole one, each with where it is wrong, or 0.
TEST(DXFTags, ConvertNumbers) {
    ExpectCases("text/numbers.txt", [](const TCase& c) {
        return EachLine(c, [](const std::string& line) {
            const std::string text = Pairs("40 " + line.substr(1, line.size() - 2));
            TDXFTags tags(text);
            tags.NextGroupCode();
            QByteArray answer = QByteArray::number(tags.ValDbl(), 'g', 17) + " wrong at ";
            answer += QByteArray::number(qulonglong(tags.ErrorPosition())) + ", whole ";
            answer += QByteArray::number(tags.ValInt()) + " wrong at ";
            return (answer + QByteArray::number(qulonglong(tags.ErrorPosition()))).toStdString();
        });
    });
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

} // namespace
} // namespace ZEP
