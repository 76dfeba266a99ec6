#include "tests/Cases.h"
#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include <zep/converters/rs274d/Block.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/converters/rs274d/DialectGuess.h>
#include <zep/converters/rs274d/Expression.h>
#include <zep/converters/rs274d/Interpreter.h>
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

// --- programs that run ---------------------------------------------------------------------------

/// #5 is 2, #2 is 7, #<A> is -1.
TEST_F(RS274D, ExpressionsHaveTheValuesOfTheDialect) {
    struct TNoMachine : TRS274DMachineValues {
        std::optional<double> MachineValue(int) const override { return std::nullopt; }
        std::optional<double> MachineValue(std::string_view) const override { return std::nullopt; }
        bool SetMachineValue(int, double) override { return false; }
    } machine;
    TRS274DParameters parameters(machine);
    for (const auto& [reference, value] :
         {std::pair(TRS274DReference{5}, 2.0), {{2}, 7.0}, {{.Name = "<A>"}, -1.0}})
        EXPECT_TRUE(parameters.Set(reference, value));
    const char* faults[] = {"", "unreadable", "deep", "none", "division by zero", "out of range"};
    ExpectCases("text/expressions.txt", [&](const TCase& c) {
        return EachLine(c, [&](const std::string& line) {
            std::string buffer;
            TRS274DExpression text(NormalizeBlock(line, buffer), parameters);
            const double value = text.Value();
            const std::string rest(text.Rest());
            if (text.Fault() == TRS274DFault::None)
                return QByteArray::number(value, 'g', 10).toStdString() + " " + rest;
            return std::string(faults[static_cast<int>(text.Fault())]);
        });
    });
}

/// A path that is counted, and the lines of its moves.
struct TCounted : TRS274DSink {
    std::string Lines;
    void Rapid(const TRS274DPoint&, const TRS274DPoint&, qint64 line) override {
        Lines += std::to_string(line) + ' ';
    }
    void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override {
        Rapid(from, to, line);
    }
    void Drill(const TRS274DPoint&, qint64) override {}
    void Arc(const TRS274DArc&, qint64) override {}
    void Curve(std::span<const TRS274DPoint>, double, qint64) override {}
    void NextTool() override {}
    void Dump(std::string_view) override {}
};

TEST_F(RS274D, ProgramsWithoutAnEndAreEnded) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"a loop", "G0X1\nO1 WHILE [1]\nO1 ENDWHILE",
         "runs more than 100 blocks in loops and calls. Line: 2"},
        {"moves", "G0X1\nO1 DO\nX1\nO1 WHILE [1]",
         "makes more than 10 motions in loops and calls. Line: 4"},
        {"calls", "G0X1\nM98 P5 L1000000000\nM2\nO5\nM99",
         "100 blocks in loops and calls. Line: 5"},
        {"jumps", "G0X1\nN2 M97P2L9\n", "More than 100 subprograms call each other. Line: 2"},
        {"Fanuc jumps", "G0X1\nN2GOTO2", "300 blocks in loops and calls. Line: 2"},
        {"Fanuc calls", "G0X1\nG65P5\nO5\nG65P5", "More than 100 subprograms call each other"},
        {"an empty loop", "G0X1\nO1 REPEAT[1000000000]\nO1 ENDREPEAT",
         "100 blocks in loops and calls. Line: 3"}};
    for (const auto& [name, text, error] : rows) {
        TCounted path;
        TRS274DReport report;
        const bool isFanuc = std::string_view(name).starts_with("Fanuc");
        TRS274DInterpreter interpreter(
            {.MaxBlocks = isFanuc ? 300 : 100,
             .MaxMotions = 10,
             .Dialect = isFanuc ? TRS274DDialect::Fanuc : TRS274DDialect::NGC},
            path, report);
        EXPECT_THAT(ErrorOf([&] { interpreter.Run(text); }), testing::HasSubstr(error)) << name;
        EXPECT_THAT(path.Lines, testing::StartsWith("1 ")) << name;
    }
    TCounted path;
    TRS274DReport report;
    int asked = 0;
    EXPECT_FALSE(TRS274DInterpreter({}, path, report)
                     .Run("O1 WHILE [1]\nO1 ENDWHILE", [&](qint64 done, qint64 total) {
                         EXPECT_LE(done, total);
                         return ++asked < 3;
                     }));
    EXPECT_EQ(asked, 3);
}

TEST_F(RS274D, ALookAtAllArcsIsCancelled) {
    std::string text = "G0X1\nG3X0Y1I0J0\n";
    for (int i = 0; i < 20000; ++i) text += "X1Y0\n";
    TCounted path;
    TRS274DReport report;
    EXPECT_FALSE(
        TRS274DInterpreter({}, path, report).Run(text, [](qint64, qint64) { return false; }));
    EXPECT_EQ(path.Lines, "1 ");
}

TEST_F(RS274D, TheDialectIsGuessedByWhatOnlyOneHas) {
    ExpectCases("text/dialects.txt", [](const TCase& c) {
        return GuessRS274DDialect(c.Input) == TRS274DDialect::Fanuc ? "Fanuc\n" : "NGC\n";
    });
}

/// Moves of another file have the line of the call; only files of the program's folder are found.
TEST_F(RS274D, SubprogramsStandBesideTheProgram) {
    ASSERT_TRUE(QDir().mkpath(Path("below")));
    ASSERT_TRUE(QDir().mkpath(Path("programs")));
    Put("outside.ngc", "G0 X1\n");
    Put("programs/Square.NGC", "\nO<square> sub\nG0 X#1\nO1 call\nO<square> endsub\n");
    Put("programs/o0020.nc", "G0 X1\nG0 X2");
    Put("programs/20.txt", "G0 Y9");
    Put("programs/bad.ngc", "O<bad> sub\nG1\nX[1/0]\nO<bad> endsub");
    ASSERT_TRUE(QFile::link(Path("outside.ngc"), Path("programs/link.ngc")));
    ASSERT_TRUE(QDir().mkpath(Path("programs/folder.ngc")));
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"by name, which calls back", "O1 sub\nG0Y1\nO1 endsub\n\nO<square> call [5]", "5 2 "},
        {"by number", "M98 P20", "1 1 "},
        {"a link out of the folder", "O<link> call", "no subprogram"},
        {"a path", "O<../outside> call", "no subprogram"},
        {"a folder", "O<folder> call", "no subprogram"},
        {"a fault in it", "\nO<bad> call", "Division by zero. In \"bad.ngc\", line 3. Line: 2"}};
    for (const auto& [name, text, expected] : rows) {
        TCounted path;
        TRS274DReport report;
        TRS274DInterpreter interpreter(
            {.StopOnErrors = true, .FileName = Path("programs/main.ngc")}, path, report);
        const std::string error = ErrorOf([&] { interpreter.Run(text); });
        EXPECT_THAT(error.starts_with("No subprogram") ? "no subprogram" : error + path.Lines,
                    expected)
            << name;
    }
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
