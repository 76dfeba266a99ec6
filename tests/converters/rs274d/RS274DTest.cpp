#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include <zep/converters/rs274d/Block.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/scene/Scene.h>

#include <QDir>
#include <QLocale>

#include <gmock/gmock.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <random>

namespace ZEP {
namespace {

using namespace std::string_literals;

class RS274D : public FolderTest {
protected:
    RS274D() { Converter.SetRoot(&Root); }

    int MovesOf(std::string_view text, bool extended = false) {
        Root.Clear();
        Converter.SetExtended(extended);
        Converter.ReadNC(text);
        return Root.GetItemsCount();
    }
    std::string ErrorOfLoading() {
        return ErrorOf([&] { Converter.LoadFromFile(); });
    }

    TZEPScene Root;
    TRS274DConverter Converter;
};

TEST_F(RS274D, NumbersOfEveryLengthAreTheNearestDouble) {
    std::mt19937 random(274);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (int i = 0; i < 20000; ++i) {
        std::string digits;
        for (std::size_t size = 1 + below(18); digits.size() < size;)
            digits += static_cast<char>('0' + below(10));
        digits.insert(digits.begin() + static_cast<std::ptrdiff_t>(below(digits.size())), '.');
        double expected = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), expected);
        const double value = GetReal("X-" + digits);
        if (expected > MaxRS274DNumber)
            EXPECT_TRUE(std::isnan(value)) << digits;
        else
            EXPECT_EQ(value, -expected) << digits;
    }
    EXPECT_EQ(GetReal("X" + std::string(400, '0') + "7"), 7);
    EXPECT_EQ(GetReal("X0." + std::string(400, '9')), 1);
    EXPECT_TRUE(std::isnan(GetReal("X" + std::string(400, '9'))));
}

TEST_F(RS274D, BadInputEndsSoonAndHarmsNothing) {
    const std::string megabytes(10'000'000, '1');
    const std::tuple<const char*, std::string, int> rows[] = {
        {"empty", "", 0},
        {"no line end", "G1X1", 1},
        {"NUL bytes", std::string(100, '\0') + "G1X1\0Y1\nX2\0"s, 2},
        {"a line of NUL bytes", "G1X1\n" + std::string(10'000'000, '\0') + "\nX2", 2},
        {"one long word", "G1X" + megabytes + "\nG1X2", 1},
        {"one long comment", "G1X1(" + megabytes + ")\nG1X2", 1},
        {"many words in a long line", "G1" + std::string(5'000'000, 'X') + "\nG1X2", 1},
        {"bytes above 127", "G1X1(Gr\xC3\xB6\xC3\x9F\x65 \xFF)\n\xC3\xB6\nX2", 2},
        {"UTF-16", "\xFF\xFEG\0001\0X\0001\0\r\0\n\0X\0002\0"s, 0},
    };
    for (const auto& [name, text, moves] : rows)
        for (const bool extended : {false, true}) EXPECT_EQ(MovesOf(text, extended), moves) << name;
    std::string line = "G1";
    while (line.size() + 2 <= MaxRS274DLineLength) line += "X1";
    EXPECT_EQ(MovesOf(line), 1);
    EXPECT_EQ(MovesOf(line + "X"), 0);
}

TEST_F(RS274D, RepeatCountsHaveALimit) {
    EXPECT_EQ(MovesOf("G91G1X1L9999"), 10000);
    std::string many = "G91G1";
    for (int i = 0; i < 200; ++i) many += "X1L9000\n";
    EXPECT_EQ(ErrorOf([&] { Converter.ReadNC(many); }),
              "The program repeats more than 300000 motions. Line: 34");
}

TEST_F(RS274D, KeepsWhatWasReadBeforeAnError) {
    Converter.SetStopOnErrors(true);
    Converter.SetFileName(Put("b.nc", "G0X1\nG2X9R1\nG1X1"));
    EXPECT_EQ(ErrorOfLoading(), "Cannot reach destination with specified radius. Line: 2");
    EXPECT_EQ(Root.GetItemsCount(), 1);
    Converter.SetStopOnErrors(false);
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_EQ(Root.GetItemsCount(), 3);
}

// --- the trace -----------------------------------------------------------------------------------

/// The same in every locale, beside the program.
TEST_F(RS274D, TracesInTheSameWordsInEveryLocale) {
    Converter.SetFileName(Put("path.v1.nc", "G0X1\r\r\nG1Y.5\r\r\n"));
    Converter.SetDoDump(true);
    QLocale::setDefault(QLocale(QLocale::German));
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // where the system has it
    EXPECT_EQ(ErrorOfLoading(), "");
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(Contents("path.v1.dmp"), "quick move\r\nX=1.000000, Y=0.000000, Z=0.000000\r\n"
                                       "linear interpolation\r\n"
                                       "X=1.000000, Y=0.500000, Z=0.000000\r\n");
    Converter.Dump("after the reading");
}

TEST_F(RS274D, TheTraceNeverReplacesTheProgram) {
    Converter.SetDoDump(true);
    Converter.SetFileName(Put("a.dmp", "G1X1"));
    EXPECT_THAT(ErrorOfLoading(), testing::HasSubstr("it is the file to read"));
    EXPECT_EQ(Contents("a.dmp"), "G1X1");
    Converter.SetFileName(Put("noextension", "G1X1"));
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_TRUE(QFile::exists(Path("noextension.dmp")));
    EXPECT_TRUE(QDir().mkpath(Path("b.dmp")));
    Converter.SetFileName(Put("b.nc", "G1X1"));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TRS274DConverter.Dump: Can't write \""));
}

TEST_F(RS274D, ATraceThatCanNotBeWrittenIsAnError) {
    Converter.SetDoDump(true);
    Converter.SetFileName(Put("full.nc", "G1X1\nX2"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), Path("full.dmp")));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TRS274DConverter.Dump: Can't write \"" +
                                                      Path("full.dmp").toStdString() + "\": "));
    EXPECT_EQ(Root.GetItemsCount(), 2) << "the path was read";
    Converter.SetFileName(QStringLiteral("/nowhere/a.nc"));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TRS274DConverter.Dump: Can't write \""));
    EXPECT_EQ(Root.GetItemsCount(), 2) << "one that can not even be made leaves the scene";
    EXPECT_EQ(ErrorOf([&] { Converter.SaveToFile(); }),
              "TRS274DConverter.SaveToFile: Only import is supported.");
}

} // namespace
} // namespace ZEP
