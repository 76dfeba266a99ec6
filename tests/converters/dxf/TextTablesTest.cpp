#include "tests/Cases.h"
#include <zep/converters/dxf/CodePage.h>
#include <zep/converters/dxf/Colors.h>
#include <zep/converters/dxf/Palette.h>
#include <zep/converters/dxf/Text.h>

namespace ZEP {
namespace {

/// The answer to each line of an input; what a line ends with, `|`, keeps its blanks.
std::string OfLines(const TCase& c, const std::function<QString(const std::string&)>& answer) {
    std::istringstream lines(c.Input);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += answer(line.substr(0, line.rfind('|'))).toStdString() + "|\n";
    return text;
}

QString Joined(const std::vector<TDXFTextLine>& lines) {
    QStringList texts;
    for (const TDXFTextLine& line : lines) {
        QString& text = texts.emplace_back();
        for (const TDXFRun& run : line)
            text += run.IsStack() ? run.Text + run.Bar + run.Lower : run.Text;
    }
    return texts.join(u'|');
}

TEST(DXFText, IsFreedOfItsCodes) {
    ExpectCases("text/codes.txt", [](const TCase& c) {
        return OfLines(c, [&](const std::string& line) {
            const QString text = QString::fromStdString(line);
            if (c.Name == "percent codes") return PlainDXFText(text);
            return Joined(DXFTextLines(text));
        });
    });
}

TEST(DXFText, HasRunsOfOneLook) {
    const auto lines = DXFTextLines(
        QStringLiteral("a{\\H5;b\\H0.5x;\\W2;c{\\C1;d\\C256;e}\\Q15;f}\\c255;g\\Hx;\\H-1;\\W0;h"),
        2);
    ASSERT_EQ(lines.size(), 1U);
    const TDXFRun runs[] = {{QStringLiteral("a"), {}},
                            {QStringLiteral("b"), {2.5}},
                            {QStringLiteral("c"), {1.25, 2}},
                            {QStringLiteral("d"), {1.25, 2, 0, clRed}},
                            {QStringLiteral("e"), {1.25, 2}},
                            {QStringLiteral("f"), {1.25, 2, 15}},
                            {QStringLiteral("gh"), {1, 1, 0, clRed}}};
    ASSERT_EQ(lines[0].size(), std::size(runs));
    for (std::size_t i = 0; i < std::size(runs); ++i) {
        EXPECT_EQ(lines[0][i].Text, runs[i].Text);
        EXPECT_EQ(lines[0][i].Look, runs[i].Look) << i;
    }
}

/// "from-to:rules" behind the text.
TEST(DXFText, HasLinesAlongItsLetters) {
    const std::pair<const char*, const char*> rows[] = {
        {"%%uall", "all 0-3:1"},
        {"a%%ub%%u %%oc%%kd%%o%%ke", "ab cde 1-2:1 3-4:2 4-5:6"},
        {"%%u%%u%%Uno%%u %%", "no %% 0-2:1"},
        {"x%%k", "x"}};
    for (const auto& [text, expected] : rows) {
        std::vector<TDXFTextRules> rules;
        QString shown = PlainDXFText(QString::fromLatin1(text), &rules);
        for (const TDXFTextRules& rule : rules)
            shown += QStringLiteral(" %1-%2:%3").arg(rule.From).arg(rule.To).arg(rule.Rules);
        EXPECT_EQ(shown, QLatin1StringView(expected)) << text;
    }
    const auto line =
        DXFTextLines(QStringLiteral("a\\Lb{\\Oc%%kd}e\\lf\\A1;g\\A2;\\S1/2;h\\A9;i")).front();
    const int expected[] = {0, 1, 3, 7, 1, 0, 10, 20, 20};
    ASSERT_EQ(line.size(), std::size(expected));
    for (std::size_t i = 0; i < line.size(); ++i)
        EXPECT_EQ(line[i].Look.Rules + 10 * line[i].Look.Alignment, expected[i]) << i;
    EXPECT_TRUE(line[7].IsStack());
}

/// Each letter is as wide as its run is high.
TEST(DXFText, IsBrokenAtBlanks) {
    const auto measure = [](const TDXFRun& run) {
        return static_cast<double>(run.Text.size()) * run.Look.Height;
    };
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"one two three", "one two|three"},
        {"one  two   three four", "one  two|three|four"},
        {"incomprehensible one", "incomprehensible|one"},
        {" one two ", " one two"},
        {"one\\P\\Ptwo three", "one||two|three"},
        {"a{\\H2;b}c {\\H2;def} g", "abc|def g"},
        {"abcde \\S1/2;abc d", "abcde|1/2abc d"},
    };
    for (const auto& [text, lines] : rows)
        EXPECT_EQ(Joined(WrappedDXFLines(DXFTextLines(QString::fromLatin1(text)), 8, measure)),
                  QLatin1StringView(lines))
            << text;
}

/// The name of a case is the code page and the version of the drawing.
TEST(DXFText, IsDecodedByPageAndVersion) {
    ExpectCases("text/codepages.txt", [](const TCase& c) {
        const auto blank = c.Name.rfind(' ');
        const TDXFTextDecoder decoder(c.Name.substr(0, blank), c.Name.substr(blank + 1));
        return OfLines(c, [&](const std::string& line) { return decoder.Decode(line); });
    });
}

TEST(DXFText, OfAnyLengthIsKept) {
    const QString text = QStringLiteral("\\f").repeated(500'000);
    EXPECT_EQ(Joined(DXFTextLines(text)), text) << "in linear time";
    EXPECT_EQ(DXFTextLines(QStringLiteral("\\S").repeated(500'000)).size(), 1U);
    const TDXFTextDecoder decoder("ANSI_1251", "AC1015");
    EXPECT_EQ(decoder.Decode(std::string(10'001, '\xE0')), QString(10'001, QChar(u'а')));
    EXPECT_EQ(decoder.Decode("a\xE0"), QStringLiteral("aа")) << "nothing is left from before";
}

/// "number: colour by the plain table, by the palette", red first.
TEST(DXFColors, AreThoseOfTheTables) {
    ExpectCases("text/colors.txt", [](const TCase& c) {
        return OfLines(c, [](const std::string& line) {
            const int number = std::stoi(line);
            const auto plain = DXFColor(number);
            return QStringLiteral("%1: %2 %3")
                .arg(number)
                .arg(plain ? ToQColor(*plain).name() : QStringLiteral("none"),
                     ToQColor(DXFPaletteColor(number)).name());
        });
    });
    EXPECT_EQ(DXFTrueColor(0x102030, 256), TColor(0x302010));
    EXPECT_EQ(DXFTrueColor(-1, 7), clWhite);
    EXPECT_EQ(DXFTrueColor(0, 256), clBlack);
    EXPECT_EQ(DXFTrueColor(0, 7), clWhite) << "no colour of its own";
}

TEST(DXFColors, AreFoundByDistance) {
    const std::pair<TColor, int> rows[] = {
        {clWhite, 7},  {clBlack, 0},  {clRed, 1},    {0x0000FE, 1}, {0x808080, 8},  {0x203051, 29},
        {0xF0F0F0, 7}, {0x010000, 0}, {0x7F0080, 6}, {clBlue, 5},   {clSilver, 21}, {0x304070, 27},
    };
    for (const auto& [color, number] : rows)
        EXPECT_EQ(find_DXF_color(color), number) << std::hex << color.Value;
}

} // namespace
} // namespace ZEP
