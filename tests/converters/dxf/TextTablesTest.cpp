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

TEST(DXFText, IsFreedOfItsCodes) {
    ExpectCases("text/codes.txt", [](const TCase& c) {
        return OfLines(c, [&](const std::string& line) {
            const QString text = QString::fromStdString(line);
            if (c.Name == "percent codes") return PlainDXFText(text);
            return PlainDXFLines(text).join(QStringLiteral("|"));
        });
    });
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
    EXPECT_EQ(PlainDXFLines(text), QStringList(text)) << "in linear time";
    EXPECT_EQ(PlainDXFLines(QStringLiteral("\\S").repeated(500'000)).size(), 1);
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
