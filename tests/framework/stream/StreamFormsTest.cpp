#include "tests/Cases.h"
#include "tests/framework/stream/StreamText.h"

#include <gmock/gmock.h>

#include <charconv>
#include <cmath>

namespace ZEP {
namespace {

const std::string SampleText = R"(object Scene1: TZEPScene
  Tag = 3
  Ident = 'caf'#233' it''s'
  XForm.Scale.X = 1.5
  XForm.Translate.X = -0.1
  XForm.Matrix = {
    000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F
    2021}
  Animation = True
  Options = [goDepthTest, goLighting]
  DrawType = dtLine
  Camera = Camera1
  MaterialLibrary = nil
  object Box1: TZEPBox
    SlicesX = 300
  end
  object TZEPPolygon
    Vertexes = <
      item
        X = 1
        Color = 255
      end
      item
      end>
  end
end
)";

std::string SampleBytes() {
    const std::string zero(1, '\0');
    std::string bytes = "TPF0" + Short("TZEPScene") + Short("Scene1");
    bytes += Short("Tag") + Hex("02 03");
    bytes += Short("Ident") + Hex("14 0A000000") + "caf\xC3\xA9 it's";
    bytes += Short("XForm.Scale.X") + Hex("05 00000000000000C0FF3F");
    bytes += Short("XForm.Translate.X") + Hex("05 00D0CCCCCCCCCCCCFBBF");
    bytes += Short("XForm.Matrix") + Hex("0A 22000000");
    for (char c = 0; c < 0x22; ++c) bytes += c;
    bytes += Short("Animation") + Hex("09");
    bytes += Short("Options") + Hex("0B") + Short("goDepthTest") + Short("goLighting") + zero;
    bytes += Short("DrawType") + Hex("07") + Short("dtLine");
    bytes += Short("Camera") + Hex("07") + Short("Camera1");
    bytes += Short("MaterialLibrary") + Hex("0D") + zero;
    bytes += Short("TZEPBox") + Short("Box1") + Short("SlicesX") + Hex("03 2C01") + zero + zero;
    bytes += Short("TZEPPolygon") + zero + Short("Vertexes") + Hex("0E 01");
    bytes += Short("X") + Hex("02 01") + Short("Color") + Hex("03 FF00") + zero;
    bytes += Hex("01 00") + zero + zero + zero;
    return bytes + zero;
}

TEST(StreamForms, TheSampleIsTheSameInBothForms) {
    EXPECT_EQ(ToText(SampleBytes()), SampleText);
    EXPECT_EQ(ToBinary(SampleText), SampleBytes());
    EXPECT_EQ(ToBinary(SampleBytes()), SampleBytes());
    EXPECT_EQ(ToText(SampleText), SampleText);
}

std::string Unnamed(std::string text) {
    for (const auto& [name, character] : {std::pair("\\n", "\n"), {"\\r", "\r"}, {"\\t", "\t"}})
        text = QString::fromLatin1(text)
                   .replace(QLatin1String(name), QLatin1String(character))
                   .toLatin1()
                   .toStdString();
    return text;
}

std::string HexOf(const std::string& bytes) {
    return QByteArray::fromStdString(bytes).toHex().toStdString();
}

/// Of each line of an input, which ends with "|": bytes are hexadecimal digits.
TEST(StreamForms, EachValueAndEachErrorIsAsWritten) {
    ExpectCases("text/streams.txt", [](const TCase& c) {
        std::istringstream lines(c.Input);
        std::string answer;
        for (std::string line; std::getline(lines, line);) {
            line.pop_back();
            std::string text;
            if (c.Name == "bytes of a value") text = TextOfValue(Hex(line.c_str()));
            if (c.Name == "text of a value") text = HexOf(BytesOfValue(Unnamed(line)));
            if (c.Name == "errors of a text") text = ToBinary(Unnamed(line));
            if (c.Name == "errors of bytes") text = ToText(Hex(line.c_str()));
            answer +=
                QString::fromStdString(text).replace(u'\n', QStringLiteral("\\n")).toStdString() +
                "|\n";
        }
        return answer;
    });
}

TEST(StreamForms, WordsMayBeWrittenInOtherWays) {
    const std::string bytes = ToBinary("object A: T end");
    EXPECT_EQ(ToBinary("\xEF\xBB\xBFOBJECT A:T\tEND\r\n"), bytes);
    EXPECT_EQ(ToBinary("inherited A: T [3] end"), bytes);
    EXPECT_EQ(ToBinary("inline A: T end"), bytes);
}

TEST(StreamForms, PrefixesAreReadAndIgnored) {
    const std::string plain = "TPF0" + Short("T") + std::string(3, '\0');
    const std::string tail = plain.substr(4);
    EXPECT_EQ(ToBinary("TPF0" + Hex("F1") + tail), plain);
    EXPECT_EQ(ToBinary("TPF0" + Hex("F6 0207") + tail), plain);
    EXPECT_EQ(ToBinary("TPF0" + Hex("F2 13 0102030405060708") + tail), plain);
}

TEST(StreamForms, WordsOfTheTextFormMayBeNames) {
    const std::string text = "object object: item\n  End = 1\n  item = 2\n  Object.end = end\n"
                             "  object end: end\n  end\nend\n";
    EXPECT_EQ(ToText(ToBinary(text)), text);
}

TEST(StreamForms, LongStringsAreWrittenInPiecesAndReadAsOne) {
    for (const std::size_t length : {64U, 65U, 128U, 255U, 256U, 1000U}) {
        const std::string content(length, 'x');
        const std::string text = "object T\n  P =\n    '" + content.substr(0, 64) + "'";
        const std::string bytes = ToBinary("object T P = '" + content + "' end");
        EXPECT_EQ(ToText(bytes).starts_with(text), length > 64) << length;
        EXPECT_EQ(ToBinary(ToText(bytes)), bytes) << length;
    }
}

TEST(StreamForms, EveryDoubleSurvivesBothForms) {
    for (int i = 0; i < 20'000; ++i) {
        const auto seed = static_cast<std::uint64_t>(i) * 0x9E3779B97F4A7C15ULL;
        const auto value = std::bit_cast<double>(seed ^ (seed >> 29));
        if (!std::isfinite(value)) continue;
        std::string bytes(1, '\x15');
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        const std::string text = TextOfValue(bytes);
        double read = 0;
        std::from_chars(text.data(), text.data() + text.size(), read);
        ASSERT_EQ(read, value) << text;
        ASSERT_EQ(TextOfValue(BytesOfValue(text)), text);
    }
}

} // namespace
} // namespace ZEP
