#include "tests/Cases.h"
#include "tests/Words.h"
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

/// Where a walk through the pairs of a drawing comes, which stand behind its commands: `next`,
/// `again` the last pair, `mark` and `return`, `restart`, `section NAME`, `header`, `entities`, and
/// `point`.
class TWalk {
public:
    explicit TWalk(const std::string& pairs) : m_text(Pairs(pairs)), m_tags(m_text) {}

    std::string Do(const std::string& line) {
        const TWords words(line);
        const std::string verb = words.Verb();
        bool found = true;
        if (verb == "next") found = m_tags.NextGroupCode() >= 0;
        if (verb == "again") m_tags.go_back_to_last();
        if (verb == "mark") m_tags.mark_position();
        if (verb == "return") m_tags.goto_marked_position();
        if (verb == "restart") m_tags.Goto({});
        if (verb == "section") found = m_tags.skip_upto_section(words.At(1).c_str());
        if (verb == "header") found = m_tags.move_to_header_section();
        if (verb == "entities") found = m_tags.move_to_entity_section();
        if (verb == "point") m_tags.read_2Dpoint(m_point);
        if (!found) return "none";
        if (verb == "point")
            return std::to_string(int(4 * m_point[0])) + " " + std::to_string(int(4 * m_point[1]));
        if (verb != "next") return "line " + std::to_string(m_tags.Position().Line);
        return std::to_string(m_tags.Code()) + "=" + std::string(m_tags.ValStr()) + "@" +
               std::to_string(m_tags.LineNumber());
    }

private:
    std::string m_text;
    TDXFTags m_tags;
    TGLArrayd3 m_point{9, 9, 9};
};

TEST(DXFTags, AreWalkedThrough) {
    ExpectCases("text/walks.txt", [](const TCase& c) {
        const auto end = c.Input.find('\n');
        TWalk walk(c.Input.substr(0, end));
        return EachLine({c.Name, c.Input.substr(end + 1), {}},
                        [&](const std::string& line) { return walk.Do(line); });
    });
}

TEST(DXFTags, DeliverAPairWithItsValue) {
    const std::string text = Pairs("0 A|40 7");
    TDXFTags tags(text);
    int code = 0;
    std::string_view value;
    double number = 0;
    EXPECT_TRUE(tags.code_and_string(code, value));
    tags.go_back_to_last(code, value);
    EXPECT_TRUE(tags.code_and_string(code, value));
    EXPECT_EQ(value, "A");
    EXPECT_TRUE(tags.code_and_double(code, number));
    EXPECT_EQ(number, 7);
    EXPECT_FALSE(tags.code_and_string(code, value));
    EXPECT_LT(code, 0);
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
